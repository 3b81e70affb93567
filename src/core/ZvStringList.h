// Text lists of the model: TZvStringList (entries with an attached object, bound to a parser for
// name quoting) and the statement's GROUP BY and ORDER BY lists, which hold one column reference
// per entry; the ORDER BY list also keeps each entry's direction.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

class TZvPersistent;
class TZvSelectParser;

enum TZvOrderKind : std::uint8_t { okAsc, okDesc };

// An ordered list of texts, each with an attached object that the list does not own.
class TZvStringList {
public:
    explicit TZvStringList(TZvSelectParser* AParser = nullptr) : Parser(AParser) {}
    virtual ~TZvStringList() = default;
    TZvStringList(const TZvStringList&) = delete;
    TZvStringList& operator=(const TZvStringList&) = delete;

    TZvSelectParser* GetParser() const { return Parser; }

    int Count() const { return static_cast<int>(Entries.size()); }
    // Entry access; EZvError for an index outside 0 .. Count() - 1.
    const std::string& Get(int Index) const;
    void Put(int Index, std::string_view S);
    TZvPersistent* GetObject(int Index) const;
    void PutObject(int Index, TZvPersistent* Object);
    const std::string& operator[](int Index) const { return Get(Index); }

    // Add returns the new entry's index. Insert takes 0 .. Count().
    int Add(std::string_view S) { return AddObject(S, nullptr); }
    int AddObject(std::string_view S, TZvPersistent* Object);
    void Insert(int Index, std::string_view S) { InsertObject(Index, S, nullptr); }
    virtual void InsertObject(int Index, std::string_view S, TZvPersistent* Object);
    virtual void Delete(int Index);
    virtual void Clear();
    // Copies entries and objects (and, in derived lists, what they keep beside them).
    virtual void Assign(const TZvStringList& Source);

    // Index of the first entry equal to S, -1 when none: compared without regard to case (ASCII
    // letters) unless CaseSensitive is set, as text lists of this kind compare by default.
    int IndexOf(std::string_view S) const;
    bool GetCaseSensitive() const { return CaseSensitive; }
    void SetCaseSensitive(bool Value) { CaseSensitive = Value; }

    // A bracket around bulk edits: OnChange runs once when the outermost bracket closes after a
    // change, and after every single change outside a bracket.
    void BeginUpdate() { ++UpdateCount; }
    void EndUpdate();
    std::function<void(TZvStringList&)> OnChange;

    // The scanner's quoting of a name; S unchanged without a parser.
    std::string ProcessName(std::string_view S) const;
    // Appends ProcessName(S) to Out, without a string in between where the name stays as it is.
    void AppendName(std::string& Out, std::string_view S) const;
    // Quoted like a name only when the scanner quotes aliases; S unchanged otherwise.
    std::string ProcessAlias(std::string_view S) const;

protected:
    void Changed();
    // Raises EZvError unless 0 <= Index <= Limit.
    void CheckIndex(int Index, int Limit) const;

private:
    struct TEntry {
        std::string Text;
        TZvPersistent* Object = nullptr;
    };

    TZvSelectParser* Parser;
    std::vector<TEntry> Entries;
    bool CaseSensitive = false;
    int UpdateCount = 0;
    bool ChangedInUpdate = false;
};

// The GROUP BY list: one column reference per entry.
class TZvGroupByItems : public TZvStringList {
public:
    using TZvStringList::TZvStringList;

    // "GROUP BY" and the entries, one per indented line, with a final line break; empty for an
    // empty list. First, when the SELECT list mixes aggregates with other fields, the list is
    // rebuilt from the plain columns of the SELECT list in their order (so it is not const).
    std::string GetScript();
    // The same text appended to Out.
    void WriteScript(std::string& Out);
};

// The ORDER BY list: one column reference per entry and, beside it, its direction. Every edit of
// the entries keeps the directions in step; a plain Add or Insert sorts ascending.
class TZvOrderByItems : public TZvStringList {
public:
    using TZvStringList::TZvStringList;

    int AddOrdered(std::string_view S, TZvOrderKind Kind);
    TZvOrderKind GetOrders(int Index) const;
    void SetOrders(int Index, TZvOrderKind Kind);
    // "ORDER BY" and the entries, one per indented line, each followed by " DESC" when it sorts
    // descending (ascending is never written), with a final line break; empty for an empty list.
    std::string GetScript() const;
    // The same text appended to Out.
    void WriteScript(std::string& Out) const;

    void InsertObject(int Index, std::string_view S, TZvPersistent* Object) override;
    void Delete(int Index) override;
    void Clear() override;
    void Assign(const TZvStringList& Source) override;

private:
    std::vector<TZvOrderKind> Orders;
};

} // namespace zv
