// The FROM list of the model: TZvTableDef (a table, view or stored procedure with its fields and
// joins) and TZvTableDefs, which also keeps the statement-wide bookkeeping: the positions of all
// fields in the SELECT list, unique output aliases, and the repair of references after renames
// and deletions.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "ZvCollection.h"
#include "ZvFunctionDefs.h"
#include "ZvJoinDefs.h"
#include "ZvTypes.h"

namespace zv {

enum TZvTableDefType : std::uint8_t { qttTable, qttStoredProc };

// One entry of the FROM list. References to it from elsewhere in the model (joins, field prefixes,
// ORDER BY and GROUP BY entries) are by alias text, never by pointer.
class TZvTableDef : public TZvCollectionItem {
public:
    TZvTableDef();
    ~TZvTableDef() override;

    TZvTableDef* AsTableDef() const override { return const_cast<TZvTableDef*>(this); }

    // Copies Alias, Name, TableType and a deep copy of the fields; not the joins.
    void Assign(const TZvCollectionItem& Source) override;
    // Takes Alias, Name and TableType as they are, as Assign does: rewrites no reference of the
    // statement (no join or ORDER BY entry follows).
    void Define(std::string_view AAlias, std::string_view AName, TZvTableDefType AType);
    // Also hands the parser to the fields and joins.
    void SetParser(TZvSelectParser* Value) override;

    const std::string& GetAlias() const { return Alias; }
    // Nothing when Value equals the alias. Otherwise the joins aimed at the old alias and the
    // ORDER BY entries qualified by it are re-pointed to Value, then the alias changes.
    void SetAlias(std::string_view Value);
    const std::string& GetName() const { return Name; }
    // When Value differs from Name: an alias that equals the old name moves along (through
    // SetAlias, so that references follow), an empty alias becomes Value; then Name changes.
    void SetName(std::string_view Value);
    TZvTableDefType GetTableType() const { return TableType; }
    void SetTableType(TZvTableDefType Value) { TableType = Value; }

    // The fields and the joins, each made on first use by its virtual factory.
    TZvFieldDefs& GetFieldDefs() const;
    TZvJoinDefs& GetJoinDefs() const;
    // The fields (joins) when the list was made; null otherwise. For walks that would only find
    // it empty.
    const TZvFieldDefs* FindFieldDefs() const { return FieldDefs.get(); }
    const TZvJoinDefs* FindJoinDefs() const { return JoinDefs.get(); }
    void SetFieldDefs(const TZvFieldDefs& Value);
    void SetJoinDefs(const TZvJoinDefs& Value);

    // True when both Name and Alias are blank.
    bool IsEmptyName() const;
    // Quoted like a name only when the scanner quotes aliases.
    std::string ProcessAlias(std::string_view S) const;
    // Alias, or Name when the alias is empty: how the rest of the statement names this table.
    const std::string& GetPrefix() const { return Alias.empty() ? Name : Alias; }
    // Moves the fields of the table with the empty name whose column DataSet knows into this
    // table, each keeping its place in the SELECT list.
    void FindFieldsWOPrefix(const TZvDataSet& DataSet);
    // "(p1, p2, ...)" of the input parameters (fields with Usage 1 or 3): ":NAME" when the value
    // is unassigned, "NULL" when null, else the value as a literal of its DataType; dates and
    // times in ISO 8601 (see TZvDateTime). Empty for no parameters, or "()" when the parser's
    // dialect asks for brackets.
    virtual std::string GetProcParamString() const;
    // The FROM entry: "  " and the name, the procedure's parameters, the alias after the dialect's
    // delimiter when it differs from the name, then each line of the join chain after
    // "\r\n  ". No joins where the dialect writes them in the WHERE clause, nor outside a table list.
    std::string GetScript() const;
    // The same text appended to Out.
    virtual void WriteScript(std::string& Out) const;
    // Adds to Lines, for each join of Joins, its text and then the chain of its target table, so
    // that a table joined to a joined table follows it. A further condition between two tables that
    // already have a line is merged into that line; a condition the line already holds ends the
    // walk there, which is what ends a chain that returns to a table already present. A join that
    // writes no text of its own is left out, with the chain behind it.
    void GenerateJoinsScript(const TZvJoinDefs& Joins, TZvJoinLines& Lines) const;

    TZvTableDefs* GetTableDefs() const;

protected:
    virtual std::unique_ptr<TZvFieldDefs> CreateFieldDefs() const;
    virtual std::unique_ptr<TZvJoinDefs> CreateJoinDefs() const;
    // Removes what refers to this table: joins aimed at it, fields of other tables and ORDER BY
    // entries qualified by its prefix; and its own fields' positions and ORDER BY entries.
    void Removing() override;

private:
    // The table list keeps cleared tables for its next statement (see TZvTableDefs::Clear).
    friend class TZvTableDefs;

