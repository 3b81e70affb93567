// The condition trees of the WHERE and HAVING clauses: a criterion is one comparison or a group
// holding a nested list, a list joins its criteria by one connective, and the two clause lists
// write themselves as the statement's WHERE and HAVING text.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ZvCollection.h"
#include "ZvFunctionDefs.h"

namespace zv {

class TZvCriterion;
class TZvOperator;

// The connective of a criteria list: all hold (AND), any holds (OR), none holds (NOT of OR), not
// all hold (NOT of AND), and a plain negation (NOT of AND, or NOT of the one condition).
enum TZvCriterionFilter : std::uint8_t { cfAll, cfAny, cfNone, cfNotAll, cfNot };

// The word by which the user sees a connective: "All", "Any", "None", "Not all", "Not".
std::string GetFilterAsString(TZvCriterionFilter Filter);

// A list of criteria joined by Filter. The owner is the criterion whose SubItems this is, or the
// parser for a top-level list.
class TZvCriterions : public TZvCollection {
public:
    // Items of class TZvCriterion, or of AItemClass.
    explicit TZvCriterions(TZvPersistent* AOwner);
    TZvCriterions(TZvPersistent* AOwner, TZvItemClass AItemClass);

    TZvCriterion* Items(int Index) const;
    TZvCriterion* Add();
    TZvCriterion* Insert(int Index);

    TZvCriterionFilter GetFilter() const { return Filter; }
    void SetFilter(TZvCriterionFilter Value) { Filter = Value; }
    // Takes every criterion out without clean-up rules. A clause's list (one owned by no
    // criterion) keeps the plain criteria it made, emptied, for the conditions of the next
    // statement; nested lists free theirs.
    void Clear() override;
    // Copies Filter, then the items.
    void Assign(const TZvCollection& Source) override;

    // The written criteria joined by the connective, each on its own indented line and bracketed
    // unless the script format lets it stand bare; NOT in front for the negating filters; a line
    // break after a top-level list. Empty when no criterion writes anything. Virtual so that
    // TZvCriterions::GetScript() called on a clause's list gives the bare list text.
    virtual std::string GetScript() const;
    // The same text appended to Out.
    virtual void WriteScript(std::string& Out) const;

    // Deletes every criterion of this list (not of nested lists) whose text contains Probe, found
    // with or without regard to case; returns how many went.
    int DeleteContaining(std::string_view Probe, bool CaseSensitive);

private:
    // A kept criterion when there is one (see Clear), else a new one of the item class.
    std::unique_ptr<TZvCollectionItem> NewItem() const override;
    void KeepForReuse(std::unique_ptr<TZvCollectionItem> Item);
    // Whether Item is of exactly the class this list makes, one of the criterion classes that
    // hold nothing beyond what TZvCriterion::ResetForReuse empties.
    bool MakesPlainCriterion(const TZvCollectionItem& Item) const;

    TZvCriterionFilter Filter = cfAll;
    // Criteria kept by Clear, emptied, for the next Add or MakeItem; at most MaxSpareItems.
    mutable TZvKeptItems SpareItems;
    static constexpr std::size_t MaxSpareItems = 32;
};

// One condition (LeftSide, an operator named by its caption, RightSide), or a group: when SubItems
// holds items the criterion stands for that nested list and its own operands are not written.
class TZvCriterion : public TZvCollectionItem {
public:
    TZvCriterion();
    ~TZvCriterion() override;

    TZvCriterion* AsCriterion() const override { return const_cast<TZvCriterion*>(this); }

    // Copies LeftSide, OperatorCaption, RightSide, SubItems and Tag from another criterion.
    void Assign(const TZvCollectionItem& Source) override;
    // The same, moved out of Source, which is left empty; for the reader, whose conditions are
    // read before the tree they go into is known. Source lies outside this criterion's tree.
    void TakeFrom(TZvCriterion& Source);
    // Hands the parser to both sides and the sub-list; then, when the parser's operator list is
    // not empty and has no operator of this caption, takes the caption of its first operator, so
    // that a criterion moved to a dialect lacking its operator still reads as a comparison.
    void SetParser(TZvSelectParser* Value) override;
    // Quotes the table and column parts of a column reference separately; S unchanged without a
    // parser.
    std::string ProcessName(std::string_view S) const override;
    // The condition's text (or the group's, see TZvCriterions::GetScript); empty when there is
    // nothing to write.
    std::string GetScript() const;
    // The same text appended to Out.
    virtual void WriteScript(std::string& Out) const;

