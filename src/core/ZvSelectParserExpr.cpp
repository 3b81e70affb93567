// Expressions and conditions: output fields with their aliases, operands (names, literals,
// parameters, function calls, bracketed and compound expressions), and WHERE/HAVING conditions
// read by operator precedence into criteria trees.
//
// Operands the reader knows, and what they become:
//   t.c, s.t.c, c, "quoted name"   fkIdentifier (the qualifier names the table)
//   *, t.*                        fkIdentifier "*"
//   f(a, b), COUNT(*), f()        fkFunction with its arguments
//   12  1.5  'text'               fkInteger, fkFloat, fkString (the literal as written)
//   :name                         fkParameter
//   -1                            the number with its sign
//   a + b, (a), x || y, CASE ... END, TRUE, anything the rules above do not cover
//                                 fkExpression, the text as written
// An argument that is not one operand (COUNT(DISTINCT x), CAST(x AS INT)) is kept as the text
// of that argument.
#include "ZvSelectParser.h"

#include <vector>

#include "ZvCriteria.h"
#include "ZvErrors.h"
#include "ZvOperators.h"
#include "ZvTableDefs.h"
#include "ZvUtils.h"

namespace zv {

// --- source positions ----------------------------------------------------------------------------

std::string TZvSelectParser::SourceText(std::int32_t Start, std::int32_t End) {
    const std::string& Text = GetScanner().Expression;
    if (End <= Start)
        return {};
    // Only blanks are trimmed: any other character is part of a token (a control character of
    // the word it stands in, a lone line feed a word of its own), and dropping it would write a
    // different statement ("\x05SELECT" as SELECT).
    std::string_view Span = std::string_view(Text).substr(static_cast<std::size_t>(Start - 1),
                                                          static_cast<std::size_t>(End - Start));
    const std::size_t First = Span.find_first_not_of(" \t");
    if (First == std::string_view::npos)
        return {};
    const std::size_t Last = Span.find_last_not_of(" \t");
    return CompleteEndQuote(std::string(Span.substr(First, Last - First + 1)),
                            static_cast<std::size_t>(Start - 1) + Last + 1);
}

// Passes over tokens up to the matching ")" of the "(" at the current token, which is consumed
// too. The end of the text inside is an error.
bool TZvSelectParser::SkipBracketed() {
    int Depth = 0;
    do {
        if (AtEnd()) {
            Fail();
            return false;
        }
        if (TokenIs("("))
            ++Depth;
        else if (TokenIs(")"))
            --Depth;
        NextToken();
    } while (Depth > 0);
    return true;
}

// Passes over the tokens of one argument, bracket-balanced, up to a "," or ")" at its level.
bool TZvSelectParser::SkipArgument() {
    while (!TokenIs(",") && !TokenIs(")")) {
        if (AtEnd()) {
            Fail();
            return false;
        }
        if (TokenIs("(")) {
            if (!SkipBracketed())
                return false;
        } else {
            NextToken();
        }
    }
    return true;
}

// CASE ... END, nested ones included.
bool TZvSelectParser::SkipCase() {
    int Depth = 0;
    do {
        if (AtEnd()) {
            Fail();
            return false;
        }
        if (TokenIs("CASE"))
            ++Depth;
        else if (TokenIs("END"))
            --Depth;
        NextToken();
    } while (Depth > 0);
    return true;
}

// --- operands ------------------------------------------------------------------------------------

// A keyword directly followed by "(" is called as a function (TRIM(x), CHAR(65)).
bool TZvSelectParser::IsCallAhead() {
    TZvSQLScanner& S = GetScanner();
    S.GetTokenPlus();
    return S.TokenPlus == "(" && S.TokenKindsPlus.Contains(tkDelim);
}

std::string TZvSelectParser::DoParseExpression(TZvFunctionDef& Target, TZvParserExprParams Params) {
    TZvSQLScanner& S = GetScanner();
    const std::int32_t Start = TokenSourceStart();
    // A sign is one character ("-" or "+"), held as such: nearly no operand has one.
    char Sign = 0;
    if (IsSignToken()) {
        Sign = S.Token.front();
        NextToken();
    }
    // Every way out returns this one text, so that it is built in the caller's place.
    std::string TableRef;
    if (!ReadOperand(Target, Params, TableRef)) {
        Fail();
        TableRef.clear();
        return TableRef;
    }
    bool Compound = false;
    while (S.TokenKinds.Contains(tkOperation) && !S.TokenKinds.Contains(tkComparison) && !S.InQuote) {
        NextToken();
        if (IsSignToken())
            NextToken();
        TZvFunctionDef Operand;
        Operand.SetParser(this);
        std::string Ignored;
        if (!ReadOperand(Operand, Params & pepKeepQualifier, Ignored)) {
            Fail();
            TableRef.clear();
            return TableRef;
        }
        Compound = true;
    }
    const bool Number = Target.GetKind() == fkInteger || Target.GetKind() == fkFloat;
    if (Compound || (Sign != 0 && !Number)) {
        Target.Clear();
        Target.SetName(SourceText(Start, PrevTokenEnd));
        Target.SetKind(fkExpression);
        TableRef.clear();
    } else if (Sign != 0) {
        Target.SetName(Sign + Target.GetName());
    }
    if ((Params & pepCreateTableDef) && !TableRef.empty())
        ExpressionTable = FindOrCreateTable(TableRef);
    if (Params & pepEnableAlias)
        ReadAlias(Target);
    return TableRef;
}

// Target as the expression written from Start up to the current token, once its tokens were Passed.
bool TZvSelectParser::TakeAsWritten(TZvFunctionDef& Target, std::int32_t Start, bool Passed) {
    if (!Passed)
        return false;
    Target.SetName(SourceText(Start, PrevTokenEnd));
    Target.SetKind(fkExpression);
    return true;
}

bool TZvSelectParser::ReadOperand(TZvFunctionDef& Target, TZvParserExprParams Params, std::string& TableRef) {
    TZvSQLScanner& S = GetScanner();
    const std::int32_t Start = TokenSourceStart();
    auto Literal = [&](std::string_view Name, TZvFunctionKind Kind) {
        Target.SetName(Name);
        Target.SetKind(Kind);
        NextToken();
        return true;
    };
    if (AtEnd())
        return false;
    // The forms below open with a bare token of one or four characters: a name passes them by.
    const std::size_t Size = S.Token.size();
    if (!S.InQuote && (Size == 1 || Size == 4)) {
        if (TokenIs("("))
            return TakeAsWritten(Target, Start, SkipBracketed());
        if (TokenIs(":")) {
            NextToken();
            if (!TokenHas(tkIdent))
                return false;
            // A quoted parameter name keeps its quotes where it needs them (:"my p"), as it is
            // written after the colon as it stands.
            return Literal(TokenAlias(), fkParameter);
        }
        if (TokenIs("*"))
            return Literal("*", fkIdentifier);
        if (TokenIs("CASE"))
            return TakeAsWritten(Target, Start, SkipCase());
        if (TokenIs("NULL"))
            return Literal(S.Token, fkUnknown);
    }
    const TTokenKinds Kinds = S.TokenKinds;
    if (Kinds.Contains(tkInteger))
        return Literal(S.Token, fkInteger);
    if (Kinds.Contains(tkFloat))
        return Literal(S.Token, fkFloat);
    if (Kinds.Contains(tkString) && !Kinds.Contains(tkIdent))
        return Literal(TokenSource(), fkString);
    if (Kinds.Contains(tkBoolean))
        return Literal(S.Token, fkExpression);
    if (IsNameToken() && (!Kinds.Contains(tkKeyword) || Kinds.Contains(tkFunction) || IsCallAhead()))
        return ReadNameOrCall(Target, Params, TableRef);
    // A word the scanner could not classify ("a||b" where bars are no delimiters): as written.
    if (Kinds.Empty() && !S.InQuote)
        return Literal(S.Token, fkUnknown);
    return false;
}

// A qualified name, t.*, or a function call. In a field, the qualifier names the field's table
// (TableRef) and the name stays bare; in a condition (pepKeepQualifier) the name keeps it.
bool TZvSelectParser::ReadNameOrCall(TZvFunctionDef& Target, TZvParserExprParams Params, std::string& TableRef) {
    TZvSQLScanner& S = GetScanner();
    // An empty quoted name ("") names nothing, and an empty name is written as no text at all.
    if (S.Token.empty())
        return false;
    // The parts as a reference is written (dotted, each quoted where it needs it) and where the
    // last one begins, built in one text as they are read. The last part as a name differs from
    // how it is written only when it was quoted; then it is kept apart. The text is built in
    // TableRef itself, which keeps the qualifier of a field's column in the end.
    std::string& Written = TableRef;
    Written.clear();
    std::size_t LastStart = 0;
    std::string QuotedLast;
    bool LastQuoted = false;
    for (;;) {
        LastStart = Written.size();
        LastQuoted = S.InQuote;
        if (LastQuoted) {
            QuotedLast = TokenName();
            AppendTokenAliasOf(Written, QuotedLast);
        } else {
            Written += S.Token;
        }
        NextToken();
        if (!TokenIs("."))
            break;
        NextToken();
        Written += '.';
        if (TokenIs("*")) {
            LastStart = Written.size();
            LastQuoted = false;
            Written += '*';
            NextToken();
            break;
        }
        if (!IsNameToken() || S.Token.empty())
            return false;
    }
    const std::string_view Last = LastQuoted ? std::string_view(QuotedLast) : std::string_view(Written).substr(LastStart);
    if (TokenIs("(") && Last != "*") {
        Target.SetName(Written);
        Written.clear();
        Target.SetKind(fkFunction);
        if (!ReadArguments(Target.GetArguments()))
            return false;
        if (!(Params & pepKeepQualifier))
            TableRef = PlaceCall(Target);
        return true;
    }
    if (Params & pepKeepQualifier) {
        Target.SetName(Written);
        Written.clear();
    } else {
        Target.SetName(Last);
        Written.resize(LastStart == 0 ? 0 : LastStart - 1);
    }
    Target.SetKind(fkIdentifier);
    return true;
}

bool TZvSelectParser::ReadArguments(TZvFunctionDefs& Arguments) {
    if (CallDepth >= MaxNesting) {
        NestingExceeded = true;
        Fail(zvpeInvalidToken);
        return false;
    }
    ++CallDepth;
    struct TLeave {
        std::int32_t& Depth;
        ~TLeave() { --Depth; }
    } Leave{CallDepth};
    NextToken();  // "("
    if (TokenIs(")")) {
        NextToken();
        return true;
    }
    for (;;) {
        if (!ReadArgument(*Arguments.Add()))
            return false;
        if (TokenIs(")")) {
            if (ArgumentsWriteAsSpecialToken(Arguments)) {
                Fail();
                return false;
            }
            NextToken();
            return true;
        }
        if (!TokenIs(","))
            return false;
        NextToken();
    }
}

// A call is written "name(arguments)" without the blanks it was read with. When that bracketed
// text is one of the dialect's special tokens (the outer-join mark "(+)", read as "( +)"), the
// written call would read back as that token instead, so such a call is refused. No special
// token holds a comma or a bracket inside, so only one argument that is no call can form one
// (which also keeps calls nested deep from writing their arguments at every level).
bool TZvSelectParser::ArgumentsWriteAsSpecialToken(const TZvFunctionDefs& Arguments) {
    TZvSQLScanner& S = GetScanner();
    if (S.GetComplexOperators().Count() == 0 || Arguments.Count() != 1 ||
        Arguments.Items(0)->GetArguments().Count() > 0)
        return false;
    return S.IsComplexOperator("(" + Arguments.GetScript() + ")");
}

// One argument as an operand when it is one; otherwise the argument's text as written.
bool TZvSelectParser::ReadArgument(TZvFunctionDef& Argument) {
    const std::int32_t Start = TokenSourceStart();
    const TZvSelectState SavedState = State;
    const std::int32_t SavedErrorType = ErrorType;
    if (!TokenIs(",") && !TokenIs(")"))
        DoParseExpression(Argument, pepKeepQualifier);
    if (State != ssError && (TokenIs(",") || TokenIs(")")))
        return true;
    if (NestingExceeded)
        return false;
    State = SavedState;
    ErrorType = SavedErrorType;
    if (!SkipArgument())
        return false;
    Argument.Clear();
    Argument.SetName(SourceText(Start, PrevTokenEnd));
    Argument.SetKind(fkExpression);
    return true;
}

namespace {

// Whether every column in a call's arguments, at any depth, has the qualifier Qualifier, which the
// first column met sets (empty until then); a column without one has none in common. The
// qualifiers are read in place: a column's name is only split to be compared.
bool ShareOneQualifier(const TZvFunctionDefs& Arguments, char Open, char Close, std::string_view& Qualifier) {
    for (int I = 0; I < Arguments.Count(); ++I) {
        const TZvFunctionDef& Arg = *Arguments.Items(I);
        if (!Arg.HasArguments()) {
            if (Arg.GetKind() != fkIdentifier)
                continue;
            const std::string_view Own = TableNamePart(Arg.GetName(), Open, Close);
            if (Own.empty() || (!Qualifier.empty() && Own != Qualifier))
                return false;
            Qualifier = Own;
        } else if (!ShareOneQualifier(Arg.GetArguments(), Open, Close, Qualifier)) {
            return false;
        }
    }
    return true;
}

void StripQualifiers(TZvFunctionDefs& Arguments, char Open, char Close) {
    for (int I = 0; I < Arguments.Count(); ++I) {
        TZvFunctionDef& Arg = *Arguments.Items(I);
        if (Arg.HasArguments())
            StripQualifiers(Arg.GetArguments(), Open, Close);
        else if (Arg.GetKind() == fkIdentifier)
            Arg.SetName(ExtractFieldName(Arg.GetName(), Open, Close));
    }
}

} // namespace

// A call whose columns all name one table belongs to that table, with bare column names (the
// table's prefix is written before each); any other call names no table and keeps qualifiers.
std::string TZvSelectParser::PlaceCall(TZvFunctionDef& Call) {
    TZvSQLScanner& S = GetScanner();
    const char Open = S.GetIdentQuote();
    const char Close = S.GetQuotePair(Open);
    std::string_view Shared;
    if (!ShareOneQualifier(Call.GetArguments(), Open, Close, Shared) || Shared.empty())
        return {};
    // Copied before the columns lose it: the view is into the first column's name.
    std::string Qualifier(Shared);
    StripQualifiers(Call.GetArguments(), Open, Close);
    return Qualifier;
}

void TZvSelectParser::ReadAlias(TZvFunctionDef& Target) {
    ExpressionHadAlias = false;
    if (TokenIs("AS")) {
        NextToken();
        if (AtEnd() || TokenIs(",") || TokenIs(")") || !(IsNameToken() || TokenHas(tkString))) {
            Fail();
            return;
        }
    } else if (!TokenHas(tkIdent) || (TokenHas(tkKeyword) && !GetScanner().InQuote)) {
        return;
    }
    // An empty quoted name ("" or []) is no alias, and an empty alias is written as none.
    if (GetScanner().Token.empty()) {
        Fail();
        return;
    }
    // The field the field reader reads into is known without asking the target's type.
    TZvFieldDef* Field = &Target == FieldBeingRead ? FieldBeingRead : dynamic_cast<TZvFieldDef*>(&Target);
    if (Field != nullptr) {
        TZvSQLScanner& S = GetScanner();
        if (S.InQuote)
            Field->SetAlias(TokenAlias());
        else
            Field->SetAlias(S.Token);
    }
    ExpressionHadAlias = true;
    NextToken();
}

// A table first named by a qualified column gets the bare name; the FROM list completes it.
TZvTableDef* TZvSelectParser::FindOrCreateTable(const std::string& Reference) {
    std::string Name;
    if (TZvTableDef* Table = FindTableByReference(Reference, Name))
        return Table;
    // Named as the FROM list names it, so that the FROM entry finds and completes it; a qualified
    // name found only by its first part would stand in the FROM list twice.
    if (TZvTableDef* Table = GetTableDefs().FindByName(Name))
        return Table;
    TZvTableDef* Table = GetTableDefs().Add();
    Table->SetName(Name);
    return Table;
}

// --- output fields -------------------------------------------------------------------------------

std::string TZvSelectParser::ReadFieldExpression(TZvFieldDef& Field) {
    // Known for the length of the read only: the field may be gone after it.
    struct TForget {
        TZvFieldDef*& Known;
        ~TForget() { Known = nullptr; }
    } Forget{FieldBeingRead};
    FieldBeingRead = &Field;
    return DoParseExpression(Field, pepCreateTableDef | pepEnableAlias);
}

void TZvSelectParser::DoParseFieldDef() {
    // Read into a field standing alone, since the table it goes to is known only once it is read;
    // then that field itself goes into the table's list.
    std::unique_ptr<TZvFieldDef> Scratch = GetTableDefs().MakeField();
    Scratch->SetParser(this);
    ExpressionHadAlias = false;
    ExpressionTable = nullptr;
    const std::string TableRef = ReadFieldExpression(*Scratch);
    if (State == ssError)
        return;
    TZvTableDefs& Tables = GetTableDefs();
    // Reading the alias after the expression touches no table, so the table the expression
    // found for its qualifier is still the one.
    TZvTableDef* Table = TableRef.empty()   ? Tables.FindByAlias("")
                         : ExpressionTable ? ExpressionTable
                                           : FindOrCreateTable(TableRef);
    if (Table == nullptr)
        Table = Tables.Add();
    // The alias a computed kind gave the scratch field outside the table list is not the field's:
    // computed columns are numbered in SELECT-list order, each unique among the aliases of the
    // fields read before it.
    if (!ExpressionHadAlias)
        Scratch->SetAlias("");
    TZvFieldDefs& Fields = Table->GetFieldDefs();
    TZvFieldDef* Field = nullptr;
    if (Fields.MakesItemsOf<TZvFieldDef>()) {
        Field = static_cast<TZvFieldDef*>(Fields.Adopt(std::move(Scratch)));
    } else {
        Field = Fields.Add();
        Field->TakeFrom(*Scratch);
    }
    if (!ExpressionHadAlias && Field->GetKind() != fkUnknown && Field->GetKind() != fkIdentifier)
        Field->SetAlias(Tables.GetUniqueAlias("FIELD_", true));
}

// --- conditions ----------------------------------------------------------------------------------

namespace {

enum TConnective : int { cnNot = 0, cnAnd = 1, cnOr = 2, cnOpen = 3, cnClose = 4 };

int Priority(int Code) {
    static const int Priorities[] = {4, 3, 2, 0, 1};
    return Priorities[Code];
}

// A node of the condition while it is folded: a leaf (one simple condition) or a group, whose
// members stand at First .. First + Count - 1 of the members list that all groups share.
struct TCondNode {
    int Leaf = -1;
    TZvCriterionFilter Filter = cfAll;
    int First = 0;
    int Count = 0;
};

struct TPostfixItem {
    bool Connective;
    int Value;  // connective code, or leaf index
};

// A simple condition as read, made either by the target list's item class or, where it will
// likely land in a nested group, as a plain criterion, the class of every nested group's items.
struct TLeaf {
    std::unique_ptr<TZvCriterion> Item;
    bool Plain = false;
};
using TLeaves = std::vector<TLeaf>;

// The connectives read at one bracket depth, as bits.
enum TConnectivesSeen : std::uint8_t { csAnd = 1, csOr = 2 };

// The lists one condition is read and folded with. Cleared, never freed, between conditions.
struct TCondScratch {
    TLeaves Leaves;
    std::vector<TPostfixItem> Postfix;
    std::vector<int> Pending;
    std::vector<TCondNode> Nodes;
    std::vector<int> Stack;
    std::vector<int> Members;
    // Per open bracket, and the statement's level first: the connectives read there so far.
    std::vector<std::uint8_t> Seen;