    std::string ParamLiteral(const TZvFieldDef& Field) const;
    // Back to what a new table holds, out of any list: no alias, name, parser, fields or joins.
    // The field and join lists stay, emptied, unless they were large or left inside a bracket;
    // the fields go to Keeper (TZvTableDefs::KeepField).
    void ResetForReuse(TZvTableDefs& Keeper);
    void RequalifyOrderBy(TZvSelectParser& Parser, std::string_view Old, std::string_view Value);
    // Stores Value as the alias and keeps the list's alias look-up in step; rewrites no reference.
    void StoreAlias(std::string_view Value);
    // Stores Value as the name and keeps the list's name look-up in step.
    void StoreName(std::string_view Value);

    std::string Alias;
    mutable std::unique_ptr<TZvFieldDefs> FieldDefs;
    mutable std::unique_ptr<TZvJoinDefs> JoinDefs;
    std::string Name;
    TZvTableDefType TableType = qttTable;
};

// The FROM list of the statement, owned by the parser.
class TZvTableDefs : public TZvCollection {
public:
    explicit TZvTableDefs(TZvPersistent* AOwner, TZvItemClass AItemClass = ItemClassOf<TZvTableDef>());
    ~TZvTableDefs() override;

    TZvTableDefs* AsTableDefs() const override { return const_cast<TZvTableDefs*>(this); }

    TZvTableDef* Items(int Index) const { return static_cast<TZvTableDef*>(GetItem(Index)); }
    TZvTableDef* Add() { return static_cast<TZvTableDef*>(TZvCollection::Add()); }
    TZvTableDef* Insert(int Index) { return static_cast<TZvTableDef*>(TZvCollection::Insert(Index)); }
    // Takes every table out without per-item repair: the whole model goes. Plain tables (of class
    // TZvTableDef, made by this list) are kept, emptied, for the tables of the next statement, so
    // that reading statement after statement does not free and make each table and its lists.
    void Clear() override;
    // A field standing alone, as new, for the reader to fill before it knows the field's table:
    // one kept from the fields of the tables Clear took out when there is one.
    std::unique_ptr<TZvFieldDef> MakeField();
    // Ends the bracket; when the outermost bracket closes, UpdateFieldAliases repairs the alias
    // clashes that the bulk edit left.
    void EndUpdate() override;

    // The first table whose Alias (Name) is SameIdentifier to S; null when none.
    TZvTableDef* FindByAlias(std::string_view S) const;
    TZvTableDef* FindByName(std::string_view S) const;

    // The number of fields of all tables.
    int GetFieldCount() const { return static_cast<int>(Positions.size()); }
    // The field at absolute position Index; null when out of range.
    TZvFieldDef* GetFieldDefs(int Index) const;
    // Base, or Base followed by the lowest number from 1 up, so that no field of any table has it
    // as its alias; ForceNumber asks for a number even when Base is free. In lower case when the
    // parser's dialect writes aliases so.
    std::string GetUniqueAlias(std::string_view Base, bool ForceNumber);
    // True when some join of another table makes Table joined (see MakesJoined).
    bool IsTableJoined(const TZvTableDef* Table) const;
    // Whether From's joins lead to To, directly or through the joins of the tables they join (a
    // join leads to the table FindByAlias finds for its target).
    bool JoinsLeadTo(const TZvTableDef& From, const TZvTableDef& To) const;
    // Drops the joins whose target is found neither by alias nor by name.
    void UpdateJoins();
    // Re-points the joins whose target alias is OldAlias to NewAlias.
    void UpdateTableAlias(std::string_view OldAlias, std::string_view NewAlias);
    // Gives a new alias to every field whose name is already the alias of another field of its
    // table: the same column selected twice becomes "ID" and "ID1".
    void UpdateFieldAliases();
    // Where the dialect writes constants into joins: hands every new or changed (Pending) join
    // against a constant to the other tables the pending joins touch, as a condition of the join
    // between the two tables (mirrored onto a table that already joins the constant's table), and
    // drops the constant joins that found no table.
    void UpdateJoinsWithConsts();
    // The SELECT list and the FROM clause: the selected fields by position, or "*" when there are
    // none, then "FROM" and the entries of the tables that no other table joins. Empty when there
    // is neither a field nor a table to write.
    std::string GetScript() const;
    // The same text appended to Out.
    void WriteScript(std::string& Out) const;

private:
    friend class TZvFieldDef;
    friend class TZvFieldDefs;
    friend class TZvJoinDef;
    friend class TZvJoinDefs;
    friend class TZvTableDef;

