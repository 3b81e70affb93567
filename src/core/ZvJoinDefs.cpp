// The join records and their list: copying, look-ups, the clean-up after an edit of a join against
// a constant, and the text of one join ("INNER JOIN T A ON (L.X = A.Y)").
#include "ZvJoinDefs.h"

#include "ZvSelectParser.h"
#include "ZvTableDefs.h"
#include "ZvUtils.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace zv {

namespace {

// With the blank that follows them: casing leaves a blank as it is, and one append is cheaper than two.
constexpr std::string_view JoinKindWords[] = {"INNER ", "LEFT OUTER ", "RIGHT OUTER ", "FULL OUTER "};

bool IsKnownKind(TZvJoinKind Kind) {
    return Kind <= zvjFOuterJoin;
}

// A column of a join as written beside Table's qualifier. A column that is the output alias of one
// of Table's fields, renamed away from its column name, is written as an alias (quoted only where
// the dialect quotes aliases); any other column as a name.
void AppendJoinColumn(std::string& Out, const TZvTableDef& Table, std::string_view Column) {
    const TZvFieldDefs* Fields = Table.FindFieldDefs();
    const TZvFieldDef* Field = Fields ? Fields->FindByAlias(Column) : nullptr;
    if (Field && Field->GetAlias() != Field->GetName())
        Table.AppendAlias(Out, Column);
    else
        Table.AppendName(Out, Column);
}

// How Table is named in a join condition: by its alias, or by its name when it has none.
void AppendQualifier(std::string& Out, const TZvTableDef& Table, bool ByName) {
    if (ByName)
        Table.AppendName(Out, Table.GetName());
    else
        Table.AppendAlias(Out, Table.GetAlias());
}

// How the target table is named after "JOIN": name, procedure parameters, and the alias after one
// blank when it differs from the name.
void WriteTarget(std::string& Out, const TZvTableDef& Target) {
    Target.AppendName(Out, Target.GetName());
    if (Target.GetTableType() == qttStoredProc)
        Out += Target.GetProcParamString();
    if (!Target.GetAlias().empty() && Target.GetAlias() != Target.GetName()) {
        Out += ' ';
        Target.AppendAlias(Out, Target.GetAlias());
    }
}

// The two tables a join's own text names. Target is null for a join whose table stands in no
// statement: the join's own texts stand in for it.
struct TJoinEnds {
    const TZvTableDef* Owner;
    const TZvTableDef* Target;
};

// The qualifier of one side of Join's own text appended to Out: the owner's, or the target's
// (named by its name where its alias is none or the same).
void AppendSideQualifier(std::string& Out, const TZvJoinDef& Join, const TJoinEnds& Ends, bool Left) {
    if (Left)
        AppendQualifier(Out, *Ends.Owner, Ends.Owner->GetAlias().empty());
    else if (Ends.Target)
        AppendQualifier(Out, *Ends.Target,
                        Ends.Target->GetAlias().empty() || Ends.Target->GetAlias() == Ends.Target->GetName());
    else
        Join.AppendName(Out, Join.GetTableAlias());
}

// The column of one side of Join's own text appended to Out.
void AppendSideColumn(std::string& Out, const TZvJoinDef& Join, const TJoinEnds& Ends, bool Left) {
    if (Left)
        AppendJoinColumn(Out, *Ends.Owner, Join.GetLeftField());
    else if (Ends.Target)
        AppendJoinColumn(Out, *Ends.Target, Join.GetRightField());
    else
        Join.AppendName(Out, Join.GetRightField());
}

// True when both qualifiers of Join's own text come out non-empty: a join that cannot name one of
// its tables writes nothing. Tried at the end of Out, which is left as it was.
bool QualifiersNonEmpty(std::string& Out, const TZvJoinDef& Join, const TJoinEnds& Ends) {
    const std::size_t Mark = Out.size();
    for (const bool Left : {true, false}) {
        AppendSideQualifier(Out, Join, Ends, Left);
        const bool Empty = Out.size() == Mark;
        Out.resize(Mark);
        if (Empty)
            return false;
    }
    return true;
}

// "Qualifier.Column" of one side of Join's own text appended to Out; false when the qualifier
// comes out empty (what was appended is then left for the caller to take back).
bool AppendQualifiedSide(std::string& Out, const TZvJoinDef& Join, const TJoinEnds& Ends, bool Left) {
    const std::size_t Mark = Out.size();
    AppendSideQualifier(Out, Join, Ends, Left);
    if (Out.size() == Mark)
        return false;
    Out += '.';
    AppendSideColumn(Out, Join, Ends, Left);
    return true;
}

// The tables Join's own text names; false when it writes none: a part is missing, the kind is not
// one of the four, or the target is no table of the statement (by alias, else by name).
bool FindEnds(const TZvJoinDef& Join, TJoinEnds& Ends) {
    Ends = {Join.GetTableDef(), nullptr};
    if (!Ends.Owner || Join.GetLeftField().empty() || IsBlankText(Join.GetRightField()) ||
        Join.GetTableAlias().empty() || !IsKnownKind(Join.GetKind()))
        return false;
    const TZvTableDefs* Tables = Ends.Owner->GetTableDefs();
    if (!Tables)
        return true;
    Ends.Target = Tables->FindByAlias(Join.GetTableAlias());
    if (!Ends.Target)
        Ends.Target = Tables->FindByName(Join.GetTableAlias());
    return Ends.Target != nullptr;
}

// The bracketed condition "(left op right)", each column side appended by WriteColumn(Left), which
// answers false when that side cannot be written (the condition is then left unfinished). Where
// Consts (the dialect writes constants into joins and an operand is one), that operand is written
// as it stands and Swapped puts the operands back in the order they were read; a column-to-column
// join is always written from the owning table's side.
template <class TWriteColumn>
bool WriteCondition(std::string& Out, const TZvJoinDef& Join, bool Consts, TWriteColumn&& WriteColumn) {
    auto WriteSide = [&](bool Left) {
        if (!Consts || !(Left ? Join.GetLeftConst() : Join.GetRightConst()))
            return WriteColumn(Left);
        Out += Left ? Join.GetLeftField() : Join.GetRightField();
        return true;
    };
    const bool Swap = Consts && Join.GetSwapped();
    Out += '(';
    if (!WriteSide(!Swap))
        return false;
    Out += ' ';
    Out += Join.GetOperator();
    Out += ' ';
    if (!WriteSide(Swap))
        return false;
    Out += ')';
    return true;
}

// "KIND JOIN target ON (left op right)" appended to Out; false, with the text left unfinished,
// when a qualifier comes out empty.
bool WriteOwnText(std::string& Out, const TZvJoinDef& Join, const TJoinEnds& Ends) {
    TZvSelectParser* Parser = Join.GetParser();
    AppendKeyword(Out, Parser, JoinKindWords[Join.GetKind()]);
    AppendKeyword(Out, Parser, "JOIN ");
    if (Ends.Target)
        WriteTarget(Out, *Ends.Target);
    else
        Join.AppendName(Out, Join.GetTableAlias());
    const bool UseCondition = Join.GetUseCondition();
    const bool Consts = UseCondition && Join.IsConstCondition();
    // Both tables must be nameable even where a qualifier is not written: without a condition, or
    // on the side of a constant.
    if ((!UseCondition || Consts) && !QualifiersNonEmpty(Out, Join, Ends))
        return false;
    if (!UseCondition)
        return true;
    Out += ' ';
    AppendKeyword(Out, Parser, "ON ");
    return WriteCondition(Out, Join, Consts,
                          [&](bool Left) { return AppendQualifiedSide(Out, Join, Ends, Left); });
}

} // namespace

