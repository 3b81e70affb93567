// The DBISAM dialect: a scanner with the engine's word lists, strings in apostrophes only and
// names in double quotes, and a parser with its aggregates and case-insensitive names. The dialect
// has no clauses of its own.
#pragma once

#include <memory>
#include <string>

#include "ZvSelectParser.h"

namespace zv {

class TZvDbiSQLScanner : public TZvSQLScanner {
public:
    // Its word tests are the generic ones: words are classified from the character table.
    TZvDbiSQLScanner() { DeclareWordRules(typeid(TZvDbiSQLScanner), TZvWordRules::Base); }
    // Only the apostrophe quotes a string; the double quote, the generic identifier quote, encloses
    // a name, which then needs no quotes by the generic rule.
    bool IsQuote(char C) override;
    // TRUE and FALSE stand among the engine's reserved words as well as being its boolean
    // literals. Read as keywords they could stand nowhere in a statement, so outside quotes the
    // literal wins: such a token has the kinds {tkBoolean}.
    void GetNextToken() override;
    std::string GetCommaKeywords() override;
    std::string GetCommaFunctions() override;
    // "FALSE" and "TRUE".
    void DefineBooleans() override;
};

class TZvDbiSelectParser : public TZvSelectParser {
public:
    // Unquoted names are compared without regard to case, whatever the setting says.
    bool GetCaseSensitiveIdentifiers() override;
    std::string GetCommaAggregates() override;

protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override;
};

} // namespace zv
