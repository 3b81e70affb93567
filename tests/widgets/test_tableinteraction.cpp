// Working with table objects by mouse and keyboard: moving by the caption and resizing by borders
// and corners (a frame until the button is released), dragging field rows onto rows of other
// tables, the scroll timers near a drop table's top and bottom, delayed hints, keyboard navigation
// and the field search, and tables that free themselves while input is still being handled.
#include "ZvDiagramTestSupport.h"
#include "ZvTestSupport.h"

#include <QApplication>
#include <QPaintEvent>
#include <QRegion>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace zv {
namespace {

using test::SurfacePoint;
using test::TMessageCounter;
using test::TPointerAt;
using test::TZvDiagramTest;
using test::WaitFor;

class TZvInteractionTest : public TZvDiagramTest {
protected:
    TZvInteractionTest() {
        for (int I = 0; I < 20; ++I)
            Twenty.AddFieldDef("F" + std::to_string(I), ftInteger);
    }
    QWidget* View() const { return Area->viewport(); }
    void Press(QPoint At) { QTest::mousePress(View(), Qt::LeftButton, {}, At); }
    void MoveTo(QPoint From, QPoint To) { test::MouseDragTo(*Area, From, To); }
    void Release(QPoint At) { QTest::mouseRelease(View(), Qt::LeftButton, {}, At); }
    void Drag(QPoint From, QPoint To) { test::DragWithMouse(*Area, From, To); }
    QPoint Surface(int X, int Y) const { return SurfacePoint(*Area, X, Y); }
    QPoint RowText(const TZvTable& Table, int I) const { return test::RowTextPoint(Table, I); }
    QRect Box(const TZvTable& T) const { return QRect(T.GetLeft(), T.GetTop(), T.GetWidth(), T.GetHeight()); }

    TZvDataSet Twenty;
};

// --- moving ---

TEST_F(TZvInteractionTest, DraggingTheCaptionShowsAFrameAndMovesTheTableOnRelease) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const QRect Before = T->GetBoundsRect();
    const QPoint From = test::CaptionPoint(*T);
    TMessageCounter Notices(Area);
    Press(From);
    MoveTo(From, From + QPoint(120, 60));
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmMove);
    EXPECT_EQ(Area->GetDragFrame(), Before.translated(120, 60));
    EXPECT_EQ(T->GetBoundsRect(), Before);
    EXPECT_EQ(Notices.Moves, 0);
    const QImage During = test::Grab(*Area);
    EXPECT_EQ(During.pixelColor(Surface(Before.left() + 120, Before.top() + 60 + 30)), QColor(Qt::black));
    Release(From + QPoint(120, 60));
    EXPECT_EQ(T->GetBoundsRect(), Before.translated(120, 60));
    EXPECT_EQ(Notices.Moves, 1);
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmNone);
    EXPECT_TRUE(Area->GetDragFrame().isEmpty());
}

// Sums the region of every paint the viewport receives.
class TPaintedRegion : public QObject {
public:
    explicit TPaintedRegion(QWidget* AView) : View(AView) { View->installEventFilter(this); }
    ~TPaintedRegion() override { View->removeEventFilter(this); }
    bool eventFilter(QObject* /*Watched*/, QEvent* Event) override {
        if (Event->type() == QEvent::Paint)
            Region += static_cast<QPaintEvent*>(Event)->region();
        return false;
    }
    QRegion Region;

private:
    QWidget* View;
};