    TZvCriterions& GetSubItems() const { return SubItems; }
    void SetSubItems(const TZvCriterions& Value);
    const std::string& GetOperatorCaption() const { return OperatorCaption; }
    void SetOperatorCaption(std::string_view Value) { OperatorCaption = Value; }
    TZvFunctionDefs& GetRightSide() const { return RightSide; }
    void SetRightSide(const TZvFunctionDefs& Value);
    TZvFunctionDef& GetLeftSide() const { return LeftSide; }
    void SetLeftSide(const TZvFunctionDef& Value);
    // Opaque per-criterion data kept for the conditions editor; copied, read by no rule here.
    std::int32_t GetTag() const { return Tag; }
    void SetTag(std::int32_t Value) { Tag = Value; }

    // A plain TZvCriterions of TZvCriterion owned by this criterion, with its parser. Not virtual
    // on purpose: every nested group, in WHERE and HAVING alike, is a plain list, and only the
    // top-level lists are of a clause's own class.
    std::unique_ptr<TZvCriterions> CreateSubItems();

protected:
    // The text of one operand, appended to Out: a bare column (an identifier without arguments)
    // through this criterion's ProcessName, anything else through its own WriteScript.
    void WriteOperand(std::string& Out, const TZvFunctionDef& Operand) const;

private:
    friend class TZvCriterions;

    // Back to what a new criterion holds, out of any list: empty sides, no caption, sub-list or
    // parser, tag 0. False, with the criterion as it was, when a list of it is too large to be
    // worth keeping or is inside a bracket.
    bool ResetForReuse();
    // ProcessName(S) appended to Out.
    void WriteName(std::string& Out, std::string_view S) const;
    // The right-hand text of a condition whose operator the parser's list holds: the operator's
    // prefix, the operands as the operator lays them out, its postfix.
    void WriteRightSide(std::string& Out, const TZvOperator& Operator) const;

    // Held in place rather than on the heap: every criterion has all three, and the model of a
    // typical statement makes thousands of criteria. Mutable because the accessors hand them out
    // from const criteria, as the lists and operands are parts the criterion owns, not its state.
    mutable TZvCriterions SubItems;
    std::string OperatorCaption;
    mutable TZvFunctionDefs RightSide;
    mutable TZvFunctionDef LeftSide;
    std::int32_t Tag = 0;
};

inline TZvCriterion* TZvCriterions::Items(int Index) const {
    return static_cast<TZvCriterion*>(GetItem(Index));
}
inline TZvCriterion* TZvCriterions::Add() {
    return static_cast<TZvCriterion*>(TZvCollection::Add());
}
inline TZvCriterion* TZvCriterions::Insert(int Index) {
    return static_cast<TZvCriterion*>(TZvCollection::Insert(Index));
}

// The WHERE clause's own item and list classes (the top level only; nested groups are plain).
class TZvWhereItem : public TZvCriterion {
public:
    // A TZvWhereItems of TZvWhereItem owned by this item. A helper that nothing in the model calls:
    // the constructor keeps the base rule, so nested groups stay plain lists.
    std::unique_ptr<TZvCriterions> CreateSubItems();
};

class TZvWhereItems : public TZvCriterions {
public:
    explicit TZvWhereItems(TZvPersistent* AOwner, TZvItemClass AItemClass = ItemClassOf<TZvWhereItem>())
        : TZvCriterions(AOwner, std::move(AItemClass)) {}
    // "WHERE", a line break and an indent before the list's text; empty when the list writes
    // nothing.
    std::string GetScript() const override;
    void WriteScript(std::string& Out) const override;
};

// The HAVING clause's own item and list classes.
class TZvHavingItem : public TZvCriterion {
public:
    // A TZvHavingItems of TZvHavingItem owned by this item; a helper, as for TZvWhereItem.
    std::unique_ptr<TZvCriterions> CreateSubItems();
};

class TZvHavingItems : public TZvCriterions {
public:
    explicit TZvHavingItems(TZvPersistent* AOwner, TZvItemClass AItemClass = ItemClassOf<TZvHavingItem>())
        : TZvCriterions(AOwner, std::move(AItemClass)) {}
    // "HAVING", a line break and an indent before the list's text, but only when the parser's
    // GROUP BY list has an entry: without grouping the clause is empty whatever the tree holds.
    std::string GetScript() const override;
    void WriteScript(std::string& Out) const override;
};

// Deletes the top-level WHERE and HAVING criteria whose text contains Probe (a table's prefix
// with its dot), compared with regard to case only when the parser's identifiers are. Run when a
// table leaves the model, so that no condition is left naming it.
void DeleteCriterionsOfTable(TZvSelectParser& Parser, std::string_view Probe);

} // namespace zv
