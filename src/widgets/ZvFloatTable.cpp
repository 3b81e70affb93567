// Table objects: rows from a data set, names, geometry, hit testing, checks, the caption
// controls and painting.
#include "ZvFloatTable.h"

#include "ZvBitmaps.h"
#include "ZvErrors.h"
#include "ZvResource.h"
#include "ZvUtils.h"
#include "ZvWindow.h"

#include <QFontMetrics>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace zv {

namespace {

// A rectangle from its edges with right and bottom exclusive, as all table geometry is reckoned.
QRect EdgeRect(int Left, int Top, int Right, int Bottom) {
    return QRect(Left, Top, Right - Left, Bottom - Top);
}

// Exclusive right and bottom edges of a rectangle.
int RightOf(const QRect& R) {
    return R.left() + R.width();
}
int BottomOf(const QRect& R) {
    return R.top() + R.height();
}

constexpr int CheckBoxSize = 12;

TZvWorkArea* CheckedWorkArea(TZvWorkArea* WorkArea) {
    if (!WorkArea)
        throw EZvError(ZvText(TZvRes::TableInvalidParent).toStdString());
    return WorkArea;
}

int ButtonBitmapWidth() {
    return ZvBitmapSize(QStringLiteral("BTN1")).width();
}

QString ButtonBitmapName(int Index) {
    return QStringLiteral("BTN%1").arg(Index + 1);
}

} // namespace

// ---------------------------------------------------------------------------------------------
// TZvListItem

TZvListItem::TZvListItem(TZvTable* ATable, std::string AName, std::string AFieldName, TFieldType AFieldType,
                         TParamType AParamType)
    : Table(ATable), Name(std::move(AName)), FieldType(AFieldType), ParamType(AParamType),
      FieldName(std::move(AFieldName)) {}

void TZvListItem::SetCheck(bool B) {
    Check = B;
    Table->GetWorkArea()->InvalidateRect(GetBoundsRect());
    if (IsFieldRow())
        Table->GetWorkArea()->HandleCheckItem(*Table, *this);
    UpdateCheck(B);
}

void TZvListItem::UpdateCheck(bool B) {
    Check = B;
    Table->GetWorkArea()->InvalidateRect(GetBoundsRect());
    if (!IsFieldRow())
        return;
    int State = B ? 2 : 0;
    for (int I = 0; I < Table->ItemCount(); ++I) {
        const TZvListItem* Row = Table->GetItem(I);
        if (Row->IsFieldRow() && Row->Check != B) {
            State = 1;
            break;
        }
    }
    if (State != Table->GetFieldState())
        Table->UpdateFieldState(State);
}

void TZvListItem::SetSelect(bool B) {
    Select = B;
    Table->GetWorkArea()->InvalidateRect(GetBoundsRect());
}

int TZvListItem::GetIndex() const {
    return Table->IndexOfItem(this);
}

QRect TZvListItem::GetBoundsRect() const {
    return Table->GetFullItemRect(this);
}

QString TZvListItem::GetDataName() const {
    return ZvFieldTypeText(FieldType);
}

// ---------------------------------------------------------------------------------------------
// TZvTable: construction and names

TZvTable::TZvTable(TZvWorkArea* AWorkArea, const TZvDataSet* DataSet, std::string AName)
    : TZvFloatObject(CheckedWorkArea(AWorkArea)), Name(std::move(AName)) {
    FontChanged();
    AssignItems(DataSet);
    FitHeightToRows();
}

void TZvTable::FitHeightToRows() {
    VisibleCount = std::min(ItemCount(), MaxInitialVisible);
    Height = VisibleCount * (ItemHeight + 1) + CaptionHeight + BorderWidth + 2 * Margin;
}

TZvTable::~TZvTable() = default;

void TZvTable::FontChanged() {
    const QFontMetrics Metrics(WorkArea->GetFont());
    CaptionHeight = std::abs(Metrics.height()) + 4;
    SetItemHeight(Metrics.height());
}

