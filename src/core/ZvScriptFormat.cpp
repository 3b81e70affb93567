// Case formatting of generated keywords and function names.
#include "ZvScriptFormat.h"

#include "ZvUtils.h"

namespace zv {

std::string FormatCase(std::string_view S, TZvFormatMode Mode) {
    std::string Result;
    AppendCase(Result, S, Mode);
    return Result;
}

void AppendCase(std::string& Out, std::string_view S, TZvFormatMode Mode) {
    switch (Mode) {
    case qfmUpperCase:
        for (char C : S)
            Out += UpCase(C);
        return;
    case qfmLowerCase:
        for (char C : S)
            Out += LoCase(C);
        return;
    case qfmFirstUpper:
        for (std::size_t I = 0; I < S.size(); ++I)
            Out += (I == 0 || S[I - 1] == '_') ? UpCase(S[I]) : LoCase(S[I]);
        return;
    case qfmAsIs:
        break;
    }
    Out += S;
}

} // namespace zv
