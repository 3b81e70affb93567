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

} // namespace zv
