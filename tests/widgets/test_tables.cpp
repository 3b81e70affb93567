// Table objects on their own: rows from a data set, names and type names, geometry and hit areas,
// sizes and scrolling with the shared scroll bar, the caption check box and buttons, and what the
// table paints (caption colours, check bitmaps, button states, the current row), checked on images.
#include "ZvBitmaps.h"
#include "ZvDiagramTestSupport.h"
#include "ZvTestSupport.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace zv {
namespace {

using test::Grab;
using test::SurfacePoint;
using test::TZvDiagramTest;

TZvDataSet NumberedFields(int Count) {
    TZvDataSet DataSet;
    for (int I = 0; I < Count; ++I)
        DataSet.AddFieldDef("F" + std::to_string(I), ftInteger);
    return DataSet;
}

class TZvTableTest : public TZvDiagramTest {
protected:
    TZvTable* AddAt(const std::string& Name, const TZvDataSet& Fields, QPoint At) {
        return Host->GetTables().AddTableAt(Name, "", &Fields, At);
    }
    void Click(QPoint Point) { QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, Point); }
    TZvDataSet Twenty = NumberedFields(20);
};

// --- rows, sizes and the shared scroll bar ---

TEST_F(TZvTableTest, ThreeFieldsShowThreeRowsAndNoScrollBar) {
    const TZvDataSet Three = test::FieldsDataSet({"A", "B", "C"});
    TZvTable* T = AddAt("T3", Three, QPoint(10, 10));
    ASSERT_TRUE(T->GetSelected());
    EXPECT_EQ(T->GetVisibleCount(), 3);
    EXPECT_FALSE(T->UpdateScrollBar());
    EXPECT_FALSE(Area->GetTableScrollBar()->isVisible());
}

TEST_F(TZvTableTest, TwentyFieldsShowSixRowsAndTheSelectedTableGetsTheScrollBar) {
    TZvTable* T = AddAt("T20", Twenty, QPoint(10, 10));
    EXPECT_EQ(T->GetVisibleCount(), 6);
    QScrollBar* Bar = Area->GetTableScrollBar();
    ASSERT_TRUE(Bar->isVisible());
    EXPECT_EQ(Bar->minimum(), 0);
    EXPECT_EQ(Bar->maximum(), 14);
    EXPECT_EQ(Bar->pageStep(), 5);
    const QRect Client = Area->ToViewport(T->GetClientRect());
    EXPECT_EQ(Bar->geometry(), QRect(Client.right() + 1 - TZvTable::ScrollBarWidth, Client.top(),
                                     TZvTable::ScrollBarWidth, Client.height()));
}

TEST_F(TZvTableTest, TheScrollBarFollowsTheSelection) {
    TZvTable* Big = AddAt("T20", Twenty, QPoint(10, 10));
    TZvTable* Small = AddAt("DEPT", DeptFields, QPoint(400, 10));
    EXPECT_FALSE(Area->GetTableScrollBar()->isVisible());
    Click(test::CaptionPoint(*Big));
    EXPECT_TRUE(Area->GetTableScrollBar()->isVisible());
    Click(test::CaptionPoint(*Small));
    EXPECT_FALSE(Area->GetTableScrollBar()->isVisible());
    Click(test::CaptionPoint(*Big));
    Big->SetExpand(false);
    EXPECT_FALSE(Area->GetTableScrollBar()->isVisible());
    Big->SetExpand(true);
    EXPECT_TRUE(Area->GetTableScrollBar()->isVisible());
}

TEST_F(TZvTableTest, ClickingBesideTheSliderScrollsByTheLargeChange) {
    TZvTable* T = AddAt("T20", Twenty, QPoint(10, 10));
    QScrollBar* Bar = Area->GetTableScrollBar();
    QTest::mouseClick(Bar, Qt::LeftButton, {}, QPoint(Bar->width() / 2, Bar->height() - 20));
    EXPECT_EQ(T->GetFirstVisibleItem(), 5);
    Bar->setValue(14);
    EXPECT_EQ(T->GetFirstVisibleItem(), 14);
    T->SetFirstVisibleItem(2);
    EXPECT_EQ(Bar->value(), 2);
}

