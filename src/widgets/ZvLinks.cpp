// Links between field rows and the joins that group them: geometry, hit testing, bend points,
// painting with the join-kind markers, and the link's context menu.
#include "ZvLinks.h"

#include "ZvErrors.h"
#include "ZvFloatTable.h"
#include "ZvLinkProp.h"
#include "ZvMessages.h"
#include "ZvResource.h"
#include "ZvSelectParser.h"
#include "ZvUtils.h"
#include "ZvWindow.h"

#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygon>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace zv {

namespace {

std::vector<TZvPoint> ToZvPoints(const std::vector<QPoint>& Points) {
    std::vector<TZvPoint> Result;
    Result.reserve(Points.size());
    for (const QPoint& P : Points)
        Result.push_back({P.x(), P.y()});
    return Result;
}

// +1 when To lies right of From (or straight above or below it), -1 when left: the side on which
// a stub runs.
int StubDirection(QPoint From, QPoint To) {
    return To.x() < From.x() ? -1 : 1;
}

// The span from X over Length pixels in direction Dir, as a rectangle Height high centred on Y.
QRect AlongStub(int X, int Y, int Dir, int Length, int HalfHeight) {
    const int Far = X + Dir * Length;
    return QRect(QPoint(std::min(X, Far), Y - HalfHeight), QPoint(std::max(X, Far), Y + HalfHeight));
}

// Where an edge (A, B) crosses the horizontal through Y, reckoned from its lower end so that the
// rounding does not depend on the direction the polygon is given in.
int CrossingX(QPoint A, QPoint B, int Y) {
    if (B.y() < A.y())
        std::swap(A, B);
    const double Offset = static_cast<double>(Y - A.y()) * (B.x() - A.x()) / (B.y() - A.y());
    return static_cast<int>(std::nearbyint(Offset)) + A.x();
}

// Makes a link the dialog's current link for as long as it is shown, whatever way it closes.
class TZvCurrentLinkScope {
public:
    explicit TZvCurrentLinkScope(TZvLink* Link) { CurrentLnk = Link; }
    ~TZvCurrentLinkScope() { CurrentLnk = nullptr; }
    TZvCurrentLinkScope(const TZvCurrentLinkScope&) = delete;
    TZvCurrentLinkScope& operator=(const TZvCurrentLinkScope&) = delete;
};

} // namespace

// ---------------------------------------------------------------------------------------------
// TZvJoin

TZvTable* TZvJoin::GetTable(int Index) const {
    return Index == 0 ? Table1 : Index == 1 ? Table2 : nullptr;
}

std::string TZvJoin::GetTableName(int Index) const {
    const TZvTable* Table = GetTable(Index);
    return Table ? Table->GetName() : std::string();
}

bool TZvJoin::Connects(const TZvTable* A, const TZvTable* B) const {
    return (Table1 == A && Table2 == B) || (Table1 == B && Table2 == A);
}

// ---------------------------------------------------------------------------------------------
// IsPointInPoly

// An edge counts when P's y lies within its y span (both ends included) and it crosses at or left
// of P. A horizontal edge through P has no single crossing and never counts, so a point on a
// horizontal edge is judged by the other edges alone, the same for either direction of the polygon.
bool IsPointInPoly(const std::vector<QPoint>& Points, QPoint P) {
    int Crossings = 0;
    const std::size_t Count = Points.size();
    for (std::size_t I = 0; I < Count; ++I) {
        const QPoint A = Points[I];
        const QPoint B = Points[(I + 1) % Count];
        if (P.y() < std::min(A.y(), B.y()) || P.y() > std::max(A.y(), B.y()))
            continue;
        if (A.x() < P.x() && B.x() < P.x())
            ++Crossings;
        else if ((A.x() > P.x() && B.x() > P.x()) || A.y() == B.y())
            continue;
        else if (P.x() >= CrossingX(A, B, P.y()))
            ++Crossings;
    }
    return Crossings % 2 == 1;
}

