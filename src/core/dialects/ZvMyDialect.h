// The MySQL dialect: its scanner (word lists, names in back quotes, quoted text in which a
// backslash escapes the quote), its parser (the filter word and option words after SELECT, the
// trailing LIMIT clause) and the options object that holds those clauses.
#pragma once

#include <bitset>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ZvSelectParser.h"

namespace zv {

// The word that filters repeated rows, written right after SELECT.
enum TZvMySQLFilter : std::uint8_t { myfoNone, myfoDistinct, myfoDistinctRow, myfoAll };

// The option words that may follow the filter word; a statement may carry any set of them.
enum TZvMySQLSelectOption : std::uint8_t {
    mysoStraightJoin,
    mysoSQLSmallResult,
    mysoSQLBigResult,
    mysoSQLBufferResult,
    mysoHighPriority,
};
using TZvMySQLSelectOptions = std::bitset<mysoHighPriority + 1>;

// The words as the server reads and the generator writes them: "DISTINCTROW", "SQL_BIG_RESULT" ...
// The filter word of myfoNone is empty.
std::string_view MySQLFilterWord(TZvMySQLFilter Filter);
std::string_view MySQLSelectOptionWord(TZvMySQLSelectOption Option);

class TZvMySQLScanner : public TZvSQLScanner {
public:
    // Its word tests are the generic ones: words are classified from the character table.
    TZvMySQLScanner() { DeclareWordRules(typeid(TZvMySQLScanner), TZvWordRules::Base); }
    // A literal in either string quote stays as written.
    std::string QuoteStr(std::string_view S) override;
    std::string GetCommaKeywords() override;
    std::string GetCommaFunctions() override;
    // The back quote on both sides of a name. Both the double quote and the apostrophe stay string
    // quotes, so a name enclosed in back quotes is the only enclosed name and needs no quotes by
    // the generic rule.
    char GetIdentQuote() override;
    bool IsIdentQuote(char C) override;
    // A quote after a backslash is part of the text: it neither ends the text nor counts among the
    // trailing quotes that tell a doubled quote from a closing one.
    bool IsTerminator(char C, std::string_view Text, char Next, char Quote) override;
};

// The select options and the LIMIT clause of one statement.
class TZvMySQLOptions {
public:
    void Assign(const TZvMySQLOptions& Source) { *this = Source; }
    // No filter word, no option word, no LIMIT.
    void Clear() { *this = TZvMySQLOptions(); }
    // The filter word followed by one blank; empty for myfoNone.
    std::string GetFilterScript() const;
    // The option words that are set, in the order of TZvMySQLSelectOption, each followed by one
    // blank; empty when none is set.
    std::string GetOptionsScript() const;
    // "LIMIT n" or "LIMIT m, n" with the numbers as written; empty while there is no first number
    // (a second number alone is not written). No blank or line break around it.
    std::string GetLimitScript() const;

    TZvMySQLFilter GetFilter() const { return Filter; }
    void SetFilter(TZvMySQLFilter Value) { Filter = Value; }
    const TZvMySQLSelectOptions& GetSelectOptions() const { return SelectOptions; }
    void SetSelectOptions(const TZvMySQLSelectOptions& Value) { SelectOptions = Value; }
    bool HasSelectOption(TZvMySQLSelectOption Option) const { return SelectOptions.test(Option); }
    void SetSelectOption(TZvMySQLSelectOption Option, bool Value) { SelectOptions.set(Option, Value); }
    // The LIMIT numbers are kept as the digits written: the server takes counts beyond 32 bits
    // ("LIMIT 5, 18446744073709551615" reads to the last row), and an empty text means absent.
    const std::string& GetLimitFirst() const { return LimitFirst; }
    void SetLimitFirst(std::string_view Value) { LimitFirst = Value; }
    const std::string& GetLimitSecond() const { return LimitSecond; }
    void SetLimitSecond(std::string_view Value) { LimitSecond = Value; }

private:
    TZvMySQLFilter Filter = myfoNone;
    TZvMySQLSelectOptions SelectOptions;
    std::string LimitFirst;
    std::string LimitSecond;
};

class TZvMySelectParser : public TZvSelectParser {
public:
    // Copies the model and settings; from another parser of this dialect also its options.
    void Assign(TZvSelectParser& Source) override;
    // Also clears the options.
    void Clear() override;

    // The filter word stands for Distinct: true only for DISTINCT (DISTINCTROW and ALL are other
    // filters). Setting true chooses DISTINCT; setting false drops DISTINCT and leaves another
    // filter word as it is.
    bool GetDistinct() override;
    void SetDistinct(bool Value) override;
    // Unquoted names are compared without regard to case, whatever the setting says.
    bool GetCaseSensitiveIdentifiers() override;
    std::string GetCommaAggregates() override;

    TZvMySQLOptions& GetMySQLOptions() { return Options; }
    void SetMySQLOptions(const TZvMySQLOptions& Value) { Options.Assign(Value); }

protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override;
    // An optional filter word (ALL, DISTINCT, DISTINCTROW), then any of the option words, then
    // the field list. The option words are known by their text, keywords or not.
    void DoParseSelectClause() override;
    // LIMIT n or LIMIT m, n, after which only the end may follow.
    void DoParseAppendix() override;
    // The filter word, then the option words, as the server reads them.
    std::string GetSelectClauseScript() override;
    // The LIMIT clause on a line of its own.
    std::string GetAppendixScript() override;

private:
    TZvMySQLOptions Options;
};

} // namespace zv