TEST_F(TZvTableTest, AMovedTableTakesTheScrollBarAlong) {
    TZvTable* T = AddAt("T20", Twenty, QPoint(10, 10));
    T->SetTopLeft(QPoint(200, 150));
    T->SetWidth(220);
    const QRect Client = Area->ToViewport(T->GetClientRect());
    EXPECT_EQ(Area->GetTableScrollBar()->geometry().topLeft(),
              QPoint(Client.right() + 1 - TZvTable::ScrollBarWidth, Client.top()));
}

TEST_F(TZvTableTest, FirstVisibleItemIsClampedToTheRows) {
    TZvTable* T = AddAt("T20", Twenty, QPoint(10, 10));
    T->SetFirstVisibleItem(-3);
    EXPECT_EQ(T->GetFirstVisibleItem(), 0);
    T->SetFirstVisibleItem(99);
    EXPECT_EQ(T->GetFirstVisibleItem(), 14);
}

TEST_F(TZvTableTest, AHigherBoxShowsMoreRowsAndPullsTheWindowBackToFillIt) {
    TZvTable* T = AddAt("T20", Twenty, QPoint(10, 10));
    T->SetFirstVisibleItem(14);
    // The recount keeps a pixel in reserve below the rows: one more makes the ninth row fit.
    T->SetHeight(T->GetHeight() + 3 * (T->GetItemHeight() + 1) + 1);
    EXPECT_EQ(T->GetVisibleCount(), 9);
    EXPECT_EQ(T->GetFirstVisibleItem(), 11);
    EXPECT_EQ(Area->GetTableScrollBar()->maximum(), 11);
}

TEST_F(TZvTableTest, ItemHeightIsAtLeast16AndIgnoresZero) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    T->SetItemHeight(-30);
    EXPECT_EQ(T->GetItemHeight(), 30);
    T->SetItemHeight(0);
    EXPECT_EQ(T->GetItemHeight(), 30);
    T->SetItemHeight(3);
    EXPECT_EQ(T->GetItemHeight(), 16);
}

TEST_F(TZvTableTest, HeightAndWidthBelowTheirMinimumsAreRaised) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    T->SetHeight(2 * T->GetItemHeight() + T->GetCaptionHeight() + 3);
    EXPECT_EQ(T->GetHeight(), 2 * T->GetItemHeight() + T->GetCaptionHeight() + 4);
    T->SetWidth(T->GetCaptionHeight() + 59);
    EXPECT_EQ(T->GetWidth(), T->GetCaptionHeight() + 60);
}

TEST_F(TZvTableTest, MovingTheLeftOrTopEdgeKeepsTheOppositeEdge) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(100, 100));
    const int Right = T->GetLeft() + T->GetWidth();
    const int Bottom = T->GetTop() + T->GetHeight();
    T->MoveLeft(-30);
    EXPECT_EQ(T->GetLeft(), 70);
    EXPECT_EQ(T->GetLeft() + T->GetWidth(), Right);
    T->MoveUpper(10);
    EXPECT_EQ(T->GetTop(), 110);
    EXPECT_EQ(T->GetTop() + T->GetHeight(), Bottom);
    T->MoveLeft(500);
    EXPECT_EQ(T->GetWidth(), T->MinWidth());
    EXPECT_EQ(T->GetLeft() + T->GetWidth(), Right);
    T->MoveUpper(500);
    EXPECT_EQ(T->GetHeight(), T->MinHeight());
    EXPECT_EQ(T->GetTop() + T->GetHeight(), Bottom);
}

// --- names and type names ---

