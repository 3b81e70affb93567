// Case-insensitive word look-up for the dialects' lists.
#include "ZvWordList.h"

#include "ZvUtils.h"

namespace zv {

namespace {

// FNV-1a over the case-folded bytes, so that "Select" and "SELECT" land in one slot.
std::uint64_t FoldedHash(std::string_view Text) {
    std::uint64_t H = 14695981039346656037ULL;
    for (char C : Text) {
        H ^= static_cast<unsigned char>(UpCase(C));
        H *= 1099511628211ULL;
    }
    return H;
}

std::string_view TrimBlanks(std::string_view S) {
    while (!S.empty() && static_cast<unsigned char>(S.front()) <= ' ')
        S.remove_prefix(1);
    while (!S.empty() && static_cast<unsigned char>(S.back()) <= ' ')
        S.remove_suffix(1);
    return S;
}

} // namespace

void TZvWordList::TIndex::Clear() {
    Keys.clear();
    Slots.clear();
}

void TZvWordList::TIndex::Insert(std::string Key) {
    if (Contains(Key))
        return;
    Keys.push_back(UpperCase(Key));
    // Keep the load factor at or below one half; rehash everything when growing.
    if (Slots.size() < Keys.size() * 2) {
        std::size_t Size = 16;
        while (Size < Keys.size() * 2)
            Size *= 2;
        Slots.assign(Size, 0);
        for (std::size_t I = 0; I < Keys.size(); ++I) {
            std::size_t Slot = FoldedHash(Keys[I]) & (Size - 1);
            while (Slots[Slot] != 0)
                Slot = (Slot + 1) & (Size - 1);
            Slots[Slot] = static_cast<std::uint32_t>(I + 1);
        }
        return;
    }
    std::size_t Mask = Slots.size() - 1;
    std::size_t Slot = FoldedHash(Keys.back()) & Mask;
    while (Slots[Slot] != 0)
        Slot = (Slot + 1) & Mask;
    Slots[Slot] = static_cast<std::uint32_t>(Keys.size());
}

bool TZvWordList::TIndex::Contains(std::string_view Text) const {
    if (Slots.empty())
        return false;
    std::size_t Mask = Slots.size() - 1;
    for (std::size_t Slot = FoldedHash(Text) & Mask; Slots[Slot] != 0; Slot = (Slot + 1) & Mask) {
        if (SameText(Keys[Slots[Slot] - 1], Text))
            return true;
    }
    return false;
}

void TZvWordList::SetCommaText(std::string_view Text) {
    Entries.clear();
    if (!Text.empty()) {
        std::size_t Start = 0;
        for (;;) {
            std::size_t Comma = Text.find(',', Start);
            std::string_view Item = Text.substr(Start, Comma == std::string_view::npos ? Comma : Comma - Start);
            Entries.emplace_back(TrimBlanks(Item));
            if (Comma == std::string_view::npos)
                break;
            Start = Comma + 1;
        }
    }
    Rebuild();
}

std::string TZvWordList::GetCommaText() const {
    std::string Result;
    for (std::size_t I = 0; I < Entries.size(); ++I) {
        if (I > 0)
            Result += ',';
        Result += Entries[I];
    }
    return Result;
}

void TZvWordList::Assign(const TZvWordList& Source) {
    if (&Source == this)
        return;
    Entries = Source.Entries;
    Words = Source.Words;
}

void TZvWordList::Clear() {
    Entries.clear();
    Rebuild();
}

void TZvWordList::Add(std::string_view Word) {
    Entries.emplace_back(Word);
    Words.Insert(std::string(Word));
}

bool TZvWordList::Contains(std::string_view Word) const {
    return Words.Contains(Word);
}

bool TZvWordList::IsPrefixOfEntry(std::string_view Text) const {
    for (const std::string& Entry : Entries) {
        if (Entry.size() >= Text.size() && SameText(std::string_view(Entry).substr(0, Text.size()), Text))
            return true;
    }
    return false;
}

void TZvWordList::Rebuild() {
    std::vector<std::string> Old = std::move(Entries);
    Entries.clear();
    Words.Clear();
    for (const std::string& Word : Old)
        Add(Word);
}

} // namespace zv
