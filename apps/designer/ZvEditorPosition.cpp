// Byte positions of the core mapped to character positions of the editor.
#include "ZvEditorPosition.h"

#include <QByteArray>

#include <algorithm>

namespace zv {

int ZvEditorPosition(const QString& Text, int Line, int BytePosition) {
    qsizetype LineStart = 0;
    for (int I = 1; I < Line; ++I) {
        const qsizetype Break = Text.indexOf(QLatin1Char('\n'), LineStart);
        if (Break < 0)
            return static_cast<int>(Text.size());
        LineStart = Break + 1;
    }
    qsizetype LineEnd = Text.indexOf(QLatin1Char('\n'), LineStart);
    if (LineEnd < 0)
        LineEnd = Text.size();
    const QByteArray Bytes = Text.mid(LineStart, LineEnd - LineStart).toUtf8();
    const qsizetype ByteOffset = std::clamp<qsizetype>(qsizetype{BytePosition} - 1, 0, Bytes.size());
    // Continuation bytes (10xxxxxx) belong to the character that starts before them.
    qsizetype Start = ByteOffset;
    while (Start > 0 && Start < Bytes.size() && (static_cast<unsigned char>(Bytes[Start]) & 0xC0) == 0x80)
        --Start;
    return static_cast<int>(LineStart + QString::fromUtf8(Bytes.left(Start)).size());
}

} // namespace zv
