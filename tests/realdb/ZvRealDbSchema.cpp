// The rows are written once as SQL literals per table; every server gets the same INSERTs.
#include "ZvRealDbSchema.h"

namespace zv::test {
namespace {

struct TTableRows {
    const char* Table;
    const char* Columns;
    std::vector<const char*> Values; // each the text inside VALUES ( ... )
};

const std::vector<TTableRows>& Rows() {
    static const std::vector<TTableRows> Tables = {
        {"dept",
         "id, name, parent_id, budget",
         {
             "1, 'Head Office', NULL, 500000.00",
             "2, 'Sales', 1, 120000.50",
             "3, 'Research & Development', 1, 250000.00",
             "4, 'Support', 2, NULL",
             "5, 'Ventas Españolas', 2, 45000.25",
             "6, 'Dormant', NULL, 0.00",
         }},
        {"employee",
         "id, dept_id, manager_id, first_name, last_name, salary, hired, email",
         {
             "1, 1, NULL, 'Ada', 'Quill', 9800.00, '2015-03-01', 'ada@example.org'",
             "2, 2, 1, 'Brendan', 'O''Brien', 5200.50, '2017-06-15', 'brendan@example.org'",
             "3, 3, 1, 'Zoë', 'Ångström', 7400.00, '2016-01-10', NULL",
             "4, 2, 2, 'José', 'Müller', 4100.00, '2019-11-30', 'jose@example.org'",
             "5, 2, 2, 'Mia', 'D''Arcy', 4100.00, '2021-02-01', NULL",
             "6, 3, 3, 'Ivan', 'Petrov', 6100.75, '2018-08-20', 'ivan@example.org'",
             "7, 3, 6, 'Chloé', 'Lefèvre', 3900.00, '2022-05-05', 'chloe@example.org'",
             "8, 4, 2, 'Sam', 'Smith \"Sunny\"', 3500.00, '2023-09-12', NULL",
             "9, 5, 4, 'Lucía', 'García', 3600.00, '2020-04-01', 'lucia@example.org'",
             "10, NULL, 1, 'Noah', 'Nobody', 2500.00, '2024-01-02', NULL",
             "11, 4, 8, 'Kai', 'Zhang', 3500.00, '2023-10-01', 'kai@example.org'",
             "12, 3, 3, 'Eve', 'Adams', 8000.00, '2014-12-31', 'eve@example.org'",
         }},
        {"customer",
         "id, name, city, country, credit",
         {
             "1, 'Café Zürich', 'Zürich', 'CH', 15000.00",
             "2, 'O''Malley & Sons', 'Dublin', 'IE', 8000.00",
             "3, 'Smith \"Big\" Ltd', 'London', 'GB', NULL",
             "4, 'Łódź Traders', 'Łódź', 'PL', 2500.50",
             "5, 'Acme', NULL, 'US', 0.00",
             "6, 'Bäckerei Groß', 'Berlin', 'DE', 1200.00",
             "7, 'Nordlys AS', 'Tromsø', 'NO', 9999.99",
             "8, 'Quiet Client', 'London', 'GB', 300.00",
             "9, 'Zeta 100%', 'Paris', 'FR', 4500.00",
             "10, 'a_b Corp', 'Paris', 'FR', NULL",
         }},
        {"product",
         "id, name, category, price, weight, size",
         {
             "1, 'Widget', 'tools', 2.50, 0.125, 'S'",
             "2, 'Gadget', 'tools', 10.00, 1.5, 'M'",
             "3, 'Gizmo Pro', 'electronics', 99.99, 2.25, 'L'",
             "4, 'Crème brûlée kit', 'food', 15.00, NULL, NULL",
             "5, 'Spare ''O'' ring', NULL, 0.35, 0.01, 'S'",
             "6, 'Unused thing', 'misc', 1000.00, 40.0, 'XL'",
             "7, 'Cable', 'electronics', 5.00, 0.2, 'M'",
         }},
        {"orders",
         "id, customer_id, employee_id, ordered, status, note",
         {
             "1, 1, 2, '2024-01-05', 'shipped', 'first order'",
             "2, 1, 4, '2024-02-11', 'shipped', NULL",
             "3, 2, 2, '2024-02-20', 'open', 'rush; call before'",
             "4, 3, 5, '2024-03-01', 'cancelled', 'customer''s mistake'",
             "5, 4, 9, '2024-03-15', 'shipped', 'über fast'",
             "6, 6, 4, '2024-04-01', 'open', NULL",
             "7, 7, NULL, '2024-04-18', 'open', 'web shop'",
             "8, 9, 5, '2024-05-02', 'shipped', '50% prepaid'",
             "9, 1, 2, '2024-05-30', 'open', NULL",
             "10, 2, 8, '2024-06-06', 'shipped', 'gift'",
             "11, 10, 9, '2024-06-07', 'returned', NULL",
             "12, 4, 4, '2023-12-24', 'shipped', 'Christmas'",
         }},
        {"order_line",
         "order_id, line_no, product_id, qty, discount",
         {
             "1, 1, 1, 10, NULL",  "1, 2, 2, 1, 0.10",   "2, 1, 3, 2, NULL",  "2, 2, 7, 5, 0.05",
             "3, 1, 1, 100, 0.20", "4, 1, 4, 3, NULL",   "5, 1, 2, 4, NULL",  "5, 2, 5, 50, 0.50",
             "5, 3, 7, 1, NULL",   "6, 1, 3, 1, 0.15",   "7, 1, 4, 2, NULL",  "8, 1, 1, 7, NULL",
             "8, 2, 3, 1, 0.05",   "9, 1, 2, 3, NULL",   "10, 1, 4, 1, NULL", "10, 2, 5, 12, 0.25",
             "11, 1, 7, 2, NULL",  "12, 1, 1, 20, 0.10", "12, 2, 2, 2, NULL", "12, 3, 3, 1, NULL",
         }},
    };
    return Tables;
}

} // namespace

const std::vector<std::string>& RealDbSchema() {
    static const std::vector<std::string> Statements = {
        "CREATE TABLE dept (id INTEGER NOT NULL PRIMARY KEY, name VARCHAR(40) NOT NULL, "
        "parent_id INTEGER REFERENCES dept (id), budget NUMERIC(12, 2))",
        "CREATE TABLE employee (id INTEGER NOT NULL PRIMARY KEY, dept_id INTEGER REFERENCES dept (id), "
        "manager_id INTEGER REFERENCES employee (id), first_name VARCHAR(30) NOT NULL, "
        "last_name VARCHAR(30) NOT NULL, salary NUMERIC(10, 2) NOT NULL, hired DATE NOT NULL, "
        "email VARCHAR(60))",
        "CREATE TABLE customer (id INTEGER NOT NULL PRIMARY KEY, name VARCHAR(40) NOT NULL, "
        "city VARCHAR(30), country CHAR(2) NOT NULL, credit NUMERIC(10, 2))",
        "CREATE TABLE product (id INTEGER NOT NULL PRIMARY KEY, name VARCHAR(40) NOT NULL, "
        "category VARCHAR(20), price NUMERIC(10, 2) NOT NULL, weight DOUBLE PRECISION, size VARCHAR(4))",
        "CREATE TABLE orders (id INTEGER NOT NULL PRIMARY KEY, "
        "customer_id INTEGER NOT NULL REFERENCES customer (id), "
        "employee_id INTEGER REFERENCES employee (id), ordered DATE NOT NULL, "
        "status VARCHAR(10) NOT NULL, note VARCHAR(60))",
        "CREATE TABLE order_line (order_id INTEGER NOT NULL REFERENCES orders (id), "
        "line_no INTEGER NOT NULL, product_id INTEGER NOT NULL REFERENCES product (id), "
        "qty INTEGER NOT NULL, discount NUMERIC(4, 2), PRIMARY KEY (order_id, line_no))",
    };
    return Statements;
}

std::vector<std::string> RealDbRows() {
    std::vector<std::string> Statements;
    for (const TTableRows& Table : Rows()) {
        for (const char* Values : Table.Values) {
            Statements.push_back(std::string("INSERT INTO ") + Table.Table + " (" + Table.Columns +
                                 ") VALUES (" + Values + ")");
        }
    }
    return Statements;
}

} // namespace zv::test
