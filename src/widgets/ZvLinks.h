// The links of the diagram: TZvLink, a polyline from a field row of one table object to a field row
// of another, and TZvJoin, which groups the links between one pair of tables and carries their kind
// of join. A link keeps its points in work-area coordinates: the two end points on the rows' edges
// with a ten-pixel stub outside each, and the bend points the user put between them. The work area
// owns both and keeps the model's join definitions in step with its links.
#pragma once

#include "ZvFloatPanel.h"

#include <QPoint>
#include <QRect>
#include <QRegion>

#include <string>
#include <vector>

namespace zv {

// The kinds of join a TZvJoin carries, as the model numbers them (TZvJoinKind): 0 inner, 1 left
// outer (every row of the first table), 2 right outer (every row of the second), 3 full outer.
class TZvJoin {
public:
    TZvJoin(TZvWorkArea* AWorkArea, TZvTable* ATable1, TZvTable* ATable2)
        : WorkArea(AWorkArea), Table1(ATable1), Table2(ATable2) {}

    TZvWorkArea* GetWorkArea() const { return WorkArea; }
    TZvTable* GetTable1() const { return Table1; }
    TZvTable* GetTable2() const { return Table2; }
    // Table1 for 0, Table2 for 1, null otherwise.
    TZvTable* GetTable(int Index) const;
    // That table's name; empty otherwise.
    std::string GetTableName(int Index) const;
    // True when the join is between these two tables, in either direction.
    bool Connects(const TZvTable* A, const TZvTable* B) const;
    // True when Table is one of the join's two tables.
    bool HasTable(const TZvTable* Table) const { return Table1 == Table || Table2 == Table; }

    int JoinType = 0;

private:
    TZvWorkArea* WorkArea;
    TZvTable* Table1;
    TZvTable* Table2;
};

// True when P lies inside the closed polygon (the last point joined to the first): an odd number
// of its edges cross the horizontal through P at or left of P. A point on a horizontal edge counts
// that edge, whichever way round the polygon is given.
bool IsPointInPoly(const std::vector<QPoint>& Points, QPoint P);

class TZvLink : public TZvFloatObject {
public:
    // How far, in both x and y (exclusive), a pointer may be from a point to grab it.
    static constexpr int PointReach = 4;
    // How far (city-block) a pointer may be from the line to hit it.
    static constexpr int LineReach = 3;
    // The length of the stub each end runs straight out of its row.
    static constexpr int StubLength = 10;

    // Item1 must be a row of Join's first table and Item2 one of its second. Computes the four
    // points and the bounds; raises EZvError "Invalid table %s in Link control" when the join
    // lacks a table.
    TZvLink(TZvWorkArea* AWorkArea, TZvJoin* AJoin, TZvListItem* AItem1, TZvListItem* AItem2);

    TZvJoin* GetJoin() const { return Join; }
    TZvListItem* GetItem1() const { return Item1; }
    TZvListItem* GetItem2() const { return Item2; }
    const std::string& GetOperator() const { return Operator; }
    void SetOperator(std::string Value) { Operator = std::move(Value); }

    // --- points and bounds ---
    int GetCountPoints() const { return static_cast<int>(Points.size()); }
    // Point I in viewport (window) coordinates; raises EZvError "Invalid index = %d " outside
    // 0 .. count - 1.
    QPoint GetPoint(int Index) const;
    // Sets point I in work-area coordinates; same error.
    void SetPoint(int Index, QPoint Point);
    // Every point, in work-area coordinates.
    const std::vector<QPoint>& GetPoints() const { return Points; }
    // The rectangle round every point with three pixels to spare (work-area coordinates).
    QRect GetBounds() const { return Bounds; }
    void SetBounds(const QRect& Value) { Bounds = Value; }
    // Puts the end points on the rows' edges (facing edges for tables side by side, both right
    // edges for a table straight below another) and recomputes the bounds.
    void SetBoundaryRect();
    // Takes Path (work-area coordinates, at least four points; a shorter one is ignored) as the
    // link's points, then places the ends anew: how a saved layout gives back the bend points.
    void SetBoundaryRect(const std::vector<QPoint>& Path);
    // The region the link covers, in work-area coordinates: 0 the whole link, 1 only the start
    // (its marker box, the first two segments, point 1), 2 only the end.
    QRegion GetClipRgn(int Part) const;

    // alias1.field1 operator alias2.field2
    QString GetHint() override;
    // Table1 name "_" Item1 name "-" Table2 name "_" Item2 name: the key of the link's layout.
    std::string GetLinkID() const;

    // --- interaction ---
    // Selection shows in both rows' names turning bold; the work area's select-link hook hears it.
    void SetSelect(bool Value) override;
    // htTClient near the line, htTPoint on a bend point, htTEndLine on an end point, else htTOutSide.
    TTableHitTest HitTest(QPoint Point) override;
    // A press on a bend point starts dragging it; on an end point records that end.
    void MouseDown(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) override;
    // While a bend point is dragged, the two segments at it follow the pointer.
    void MouseMove(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) override;
    // Ends a drag: the bend point moves to where it was dropped. Dragging an end moves nothing.
    void MouseUp(QMouseEvent& Event, QPoint Point, TTableHitTest Hit) override;
    // On the line or a bend point: "Insert point" / "Delete point", "Delete link", "Property".
    void PopupMenu(QMenu& Menu, QPoint Point, TTableHitTest Hit) override;
    void Paint(QPainter& Painter) override;

    // The point of the last context-menu click or point drag (work-area coordinates).
    QPoint GetClickPoint() const { return ClickPoint; }
    void SetClickPoint(QPoint Value) { ClickPoint = Value; }
    // The index of the point being dragged; -1 for none.
    int GetDragPoint() const { return DragPoint; }

    // Inserts a bend point at ClickPoint on the segment there, unless that is one of the two stubs.
    void HandleInsertPoint();
    // Removes the bend point at ClickPoint; nothing for a link without bend points.
    void HandleDeletePoint();
    // Asks in a Yes/No box whether to delete the link; on any answer but No sends CMDeleteLink, and
    // the work area removes and frees this object.
    void HandleDeleteLink();
    // Shows the link properties dialog for this link; after OK repaints it.
    void HandleLinkProperties();
    void Remove() { HandleDeleteLink(); }

private:
    void CheckIndex(int Index) const;
    // The first point of FirstIndex .. LastIndex within reach of P; -1 when none.
    int PointNear(QPoint P, int FirstIndex, int LastIndex) const;
    void PlaceEnd(bool First);
    void UpdateBounds();
    // The two segments at the dragged point, through Through.
    QRegion DragSegmentsRegion(QPoint Through) const;
    void InvalidateRegion(int Part = 0) const;
    void PaintMarkers(QPainter& Painter) const;

    TZvJoin* Join;
    std::string Operator = "=";
    TZvListItem* Item1;
    TZvListItem* Item2;
    QRect Bounds;
    std::vector<QPoint> Points;
    QPoint ClickPoint;
    int DragPoint = -1;
    bool Dragging = false;
};

} // namespace zv