TEST_F(TZvTableTest, TypeNamesFollowTheTypeClasses) {
    const std::vector<std::pair<TFieldType, const char*>> Names = {
        {ftFloat, "Float"},          {ftCurrency, "Float"},         {ftSmallint, "Integer"},
        {ftAutoInc, "Integer"},      {ftLargeint, "Integer"},       {ftMemo, "String"},
        {ftWideString, "String"},    {ftBoolean, "Boolean"},        {ftDateTime, "DateTime"},
        {ftTypedBinary, "Typed binary"}, {ftDataSet, "Data set"},   {ftOraClob, "Ora clob"},
        {ftGuid, "Guid"}};
    TZvDataSet DataSet;
    for (const auto& [Type, Name] : Names)
        DataSet.AddFieldDef(Name, Type);
    TZvTable* T = AddAt("TYPES", DataSet, QPoint(10, 10));
    for (int I = 0; I < T->ItemCount(); ++I)
        EXPECT_EQ(T->GetItem(I)->GetDataName().toStdString(), Names[static_cast<std::size_t>(I)].second)
            << I;
}

TEST_F(TZvTableTest, AFieldWithoutATypeNameShowsEmptyBracketsInHintAndRow) {
    TZvDataSet DataSet;
    DataSet.AddFieldDef("U", ftUnknown);
    DataSet.AddFieldDef("STAMP", ftTimeStamp);
    DataSet.AddFieldDef("AMOUNT", ftFMTBcd);
    TZvTable* T = AddAt("ODD", DataSet, QPoint(100, 100));
    for (int I = 0; I < T->ItemCount(); ++I) {
        const TZvListItem* Row = T->GetItem(I);
        EXPECT_TRUE(Row->GetDataName().isEmpty());
        EXPECT_EQ(Row->GetDisplayText(true), QStringLiteral(" %1 ()").arg(QString::fromStdString(Row->GetName())));
        EXPECT_EQ(Row->GetDisplayText(false), QStringLiteral(" %1").arg(QString::fromStdString(Row->GetName())));
    }
    test::HoverAt(*Area, test::RowCheckPoint(*T, 1) + QPoint(30, 0));
    EXPECT_EQ(T->GetHint(), QStringLiteral("STAMP ()"));
}

TEST_F(TZvTableTest, RowsAreFieldRowsWithNameAsFieldName) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    ASSERT_EQ(T->ItemCount(), 3);
    const TZvListItem* Row = T->GetItem(2);
    EXPECT_EQ(Row->GetName(), "DEPT_ID");
    EXPECT_EQ(Row->GetFieldName(), "DEPT_ID");
    EXPECT_EQ(Row->GetParamType(), ptOutput);
    EXPECT_TRUE(Row->GetEnabled());
    EXPECT_FALSE(Row->GetReadOnly());
    EXPECT_TRUE(Row->GetValue().IsUnassigned());
    EXPECT_EQ(Row->GetIndex(), 2);
    EXPECT_EQ(T->GetFieldItem("dept_id"), Row);
    EXPECT_EQ(T->GetFieldItem("NOPE"), nullptr);
}

// --- geometry ---

TEST_F(TZvTableTest, TheBandsOfTheBoxFollowTheirRules) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(100, 50));
    const int L = 100, Tp = 50, W = T->GetWidth(), H = T->GetHeight(), C = T->GetCaptionHeight();
    EXPECT_EQ(T->GetBoundsRect(), QRect(L, Tp, W, H));
    EXPECT_EQ(T->GetCaptionRect(), QRect(L + C + 2, Tp + 2, W - C - 2 - 40 - 2, C - 4));
    EXPECT_EQ(T->GetClientRect(), QRect(L + 4, Tp + C + 2, W - 8, H - C - 2 - 4));
    EXPECT_EQ(T->GetButtonRect(), QRect(L + W - 2 - 40, Tp + 2, 40, C - 2));
    T->SetExpand(false);
    EXPECT_EQ(T->GetBoundsRect(), QRect(L, Tp, W, C));
}