void TZvTable::AssignItems(const TZvDataSet* DataSet) {
    CurrentItem = nullptr;
    Items.clear();
    if (!DataSet)
        return;
    VisibleCount = std::min(static_cast<int>(DataSet->GetFieldDefs().size()), MaxInitialVisible);
    TCustomZevrin* Host = WorkArea->GetHost();
    for (const TZvDataField& Field : DataSet->GetFieldDefs()) {
        std::string FieldName = Field.Name;
        if (Host && FieldName.find('.') != std::string::npos)
            FieldName = Host->ProcessName(FieldName);
        Items.push_back(std::make_unique<TZvListItem>(this, FieldName, FieldName, Field.DataType, ptOutput));
    }
}

void TZvTable::SetAlias(std::string Value) {
    Alias = std::move(Value);
}

const std::string& TZvTable::GetAlias() const {
    return Trim(Alias).empty() ? Name : Alias;
}

std::string TZvTable::GetCaption() const {
    if (!Trim(Alias).empty() && Alias != Name)
        return Name + " (" + Alias + ")";
    return Name;
}

int TZvTable::IndexOfItem(const TZvListItem* Item) const {
    return ZvIndexOfOwned(Items, Item);
}

TZvListItem* TZvTable::GetFieldItem(const std::string& FieldName) const {
    for (const auto& Item : Items)
        if (WorkArea->SameIdentifier(Item->GetName(), FieldName))
            return Item.get();
    return nullptr;
}

void TZvTable::SetCurrentItem(TZvListItem* Item) {
    if (Item && IndexOfItem(Item) < 0)
        return;
    if (CurrentItem)
        WorkArea->InvalidateRect(GetItemRect(CurrentItem));
    CurrentItem = Item;
    if (CurrentItem)
        WorkArea->InvalidateRect(GetItemRect(CurrentItem));
}

// ---------------------------------------------------------------------------------------------
// Checks

void TZvTable::UpdateFieldState(int State) {
    State = std::clamp(State, 0, 2);
    if (State == FieldState)
        return;
    WorkArea->InvalidateRect(EdgeRect(Left, Top, Left + Width, Top + CaptionHeight));
    FieldState = State;
}

void TZvTable::SetFieldState(int State) {
    UpdateFieldState(State);
    for (const auto& Item : Items)
        if (Item->IsFieldRow())
            Item->SetCheck(State == 2);
}

void TZvTable::UncheckAllQuietly() {
    for (const auto& Item : Items) {
        if (!Item->Check)
            continue;
        Item->Check = false;
        if (Item->IsFieldRow())
            WorkArea->HandleCheckItem(*this, *Item);
    }
}

// ---------------------------------------------------------------------------------------------
// Sizes

void TZvTable::SetItemHeight(int Value) {
    Value = std::abs(Value);
    if (Value == 0 || Value == ItemHeight)
        return;
    ItemHeight = std::max(Value, 16);
}

void TZvTable::MoveTable(int Dx, int Dy) {
    if (Dx == 0 && Dy == 0)
        return;
    WorkArea->InvalidateObjectArea(this);
    Left += Dx;
    Top += Dy;
    ZvSendMessage(WorkArea, CMMoveControl, this);
}

// Repaints the old area, applies the change and tells the work area of the new size.
template <class TChange>
void TZvTable::Resize(TChange&& Change) {
    WorkArea->InvalidateObjectArea(this);
    Change();
    ZvSendMessage(WorkArea, CMResizeControl, this);
}

void TZvTable::SetWidth(int Value) {
    Value = std::max(Value, CaptionHeight + ButtonsWidth + 20);
    if (Value != Width)
        Resize([&] { Width = Value; });
}

void TZvTable::SetHeight(int Value) {
    Value = std::max(Value, 2 * ItemHeight + CaptionHeight + 4);
    if (Value == Height)
        return;
    Resize([&] {
        Height = Value;
        RecountVisible();
    });
}

