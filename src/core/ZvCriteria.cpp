// The condition trees: copying (safe when a criterion is copied into or out of its own subtree,
// as the conditions editor does when it turns a condition into a group), the operator fallback on
// a change of parser, and the texts of a condition, a list and the WHERE and HAVING clauses.
#include "ZvCriteria.h"

#include "ZvOperators.h"
#include "ZvScanner.h"
#include "ZvSelectParser.h"
#include "ZvUtils.h"

#include <typeinfo>

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

// The sub-list starts as CreateSubItems would make it: a plain list with this criterion's parser,
// which is none yet.
TZvCriterion::TZvCriterion() : SubItems(this), RightSide(this, ItemClassOf<TZvFunctionDef>()) {}

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
    if (ListLiesWithin(GetCollection(), &Other->SubItems) ||
        ListLiesWithin(Other->GetCollection(), &SubItems)) {
        TZvCriterion Snapshot;
        Snapshot.Assign(*Other);
        Assign(Snapshot);
        return;
    }
    LeftSide.Assign(Other->LeftSide);
    OperatorCaption = Other->OperatorCaption;
    RightSide.Assign(Other->RightSide);
    SubItems.Assign(Other->SubItems);
    Tag = Other->Tag;
}

void TZvCriterion::TakeFrom(TZvCriterion& Source) {
    if (&Source == this)
        return;
    LeftSide.TakeFrom(Source.LeftSide);
    OperatorCaption = std::move(Source.OperatorCaption);
    RightSide.Clear();
    RightSide.TakeItems(Source.RightSide);
    SubItems.Clear();
    SubItems.SetFilter(Source.SubItems.GetFilter());
    SubItems.TakeItems(Source.SubItems);
    Tag = Source.Tag;
}

bool TZvCriterion::ResetForReuse() {
    if (!SubItems.KeepsForReuse() || !RightSide.KeepsForReuse() ||
        (LeftSide.HasArguments() && !LeftSide.GetArguments().KeepsForReuse()))
        return false;
    LeftSide.Clear();
    LeftSide.SetTag(0);
    OperatorCaption.clear();
    RightSide.Clear();
    SubItems.Clear();
    SubItems.SetFilter(cfAll);
    Tag = 0;
    SetParser(nullptr);
    return true;
}

void TZvCriterion::SetSubItems(const TZvCriterions& Value) {
    SubItems.Assign(Value);
}

void TZvCriterion::SetRightSide(const TZvFunctionDefs& Value) {
    RightSide.Assign(Value);
}

void TZvCriterion::SetLeftSide(const TZvFunctionDef& Value) {
    LeftSide.Assign(Value);
}

void TZvCriterion::SetParser(TZvSelectParser* Value) {
    TZvCollectionItem::SetParser(Value);
    LeftSide.SetParser(Value);
    RightSide.SetParser(Value);
    SubItems.SetParser(Value);
    if (!Value)
        return;
    const TZvOperators& Operators = Value->GetOperators();
    if (Operators.Count() > 0 && !Operators.FindByCaption(OperatorCaption))
        OperatorCaption = Operators.Items(0)->GetCaption();
}

std::string TZvCriterion::ProcessName(std::string_view S) const {
    std::string Text;
    WriteName(Text, S);
    return Text;
}

void TZvCriterion::WriteName(std::string& Out, std::string_view S) const {
    TZvSQLScanner* Scanner = GetScanner();
    // Without a dot there is no table part, and the name is processed whole either way.
    if (!Scanner || S.find('.') == std::string_view::npos) {
        AppendName(Out, S);
        return;
    }
    const char L = Scanner->GetIdentQuote();
    const char R = Scanner->GetQuotePair(L);
    const auto [Table, Column] = SplitQualifiedName(S, L, R);
    const bool HasTable = !IsBlankText(Table);
    const bool HasColumn = !IsBlankText(Column);
    if (HasTable && HasColumn) {
        Scanner->AppendName(Out, Table);
        Out += '.';
        Scanner->AppendName(Out, Column);
    } else {
        Scanner->AppendName(Out, HasTable ? Table : HasColumn ? Column : S);
    }
}

void TZvCriterion::WriteOperand(std::string& Out, const TZvFunctionDef& Operand) const {
    if (Operand.GetKind() == fkIdentifier && !Operand.HasArguments())
        WriteName(Out, Operand.GetName());
    else
        Operand.WriteScript(Out);
}

void TZvCriterion::WriteRightSide(std::string& Out, const TZvOperator& Operator) const {
    Out += Operator.GetPrefix();
    const int Given = RightSide.Count();
    if (Operator.GetCommaList()) {
        for (int I = 0; I < Given; ++I) {
            if (I > 0)
                Out += ',';
            WriteOperand(Out, *RightSide.Items(I));
        }
    } else {
        // A missing operand is written as a blank, so "BETWEEN" with one operand keeps its shape
        // and the user sees where the second one goes.
        for (int I = 0; I < Operator.GetCount(); ++I) {
            if (I < Given)
                WriteOperand(Out, *RightSide.Items(I));
            else
                Out += ' ';
            if (I < Given - 1) {
                Out += ' ';
                AppendKeyword(Out, GetParser(), Operator.GetRelate());
                Out += ' ';
            }
        }
    }
    Out += Operator.GetPostfix();
}