// ---------------------------------------------------------------------------------------------
// TZvLink: points and bounds

TZvLink::TZvLink(TZvWorkArea* AWorkArea, TZvJoin* AJoin, TZvListItem* AItem1, TZvListItem* AItem2)
    : TZvFloatObject(AWorkArea), Join(AJoin), Item1(AItem1), Item2(AItem2), Points(4) {
    SetBoundaryRect();
}

void TZvLink::CheckIndex(int Index) const {
    if (Index < 0 || Index >= GetCountPoints())
        throw EZvError(ZvText(TZvRes::LinkInvalidIndex, QString::number(Index)).toStdString());
}

QPoint TZvLink::GetPoint(int Index) const {
    CheckIndex(Index);
    return Points[static_cast<std::size_t>(Index)] -
           QPoint(WorkArea->HorzScrollPos(), WorkArea->VertScrollPos());
}

void TZvLink::SetPoint(int Index, QPoint Point) {
    CheckIndex(Index);
    Points[static_cast<std::size_t>(Index)] = Point;
}

void TZvLink::SetBoundaryRect() {
    for (int I = 0; I < 2; ++I)
        if (!Join->GetTable(I))
            throw EZvError(ZvText(TZvRes::LinkInvalidTable, QString::fromStdString(Join->GetTableName(I)))
                               .toStdString());
    PlaceEnd(true);
    PlaceEnd(false);
    UpdateBounds();
}

void TZvLink::SetBoundaryRect(const std::vector<QPoint>& Path) {
    if (Path.size() >= 4)
        Points = Path;
    SetBoundaryRect();
}

// An end leaves its row on the side that faces the other end's row, or the nearest bend point once
// there is one. The comparison is against the row's left edge only, so a row straight below the
// other (whose right edge is right of this left edge) is left and entered on the right.
void TZvLink::PlaceEnd(bool First) {
    const QRect Own = (First ? Item1 : Item2)->GetBoundsRect();
    const QRect Other = (First ? Item2 : Item1)->GetBoundsRect();
    const int Count = GetCountPoints();
    const int Reference = Count < 5 ? Other.left() + Other.width()
                                    : Points[static_cast<std::size_t>(First ? 2 : Count - 3)].x();
    const bool RightSide = Reference >= Own.left();
    const int EdgeX = RightSide ? Own.left() + Own.width() : Own.left();
    const int Y = Own.top() + Own.height() / 2;
    const int Stub = RightSide ? StubLength : -StubLength;
    Points[static_cast<std::size_t>(First ? 0 : Count - 1)] = QPoint(EdgeX, Y);
    Points[static_cast<std::size_t>(First ? 1 : Count - 2)] = QPoint(EdgeX + Stub, Y);
}

void TZvLink::UpdateBounds() {
    const auto [MinX, MaxX] =
        std::minmax_element(Points.begin(), Points.end(), [](QPoint A, QPoint B) { return A.x() < B.x(); });
    const auto [MinY, MaxY] =
        std::minmax_element(Points.begin(), Points.end(), [](QPoint A, QPoint B) { return A.y() < B.y(); });
    Bounds = QRect(QPoint(MinX->x(), MinY->y()), QPoint(MaxX->x(), MaxY->y())).adjusted(-3, -3, 3, 3);
}