TEST_F(TZvInteractionTest, AMoveStepRepaintsOnlyTheFrameAndTheReleaseOnlyTheTwoPlaces) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    Host->GetTables().AddTableAt("DEPT", "", &DeptFields, QPoint(500, 300));
    const QRect Before = Area->ToViewport(T->GetBoundsRect());
    const QPoint From = test::CaptionPoint(*T);
    Press(From);
    MoveTo(From, From + QPoint(40, 30));
    QApplication::processEvents();
    TPaintedRegion Painted(View());
    QTest::mouseMove(View(), From + QPoint(45, 33));
    QApplication::processEvents();
    ASSERT_FALSE(Painted.Region.isEmpty());
    EXPECT_FALSE(Painted.Region.contains(Before.center()));
    EXPECT_FALSE(Painted.Region.contains(Before.center() + QPoint(45, 33)));
    const QRect Frame = Area->ToViewport(Area->GetDragFrame());
    EXPECT_TRUE(Painted.Region.contains(Frame.topLeft()));
    EXPECT_TRUE(Painted.Region.contains(Frame.bottomRight()));
    Painted.Region = QRegion();
    Release(From + QPoint(45, 33));
    QApplication::processEvents();
    EXPECT_TRUE(Painted.Region.contains(Before.center()));
    EXPECT_TRUE(Painted.Region.contains(Before.center() + QPoint(45, 33)));
    EXPECT_FALSE(Painted.Region.contains(QPoint(700, 500)));
}

TEST_F(TZvInteractionTest, AClickOnTheCaptionMovesNothing) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    TMessageCounter Notices(Area);
    QTest::mouseClick(View(), Qt::LeftButton, {}, test::CaptionPoint(*T));
    EXPECT_EQ(QPoint(T->GetLeft(), T->GetTop()), QPoint(100, 100));
    EXPECT_EQ(Notices.Moves, 0);
}

TEST_F(TZvInteractionTest, EscapeCancelsAMove) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const QPoint From = test::CaptionPoint(*T);
    Press(From);
    MoveTo(From, From + QPoint(80, 0));
    QTest::keyClick(Area, Qt::Key_Escape);
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmNone);
    Release(From + QPoint(80, 0));
    EXPECT_EQ(T->GetLeft(), 100);
}

TEST_F(TZvInteractionTest, AMovedTableStaysOnTheSurface) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(30, 20));
    Drag(test::CaptionPoint(*T), test::CaptionPoint(*T) - QPoint(100, 100));
    EXPECT_EQ(QPoint(T->GetLeft(), T->GetTop()), QPoint(0, 0));
}

TEST_F(TZvInteractionTest, ACollapsedTableIsMovedFromNearItsBottomEdgeButNeverResized) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    T->SetExpand(false);
    const QRect Size(0, 0, T->GetWidth(), T->GetHeight());
    const QPoint NearBottom = Surface(T->GetLeft() + T->GetWidth() / 2 - 10, T->GetTop() + T->GetCaptionHeight() - 2);
    ASSERT_EQ(T->HitTest(NearBottom), htTCaption);
    Drag(NearBottom, NearBottom + QPoint(0, 70));
    EXPECT_EQ(QPoint(T->GetLeft(), T->GetTop()), QPoint(100, 170));
    const QPoint Corner = Surface(T->GetLeft() + T->GetWidth() - 1, T->GetTop() + T->GetCaptionHeight() - 1);
    EXPECT_NE(T->HitTest(Corner), htTRightBottom);
    Drag(Corner, Corner + QPoint(40, 40));
    EXPECT_EQ(QRect(0, 0, T->GetWidth(), T->GetHeight()), Size);
}

// --- resizing ---

TEST_F(TZvInteractionTest, DraggingTheRightBorderWidensOnRelease) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const QRect Before = Box(*T);
    const QPoint Edge = Surface(T->GetLeft() + T->GetWidth() - 2, T->GetTop() + 40);
    ASSERT_EQ(T->HitTest(Edge), htTRight);
    TMessageCounter Notices(Area);
    Press(Edge);
    MoveTo(Edge, Edge + QPoint(50, 30));
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmResize);
    EXPECT_EQ(Area->GetDragFrame(), Before.adjusted(0, 0, 50, 0));
    EXPECT_EQ(Box(*T), Before);
    Release(Edge + QPoint(50, 30));
    EXPECT_EQ(Box(*T), Before.adjusted(0, 0, 50, 0));
    EXPECT_EQ(Notices.Resizes, 1);
}

