// The diagram surface: TZvWorkArea owns the floating objects (tables, stored procedures, links),
// places them without overlap, scrolls over a fixed 5000 x 5000 surface, routes mouse and keyboard
// input to them, paints them, and keeps the model's joins in step with its links. Also here: the
// base of every floating object (TZvFloatObject), the border-less edit (TZvEdit), the remembered
// table positions (TZvObjectArrangements) and the control messages objects send to the surface.
#pragma once

#include "ZvTypes.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QEvent>
#include <QFont>
#include <QLineEdit>
#include <QPen>
#include <QPoint>
#include <QRect>
#include <QRegion>

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QMenu;
class QMouseEvent;
class QPainter;
class QScrollBar;

namespace zv {

class TCustomZevrin;
class TZvSelectParser;
class TZvFloatObject;
class TZvTable;
class TZvStoredProc;
class TZvListItem;
class TZvJoin;
class TZvLink;
class TZvWorkArea;

enum TTableHitTest : std::uint8_t {
    htTOutSide,
    htTLeft,
    htTTop,
    htTRight,
    htTBottom,
    htTLeftTop,
    htTLeftBottom,
    htTRightTop,
    htTRightBottom,
    htTCaption,
    htTClient,
    htTEndLine,
    htTPoint,
    htTbutton,
    htTCheck,
};
using TSetOfTableHits = std::uint16_t; // bit n stands for the hit kind n
constexpr TSetOfTableHits TableHitBit(TTableHitTest Hit) {
    return static_cast<TSetOfTableHits>(1u << Hit);
}

// The shift state the object mouse hooks receive.
enum TShiftStateFlag : std::uint8_t { ssShift = 1, ssCtrl = 2, ssLeft = 4, ssRight = 8, ssMiddle = 16 };
using TShiftState = std::uint8_t;

// The control messages objects send to their work area, with the numbers the component has always
// used (control-message base 0xB000 plus 0x67 ... 0x6B; inside Qt's user event range).
inline constexpr QEvent::Type CMMoveControl = static_cast<QEvent::Type>(0xB067);
inline constexpr QEvent::Type CMResizeControl = static_cast<QEvent::Type>(0xB068);
inline constexpr QEvent::Type CMCloseTable = static_cast<QEvent::Type>(0xB069);
inline constexpr QEvent::Type CMUnlinkTable = static_cast<QEvent::Type>(0xB06A);
inline constexpr QEvent::Type CMDeleteLink = static_cast<QEvent::Type>(0xB06B);

// One control message: the object it is about, and the exception its handling raised, if any,
// which ZvSendMessage rethrows to the sender once Qt's dispatch has returned.
class TZvControlMessage : public QEvent {
public:
    TZvControlMessage(QEvent::Type AType, TZvFloatObject* AObject) : QEvent(AType), Object(AObject) {}
    TZvFloatObject* Object;
    std::exception_ptr Error;
};

// Sends the message synchronously; an exception raised while it was handled is rethrown here,
// so it reaches the sender without ever unwinding through Qt's event dispatch.
void ZvSendMessage(QObject* Receiver, QEvent::Type Type, TZvFloatObject* Object);

// Index of Item in a list of owned objects; -1 when it is not there.
template <class T>
int ZvIndexOfOwned(const std::vector<std::unique_ptr<T>>& List, const void* Item) {
    for (std::size_t I = 0; I < List.size(); ++I)
        if (List[I].get() == Item)
            return static_cast<int>(I);
    return -1;
}

// What a held mouse button is doing on the surface: moving a table by its caption, resizing it by
// a border or corner (both drawn as a frame until the button is released), or dragging a field
// row towards a row of another table.
enum class TZvDragMode : std::uint8_t { dmNone, dmMove, dmResize, dmField };

// The states a drag passes over a table in, as HandleDragOver receives them.
enum TZvDragState : std::uint8_t { dsDragEnter, dsDragLeave, dsDragMove };

using TZvObjectMouseEvent =
    std::function<void(TZvFloatObject& Sender, Qt::MouseButton Button, TShiftState Shift, int X, int Y)>;
using TZvObjectMouseMoveEvent = std::function<void(TZvFloatObject& Sender, TShiftState Shift, int X, int Y)>;

// The base of everything that floats on the work area. Objects are not windows: the work area
// hit-tests them, routes input to them and asks them to paint. Geometry is in work-area
// coordinates (unscrolled).
class TZvFloatObject {
public:
    explicit TZvFloatObject(TZvWorkArea* AWorkArea) : WorkArea(AWorkArea) {}
    virtual ~TZvFloatObject() = default;
    TZvFloatObject(const TZvFloatObject&) = delete;
    TZvFloatObject& operator=(const TZvFloatObject&) = delete;

