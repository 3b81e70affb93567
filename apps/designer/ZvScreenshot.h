// Rendering a widget to a PNG file: the designer's screenshot mode, which needs no display.
#pragma once

#include <QString>

class QWidget;

namespace zv {

// Renders Widget (with its children) at its current size to the PNG file File. False with Error
// saying why when the file cannot be written.
bool ZvWriteScreenshot(QWidget& Widget, const QString& File, QString* Error);

} // namespace zv
