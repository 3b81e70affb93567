// The work area: object lists, placement, control messages, selection, keyboard, alias editing,
// hover hints and painting.
#include "ZvFloatPanel.h"

#include "ZvErrors.h"
#include "ZvFloatTable.h"
#include "ZvLinks.h"
#include "ZvMessages.h"
#include "ZvProc.h"
#include "ZvResource.h"
#include "ZvSelectParser.h"
#include "ZvTableDefs.h"
#include "ZvUtils.h"
#include "ZvWindow.h"

#include <QCoreApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace zv {

// ---------------------------------------------------------------------------------------------
// Messages

void ZvSendMessage(QObject* Receiver, QEvent::Type Type, TZvFloatObject* Object) {
    TZvControlMessage Message(Type, Object);
    QCoreApplication::sendEvent(Receiver, &Message);
    if (Message.Error)
        std::rethrow_exception(Message.Error);
}

// ---------------------------------------------------------------------------------------------
// TZvFloatObject

void TZvFloatObject::SetSelect(bool Value) {
    Selected = Value;
    if (Value)
        if (auto* Table = dynamic_cast<TZvTable*>(this))
            WorkArea->TableToFront(Table);
}

TShiftState TZvFloatObject::ShiftOf(const QMouseEvent& Event) {
    const Qt::MouseButtons Buttons = Event.buttons() | Event.button();
    TShiftState Shift = 0;
    if (Buttons & Qt::LeftButton)
        Shift |= ssLeft;
    if (Buttons & Qt::RightButton)
        Shift |= ssRight;
    if (Buttons & Qt::MiddleButton)
        Shift |= ssMiddle;
    if (Event.modifiers() & Qt::ControlModifier)
        Shift |= ssCtrl;
    if (Event.modifiers() & Qt::ShiftModifier)
        Shift |= ssShift;
    return Shift;
}

Qt::MouseButton TZvFloatObject::ButtonOf(const QMouseEvent& Event) {
    const Qt::MouseButtons Buttons = Event.buttons() | Event.button();
    if (Buttons & Qt::MiddleButton)
        return Qt::MiddleButton;
    if (Buttons & Qt::RightButton)
        return Qt::RightButton;
    return Qt::LeftButton;
}

void TZvFloatObject::MouseDown(QMouseEvent& Event, QPoint Point, TTableHitTest /*Hit*/) {
    if (OnMouseDown)
        OnMouseDown(*this, ButtonOf(Event), ShiftOf(Event), Point.x(), Point.y());
    Event.accept();
}

void TZvFloatObject::MouseMove(QMouseEvent& Event, QPoint Point, TTableHitTest /*Hit*/) {
    if (OnMouseMove)
        OnMouseMove(*this, ShiftOf(Event), Point.x(), Point.y());
    Event.accept();
}

void TZvFloatObject::MouseUp(QMouseEvent& Event, QPoint Point, TTableHitTest /*Hit*/) {
    if (OnMouseUp)
        OnMouseUp(*this, ButtonOf(Event), ShiftOf(Event), Point.x(), Point.y());
    Event.accept();
}

// ---------------------------------------------------------------------------------------------
// TZvEdit, TZvObjectArrangements

TZvEdit::TZvEdit(QWidget* Parent) : QLineEdit(Parent) {
    setFrame(false);
    hide();
}

void TZvEdit::keyReleaseEvent(QKeyEvent* Event) {
    QLineEdit::keyReleaseEvent(Event);
    int Key = Event->key();
    if (Key == Qt::Key_Return || Key == Qt::Key_Enter)
        Key = 13;
    else if (Key == Qt::Key_Escape)
        Key = 27;
    if (OnKeyUp)
        OnKeyUp(*this, Key, Event->modifiers());
}

void TZvEdit::focusOutEvent(QFocusEvent* Event) {
    QLineEdit::focusOutEvent(Event);
    if (OnExit)
        OnExit(*this);
}

int TZvObjectArrangements::IndexOf(const std::string& Name) const {
    for (std::size_t I = 0; I < Entries.size(); ++I)
        if (Entries[I].Name == Name)
            return static_cast<int>(I);
    return -1;
}

// ---------------------------------------------------------------------------------------------
// TZvWorkArea: construction and helpers

std::function<QPoint()> TZvWorkArea::CursorPosition = [] { return QCursor::pos(); };
std::function<void(QMenu&, QPoint)> TZvWorkArea::ExecPopupMenu = [](QMenu& Menu, QPoint At) {
    Menu.exec(At);
};