TEST_F(TZvInteractionTest, DraggingTheLeftBorderKeepsTheRightEdge) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const QRect Before = Box(*T);
    const QPoint Edge = Surface(T->GetLeft() + 1, T->GetTop() + 40);
    ASSERT_EQ(T->HitTest(Edge), htTLeft);
    Drag(Edge, Edge - QPoint(40, 0));
    EXPECT_EQ(Box(*T), Before.adjusted(-40, 0, 0, 0));
}

TEST_F(TZvInteractionTest, DraggingACornerResizesBothWays) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const QRect Before = Box(*T);
    const QPoint BottomRight = Surface(Before.right() - 1, Before.bottom() - 1);
    ASSERT_EQ(T->HitTest(BottomRight), htTRightBottom);
    Drag(BottomRight, BottomRight + QPoint(30, 40));
    EXPECT_EQ(Box(*T), Before.adjusted(0, 0, 30, 40));
    EXPECT_EQ(T->GetVisibleCount(), (T->GetHeight() - T->GetCaptionHeight() - 7) / (T->GetItemHeight() + 1));
    const QPoint TopLeft = Surface(T->GetLeft() + 1, T->GetTop() + 1);
    ASSERT_EQ(T->HitTest(TopLeft), htTLeftTop);
    Drag(TopLeft, TopLeft + QPoint(-20, -10));
    EXPECT_EQ(Box(*T), Before.adjusted(-20, -10, 30, 40));
}

TEST_F(TZvInteractionTest, AResizeStopsAtTheMinimumSize) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const QRect Before = Box(*T);
    const QPoint TopLeft = Surface(T->GetLeft() + 1, T->GetTop() + 1);
    Drag(TopLeft, TopLeft + QPoint(400, 400));
    EXPECT_EQ(T->GetWidth(), T->MinWidth());
    EXPECT_EQ(T->GetHeight(), T->MinHeight());
    EXPECT_EQ(T->GetLeft() + T->GetWidth(), Before.left() + Before.width());
    EXPECT_EQ(T->GetTop() + T->GetHeight(), Before.top() + Before.height());
    EXPECT_EQ(T->GetVisibleCount(), 1);
}

// --- dragging field rows ---

class TZvRowDragTest : public TZvInteractionTest {
protected:
    TZvRowDragTest() {
        EmpTable = Host->GetTables().AddTableAt("EMP", "E", &EmpFields, QPoint(20, 20));
        DeptTable = Host->GetTables().AddTableAt("DEPT", "D", &DeptFields, QPoint(400, 20));
    }
    // Presses on EMP's row I and moves far enough for the drag to start, onto To.
    void StartRowDrag(int I, QPoint To) {
        const QPoint From = RowText(*EmpTable, I);
        Press(From);
        MoveTo(From, To);
    }
    TZvTable* EmpTable;
    TZvTable* DeptTable;
};

TEST_F(TZvRowDragTest, ARowDragStartsOnlyPastTheDragDistance) {
    const QPoint From = RowText(*EmpTable, 2);
    Press(From);
    QTest::mouseMove(View(), From + QPoint(1, 1));
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmNone);
    QTest::mouseMove(View(), From + QPoint(QApplication::startDragDistance() + 2, 0));
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmField);
    EXPECT_EQ(Area->GetDragTable(), EmpTable);
    EXPECT_EQ(Area->GetDragItem(), EmpTable->GetItem(2));
    Release(From);
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmNone);
}

TEST_F(TZvRowDragTest, NoDragStartsFromTheCheckSquare) {
    const QPoint From = test::RowCheckPoint(*EmpTable, 1);
    Press(From);
    MoveTo(From, From + QPoint(0, 40));
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmNone);
    Release(From + QPoint(0, 40));
}

TEST_F(TZvRowDragTest, TheDragCursorShowsTheQualifiedNameWhenAsked) {
    Host->SetOptions(Host->GetOptions() | zvoDragFieldName);
    StartRowDrag(2, RowText(*EmpTable, 2) + QPoint(40, 0));
    EXPECT_EQ(Area->GetDragCursorText(), QStringLiteral("E.DEPT_ID"));
    const QCursor Cursor = View()->cursor();
    EXPECT_EQ(Cursor.shape(), Qt::BitmapCursor);
    EXPECT_GT(Cursor.pixmap().width(), QFontMetrics(Area->GetFont()).horizontalAdvance(QStringLiteral("E.DEPT_ID")));
    Release(RowText(*EmpTable, 2) + QPoint(40, 0));
    EXPECT_TRUE(Area->GetDragCursorText().isEmpty());
    EXPECT_NE(View()->cursor().shape(), Qt::BitmapCursor);
}

