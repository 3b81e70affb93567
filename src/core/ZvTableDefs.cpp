// Tables of the FROM list and the statement-wide bookkeeping: positions of the SELECT list,
// unique aliases, and the repair of references after renames and deletions.
#include "ZvTableDefs.h"

#include "ZvCriteria.h"
#include "ZvScanner.h"
#include "ZvSelectParser.h"
#include "ZvUtils.h"

#include <algorithm>
#include <cassert>
#include <typeinfo>
#include <unordered_set>

namespace zv {

// ---- TZvTableDef ----------------------------------------------------------------------------

TZvTableDef::TZvTableDef() = default;
TZvTableDef::~TZvTableDef() = default;

void TZvTableDef::Assign(const TZvCollectionItem& Source) {
    const auto* T = dynamic_cast<const TZvTableDef*>(&Source);
    if (!T || T == this)
        return;
    GetFieldDefs().Assign(T->GetFieldDefs());
    Define(T->Alias, T->Name, T->TableType);
}

void TZvTableDef::Define(std::string_view AAlias, std::string_view AName, TZvTableDefType AType) {
    // Values are taken as they are: copying a table is not renaming one, so no reference of the
    // statement is rewritten.
    StoreAlias(AAlias);
    StoreName(AName);
    TableType = AType;
}

void TZvTableDef::SetParser(TZvSelectParser* Value) {
    TZvCollectionItem::SetParser(Value);
    if (FieldDefs)
        FieldDefs->SetParser(Value);
    if (JoinDefs)
        JoinDefs->SetParser(Value);
}

void TZvTableDef::SetAlias(std::string_view Value) {
    if (Alias == Value)
        return;
    // The old alias is read in place: it stays until StoreAlias below.
    const std::string& Old = Alias;
    if (TZvTableDefs* Tables = GetTableDefs())
        Tables->UpdateTableAlias(Old, Value);
    TZvSelectParser* Parser = GetParser();
    if (Parser && Parser->GetOrderByItems().Count() > 0)
        RequalifyOrderBy(*Parser, Old, Value);
    StoreAlias(Value);
}

// The ORDER BY entries qualified by this table's alias Old are qualified by Value instead.
void TZvTableDef::RequalifyOrderBy(TZvSelectParser& Parser, std::string_view Old, std::string_view Value) {
    const TZvTableDefs* Tables = GetTableDefs();
    TZvSQLScanner& Scanner = Parser.GetScanner();
    const char L = Scanner.GetIdentQuote();
    const char R = Scanner.GetQuotePair(L);
    const bool CaseSensitive = Parser.GetCaseSensitiveIdentifiers();
    TZvOrderByItems& OrderBy = Parser.GetOrderByItems();
    OrderBy.BeginUpdate();
    for (int I = 0; I < OrderBy.Count(); ++I) {
        std::string Entry = OrderBy.Get(I);
        const std::string TablePart = ExtractTableName(Entry, L, R);
        if (Trim(ExtractFieldName(Entry, L, R)).empty() || TablePart.empty())
            continue;
        // An entry qualified by another table's alias stays, even if it spells the old one.
        bool OtherTable = false;
        for (int T = 0; Tables && T < Tables->Count() && !OtherTable; ++T)
            OtherTable = Tables->Items(T) != this && SameIdentifier(TablePart, Tables->Items(T)->Alias);
        if (OtherTable || !SameIdentifier(TablePart, Old))
            continue;
        const int Pos = ZvPos(TablePart, Entry, CaseSensitive);
        if (Pos > 0) {
            Entry.replace(static_cast<std::size_t>(Pos - 1), TablePart.size(), ProcessAlias(Value));
            OrderBy.Put(I, Entry);
        }
    }
    OrderBy.EndUpdate();
}

void TZvTableDef::StoreAlias(std::string_view Value) {
    if (TZvTableDefs* Tables = GetTableDefs())
        Tables->TableAliasChanged(*this, Alias, Value);
    Alias.assign(Value);
}

void TZvTableDef::SetName(std::string_view Value) {
    if (Name == Value)
        return;
    // An empty alias is filled in directly: going through SetAlias would treat "" as a name that
    // joins and ORDER BY entries could refer to (a join against a constant has no target yet).
    if (Alias.empty())
        StoreAlias(Value);
    else if (Alias == Name)
        SetAlias(Value);
    StoreName(Value);
}

void TZvTableDef::StoreName(std::string_view Value) {
    if (TZvTableDefs* Tables = GetTableDefs())
        Tables->TableNameChanged(*this, Name, Value);
    Name.assign(Value);
}

TZvFieldDefs& TZvTableDef::GetFieldDefs() const {
    if (!FieldDefs) {
        FieldDefs = CreateFieldDefs();
        FieldDefs->SetParser(GetOwnParser());
    }
    return *FieldDefs;
}

TZvJoinDefs& TZvTableDef::GetJoinDefs() const {
    if (!JoinDefs) {
        JoinDefs = CreateJoinDefs();
        JoinDefs->SetParser(GetOwnParser());
    }
    return *JoinDefs;
}

void TZvTableDef::SetFieldDefs(const TZvFieldDefs& Value) {
    GetFieldDefs().Assign(Value);
}

void TZvTableDef::SetJoinDefs(const TZvJoinDefs& Value) {
    GetJoinDefs().Assign(Value);
}

bool TZvTableDef::IsEmptyName() const {
    return Trim(Name).empty() && Trim(Alias).empty();
}

std::string TZvTableDef::ProcessAlias(std::string_view S) const {
    std::string Text;
    AppendAlias(Text, S);
    return Text;
}

void TZvTableDef::ResetForReuse(TZvTableDefs& Keeper) {
    Alias.clear();
    Name.clear();
    TableType = qttTable;
    TZvCollectionItem::SetParser(nullptr);
    if (FieldDefs && !FieldDefs->KeepsForReuse())
        FieldDefs.reset();
    if (JoinDefs && !JoinDefs->KeepsForReuse())
        JoinDefs.reset();
    // Out of any table list, these clear as plain lists: no positions or ORDER BY entries to mend.
    if (FieldDefs)
        FieldDefs->ClearItems([&Keeper](std::unique_ptr<TZvCollectionItem> Field) { Keeper.KeepField(std::move(Field)); });
    if (JoinDefs)
        JoinDefs->Clear();
}

TZvTableDefs* TZvTableDef::GetTableDefs() const {
    TZvCollection* Tables = GetCollection();
    return Tables ? Tables->AsTableDefs() : nullptr;
}

std::unique_ptr<TZvFieldDefs> TZvTableDef::CreateFieldDefs() const {
    // Made lazily from const readers too; the list only records its owner.
    return std::make_unique<TZvFieldDefs>(const_cast<TZvTableDef*>(this), ItemClassOf<TZvFieldDef>());
}

std::unique_ptr<TZvJoinDefs> TZvTableDef::CreateJoinDefs() const {
    return std::make_unique<TZvJoinDefs>(const_cast<TZvTableDef*>(this), ItemClassOf<TZvJoinDef>());
}

void TZvTableDef::FindFieldsWOPrefix(const TZvDataSet& DataSet) {
    TZvTableDefs* Tables = GetTableDefs();
    if (!Tables)
        return;
    TZvTableDef* Holder = nullptr;
    for (int I = 0; I < Tables->Count() && !Holder; ++I)
        if (Tables->Items(I)->Name.empty())
            Holder = Tables->Items(I);
    if (!Holder || Holder == this)
        return;
    TZvFieldDefs& From = Holder->GetFieldDefs();
    TZvFieldDefs& To = GetFieldDefs();
    for (int I = From.Count() - 1; I >= 0; --I) {
        TZvFieldDef* Moving = From.Items(I);
        if ((Moving->GetKind() != fkUnknown && Moving->GetKind() != fkIdentifier) ||
            !DataSet.FindField(Moving->GetName()))
            continue;
        int At = To.Count();
        for (int J = 0; J < To.Count(); ++J)
            if (To.Items(J)->GetAbsIndex() > Moving->GetAbsIndex()) {
                At = J;
                break;
            }
        TZvFieldDef* Moved = To.Insert(At);
        Moved->Assign(*Moving);
        Tables->TakeOverPosition(Moved, Moving);
        // The field moves rather than goes, so nothing that names it (an ORDER BY entry by its
        // alias) is dropped: the moving field leaves without its clean-up rules.
        Tables->AliasRemoved(Moving->GetAlias());
        From.RemoveItemsIf([Moving](const TZvCollectionItem& Item) { return &Item == Moving; });
    }
}

std::string TZvTableDef::GetProcParamString() const {
    std::string Text;
    const TZvFieldDefs& Fields = GetFieldDefs();
    for (int I = 0; I < Fields.Count(); ++I) {
        const TZvFieldDef* Field = Fields.Items(I);
        if (Field->IsSelected())
            continue;
        // The separator follows the text, not the count: a parameter whose literal comes out
        // empty is not followed by a separator of its own.
        if (!Text.empty())
            Text += ", ";
        Text += ParamLiteral(*Field);
    }
    TZvSelectParser* Parser = GetParser();
    if (!Text.empty() || (Parser && Parser->IsProcEmptyInputParamsBracket()))
        Text = "(" + Text + ")";
    return Text;
}

std::string TZvTableDef::ParamLiteral(const TZvFieldDef& Field) const {
    const TZvValue& Value = Field.GetValue();
    if (Value.IsUnassigned())
        return ":" + Field.GetName();
    if (Value.IsNull())
        return "NULL";
    TZvSQLScanner* Scanner = GetScanner();
    auto Quote = [Scanner](const std::string& S) {
        return Scanner ? Scanner->QuoteStr(S) : QuoteLiteralWithoutScanner(S);
    };
    switch (Field.GetDataType()) {
    case ftString:
    case ftFixedChar:
    case ftWideString:
    case ftBytes:
    case ftVarBytes:
    case ftBlob:
    case ftMemo:
    case ftGraphic:
    case ftGuid:
        return Quote(Value.ToString());
    case ftBoolean: {
        const std::optional<bool> Flag = Value.ToBoolean();
        if (!Flag)
            return Value.ToString();
        // A dialect without Boolean literals has empty texts; the standard words stand in.
        const std::string Literal = Scanner ? Scanner->GetBooleans(*Flag) : std::string();
        return Literal.empty() ? (*Flag ? "TRUE" : "FALSE") : Literal;
    }
    case ftDate:
    case ftTime:
    case ftDateTime:
    case ftTimeStamp: {
        // A timestamp is a date-and-time value too; text is taken as the user wrote it.
        const std::optional<TZvDateTime> Moment = Value.IsString() ? std::nullopt : Value.ToDateTime();
        if (!Moment)
            return Quote(Value.ToString());
        if (Field.GetDataType() == ftDate)
            return Quote(Moment->DateText());
        if (Field.GetDataType() == ftTime)
            return Quote(Moment->TimeText());
        return Quote(Moment->DateTimeText());
    }
    default:
        // Numbers (integer, float, currency, BCD) and every other type: the value as text.
        return Value.ToString();
    }
}

void TZvTableDef::Removing() {
    TZvTableDefs* Tables = GetTableDefs();
    if (!Tables)
        return;
    Tables->DropJoinsTo(this);
    TZvSelectParser* Parser = GetParser();
    // A table without name and alias (the holder of unqualified expressions) is named by nothing,
    // so nothing refers to it; a probe of "." alone would hit every qualified column.
    if (Parser && !GetPrefix().empty()) {
        const std::string Probe = Parser->GetScanner().ProcessName(GetPrefix()) + ".";
        const bool CaseSensitive = Parser->GetCaseSensitiveIdentifiers();
        std::vector<TZvFieldDef*> Dependent;
        for (int T = Tables->Count() - 1; T >= 0; --T) {
            const TZvTableDef* Other = Tables->Items(T);
            if (Other == this)
                continue;
            const TZvFieldDefs& Fields = Other->GetFieldDefs();
            for (int F = Fields.Count() - 1; F >= 0; --F)
                if (ZvPos(Probe, Fields.Items(F)->GetScript(), CaseSensitive) > 0)
                    Dependent.push_back(Fields.Items(F));
        }
        Tables->DeleteFields(Dependent, true);
        TZvOrderByItems& OrderBy = Parser->GetOrderByItems();
        for (int I = OrderBy.Count() - 1; I >= 0; --I)
            if (ZvPos(Probe, OrderBy.Get(I), CaseSensitive) == 1)
                OrderBy.Delete(I);
        // Conditions naming the table would be left pointing at nothing.
        DeleteCriterionsOfTable(*Parser, Probe);
    }
    // The table's own fields go with it; their positions close up and ORDER BY entries naming
    // their aliases go, as the field rule says, in one pass (last field first).
    std::vector<TZvFieldDef*> Own;
    const TZvFieldDefs& Fields = GetFieldDefs();
    for (int F = Fields.Count() - 1; F >= 0; --F)
        Own.push_back(Fields.Items(F));
    Tables->DeleteFields(Own, true);
}

// ---- TZvTableDefs ---------------------------------------------------------------------------

TZvTableDefs::TZvTableDefs(TZvPersistent* AOwner, TZvItemClass AItemClass)
    : TZvCollection(AOwner, std::move(AItemClass)) {
    SetParser(dynamic_cast<TZvSelectParser*>(AOwner));
}

TZvTableDefs::~TZvTableDefs() {
    // The tables go while the bookkeeping they might reach still exists.
    Positions.clear();
    ClearItems();
}

void TZvTableDefs::Clear() {
    Positions.clear();
    AliasUse.clear();
    AliasIndexValid = false;
    JoinIndex.Invalidate();
    ClearItems([this](std::unique_ptr<TZvCollectionItem> Table) { KeepForReuse(std::move(Table)); });
}

void TZvTableDefs::KeepForReuse(std::unique_ptr<TZvCollectionItem> Item) {
    // Only a table of exactly the class this list makes is kept: a derived table may hold more
    // than ResetForReuse knows of. Anything else is freed here.
    const TZvCollectionItem& Made = *Item;
    if (SpareTables.size() >= MaxSpareTables || typeid(Made) != typeid(TZvTableDef) ||
        !MakesItemsOf<TZvTableDef>())
        return;
    static_cast<TZvTableDef&>(*Item).ResetForReuse(*this);
    SpareTables.push_back(std::move(Item));
}

void TZvTableDefs::KeepField(std::unique_ptr<TZvCollectionItem> Item) {
    // As for tables, only a field of exactly the class MakeField makes; anything else is freed.
    const TZvCollectionItem& Made = *Item;
    if (SpareFields.size() < MaxSpareFields && typeid(Made) == typeid(TZvFieldDef) &&
        static_cast<TZvFieldDef&>(*Item).ResetForReuse())
        SpareFields.push_back(std::move(Item));
}

std::unique_ptr<TZvFieldDef> TZvTableDefs::MakeField() {
    if (SpareFields.empty())
        return std::make_unique<TZvFieldDef>();
    std::unique_ptr<TZvFieldDef> Field(static_cast<TZvFieldDef*>(SpareFields.back().release()));
    SpareFields.pop_back();
    return Field;
}

std::unique_ptr<TZvCollectionItem> TZvTableDefs::NewItem() const {
    return TakeKeptItem(SpareTables);
}

void TZvTableDefs::EndUpdate() {
    TZvCollection::EndUpdate();
    if (GetUpdateCount() == 0)
        UpdateFieldAliases();
}

TZvTableDef* TZvTableDefs::FindByAlias(std::string_view S) const {
    return FindIn<&TZvTableDef::GetAlias>(TableByAlias, S);
}

TZvTableDef* TZvTableDefs::FindByName(std::string_view S) const {
    return FindIn<&TZvTableDef::GetName>(TableByName, S);
}

TZvFieldDef* TZvTableDefs::GetFieldDefs(int Index) const {
    if (Index < 0 || Index >= GetFieldCount())
        return nullptr;
    return Positions[static_cast<std::size_t>(Index)];
}

std::string TZvTableDefs::GetUniqueAlias(std::string_view Base, bool ForceNumber) {
    TZvSelectParser* Parser = GetParser();
    const std::string Stem = Parser && Parser->IsLowerCaseAliases() ? LowerCase(Base) : std::string(Base);
    std::string Candidate = Stem;
    int Counter = 0;
    while (ForceNumber || IsAliasInUse(Candidate)) {
        Candidate = Stem + std::to_string(++Counter);
        ForceNumber = false;
    }
    return Candidate;
}

bool TZvTableDefs::IsTableJoined(const TZvTableDef* Table) const {
    if (!Table)
        return false;
    return AnyJoinNaming(Table->GetAlias(), [&](TZvJoinDef& Join) { return MakesJoined(Join, *Table); });
}

// Searched from both ends at once, a table a step each: from From along its joins and from To back
// along the joins that lead to it, until the two meet or one side runs out. A long chain behind
// one of the two tables then costs no more than what stands behind the other, and a table that a
// new join makes joined, which has no joins of its own yet, costs nothing.
bool TZvTableDefs::JoinsLeadTo(const TZvTableDef& From, const TZvTableDef& To) const {
    const TZvJoinDefs* FromJoins = From.FindJoinDefs();
    if (FromJoins == nullptr || FromJoins->Count() == 0)
        return false;
    std::vector<const TZvTableDef*> Ahead{&From};
    std::vector<const TZvTableDef*> Behind{&To};
    TZvTableSet Reached{&From};
    TZvTableSet Reaching{&To};
    while (!Ahead.empty() && !Behind.empty()) {
        if (StepAlongJoins(Ahead, Reached, Reaching) || StepBackAlongJoins(Behind, Reaching, Reached))
            return true;
    }
    return false;
}

bool TZvTableDefs::StepAlongJoins(std::vector<const TZvTableDef*>& Pending, TZvTableSet& Seen,
                                  const TZvTableSet& Other) const {
    const TZvJoinDefs* Joins = Pending.back()->FindJoinDefs();
    Pending.pop_back();
    for (int J = 0; Joins != nullptr && J < Joins->Count(); ++J) {
        const TZvTableDef* Target = FindByAlias(Joins->Items(J)->GetTableAlias());
        if (Target == nullptr)
            continue;
        if (Other.count(Target) > 0)
            return true;
        if (Seen.insert(Target).second)
            Pending.push_back(Target);
    }
    return false;
}

bool TZvTableDefs::StepBackAlongJoins(std::vector<const TZvTableDef*>& Pending, TZvTableSet& Seen,
                                      const TZvTableSet& Other) const {
    const TZvTableDef* Table = Pending.back();
    Pending.pop_back();
    // A join leads to the first table with its target alias: a later table of that alias has none
    // leading to it.
    if (FindByAlias(Table->GetAlias()) != Table)
        return false;
    return AnyJoinNaming(Table->GetAlias(), [&](const TZvJoinDef& Join) {
        const TZvTableDef* Owner = Join.GetTableDef();
        if (Owner == nullptr)
            return false;
        if (Other.count(Owner) > 0)
            return true;
        if (Seen.insert(Owner).second)
            Pending.push_back(Owner);
        return false;
    });
}

// A join that targets its own table compares two columns of that one table: the table is then
// written in the FROM list as any other, or it would be in nobody's chain and vanish from the
// statement. Only a join held by another table makes its target joined.
bool TZvTableDefs::MakesJoined(const TZvJoinDef& Join, const TZvTableDef& Table) const {
    if (!SameIdentifier(Join.GetTableAlias(), Table.GetAlias()))
        return false;
    const TZvTableDef* Owner = Join.GetTableDef();
    return !Owner || !SameIdentifier(Join.GetTableAlias(), Owner->GetAlias());
}

void TZvTableDefs::UpdateJoins() {
    DropJoinsTo(nullptr);
}

void TZvTableDefs::UpdateTableAlias(std::string_view OldAlias, std::string_view NewAlias) {
    AnyJoinNaming(OldAlias, [NewAlias](TZvJoinDef& Join) {
        Join.SetTableAlias(std::string(NewAlias));
        return false;
    });
}

void TZvTableDefs::UpdateFieldAliases() {
    const bool Exact = CaseSensitive();
    for (int T = 0; T < Count(); ++T) {
        const TZvFieldDefs& Fields = Items(T)->GetFieldDefs();
        if (Fields.Count() < 2)
            continue;
        // The fields of this table by alias, in index order, so that "the first field whose alias
        // is this name" costs a hash look-up instead of a scan of the table.
        TZvIdentMap<std::vector<int>> ByAlias = MakeIdentMap<std::vector<int>>(Exact);
        for (int F = 0; F < Fields.Count(); ++F)
            IdentEntry(ByAlias, Fields.Items(F)->GetAlias()).push_back(F);
        for (int F = 0; F < Fields.Count(); ++F) {
            TZvFieldDef* Field = Fields.Items(F);
            const auto Found = ByAlias.find(Field->GetName());
            if (Found == ByAlias.end() || Found->second.empty() || Found->second.front() == F)
                continue;
            const std::string NewAlias = Field->GetKind() == fkIdentifier
                                             ? GetUniqueAlias(Field->GetName(), true)
                                             : GetUniqueAlias("FIELD_", true);
            std::vector<int>& Old = IdentEntry(ByAlias, Field->GetAlias());
            Old.erase(std::find(Old.begin(), Old.end(), F));
            std::vector<int>& New = IdentEntry(ByAlias, NewAlias);
            New.insert(std::lower_bound(New.begin(), New.end(), F), F);
            Field->SetAlias(NewAlias);
        }
    }
}

// Positions --------------------------------------------------------------------------------------

void TZvTableDefs::AppendPosition(TZvFieldDef* Field) {
    Field->AbsIndex = GetFieldCount();
    Positions.push_back(Field);
}

void TZvTableDefs::RemovePosition(TZvFieldDef* Field) {
    const auto At = static_cast<std::size_t>(Field->AbsIndex);
    assert(At < Positions.size() && Positions[At] == Field && "positions out of step with the fields");
    Positions.erase(Positions.begin() + static_cast<std::ptrdiff_t>(At));
    for (std::size_t I = At; I < Positions.size(); ++I)
        Positions[I]->AbsIndex = static_cast<std::int32_t>(I);
}

void TZvTableDefs::MovePosition(TZvFieldDef* Field, std::int32_t To) {
    const std::int32_t From = Field->AbsIndex;
    const auto First = Positions.begin();
    if (To > From)
        std::rotate(First + From, First + From + 1, First + To + 1);
    else
        std::rotate(First + To, First + From, First + From + 1);
    for (std::int32_t I = std::min(From, To); I <= std::max(From, To); ++I)
        Positions[static_cast<std::size_t>(I)]->AbsIndex = I;
}

void TZvTableDefs::RemovePositions(const std::vector<TZvFieldDef*>& Fields) {
    if (Fields.empty())
        return;
    const std::unordered_set<const TZvFieldDef*> Doomed(Fields.begin(), Fields.end());
    std::erase_if(Positions, [&Doomed](const TZvFieldDef* F) { return Doomed.count(F) > 0; });
    for (std::size_t I = 0; I < Positions.size(); ++I)
        Positions[I]->AbsIndex = static_cast<std::int32_t>(I);
}

void TZvTableDefs::TakeOverPosition(TZvFieldDef* Field, TZvFieldDef* Old) {
    const auto From = static_cast<std::size_t>(Field->AbsIndex);
    const auto At = static_cast<std::size_t>(Old->AbsIndex);
    assert(From > At && "the newcomer was appended after the field it replaces");
    Positions[At] = Field;
    Field->AbsIndex = Old->AbsIndex;
    Positions.erase(Positions.begin() + static_cast<std::ptrdiff_t>(From));
    for (std::size_t I = From; I < Positions.size(); ++I)
        Positions[I]->AbsIndex = static_cast<std::int32_t>(I);
    Old->AbsIndex = GetFieldCount();
}

// Alias index -----------------------------------------------------------------------------------

bool TZvTableDefs::CaseSensitive() const {
    TZvSelectParser* Parser = GetParser();
    return !(Parser && !Parser->GetCaseSensitiveIdentifiers());
}

void TZvTableDefs::AliasAdded(std::string_view Alias) {
    if (AliasIndexValid)
        ++IdentEntry(AliasUse, Alias);
}

void TZvTableDefs::AliasRemoved(std::string_view Alias) {
    if (!AliasIndexValid)
        return;
    const auto Found = AliasUse.find(Alias);
    if (Found != AliasUse.end() && --Found->second <= 0)
        AliasUse.erase(Found);
}

bool TZvTableDefs::IsAliasInUse(std::string_view Alias) {
    // The index is rebuilt when the case rule changed since it was built: a dialect may derive
    // the rule from settings that do not announce their changes.
    const bool Exact = CaseSensitive();
    if (!AliasIndexValid || AliasIndexCaseSensitive != Exact) {
        AliasUse = MakeIdentMap<int>(Exact);
        AliasIndexCaseSensitive = Exact;
        for (const TZvFieldDef* Field : Positions)
            ++IdentEntry(AliasUse, Field->GetAlias());
        AliasIndexValid = true;
    }
    return AliasUse.contains(Alias);
}

// Table index -----------------------------------------------------------------------------------

// The key's reader is a template argument, so that the walk reads the alias or name in place.
template <TZvTableDefs::TZvTableKey Key>
TZvTableDef* TZvTableDefs::FindIn(const TZvTableKeyIndex& Index, std::string_view S) const {
    // A few tables are found faster by a walk than through an index that has to be built and kept
    // per statement (most statements name one to four tables).
    constexpr int WalkedTables = 8;
    if (Count() <= WalkedTables && !TableIndexUsable()) {
        // Keys of the same length whose first bytes differ by more than ASCII case cannot be the
        // same under either rule: most tables are passed over on those two tests.
        const TZvIdentEqual Same{CaseSensitive()};
        for (TZvCollectionItem* Item : GetItemSlots()) {
            auto* Table = static_cast<TZvTableDef*>(Item);
            const std::string& Text = (Table->*Key)();
            if (Text.size() == S.size() && (S.empty() || ((Text[0] ^ S[0]) & ~0x20) == 0) && Same(Text, S))
                return Table;
        }
        return nullptr;
    }
    if (!TableIndexUsable()) {
        const bool Exact = CaseSensitive();
        TableByAlias = MakeIdentMap<TZvTableKeyEntry>(Exact);
        TableByName = MakeIdentMap<TZvTableKeyEntry>(Exact);
        for (int T = 0; T < Count(); ++T) {
            IndexTable(TableByAlias, Items(T)->GetAlias(), T);
            IndexTable(TableByName, Items(T)->GetName(), T);
        }
        TableIndexCaseSensitive = Exact;
        TableIndexValid = true;
    }
    const auto Found = Index.find(S);
    return Found == Index.end() ? nullptr : Items(Found->second.First);
}

void TZvTableDefs::IndexTable(TZvTableKeyIndex& Index, std::string_view Key, int At) {
    TZvTableKeyEntry& Entry = IdentEntry(Index, Key);
    ++Entry.Tables;
    Entry.First = std::min(Entry.First, At);
}

bool TZvTableDefs::TableIndexUsable() const {
    // A changed case rule leaves the index to be rebuilt by the next look-up.
    return TableIndexValid && TableIndexCaseSensitive == CaseSensitive();
}

void TZvTableDefs::ItemAppended(TZvCollectionItem* Item) {
    if (!TableIndexUsable())
        return;
    const auto* Table = static_cast<const TZvTableDef*>(Item);
    IndexTable(TableByAlias, Table->GetAlias(), Item->GetIndex());
    IndexTable(TableByName, Table->GetName(), Item->GetIndex());
}

void TZvTableDefs::ItemsMoved() {
    // A table that goes takes its joins along.
    JoinIndex.Invalidate();
    TableIndexValid = false;
    TableByAlias.clear();
    TableByName.clear();
}

void TZvTableDefs::TableAliasChanged(const TZvTableDef& Table, std::string_view Old, std::string_view New) {
    if (TableIndexUsable())
        TableKeyChanged(TableByAlias, &TZvTableDef::GetAlias, Table.GetIndex(), Old, New);
}

void TZvTableDefs::TableNameChanged(const TZvTableDef& Table, std::string_view Old, std::string_view New) {
    if (TableIndexUsable())
        TableKeyChanged(TableByName, &TZvTableDef::GetName, Table.GetIndex(), Old, New);
}

void TZvTableDefs::TableKeyChanged(TZvTableKeyIndex& Index, TZvTableKey Key, int At, std::string_view Old,
                                   std::string_view New) {
    const TZvIdentEqual Same = Index.key_eq();
    if (Same(Old, New))
        return;
    // When the table at At was the first of several with the old key, the next one takes over.
    const auto Leaving = Index.find(Old);
    if (Leaving != Index.end() && --Leaving->second.Tables == 0) {
        Index.erase(Leaving);
    } else if (Leaving != Index.end() && Leaving->second.First == At) {
        int Next = At + 1;
        while (!Same((Items(Next)->*Key)(), Old))
            ++Next;
        Leaving->second.First = Next;
    }
    IndexTable(Index, New, At);
}

// Join index ------------------------------------------------------------------------------------

bool TZvTableDefs::WalksJoins() const {
    // A few joins are found faster by a walk than through an index that has to be built per
    // statement (most statements join two to four tables).
    constexpr int WalkedTables = 16;
    return Count() <= WalkedTables && !JoinIndex.Usable(CaseSensitive());
}

template <class TVisit>
bool TZvTableDefs::AnyJoinNaming(std::string_view Alias, TVisit&& Visit) const {
    if (WalksJoins()) {
        const TZvIdentEqual Same{CaseSensitive()};
        for (int T = 0; T < Count(); ++T) {
            // A table that never had a join is passed by, rather than given an empty list.
            const TZvJoinDefs* Joins = Items(T)->FindJoinDefs();
            for (int J = 0; Joins && J < Joins->Count(); ++J)
                if (Same(Joins->Items(J)->GetTableAlias(), Alias) && Visit(*Joins->Items(J)))
                    return true;
        }
        return false;
    }
    // A copy: the visit may re-point a join, which moves it within the index being read.
    const std::vector<TZvJoinDef*> Naming = JoinTargets().Naming(Alias);
    return std::any_of(Naming.begin(), Naming.end(), [&Visit](TZvJoinDef* Join) { return Visit(*Join); });
}

TZvJoinTargetIndex& TZvTableDefs::JoinTargets() const {
    const bool Exact = CaseSensitive();
    if (!JoinIndex.Usable(Exact)) {
        JoinIndex.Reset(Exact);
        for (int T = 0; T < Count(); ++T) {
            const TZvJoinDefs* Joins = Items(T)->FindJoinDefs();
            for (int J = 0; Joins && J < Joins->Count(); ++J)
                JoinIndex.Add(Joins->Items(J), Joins->Items(J)->GetTableAlias());
        }
    }
    return JoinIndex;
}

void TZvTableDefs::JoinAppended(TZvJoinDef& Join) {
    if (JoinIndex.Usable(CaseSensitive()))
        JoinIndex.Add(&Join, Join.GetTableAlias());
}

void TZvTableDefs::JoinTargetChanged(TZvJoinDef& Join, std::string_view Old, std::string_view New) {
    if (!JoinIndex.Usable(CaseSensitive()))
        return;
    JoinIndex.Remove(&Join, Old);
    JoinIndex.Add(&Join, New);
}

void TZvTableDefs::JoinsMoved() {
    JoinIndex.Invalidate();
}

// Bulk removal ----------------------------------------------------------------------------------

void TZvTableDefs::DeleteFields(const std::vector<TZvFieldDef*>& Fields, bool DropOrderBy) {
    if (Fields.empty())
        return;
    RemovePositions(Fields);
    for (const TZvFieldDef* Field : Fields)
        AliasRemoved(Field->GetAlias());
    TZvSelectParser* Parser = GetParser();
    if (DropOrderBy && Parser) {
        TZvOrderByItems& OrderBy = Parser->GetOrderByItems();
        for (const TZvFieldDef* Field : Fields) {
            const int Entry = OrderBy.IndexOf(Field->GetAlias());
            if (Entry >= 0)
                OrderBy.Delete(Entry);
        }
    }
    const std::unordered_set<const TZvCollectionItem*> Doomed(Fields.begin(), Fields.end());
    std::unordered_set<TZvFieldDefs*> Lists;
    for (const TZvFieldDef* Field : Fields)
        Lists.insert(static_cast<TZvFieldDefs*>(Field->GetCollection()));
    for (TZvFieldDefs* List : Lists)
        List->RemoveItemsIf([&Doomed](const TZvCollectionItem& Item) { return Doomed.count(&Item) > 0; });
}

void TZvTableDefs::DropJoinsTo(const TZvTableDef* Leaving) {
    auto Finds = [&](std::string_view Target) {
        for (int T = 0; T < Count(); ++T) {
            const TZvTableDef* Table = Items(T);
            if (Table != Leaving && SameIdentifier(Table->GetAlias(), Target))
                return true;
        }
        for (int T = 0; T < Count(); ++T) {
            const TZvTableDef* Table = Items(T);
            if (Table != Leaving && SameIdentifier(Table->GetName(), Target))
                return true;
        }
        return false;
    };
    for (int T = 0; T < Count(); ++T) {
        TZvJoinDefs& Joins = Items(T)->GetJoinDefs();
        for (int J = 0; J < Joins.Count();) {
            if (Finds(Joins.Items(J)->GetTableAlias()))
                ++J;
            else
                Joins.Delete(J);
        }
    }
}

} // namespace zv
