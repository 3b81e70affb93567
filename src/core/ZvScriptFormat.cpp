// Case formatting of generated keywords and function names.
#include "ZvScriptFormat.h"

#include "ZvUtils.h"

namespace zv {

std::string FormatCase(std::string_view S, TZvFormatMode Mode) {
    std::string Result;
    AppendCase(Result, S, Mode);
    return Result;
}

// S is appended whole, then cased where it stands: one append rather than one per character.
// Only the appended copy is read afterwards, since S may lie in Out and move with it.
void AppendCase(std::string& Out, std::string_view S, TZvFormatMode Mode) {
    const std::size_t At = Out.size();
    Out += S;
    char* const Text = Out.data() + At;
    const std::size_t Size = Out.size() - At;
    switch (Mode) {
    case qfmUpperCase:
        for (std::size_t I = 0; I < Size; ++I)
            Text[I] = UpCase(Text[I]);
        return;
    case qfmLowerCase:
        for (std::size_t I = 0; I < Size; ++I)
            Text[I] = LoCase(Text[I]);
        return;
    case qfmFirstUpper:
        // Casing leaves "_" as it is, so the character before may be read after it was cased.
        for (std::size_t I = 0; I < Size; ++I)
            Text[I] = (I == 0 || Text[I - 1] == '_') ? UpCase(Text[I]) : LoCase(Text[I]);
        return;
    case qfmAsIs:
        return;
    }
}

} // namespace zv