QWidget* TZvWorkArea::CheckedOwner(QWidget* Owner) {
    if (!qobject_cast<TCustomZevrin*>(Owner))
        throw EZvError(ZvText(TZvRes::WorkAreaInvalidParent).toStdString());
    return Owner;
}

TZvWorkArea::TZvWorkArea(QWidget* Owner)
    : QAbstractScrollArea(CheckedOwner(Owner)), Host(static_cast<TCustomZevrin*>(Owner)),
      AliasEdit(new TZvEdit(viewport())), SearchEdit(new TZvEdit(viewport())), SurfaceFont(font()),
      TableScrollBar(new QScrollBar(Qt::Vertical, viewport())) {
    setObjectName(QStringLiteral("WorkArea"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    AliasEdit->OnKeyUp = [this](TZvEdit&, int Key, Qt::KeyboardModifiers) {
        if (Key == 13)
            Guarded([this] { CommitAliasEdit(); });
        else if (Key == 27) {
            AliasTable = nullptr; // leaving without a change
            AliasEdit->hide();
        }
    };
    AliasEdit->OnExit = [this](TZvEdit&) { Guarded([this] { CommitAliasEdit(); }); };
    SearchEdit->OnExit = [this](TZvEdit&) { EndFieldSearch(); };
    TableScrollBar->setObjectName(QStringLiteral("TableScrollBar"));
    TableScrollBar->hide();
    connect(TableScrollBar, &QScrollBar::valueChanged, this, [this](int Value) {
        if (auto* Table = dynamic_cast<TZvTable*>(Selected))
            Table->SetFirstVisibleItem(Value);
    });
    UpdateScrollRange();
}

// Links and joins refer to tables, so they go first.
TZvWorkArea::~TZvWorkArea() {
    Links.clear();
    Joins.clear();
    Tables.clear();
}

template <class TAction>
void TZvWorkArea::Guarded(TAction&& Action) {
    ZvRunGuarded(this, std::forward<TAction>(Action));
}

TZvSelectParser* TZvWorkArea::GetParser() const {
    return Host ? Host->GetParser() : nullptr;
}

bool TZvWorkArea::SameIdentifier(const std::string& A, const std::string& B) const {
    TZvSelectParser* Parser = GetParser();
    if (!Parser || Parser->GetCaseSensitiveIdentifiers())
        return A == B;
    return SameText(A, B);
}

bool TZvWorkArea::GetDragFieldName() const {
    return Host && Host->GetOptions().testFlag(zvoDragFieldName);
}

int TZvWorkArea::HorzScrollPos() const {
    return horizontalScrollBar()->value();
}

int TZvWorkArea::VertScrollPos() const {
    return verticalScrollBar()->value();
}

QPoint TZvWorkArea::ToSurface(QPoint ViewportPoint) const {
    return ViewportPoint + QPoint(HorzScrollPos(), VertScrollPos());
}

void TZvWorkArea::InvalidateRect(const QRect& R) {
    if (!IsUpdating())
        viewport()->update(ToViewport(R));
}

void TZvWorkArea::InvalidateRegion(const QRegion& R) {
    if (!IsUpdating())
        viewport()->update(R.translated(-HorzScrollPos(), -VertScrollPos()));
}

void TZvWorkArea::UpdateScrollRange() {
    const QSize View = viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, SurfaceWidth - View.width()));
    horizontalScrollBar()->setPageStep(View.width());
    verticalScrollBar()->setRange(0, std::max(0, SurfaceHeight - View.height()));
    verticalScrollBar()->setPageStep(View.height());
}

void TZvWorkArea::resizeEvent(QResizeEvent* Event) {
    QAbstractScrollArea::resizeEvent(Event);
    UpdateScrollRange();
}

void TZvWorkArea::scrollContentsBy(int Dx, int Dy) {
    if (IsUpdating())
        return;
    viewport()->scroll(Dx, Dy);
    RefreshTableScrollBar();
}

void TZvWorkArea::EndUpdate() {
    if (UpdateCount > 0 && --UpdateCount == 0)
        viewport()->update();
}

void TZvWorkArea::SetFont(const QFont& Value) {
    SurfaceFont = Value;
    if (SetFontHook)
        SetFontHook(Value);
    for (const auto& Table : Tables)
        Table->FontChanged();
    viewport()->update();
}

// ---------------------------------------------------------------------------------------------
// Tables