std::string QualifiedColumn(std::string_view Qualifier, std::string_view Column) {
    std::string Text;
    AppendQualifiedColumn(Text, Qualifier, Column);
    return Text;
}

void AppendQualifiedColumn(std::string& Out, std::string_view Qualifier, std::string_view Column) {
    if (!Qualifier.empty()) {
        Out += Qualifier;
        Out += '.';
    }
    Out += Column;
}

// ---- TZvJoinDef -----------------------------------------------------------------------------

void TZvJoinDef::Assign(const TZvCollectionItem& Source) {
    if (const auto* J = dynamic_cast<const TZvJoinDef*>(&Source)) {
        Operator = J->Operator;
        Kind = J->Kind;
        RightField = J->RightField;
        SetTableAlias(J->TableAlias);
        LeftField = J->LeftField;
        Pending = J->Pending;
        RightConst = J->RightConst;
        LeftConst = J->LeftConst;
        Swapped = J->Swapped;
    }
}

void TZvJoinDef::SetTableAlias(std::string Value) {
    if (TZvTableDefs* Tables = GetStatementTables())
        Tables->JoinTargetChanged(*this, TableAlias, Value);
    TableAlias = std::move(Value);
}

TZvTableDefs* TZvJoinDef::GetStatementTables() const {
    const TZvTableDef* Table = GetTableDef();
    return Table ? Table->GetTableDefs() : nullptr;
}

