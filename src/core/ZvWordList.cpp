// Case-insensitive word look-up for the dialects' lists.
#include "ZvWordList.h"

#include <cstring>

#include "ZvUtils.h"

namespace zv {

namespace {

// Words of up to eight bytes, the common case, are looked up by their folded bytes packed into one
// integer: hashing and comparing each is then a few instructions.
constexpr std::size_t kPackedSize = 8;

// The bytes of a short Text in one integer, each letter upper-cased. A copy of a known length is a
// load; the letters of all eight bytes are folded at once (a byte is a lower-case letter when its
// low seven bits lie in 'a'..'z' and its high bit is clear).
[[gnu::always_inline]] inline std::uint64_t PackFolded(std::string_view Text) {
    std::uint64_t Packed = 0;
    switch (Text.size()) {
    case 8: std::memcpy(&Packed, Text.data(), 8); break;
    case 7: std::memcpy(&Packed, Text.data(), 7); break;
    case 6: std::memcpy(&Packed, Text.data(), 6); break;
    case 5: std::memcpy(&Packed, Text.data(), 5); break;
    case 4: std::memcpy(&Packed, Text.data(), 4); break;
    case 3: std::memcpy(&Packed, Text.data(), 3); break;
    case 2: std::memcpy(&Packed, Text.data(), 2); break;
    case 1: std::memcpy(&Packed, Text.data(), 1); break;
    default: break;
    }
    constexpr std::uint64_t Ones = 0x0101010101010101ULL;
    constexpr std::uint64_t High = Ones * 0x80;
    const std::uint64_t Low7 = Packed & ~High;
    const std::uint64_t AtLeastA = Low7 + Ones * (0x80 - 'a');
    const std::uint64_t AboveZ = Low7 + Ones * (0x80 - 'z' - 1);
    const std::uint64_t Lower = AtLeastA & ~AboveZ & ~Packed & High;
    return Packed - (Lower >> 2);
}

std::uint64_t Mix(std::uint64_t H) {
    H *= 0x9E3779B97F4A7C15ULL;
    return H ^ (H >> 29);
}

// A hash of the length and five sampled bytes, each with bit 0x20 set so that "Select" and
// "SELECT" land in one slot. Sampling keeps the cost flat for long names; words that collide are
// told apart by the full comparison in Locate, and the word lists are small enough for that.
std::uint64_t FoldedHash(std::string_view Text) {
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

void TZvWordFlags::Clear() {
    Keys.clear();
    PackedKeys.clear();
    Values.clear();
    Slots.clear();
    FirstAndLength.fill(0);
    HasEmptyKey = false;
}

// The slot holding Text, or the empty slot where it would go. Slots must not be empty.
std::size_t TZvWordFlags::Locate(std::string_view Text) const {
    const std::size_t Mask = Slots.size() - 1;
    if (Text.size() <= kPackedSize) {
        const std::uint64_t Packed = PackFolded(Text);
        std::size_t Slot = Mix(Packed ^ (static_cast<std::uint64_t>(Text.size()) << 56)) & Mask;
        while (Slots[Slot] != 0 && !(PackedKeys[Slots[Slot] - 1] == Packed && Keys[Slots[Slot] - 1].size() == Text.size()))
            Slot = (Slot + 1) & Mask;
        return Slot;
    }
    std::size_t Slot = FoldedHash(Text) & Mask;
    while (Slots[Slot] != 0 && !MatchesKey(Keys[Slots[Slot] - 1], Text))
        Slot = (Slot + 1) & Mask;
    return Slot;
}

void TZvWordFlags::Grow() {
    std::size_t Size = Slots.empty() ? 16 : Slots.size() * 2;
    Slots.assign(Size, 0);
    for (std::size_t I = 0; I < Keys.size(); ++I)
        Slots[Locate(Keys[I])] = static_cast<std::uint32_t>(I + 1);
}

void TZvWordFlags::Add(std::string_view Word, std::uint8_t Flags) {
    if ((Keys.size() + 1) * 2 > Slots.size())
        Grow();
    const std::size_t Slot = Locate(Word);
    if (Slots[Slot] != 0) {
        Values[Slots[Slot] - 1] = static_cast<std::uint8_t>(Values[Slots[Slot] - 1] | Flags);
        return;
    }
    Keys.push_back(UpperCase(Word));
    PackedKeys.push_back(Word.size() <= kPackedSize ? PackFolded(Word) : 0);
    Values.push_back(Flags);
    Slots[Slot] = static_cast<std::uint32_t>(Keys.size());
    if (Word.empty())
        HasEmptyKey = true;
    else
        FirstAndLength[static_cast<unsigned char>(UpCase(Word[0]))] |= LengthBit(Word.size());
}

std::uint8_t TZvWordFlags::FindKey(std::string_view Text) const {
    if (Slots.empty())
        return 0;
    const std::size_t Slot = Locate(Text);
    return Slots[Slot] == 0 ? 0 : Values[Slots[Slot] - 1];
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
