// The statement generator behind the benchmarks' corpora. Its vocabulary is a small order-entry
// schema; the weights are chosen so that a typical statement is about 340 bytes long and uses
// every clause the designer edits, in the portable SQL that every measured tool accepts.
#include "ZvCorpus.h"

namespace zv {

namespace {

const char* const kTableNames[] = {"customers",  "orders",     "order_items", "products",   "suppliers",
                                   "invoices",   "payments",   "employees",   "regions",    "shipments",
                                   "warehouses", "categories", "accounts",    "departments"};

// Mostly plain names; a few quoted names with blanks, which the scanner reads differently.
const char* const kColumns[] = {
    "id",        "name",    "code",     "amount", "price", "quantity", "status",         "created_at",
    "region_id", "balance", "discount", "note",   "city",  "country",  "\"Order Date\"", "\"Unit Price\""};

const char* const kKeyColumns[] = {"customer_id", "order_id",  "product_id",
                                   "supplier_id", "region_id", "account_id"};

const char* const kNumericColumns[] = {"amount", "price", "quantity", "balance", "discount"};
const char* const kTextColumns[] = {"name", "code", "status", "note", "city", "country"};
const char* const kAggregates[] = {"SUM", "MIN", "MAX", "AVG"};
const char* const kComparisons[] = {"=", "<>", "<", ">", "<=", ">="};
const char* const kWords[] = {"Smith", "North", "open", "A-1", "Lee", "paid", "Oslo", "x"};

} // namespace

std::uint64_t TZvCorpusGenerator::Next() {
    State += 0x9E3779B97F4A7C15ull;
    std::uint64_t Z = State;
    Z = (Z ^ (Z >> 30)) * 0xBF58476D1CE4E5B9ull;
    Z = (Z ^ (Z >> 27)) * 0x94D049BB133111EBull;
    return Z ^ (Z >> 31);
}

std::string TZvCorpusGenerator::Typical() {
    return Statement({3, 8, 1, 4, 2});
}

std::string TZvCorpusGenerator::Large() {
    return Statement({50, 80, 10, 14, 3});
}

std::string TZvCorpusGenerator::Column(const std::vector<TTable>& Tables) {
    return Pick(Tables).Alias + "." + Pick(kColumns);
}

std::string TZvCorpusGenerator::Literal() {
    switch (Below(4)) {
    case 0:
        return std::to_string(Between(0, 5000));
    case 1:
        return std::to_string(Between(0, 999)) + "." + std::to_string(Between(1, 99));
    case 2:
        return "'" + Pick(kWords) + "'";
    default:
        return std::to_string(Between(1, 100));
    }
}

// One entry of the SELECT list. In a grouped statement every entry that is not an aggregate is
// also a grouping key, as a valid grouped query needs; those entries are columns, since a
// grouping key is a name here.
std::string TZvCorpusGenerator::FieldExpression(const std::vector<TTable>& Tables, bool Grouped, int Index,
                                                std::vector<std::string>& GroupKeys,
                                                std::vector<std::string>& Labels) {
    const std::string& A = Pick(Tables).Alias;
    const std::string N = std::to_string(Index);
    if (Grouped && Chance(40)) {
        const std::string Label = Chance(30) ? "n_" + N : "total_" + N;
        Labels.push_back(Label);
        if (Label[0] == 'n')
            return "COUNT(*) AS " + Label;
        return Pick(kAggregates) + "(" + A + "." + Pick(kNumericColumns) + ") AS " + Label;
    }
    std::string Expression;
    std::string Label;
    const int Roll = Grouped ? Below(70) : Below(100);
    if (Roll < 55) {
        Expression = A + "." + Pick(kColumns);
    } else if (Roll < 70) {
        Expression = A + "." + Pick(kColumns);
        Label = "label_" + N;
    } else if (Roll < 82) {
        Expression = A + "." + Pick(kNumericColumns) +
                     (Chance(50) ? " * " + A + "." + Pick(kNumericColumns) : " * 1.25");
        Label = "calc_" + N;
    } else if (Roll < 94) {
        Expression = Chance(50) ? (Chance(50) ? "UPPER(" : "LOWER(") + A + "." + Pick(kTextColumns) + ")"
                                : "COALESCE(" + A + "." + Pick(kTextColumns) + ", 'n/a')";
        Label = "text_" + N;
    } else {
        Expression = A + ".\"Order Date\"";
    }
    if (Grouped)
        GroupKeys.push_back(Expression);
    if (Label.empty())
        return Expression;
    Labels.push_back(Label);
    return Expression + " AS " + Label;
}

// The first table, then each further table joined to one of the tables before it: the tree of
// joins a designer diagram draws.
std::string TZvCorpusGenerator::FromClause(const std::vector<TTable>& Tables) {
    std::string Text = " FROM " + Tables[0].Name + " " + Tables[0].Alias;
    for (std::size_t K = 1; K < Tables.size(); ++K) {
        const int Roll = Below(100);
        const char* Kind = Roll < 45   ? " INNER JOIN "
                           : Roll < 55 ? " JOIN "
                           : Roll < 80 ? " LEFT OUTER JOIN "
                           : Roll < 90 ? " LEFT JOIN "
                           : Roll < 97 ? " RIGHT OUTER JOIN "
                                       : " FULL OUTER JOIN ";
        const TTable& Target = Tables[static_cast<std::size_t>(Below(static_cast<int>(K)))];
        const TTable& Joined = Tables[K];
        Text += Kind + Joined.Name + " " + Joined.Alias + " ON " + Target.Alias + ".id = " + Joined.Alias +
                "." + Pick(kKeyColumns);
        if (Chance(25))
            Text += " AND " + Target.Alias + ".region_id = " + Joined.Alias + ".region_id";
    }
    return Text;
}

std::string TZvCorpusGenerator::Predicate(const std::vector<TTable>& Tables) {
    const std::string& A = Pick(Tables).Alias;
    switch (Below(8)) {
    case 0:
        return A + "." + Pick(kTextColumns) + (Chance(20) ? " NOT LIKE '" : " LIKE '") +
               (Chance(25) ? "O''Br" : Pick(kWords)) + "%'";
    case 1:
        return A + "." + Pick(kNumericColumns) + (Chance(15) ? " NOT BETWEEN " : " BETWEEN ") +
               std::to_string(Between(1, 100)) + " AND " + std::to_string(Between(101, 9000));
    case 2: {
        std::string List = "'" + Pick(kWords) + "'";
        for (int I = 0, Extra = Between(1, 3); I < Extra; ++I)
            List += ", '" + Pick(kWords) + "'";
        return A + "." + Pick(kTextColumns) + (Chance(15) ? " NOT IN (" : " IN (") + List + ")";
    }
    case 3:
        return A + "." + Pick(kColumns) + (Chance(50) ? " IS NULL" : " IS NOT NULL");
    case 4:
        return A + ".id " + Pick(kComparisons) + " " + Pick(Tables).Alias + "." + Pick(kKeyColumns);
    case 5:
        return A + "." + Pick(kNumericColumns) + " * " + std::to_string(Between(2, 9)) + " > " + Literal();
    default:
        return A + "." + Pick(kColumns) + " " + Pick(kComparisons) + " " + Literal();
    }
}

// A random AND/OR tree; compound children are bracketed, and now and then negated.
std::string TZvCorpusGenerator::Condition(const std::vector<TTable>& Tables, int Depth) {
    if (Depth == 0 || Chance(40))
        return Predicate(Tables);
    const char* Operator = Chance(70) ? " AND " : " OR ";
    std::string Text;
    for (int I = 0, Children = Between(2, 3); I < Children; ++I) {
        std::string Child = Condition(Tables, Depth - 1);
        if (Child.find(" AND ") != std::string::npos || Child.find(" OR ") != std::string::npos)
            Child = (Chance(10) ? "NOT (" : "(") + Child + ")";
        Text += (I ? Operator : "") + Child;
    }
    return Text;
}

std::string TZvCorpusGenerator::Having(const std::vector<TTable>& Tables) {
    std::string Text = " HAVING " + Pick(kAggregates) + "(" + Pick(Tables).Alias + "." +
                       Pick(kNumericColumns) + ") > " + std::to_string(Between(1, 1000));
    if (Chance(30))
        Text += " AND COUNT(*) >= " + std::to_string(Between(2, 10));
    return Text;
}

std::string TZvCorpusGenerator::OrderBy(const std::vector<TTable>& Tables,
                                        const std::vector<std::string>& Labels, int FieldCount) {
    std::string Text = " ORDER BY ";
    for (int I = 0, Items = Between(1, 3); I < Items; ++I) {
        const int Roll = Below(100);
        if (I)
            Text += ", ";
        if (Roll < 25 && !Labels.empty())
            Text += Pick(Labels);
        else if (Roll < 40)
            Text += std::to_string(Between(1, FieldCount));
        else
            Text += Column(Tables);
        const int Direction = Below(10);
        Text += Direction < 3 ? " DESC" : Direction < 5 ? " ASC" : "";
    }
    return Text;
}

std::string TZvCorpusGenerator::Statement(const TShape& Shape) {
    std::vector<TTable> Tables;
    for (int K = 0, Count = Between(Shape.MinTables, Shape.MaxTables); K < Count; ++K) {
        const std::string& Name = Pick(kTableNames);
        Tables.push_back({Name, Name.substr(0, 1) + std::to_string(K)});
    }
    const bool Grouped = Chance(35);
    const int FieldCount = Between(Shape.MinFields, Shape.MaxFields);
    std::vector<std::string> GroupKeys;
    std::vector<std::string> Labels;
    std::string Text = Chance(8) ? "SELECT DISTINCT " : "SELECT ";
    for (int I = 0; I < FieldCount; ++I)
        Text += (I ? ", " : "") + FieldExpression(Tables, Grouped, I, GroupKeys, Labels);
    Text += FromClause(Tables);
    if (Chance(85))
        Text += " WHERE " + Condition(Tables, Shape.WhereDepth);
    if (Grouped && !GroupKeys.empty()) {
        Text += " GROUP BY ";
        for (std::size_t I = 0; I < GroupKeys.size(); ++I)
            Text += (I ? ", " : "") + GroupKeys[I];
        if (Chance(50))
            Text += Having(Tables);
    }
    if (Chance(60))
        Text += OrderBy(Tables, Labels, FieldCount);
    return Text;
}

std::vector<std::string> MakeCorpus(TZvCorpusKind Kind, std::size_t Count, std::uint64_t Seed,
                                    std::string_view Dialect) {
    TZvCorpusGenerator Generator(Seed);
    std::vector<std::string> Statements;
    Statements.reserve(Count);
    for (std::size_t I = 0; I < Count; ++I) {
        const bool Large = Kind == TZvCorpusKind::Large || (Kind == TZvCorpusKind::Mixed && I % 20 == 19);
        Statements.push_back(ForDialect(Large ? Generator.Large() : Generator.Typical(), Dialect));
    }
    return Statements;
}

std::string ForDialect(std::string Statement, std::string_view Dialect) {
    const auto ReplaceAll = [&Statement](std::string_view From, std::string_view To) {
        for (std::size_t At = Statement.find(From); At != std::string::npos;
             At = Statement.find(From, At + To.size()))
            Statement.replace(At, From.size(), To);
    };
    if (Dialect == "mysql") {
        ReplaceAll("\"Order Date\"", "`Order Date`");
        ReplaceAll("\"Unit Price\"", "`Unit Price`");
    } else if (Dialect == "oracle") {
        ReplaceAll("<>", "!=");
        ReplaceAll("COALESCE(", "NVL(");
        ReplaceAll(" FULL OUTER JOIN ", " LEFT OUTER JOIN ");
    }
    return Statement;
}

std::string MakeWideStatement(int Fields, int Tables) {
    std::string Text = "SELECT ";
    for (int I = 0; I < Fields; ++I) {
        if (I)
            Text += ", ";
        Text += "t" + std::to_string(I % Tables) + ".c" + std::to_string(I / Tables);
    }
    Text += " FROM tab0 t0";
    for (int K = 1; K < Tables; ++K) {
        const std::string Joined = "t" + std::to_string(K);
        Text += " INNER JOIN tab" + std::to_string(K) + " " + Joined + " ON t" + std::to_string(K - 1) +
                ".id = " + Joined + ".parent_id";
    }
    return Text;
}

std::size_t CorpusBytes(const std::vector<std::string>& Statements) {
    std::size_t Bytes = 0;
    for (const std::string& S : Statements)
        Bytes += S.size();
    return Bytes;
}

std::string JoinCorpus(const std::vector<std::string>& Statements, const std::string& Separator) {
    std::string Text;
    Text.reserve(CorpusBytes(Statements) + Statements.size() * Separator.size());
    for (std::size_t I = 0; I < Statements.size(); ++I) {
        if (I)
            Text += Separator;
        Text += Statements[I];
    }
    return Text;
}

} // namespace zv