TEST_F(TZvRowDragTest, WithoutTheOptionTheStandardDragCursorShows) {
    ASSERT_FALSE(Area->GetDragFieldName());
    StartRowDrag(0, RowText(*EmpTable, 0) + QPoint(40, 0));
    EXPECT_TRUE(Area->GetDragCursorText().isEmpty());
    EXPECT_EQ(View()->cursor().shape(), Qt::DragMoveCursor);
    Release(RowText(*EmpTable, 0) + QPoint(40, 0));
    EXPECT_EQ(View()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(TZvRowDragTest, DroppingOnARowOfAnotherTableLinksTheTwoRows) {
    const QPoint Target = RowText(*DeptTable, 0);
    StartRowDrag(2, Target);
    EXPECT_EQ(Area->GetDropTable(), DeptTable);
    EXPECT_EQ(Area->GetDropItem(), DeptTable->GetItem(0));
    Release(Target);
    ASSERT_EQ(Host->GetLinks().Count(), 1);
    const TZvLink* Link = Host->GetLinks().Links(0);
    EXPECT_EQ(Link->GetItem1(), EmpTable->GetItem(2));
    EXPECT_EQ(Link->GetItem2(), DeptTable->GetItem(0));
    const TZvJoinDefs& Joins = Parser->GetTableDefs().FindByAlias("E")->GetJoinDefs();
    ASSERT_EQ(Joins.Count(), 1);
    EXPECT_EQ(Joins.Items(0)->GetLeftField(), "DEPT_ID");
    EXPECT_EQ(Joins.Items(0)->GetTableAlias(), "D");
    EXPECT_EQ(Joins.Items(0)->GetRightField(), "ID");
    EXPECT_EQ(Area->GetDropItem(), nullptr);
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmNone);
}

TEST_F(TZvRowDragTest, TheDropRowIsMarkedInDarkCyan) {
    Host->GetPalette()->SetSelectedItemText(0xFFFFFFu);
    const QPoint Target = RowText(*DeptTable, 1);
    StartRowDrag(1, Target);
    ASSERT_EQ(Area->GetDropItem(), DeptTable->GetItem(1));
    const QRect Row = DeptTable->GetItemRect(DeptTable->GetItem(1));
    EXPECT_EQ(test::Grab(*Area).pixelColor(Surface(Row.right() - 3, Row.top() + 3)), QColor(0, 128, 128));
    Release(Target);
    Host->GetLinks().DeleteLink(Host->GetLinks().Links(0));
    EXPECT_EQ(test::Grab(*Area).pixelColor(Surface(Row.right() - 3, Row.top() + 3)), QColor(255, 255, 255));
}

TEST_F(TZvRowDragTest, DroppingElsewhereLinksNothing) {
    StartRowDrag(1, QPoint(700, 500));
    Release(QPoint(700, 500));
    StartRowDrag(1, RowText(*EmpTable, 0));
    EXPECT_EQ(Area->GetDropTable(), nullptr);
    Release(RowText(*EmpTable, 0));
    StartRowDrag(1, test::CaptionPoint(*DeptTable));
    EXPECT_EQ(Area->GetDropTable(), nullptr);
    Release(test::CaptionPoint(*DeptTable));
    EXPECT_EQ(Host->GetLinks().Count(), 0);
}

TEST_F(TZvRowDragTest, EscapeEndsARowDragWithoutALink) {
    const QPoint Target = RowText(*DeptTable, 0);
    StartRowDrag(2, Target);
    QTest::keyClick(Area, Qt::Key_Escape);
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmNone);
    EXPECT_EQ(Area->GetDropItem(), nullptr);
    Release(Target);
    EXPECT_EQ(Host->GetLinks().Count(), 0);
}