    TZvWorkArea* GetWorkArea() const { return WorkArea; }
    bool GetSelected() const { return Selected; }
    // Stores the flag; selecting a table also brings it to the front of the table list.
    virtual void SetSelect(bool Value);
    virtual QString GetHint() = 0;
    // Paints onto the work area's viewport; the painter is in viewport coordinates.
    virtual void Paint(QPainter& Painter) = 0;
    // Translate the event into a button and shift state, call the hook when set and accept the
    // event. Point is in work-area coordinates.
    virtual void MouseDown(QMouseEvent& Event, QPoint Point, TTableHitTest Hit);
    virtual void MouseMove(QMouseEvent& Event, QPoint Point, TTableHitTest Hit);
    virtual void MouseUp(QMouseEvent& Event, QPoint Point, TTableHitTest Hit);
    virtual void DblClick(QMouseEvent& /*Event*/, QPoint /*Point*/, TTableHitTest /*Hit*/) {}
    // Key may be set to 0 to mark the key as consumed.
    virtual void KeyDown(int& /*Key*/, Qt::KeyboardModifiers /*Shift*/) {}
    virtual void KeyUp(int& /*Key*/, Qt::KeyboardModifiers /*Shift*/) {}
    virtual void LeaveHit() {}
    // Point in viewport (window) coordinates.
    virtual TTableHitTest HitTest(QPoint Point) = 0;
    virtual void PopupMenu(QMenu& Menu, QPoint Point, TTableHitTest Hit) = 0;

    // The shift state of a mouse event, and the button it is about (middle before right before
    // left when several are held).
    static TShiftState ShiftOf(const QMouseEvent& Event);
    static Qt::MouseButton ButtonOf(const QMouseEvent& Event);

    TZvObjectMouseEvent OnMouseDown;
    TZvObjectMouseEvent OnMouseUp;
    TZvObjectMouseMoveEvent OnMouseMove;

protected:
    TZvWorkArea* WorkArea;
    bool Selected = false;
};

// A single-line edit without a frame, laid over a table object.
class TZvEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit TZvEdit(QWidget* Parent);
    // Called after a key is released, with its code (Enter 13, Escape 27 as the component
    // knows them; other keys as Qt::Key values).
    std::function<void(TZvEdit& Sender, int Key, Qt::KeyboardModifiers Shift)> OnKeyUp;
    // Called when the edit loses the focus.
    std::function<void(TZvEdit& Sender)> OnExit;

protected:
    void keyReleaseEvent(QKeyEvent* Event) override;
    void focusOutEvent(QFocusEvent* Event) override;
};

// One remembered table position.
struct TZvObjectArrangement {
    std::string Name; // the table alias
    int Top = 0;
    int Left = 0;
    int Width = 0;
    int Height = 0;
    bool Expanded = true;
};

// The remembered positions, in the order they were recorded.
class TZvObjectArrangements {
public:
    TZvObjectArrangement& Add() { return Entries.emplace_back(); }
    int Count() const { return static_cast<int>(Entries.size()); }
    // The entry at Index; std::out_of_range outside 0 .. Count() - 1.
    TZvObjectArrangement& Items(int Index) { return Entries.at(static_cast<std::size_t>(Index)); }
    const TZvObjectArrangement& Items(int Index) const { return Entries.at(static_cast<std::size_t>(Index)); }
    TZvObjectArrangement& operator[](int Index) { return Items(Index); }
    const TZvObjectArrangement& operator[](int Index) const { return Items(Index); }
    // Index of the entry named exactly Name; -1 when none.
    int IndexOf(const std::string& Name) const;
    void Clear() { Entries.clear(); }

private:
    std::vector<TZvObjectArrangement> Entries;
};

using TZvTableEvent = std::function<void(TZvWorkArea& Sender, TZvTable& Table)>;
using TZvChangeAliasEvent = std::function<void(TZvTable& Sender, const std::string& OldAlias)>;
using TZvTableItemEvent = std::function<void(TZvTable& Table, TZvListItem& Item)>;
using TZvSelectLinkEvent =
    std::function<void(TZvWorkArea& Sender, TZvListItem* Item1, TZvListItem* Item2, bool Select)>;
