// The dialect table: every name makes a parser of its own dialect's class, and only those names do.
#include "ZvDialects.h"
#include "ZvErrors.h"
#include "ZvParser.h"
#include "dialects/ZvDb2Dialect.h"
#include "dialects/ZvDbiDialect.h"
#include "dialects/ZvIBDialect.h"
#include "dialects/ZvMSDialect.h"
#include "dialects/ZvMyDialect.h"
#include "dialects/ZvOracleDialect.h"
#include "dialects/ZvPgDialect.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

namespace zv {
namespace {

TEST(ZvDialects, NamesComeInTableOrderGenericFirst) {
    EXPECT_EQ(DialectNames(), (std::vector<std::string>{"generic", "interbase", "mysql", "dbisam", "mssql",
                                                        "postgresql", "db2", "oracle"}));
}

TEST(ZvDialects, EachNameMakesAParserOfItsDialectsClass) {
    const struct {
        const char* Name;
        const std::type_info& Class;
    } Rows[] = {
        {"generic", typeid(TZvSelectParser)}, {"interbase", typeid(TZvIBSelectParser)},
        {"mysql", typeid(TZvMySelectParser)}, {"dbisam", typeid(TZvDbiSelectParser)},
        {"mssql", typeid(TZvMSSelectParser)}, {"postgresql", typeid(TZvPgSelectParser)},
        {"db2", typeid(TZvDb2SelectParser)},  {"oracle", typeid(TZvOracleSelectParser)},
    };
    for (const auto& Row : Rows) {
        std::unique_ptr<TZvSelectParser> Parser = CreateDialectParser(Row.Name);
        ASSERT_NE(Parser, nullptr) << Row.Name;
        const TZvSelectParser& Object = *Parser;
        EXPECT_EQ(typeid(Object), Row.Class) << Row.Name;
    }
}

TEST(ZvDialects, EveryParserMadeIsFreshAndWorks) {
    for (const std::string& Name : DialectNames()) {
        std::unique_ptr<TZvSelectParser> First = CreateDialectParser(Name);
        std::unique_ptr<TZvSelectParser> Second = CreateDialectParser(Name);
        ASSERT_NE(First.get(), Second.get()) << Name;
        First->SetExpression("SELECT a.x, b.y FROM a, b");
        EXPECT_EQ(First->GetTableDefs().Count(), 2) << Name;
        EXPECT_EQ(Second->GetTableDefs().Count(), 0) << Name;
    }
}

TEST(ZvDialects, UnknownNamesMakeNoParser) {
    for (const char* Name : {"", "Generic", "GENERIC", "sqlite", "postgres", " mysql", "oracle "})
        EXPECT_EQ(CreateDialectParser(Name), nullptr) << "'" << Name << "'";
}

} // namespace
} // namespace zv
