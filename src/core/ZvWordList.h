// A dialect's word list (keywords, functions, operators ...): the entries in their given order plus
// a case-insensitive hash index, so that a look-up costs the same for 5 words as for 490.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
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
    std::uint8_t Find(std::string_view Text) const {
        if (Text.empty() ? !HasEmptyKey
                         : !(FirstAndLength[static_cast<unsigned char>(UpCase(Text[0]))] & LengthBit(Text.size())))
            return 0;
        return FindKey(Text);
    }

private:
    std::uint8_t FindKey(std::string_view Text) const;
    std::size_t Locate(std::string_view Text) const;
    void Grow();

    // Bit min(length, 31) of entry [folded first byte] is set when some key has that first byte
    // and length: most identifiers are rejected by it without hashing.
    static std::uint32_t LengthBit(std::size_t Size) { return 1u << (Size < 31 ? Size : 31); }

    std::vector<std::string> Keys;  // upper-cased
    std::vector<std::uint64_t> PackedKeys;  // the bytes of the keys of up to 8 bytes, 0 for longer
    std::vector<std::uint8_t> Values;
    std::vector<std::uint32_t> Slots;  // index + 1 into Keys, 0 when empty
    std::array<std::uint32_t, 256> FirstAndLength{};
    bool HasEmptyKey = false;
};

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