void TZvTable::RecountVisible() {
    VisibleCount = std::max(0, (Height - CaptionHeight - BorderWidth - 2 * Margin - 1) / (ItemHeight + 1));
    if (FirstVisibleItem + VisibleCount > ItemCount())
        FirstVisibleItem = std::max(0, ItemCount() - VisibleCount);
}

void TZvTable::SetBounds(const QRect& R) {
    Left = R.left();
    Top = R.top();
    Width = R.width();
    // A new object's height shows exactly its rows; recounting it would lose the last one, as the
    // recount keeps a pixel in reserve. Only a height from elsewhere (a remembered place) recounts.
    if (R.height() != Height) {
        Height = R.height();
        RecountVisible();
    }
}

void TZvTable::SetExpand(bool Value) {
    if (Value != Expand)
        Resize([&] { Expand = Value; });
}

void TZvTable::SetFirstVisibleItem(int Value) {
    Value = std::clamp(Value, 0, std::max(0, ItemCount() - VisibleCount));
    if (Value != FirstVisibleItem)
        Resize([&] { FirstVisibleItem = Value; }); // the links of scrolled rows follow them
}

// ---------------------------------------------------------------------------------------------
// Geometry

QRect TZvTable::GetBoundsRect() const {
    return EdgeRect(Left, Top, Left + Width, Top + (Expand ? Height : CaptionHeight));
}

QRect TZvTable::GetCaptionRect() const {
    const QRect B = GetBoundsRect();
    const int CaptionTop = B.top() + BorderWidth;
    return EdgeRect(B.left() + CaptionHeight + BorderWidth, CaptionTop,
                    RightOf(B) - ButtonsWidth - BorderWidth, CaptionTop + CaptionHeight - 2 * BorderWidth);
}

QRect TZvTable::GetClientRect() const {
    const QRect B = GetBoundsRect();
    return EdgeRect(B.left() + BorderWidth + Margin, B.top() + CaptionHeight + Margin,
                    RightOf(B) - BorderWidth - Margin, BottomOf(B) - BorderWidth - Margin);
}

QRect TZvTable::GetButtonRect() const {
    const int Right = Left + Width - BorderWidth;
    return EdgeRect(Right - ButtonsWidth, Top + BorderWidth, Right, Top + CaptionHeight);
}

QRect TZvTable::GetItemRect(const TZvListItem* Item) const {
    const int Index = IndexOfItem(Item);
    if (Index < 0)
        return {};
    const QRect B = GetBoundsRect();
    const int RowTop = B.top() + CaptionHeight + 1 + (Index - FirstVisibleItem) * (ItemHeight + 1);
    return EdgeRect(B.left() + BorderWidth + Margin, RowTop, RightOf(B) - BorderWidth - Margin,
                    RowTop + ItemHeight);
}

QRect TZvTable::GetFullItemRect(const TZvListItem* Item) const {
    const int Index = IndexOfItem(Item);
    if (Index < 0)
        return {};
    const QRect B = GetBoundsRect();
    if (!Expand)
        return B;
    if (Index < FirstVisibleItem)
        return EdgeRect(B.left(), B.top(), RightOf(B), B.top() + CaptionHeight);
    if (Index > FirstVisibleItem + VisibleCount)
        return EdgeRect(B.left(), BottomOf(B) - BorderWidth, RightOf(B), BottomOf(B));
    QRect Row = GetItemRect(Item);
    if (Index == FirstVisibleItem + VisibleCount)
        Row.setBottom(BottomOf(B) - BorderWidth - Margin - 1);
    return Row;
}

QRect TZvTable::CaptionRect(bool AlignRight) const {
    QFont Bold = WorkArea->GetFont();
    Bold.setBold(true);
    const std::string Caption = GetCaption();
    const int TextWidth =
        QFontMetrics(Bold).horizontalAdvance(QString::fromStdString(Caption.empty() ? " " : Caption)) + 2;
    const QRect C = GetCaptionRect();
    const int LeftEdge = AlignRight ? RightOf(C) - TextWidth : C.left();
    return QRect(LeftEdge, C.top(), TextWidth, C.height());
}

