// TransparentBlt on QPainter: the mask becomes a clip region and the source is drawn with the Source
// composition mode, so copied pixels replace the destination exactly as a raster copy would.
#include "ZvGraphics.h"

#include <QPainter>
#include <QRegion>

namespace zv {
namespace {

constexpr QRgb RgbMask = 0x00FFFFFFu;

bool IsMonochrome(const QImage& Image) {
    return Image.format() == QImage::Format_Mono || Image.format() == QImage::Format_MonoLSB;
}

// The region, in rectangle coordinates (0, 0 .. Width, Height), where the source is copied: mask bit 0
// and the source pixel present. Built row by row from runs, which keeps it small for the usual
// pictures whose transparent parts are contiguous.
QRegion CopyRegion(const QImage& Source, int SrcX, int SrcY, const QImage& Mask, int MaskX, int MaskY,
                   int Width, int Height) {
    const QRect SourceRect = Source.rect();
    QRegion Region;
    for (int Y = 0; Y < Height; ++Y) {
        int RunStart = -1;
        for (int X = 0; X <= Width; ++X) {
            const bool Copy = X < Width && SourceRect.contains(SrcX + X, SrcY + Y) &&
                              !ZvMaskBit(Mask, MaskX + X, MaskY + Y);
            if (Copy && RunStart < 0) {
                RunStart = X;
            } else if (!Copy && RunStart >= 0) {
                Region += QRect(RunStart, Y, X - RunStart, 1);
                RunStart = -1;
            }
        }
    }
    return Region;
}

} // namespace

bool ZvMaskBit(const QImage& Mask, int X, int Y) {
    if (!Mask.valid(X, Y)) {
        return true;
    }
    if (IsMonochrome(Mask)) {
        return Mask.pixelIndex(X, Y) != 0;
    }
    return (Mask.pixel(X, Y) & RgbMask) == RgbMask;
}

bool TransparentBlt(QPainter& Dest, int DestX, int DestY, const QImage& Source, int SrcX, int SrcY,
                    const QImage& Mask, int MaskX, int MaskY, int Width, int Height) {
    if (Width <= 0 || Height <= 0 || Source.isNull()) {
        return true;
    }
    const QRegion Region = CopyRegion(Source, SrcX, SrcY, Mask, MaskX, MaskY, Width, Height);
    if (Region.isEmpty()) {
        return true;
    }
    Dest.save();
    Dest.setClipRegion(Region.translated(DestX, DestY),
                       Dest.hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
    Dest.setCompositionMode(QPainter::CompositionMode_Source);
    // The source is taken pixel for pixel, whatever device pixel ratio it was made for.
    QImage Pixels = Source;
    Pixels.setDevicePixelRatio(1.0);
    Dest.drawImage(QPoint(DestX, DestY), Pixels, QRect(SrcX, SrcY, Width, Height));
    Dest.restore();
    return true;
}

bool TransparentBlt(QImage& Dest, int DestX, int DestY, const QImage& Source, int SrcX, int SrcY,
                    const QImage& Mask, int MaskX, int MaskY, int Width, int Height) {
    QPainter Painter(&Dest);
    return TransparentBlt(Painter, DestX, DestY, Source, SrcX, SrcY, Mask, MaskX, MaskY, Width, Height);
}

QImage ZvMaskFromColor(const QImage& Bitmap, QColor Transparent) {
    if (Bitmap.isNull()) {
        return {};
    }
    QImage Mask(Bitmap.size(), QImage::Format_MonoLSB);
    Mask.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    const QRgb Key = Transparent.rgb() & RgbMask;
    for (int Y = 0; Y < Bitmap.height(); ++Y) {
        for (int X = 0; X < Bitmap.width(); ++X) {
            Mask.setPixel(X, Y, (Bitmap.pixel(X, Y) & RgbMask) == Key ? 1u : 0u);
        }
    }
    return Mask;
}

QImage ZvMaskFromBottomLeft(const QImage& Bitmap) {
    if (Bitmap.isNull()) {
        return {};
    }
    return ZvMaskFromColor(Bitmap, QColor::fromRgb(Bitmap.pixel(0, Bitmap.height() - 1)));
}

} // namespace zv
