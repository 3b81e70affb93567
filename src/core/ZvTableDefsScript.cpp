// The FROM clause side of generation: a table's FROM entry with its chain of joins, the SELECT list
// and FROM clause of the whole statement, and the distribution of joins against constants to the
// tables they concern, for dialects that write such comparisons as join conditions.
#include "ZvTableDefs.h"

#include "ZvSelectParser.h"

#include <algorithm>
#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <vector>

namespace zv {

namespace {

// One line of a FROM entry's join chain inside the statement's text: Start and End bound the
// line's text (after its "\r\n  "), so that a further condition can be merged into it.
struct TJoinSpan {
    const TZvTableDef* Target;
    std::size_t Start;
    std::size_t End;
};
using TJoinSpans = std::pmr::vector<TJoinSpan>;

// Room for the lines of a FROM entry's chain on the stack: most entries join one to four tables,
// and a heap block per written entry was a good part of writing its chain. Longer chains spill
// to the heap.
class TJoinSpanRoom {
public:
    TJoinSpanRoom() : Spans(&Room) { Spans.reserve(InPlace); }
    TJoinSpans& Get() { return Spans; }

private:
    static constexpr std::size_t InPlace = 8;
    alignas(TJoinSpan) std::byte Buffer[InPlace * sizeof(TJoinSpan)];
    std::pmr::monotonic_buffer_resource Room{Buffer, sizeof Buffer};
    TJoinSpans Spans;
};

// Does Join write any text of its own? A join of the base class tells from its parts; the text of
// a class with a WriteScript of its own is tried at the end of Out, which is left as it was.
bool JoinWritesText(const TZvJoinDef& Join, std::string& Out) {
    if (typeid(Join) == typeid(TZvJoinDef))
        return Join.WritesText(Out);
    const std::size_t Mark = Out.size();
    Join.WriteScript(Out);
    const bool Written = Out.size() != Mark;
    Out.resize(Mark);
    return Written;
}

// Appends " AND " and Join's condition to the line at Spans[Line], unless the line already holds
// that condition or the join writes no text of its own; false then, and Out is left as it was. The line is mostly the last one written;
// when it is not, the condition is moved into place and the lines behind it shift.
bool MergeIntoLine(TJoinSpans& Spans, std::size_t Line, const TZvJoinDef& Join, std::string& Out) {
    const std::size_t Mark = Out.size();
    Out += " AND \r\n    ";
    const std::size_t Condition = Out.size();
    // Qualifiers pass through ProcessName here, not as aliases as in the join's own text; that is
    // intended, and it is why a condition already written by the join's own text may be appended
    // once more.
    Join.WriteMergedCondition(Out);
    TJoinSpan& Span = Spans[Line];
    const std::string_view Text(Out.data() + Span.Start, Span.End - Span.Start);
    // Already on the line: this is where a chain that comes back to a table stops. Tried before
    // the join's own text, which costs more and only matters when the condition is new.
    if (Text.find(std::string_view(Out.data() + Condition, Out.size() - Condition)) != std::string_view::npos ||
        !JoinWritesText(Join, Out)) {
        Out.resize(Mark);
        return false;
    }
    if (Span.End != Mark) {
        const std::string Merged = Out.substr(Mark);
        Out.resize(Mark);
        Out.insert(Span.End, Merged);
        for (TJoinSpan& Behind : Spans) {
            if (Behind.Start > Span.End) {
                Behind.Start += Merged.size();
                Behind.End += Merged.size();
            }
        }
    }
    Span.End += Out.size() - Mark;
    return true;
}

// The join chain of Table (see TZvTableDef::GenerateJoinsScript), each new line written at the
// end of Out after "\r\n  ".
void WriteJoinChain(const TZvTableDef& Table, const TZvJoinDefs& Joins, TJoinSpans& Spans, std::string& Out) {
    const TZvTableDefs* Tables = Table.GetTableDefs();
    if (!Tables)
        return;
    for (int I = 0; I < Joins.Count(); ++I) {
        const TZvJoinDef& Join = *Joins.Items(I);
        const TZvTableDef* Target = Tables->FindByAlias(Join.GetTableAlias());
        if (!Target)
            continue;
        const auto Line = std::find_if(Spans.begin(), Spans.end(),
                                       [Target](const TJoinSpan& L) { return L.Target == Target; });
        // A join that writes no text of its own (no column, an unknown kind) is incomplete and is
        // left out of the chain altogether: merged, its bare condition would open a line without
        // "JOIN", or end up as "(O.X = C.)".
        if (Line == Spans.end()) {
            const std::size_t Start = Join.WriteLine(Out);
            if (Start == std::string::npos)
                continue;
            Spans.push_back({Target, Start, Out.size()});
        } else if (!MergeIntoLine(Spans, static_cast<std::size_t>(Line - Spans.begin()), Join, Out)) {
            continue;
        }
        // A table that never had a join has no list to walk (writing must not make one).
        if (const TZvJoinDefs* Next = Target->FindJoinDefs())
            WriteJoinChain(*Target, *Next, Spans, Out);
    }
}

// Texts joined by ",\r\n" (the separator of the SELECT list and of the FROM list) are written
// through a mark: the separator goes before every entry but the first of its list.
void WriteListSeparator(std::string& Out, std::size_t ListStart) {
    if (Out.size() != ListStart)
        Out += ",\r\n";
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
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvTableDef::WriteScript(std::string& Out) const {
    Out += "  ";
    AppendName(Out, Name);
    if (TableType == qttStoredProc)
        Out += GetProcParamString();
    TZvSelectParser* Parser = GetParser();
    if (!Alias.empty() && Alias != Name) {
        if (Parser)
            AppendKeyword(Out, Parser, Parser->GetTableNameAndAliasDeilm());
        else
            Out += ' ';
        AppendAlias(Out, Alias);
    }
    if ((Parser && Parser->IsOracleJoins()) || !GetTableDefs())
        return;
    if (const TZvJoinDefs* Joins = FindJoinDefs()) {
        TJoinSpanRoom Spans;
        WriteJoinChain(*this, *Joins, Spans.Get(), Out);
    }
}

void TZvTableDef::GenerateJoinsScript(const TZvJoinDefs& Joins, TZvJoinLines& Lines) const {
    std::string Text;
    TJoinSpanRoom Room;
    TJoinSpans& Spans = Room.Get();
    WriteJoinChain(*this, Joins, Spans, Text);
    for (const TJoinSpan& Span : Spans)
        Lines.push_back({Text.substr(Span.Start, Span.End - Span.Start), Span.Target});
}

// ---- TZvTableDefs ---------------------------------------------------------------------------

std::string TZvTableDefs::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvTableDefs::WriteScript(std::string& Out) const {
    const std::size_t Start = Out.size();
    Out += "\r\n";
    const std::size_t Fields = Out.size();
    for (int I = 0; I < GetFieldCount(); ++I) {
        const TZvFieldDef* Field = GetFieldDefs(I);
        if (!Field || !Field->IsSelected())
            continue;
        const std::size_t Mark = Out.size();
        WriteListSeparator(Out, Fields);
        Out += "  ";
        const std::size_t Body = Out.size();
        Field->WriteScript(Out);
        if (Out.size() == Body)
            Out.resize(Mark);
    }
    const bool HasFields = Out.size() != Fields;
    // Without fields the list is "*", kept only when a FROM clause follows.
    if (!HasFields) {
        Out.resize(Start);
        Out += '*';
    }
    TZvSelectParser* Parser = GetParser();
    const std::size_t FromStart = Out.size();
    Out += "\r\n";
    AppendKeyword(Out, Parser, "FROM");
    Out += "\r\n";
    const std::size_t From = Out.size();
    for (int I = 0; I < Count(); ++I) {
        const TZvTableDef* Table = Items(I);
        // A joined table is written inside the chain of the table that joins it.
        if (Parser && !Parser->IsOracleJoins() && IsTableJoined(Table))
            continue;
        if (!Table->IsEmptyName()) {
            WriteListSeparator(Out, From);
            Table->WriteScript(Out);
        }
    }
    // Tables that all join one another leave nobody to start a chain; the first named one does.
    if (Out.size() == From && Parser && Parser->IsConstInJoin()) {
        for (int I = 0; I < Count() && Out.size() == From; ++I)
            if (!Items(I)->GetName().empty())
                Items(I)->WriteScript(Out);
    }
    if (Out.size() == From) {
        Out.resize(HasFields ? FromStart : Start);
        return;
    }
    Out += "\r\n";
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
