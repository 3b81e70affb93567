// The user's case settings for generated statements: how keywords and function names are written,
// and whether every condition of a criteria list is bracketed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zv {

enum TZvFormatMode : std::uint8_t { qfmAsIs, qfmUpperCase, qfmLowerCase, qfmFirstUpper };

class TZvScriptFormat {
public:
    TZvFormatMode GetKeywordsFormat() const { return KeywordsFormat; }
    void SetKeywordsFormat(TZvFormatMode Value) { KeywordsFormat = Value; }
    TZvFormatMode GetFunctionsFormat() const { return FunctionsFormat; }
    void SetFunctionsFormat(TZvFormatMode Value) { FunctionsFormat = Value; }
    bool GetAlwaysBracketConditions() const { return AlwaysBracketConditions; }
    void SetAlwaysBracketConditions(bool Value) { AlwaysBracketConditions = Value; }

    void Assign(const TZvScriptFormat& Source) { *this = Source; }

private:
    TZvFormatMode KeywordsFormat = qfmAsIs;
    TZvFormatMode FunctionsFormat = qfmAsIs;
    bool AlwaysBracketConditions = true;
};

// S written in the given case mode. In qfmFirstUpper only the first character and a character
// after "_" are capitals: a blank does not start a new word, so "LEFT OUTER" reads "Left outer".
// That is intended: it is how every generated keyword pair has always looked to users.
std::string FormatCase(std::string_view S, TZvFormatMode Mode);
// FormatCase(S, Mode) appended to Out: statements are written into one buffer, and a keyword
// should not cost a string of its own.
void AppendCase(std::string& Out, std::string_view S, TZvFormatMode Mode);

class TZvSelectParser;
// Name appended to Out in the parser's case for function names; as it stands without a parser.
// The writers' counterpart of ProcessFunction (AppendKeyword, for keywords, is in ZvSelectParser.h).
void AppendFunctionName(std::string& Out, TZvSelectParser* Parser, std::string_view Name);

} // namespace zv
