// Table objects and links together, driven by real mouse events: a field row dragged onto a row of
// another table links the two rows and joins the model's tables, drops the type check or the table
// itself refuses create nothing, and a link's end keeps to its row when the rows scroll or the
// table is moved by its caption.
#include "ZvLinkTestSupport.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace zv {
namespace {

using test::TZvLinkFixture;

// Where a link attaches to a row rectangle: its left edge (the tables here all lie right of EMP),
// halfway down.
QPoint LeftEdgeMiddle(const QRect& R) {
    return QPoint(R.left(), R.top() + R.height() / 2);
}

class TZvDiagramLinkTest : public TZvLinkFixture {
protected:
    TZvDiagramLinkTest() {
        for (int I = 0; I < 20; ++I)
            ManyFields.AddFieldDef("F" + std::to_string(I), ftInteger);
    }
    // Drags EMP's row Name onto the row Target of Table with real mouse events.
    void DragRowOnto(const std::string& Name, TZvTable* Table, const std::string& Target) {
        const QPoint From = test::RowTextPoint(*Emp, Row(Emp, Name)->GetIndex());
        const QPoint To = test::RowTextPoint(*Table, Row(Table, Target)->GetIndex());
        QTest::mousePress(Area->viewport(), Qt::LeftButton, {}, From);
        QTest::mouseMove(Area->viewport(), From + QPoint(QApplication::startDragDistance() + 2, 0));
        ASSERT_EQ(Area->GetDragMode(), TZvDragMode::dmField);
        test::MouseDragTo(*Area, From, To);
        QTest::mouseRelease(Area->viewport(), Qt::LeftButton, {}, To);
        ASSERT_EQ(Area->GetDragMode(), TZvDragMode::dmNone);
    }
    // A table of twenty integer rows F0..F19 at (400, 250), with fewer rows shown than it holds.
    TZvTable* AddMany() {
        TZvTable* Many = Host->GetTables().AddTableAt("MANY", "M", &ManyFields, QPoint(400, 250));
        EXPECT_LT(Many->GetVisibleCount(), 10);
        return Many;
    }
    QPoint LinkEnd(const TZvLink& Link) const { return Link.GetPoints().back(); }

    TZvDataSet ManyFields;
};

TEST_F(TZvDiagramLinkTest, ARowDroppedOnARowOfAnotherTableMakesOneLinkAndItsJoin) {
    DragRowOnto("DEPT_ID", Dept, "ID");
    ASSERT_EQ(Area->LinkCount(), 1);
    ASSERT_EQ(Area->JoinCount(), 1);
    TZvLink* Link = Area->LinkAt(0);
    EXPECT_EQ(Link->GetItem1(), Row(Emp, "DEPT_ID"));
    EXPECT_EQ(Link->GetItem2(), Row(Dept, "ID"));
    EXPECT_EQ(Link->GetHint(), QStringLiteral("E.DEPT_ID=D.ID"));
    EXPECT_EQ(LinkEnd(*Link), LeftEdgeMiddle(Dept->GetItemRect(Row(Dept, "ID"))));
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
    EXPECT_EQ(FromText("D"), "  DEPT D");
    EXPECT_EQ(Area->GetDropItem(), nullptr);
}

TEST_F(TZvDiagramLinkTest, TheSameRowsDroppedAgainKeepOneLink) {
    DragRowOnto("DEPT_ID", Dept, "ID");
    DragRowOnto("DEPT_ID", Dept, "ID");
    EXPECT_EQ(Area->LinkCount(), 1);
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
}

TEST_F(TZvDiagramLinkTest, ASecondDroppedPairJoinsTheSameTwoTablesInOneJoin) {
    DragRowOnto("DEPT_ID", Dept, "ID");
    DragRowOnto("NAME", Dept, "TITLE");
    EXPECT_EQ(Area->LinkCount(), 2);
    EXPECT_EQ(Area->JoinCount(), 1);
    EXPECT_EQ(FromText("E"),
              "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID) AND \r\n    (E.NAME = D.TITLE)");
}

TEST_F(TZvDiagramLinkTest, ARowOfAnotherTypeClassTakesNoDropWhileTypesAreChecked) {
    ASSERT_TRUE(Area->GetCheckLinkFieldsType());
    DragRowOnto("ID", Dept, "TITLE");
    EXPECT_EQ(Area->LinkCount(), 0);
    EXPECT_EQ(Area->JoinCount(), 0);
    EXPECT_EQ(FromText("E"), "  EMP E");
    Host->SetCheckLinkFieldsType(false);
    DragRowOnto("ID", Dept, "TITLE");
    EXPECT_EQ(Area->LinkCount(), 1);
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.ID = D.TITLE)");
}

// EMP's ID is an integer, DEPT's a large integer.
TEST_F(TZvDiagramLinkTest, IntegersOfDifferentWidthsLinkByTheirClass) {
    DragRowOnto("ID", Dept, "ID");
    EXPECT_EQ(Area->LinkCount(), 1);
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.ID = D.ID)");
}

TEST_F(TZvDiagramLinkTest, ARowDroppedOnARowOfItsOwnTableLinksNothing) {
    DragRowOnto("ID", Emp, "DEPT_ID");
    EXPECT_EQ(Area->LinkCount(), 0);
    EXPECT_EQ(Area->JoinCount(), 0);
    EXPECT_EQ(FromText("E"), "  EMP E");
    // No row was ticked by the press or the release on the rows' texts.
    EXPECT_TRUE(test::ModelFields(*Parser, "E").empty());
}