using TZvLinkEvent = std::function<void(TZvWorkArea& Sender, TZvLink& Link)>;
using TSetFontEvent = std::function<void(const QFont& Value)>;

class TZvWorkArea : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr int SurfaceWidth = 5000;
    static constexpr int SurfaceHeight = 5000;

    // Owner must be a host component; any other raises EZvError "Given parent is not valid for
    // work area!" and nothing is made.
    explicit TZvWorkArea(QWidget* Owner);
    ~TZvWorkArea() override;

    TCustomZevrin* GetHost() const { return Host; }
    TZvSelectParser* GetParser() const;
    // Case-insensitive unless the parser says identifiers are case-sensitive; exact without one.
    bool SameIdentifier(const std::string& A, const std::string& B) const;
    bool GetDragFieldName() const;

    // --- tables ---
    // Add a table (stored procedure) object, placed automatically or at Point (work-area
    // coordinates). Return the new object, or null when the host vetoed it.
    TZvTable* AddPanel(const std::string& Name, const std::string& Alias, const TZvDataSet* DataSet);
    TZvTable* AddPanelAt(const std::string& Name, const std::string& Alias, const TZvDataSet* DataSet,
                         QPoint Point);
    TZvStoredProc* AddProc(const std::string& Name, const std::string& Alias, const TZvDataSet* DataSet,
                           const TZvParams* Params);
    TZvStoredProc* AddProcAt(const std::string& Name, const std::string& Alias, const TZvDataSet* DataSet,
                             const TZvParams* Params, QPoint Point);
    TZvTable* AddPanelInternal(const std::string& Name, const std::string& Alias, const TZvDataSet* DataSet,
                               bool AutoPlace, QPoint Point);
    TZvStoredProc* AddProcInternal(const std::string& Name, const std::string& Alias,
                                   const TZvDataSet* DataSet, const TZvParams* Params, bool AutoPlace,
                                   QPoint Point);
    // Name made unique among the table aliases (see the algorithm in the source).
    std::string GenerateUniqueAlias(const std::string& Name, const std::string& Prefix) const;
    // The table whose alias equals the trimmed argument exactly; for an empty argument the only
    // table when there is exactly one; otherwise null.
    TZvTable* GetTable(const std::string& Alias) const;
    int TableCount() const { return static_cast<int>(Tables.size()); }
    // Front to back: index 0 is the topmost.
    TZvTable* TableAt(int Index) const { return Tables.at(static_cast<std::size_t>(Index)).get(); }
    int IndexOfTable(const TZvTable* Table) const;
    // Moves Table to index 0; the others keep their order. Nothing for a table not in the list.
    void TableToFront(TZvTable* Table);
    // Scrolls so that the table is visible.
    void ShowPanel(TZvTable* Table);

    // --- links (ZvWorkAreaLinks.cpp) ---
    // Links Item1 of Table1 to Item2 of Table2, in the join of the two tables (made when there is
    // none yet), and records the join in the model unless the model holds it already, in which
    // case the link takes the model's operator (and, for a new join, its kind). Asks the host
    // first. Returns the new link; the existing one when the two rows are linked already; null
    // when the host refused, a row is not of its table, or both tables are one.
    TZvLink* AddLink(TZvTable* Table1, TZvTable* Table2, TZvListItem* Item1, TZvListItem* Item2);
    // Removes the link at Index and its join definition, with the joins against constants that
    // belonged to it; the join goes with its last link. Redraw repaints and deselects the rows.
    void RemoveLink(TZvLink* Link, int Index, bool Redraw);
    TZvJoin* FindJoin(const TZvTable* Table1, const TZvTable* Table2) const;
    TZvLink* FindLink(const TZvTable* Table1, const TZvTable* Table2, const TZvListItem* Item1,
                      const TZvListItem* Item2) const;
    int FindLinkByID(const std::string& ID) const;
    int LinkCount() const { return static_cast<int>(Links.size()); }
    TZvLink* LinkAt(int Index) const { return Links.at(static_cast<std::size_t>(Index)).get(); }
    int JoinCount() const { return static_cast<int>(Joins.size()); }
    // Selects the link (null clears the selection); the select-link hook hears it.
    void SelectLink(TZvLink* Link);
    // Raises the select-link hook: a link's rows were selected or deselected.
    void SelectLink(TZvListItem* Item1, TZvListItem* Item2, bool Select);
    // Stores the kind of join in the link's join and in every model join between its two tables,
    // and the operator in the link and its model join; then raises the change-link hook.
    void ApplyLinkProperties(TZvLink& Link, int JoinType, const std::string& Operator);
    // True when a field row may be linked to another: rows of two different tables, both field
    // rows, and with CheckLinkFieldsType, of one class of field types.
    bool CanLinkItems(const TZvListItem* Source, const TZvListItem* Target) const;
    // Links the field row Source to Target when CanLinkItems allows it: what a row dropped on a
    // row does. Returns the link, or null when nothing was linked.
    TZvLink* LinkRows(TZvListItem* Source, TZvListItem* Target);
    // The row of the table under Point (viewport coordinates) that a dragged row would be dropped
    // on; null when none.
    TZvListItem* DropTargetItem(QPoint Point) const;
    // Dropping the field row Source at Point (viewport coordinates): LinkRows with the row there.
    TZvLink* HandleDragDrop(TZvListItem* Source, QPoint Point);
    // Places the ends of every link of Table anew, after the table moved, resized or scrolled.
    void PlaceLinksOf(const TZvTable& Table);
    // Re-places and repaints the links of Table after its rows scrolled.
    void FollowScrolledRows(const TZvTable& Table);
    const QPen& GetLinkPen() const { return LinkPen; }
    void SetLinkPen(const QPen& Value);

    // --- selection, contents, updates ---
    TZvFloatObject* GetSelected() const { return Selected; }
    // Deselects the old selection and selects Object (null clears it).
    void SetSelected(TZvFloatObject* Object);
    void ClearSelection();
    void ClearContents();
    void BeginUpdate() { ++UpdateCount; }
    void EndUpdate();
    bool IsUpdating() const { return UpdateCount > 0; }
    TZvObjectArrangements& GetArrangements() { return Arrangements; }

    // --- alias editing (the edit over a table caption) ---
    // Shows the alias edit over Table's caption, holding its alias, focused.
    void EditAlias(TZvTable& Table);
    // Ends the alias edit: the edit is hidden and its text becomes the alias (see the source).
    // Raises EZvError when another table already has the alias.
    void CommitAliasEdit();
    TZvEdit* GetAliasEdit() const { return AliasEdit; }
    TZvEdit* GetSearchEdit() const { return SearchEdit; }

    // --- geometry and painting ---
    int HorzScrollPos() const;
    int VertScrollPos() const;
    // A work-area rectangle shifted into viewport coordinates.
    QRect ToViewport(const QRect& R) const { return R.translated(-HorzScrollPos(), -VertScrollPos()); }
    // Repaints R (work-area coordinates), unless updating.
    void InvalidateRect(const QRect& R);
    void InvalidateRegion(const QRegion& R);
    // Repaints a table's box and every link attached to it.
    void InvalidateObjectArea(const TZvFloatObject* Object);
    // The front-most object under Point (viewport coordinates) and its hit kind: tables in list
    // order, then links.
    TZvFloatObject* ObjectAt(QPoint Point, TTableHitTest& Hit) const;
    // The cursor for a hit kind (the sizing cursors on borders and corners).
    static Qt::CursorShape CursorForHit(TTableHitTest Hit);
    const QFont& GetFont() const { return SurfaceFont; }
    void SetFont(const QFont& Value);
    // Called by table objects when a field row's check changes.
    void HandleCheckItem(TZvTable& Table, TZvListItem& Item);
    // Called by a stored procedure's parameter row asking for value entry.
    void DoEnterParameter(TZvTable& Table, TZvListItem& Item);
    // The vertical scroll bar the selected table borrows when it has more rows than it shows.
    QScrollBar* GetTableScrollBar() const { return TableScrollBar; }
    // Shows the shared scroll bar along the selected table when the table wants it, else hides it.
    void RefreshTableScrollBar();
    // Table's rows moved by Dy pixels: the client pixels are shifted and only the uncovered strip
    // repainted when nothing lies over the table, else the client area is repainted.
    void ScrollClientArea(const TZvTable& Table, int Dy);

    // --- dragging tables and field rows ---
    // Arms a move (Hit htTCaption) or a resize (a border or corner) of Table from the work-area
    // point Point; the drag shows as a frame and is applied when the button is released.
    void BeginTableDrag(TZvTable& Table, TTableHitTest Hit, QPoint Point);
    // Arms the drag of Item: it starts once the pointer, the button still held, is the platform's
    // drag distance away from where the button went down, wherever the pointer is by then. Point
    // is the pointer in work-area coordinates.
    void BeginFieldDrag(TZvTable& Table, TZvListItem& Item, QPoint Point);
    // Starts the drag of a field row: the cursor shows "alias.field" when GetDragFieldName is true,
    // the standard drag cursor otherwise.
    void DoStartDrag(TZvTable& Table, TZvListItem& Item);
    // The pointer (viewport coordinates) is over the surface while a row is dragged: finds the
    // table to drop on, runs the scroll timers near its top and bottom, and marks the row under it.
    void HandleDragOver(QPoint Point, TZvDragState State);
    // The row was released at Point (viewport coordinates): a drop on a row of another table links
    // the two rows.
    void HandleDragDrop(QPoint Point);
    // Ends any drag: scroll timers stopped, drop marks cleared, the cursor restored.
    void HandleDragEnd();
    TZvDragMode GetDragMode() const { return DragMode; }
    // The frame a table move or resize shows (work-area coordinates); empty when none.
    QRect GetDragFrame() const { return DragFrame; }
    TZvTable* GetDragTable() const { return DragTable; }
    TZvListItem* GetDragItem() const { return DragItem; }
    TZvTable* GetDropTable() const { return DropTable; }
    TZvListItem* GetDropItem() const { return DropItem; }
    // The text the drag cursor shows ("alias.field"); empty for the standard drag cursor.
    QString GetDragCursorText() const { return DragCursorText; }
    bool IsScrollTimerActive(int Id) const;

    // --- the field search edit ---
    // Selects Table, shows the search edit at its top-left holding the character of Key, focused,
    // and runs the search once.
    void StartFieldSearch(TZvTable& Table, int Key);
    // Hides the search edit; the work area takes the focus back when the edit had it.
    void EndFieldSearch();
    TZvTable* GetSearchTable() const { return SearchTable; }

    // The shared hint text, shown by the hover timer.
    QString GetHintText() const { return HintText; }
    bool IsHintShown() const { return HintShown; }

    bool GetCheckLinkFieldsType() const { return CheckLinkFieldsType; }
    void SetCheckLinkFieldsType(bool Value) { CheckLinkFieldsType = Value; }

    // Hooks to the host.
    TZvTableEvent OnAddTable;
    TZvTableEvent OnRemoveTable;
    TZvChangeAliasEvent OnChangeAlias;
    TZvTableItemEvent OnCheckField;
    TZvTableItemEvent OnAddRemoveField;
    TZvTableItemEvent OnEnterParameter;
    TZvSelectLinkEvent OnSelectLink;
    TZvLinkEvent OnRemoveLink;
    // A link's kind or operator was stored (ApplyLinkProperties): the model's joins changed without
    // a link being added or removed.
    TZvLinkEvent OnChangeLink;
    TSetFontEvent SetFontHook;

    // The hover timer's pointer position, in global coordinates; replaceable so that tests can
    // place the pointer without a real one.
    static std::function<QPoint()> CursorPosition;
    // Runs an object's context menu at a global position; replaceable so that tests can choose an
    // entry instead of a modal menu waiting.
    static std::function<void(QMenu& Menu, QPoint At)> ExecPopupMenu;