// --- scrolling a drop table while dragging ---

class TZvDragScrollTest : public TZvRowDragTest {
protected:
    TZvDragScrollTest() {
        Big = Host->GetTables().AddTableAt("BIG", "", &Twenty, QPoint(400, 250));
        Big->SetFirstVisibleItem(5);
        QTest::mouseClick(View(), Qt::LeftButton, {}, test::CaptionPoint(*EmpTable));
    }
    QPoint TopBand() const { return Surface(Big->GetLeft() + 40, Big->GetTop() + Big->GetCaptionHeight() + 2); }
    QPoint BottomBand() const { return Surface(Big->GetLeft() + 40, Big->GetTop() + Big->GetHeight() - 3); }
    QPoint Middle() const { return Area->ToViewport(Big->GetClientRect()).center(); }
    TZvTable* Big;
};

TEST_F(TZvDragScrollTest, NearTheTopTheDropTableScrollsUpRowByRow) {
    StartRowDrag(0, TopBand());
    EXPECT_EQ(Area->GetDropTable(), Big);
    EXPECT_TRUE(Area->IsScrollTimerActive(1));
    EXPECT_FALSE(Area->IsScrollTimerActive(2));
    EXPECT_TRUE(WaitFor([&] { return Big->GetFirstVisibleItem() == 3; }));
    EXPECT_TRUE(WaitFor([&] { return Big->GetFirstVisibleItem() == 0; }));
    EXPECT_EQ(Area->GetDropItem(), Big->GetItem(0));
    Release(TopBand());
    EXPECT_FALSE(Area->IsScrollTimerActive(1));
}

TEST_F(TZvDragScrollTest, NearTheBottomTheDropTableScrollsDown) {
    StartRowDrag(0, BottomBand());
    EXPECT_EQ(Area->GetDropTable(), Big);
    EXPECT_TRUE(Area->IsScrollTimerActive(2));
    EXPECT_TRUE(WaitFor([&] { return Big->GetFirstVisibleItem() == 7; }));
    QTest::mouseMove(View(), Middle());
    EXPECT_FALSE(Area->IsScrollTimerActive(2));
    const int Stopped = Big->GetFirstVisibleItem();
    QTest::qWait(500);
    EXPECT_EQ(Big->GetFirstVisibleItem(), Stopped);
    Release(Middle());
}

TEST_F(TZvDragScrollTest, TheEndOfTheDragStopsTheTimers) {
    StartRowDrag(0, TopBand());
    ASSERT_TRUE(Area->IsScrollTimerActive(1));
    Release(TopBand());
    EXPECT_FALSE(Area->IsScrollTimerActive(1));
    EXPECT_FALSE(Area->IsScrollTimerActive(2));
    const int Now = Big->GetFirstVisibleItem();
    QTest::qWait(450);
    EXPECT_EQ(Big->GetFirstVisibleItem(), Now);
}

TEST_F(TZvDragScrollTest, TheSourceTableIsNoDropTarget) {
    EmpTable->SetHeight(EmpTable->GetHeight() + 100);
    StartRowDrag(0, Surface(EmpTable->GetLeft() + 40, EmpTable->GetTop() + EmpTable->GetCaptionHeight() + 2));
    EXPECT_EQ(Area->GetDropTable(), nullptr);
    EXPECT_FALSE(Area->IsScrollTimerActive(1));
    Release(QPoint(700, 500));
}

// --- hints ---

TEST_F(TZvInteractionTest, HoveringARowHintsItsNameAndType) {
    TZvTable* T = Host->GetTables().AddTableAt("BIG", "", &Twenty, QPoint(100, 100));
    const QPoint Over = RowText(*T, 2);
    const TPointerAt Pointer(*Area, Over);
    test::HoverAt(*Area, Over);
    EXPECT_EQ(T->GetHint(), QStringLiteral("F2 (Integer)"));
    ASSERT_TRUE(WaitFor([&] { return Area->IsHintShown(); }));
    EXPECT_EQ(Area->GetHintText(), QStringLiteral("F2 (Integer)"));
}

