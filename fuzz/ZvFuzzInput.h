// How the fuzz target and its helper program read and write a fuzz input: two leading bytes choose
// the dialect and the tool options, the rest is the statement text handed to the parser as it is.
// Keeping the layout in one place lets the seed corpus be written in exactly the form the target
// reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ZvCli.h"

namespace zv::fuzz {

// Byte 1 of an input, bit by bit.
enum : std::uint8_t {
    fbKeywordsMask = 0x03,   // bits 0-1: case of keywords (asis, upper, lower, firstupper)
    fbFunctionsShift = 2,    // bits 2-3: case of function names, same order
    fbNoAlwaysBracket = 0x10,
    fbNoQuoteIdentifiers = 0x20,
    fbErrorHandler = 0x40,   // errors go to OnParserError instead of being raised
};

inline const char* const kCaseModes[] = {"asis", "upper", "lower", "firstupper"};

// The options and text an input stands for. Byte 0 picks the dialect among DialectNames() modulo
// their number, so that every byte value names a dialect and a dialect added to that list gets its
// share of the inputs with no change here. An input shorter than two bytes is an empty statement
// under the default options.
struct TFuzzCase {
    TZvCliOptions Options;
    bool ErrorHandler = false;
    std::string_view Text;
};

// Pinned, when not negative, is the index of the one dialect every input goes to whatever its
// byte 0 says, for a run that spends all its time on one dialect.
inline TFuzzCase DecodeFuzzInput(const std::uint8_t* Data, std::size_t Size, int Pinned = -1) {
    static const std::vector<std::string> Dialects = DialectNames();
    TFuzzCase Case;
    Case.Options.Command = "format";
    if (Pinned >= 0)
        Case.Options.Dialect = Dialects[static_cast<std::size_t>(Pinned) % Dialects.size()];
    if (Size < 2)
        return Case;
    const std::uint8_t Bits = Data[1];
    if (Pinned < 0)
        Case.Options.Dialect = Dialects[Data[0] % Dialects.size()];
    Case.Options.Keywords = kCaseModes[Bits & fbKeywordsMask];
    Case.Options.Functions = kCaseModes[(Bits >> fbFunctionsShift) & 0x03];
    Case.Options.AlwaysBracket = (Bits & fbNoAlwaysBracket) == 0;
    Case.Options.QuoteIdentifiers = (Bits & fbNoQuoteIdentifiers) == 0;
    Case.ErrorHandler = (Bits & fbErrorHandler) != 0;
    Case.Text = std::string_view(reinterpret_cast<const char*>(Data) + 2, Size - 2);
    return Case;
}

// The index of the dialect named Name, or -1 when no dialect has that name.
inline int DialectIndex(const std::string& Name) {
    const std::vector<std::string> Dialects = DialectNames();
    for (std::size_t I = 0; I < Dialects.size(); ++I) {
        if (Dialects[I] == Name)
            return static_cast<int>(I);
    }
    return -1;
}

inline std::string EncodeFuzzInput(std::size_t DialectIndex, std::uint8_t Bits, std::string_view Text) {
    std::string Input;
    Input += static_cast<char>(static_cast<std::uint8_t>(DialectIndex));
    Input += static_cast<char>(Bits);
    Input += Text;
    return Input;
}

} // namespace zv::fuzz