protected:
    bool event(QEvent* Event) override;
    bool viewportEvent(QEvent* Event) override;
    void paintEvent(QPaintEvent* Event) override;
    void resizeEvent(QResizeEvent* Event) override;
    void scrollContentsBy(int Dx, int Dy) override;
    void mousePressEvent(QMouseEvent* Event) override;
    void mouseReleaseEvent(QMouseEvent* Event) override;
    void mouseDoubleClickEvent(QMouseEvent* Event) override;
    void mouseMoveEvent(QMouseEvent* Event) override;
    void keyPressEvent(QKeyEvent* Event) override;
    void keyReleaseEvent(QKeyEvent* Event) override;
    void timerEvent(QTimerEvent* Event) override;
    bool focusNextPrevChild(bool Next) override;

private:
    static QWidget* CheckedOwner(QWidget* Owner);
    using TZvObjectMouseHandler = void (TZvFloatObject::*)(QMouseEvent&, QPoint, TTableHitTest);
    void RouteToObject(QMouseEvent* Event, TZvObjectMouseHandler Handler);
    void ShowObjectMenu(QMouseEvent* Event);
    void CapturePointDrag(TZvLink* Link, TTableHitTest Hit);
    template <class TObject>
    TObject* PlaceNewTable(std::unique_ptr<TObject> Table, bool AutoPlace, QPoint Point);
    QRect PlacedRect(const TZvTable& Table, bool AutoPlace, QPoint Point) const;
    void DispatchMessage(TZvControlMessage& Message);
    void MoveControl(TZvFloatObject* Object);
    void CloseTable(TZvTable* Table);
    void UnlinkTable(TZvTable* Table);
    void DeleteLink(TZvLink* Link);
    std::unique_ptr<TZvTable> TakeTable(TZvTable* Table);
    void ForgetObject(const TZvFloatObject* Object);
    void RememberArrangement(const TZvTable& Table);
    void RecordModelJoin(const TZvLink& Link);
    void DropModelJoin(const TZvLink& Link);
    void SelectNextTable(bool Backward);
    void DeleteSelection();
    void HideEdits();
    void HideHint();
    void UpdateScrollRange();
    QPoint ToSurface(QPoint ViewportPoint) const;
    void StartHover(TZvFloatObject* Object);
    void DragMoveTo(QPoint SurfacePoint);
    bool StartPendingDrag(QPoint SurfacePoint);
    void ClearPendingDrag();
    void FinishTableDrag();
    void CancelDrag();
    void SetDragFrame(const QRect& Frame);
    void InvalidateFrame(const QRect& Frame);
    void PaintDragFrame(QPainter& Painter) const;
    void SetDropRow(TZvTable* Table, TZvListItem* Item);
    void ScrollDropTable(int Step);
    TZvTable* DropTargetAt(QPoint ViewportPoint) const;
    void StopScrollTimers();
    TZvFloatObject* ReleaseTarget(QPoint ViewportPoint, TTableHitTest& Hit) const;
    // Runs a user action; an exception is shown through the error display.
    template <class TAction>
    void Guarded(TAction&& Action);

    TCustomZevrin* Host;
    std::vector<std::unique_ptr<TZvLink>> Links;
    std::vector<std::unique_ptr<TZvJoin>> Joins;
    std::vector<std::unique_ptr<TZvTable>> Tables;
    TZvFloatObject* Selected = nullptr;
    TZvFloatObject* HitObject = nullptr;
    TZvLink* PointDragLink = nullptr; // the link whose point is being dragged
    TTableHitTest PointDragHit = htTOutSide;
    TTableHitTest LastHit = htTOutSide;
    TZvTable* AliasTable = nullptr;
    TZvEdit* AliasEdit;
    TZvEdit* SearchEdit;
    TZvObjectArrangements Arrangements;
    QFont SurfaceFont;
    int UpdateCount = 0;
    bool CheckLinkFieldsType = true;
    QPen LinkPen{Qt::black};
    QBasicTimer HoverTimer; // timer 10
    QBasicTimer HintTimer;  // timer 11
    TZvFloatObject* HoverObject = nullptr;
    QString HintText;
    bool HintShown = false;
    QScrollBar* TableScrollBar;
    TZvTable* SearchTable = nullptr;

    // The drag in progress, if any.
    TZvDragMode DragMode = TZvDragMode::dmNone;
    TZvTable* DragTable = nullptr;
    TZvListItem* DragItem = nullptr;
    TTableHitTest DragHit = htTOutSide;
    TZvFloatObject* PressObject = nullptr; // receives the release of the press it got
    TZvTable* PendingTable = nullptr;      // a field drag armed, not yet past the drag distance
    TZvListItem* PendingItem = nullptr;
    QPoint PressPoint;                     // work-area point of the last left-button press
    QRect DragFrame;
    TZvTable* DropTable = nullptr;
    TZvListItem* DropItem = nullptr;
    QPoint AutoScrollPoint; // work-area point of a drag in a scroll band, while AutoScrollSet
    bool AutoScrollSet = false;
    QString DragCursorText;
    QBasicTimer ScrollUpTimer;   // timer 1
    QBasicTimer ScrollDownTimer; // timer 2
};

} // namespace zv
