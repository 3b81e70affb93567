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

void TZvJoinDef::WriteConditionScript(std::string& Out, std::string_view LeftQualifier,
                                      std::string_view LeftColumn, std::string_view RightQualifier,
                                      std::string_view RightColumn) const {
    // Only a condition against a constant honours Swapped: a column-to-column join is always
    // written from the owning table's side.
    const bool Consts = IsConstCondition();
    auto WriteSide = [&](bool Left) {
        if (Consts && (Left ? LeftConst : RightConst))
            Out += Left ? LeftField : RightField;
        else if (Left)
            AppendQualifiedColumn(Out, LeftQualifier, LeftColumn);
        else
            AppendQualifiedColumn(Out, RightQualifier, RightColumn);
    };
    const bool Swap = Consts && Swapped;
    Out += '(';
    WriteSide(!Swap);
    Out += ' ';
    Out += Operator;
    Out += ' ';
    WriteSide(Swap);
    Out += ')';
}

std::string TZvJoinDef::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvJoinDef::WriteScript(std::string& Out) const {
    const TZvTableDef* Owner = GetTableDef();
    if (!Owner || LeftField.empty() || IsBlankText(RightField) || TableAlias.empty() || !IsKnownKind(Kind))
        return;
    const TZvTableDef* Found = nullptr;
    std::string RightQualifier;
    if (const TZvTableDefs* Tables = Owner->GetTableDefs()) {
        Found = Tables->FindByAlias(TableAlias);
        if (!Found)
            Found = Tables->FindByName(TableAlias);
        if (!Found)
            return;
        AppendQualifier(RightQualifier, *Found, Found->GetAlias().empty() || Found->GetAlias() == Found->GetName());
    } else {
        // A table outside a statement knows no other table: the join's own texts stand in.
        AppendName(RightQualifier, TableAlias);
    }
    std::string LeftQualifier;
    AppendQualifier(LeftQualifier, *Owner, Owner->GetAlias().empty());
    if (LeftQualifier.empty() || RightQualifier.empty())
        return;
    TZvSelectParser* Parser = GetParser();
    AppendKeyword(Out, Parser, JoinKindWords[Kind]);
    Out += ' ';
    AppendKeyword(Out, Parser, "JOIN");
    Out += ' ';
    if (Found)
        WriteTarget(Out, *Found);
    else
        Out += RightQualifier;
    if (!GetUseCondition())
        return;
    Out += ' ';
    AppendKeyword(Out, Parser, "ON");
    Out += ' ';
    std::string LeftColumn;
    AppendJoinColumn(LeftColumn, *Owner, LeftField);
    std::string RightColumn;
    if (Found)
        AppendJoinColumn(RightColumn, *Found, RightField);
    else
        AppendName(RightColumn, RightField);
    WriteConditionScript(Out, LeftQualifier, LeftColumn, RightQualifier, RightColumn);
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