QRegion TZvLink::GetClipRgn(int Part) const {
    const int Last = GetCountPoints() - 1;
    QRegion Region;
    const auto EndBox = [&](int End, int Toward) {
        const QPoint E = Points[static_cast<std::size_t>(End)];
        Region += AlongStub(E.x(), E.y(), StubDirection(E, Points[static_cast<std::size_t>(Toward)]), 9, 5);
    };
    // One pixel to either side: sideways in x for a steep or vertical segment, in y for a flat one.
    const auto Segment = [&](int I) {
        const QPoint A = Points[static_cast<std::size_t>(I)];
        const QPoint B = Points[static_cast<std::size_t>(I + 1)];
        const int Dx = B.x() - A.x();
        const QPoint Side = (Dx == 0 || (B.y() - A.y()) / Dx != 0) ? QPoint(1, 0) : QPoint(0, 1);
        Region += QRegion(QPolygon({A - Side, B - Side, B + Side, A + Side}));
    };
    const auto Square = [&](int I) {
        const QPoint P = Points[static_cast<std::size_t>(I)];
        Region += QRect(P.x() - 4, P.y() - 4, 8, 8);
    };
    if (Part != 2) {
        EndBox(0, 1);
        Segment(0);
        Segment(1);
        Square(1);
    }
    if (Part == 0)
        for (int I = 2; I < Last - 2; ++I) {
            Segment(I);
            Square(I);
        }
    if (Part != 1) {
        Segment(Last - 2);
        Segment(Last - 1);
        Square(Last - 2);
        Square(Last - 1);
        EndBox(Last, Last - 1);
    }
    return Region;
}

void TZvLink::InvalidateRegion(int Part) const {
    WorkArea->InvalidateRegion(GetClipRgn(Part));
}

// ---------------------------------------------------------------------------------------------
// Texts

std::string TZvLink::GetLinkID() const {
    return Join->GetTable1()->GetName() + "_" + Item1->GetName() + "-" + Join->GetTable2()->GetName() + "_" +
           Item2->GetName();
}

QString TZvLink::GetHint() {
    return QString::fromStdString(Join->GetTable1()->GetAlias() + "." + Item1->GetName() + Operator +
                                  Join->GetTable2()->GetAlias() + "." + Item2->GetName());
}

// ---------------------------------------------------------------------------------------------
// Interaction

void TZvLink::SetSelect(bool Value) {
    TZvFloatObject::SetSelect(Value);
    Item1->SetSelect(Value);
    Item2->SetSelect(Value);
    WorkArea->SelectLink(Item1, Item2, Value);
    if (Value)
        InvalidateRegion();
    else
        WorkArea->InvalidateRect(Bounds);
}

int TZvLink::PointNear(QPoint P, int FirstIndex, int LastIndex) const {
    for (int I = std::max(0, FirstIndex); I <= LastIndex && I < GetCountPoints(); ++I) {
        const QPoint Q = Points[static_cast<std::size_t>(I)];
        if (std::abs(Q.x() - P.x()) < PointReach && std::abs(Q.y() - P.y()) < PointReach)
            return I;
    }
    return -1;
}

// The stub points (1 and count - 2) are never grabbed: they follow their ends.
TTableHitTest TZvLink::HitTest(QPoint Point) {
    const QPoint P = Point + QPoint(WorkArea->HorzScrollPos(), WorkArea->VertScrollPos());
    TTableHitTest Hit =
        IsPointNearLine(ToZvPoints(Points), {P.x(), P.y()}, LineReach) >= 0 ? htTClient : htTOutSide;
    const int Last = GetCountPoints() - 1;
    for (int I = 0; I <= Last; ++I) {
        if (I == 1 || I == Last - 1 || PointNear(P, I, I) < 0)
            continue;
        Hit = (I == 0 || I == Last) ? htTEndLine : htTPoint;
    }
    return Hit;
}

void TZvLink::MouseDown(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) {
    TZvFloatObject::MouseDown(Event, Point, Hit);
    DragPoint = -1;
    Dragging = false;
    if (Event.button() != Qt::LeftButton)
        return;
    const int Last = GetCountPoints() - 1;
    if (Hit == htTPoint) {
        DragPoint = PointNear(Point, 2, Last - 2);
        if (DragPoint >= 0)
            ClickPoint = Points[static_cast<std::size_t>(DragPoint)];
    } else if (Hit == htTEndLine) {
        DragPoint = PointNear(Point, 0, 0) == 0 ? 0 : Last;
    }
}

