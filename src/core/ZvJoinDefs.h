// The join records of the model: a comparison between a column of the owning (left-hand) table
// and a column of a target table named by its alias, with the kind of join. This file holds the
// records and their list; their texts, look-ups and the distribution of joins against constants
// are added by the joins' own work.
#pragma once

#include <cstdint>
#include <string>

#include "ZvCollection.h"

namespace zv {

class TZvTableDef;

enum TZvJoinKind : std::uint8_t { zvjInnerJoin, zvjLOuterJoin, zvjROuterJoin, zvjFOuterJoin };

class TZvJoinDef : public TZvCollectionItem {
public:
    void Assign(const TZvCollectionItem& Source) override;

    // The table whose JoinDefs hold this join; null for a join in no such list.
    TZvTableDef* GetTableDef() const;

    const std::string& GetOperator() const { return Operator; }
    void SetOperator(std::string Value) { Operator = std::move(Value); }
    TZvJoinKind GetKind() const { return Kind; }
    void SetKind(TZvJoinKind Value) { Kind = Value; }
    const std::string& GetRightField() const { return RightField; }
    void SetRightField(std::string Value) { RightField = std::move(Value); }
    const std::string& GetTableAlias() const { return TableAlias; }
    void SetTableAlias(std::string Value) { TableAlias = std::move(Value); }
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
    TZvJoinDefs(TZvTableDef* Owner, TZvItemClass ItemClass);

    TZvJoinDef* Items(int Index) const { return static_cast<TZvJoinDef*>(GetItem(Index)); }
    TZvJoinDef* Add() { return static_cast<TZvJoinDef*>(TZvCollection::Add()); }
    TZvJoinDef* Insert(int Index) { return static_cast<TZvJoinDef*>(TZvCollection::Insert(Index)); }
    TZvTableDef* GetTableDef() const { return TableDef; }

private:
    TZvTableDef* TableDef;
};

} // namespace zv
