// Case-insensitive word look-up for the dialects' lists.
#include "ZvWordList.h"

#include <cstring>

#include "ZvUtils.h"

namespace zv {

namespace {

// Keys are stored upper-cased, so only the probe's letters need folding.
bool MatchesKey(const std::string& Key, std::string_view Text) {
    if (Key.size() != Text.size())
        return false;
    for (std::size_t I = 0; I < Text.size(); ++I) {
        if (UpCase(Text[I]) != Key[I])
            return false;
    }
    return true;
}

std::string_view TrimBlanks(std::string_view S) {
    while (!S.empty() && static_cast<unsigned char>(S.front()) <= ' ')
        S.remove_prefix(1);
    while (!S.empty() && static_cast<unsigned char>(S.back()) <= ' ')
        S.remove_suffix(1);
    return S;
}

} // namespace

// A hash of the length and five sampled bytes, each with bit 0x20 set so that "Select" and
// "SELECT" land in one slot. Sampling keeps the cost flat for long names; words that collide are
// told apart by the full comparison in Locate, and the word lists are small enough for that.
std::uint64_t TZvWordFlags::FoldedHash(std::string_view Text) {
    auto Byte = [&](std::size_t I) { return static_cast<std::uint64_t>(static_cast<unsigned char>(Text[I]) | 0x20u); };
    const std::size_t Size = Text.size();
    std::uint64_t H = Size;
    if (Size > 0)
        H = (H << 8 | Byte(0)) * 31 + Byte(Size - 1);
    if (Size > 2)
        H = (H * 31 + Byte(1)) * 31 + Byte(Size - 2);
    if (Size > 4)
        H = H * 31 + Byte(Size / 2);
    return Mix(H);
}

void TZvWordFlags::Clear() {
    Keys.clear();
    Slots.clear();
    FirstAndLength.fill(0);
    HasEmptyKey = false;
}

// The slot holding Text, or the empty slot where it would go. Slots must not be empty.
std::size_t TZvWordFlags::Locate(std::string_view Text) const {
    if (Text.size() <= kPackedSize)
        return LocatePacked(Text);
    const std::size_t Mask = Slots.size() - 1;
    std::size_t Slot = FoldedHash(Text) & Mask;
    while (Slots[Slot].Key != 0 && !MatchesKey(Keys[Slots[Slot].Key - 1], Text))
        Slot = (Slot + 1) & Mask;
    return Slot;
}

void TZvWordFlags::Grow() {
    std::vector<TSlot> Old(Slots.empty() ? 16 : Slots.size() * 2);
    Old.swap(Slots);
    for (const TSlot& Entry : Old) {
        if (Entry.Key != 0)
            Slots[Locate(Keys[Entry.Key - 1])] = Entry;
    }
}

void TZvWordFlags::Add(std::string_view Word, std::uint8_t Flags) {
    if ((Keys.size() + 1) * 2 > Slots.size())
        Grow();
    TSlot& Slot = Slots[Locate(Word)];
    if (Slot.Key != 0) {
        Slot.Flags = static_cast<std::uint8_t>(Slot.Flags | Flags);
        return;
    }
    Keys.push_back(UpperCase(Word));
    Slot.Packed = Word.size() <= kPackedSize ? PackFolded(Word) : 0;
    Slot.Key = static_cast<std::uint32_t>(Keys.size());
    Slot.Size = static_cast<std::uint8_t>(Word.size() < 255 ? Word.size() : 255);
    Slot.Flags = Flags;
    if (Word.empty())
        HasEmptyKey = true;
    else {
        FirstAndLength[static_cast<unsigned char>(UpCase(Word[0]))] |= LengthBit(Word.size());
        FirstAndLength[static_cast<unsigned char>(LoCase(Word[0]))] |= LengthBit(Word.size());
    }
}

std::uint8_t TZvWordFlags::FindLong(std::string_view Text) const {
    return Slots[Locate(Text)].Flags;
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
    Words.Add(Word, 1);
}

bool TZvWordList::Contains(std::string_view Word) const {
    return Words.Find(Word) != 0;
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
