// A table on the diagram: TZvTable, a framed box with a caption band (name and alias) above a list
// of field rows (TZvListItem) with check boxes. Checking a row makes its field an output field;
// the work area reports the change to the host, which updates the model. Geometry is kept apart
// from painting and can be computed without a window.
#pragma once

#include "ZvFloatPanel.h"
#include "ZvTypes.h"
#include "ZvWindowStyles.h"

#include <QFlags>
#include <QFont>
#include <QRect>
#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace zv {

// How a row is drawn: the current row, the rows of the selected table, the row a dragged field
// row would be dropped on.
enum TZvItemState : std::uint8_t { isSelected = 1, isFocused = 2, isDroped = 4 };
Q_DECLARE_FLAGS(TZvItemStates, TZvItemState)
Q_DECLARE_OPERATORS_FOR_FLAGS(TZvItemStates)

// What every row of one paint shares: the colours, the plain and bold fonts, whether type names
// show.
struct TZvRowLook {
    const TZvPalette& Colors;
    QFont Font;
    QFont BoldFont;
    bool ShowTypes;
};

class TZvListItem {
public:
    TZvListItem(TZvTable* ATable, std::string AName, std::string AFieldName, TFieldType AFieldType,
                TParamType AParamType);

    TZvTable* GetTable() const { return Table; }
    const std::string& GetName() const { return Name; }
    const std::string& GetFieldName() const { return FieldName; }
    TFieldType GetFieldType() const { return FieldType; }
    TParamType GetParamType() const { return ParamType; }
    // Only rows of kind output (every row of an ordinary table) take part in checking, the header
    // check box and links; input and input/output rows are stored-procedure parameters.
    bool IsFieldRow() const { return ParamType == ptOutput; }
    bool IsParameterRow() const { return ParamType == ptInput || ParamType == ptInputOutput; }
    const TZvValue& GetValue() const { return Value; }
    void SetValue(TZvValue V) { Value = std::move(V); }
    bool GetCheck() const { return Check; }
    bool GetSelect() const { return Select; }
    bool GetEnabled() const { return Enabled; }
    bool GetReadOnly() const { return ReadOnly; }
    void SetReadOnly(bool V) { ReadOnly = V; }
    // While set, a check change is not fed back into the model (the host sets it while it lays
    // out a statement that already holds the field).
    bool GetNoFeedback() const { return NoFeedback; }
    void SetNoFeedback(bool V) { NoFeedback = V; }

    // Stores the check and repaints the row; a field row reports the change to the work area
    // (and so to the model); then UpdateCheck.
    void SetCheck(bool B);
    // Stores the check, repaints the row and brings the table's header state up to date.
    void UpdateCheck(bool B);
    void SetSelect(bool B);
    // Position in the table's rows.
    int GetIndex() const;
    // The row's rectangle where links attach (work-area coordinates).
    QRect GetBoundsRect() const;
    // The type name shown after the field name.
    QString GetDataName() const;
    // The row's text: " " and the name, then " (" type name ")" when ShowTypes is set (also when
    // the type has no name, so that such a field shows an empty pair of brackets).
    QString GetDisplayText(bool ShowTypes) const;
    // Draws the row into Rect (viewport coordinates) in State.
    void DrawItem(QPainter& Painter, const QRect& Rect, TZvItemStates State, const TZvRowLook& Look) const;

private:
    friend class TZvTable;

    TZvTable* Table;
    std::string Name;
    TZvValue Value;
    TFieldType FieldType;
    TParamType ParamType;
    bool Check = false;
    bool Select = false;
    bool Enabled = true;
    bool ReadOnly = false;
    bool NoFeedback = false;
    std::string FieldName;
};

// The states a caption button is drawn in.
enum TZvButtonState : std::uint8_t { bsPressed, bsNormal, bsHot };

class TZvTable : public TZvFloatObject {
public:
    static constexpr int ButtonsWidth = 40;
    static constexpr int BorderWidth = 2;
    static constexpr int Margin = 2;
    static constexpr int ScrollBarWidth = 16;
    static constexpr int MaxInitialVisible = 6;

    // Raises EZvError "Invalid parent for table object!" without a work area. DataSet may be null
    // (a table without fields).
    TZvTable(TZvWorkArea* AWorkArea, const TZvDataSet* DataSet, std::string AName);
    ~TZvTable() override;