TEST_F(TZvDiagramLinkTest, TheLinkEndFollowsItsRowWhenTheRowsScroll) {
    TZvTable* Many = AddMany();
    DragRowOnto("ID", Many, "F2");
    ASSERT_EQ(Area->LinkCount(), 1);
    const TZvLink& Link = *Area->LinkAt(0);
    const QPoint Shown = LinkEnd(Link);
    EXPECT_EQ(Shown, LeftEdgeMiddle(Many->GetItemRect(Row(Many, "F2"))));
    Many->SetFirstVisibleItem(1);
    EXPECT_EQ(LinkEnd(Link), Shown - QPoint(0, Many->GetItemHeight() + 1));
    // Scrolled above the window, the row hands its link to the caption band.
    Many->SetFirstVisibleItem(3);
    EXPECT_EQ(LinkEnd(Link), QPoint(Many->GetLeft(), Many->GetTop() + Many->GetCaptionHeight() / 2));
    Many->SetFirstVisibleItem(0);
    EXPECT_EQ(LinkEnd(Link), Shown);
}

TEST_F(TZvDiagramLinkTest, ARowBelowTheWindowHandsItsLinkToTheBottomStrip) {
    TZvTable* Many = AddMany();
    DragRowOnto("ID", Many, "F0");
    const std::string Hidden = "F" + std::to_string(Many->GetVisibleCount() + 3);
    TZvLink* Link = Area->AddLink(Emp, Many, Row(Emp, "DEPT_ID"), Row(Many, Hidden));
    ASSERT_NE(Link, nullptr);
    const int Bottom = Many->GetTop() + Many->GetHeight();
    EXPECT_EQ(LinkEnd(*Link),
              QPoint(Many->GetLeft(), Bottom - TZvTable::BorderWidth + TZvTable::BorderWidth / 2));
    Many->SetFirstVisibleItem(5);
    EXPECT_EQ(LinkEnd(*Link), LeftEdgeMiddle(Many->GetItemRect(Row(Many, Hidden))));
}

TEST_F(TZvDiagramLinkTest, TheTablesScrollBarMovesTheLinkEndWithTheRow) {
    TZvTable* Many = AddMany();
    DragRowOnto("ID", Many, "F4");
    const TZvLink& Link = *Area->LinkAt(0);
    const QPoint Shown = LinkEnd(Link);
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::CaptionPoint(*Many));
    QScrollBar* Bar = Area->GetTableScrollBar();
    ASSERT_TRUE(Bar->isVisible());
    // The bar's lower arrow, clicked twice: two rows up.
    const QPoint DownArrow(Bar->width() / 2, Bar->height() - 4);
    QTest::mouseClick(Bar, Qt::LeftButton, {}, DownArrow);
    QTest::mouseClick(Bar, Qt::LeftButton, {}, DownArrow);
    ASSERT_EQ(Many->GetFirstVisibleItem(), 2);
    EXPECT_EQ(LinkEnd(Link), Shown - QPoint(0, 2 * (Many->GetItemHeight() + 1)));
    EXPECT_EQ(LinkEnd(Link), LeftEdgeMiddle(Many->GetItemRect(Row(Many, "F4"))));
    // The wheel over the bar scrolls the rows the other way.
    QWheelEvent Wheel(QPointF(DownArrow), QPointF(Bar->mapToGlobal(DownArrow)), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(Bar, &Wheel);
    EXPECT_LT(Many->GetFirstVisibleItem(), 2);
    EXPECT_EQ(LinkEnd(Link), LeftEdgeMiddle(Many->GetItemRect(Row(Many, "F4"))));
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN MANY M ON (E.ID = M.F4)");
}

TEST_F(TZvDiagramLinkTest, DraggingTheTableByItsCaptionTakesTheLinkEndAlong) {
    DragRowOnto("DEPT_ID", Dept, "ID");
    const TZvLink& Link = *Area->LinkAt(0);
    const QPoint Before = LinkEnd(Link);
    const QPoint Start = Link.GetPoints().front();
    const QPoint From = test::CaptionPoint(*Dept);
    const QPoint By(60, 120);
    QTest::mousePress(Area->viewport(), Qt::LeftButton, {}, From);
    test::MouseDragTo(*Area, From, From + By);
    ASSERT_EQ(Area->GetDragMode(), TZvDragMode::dmMove);
    EXPECT_EQ(LinkEnd(Link), Before); // only the frame moves until the release
    QTest::mouseRelease(Area->viewport(), Qt::LeftButton, {}, From + By);
    EXPECT_EQ(QPoint(Dept->GetLeft(), Dept->GetTop()), QPoint(300, 40) + By);
    EXPECT_EQ(LinkEnd(Link), Before + By);
    EXPECT_EQ(Link.GetPoints().front(), Start);
    EXPECT_TRUE(Link.GetBounds().contains(Before + By));
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
}

TEST_F(TZvDiagramLinkTest, ATableDraggedStraightBelowTheOtherIsEnteredOnItsRightEdge) {
    DragRowOnto("DEPT_ID", Dept, "ID");
    const TZvLink& Link = *Area->LinkAt(0);
    test::DragWithMouse(*Area, test::CaptionPoint(*Dept), test::CaptionPoint(*Dept) + QPoint(-280, 260));
    ASSERT_EQ(QPoint(Dept->GetLeft(), Dept->GetTop()), QPoint(20, 300));
    const QRect Source = Emp->GetItemRect(Row(Emp, "DEPT_ID"));
    const QRect Target = Dept->GetItemRect(Row(Dept, "ID"));
    EXPECT_EQ(Link.GetPoints().front(),
              QPoint(Source.left() + Source.width(), Source.top() + Source.height() / 2));
    EXPECT_EQ(LinkEnd(Link), QPoint(Target.left() + Target.width(), Target.top() + Target.height() / 2));
}

} // namespace
} // namespace zv
