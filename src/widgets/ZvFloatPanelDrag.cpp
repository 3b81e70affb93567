// The work area's interaction with table objects: moving and resizing tables by frame, dragging
// field rows onto rows of other tables (with the drop row marked and the target's rows scrolled
// near its top and bottom), the shared scroll bar and the field search edit.
#include "ZvFloatPanel.h"

#include "ZvFloatTable.h"
#include "ZvWindow.h"

#include <QApplication>
#include <QCursor>
#include <QFontMetrics>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>

#include <algorithm>

namespace zv {

namespace {

// How far into a drop table's client area, from its top and from its bottom, the pointer scrolls
// the rows while a field row is dragged.
constexpr int ScrollBandTop = 25;
constexpr int ScrollBandBottom = 5;
constexpr int ScrollPeriodMs = 200;
// The frame a move or resize shows is this many pixels wide.
constexpr int FrameWidth = 2;

// The cursor image of a field drag: the qualified name in a framed box sized to the text.
QPixmap DragNamePixmap(const QString& Text, const QFont& Font) {
    const QFontMetrics Metrics(Font);
    const QSize Size(Metrics.horizontalAdvance(Text) + 6, Metrics.height() + 4);
    QPixmap Pixmap(Size);
    Pixmap.fill(Qt::white);
    QPainter Painter(&Pixmap);
    Painter.setPen(Qt::black);
    Painter.drawRect(0, 0, Size.width() - 1, Size.height() - 1);
    Painter.setFont(Font);
    Painter.drawText(QRect(QPoint(0, 0), Size), Qt::AlignCenter, Text);
    return Pixmap;
}

} // namespace

// ---------------------------------------------------------------------------------------------
// The shared scroll bar

void TZvWorkArea::RefreshTableScrollBar() {
    auto* Table = dynamic_cast<TZvTable*>(Selected);
    if (Table && Table->UpdateScrollBar()) {
        TableScrollBar->show();
        TableScrollBar->raise();
    } else {
        TableScrollBar->hide();
    }
}

void TZvWorkArea::ScrollClientArea(const TZvTable& Table, int Dy) {
    if (IsUpdating())
        return;
    QRect Client = ToViewport(Table.GetClientRect());
    if (TableScrollBar->isVisible() && Selected == &Table)
        Client.setWidth(Client.width() - TZvTable::ScrollBarWidth);
    // Pixels can only be reused when they are the table's own: nothing in front of it, no edit
    // over it, and a shift shorter than the area.
    const bool Covered = IndexOfTable(&Table) != 0 || AliasEdit->isVisible() || SearchEdit->isVisible();
    if (Covered || std::abs(Dy) >= Client.height())
        viewport()->update(Client);
    else
        viewport()->scroll(0, Dy, Client);
}

// ---------------------------------------------------------------------------------------------
// Moving and resizing by frame

void TZvWorkArea::BeginTableDrag(TZvTable& Table, TTableHitTest Hit, QPoint Point) {
    CancelDrag();
    DragMode = Hit == htTCaption ? TZvDragMode::dmMove : TZvDragMode::dmResize;
    DragTable = &Table;
    DragHit = Hit;
    PressPoint = Point;
}

// The frame follows the pointer; a move keeps the box on the surface, a resize keeps the
// minimum size with the opposite edges in place.
void TZvWorkArea::DragMoveTo(QPoint SurfacePoint) {
    const QPoint Delta = SurfacePoint - PressPoint;
    if (DragMode == TZvDragMode::dmMove) {
        QRect Frame = DragTable->GetBoundsRect().translated(Delta);
        Frame.moveLeft(std::clamp(Frame.left(), 0, SurfaceWidth - Frame.width()));
        Frame.moveTop(std::clamp(Frame.top(), 0, SurfaceHeight - Frame.height()));
        SetDragFrame(Frame);
    } else {
        SetDragFrame(DragTable->ResizedRect(DragHit, Delta.x(), Delta.y()));
    }
}

void TZvWorkArea::FinishTableDrag() {
    TZvTable* Table = DragTable;
    const QRect Frame = DragFrame;
    const TZvDragMode Mode = DragMode;
    CancelDrag();
    if (!Table || Frame.isEmpty())
        return;
    if (Mode == TZvDragMode::dmMove)
        Table->SetTopLeft(Frame.topLeft());
    else
        Table->ResizeTo(Frame);
}

void TZvWorkArea::CancelDrag() {
    if (DragMode == TZvDragMode::dmField)
        HandleDragEnd();
    SetDragFrame(QRect());
    DragMode = TZvDragMode::dmNone;
    DragTable = nullptr;
    DragItem = nullptr;
}

void TZvWorkArea::SetDragFrame(const QRect& Frame) {
    if (Frame == DragFrame)
        return;
    InvalidateFrame(DragFrame);
    DragFrame = Frame;
    InvalidateFrame(DragFrame);
}

// Only the four strips of the outline: the boxes under the frame stay as they are.
void TZvWorkArea::InvalidateFrame(const QRect& Frame) {
    if (Frame.isEmpty())
        return;
    InvalidateRect(QRect(Frame.left(), Frame.top(), Frame.width(), FrameWidth));
    InvalidateRect(QRect(Frame.left(), Frame.bottom() - FrameWidth + 1, Frame.width(), FrameWidth));
    InvalidateRect(QRect(Frame.left(), Frame.top(), FrameWidth, Frame.height()));
    InvalidateRect(QRect(Frame.right() - FrameWidth + 1, Frame.top(), FrameWidth, Frame.height()));
}

void TZvWorkArea::PaintDragFrame(QPainter& Painter) const {
    if (DragFrame.isEmpty())
        return;
    Painter.setBrush(Qt::NoBrush);
    Painter.setPen(QPen(Qt::black, 1, Qt::DotLine));
    const QRect Frame = ToViewport(DragFrame);
    Painter.drawRect(Frame.adjusted(0, 0, -1, -1));
    Painter.drawRect(Frame.adjusted(1, 1, -2, -2));
}

// ---------------------------------------------------------------------------------------------
// Dragging field rows

void TZvWorkArea::BeginFieldDrag(TZvTable& Table, TZvListItem& Item, QPoint Point) {
    if (DragMode != TZvDragMode::dmNone)
        return;
    PendingTable = &Table;
    PendingItem = &Item;
    StartPendingDrag(Point);
}

// True when the armed drag started now.
bool TZvWorkArea::StartPendingDrag(QPoint SurfacePoint) {
    if (!PendingTable || (SurfacePoint - PressPoint).manhattanLength() < QApplication::startDragDistance())
        return false;
    TZvTable* Table = PendingTable;
    TZvListItem* Item = PendingItem;
    ClearPendingDrag();
    DoStartDrag(*Table, *Item);
    return true;
}

void TZvWorkArea::ClearPendingDrag() {
    PendingTable = nullptr;
    PendingItem = nullptr;
}

void TZvWorkArea::DoStartDrag(TZvTable& Table, TZvListItem& Item) {
    CancelDrag();
    DragMode = TZvDragMode::dmField;
    DragTable = &Table;
    DragItem = &Item;
    HideHint();
    if (GetDragFieldName()) {
        DragCursorText = QString::fromStdString(Table.GetAlias() + "." + Item.GetName());
        viewport()->setCursor(QCursor(DragNamePixmap(DragCursorText, SurfaceFont), 0, 0));
    } else {
        DragCursorText.clear();
        viewport()->setCursor(Qt::DragMoveCursor);
    }
}

// A drag is no resize: the grips of a table's lower part count as its client area here, so that
// the band near its bottom, where the rows scroll down, can be reached at all.
TZvTable* TZvWorkArea::DropTargetAt(QPoint ViewportPoint) const {
    for (const auto& Table : Tables) {
        const TTableHitTest Hit = Table->HitTest(ViewportPoint);
        if (Hit == htTOutSide)
            continue;
        const int Y = ToSurface(ViewportPoint).y();
        const bool BelowCaption = Y >= Table->GetTop() + Table->GetCaptionHeight();
        if (Hit == htTClient || (BelowCaption && Table->GetExpand() && Hit != htTTop && Hit != htTLeftTop &&
                                 Hit != htTRightTop))
            return Table.get();
        return nullptr;
    }
    return nullptr;
}

void TZvWorkArea::HandleDragOver(QPoint Point, TZvDragState State) {
    TZvTable* Target = DropTargetAt(Point);
    if (!Target || Target == Selected || Target == DragTable) {
        StopScrollTimers();
        SetDropRow(nullptr, nullptr);
        return;
    }
    const QPoint P = ToSurface(Point);
    const QRect Bounds = Target->GetBoundsRect();
    const bool Above = P.y() < Bounds.top() + ScrollBandTop;
    const bool Below = P.y() > Bounds.top() + Bounds.height() - ScrollBandBottom;
    if ((Above || Below) && State == dsDragMove) {
        AutoScrollPoint = P;
        AutoScrollSet = true;
        QBasicTimer& Timer = Above ? ScrollUpTimer : ScrollDownTimer;
        (Above ? ScrollDownTimer : ScrollUpTimer).stop();
        if (!Timer.isActive())
            Timer.start(ScrollPeriodMs, this);
    } else {
        StopScrollTimers();
    }
    TZvListItem* Row = Target->GetItemAt(P.x(), P.y());
    SetDropRow(Target, Row && Row->IsFieldRow() ? Row : nullptr);
}

void TZvWorkArea::HandleDragDrop(QPoint Point) {
    HandleDragOver(Point, dsDragLeave);
    TZvTable* Target = DropTable;
    TZvListItem* Row = DropItem;
    if (Target && Row && DragItem)
        LinkRows(DragItem, Row);
}

void TZvWorkArea::HandleDragEnd() {
    StopScrollTimers();
    SetDropRow(nullptr, nullptr);
    DragCursorText.clear();
    if (DragMode == TZvDragMode::dmField) {
        DragMode = TZvDragMode::dmNone;
        DragTable = nullptr;
        DragItem = nullptr;
    }
    viewport()->setCursor(CursorForHit(LastHit));
}

void TZvWorkArea::StopScrollTimers() {
    ScrollUpTimer.stop();
    ScrollDownTimer.stop();
    AutoScrollSet = false;
}

bool TZvWorkArea::IsScrollTimerActive(int Id) const {
    return Id == 1 ? ScrollUpTimer.isActive() : Id == 2 && ScrollDownTimer.isActive();
}

void TZvWorkArea::SetDropRow(TZvTable* Table, TZvListItem* Item) {
    if (Table == DropTable && Item == DropItem)
        return;
    if (DropItem)
        InvalidateRect(DropTable->GetItemRect(DropItem));
    DropTable = Table;
    DropItem = Item;
    if (DropItem)
        InvalidateRect(DropTable->GetItemRect(DropItem));
}

// Timers 1 and 2: one row up or down, and the row under the remembered point becomes the drop row.
void TZvWorkArea::ScrollDropTable(int Step) {
    if (!DropTable || !AutoScrollSet) {
        StopScrollTimers();
        return;
    }
    DropTable->SetFirstVisibleItem(DropTable->GetFirstVisibleItem() + Step);
    TZvListItem* Row = DropTable->GetItemAt(AutoScrollPoint.x(), AutoScrollPoint.y());
    SetDropRow(DropTable, Row && Row->IsFieldRow() ? Row : nullptr);
}

// ---------------------------------------------------------------------------------------------
// The field search

void TZvWorkArea::StartFieldSearch(TZvTable& Table, int Key) {
    SetSelected(&Table);
    SearchTable = &Table;
    SearchEdit->setGeometry(
        ToViewport(QRect(Table.GetLeft(), Table.GetTop() + 1, Table.GetWidth(), Table.GetCaptionHeight() - 1)));
    SearchEdit->setFont(SurfaceFont);
    SearchEdit->OnKeyUp = [this](TZvEdit& Edit, int Released, Qt::KeyboardModifiers Shift) {
        if (SearchTable)
            SearchTable->HandleFindField(Edit, Released, Shift);
    };
    SearchEdit->setText(QString(QChar(Key)));
    SearchEdit->show();
    SearchEdit->raise();
    SearchEdit->setFocus();
    Table.HandleFindField(*SearchEdit, Key, Qt::NoModifier);
}

void TZvWorkArea::EndFieldSearch() {
    SearchTable = nullptr;
    if (!SearchEdit->isVisible())
        return;
    const bool HadFocus = SearchEdit->hasFocus();
    SearchEdit->hide();
    if (HadFocus)
        setFocus();
}

} // namespace zv
