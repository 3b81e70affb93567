// The work area's links: adding and removing them with their joins in the query model, finding
// them, selecting them, the link properties' write-back, and the field-row drop that links two rows.
#include "ZvFloatPanel.h"

#include "ZvFloatTable.h"
#include "ZvLinks.h"
#include "ZvResource.h"
#include "ZvSelectParser.h"
#include "ZvTableDefs.h"
#include "ZvWindow.h"

#include <algorithm>

namespace zv {

namespace {

// The model table of a table object. Found by alias, as the join was recorded: the name would find
// the wrong table when the same table is on the diagram twice.
TZvTableDef* ModelTableOf(TZvSelectParser* Parser, const TZvTable& Table) {
    return Parser ? Parser->GetTableDefs().FindByAlias(Table.GetAlias()) : nullptr;
}

// The model join a link stands for. It is normally held by the join's first table; a statement may
// also hold it the other way round, in the second table's joins, written from that side.
struct TZvModelJoin {
    TZvJoinDef* Def = nullptr;
    bool Mirrored = false;
};

TZvModelJoin FindModelJoin(TZvSelectParser* Parser, const TZvLink& Link) {
    const TZvJoin& Join = *Link.GetJoin();
    const std::string& Field1 = Link.GetItem1()->GetName();
    const std::string& Field2 = Link.GetItem2()->GetName();
    if (const TZvTableDef* Left = ModelTableOf(Parser, *Join.GetTable1()))
        if (TZvJoinDef* Def = Left->GetJoinDefs().Find(Field1, Join.GetTable2()->GetAlias(), Field2))
            return {Def, false};
    if (const TZvTableDef* Right = ModelTableOf(Parser, *Join.GetTable2()))
        if (TZvJoinDef* Def = Right->GetJoinDefs().Find(Field2, Join.GetTable1()->GetAlias(), Field1))
            return {Def, true};
    return {};
}

// Every model join between the join's two tables, with whether it is written from the second.
template <class TVisit>
void ForEachModelJoinBetween(TZvSelectParser* Parser, const TZvJoin& Join, TVisit&& Visit) {
    for (const bool Mirrored : {false, true}) {
        const TZvTable& Owner = Mirrored ? *Join.GetTable2() : *Join.GetTable1();
        const std::string& Target = (Mirrored ? Join.GetTable1() : Join.GetTable2())->GetAlias();
        const TZvTableDef* Model = ModelTableOf(Parser, Owner);
        if (!Model)
            continue;
        TZvJoinDefs& Defs = Model->GetJoinDefs();
        for (int I = 0; I < Defs.Count(); ++I)
            if (Defs.SameIdentifier(Defs.Items(I)->GetTableAlias(), Target))
                Visit(*Defs.Items(I), Mirrored);
    }
}

// Seen from the other table, a left outer join is a right outer one, and "<" is ">".
int MirroredKind(int JoinType) {
    return JoinType == zvjLOuterJoin ? zvjROuterJoin : JoinType == zvjROuterJoin ? zvjLOuterJoin : JoinType;
}

std::string MirroredOperator(const std::string& Operator) {
    std::string Result = Operator;
    for (char& C : Result)
        C = C == '<' ? '>' : C == '>' ? '<' : C;
    return Result;
}

} // namespace

// Two rows of one class of types may be linked, not only rows of one type: drivers report a key
// column with integers of different widths on its two sides (a serial beside an int8, a smallint
// beside an integer), and such a link must not be refused. Equal types always match, so that the
// types outside the classes (Boolean, BCD, Guid ...) still link to their own kind.
bool TZvWorkArea::CanLinkItems(const TZvListItem* Source, const TZvListItem* Target) const {
    if (!Source || !Target || Source->GetTable() == Target->GetTable())
        return false;
    if (!Source->IsFieldRow() || !Target->IsFieldRow())
        return false;
    if (!CheckLinkFieldsType || Source->GetFieldType() == Target->GetFieldType())
        return true;
    const TZvFieldTypeClass Class = ZvFieldTypeClass(Source->GetFieldType());
    return Class != TZvFieldTypeClass::Other && Class == ZvFieldTypeClass(Target->GetFieldType());
}

TZvJoin* TZvWorkArea::FindJoin(const TZvTable* Table1, const TZvTable* Table2) const {
    for (const auto& Join : Joins)
        if (Join->Connects(Table1, Table2))
            return Join.get();
    return nullptr;
}

TZvLink* TZvWorkArea::FindLink(const TZvTable* Table1, const TZvTable* Table2, const TZvListItem* Item1,
                               const TZvListItem* Item2) const {
    for (const auto& Link : Links) {
        const TZvJoin* Join = Link->GetJoin();
        if (Join->GetTable1() == Table1 && Join->GetTable2() == Table2 && Link->GetItem1() == Item1 &&
            Link->GetItem2() == Item2)
            return Link.get();
        if (Join->GetTable1() == Table2 && Join->GetTable2() == Table1 && Link->GetItem1() == Item2 &&
            Link->GetItem2() == Item1)
            return Link.get();
    }
    return nullptr;
}

int TZvWorkArea::FindLinkByID(const std::string& ID) const {
    for (std::size_t I = 0; I < Links.size(); ++I)
        if (Links[I]->GetLinkID() == ID)
            return static_cast<int>(I);
    return -1;
}

TZvLink* TZvWorkArea::AddLink(TZvTable* Table1, TZvTable* Table2, TZvListItem* Item1, TZvListItem* Item2) {
    if (!Table1 || !Table2 || !Item1 || !Item2 || Table1 == Table2 || Item1->GetTable() != Table1 ||
        Item2->GetTable() != Table2)
        return nullptr;
    if (TZvLink* Existing = FindLink(Table1, Table2, Item1, Item2))
        return Existing;
    TZvJoin* Join = FindJoin(Table1, Table2);
    std::unique_ptr<TZvJoin> NewJoin;
    if (!Join) {
        NewJoin = std::make_unique<TZvJoin>(this, Table1, Table2);
        Join = NewJoin.get();
    } else if (Join->GetTable1() != Table1) {
        std::swap(Item1, Item2); // a link's first row lies in its join's first table
    }
    auto Link = std::make_unique<TZvLink>(this, Join, Item1, Item2);
    const TZvModelJoin Model = FindModelJoin(GetParser(), *Link);
    if (Model.Def) {
        const std::string& Operator = Model.Def->GetOperator();
        Link->SetOperator(Model.Mirrored ? MirroredOperator(Operator) : Operator);
        if (NewJoin)
            Join->JoinType = Model.Mirrored ? MirroredKind(Model.Def->GetKind()) : Model.Def->GetKind();
    }
    if (Host && !Host->DoAddRemoveLink(*Link, zvaAdd))
        return nullptr;
    if (NewJoin)
        Joins.push_back(std::move(NewJoin));
    TZvLink* Result = Links.emplace_back(std::move(Link)).get();
    if (!Model.Def)
        RecordModelJoin(*Result);
    InvalidateRegion(Result->GetClipRgn(0));
    return Result;
}

void TZvWorkArea::RecordModelJoin(const TZvLink& Link) {
    TZvTableDef* Model = ModelTableOf(GetParser(), *Link.GetJoin()->GetTable1());
    if (!Model)
        return;
    TZvJoinDef* Def = Model->GetJoinDefs().Add();
    Def->SetLeftField(Link.GetItem1()->GetName());
    Def->SetTableAlias(Link.GetJoin()->GetTable2()->GetAlias());
    Def->SetRightField(Link.GetItem2()->GetName());
    Def->SetOperator(Link.GetOperator());
    Def->SetKind(static_cast<TZvJoinKind>(Link.GetJoin()->JoinType));
}

// Equal duplicates go as well: the one link stood for all of them. The joins against constants
// that were written into the same ON clause go with the last column join to that table.
void TZvWorkArea::DropModelJoin(const TZvLink& Link) {
    for (TZvModelJoin Model = FindModelJoin(GetParser(), Link); Model.Def;
         Model = FindModelJoin(GetParser(), Link)) {
        TZvJoinDefs& Defs = Model.Def->GetTableDef()->GetJoinDefs();
        Defs.DeleteCorrespondedJoinsWithConst(Model.Def);
        Defs.Remove(Model.Def);
    }
}

void TZvWorkArea::RemoveLink(TZvLink* Link, int Index, bool Redraw) {
    if (Index < 0 || Index >= LinkCount() || Links[static_cast<std::size_t>(Index)].get() != Link)
        return;
    if (Selected == Link) {
        Selected = nullptr;
        Link->SetSelect(false);
    }
    ForgetObject(Link);
    if (Redraw)
        InvalidateRegion(Link->GetClipRgn(0));
    DropModelJoin(*Link);
    std::unique_ptr<TZvLink> Owned = std::move(Links[static_cast<std::size_t>(Index)]);
    Links.erase(Links.begin() + Index);
    if (OnRemoveLink)
        OnRemoveLink(*this, *Owned);
    TZvJoin* Join = Owned->GetJoin();
    TZvListItem* Item1 = Owned->GetItem1();
    TZvListItem* Item2 = Owned->GetItem2();
    Owned.reset();
    if (std::none_of(Links.begin(), Links.end(), [&](const auto& Other) { return Other->GetJoin() == Join; }))
        std::erase_if(Joins, [&](const auto& Candidate) { return Candidate.get() == Join; });
    if (Redraw) {
        for (TZvListItem* Item : {Item1, Item2}) {
            Item->SetSelect(false);
            InvalidateRect(Item->GetBoundsRect());
        }
    }
}

void TZvWorkArea::SelectLink(TZvLink* Link) {
    SetSelected(Link);
}

void TZvWorkArea::SelectLink(TZvListItem* Item1, TZvListItem* Item2, bool Select) {
    if (OnSelectLink)
        OnSelectLink(*this, Item1, Item2, Select);
}

void TZvWorkArea::ApplyLinkProperties(TZvLink& Link, int JoinType, const std::string& Operator) {
    TZvJoin& Join = *Link.GetJoin();
    Join.JoinType = JoinType;
    Link.SetOperator(Operator);
    ForEachModelJoinBetween(GetParser(), Join, [&](TZvJoinDef& Def, bool Mirrored) {
        Def.SetKind(static_cast<TZvJoinKind>(Mirrored ? MirroredKind(JoinType) : JoinType));
    });
    const TZvModelJoin Model = FindModelJoin(GetParser(), Link);
    if (Model.Def)
        Model.Def->SetOperator(Model.Mirrored ? MirroredOperator(Operator) : Operator);
    if (OnChangeLink)
        OnChangeLink(*this, Link);
}

TZvListItem* TZvWorkArea::DropTargetItem(QPoint Point) const {
    TZvTable* Table = DropTargetAt(Point);
    if (!Table)
        return nullptr;
    const QPoint P = ToSurface(Point);
    return Table->GetItemAt(P.x(), P.y());
}

TZvLink* TZvWorkArea::LinkRows(TZvListItem* Source, TZvListItem* Target) {
    if (!CanLinkItems(Source, Target))
        return nullptr;
    return AddLink(Source->GetTable(), Target->GetTable(), Source, Target);
}

TZvLink* TZvWorkArea::HandleDragDrop(TZvListItem* Source, QPoint Point) {
    return LinkRows(Source, DropTargetItem(Point));
}

void TZvWorkArea::PlaceLinksOf(const TZvTable& Table) {
    for (const auto& Link : Links)
        if (Link->GetJoin()->HasTable(&Table))
            Link->SetBoundaryRect();
}

// The rows of Table scrolled: the links attached to them move with them, repainted where they were
// and where they are now.
void TZvWorkArea::FollowScrolledRows(const TZvTable& Table) {
    for (const auto& Link : Links)
        if (Link->GetJoin()->HasTable(&Table)) {
            InvalidateRegion(Link->GetClipRgn(0));
            Link->SetBoundaryRect();
            InvalidateRegion(Link->GetClipRgn(0));
        }
}

void TZvWorkArea::SetLinkPen(const QPen& Value) {
    LinkPen = Value;
    viewport()->update();
}

} // namespace zv
