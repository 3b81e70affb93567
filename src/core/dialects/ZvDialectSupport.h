// What the PostgreSQL, DB2 and Oracle dialects share: the name rules of a server that folds
// unquoted names to one case, a parser base that reads the number after a clause keyword, and the
// trailing "FETCH FIRST n ROWS ONLY" clause of DB2 and Oracle with its options object.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ZvSelectParser.h"

namespace zv {

// The case to which a server folds the names written without quotes.
enum TZvNameCase : std::uint8_t { ncUpperCase, ncLowerCase };

// A scanner for a server that folds unquoted names to one case: an unquoted word is read as the
// server sees it (folded), and a name keeps its quotes exactly when the server could not read it
// back without them. Only the apostrophe quotes strings; the double quote quotes names.
class TZvFoldingSQLScanner : public TZvSQLScanner {
public:
    explicit TZvFoldingSQLScanner(TZvNameCase ACase) : NameCase(ACase) {}

    TZvNameCase GetNameCase() const { return NameCase; }
    // A keyword or function name read outside quotes is folded as well: used as a name, it needs
    // quotes as a reserved word, and only the folded text keeps naming what the server reads.
    void GetNextToken() override;
    // Letters of the folded case only, so that a name holding the other case is one that needs
    // quotes (the scanner still reads such a word, through ProcessIdent).
    bool IsAlpha(char C) override;
    // The servers that fold to upper case also leave "$" and "#" in unquoted names.
    bool IsLegalSymbol(char C) override;
    bool IsQuote(char C) override;
    // Names are quoted where needed, aliases included: an alias folded on the way in would
    // otherwise name another column on the way back.
    bool GetProcessAliases() override;
    // A quoted name without its quotes; any other word folded.
    std::string ProcessIdent(std::string_view S) override;
    // A word read outside quotes is written as the server keeps it, folded.
    std::string GetFormatTokenIdent(std::string_view S, bool Quoted) override;
    // False for a name enclosed in identifier quotes; true for a keyword or function of the
    // dialect; otherwise true unless the name is made of the characters the server leaves
    // unquoted (IsIdentifier).
    bool NeedQuotes(std::string_view S) override;

    // S in the folded case.
    std::string FoldName(std::string_view S) const;

private:
    TZvNameCase NameCase;
};

// A parser with the clause readers its dialects share.
class TZvDialectSelectParser : public TZvSelectParser {
protected:
    // At a clause keyword: reads the integer after it into Value (a 32-bit number, at least
    // Minimum) and moves past it. Fails the statement at the token otherwise.
    bool ReadClauseNumber(std::int32_t& Value, std::int32_t Minimum);
    // A trailing clause as a line of its own: Text in keyword case and "\r\n"; empty for none.
    std::string ClauseLine(std::string_view Text) const;
};

// The rows a statement is cut to by "FETCH FIRST n ROWS ONLY"; 0 means no such clause.
class TZvFetchFirstOptions {
public:
    void Assign(const TZvFetchFirstOptions& Source) { FetchFirst = Source.FetchFirst; }
    void Clear() { FetchFirst = 0; }
    // "FETCH FIRST n ROWS ONLY" (the plural whatever was read), or empty when FetchFirst is 0.
    std::string GetScript() const;

    std::int32_t GetFetchFirst() const { return FetchFirst; }
    void SetFetchFirst(std::int32_t Value) { FetchFirst = Value; }

private:
    std::int32_t FetchFirst = 0;
};

// A parser whose dialect ends a statement with "FETCH FIRST n ROW|ROWS ONLY". The options object
// is the derived dialect's own (GetFetchFirstOptions).
class TZvFetchFirstSelectParser : public TZvDialectSelectParser {
public:
    // Also clears the options.
    void Clear() override;

protected:
    virtual TZvFetchFirstOptions& GetFetchFirstOptions() = 0;
    // "DISTINCT " when Distinct is set (keyword case), else empty.
    virtual std::string GetDistinctScript();
    // The FETCH FIRST clause on a line of its own, or empty.
    virtual std::string GetLimitScript();
    // "FETCH FIRST n ROW|ROWS ONLY" (n at least 1), after which only the end may follow.
    void DoParseAppendix() override;
    std::string GetSelectClauseScript() override { return GetDistinctScript(); }
    std::string GetAppendixScript() override { return GetLimitScript(); }
};

} // namespace zv