TEST_F(TZvTableTest, RowRectanglesFollowTheFirstVisibleRow) {
    TZvTable* T = AddAt("T20", Twenty, QPoint(100, 50));
    const int Pitch = T->GetItemHeight() + 1;
    const QRect B = T->GetBoundsRect();
    const QRect Row3 = T->GetItemRect(T->GetItem(3));
    EXPECT_EQ(Row3, QRect(B.left() + 4, B.top() + T->GetCaptionHeight() + 1 + 3 * Pitch, B.width() - 8,
                          T->GetItemHeight()));
    T->SetFirstVisibleItem(2);
    EXPECT_EQ(T->GetItemRect(T->GetItem(3)), Row3.translated(0, -2 * Pitch));
    EXPECT_EQ(T->GetItemAt(0, Row3.top() - 2 * Pitch + 1), T->GetItem(3));
    EXPECT_EQ(T->GetItemAt(0, B.bottom() + 50), nullptr);
}

TEST_F(TZvTableTest, LinksAttachToTheCaptionAboveTheWindowAndTheBottomBelowIt) {
    TZvTable* T = AddAt("T20", Twenty, QPoint(100, 50));
    T->SetFirstVisibleItem(5);
    const QRect B = T->GetBoundsRect();
    EXPECT_EQ(T->GetFullItemRect(T->GetItem(2)), QRect(B.left(), B.top(), B.width(), T->GetCaptionHeight()));
    EXPECT_EQ(T->GetFullItemRect(T->GetItem(7)), T->GetItemRect(T->GetItem(7)));
    const QRect Last = T->GetFullItemRect(T->GetItem(11));
    EXPECT_EQ(Last.top(), T->GetItemRect(T->GetItem(11)).top());
    EXPECT_EQ(Last.bottom(), B.bottom() - 2 - 2);
    EXPECT_EQ(T->GetFullItemRect(T->GetItem(15)), QRect(B.left(), B.bottom() + 1 - 2, B.width(), 2));
    EXPECT_EQ(T->GetItem(15)->GetBoundsRect(), T->GetFullItemRect(T->GetItem(15)));
    T->SetExpand(false);
    EXPECT_EQ(T->GetFullItemRect(T->GetItem(7)), T->GetBoundsRect());
}

TEST_F(TZvTableTest, ARowOfAnotherTableHasNoRectangleAndCannotBecomeCurrent) {
    TZvTable* Emp = AddAt("EMP", EmpFields, QPoint(10, 10));
    TZvTable* Dept = AddAt("DEPT", DeptFields, QPoint(300, 10));
    TZvListItem* Foreign = Dept->GetItem(0);
    EXPECT_TRUE(Emp->GetItemRect(Foreign).isEmpty());
    EXPECT_TRUE(Emp->GetFullItemRect(Foreign).isEmpty());
    Emp->SetCurrentItem(Emp->GetItem(1));
    Emp->SetCurrentItem(Foreign);
    EXPECT_EQ(Emp->GetCurrentItem(), Emp->GetItem(1));
}

TEST_F(TZvTableTest, TheCaptionTextRectangleIsAsWideAsTheBoldCaption) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    QFont Bold = Area->GetFont();
    Bold.setBold(true);
    const int Width = QFontMetrics(Bold).horizontalAdvance(QStringLiteral("EMP")) + 2;
    const QRect Caption = T->GetCaptionRect();
    EXPECT_EQ(T->CaptionRect(false), QRect(Caption.left(), Caption.top(), Width, Caption.height()));
    EXPECT_EQ(T->CaptionRect(true), QRect(Caption.right() + 1 - Width, Caption.top(), Width, Caption.height()));
}

// --- the caption check box and buttons ---

