// Links between field rows and the joins that group them.
#include "ZvLinks.h"

#include "ZvFloatTable.h"
#include "ZvMessages.h"
#include "ZvResource.h"
#include "ZvUtils.h"
#include "ZvWindow.h"

#include <QPainter>

#include <algorithm>

namespace zv {

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

TZvLink::TZvLink(TZvWorkArea* AWorkArea, TZvJoin* AJoin, TZvListItem* AItem1, TZvListItem* AItem2)
    : TZvFloatObject(AWorkArea), Join(AJoin), Item1(AItem1), Item2(AItem2) {}

std::string TZvLink::GetLinkID() const {
    return Join->GetTable1()->GetName() + "_" + Item1->GetName() + "-" + Join->GetTable2()->GetName() + "_" +
           Item2->GetName();
}

QString TZvLink::GetHint() {
    return QString::fromStdString(Join->GetTable1()->GetAlias() + "." + Item1->GetName() + Operator +
                                  Join->GetTable2()->GetAlias() + "." + Item2->GetName());
}

// Each end leaves its row on the side that faces the other row.
std::vector<QPoint> TZvLink::GetPoints() const {
    const QRect R1 = Item1->GetBoundsRect();
    const QRect R2 = Item2->GetBoundsRect();
    const bool FirstLeftOfSecond = R1.center().x() <= R2.center().x();
    const int Y1 = R1.center().y();
    const int Y2 = R2.center().y();
    const int X1 = FirstLeftOfSecond ? R1.left() + R1.width() : R1.left() - 1;
    const int X2 = FirstLeftOfSecond ? R2.left() - 1 : R2.left() + R2.width();
    const int Out1 = FirstLeftOfSecond ? 10 : -10;
    return {QPoint(X1, Y1), QPoint(X1 + Out1, Y1), QPoint(X2 - Out1, Y2), QPoint(X2, Y2)};
}

QRect TZvLink::GetClipRect() const {
    QRect Area;
    for (const QPoint& P : GetPoints())
        Area |= QRect(P, QSize(1, 1));
    return Area.adjusted(-4, -4, 4, 4);
}

void TZvLink::SetSelect(bool Value) {
    TZvFloatObject::SetSelect(Value);
    Item1->SetSelect(Value);
    Item2->SetSelect(Value);
    WorkArea->InvalidateRect(GetClipRect());
}

void TZvLink::Paint(QPainter& Painter) {
    const std::vector<QPoint> Points = GetPoints();
    std::vector<QPoint> Shown;
    Shown.reserve(Points.size());
    for (const QPoint& P : Points)
        Shown.push_back(P - QPoint(WorkArea->HorzScrollPos(), WorkArea->VertScrollPos()));
    Painter.save();
    Painter.setPen(QPen(Qt::black, Selected ? 2 : 1));
    Painter.drawPolyline(Shown.data(), static_cast<int>(Shown.size()));
    Painter.restore();
}

TTableHitTest TZvLink::HitTest(QPoint Point) {
    const QPoint P = Point + QPoint(WorkArea->HorzScrollPos(), WorkArea->VertScrollPos());
    std::vector<TZvPoint> Line;
    for (const QPoint& Q : GetPoints())
        Line.push_back({Q.x(), Q.y()});
    return IsPointNearLine(Line, {P.x(), P.y()}, 3) >= 0 ? htTClient : htTOutSide;
}

void TZvLink::PopupMenu(QMenu& /*Menu*/, QPoint /*Point*/, TTableHitTest /*Hit*/) {}

void TZvLink::Remove() {
    const QString Question = ZvText(TZvRes::AskDeleteLink) + QStringLiteral("\r\n") +
                             QString::fromStdString(Join->GetTableName(0)) + QLatin1Char(' ') +
                             ZvText(TZvRes::WordAnd) + QLatin1Char(' ') +
                             QString::fromStdString(Join->GetTableName(1));
    if (ZvConfirm(WorkArea, ZvText(TZvRes::CaptionAttention), Question))
        ZvSendMessage(WorkArea, CMDeleteLink, this);
}

} // namespace zv