std::string TZvCriterion::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvCriterion::WriteScript(std::string& Out) const {
    if (SubItems.Count() > 0) {
        SubItems.WriteScript(Out);
        return;
    }
    TZvSelectParser* P = GetParser();
    // An operator the dialect does not know is written as it stands, with nothing after it;
    // without a parser there is no operator list, and the operands follow as a plain list.
    const TZvOperator* Operator = P ? P->GetOperators().FindByCaption(OperatorCaption) : nullptr;
    WriteOperand(Out, LeftSide);
    const std::size_t Left = Out.size();
    Out += ' ';
    AppendKeyword(Out, P, Operator ? std::string_view(Operator->GetName())
                                   : P ? std::string_view(OperatorCaption) : std::string_view());
    const std::size_t Word = Out.size();
    Out += ' ';
    const std::size_t Right = Out.size();
    if (Operator)
        WriteRightSide(Out, *Operator);
    else if (!P)
        RightSide.WriteScript(Out);
    if (!IsBlankText(std::string_view(Out).substr(Right)))
        return;
    // A one-operand comparison without its operand is the left side alone: a Boolean column
    // written on its own reads back that way.
    Out.resize(Operator && Operator->GetCount() == 1 ? Left : Word);
}

// ---- TZvCriterions --------------------------------------------------------------------------

TZvCriterions::TZvCriterions(TZvPersistent* AOwner) : TZvCriterions(AOwner, ItemClassOf<TZvCriterion>()) {}

TZvCriterions::TZvCriterions(TZvPersistent* AOwner, TZvItemClass AItemClass)
    : TZvCollection(AOwner, std::move(AItemClass)) {}

void TZvCriterions::Clear() {
    if (GetOwner() && GetOwner()->AsCriterion()) {
        TZvCollection::Clear();
        return;
    }
    ClearItems([this](std::unique_ptr<TZvCollectionItem> Item) { KeepForReuse(std::move(Item)); });
}

void TZvCriterions::KeepForReuse(std::unique_ptr<TZvCollectionItem> Item) {
    // Anything not kept is freed here.
    if (SpareItems.size() < MaxSpareItems && MakesPlainCriterion(*Item) &&
        static_cast<TZvCriterion&>(*Item).ResetForReuse())
        SpareItems.push_back(std::move(Item));
}

bool TZvCriterions::MakesPlainCriterion(const TZvCollectionItem& Item) const {
    const std::type_info& Made = typeid(Item);
    if (Made == typeid(TZvCriterion))
        return MakesItemsOf<TZvCriterion>();
    if (Made == typeid(TZvWhereItem))
        return MakesItemsOf<TZvWhereItem>();
    return Made == typeid(TZvHavingItem) && MakesItemsOf<TZvHavingItem>();
}

std::unique_ptr<TZvCollectionItem> TZvCriterions::NewItem() const {
    return TakeKeptItem(SpareItems);
}

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
    std::string Text;
    TZvCriterions::WriteScript(Text);
    return Text;
}

void TZvCriterions::WriteScript(std::string& Out) const {
    TZvSelectParser* P = GetParser();
    const bool MayStandBare = P && !P->GetScriptFormat().GetAlwaysBracketConditions();
    const std::string_view Connective = (Filter == cfAny || Filter == cfNone) ? " OR " : " AND ";

    // NOT goes in front before the list is known to write anything, and is taken back when not.
    // The count is of the list's items, not of those written: it says whether NOT applies to
    // one condition or to the whole connective.
    const std::size_t Start = Out.size();
    const bool Negated = IsNegating(Filter);
    if (Negated) {
        AppendKeyword(Out, P, "NOT");
        Out += Count() < 2 ? " " : " (";
    }
    const std::size_t List = Out.size();
    for (int I = 0; I < Count(); ++I) {
        const TZvCriterion& Item = *Items(I);
        const std::size_t Mark = Out.size();
        if (Mark != List) {
            AppendKeyword(Out, P, Connective);
            Out += "\r\n  ";
        }
        const bool Bracketed = !MayStandBare || IsOrGroup(Item);
        if (Bracketed)
            Out += '(';
        const std::size_t Text = Out.size();
        Item.WriteScript(Out);
        if (Out.size() == Text) {
            Out.resize(Mark);
            continue;
        }
        if (Bracketed)
            Out += ')';
    }
    if (Out.size() == List) {
        Out.resize(Start);
        return;
    }
    if (Negated && Count() >= 2)
        Out += ')';
    if (!(GetOwner() && GetOwner()->AsCriterion()))
        Out += "\r\n";
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

namespace {

// "KEYWORD", a line break and an indent, then the list's text; nothing when the list writes
// nothing.
void WriteClause(std::string& Out, TZvSelectParser* P, std::string_view Keyword, const TZvCriterions& List) {
    const std::size_t Start = Out.size();
    AppendKeyword(Out, P, Keyword);
    Out += "\r\n  ";
    const std::size_t Text = Out.size();
    List.TZvCriterions::WriteScript(Out);
    if (Out.size() == Text)
        Out.resize(Start);
}

} // namespace

// The clause lists' texts as their dynamic class writes them (a dialect's WHERE list writes its
// own).
std::string TZvWhereItems::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

std::string TZvHavingItems::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvWhereItems::WriteScript(std::string& Out) const {
    WriteClause(Out, GetParser(), "WHERE", *this);
}

std::unique_ptr<TZvCriterions> TZvHavingItem::CreateSubItems() {
    auto List = std::make_unique<TZvHavingItems>(this);
    List->SetParser(GetParser());
    return List;
}

void TZvHavingItems::WriteScript(std::string& Out) const {
    TZvSelectParser* P = GetParser();
    if (P && P->GetGroupByItems().Count() >= 1)
        WriteClause(Out, P, "HAVING", *this);
}

void DeleteCriterionsOfTable(TZvSelectParser& Parser, std::string_view Probe) {
    const bool CaseSensitive = Parser.GetCaseSensitiveIdentifiers();
    Parser.GetWhereItems().DeleteContaining(Probe, CaseSensitive);
    Parser.GetHavingItems().DeleteContaining(Probe, CaseSensitive);
}

} // namespace zv