// The alias is the name itself unless a table on the surface already answers to it. Numbering
// starts from the name's last dotted part without quotes, so that db.schema.EMP next to EMP
// becomes EMP1; a dotted name whose last part is already an alias is numbered even though the
// full name is free, since both would read as the same table.
std::string TZvWorkArea::GenerateUniqueAlias(const std::string& Name, const std::string& Prefix) const {
    std::string Base = Name;
    for (std::size_t Dot = Base.find('.'); Dot != std::string::npos; Dot = Base.find('.')) {
        if (Dot + 1 == Base.size())
            Base.erase(Dot);
        else
            Base.erase(0, Dot + 1);
    }
    TZvSelectParser* Parser = GetParser();
    if (Parser) {
        TZvSQLScanner& Scanner = Parser->GetScanner();
        for (std::size_t I = Base.size(); I-- > 0;)
            if (Scanner.IsIdentQuote(Base[I]))
                Base.erase(I, 1);
    }
    Base = Trim(Base);
    if (Base.empty())
        Base = (Parser && Parser->IsLowerCaseAliases() ? LowerCase(Prefix) : Prefix) + "1";

    const auto Taken = [this](const std::string& Alias) {
        return std::any_of(Tables.begin(), Tables.end(),
                           [&](const auto& Table) { return Table->GetAlias() == Alias; });
    };
    std::string Result = Name;
    int Counter = 0;
    if (Base != Name && !Taken(Name) && Taken(Base))
        Result = Base;
    while (Taken(Result))
        Result = Base + std::to_string(++Counter);
    return Result;
}

TZvTable* TZvWorkArea::AddPanel(const std::string& Name, const std::string& Alias,
                                const TZvDataSet* DataSet) {
    return AddPanelInternal(Name, Alias, DataSet, true, QPoint());
}

TZvTable* TZvWorkArea::AddPanelAt(const std::string& Name, const std::string& Alias,
                                  const TZvDataSet* DataSet, QPoint Point) {
    return AddPanelInternal(Name, Alias, DataSet, false, Point);
}

TZvStoredProc* TZvWorkArea::AddProc(const std::string& Name, const std::string& Alias,
                                    const TZvDataSet* DataSet, const TZvParams* Params) {
    return AddProcInternal(Name, Alias, DataSet, Params, true, QPoint());
}

TZvStoredProc* TZvWorkArea::AddProcAt(const std::string& Name, const std::string& Alias,
                                      const TZvDataSet* DataSet, const TZvParams* Params, QPoint Point) {
    return AddProcInternal(Name, Alias, DataSet, Params, false, Point);
}

namespace {

std::string AliasOrName(const std::string& Name, const std::string& Alias) {
    return Trim(Alias).empty() ? Name : Alias;
}

} // namespace

TZvTable* TZvWorkArea::AddPanelInternal(const std::string& Name, const std::string& Alias,
                                        const TZvDataSet* DataSet, bool AutoPlace, QPoint Point) {
    const std::string Unique = GenerateUniqueAlias(AliasOrName(Name, Alias), "TABLE_");
    SetSelected(nullptr);
    auto Table = std::make_unique<TZvTable>(this, DataSet, Name);
    if (Unique != Name)
        Table->SetAlias(Unique);
    return PlaceNewTable(std::move(Table), AutoPlace, Point);
}

TZvStoredProc* TZvWorkArea::AddProcInternal(const std::string& Name, const std::string& Alias,
                                            const TZvDataSet* DataSet, const TZvParams* Params,
                                            bool AutoPlace, QPoint Point) {
    const std::string Unique = GenerateUniqueAlias(AliasOrName(Name, Alias), "PROC_");
    SetSelected(nullptr);
    auto Proc = std::make_unique<TZvStoredProc>(this, DataSet, Params, Name);
    if (Unique != Name)
        Proc->SetAlias(Unique);
    return PlaceNewTable(std::move(Proc), AutoPlace, Point);
}

// Asks the host, sizes and places the new object, puts it in front and selects it.
template <class TObject>
TObject* TZvWorkArea::PlaceNewTable(std::unique_ptr<TObject> Table, bool AutoPlace, QPoint Point) {
    if (Host && !Host->DoAddRemoveTable(*Table, zvaAdd))
        return nullptr;
    const int CaptionNeeds = Table->CaptionRect(false).width() + Table->GetCaptionHeight() +
                             TZvTable::ButtonsWidth + 2 * TZvTable::BorderWidth;
    if (CaptionNeeds > Table->GetWidth())
        Table->SetBounds(QRect(Table->GetLeft(), Table->GetTop(), CaptionNeeds, Table->GetHeight()));
    const int Entry = Arrangements.IndexOf(Table->GetAlias());
    if (Entry >= 0)
        Table->SetExpandQuietly(Arrangements[Entry].Expanded);
    Table->SetBounds(PlacedRect(*Table, AutoPlace, Point));
    TObject* Result = Table.get();
    Tables.insert(Tables.begin(), std::move(Table));
    if (OnAddTable)
        OnAddTable(*this, *Result);
    SetSelected(Result);
    InvalidateRect(Result->GetBoundsRect());
    return Result;
}