TEST_F(TZvTableTest, TheCheckBoxChecksAllUnlessAllAreChecked) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    T->GetItem(1)->SetCheck(true);
    EXPECT_EQ(T->GetFieldState(), 1);
    Click(test::CheckBoxPoint(*T));
    EXPECT_EQ(T->GetFieldState(), 2);
    for (int I = 0; I < T->ItemCount(); ++I)
        EXPECT_TRUE(T->GetItem(I)->GetCheck()) << I;
    EXPECT_EQ(test::ModelFields(*Parser, "EMP"), (std::vector<std::string>{"NAME", "ID", "DEPT_ID"}));
    Click(test::CheckBoxPoint(*T));
    EXPECT_EQ(T->GetFieldState(), 0);
    EXPECT_TRUE(test::ModelFields(*Parser, "EMP").empty());
}

TEST_F(TZvTableTest, TheCheckBoxLeavesParameterRowsAsTheyAre) {
    TZvParams Params;
    Params.Add(TZvParam{"WITH_VALUE", ptInput, ftInteger, TZvValue(42)});
    Params.Add(TZvParam{"WITHOUT", ptInput, ftInteger, TZvValue()});
    TZvTable* Proc = Host->GetTables().AddProc("GET_ROWS", "", &EmpFields, &Params);
    ASSERT_EQ(Proc->ItemCount(), 5);
    ASSERT_TRUE(Proc->GetItem(3)->GetCheck());
    ASSERT_FALSE(Proc->GetItem(4)->GetCheck());
    Click(test::CheckBoxPoint(*Proc));
    EXPECT_EQ(Proc->GetFieldState(), 2);
    EXPECT_TRUE(Proc->GetItem(3)->GetCheck());
    EXPECT_FALSE(Proc->GetItem(4)->GetCheck());
    Click(test::CheckBoxPoint(*Proc));
    EXPECT_EQ(Proc->GetFieldState(), 0);
    EXPECT_FALSE(Proc->GetItem(0)->GetCheck());
    EXPECT_TRUE(Proc->GetItem(3)->GetCheck());
    EXPECT_FALSE(Proc->GetItem(4)->GetCheck());
}

TEST_F(TZvTableTest, ReleasingAPressedButtonOutsideTheTableDoesNothing) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    QTest::mousePress(Area->viewport(), Qt::LeftButton, {}, test::ButtonPoint(*T, 0));
    EXPECT_EQ(T->GetPressedButton(), 0);
    QTest::mouseRelease(Area->viewport(), Qt::LeftButton, {}, QPoint(700, 500));
    EXPECT_TRUE(T->GetExpand());
    EXPECT_EQ(T->GetPressedButton(), -1);
    QTest::mousePress(Area->viewport(), Qt::LeftButton, {}, test::ButtonPoint(*T, 2));
    QTest::mouseRelease(Area->viewport(), Qt::LeftButton, {}, test::CaptionPoint(*T));
    EXPECT_EQ(Area->TableCount(), 1);
}

TEST_F(TZvTableTest, TheCollapseButtonTogglesTheBox) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    const int Height = T->GetHeight();
    Click(test::ButtonPoint(*T, 0));
    EXPECT_FALSE(T->GetExpand());
    EXPECT_EQ(T->GetBoundsRect().height(), T->GetCaptionHeight());
    Click(test::ButtonPoint(*T, 0));
    EXPECT_TRUE(T->GetExpand());
    EXPECT_EQ(T->GetHeight(), Height);
}

TEST_F(TZvTableTest, DoubleClickingARowTogglesItsCheck) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    const QPoint Text = test::RowCheckPoint(*T, 1) + QPoint(40, 0);
    // The first click of a double click makes the row current: a press always comes first.
    Click(Text);
    QTest::mouseDClick(Area->viewport(), Qt::LeftButton, {}, Text);
    EXPECT_TRUE(T->GetItem(1)->GetCheck());
    EXPECT_EQ(test::ModelFields(*Parser, "EMP"), (std::vector<std::string>{"NAME"}));
    Click(Text);
    QTest::mouseDClick(Area->viewport(), Qt::LeftButton, {}, Text);
    EXPECT_FALSE(T->GetItem(1)->GetCheck());
}

