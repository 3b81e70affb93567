// The name-to-parser table of the dialects.
#include "ZvDialects.h"

#include "ZvSelectParser.h"
#include "dialects/ZvDb2Dialect.h"
#include "dialects/ZvDbiDialect.h"
#include "dialects/ZvIBDialect.h"
#include "dialects/ZvMSDialect.h"
#include "dialects/ZvMyDialect.h"
#include "dialects/ZvOracleDialect.h"
#include "dialects/ZvPgDialect.h"

namespace zv {
namespace {

template <class TParser>
std::unique_ptr<TZvSelectParser> CreateParser() {
    return std::make_unique<TParser>();
}

struct TDialectRow {
    std::string_view Name;
    std::unique_ptr<TZvSelectParser> (*Create)();
};

constexpr TDialectRow kDialects[] = {
    {"generic", CreateParser<TZvSelectParser>}, {"interbase", CreateParser<TZvIBSelectParser>},
    {"mysql", CreateParser<TZvMySelectParser>}, {"dbisam", CreateParser<TZvDbiSelectParser>},
    {"mssql", CreateParser<TZvMSSelectParser>}, {"postgresql", CreateParser<TZvPgSelectParser>},
    {"db2", CreateParser<TZvDb2SelectParser>},  {"oracle", CreateParser<TZvOracleSelectParser>},
};

} // namespace

std::vector<std::string> DialectNames() {
    std::vector<std::string> Names;
    for (const TDialectRow& Row : kDialects)
        Names.emplace_back(Row.Name);
    return Names;
}

std::unique_ptr<TZvSelectParser> CreateDialectParser(std::string_view Name) {
    for (const TDialectRow& Row : kDialects) {
        if (Row.Name == Name)
            return Row.Create();
    }
    return nullptr;
}

} // namespace zv
