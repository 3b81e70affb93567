// The join records of the model: a comparison between a column of the owning (left-hand) table
// and a column of a target table named by its alias, with the kind of join; their list with its
// look-ups and clean-up, and the text of one join as it stands in the FROM clause.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ZvCollection.h"
#include "ZvUtils.h"

namespace zv {

class TZvTableDef;
class TZvTableDefs;

enum TZvJoinKind : std::uint8_t { zvjInnerJoin, zvjLOuterJoin, zvjROuterJoin, zvjFOuterJoin };

// Qualifier "." Column, or Column alone when the qualifier is empty: how joins and the GROUP BY
// and ORDER BY lists write a column of a table of the statement.
std::string QualifiedColumn(std::string_view Qualifier, std::string_view Column);
// The same text appended to Out.
void AppendQualifiedColumn(std::string& Out, std::string_view Qualifier, std::string_view Column);

// One line of a FROM entry's join chain, with the target table it was made for: further
// conditions between the same two tables are merged into it (TZvTableDef::GenerateJoinsScript).
struct TZvJoinLine {
    std::string Text;
    const TZvTableDef* Target = nullptr;
};
using TZvJoinLines = std::vector<TZvJoinLine>;

class TZvJoinDef : public TZvCollectionItem {
public:
    void Assign(const TZvCollectionItem& Source) override;

    // The table whose JoinDefs hold this join; null for a join in no such list.
    TZvTableDef* GetTableDef() const;
    // True when the join is written with an ON condition: here for each of the four kinds. A
    // dialect whose joins carry their condition elsewhere answers false.
    virtual bool GetUseCondition() const;
    // "KIND JOIN target ON (left op right)": empty when the join has no owning table, no
    // LeftField, a blank RightField, no TableAlias, a kind outside the four, or a target table
    // that does not exist. "JOIN" and "ON" take the keyword case like the kind words.
    std::string GetScript() const;
    // The same text appended to Out; nothing appended where GetScript is empty.
    virtual void WriteScript(std::string& Out) const;
    // The join on a line of its own ("\r\n  " and its text) appended to Out: where its text
    // begins, or npos with Out as it was when the join writes no text (it is incomplete).
    std::size_t WriteLine(std::string& Out) const;
    // The bracketed condition "(left op right)" as it is merged into the line of an earlier join
    // between the same two tables: qualifiers are the owning table's alias and TableAlias, each
    // part through ProcessName, and a qualifier that comes out empty is left out with its ".".
    // Where the dialect writes constants into joins and an operand is one, that operand is written
    // as it stands and Swapped puts the operands back in the order they were read. Appended to Out.
    void WriteMergedCondition(std::string& Out) const;
    // True when this class's WriteScript writes any text, told from the join's parts without
    // writing it; Scratch (the text being written) may be tried at its end and is left as it was.
    bool WritesText(std::string& Scratch) const;
    // True when the parser's dialect writes constants into joins and an operand of this join is one.
    bool IsConstCondition() const;

    const std::string& GetOperator() const { return Operator; }
    void SetOperator(std::string Value) { Operator = std::move(Value); }
    TZvJoinKind GetKind() const { return Kind; }
    void SetKind(TZvJoinKind Value) { Kind = Value; }
    const std::string& GetRightField() const { return RightField; }
    void SetRightField(std::string Value) { RightField = std::move(Value); }
    const std::string& GetTableAlias() const { return TableAlias; }
    // Also tells the statement's table list, which keeps the joins by their target.
    void SetTableAlias(std::string Value);
    const std::string& GetLeftField() const { return LeftField; }
    void SetLeftField(std::string Value) { LeftField = std::move(Value); }
    bool GetPending() const { return Pending; }
    void SetPending(bool Value) { Pending = Value; }
    bool GetRightConst() const { return RightConst; }
    void SetRightConst(bool Value) { RightConst = Value; }
    bool GetLeftConst() const { return LeftConst; }
    void SetLeftConst(bool Value) { LeftConst = Value; }
    bool GetSwapped() const { return Swapped; }
    void SetSwapped(bool Value) { Swapped = Value; }

private:
    // The table list of the statement the join's table belongs to; null elsewhere.
    TZvTableDefs* GetStatementTables() const;