TEST_F(TZvInteractionTest, ButtonHintsAppearOnTheSelectedTableOnly) {
    TZvTable* Back = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(20, 20));
    TZvTable* Front = Host->GetTables().AddTableAt("DEPT", "", &DeptFields, QPoint(400, 20));
    test::HoverAt(*Area, test::ButtonPoint(*Front, 0));
    EXPECT_EQ(Front->GetHint(), QStringLiteral("Collapse/Expand table"));
    test::HoverAt(*Area, test::ButtonPoint(*Front, 1));
    EXPECT_EQ(Front->GetHint(), QStringLiteral("Unlink table"));
    test::HoverAt(*Area, test::ButtonPoint(*Front, 2));
    EXPECT_EQ(Front->GetHint(), QStringLiteral("Close table"));
    test::HoverAt(*Area, test::ButtonPoint(*Back, 2));
    EXPECT_TRUE(Back->GetHint().isEmpty());
    EXPECT_EQ(Back->GetHotButton(), -1);
    test::HoverAt(*Area, test::CheckBoxPoint(*Back));
    EXPECT_EQ(Back->GetHint(), QStringLiteral("Select all fields"));
    Back->SetFieldState(2);
    test::HoverAt(*Area, test::CheckBoxPoint(*Back));
    EXPECT_EQ(Back->GetHint(), QStringLiteral("Unselect all fields"));
}

TEST_F(TZvInteractionTest, LeavingTheButtonsClearsTheHotButton) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(20, 20));
    test::HoverAt(*Area, test::ButtonPoint(*T, 2));
    EXPECT_EQ(T->GetHotButton(), 2);
    QTest::mouseMove(View(), test::CaptionPoint(*T));
    EXPECT_EQ(T->GetHotButton(), -1);
    QTest::mouseMove(View(), test::ButtonPoint(*T, 0));
    EXPECT_EQ(T->GetHotButton(), 0);
    QTest::mouseMove(View(), QPoint(700, 500));
    EXPECT_EQ(T->GetHotButton(), -1);
}

// --- keyboard ---

class TZvTableKeyTest : public TZvInteractionTest {
protected:
    TZvTableKeyTest() { Big = Host->GetTables().AddTableAt("BIG", "", &Twenty, QPoint(100, 100)); }
    void Key(Qt::Key K) { QTest::keyClick(Area, K); }
    int Current() const { return Big->GetCurrentItem() ? Big->GetCurrentItem()->GetIndex() : -1; }
    TZvTable* Big;
};

TEST_F(TZvTableKeyTest, ArrowKeysMoveTheCurrentRowAndScrollItIntoView) {
    Key(Qt::Key_Down);
    EXPECT_EQ(Current(), 1);
    Key(Qt::Key_Right);
    EXPECT_EQ(Current(), 2);
    Key(Qt::Key_Left);
    Key(Qt::Key_Up);
    Key(Qt::Key_Up);
    EXPECT_EQ(Current(), 0);
    for (int I = 0; I < 7; ++I)
        Key(Qt::Key_Down);
    EXPECT_EQ(Current(), 7);
    EXPECT_EQ(Big->GetFirstVisibleItem(), 2);
    EXPECT_EQ(Area->GetTableScrollBar()->value(), 2);
}

TEST_F(TZvTableKeyTest, PageKeysMoveByAWindowLessOneAndHomeEndToTheEnds) {
    Key(Qt::Key_PageDown);
    EXPECT_EQ(Current(), 5);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(Current(), 10);
    EXPECT_EQ(Big->GetFirstVisibleItem(), 5);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(Current(), 5);
    EXPECT_EQ(Big->GetFirstVisibleItem(), 5);
    Key(Qt::Key_End);
    EXPECT_EQ(Current(), 19);
    EXPECT_EQ(Big->GetFirstVisibleItem(), 14);
    Key(Qt::Key_Home);
    EXPECT_EQ(Current(), 0);
    EXPECT_EQ(Big->GetFirstVisibleItem(), 0);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(Current(), 0);
}

