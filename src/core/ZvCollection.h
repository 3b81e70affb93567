// The base of every model list and item: an owned, ordered collection whose items know their
// collection and index, and which routes name quoting, keyword and function case and identifier
// comparison through the parser that owns the model.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

namespace zv {

class TZvCollection;
class TZvCollectionItem;
class TZvCriterion;
class TZvFieldDefs;
class TZvFunctionDefs;
class TZvJoinDefs;
class TZvSelectParser;
class TZvSQLScanner;
class TZvTableDef;
class TZvTableDefs;

// Root of every object that can own a collection (an item, the parser), so that a collection can
// name its owner whatever it is and a walk up the model can ask what the owner is.
class TZvPersistent {
public:
    TZvPersistent() = default;
    virtual ~TZvPersistent() = default;
    TZvPersistent(const TZvPersistent&) = delete;
    TZvPersistent& operator=(const TZvPersistent&) = delete;

    // What this node is, for the walks up the model that run once per generated name or per new
    // item: each class such a walk asks for answers for itself, null everywhere else. (A
    // dynamic_cast per step was a tenth of the generation of a wide statement.)
    virtual TZvCollectionItem* AsItem() const { return nullptr; }
    virtual TZvTableDef* AsTableDef() const { return nullptr; }
    virtual TZvCriterion* AsCriterion() const { return nullptr; }
};

// One item of a TZvCollection. An item made by a collection is owned by it and is removed only
// through the collection (Delete, Remove, Clear); an item may also stand alone (a scratch item the
// parser fills before merging it), and then it has no collection and index -1.
class TZvCollectionItem : public TZvPersistent {
public:
    TZvCollectionItem() = default;
    ~TZvCollectionItem() override = default;

    TZvCollectionItem* AsItem() const override { return const_cast<TZvCollectionItem*>(this); }

    TZvCollection* GetCollection() const { return Collection; }
    // Position in the collection; -1 for an item standing alone.
    int GetIndex() const { return Index; }

    // Copies the data of Source that this class knows; the base copies nothing (in particular
    // not the parser, which belongs to where an item lives, not to what it holds).
    virtual void Assign(const TZvCollectionItem& Source);

    // The item's own parser when set, else its collection's; null when neither has one.
    virtual TZvSelectParser* GetParser() const;
    virtual void SetParser(TZvSelectParser* Value);
    // The scanner's quoting of a possibly dotted name; S unchanged without a parser.
    virtual std::string ProcessName(std::string_view S) const;
    // Appends what this class's ProcessName returns for S (not a derived class's), without a
    // string in between where the scanner can tell that S stays as it is.
    void AppendName(std::string& Out, std::string_view S) const;
    // Appends S quoted like a name where the scanner quotes aliases, else as it stands.
    void AppendAlias(std::string& Out, std::string_view S) const;
    // Identifier comparison of the owning collection; exact when the item is in no collection.
    virtual bool SameIdentifier(std::string_view A, std::string_view B) const;

    // The scanner's quoting of one name part; S unchanged without a parser.
    std::string QuoteName(std::string_view S) const;
    // The parser's case formatting of keywords and function names; S unchanged without a parser.
    std::string ProcessKeyword(std::string_view S) const;
    std::string ProcessFunction(std::string_view S) const;
    // The parser's scanner, or null without a parser.
    TZvSQLScanner* GetScanner() const;

protected:
    // Called by the collection once the new item has its place (collection and index set), and
    // before the collection hands it its parser: what depends on where the item lives is settled
    // here, since a C++ constructor runs before the item has a place.
    virtual void Added() {}
    // Called by Delete and Remove while the item still has its place, just before it goes: the
    // item's clean-up rules. Clearing or destroying a whole collection does not call it, as the
    // result there is an empty list and per-item repair would make every clear quadratic.
    virtual void Removing() {}

    // The parser stored on this item itself (GetParser also looks at the collection).
    TZvSelectParser* GetOwnParser() const { return ItemParser; }

private:
    friend class TZvCollection;

