// Operands and output fields of the model: TZvFunctionDef (a column, literal, parameter,
// expression or function call with its argument list) and TZvFieldDef (one entry of the SELECT
// list, with its output alias and its position in the statement), with their lists.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ZvCollection.h"
#include "ZvTypes.h"

namespace zv {

class TZvFunctionDefs;
class TZvTableDef;
class TZvTableDefs;

// S as an SQL string literal where no scanner is at hand: as it stands when it is at least two
// characters long and enclosed in a matching pair of apostrophes or double quotes, otherwise in
// apostrophes with every apostrophe inside doubled.
std::string QuoteLiteralWithoutScanner(std::string_view S);

enum TZvFunctionKind : std::uint8_t {
    fkUnknown,
    fkFunction,
    fkIdentifier,
    fkInteger,
    fkFloat,
    fkString,
    fkExpression,
    fkParameter,
};

// One operand or function call of an expression.
class TZvFunctionDef : public TZvCollectionItem {
public:
    TZvFunctionDef();
    ~TZvFunctionDef() override;

    // Copies Name, Kind, Tag and a deep copy of the arguments (not the parser). The fields are
    // copied as they are, not through SetKind, so that copying never generates an alias.
    void Assign(const TZvCollectionItem& Source) override;
    // Takes Name, Kind, Tag and the arguments of Source, which is left empty (fkUnknown, no
    // arguments): what Assign copies, moved, for the reader's scratch items.
    void TakeFrom(TZvFunctionDef& Source);
    // Empties Name, sets fkUnknown and clears the arguments.
    virtual void Clear();
    // Also hands the parser to the arguments.
    void SetParser(TZvSelectParser* Value) override;

    // The function name, column name or "*", literal text, expression text, or parameter name
    // without its colon, according to Kind.
    const std::string& GetName() const { return Name; }
    virtual void SetName(std::string_view Value);
    TZvFunctionKind GetKind() const { return Kind; }
    virtual void SetKind(TZvFunctionKind Value);
    // The argument list, made by CreateArguments on first use (a constructor cannot reach the
    // override of a derived class).
    TZvFunctionDefs& GetArguments() const;
    // True when the argument list exists and holds an item; makes no list.
    bool HasArguments() const;
    void SetArguments(const TZvFunctionDefs& Value);
    // Opaque per-item data: carried and copied, read by no rule of the model.
    std::uint8_t GetTag() const { return Tag; }
    void SetTag(std::uint8_t Value) { Tag = Value; }

    // The text of the operand: "NAME(args)" for a call with arguments, "NAME()" for a function
    // without, a column with its table prefix, a quoted string, ":NAME" for a parameter, and the
    // text as it stands for numbers and expressions.
    std::string GetScript() const;
    // The same text appended to Out.
    virtual void WriteScript(std::string& Out) const;

protected:
    virtual std::unique_ptr<TZvFunctionDefs> CreateArguments() const;

private:
    void WriteIdentifierScript(std::string& Out) const;
    void WriteStringScript(std::string& Out) const;

    std::string Name;
    mutable std::unique_ptr<TZvFunctionDefs> Arguments;
    TZvFunctionKind Kind = fkUnknown;
    std::uint8_t Tag = 0;
};

// The argument list of a function (and, through TZvFieldDefs, the fields of a table).
class TZvFunctionDefs : public TZvCollection {
public:
    TZvFunctionDefs(TZvPersistent* AOwner, TZvItemClass AItemClass)
        : TZvCollection(AOwner, std::move(AItemClass)) {}

    TZvFunctionDefs* AsFunctionDefs() const override { return const_cast<TZvFunctionDefs*>(this); }

    TZvFunctionDef* Items(int Index) const { return static_cast<TZvFunctionDef*>(GetItem(Index)); }
    TZvFunctionDef* Add() { return static_cast<TZvFunctionDef*>(TZvCollection::Add()); }
    TZvFunctionDef* Insert(int Index) { return static_cast<TZvFunctionDef*>(TZvCollection::Insert(Index)); }

    // The scripts of the items in index order, joined by ", ".
    std::string GetScript() const;
    // The same text appended to Out.
    virtual void WriteScript(std::string& Out) const;
};

// One entry of the SELECT list. It lives in the FieldDefs of the table its column belongs to; an
// expression that names no table lives in the table whose Name is empty.
//
// Usage: bit 0 set means left out of the SELECT list (in a stored procedure's table: an input
// parameter), bit 1 set means offered to the host as an available field. Default 2.
class TZvFieldDef : public TZvFunctionDef {
public:
    // Copies the function part, then, when Source is a field, Alias, Usage, DataType and Value.
    void Assign(const TZvCollectionItem& Source) override;
    // The same, moved out of Source (see TZvFunctionDef::TakeFrom).
    void TakeFrom(TZvFieldDef& Source);
    // Also empties Alias and resets DataType and Value; Usage and AbsIndex stay, as they say where
    // the field lives rather than what it holds.
    void Clear() override;
    // Stores the kind; a computed kind (neither fkUnknown nor fkIdentifier) then gives the field a
    // "FIELD_n" alias unless it carries an alias of its own that differs from its name.
    void SetKind(TZvFunctionKind Value) override;

