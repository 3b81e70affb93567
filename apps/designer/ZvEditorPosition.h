// Where a place the core reports lies in the editor. The core counts lines from 1 and positions
// within a line in bytes of UTF-8 text from 1; the editor counts characters (UTF-16 code units)
// from the start of its text, whose lines end in '\n'.
#pragma once

#include <QString>

namespace zv {

// The editor position of byte position BytePosition of line Line of Text. Places outside the text
// are brought to the nearest place inside it: a line before the first is the first, one after the
// last the end of the text; a position before the line's start is its start, one past its end the
// end of the line. A byte position inside a multi-byte character is that character's position.
int ZvEditorPosition(const QString& Text, int Line, int BytePosition);

} // namespace zv
