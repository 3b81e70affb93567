// The Microsoft SQL Server dialect: its scanner (word lists, names in brackets, and the
// quoted-identifier switch that decides whether a double quote encloses a name or a string), its
// parser (ALL or DISTINCT, then TOP n [PERCENT] [WITH TIES] after SELECT; the "!<", "!=" and "!>"
// operators) and the options object that holds the TOP clause.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ZvSelectParser.h"

namespace zv {

class TZvMSSQLScanner : public TZvSQLScanner {
public:
    // Its word tests are the generic ones for a word read outside quotes (ProcessIdent changes
    // only quoted names): words are classified from the character table.
    TZvMSSQLScanner() { DeclareWordRules(typeid(TZvMSSQLScanner), TZvWordRules::Base); }
    // On (the server's default): a double quote encloses a name, like the brackets. Off: it
    // quotes a string, like the apostrophe. Changing it rebuilds the character table.
    bool GetQuotedIdentifier() const { return QuotedIdentifier; }
    void SetQuotedIdentifier(bool Value);

    // Letters, and "_", "@" and "#", with which the server's names may begin (@variables,
    // #temporary tables).
    bool IsAlpha(char C) override;
    // The generic delimiters without "[" and "]", so that brackets stay inside names.
    bool IsDelim(char C) override;
    bool IsQuote(char C) override;
    // "[" maps to "]" and "]" to "["; every other quote closes itself.
    char GetQuotePair(char Q) override;
    // The bracket: names are written in brackets whichever way the switch stands.
    char GetIdentQuote() override;
    bool IsIdentQuote(char C) override;
    // A literal in either string quote stays as written.
    std::string QuoteStr(std::string_view S) override;
    std::string GetCommaKeywords() override;
    std::string GetCommaFunctions() override;
    std::string GetCommaOperations() override;
    std::string GetCommaCompareOperators() override;
    std::string GetCommaJoinOperators() override;
    // Unquotes only a name that opens with an opening quote: "]a[" is not enclosed.
    std::string ProcessIdent(std::string_view S) override;
    // "FALSE" and "TRUE".
    void DefineBooleans() override;
    // Enclosed names and names beginning with "@" need no quotes; reserved words and function
    // names always do.
    bool NeedQuotes(std::string_view S) override;

private:
    bool QuotedIdentifier = true;
};

// The select options of one statement: ALL, and TOP n [PERCENT] [WITH TIES].
class TZvMSSQLOptions {
public:
    void Assign(const TZvMSSQLOptions& Source) { *this = Source; }
    // No ALL and no TOP clause.
    void Clear() { *this = TZvMSSQLOptions(); }
    // "TOP n", then " PERCENT" and " WITH TIES" when set, ending in one blank so that it joins the
    // field list; empty while Top is not above 0.
    std::string GetTopScript() const;

    // ALL as written after SELECT; DISTINCT is the parser's Distinct, and wins when both are set.
    bool GetAll() const { return All; }
    void SetAll(bool Value) { All = Value; }
    std::int32_t GetTop() const { return Top; }
    void SetTop(std::int32_t Value) { Top = Value; }
    bool GetPercent() const { return Percent; }
    void SetPercent(bool Value) { Percent = Value; }
    bool GetWithTies() const { return WithTies; }
    void SetWithTies(bool Value) { WithTies = Value; }

private:
    bool All = false;
    std::int32_t Top = 0;
    bool Percent = false;
    bool WithTies = false;
};

class TZvMSSelectParser : public TZvSelectParser {
public:
    // Copies the model and settings; from another parser of this dialect also its options and
    // the quoted-identifier switch.
    void Assign(TZvSelectParser& Source) override;
    // Also clears the options.
    void Clear() override;
    std::string GetCommaAggregates() override;

    TZvMSSQLOptions& GetMSSQLOptions() { return Options; }
    void SetMSSQLOptions(const TZvMSSQLOptions& Value) { Options.Assign(Value); }
    // The switch is kept on the scanner; it reads as on when the scanner is not of this dialect,
    // and setting it then does nothing.
    bool GetQuotedIdentifier();
    void SetQuotedIdentifier(bool Value);

protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override;
    // The standard operators, then "!<", "!=" and "!>".
    void DefineOperators() override;
    // ALL or DISTINCT, then TOP n [PERCENT] [WITH TIES], each optional, then the field list.
    void DoParseSelectClause() override;
    // ALL or DISTINCT, then TOP, as the server reads them.
    std::string GetSelectClauseScript() override;

private:
    TZvMSSQLScanner* GetMSScanner();
    bool ReadTopClause();

    TZvMSSQLOptions Options;
};

} // namespace zv