    // Rebuilds the rows from the data set's fields; a dotted field name goes through the host's
    // name quoting.
    void AssignItems(const TZvDataSet* DataSet);

    const std::string& GetName() const { return Name; }
    // The alias as set (may be empty or blank).
    const std::string& GetRawAlias() const { return Alias; }
    void SetAlias(std::string Value);
    // The alias when it is not blank, else the name.
    const std::string& GetAlias() const;
    // The name, then " (alias)" when the trimmed alias is not empty and differs from the name.
    std::string GetCaption() const;
    QString GetHint() override { return Hint; }

    int GetFieldState() const { return FieldState; }
    // The caption button held down (0..2), -1 for none; the one under the pointer, -1 for none.
    int GetPressedButton() const { return PressedButton; }
    int GetHotButton() const { return HotButton; }
    // Clamps to 0..2; when changed repaints the caption and stores it.
    void UpdateFieldState(int State);
    // UpdateFieldState, then every field row's check set to State == 2, each reported.
    void SetFieldState(int State);

    int ItemCount() const { return static_cast<int>(Items.size()); }
    TZvListItem* GetItem(int Index) const { return Items.at(static_cast<std::size_t>(Index)).get(); }
    int IndexOfItem(const TZvListItem* Item) const;
    // The row named Name (through the work area's identifier comparison); null when none.
    TZvListItem* GetFieldItem(const std::string& FieldName) const;
    TZvListItem* GetCurrentItem() const { return CurrentItem; }
    void SetCurrentItem(TZvListItem* Item);

    // --- geometry (work-area coordinates; right and bottom exclusive) ---
    int GetLeft() const { return Left; }
    int GetTop() const { return Top; }
    int GetWidth() const { return Width; }
    // The height when expanded.
    int GetHeight() const { return Height; }
    bool GetExpand() const { return Expand; }
    int GetCaptionHeight() const { return CaptionHeight; }
    int GetItemHeight() const { return ItemHeight; }
    int GetVisibleCount() const { return VisibleCount; }
    int GetFirstVisibleItem() const { return FirstVisibleItem; }
    void SetLeft(int Value) { MoveTable(Value - Left, 0); }
    void SetTop(int Value) { MoveTable(0, Value - Top); }
    void SetTopLeft(QPoint Value) { MoveTable(Value.x() - Left, Value.y() - Top); }
    // Moves the box and tells the work area (CMMoveControl).
    void MoveTable(int Dx, int Dy);
    // At least MinWidth wide; tells the work area (CMResizeControl).
    void SetWidth(int Value);
    // At least MinHeight high; recomputes the visible rows.
    void SetHeight(int Value);
    // Move the left (top) edge by D while the right (bottom) edge stays, under the same minimums.
    void MoveLeft(int D);
    void MoveUpper(int D);
    int MinWidth() const { return CaptionHeight + ButtonsWidth + 20; }
    int MinHeight() const { return 2 * ItemHeight + CaptionHeight + 4; }
    // The bounds after dragging the border or corner Edge by (Dx, Dy), kept to the minimums with
    // the opposite edges in place: what a resize drag shows and then applies.
    QRect ResizedRect(TTableHitTest Edge, int Dx, int Dy) const;
    // Applies a rectangle from ResizedRect through MoveLeft, MoveUpper, SetWidth and SetHeight.
    void ResizeTo(const QRect& R);
    void SetExpand(bool Value);
    void SetItemHeight(int Value);
    void SetFirstVisibleItem(int Value);

    QRect GetBoundsRect() const;
    QRect GetCaptionRect() const;
    QRect GetClientRect() const;
    QRect GetButtonRect() const;
    // The row's rectangle; empty for a row of another table.
    QRect GetItemRect(const TZvListItem* Item) const;
    QRect GetFullItemRect(const TZvListItem* Item) const;
    // The caption text's extent: as wide as the text in the bold surface font plus 2.
    QRect CaptionRect(bool AlignRight) const;
    // The row under the work-area point; null when none.
    TZvListItem* GetItemAt(int X, int Y) const;
    // Point in viewport coordinates.
    TTableHitTest HitTest(QPoint Point) override;

