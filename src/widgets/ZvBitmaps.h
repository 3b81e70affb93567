// The named bitmaps of the widgets (caption buttons, check marks, parameter marks, the sorting
// page's arrows, ...), drawn as vector pictures and compiled into the Qt resource under
// ":/zevrin/bitmaps/<NAME>". They are rendered at the screen's device pixel ratio, so they stay crisp
// on high-density screens while keeping their design size in logical pixels.
#pragma once

#include <QImage>
#include <QPixmap>
#include <QSize>
#include <QString>
#include <QStringList>

namespace zv {

// Every bitmap name, in the order the widgets introduce them.
QStringList ZvBitmapNames();
// The resource path of a name (":/zevrin/bitmaps/BTN1"); names are exact, upper case.
QString ZvBitmapPath(const QString& Name);
// The design size in logical pixels; an invalid size for an unknown name.
QSize ZvBitmapSize(const QString& Name);
// The bitmap rendered for DevicePixelRatio: its pixel size is the design size times the ratio
// (rounded up) and its device pixel ratio is set, so it paints at the design size. Transparent
// where the picture draws nothing. A null image for an unknown name.
QImage ZvRenderBitmap(const QString& Name, qreal DevicePixelRatio = 1.0);
// The same as a pixmap, cached per name and ratio.
QPixmap ZvBitmap(const QString& Name, qreal DevicePixelRatio = 1.0);

} // namespace zv