TEST_F(TZvTableKeyTest, EnterAndSpaceToggleTheCurrentRowsCheck) {
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_TRUE(Big->GetItem(1)->GetCheck());
    EXPECT_EQ(test::ModelFields(*Parser, "BIG"), (std::vector<std::string>{"F1"}));
    Key(Qt::Key_Space);
    EXPECT_FALSE(Big->GetItem(1)->GetCheck());
    EXPECT_TRUE(test::ModelFields(*Parser, "BIG").empty());
}

TEST_F(TZvInteractionTest, KeysOnATableWithoutRowsChangeNothing) {
    TZvTable* Empty = Host->GetTables().AddTableAt("NONE", "", nullptr, QPoint(100, 100));
    for (Qt::Key K : {Qt::Key_Down, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Return, Qt::Key_Space})
        QTest::keyClick(Area, K);
    EXPECT_EQ(Empty->GetCurrentItem(), nullptr);
    EXPECT_EQ(Empty->GetFirstVisibleItem(), 0);
    QTest::keyClick(Area, Qt::Key_X);
    ASSERT_TRUE(Area->GetSearchEdit()->isVisible());
    EXPECT_EQ(Empty->GetCurrentItem(), nullptr);
}

// --- the field search ---

class TZvFieldSearchTest : public TZvInteractionTest {
protected:
    TZvFieldSearchTest() {
        Fields = test::FieldsDataSet({"id", "code", "city"});
        Cities = Host->GetTables().AddTableAt("CITIES", "", &Fields, QPoint(100, 100));
        Host->GetTables().AddTableAt("OTHER", "", &DeptFields, QPoint(400, 100));
        QTest::mouseClick(View(), Qt::LeftButton, {}, test::CaptionPoint(*Cities));
    }
    TZvDataSet Fields;
    TZvTable* Cities;
};

TEST_F(TZvFieldSearchTest, TypingALetterMakesTheFirstMatchingRowCurrent) {
    QTest::keyClick(Area, Qt::Key_C);
    TZvEdit* Edit = Area->GetSearchEdit();
    ASSERT_TRUE(Edit->isVisible());
    EXPECT_EQ(Edit->text(), QStringLiteral("C"));
    EXPECT_EQ(Edit->geometry().topLeft(), SurfacePoint(*Area, Cities->GetLeft(), Cities->GetTop() + 1));
    EXPECT_EQ(Area->GetSearchTable(), Cities);
    EXPECT_EQ(Cities->GetCurrentItem(), Cities->GetItem(1));
    QTest::keyClick(Edit, Qt::Key_I);
    EXPECT_EQ(Cities->GetCurrentItem(), Cities->GetItem(2));
    QTest::keyClick(Edit, Qt::Key_Escape);
    EXPECT_FALSE(Edit->isVisible());
    EXPECT_EQ(Cities->GetCurrentItem(), Cities->GetItem(2));
    EXPECT_TRUE(Area->hasFocus());
}

TEST_F(TZvFieldSearchTest, NoMatchLeavesTheCurrentRow) {
    QTest::keyClick(Area, Qt::Key_I);
    EXPECT_EQ(Cities->GetCurrentItem(), Cities->GetItem(0));
    QTest::keyClick(Area->GetSearchEdit(), Qt::Key_Q);
    EXPECT_EQ(Cities->GetCurrentItem(), Cities->GetItem(0));
    QTest::keyClick(Area->GetSearchEdit(), Qt::Key_Down);
    EXPECT_FALSE(Area->GetSearchEdit()->isVisible());
}

TEST_F(TZvFieldSearchTest, EachEndingKeyHidesTheEdit) {
    for (Qt::Key Ending : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown}) {
        QTest::keyClick(Area, Qt::Key_C);
        ASSERT_TRUE(Area->GetSearchEdit()->isVisible());
        QTest::keyClick(Area->GetSearchEdit(), Ending);
        EXPECT_FALSE(Area->GetSearchEdit()->isVisible()) << Ending;
    }
}