QRegion TZvLink::DragSegmentsRegion(QPoint Through) const {
    const QPoint Before = Points[static_cast<std::size_t>(DragPoint - 1)];
    const QPoint After = Points[static_cast<std::size_t>(DragPoint + 1)];
    return QRegion(QRect(Before, Through).normalized().adjusted(-2, -2, 2, 2)) +
           QRegion(QRect(Through, After).normalized().adjusted(-2, -2, 2, 2));
}

void TZvLink::MouseMove(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) {
    if (Hit == htTPoint && (Event.buttons() & Qt::LeftButton) && DragPoint > 1 &&
        DragPoint < GetCountPoints() - 1) {
        WorkArea->InvalidateRegion(DragSegmentsRegion(ClickPoint));
        ClickPoint = Point;
        Dragging = true;
        WorkArea->InvalidateRegion(DragSegmentsRegion(ClickPoint));
    }
    TZvFloatObject::MouseMove(Event, Point, Hit);
}

// The ends are placed anew, as they face the nearest bend point: a bend point dragged past a row's
// far side makes that end leave from the other side.
void TZvLink::MouseUp(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) {
    const int Dragged = DragPoint;
    DragPoint = -1;
    Dragging = false;
    if (Dragged >= 2 && Dragged < GetCountPoints() - 2) {
        WorkArea->InvalidateRect(Bounds);
        Points[static_cast<std::size_t>(Dragged)] = ClickPoint;
        SetBoundaryRect();
        InvalidateRegion();
    }
    TZvFloatObject::MouseUp(Event, Point, Hit);
}

void TZvLink::PopupMenu(QMenu& Menu, QPoint Point, TTableHitTest Hit) {
    if (Hit != htTClient && Hit != htTPoint)
        return;
    ClickPoint = Point;
    if (Hit == htTClient)
        Menu.addAction(ZvText(TZvRes::MenuInsertPoint), [this] { HandleInsertPoint(); });
    else
        Menu.addAction(ZvText(TZvRes::MenuDeletePoint), [this] { HandleDeletePoint(); });
    Menu.addSeparator();
    Menu.addAction(ZvText(TZvRes::MenuDeleteLink), [this] { HandleDeleteLink(); });
    Menu.addAction(ZvText(TZvRes::MenuLinkProperty), [this] { HandleLinkProperties(); });
}

// A point goes after the segment it was put on. The first segment (I = 0) and the last one
// (count < I + 3) are the stubs, which stay straight.
void TZvLink::HandleInsertPoint() {
    const int I = IsPointNearLine(ToZvPoints(Points), {ClickPoint.x(), ClickPoint.y()}, LineReach);
    if (I < 1 || GetCountPoints() < I + 3)
        return;
    InvalidateRegion();
    Points.insert(Points.begin() + I + 1, ClickPoint);
    SetBoundaryRect();
    InvalidateRegion();
}

void TZvLink::HandleDeletePoint() {
    if (GetCountPoints() < 5)
        return;
    const int I = PointNear(ClickPoint, 2, GetCountPoints() - 3);
    if (I < 0)
        return;
    WorkArea->InvalidateRect(Bounds);
    Points.erase(Points.begin() + I);
    SetBoundaryRect();
    InvalidateRegion();
}

void TZvLink::HandleDeleteLink() {
    const QString Question = ZvText(TZvRes::AskDeleteLink) + QStringLiteral("\r\n") +
                             QString::fromStdString(Join->GetTableName(0)) + QLatin1Char(' ') +
                             ZvText(TZvRes::WordAnd) + QLatin1Char(' ') +
                             QString::fromStdString(Join->GetTableName(1));
    if (ZvConfirm(WorkArea, ZvText(TZvRes::CaptionAttention), Question))
        ZvSendMessage(WorkArea, CMDeleteLink, this);
}

