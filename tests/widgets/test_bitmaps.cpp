// The named bitmaps: present under every name, at their design sizes, rendered at the device pixel
// ratio, and each showing what its name promises (tick or no tick, arrow direction, ...).
#include "ZvBitmaps.h"
#include "ZvGraphics.h"

#include <QFile>
#include <QtMath>

#include <gtest/gtest.h>

#include <map>

namespace zv {
namespace {

const std::map<QString, QSize>& DesignSizes() {
    static const std::map<QString, QSize> Sizes{
        {QStringLiteral("TABLEBMP"), {16, 16}},   {QStringLiteral("FIELDBMP"), {16, 16}},
        {QStringLiteral("BTN1"), {12, 12}},       {QStringLiteral("BTN2"), {12, 12}},
        {QStringLiteral("BTN3"), {12, 12}},       {QStringLiteral("UNCHECKBMP"), {16, 16}},
        {QStringLiteral("CHECKBMP"), {16, 16}},   {QStringLiteral("INPUTNULL"), {16, 16}},
        {QStringLiteral("INPUTPARAM"), {16, 16}}, {QStringLiteral("BOX1"), {12, 12}},
        {QStringLiteral("BOX2"), {12, 12}},       {QStringLiteral("BOX3"), {12, 12}},
        {QStringLiteral("ADD"), {16, 16}},        {QStringLiteral("ADD_ALL"), {16, 16}},
        {QStringLiteral("REMOVE"), {16, 16}},     {QStringLiteral("REMOVE_ALL"), {16, 16}},
        {QStringLiteral("BTN"), {12, 12}},        {QStringLiteral("BOX"), {12, 12}},
    };
    return Sizes;
}

int OpaqueCount(const QImage& Image, int FromX, int ToX) {
    int Count = 0;
    for (int Y = 0; Y < Image.height(); ++Y) {
        for (int X = FromX; X < ToX; ++X) {
            Count += qAlpha(Image.pixel(X, Y)) > 128 ? 1 : 0;
        }
    }
    return Count;
}

bool IsDark(QRgb Pixel) {
    return qAlpha(Pixel) > 200 && qGray(Pixel) < 80;
}

bool IsWhite(QRgb Pixel) {
    return qAlpha(Pixel) == 255 && qRed(Pixel) == 255 && qGreen(Pixel) == 255 && qBlue(Pixel) == 255;
}

TEST(ZvBitmaps, EveryNamedBitmapIsCompiledInAtItsDesignSize) {
    const QStringList Names = ZvBitmapNames();
    ASSERT_EQ(Names.size(), static_cast<qsizetype>(DesignSizes().size()));
    for (const QString& Name : Names) {
        ASSERT_TRUE(DesignSizes().count(Name)) << Name.toStdString();
        EXPECT_EQ(ZvBitmapSize(Name), DesignSizes().at(Name)) << Name.toStdString();
        const QImage Image = ZvRenderBitmap(Name);
        ASSERT_FALSE(Image.isNull()) << Name.toStdString();
        EXPECT_EQ(Image.size(), DesignSizes().at(Name)) << Name.toStdString();
        EXPECT_GT(OpaqueCount(Image, 0, Image.width()), 8) << Name.toStdString() << " draws nothing";
    }
}

TEST(ZvBitmaps, ResourcePathsUseTheNames) {
    EXPECT_EQ(ZvBitmapPath(QStringLiteral("BTN1")), QStringLiteral(":/zevrin/bitmaps/BTN1"));
    EXPECT_TRUE(QFile::exists(ZvBitmapPath(QStringLiteral("REMOVE_ALL"))));
}

TEST(ZvBitmaps, UnknownOrWronglyCasedNameGivesNothing) {
    EXPECT_TRUE(ZvRenderBitmap(QStringLiteral("NOSUCHBMP")).isNull());
    EXPECT_TRUE(ZvRenderBitmap(QStringLiteral("btn1")).isNull());
    EXPECT_FALSE(ZvBitmapSize(QStringLiteral("NOSUCHBMP")).isValid());
    EXPECT_TRUE(ZvBitmap(QStringLiteral("NOSUCHBMP")).isNull());
}

TEST(ZvBitmaps, HighDensityRenderingHasMorePixelsAndTheSameLogicalSize) {
    for (const qreal Ratio : {1.5, 2.0, 3.0}) {
        const QImage Image = ZvRenderBitmap(QStringLiteral("CHECKBMP"), Ratio);
        EXPECT_EQ(Image.width(), qCeil(16 * Ratio));
        EXPECT_EQ(Image.devicePixelRatio(), Ratio);
        EXPECT_EQ(Image.deviceIndependentSize(), QSizeF(16, 16));
    }
    const QPixmap Pixmap = ZvBitmap(QStringLiteral("BOX3"), 2.0);
    EXPECT_EQ(Pixmap.size(), QSize(24, 24));
    EXPECT_EQ(Pixmap.deviceIndependentSize(), QSizeF(12, 12));
}

TEST(ZvBitmaps, HighDensityFramesAreDrawnAtDeviceResolutionNotBlurred) {
    // At twice the density the one-pixel frame of a check square is two device pixels of the
    // frame colour followed directly by white: no blended pixel between them.
    const QImage Image = ZvRenderBitmap(QStringLiteral("BOX1"), 2.0);
    const QRgb Frame = Image.pixel(0, 12);
    EXPECT_EQ(Image.pixel(1, 12), Frame);
    EXPECT_TRUE(IsWhite(Image.pixel(2, 12)));
    EXPECT_EQ(qAlpha(Frame), 255);
    EXPECT_LT(qGray(Frame), 128);
}

TEST(ZvBitmaps, CheckedFieldRowShowsATickWhereTheUncheckedSquareIsWhite) {
    const QImage Unchecked = ZvRenderBitmap(QStringLiteral("UNCHECKBMP"));
    const QImage Checked = ZvRenderBitmap(QStringLiteral("CHECKBMP"));
    EXPECT_TRUE(IsWhite(Unchecked.pixel(6, 10)));
    EXPECT_TRUE(IsDark(Checked.pixel(6, 10)));
    // Same square: the frame and the transparent margin agree.
    EXPECT_EQ(Unchecked.pixel(2, 2), Checked.pixel(2, 2));
    EXPECT_EQ(qAlpha(Unchecked.pixel(0, 15)), 0);
    EXPECT_EQ(qAlpha(Checked.pixel(0, 15)), 0);
}

TEST(ZvBitmaps, CaptionCheckBoxShowsNoneSomeOrAllFields) {
    const QImage None = ZvRenderBitmap(QStringLiteral("BOX1"));
    const QImage Some = ZvRenderBitmap(QStringLiteral("BOX2"));
    const QImage All = ZvRenderBitmap(QStringLiteral("BOX3"));
    EXPECT_TRUE(IsWhite(None.pixel(4, 8)));
    EXPECT_FALSE(IsWhite(Some.pixel(4, 8)));
    EXPECT_FALSE(IsDark(Some.pixel(4, 8))); // grey, between the two
    EXPECT_TRUE(IsDark(All.pixel(4, 8)));
}

TEST(ZvBitmaps, ParameterMarkDiffersWithAndWithoutValue) {
    const QImage Empty = ZvRenderBitmap(QStringLiteral("INPUTNULL"));
    const QImage Filled = ZvRenderBitmap(QStringLiteral("INPUTPARAM"));
    EXPECT_TRUE(IsWhite(Empty.pixel(11, 8)));
    EXPECT_FALSE(IsWhite(Filled.pixel(11, 8)));
}

TEST(ZvBitmaps, SortingArrowsPointTheirWay) {
    const QImage Add = ZvRenderBitmap(QStringLiteral("ADD"));
    const QImage Remove = ZvRenderBitmap(QStringLiteral("REMOVE"));
    // An arrow is tall at its base and narrow at its tip.
    EXPECT_GT(OpaqueCount(Add, 5, 7), OpaqueCount(Add, 9, 11));
    EXPECT_LT(OpaqueCount(Remove, 5, 7), OpaqueCount(Remove, 9, 11));
    const QImage AddAll = ZvRenderBitmap(QStringLiteral("ADD_ALL"));
    const QImage RemoveAll = ZvRenderBitmap(QStringLiteral("REMOVE_ALL"));
    EXPECT_GT(OpaqueCount(AddAll, 0, 16), OpaqueCount(Add, 0, 16) * 3 / 2);
    EXPECT_GT(OpaqueCount(RemoveAll, 0, 16), OpaqueCount(Remove, 0, 16) * 3 / 2);
    // Mirror images of each other, up to the smoothing of their slanted edges.
    const QImage Mirrored = AddAll.mirrored(true, false);
    for (int Y = 0; Y < 16; ++Y) {
        for (int X = 0; X < 16; ++X) {
            EXPECT_NEAR(qAlpha(RemoveAll.pixel(X, Y)), qAlpha(Mirrored.pixel(X, Y)), 64) << X << "," << Y;
        }
    }
}

TEST(ZvBitmaps, CaptionButtonsDifferFromEachOther) {
    const QImage B1 = ZvRenderBitmap(QStringLiteral("BTN1"));
    const QImage B2 = ZvRenderBitmap(QStringLiteral("BTN2"));
    const QImage B3 = ZvRenderBitmap(QStringLiteral("BTN3"));
    EXPECT_NE(B1, B2);
    EXPECT_NE(B2, B3);
    EXPECT_NE(B1, B3);
    // The close cross crosses at its centre and leaves the corner of its box free.
    EXPECT_TRUE(IsDark(B3.pixel(5, 5)));
    EXPECT_EQ(qAlpha(B3.pixel(5, 0)), 0);
}

TEST(ZvBitmaps, ImageListPicturesHaveATransparentBottomLeftPixelSoTheirMaskHidesOnlyBackground) {
    for (const QString& Name : {QStringLiteral("TABLEBMP"), QStringLiteral("FIELDBMP")}) {
        const QImage Image = ZvRenderBitmap(Name);
        EXPECT_EQ(qAlpha(Image.pixel(0, 15)), 0) << Name.toStdString();
        const QImage Mask = ZvMaskFromBottomLeft(Image);
        // The picture's own pixels are copied, the background kept.
        EXPECT_FALSE(ZvMaskBit(Mask, 8, 8)) << Name.toStdString();
        EXPECT_TRUE(ZvMaskBit(Mask, 0, 0)) << Name.toStdString();
    }
}

TEST(ZvBitmaps, PixmapsAreCachedPerNameAndRatio) {
    const QPixmap First = ZvBitmap(QStringLiteral("BTN3"));
    const QPixmap Again = ZvBitmap(QStringLiteral("BTN3"));
    const QPixmap Dense = ZvBitmap(QStringLiteral("BTN3"), 2.0);
    EXPECT_EQ(First.cacheKey(), Again.cacheKey());
    EXPECT_NE(First.cacheKey(), Dense.cacheKey());
    EXPECT_EQ(First.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
              ZvRenderBitmap(QStringLiteral("BTN3")));
}

} // namespace
} // namespace zv
