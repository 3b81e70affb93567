// Case formatting of generated keywords and function names.
#include "ZvScriptFormat.h"

#include "ZvUtils.h"

namespace zv {

std::string FormatCase(std::string_view S, TZvFormatMode Mode) {
    switch (Mode) {
    case qfmUpperCase:
        return UpperCase(S);
    case qfmLowerCase:
        return LowerCase(S);
    case qfmFirstUpper: {
        std::string Result(S);
        for (std::size_t I = 0; I < Result.size(); ++I)
            Result[I] = (I == 0 || Result[I - 1] == '_') ? UpCase(Result[I]) : LoCase(Result[I]);
        return Result;
    }
    case qfmAsIs:
        break;
    }
    return std::string(S);
}

} // namespace zv
