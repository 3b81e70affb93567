// Links: end points and bounds, hit testing, bend points inserted, dragged and deleted through real
// mouse events and the context menu, selection, painting with the join-kind markers, the clip
// region, IsPointInPoly, and the work area's link operations with the model's join text after each
// edit: adding, finding, removing (with the joins against constants), and the field-row drop.
#include "ZvErrors.h"
#include "ZvLinkTestSupport.h"
#include "ZvProc.h"
#include "ZvTestSupport.h"

#include <QImage>
#include <QPainter>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace zv {
namespace {

using test::SendMouse;
using test::TZvLinkFixture;
using test::TZvMessageRecorder;

QPoint Mid(QPoint A, QPoint B) {
    return (A + B) / 2;
}

// Where a link attaches on a row: the given edge, halfway down (halved toward zero).
QPoint EdgePoint(const QRect& Row, bool RightEdge) {
    return QPoint(RightEdge ? Row.left() + Row.width() : Row.left(), Row.top() + Row.height() / 2);
}

std::vector<QPoint> PointsOf(const TZvLink& Link) {
    return Link.GetPoints();
}

// The link alone painted on white, in viewport coordinates.
QImage PaintAlone(TZvLink& Link, const TZvWorkArea& Area) {
    QImage Image(Area.viewport()->size(), QImage::Format_RGB32);
    Image.fill(Qt::white);
    QPainter Painter(&Image);
    Link.Paint(Painter);
    return Image;
}

bool IsDark(const QImage& Image, QPoint P) {
    return Image.rect().contains(P) && qGray(Image.pixel(P)) < 128;
}

// A line's pixel may lie one step beside the exact midpoint of its ends.
bool IsDarkNear(const QImage& Image, QPoint P) {
    for (int Dx = -1; Dx <= 1; ++Dx)
        for (int Dy = -1; Dy <= 1; ++Dy)
            if (IsDark(Image, P + QPoint(Dx, Dy)))
                return true;
    return false;
}

using TZvLinkGeometryTest = TZvLinkFixture;
using TZvLinkEditTest = TZvLinkFixture;
using TZvLinkModelTest = TZvLinkFixture;

// --- end points and bounds ---

TEST_F(TZvLinkGeometryTest, ANewLinkJoinsFacingEdgesWithTenPixelStubs) {
    TZvLink* Link = LinkDeptId();
    ASSERT_NE(Link, nullptr);
    ASSERT_EQ(Link->GetCountPoints(), 4);
    const QPoint Start = EdgePoint(Row(Emp, "DEPT_ID")->GetBoundsRect(), true);
    const QPoint End = EdgePoint(Row(Dept, "ID")->GetBoundsRect(), false);
    EXPECT_EQ(PointsOf(*Link), (std::vector<QPoint>{Start, Start + QPoint(10, 0), End - QPoint(10, 0), End}));
    EXPECT_EQ(Link->GetBounds(), QRect(QPoint(Start.x(), std::min(Start.y(), End.y())),
                                       QPoint(End.x(), std::max(Start.y(), End.y())))
                                     .adjusted(-3, -3, 3, 3));
    EXPECT_EQ(Link->GetOperator(), "=");
    EXPECT_EQ(Link->GetDragPoint(), -1);
}

TEST_F(TZvLinkGeometryTest, ATableStraightBelowAnotherIsJoinedOnBothRightEdges) {
    Dept->SetTopLeft(QPoint(20, 300));
    TZvLink* Link = LinkDeptId();
    const QPoint Start = EdgePoint(Row(Emp, "DEPT_ID")->GetBoundsRect(), true);
    const QPoint End = EdgePoint(Row(Dept, "ID")->GetBoundsRect(), true);
    EXPECT_EQ(PointsOf(*Link), (std::vector<QPoint>{Start, Start + QPoint(10, 0), End + QPoint(10, 0), End}));
}

TEST_F(TZvLinkGeometryTest, ASecondTableLeftOfTheFirstIsEnteredOnItsRightEdge) {
    Emp->SetTopLeft(QPoint(500, 20));
    TZvLink* Link = LinkDeptId();
    const QPoint Start = EdgePoint(Row(Emp, "DEPT_ID")->GetBoundsRect(), false);
    const QPoint End = EdgePoint(Row(Dept, "ID")->GetBoundsRect(), true);
    EXPECT_EQ(PointsOf(*Link), (std::vector<QPoint>{Start, Start - QPoint(10, 0), End + QPoint(10, 0), End}));
}

TEST_F(TZvLinkGeometryTest, TheEndsFollowAMovedTable) {
    TZvLink* Link = LinkDeptId();
    Dept->MoveTable(40, 100);
    EXPECT_EQ(Link->GetPoints().back(), EdgePoint(Row(Dept, "ID")->GetBoundsRect(), false));
    EXPECT_TRUE(Link->GetBounds().contains(Link->GetPoints().back()));
}

TEST_F(TZvLinkGeometryTest, AnEndFollowsItsRowWhenTheRowsScroll) {
    TZvDataSet Many;
    for (int I = 0; I < 20; ++I)
        Many.AddFieldDef("F" + std::to_string(I), ftInteger);
    TZvTable* Wide = Host->GetTables().AddTableAt("WIDE", "W", &Many, QPoint(300, 300));
    TZvLink* Link = Area->AddLink(Emp, Wide, Row(Emp, "ID"), Row(Wide, "F3"));
    ASSERT_NE(Link, nullptr);
    Wide->SetFirstVisibleItem(5); // F3 is above the window now: the link goes to the caption band
    const QRect Caption(Wide->GetLeft(), Wide->GetTop(), Wide->GetWidth(), Wide->GetCaptionHeight());
    EXPECT_EQ(Link->GetPoints().back(), EdgePoint(Caption, false));
}

TEST_F(TZvLinkGeometryTest, GetPointIsInWindowCoordinatesAndABadIndexRaises) {
    TZvLink* Link = LinkDeptId();
    Area->horizontalScrollBar()->setValue(7);
    Area->verticalScrollBar()->setValue(5);
    EXPECT_EQ(Link->GetPoint(0), Link->GetPoints()[0] - QPoint(7, 5));
    Link->SetPoint(2, QPoint(200, 200));
    EXPECT_EQ(Link->GetPoints()[2], QPoint(200, 200));
    try {
        Link->GetPoint(4);
        ADD_FAILURE() << "no error";
    } catch (const EZvError& Error) {
        EXPECT_STREQ(Error.what(), "Invalid index = 4 ");
    }
    EXPECT_THROW(Link->SetPoint(-1, QPoint()), EZvError);
}

TEST_F(TZvLinkGeometryTest, AJoinWithoutATableCannotPlaceALink) {
    TZvJoin Join(Area, Emp, nullptr);
    try {
        TZvLink Link(Area, &Join, Row(Emp, "ID"), Row(Dept, "ID"));
        ADD_FAILURE() << "no error";
    } catch (const EZvError& Error) {
        EXPECT_STREQ(Error.what(), "Invalid table  in Link control");
    }
    EXPECT_EQ(Join.GetTable(1), nullptr);
    EXPECT_EQ(Join.GetTable(2), nullptr);
    EXPECT_EQ(Join.GetTableName(0), "EMP");
    EXPECT_EQ(Join.GetTableName(1), "");
}

TEST_F(TZvLinkGeometryTest, WithBendPointsTheEndsFaceTheNearestBendPoint) {
    TZvLink* Link = LinkDeptId();
    std::vector<QPoint> Path = Link->GetPoints();
    // A bend point far left of EMP: the first end now leaves EMP on its left.
    Path.insert(Path.begin() + 2, QPoint(2, 400));
    Link->SetBoundaryRect(Path);
    ASSERT_EQ(Link->GetCountPoints(), 5);
    const QPoint Start = EdgePoint(Row(Emp, "DEPT_ID")->GetBoundsRect(), false);
    EXPECT_EQ(Link->GetPoints()[0], Start);
    EXPECT_EQ(Link->GetPoints()[1], Start - QPoint(10, 0));
    EXPECT_EQ(Link->GetPoints()[2], QPoint(2, 400));
    EXPECT_EQ(Link->GetPoints()[4], EdgePoint(Row(Dept, "ID")->GetBoundsRect(), false));
    // A path of fewer than four points is no path.
    Link->SetBoundaryRect({QPoint(1, 1)});
    EXPECT_EQ(Link->GetCountPoints(), 5);
}

// --- texts ---

TEST_F(TZvLinkGeometryTest, HintAndIdentifierNameBothSides) {
    TZvLink* Link = LinkDeptId();
    EXPECT_EQ(Link->GetHint(), QStringLiteral("E.DEPT_ID=D.ID"));
    EXPECT_EQ(Link->GetLinkID(), "EMP_DEPT_ID-DEPT_ID");
    EXPECT_EQ(Area->FindLinkByID("EMP_DEPT_ID-DEPT_ID"), 0);
    EXPECT_EQ(Area->FindLinkByID("EMP_DEPT_ID-DEPT_TITLE"), -1);
}

TEST_F(TZvLinkGeometryTest, HoveringALinkShowsItsConditionAsTheHint) {
    TZvLink* Link = LinkDeptId();
    const QPoint Middle = ToView(Mid(Link->GetPoints()[1], Link->GetPoints()[2]));
    const auto SavedPosition = TZvWorkArea::CursorPosition;
    TZvWorkArea::CursorPosition = [this, Middle] { return Area->viewport()->mapToGlobal(Middle); };
    QTest::mouseMove(Area->viewport(), QPoint(700, 500));
    QTest::mouseMove(Area->viewport(), Middle);
    for (int Waited = 0; !Area->IsHintShown() && Waited < 5000; Waited += 20)
        QTest::qWait(20);
    TZvWorkArea::CursorPosition = SavedPosition;
    EXPECT_TRUE(Area->IsHintShown());
    EXPECT_EQ(Area->GetHintText(), QStringLiteral("E.DEPT_ID=D.ID"));
}

// --- hit testing ---

TEST_F(TZvLinkGeometryTest, HitTestFindsTheLineBendPointsAndEnds) {
    TZvLink* Link = LinkDeptId();
    const std::vector<QPoint> P = Link->GetPoints();
    EXPECT_EQ(Link->HitTest(ToView(Mid(P[1], P[2]))), htTClient);
    EXPECT_EQ(Link->HitTest(ToView(Mid(P[1], P[2]) + QPoint(0, 40))), htTOutSide);
    // The stub points are never grabbed; the ends are, strictly within four pixels.
    EXPECT_EQ(Link->HitTest(ToView(P[1])), htTClient);
    EXPECT_EQ(Link->HitTest(ToView(P[3] + QPoint(3, 3))), htTEndLine);
    EXPECT_EQ(Link->HitTest(ToView(P[3] + QPoint(-4, 3))), htTClient);
    EXPECT_EQ(Link->HitTest(ToView(P[0] - QPoint(2, 0))), htTEndLine);
    std::vector<QPoint> Path = P;
    Path.insert(Path.begin() + 2, Mid(P[1], P[2]) + QPoint(0, 60));
    Link->SetBoundaryRect(Path);
    EXPECT_EQ(Link->HitTest(ToView(Path[2] + QPoint(2, -3))), htTPoint);
    EXPECT_EQ(Link->HitTest(ToView(Path[2] + QPoint(30, 30))), htTOutSide);
}

TEST_F(TZvLinkGeometryTest, AScrolledLinkIsHitWhereItShows) {
    TZvLink* Link = LinkDeptId();
    const QPoint Middle = Mid(Link->GetPoints()[1], Link->GetPoints()[2]);
    Area->horizontalScrollBar()->setValue(15);
    Area->verticalScrollBar()->setValue(10);
    EXPECT_EQ(Link->HitTest(Middle - QPoint(15, 10)), htTClient);
    EXPECT_EQ(Link->HitTest(Middle), htTOutSide);
}

// --- bend points through the context menu and the mouse ---

TEST_F(TZvLinkEditTest, ANewLinkHasNoBendPointAndDeletePointDoesNothing) {
    TZvLink* Link = LinkDeptId();
    Link->SetClickPoint(Mid(Link->GetPoints()[1], Link->GetPoints()[2]));
    Link->HandleDeletePoint();
    EXPECT_EQ(Link->GetCountPoints(), 4);
    // No circle is drawn at the stub points, which are no bend points.
    const QImage Image = PaintAlone(*Link, *Area);
    EXPECT_FALSE(IsDark(Image, ToView(Link->GetPoints()[2]) + QPoint(0, 3)));
}

TEST_F(TZvLinkEditTest, InsertPointOnAStubDoesNothing) {
    TZvLink* Link = LinkDeptId();
    const std::string Before = FromText("E");
    ChooseFromMenu(QStringLiteral("Insert point"));
    for (const QPoint& Stub : {Mid(Link->GetPoints()[0], Link->GetPoints()[1]) + QPoint(3, 0),
                               Mid(Link->GetPoints()[2], Link->GetPoints()[3])}) {
        // The first stub starts inside EMP's box; its outer half is on the surface.
        RightClick(ToView(Stub));
        EXPECT_EQ(Link->GetCountPoints(), 4);
    }
    EXPECT_EQ(MenuTexts, (std::vector<QString>{QStringLiteral("Insert point"), QStringLiteral("-"),
                                               QStringLiteral("Delete link"), QStringLiteral("Property")}));
    EXPECT_EQ(FromText("E"), Before);
}

TEST_F(TZvLinkEditTest, InsertPointOnTheMiddleSegmentAddsABendPointAtTheClick) {
    TZvLink* Link = LinkDeptId();
    const QPoint Click = Mid(Link->GetPoints()[1], Link->GetPoints()[2]);
    ChooseFromMenu(QStringLiteral("Insert point"));
    RightClick(ToView(Click));
    ASSERT_EQ(Link->GetCountPoints(), 5);
    EXPECT_EQ(Link->GetPoints()[2], Click);
    EXPECT_EQ(Link->GetClickPoint(), Click);
    // The bend point shows as a circle of radius 3.
    const QImage Image = PaintAlone(*Link, *Area);
    EXPECT_TRUE(IsDark(Image, ToView(Click) + QPoint(0, 3)));
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
}

TEST_F(TZvLinkEditTest, ABendPointOffersDeletePointAndIsRemoved) {
    TZvLink* Link = LinkDeptId();
    std::vector<QPoint> Path = Link->GetPoints();
    const QPoint Bend = Mid(Path[1], Path[2]) + QPoint(0, 80);
    Path.insert(Path.begin() + 2, Bend);
    Link->SetBoundaryRect(Path);
    ChooseFromMenu(QStringLiteral("Delete point"));
    RightClick(ToView(Bend + QPoint(1, 2)));
    EXPECT_EQ(MenuTexts, (std::vector<QString>{QStringLiteral("Delete point"), QStringLiteral("-"),
                                               QStringLiteral("Delete link"), QStringLiteral("Property")}));
    EXPECT_EQ(Link->GetCountPoints(), 4);
}

TEST_F(TZvLinkEditTest, NoMenuOnAnEndPointOrBesideTheLine) {
    TZvLink* Link = LinkDeptId();
    QMenu Menu;
    Link->PopupMenu(Menu, Link->GetPoints()[3], htTEndLine);
    Link->PopupMenu(Menu, QPoint(0, 0), htTOutSide);
    EXPECT_TRUE(Menu.isEmpty());
}

TEST_F(TZvLinkEditTest, DraggingABendPointMovesItWhereItIsDropped) {
    TZvLink* Link = LinkDeptId();
    std::vector<QPoint> Path = Link->GetPoints();
    const QPoint Bend = Mid(Path[1], Path[2]);
    Path.insert(Path.begin() + 2, Bend);
    Link->SetBoundaryRect(Path);
    QWidget* View = Area->viewport();
    SendMouse(View, QEvent::MouseButtonPress, ToView(Bend), Qt::LeftButton, Qt::LeftButton);
    EXPECT_EQ(Area->GetSelected(), Link);
    EXPECT_EQ(Link->GetDragPoint(), 2);
    const QPoint Target = Bend + QPoint(30, 120);
    // The pointer leaves the line at once: the link keeps the moves while the button is held.
    SendMouse(View, QEvent::MouseMove, ToView(Bend + QPoint(10, 40)), Qt::NoButton, Qt::LeftButton);
    SendMouse(View, QEvent::MouseMove, ToView(Target), Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(Link->GetClickPoint(), Target);
    EXPECT_EQ(Link->GetPoints()[2], Bend); // not yet moved, only drawn
    // The segments through the pointer are drawn inverted over the surface.
    const QImage During = PaintAlone(*Link, *Area);
    EXPECT_TRUE(IsDarkNear(During, ToView(Mid(Target, Path[3]))));
    SendMouse(View, QEvent::MouseButtonRelease, ToView(Target), Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(Link->GetPoints()[2], Target);
    EXPECT_EQ(Link->GetDragPoint(), -1);
    EXPECT_TRUE(Link->GetBounds().contains(Target));
    const QImage After = PaintAlone(*Link, *Area);
    EXPECT_TRUE(IsDark(After, ToView(Target) + QPoint(0, 3)));
    EXPECT_FALSE(IsDark(After, ToView(Bend) + QPoint(0, 3)));
}

TEST_F(TZvLinkEditTest, PressingAnEndRecordsItButMovesNothing) {
    TZvLink* Link = LinkDeptId();
    const std::vector<QPoint> Before = Link->GetPoints();
    QMouseEvent Press(QEvent::MouseButtonPress, QPointF(), QPointF(), Qt::LeftButton, Qt::LeftButton, {});
    Link->MouseDown(Press, Before[3] + QPoint(1, 1), htTEndLine);
    EXPECT_EQ(Link->GetDragPoint(), 3);
    Link->MouseDown(Press, Before[0], htTEndLine);
    EXPECT_EQ(Link->GetDragPoint(), 0);
    QMouseEvent Release(QEvent::MouseButtonRelease, QPointF(), QPointF(), Qt::LeftButton, Qt::NoButton, {});
    Link->MouseUp(Release, Before[0] + QPoint(50, 50), htTEndLine);
    EXPECT_EQ(Link->GetPoints(), Before);
    EXPECT_EQ(Link->GetDragPoint(), -1);
}

TEST_F(TZvLinkEditTest, ABendPointDraggedPastTheRowTurnsThatEndAround) {
    TZvLink* Link = LinkDeptId();
    std::vector<QPoint> Path = Link->GetPoints();
    const QPoint Bend = Mid(Path[1], Path[2]);
    Path.insert(Path.begin() + 2, Bend);
    Link->SetBoundaryRect(Path);
    QWidget* View = Area->viewport();
    const QPoint Target(5, 300);
    SendMouse(View, QEvent::MouseButtonPress, ToView(Bend), Qt::LeftButton, Qt::LeftButton);
    SendMouse(View, QEvent::MouseMove, ToView(Target), Qt::NoButton, Qt::LeftButton);
    SendMouse(View, QEvent::MouseButtonRelease, ToView(Target), Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(Link->GetPoints()[0], EdgePoint(Row(Emp, "DEPT_ID")->GetBoundsRect(), false));
}

// --- selection ---

TEST_F(TZvLinkEditTest, ClickingALinkSelectsItAndBothRowsTurnBold) {
    TZvLink* Link = LinkDeptId();
    std::vector<std::tuple<TZvListItem*, TZvListItem*, bool>> Heard;
    Area->OnSelectLink = [&](TZvWorkArea&, TZvListItem* A, TZvListItem* B, bool Select) {
        Heard.emplace_back(A, B, Select);
    };
    const QPoint Middle = ToView(Mid(Link->GetPoints()[1], Link->GetPoints()[2]));
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, Middle);
    EXPECT_EQ(Area->GetSelected(), Link);
    EXPECT_TRUE(Link->GetSelected());
    EXPECT_TRUE(Row(Emp, "DEPT_ID")->GetSelect());
    EXPECT_TRUE(Row(Dept, "ID")->GetSelect());
    EXPECT_FALSE(Row(Emp, "ID")->GetSelect());
    // A selected link is drawn two pixels wide.
    const auto DarkAcross = [&] {
        const QImage Image = PaintAlone(*Link, *Area);
        int Count = 0;
        for (int Dy = -4; Dy <= 4; ++Dy)
            Count += IsDark(Image, Middle + QPoint(0, Dy)) ? 1 : 0;
        return Count;
    };
    EXPECT_EQ(DarkAcross(), 2);
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, QPoint(700, 500));
    EXPECT_EQ(Area->GetSelected(), nullptr);
    EXPECT_FALSE(Row(Emp, "DEPT_ID")->GetSelect());
    EXPECT_FALSE(Row(Dept, "ID")->GetSelect());
    EXPECT_EQ(DarkAcross(), 1);
    using THeard = std::tuple<TZvListItem*, TZvListItem*, bool>;
    EXPECT_EQ(Heard, (std::vector<THeard>{THeard(Row(Emp, "DEPT_ID"), Row(Dept, "ID"), true),
                                          THeard(Row(Emp, "DEPT_ID"), Row(Dept, "ID"), false)}));
}

// --- deleting ---

TEST_F(TZvLinkEditTest, AnsweringNoToTheDeleteQuestionKeepsTheLink) {
    TZvLink* Link = LinkDeptId();
    TZvMessageRecorder Recorder(QMessageBox::No);
    ChooseFromMenu(QStringLiteral("Delete link"));
    RightClick(ToView(Mid(Link->GetPoints()[1], Link->GetPoints()[2])));
    ASSERT_EQ(Recorder.Questions.size(), 1u);
    EXPECT_EQ(Recorder.Questions[0].Caption, QStringLiteral("Attention!"));
    EXPECT_EQ(Recorder.Questions[0].Text,
              QStringLiteral("Do you really want to delete the link between \r\nEMP and DEPT"));
    EXPECT_EQ(Area->LinkCount(), 1);
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
    Recorder.SetAnswer(QMessageBox::Yes);
    RightClick(ToView(Mid(Link->GetPoints()[1], Link->GetPoints()[2])));
    EXPECT_EQ(Area->LinkCount(), 0);
    EXPECT_EQ(Area->JoinCount(), 0);
    EXPECT_EQ(FromText("E"), "  EMP E");
}

TEST_F(TZvLinkEditTest, AnyAnswerButNoDeletesTheLink) {
    LinkDeptId();
    TZvMessageRecorder Recorder(QMessageBox::Cancel);
    Area->LinkAt(0)->HandleDeleteLink();
    EXPECT_EQ(Area->LinkCount(), 0);
}

// --- painting: the markers of the join kinds ---

// A filled triangle at an end covers the pixel just outside the table edge, three above the line;
// the circle's box leaves that corner empty.
bool TriangleAt(const QImage& Image, const TZvLink& Link, bool First, const TZvWorkArea& Area) {
    const std::vector<QPoint>& P = Link.GetPoints();
    const QPoint End = First ? P.front() : P.back();
    const QPoint Stub = First ? P[1] : P[P.size() - 2];
    const int Dir = Stub.x() < End.x() ? -1 : 1;
    return IsDark(Image, End + QPoint(Dir, -3) - QPoint(Area.HorzScrollPos(), Area.VertScrollPos()));
}

TEST_F(TZvLinkEditTest, EachJoinKindHasItsEndMarkers) {
    TZvLink* Link = LinkDeptId();
    const std::pair<bool, bool> Expected[] = {{false, false}, {true, false}, {false, true}, {true, true}};
    for (int Kind = 0; Kind < 4; ++Kind) {
        Link->GetJoin()->JoinType = Kind;
        const QImage Image = PaintAlone(*Link, *Area);
        EXPECT_EQ(TriangleAt(Image, *Link, true, *Area), Expected[Kind].first) << Kind;
        EXPECT_EQ(TriangleAt(Image, *Link, false, *Area), Expected[Kind].second) << Kind;
        // Both markers sit on the line either way.
        EXPECT_TRUE(IsDark(Image, ToView(Link->GetPoints().front()) + QPoint(3, 0))) << Kind;
    }
}

TEST_F(TZvLinkEditTest, MarkersPointAlongAStubThatRunsLeft) {
    Emp->SetTopLeft(QPoint(500, 20));
    TZvLink* Link = LinkDeptId();
    Link->GetJoin()->JoinType = 1;
    const QImage Image = PaintAlone(*Link, *Area);
    EXPECT_TRUE(TriangleAt(Image, *Link, true, *Area));
    EXPECT_FALSE(IsDark(Image, ToView(Link->GetPoints().front()) + QPoint(1, -3)));
}

TEST_F(TZvLinkEditTest, ALineLeavingARowLeftwardsStartsOutsideTheRow) {
    Emp->SetTopLeft(QPoint(500, 20));
    TZvLink* Link = LinkDeptId();
    const QPoint Start = ToView(Link->GetPoints().front());
    const QImage Image = PaintAlone(*Link, *Area);
    EXPECT_FALSE(IsDark(Image, Start)); // the row's first pixel
    EXPECT_TRUE(IsDark(Image, Start - QPoint(1, 0)));
    // Rightwards the start point is already the first pixel outside the row.
    const QPoint End = ToView(Link->GetPoints().back());
    EXPECT_TRUE(IsDark(Image, End));
}

// --- the clip region ---

TEST_F(TZvLinkGeometryTest, TheClipRegionCoversTheWholeLinkOrOneEnd) {
    TZvLink* Link = LinkDeptId();
    const std::vector<QPoint> P = Link->GetPoints();
    const QRegion Whole = Link->GetClipRgn(0);
    const QRegion Start = Link->GetClipRgn(1);
    const QRegion End = Link->GetClipRgn(2);
    for (const QPoint& Q : {P[0] + QPoint(8, 5), P[0] + QPoint(8, -5), Mid(P[1], P[2]), P[3] - QPoint(8, 4)})
        EXPECT_TRUE(Whole.contains(Q)) << Q.x() << "," << Q.y();
    EXPECT_FALSE(Whole.contains(Mid(P[1], P[2]) + QPoint(0, 6)));
    EXPECT_TRUE(Start.contains(P[0] + QPoint(8, 5)));
    EXPECT_FALSE(Start.contains(P[3] - QPoint(8, 4)));
    EXPECT_TRUE(End.contains(P[3] - QPoint(8, 4)));
    EXPECT_FALSE(End.contains(P[0] + QPoint(8, 5)));
}

// --- IsPointInPoly ---

TEST(ZvIsPointInPoly, FindsPointsInsideAndOutsideASquare) {
    const std::vector<QPoint> Square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    EXPECT_TRUE(IsPointInPoly(Square, QPoint(5, 5)));
    EXPECT_FALSE(IsPointInPoly(Square, QPoint(15, 5)));
    EXPECT_FALSE(IsPointInPoly(Square, QPoint(-1, 5)));
    EXPECT_FALSE(IsPointInPoly(Square, QPoint(5, 11)));
}

TEST(ZvIsPointInPoly, ClockwiseAndAnticlockwiseAgreeAlsoOnAHorizontalEdge) {
    const std::vector<QPoint> Clockwise{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const std::vector<QPoint> Anticlockwise{{0, 0}, {0, 10}, {10, 10}, {10, 0}};
    const std::vector<QPoint> Triangle{{0, 0}, {20, 0}, {10, 9}};
    const std::vector<QPoint> TriangleBack{{10, 9}, {20, 0}, {0, 0}};
    for (const QPoint& P :
         {QPoint(5, 0), QPoint(5, 10), QPoint(5, 5), QPoint(3, 7), QPoint(12, 3), QPoint(10, 0)}) {
        EXPECT_EQ(IsPointInPoly(Clockwise, P), IsPointInPoly(Anticlockwise, P)) << P.x() << "," << P.y();
        EXPECT_EQ(IsPointInPoly(Triangle, P), IsPointInPoly(TriangleBack, P)) << P.x() << "," << P.y();
    }
    EXPECT_TRUE(IsPointInPoly(Clockwise, QPoint(5, 0)));
    EXPECT_TRUE(IsPointInPoly(Triangle, QPoint(10, 0)));
}

TEST(ZvIsPointInPoly, AConcavePolygonLeavesItsNotchOutside) {
    // A U shape: the notch between the arms is outside.
    const std::vector<QPoint> U{{0, 0}, {30, 0}, {30, 30}, {20, 30}, {20, 10}, {10, 10}, {10, 30}, {0, 30}};
    EXPECT_TRUE(IsPointInPoly(U, QPoint(5, 20)));
    EXPECT_TRUE(IsPointInPoly(U, QPoint(25, 20)));
    EXPECT_FALSE(IsPointInPoly(U, QPoint(15, 20)));
    EXPECT_TRUE(IsPointInPoly(U, QPoint(15, 5)));
    EXPECT_FALSE(IsPointInPoly({}, QPoint(0, 0)));
}

// --- the work area's links and the model ---

TEST_F(TZvLinkModelTest, ALinkDrawnTheOtherWayJoinsTheSameTwoTablesInOneJoin) {
    LinkDeptId();
    TZvLink* Back = Area->AddLink(Dept, Emp, Row(Dept, "TITLE"), Row(Emp, "NAME"));
    ASSERT_NE(Back, nullptr);
    EXPECT_EQ(Area->JoinCount(), 1);
    EXPECT_EQ(Back->GetJoin()->GetTable1(), Emp);
    EXPECT_EQ(Back->GetItem1(), Row(Emp, "NAME"));
    EXPECT_EQ(Back->GetHint(), QStringLiteral("E.NAME=D.TITLE"));
    EXPECT_EQ(Area->FindLink(Dept, Emp, Row(Dept, "TITLE"), Row(Emp, "NAME")), Back);
    EXPECT_EQ(Area->FindJoin(Dept, Emp), Back->GetJoin());
    EXPECT_EQ(FromText("E"),
              "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID) AND \r\n    (E.NAME = D.TITLE)");
    EXPECT_EQ(JoinsOf("D").Count(), 0);
}

TEST_F(TZvLinkModelTest, LinkingTwoLinkedRowsAgainGivesTheSameLink) {
    TZvLink* Link = LinkDeptId();
    EXPECT_EQ(Area->AddLink(Dept, Emp, Row(Dept, "ID"), Row(Emp, "DEPT_ID")), Link);
    EXPECT_EQ(Area->LinkCount(), 1);
    EXPECT_EQ(JoinsOf("E").Count(), 1);
}

TEST_F(TZvLinkModelTest, RowsOfOneTableOrOfAnotherTableAreNotLinked) {
    EXPECT_EQ(Area->AddLink(Emp, Emp, Row(Emp, "ID"), Row(Emp, "DEPT_ID")), nullptr);
    EXPECT_EQ(Area->AddLink(Emp, Dept, Row(Dept, "ID"), Row(Emp, "ID")), nullptr);
    EXPECT_EQ(Area->AddLink(Emp, Dept, nullptr, Row(Dept, "ID")), nullptr);
    EXPECT_EQ(Area->LinkCount(), 0);
    EXPECT_EQ(Area->JoinCount(), 0);
    EXPECT_EQ(FromText("E"), "  EMP E");
}

TEST_F(TZvLinkModelTest, AJoinTheModelHoldsGivesTheLinkItsOperatorAndKind) {
    AddModelJoin("E", "DEPT_ID", "D", "ID", ">=", zvjLOuterJoin);
    TZvLink* Link = LinkDeptId();
    EXPECT_EQ(Link->GetOperator(), ">=");
    EXPECT_EQ(Link->GetJoin()->JoinType, 1);
    EXPECT_EQ(Link->GetHint(), QStringLiteral("E.DEPT_ID>=D.ID"));
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  LEFT OUTER JOIN DEPT D ON (E.DEPT_ID >= D.ID)");
}

TEST_F(TZvLinkModelTest, AJoinWrittenFromTheOtherTableIsReadTheOtherWayRound) {
    AddModelJoin("D", "ID", "E", "DEPT_ID", "<", zvjLOuterJoin);
    TZvLink* Link = LinkDeptId();
    EXPECT_EQ(Link->GetOperator(), ">");
    EXPECT_EQ(Link->GetJoin()->JoinType, 2);
    EXPECT_EQ(JoinsOf("E").Count(), 0);
    Area->RemoveLink(Link, 0, true);
    EXPECT_EQ(JoinsOf("D").Count(), 0);
    EXPECT_EQ(FromText("D"), "  DEPT D");
}

TEST_F(TZvLinkModelTest, RemovingALinkRemovesItsJoinAndTheJoinWithItsLastLink) {
    TZvLink* First = LinkDeptId();
    TZvLink* Second = Area->AddLink(Emp, Dept, Row(Emp, "NAME"), Row(Dept, "TITLE"));
    Area->RemoveLink(First, 0, true);
    EXPECT_EQ(Area->JoinCount(), 1);
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.NAME = D.TITLE)");
    Area->RemoveLink(Second, 0, true);
    EXPECT_EQ(Area->JoinCount(), 0);
    EXPECT_EQ(FromText("E"), "  EMP E");
}

TEST_F(TZvLinkModelTest, RemoveLinkIgnoresALinkNotAtTheIndex) {
    TZvLink* Link = LinkDeptId();
    Area->RemoveLink(Link, 1, true);
    Area->RemoveLink(Link, -1, true);
    EXPECT_EQ(Area->LinkCount(), 1);
}

TEST_F(TZvLinkModelTest, SelectLinkSelectsAndTellsTheHook) {
    TZvLink* Link = LinkDeptId();
    int Heard = 0;
    Area->OnSelectLink = [&](TZvWorkArea&, TZvListItem*, TZvListItem*, bool Select) {
        Heard += Select ? 1 : 0;
    };
    Area->SelectLink(Link);
    EXPECT_EQ(Area->GetSelected(), Link);
    EXPECT_EQ(Heard, 1);
}

class TZvConstJoinTest : public TZvLinkFixture {
protected:
    TZvConstJoinTest() : TZvLinkFixture([] { return std::make_unique<test::TZvConstJoinParser>(); }) {}
    // E.NAME = 'X' written into the join to D.
    void AddConstJoin() { AddModelJoin("E", "NAME", "D", "'X'")->SetRightConst(true); }
};

TEST_F(TZvConstJoinTest, TheJoinsWithConstantsGoWithTheLastLinkBetweenTheTables) {
    TZvLink* First = LinkDeptId();
    AddConstJoin();
    EXPECT_EQ(FromText("E"),
              "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID) AND \r\n    (E.NAME = 'X')");
    Area->RemoveLink(First, 0, true);
    EXPECT_EQ(JoinsOf("E").Count(), 0);
    EXPECT_EQ(FromText("E"), "  EMP E");
}

TEST_F(TZvConstJoinTest, TheJoinsWithConstantsStayWhileAnotherLinkJoinsTheTables) {
    TZvLink* First = LinkDeptId();
    Area->AddLink(Emp, Dept, Row(Emp, "NAME"), Row(Dept, "TITLE"));
    AddConstJoin();
    Area->RemoveLink(First, 0, true);
    EXPECT_EQ(FromText("E"),
              "  EMP E\r\n  INNER JOIN DEPT D ON (E.NAME = D.TITLE) AND \r\n    (E.NAME = 'X')");
}

TEST_F(TZvLinkModelTest, AJoinFollowsARenamedTableAndGoesWithItsLink) {
    TZvLink* Link = LinkDeptId();
    Area->EditAlias(*Dept);
    Area->GetAliasEdit()->setText(QStringLiteral("DD"));
    Area->CommitAliasEdit();
    EXPECT_EQ(Link->GetHint(), QStringLiteral("E.DEPT_ID=DD.ID"));
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT DD ON (E.DEPT_ID = DD.ID)");
    Area->RemoveLink(Link, 0, true);
    EXPECT_EQ(FromText("E"), "  EMP E");
}

TEST_F(TZvLinkModelTest, ACollapsedTableTakesItsLinksToItsBox) {
    TZvLink* Link = LinkDeptId();
    Dept->SetExpand(false);
    EXPECT_EQ(Link->GetPoints().back(), EdgePoint(Dept->GetBoundsRect(), false));
    Dept->SetExpand(true);
    EXPECT_EQ(Link->GetPoints().back(), EdgePoint(Row(Dept, "ID")->GetBoundsRect(), false));
}

// --- the field-row drop ---

TEST_F(TZvLinkModelTest, DroppingARowOnARowOfAnotherTableLinksThem) {
    const QPoint Target = test::ViewportCenter(*Area, Dept->GetItemRect(Row(Dept, "ID")));
    EXPECT_EQ(Area->DropTargetItem(Target), Row(Dept, "ID"));
    TZvLink* Link = Area->HandleDragDrop(Row(Emp, "DEPT_ID"), Target);
    ASSERT_NE(Link, nullptr);
    EXPECT_EQ(Link->GetItem1(), Row(Emp, "DEPT_ID"));
    EXPECT_EQ(Link->GetItem2(), Row(Dept, "ID"));
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
}

TEST_F(TZvLinkModelTest, ADropBesideTheRowsOrOnItsOwnTableLinksNothing) {
    EXPECT_EQ(Area->HandleDragDrop(Row(Emp, "ID"), QPoint(700, 500)), nullptr);
    EXPECT_EQ(Area->HandleDragDrop(Row(Emp, "ID"), test::CaptionPoint(*Dept)), nullptr);
    const QPoint OwnRow = test::ViewportCenter(*Area, Emp->GetItemRect(Row(Emp, "DEPT_ID")));
    EXPECT_EQ(Area->HandleDragDrop(Row(Emp, "ID"), OwnRow), nullptr);
    EXPECT_EQ(Area->HandleDragDrop(nullptr, test::ViewportCenter(*Area, Dept->GetItemRect(Row(Dept, "ID")))),
              nullptr);
    EXPECT_EQ(Area->LinkCount(), 0);
    EXPECT_EQ(FromText("E"), "  EMP E");
}

TEST_F(TZvLinkModelTest, ARowOfAnotherTypeClassIsNotLinkedWhileTypesAreChecked) {
    const QPoint Title = test::ViewportCenter(*Area, Dept->GetItemRect(Row(Dept, "TITLE")));
    EXPECT_EQ(Area->HandleDragDrop(Row(Emp, "ID"), Title), nullptr);
    Host->SetCheckLinkFieldsType(false);
    EXPECT_NE(Area->HandleDragDrop(Row(Emp, "ID"), Title), nullptr);
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.ID = D.TITLE)");
}

struct TTypePair {
    TFieldType A;
    TFieldType B;
    bool Linkable;
};

class TZvLinkTypeTest : public TZvLinkFixture, public ::testing::WithParamInterface<TTypePair> {};

TEST_P(TZvLinkTypeTest, RowsLinkWhenTheirTypesAreEqualOrOfOneClass) {
    TZvDataSet A;
    A.AddFieldDef("A", GetParam().A);
    TZvDataSet B;
    B.AddFieldDef("B", GetParam().B);
    TZvTable* TableA = Host->GetTables().AddTableAt("TA", "", &A, QPoint(20, 300));
    TZvTable* TableB = Host->GetTables().AddTableAt("TB", "", &B, QPoint(300, 300));
    EXPECT_EQ(Area->CanLinkItems(TableA->GetItem(0), TableB->GetItem(0)), GetParam().Linkable);
    EXPECT_EQ(Area->CanLinkItems(TableB->GetItem(0), TableA->GetItem(0)), GetParam().Linkable);
}

INSTANTIATE_TEST_SUITE_P(
    Classes, TZvLinkTypeTest,
    ::testing::Values(TTypePair{ftInteger, ftLargeint, true}, TTypePair{ftSmallint, ftAutoInc, true},
                      TTypePair{ftWord, ftInteger, true}, TTypePair{ftFloat, ftCurrency, true},
                      TTypePair{ftString, ftWideString, true}, TTypePair{ftMemo, ftFixedChar, true},
                      TTypePair{ftDate, ftDateTime, true}, TTypePair{ftTime, ftDate, true},
                      TTypePair{ftBoolean, ftBoolean, true}, TTypePair{ftGuid, ftGuid, true},
                      TTypePair{ftInteger, ftFloat, false}, TTypePair{ftInteger, ftString, false},
                      TTypePair{ftDate, ftTimeStamp, false}, TTypePair{ftBoolean, ftBlob, false},
                      TTypePair{ftUnknown, ftBCD, false}, TTypePair{ftFloat, ftFMTBcd, false}));

TEST_F(TZvLinkModelTest, AParameterRowOfAStoredProcedureIsNotLinked) {
    TZvParams Params;
    Params.Add({"P_ID", ptInput, ftInteger, TZvValue()});
    TZvDataSet Result;
    Result.AddFieldDef("TOTAL", ftInteger);
    TZvTable* Proc = Host->GetTables().AddProc("GET_TOTAL", "", &Result, &Params);
    ASSERT_NE(Proc, nullptr);
    TZvListItem* Parameter = nullptr;
    TZvListItem* Output = nullptr;
    for (int I = 0; I < Proc->ItemCount(); ++I)
        (Proc->GetItem(I)->IsParameterRow() ? Parameter : Output) = Proc->GetItem(I);
    ASSERT_NE(Parameter, nullptr);
    ASSERT_NE(Output, nullptr);
    EXPECT_FALSE(Area->CanLinkItems(Row(Emp, "ID"), Parameter));
    EXPECT_FALSE(Area->CanLinkItems(Parameter, Row(Emp, "ID")));
    EXPECT_TRUE(Area->CanLinkItems(Output, Row(Emp, "ID")));
}

} // namespace
} // namespace zv
