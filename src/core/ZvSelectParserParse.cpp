// The statement reader's driver and clause handlers: the state machine over the clauses of one
// SELECT statement, GROUP BY and ORDER BY items, error reporting, and the token helpers the
// handlers share. The FROM list and joins are read in ZvSelectParserFrom.cpp, expressions and
// conditions in ZvSelectParserExpr.cpp.
#include "ZvSelectParser.h"

#include <algorithm>
#include <charconv>

#include "ZvCriteria.h"
#include "ZvErrors.h"
#include "ZvTableDefs.h"
#include "ZvUtils.h"

namespace zv {

// --- token helpers ---------------------------------------------------------------------------

std::string TZvSelectParser::TokenSource() {
    TZvSQLScanner& S = GetScanner();
    if (!S.InQuote)
        return S.Token;
    const auto Start = static_cast<std::size_t>(S.TokenPos - 2);
    const auto End = std::min(static_cast<std::size_t>(S.Position), S.Expression.size());
    return CompleteEndQuote(S.Expression.substr(Start, End - Start), End);
}

std::string TZvSelectParser::CompleteEndQuote(std::string Source, std::size_t End) {
    TZvSQLScanner& S = GetScanner();
    if (S.EndClosedQuote && End == S.Expression.size())
        Source += S.Expression.back();
    return Source;
}

std::string TZvSelectParser::TokenName() {
    TZvSQLScanner& S = GetScanner();
    if (!S.InQuote)
        return S.Token;
    std::string Name = S.QuotedContent();
    // The scanner keeps a dotted name it read in quotes in quotes, so that it is not split, and
    // the model keeps it so too; it is quoted again from the name, as the scanner quoted the text
    // as written, doubled quotes and all.
    if (S.Token.size() == static_cast<std::size_t>(std::max(S.Position - S.TokenPos, 0)))
        return Name;
    const char Open = S.GetIdentQuote();
    return QuoteString(Name, Open, S.GetQuotePair(Open));
}

std::string TZvSelectParser::TokenAlias() {
    // A bare token is its own alias: no name is made of it first.
    TZvSQLScanner& S = GetScanner();
    if (!S.InQuote)
        return S.Token;
    return TokenAliasOf(TokenName());
}

std::string TZvSelectParser::TokenAliasOf(std::string Name) {
    if (!NeedsQuotedAlias(Name))
        return Name;
    TZvSQLScanner& S = GetScanner();
    const char Open = S.GetIdentQuote();
    return QuoteString(Name, Open, S.GetQuotePair(Open));
}

void TZvSelectParser::AppendTokenAliasOf(std::string& Out, const std::string& Name) {
    if (!NeedsQuotedAlias(Name)) {
        Out += Name;
        return;
    }
    TZvSQLScanner& S = GetScanner();
    const char Open = S.GetIdentQuote();
    Out += QuoteString(Name, Open, S.GetQuotePair(Open));
}

bool TZvSelectParser::NeedsQuotedAlias(std::string_view Name) {
    TZvSQLScanner& S = GetScanner();
    return S.InQuote && S.GetQuoteIdentifiers() && S.NeedQuotes(Name);
}

TZvTableDef* TZvSelectParser::FindTableByReference(const std::string& Reference) {
    std::string Bare;
    return FindTableByReference(Reference, Bare);
}

TZvTableDef* TZvSelectParser::FindTableByReference(const std::string& Reference, std::string& Bare) {
    TZvTableDefs& Tables = GetTableDefs();
    if (TZvTableDef* Table = Tables.FindByAlias(Reference))
        return Table;
    // A quoted reference also finds the table whose alias is the bare name (FROM "a b" gives the
    // alias a b, which is written with quotes again as the table's name).
    Bare = BareReference(Reference);
    if (Bare != Reference) {
        if (TZvTableDef* Table = Tables.FindByAlias(Bare))
            return Table;
    }
    return nullptr;
}

std::string TZvSelectParser::BareReference(const std::string& Reference) {
    TZvSQLScanner& S = GetScanner();
    std::string Bare;
    std::size_t PartStart = 0;
    char Open = 0;
    for (std::size_t I = 0; I < Reference.size(); ++I) {
        const char C = Reference[I];
        if (Open != 0) {
            // A doubled quote closes and opens again, which leaves the stretch open.
            if (C == S.GetQuotePair(Open))
                Open = 0;
        } else if (S.IsIdentQuote(C)) {
            Open = C;
        } else if (C == '.') {
            Bare += BarePart(std::string_view(Reference).substr(PartStart, I - PartStart));
            Bare += '.';
            PartStart = I + 1;
        }
    }
    if (PartStart == 0)
        return BarePart(Reference);
    Bare += BarePart(std::string_view(Reference).substr(PartStart));
    return Bare;
}

// A quoted part is the name between its quotes, exactly: the dialect's own processing of a word
// (InterBase upper-cases it, quotes and all) is for bare words, and a quoted name keeps its case.
std::string TZvSelectParser::BarePart(std::string_view Part) {
    TZvSQLScanner& S = GetScanner();
    // Only a part that opens with an identifier quote can lose its quotes: the others skip the
    // unquoting copy.
    if (Part.empty() || !S.IsIdentQuote(Part.front()))
        return S.ProcessIdent(Part);
    const std::string Unquoted = S.TZvSQLScanner::ProcessIdent(Part);
    return Unquoted.size() != Part.size() ? QuotedPart(Unquoted) : S.ProcessIdent(Part);
}

// A table's name is its parts joined by dots, and written it is split again at every dot outside
// identifier quotes. A part that holds a dot or an identifier quote of its own (a name read in
// quotes: 'a.b', "a""b") therefore stays in quotes in the model, so that only the dots between
// the parts divide the name ("a.b".c is two parts, "a""b".c too).
std::string TZvSelectParser::QuotedPart(std::string Name) {
    TZvSQLScanner& S = GetScanner();
    const char Open = S.GetIdentQuote();
    const char Close = S.GetQuotePair(Open);
    const bool Enclosed = Name.size() > 1 && Name.front() == Open && Name.back() == Close;
    const bool Divides = std::any_of(Name.begin(), Name.end(), [&S](char C) { return C == '.' || S.IsIdentQuote(C); });
    if (!S.GetQuoteIdentifiers() || Enclosed || !Divides)
        return Name;
    return QuoteString(Name, Open, Close);
}

void TZvSelectParser::Fail(std::int32_t Type) {
    if (Type != 0)
        ErrorType = Type;
    State = ssError;
}

// --- driver --------------------------------------------------------------------------------------

void TZvSelectParser::SetExpression(std::string_view Text) {
    TZvSQLScanner& S = GetScanner();
    S.Expression.assign(Text);
    S.Length = static_cast<std::int32_t>(S.Expression.size());
    DoParse();
}

void TZvSelectParser::DoParse() {
    Valid = true;
    Clear();
    State = ssBegin;
    ErrorType = 0;
    LastJoinKind = zvjInnerJoin;
    LeftHandTable.clear();
    CallDepth = 0;
    NestingExceeded = false;
    TZvSQLScanner& S = GetScanner();
    try {
        S.TokenKinds = TTokenKinds{};
        S.GetFirstToken();
        while (State != ssError && State != ssEnd) {
            RunStateHandler();
            if (State == ssError)
                break;
            if (AtEnd())
                State = ssEnd;
            else if (State != ssFieldDefs && State != ssTableDefs && State != ssAppendix)
                NextToken();
        }
    } catch (const EZvParserError& E) {
        // The scanner's own error (a quote left open) leaves through the one reporting path too.
        GetTableDefs().Clear();
        ProcessError(E.GetErrorType(), E.GetToken(), E.GetPosition() + static_cast<std::int32_t>(E.GetToken().size()),
                     E.GetLine());
        return;
    }
    if (State == ssError) {
        GetTableDefs().Clear();
        const std::int32_t Type = ErrorType != 0 ? ErrorType : GetErrorTypeByToken(S.Token);
        ProcessError(Type, S.Token, S.Column, S.Line);
    }
}

void TZvSelectParser::RunStateHandler() {
    switch (State) {
    case ssBegin: DoParseBegin(); break;
    case ssSelect: DoParseSelectClause(); break;
    case ssFieldDefs: DoParseFieldDefs(); break;
    case ssInto: DoParseIntoClause(); break;
    case ssFrom: DoParseFromClause(); break;
    case ssTableDefs: DoParseTableDefs(); break;
    case ssWhere: DoParseWhereClause(); break;
    case ssGroupBy: DoParseGroupByClause(); break;
    case ssHaving: DoParseHavingClause(); break;
    case ssOrderBy: DoParseOrderByClause(); break;
    case ssAppendix: DoParseAppendix(); break;
    default: State = ssError; break;
    }
}

std::int32_t TZvSelectParser::GetErrorTypeByToken(const std::string& Token) {
    return Token.empty() ? zvpeUnexpectedEnd : zvpeInvalidToken;
}

void TZvSelectParser::RaiseError(std::int32_t Type, const std::string& Token, std::int32_t Column,
                                 std::int32_t Line) {
    ProcessError(Type, Token, Column, Line);
}

void TZvSelectParser::ProcessError(std::int32_t Type, const std::string& Token, std::int32_t Column,
                                   std::int32_t Line) {
    Valid = false;
    const EZvParserError Error(Type, Token, Column - static_cast<std::int32_t>(Token.size()), Line);
    if (OnParserError) {
        OnParserError(*this, Error.what(), Error.GetPosition(), Error.GetLine(), Error.GetToken());
        return;
    }
    throw Error;
}

// --- clause handlers -----------------------------------------------------------------------------

void TZvSelectParser::DoParseBegin() {
    State = TokenIs("SELECT") ? ssSelect : ssError;
}

void TZvSelectParser::DoParseSelectClause() {
    if (TokenIs("DISTINCT")) {
        SetDistinct(true);
        NextToken();
    }
    BeginFieldDefs();
}

void TZvSelectParser::BeginFieldDefs() {
    const bool Starts = TokenIs("*") || TokenIs("(") ||
                        IsIntersected(GetScanner().TokenKinds,
                                      {tkFunction, tkInteger, tkFloat, tkString, tkIdent, tkBoolean});
    State = Starts ? ssFieldDefs : ssError;
}

bool TZvSelectParser::ReadClauseDigits(std::string& Digits) {
    NextToken();
    if (!TokenHas(tkInteger)) {
        Fail();
        return false;
    }
    Digits = GetScanner().Token;
    NextToken();
    return true;
}

bool TZvSelectParser::ReadClauseNumber(std::int32_t& Value) {
    NextToken();
    const std::string& Token = GetScanner().Token;
    std::int32_t Number = 0;
    const auto [End, Error] = std::from_chars(Token.data(), Token.data() + Token.size(), Number);
    if (!TokenHas(tkInteger) || Error != std::errc() || End != Token.data() + Token.size()) {
        Fail();
        return false;
    }
    Value = Number;
    NextToken();
    return true;
}

bool TZvSelectParser::ReadPercentAndTies(bool& Percent, bool& WithTies) {
    Percent = TokenIs("PERCENT");
    if (Percent)
        NextToken();
    WithTies = TokenIs("WITH");
    if (!WithTies)
        return true;
    NextToken();
    if (!TokenIs("TIES")) {
        Fail();
        return false;
    }
    NextToken();
    return true;
}

void TZvSelectParser::EndAfterLastClause() {
    if (AtEnd())
        State = ssEnd;
    else
        Fail();
}

// SELECT ... INTO is not accepted.
void TZvSelectParser::DoParseIntoClause() {
    State = ssError;
}

void TZvSelectParser::DoParseFieldDefs() {
    while (State != ssError && State != ssEnd && State != ssFrom) {
        if (AtEnd()) {
            State = ssEnd;
        } else if (GetScanner().TokenKinds == TTokenKinds{tkKeyword}) {
            State = TokenIs("FROM") ? ssFrom : ssError;
        } else {
            DoParseFieldDef();
            if (State == ssError)
                break;
            if (TokenIs(","))
                NextToken();
            else if (TokenIs(")"))
                Fail();
        }
    }
    if (State == ssError) {
        GetTableDefs().Clear();
        return;
    }
    DropLoneStar();
}

// A star as the whole field list means all fields, with no field entries. The star stands in the
// table that holds expressions naming no table; when that holder is the only table, it goes as a
// whole, since nothing else refers to it yet.
void TZvSelectParser::DropLoneStar() {
    TZvTableDefs& Tables = GetTableDefs();
    if (Tables.Count() != 1)
        return;
    // Two written fields are written with a comma between them, so only a list that writes one
    // field can be the star: the others are not written out to find that.
    const TZvFieldDefs& Fields = Tables.Items(0)->GetFieldDefs();
    int Selected = 0;
    for (int I = 0; I < Fields.Count() && Selected < 2; ++I)
        Selected += Fields.Items(I)->IsSelected() ? 1 : 0;
    if (Selected != 1 || Trim(Fields.GetScript()) != "*")
        return;
    if (Tables.Items(0)->IsEmptyName())
        Tables.Clear();
    else
        Tables.Items(0)->GetFieldDefs().Clear();
}

void TZvSelectParser::DoParseFromClause() {
    State = IsIntersected(GetScanner().TokenKinds, {tkIdent, tkString}) ? ssTableDefs : ssError;
}

void TZvSelectParser::DoParseWhereClause() {
    DoParseCriterions(GetWhereItems());
    if (State == ssError)
        return;
    if (AtEnd()) {
        State = ssEnd;
    } else if (TokenIs("GROUP")) {
        // The word after GROUP is read for real here (not looked at ahead as in the FROM list).
        NextToken();
        State = TokenIs("BY") ? ssGroupBy : ssAppendix;
    } else if (TokenIs("HAVING")) {
        State = ssHaving;
    } else if (TokenIs("ORDER")) {
        NextToken();
        State = TokenIs("BY") ? ssOrderBy : ssAppendix;
    } else {
        State = ssAppendix;
    }
}

void TZvSelectParser::DoParseHavingClause() {
    DoParseCriterions(GetHavingItems());
    if (State == ssError)
        return;
    if (AtEnd()) {
        State = ssEnd;
    } else if (TokenIs("ORDER")) {
        NextToken();
        State = TokenIs("BY") ? ssOrderBy : ssAppendix;
    } else {
        State = ssAppendix;
    }
}

// The generic reader knows no trailing clause.
void TZvSelectParser::DoParseAppendix() {
    State = ssError;
}

// True when the look-ahead sees Word (not quoted) as the next token.
bool TZvSelectParser::NextTokenIs(std::string_view Word) {
    TZvSQLScanner& S = GetScanner();
    S.GetTokenPlus();
    return SameText(S.TokenPlus, Word) && S.TokenKindsPlus.Contains(tkKeyword);
}

// An item of GROUP BY or ORDER BY: consecutive tokens joined without blanks while the item is
// empty, ends with "." or the token is ".", so that a qualified name is one item. Stops at the
// first token that would not continue the item, which is left current.
std::string TZvSelectParser::ReadListItem() {
    TZvSQLScanner& S = GetScanner();
    std::string Item;
    while (!AtEnd() && (Item.empty() || Item.back() == '.' || TokenIs("."))) {
        // A bare token is its own source text: appended as it stands, without a copy.
        if (S.InQuote)
            Item += TokenSource();
        else
            Item += S.Token;
        NextToken();
    }
    return Item;
}

void TZvSelectParser::DoParseGroupByClause() {
    TZvGroupByItems& GroupBy = GetGroupByItems();
    while (!AtEnd() && !TokenHas(tkKeyword)) {
        const std::string Item = ReadListItem();
        if (!AtEnd() && !TokenIs(",") && !TokenHas(tkKeyword)) {
            Fail();
            return;
        }
        if (GroupBy.IndexOf(Item) < 0)
            GroupBy.Add(Item);
        if (TokenIs(","))
            NextToken();
    }
    if (AtEnd()) {
        State = ssEnd;
    } else if (TokenIs("HAVING")) {
        State = ssHaving;
    } else if (TokenIs("ORDER") && NextTokenIs("BY")) {
        NextToken();
        State = ssOrderBy;
    } else {
        State = ssAppendix;
    }
}

void TZvSelectParser::DoParseOrderByClause() {
    TZvOrderByItems& OrderBy = GetOrderByItems();
    while (!AtEnd() && !TokenHas(tkKeyword)) {
        const std::string Item = ReadListItem();
        TZvOrderKind Kind = okAsc;
        if (TokenIs("ASC") || TokenIs("DESC")) {
            Kind = TokenIs("DESC") ? okDesc : okAsc;
            NextToken();
        }
        OrderBy.AddOrdered(Item, Kind);
        if (TokenIs(",")) {
            NextToken();
        } else if (!AtEnd() && !TokenHas(tkKeyword)) {
            Fail();
            return;
        }
    }
    State = AtEnd() ? ssEnd : ssAppendix;
}

} // namespace zv