// Where a new table goes: its remembered place, else (50, 20); then, with automatic placement,
// pushed right past every table it would overlap, or moved to Point; never above or left of 0.
QRect TZvWorkArea::PlacedRect(const TZvTable& Table, bool AutoPlace, QPoint Point) const {
    QRect R(Table.GetLeft(), Table.GetTop(), Table.GetWidth(), Table.GetHeight());
    const int Entry = Arrangements.IndexOf(Table.GetAlias());
    if (Entry >= 0) {
        const TZvObjectArrangement& A = Arrangements[Entry];
        R = QRect(A.Left, A.Top, A.Width, A.Height);
    } else {
        R.translate(50, 20);
    }
    if (AutoPlace) {
        // Collisions are tested with the box as it shows (a collapsed table is its caption).
        const int ShownHeight = Table.GetExpand() ? R.height() : Table.GetCaptionHeight();
        for (std::size_t I = 0; I < Tables.size();) {
            const QRect Other = Tables[I]->GetBoundsRect();
            if (Other.intersects(QRect(R.topLeft(), QSize(R.width(), ShownHeight)))) {
                R.moveLeft(Other.left() + Other.width() + 10);
                I = 0;
            } else {
                ++I;
            }
        }
    } else {
        R.moveTopLeft(Point);
    }
    R.moveTopLeft(QPoint(std::max(0, R.left()), std::max(0, R.top())));
    return R;
}

TZvTable* TZvWorkArea::GetTable(const std::string& Alias) const {
    const std::string Wanted = Trim(Alias);
    if (Wanted.empty())
        return Tables.size() == 1 ? Tables.front().get() : nullptr;
    for (const auto& Table : Tables)
        if (Table->GetAlias() == Wanted)
            return Table.get();
    return nullptr;
}

int TZvWorkArea::IndexOfTable(const TZvTable* Table) const {
    return ZvIndexOfOwned(Tables, Table);
}

void TZvWorkArea::TableToFront(TZvTable* Table) {
    const int Index = IndexOfTable(Table);
    if (Index <= 0)
        return;
    std::rotate(Tables.begin(), Tables.begin() + Index, Tables.begin() + Index + 1);
    InvalidateRect(Table->GetBoundsRect());
}

void TZvWorkArea::ShowPanel(TZvTable* Table) {
    if (!Table)
        return;
    const QRect Bounds = Table->GetBoundsRect();
    const QRect Visible(QPoint(HorzScrollPos(), VertScrollPos()), viewport()->size());
    if (Bounds.left() < Visible.left() || Bounds.right() > Visible.right())
        horizontalScrollBar()->setValue(Bounds.left());
    if (Bounds.top() < Visible.top() || Bounds.bottom() > Visible.bottom())
        verticalScrollBar()->setValue(Bounds.top());
}

// ---------------------------------------------------------------------------------------------
// Messages

bool TZvWorkArea::event(QEvent* Event) {
    const int Type = Event->type();
    if (Type >= CMMoveControl && Type <= CMDeleteLink) {
        auto* Message = static_cast<TZvControlMessage*>(Event);
        try {
            DispatchMessage(*Message);
        } catch (...) {
            Message->Error = std::current_exception();
        }
        return true;
    }
    return QAbstractScrollArea::event(Event);
}

void TZvWorkArea::DispatchMessage(TZvControlMessage& Message) {
    switch (static_cast<int>(Message.type())) {
    case CMMoveControl:
    case CMResizeControl:
        MoveControl(Message.Object);
        break;
    case CMCloseTable:
        CloseTable(dynamic_cast<TZvTable*>(Message.Object));
        break;
    case CMUnlinkTable:
        UnlinkTable(dynamic_cast<TZvTable*>(Message.Object));
        break;
    case CMDeleteLink:
        DeleteLink(dynamic_cast<TZvLink*>(Message.Object));
        break;
    default:
        break;
    }
}