    std::string Operator = "=";
    TZvJoinKind Kind = zvjInnerJoin;
    std::string RightField;
    std::string TableAlias;
    std::string LeftField;
    bool Pending = false;
    bool RightConst = false;
    bool LeftConst = false;
    bool Swapped = false;
};

// The joins of one table, in which that table is the left-hand side.
class TZvJoinDefs : public TZvCollection {
public:
    // Owner is the table that holds the list; the list takes its parser from it.
    TZvJoinDefs(TZvTableDef* AOwner, TZvItemClass AItemClass);

    TZvJoinDefs* AsJoinDefs() const override { return const_cast<TZvJoinDefs*>(this); }

    TZvJoinDef* Items(int Index) const { return static_cast<TZvJoinDef*>(GetItem(Index)); }
    TZvJoinDef* Add() { return static_cast<TZvJoinDef*>(TZvCollection::Add()); }
    TZvJoinDef* Insert(int Index) { return static_cast<TZvJoinDef*>(TZvCollection::Insert(Index)); }
    TZvTableDef* GetTableDef() const { return TableDef; }

    // The first join whose LeftField, TableAlias and RightField are SameIdentifier to the three
    // texts; null when none.
    TZvJoinDef* Find(std::string_view LeftField, std::string_view TableAlias,
                     std::string_view RightField) const;
    // After Join (a join against a constant) was edited, where the dialect writes constants into
    // joins: unless another join to the same target (exact alias) compares two columns, every other
    // join to that target goes, as they were the distributed copies of the old condition.
    void DeleteCorrespondedJoinsWithConst(const TZvJoinDef* Join);
    // The texts of the joins that write one, each on its own indented line after a line break;
    // empty for a list without owner or without such joins.
    std::string GetScript() const;
    // The same text appended to Out.
    void WriteScript(std::string& Out) const;

protected:
    // Keep the statement's index of join targets in step (see TZvJoinTargetIndex).
    void ItemAppended(TZvCollectionItem* Item) override;
    void ItemsMoved() override;

private:
    TZvTableDefs* GetStatementTables() const;

    TZvTableDef* TableDef;
};

// Hash and equality of identifiers under one case rule (SameIdentifier's), for the model's look-up
// tables: a key is kept as written and a question is asked with a view, so that no folded copy of
// a name is made per look-up. The hash folds case under either rule; only the equality carries it.
struct TZvIdentHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view S) const;
};
struct TZvIdentEqual {
    using is_transparent = void;
    bool Exact = true;
    bool operator()(std::string_view A, std::string_view B) const {
        return A.size() == B.size() && (Exact ? A == B : SameText(A, B));
    }
};
template <class TValue>
using TZvIdentMap = std::unordered_map<std::string, TValue, TZvIdentHash, TZvIdentEqual>;

// An empty map whose keys compare exactly (Exact) or without case.
template <class TValue>
TZvIdentMap<TValue> MakeIdentMap(bool Exact) {
    return TZvIdentMap<TValue>(0, TZvIdentHash{}, TZvIdentEqual{Exact});
}

// The value under Key, made first (value-initialised) when Key is new.
template <class TValue>
TValue& IdentEntry(TZvIdentMap<TValue>& Map, std::string_view Key) {
    auto Found = Map.find(Key);
    if (Found == Map.end())
        Found = Map.emplace(std::string(Key), TValue{}).first;
    return Found->second;
}

// The joins of a statement by the key of their target alias (the alias itself, or upper-cased
// where names compare without case), so that "which joins name this table" is one look-up rather
// than a walk through every join of every table, which made renaming and writing N tables cost
// N squared. The table list owns it, keeps it in step with appended joins and changed targets, and
// drops it on any other change of its lists; it is built again, in one pass, on the next question.
class TZvJoinTargetIndex {
public:
    bool Usable(bool CaseSensitive) const { return Valid && CaseSensitive == Exact; }
    // Empties the index and marks it built for the given case rule.
    void Reset(bool CaseSensitive);
    void Invalidate();
    void Add(TZvJoinDef* Join, std::string_view Alias);
    void Remove(const TZvJoinDef* Join, std::string_view Alias);
    // The joins whose target alias has Alias's key, in no particular order.
    const std::vector<TZvJoinDef*>& Naming(std::string_view Alias) const;

private:
    TZvIdentMap<std::vector<TZvJoinDef*>> Joins;
    bool Valid = false;
    bool Exact = true;
};

} // namespace zv
