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

constexpr const char* JoinKindWords[] = {"INNER", "LEFT OUTER", "RIGHT OUTER", "FULL OUTER"};

bool IsKnownKind(TZvJoinKind Kind) {
    return Kind <= zvjFOuterJoin;
}

// A column of a join as written beside Table's qualifier. A column that is the output alias of one
// of Table's fields, renamed away from its column name, is written as an alias (quoted only where
// the dialect quotes aliases); any other column as a name.
std::string JoinColumn(const TZvTableDef& Table, std::string_view Column) {
    const TZvFieldDef* Field = Table.GetFieldDefs().FindByAlias(Column);
    if (Field && Field->GetAlias() != Field->GetName())
        return Table.ProcessAlias(Column);
    return Table.ProcessName(Column);
}

// How the target table is named after "JOIN": name, procedure parameters, and the alias after one
// blank when it differs from the name.
std::string TargetScript(const TZvTableDef& Target) {
    std::string Text = Target.ProcessName(Target.GetName());
    if (Target.GetTableType() == qttStoredProc)
        Text += Target.GetProcParamString();
    if (!Target.GetAlias().empty() && Target.GetAlias() != Target.GetName())
        Text += " " + Target.ProcessAlias(Target.GetAlias());
    return Text;
}

} // namespace

std::string QualifiedColumn(std::string_view Qualifier, std::string_view Column) {
    if (Qualifier.empty())
        return std::string(Column);
    std::string Text(Qualifier);
    Text += '.';
    Text += Column;
    return Text;
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

std::string TZvJoinDef::GetConditionScript(std::string_view LeftQualifier, std::string_view LeftColumn,
                                           std::string_view RightQualifier,
                                           std::string_view RightColumn) const {
    std::string Left = QualifiedColumn(LeftQualifier, LeftColumn);
    std::string Right = QualifiedColumn(RightQualifier, RightColumn);
    // Only a condition against a constant honours Swapped: a column-to-column join is always
    // written from the owning table's side.
    if (IsConstCondition()) {
        if (LeftConst)
            Left = LeftField;
        if (RightConst)
            Right = RightField;
        if (Swapped)
            std::swap(Left, Right);
    }
    return "(" + Left + " " + Operator + " " + Right + ")";
}

std::string TZvJoinDef::GetScript() const {
    const TZvTableDef* Owner = GetTableDef();
    if (!Owner || LeftField.empty() || Trim(RightField).empty() || TableAlias.empty() || !IsKnownKind(Kind))
        return {};
    std::string Target;
    std::string RightQualifier;
    std::string RightColumn;
    if (const TZvTableDefs* Tables = Owner->GetTableDefs()) {
        const TZvTableDef* Found = Tables->FindByAlias(TableAlias);
        if (!Found)
            Found = Tables->FindByName(TableAlias);
        if (!Found)
            return {};
        Target = TargetScript(*Found);
        const bool NamedByName = Found->GetAlias().empty() || Found->GetAlias() == Found->GetName();
        RightQualifier = NamedByName ? ProcessName(Found->GetName()) : Found->ProcessAlias(Found->GetAlias());
        RightColumn = JoinColumn(*Found, RightField);
    } else {
        // A table outside a statement knows no other table: the join's own texts stand in.
        Target = ProcessName(TableAlias);
        RightQualifier = ProcessName(TableAlias);
        RightColumn = ProcessName(RightField);
    }
    const std::string LeftQualifier =
        Owner->GetAlias().empty() ? ProcessName(Owner->GetName()) : Owner->ProcessAlias(Owner->GetAlias());
    if (LeftQualifier.empty() || RightQualifier.empty())
        return {};
    std::string Text = ProcessKeyword(JoinKindWords[Kind]) + " " + ProcessKeyword("JOIN") + " " + Target;
    if (!GetUseCondition())
        return Text;
    return Text + " " + ProcessKeyword("ON") + " " +
           GetConditionScript(LeftQualifier, JoinColumn(*Owner, LeftField), RightQualifier, RightColumn);
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
    if (!TableDef)
        return {};
    std::string Text;
    for (int I = 0; I < Count(); ++I) {
        const std::string Line = Items(I)->GetScript();
        // A join that writes nothing leaves no empty line behind.
        if (Line.empty())
            continue;
        Text += "\r\n  ";
        Text += Line;
    }
    return Text;
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