void TZvWorkArea::InvalidateObjectArea(const TZvFloatObject* Object) {
    const auto* Table = dynamic_cast<const TZvTable*>(Object);
    if (!Table)
        return;
    InvalidateRect(Table->GetBoundsRect());
    for (const auto& Link : Links)
        if (Link->GetJoin()->HasTable(Table))
            InvalidateRegion(Link->GetClipRgn(0));
}

void TZvWorkArea::MoveControl(TZvFloatObject* Object) {
    if (const auto* Table = dynamic_cast<const TZvTable*>(Object))
        PlaceLinksOf(*Table);
    InvalidateObjectArea(Object);
    UpdateScrollRange();
    if (Object == Selected)
        RefreshTableScrollBar();
}

void TZvWorkArea::CloseTable(TZvTable* Table) {
    if (IndexOfTable(Table) < 0)
        return;
    if (Host && !Host->DoAddRemoveTable(*Table, zvaRemove))
        return;
    // Each checked field leaves the model as if unchecked, so that the twins of its output alias
    // in other tables get their plain names back before the table itself goes.
    Table->UncheckAllQuietly();
    UnlinkTable(Table);
    InvalidateObjectArea(Table);
    std::unique_ptr<TZvTable> Owned = TakeTable(Table);
    if (OnRemoveTable)
        OnRemoveTable(*this, *Owned);
}

void TZvWorkArea::UnlinkTable(TZvTable* Table) {
    for (int I = 0; I < LinkCount();) {
        TZvLink* Link = LinkAt(I);
        if (Link->GetJoin()->HasTable(Table))
            RemoveLink(Link, I, true);
        else
            ++I;
    }
}

void TZvWorkArea::DeleteLink(TZvLink* Link) {
    const int Index = ZvIndexOfOwned(Links, Link);
    if (Index < 0)
        return;
    if (Host && !Host->DoAddRemoveLink(*Link, zvaRemove))
        return;
    RemoveLink(Link, Index, true);
}

std::unique_ptr<TZvTable> TZvWorkArea::TakeTable(TZvTable* Table) {
    ForgetObject(Table);
    const int Index = IndexOfTable(Table);
    std::unique_ptr<TZvTable> Owned = std::move(Tables[static_cast<std::size_t>(Index)]);
    Tables.erase(Tables.begin() + Index);
    return Owned;
}

// Drops every reference the surface keeps to an object that is about to go.
void TZvWorkArea::ForgetObject(const TZvFloatObject* Object) {
    if (Selected == Object)
        Selected = nullptr;
    if (HitObject == Object) {
        HitObject = nullptr;
        LastHit = htTOutSide;
    }
    if (PointDragLink == Object)
        PointDragLink = nullptr;
    if (HoverObject == Object) {
        HoverObject = nullptr;
        HoverTimer.stop();
    }
    if (AliasTable == Object) {
        AliasTable = nullptr;
        AliasEdit->hide();
    }
    if (SearchTable == Object)
        EndFieldSearch();
    if (PressObject == Object)
        PressObject = nullptr;
    if (PendingTable == Object)
        ClearPendingDrag();
    if (DragTable == Object)
        CancelDrag();
    if (DropTable == Object)
        SetDropRow(nullptr, nullptr);
    if (Selected == nullptr)
        TableScrollBar->hide();
}

void TZvWorkArea::RememberArrangement(const TZvTable& Table) {
    TZvObjectArrangement& Entry = Arrangements.Add();
    Entry.Name = Table.GetAlias();
    Entry.Left = Table.GetLeft();
    Entry.Top = Table.GetTop();
    Entry.Width = Table.GetWidth();
    Entry.Height = Table.GetHeight();
    Entry.Expanded = Table.GetExpand();
}

void TZvWorkArea::ClearContents() {
    HideEdits();
    CancelDrag();
    ClearPendingDrag();
    Selected = nullptr;
    TableScrollBar->hide();
    PressObject = nullptr;
    HitObject = nullptr;
    HoverObject = nullptr;
    PointDragLink = nullptr;
    HoverTimer.stop();
    Links.clear();
    Joins.clear();
    Arrangements.Clear();
    while (!Tables.empty()) {
        RememberArrangement(*Tables.front());
        Tables.erase(Tables.begin());
    }
    viewport()->update();
}

// ---------------------------------------------------------------------------------------------
// Selection and keyboard

void TZvWorkArea::SetSelected(TZvFloatObject* Object) {
    if (Selected == Object)
        return;
    TZvFloatObject* Old = Selected;
    Selected = Object;
    if (Old)
        Old->SetSelect(false);
    if (Object)
        Object->SetSelect(true);
}