TZvTableDef* TZvJoinDef::GetTableDef() const {
    const TZvCollection* Holder = GetCollection();
    const TZvJoinDefs* Joins = Holder ? Holder->AsJoinDefs() : nullptr;
    return Joins ? Joins->GetTableDef() : nullptr;
}

bool TZvJoinDef::GetUseCondition() const {
    return IsKnownKind(Kind);
}

bool TZvJoinDef::IsConstCondition() const {
    TZvSelectParser* Parser = GetParser();
    return Parser && Parser->IsConstInJoin() && (LeftConst || RightConst);
}

void TZvJoinDef::WriteMergedCondition(std::string& Out) const {
    const TZvTableDef* Owner = GetTableDef();
    WriteCondition(Out, *this, IsConstCondition(), [&](bool Left) {
        const std::size_t Mark = Out.size();
        AppendName(Out, Left ? (Owner ? std::string_view(Owner->GetAlias()) : std::string_view()) : TableAlias);
        if (Out.size() != Mark)
            Out += '.';
        AppendName(Out, Left ? LeftField : RightField);
        return true;
    });
}

bool TZvJoinDef::WritesText(std::string& Scratch) const {
    TJoinEnds Ends{};
    return FindEnds(*this, Ends) && QualifiersNonEmpty(Scratch, *this, Ends);
}

std::string TZvJoinDef::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvJoinDef::WriteScript(std::string& Out) const {
    TJoinEnds Ends{};
    if (!FindEnds(*this, Ends))
        return;
    const std::size_t Mark = Out.size();
    if (!WriteOwnText(Out, *this, Ends))
        Out.resize(Mark);
}

std::size_t TZvJoinDef::WriteLine(std::string& Out) const {
    const std::size_t Mark = Out.size();
    Out += "\r\n  ";
    const std::size_t Start = Out.size();
    WriteScript(Out);
    // A join that writes nothing leaves no empty line behind.
    if (Out.size() != Start)
        return Start;
    Out.resize(Mark);
    return std::string::npos;
}

// ---- TZvJoinDefs ----------------------------------------------------------------------------

TZvJoinDefs::TZvJoinDefs(TZvTableDef* AOwner, TZvItemClass AItemClass)
    : TZvCollection(AOwner, std::move(AItemClass)), TableDef(AOwner) {
    if (AOwner)
        SetParser(AOwner->GetParser());
}

