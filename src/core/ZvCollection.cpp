// The collection base: ownership, positions and parser routing of model items.
#include "ZvCollection.h"

#include "ZvErrors.h"
#include "ZvScanner.h"
#include "ZvSelectParser.h"
#include "ZvUtils.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace zv {

// ---- TZvItemSlots ---------------------------------------------------------------------------

TZvItemSlots::~TZvItemSlots() {
    if (Data != Inline)
        delete[] Data;
}

void TZvItemSlots::reserve(std::size_t N) {
    if (N <= Capacity)
        return;
    // Doubling keeps appends to a list of thousands of fields linear.
    const std::size_t NewCapacity = std::max<std::size_t>(N, std::size_t{2} * Capacity);
    auto** Grown = new TZvCollectionItem*[NewCapacity];
    std::copy(Data, Data + Size, Grown);
    if (Data != Inline)
        delete[] Data;
    Data = Grown;
    Capacity = static_cast<std::uint32_t>(NewCapacity);
}

void TZvItemSlots::InsertMoving(std::size_t Index, TZvCollectionItem* Item) {
    assert(Index <= Size && "a slot past the end of the list");
    reserve(std::size_t{Size} + 1);
    std::copy_backward(Data + Index, Data + Size, Data + Size + 1);
    Data[Index] = Item;
    ++Size;
}

void TZvItemSlots::erase(std::size_t Index) {
    assert(Index < Size && "a slot past the end of the list");
    std::copy(Data + Index + 1, Data + Size, Data + Index);
    --Size;
}

// ---- TZvCollectionItem ----------------------------------------------------------------------

void TZvCollectionItem::Assign(const TZvCollectionItem& /*Source*/) {}

TZvSelectParser* TZvCollectionItem::GetParser() const {
    if (ItemParser)
        return ItemParser;
    return Collection ? Collection->GetParser() : nullptr;
}

void TZvCollectionItem::SetParser(TZvSelectParser* Value) {
    ItemParser = Value;
}

std::string TZvCollectionItem::ProcessName(std::string_view S) const {
    if (TZvSQLScanner* Scanner = GetScanner())
        return Scanner->ProcessName(S);
    return std::string(S);
}

void TZvCollectionItem::AppendName(std::string& Out, std::string_view S) const {
    if (TZvSQLScanner* Scanner = GetScanner())
        Scanner->AppendName(Out, S);
    else
        Out += S;
}

void TZvCollectionItem::AppendAlias(std::string& Out, std::string_view S) const {
    TZvSQLScanner* Scanner = GetScanner();
    if (Scanner && Scanner->GetProcessAliases())
        Scanner->AppendName(Out, S);
    else
        Out += S;
}

bool TZvCollectionItem::SameIdentifier(std::string_view A, std::string_view B) const {
    if (Collection)
        return Collection->SameIdentifier(A, B);
    return A == B;
}

std::string TZvCollectionItem::QuoteName(std::string_view S) const {
    if (TZvSQLScanner* Scanner = GetScanner())
        return Scanner->QuoteName(S);
    return std::string(S);
}

std::string TZvCollectionItem::ProcessKeyword(std::string_view S) const {
    if (TZvSelectParser* P = GetParser())
        return P->ProcessKeyword(S);
    return std::string(S);
}

std::string TZvCollectionItem::ProcessFunction(std::string_view S) const {
    if (TZvSelectParser* P = GetParser())
        return P->ProcessFunction(S);
    return std::string(S);
}

TZvSQLScanner* TZvCollectionItem::GetScanner() const {
    TZvSelectParser* P = GetParser();
    return P ? &P->GetScanner() : nullptr;
}

// ---- TZvCollection --------------------------------------------------------------------------

TZvCollection::TZvCollection(TZvPersistent* AOwner, TZvItemClass AItemClass)
    : ListOwner(AOwner), ListItemClass(std::move(AItemClass)) {
    assert(ListItemClass && "a collection needs an item class to make its items");
}

TZvCollection::~TZvCollection() {
    ClearItems();
}

TZvCollectionItem* TZvCollection::Add() {
    return Insert(Count());
}

TZvCollectionItem* TZvCollection::Insert(int Index) {
    CheckIndex(Index, Count());
    return Place(Index, NewItem());
}

TZvCollectionItem* TZvCollection::Adopt(std::unique_ptr<TZvCollectionItem> Item) {
    assert(Item && Item->Collection == nullptr && "only an item standing alone can be adopted");
    return Place(Count(), std::move(Item));
}