TEST_F(TZvFieldSearchTest, ControlAndAltLettersStartNoSearch) {
    QTest::keyClick(Area, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(Area, Qt::Key_C, Qt::AltModifier);
    EXPECT_FALSE(Area->GetSearchEdit()->isVisible());
    EXPECT_EQ(Cities->GetCurrentItem(), nullptr);
}

TEST_F(TZvFieldSearchTest, TheSearchSelectsItsTable) {
    TZvTable* Other = Area->GetTable("OTHER");
    QTest::mouseClick(View(), Qt::LeftButton, {}, test::CaptionPoint(*Other));
    QTest::keyClick(Area, Qt::Key_T);
    EXPECT_EQ(Area->GetSearchTable(), Other);
    EXPECT_EQ(Other->GetCurrentItem(), Other->GetFieldItem("TITLE"));
    EXPECT_EQ(Cities->GetCurrentItem(), nullptr);
}

TEST_F(TZvFieldSearchTest, ClosingTheTableEndsItsSearch) {
    QTest::keyClick(Area, Qt::Key_C);
    ASSERT_TRUE(Area->GetSearchEdit()->isVisible());
    Host->GetTables().DeleteTable(Cities);
    EXPECT_FALSE(Area->GetSearchEdit()->isVisible());
    EXPECT_EQ(Area->GetSearchTable(), nullptr);
    QTest::keyClick(Area->GetSearchEdit(), Qt::Key_O);
}

// --- tables that free themselves ---

// Run under AddressSanitizer by CI: the table is freed while its own mouse or key handling is on
// the stack, and nothing may touch it afterwards.
TEST_F(TZvInteractionTest, ATableClosedByItsButtonOrByDeleteIsNeverTouchedAgain) {
    TZvTable* Emp = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(20, 20));
    TZvTable* Dept = Host->GetTables().AddTableAt("DEPT", "", &DeptFields, QPoint(400, 20));
    Host->GetLinks().AddLink(Emp, Dept, Emp->GetItem(2), Dept->GetItem(0));
    Dept->GetItem(1)->SetCheck(true);
    const QPoint Close = test::ButtonPoint(*Dept, 2);
    const TPointerAt Pointer(*Area, Close);
    test::HoverAt(*Area, Close);
    QTest::mouseClick(View(), Qt::LeftButton, {}, Close);
    EXPECT_EQ(test::DiagramAliases(*Area), (std::vector<std::string>{"EMP"}));
    EXPECT_EQ(Host->GetLinks().Count(), 0);
    QTest::mouseMove(View(), Close + QPoint(1, 1));
    QTest::qWait(600); // the hover timer of the freed table would fire now
    QTest::mouseClick(View(), Qt::LeftButton, {}, test::CaptionPoint(*Emp));
    QTest::keyClick(Area, Qt::Key_C);
    QTest::keyClick(Area->GetSearchEdit(), Qt::Key_Escape);
    QTest::keyClick(Area, Qt::Key_Delete);
    EXPECT_EQ(Area->TableCount(), 0);
    EXPECT_EQ(Area->GetSelected(), nullptr);
    EXPECT_TRUE(test::ModelAliases(*Parser).empty());
    QTest::keyClick(Area, Qt::Key_Down);
    QTest::keyClick(Area, Qt::Key_Delete);
    QTest::mouseClick(View(), Qt::LeftButton, {}, Close);
}

TEST_F(TZvInteractionTest, ATableClosedDuringARowDragEndsTheDrag) {
    TZvTable* Emp = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(20, 20));
    const QPoint From = RowText(*Emp, 1);
    Press(From);
    MoveTo(From, From + QPoint(60, 0));
    ASSERT_EQ(Area->GetDragMode(), TZvDragMode::dmField);
    Host->GetTables().DeleteTable(Emp);
    EXPECT_EQ(Area->GetDragMode(), TZvDragMode::dmNone);
    EXPECT_EQ(Area->GetDragTable(), nullptr);
    Release(From + QPoint(60, 0));
    EXPECT_EQ(Host->GetLinks().Count(), 0);
}

} // namespace
} // namespace zv