// The dialog offers the dialect's join operators and a full outer join only where the dialect has
// one. Its OK may change the kind of every link of the join, so all of them are repainted.
void TZvLink::HandleLinkProperties() {
    TfmLinkProp Dialog(WorkArea);
    if (TZvSelectParser* Parser = WorkArea->GetParser()) {
        Dialog.SetCompareOperatorList(
            QString::fromStdString(Parser->GetScanner().GetJoinOperators().GetCommaText()));
        Dialog.SetFullOuterJoinSupported(Parser->IsFullOuterJoinSupported());
    }
    {
        const TZvCurrentLinkScope Scope(this);
        if (Dialog.Execute() != QDialog::Accepted)
            return;
    }
    for (int I = 0; I < WorkArea->LinkCount(); ++I)
        if (WorkArea->LinkAt(I)->GetJoin() == Join)
            WorkArea->LinkAt(I)->InvalidateRegion();
}

// ---------------------------------------------------------------------------------------------
// Painting

void TZvLink::Paint(QPainter& Painter) {
    const QPoint Scroll(WorkArea->HorzScrollPos(), WorkArea->VertScrollPos());
    std::vector<QPoint> Shown;
    Shown.reserve(Points.size());
    for (const QPoint& P : Points)
        Shown.push_back(P - Scroll);
    // The start lies on the row's first pixel when the stub runs left; the line begins outside it.
    if (Shown[1].x() < Shown[0].x())
        Shown[0].rx() -= 1;
    Painter.save();
    QPen Pen = WorkArea->GetLinkPen();
    Pen.setWidth(Selected ? 2 : 1);
    Painter.setPen(Pen);
    Painter.setBrush(Qt::NoBrush);
    Painter.drawPolyline(Shown.data(), static_cast<int>(Shown.size()));
    for (std::size_t I = 2; I + 2 < Shown.size(); ++I)
        Painter.drawEllipse(Shown[I], 3, 3);
    PaintMarkers(Painter);
    if (Dragging) {
        // The segments the dragged point will have, drawn inverted over whatever lies below.
        Painter.setCompositionMode(QPainter::RasterOp_NotDestination);
        Painter.setPen(QPen(Qt::black, 1));
        const QPoint Through = ClickPoint - Scroll;
        Painter.drawLine(Points[static_cast<std::size_t>(DragPoint - 1)] - Scroll, Through);
        Painter.drawLine(Through, Points[static_cast<std::size_t>(DragPoint + 1)] - Scroll);
    }
    Painter.restore();
}

// A circle marks an end whose rows must match; a triangle pointing out of its table marks the
// table all of whose rows are kept (left outer: the first, right outer: the second, full: both).
void TZvLink::PaintMarkers(QPainter& Painter) const {
    const QPoint Scroll(WorkArea->HorzScrollPos(), WorkArea->VertScrollPos());
    QPen Pen = WorkArea->GetLinkPen();
    Pen.setWidth(1);
    Painter.setPen(Pen);
    // An end on a row's left edge lies on the row's first pixel; its marker starts just outside.
    const auto Marker = [&](int End, int Toward, bool Triangle) {
        QPoint E = Points[static_cast<std::size_t>(End)] - Scroll;
        const int Dir = StubDirection(E, Points[static_cast<std::size_t>(Toward)] - Scroll);
        if (Dir < 0)
            E.rx() -= 1;
        if (Triangle) {
            Painter.setBrush(Pen.color());
            const QPoint Tip(E.x() + 8 * Dir, E.y());
            Painter.drawPolygon(QPolygon({QPoint(E.x(), E.y() - 4), QPoint(E.x(), E.y() + 4), Tip}));
        } else {
            Painter.setBrush(Qt::NoBrush);
            const QRect Box = AlongStub(E.x(), E.y(), Dir, 6, 3);
            Painter.drawEllipse(Box.adjusted(0, 0, -1, -1));
        }
    };
    const int Last = GetCountPoints() - 1;
    Marker(0, 1, Join->JoinType == 1 || Join->JoinType == 3);
    Marker(Last, Last - 1, Join->JoinType == 2 || Join->JoinType == 3);
}

} // namespace zv