    // Named apart from the accessors' words so that derived code may call locals "Parser".
    TZvCollection* Collection = nullptr;
    int Index = -1;
    TZvSelectParser* ItemParser = nullptr;
};

// Makes the items of a collection: its item class. A dialect hands a factory of its own item class
// to a collection to make the collection hold its items.
using TZvItemClass = std::function<std::unique_ptr<TZvCollectionItem>()>;

// The item class that makes items of class T; a named type, so that a list can tell whether it
// makes T (TZvCollection::MakesItemsOf).
template <class T>
struct TZvItemMaker {
    std::unique_ptr<TZvCollectionItem> operator()() const { return std::make_unique<T>(); }
};

template <class T>
TZvItemClass ItemClassOf() {
    return TZvItemMaker<T>{};
}

// The item pointers of one collection, in order: the first few held in place, more in one heap
// block. Most model lists (arguments, operands, conditions, a table's fields and joins) hold one to
// four items, so most lists never allocate for their pointers. It does not own the items: the
// collection frees them, which keeps the order in which items and their clean-up go in one place.
class TZvItemSlots {
public:
    TZvItemSlots() = default;
    ~TZvItemSlots();
    TZvItemSlots(const TZvItemSlots&) = delete;
    TZvItemSlots& operator=(const TZvItemSlots&) = delete;

    std::size_t size() const { return Size; }
    bool empty() const { return Size == 0; }
    TZvCollectionItem* operator[](std::size_t Index) const { return Data[Index]; }
    TZvCollectionItem* back() const { return Data[Size - 1]; }
    TZvCollectionItem* const* begin() const { return Data; }
    TZvCollectionItem* const* end() const { return Data + Size; }
    TZvCollectionItem** begin() { return Data; }
    TZvCollectionItem** end() { return Data + Size; }

    // Room for N pointers; may raise std::bad_alloc, and then nothing changed.
    void reserve(std::size_t N);
    // Item at Index (0 .. size()), the later ones moving up by one. Raises only where reserve does,
    // before anything changed, so a caller may let go of the item once this returns. Appending
    // into free room, which is what building a model does, is the inline case.
    void insert(std::size_t Index, TZvCollectionItem* Item) {
        if (Index == Size && Size < Capacity)
            Data[Size++] = Item;
        else
            InsertMoving(Index, Item);
    }
    void erase(std::size_t Index);
    void pop_back() { --Size; }
    // Keeps the first N pointers.
    void truncate(std::size_t N) { Size = static_cast<std::uint32_t>(N); }

private:
    void InsertMoving(std::size_t Index, TZvCollectionItem* Item);

    static constexpr std::uint32_t InlineSlots = 4;

    TZvCollectionItem** Data = Inline;
    std::uint32_t Size = 0;
    std::uint32_t Capacity = InlineSlots;
    TZvCollectionItem* Inline[InlineSlots] = {};
};

// An owned, ordered list of items of one item class, with an owner and a parser.
class TZvCollection : public TZvPersistent {
public:
    TZvCollection(TZvPersistent* Owner, TZvItemClass ItemClass);
    // Frees the items without their clean-up rules (see TZvCollectionItem::Removing).
    ~TZvCollection() override;

    TZvPersistent* GetOwner() const { return ListOwner; }
    // What this list is (see TZvPersistent::AsItem): null except in the class named.
    virtual TZvFunctionDefs* AsFunctionDefs() const { return nullptr; }
    virtual TZvFieldDefs* AsFieldDefs() const { return nullptr; }
    virtual TZvJoinDefs* AsJoinDefs() const { return nullptr; }
    virtual TZvTableDefs* AsTableDefs() const { return nullptr; }
    int Count() const { return static_cast<int>(Items.size()); }
    // The item at Index; raises EZvError for an index outside 0 .. Count() - 1. Inline: every walk
    // over a model list goes through it.
    TZvCollectionItem* GetItem(int Index) const {
        if (Index < 0 || Index >= Count())
            OutOfBounds(Index);
        return Items[static_cast<std::size_t>(Index)];
    }

    // Make an item of the item class at the end (Add) or at Index (Insert, 0 .. Count()), then
    // hand it the collection's parser. Insert raises EZvError for an index outside that range.
    TZvCollectionItem* Add();
    TZvCollectionItem* Insert(int Index);
    // An item of the item class standing alone, in no list: the reader fills one before it knows
    // where it goes, then hands it to Adopt.
    std::unique_ptr<TZvCollectionItem> MakeItem() const { return NewItem(); }
    // True when the item class is ItemClassOf<T>(), so that an item of class T made elsewhere may
    // be adopted.
    template <class T>
    bool MakesItemsOf() const {
        return ListItemClass.target_type() == typeid(TZvItemMaker<T>);
    }
    // Puts an item standing alone at the end, exactly as Add puts a new one (its Added rules run,
    // then it gets the collection's parser), and returns it. The item must be of the item class:
    // made by MakeItem, or of class T where MakesItemsOf<T>() holds.
    TZvCollectionItem* Adopt(std::unique_ptr<TZvCollectionItem> Item);
    // Run the item's clean-up rules, then take it out and free it. Delete raises EZvError for an
    // invalid index; Remove does nothing for an item of another collection or null.
    void Delete(int Index);
    void Remove(TZvCollectionItem* Item);
    // Frees every item without the per-item clean-up rules.
    virtual void Clear();
    // Replaces the items by copies of Source's items (made by this collection's item class and
    // copied with the item's Assign), inside one update bracket.
    virtual void Assign(const TZvCollection& Source);
    // Moves the items of Source to the end of this list in their order and hands them this list's
    // parser; Source is left empty. Neither list's Added or Removing rules run: this is for lists
    // whose items keep no place outside the list (operands, arguments, conditions), when the
    // reader moves what it read into the model instead of copying it. The items are of Source's
    // item class, which must be this list's.
    void TakeItems(TZvCollection& Source);

