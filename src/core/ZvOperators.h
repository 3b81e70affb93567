// The comparison operators that conditions may use: one TZvOperator describes how a criterion's
// right-hand operands are written around its SQL word, and TZvOperators is the parser's list of
// them, filled with the standard set and extended or replaced by dialects.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ZvCollection.h"

namespace zv {

// One comparison operator. A criterion refers to it by Caption; Name is what the statement says.
class TZvOperator : public TZvCollectionItem {
public:
    TZvOperator() = default;

    // Copies every field from another operator; other items leave this one as it is.
    void Assign(const TZvCollectionItem& Source) override;

    const std::string& GetCaption() const { return Caption; }
    void SetCaption(std::string_view Value) { Caption = Value; }
    // The number of right-hand operands; not used when CommaList is true.
    std::int32_t GetCount() const { return Count; }
    void SetCount(std::int32_t Value) { Count = Value; }
    const std::string& GetName() const { return Name; }
    void SetName(std::string_view Value) { Name = Value; }
    // The word between consecutive right-hand operands of a fixed-count operator ("AND").
    const std::string& GetRelate() const { return Relate; }
    void SetRelate(std::string_view Value) { Relate = Value; }
    const std::string& GetPrefix() const { return Prefix; }
    void SetPrefix(std::string_view Value) { Prefix = Value; }
    const std::string& GetPostfix() const { return Postfix; }
    void SetPostfix(std::string_view Value) { Postfix = Value; }
    // True when the right-hand side is a comma-separated list of any length.
    bool GetCommaList() const { return CommaList; }
    void SetCommaList(bool Value) { CommaList = Value; }

private:
    std::string Caption;
    std::int32_t Count = 1;
    std::string Name;
    std::string Relate;
    std::string Prefix;
    std::string Postfix;
    bool CommaList = false;
};

// The parser's list of comparison operators, in the order the user is offered them.
class TZvOperators : public TZvCollection {
public:
    explicit TZvOperators(TZvPersistent* AOwner);

    TZvOperator* Items(int Index) const { return static_cast<TZvOperator*>(GetItem(Index)); }
    TZvOperator* Add() { return static_cast<TZvOperator*>(TZvCollection::Add()); }
    TZvOperator* Insert(int Index) { return static_cast<TZvOperator*>(TZvCollection::Insert(Index)); }
    // Appends one operator with every field given; the fields left out keep their defaults.
    TZvOperator* AddOperator(std::string_view Caption, std::string_view Name, std::int32_t Count = 1,
                             std::string_view Relate = {}, std::string_view Prefix = {},
                             std::string_view Postfix = {}, bool CommaList = false);
    // Appends the fourteen standard operators, from "=" to "IS NOT NULL", in their fixed order.
    void AddStandardOperators();

    // The first operator whose Caption (respectively Name) equals S without regard to case; null
    // when none does.
    TZvOperator* FindByCaption(std::string_view S) const;
    TZvOperator* FindByName(std::string_view S) const;
    // Completion of a typed operator: the first operator whose Name is S (any case), else the
    // first whose Name begins with S. NotExact tells whether S differs from the found operator's
    // Name (exact hit) or Caption (completion); it is left untouched when nothing is found.
    TZvOperator* FindNearest(std::string_view S, bool& NotExact) const;
};

} // namespace zv
