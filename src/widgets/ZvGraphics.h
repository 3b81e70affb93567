// Masked copying of bitmaps for the diagram: TransparentBlt copies a rectangle of a source image onto
// a painter except where a monochrome mask says to keep what is there, which is how caption buttons,
// check boxes and image-list pictures are laid over table objects.
#pragma once

#include <QColor>
#include <QImage>

class QPainter;

namespace zv {

// The mask bit at (X, Y). Monochrome images (QImage::Format_Mono, Format_MonoLSB) give their bit as
// stored; any other format gives 1 for a white pixel (alpha ignored) and 0 for every other colour,
// as a colour bitmap reduces to a monochrome one against a white background. Outside the image the
// bit is 1, so that nothing is copied there.
bool ZvMaskBit(const QImage& Mask, int X, int Y);

// Copies the Width x Height rectangle of Source at (SrcX, SrcY) onto Dest at (DestX, DestY): where
// the mask bit at (MaskX + dx, MaskY + dy) is 1 the destination is kept, where it is 0 the source
// pixel replaces it exactly (no blending). Pixels of the rectangle that lie outside Source keep the
// destination. Coordinates are pixels of the images and logical coordinates of the painter (its
// transformation and clipping apply). Always returns true, as callers never have to check it.
bool TransparentBlt(QPainter& Dest, int DestX, int DestY, const QImage& Source, int SrcX, int SrcY,
                    const QImage& Mask, int MaskX, int MaskY, int Width, int Height);
// The same onto an image.
bool TransparentBlt(QImage& Dest, int DestX, int DestY, const QImage& Source, int SrcX, int SrcY,
                    const QImage& Mask, int MaskX, int MaskY, int Width, int Height);

// A monochrome mask of Bitmap with 1 bits exactly where the pixel has the colour Transparent (alpha
// ignored). With the colour of the bottom-left pixel this is how the host's image list masks its
// pictures.
QImage ZvMaskFromColor(const QImage& Bitmap, QColor Transparent);
// ZvMaskFromColor with the colour of the bottom-left pixel (x 0, y height - 1); a null image for a
// null bitmap.
QImage ZvMaskFromBottomLeft(const QImage& Bitmap);

} // namespace zv
