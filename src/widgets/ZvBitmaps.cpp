// Loads the named vector bitmaps from the resource and renders them at the requested device pixel
// ratio, caching the pixmaps (the diagram paints the same few bitmaps on every row).
#include "ZvBitmaps.h"

#include "ZvResourceInit.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

namespace zv {
namespace {

QString CacheKey(const QString& Name, qreal Ratio) {
    return QStringLiteral("zevrin-bitmap:%1@%2").arg(Name).arg(Ratio);
}

} // namespace

QStringList ZvBitmapNames() {
    return {QStringLiteral("TABLEBMP"),   QStringLiteral("FIELDBMP"),  QStringLiteral("BTN1"),
            QStringLiteral("BTN2"),       QStringLiteral("BTN3"),      QStringLiteral("UNCHECKBMP"),
            QStringLiteral("CHECKBMP"),   QStringLiteral("INPUTNULL"), QStringLiteral("INPUTPARAM"),
            QStringLiteral("BOX1"),       QStringLiteral("BOX2"),      QStringLiteral("BOX3"),
            QStringLiteral("ADD"),        QStringLiteral("ADD_ALL"),   QStringLiteral("REMOVE"),
            QStringLiteral("REMOVE_ALL"), QStringLiteral("BTN"),       QStringLiteral("BOX")};
}

QString ZvBitmapPath(const QString& Name) {
    ZvInitResources();
    return QStringLiteral(":/zevrin/bitmaps/") + Name;
}

QSize ZvBitmapSize(const QString& Name) {
    if (!QFile::exists(ZvBitmapPath(Name))) {
        return {};
    }
    const QSvgRenderer Renderer(ZvBitmapPath(Name));
    return Renderer.isValid() ? Renderer.defaultSize() : QSize();
}

QImage ZvRenderBitmap(const QString& Name, qreal DevicePixelRatio) {
    if (!QFile::exists(ZvBitmapPath(Name))) {
        return {};
    }
    QSvgRenderer Renderer(ZvBitmapPath(Name));
    if (!Renderer.isValid()) {
        return {};
    }
    const qreal Ratio = DevicePixelRatio > 0 ? DevicePixelRatio : 1.0;
    const QSize Design = Renderer.defaultSize();
    const QSize Pixels(static_cast<int>(std::ceil(Design.width() * Ratio)),
                       static_cast<int>(std::ceil(Design.height() * Ratio)));
    QImage Image(Pixels, QImage::Format_ARGB32_Premultiplied);
    Image.fill(Qt::transparent);
    {
        QPainter Painter(&Image);
        Renderer.render(&Painter, QRectF(QPointF(0, 0), QSizeF(Pixels)));
    }
    Image.setDevicePixelRatio(Ratio);
    return Image;
}

QPixmap ZvBitmap(const QString& Name, qreal DevicePixelRatio) {
    const QString Key = CacheKey(Name, DevicePixelRatio);
    QPixmap Pixmap;
    if (QPixmapCache::find(Key, &Pixmap)) {
        return Pixmap;
    }
    const QImage Image = ZvRenderBitmap(Name, DevicePixelRatio);
    if (Image.isNull()) {
        return {};
    }
    Pixmap = QPixmap::fromImage(Image);
    QPixmapCache::insert(Key, Pixmap);
    return Pixmap;
}

} // namespace zv