TZvListItem* TZvTable::GetItemAt(int /*X*/, int Y) const {
    for (int I = FirstVisibleItem; I < FirstVisibleItem + VisibleCount && I < ItemCount(); ++I)
        if (BottomOf(GetItemRect(GetItem(I))) > Y)
            return GetItem(I);
    return nullptr;
}

TTableHitTest TZvTable::HitTest(QPoint Point) {
    const QPoint P = Point + QPoint(WorkArea->HorzScrollPos(), WorkArea->VertScrollPos());
    if (!GetBoundsRect().contains(P))
        return htTOutSide;
    if (Expand) {
        constexpr int Grip = 4;
        const bool AtLeft = P.x() < Left + Grip;
        const bool AtRight = P.x() >= Left + Width - Grip;
        const bool AtTop = P.y() < Top + Grip;
        const bool AtBottom = P.y() >= Top + Height - Grip;
        if (AtLeft)
            return AtTop ? htTLeftTop : AtBottom ? htTLeftBottom : htTLeft;
        if (AtRight)
            return AtTop ? htTRightTop : AtBottom ? htTRightBottom : htTRight;
        if (AtTop)
            return htTTop;
        if (AtBottom)
            return htTBottom;
    }
    if (P.y() >= Top + CaptionHeight)
        return htTClient;
    if (GetButtonRect().contains(P))
        return htTbutton;
    if (QRect(Left + BorderWidth + 2, Top + BorderWidth + 2, CheckBoxSize, CheckBoxSize).contains(P))
        return htTCheck;
    return htTCaption;
}

// 0 collapse/expand, 1 unlink, 2 close.
int TZvTable::ButtonAt(int X) const {
    const int B = ButtonBitmapWidth();
    const QRect R = GetButtonRect();
    if (X < R.left() + B + 1)
        return 0;
    if (X > RightOf(R) - B - 2)
        return 2;
    return 1;
}

// ---------------------------------------------------------------------------------------------
// Interaction

void TZvTable::SetSelect(bool Value) {
    TZvFloatObject::SetSelect(Value);
    WorkArea->InvalidateRect(GetBoundsRect());
}

bool TZvTable::IsOnCheckSquare(const TZvListItem* Item, int X) const {
    const QRect Row = GetItemRect(Item);
    return Row.left() <= X && X < Row.left() + ItemHeight;
}

void TZvTable::MouseDown(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) {
    if (Event.button() == Qt::LeftButton) {
        if (Hit == htTCheck)
            SetFieldState(FieldState == 2 ? 0 : 2);
        else if (Hit == htTbutton)
            PressedButton = ButtonAt(Point.x());
        else if (Hit == htTClient)
            SetCurrentItem(GetItemAt(Point.x(), Point.y()));
    }
    TZvFloatObject::MouseDown(Event, Point, Hit);
}

void TZvTable::MouseMove(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) {
    Hint.clear();
    const bool NoButton = Event.buttons() == Qt::NoButton;
    if (Hit == htTbutton && Selected) {
        static constexpr TZvRes ButtonHints[] = {TZvRes::HintCollapseExpandTable, TZvRes::HintUnlinkTable,
                                                 TZvRes::HintCloseTable};
        Hint = ZvText(ButtonHints[ButtonAt(Point.x())]);
    } else if (Hit == htTClient) {
        if (const TZvListItem* Row = GetItemAt(Point.x(), Point.y()))
            Hint = QString::fromStdString(Row->GetName()) + QStringLiteral(" (") + Row->GetDataName() +
                   QLatin1Char(')');
    } else if (Hit == htTCheck && NoButton) {
        Hint = ZvText(FieldState == 2 ? TZvRes::HintUnselectAllFields : TZvRes::HintSelectAllFields);
    } else if (Hit == htTCaption && NoButton) {
        Hint = ZvText(TZvRes::HintEditAlias);
    }
    TZvFloatObject::MouseMove(Event, Point, Hit);
}

