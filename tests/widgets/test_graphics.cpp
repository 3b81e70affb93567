// TransparentBlt, checked pixel by pixel against the raster-operation identity it stands for:
// destination' = (destination AND mask) XOR (source AND NOT mask), with the mask's 1 bits spread to
// whole pixels.
#include "ZvGraphics.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace zv {
namespace {

// A pattern in which every pixel differs from its neighbours, so a shifted copy is caught.
QImage Pattern(int Width, int Height, int Seed) {
    QImage Image(Width, Height, QImage::Format_RGB32);
    for (int Y = 0; Y < Height; ++Y) {
        for (int X = 0; X < Width; ++X) {
            Image.setPixel(X, Y,
                           qRgb((X * 37 + Seed) % 256, (Y * 59 + Seed * 3) % 256, (X * Y + Seed * 7) % 256));
        }
    }
    return Image;
}

// A monochrome mask with 1 bits where Bit(x, y) says so.
template <class TBit>
QImage MonoMask(int Width, int Height, TBit Bit) {
    QImage Mask(Width, Height, QImage::Format_MonoLSB);
    Mask.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    for (int Y = 0; Y < Height; ++Y) {
        for (int X = 0; X < Width; ++X) {
            Mask.setPixel(X, Y, Bit(X, Y) ? 1u : 0u);
        }
    }
    return Mask;
}

// The raster-operation result for one pixel.
QRgb Expected(QRgb Dest, QRgb Source, bool MaskBit) {
    const QRgb M = MaskBit ? 0xFFFFFFFFu : 0u;
    return ((Dest & M) ^ (Source & ~M)) | 0xFF000000u;
}

TEST(ZvGraphics, MaskOneKeepsTheDestinationAndZeroCopiesTheSourcePixelByPixel) {
    const QImage Before = Pattern(20, 16, 1);
    const QImage Source = Pattern(12, 10, 90);
    const QImage Mask = MonoMask(9, 8, [](int X, int Y) { return (X * 3 + Y * 5) % 7 < 3; });
    QImage Dest = Before;
    // Source rectangle at (2, 1), mask at (1, 2), 7 x 6 pixels placed at (5, 4).
    EXPECT_TRUE(TransparentBlt(Dest, 5, 4, Source, 2, 1, Mask, 1, 2, 7, 6));
    for (int Y = 0; Y < Dest.height(); ++Y) {
        for (int X = 0; X < Dest.width(); ++X) {
            const bool Inside = X >= 5 && X < 12 && Y >= 4 && Y < 10;
            QRgb Want = Before.pixel(X, Y);
            if (Inside) {
                const int Dx = X - 5, Dy = Y - 4;
                Want = Expected(Before.pixel(X, Y), Source.pixel(2 + Dx, 1 + Dy),
                                ZvMaskBit(Mask, 1 + Dx, 2 + Dy));
            }
            ASSERT_EQ(Dest.pixel(X, Y), Want) << "at " << X << "," << Y;
        }
    }
}

TEST(ZvGraphics, AllOnesMaskLeavesTheDestinationUntouched) {
    const QImage Before = Pattern(8, 8, 3);
    QImage Dest = Before;
    EXPECT_TRUE(TransparentBlt(Dest, 0, 0, Pattern(8, 8, 50), 0, 0,
                               MonoMask(8, 8, [](int, int) { return true; }), 0, 0, 8, 8));
    EXPECT_EQ(Dest, Before);
}

TEST(ZvGraphics, AllZerosMaskCopiesTheSourceRectangle) {
    const QImage Source = Pattern(8, 8, 50);
    QImage Dest = Pattern(8, 8, 3);
    EXPECT_TRUE(
        TransparentBlt(Dest, 0, 0, Source, 0, 0, MonoMask(8, 8, [](int, int) { return false; }), 0, 0, 8, 8));
    EXPECT_EQ(Dest, Source);
}

TEST(ZvGraphics, ColourMaskCountsWhitePixelsAsOnes) {
    QImage Mask(4, 1, QImage::Format_RGB32);
    Mask.setPixel(0, 0, qRgb(255, 255, 255));
    Mask.setPixel(1, 0, qRgb(254, 255, 255));
    Mask.setPixel(2, 0, qRgb(0, 0, 0));
    Mask.setPixel(3, 0, qRgb(255, 255, 255));
    const QImage Before = Pattern(4, 1, 9);
    const QImage Source = Pattern(4, 1, 77);
    QImage Dest = Before;
    EXPECT_TRUE(TransparentBlt(Dest, 0, 0, Source, 0, 0, Mask, 0, 0, 4, 1));
    EXPECT_EQ(Dest.pixel(0, 0), Before.pixel(0, 0));
    EXPECT_EQ(Dest.pixel(1, 0), Source.pixel(1, 0));
    EXPECT_EQ(Dest.pixel(2, 0), Source.pixel(2, 0));
    EXPECT_EQ(Dest.pixel(3, 0), Before.pixel(3, 0));
}

TEST(ZvGraphics, MaskBitOutsideTheMaskIsOne) {
    const QImage Mask = MonoMask(2, 2, [](int, int) { return false; });
    EXPECT_FALSE(ZvMaskBit(Mask, 1, 1));
    EXPECT_TRUE(ZvMaskBit(Mask, 2, 0));
    EXPECT_TRUE(ZvMaskBit(Mask, -1, 0));
    EXPECT_TRUE(ZvMaskBit(QImage(), 0, 0));
}

TEST(ZvGraphics, PartsOutsideSourceOrMaskKeepTheDestination) {
    const QImage Before = Pattern(6, 6, 4);
    const QImage Source = Pattern(3, 3, 60);
    const QImage Mask = MonoMask(6, 2, [](int, int) { return false; }); // only two rows of zeros
    QImage Dest = Before;
    EXPECT_TRUE(TransparentBlt(Dest, 0, 0, Source, 0, 0, Mask, 0, 0, 6, 6));
    for (int Y = 0; Y < 6; ++Y) {
        for (int X = 0; X < 6; ++X) {
            const bool Copied = X < 3 && Y < 2;
            EXPECT_EQ(Dest.pixel(X, Y), Copied ? Source.pixel(X, Y) : Before.pixel(X, Y)) << X << "," << Y;
        }
    }
}

TEST(ZvGraphics, ReturnsTrueEvenWhenThereIsNothingToCopy) {
    QImage Dest = Pattern(4, 4, 1);
    const QImage Before = Dest;
    EXPECT_TRUE(TransparentBlt(Dest, 0, 0, Pattern(4, 4, 2), 0, 0, QImage(), 0, 0, 4, 4));
    EXPECT_TRUE(TransparentBlt(Dest, 0, 0, Pattern(4, 4, 2), 0, 0, QImage(), 0, 0, 0, 4));
    EXPECT_TRUE(TransparentBlt(Dest, 0, 0, QImage(), 0, 0, QImage(), 0, 0, 4, 4));
    EXPECT_EQ(Dest, Before);
}

TEST(ZvGraphics, CopiedPixelsReplaceTheDestinationWithoutBlending) {
    QImage Dest(2, 1, QImage::Format_ARGB32);
    Dest.fill(qRgba(10, 20, 30, 255));
    QImage Source(2, 1, QImage::Format_ARGB32);
    Source.fill(qRgba(200, 100, 50, 0)); // fully transparent source pixels are copied as they are
    EXPECT_TRUE(TransparentBlt(Dest, 0, 0, Source, 0, 0, MonoMask(2, 1, [](int X, int) { return X == 1; }), 0,
                               0, 2, 1));
    EXPECT_EQ(qAlpha(Dest.pixel(0, 0)), 0);
    EXPECT_EQ(Dest.pixel(1, 0), qRgba(10, 20, 30, 255));
}

TEST(ZvGraphics, PainterTranslationAndClippingApply) {
    const QImage Before = Pattern(10, 10, 5);
    const QImage Source = Pattern(4, 4, 70);
    QImage Dest = Before;
    {
        QPainter Painter(&Dest);
        Painter.translate(3, 2); // as the work area shifts by its scroll position
        Painter.setClipRect(QRect(0, 0, 2, 4));
        EXPECT_TRUE(TransparentBlt(Painter, 0, 0, Source, 0, 0,
                                   MonoMask(4, 4, [](int, int) { return false; }), 0, 0, 4, 4));
    }
    for (int Y = 0; Y < 10; ++Y) {
        for (int X = 0; X < 10; ++X) {
            const bool Copied = X >= 3 && X < 5 && Y >= 2 && Y < 6;
            EXPECT_EQ(Dest.pixel(X, Y), Copied ? Source.pixel(X - 3, Y - 2) : Before.pixel(X, Y))
                << X << "," << Y;
        }
    }
}

TEST(ZvGraphics, MaskFromColourSetsOnesExactlyOnThatColour) {
    QImage Bitmap(3, 2, QImage::Format_RGB32);
    Bitmap.fill(qRgb(255, 0, 255));
    Bitmap.setPixel(1, 0, qRgb(0, 0, 0));
    Bitmap.setPixel(2, 1, qRgb(255, 0, 254));
    const QImage Mask = ZvMaskFromColor(Bitmap, QColor(255, 0, 255));
    EXPECT_TRUE(ZvMaskBit(Mask, 0, 0));
    EXPECT_FALSE(ZvMaskBit(Mask, 1, 0));
    EXPECT_TRUE(ZvMaskBit(Mask, 0, 1));
    EXPECT_FALSE(ZvMaskBit(Mask, 2, 1));
}

TEST(ZvGraphics, BottomLeftMaskDrawsAPictureOverItsBackground) {
    // A picture on a magenta background, laid over a grey destination: grey stays where the
    // picture was magenta.
    QImage Picture(4, 4, QImage::Format_RGB32);
    Picture.fill(qRgb(255, 0, 255));
    Picture.setPixel(1, 1, qRgb(0, 0, 200));
    Picture.setPixel(2, 2, qRgb(0, 150, 0));
    QImage Dest(4, 4, QImage::Format_RGB32);
    Dest.fill(qRgb(128, 128, 128));
    EXPECT_TRUE(TransparentBlt(Dest, 0, 0, Picture, 0, 0, ZvMaskFromBottomLeft(Picture), 0, 0, 4, 4));
    EXPECT_EQ(Dest.pixel(1, 1), qRgb(0, 0, 200));
    EXPECT_EQ(Dest.pixel(2, 2), qRgb(0, 150, 0));
    EXPECT_EQ(Dest.pixel(0, 3), qRgb(128, 128, 128));
    EXPECT_EQ(Dest.pixel(3, 0), qRgb(128, 128, 128));
    EXPECT_TRUE(ZvMaskFromBottomLeft(QImage()).isNull());
}

} // namespace
} // namespace zv
