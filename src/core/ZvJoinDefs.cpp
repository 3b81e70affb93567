// The join records and their list.
#include "ZvJoinDefs.h"

#include "ZvTableDefs.h"

namespace zv {

void TZvJoinDef::Assign(const TZvCollectionItem& Source) {
    if (const auto* J = dynamic_cast<const TZvJoinDef*>(&Source)) {
        Operator = J->Operator;
        Kind = J->Kind;
        RightField = J->RightField;
        TableAlias = J->TableAlias;
        LeftField = J->LeftField;
        Pending = J->Pending;
        RightConst = J->RightConst;
        LeftConst = J->LeftConst;
        Swapped = J->Swapped;
    }
}

TZvTableDef* TZvJoinDef::GetTableDef() const {
    const auto* Joins = dynamic_cast<const TZvJoinDefs*>(GetCollection());
    return Joins ? Joins->GetTableDef() : nullptr;
}

TZvJoinDefs::TZvJoinDefs(TZvTableDef* Owner, TZvItemClass ItemClass)
    : TZvCollection(Owner, std::move(ItemClass)), TableDef(Owner) {
    if (Owner)
        SetParser(Owner->GetParser());
}

} // namespace zv