TEST_F(TZvTableTest, AClickOnTheRowTextMakesItCurrentWithoutCheckingIt) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    Click(test::RowCheckPoint(*T, 2) + QPoint(40, 0));
    EXPECT_EQ(T->GetCurrentItem(), T->GetItem(2));
    EXPECT_FALSE(T->GetItem(2)->GetCheck());
    Click(test::RowCheckPoint(*T, 2));
    EXPECT_TRUE(T->GetItem(2)->GetCheck());
}

// --- painting ---

class TZvTablePaintTest : public TZvTableTest {
protected:
    TZvTablePaintTest() {
        Host->GetPalette()->SetActiveCaption(0x0000FFu);   // red
        Host->GetPalette()->SetInactiveCaption(0x00FF00u); // green
        Host->GetPalette()->SetActiveCaptionText(0xFF0000u);   // blue
        Host->GetPalette()->SetInactiveCaptionText(0xFFFF00u); // cyan
        Host->GetPalette()->SetTableClient(0xFFFFFFu);
    }
    QColor PixelAt(const QImage& Image, int X, int Y) const {
        return Image.pixelColor(SurfacePoint(*Area, X, Y));
    }
    // Whether some pixel of the work-area rectangle R has the colour.
    static bool Shows(const QImage& Image, const QRect& R, const QColor& Colour) {
        for (int Y = R.top(); Y <= R.bottom(); ++Y)
            for (int X = R.left(); X <= R.right(); ++X)
                if (Image.pixelColor(X, Y) == Colour)
                    return true;
        return false;
    }
    // The bitmap as it shows drawn over a background colour.
    static QImage BitmapOver(const QString& Name, const QColor& Background) {
        const QImage Bitmap = ZvRenderBitmap(Name);
        QImage Result(Bitmap.size(), QImage::Format_ARGB32);
        Result.fill(Background);
        QPainter Painter(&Result);
        Painter.drawImage(0, 0, Bitmap);
        return Result;
    }
    // The area of Image at TopLeft equals Expected pixel for pixel.
    static bool Matches(const QImage& Image, QPoint TopLeft, const QImage& Expected) {
        for (int Y = 0; Y < Expected.height(); ++Y)
            for (int X = 0; X < Expected.width(); ++X)
                if (Image.pixelColor(TopLeft + QPoint(X, Y)) != Expected.pixelColor(X, Y))
                    return false;
        return true;
    }
};

TEST_F(TZvTablePaintTest, TheSelectedCaptionIsActiveAndTheOthersInactive) {
    TZvTable* Emp = AddAt("EMP", EmpFields, QPoint(10, 10));
    TZvTable* Dept = AddAt("DEPT", DeptFields, QPoint(300, 10));
    QImage Image = Grab(*Area);
    EXPECT_EQ(PixelAt(Image, Dept->GetLeft() + 3, Dept->GetTop() + 3), QColor(255, 0, 0));
    EXPECT_EQ(PixelAt(Image, Emp->GetLeft() + 3, Emp->GetTop() + 3), QColor(0, 255, 0));
    EXPECT_TRUE(Shows(Image, Area->ToViewport(Dept->GetCaptionRect()), QColor(0, 0, 255)));
    EXPECT_TRUE(Shows(Image, Area->ToViewport(Emp->GetCaptionRect()), QColor(0, 255, 255)));
    Click(test::CaptionPoint(*Emp));
    Image = Grab(*Area);
    EXPECT_EQ(PixelAt(Image, Dept->GetLeft() + 3, Dept->GetTop() + 3), QColor(0, 255, 0));
    EXPECT_EQ(PixelAt(Image, Emp->GetLeft() + 3, Emp->GetTop() + 3), QColor(255, 0, 0));
    EXPECT_TRUE(Shows(Image, Area->ToViewport(Emp->GetCaptionRect()), QColor(0, 0, 255)));
}