void TZvWorkArea::ClearSelection() {
    SetSelected(nullptr);
    HideEdits();
}

void TZvWorkArea::HideEdits() {
    AliasTable = nullptr;
    AliasEdit->hide();
    EndFieldSearch();
}

void TZvWorkArea::HideHint() {
    HintTimer.stop();
    if (HintShown)
        QToolTip::hideText();
    HintShown = false;
}

// Tab selects the table painted lowest, which then comes to the front, so that repeated Tabs
// visit every table; Shift+Tab the one behind the selected table.
void TZvWorkArea::SelectNextTable(bool Backward) {
    if (Tables.empty())
        return;
    int Index = TableCount() - 1;
    if (Backward)
        Index = IndexOfTable(dynamic_cast<TZvTable*>(Selected)) + 1;
    Index = std::clamp(Index, 0, TableCount() - 1);
    SetSelected(TableAt(Index));
}

void TZvWorkArea::DeleteSelection() {
    TZvFloatObject* Object = Selected;
    Selected = nullptr;
    if (auto* Table = dynamic_cast<TZvTable*>(Object))
        Table->Close();
    else if (auto* Link = dynamic_cast<TZvLink*>(Object))
        Link->Remove();
}

bool TZvWorkArea::focusNextPrevChild(bool /*Next*/) {
    // Tab and Shift+Tab move the selection between tables rather than the focus.
    return false;
}

void TZvWorkArea::keyPressEvent(QKeyEvent* Event) {
    HideHint();
    int Key = Event->key();
    Guarded([&] {
        switch (Key) {
        case Qt::Key_Tab:
            SelectNextTable(Event->modifiers().testFlag(Qt::ShiftModifier));
            break;
        case Qt::Key_Backtab:
            SelectNextTable(true);
            break;
        case Qt::Key_Delete:
            DeleteSelection();
            break;
        case Qt::Key_Escape:
            if (DragMode != TZvDragMode::dmNone)
                CancelDrag();
            else if (Selected)
                Selected->KeyDown(Key, Event->modifiers());
            break;
        default:
            if (Selected)
                Selected->KeyDown(Key, Event->modifiers());
            break;
        }
    });
    Event->accept();
}

void TZvWorkArea::keyReleaseEvent(QKeyEvent* Event) {
    if (Selected) {
        int Key = Event->key();
        Guarded([&] { Selected->KeyUp(Key, Event->modifiers()); });
    }
    Event->accept();
}

// ---------------------------------------------------------------------------------------------
// Alias editing

void TZvWorkArea::EditAlias(TZvTable& Table) {
    SetSelected(&Table);
    AliasTable = &Table;
    const QRect Caption = ToViewport(Table.GetCaptionRect()).translated(0, 1);
    AliasEdit->setGeometry(Caption);
    AliasEdit->setFont(SurfaceFont);
    AliasEdit->setText(QString::fromStdString(Table.GetAlias()));
    AliasEdit->show();
    AliasEdit->setFocus();
}

void TZvWorkArea::CommitAliasEdit() {
    TZvTable* Table = AliasTable;
    if (!Table)
        return;
    AliasTable = nullptr; // before hiding, which takes the focus and would end the edit again
    AliasEdit->hide();
    std::string NewAlias = AliasEdit->text().toStdString();
    for (const auto& Other : Tables)
        if (Other.get() != Table && Other->GetAlias() == NewAlias)
            throw EZvError((ZvText(TZvRes::AliasExistsPrefix) + QLatin1Char(' ') +
                            QString::fromStdString(NewAlias) + QLatin1Char(' ') +
                            ZvText(TZvRes::AliasExistsSuffix))
                               .toStdString());
    if (NewAlias == Table->GetName())
        NewAlias.clear();
    std::erase(NewAlias, '.');
    const std::string OldAlias = Table->GetAlias();
    Table->SetAlias(NewAlias);
    InvalidateRect(Table->GetBoundsRect());
    if (OnChangeAlias)
        OnChangeAlias(*Table, OldAlias);
}

// ---------------------------------------------------------------------------------------------
// Mouse, hints, cursors

TZvFloatObject* TZvWorkArea::ObjectAt(QPoint Point, TTableHitTest& Hit) const {
    for (const auto& Table : Tables) {
        Hit = Table->HitTest(Point);
        if (Hit != htTOutSide)
            return Table.get();
    }
    for (auto It = Links.rbegin(); It != Links.rend(); ++It) {
        Hit = (*It)->HitTest(Point);
        if (Hit != htTOutSide)
            return It->get();
    }
    Hit = htTOutSide;
    return nullptr;
}

