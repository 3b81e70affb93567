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
#include <QScrollBar>

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
// The grey of button shadows and flat button frames.
constexpr TColor ButtonGrey = 0x808080u;
// The background of the row a dragged field row would be dropped on.
const QColor DropRowColor(0, 128, 128);

TZvWorkArea* CheckedWorkArea(TZvWorkArea* WorkArea) {
    if (!WorkArea)
        throw EZvError(ZvText(TZvRes::TableInvalidParent).toStdString());
    return WorkArea;
}

// Read once: the size comes from parsing the picture, and every hit test and paint asks for it.
int ButtonBitmapWidth() {
    static const int Width = ZvBitmapSize(QStringLiteral("BTN1")).width();
    return Width;
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

QString TZvListItem::GetDisplayText(bool ShowTypes) const {
    QString Text = QLatin1Char(' ') + QString::fromStdString(Name);
    if (ShowTypes)
        Text += QStringLiteral(" (") + GetDataName() + QLatin1Char(')');
    return Text;
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
    Value = std::max(Value, MinWidth());
    if (Value != Width)
        Resize([&] { Width = Value; });
}

void TZvTable::SetHeight(int Value) {
    Value = std::max(Value, MinHeight());
    if (Value == Height)
        return;
    Resize([&] {
        Height = Value;
        RecountVisible();
    });
}

void TZvTable::MoveLeft(int D) {
    const int Right = Left + Width;
    const int NewLeft = std::min(Left + D, Right - MinWidth());
    if (NewLeft == Left)
        return;
    Resize([&] {
        Left = NewLeft;
        Width = Right - NewLeft;
    });
}

void TZvTable::MoveUpper(int D) {
    const int Bottom = Top + Height;
    const int NewTop = std::min(Top + D, Bottom - MinHeight());
    if (NewTop == Top)
        return;
    Resize([&] {
        Top = NewTop;
        Height = Bottom - NewTop;
        RecountVisible();
    });
}

namespace {

bool MovesLeftEdge(TTableHitTest Edge) {
    return Edge == htTLeft || Edge == htTLeftTop || Edge == htTLeftBottom;
}
bool MovesRightEdge(TTableHitTest Edge) {
    return Edge == htTRight || Edge == htTRightTop || Edge == htTRightBottom;
}
bool MovesTopEdge(TTableHitTest Edge) {
    return Edge == htTTop || Edge == htTLeftTop || Edge == htTRightTop;
}
bool MovesBottomEdge(TTableHitTest Edge) {
    return Edge == htTBottom || Edge == htTLeftBottom || Edge == htTRightBottom;
}

} // namespace

QRect TZvTable::ResizedRect(TTableHitTest Edge, int Dx, int Dy) const {
    int L = Left, T = Top, R = Left + Width, B = Top + Height;
    if (MovesLeftEdge(Edge))
        L = std::min(L + Dx, R - MinWidth());
    else if (MovesRightEdge(Edge))
        R = std::max(R + Dx, L + MinWidth());
    if (MovesTopEdge(Edge))
        T = std::min(T + Dy, B - MinHeight());
    else if (MovesBottomEdge(Edge))
        B = std::max(B + Dy, T + MinHeight());
    return EdgeRect(L, T, R, B);
}

void TZvTable::ResizeTo(const QRect& R) {
    MoveLeft(R.left() - Left);
    SetWidth(R.width());
    MoveUpper(R.top() - Top);
    SetHeight(R.height());
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
    if (Value == FirstVisibleItem)
        return;
    const int Shift = (FirstVisibleItem - Value) * (ItemHeight + 1);
    FirstVisibleItem = Value;
    WorkArea->ScrollClientArea(*this, Shift);
    WorkArea->FollowScrolledRows(*this);
    if (Selected)
        WorkArea->RefreshTableScrollBar();
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
    WorkArea->RefreshTableScrollBar();
}

bool TZvTable::IsOnCheckSquare(const TZvListItem* Item, int X) const {
    const QRect Row = GetItemRect(Item);
    return Row.left() <= X && X < Row.left() + ItemHeight;
}

namespace {

bool IsGrip(TTableHitTest Hit) {
    return Hit >= htTLeft && Hit <= htTRightBottom;
}

} // namespace

void TZvTable::MouseDown(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) {
    if (Event.button() == Qt::LeftButton) {
        if (Hit == htTCheck) {
            SetFieldState(FieldState == 2 ? 0 : 2);
        } else if (Hit == htTbutton) {
            PressedButton = ButtonAt(Point.x());
            PressedOver = true;
            InvalidateButtons();
        } else if (Hit == htTClient) {
            SetCurrentItem(GetItemAt(Point.x(), Point.y()));
        } else if (Hit == htTCaption || IsGrip(Hit)) {
            WorkArea->BeginTableDrag(*this, Hit, Point);
        }
    }
    TZvFloatObject::MouseDown(Event, Point, Hit);
}

void TZvTable::MouseMove(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) {
    Hint.clear();
    const bool NoButton = Event.buttons() == Qt::NoButton;
    const bool OverButtons = Hit == htTbutton && Selected;
    const int Under = OverButtons ? ButtonAt(Point.x()) : -1;
    if (PressedButton >= 0) {
        if (PressedOver != (Under == PressedButton)) {
            PressedOver = Under == PressedButton;
            InvalidateButtons();
        }
    } else {
        SetHotButton(Under);
    }
    if (OverButtons) {
        static constexpr TZvRes ButtonHints[] = {TZvRes::HintCollapseExpandTable, TZvRes::HintUnlinkTable,
                                                 TZvRes::HintCloseTable};
        Hint = ZvText(ButtonHints[Under]);
    } else if (Hit == htTClient) {
        TZvListItem* Row = CurrentItem;
        if (Row && Row->IsFieldRow() && (Event.buttons() & Qt::LeftButton) &&
            Point.x() > GetItemRect(Row).left() + ItemHeight) {
            WorkArea->BeginFieldDrag(*this, *Row, Point);
            Event.accept();
            return;
        }
        if (const TZvListItem* Over = GetItemAt(Point.x(), Point.y()))
            Hint = QString::fromStdString(Over->GetName()) + QStringLiteral(" (") + Over->GetDataName() +
                   QLatin1Char(')');
    } else if (Hit == htTCheck && NoButton) {
        Hint = ZvText(FieldState == 2 ? TZvRes::HintUnselectAllFields : TZvRes::HintSelectAllFields);
    } else if (Hit == htTCaption && NoButton) {
        Hint = ZvText(TZvRes::HintEditAlias);
    }
    TZvFloatObject::MouseMove(Event, Point, Hit);
}

void TZvTable::MouseUp(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) {
    const int Pressed = PressedButton;
    if (Pressed >= 0) {
        PressedButton = -1;
        PressedOver = false;
        InvalidateButtons();
    }
    SetHotButton(Hit == htTbutton && Selected ? ButtonAt(Point.x()) : -1);
    if (Hit == htTbutton && Pressed >= 0 && ButtonAt(Point.x()) == Pressed) {
        if (Pressed == 2) {
            Event.accept();
            Close(); // this object is gone
            return;
        }
        if (Pressed == 1)
            Unlink();
        else
            SetExpand(!Expand);
    } else if (Hit == htTClient) {
        TZvListItem* Row = GetItemAt(Point.x(), Point.y());
        if (Row && Row == CurrentItem && Row->IsFieldRow() && IsOnCheckSquare(Row, Point.x()))
            Row->SetCheck(!Row->GetCheck());
    }
    TZvFloatObject::MouseUp(Event, Point, Hit);
}

void TZvTable::LeaveHit() {
    SetHotButton(-1);
}

void TZvTable::SetHotButton(int Index) {
    if (Index == HotButton)
        return;
    HotButton = Index;
    InvalidateButtons();
}

void TZvTable::InvalidateButtons() {
    WorkArea->InvalidateRect(GetButtonRect());
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

// ---------------------------------------------------------------------------------------------
// Keyboard and the field search

namespace {

bool IsSearchKey(int Key) {
    return (Key >= Qt::Key_0 && Key <= Qt::Key_9) || (Key >= Qt::Key_A && Key <= Qt::Key_Z);
}

bool EndsSearch(int Key) {
    return Key == 13 || Key == 27 || Key == Qt::Key_Down || Key == Qt::Key_Up || Key == Qt::Key_PageUp ||
           Key == Qt::Key_PageDown;
}

} // namespace

void TZvTable::KeyDown(int& Key, Qt::KeyboardModifiers Shift) {
    const int From = CurrentItem ? IndexOfItem(CurrentItem) : FirstVisibleItem;
    switch (Key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        // A parameter row's check tells whether a value was entered, so only field rows toggle.
        if (CurrentItem && CurrentItem->IsFieldRow())
            CurrentItem->SetCheck(!CurrentItem->GetCheck());
        break;
    case Qt::Key_Left:
    case Qt::Key_Up:
        MakeCurrentVisible(From - 1);
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        MakeCurrentVisible(From + 1);
        break;
    case Qt::Key_PageUp:
        MakeCurrentVisible(From + 1 - VisibleCount);
        break;
    case Qt::Key_PageDown:
        MakeCurrentVisible(From + VisibleCount - 1);
        break;
    case Qt::Key_Home:
        MakeCurrentVisible(0);
        break;
    case Qt::Key_End:
        MakeCurrentVisible(ItemCount() - 1);
        break;
    default:
        // Ctrl and Alt combinations are commands of the application, not typed text.
        if (IsSearchKey(Key) && !(Shift & (Qt::ControlModifier | Qt::AltModifier)))
            WorkArea->StartFieldSearch(*this, Key);
        break;
    }
}

void TZvTable::MakeCurrentVisible(int Index) {
    if (Items.empty())
        return;
    Index = std::clamp(Index, 0, ItemCount() - 1);
    TZvListItem* Row = GetItem(Index);
    if (Row == CurrentItem)
        return;
    if (Index >= FirstVisibleItem + VisibleCount)
        SetFirstVisibleItem(Index - VisibleCount + 1);
    else if (Index < FirstVisibleItem)
        SetFirstVisibleItem(Index);
    // The two rows repaint with everything else invalid on the next pass of the event loop.
    SetCurrentItem(Row);
}

void TZvTable::HandleFindField(TZvEdit& Edit, int Key, Qt::KeyboardModifiers /*Shift*/) {
    if (EndsSearch(Key)) {
        WorkArea->EndFieldSearch();
        return;
    }
    const QString Wanted = Edit.text().toUpper();
    if (Wanted.isEmpty())
        return;
    for (int I = 0; I < ItemCount(); ++I) {
        if (QString::fromStdString(GetItem(I)->GetName()).toUpper().startsWith(Wanted)) {
            MakeCurrentVisible(I);
            return;
        }
    }
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

TZvBorderKind TZvTable::GetTableBorder() const {
    return WorkArea->GetHost()->GetStyle()->GetObjectStyle()->GetBorderKind();
}

bool TZvTable::GetFlat() const {
    return WorkArea->GetHost()->GetStyle()->GetObjectStyle()->GetFlat();
}

bool TZvTable::GetbtnFlat() const {
    return WorkArea->GetHost()->GetStyle()->GetObjectStyle()->GetFlatButtons();
}

bool TZvTable::GetHideSelection() const {
    return WorkArea->GetHost()->GetOptions().testFlag(zvoHideSelection);
}

bool TZvTable::UpdateScrollBar() {
    if (!Selected || !Expand || ItemCount() <= VisibleCount)
        return false;
    QScrollBar* Bar = WorkArea->GetTableScrollBar();
    const QRect Client = WorkArea->ToViewport(GetClientRect());
    Bar->setGeometry(RightOf(Client) - ScrollBarWidth, Client.top(), ScrollBarWidth, Client.height());
    {
        const QSignalBlocker Suspended(Bar);
        Bar->setRange(0, ItemCount() - VisibleCount);
        Bar->setValue(FirstVisibleItem);
    }
    // The page step is the bar's large change: a click beside the slider keeps one row in view.
    Bar->setPageStep(VisibleCount < 2 ? 1 : VisibleCount - 1);
    Bar->setSingleStep(1);
    return true;
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
    for (int I = 0; I < 3; ++I)
        DrawButton(Painter, ButtonState(I), I);
    const QPoint Box =
        WorkArea->ToViewport(QRect(Left + BorderWidth + 4, Top + BorderWidth + 2, 1, 1)).topLeft();
    Painter.drawPixmap(Box, ZvBitmap(QStringLiteral("BOX%1").arg(FieldState + 1)));
}

TZvButtonState TZvTable::ButtonState(int Index) const {
    if (Index == PressedButton)
        return PressedOver ? bsPressed : bsNormal;
    return Index == HotButton && PressedButton < 0 ? bsHot : bsNormal;
}

QRect TZvTable::GetButtonFrame(int Index) const {
    const QRect Buttons = GetButtonRect();
    const int B = ButtonBitmapWidth();
    return QRect(Buttons.left() + (B + 1) * Index, Buttons.top() + (Buttons.height() - B - 2) / 2, B + 1,
                 B + 1);
}

// Pressed: black above and left, white below and right; normal: white (grey for flat buttons)
// above and left, grey below and right; hot: white and grey.
void TZvTable::DrawButton(QPainter& Painter, TZvButtonState State, int Index) const {
    if (Index < 0 || Index > 2)
        return;
    const QRect F = WorkArea->ToViewport(GetButtonFrame(Index));
    const QColor Grey = ZvColorToQColor(ButtonGrey);
    const QColor White = ZvColorToQColor(clWhite);
    QColor TopLeft = White;
    if (State == bsPressed)
        TopLeft = ZvColorToQColor(clBlack);
    else if (State == bsNormal && GetbtnFlat())
        TopLeft = Grey;
    Painter.setPen(TopLeft);
    Painter.drawLine(F.topLeft(), F.topRight());
    Painter.drawLine(F.topLeft(), F.bottomLeft());
    Painter.setPen(State == bsPressed ? White : Grey);
    Painter.drawLine(F.bottomLeft(), F.bottomRight());
    Painter.drawLine(F.topRight(), F.bottomRight());
    Painter.drawPixmap(F.topLeft() + QPoint(1, 1), ZvBitmap(ButtonBitmapName(Index)));
}

void TZvTable::PaintRows(QPainter& Painter, const TZvPalette& Colors) const {
    const QRect Client = WorkArea->ToViewport(GetClientRect());
    Painter.fillRect(Client, ZvColorToQColor(GetClientColor()));
    Painter.setClipRect(Client);
    const bool HideSelection = GetHideSelection() && !Selected;
    TZvRowLook Look{Colors, WorkArea->GetFont(), WorkArea->GetFont(),
                    WorkArea->GetHost()->GetOptions().testFlag(zvoShowFieldTypes)};
    Look.BoldFont.setBold(true);
    Painter.setFont(Look.Font);
    for (int I = FirstVisibleItem; I <= FirstVisibleItem + VisibleCount && I < ItemCount(); ++I) {
        const TZvListItem* Row = GetItem(I);
        TZvItemStates State;
        if (Row == CurrentItem && !HideSelection)
            State |= isSelected;
        if (Selected)
            State |= isFocused;
        if (Row == WorkArea->GetDropItem())
            State |= isDroped;
        Row->DrawItem(Painter, WorkArea->ToViewport(GetItemRect(Row)), State, Look);
    }
}

// The row one pixel lower than its rectangle: the check bitmap at its left, then " name" (and the
// type) on the row's background, with a focus frame round the text of the current row of the
// selected table.
void TZvListItem::DrawItem(QPainter& Painter, const QRect& Rect, TZvItemStates State,
                           const TZvRowLook& Look) const {
    const QRect R = Rect.translated(0, 1);
    const QString Bitmap = IsFieldRow() ? (Check ? QStringLiteral("CHECKBMP") : QStringLiteral("UNCHECKBMP"))
                                        : (Check ? QStringLiteral("INPUTPARAM") : QStringLiteral("INPUTNULL"));
    Painter.drawPixmap(R.topLeft(), ZvBitmap(Bitmap));
    const QRect TextRect = R.adjusted(Table->GetItemHeight(), 0, 0, 0);
    const bool Highlighted = State & (isSelected | isDroped);
    if (State & isDroped)
        Painter.fillRect(TextRect, DropRowColor);
    else if (State & isSelected)
        Painter.fillRect(TextRect, ZvColorToQColor(clSilver));
    if (Select)
        Painter.setFont(Look.BoldFont);
    Painter.setPen(ZvColorToQColor(Highlighted ? Look.Colors.GetSelectedItemText() : Look.Colors.GetItemText()));
    Painter.drawText(TextRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, GetDisplayText(Look.ShowTypes));
    if (Select)
        Painter.setFont(Look.Font);
    if ((State & isSelected) && (State & isFocused))
        Painter.drawRect(TextRect.adjusted(0, 0, -1, -1));
}

} // namespace zv
