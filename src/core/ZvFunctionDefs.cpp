// Operand and field texts, argument lists, and the position and alias rules of output fields.
#include "ZvFunctionDefs.h"

#include "ZvScanner.h"
#include "ZvSelectParser.h"
#include "ZvTableDefs.h"

#include <cassert>

namespace zv {

std::string QuoteLiteralWithoutScanner(std::string_view S) {
    const bool Quoted = S.size() >= 2 && (S.front() == '"' || S.front() == '\'') && S.back() == S.front();
    if (Quoted)
        return std::string(S);
    std::string Result = "'";
    for (char C : S) {
        Result += C;
        if (C == '\'')
            Result += C;
    }
    return Result + "'";
}

// ---- TZvFunctionDef -------------------------------------------------------------------------

TZvFunctionDef::TZvFunctionDef() = default;
TZvFunctionDef::~TZvFunctionDef() = default;

void TZvFunctionDef::Assign(const TZvCollectionItem& Source) {
    const auto* F = dynamic_cast<const TZvFunctionDef*>(&Source);
    if (!F || F == this)
        return;
    // An empty list is the same as none; making one on each side for every copied operand was a
    // good part of a field's cost.
    if (Arguments || F->HasArguments())
        GetArguments().Assign(F->GetArguments());
    Kind = F->Kind;
    Name = F->Name;
    Tag = F->Tag;
}

void TZvFunctionDef::TakeFrom(TZvFunctionDef& Source) {
    if (&Source == this)
        return;
    if (Arguments)
        Arguments->Clear();
    if (Source.HasArguments())
        GetArguments().TakeItems(*Source.Arguments);
    Kind = Source.Kind;
    Name = std::move(Source.Name);
    Tag = Source.Tag;
    Source.Name.clear();
    Source.Kind = fkUnknown;
}

void TZvFunctionDef::Clear() {
    Name.clear();
    Kind = fkUnknown;
    if (Arguments)
        Arguments->Clear();
}

void TZvFunctionDef::SetParser(TZvSelectParser* Value) {
    TZvCollectionItem::SetParser(Value);
    if (Arguments)
        Arguments->SetParser(Value);
}

void TZvFunctionDef::SetName(std::string_view Value) {
    if (Name != Value)
        Name.assign(Value);
}

void TZvFunctionDef::SetKind(TZvFunctionKind Value) {
    if (Kind != Value)
        Kind = Value;
}

TZvFunctionDefs& TZvFunctionDef::GetArguments() const {
    if (!Arguments) {
        Arguments = CreateArguments();
        Arguments->SetParser(GetOwnParser());
    }
    return *Arguments;
}

bool TZvFunctionDef::HasArguments() const {
    return Arguments && Arguments->Count() > 0;
}

void TZvFunctionDef::SetArguments(const TZvFunctionDefs& Value) {
    GetArguments().Assign(Value);
}

std::unique_ptr<TZvFunctionDefs> TZvFunctionDef::CreateArguments() const {
    // Made lazily from const readers too; the list only records its owner, never changes it
    // through this pointer, so owning it does not change the item's observable state.
    auto* Owner = const_cast<TZvFunctionDef*>(this);
    return std::make_unique<TZvFunctionDefs>(Owner, ItemClassOf<TZvFunctionDef>());
}

std::string TZvFunctionDef::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvFunctionDef::WriteScript(std::string& Out) const {
    if (HasArguments()) {
        AppendFunctionName(Out, GetParser(), Name);
        Out += '(';
        Arguments->WriteScript(Out);
        Out += ')';
        return;
    }
    switch (Kind) {
    case fkFunction:
        AppendFunctionName(Out, GetParser(), Name);
        Out += "()";
        return;
    case fkIdentifier:
        WriteIdentifierScript(Out);
        return;
    case fkString:
        WriteStringScript(Out);
        return;
    case fkParameter:
        Out += ':';
        break;
    case fkUnknown:
    case fkInteger:
    case fkFloat:
    case fkExpression:
        break;
    }
    Out += Name;
}

void TZvFunctionDef::WriteIdentifierScript(std::string& Out) const {
    // The table is found by climbing out of nested argument lists: a column inside a call inside
    // a field belongs to the field's table.
    const TZvPersistent* Node = this;
    while (Node) {
        const TZvCollectionItem* Item = Node->AsItem();
        const TZvCollection* Holder = Item ? Item->GetCollection() : nullptr;
        const TZvFunctionDefs* List = Holder ? Holder->AsFunctionDefs() : nullptr;
        if (!List)
            break;
        Node = List->GetOwner();
    }
    // The qualifier and its "." are written only when its text comes out non-empty.
    const std::size_t Mark = Out.size();
    TZvSQLScanner* Scanner = GetScanner();
    if (const TZvTableDef* Table = Node ? Node->AsTableDef() : nullptr) {
        const std::string& Qualifier = Table->GetPrefix();
        if (!Qualifier.empty() && Scanner && (Scanner->GetProcessAliases() || Qualifier == Table->GetName()))
            Scanner->AppendName(Out, Qualifier);
        else
            Out += Qualifier;
    }
    if (Out.size() != Mark)
        Out += '.';
    if (!Scanner || Name == "*")
        Out += Name;
    else
        Scanner->AppendName(Out, Name);
}

void TZvFunctionDef::WriteStringScript(std::string& Out) const {
    TZvSQLScanner* Scanner = GetScanner();
    const std::string Quoted = Scanner ? Scanner->QuoteStr(Name) : QuoteLiteralWithoutScanner(Name);
    Out += Quoted.empty() ? std::string_view("''") : std::string_view(Quoted);
}

// ---- TZvFunctionDefs ------------------------------------------------------------------------

std::string TZvFunctionDefs::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvFunctionDefs::WriteScript(std::string& Out) const {
    for (int I = 0; I < Count(); ++I) {
        if (I > 0)
            Out += ", ";
        Items(I)->WriteScript(Out);
    }
}

// ---- TZvFieldDef ----------------------------------------------------------------------------

void TZvFieldDef::Assign(const TZvCollectionItem& Source) {
    if (&Source == this)
        return;
    TZvFunctionDef::Assign(Source);
    if (const auto* F = dynamic_cast<const TZvFieldDef*>(&Source)) {
        SetAlias(F->Alias);
        Usage = F->Usage;
        DataType = F->DataType;
        Value = F->Value;
    }
}

void TZvFieldDef::TakeFrom(TZvFieldDef& Source) {
    if (&Source == this)
        return;
    TZvFunctionDef::TakeFrom(Source);
    SetAlias(Source.Alias);
    Usage = Source.Usage;
    DataType = Source.DataType;
    Value = std::move(Source.Value);
}

void TZvFieldDef::Clear() {
    TZvFunctionDef::Clear();
    SetAlias("");
    DataType = ftUnknown;
    Value = TZvValue();
}

bool TZvFieldDef::ResetForReuse() {
    if (HasArguments() && !GetArguments().KeepsForReuse())
        return false;
    Clear();
    SetTag(0);
    Usage = 2;
    AbsIndex = 0;
    SetParser(nullptr);
    return true;
}

void TZvFieldDef::SetKind(TZvFunctionKind NewKind) {
    TZvFunctionDef::SetKind(NewKind);
    if (!Alias.empty() && !GetName().empty() && Alias != GetName())
        return;
    if (NewKind != fkUnknown && NewKind != fkIdentifier)
        SetAlias(GenerateAlias("FIELD_", true));
}

void TZvFieldDef::SetAlias(std::string_view NewAlias) {
    if (Alias == NewAlias)
        return;
    if (TZvTableDefs* Tables = GetTableDefs()) {
        Tables->AliasRemoved(Alias);
        Tables->AliasAdded(NewAlias);
    }
    Alias.assign(NewAlias);
}

void TZvFieldDef::SetAbsIndex(std::int32_t N) {
    if (TZvTableDefs* Tables = GetTableDefs()) {
        if (N >= 0 && N < Tables->GetFieldCount() && N != AbsIndex)
            Tables->MovePosition(this, N);
        return;
    }
    AbsIndex = GetIndex();
}

std::string TZvFieldDef::GenerateAlias(std::string_view Base, bool ForceNumber) {
    if (TZvTableDefs* Tables = GetTableDefs())
        return Tables->GetUniqueAlias(Base, ForceNumber);
    std::string Result(Base);
    if (ForceNumber)
        Result += "1";
    return Result;
}

std::string TZvFieldDef::GetTableAlias() const {
    const TZvTableDef* Table = GetTableDef();
    return Table ? Table->GetAlias() : std::string();
}

std::string TZvFieldDef::ProcessAlias(std::string_view S) const {
    std::string Text;
    AppendAlias(Text, S);
    return Text;
}

std::string TZvFieldDef::GetPureScript() const {
    std::string Text;
    TZvFunctionDef::WriteScript(Text);
    return Text;
}

void TZvFieldDef::WriteScript(std::string& Out) const {
    TZvFunctionDef::WriteScript(Out);
    if (!Alias.empty() && Alias != GetName()) {
        Out += ' ';
        AppendKeyword(Out, GetParser(), "AS ");
        AppendAlias(Out, Alias);
    }
}

TZvTableDef* TZvFieldDef::GetTableDef() const {
    const TZvCollection* Fields = GetCollection();
    const TZvFieldDefs* List = Fields ? Fields->AsFieldDefs() : nullptr;
    return List ? List->GetTableDef() : nullptr;
}

TZvTableDefs* TZvFieldDef::GetTableDefs() const {
    const TZvTableDef* Table = GetTableDef();
    return Table ? Table->GetTableDefs() : nullptr;
}

void TZvFieldDef::Added() {
    if (TZvTableDefs* Tables = GetTableDefs()) {
        Tables->AppendPosition(this);
        Tables->AliasAdded(Alias);
    } else {
        AbsIndex = GetIndex();
    }
}

void TZvFieldDef::Removing() {
    if (TZvTableDefs* Tables = GetTableDefs()) {
        Tables->RemovePosition(this);
        Tables->AliasRemoved(Alias);
    } else {
        const TZvCollection* Siblings = GetCollection();
        for (int I = 0; I < Siblings->Count(); ++I) {
            auto* Sibling = dynamic_cast<TZvFieldDef*>(Siblings->GetItem(I));
            if (Sibling && Sibling->AbsIndex > AbsIndex)
                --Sibling->AbsIndex;
        }
    }
    if (TZvSelectParser* Parser = GetParser()) {
        TZvOrderByItems& OrderBy = Parser->GetOrderByItems();
        const int Entry = OrderBy.IndexOf(Alias);
        if (Entry >= 0)
            OrderBy.Delete(Entry);
    }
}

// ---- TZvFieldDefs ---------------------------------------------------------------------------

TZvFieldDefs::TZvFieldDefs(TZvPersistent* AOwner, TZvItemClass AItemClass)
    : TZvFunctionDefs(AOwner, std::move(AItemClass)), TableDef(AOwner ? AOwner->AsTableDef() : nullptr) {}

TZvFieldDef* TZvFieldDefs::FindByName(std::string_view S) const {
    for (int I = 0; I < Count(); ++I)
        if (SameIdentifier(Items(I)->GetName(), S))
            return Items(I);
    return nullptr;
}

TZvFieldDef* TZvFieldDefs::FindByAlias(std::string_view S) const {
    for (int I = 0; I < Count(); ++I)
        if (SameIdentifier(Items(I)->GetAlias(), S))
            return Items(I);
    return nullptr;
}

void TZvFieldDefs::WriteScript(std::string& Out) const {
    for (int I = 0; I < Count(); ++I) {
        const TZvFieldDef* Field = Items(I);
        if (!Field->IsSelected())
            continue;
        Out += "  ";
        Field->WriteScript(Out);
        if (I < Count() - 1)
            Out += ",\r\n";
    }
}

void TZvFieldDefs::Clear() {
    TZvTableDefs* Tables = TableDef ? TableDef->GetTableDefs() : nullptr;
    if (!Tables || Count() == 0) {
        TZvFunctionDefs::Clear();
        return;
    }
    std::vector<TZvFieldDef*> Fields;
    for (int I = 0; I < Count(); ++I)
        Fields.push_back(Items(I));
    Tables->DeleteFields(Fields, true);
}

} // namespace zv