void TZvTable::MouseUp(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) {
    if (Hit == htTbutton && PressedButton >= 0) {
        const int Pressed = PressedButton;
        PressedButton = -1;
        if (ButtonAt(Point.x()) == Pressed) {
            if (Pressed == 2) {
                Event.accept();
                Close(); // this object is gone
                return;
            }
            if (Pressed == 1)
                Unlink();
            else
                SetExpand(!Expand);
        }
    } else if (Hit == htTClient) {
        TZvListItem* Row = GetItemAt(Point.x(), Point.y());
        if (Row && Row == CurrentItem && Row->IsFieldRow() && IsOnCheckSquare(Row, Point.x()))
            Row->SetCheck(!Row->GetCheck());
    }
    PressedButton = -1;
    TZvFloatObject::MouseUp(Event, Point, Hit);
}

void TZvTable::DblClick(QMouseEvent& Event, QPoint /*Point*/, TTableHitTest Hit) {
    if (Hit == htTCaption) {
        HandleRenameTable();
    } else if (Hit == htTClient && CurrentItem) {
        if (CurrentItem->IsParameterRow()) {
            if (!CurrentItem->GetReadOnly())
                WorkArea->DoEnterParameter(*this, *CurrentItem);
            CurrentItem->UpdateCheck(CurrentItem->GetCheck());
        } else {
            CurrentItem->SetCheck(!CurrentItem->GetCheck());
        }
    }
    Event.accept();
}

void TZvTable::PopupMenu(QMenu& Menu, QPoint /*Point*/, TTableHitTest Hit) {
    if (Hit != htTCaption)
        return;
    Menu.addAction(ZvText(TZvRes::MenuDeleteTable), [this] { Close(); });
    Menu.addSeparator();
    Menu.addAction(ZvText(TZvRes::MenuRenameTable), [this] { HandleRenameTable(); });
}

void TZvTable::Close() {
    Closing = true;
    ZvSendMessage(WorkArea, CMCloseTable, this);
}

void TZvTable::Unlink() {
    ZvSendMessage(WorkArea, CMUnlinkTable, this);
}

void TZvTable::HandleRenameTable() {
    WorkArea->EditAlias(*this);
}

TColor TZvTable::GetClientColor() const {
    return WorkArea->GetHost()->GetPalette()->GetTableClient();
}

// ---------------------------------------------------------------------------------------------
// Painting

void TZvTable::Paint(QPainter& Painter) {
    const QRect Bounds = WorkArea->ToViewport(GetBoundsRect());
    if (!Painter.viewport().intersects(Bounds))
        return;
    const TZvPalette& Colors = *WorkArea->GetHost()->GetPalette();
    Painter.save();
    Painter.fillRect(QRect(Bounds.left(), Bounds.top(), Bounds.width(), CaptionHeight),
                     ZvColorToQColor(Selected ? Colors.GetActiveCaption() : Colors.GetInactiveCaption()));
    PaintFrame(Painter, Bounds);
    PaintCaption(Painter, Colors);
    if (Expand)
        PaintRows(Painter, Colors);
    Painter.restore();
}

// The edge kind of the object style; a flat style draws one line in the shadow colour.
void TZvTable::PaintFrame(QPainter& Painter, const QRect& R) const {
    const TZvObjectStyle& Style = *WorkArea->GetHost()->GetStyle()->GetObjectStyle();
    const QPalette& System = WorkArea->palette();
    const QRect Outer = R.adjusted(0, 0, -1, -1);
    if (Style.GetFlat()) {
        Painter.setPen(System.color(QPalette::Dark));
        Painter.drawRect(Outer);
        return;
    }
    const bool Sunken = Style.GetBorderKind() == zvkSunken || Style.GetBorderKind() == zvkEtched;
    const QColor Light = System.color(QPalette::Light);
    const QColor Dark = System.color(QPalette::Dark);
    const auto Edge = [&](const QRect& E, const QColor& TopLeft, const QColor& BottomRight) {
        Painter.setPen(TopLeft);
        Painter.drawLine(E.topLeft(), E.topRight());
        Painter.drawLine(E.topLeft(), E.bottomLeft());
        Painter.setPen(BottomRight);
        Painter.drawLine(E.bottomLeft(), E.bottomRight());
        Painter.drawLine(E.topRight(), E.bottomRight());
    };
    Edge(Outer, Sunken ? Dark : Light, Sunken ? Light : Dark);
    // Bump and etched frames are two edges of opposite sense.
    if (Style.GetBorderKind() == zvkBump || Style.GetBorderKind() == zvkEtched)
        Edge(Outer.adjusted(1, 1, -1, -1), Sunken ? Light : Dark, Sunken ? Dark : Light);
}

