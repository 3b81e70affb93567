// The PostgreSQL dialect: its scanner (word lists, names folded to lower case, "_" may begin a
// name, the "~" comparisons), its parser (DISTINCT ON, LIMIT and OFFSET, ILIKE) and the options
// object that holds those clauses.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ZvDialectSupport.h"

namespace zv {

class TZvPgSQLScanner : public TZvFoldingSQLScanner {
public:
    // Its word tests are the generic ones on the folded word, but for a name that may begin
    // with "_" (IsIdentifier, which the word classification asks for each character).
    TZvPgSQLScanner() : TZvFoldingSQLScanner(ncLowerCase) {
        DeclareWordRules(typeid(TZvPgSQLScanner), TZvWordRules::FoldLower);
    }

    // The generic rule, but "_" may also begin a name.
    bool IsIdentifier(std::string_view S) override;
    std::string GetCommaKeywords() override;
    std::string GetCommaFunctions() override;
    std::string GetCommaOperations() override;
    std::string GetCommaCompareOperators() override;
};

// The clauses of a statement that the model holds beside the generic ones: the column list of
// "DISTINCT ON (...)", and the trailing "LIMIT n" and "OFFSET m".
class TZvPgSQLOptions {
public:
    void Assign(const TZvPgSQLOptions& Source) { *this = Source; }
    // No DISTINCT ON list, no limit, no offset.
    void Clear() { *this = TZvPgSQLOptions(); }
    // The trailing clauses, each "LIMIT n" or "OFFSET m" on a line of its own ending in "\r\n"
    // (LIMIT first); empty when neither number is above 0.
    std::string GetScript() const;

    // The column references of DISTINCT ON, each as a name is kept ("t.a", "\"My T\".b").
    const std::vector<std::string>& GetDistinctOn() const { return DistinctOn; }
    void SetDistinctOn(std::vector<std::string> Value) { DistinctOn = std::move(Value); }
    // 0: no LIMIT clause.
    std::int32_t GetLimit() const { return Limit; }
    void SetLimit(std::int32_t Value) { Limit = Value; }
    // 0: no OFFSET clause (an offset of 0 skips nothing).
    std::int32_t GetOffset() const { return Offset; }
    void SetOffset(std::int32_t Value) { Offset = Value; }

private:
    std::vector<std::string> DistinctOn;
    std::int32_t Limit = 0;
    std::int32_t Offset = 0;
};

class TZvPgSelectParser : public TZvDialectSelectParser {
public:
    // Copies the model and settings; from another parser of this dialect also the options.
    void Assign(TZvSelectParser& Source) override;
    // Also clears the options.
    void Clear() override;

    TZvPgSQLOptions& GetPgOptions() { return PgOptions; }
    void SetPgOptions(const TZvPgSQLOptions& Value) { PgOptions.Assign(Value); }

    // Names are folded on the way in, so what is left to compare is exact.
    bool GetCaseSensitiveIdentifiers() override { return true; }
    // Generated aliases ("field_1") are written as the server folds them.
    bool IsLowerCaseAliases() override { return true; }

protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override;
    // The standard operators, then "~", "~*", "!~", "!~*", "ILIKE" and "NOT ILIKE".
    void DefineOperators() override;
    // "DISTINCT ON (...)" read by DoParseDistinct, then the generic select clause.
    void DoParseSelectClause() override;
    // At "ON": the bracketed, comma-separated list of (possibly qualified) column names.
    virtual void DoParseDistinct();
    // LIMIT n and OFFSET m, in either order, each at most once, after which only the end may follow.
    void DoParseAppendix() override;
    // "DISTINCT ON (a, b) " in place of "DISTINCT " when the list is not empty.
    std::string GetSelectClauseScript() override;
    std::string GetAppendixScript() override;

private:
    bool ReadDistinctOnName(std::string& Name);

    TZvPgSQLOptions PgOptions;
};

} // namespace zv
