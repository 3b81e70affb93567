// The screenshot writer.
#include "ZvScreenshot.h"

#include <QCoreApplication>
#include <QImageWriter>
#include <QPixmap>
#include <QWidget>

namespace zv {

bool ZvWriteScreenshot(QWidget& Widget, const QString& File, QString* Error) {
    QImageWriter Writer(File, "png");
    if (Writer.write(Widget.grab().toImage()))
        return true;
    if (Error != nullptr) {
        *Error = QCoreApplication::translate("ZvScreenshot", "cannot write the screenshot '%1': %2")
                     .arg(File, Writer.errorString());
    }
    return false;
}

} // namespace zv