Qt::CursorShape TZvWorkArea::CursorForHit(TTableHitTest Hit) {
    switch (Hit) {
    case htTLeft:
    case htTRight:
        return Qt::SizeHorCursor;
    case htTTop:
    case htTBottom:
        return Qt::SizeVerCursor;
    case htTLeftTop:
    case htTRightBottom:
        return Qt::SizeFDiagCursor;
    case htTLeftBottom:
    case htTRightTop:
        return Qt::SizeBDiagCursor;
    case htTEndLine:
        return Qt::UpArrowCursor;
    case htTPoint:
        return Qt::SizeAllCursor;
    default:
        return Qt::ArrowCursor;
    }
}

bool TZvWorkArea::viewportEvent(QEvent* Event) {
    if (Event->type() == QEvent::Leave && HitObject) {
        HitObject->LeaveHit();
        HitObject = nullptr;
        LastHit = htTOutSide;
    }
    return QAbstractScrollArea::viewportEvent(Event);
}

void TZvWorkArea::mousePressEvent(QMouseEvent* Event) {
    HideHint();
    setFocus();
    TTableHitTest Hit = htTOutSide;
    TZvFloatObject* Object = ObjectAt(Event->position().toPoint(), Hit);
    PressObject = Object;
    ClearPendingDrag();
    if (Event->button() == Qt::LeftButton)
        PressPoint = ToSurface(Event->position().toPoint());
    Guarded([&] {
        if (Event->button() == Qt::LeftButton)
            SetSelected(Object);
        if (Object)
            Object->MouseDown(*Event, ToSurface(Event->position().toPoint()), Hit);
        CapturePointDrag(dynamic_cast<TZvLink*>(Object), Hit);
    });
    Event->accept();
}

// The object that got the press gets the release too, wherever the pointer is then, as a
// captured mouse works: a caption button pressed and released elsewhere is disarmed.
TZvFloatObject* TZvWorkArea::ReleaseTarget(QPoint ViewportPoint, TTableHitTest& Hit) const {
    if (PressObject) {
        Hit = PressObject->HitTest(ViewportPoint);
        return PressObject;
    }
    return ObjectAt(ViewportPoint, Hit);
}

// Hands a mouse event to the object under the pointer, in work-area coordinates. The object may
// free itself there (its close button): nothing touches it afterwards.
void TZvWorkArea::RouteToObject(QMouseEvent* Event, TZvObjectMouseHandler Handler) {
    TTableHitTest Hit = htTOutSide;
    TZvFloatObject* Object = ObjectAt(Event->position().toPoint(), Hit);
    if (Object)
        Guarded([&] { (Object->*Handler)(*Event, ToSurface(Event->position().toPoint()), Hit); });
    Event->accept();
}

void TZvWorkArea::mouseReleaseEvent(QMouseEvent* Event) {
    Event->accept();
    if (PointDragLink && Event->button() == Qt::LeftButton) {
        TZvLink* Link = std::exchange(PointDragLink, nullptr);
        PressObject = nullptr;
        Guarded([&] { Link->MouseUp(*Event, ToSurface(Event->position().toPoint()), PointDragHit); });
        return;
    }
    if (Event->button() == Qt::RightButton) {
        ShowObjectMenu(Event);
        return;
    }
    const QPoint Point = Event->position().toPoint();
    if (DragMode == TZvDragMode::dmField) {
        Guarded([&] { HandleDragDrop(Point); });
        HandleDragEnd();
        PressObject = nullptr;
        return;
    }
    if (DragMode != TZvDragMode::dmNone)
        Guarded([&] { FinishTableDrag(); });
    ClearPendingDrag();
    TTableHitTest Hit = htTOutSide;
    TZvFloatObject* Object = ReleaseTarget(Point, Hit);
    PressObject = nullptr;
    // The object may free itself there (its close button): nothing touches it afterwards.
    if (Object)
        Guarded([&] { Object->MouseUp(*Event, ToSurface(Point), Hit); });
}

// The menu of the object under the pointer, built afresh each time; nothing when the object adds
// no entries there.
void TZvWorkArea::ShowObjectMenu(QMouseEvent* Event) {
    Event->accept();
    TTableHitTest Hit = htTOutSide;
    const QPoint Point = Event->position().toPoint();
    TZvFloatObject* Object = ObjectAt(Point, Hit);
    if (!Object)
        return;
    QMenu Menu(this);
    Object->PopupMenu(Menu, ToSurface(Point), Hit);
    if (!Menu.isEmpty())
        Guarded([&] { ExecPopupMenu(Menu, viewport()->mapToGlobal(Point)); });
}