    // A bracket around bulk edits; nestable. EndUpdate of the outermost bracket is where derived
    // collections repair what the edit left (see TZvTableDefs).
    void BeginUpdate() { ++UpdateCount; }
    virtual void EndUpdate();
    int GetUpdateCount() const { return UpdateCount; }
    // Whether the list may be kept, emptied, with an item reused for the next statement: one that
    // grew large gives its memory back rather than hold it for small statements, and one inside an
    // update bracket is left to whoever opened it.
    bool KeepsForReuse() const { return Count() <= MaxKeptItems && UpdateCount == 0; }
    static constexpr int MaxKeptItems = 64;

    TZvSelectParser* GetParser() const { return ListParser; }
    // Does nothing when Value is the current parser; otherwise stores it and hands it to every
    // item, in index order.
    virtual void SetParser(TZvSelectParser* Value);
    // Case-insensitive (ASCII letters) when a parser is present and its identifiers are not case
    // sensitive; otherwise exact. Every name and alias look-up of the model goes through this.
    virtual bool SameIdentifier(std::string_view A, std::string_view B) const;

protected:
    // The items in order, for derived lists' tight walks (GetItem checks each index).
    const TZvItemSlots& GetItemSlots() const { return Items; }
    // Takes the items out and frees them without clean-up rules; for Clear and derived bulk
    // removals, which then repair in one pass what the item rules would have repaired one by one.
    void ClearItems();
    // The same, except that each item, out of the list (no collection, index -1), is handed to
    // Leave, which then owns it: a list that keeps items for its next statement takes them here.
    template <class TLeave>
    void ClearItems(TLeave&& Leave);
    // A new item of the item class, for Add, Insert and MakeItem. A list that keeps items of its
    // own making from an earlier clear hands one of those back, made as new.
    virtual std::unique_ptr<TZvCollectionItem> NewItem() const { return ListItemClass(); }
    // Items a derived list kept from a clear, emptied as new; the last is handed out first.
    using TZvKeptItems = std::vector<std::unique_ptr<TZvCollectionItem>>;
    // The last of Kept, taken out, or a new item of the item class when Kept is empty.
    std::unique_ptr<TZvCollectionItem> TakeKeptItem(TZvKeptItems& Kept) const;
    // Takes out the items for which Doomed holds, keeping the order of the rest, without their
    // clean-up rules; returns how many went.
    int RemoveItemsIf(const std::function<bool(const TZvCollectionItem&)>& Doomed);
    // For derived collections that keep an index by position: ItemAppended follows a new item
    // put at the end (before its Added), ItemsMoved any other insertion or removal.
    virtual void ItemAppended(TZvCollectionItem* /*Item*/) {}
    virtual void ItemsMoved() {}

private:
    // Puts Owned at Index (0 .. Count()) and runs what a new item's arrival runs.
    TZvCollectionItem* Place(int Index, std::unique_ptr<TZvCollectionItem> Owned);
    void Renumber(int From);
    void CheckIndex(int Index, int Limit) const;
    [[noreturn]] static void OutOfBounds(int Index);

    TZvPersistent* ListOwner;
    TZvItemClass ListItemClass;
    // Owned: freed by ClearItems, Delete and RemoveItemsIf.
    TZvItemSlots Items;
    TZvSelectParser* ListParser = nullptr;
    int UpdateCount = 0;
};

template <class TLeave>
void TZvCollection::ClearItems(TLeave&& Leave) {
    // Items leave one at a time from the back, so that an item's destructor that looks at its
    // collection still finds a consistent list.
    if (!Items.empty())
        ItemsMoved();
    while (!Items.empty()) {
        std::unique_ptr<TZvCollectionItem> Leaving(Items.back());
        Items.pop_back();
        Leaving->Collection = nullptr;
        Leaving->Index = -1;
        Leave(std::move(Leaving));
    }
}

} // namespace zv
