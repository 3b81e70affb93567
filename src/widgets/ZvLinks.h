// The links of the diagram: TZvLink, a line from a field row of one table object to a field row of
// another, and TZvJoin, which groups the links between one pair of tables. The work area owns both
// and keeps the model's join definitions in step with its links.
#pragma once

#include "ZvFloatPanel.h"

#include <QPoint>
#include <QRect>

#include <string>
#include <vector>

namespace zv {

class TZvJoin {
public:
    TZvJoin(TZvWorkArea* AWorkArea, TZvTable* ATable1, TZvTable* ATable2)
        : WorkArea(AWorkArea), Table1(ATable1), Table2(ATable2) {}

    TZvTable* GetTable1() const { return Table1; }
    TZvTable* GetTable2() const { return Table2; }
    // Table1 for 0, Table2 for 1, null otherwise.
    TZvTable* GetTable(int Index) const;
    // That table's name; empty otherwise.
    std::string GetTableName(int Index) const;
    // True when the join is between these two tables, in either direction.
    bool Connects(const TZvTable* A, const TZvTable* B) const;
    // 0 inner, 1 left outer, 2 right outer, 3 full outer.
    int JoinType = 0;

private:
    TZvWorkArea* WorkArea;
    TZvTable* Table1;
    TZvTable* Table2;
};

class TZvLink : public TZvFloatObject {
public:
    TZvLink(TZvWorkArea* AWorkArea, TZvJoin* AJoin, TZvListItem* AItem1, TZvListItem* AItem2);

    TZvJoin* GetJoin() const { return Join; }
    TZvListItem* GetItem1() const { return Item1; }
    TZvListItem* GetItem2() const { return Item2; }
    const std::string& GetOperator() const { return Operator; }
    void SetOperator(std::string Value) { Operator = std::move(Value); }
    // Table1 name "_" Item1 name "-" Table2 name "_" Item2 name: the key of the link's layout.
    std::string GetLinkID() const;
    // alias1.field1 operator alias2.field2
    QString GetHint() override;
    // The end points on the two rows' edges with a stub of ten pixels outside each (work-area
    // coordinates): always four points here.
    std::vector<QPoint> GetPoints() const;
    // The rectangle the link covers, widened by the line's reach (work-area coordinates).
    QRect GetClipRect() const;

    void SetSelect(bool Value) override;
    void Paint(QPainter& Painter) override;
    // htTClient within three pixels of the line, htTOutSide elsewhere.
    TTableHitTest HitTest(QPoint Point) override;
    void PopupMenu(QMenu& Menu, QPoint Point, TTableHitTest Hit) override;
    // Asks in a Yes/No box whether to delete the link; on any answer but No sends CMDeleteLink.
    void Remove();

private:
    TZvJoin* Join;
    TZvListItem* Item1;
    TZvListItem* Item2;
    std::string Operator = "=";
};

} // namespace zv