    void Reset() {
        Leaves.clear();
        Postfix.clear();
        Pending.clear();
        Nodes.clear();
        Stack.clear();
        Members.clear();
        Seen.clear();
    }
};


} // namespace

struct TZvSelectParser::TCriterionScratch : TCondScratch {};

void TZvSelectParser::TCriterionScratchDeleter::operator()(TCriterionScratch* Scratch) const {
    delete Scratch;
}

namespace {

// A leaf of the class Into makes goes there as it is; another is moved into a new item of Into's
// class, filled before it is placed, so that placing it checks the operator it brings rather than
// the empty one of a new criterion.
void PlaceLeaf(TLeaf& Leaf, TZvCriterions& Into, const TZvCriterions& Target) {
    const bool Fits = Leaf.Plain ? Into.MakesItemsOf<TZvCriterion>() : &Into == &Target;
    if (Fits) {
        Into.Adopt(std::move(Leaf.Item));
        return;
    }
    std::unique_ptr<TZvCollectionItem> Moved = Into.MakeItem();
    static_cast<TZvCriterion&>(*Moved).TakeFrom(*Leaf.Item);
    Into.Adopt(std::move(Moved));
}

void MaterialiseNode(TCondScratch& Scratch, int Index, TZvCriterions& Into, const TZvCriterions& Target) {
    const TCondNode Node = Scratch.Nodes[static_cast<std::size_t>(Index)];
    if (Node.Leaf >= 0) {
        PlaceLeaf(Scratch.Leaves[static_cast<std::size_t>(Node.Leaf)], Into, Target);
        return;
    }
    TZvCriterion* Criterion = Into.Add();
    TZvCriterions& Sub = Criterion->GetSubItems();
    Sub.SetFilter(Node.Filter);
    for (int I = 0; I < Node.Count; ++I)
        MaterialiseNode(Scratch, Scratch.Members[static_cast<std::size_t>(Node.First + I)], Sub, Target);
}

// Adds Operand to the group being built, which ends the members list: an operand that is a group
// of the group's own filter gives its members instead of nesting.
void Absorb(TCondScratch& Scratch, TCondNode& Group, int Operand) {
    const TCondNode Node = Scratch.Nodes[static_cast<std::size_t>(Operand)];
    std::vector<int>& Members = Scratch.Members;
    if (Node.Leaf < 0 && Node.Filter == Group.Filter) {
        for (int I = 0; I < Node.Count; ++I) {
            const int Member = Members[static_cast<std::size_t>(Node.First + I)];
            Members.push_back(Member);
        }
    } else {
        Members.push_back(Operand);
    }
    Group.Count = static_cast<int>(Members.size()) - Group.First;
}

// Makes a group of Filter from the last Needed nodes of the stack, which it replaces there.
void PushGroup(TCondScratch& Scratch, TZvCriterionFilter Filter, std::size_t Needed) {
    std::vector<int>& Stack = Scratch.Stack;
    TCondNode Group{-1, Filter, static_cast<int>(Scratch.Members.size()), 0};
    for (std::size_t I = Stack.size() - Needed; I < Stack.size(); ++I)
        Absorb(Scratch, Group, Stack[I]);
    Stack.resize(Stack.size() - Needed);
    Scratch.Nodes.push_back(Group);
    Stack.push_back(static_cast<int>(Scratch.Nodes.size()) - 1);
}

// Whether the condition about to be read will likely stand in a nested group rather than in the
// target list itself: right under a NOT, or where AND and OR have both been read at its bracket
// depth or outside it, so that one of the two groups it. A wrong guess costs one move.
bool LikelyNested(const TCondScratch& Scratch) {
    if (!Scratch.Pending.empty() && Scratch.Pending.back() == cnNot)
        return true;
    std::uint8_t Read = 0;
    for (const std::uint8_t Connectives : Scratch.Seen)
        Read |= Connectives;
    return Read == (csAnd | csOr);
}

// Folds the postfix list into groups: AND gives cfAll, OR cfAny, NOT cfNot; an operand that is a
// group of the same filter gives its members instead of nesting. A connective short of operands
// (a leading AND) is dropped.
void FoldCriterions(TCondScratch& Scratch, TZvCriterions& Target) {
    std::vector<int>& Stack = Scratch.Stack;
    for (const TPostfixItem& Item : Scratch.Postfix) {
        if (!Item.Connective) {
            Scratch.Nodes.push_back({Item.Value, cfAll, 0, 0});
            Stack.push_back(static_cast<int>(Scratch.Nodes.size()) - 1);
            continue;
        }
        if (Item.Value == cnOpen || Item.Value == cnClose)
            continue;
        const std::size_t Needed = Item.Value == cnNot ? 1 : 2;
        if (Stack.size() < Needed)
            continue;
        PushGroup(Scratch, Item.Value == cnNot ? cfNot : Item.Value == cnAnd ? cfAll : cfAny, Needed);
    }
    if (Stack.empty())
        return;
    // Conditions left side by side without a connective are taken as all holding, exactly as if
    // joined by AND: an AND group among them is merged, or the generated "a AND (b AND c)" would
    // read back as one group of three and the text would change on every round trip.
    if (Stack.size() > 1)
        PushGroup(Scratch, cfAll, Stack.size());
    const TCondNode Root = Scratch.Nodes[static_cast<std::size_t>(Stack.front())];
    if (Root.Leaf >= 0) {
        MaterialiseNode(Scratch, Stack.front(), Target, Target);
        return;
    }
    Target.SetFilter(Root.Filter);
    for (int I = 0; I < Root.Count; ++I)
        MaterialiseNode(Scratch, Scratch.Members[static_cast<std::size_t>(Root.First + I)], Target, Target);
}

} // namespace

bool TZvSelectParser::StartsCondition() {
    return TokenIs(":") ||
           IsIntersected(GetScanner().TokenKinds, {tkFunction, tkInteger, tkFloat, tkString, tkIdent, tkBoolean});
}

void TZvSelectParser::DoParseCriterions(TZvCriterions& Target) {
    // The scratch is taken while the condition is read and given back emptied on every way out.
    struct TLease {
        std::unique_ptr<TCriterionScratch, TCriterionScratchDeleter>& Home;
        std::unique_ptr<TCriterionScratch, TCriterionScratchDeleter> Held;
        ~TLease() {
            Held->Reset();
            Home = std::move(Held);
        }
    } Lease{CriterionScratch, std::move(CriterionScratch)};
    if (!Lease.Held)
        Lease.Held.reset(new TCriterionScratch);
    TCriterionScratch& Scratch = *Lease.Held;
    std::vector<TPostfixItem>& Postfix = Scratch.Postfix;
    std::vector<int>& Pending = Scratch.Pending;
    std::int32_t Open = 0;  // brackets open on Pending
    Scratch.Seen.push_back(0);
    auto Push = [&](int Code) {
        while (!Pending.empty() && Priority(Pending.back()) >= Priority(Code)) {
            Postfix.push_back({true, Pending.back()});
            Pending.pop_back();
        }
        Pending.push_back(Code);
    };
    // A new leaf's operator is set once its condition is read; starting it at the first operator,
    // which is where the parser's hook would put an operator it does not know, spares that search.
    const TZvOperators& OperatorList = GetOperators();
    while (!AtEnd()) {
        if (TokenIs("NOT") || TokenIs("AND") || TokenIs("OR")) {
            const int Code = TokenIs("NOT") ? cnNot : TokenIs("AND") ? cnAnd : cnOr;
            if (Code != cnNot)
                Scratch.Seen.back() |= Code == cnAnd ? csAnd : csOr;
            Push(Code);
            NextToken();
        } else if (TokenIs("(")) {
            if (Open == MaxNesting) {
                Fail(zvpeInvalidToken);
                return;
            }
            ++Open;
            Pending.push_back(cnOpen);
            Scratch.Seen.push_back(0);
            NextToken();
        } else if (TokenIs(")")) {
            while (!Pending.empty() && Pending.back() != cnOpen) {
                Postfix.push_back({true, Pending.back()});
                Pending.pop_back();
            }
            if (Pending.empty()) {
                Fail(zvpeInvalidToken);
                return;
            }
            --Open;
            Pending.pop_back();
            Scratch.Seen.pop_back();
            NextToken();
        } else if (StartsCondition()) {
            TLeaf Leaf{nullptr, LikelyNested(Scratch)};
            if (Leaf.Plain)
                Leaf.Item = std::make_unique<TZvCriterion>();
            else
                Leaf.Item.reset(static_cast<TZvCriterion*>(Target.MakeItem().release()));
            if (OperatorList.Count() > 0)
                Leaf.Item->SetOperatorCaption(OperatorList.Items(0)->GetCaption());
            Leaf.Item->SetParser(this);
            ParseCriterion(*Leaf.Item);
            if (State == ssError)
                return;
            Postfix.push_back({false, static_cast<int>(Scratch.Leaves.size())});
            Scratch.Leaves.push_back(std::move(Leaf));
        } else if (TokenHas(tkKeyword) && !GetScanner().InQuote) {
            break;
        } else {
            // A stray token (a lone ",") is passed over: this leniency is intended.
            NextToken();
        }
    }
    while (!Pending.empty()) {
        Postfix.push_back({true, Pending.back()});
        Pending.pop_back();
    }
    FoldCriterions(Scratch, Target);
}

// One simple condition: left operand, operator, right operands as the operator asks.
void TZvSelectParser::ParseCriterion(TZvCriterion& Criterion) {
    DoParseExpression(Criterion.GetLeftSide(), pepKeepQualifier);
    if (State == ssError)
        return;
    DoParseCriterionSide(Criterion, false);
    if (State == ssError)
        return;
    const TZvOperator* Operator = ReadCriterionOperator();
    if (State == ssError)
        return;
    if (Operator == nullptr) {
        // A condition of one operand (a Boolean column): an operator with one operand and an
        // empty right side writes the left side alone.
        Operator = FirstSingleOperandOperator();
        if (Operator != nullptr)
            Criterion.SetOperatorCaption(Operator->GetCaption());
        return;
    }
    Criterion.SetOperatorCaption(Operator->GetCaption());
    ReadRightOperands(Criterion, *Operator);
    if (State != ssError)
        DoParseCriterionSide(Criterion, true);
}

const TZvOperator* TZvSelectParser::FirstSingleOperandOperator() {
    TZvOperators& List = GetOperators();
    for (int I = 0; I < List.Count(); ++I) {
        if (List.Items(I)->GetCount() == 1 && !List.Items(I)->GetCommaList())
            return List.Items(I);
    }
    return nullptr;
}

namespace {

// True when Name is Words or begins with Words and a blank (whole words, any case).
bool BeginsWithWords(std::string_view Name, std::string_view Words) {
    if (Name.size() < Words.size() || !SameText(Name.substr(0, Words.size()), Words))
        return false;
    return Name.size() == Words.size() || Name[Words.size()] == ' ';
}

} // namespace

TZvSelectParser::TOperatorReach TZvSelectParser::OperatorReach(std::string_view Words) {
    TZvOperators& List = GetOperators();
    TOperatorReach Reach;
    for (int I = 0; I < List.Count() && !(Reach.GoesOn && Reach.Exact != nullptr); ++I) {
        const TZvOperator* Operator = List.Items(I);
        const std::string& Name = Operator->GetName();
        if (!BeginsWithWords(Name, Words))
            continue;
        Reach.Begins = true;
        if (Name.size() > Words.size())
            Reach.GoesOn = true;
        else if (Reach.Exact == nullptr)
            Reach.Exact = Operator;
    }
    return Reach;
}

// A comparison token, or the longest run of words that names an operator ("IS NOT NULL").
// Null when the current token starts no operator; the token is then left current.
const TZvOperator* TZvSelectParser::ReadCriterionOperator() {
    TZvSQLScanner& S = GetScanner();
    TZvOperators& List = GetOperators();
    if (S.InQuote || AtEnd())
        return nullptr;
    if (TokenHas(tkComparison) || TokenHas(tkSpecial)) {
        const TZvOperator* Operator = List.FindByName(S.Token);
        if (Operator == nullptr)
            Operator = List.FindByCaption(S.Token);
        if (Operator != nullptr)
            NextToken();
        return Operator;
    }
    if (!IsIntersected(S.TokenKinds, {tkKeyword, tkIdent}))
        return nullptr;
    TOperatorReach Reach = OperatorReach(S.Token);
    if (!Reach.Begins)
        return nullptr;
    if (Reach.GoesOn)
        Reach = ReadLongerOperator(Reach);
    if (Reach.Exact == nullptr) {
        Fail();
        return nullptr;
    }
    NextToken();
    return Reach.Exact;
}

// The words of an operator name that goes on after the current token (IS, NOT): the next token
// is looked at only while some name goes on after the words read, as a look ahead costs a token
// read. Returns the reach of the longest run of words that begins a name; its last word is current.
TZvSelectParser::TOperatorReach TZvSelectParser::ReadLongerOperator(TOperatorReach Reach) {
    TZvSQLScanner& S = GetScanner();
    std::string Words = S.Token;
    while (Reach.GoesOn) {
        S.GetTokenPlus();
        if (S.TokenPlus.empty())
            break;
        Words += ' ';
        Words += S.TokenPlus;
        const TOperatorReach LongerReach = OperatorReach(Words);
        if (!LongerReach.Begins)
            break;
        NextToken();
        Reach = LongerReach;
    }
    return Reach;
}

void TZvSelectParser::ReadRightOperands(TZvCriterion& Criterion, const TZvOperator& Operator) {
    TZvFunctionDefs& Right = Criterion.GetRightSide();
    const bool Bracketed = !Operator.GetPrefix().empty() && TokenIs(Operator.GetPrefix());
    if (Bracketed)
        NextToken();
    if (Operator.GetCommaList()) {
        while (!(Bracketed && TokenIs(Operator.GetPostfix()))) {
            ReadRightOperand(*Right.Add(), Bracketed);
            if (State == ssError)
                return;
            if (!TokenIs(","))
                break;
            NextToken();
        }
    } else {
        for (std::int32_t I = 0; I < Operator.GetCount(); ++I) {
            if (I > 0) {
                // Every operand is required: "X BETWEEN 1" would be written as "X BETWEEN 1 ", a
                // condition that no longer reads back.
                if (!TokenIs(Operator.GetRelate())) {
                    Fail();
                    return;
                }
                NextToken();
            }
            ReadRightOperand(*Right.Add(), Bracketed);
            if (State == ssError)
                return;
        }
    }
    if (Bracketed) {
        if (!TokenIs(Operator.GetPostfix())) {
            Fail();
            return;
        }
        NextToken();
    }
}

// An operand, or a sub-query (its text, up to the bracket that closes the list). A sub-query
// outside the operator's brackets is refused at its SELECT: only a bracket or a comma could end
// its text, and once written, the conditions after it would be read as part of it.
void TZvSelectParser::ReadRightOperand(TZvFunctionDef& Operand, bool InBrackets) {
    if (!TokenIs("SELECT")) {
        DoParseExpression(Operand, pepKeepQualifier);
        return;
    }
    if (!InBrackets) {
        Fail();
        return;
    }
    const std::int32_t Start = TokenSourceStart();
    if (!SkipArgument())
        return;
    Operand.SetName(SourceText(Start, PrevTokenEnd));
    Operand.SetKind(fkExpression);
}

} // namespace zv
