// The condition trees: copying (safe when a criterion is copied into or out of its own subtree,
// as the conditions editor does when it turns a condition into a group), the operator fallback on
// a change of parser, and the texts of a condition, a list and the WHERE and HAVING clauses.
#include "ZvCriteria.h"

#include "ZvOperators.h"
#include "ZvScanner.h"
#include "ZvSelectParser.h"
#include "ZvUtils.h"

namespace zv {

namespace {

// Walks up from Inner through the criteria that own the lists: true when Outer is Inner or one of
// the lists above it.
bool ListLiesWithin(const TZvCollection* Inner, const TZvCollection* Outer) {
    while (Inner) {
        if (Inner == Outer)
            return true;
        const TZvPersistent* Above = Inner->GetOwner();
        const TZvCriterion* Owner = Above ? Above->AsCriterion() : nullptr;
        if (!Owner)
            return false;
        Inner = Owner->GetCollection();
    }
    return false;
}

bool IsNegating(TZvCriterionFilter Filter) {
    return Filter == cfNone || Filter == cfNotAll || Filter == cfNot;
}

// An OR group of two or more keeps its brackets even where conditions may stand bare, since
// "A AND B OR C" would read differently from "A AND (B OR C)".
bool IsOrGroup(const TZvCriterion& Item) {
    const TZvCriterions& Sub = Item.GetSubItems();
    return Sub.Count() >= 2 && Sub.GetFilter() == cfAny;
}

} // namespace

std::string GetFilterAsString(TZvCriterionFilter Filter) {
    // The user-visible words of the connectives, in the order of TZvCriterionFilter.
    static const char* const Words[] = {"All", "Any", "None", "Not all", "Not"};
    if (Filter > cfNot)
        return {};
    return Words[Filter];
}

// ---- TZvCriterion ---------------------------------------------------------------------------

TZvCriterion::TZvCriterion()
    : SubItems(CreateSubItems()),
      RightSide(std::make_unique<TZvFunctionDefs>(this, ItemClassOf<TZvFunctionDef>())),
      LeftSide(std::make_unique<TZvFunctionDef>()) {}

TZvCriterion::~TZvCriterion() = default;

std::unique_ptr<TZvCriterions> TZvCriterion::CreateSubItems() {
    auto List = std::make_unique<TZvCriterions>(this);
    List->SetParser(GetParser());
    return List;
}

void TZvCriterion::Assign(const TZvCollectionItem& Source) {
    TZvCollectionItem::Assign(Source);
    const auto* Other = dynamic_cast<const TZvCriterion*>(&Source);
    if (!Other || Other == this)
        return;
    // A criterion copied into its own subtree, or out of it, is copied as it stood: through a
    // detached snapshot, since the copy would otherwise change or free its own source.
    if (ListLiesWithin(GetCollection(), Other->SubItems.get()) ||
        ListLiesWithin(Other->GetCollection(), SubItems.get())) {
        TZvCriterion Snapshot;
        Snapshot.Assign(*Other);
        Assign(Snapshot);
        return;
    }
    LeftSide->Assign(*Other->LeftSide);
    OperatorCaption = Other->OperatorCaption;
    RightSide->Assign(*Other->RightSide);
    SubItems->Assign(*Other->SubItems);
    Tag = Other->Tag;
}

void TZvCriterion::TakeFrom(TZvCriterion& Source) {
    if (&Source == this)
        return;
    LeftSide->TakeFrom(*Source.LeftSide);
    OperatorCaption = std::move(Source.OperatorCaption);
    RightSide->Clear();
    RightSide->TakeItems(*Source.RightSide);
    SubItems->Clear();
    SubItems->SetFilter(Source.SubItems->GetFilter());
    SubItems->TakeItems(*Source.SubItems);
    Tag = Source.Tag;
}

void TZvCriterion::SetSubItems(const TZvCriterions& Value) {
    SubItems->Assign(Value);
}

void TZvCriterion::SetRightSide(const TZvFunctionDefs& Value) {
    RightSide->Assign(Value);
}

void TZvCriterion::SetLeftSide(const TZvFunctionDef& Value) {
    LeftSide->Assign(Value);
}

void TZvCriterion::SetParser(TZvSelectParser* Value) {
    TZvCollectionItem::SetParser(Value);
    LeftSide->SetParser(Value);
    RightSide->SetParser(Value);
    SubItems->SetParser(Value);
    if (!Value)
        return;
    const TZvOperators& Operators = Value->GetOperators();
    if (Operators.Count() > 0 && !Operators.FindByCaption(OperatorCaption))
        OperatorCaption = Operators.Items(0)->GetCaption();
}

std::string TZvCriterion::ProcessName(std::string_view S) const {
    TZvSQLScanner* Scanner = GetScanner();
    if (!Scanner)
        return std::string(S);
    const char L = Scanner->GetIdentQuote();
    const char R = Scanner->GetQuotePair(L);
    const std::string Table = ExtractTableName(S, L, R);
    const std::string Column = ExtractFieldName(S, L, R);
    const bool HasTable = !Trim(Table).empty();
    const bool HasColumn = !Trim(Column).empty();
    if (HasTable && HasColumn)
        return TZvCollectionItem::ProcessName(Table) + "." + TZvCollectionItem::ProcessName(Column);
    if (HasTable)
        return TZvCollectionItem::ProcessName(Table);
    if (HasColumn)
        return TZvCollectionItem::ProcessName(Column);
    return TZvCollectionItem::ProcessName(S);
}

std::string TZvCriterion::OperandScript(const TZvFunctionDef& Operand) const {
    if (Operand.GetKind() == fkIdentifier && !Operand.HasArguments())
        return ProcessName(Operand.GetName());
    return Operand.GetScript();
}

TZvCriterion::TRightSideScript TZvCriterion::GetRightSideScript() const {
    TRightSideScript Result;
    TZvSelectParser* P = GetParser();
    if (!P) {
        // Without a parser there is no operator list: the operands alone, as a plain list.
        Result.Text = RightSide->GetScript();
        return Result;
    }
    const TZvOperator* Operator = P->GetOperators().FindByCaption(OperatorCaption);
    if (!Operator) {
        // An operator the dialect does not know is written as it stands, with nothing after it.
        Result.OperatorWord = OperatorCaption;
        return Result;
    }
    Result.Found = true;
    Result.OperatorCount = Operator->GetCount();
    Result.OperatorWord = Operator->GetName();

    std::string Text;
    const int Given = RightSide->Count();
    if (Operator->GetCommaList()) {
        for (int I = 0; I < Given; ++I)
            Text += (I > 0 ? "," : "") + OperandScript(*RightSide->Items(I));
    } else {
        // A missing operand is written as a blank, so "BETWEEN" with one operand keeps its shape
        // and the user sees where the second one goes.
        for (int I = 0; I < Operator->GetCount(); ++I) {
            Text += I < Given ? OperandScript(*RightSide->Items(I)) : " ";
            if (I < Given - 1)
                Text += " " + ProcessKeyword(Operator->GetRelate()) + " ";
        }
    }
    Result.Text = Operator->GetPrefix() + Text + Operator->GetPostfix();
    return Result;
}

std::string TZvCriterion::GetScript() const {
    if (SubItems->Count() > 0)
        return SubItems->GetScript();
    const TRightSideScript Right = GetRightSideScript();
    const std::string Left = OperandScript(*LeftSide);
    if (!Trim(Right.Text).empty())
        return Left + " " + ProcessKeyword(Right.OperatorWord) + " " + Right.Text;
    // A one-operand comparison without its operand is the left side alone: a Boolean column
    // written on its own reads back that way.
    if (Right.Found && Right.OperatorCount == 1)
        return Left;
    return Left + " " + ProcessKeyword(Right.OperatorWord);
}

// ---- TZvCriterions --------------------------------------------------------------------------

TZvCriterions::TZvCriterions(TZvPersistent* AOwner, TZvItemClass AItemClass)
    : TZvCollection(AOwner, std::move(AItemClass)) {}

void TZvCriterions::Assign(const TZvCollection& Source) {
    if (&Source == this)
        return;
    // Copying a list into a list inside it, or out of one, would free the source while it is read
    // or grow the copy without end; a detached copy in between breaks the link.
    if (ListLiesWithin(&Source, this) || ListLiesWithin(this, &Source)) {
        TZvCriterions Detached(nullptr);
        Detached.Assign(Source);
        Assign(Detached);
        return;
    }
    if (const auto* Other = dynamic_cast<const TZvCriterions*>(&Source))
        Filter = Other->Filter;
    TZvCollection::Assign(Source);
}

std::string TZvCriterions::GetScript() const {
    TZvSelectParser* P = GetParser();
    const bool MayStandBare = P && !P->GetScriptFormat().GetAlwaysBracketConditions();
    std::string Connective = (Filter == cfAny || Filter == cfNone) ? " OR " : " AND ";
    if (P)
        Connective = P->ProcessKeyword(Connective);

    std::string Result;
    bool First = true;
    for (int I = 0; I < Count(); ++I) {
        const TZvCriterion& Item = *Items(I);
        const std::string Text = Item.GetScript();
        if (Text.empty())
            continue;
        if (!First)
            Result += Connective + "\r\n  ";
        First = false;
        Result += MayStandBare && !IsOrGroup(Item) ? Text : "(" + Text + ")";
    }

    if (!Result.empty() && IsNegating(Filter)) {
        const std::string Not = P ? P->ProcessKeyword("NOT") : "NOT";
        // The count is of the list's items, not of those written: it says whether NOT applies to
        // one condition or to the whole connective.
        Result = Count() < 2 ? Not + " " + Result : Not + " (" + Result + ")";
    }
    if (!Result.empty() && !(GetOwner() && GetOwner()->AsCriterion()))
        Result += "\r\n";
    return Result;
}

int TZvCriterions::DeleteContaining(std::string_view Probe, bool CaseSensitive) {
    int Deleted = 0;
    for (int I = Count() - 1; I >= 0; --I) {
        if (ZvPos(Probe, Items(I)->GetScript(), CaseSensitive) > 0) {
            Delete(I);
            ++Deleted;
        }
    }
    return Deleted;
}

// ---- WHERE and HAVING -----------------------------------------------------------------------

std::unique_ptr<TZvCriterions> TZvWhereItem::CreateSubItems() {
    auto List = std::make_unique<TZvWhereItems>(this);
    List->SetParser(GetParser());
    return List;
}

std::string TZvWhereItems::GetScript() const {
    const std::string Text = TZvCriterions::GetScript();
    if (Text.empty())
        return Text;
    if (TZvSelectParser* P = GetParser())
        return P->ProcessKeyword("WHERE") + "\r\n  " + Text;
    return "WHERE\r\n  " + Text;
}

std::unique_ptr<TZvCriterions> TZvHavingItem::CreateSubItems() {
    auto List = std::make_unique<TZvHavingItems>(this);
    List->SetParser(GetParser());
    return List;
}

std::string TZvHavingItems::GetScript() const {
    TZvSelectParser* P = GetParser();
    if (!P || P->GetGroupByItems().Count() < 1)
        return {};
    const std::string Text = TZvCriterions::GetScript();
    if (Text.empty())
        return Text;
    return P->ProcessKeyword("HAVING") + "\r\n  " + Text;
}

void DeleteCriterionsOfTable(TZvSelectParser& Parser, std::string_view Probe) {
    const bool CaseSensitive = Parser.GetCaseSensitiveIdentifiers();
    Parser.GetWhereItems().DeleteContaining(Probe, CaseSensitive);
    Parser.GetHavingItems().DeleteContaining(Probe, CaseSensitive);
}

} // namespace zv