TEST_F(TZvTablePaintTest, RowsShowTheCheckBitmapOfTheirState) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    T->GetItem(1)->SetCheck(true);
    const QImage Image = Grab(*Area);
    const QPoint Unchecked = Area->ToViewport(T->GetItemRect(T->GetItem(0))).topLeft() + QPoint(0, 1);
    const QPoint Checked = Area->ToViewport(T->GetItemRect(T->GetItem(1))).topLeft() + QPoint(0, 1);
    EXPECT_TRUE(Matches(Image, Unchecked, BitmapOver(QStringLiteral("UNCHECKBMP"), Qt::white)));
    EXPECT_TRUE(Matches(Image, Checked, BitmapOver(QStringLiteral("CHECKBMP"), Qt::white)));
    EXPECT_FALSE(Matches(Image, Checked, BitmapOver(QStringLiteral("UNCHECKBMP"), Qt::white)));
}

TEST_F(TZvTablePaintTest, TheCaptionCheckBoxShowsTheFieldState) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    const QPoint Box = SurfacePoint(*Area, T->GetLeft() + TZvTable::BorderWidth + 4,
                                    T->GetTop() + TZvTable::BorderWidth + 2);
    EXPECT_TRUE(Matches(Grab(*Area), Box, BitmapOver(QStringLiteral("BOX1"), QColor(255, 0, 0))));
    T->GetItem(0)->SetCheck(true);
    EXPECT_TRUE(Matches(Grab(*Area), Box, BitmapOver(QStringLiteral("BOX2"), QColor(255, 0, 0))));
    T->SetFieldState(2);
    EXPECT_TRUE(Matches(Grab(*Area), Box, BitmapOver(QStringLiteral("BOX3"), QColor(255, 0, 0))));
}

TEST_F(TZvTablePaintTest, ParameterRowsShowWhetherAValueWasEntered) {
    TZvParams Params;
    Params.Add(TZvParam{"WITH_VALUE", ptInput, ftInteger, TZvValue(42)});
    Params.Add(TZvParam{"WITHOUT", ptInputOutput, ftInteger, TZvValue()});
    Host->GetPalette()->SetProcClient(0xFFFFFFu);
    TZvTable* Proc = Host->GetTables().AddProc("GET_ROWS", "", nullptr, &Params);
    const QImage Image = Grab(*Area);
    const auto RowAt = [&](int I) {
        return Area->ToViewport(Proc->GetItemRect(Proc->GetItem(I))).topLeft() + QPoint(0, 1);
    };
    EXPECT_TRUE(Matches(Image, RowAt(0), BitmapOver(QStringLiteral("INPUTPARAM"), Qt::white)));
    EXPECT_TRUE(Matches(Image, RowAt(1), BitmapOver(QStringLiteral("INPUTNULL"), Qt::white)));
}

TEST_F(TZvTablePaintTest, ButtonFramesShowNormalHotAndPressed) {
    Host->GetStyle()->GetObjectStyle()->SetFlatButtons(true);
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    const auto TopLine = [&](int Index) {
        const QRect F = T->GetButtonFrame(Index);
        return Grab(*Area).pixelColor(SurfacePoint(*Area, F.left() + 2, F.top()));
    };
    const auto BottomLine = [&](int Index) {
        const QRect F = T->GetButtonFrame(Index);
        return Grab(*Area).pixelColor(SurfacePoint(*Area, F.left() + 2, F.bottom()));
    };
    QTest::mouseMove(Area->viewport(), QPoint(700, 500));
    ASSERT_EQ(T->GetHotButton(), -1);
    EXPECT_EQ(TopLine(1), QColor(128, 128, 128));
    test::HoverAt(*Area, test::ButtonPoint(*T, 1));
    EXPECT_EQ(T->GetHotButton(), 1);
    EXPECT_EQ(TopLine(1), QColor(255, 255, 255));
    EXPECT_EQ(BottomLine(1), QColor(128, 128, 128));
    EXPECT_EQ(TopLine(0), QColor(128, 128, 128));
    QTest::mousePress(Area->viewport(), Qt::LeftButton, {}, test::ButtonPoint(*T, 1));
    EXPECT_EQ(TopLine(1), QColor(0, 0, 0));
    EXPECT_EQ(BottomLine(1), QColor(255, 255, 255));
    // Off the pressed button it shows normal again, and pressed once more when the pointer returns.
    QTest::mouseMove(Area->viewport(), test::ButtonPoint(*T, 0));
    EXPECT_EQ(TopLine(1), QColor(128, 128, 128));
    QTest::mouseMove(Area->viewport(), test::ButtonPoint(*T, 1));
    EXPECT_EQ(TopLine(1), QColor(0, 0, 0));
    QTest::mouseRelease(Area->viewport(), Qt::LeftButton, {}, QPoint(700, 500));
    EXPECT_EQ(TopLine(1), QColor(128, 128, 128));
}

