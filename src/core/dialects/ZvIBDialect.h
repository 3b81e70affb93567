// The InterBase/Firebird dialect: its scanner (word lists, capitals-only names, quotes that follow
// the SQL dialect number), its parser (FIRST/SKIP after SELECT, the trailing ROWS clause, the
// CONTAINING and STARTING WITH operators) and the two options objects that hold those clauses.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ZvSelectParser.h"

namespace zv {

// The server's SQL dialect number: 1 reads double-quoted text as strings and has no quoted names,
// 3 quotes names in double quotes.
enum TZvSQLDialect : std::uint8_t { qibDialect1, qibDialect3 };

// Which server the statements are written for: InterBase reads ROWS, Firebird reads FIRST/SKIP,
// and when it does not matter both are read and written.
enum TZvIBSQLServer : std::uint8_t { qssDontCare, qssInterBase, qssFireBird };

class TZvIBScanner : public TZvSQLScanner {
public:
    // Its word tests are the generic ones on the upper-cased word (ProcessIdent and
    // GetFormatTokenIdent upper-case a word read outside quotes); it quotes names its own way.
    TZvIBScanner() { DeclareWordRules(typeid(TZvIBScanner), TZvWordRules::FoldUpper, true); }
    TZvSQLDialect GetSQLDialect() const { return SQLDialect; }
    // The quote rules follow the dialect number, so the character table is rebuilt.
    void SetSQLDialect(TZvSQLDialect Value);

    // Capitals only: the server folds unquoted names to upper case, so a lower-case name is one
    // that needs quotes (the scanner reads lower-case words through ProcessIdent).
    bool IsAlpha(char C) override;
    bool IsQuote(char C) override;
    bool IsLegalSymbol(char C) override;
    // A literal already enclosed in one of the dialect's string quotes stays as written.
    std::string QuoteStr(std::string_view S) override;
    char GetIdentQuote() override;
    // True in dialect 3 only (and only while quoting is switched on).
    bool GetQuoteIdentifiers() override;
    bool GetProcessAliases() override;
    std::string GetCommaKeywords() override;
    std::string GetCommaFunctions() override;
    std::string GetCommaOperations() override;
    // S in upper case, quotes and all: how the server sees an unquoted word.
    std::string ProcessIdent(std::string_view S) override;
    // The dialect has no boolean literals.
    void DefineBooleans() override;
    // An unquoted name is written as the server keeps it, in upper case.
    std::string GetFormatTokenIdent(std::string_view S, bool Quoted) override;
    bool NeedQuotes(std::string_view S) override;
    // Dialect 1 cannot quote a name, so it is made legal instead: upper case, blanks as "_".
    std::string ProcessName(std::string_view S) override;
    std::string QuoteName(std::string_view S) override;
    bool IsIdentQuote(char C) override;

private:
    TZvSQLDialect SQLDialect = qibDialect3;
};

// The InterBase clause "ROWS m [TO n] [BY k] [PERCENT] [WITH TIES]" after the statement.
class TZvIBOptions {
public:
    // Copies every field of Source.
    void Assign(const TZvIBOptions& Source) { *this = Source; }
    // Every number 0, both switches off: no ROWS clause.
    void Clear() { *this = TZvIBOptions(); }
    // "ROWS m ..." or empty when no number is above 0; no blank or line break around it.
    std::string GetScript() const;

    bool GetPercent() const { return Percent; }
    void SetPercent(bool Value) { Percent = Value; }
    bool GetWithTies() const { return WithTies; }
    void SetWithTies(bool Value) { WithTies = Value; }
    std::int32_t GetRowsFrom() const { return RowsFrom; }
    void SetRowsFrom(std::int32_t Value) { RowsFrom = Value; }
    std::int32_t GetRowsBy() const { return RowsBy; }
    void SetRowsBy(std::int32_t Value) { RowsBy = Value; }
    std::int32_t GetRowsTo() const { return RowsTo; }
    void SetRowsTo(std::int32_t Value) { RowsTo = Value; }

private:
    bool Percent = false;
    bool WithTies = false;
    std::int32_t RowsFrom = 0;
    std::int32_t RowsBy = 0;
    std::int32_t RowsTo = 0;
};

// The Firebird clause "FIRST n SKIP m" between SELECT and the field list.
class TZvFBOptions {
public:
    void Assign(const TZvFBOptions& Source) { *this = Source; }
    void Clear() { *this = TZvFBOptions(); }
    // "FIRST n SKIP m " (each part only when above 0), ending in one blank so that it joins the
    // field list; empty when neither is set.
    std::string GetScript() const;

    std::int32_t GetFirst() const { return First; }
    void SetFirst(std::int32_t Value) { First = Value; }
    std::int32_t GetSkip() const { return Skip; }
    void SetSkip(std::int32_t Value) { Skip = Value; }

private:
    std::int32_t First = 0;
    std::int32_t Skip = 0;
};

class TZvIBSelectParser : public TZvSelectParser {
public:
    // Copies the model and settings; from another parser of this dialect also the server kind,
    // both options objects and the dialect number.
    void Assign(TZvSelectParser& Source) override;
    // Also clears both options objects.
    void Clear() override;

    TZvIBSQLServer GetSQLServer() const { return SQLServer; }
    void SetSQLServer(TZvIBSQLServer Value) { SQLServer = Value; }
    // The dialect number is kept on the scanner; it reads as dialect 1 when the scanner is not
    // of this dialect, and setting it then does nothing.
    TZvSQLDialect GetSQLDialect();
    void SetSQLDialect(TZvSQLDialect Value);

    TZvIBOptions& GetIBOptions() { return IBOptions; }
    TZvFBOptions& GetFBOptions() { return FBOptions; }
    void SetIBOptions(const TZvIBOptions& Value) { IBOptions.Assign(Value); }
    void SetFBOptions(const TZvFBOptions& Value) { FBOptions.Assign(Value); }

    // Names compare with regard to case, as the server keeps them, except in dialect 1, where no
    // name can be quoted and every name is upper case.
    bool GetCaseSensitiveIdentifiers() override;
    // A stored procedure without input parameters is written without "()".
    bool IsProcEmptyInputParamsBracket() override;

protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override;
    // The standard operators, then "CONTAINING" and "STARTING WITH".
    void DefineOperators() override;
    // FIRST n and SKIP m (each optional, in this order) before DISTINCT and the field list.
    void DoParseSelectClause() override;
    // ROWS m [TO n] [BY k] [PERCENT] [WITH TIES], after which only the end may follow.
    void DoParseAppendix() override;
    std::string GetSelectClauseScript() override;
    std::string GetAppendixScript() override;

private:
    TZvIBScanner* GetIBScanner();
    bool ReadsFirstSkip() const { return SQLServer != qssInterBase; }
    bool ReadsRows() const { return SQLServer != qssFireBird; }

    TZvIBSQLServer SQLServer = qssDontCare;
    TZvIBOptions IBOptions;
    TZvFBOptions FBOptions;
};

} // namespace zv