void TZvTable::PaintCaption(QPainter& Painter, const TZvPalette& Colors) const {
    QFont Bold = WorkArea->GetFont();
    Bold.setBold(true);
    Painter.setFont(Bold);
    Painter.setPen(
        ZvColorToQColor(Selected ? Colors.GetActiveCaptionText() : Colors.GetInactiveCaptionText()));
    const QRect Caption = WorkArea->ToViewport(GetCaptionRect());
    const std::string Text = GetCaption();
    Painter.drawText(Caption, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(Bold).elidedText(QString::fromStdString(Text.empty() ? " " : Text),
                                                   Qt::ElideRight, Caption.width()));
    const QRect Buttons = WorkArea->ToViewport(GetButtonRect());
    const int B = ButtonBitmapWidth();
    const int ButtonTop = Buttons.top() + (Buttons.height() - B - 2) / 2;
    for (int I = 0; I < 3; ++I)
        Painter.drawPixmap(Buttons.left() + (B + 1) * I + 1, ButtonTop + 1, ZvBitmap(ButtonBitmapName(I)));
    const QPoint Box =
        WorkArea->ToViewport(QRect(Left + BorderWidth + 4, Top + BorderWidth + 2, 1, 1)).topLeft();
    Painter.drawPixmap(Box, ZvBitmap(QStringLiteral("BOX%1").arg(FieldState + 1)));
}

void TZvTable::PaintRows(QPainter& Painter, const TZvPalette& Colors) const {
    const QRect Client = WorkArea->ToViewport(GetClientRect());
    Painter.fillRect(Client, ZvColorToQColor(GetClientColor()));
    Painter.setClipRect(Client);
    const bool HideSelection = WorkArea->GetHost()->GetOptions().testFlag(zvoHideSelection) && !Selected;
    const bool ShowTypes = WorkArea->GetHost()->GetOptions().testFlag(zvoShowFieldTypes);
    for (int I = FirstVisibleItem; I <= FirstVisibleItem + VisibleCount && I < ItemCount(); ++I) {
        const TZvListItem* Row = GetItem(I);
        const QRect R = WorkArea->ToViewport(GetItemRect(Row)).translated(0, 1);
        const bool Current = Row == CurrentItem && !HideSelection;
        const QString Check =
            Row->IsFieldRow()
                ? (Row->GetCheck() ? QStringLiteral("CHECKBMP") : QStringLiteral("UNCHECKBMP"))
                : (Row->GetCheck() ? QStringLiteral("INPUTPARAM") : QStringLiteral("INPUTNULL"));
        Painter.drawPixmap(R.topLeft(), ZvBitmap(Check));
        const QRect TextRect = R.adjusted(ItemHeight, 0, 0, 0);
        if (Current)
            Painter.fillRect(TextRect, ZvColorToQColor(clSilver));
        QFont RowFont = WorkArea->GetFont();
        RowFont.setBold(Row->GetSelect());
        Painter.setFont(RowFont);
        Painter.setPen(ZvColorToQColor(Current ? Colors.GetSelectedItemText() : Colors.GetItemText()));
        QString Text = QLatin1Char(' ') + QString::fromStdString(Row->GetName());
        if (ShowTypes)
            Text += QStringLiteral(" (") + Row->GetDataName() + QLatin1Char(')');
        Painter.drawText(TextRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, Text);
        if (Current && Selected)
            Painter.drawRect(TextRect.adjusted(0, 0, -1, -1));
    }
}

} // namespace zv