void TZvWorkArea::mouseDoubleClickEvent(QMouseEvent* Event) {
    RouteToObject(Event, &TZvFloatObject::DblClick);
}

// A link whose point is being dragged receives the moves and the release wherever the pointer
// goes, with the hit kind of the press, as a captured mouse would deliver them.
void TZvWorkArea::CapturePointDrag(TZvLink* Link, TTableHitTest Hit) {
    PointDragLink = Link && Link->GetDragPoint() >= 0 ? Link : nullptr;
    PointDragHit = Hit;
}

void TZvWorkArea::mouseMoveEvent(QMouseEvent* Event) {
    Event->accept();
    if (PointDragLink && (Event->buttons() & Qt::LeftButton)) {
        const QPoint Point = ToSurface(Event->position().toPoint());
        Guarded([&] { PointDragLink->MouseMove(*Event, Point, PointDragHit); });
        return;
    }
    if (DragMode == TZvDragMode::dmField) {
        HandleDragOver(Event->position().toPoint(), dsDragMove);
        return;
    }
    if (DragMode != TZvDragMode::dmNone) {
        DragMoveTo(ToSurface(Event->position().toPoint()));
        return;
    }
    if ((Event->buttons() & Qt::LeftButton) && StartPendingDrag(ToSurface(Event->position().toPoint()))) {
        HandleDragOver(Event->position().toPoint(), dsDragMove);
        return;
    }
    TTableHitTest Hit = htTOutSide;
    TZvFloatObject* Object = ObjectAt(Event->position().toPoint(), Hit);
    if (HitObject && HitObject != Object)
        HitObject->LeaveHit();
    HitObject = Object;
    LastHit = Hit;
    viewport()->setCursor(CursorForHit(Hit));
    if (Object) {
        Guarded([&] { Object->MouseMove(*Event, ToSurface(Event->position().toPoint()), Hit); });
        StartHover(Object);
    }
    Event->accept();
}

void TZvWorkArea::StartHover(TZvFloatObject* Object) {
    if (HoverObject == Object && (HoverTimer.isActive() || HintShown))
        return;
    HideHint();
    HoverObject = Object;
    HoverTimer.start(500, this);
}

void TZvWorkArea::timerEvent(QTimerEvent* Event) {
    if (Event->timerId() == HoverTimer.timerId()) {
        const QPoint Global = CursorPosition();
        TTableHitTest Hit = htTOutSide;
        if (!HoverObject || ObjectAt(viewport()->mapFromGlobal(Global), Hit) != HoverObject)
            return;
        const QString Hint = HoverObject->GetHint();
        if (Hint.isEmpty())
            return;
        HoverTimer.stop();
        HintText = Hint;
        HintShown = true;
        QToolTip::showText(Global, Hint, viewport());
        HintTimer.start(2000, this);
    } else if (Event->timerId() == HintTimer.timerId()) {
        HideHint();
    } else if (Event->timerId() == ScrollUpTimer.timerId()) {
        ScrollDropTable(-1);
    } else if (Event->timerId() == ScrollDownTimer.timerId()) {
        ScrollDropTable(1);
    } else {
        QAbstractScrollArea::timerEvent(Event);
    }
}

// ---------------------------------------------------------------------------------------------
// Table callbacks

void TZvWorkArea::HandleCheckItem(TZvTable& Table, TZvListItem& Item) {
    if (OnCheckField)
        OnCheckField(Table, Item);
}

void TZvWorkArea::DoEnterParameter(TZvTable& Table, TZvListItem& Item) {
    if (OnEnterParameter)
        OnEnterParameter(Table, Item);
}

// ---------------------------------------------------------------------------------------------
// Painting

// Links first and then the tables from the back to the front, so that the topmost table (index 0)
// is painted last and every table covers the links that pass behind it.
void TZvWorkArea::paintEvent(QPaintEvent* /*Event*/) {
    if (IsUpdating())
        return;
    QPainter Painter(viewport());
    Painter.fillRect(viewport()->rect(), ZvColorToQColor(Host->GetPalette()->GetWorkSpace()));
    for (const auto& Link : Links)
        Link->Paint(Painter);
    for (auto It = Tables.rbegin(); It != Tables.rend(); ++It)
        (*It)->Paint(Painter);
    PaintDragFrame(Painter);
}

} // namespace zv
