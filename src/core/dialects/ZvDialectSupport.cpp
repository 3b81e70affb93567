// The shared dialect pieces: name folding and quoting of the folding servers, the clause number
// reader, and reading and writing "FETCH FIRST n ROWS ONLY".
#include "ZvDialectSupport.h"

#include <charconv>

#include "ZvUtils.h"

namespace zv {

// ---------------------------------------------------------------------------------------------
// TZvFoldingSQLScanner

void TZvFoldingSQLScanner::GetNextToken() {
    TZvSQLScanner::GetNextToken();
    if (!InQuote && IsIntersected(TokenKinds, {tkKeyword, tkFunction})) {
        // Folded in place: the token is read for every word, a new string would be made for each.
        for (char& C : Token)
            C = NameCase == ncUpperCase ? UpCase(C) : LoCase(C);
    }
}

bool TZvFoldingSQLScanner::IsAlpha(char C) {
    return NameCase == ncUpperCase ? (C >= 'A' && C <= 'Z') : (C >= 'a' && C <= 'z');
}

bool TZvFoldingSQLScanner::IsLegalSymbol(char C) {
    return TZvSQLScanner::IsLegalSymbol(C) || (NameCase == ncUpperCase && (C == '$' || C == '#'));
}

bool TZvFoldingSQLScanner::IsQuote(char C) {
    return C == '\'';
}

bool TZvFoldingSQLScanner::GetProcessAliases() {
    return true;
}

std::string TZvFoldingSQLScanner::FoldName(std::string_view S) const {
    return NameCase == ncUpperCase ? UpperCase(S) : LowerCase(S);
}

std::string TZvFoldingSQLScanner::ProcessIdent(std::string_view S) {
    const std::string Unquoted = TZvSQLScanner::ProcessIdent(S);
    return Unquoted.size() != S.size() ? Unquoted : FoldName(S);
}

std::string TZvFoldingSQLScanner::GetFormatTokenIdent(std::string_view S, bool Quoted) {
    if (!Quoted)
        return FoldName(S);
    return TZvSQLScanner::GetFormatTokenIdent(S, Quoted);
}

bool TZvFoldingSQLScanner::NeedQuotes(std::string_view S) {
    return NeedQuotesReserved(S);
}

// ---------------------------------------------------------------------------------------------
// TZvDialectSelectParser

bool TZvDialectSelectParser::ReadClauseNumber(std::int32_t& Value, std::int32_t Minimum) {
    NextToken();
    const std::string& Token = GetScanner().Token;
    std::int32_t Number = 0;
    const auto [End, Error] = std::from_chars(Token.data(), Token.data() + Token.size(), Number);
    const bool Whole = Error == std::errc() && End == Token.data() + Token.size();
    if (!TokenHas(tkInteger) || !Whole || Number < Minimum) {
        Fail();
        return false;
    }
    Value = Number;
    NextToken();
    return true;
}

std::string TZvDialectSelectParser::ClauseLine(std::string_view Text) const {
    return Text.empty() ? std::string() : ProcessKeyword(Text) + "\r\n";
}

// ---------------------------------------------------------------------------------------------
// FETCH FIRST

std::string TZvFetchFirstOptions::GetScript() const {
    if (FetchFirst < 1)
        return {};
    return "FETCH FIRST " + std::to_string(FetchFirst) + " ROWS ONLY";
}

void TZvFetchFirstSelectParser::Clear() {
    TZvDialectSelectParser::Clear();
    GetFetchFirstOptions().Clear();
}

std::string TZvFetchFirstSelectParser::GetDistinctScript() {
    return GetDistinct() ? ProcessKeyword("DISTINCT") + " " : std::string();
}

std::string TZvFetchFirstSelectParser::GetLimitScript() {
    return ClauseLine(GetFetchFirstOptions().GetScript());
}

// A count of 0 is refused rather than read: the options keep 0 for "no clause", so the statement
// would come back without its limit and return every row.
void TZvFetchFirstSelectParser::DoParseAppendix() {
    if (!TokenIs("FETCH")) {
        TZvDialectSelectParser::DoParseAppendix();
        return;
    }
    NextToken();
    if (!TokenIs("FIRST")) {
        Fail();
        return;
    }
    std::int32_t Rows = 0;
    if (!ReadClauseNumber(Rows, 1))
        return;
    if (!TokenIs("ROW") && !TokenIs("ROWS")) {
        Fail();
        return;
    }
    NextToken();
    if (!TokenIs("ONLY")) {
        Fail();
        return;
    }
    NextToken();
    if (!AtEnd()) {
        Fail();
        return;
    }
    GetFetchFirstOptions().SetFetchFirst(Rows);
    State = ssEnd;
}

} // namespace zv