    const std::string& GetAlias() const { return Alias; }
    void SetAlias(std::string_view Value);
    // Position in the SELECT list of the whole statement, counted from 0 across all tables.
    std::int32_t GetAbsIndex() const { return AbsIndex; }
    // Moves the field to position N, shifting the fields in between by one; ignored when N is
    // outside 0 .. field count - 1. Outside a table list the position is the collection index.
    void SetAbsIndex(std::int32_t N);
    std::uint8_t GetUsage() const { return Usage; }
    void SetUsage(std::uint8_t NewUsage) { Usage = static_cast<std::uint8_t>(NewUsage & 3); }
    // True when the field is written in the SELECT list (Usage 0 or 2).
    bool IsSelected() const { return (Usage & 1) == 0; }
    TFieldType GetDataType() const { return DataType; }
    void SetDataType(TFieldType NewType) { DataType = NewType; }
    const TZvValue& GetValue() const { return Value; }
    void SetValue(TZvValue V) { Value = std::move(V); }

    // A unique alias from the table list (see TZvTableDefs::GetUniqueAlias); outside a table
    // list Base, with "1" appended when ForceNumber is set.
    virtual std::string GenerateAlias(std::string_view Base, bool ForceNumber);
    // The owning table's Alias; empty when the field is in no table.
    std::string GetTableAlias() const;
    // Quoted like a name only when the scanner quotes aliases.
    std::string ProcessAlias(std::string_view S) const;
    // The operand text without the "AS" part.
    std::string GetPureScript() const;
    // The operand text, then " AS alias" when the alias is set and differs (exactly) from Name.
    void WriteScript(std::string& Out) const override;

    // The table whose FieldDefs hold this field, and that table's list; null when absent.
    TZvTableDef* GetTableDef() const;
    TZvTableDefs* GetTableDefs() const;

protected:
    // Takes the last position of the statement (or the collection index outside a table list).
    void Added() override;
    // Closes the gap in the positions and drops the ORDER BY entry that names the alias.
    void Removing() override;

private:
    friend class TZvTableDefs;

    // Back to what a new field holds, out of any list: no name, kind, arguments, alias, value or
    // parser; tag 0, usage 2. False, with the field as it was, when its argument list is too
    // large to be worth keeping or is inside a bracket.
    bool ResetForReuse();

    std::string Alias;
    std::int32_t AbsIndex = 0;
    std::uint8_t Usage = 2;
    TFieldType DataType = ftUnknown;
    TZvValue Value;
};

// The fields of one table.
class TZvFieldDefs : public TZvFunctionDefs {
public:
    TZvFieldDefs(TZvPersistent* AOwner, TZvItemClass AItemClass);

    TZvFieldDefs* AsFieldDefs() const override { return const_cast<TZvFieldDefs*>(this); }

    TZvFieldDef* Items(int Index) const { return static_cast<TZvFieldDef*>(GetItem(Index)); }
    TZvFieldDef* Add() { return static_cast<TZvFieldDef*>(TZvCollection::Add()); }
    TZvFieldDef* Insert(int Index) { return static_cast<TZvFieldDef*>(TZvCollection::Insert(Index)); }

    // The first field whose Name (Alias) is SameIdentifier to S; null when none.
    TZvFieldDef* FindByName(std::string_view S) const;
    TZvFieldDef* FindByAlias(std::string_view S) const;
    // "  " and the script of each selected field; after every field that is not the last of the
    // collection ",\r\n". The test is on the index, not on what was written, so a left-out last
    // field leaves a trailing ",\r\n": callers that join lists rely on that shape.
    void WriteScript(std::string& Out) const override;
    // In a table list: the statement's positions stay dense and the ORDER BY entries naming the
    // fields' aliases go, in one pass over the statement rather than one per field.
    void Clear() override;

    // The owning table; null when the list belongs to no table.
    TZvTableDef* GetTableDef() const { return TableDef; }

private:
    // The table list removes fields in bulk and moves them between tables.
    friend class TZvTableDefs;
    friend class TZvTableDef;

    TZvTableDef* TableDef;
};

} // namespace zv
