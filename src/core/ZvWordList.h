// A dialect's word list (keywords, functions, operators ...): the entries in their given order plus
// a case-insensitive hash index, so that a look-up costs the same for 5 words as for 490.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

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
    // Open-addressing table of folded keys; a slot holds index + 1 into Keys, 0 when empty.
    struct TIndex {
        std::vector<std::string> Keys;
        std::vector<std::uint32_t> Slots;
        void Clear();
        void Insert(std::string Key);
        bool Contains(std::string_view Text) const;
    };
    void Rebuild();

    std::vector<std::string> Entries;
    TIndex Words;
};

} // namespace zv