    // --- interaction the work area routes here ---
    void SetSelect(bool Value) override;
    // The caption check box checks all rows or, when all are checked, none; a press on a caption
    // button arms it; a press on a row makes it current.
    void MouseDown(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) override;
    // Sets the hint for the part under the pointer.
    void MouseMove(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) override;
    // Releasing over the armed caption button runs it (collapse/expand, unlink, close); releasing
    // on the current row's check square toggles its check.
    void MouseUp(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) override;
    void DblClick(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) override;
    void PopupMenu(QMenu& Menu, QPoint Point, TTableHitTest Hit) override;
    void LeaveHit() override;
    // Enter and Space toggle the current row's check; the navigation keys move the current row;
    // a digit or letter starts the field search.
    void KeyDown(int& Key, Qt::KeyboardModifiers Shift) override;
    void Paint(QPainter& Painter) override;
    // Draws caption button Index (0..2) in State; other indices draw nothing.
    void DrawButton(QPainter& Painter, TZvButtonState State, int Index) const;
    // The frame of caption button Index in work-area coordinates (b + 1 square, b the bitmap width).
    QRect GetButtonFrame(int Index) const;
    // The colour of the client area: TableClient here, ProcClient for a stored procedure.
    virtual TColor GetClientColor() const;

    // Unchecks every checked row (each reported), raises the work area's remove-table hook and
    // sends CMCloseTable: the work area removes and frees this object, which must not be touched
    // after Close returns.
    void Close();
    // Sends CMUnlinkTable: every link of this table goes.
    void Unlink();
    // Shows the alias edit over the caption.
    void HandleRenameTable();
    // The context menu's "Delete table": Close.
    void HandleRemoveTable() { Close(); }
    // A key released in the search edit: Enter, Escape, Up, Down, PgUp and PgDn end the search;
    // any other makes the first row whose name begins with the edit's text (case ignored) current.
    void HandleFindField(TZvEdit& Edit, int Key, Qt::KeyboardModifiers Shift);
    // Makes row Index (clamped) current and scrolls it into view; nothing for an empty table.
    void MakeCurrentVisible(int Index);
    // Configures the work area's shared scroll bar for this table; true when the table is the
    // selected one, expanded, and has more rows than it shows.
    bool UpdateScrollBar();
    // The style queries: the frame's edge kind, flat frames, flat buttons, hidden selection.
    TZvBorderKind GetTableBorder() const;
    bool GetFlat() const;
    bool GetbtnFlat() const;
    bool GetHideSelection() const;
    // Unchecks every checked row without repainting, reporting each field row to the work area:
    // how a closing table takes its fields out of the model.
    void UncheckAllQuietly();
    // Recomputes the caption and row heights from the work area's font.
    void FontChanged();
    // Sets position and size at once, without notices: for placing a new object.
    void SetBounds(const QRect& R);
    // Sets the expanded state without notices: for placing a new object.
    void SetExpandQuietly(bool Value) { Expand = Value; }
    bool IsClosing() const { return Closing; }

protected:
    void AddItem(std::unique_ptr<TZvListItem> Item) { Items.push_back(std::move(Item)); }
    // Shows up to MaxInitialVisible rows: the height of a new object.
    void FitHeightToRows();

private:
    friend class TZvListItem;
    void RecountVisible();
    template <class TChange>
    void Resize(TChange&& Change);
    int ButtonAt(int X) const;
    void SetHotButton(int Index);
    void InvalidateButtons();
    TZvButtonState ButtonState(int Index) const;
    bool IsOnCheckSquare(const TZvListItem* Item, int X) const;
    void PaintFrame(QPainter& Painter, const QRect& R) const;
    void PaintCaption(QPainter& Painter, const TZvPalette& Colors) const;
    void PaintRows(QPainter& Painter, const TZvPalette& Colors) const;

    std::string Name;
    std::string Alias;
    QString Hint;
    int FieldState = 0;
    bool Expand = true;
    bool Closing = false;
    int PressedButton = -1;
    int HotButton = -1;
    bool PressedOver = false; // the pointer is over the pressed button
    int CaptionHeight = 0;
    TZvListItem* CurrentItem = nullptr;
    int Left = 0;
    int Top = 0;
    int Width = 100;
    int Height = 0;
    int ItemHeight = 0;
    int FirstVisibleItem = 0;
    int VisibleCount = 0;
    std::vector<std::unique_ptr<TZvListItem>> Items;
};

} // namespace zv