TEST_F(TZvTablePaintTest, DrawButtonIgnoresIndicesOutsideTheThreeButtons) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    QImage Image(Area->viewport()->size(), QImage::Format_ARGB32);
    Image.fill(Qt::magenta);
    QPainter Painter(&Image);
    T->DrawButton(Painter, bsPressed, 3);
    T->DrawButton(Painter, bsPressed, -1);
    Painter.end();
    EXPECT_FALSE(Shows(Image, Image.rect(), QColor(0, 0, 0)));
}

TEST_F(TZvTablePaintTest, TheCurrentRowIsGreyUnlessHiddenOnAnUnselectedTable) {
    TZvTable* T = AddAt("EMP", EmpFields, QPoint(10, 10));
    TZvTable* Other = AddAt("DEPT", DeptFields, QPoint(300, 10));
    T->SetCurrentItem(T->GetItem(1));
    const QRect Row = T->GetItemRect(T->GetItem(1));
    const int X = Row.right() - 3, Y = Row.top() + Row.height() / 2;
    EXPECT_EQ(PixelAt(Grab(*Area), X, Y), QColor(192, 192, 192));
    Host->SetOptions(Host->GetOptions() | zvoHideSelection);
    EXPECT_EQ(PixelAt(Grab(*Area), X, Y), QColor(255, 255, 255));
    Click(test::CaptionPoint(*T));
    EXPECT_EQ(PixelAt(Grab(*Area), X, Y), QColor(192, 192, 192));
    (void)Other;
}

TEST_F(TZvTablePaintTest, AutomaticallyPlacedTablesShowWholeWithoutOverlap) {
    for (int I = 0; I < 6; ++I)
        Add(I % 2 ? "EMP" : "DEPT");
    const QImage Image = Grab(*Area);
    const QRect Visible(QPoint(0, 0), Area->viewport()->size());
    for (int I = 0; I < Area->TableCount(); ++I) {
        const TZvTable* T = Area->TableAt(I);
        for (int J = I + 1; J < Area->TableCount(); ++J)
            EXPECT_FALSE(T->GetBoundsRect().intersects(Area->TableAt(J)->GetBoundsRect()));
        if (!Visible.contains(Area->ToViewport(T->GetBoundsRect())))
            continue;
        // Both ends of the caption band show the table's own caption colour: nothing covers it.
        const QColor Caption = I == 0 ? QColor(255, 0, 0) : QColor(0, 255, 0);
        EXPECT_EQ(PixelAt(Image, T->GetLeft() + 3, T->GetTop() + 3), Caption) << T->GetAlias();
        EXPECT_EQ(PixelAt(Image, T->GetLeft() + 3, T->GetTop() + T->GetCaptionHeight() - 3), Caption)
            << T->GetAlias();
        EXPECT_EQ(PixelAt(Image, T->GetLeft() + T->GetWidth() - 3, T->GetTop() + 1), Caption) << T->GetAlias();
    }
}

} // namespace
} // namespace zv
