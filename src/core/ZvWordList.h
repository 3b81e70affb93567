// A dialect's word list (keywords, functions, operators ...): the entries in their given order plus
// a case-insensitive hash index, so that a look-up costs the same for 5 words as for 490.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "ZvUtils.h"

namespace zv {

// Case-insensitive map from a word to a small set of flags (open addressing, load factor <= 1/2).
// The scanner keeps one for all of its lists, so that a word is classified with one look-up.
class TZvWordFlags {
public:
    void Clear();
    // Adds Word (or ORs Flags into its existing entry).
    void Add(std::string_view Word, std::uint8_t Flags);
    // The flags of Text, 0 when it is absent. Inline up to the first-byte-and-length test, which
    // turns most identifiers away before any hashing.
    // A word that passes it names a key, so the table has slots; a short word is then probed right
    // here, without a call.
    std::uint8_t Find(std::string_view Text) const {
        if (Text.empty() ? !HasEmptyKey : !MayBeKey(Text[0], Text.size()))
            return 0;
        return Text.size() <= kPackedSize ? Slots[LocatePacked(Text)].Flags : FindLong(Text);
    }
    // Find for a word of Size > 0 bytes at Text inside a longer text, of which Readable bytes from
    // Text on may be read (the terminating NUL of a string counts). A word of up to eight bytes with
    // eight readable is loaded in one move and masked to its length, with no branch on the length.
    [[gnu::always_inline]] std::uint8_t FindInText(const char* Text, std::size_t Size, std::size_t Readable) const {
        if (!MayBeKey(Text[0], Size))
            return 0;
        if (Size > kPackedSize)
            return FindLong(std::string_view(Text, Size));
        const std::uint64_t Packed = Readable >= kPackedSize && std::endian::native == std::endian::little
                                         ? FoldPacked(LoadMasked(Text, Size))
                                         : PackFolded(std::string_view(Text, Size));
        return Slots[ProbePacked(Packed, static_cast<std::uint8_t>(Size))].Flags;
    }

private:
    // One slot of the open-addressed table. A probe compares a short word's packed bytes and length
    // right in the slot, so that finding it (or learning it is absent) reads one slot array and
    // nothing else; only keys longer than the packed size are compared against Keys.
    struct TSlot {
        std::uint64_t Packed = 0;  // the folded bytes of a key of up to 8 bytes, 0 for longer ones
        std::uint32_t Key = 0;     // index + 1 into Keys, 0 when the slot is empty
        std::uint8_t Size = 0;     // the key's length, 255 for any longer than that
        std::uint8_t Flags = 0;    // 0 in an empty slot, so a miss needs no test of its own
    };

    // Words of up to eight bytes, the common case, are looked up by their folded bytes packed into
    // one integer: hashing and comparing each is then a few instructions.
    static constexpr std::size_t kPackedSize = 8;
    static std::uint64_t PackFolded(std::string_view Text);
    // The letters among eight packed bytes upper-cased.
    static std::uint64_t FoldPacked(std::uint64_t Packed);
    // The Size (1..8) bytes at Text in one integer, the bytes after them cleared.
    static std::uint64_t LoadMasked(const char* Text, std::size_t Size) {
        std::uint64_t Packed;
        std::memcpy(&Packed, Text, kPackedSize);
        return Packed & (~std::uint64_t{0} >> (64 - 8 * Size));
    }
    // Some key begins with First (in either case) and is Size bytes long: most identifiers are
    // turned away by this before any hashing.
    bool MayBeKey(char First, std::size_t Size) const {
        return (FirstAndLength[static_cast<unsigned char>(First)] & LengthBit(Size)) != 0;
    }
    // The slot holding the key of Size bytes packed as Packed, or the empty slot where it would go.
    std::size_t ProbePacked(std::uint64_t Packed, std::uint8_t Size) const;
    static std::uint64_t Mix(std::uint64_t H) {
        H *= 0x9E3779B97F4A7C15ULL;
        return H ^ (H >> 29);
    }
    static std::uint64_t FoldedHash(std::string_view Text);
    // The slot holding Text, or the empty slot where it would go; Slots must not be empty.
    std::size_t LocatePacked(std::string_view Text) const;
    std::size_t Locate(std::string_view Text) const;
    std::uint8_t FindLong(std::string_view Text) const;
    void Grow();

    // Bit min(length, 31) of entry [first byte] is set when some key has that first byte (in either
    // case) and length: most identifiers are rejected by it without hashing.
    static std::uint32_t LengthBit(std::size_t Size) { return 1u << (Size < 31 ? Size : 31); }

    std::vector<std::string> Keys;  // upper-cased
    std::vector<TSlot> Slots;
    std::array<std::uint32_t, 256> FirstAndLength{};
    bool HasEmptyKey = false;
};

// The bytes of a short Text in one integer, each letter upper-cased. A copy of a known length is a
// load; the letters of all eight bytes are folded at once (a byte is a lower-case letter when its
// low seven bits lie in 'a'..'z' and its high bit is clear).
[[gnu::always_inline]] inline std::uint64_t TZvWordFlags::PackFolded(std::string_view Text) {
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
    return FoldPacked(Packed);
}

[[gnu::always_inline]] inline std::uint64_t TZvWordFlags::FoldPacked(std::uint64_t Packed) {
    constexpr std::uint64_t Ones = 0x0101010101010101ULL;
    constexpr std::uint64_t High = Ones * 0x80;
    const std::uint64_t Low7 = Packed & ~High;
    const std::uint64_t AtLeastA = Low7 + Ones * (0x80 - 'a');
    const std::uint64_t AboveZ = Low7 + Ones * (0x80 - 'z' - 1);
    const std::uint64_t Lower = AtLeastA & ~AboveZ & ~Packed & High;
    return Packed - (Lower >> 2);
}

[[gnu::always_inline]] inline std::size_t TZvWordFlags::LocatePacked(std::string_view Text) const {
    return ProbePacked(PackFolded(Text), static_cast<std::uint8_t>(Text.size()));
}

[[gnu::always_inline]] inline std::size_t TZvWordFlags::ProbePacked(std::uint64_t Packed, std::uint8_t Size) const {
    const std::size_t Mask = Slots.size() - 1;
    std::size_t Slot = Mix(Packed ^ (static_cast<std::uint64_t>(Size) << 56)) & Mask;
    while (Slots[Slot].Key != 0 && !(Slots[Slot].Packed == Packed && Slots[Slot].Size == Size))
        Slot = (Slot + 1) & Mask;
    return Slot;
}

class TZvWordList {
public:
    TZvWordList() = default;

    // Replaces the entries by the items of a comma-separated text, each trimmed of blanks.
    // Repeated entries are kept as given (a list may name a word twice); look-ups are unaffected.
    void SetCommaText(std::string_view Text);
    // The entries joined by ",".
    std::string GetCommaText() const;
    void Assign(const TZvWordList& Source);
    void Clear();
    void Add(std::string_view Word);

    // Whole-entry match, ASCII letters compared without regard to case.
    bool Contains(std::string_view Word) const;
    // True when Text is the beginning of some entry (compared without regard to case); the empty
    // text is a prefix of any entry of a non-empty list. Used to read operators such as "<=": those
    // lists hold a handful of entries, so a scan beats keeping an index of every prefix.
    bool IsPrefixOfEntry(std::string_view Text) const;

    const std::vector<std::string>& Items() const { return Entries; }
    std::size_t Count() const { return Entries.size(); }

private:
    void Rebuild();

    std::vector<std::string> Entries;
    TZvWordFlags Words;
};

} // namespace zv