    // Whether Join makes Table a joined table, one written in the FROM list only after its JOIN:
    // the join names it as target and another table holds it. The one place that rule lives; the join index only narrows the
    // joins asked to those whose target has the key of Table's alias.
    bool MakesJoined(const TZvJoinDef& Join, const TZvTableDef& Table) const;
    // Visits the joins whose target alias is SameIdentifier to Alias until Visit returns true;
    // true when it did.
    template <class TVisit>
    bool AnyJoinNaming(std::string_view Alias, TVisit&& Visit) const;
    // Whether a few tables are better walked than indexed (most statements name one to four).
    bool WalksJoins() const;
    // One step of each side of JoinsLeadTo: the next table of Pending passes its neighbours (the
    // tables its joins lead to; the tables whose joins lead to it) into Pending and Seen. True as
    // soon as a neighbour is one the other side has seen.
    using TZvTableSet = std::unordered_set<const TZvTableDef*>;
    bool StepAlongJoins(std::vector<const TZvTableDef*>& Pending, TZvTableSet& Seen,
                        const TZvTableSet& Other) const;
    bool StepBackAlongJoins(std::vector<const TZvTableDef*>& Pending, TZvTableSet& Seen,
                            const TZvTableSet& Other) const;
    // The join index, built first when it was dropped or the case rule changed since.
    TZvJoinTargetIndex& JoinTargets() const;
    void JoinAppended(TZvJoinDef& Join);
    void JoinTargetChanged(TZvJoinDef& Join, std::string_view Old, std::string_view New);
    void JoinsMoved();

    // Position bookkeeping: Positions[i] is the field whose AbsIndex is i.
    void AppendPosition(TZvFieldDef* Field);
    void RemovePosition(TZvFieldDef* Field);
    void MovePosition(TZvFieldDef* Field, std::int32_t To);
    // Takes a set of fields out of the positions in one pass, closing the gaps.
    void RemovePositions(const std::vector<TZvFieldDef*>& Fields);
    // Field puts itself in Old's place; Old leaves the positions without shifting anybody.
    void TakeOverPosition(TZvFieldDef* Field, TZvFieldDef* Old);

    // The alias index: how many fields carry each alias, keyed as SameIdentifier compares.
    void AliasAdded(std::string_view Alias);
    void AliasRemoved(std::string_view Alias);
    bool IsAliasInUse(std::string_view Alias);
    bool CaseSensitive() const;

    // Removes Fields (of any tables) in one pass: positions, alias index, ORDER BY entries equal
    // to their aliases (in the given order), then the fields themselves.
    void DeleteFields(const std::vector<TZvFieldDef*>& Fields, bool DropOrderBy);
    void DropJoinsTo(const TZvTableDef* Leaving);

    // The table look-ups: the index of the first table carrying each alias (name), keyed as
    // SameIdentifier compares, so that FindByAlias and FindByName cost a hash look-up instead of
    // a scan. Built on first use; kept in step with appends, alias and name changes, dropped on
    // other moves.
    struct TZvTableKeyEntry {
        int First = std::numeric_limits<int>::max(); // index of the first table with the key
        int Tables = 0;                              // how many tables have it
    };
    using TZvTableKeyIndex = TZvIdentMap<TZvTableKeyEntry>;
    using TZvTableKey = const std::string& (TZvTableDef::*)() const;
    void ItemAppended(TZvCollectionItem* Item) override;
    void ItemsMoved() override;
    void TableAliasChanged(const TZvTableDef& Table, std::string_view Old, std::string_view New);
    void TableNameChanged(const TZvTableDef& Table, std::string_view Old, std::string_view New);
    void TableKeyChanged(TZvTableKeyIndex& Index, TZvTableKey Key, int At, std::string_view Old,
                         std::string_view New);
    template <TZvTableKey Key>
    TZvTableDef* FindIn(const TZvTableKeyIndex& Index, std::string_view S) const;
    static void IndexTable(TZvTableKeyIndex& Index, std::string_view Key, int At);
    bool TableIndexUsable() const;

    // A kept table when there is one (see Clear), else a new one of the item class.
    std::unique_ptr<TZvCollectionItem> NewItem() const override;
    void KeepForReuse(std::unique_ptr<TZvCollectionItem> Item);
    void KeepField(std::unique_ptr<TZvCollectionItem> Item);

    std::vector<TZvFieldDef*> Positions;
    // Tables kept by Clear, emptied, for the next Add; at most MaxSpareTables.
    mutable TZvKeptItems SpareTables;
    static constexpr std::size_t MaxSpareTables = 16;
    // Plain fields of those tables, emptied, for MakeField; at most MaxSpareFields.
    TZvKeptItems SpareFields;
    static constexpr std::size_t MaxSpareFields = 64;
    mutable TZvJoinTargetIndex JoinIndex;
    mutable TZvTableKeyIndex TableByAlias;
    mutable TZvTableKeyIndex TableByName;
    mutable bool TableIndexValid = false;
    mutable bool TableIndexCaseSensitive = false;
    TZvIdentMap<int> AliasUse;
    bool AliasIndexValid = false;
    bool AliasIndexCaseSensitive = false;
};

} // namespace zv
