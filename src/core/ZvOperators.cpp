// The comparison operators: copying, the standard set and the three look-ups by which the parser
// and the conditions editor find an operator from what was written or typed.
#include "ZvOperators.h"

#include "ZvUtils.h"

namespace zv {

namespace {

// Does S begin with Start, ASCII letters compared without regard to case?
bool StartsWithText(std::string_view S, std::string_view Start) {
    return S.size() >= Start.size() && SameText(S.substr(0, Start.size()), Start);
}

// The first of Items whose Key text equals S without regard to case. The list's own slots are
// walked: the look-up by caption runs whenever a condition is placed or written.
template <const std::string& (TZvOperator::*Key)() const>
TZvOperator* FindFirst(const TZvItemSlots& Items, std::string_view S) {
    for (TZvCollectionItem* Item : Items) {
        auto* Operator = static_cast<TZvOperator*>(Item);
        if (SameText((Operator->*Key)(), S))
            return Operator;
    }
    return nullptr;
}

struct TStandardOperator {
    const char* Text;
    std::int32_t Count;
    const char* Relate;
    const char* Prefix;
    const char* Postfix;
    bool CommaList;
};

// Caption and name are the same text for every standard operator. The order is the order in which
// the conditions editor offers them, and "=" first is what a criterion falls back to. One operator
// per row, kept out of the formatter, so that the list reads as the table it is.
// clang-format off
constexpr TStandardOperator StandardOperators[] = {
    {"=", 1, "", "", "", false},
    {"<>", 1, "", "", "", false},
    {"<", 1, "", "", "", false},
    {">", 1, "", "", "", false},
    {"<=", 1, "", "", "", false},
    {">=", 1, "", "", "", false},
    {"LIKE", 1, "", "", "", false},
    {"NOT LIKE", 1, "", "", "", false},
    {"IN", 1, "", "(", ")", true},
    {"NOT IN", 1, "", "(", ")", true},
    {"BETWEEN", 2, "AND", "", "", false},
    {"NOT BETWEEN", 2, "AND", "", "", false},
    {"IS NULL", 0, "", "", "", false},
    {"IS NOT NULL", 0, "", "", "", false},
};
// clang-format on

} // namespace

void TZvOperator::Assign(const TZvCollectionItem& Source) {
    TZvCollectionItem::Assign(Source);
    const auto* Other = dynamic_cast<const TZvOperator*>(&Source);
    if (!Other)
        return;
    Caption = Other->Caption;
    Count = Other->Count;
    Name = Other->Name;
    Relate = Other->Relate;
    Prefix = Other->Prefix;
    Postfix = Other->Postfix;
    CommaList = Other->CommaList;
}

TZvOperators::TZvOperators(TZvPersistent* AOwner) : TZvCollection(AOwner, ItemClassOf<TZvOperator>()) {}

TZvOperator* TZvOperators::AddOperator(std::string_view Caption, std::string_view Name, std::int32_t Count,
                                       std::string_view Relate, std::string_view Prefix,
                                       std::string_view Postfix, bool CommaList) {
    TZvOperator* Operator = Add();
    Operator->SetCaption(Caption);
    Operator->SetName(Name);
    Operator->SetCount(Count);
    Operator->SetRelate(Relate);
    Operator->SetPrefix(Prefix);
    Operator->SetPostfix(Postfix);
    Operator->SetCommaList(CommaList);
    return Operator;
}

void TZvOperators::AddStandardOperators() {
    for (const TStandardOperator& S : StandardOperators)
        AddOperator(S.Text, S.Text, S.Count, S.Relate, S.Prefix, S.Postfix, S.CommaList);
}

TZvOperator* TZvOperators::FindByCaption(std::string_view S) const {
    return FindFirst<&TZvOperator::GetCaption>(GetItemSlots(), S);
}

TZvOperator* TZvOperators::FindByName(std::string_view S) const {
    return FindFirst<&TZvOperator::GetName>(GetItemSlots(), S);
}

TZvOperator* TZvOperators::FindNearest(std::string_view S, bool& NotExact) const {
    // A whole name wins over an earlier operator that S merely begins: "<" typed finds "<", not
    // "<>" which comes later, and "NOT" completes to "NOT LIKE", the first name it begins.
    for (int I = 0; I < Count(); ++I) {
        TZvOperator* Operator = Items(I);
        if (!StartsWithText(Operator->GetName(), S))
            continue;
        NotExact = !SameText(S, Operator->GetName());
        if (!NotExact)
            return Operator;
    }
    for (int I = 0; I < Count(); ++I) {
        TZvOperator* Operator = Items(I);
        if (StartsWithText(Operator->GetName(), S)) {
            // A completion is measured against what the user sees, the caption, in the same
            // case-blind way as the names were.
            NotExact = !SameText(S, Operator->GetCaption());
            return Operator;
        }
    }
    return nullptr;
}

} // namespace zv
