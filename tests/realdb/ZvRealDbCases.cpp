// Statements are written in lower case: unquoted names then mean the same tables on every server
// (MariaDB compares table names by case, Firebird folds them to capitals, the others to lower case).
#include "ZvRealDbCases.h"

namespace zv::test {
namespace {

constexpr TZvRowOrder Fixed = TZvRowOrder::Fixed;
constexpr TZvRowOrder Any = TZvRowOrder::Any;
// MariaDB has no FULL JOIN and reads "||" as OR.
constexpr unsigned kNotMariaDB = kAllServers & ~kMariaDB;
// SQLite has no ALL/ANY before a subquery.
constexpr unsigned kNotSQLite = kAllServers & ~kSQLite;
// CASE and CAST begin an output field only where the dialect lists them as functions; PostgreSQL
// and MySQL read them as keywords, which cannot start a field.
constexpr unsigned kCaseDialects = kSQLite | kFirebird;

} // namespace

const std::vector<TZvRealDbCase>& RealDbCases() {
    static const std::vector<TZvRealDbCase> Cases = {
        // --- one table: fields, aliases, star --------------------------------------------------
        {"star_one_table", "SELECT * FROM customer c"},
        {"star_qualified", "SELECT c.* FROM customer c"},
        {"star_no_alias", "SELECT * FROM product"},
        {"fields_no_alias", "SELECT customer.id, customer.name FROM customer"},
        {"fields_with_as_alias", "SELECT c.id AS customer_no, c.name AS label FROM customer AS c"},
        {"fields_alias_without_as", "SELECT c.id customer_no, c.city town FROM customer c"},
        {"unqualified_fields", "SELECT id, name, city FROM customer"},
        {"same_field_twice", "SELECT c.id, c.id AS again FROM customer c"},
        {"constants_in_list", "SELECT c.id, 'x' AS k, 1 AS one, 2.5 AS f FROM customer c"},
        {"computed_field", "SELECT p.id, p.price * 2 AS double_price FROM product p"},
        {"computed_without_alias", "SELECT p.id, p.price + 1 FROM product p"},
        {"computed_bracketed", "SELECT p.id, (p.price + 1) * 2 AS x FROM product p"},
        {"computed_two_columns",
         "SELECT l.order_id, l.line_no, l.qty * l.discount AS saved FROM order_line l"},
        {"function_upper", "SELECT e.id, upper(e.last_name) AS shout FROM employee e"},
        {"function_lower_no_alias", "SELECT e.id, lower(e.first_name) FROM employee e"},
        {"function_coalesce", "SELECT c.id, coalesce(c.city, 'nowhere') AS town FROM customer c"},
        {"nullable_columns", "SELECT e.id, e.email, e.dept_id FROM employee e"},
        {"non_ascii_columns", "SELECT c.name, c.city FROM customer c"},
        {"float_column", "SELECT p.id, p.weight FROM product p"},
        {"date_column", "SELECT o.id, o.ordered FROM orders o"},

        // --- DISTINCT ---------------------------------------------------------------------------
        {"distinct_one_column", "SELECT DISTINCT c.country FROM customer c"},
        {"distinct_with_nulls", "SELECT DISTINCT e.dept_id FROM employee e"},
        {"distinct_two_columns", "SELECT DISTINCT o.status, o.customer_id FROM orders o"},
        {"distinct_lower_case", "select distinct e.salary from employee e"},
        {"distinct_over_join",
         "SELECT DISTINCT c.name FROM customer c INNER JOIN orders o ON c.id = o.customer_id"},

        // --- WHERE: every comparison --------------------------------------------------------------
        {"where_equal_number", "SELECT c.id FROM customer c WHERE c.id = 3"},
        {"where_equal_text", "SELECT c.id FROM customer c WHERE c.country = 'GB'"},
        {"where_not_equal", "SELECT c.id FROM customer c WHERE c.country <> 'GB'"},
        {"where_less", "SELECT p.id FROM product p WHERE p.price < 10"},
        {"where_less_equal", "SELECT p.id FROM product p WHERE p.price <= 10"},
        {"where_greater", "SELECT e.id FROM employee e WHERE e.salary > 5000"},
        {"where_greater_equal", "SELECT e.id FROM employee e WHERE e.salary >= 4100"},
        {"where_negative_number", "SELECT c.id FROM customer c WHERE c.credit > -5"},
        {"where_decimal_number", "SELECT p.id FROM product p WHERE p.price < 2.75"},
        {"where_like_prefix", "SELECT c.id FROM customer c WHERE c.name LIKE 'O%'"},
        {"where_like_underscore", "SELECT c.id FROM customer c WHERE c.country LIKE 'G_'"},
        {"where_not_like", "SELECT c.id FROM customer c WHERE c.name NOT LIKE '%a%'"},
        {"where_like_quote", "SELECT c.id FROM customer c WHERE c.name LIKE '%''%'"},
        {"where_like_double_quote", "SELECT e.id FROM employee e WHERE e.last_name LIKE '%\"%'"},
        {"where_between", "SELECT e.id FROM employee e WHERE e.salary BETWEEN 3500 AND 6100.75"},
        {"where_not_between", "SELECT e.id FROM employee e WHERE e.salary NOT BETWEEN 3500 AND 6100.75"},
        {"where_between_dates",
         "SELECT o.id FROM orders o WHERE o.ordered BETWEEN '2024-02-01' AND '2024-04-30'"},
        {"where_date_greater", "SELECT e.id FROM employee e WHERE e.hired > '2020-01-01'"},
        {"where_in_numbers", "SELECT c.id FROM customer c WHERE c.id IN (1, 3, 5, 7)"},
        {"where_in_texts", "SELECT o.id FROM orders o WHERE o.status IN ('open', 'returned')"},
        {"where_not_in", "SELECT o.id FROM orders o WHERE o.status NOT IN ('open', 'shipped')"},
        {"where_is_null", "SELECT e.id FROM employee e WHERE e.email IS NULL"},
        {"where_is_not_null", "SELECT c.id FROM customer c WHERE c.credit IS NOT NULL"},
        {"where_non_ascii_text", "SELECT c.id FROM customer c WHERE c.city = 'Łódź'"},
        {"where_quote_in_text", "SELECT c.id FROM customer c WHERE c.name = 'O''Malley & Sons'"},
        {"where_percent_in_text", "SELECT c.id FROM customer c WHERE c.name = 'Zeta 100%'"},
        {"where_text_with_semicolon", "SELECT o.id FROM orders o WHERE o.note = 'rush; call before'"},
        {"where_function_left", "SELECT c.id FROM customer c WHERE upper(c.city) = 'PARIS'"},
        {"where_function_coalesce", "SELECT c.id FROM customer c WHERE coalesce(c.credit, 0) < 1000"},
        {"where_arithmetic", "SELECT l.order_id, l.line_no FROM order_line l WHERE l.qty * 2 > 10"},
        {"where_two_columns", "SELECT e.id FROM employee e WHERE e.manager_id < e.id"},
        {"where_no_match", "SELECT c.id FROM customer c WHERE c.country = 'XX'", kAllServers, Any, true},

        // --- WHERE: connectives and nesting -------------------------------------------------------
        {"where_and", "SELECT e.id FROM employee e WHERE e.dept_id = 2 AND e.salary > 4000"},
        {"where_or", "SELECT e.id FROM employee e WHERE e.dept_id = 4 OR e.dept_id = 5"},
        {"where_and_three",
         "SELECT e.id FROM employee e WHERE e.dept_id = 3 AND e.salary > 3000 AND e.email IS NOT NULL"},
        {"where_or_then_and", "SELECT c.id FROM customer c WHERE c.id = 1 OR c.id = 2 AND c.country = 'IE'"},
        {"where_and_then_or", "SELECT c.id FROM customer c WHERE c.id = 1 AND c.country = 'IE' OR c.id = 2"},
        {"where_brackets_change_precedence",
         "SELECT c.id FROM customer c WHERE (c.id = 1 OR c.id = 2) AND c.country = 'IE'"},
        {"where_not", "SELECT c.id FROM customer c WHERE NOT c.country = 'GB'"},
        {"where_not_bracketed_or",
         "SELECT p.id FROM product p WHERE NOT (p.price > 5 OR p.category IS NULL)"},
        {"where_not_and", "SELECT e.id FROM employee e WHERE NOT e.dept_id = 2 AND e.salary < 5000"},
        {"where_not_is_null", "SELECT e.id FROM employee e WHERE NOT e.email IS NULL"},
        {"where_deep_nesting",
         "SELECT c.id FROM customer c WHERE (c.id > 1 AND (c.id < 5 OR c.id = 9)) OR NOT c.id <> 3"},
        {"where_or_of_ands", "SELECT e.id FROM employee e WHERE (e.dept_id = 2 AND e.salary > 5000) OR "
                             "(e.dept_id = 3 AND e.salary < 7000)"},
        {"where_and_of_ors", "SELECT e.id FROM employee e WHERE (e.dept_id = 2 OR e.dept_id = 3) AND "
                             "(e.salary < 4500 OR e.salary > 7000)"},
        {"where_not_of_and_of_or",
         "SELECT o.id FROM orders o WHERE NOT (o.status = 'open' AND (o.customer_id = 1 OR o.customer_id = "
         "2))",
         kAllServers, Any, false, true},
        {"where_redundant_brackets", "SELECT c.id FROM customer c WHERE ((c.id > 2)) AND (((c.id < 8)))"},
        {"where_lower_case_keywords", "select c.id from customer c where c.id > 2 and not c.city is null"},
        {"where_subquery_in",
         "SELECT e.id FROM employee e WHERE e.dept_id IN (SELECT d.id FROM dept d WHERE d.budget > 100000)"},
        {"where_subquery_not_in",
         "SELECT p.id FROM product p WHERE p.id NOT IN (SELECT l.product_id FROM order_line l)"},
        {"where_subquery_all",
         "SELECT e.id FROM employee e WHERE e.salary >= ALL (SELECT f.salary FROM employee f)", kNotSQLite},
        {"where_subquery_with_and", "SELECT c.id FROM customer c WHERE c.id IN (SELECT o.customer_id FROM "
                                    "orders o WHERE o.status = 'open') AND c.country <> 'IE'"},

        // --- joins: each kind -------------------------------------------------------------------
        {"inner_join", "SELECT c.name, o.id FROM customer c INNER JOIN orders o ON c.id = o.customer_id"},
        {"plain_join", "SELECT c.name, o.id FROM customer c JOIN orders o ON c.id = o.customer_id"},
        {"left_join", "SELECT c.id, o.id FROM customer c LEFT JOIN orders o ON c.id = o.customer_id"},
        {"left_outer_join",
         "SELECT c.id, o.id FROM customer c LEFT OUTER JOIN orders o ON c.id = o.customer_id"},
        {"right_join", "SELECT e.id, d.name FROM employee e RIGHT JOIN dept d ON e.dept_id = d.id"},
        {"right_outer_join",
         "SELECT o.id, e.last_name FROM orders o RIGHT OUTER JOIN employee e ON o.employee_id = e.id"},
        {"full_join", "SELECT e.id, d.id FROM employee e FULL JOIN dept d ON e.dept_id = d.id", kNotMariaDB},
        {"full_outer_join",
         "SELECT p.id, l.order_id FROM product p FULL OUTER JOIN order_line l ON p.id = l.product_id",
         kNotMariaDB},
        {"cross_join", "SELECT c.id, d.id FROM customer c CROSS JOIN dept d"},
        {"comma_join_with_where", "SELECT c.name, o.id FROM customer c, orders o WHERE c.id = o.customer_id"},
        {"comma_join_three", "SELECT o.id, c.name, e.last_name FROM orders o, customer c, employee e WHERE "
                             "o.customer_id = c.id AND o.employee_id = e.id"},
        {"comma_join_unfiltered", "SELECT d.id, p.id FROM dept d, product p"},
        {"join_condition_reversed",
         "SELECT c.name, o.id FROM customer c INNER JOIN orders o ON o.customer_id = c.id"},
        {"join_condition_bracketed",
         "SELECT c.name, o.id FROM customer c INNER JOIN orders o ON (c.id = o.customer_id)"},
        {"join_two_conditions", "SELECT l.order_id, l.line_no, m.line_no FROM order_line l INNER JOIN "
                                "order_line m ON l.order_id = m.order_id AND l.product_id = m.product_id"},
        {"join_non_equal", "SELECT a.id, b.id FROM product a INNER JOIN product b ON a.price < b.price"},
        {"join_greater_equal",
         "SELECT e.id, f.id FROM employee e INNER JOIN employee f ON e.salary >= f.salary"},
        {"join_not_equal",
         "SELECT c.id, d.id FROM customer c INNER JOIN customer d ON c.country <> d.country"},
        {"join_without_aliases", "SELECT customer.name, orders.id FROM customer INNER JOIN orders ON "
                                 "customer.id = orders.customer_id"},
        {"join_as_aliases",
         "SELECT c.name, o.id FROM customer AS c INNER JOIN orders AS o ON c.id = o.customer_id"},
        {"join_lower_case",
         "select c.name, o.id from customer c left outer join orders o on c.id = o.customer_id"},

        // --- joins: shapes ------------------------------------------------------------------------
        {"chain_inner_three", "SELECT c.name, o.id, l.line_no FROM customer c INNER JOIN orders o ON c.id = "
                              "o.customer_id INNER JOIN order_line l ON o.id = l.order_id"},
        {"chain_inner_four",
         "SELECT c.name, p.name FROM customer c INNER JOIN orders o ON c.id = o.customer_id INNER JOIN "
         "order_line l ON o.id = l.order_id INNER JOIN product p ON l.product_id = p.id"},
        {"chain_left_three", "SELECT c.id, o.id, l.line_no FROM customer c LEFT JOIN orders o ON "
                             "o.customer_id = c.id LEFT JOIN order_line l ON l.order_id = o.id"},
        {"chain_left_then_inner", "SELECT c.id, o.id, e.id FROM customer c LEFT JOIN orders o ON c.id = "
                                  "o.customer_id INNER JOIN employee e ON o.employee_id = e.id"},
        {"chain_inner_then_left", "SELECT o.id, e.id, d.name FROM orders o INNER JOIN employee e ON "
                                  "o.employee_id = e.id LEFT JOIN dept d ON e.dept_id = d.id"},
        {"chain_reversed_conditions",
         "SELECT l.order_id, l.line_no, c.name FROM order_line l INNER JOIN orders o ON o.id = l.order_id "
         "INNER JOIN customer c ON c.id = o.customer_id"},
        {"star_from_orders", "SELECT o.id, c.name, e.last_name FROM orders o INNER JOIN customer c ON "
                             "o.customer_id = c.id INNER JOIN employee e ON o.employee_id = e.id"},
        {"star_with_left_arms", "SELECT o.id, c.name, e.last_name FROM orders o LEFT JOIN customer c ON "
                                "o.customer_id = c.id LEFT JOIN employee e ON o.employee_id = e.id"},
        {"star_mixed_kinds",
         "SELECT o.id, c.id, e.id, l.line_no FROM orders o INNER JOIN customer c ON o.customer_id = c.id "
         "LEFT OUTER JOIN employee e ON o.employee_id = e.id INNER JOIN order_line l ON o.id = l.order_id"},
        {"star_conditions_reversed", "SELECT o.id, c.name, e.last_name FROM orders o INNER JOIN customer c "
                                     "ON c.id = o.customer_id INNER JOIN employee e ON e.id = o.employee_id"},
        {"self_join_manager",
         "SELECT e.id, m.id FROM employee e INNER JOIN employee m ON e.manager_id = m.id"},
        {"self_join_left_manager",
         "SELECT e.id, m.last_name FROM employee e LEFT OUTER JOIN employee m ON e.manager_id = m.id"},
        {"self_join_two_levels", "SELECT e.id, m.id, mm.id FROM employee e JOIN employee m ON e.manager_id = "
                                 "m.id JOIN employee mm ON m.manager_id = mm.id"},
        {"self_join_dept_parent", "SELECT a.name, b.name FROM dept a INNER JOIN dept b ON a.parent_id = b.id "
                                  "WHERE b.parent_id IS NULL"},
        {"self_join_comma",
         "SELECT e.id, f.id FROM employee e, employee f WHERE e.manager_id = f.id AND f.dept_id = 2"},
        {"join_then_comma", "SELECT c.name, o.id, d.name FROM customer c INNER JOIN orders o ON c.id = "
                            "o.customer_id, dept d WHERE d.parent_id IS NULL"},
        {"comma_then_join", "SELECT d.name, c.name, o.id FROM dept d, customer c INNER JOIN orders o ON c.id "
                            "= o.customer_id WHERE d.id = 2"},
        {"join_and_where", "SELECT c.name, o.id FROM customer c INNER JOIN orders o ON c.id = o.customer_id "
                           "WHERE o.status = 'shipped' AND c.country <> 'CH'"},
        {"left_join_where_null",
         "SELECT c.id FROM customer c LEFT JOIN orders o ON c.id = o.customer_id WHERE o.id IS NULL"},
        {"right_join_chain", "SELECT e.id, d.id, p.id FROM employee e RIGHT JOIN dept d ON e.dept_id = d.id "
                             "LEFT JOIN dept p ON d.parent_id = p.id"},
        {"full_join_chain",
         "SELECT e.id, d.id, o.id FROM employee e FULL JOIN dept d ON e.dept_id = d.id FULL JOIN orders o ON "
         "e.id = o.employee_id",
         kNotMariaDB},

        {"join_condition_continued_to_earlier_table",
         "SELECT d.id, e.id, m.id FROM dept d JOIN employee e ON e.dept_id = d.id JOIN employee m ON m.id = "
         "e.manager_id AND m.dept_id = d.id"},
        {"join_condition_between_two_columns_of_each",
         "SELECT e.id, d.id FROM employee e INNER JOIN dept d ON e.dept_id = d.id AND e.salary < d.budget"},
        {"left_join_two_conditions", "SELECT c.id, o.id FROM customer c LEFT JOIN orders o ON o.customer_id "
                                     "= c.id AND o.employee_id = c.id"},
        {"two_chains_after_comma", "SELECT c.id, o.id, d.id, e.id FROM customer c LEFT JOIN orders o ON c.id "
                                   "= o.customer_id, dept d LEFT JOIN employee e ON e.dept_id = d.id"},
        {"cross_join_then_inner_join", "SELECT c.id, d.id, e.id FROM customer c CROSS JOIN dept d INNER JOIN "
                                       "employee e ON e.dept_id = d.id"},
        {"cross_join_then_left_join_to_first", "SELECT c.id, d.id, o.id FROM customer c CROSS JOIN dept d "
                                               "LEFT JOIN orders o ON o.customer_id = c.id"},
        {"right_join_twice", "SELECT e.id, d.id, p.id FROM employee e RIGHT JOIN dept d ON e.dept_id = d.id "
                             "RIGHT JOIN dept p ON d.parent_id = p.id"},
        {"left_join_chain_of_four",
         "SELECT c.id, o.id, e.id, d.id FROM customer c LEFT JOIN orders o ON o.customer_id = c.id LEFT JOIN "
         "employee e ON e.id = o.employee_id LEFT JOIN dept d ON d.id = e.dept_id"},
        {"left_joins_from_the_first_table",
         "SELECT o.id, l.line_no, c.id FROM orders o LEFT JOIN order_line l ON l.order_id = o.id LEFT JOIN "
         "customer c ON c.id = o.customer_id"},
        {"right_then_left_join", "SELECT l.order_id, p.id, o.id FROM order_line l RIGHT JOIN product p ON "
                                 "l.product_id = p.id LEFT JOIN orders o ON o.id = l.order_id"},
        {"left_then_right_join", "SELECT o.id, c.id, e.id FROM orders o LEFT JOIN customer c ON "
                                 "o.customer_id = c.id RIGHT JOIN employee e ON e.id = o.employee_id"},
        {"right_join_of_one_pair",
         "SELECT c.id, o.id FROM orders o RIGHT JOIN customer c ON o.customer_id = c.id"},
        {"self_join_left_chain", "SELECT a.id, b.id, c.id FROM dept a LEFT JOIN dept b ON b.parent_id = a.id "
                                 "LEFT JOIN dept c ON c.parent_id = b.id"},
        {"inner_then_left_to_first", "SELECT d.id, e.id, c.id FROM dept d INNER JOIN employee e ON e.dept_id "
                                     "= d.id LEFT JOIN customer c ON c.id = d.id"},

        // --- grouping -----------------------------------------------------------------------------
        {"count_star", "SELECT count(*) AS n FROM customer c"},
        {"aggregates_only", "SELECT max(e.salary), min(e.salary), sum(e.salary) FROM employee e"},
        {"count_column_skips_nulls", "SELECT count(e.email) AS with_mail FROM employee e"},
        {"count_distinct", "SELECT count(DISTINCT c.city) AS towns FROM customer c"},
        {"group_by_one", "SELECT e.dept_id, count(*) AS n FROM employee e GROUP BY e.dept_id"},
        {"group_by_two",
         "SELECT o.customer_id, o.status, count(*) AS n FROM orders o GROUP BY o.customer_id, o.status"},
        {"group_by_sum_avg", "SELECT e.dept_id, sum(e.salary) AS total, avg(e.salary) AS mean FROM employee "
                             "e GROUP BY e.dept_id"},
        {"group_by_over_join", "SELECT c.name, count(o.id) AS orders_placed FROM customer c INNER JOIN "
                               "orders o ON c.id = o.customer_id GROUP BY c.name"},
        {"group_by_left_join", "SELECT c.id, count(o.id) AS n FROM customer c LEFT JOIN orders o ON c.id = "
                               "o.customer_id GROUP BY c.id"},
        {"group_by_without_aggregate", "SELECT o.status FROM orders o GROUP BY o.status"},
        {"group_by_unqualified", "SELECT customer_id, count(*) AS n FROM orders GROUP BY customer_id"},
        {"group_by_computed_sum",
         "SELECT l.order_id, sum(l.qty) AS pieces FROM order_line l GROUP BY l.order_id"},
        {"having_count",
         "SELECT o.customer_id, count(*) AS n FROM orders o GROUP BY o.customer_id HAVING count(*) > 1"},
        {"having_sum_and", "SELECT e.dept_id, sum(e.salary) AS total FROM employee e GROUP BY e.dept_id "
                           "HAVING sum(e.salary) > 5000 AND count(*) >= 2"},
        {"having_or", "SELECT e.dept_id, max(e.salary) AS top FROM employee e GROUP BY e.dept_id HAVING "
                      "max(e.salary) > 9000 OR min(e.salary) < 3000"},
        {"having_not",
         "SELECT o.status, count(*) AS n FROM orders o GROUP BY o.status HAVING NOT count(*) = 1"},
        {"where_group_having", "SELECT c.id, count(o.id) AS n FROM customer c, orders o WHERE c.id = "
                               "o.customer_id GROUP BY c.id HAVING count(o.id) > 1 AND sum(o.id) < 100"},

        // --- sorting ------------------------------------------------------------------------------
        {"order_by_key", "SELECT c.id, c.name FROM customer c ORDER BY c.id", kAllServers, Fixed},
        {"order_by_desc", "SELECT c.id, c.name FROM customer c ORDER BY c.id DESC", kAllServers, Fixed},
        {"order_by_asc_written", "SELECT p.id, p.price FROM product p ORDER BY p.price ASC", kAllServers,
         Fixed},
        {"order_by_two_keys", "SELECT e.salary, e.id FROM employee e ORDER BY e.salary DESC, e.id",
         kAllServers, Fixed},
        {"order_by_text_then_key", "SELECT o.status, o.id FROM orders o ORDER BY o.status, o.id DESC",
         kAllServers, Fixed},
        {"order_by_unqualified", "SELECT id, name FROM product ORDER BY id DESC", kAllServers, Fixed},
        {"order_by_alias",
         "SELECT e.dept_id, sum(e.salary) AS total FROM employee e GROUP BY e.dept_id ORDER BY total DESC",
         kAllServers, Fixed},
        // PostgreSQL and Firebird are left out: their dialects put a column number through the
        // alias quoting, where "2" names a column.
        {"order_by_position", "SELECT o.id, o.ordered FROM orders o ORDER BY 2 DESC, 1", kSQLite | kMariaDB,
         Fixed},
        {"order_by_over_join",
         "SELECT c.name, o.id FROM customer c INNER JOIN orders o ON c.id = o.customer_id ORDER BY o.id",
         kAllServers, Fixed},
        {"order_by_date", "SELECT o.id FROM orders o ORDER BY o.ordered, o.id", kAllServers, Fixed},
        {"distinct_order_by", "SELECT DISTINCT o.status FROM orders o ORDER BY o.status", kAllServers, Fixed},
        {"where_order_by", "SELECT e.id, e.hired FROM employee e WHERE e.dept_id = 3 ORDER BY e.hired DESC",
         kAllServers, Fixed},
        {"full_statement_ordered",
         "SELECT c.country, count(o.id) AS n FROM customer c INNER JOIN orders o ON c.id = o.customer_id "
         "WHERE o.status <> 'cancelled' GROUP BY c.country HAVING count(o.id) > 1 ORDER BY c.country",
         kAllServers, Fixed},
        {"semicolon_at_end", "SELECT c.id FROM customer c ORDER BY c.id;", kAllServers, Fixed},
        {"statement_on_lines", "SELECT c.id,\n  c.name\nFROM customer c\nWHERE c.id < 4\nORDER BY c.id",
         kAllServers, Fixed},

        // --- the same statements written in other shapes --------------------------------------
        {"mixed_case_keywords", "SeLeCt c.id, c.name FrOm customer c WhErE c.id > 4 AnD c.country <> 'FR'"},
        {"upper_case_names", "SELECT C.ID, C.NAME FROM customer C WHERE C.CITY IS NOT NULL"},
        {"tabs_and_line_breaks", "SELECT\tc.id,\n\tc.city\nFROM\n\tcustomer c\nWHERE\n\tc.credit >= 1200\n"},
        {"many_blanks", "SELECT   c.id ,   c.name   FROM    customer   c   WHERE   c.id   <   6"},
        {"no_blanks_around_operators",
         "SELECT c.id FROM customer c WHERE c.id>=3 AND c.id<=7 AND c.country<>'GB'"},
        {"schema_qualified_table", "SELECT c.id FROM public.customer c", kPostgreSQL},
        {"database_qualified_table", "SELECT c.id FROM zevrin.customer c", kMariaDB},
        {"underscore_alias", "SELECT c.id AS _id FROM customer c", kPostgreSQL},
        {"non_ascii_quoted_alias", "SELECT p.weight AS \"Größe\" FROM product p", kPostgreSQL},
        {"dollar_in_alias", "SELECT c.id AS id$1 FROM customer c", kFirebird},
        {"backslash_escaped_quote",
         "SELECT c.id FROM customer c WHERE c.name <> 'it\\'s' AND c.name LIKE '%\\_%'", kMariaDB},
        {"in_list_mixed_numbers",
         "SELECT l.order_id, l.line_no FROM order_line l WHERE l.discount IN (0.1, 0.25, 0.5)"},
        {"comparison_of_two_functions", "SELECT c.id FROM customer c WHERE upper(c.name) <> lower(c.name)"},
        {"non_ascii_like", "SELECT p.id FROM product p WHERE p.name LIKE '%brûlée%'"},
        {"arithmetic_both_sides",
         "SELECT l.order_id, l.line_no FROM order_line l WHERE l.qty + 1 > l.line_no * 3"},

        // "size" is a keyword of the InterBase dialect, which quotes it as written; Firebird reads
        // the quoted lower-case name as another column than the unquoted one, so there it is
        // written in capitals.
        {"keyword_named_column", "SELECT p.id, p.size FROM product p WHERE p.size = 'M' OR p.size IS NULL",
         kAllServers & ~kFirebird},
        {"keyword_named_column_in_capitals",
         "SELECT P.ID, P.SIZE FROM PRODUCT P WHERE P.SIZE = 'M' OR P.SIZE IS NULL", kFirebird},

        // --- quoted names -------------------------------------------------------------------------
        {"quoted_name_sqlite", "SELECT c.\"name\", \"c\".id FROM customer c", kSQLite},
        {"quoted_name_postgresql", "SELECT c.\"name\", \"c\".id FROM \"customer\" c", kPostgreSQL},
        {"quoted_name_mariadb", "SELECT c.`name`, `c`.id FROM `customer` c", kMariaDB},
        {"quoted_name_firebird", "SELECT C.\"NAME\", \"C\".ID FROM \"CUSTOMER\" C", kFirebird},
        {"quoted_alias_mariadb", "SELECT c.name AS `the name` FROM customer c", kMariaDB},
        {"quoted_alias_postgresql", "SELECT c.name AS \"the name\" FROM customer c", kPostgreSQL},

        // --- clauses of the generic reader on SQLite ----------------------------------------------
        {"case_expression",
         "SELECT p.id, CASE WHEN p.price > 10 THEN 'high' ELSE 'low' END AS band FROM product p",
         kCaseDialects},
        {"exists_subquery",
         "SELECT e.id FROM employee e WHERE EXISTS (SELECT 1 FROM dept d WHERE d.id = e.dept_id AND d.budget "
         "> 100000)",
         kSQLite},
        {"concatenation", "SELECT e.id, e.first_name || ' ' || e.last_name AS full_name FROM employee e",
         kNotMariaDB},

        // --- PostgreSQL -------------------------------------------------------------------------
        {"pg_limit", "SELECT c.id FROM customer c ORDER BY c.id LIMIT 3", kPostgreSQL, Fixed},
        {"pg_limit_offset", "SELECT c.id FROM customer c ORDER BY c.id LIMIT 3 OFFSET 2", kPostgreSQL, Fixed},
        {"pg_offset", "SELECT p.id FROM product p ORDER BY p.id OFFSET 4", kPostgreSQL, Fixed},
        {"pg_distinct_on",
         "SELECT DISTINCT ON (c.country) c.country, c.id FROM customer c ORDER BY c.country, c.id",
         kPostgreSQL, Fixed},
        {"pg_distinct_on_two",
         "SELECT DISTINCT ON (o.customer_id, o.status) o.customer_id, o.status, o.id FROM orders o ORDER BY "
         "o.customer_id, o.status, o.id",
         kPostgreSQL, Fixed},
        {"pg_regex_match", "SELECT c.id FROM customer c WHERE c.name ~ '^[A-Z][a-z]+$'", kPostgreSQL},
        {"pg_regex_match_nocase", "SELECT c.id FROM customer c WHERE c.name ~* 'TRADERS'", kPostgreSQL},
        {"pg_regex_no_match", "SELECT c.id FROM customer c WHERE c.name !~ ' '", kPostgreSQL},
        {"pg_regex_no_match_nocase", "SELECT c.id FROM customer c WHERE c.city !~* '^l'", kPostgreSQL},
        {"pg_ilike", "SELECT c.id FROM customer c WHERE c.name ILIKE '%CORP%'", kPostgreSQL},
        {"pg_not_ilike", "SELECT c.id FROM customer c WHERE c.name NOT ILIKE 'a%'", kPostgreSQL},
        {"pg_join_limit",
         "SELECT c.name, o.id FROM customer c INNER JOIN orders o ON c.id = o.customer_id ORDER BY o.id DESC "
         "LIMIT 4",
         kPostgreSQL, Fixed},

        // --- MariaDB (MySQL dialect) --------------------------------------------------------------
        {"my_limit", "SELECT c.id FROM customer c ORDER BY c.id LIMIT 3", kMariaDB, Fixed},
        {"my_limit_offset_count", "SELECT c.id FROM customer c ORDER BY c.id LIMIT 2, 3", kMariaDB, Fixed},
        {"my_distinctrow", "SELECT DISTINCTROW o.status FROM orders o", kMariaDB},
        {"my_all", "SELECT ALL o.status FROM orders o", kMariaDB},
        {"my_straight_join",
         "SELECT STRAIGHT_JOIN c.name, o.id FROM customer c INNER JOIN orders o ON c.id = o.customer_id",
         kMariaDB},
        {"my_result_options",
         "SELECT SQL_SMALL_RESULT SQL_BUFFER_RESULT o.status, count(*) AS n FROM orders o GROUP BY o.status",
         kMariaDB},
        {"my_big_result_high_priority",
         "SELECT HIGH_PRIORITY SQL_BIG_RESULT e.dept_id, count(*) AS n FROM employee e GROUP BY e.dept_id",
         kMariaDB},
        {"my_keyword_column", "SELECT o.id, o.status FROM orders o WHERE o.status = 'open'", kMariaDB},
        {"my_double_quoted_text", "SELECT c.id FROM customer c WHERE c.country = \"FR\"", kMariaDB},

        // --- Firebird (InterBase dialect, server kind Firebird) -----------------------------------
        {"fb_first", "SELECT FIRST 3 c.id FROM customer c ORDER BY c.id", kFirebird, Fixed},
        {"fb_skip", "SELECT SKIP 7 c.id FROM customer c ORDER BY c.id", kFirebird, Fixed},
        {"fb_first_skip", "SELECT FIRST 2 SKIP 3 c.id, c.name FROM customer c ORDER BY c.id DESC", kFirebird,
         Fixed},
        {"fb_containing", "SELECT c.id FROM customer c WHERE c.name CONTAINING 'corp'", kFirebird},
        {"fb_starting_with", "SELECT c.id FROM customer c WHERE c.name STARTING WITH 'Ca'", kFirebird},
        {"fb_containing_and_join",
         "SELECT c.name, o.id FROM customer c INNER JOIN orders o ON c.id = o.customer_id WHERE o.note "
         "CONTAINING 'FAST'",
         kFirebird},
        {"fb_cast", "SELECT e.id, CAST(e.salary AS INTEGER) AS whole FROM employee e", kFirebird},
    };
    return Cases;
}

const std::vector<TZvRealDbChange>& RealDbChanges() {
    static const std::vector<TZvRealDbChange> Changes = {
        // Aggregates mixed with plain columns: GROUP BY becomes the plain columns of the SELECT
        // list, so grouping by a column that is not shown is dropped.
        {"group_by_rebuilt_from_select_list",
         "SELECT o.status, count(*) AS n FROM orders o GROUP BY o.status, o.customer_id", "GROUP BY o.status",
         "o.customer_id"},
        // HAVING is only written after a GROUP BY.
        {"having_dropped_without_group_by", "SELECT count(*) AS n FROM customer c HAVING count(*) > 100",
         "FROM", "HAVING"},
        // A NOT group inside a NOT group gives its member to the outer one, as equal groups do, so
        // a double negation reads as a single one.
        {"double_not_folds_into_one", "SELECT c.id FROM customer c WHERE NOT (NOT c.country = 'FR')",
         "WHERE NOT (c.country = 'FR')", "NOT (NOT"},
        // Conditions written without brackets: a NOT before a group of conditions is written as
        // "NOT" and the group bare, so it reads as a NOT of the group's first condition.
        {"not_before_a_group_loses_its_brackets",
         "SELECT o.id FROM orders o WHERE NOT (o.status = 'open' AND (o.customer_id = 1 OR o.customer_id = "
         "2))",
         "WHERE NOT o.status = 'open' AND (o.customer_id = 1 OR o.customer_id = 2)", "NOT (o.status",
         kAllServers, TZvLayout::Restyled},
        // The condition reader passes over what it cannot place: a float written with an exponent
        // keeps only its integer part.
        {"stray_tokens_in_condition_passed_over", "SELECT p.id FROM product p WHERE p.price < 1.5e1",
         "(p.price < 1)", "1.5e1"},
    };
    return Changes;
}

} // namespace zv::test
