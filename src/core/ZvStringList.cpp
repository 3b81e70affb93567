// The model's text lists: entries with attached objects, and the ORDER BY list's directions kept
// in step with its entries.
#include "ZvStringList.h"

#include "ZvErrors.h"
#include "ZvScanner.h"
#include "ZvSelectParser.h"
#include "ZvUtils.h"

namespace zv {

// ---- TZvStringList --------------------------------------------------------------------------

const std::string& TZvStringList::Get(int Index) const {
    CheckIndex(Index, Count() - 1);
    return Entries[static_cast<std::size_t>(Index)].Text;
}

void TZvStringList::Put(int Index, std::string_view S) {
    CheckIndex(Index, Count() - 1);
    Entries[static_cast<std::size_t>(Index)].Text = std::string(S);
    Changed();
}

TZvPersistent* TZvStringList::GetObject(int Index) const {
    CheckIndex(Index, Count() - 1);
    return Entries[static_cast<std::size_t>(Index)].Object;
}

void TZvStringList::PutObject(int Index, TZvPersistent* Object) {
    CheckIndex(Index, Count() - 1);
    Entries[static_cast<std::size_t>(Index)].Object = Object;
    Changed();
}

int TZvStringList::AddObject(std::string_view S, TZvPersistent* Object) {
    const int Index = Count();
    InsertObject(Index, S, Object);
    return Index;
}

void TZvStringList::InsertObject(int Index, std::string_view S, TZvPersistent* Object) {
    CheckIndex(Index, Count());
    Entries.insert(Entries.begin() + Index, TEntry{std::string(S), Object});
    Changed();
}

void TZvStringList::Delete(int Index) {
    CheckIndex(Index, Count() - 1);
    Entries.erase(Entries.begin() + Index);
    Changed();
}

void TZvStringList::Clear() {
    if (Entries.empty())
        return;
    Entries.clear();
    Changed();
}

void TZvStringList::Assign(const TZvStringList& Source) {
    if (&Source == this)
        return;
    BeginUpdate();
    Entries = Source.Entries;
    Changed();
    EndUpdate();
}

int TZvStringList::IndexOf(std::string_view S) const {
    for (std::size_t I = 0; I < Entries.size(); ++I) {
        const std::string& Text = Entries[I].Text;
        if (CaseSensitive ? Text == S : SameText(Text, S))
            return static_cast<int>(I);
    }
    return -1;
}

void TZvStringList::EndUpdate() {
    if (UpdateCount > 0)
        --UpdateCount;
    if (UpdateCount == 0 && ChangedInUpdate) {
        ChangedInUpdate = false;
        if (OnChange)
            OnChange(*this);
    }
}

std::string TZvStringList::ProcessName(std::string_view S) const {
    std::string Text;
    AppendName(Text, S);
    return Text;
}

void TZvStringList::AppendName(std::string& Out, std::string_view S) const {
    if (Parser)
        Parser->GetScanner().AppendName(Out, S);
    else
        Out += S;
}

std::string TZvStringList::ProcessAlias(std::string_view S) const {
    if (Parser && Parser->GetScanner().GetProcessAliases())
        return Parser->GetScanner().ProcessName(S);
    return std::string(S);
}

void TZvStringList::Changed() {
    if (UpdateCount > 0) {
        ChangedInUpdate = true;
        return;
    }
    if (OnChange)
        OnChange(*this);
}

void TZvStringList::CheckIndex(int Index, int Limit) const {
    if (Index < 0 || Index > Limit)
        throw EZvError("List index out of bounds (" + std::to_string(Index) + ")");
}

// ---- TZvOrderByItems ------------------------------------------------------------------------

int TZvOrderByItems::AddOrdered(std::string_view S, TZvOrderKind Kind) {
    // One bracket, so that OnChange sees the entry with its direction, never with a default.
    BeginUpdate();
    const int Index = Add(S);
    Orders[static_cast<std::size_t>(Index)] = Kind;
    EndUpdate();
    return Index;
}

TZvOrderKind TZvOrderByItems::GetOrders(int Index) const {
    CheckIndex(Index, Count() - 1);
    return Orders[static_cast<std::size_t>(Index)];
}

void TZvOrderByItems::SetOrders(int Index, TZvOrderKind Kind) {
    CheckIndex(Index, Count() - 1);
    Orders[static_cast<std::size_t>(Index)] = Kind;
    Changed();
}

void TZvOrderByItems::InsertObject(int Index, std::string_view S, TZvPersistent* Object) {
    // Checked before the bracket opens, so that a refused index leaves no bracket open; the
    // bracket keeps OnChange from seeing the entries and directions out of step.
    CheckIndex(Index, Count());
    BeginUpdate();
    TZvStringList::InsertObject(Index, S, Object);
    Orders.insert(Orders.begin() + Index, okAsc);
    EndUpdate();
}

void TZvOrderByItems::Delete(int Index) {
    CheckIndex(Index, Count() - 1);
    BeginUpdate();
    TZvStringList::Delete(Index);
    Orders.erase(Orders.begin() + Index);
    EndUpdate();
}

void TZvOrderByItems::Clear() {
    BeginUpdate();
    TZvStringList::Clear();
    Orders.clear();
    EndUpdate();
}

void TZvOrderByItems::Assign(const TZvStringList& Source) {
    if (&Source == this)
        return;
    BeginUpdate();
    TZvStringList::Assign(Source);
    if (const auto* Ordered = dynamic_cast<const TZvOrderByItems*>(&Source))
        Orders = Ordered->Orders;
    else
        Orders.assign(static_cast<std::size_t>(Count()), okAsc);
    EndUpdate();
}

} // namespace zv