TZvJoinDef* TZvJoinDefs::Find(std::string_view LeftField, std::string_view TableAlias,
                              std::string_view RightField) const {
    for (int I = 0; I < Count(); ++I) {
        TZvJoinDef* Join = Items(I);
        if (SameIdentifier(Join->GetLeftField(), LeftField) &&
            SameIdentifier(Join->GetTableAlias(), TableAlias) &&
            SameIdentifier(Join->GetRightField(), RightField))
            return Join;
    }
    return nullptr;
}

void TZvJoinDefs::DeleteCorrespondedJoinsWithConst(const TZvJoinDef* Join) {
    TZvSelectParser* Parser = GetParser();
    if (!Join || !Parser || !Parser->IsConstInJoin())
        return;
    // Copied: the comparison below must not read a join that is being deleted.
    const std::string Target = Join->GetTableAlias();
    auto IsCorresponding = [&](const TZvJoinDef* Other) {
        return Other != Join && Other->GetTableAlias() == Target;
    };
    // A column-to-column join to the same table means the constant conditions belong to a real
    // join there, so none of them is a leftover copy.
    for (int I = 0; I < Count(); ++I) {
        const TZvJoinDef* Other = Items(I);
        if (IsCorresponding(Other) && !Other->GetLeftConst() && !Other->GetRightConst())
            return;
    }
    for (int I = Count() - 1; I >= 0; --I)
        if (IsCorresponding(Items(I)))
            Delete(I);
}

void TZvJoinDefs::ItemAppended(TZvCollectionItem* Item) {
    if (TZvTableDefs* Tables = GetStatementTables())
        Tables->JoinAppended(*static_cast<TZvJoinDef*>(Item));
}

void TZvJoinDefs::ItemsMoved() {
    if (TZvTableDefs* Tables = GetStatementTables())
        Tables->JoinsMoved();
}

TZvTableDefs* TZvJoinDefs::GetStatementTables() const {
    return TableDef ? TableDef->GetTableDefs() : nullptr;
}

std::string TZvJoinDefs::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvJoinDefs::WriteScript(std::string& Out) const {
    if (!TableDef)
        return;
    for (int I = 0; I < Count(); ++I)
        Items(I)->WriteLine(Out);
}

// ---- identifier keys ------------------------------------------------------------------------

std::size_t TZvIdentHash::operator()(std::string_view S) const {
    // FNV-1a over the upper-cased bytes.
    std::uint64_t Hash = 14695981039346656037ULL;
    for (const char C : S) {
        Hash ^= static_cast<unsigned char>(UpCase(C));
        Hash *= 1099511628211ULL;
    }
    return static_cast<std::size_t>(Hash);
}

// ---- TZvJoinTargetIndex ---------------------------------------------------------------------

void TZvJoinTargetIndex::Reset(bool CaseSensitive) {
    Joins = MakeIdentMap<std::vector<TZvJoinDef*>>(CaseSensitive);
    Exact = CaseSensitive;
    Valid = true;
}

void TZvJoinTargetIndex::Invalidate() {
    Joins.clear();
    Valid = false;
}

void TZvJoinTargetIndex::Add(TZvJoinDef* Join, std::string_view Alias) {
    IdentEntry(Joins, Alias).push_back(Join);
}

void TZvJoinTargetIndex::Remove(const TZvJoinDef* Join, std::string_view Alias) {
    const auto Found = Joins.find(Alias);
    assert(Found != Joins.end() && "a join left the index under a target it was not filed under");
    if (Found == Joins.end())
        return;
    std::vector<TZvJoinDef*>& Naming = Found->second;
    Naming.erase(std::find(Naming.begin(), Naming.end(), Join));
    if (Naming.empty())
        Joins.erase(Found);
}

const std::vector<TZvJoinDef*>& TZvJoinTargetIndex::Naming(std::string_view Alias) const {
    static const std::vector<TZvJoinDef*> None;
    const auto Found = Joins.find(Alias);
    return Found == Joins.end() ? None : Found->second;
}

} // namespace zv