TZvCollectionItem* TZvCollection::Place(int Index, std::unique_ptr<TZvCollectionItem> Owned) {
    TZvCollectionItem* Item = Owned.get();
    Item->Collection = this;
    Items.insert(static_cast<std::size_t>(Index), Item);
    Owned.release(); // the list owns it from here
    Renumber(Index);
    if (Index + 1 < Count())
        ItemsMoved();
    else
        ItemAppended(Item);
    Item->Added();
    Item->SetParser(ListParser);
    return Item;
}

std::unique_ptr<TZvCollectionItem> TZvCollection::TakeKeptItem(TZvKeptItems& Kept) const {
    if (Kept.empty())
        return ListItemClass();
    std::unique_ptr<TZvCollectionItem> Item = std::move(Kept.back());
    Kept.pop_back();
    return Item;
}

void TZvCollection::Delete(int Index) {
    CheckIndex(Index, Count() - 1);
    TZvCollectionItem* Item = Items[static_cast<std::size_t>(Index)];
    Item->Removing();
    // The clean-up rules may have removed other items of this list, so look the item up again.
    const int Current = Item->Index;
    assert(Current >= 0 && Items[static_cast<std::size_t>(Current)] == Item);
    std::unique_ptr<TZvCollectionItem> Doomed(Item);
    Items.erase(static_cast<std::size_t>(Current));
    Renumber(Current);
    Doomed->Collection = nullptr;
    Doomed->Index = -1;
    ItemsMoved();
}

void TZvCollection::Remove(TZvCollectionItem* Item) {
    if (Item && Item->Collection == this)
        Delete(Item->Index);
}

void TZvCollection::Clear() {
    ClearItems();
}

void TZvCollection::Assign(const TZvCollection& Source) {
    if (&Source == this)
        return;
    BeginUpdate();
    try {
        Clear();
        for (const TZvCollectionItem* Item : Source.Items)
            Add()->Assign(*Item);
    } catch (...) {
        EndUpdate();
        throw;
    }
    EndUpdate();
}

void TZvCollection::TakeItems(TZvCollection& Source) {
    if (&Source == this || Source.Items.empty())
        return;
    Source.ItemsMoved();
    const int First = Count();
    Items.reserve(Items.size() + Source.Items.size());
    for (TZvCollectionItem* Moved : Source.Items) {
        Moved->Collection = this;
        Items.insert(Items.size(), Moved);
    }
    Source.Items.truncate(0);
    Renumber(First);
    ItemsMoved();
    for (std::size_t I = static_cast<std::size_t>(First); I < Items.size(); ++I)
        Items[I]->SetParser(ListParser);
}

void TZvCollection::EndUpdate() {
    if (UpdateCount > 0)
        --UpdateCount;
}

void TZvCollection::SetParser(TZvSelectParser* Value) {
    if (Value == ListParser)
        return;
    ListParser = Value;
    for (TZvCollectionItem* Item : Items)
        Item->SetParser(Value);
}

bool TZvCollection::SameIdentifier(std::string_view A, std::string_view B) const {
    // Either way texts of different lengths differ; most look-ups compare such.
    if (A.size() != B.size())
        return false;
    if (ListParser && !ListParser->GetCaseSensitiveIdentifiers())
        return SameText(A, B);
    return A == B;
}

void TZvCollection::ClearItems() {
    ClearItems([](std::unique_ptr<TZvCollectionItem> /*Doomed*/) {});
}

int TZvCollection::RemoveItemsIf(const std::function<bool(const TZvCollectionItem&)>& Doomed) {
    auto Kept = std::stable_partition(Items.begin(), Items.end(),
                                      [&](const TZvCollectionItem* I) { return !Doomed(*I); });
    std::vector<std::unique_ptr<TZvCollectionItem>> Removed(Kept, Items.end());
    Items.truncate(static_cast<std::size_t>(Kept - Items.begin()));
    Renumber(0);
    if (!Removed.empty())
        ItemsMoved();
    for (auto& Item : Removed) {
        Item->Collection = nullptr;
        Item->Index = -1;
    }
    const int N = static_cast<int>(Removed.size());
    Removed.clear();
    return N;
}

void TZvCollection::Renumber(int From) {
    for (std::size_t I = static_cast<std::size_t>(From); I < Items.size(); ++I)
        Items[I]->Index = static_cast<int>(I);
}

void TZvCollection::CheckIndex(int Index, int Limit) const {
    if (Index < 0 || Index > Limit)
        OutOfBounds(Index);
}

void TZvCollection::OutOfBounds(int Index) {
    throw EZvError("List index out of bounds (" + std::to_string(Index) + ")");
}

} // namespace zv
