// The FROM clause side of generation: a table's FROM entry with its chain of joins, the SELECT list
// and FROM clause of the whole statement, and the distribution of joins against constants to the
// tables they concern, for dialects that write such comparisons as join conditions.
#include "ZvTableDefs.h"

#include "ZvSelectParser.h"

#include <algorithm>
#include <utility>

namespace zv {

namespace {

// Texts joined by ",\r\n": the separator of the SELECT list and of the FROM list.
void AppendListEntry(std::string& List, const std::string& Entry) {
    if (!List.empty())
        List += ",\r\n";
    List += Entry;
}

// The condition of a further join between two tables that already have a line. Qualifiers pass
// through ProcessName here, not as aliases as in the join's own text; that is intended, and it is
// why a condition already written by the join's own text may be appended once more.
std::string MergedCondition(const TZvJoinDef& Join) {
    const TZvTableDef* Owner = Join.GetTableDef();
    return Join.GetConditionScript(
        Join.ProcessName(Owner ? Owner->GetAlias() : std::string()), Join.ProcessName(Join.GetLeftField()),
        Join.ProcessName(Join.GetTableAlias()), Join.ProcessName(Join.GetRightField()));
}

bool HasJoinTo(const TZvTableDef& Table, const std::string& Alias) {
    const TZvJoinDefs& Joins = Table.GetJoinDefs();
    for (int I = 0; I < Joins.Count(); ++I)
        if (Joins.Items(I)->GetTableAlias() == Alias)
            return true;
    return false;
}

// Join seen from the other side: the constant and the column change places, and Swapped flips so
// that the condition still reads in the order it was written.
void MirrorJoin(const TZvJoinDef& Join, TZvJoinDef& Mirror) {
    Mirror.SetOperator(Join.GetOperator());
    Mirror.SetKind(Join.GetKind());
    Mirror.SetPending(false);
    Mirror.SetRightField(Join.GetLeftField());
    Mirror.SetTableAlias(Join.GetTableDef()->GetAlias());
    Mirror.SetLeftField(Join.GetRightField());
    Mirror.SetSwapped(!Join.GetSwapped());
    Mirror.SetRightConst(Join.GetLeftConst());
    Mirror.SetLeftConst(Join.GetRightConst());
}

} // namespace

// ---- TZvTableDef ----------------------------------------------------------------------------

std::string TZvTableDef::GetScript() const {
    std::string Text = "  " + ProcessName(Name);
    if (TableType == qttStoredProc)
        Text += GetProcParamString();
    TZvSelectParser* Parser = GetParser();
    if (!Alias.empty() && Alias != Name)
        Text += (Parser ? Parser->ProcessKeyword(Parser->GetTableNameAndAliasDeilm()) : std::string(" ")) +
                ProcessAlias(Alias);
    if ((Parser && Parser->IsOracleJoins()) || !GetTableDefs())
        return Text;
    TZvJoinLines Lines;
    GenerateJoinsScript(GetJoinDefs(), Lines);
    for (const TZvJoinLine& Line : Lines)
        Text += "\r\n  " + Line.Text;
    return Text;
}

void TZvTableDef::GenerateJoinsScript(const TZvJoinDefs& Joins, TZvJoinLines& Lines) const {
    const TZvTableDefs* Tables = GetTableDefs();
    if (!Tables)
        return;
    for (int I = 0; I < Joins.Count(); ++I) {
        const TZvJoinDef& Join = *Joins.Items(I);
        const TZvTableDef* Target = Tables->FindByAlias(Join.GetTableAlias());
        if (!Target)
            continue;
        // A join that writes no text of its own (no column, an unknown kind) is incomplete and is
        // left out of the chain altogether: merged, its bare condition would open a line without
        // "JOIN", or end up as "(O.X = C.)".
        std::string Script = Join.GetScript();
        if (Script.empty())
            continue;
        const auto Line = std::find_if(Lines.begin(), Lines.end(),
                                       [Target](const TZvJoinLine& L) { return L.Target == Target; });
        if (Line == Lines.end()) {
            Lines.push_back({std::move(Script), Target});
        } else {
            const std::string Condition = MergedCondition(Join);
            // Already on the line: this is where a chain that comes back to a table stops.
            if (Line->Text.find(Condition) != std::string::npos)
                continue;
            Line->Text += " AND \r\n    " + Condition;
        }
        Target->GenerateJoinsScript(Target->GetJoinDefs(), Lines);
    }
}

// ---- TZvTableDefs ---------------------------------------------------------------------------

std::string TZvTableDefs::GetScript() const {
    std::string Fields;
    for (int I = 0; I < GetFieldCount(); ++I) {
        const TZvFieldDef* Field = GetFieldDefs(I);
        if (!Field || !Field->IsSelected())
            continue;
        const std::string Script = Field->GetScript();
        if (!Script.empty())
            AppendListEntry(Fields, "  " + Script);
    }
    TZvSelectParser* Parser = GetParser();
    std::string From;
    for (int I = 0; I < Count(); ++I) {
        const TZvTableDef* Table = Items(I);
        // A joined table is written inside the chain of the table that joins it.
        if (Parser && !Parser->IsOracleJoins() && IsTableJoined(Table))
            continue;
        if (!Table->IsEmptyName())
            AppendListEntry(From, Table->GetScript());
    }
    // Tables that all join one another leave nobody to start a chain; the first named one does.
    if (From.empty() && Parser && Parser->IsConstInJoin()) {
        for (int I = 0; I < Count() && From.empty(); ++I)
            if (!Items(I)->GetName().empty())
                From = Items(I)->GetScript();
    }
    std::string Select;
    if (!Fields.empty())
        Select = "\r\n" + Fields;
    else if (!From.empty())
        Select = "*";
    if (From.empty())
        return Select;
    return Select + "\r\n" + (Parser ? Parser->ProcessKeyword("FROM") : std::string("FROM")) + "\r\n" + From +
           "\r\n";
}

void TZvTableDefs::UpdateJoinsWithConsts() {
    TZvSelectParser* Parser = GetParser();
    if (!Parser || !Parser->IsConstInJoin())
        return;
    // Collect the tables the pending joins touch and the joins against a constant among them.
    std::vector<TZvTableDef*> Touched;
    std::vector<TZvJoinDef*> Consts;
    auto Touch = [&Touched](TZvTableDef* Table) {
        if (Table && std::find(Touched.begin(), Touched.end(), Table) == Touched.end())
            Touched.push_back(Table);
    };
    for (int T = 0; T < Count(); ++T) {
        TZvJoinDefs& Joins = Items(T)->GetJoinDefs();
        for (int J = 0; J < Joins.Count(); ++J) {
            TZvJoinDef* Join = Joins.Items(J);
            if (!Join->GetPending())
                continue;
            Join->SetPending(false);
            const bool IsConst = Join->GetTableAlias().empty();
            Join->SetRightConst(IsConst);
            Touch(Items(T));
            if (IsConst)
                Consts.push_back(Join);
            else
                Touch(FindByAlias(Join->GetTableAlias()));
        }
    }
    // Each touched table receives each constant condition of another table: as a condition of
    // that table's join to it, or mirrored onto its own join to that table when it has one.
    for (TZvTableDef* Table : Touched) {
        for (TZvJoinDef* Join : Consts) {
            TZvTableDef* Owner = Join->GetTableDef();
            if (Owner == Table)
                continue;
            if (!HasJoinTo(*Table, Owner->GetAlias())) {
                TZvJoinDef* Used = Join;
                if (!Join->GetTableAlias().empty()) {
                    Used = Owner->GetJoinDefs().Add();
                    Used->Assign(*Join);
                }
                Used->SetTableAlias(Table->GetAlias());
            } else {
                MirrorJoin(*Join, *Table->GetJoinDefs().Add());
            }
        }
    }
    // A constant condition that no table took has nowhere to be written.
    for (TZvJoinDef* Join : Consts)
        if (Join->GetTableAlias().empty())
            Join->GetCollection()->Remove(Join);
}

} // namespace zv
