// The scanner: tokens with their kinds, lines and columns; the look-ahead; cursor movement;
// name quoting; and the unterminated-quote error.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "ZvErrors.h"
#include "ZvScanner.h"

using namespace zv;

namespace {

struct Tok {
    std::string Text;
    TTokenKinds Kinds;
    int Line = 0;
    int Column = 0;  // where the token begins; 0 = not checked
};

bool operator==(const Tok& A, const Tok& B) {
    return A.Text == B.Text && A.Kinds == B.Kinds && (A.Line == 0 || B.Line == 0 || A.Line == B.Line) &&
           (A.Column == 0 || B.Column == 0 || A.Column == B.Column);
}

std::string KindsText(TTokenKinds K) {
    static const char* Names[] = {"Keyword", "Function", "Delim",  "Integer",    "Float",
                                  "String",  "Quote",    "Space",  "Eol",        "End",
                                  "Ident",   "Operation", "Comparison", "Boolean", "Special"};
    std::string R;
    for (int I = 0; I < 15; ++I) {
        if (K.Contains(static_cast<TTokenKind>(I)))
            R += std::string(R.empty() ? "" : "|") + Names[I];
    }
    return "{" + R + "}";
}

std::ostream& operator<<(std::ostream& Out, const Tok& T) {
    return Out << "'" << T.Text << "' " << KindsText(T.Kinds) << " @" << T.Line << ":" << T.Column;
}

// Every token up to (not including) the end token.
std::vector<Tok> Scan(TZvSQLScanner& S, const std::string& Text) {
    std::vector<Tok> Result;
    S.SetExpression(Text);
    for (int Guard = 0; !S.TokenKinds.Contains(tkEnd); ++Guard) {
        if (Guard > static_cast<int>(Text.size()) * 2 + 2) {
            ADD_FAILURE() << "scanner does not advance";
            break;
        }
        Result.push_back({S.Token, S.TokenKinds, S.Line, S.Column - static_cast<int>(S.Token.size())});
        S.GetNextToken();
    }
    return Result;
}

std::vector<Tok> Scan(const std::string& Text) {
    TZvSQLScanner S;
    return Scan(S, Text);
}

void ExpectTokens(const std::string& Text, const std::vector<Tok>& Expected) {
    EXPECT_EQ(Scan(Text), Expected) << "scanning: " << Text;
}

const TTokenKinds Ident{tkIdent};
const TTokenKinds Int{tkInteger};
const TTokenKinds Flt{tkFloat};
const TTokenKinds Str{tkString};
const TTokenKinds Delim{tkDelim};
const TTokenKinds Cmp{tkComparison};
const TTokenKinds Kw{tkKeyword};
const TTokenKinds DelimOp{tkDelim, tkOperation};
const TTokenKinds None{};

// A dialect for the tests: "|" is a delimiter and "||" a complex operator; COUNT is a keyword too.
class TBarScanner : public TZvSQLScanner {
public:
    bool IsDelim(char C) override { return C == '|' || TZvSQLScanner::IsDelim(C); }
    std::string GetCommaComplexOperators() override { return "||,(+)"; }
    std::string GetCommaKeywords() override { return TZvSQLScanner::GetCommaKeywords() + ",COUNT"; }
};

// A dialect whose own lists replace the generic ones entirely.
class TOwnWordsScanner : public TZvSQLScanner {
public:
    std::string GetCommaKeywords() override { return "FOO,BAR"; }
    std::string GetCommaFunctions() override { return "ZAP"; }
    std::string GetCommaCompareOperators() override { return "=,!=,<=>"; }
};

} // namespace

// --- token kinds -----------------------------------------------------------------------------

TEST(TTokenKinds, SetsIntersectWhenTheyShareAMember) {
    EXPECT_TRUE(IsIntersected({tkKeyword, tkFunction}, {tkFunction}));
    EXPECT_FALSE(IsIntersected({tkKeyword}, {tkFunction, tkSpecial}));
    EXPECT_FALSE(IsIntersected({}, {}));
    TTokenKinds K{tkSpecial};
    K.Include(tkKeyword);
    EXPECT_EQ(K.GetBits(), (1u << 14) | 1u);
    K.Exclude(tkSpecial);
    EXPECT_EQ(K, TTokenKinds{tkKeyword});
}

// --- comparison and complex operators -----------------------------------------------------------

TEST(TZvSQLScanner, LessOrEqualIsOneComparisonToken) {
    ExpectTokens("a<=b", {{"a", Ident, 1, 1}, {"<=", Cmp, 1, 2}, {"b", Ident, 1, 4}});
}

TEST(TZvSQLScanner, LessThanAloneIsAComparison) {
    ExpectTokens("a<b", {{"a", Ident}, {"<", Cmp}, {"b", Ident}});
    ExpectTokens("a <> b", {{"a", Ident}, {"<>", Cmp}, {"b", Ident}});
    ExpectTokens("a>=b", {{"a", Ident}, {">=", Cmp}, {"b", Ident}});
}

TEST(TZvSQLScanner, TwoBarsAreOrdinaryCharactersOfAWordInTheGenericDialect) {
    ExpectTokens("a||b", {{"a||b", None}});
    // Standing alone, the two bars are the concatenation operation.
    ExpectTokens("a || b", {{"a", Ident}, {"||", TTokenKinds{tkOperation}}, {"b", Ident}});
}

TEST(TZvSQLScanner, TwoBarsAreOneTokenWhenTheDialectListsThemAsComplexOperator) {
    TBarScanner S;
    EXPECT_EQ(Scan(S, "a||b"),
              (std::vector<Tok>{{"a", Ident}, {"||", TTokenKinds{tkSpecial, tkOperation}}, {"b", Ident}}));
    EXPECT_EQ(Scan(S, "a|b"), (std::vector<Tok>{{"a", Ident}, {"|", Delim}, {"b", Ident}}));
}

TEST(TZvSQLScanner, ComplexOperatorSpanningBracketsIsOneSpecialToken) {
    TBarScanner S;
    EXPECT_EQ(Scan(S, "a(+)=b"), (std::vector<Tok>{{"a", Ident},
                                                   {"(+)", TTokenKinds{tkSpecial}},
                                                   {"=", Cmp},
                                                   {"b", Ident}}));
    // "(" that does not complete the operator stays a bracket.
    EXPECT_EQ(Scan(S, "(+1)"), (std::vector<Tok>{{"(", Delim}, {"+", DelimOp}, {"1", Int}, {")", Delim}}));
}

TEST(TZvSQLScanner, LongestRunThatIsNotAnEntryIsNoOperator) {
    TOwnWordsScanner S;
    // "<=" begins "<=>" but is no entry itself; "<" is no entry either, so "<" is a delimiter.
    EXPECT_EQ(Scan(S, "a<=x"), (std::vector<Tok>{{"a", Ident}, {"<", Delim}, {"=", Cmp}, {"x", Ident}}));
    EXPECT_EQ(Scan(S, "a<=>b"), (std::vector<Tok>{{"a", Ident}, {"<=>", Cmp}, {"b", Ident}}));
    EXPECT_EQ(Scan(S, "a!=b"), (std::vector<Tok>{{"a", Ident}, {"!=", Cmp}, {"b", Ident}}));
}

// --- numbers -------------------------------------------------------------------------------------

TEST(TZvSQLScanner, NumberDotDigitsIsOneFloat) {
    ExpectTokens("1.5", {{"1.5", Flt, 1, 1}});
    ExpectTokens("12.25+3", {{"12.25", Flt}, {"+", DelimOp}, {"3", Int}});
}

TEST(TZvSQLScanner, IntegerAndDotFollowedByBlankIsAFloat) {
    ExpectTokens("1. x", {{"1.", Flt}, {"x", Ident, 1, 4}});
    ExpectTokens("7.", {{"7.", Flt}});
}

TEST(TZvSQLScanner, FloatEndsAtDotWhenALetterFollowsTheDigits) {
    // The integer ends at the dot; the rest is neither number nor identifier.
    ExpectTokens("1.5a", {{"1", Int}, {".", Delim}, {"5a", None}});
}

TEST(TZvSQLScanner, SecondDotAfterTheDigitsStopsTheFloat) {
    ExpectTokens("1.5.3", {{"1", Int}, {".", Delim}, {"5.3", Flt}});
}

TEST(TZvSQLScanner, QualifiedNameIsThreeTokens) {
    ExpectTokens("t.f", {{"t", Ident}, {".", Delim}, {"f", Ident}});
}

// --- quotes --------------------------------------------------------------------------------------

TEST(TZvSQLScanner, DoubledApostropheStaysInsideOneStringToken) {
    ExpectTokens("'it''s'", {{"it''s", Str, 1, 2}});
    ExpectTokens("x = 'a''' y", {{"x", Ident}, {"=", Cmp}, {"a''", Str}, {"y", Ident}});
}

TEST(TZvSQLScanner, EmptyLiteralIsAnEmptyStringToken) {
    ExpectTokens("a = '' b", {{"a", Ident}, {"=", Cmp}, {"", Str}, {"b", Ident}});
    ExpectTokens("''", {{"", Str}});
}

TEST(TZvSQLScanner, LiteralHoldingOnlyAQuoteIsNotEmpty) {
    ExpectTokens("''''", {{"''", Str}});
}

TEST(TZvSQLScanner, DelimitersAndBlanksInsideQuotesAreContent) {
    ExpectTokens("'a, (b)'", {{"a, (b)", Str}});
    ExpectTokens("\"my table\"", {{"my table", TTokenKinds{tkIdent, tkString}}});
}

TEST(TZvSQLScanner, DoubleQuotedNameIsIdentifierAndString) {
    ExpectTokens("\"Name\"", {{"Name", TTokenKinds{tkIdent, tkString}}});
}

TEST(TZvSQLScanner, QuotedNameWithDotKeepsItsQuotes) {
    ExpectTokens("\"a.b\"", {{"\"a.b\"", TTokenKinds{tkIdent, tkString}}});
}

TEST(TZvSQLScanner, QuotedNameWithDotAndBlankIsNoIdentifier) {
    ExpectTokens("\"a.b c\"", {{"a.b c", Str}});
}

TEST(TZvSQLScanner, QuotedTextEndingInADotIsNoIdentifier) {
    ExpectTokens("\"t.\"", {{"t.", Str}});
    ExpectTokens("'t.'", {{"t.", Str}});
}

TEST(TZvSQLScanner, QuotedNamesWithDotsAreNotRequotedWhenQuotingIsOff) {
    TZvSQLScanner S;
    S.QuoteIdentifiers = false;
    EXPECT_EQ(Scan(S, "\"a.b\""), (std::vector<Tok>{{"a.b", TTokenKinds{tkIdent, tkString}}}));
}

TEST(TZvSQLScanner, ApostropheInsideDoubleQuotesIsContent) {
    ExpectTokens("\"it's\"", {{"it's", TTokenKinds{tkIdent, tkString}}});
    ExpectTokens("'say \"hi\"'", {{"say \"hi\"", Str}});
}

TEST(TZvSQLScanner, QuoteRightAfterAWordEndsTheWord) {
    ExpectTokens("ab'cd'", {{"ab", Ident}, {"cd", Str}});
}

TEST(TZvSQLScanner, TextEndingInsideAQuoteRaisesUnterminatedString) {
    TZvSQLScanner S;
    try {
        S.SetExpression("SELECT 'ab");
        S.GetNextToken();
        FAIL() << "no error";
    } catch (const EZvParserError& E) {
        EXPECT_EQ(E.GetErrorType(), 3);
        EXPECT_STREQ(E.what(), "Unterminated string.");
        EXPECT_EQ(E.GetLine(), 1);
        EXPECT_EQ(E.GetPosition(), 9);
        EXPECT_EQ(E.GetToken(), "ab");
    }
}

TEST(TZvSQLScanner, UnterminatedQuoteReportsTheLineAndColumnOfTheUnfinishedToken) {
    TZvSQLScanner S;
    S.SetExpression("SELECT a,\r\n  \"b c, d");
    S.GetNextToken();
    S.GetNextToken();
    try {
        S.GetNextToken();
        FAIL() << "no error";
    } catch (const EZvParserError& E) {
        EXPECT_EQ(E.GetErrorType(), 3);
        EXPECT_EQ(E.GetLine(), 2);
        EXPECT_EQ(E.GetPosition(), 4);
        EXPECT_EQ(E.GetToken(), "b c, d");
    }
}

TEST(TZvSQLScanner, LoneQuoteAtTheEndIsUnterminated) {
    TZvSQLScanner S;
    S.SetExpression("a '");
    EXPECT_THROW(S.GetNextToken(), EZvParserError);
    EXPECT_THROW(S.SetExpression("'"), EZvParserError);
}

TEST(TZvSQLScanner, QuoteAsTheLastCharacterAlwaysCloses) {
    // Even after a quote that would otherwise start a doubled pair.
    ExpectTokens("'it''", {{"it'", Str}});
}

TEST(TZvSQLScanner, OpenQuoteAfterAClosedLiteralIsUnterminated) {
    TZvSQLScanner S;
    S.SetExpression("'abc''' 'x");
    EXPECT_EQ(S.Token, "abc''");
    EXPECT_THROW(S.GetNextToken(), EZvParserError);
}

// --- blanks, line ends, statement end ------------------------------------------------------------

TEST(TZvSQLScanner, CarriageReturnAloneIsADelimiterNotALineEnd) {
    ExpectTokens("a\rb", {{"a", Ident, 1, 1}, {"\r", Delim, 1, 2}, {"b", Ident, 1, 3}});
}

TEST(TZvSQLScanner, LineFeedAloneIsAnOrdinaryCharacterOfTheNextToken) {
    ExpectTokens("a \nb", {{"a", Ident, 1, 1}, {"\nb", None, 1, 3}});
}

TEST(TZvSQLScanner, CarriageReturnLineFeedStartsANewLineAtColumnOne) {
    ExpectTokens("SELECT a,\r\n  b\r\nFROM t",
                 {{"SELECT", Kw, 1, 1},
                  {"a", Ident, 1, 8},
                  {",", Delim, 1, 9},
                  {"b", Ident, 2, 3},
                  {"FROM", Kw, 3, 1},
                  {"t", Ident, 3, 6}});
}

TEST(TZvSQLScanner, BlanksAndLineEndsAreCountedNotHandedOut) {
    TZvSQLScanner S;
    S.SetExpression("a \t\r\n b");
    EXPECT_EQ(S.SpaceCount, 0);
    S.GetNextToken();
    EXPECT_EQ(S.Token, "b");
    EXPECT_EQ(S.SpaceCount, 4);
}

TEST(TZvSQLScanner, StringLiteralHasNoCountedSpaces) {
    // The bare opening quote passed over in between resets the count.
    TZvSQLScanner S;
    S.SetExpression("a  'x'");
    S.GetNextToken();
    EXPECT_EQ(S.Token, "x");
    EXPECT_EQ(S.SpaceCount, 0);
}

TEST(TZvSQLScanner, TokensAfterAClosingQuoteKeepTheirColumnsAndKinds) {
    ExpectTokens("x = 'a''b' AND \"c d\".e,'' y",
                 {{"x", Ident, 1, 1},
                  {"=", Cmp, 1, 3},
                  {"a''b", Str, 1, 6},
                  {"AND", Kw, 1, 12},
                  {"c d", TTokenKinds{tkIdent, tkString}, 1, 17},
                  {".", Delim, 1, 21},
                  {"e", Ident, 1, 22},
                  {",", Delim, 1, 23},
                  {"", Str, 1, 25},
                  {"y", Ident, 1, 27}});
}

TEST(TZvSQLScanner, BlanksAfterAClosingQuoteAreCounted) {
    TZvSQLScanner S;
    S.SetExpression("'a'  \r\n b");
    EXPECT_EQ(S.Token, "a");
    S.GetNextToken();
    EXPECT_EQ(S.Token, "b");
    EXPECT_EQ(S.SpaceCount, 4);
    EXPECT_EQ(S.Line, 2);
    EXPECT_EQ(S.Column, 3);
}

TEST(TZvSQLScanner, BracketRightAfterAClosingQuoteChangesTheLevel) {
    TZvSQLScanner S;
    S.SetExpression("('a')'b'");
    EXPECT_EQ(S.Level, 1);
    S.GetNextToken();
    EXPECT_EQ(S.Token, "a");
    S.GetNextToken();
    EXPECT_EQ(S.Token, ")");
    EXPECT_EQ(S.Level, 0);
    EXPECT_FALSE(S.InQuote);
    S.GetNextToken();
    EXPECT_EQ(S.Token, "b");
    EXPECT_TRUE(S.InQuote);
}

TEST(TZvSQLScanner, QuoteDoubledRightAfterTheContentStaysInTheLiteral) {
    // The first two quotes after "a" are one quote of the content; the third closes.
    ExpectTokens("'a''' b", {{"a''", Str, 1, 2}, {"b", Ident, 1, 7}});
}

TEST(TZvSQLScanner, SemicolonEndsTheStatement) {
    TZvSQLScanner S;
    S.SetExpression("a; b");
    S.GetNextToken();
    EXPECT_EQ(S.Token, ";");
    EXPECT_EQ(S.TokenKinds, TTokenKinds{tkEnd});
}

TEST(TZvSQLScanner, EmptyTextIsAtItsEnd) {
    TZvSQLScanner S;
    S.SetExpression("");
    EXPECT_EQ(S.TokenKinds, TTokenKinds{tkEnd});
    EXPECT_EQ(S.Token, "");
    S.SetExpression("   \r\n  ");
    EXPECT_EQ(S.TokenKinds, TTokenKinds{tkEnd});
    EXPECT_EQ(S.Line, 2);
}

TEST(TZvSQLScanner, ScanRestartedAfterALineEndTokenCountsFromLineTwo) {
    TZvSQLScanner S;
    S.SetExpression("a b");
    EXPECT_EQ(S.Line, 1);
    S.TokenKinds = TTokenKinds{tkEol};
    S.GetFirstToken();
    EXPECT_EQ(S.Token, "a");
    EXPECT_EQ(S.Line, 2);
    EXPECT_EQ(S.Column, 2);
}

// --- words ---------------------------------------------------------------------------------------

TEST(TZvSQLScanner, CountIsAFunction) {
    ExpectTokens("count(*)", {{"count", TTokenKinds{tkFunction}},
                              {"(", Delim},
                              {"*", DelimOp},
                              {")", Delim}});
}

TEST(TZvSQLScanner, CountIsAlsoAKeywordWhereTheDialectListsIt) {
    TBarScanner S;
    EXPECT_EQ(Scan(S, "COUNT"), (std::vector<Tok>{{"COUNT", TTokenKinds{tkFunction, tkKeyword}}}));
}

TEST(TZvSQLScanner, KeywordsAreFoundWithoutRegardToCase) {
    ExpectTokens("select Distinct x frOM t", {{"select", Kw}, {"Distinct", Kw}, {"x", Ident},
                                              {"frOM", Kw}, {"t", Ident}});
}

TEST(TZvSQLScanner, BooleanLiteralsIgnoreCase) {
    ExpectTokens("TRUE false", {{"TRUE", TTokenKinds{tkBoolean}}, {"false", TTokenKinds{tkBoolean}}});
    TZvSQLScanner S;
    S.SetBooleans(true, "Yes");
    EXPECT_EQ(S.GetBooleans(true), "Yes");
    EXPECT_EQ(S.GetBooleans(false), "False");
    EXPECT_EQ(Scan(S, "yes true"), (std::vector<Tok>{{"yes", TTokenKinds{tkBoolean}}, {"true", Ident}}));
}

TEST(TZvSQLScanner, NamesWithUnderscoresAndDigitsAreIdentifiers) {
    ExpectTokens("a_1 _x 2b", {{"a_1", Ident}, {"_x", None}, {"2b", None}});
}

TEST(TZvSQLScanner, ParameterMarkerIsADelimiterBeforeTheName) {
    ExpectTokens(":p1", {{":", Delim}, {"p1", Ident}});
}

TEST(TZvSQLScanner, OperationsCarryTheOperationMark) {
    ExpectTokens("a+b*c", {{"a", Ident}, {"+", DelimOp}, {"b", Ident}, {"*", DelimOp}, {"c", Ident}});
    ExpectTokens("-/", {{"-", DelimOp}, {"/", DelimOp}});
}

TEST(TZvSQLScanner, DialectListsReplaceTheGenericOnes) {
    TOwnWordsScanner S;
    EXPECT_EQ(Scan(S, "foo select zap count"),
              (std::vector<Tok>{{"foo", Kw}, {"select", Ident}, {"zap", TTokenKinds{tkFunction}},
                                {"count", Ident}}));
    EXPECT_TRUE(S.IsKeyword("bar"));
    EXPECT_FALSE(S.IsKeyword("FROM"));
}

TEST(TZvSQLScanner, GenericKeywordListKeepsFromTwice) {
    TZvSQLScanner S;
    const auto& Items = S.GetKeywords().Items();
    EXPECT_EQ(std::count(Items.begin(), Items.end(), "FROM"), 2);
    EXPECT_EQ(Items.size(), 71u);
    EXPECT_EQ(Items.front(), "SELECT");
    EXPECT_EQ(Items.back(), "VARCHAR");
    EXPECT_EQ(S.GetFunctions().GetCommaText(), "SUM,MIN,MAX,AVG,COUNT");
    EXPECT_EQ(S.GetOperations().GetCommaText(), "+,-,*,/,||");
    EXPECT_EQ(S.GetCompareOperators().GetCommaText(), "=,<>,<,<=,>,>=");
    EXPECT_EQ(S.GetJoinOperators().GetCommaText(), "=,<>,<,<=,>,>=");
    EXPECT_EQ(S.GetComplexOperators().Count(), 0u);
}

TEST(TZvSQLScanner, ListSettersCopyEntriesIn) {
    TZvSQLScanner S;
    TZvWordList L;
    L.SetCommaText("ONLY");
    S.SetKeywords(L);
    EXPECT_TRUE(S.IsKeyword("only"));
    EXPECT_FALSE(S.IsKeyword("select"));
    S.SetKeywords(S.GetKeywords());
    EXPECT_TRUE(S.IsKeyword("ONLY"));
    TZvWordList Ops;
    Ops.SetCommaText("~");
    S.SetCompareOperators(Ops);
    EXPECT_EQ(Scan(S, "a~b"), (std::vector<Tok>{{"a", Ident}, {"~", Cmp}, {"b", Ident}}));
}

TEST(TZvSQLScanner, NonAsciiBytesFormPartOfWordsAndQuotedNames) {
    // "é" is not a letter to the scanner: the word is no identifier, but it stays one token.
    ExpectTokens("caf\xC3\xA9 = 'na\xC3\xAFve'", {{"caf\xC3\xA9", None}, {"=", Cmp}, {"na\xC3\xAFve", Str}});
    ExpectTokens("\"\xC3\xA9t\xC3\xA9\"", {{"\xC3\xA9t\xC3\xA9", TTokenKinds{tkIdent, tkString}}});
    // Columns count bytes.
    ExpectTokens("\xC3\xA9 x", {{"\xC3\xA9", None, 1, 1}, {"x", Ident, 1, 4}});
}

// --- parenthesis level ---------------------------------------------------------------------------

TEST(TZvSQLScanner, LevelFollowsBracketsOutsideQuotes) {
    TZvSQLScanner S;
    S.SetExpression("(a, ')') b");
    EXPECT_EQ(S.Level, 1);
    S.GetNextToken();  // a
    EXPECT_EQ(S.Level, 1);
    S.GetNextToken();  // ,
    S.GetNextToken();  // ")" inside quotes
    EXPECT_EQ(S.Token, ")");
    EXPECT_EQ(S.TokenKinds, Str);
    EXPECT_EQ(S.Level, 1);
    S.GetNextToken();  // the real ")"
    EXPECT_EQ(S.Level, 0);
}

// --- look-ahead ----------------------------------------------------------------------------------

TEST(TZvSQLScanner, LookAheadTellsTheNextTokenWithoutConsumingIt) {
    TZvSQLScanner S;
    S.SetExpression("GROUP\r\n BY x");
    const int Position = S.Position;
    EXPECT_EQ(S.GetTokenKindPlus(), Kw);
    EXPECT_EQ(S.TokenPlus, "BY");
    EXPECT_EQ(S.Token, "GROUP");
    EXPECT_EQ(S.TokenKinds, Kw);
    EXPECT_EQ(S.Position, Position);
    EXPECT_EQ(S.Line, 1);
    EXPECT_EQ(S.Column, 6);
    S.GetNextToken();
    EXPECT_EQ(S.Token, "BY");
    EXPECT_EQ(S.Line, 2);
}

TEST(TZvSQLScanner, LookAheadAtTheEndSeesTheEnd) {
    TZvSQLScanner S;
    S.SetExpression("x");
    S.GetTokenPlus();
    EXPECT_EQ(S.TokenKindsPlus, TTokenKinds{tkEnd});
    EXPECT_EQ(S.TokenPlus, "");
    EXPECT_EQ(S.Token, "x");
}

TEST(TZvSQLScanner, LookAheadRestoresQuoteStateAndLevel) {
    TZvSQLScanner S;
    S.SetExpression("a ('b'");
    S.GetTokenPlus();
    EXPECT_EQ(S.TokenPlus, "(");
    EXPECT_EQ(S.Level, 0);
    EXPECT_FALSE(S.InQuote);
}

// --- cursor movement -----------------------------------------------------------------------------

TEST(TZvSQLScanner, MoveByForwardTracksLevelAndDoubleQuotes) {
    TZvSQLScanner S;
    S.SetExpression("(a\"b\")");
    S.Init();
    S.MoveBy(3);
    EXPECT_EQ(S.Position, 4);
    EXPECT_EQ(S.Level, 1);
    EXPECT_TRUE(S.InQuote);
    EXPECT_EQ(S.QuoteChar, '"');
    EXPECT_EQ(S.Token, "");
    S.MoveBy(10);  // stops at the end
    EXPECT_EQ(S.Position, 7);
    EXPECT_FALSE(S.InQuote);
    EXPECT_EQ(S.Level, 0);
}

TEST(TZvSQLScanner, MoveByTreatsApostrophesDifferentlyForwardAndBack) {
    TZvSQLScanner S;
    S.SetExpression("x'y");
    S.Init();
    S.MoveBy(2);  // forward, a quote must pass both tests: the apostrophe is no identifier quote
    EXPECT_FALSE(S.InQuote);
    S.MoveBy(-1);  // back, either test suffices
    EXPECT_EQ(S.Position, 2);
    EXPECT_TRUE(S.InQuote);
    EXPECT_EQ(S.QuoteChar, '\'');
}

TEST(TZvSQLScanner, MoveByBackReversesLevelsAndStopsAtTheStart) {
    TZvSQLScanner S;
    S.SetExpression("((a))");
    S.Init();
    S.MoveBy(2);
    EXPECT_EQ(S.Level, 2);
    S.MoveBy(-5);
    EXPECT_EQ(S.Position, 1);
    EXPECT_EQ(S.Level, 0);
}

TEST(TZvSQLScanner, MoveBySetsEndKindAtTheLastCharacter) {
    TZvSQLScanner S;
    S.SetExpression("abc");
    S.Init();
    S.MoveBy(2);
    EXPECT_EQ(S.TokenKinds, TTokenKinds{tkEnd});
    S.MoveBy(-1);
    EXPECT_EQ(S.TokenKinds, TTokenKinds{});
}

// --- name operations -----------------------------------------------------------------------------

TEST(TZvSQLScanner, NeedQuotesRules) {
    TZvSQLScanner S;
    EXPECT_FALSE(S.NeedQuotes(""));
    EXPECT_FALSE(S.NeedQuotes(" * "));
    EXPECT_FALSE(S.NeedQuotes("a.\"b c\""));
    EXPECT_FALSE(S.NeedQuotes("\"a b\".c"));
    EXPECT_FALSE(S.NeedQuotes("\"x y\""));
    EXPECT_FALSE(S.NeedQuotes("Name_1"));
    EXPECT_TRUE(S.NeedQuotes("select"));
    EXPECT_TRUE(S.NeedQuotes("Count"));
    EXPECT_TRUE(S.NeedQuotes("1abc"));
    EXPECT_TRUE(S.NeedQuotes("a b"));
    EXPECT_TRUE(S.NeedQuotes("_a"));
    EXPECT_TRUE(S.NeedQuotes("caf\xC3\xA9"));
    EXPECT_TRUE(S.NeedQuotes("a-b"));
    EXPECT_TRUE(S.NeedQuotes("\""));
    // Plain words are settled by the word lists alone, in any case.
    EXPECT_FALSE(S.NeedQuotes("quantity2"));
    EXPECT_TRUE(S.NeedQuotes("sElEcT"));
    EXPECT_TRUE(S.NeedQuotes("max"));
    EXPECT_FALSE(S.NeedQuotes("maximum"));
    // A letter first and then a character that is no legal symbol.
    EXPECT_TRUE(S.NeedQuotes("a*b"));
    EXPECT_TRUE(S.NeedQuotes("abc "));
    EXPECT_TRUE(S.NeedQuotes("a.b"));
}

TEST(TZvSQLScanner, QuoteNameQuotesOnlyWhereNeeded) {
    TZvSQLScanner S;
    EXPECT_EQ(S.QuoteName("abc"), "abc");
    EXPECT_EQ(S.QuoteName("a b"), "\"a b\"");
    EXPECT_EQ(S.QuoteName("\"a b\""), "\"a b\"");
    EXPECT_EQ(S.QuoteName("\"abc\""), "abc");
    EXPECT_EQ(S.QuoteName("a\"b"), "\"a\"\"b\"");
    EXPECT_EQ(S.QuoteName("order"), "\"order\"");
    EXPECT_EQ(S.QuoteName("\xC3\xA9t\xC3\xA9"), "\"\xC3\xA9t\xC3\xA9\"");
    S.QuoteIdentifiers = false;
    EXPECT_EQ(S.QuoteName("a b"), "a b");
    EXPECT_EQ(S.QuoteName("\"a b\""), "a b");
}

TEST(TZvSQLScanner, ProcessNameQuotesEachPartOfADottedName) {
    TZvSQLScanner S;
    EXPECT_EQ(S.ProcessName("abc"), "abc");
    EXPECT_EQ(S.ProcessName("my table.x"), "\"my table\".x");
    EXPECT_EQ(S.ProcessName("select.from"), "\"select\".\"from\"");
    EXPECT_EQ(S.ProcessName("s.t.order"), "s.t.\"order\"");
    EXPECT_EQ(S.ProcessName("t.*"), "t.*");
    EXPECT_EQ(S.ProcessName("c1.quantity"), "c1.quantity");
    EXPECT_EQ(S.ProcessName("c1.Order"), "c1.\"Order\"");
    EXPECT_EQ(S.ProcessName("sch.c1.Sum"), "sch.c1.\"Sum\"");
    // Empty parts stay empty.
    EXPECT_EQ(S.ProcessName("a..b"), "a..b");
    EXPECT_EQ(S.ProcessName(".a"), ".a");
    EXPECT_EQ(S.ProcessName("a."), "a.");
    EXPECT_EQ(S.ProcessName("."), ".");
    // Already quoted in parts: left as it stands.
    EXPECT_EQ(S.ProcessName("\"my.schema\".tab"), "\"my.schema\".tab");
    S.QuoteIdentifiers = false;
    EXPECT_EQ(S.ProcessName("my table.x"), "my table.x");
}

TEST(TZvSQLScanner, ProcessNameDoesNotSplitInsideQuotes) {
    TZvSQLScanner S;
    // One quoted part holding a dot and a doubled quote, next to a part that needs quotes.
    EXPECT_EQ(S.ProcessName("\"a.b\"c.d e"), "\"a.b\".\"d e\"");
    EXPECT_EQ(S.ProcessName("\"a\"\"b\"c.d e"), "\"a\"\"b\".\"d e\"");
    EXPECT_EQ(S.ProcessName("\"a.b\""), "\"a.b\"");
}

TEST(TZvSQLScanner, QuoteStrMakesStringLiterals) {
    TZvSQLScanner S;
    EXPECT_EQ(S.QuoteStr("it's"), "'it''s'");
    EXPECT_EQ(S.QuoteStr("'x'"), "'x'");
    EXPECT_EQ(S.QuoteStr("'"), "''''");
    EXPECT_EQ(S.QuoteStr(""), "''");
}

TEST(TZvSQLScanner, ProcessIdentStripsIdentifierQuotes) {
    TZvSQLScanner S;
    EXPECT_EQ(S.ProcessIdent("\"a\"\"b\""), "a\"b");
    EXPECT_EQ(S.ProcessIdent("\"x\""), "x");
    EXPECT_EQ(S.ProcessIdent("x"), "x");
    EXPECT_EQ(S.ProcessIdent("\""), "\"");
    EXPECT_EQ(S.ProcessIdent("'x'"), "'x'");
}

TEST(TZvSQLScanner, GetFormatTokenIdentQuotesDottedNamesReadInQuotes) {
    TZvSQLScanner S;
    EXPECT_EQ(S.GetFormatTokenIdent("a.b", true), "\"a.b\"");
    EXPECT_EQ(S.GetFormatTokenIdent("a.b", false), "a.b");
    EXPECT_EQ(S.GetFormatTokenIdent("ab", true), "ab");
    EXPECT_EQ(S.GetFormatTokenIdent(".", true), ".");
    EXPECT_EQ(S.GetFormatTokenIdent("\"a.b\"", true), "\"a.b\"");
}

TEST(TZvSQLScanner, CharacterTestsOfTheGenericDialect) {
    TZvSQLScanner S;
    for (char C : std::string(".,/\\;:(){}[]*+-<=>!~\r"))
        EXPECT_TRUE(S.IsDelim(C)) << C;
    EXPECT_FALSE(S.IsDelim('\n'));
    EXPECT_FALSE(S.IsDelim('|'));
    EXPECT_FALSE(S.IsDelim('\0'));
    EXPECT_TRUE(S.IsSpace('\t'));
    EXPECT_FALSE(S.IsSpace('\n'));
    EXPECT_TRUE(S.IsQuote('\''));
    EXPECT_TRUE(S.IsQuote('"'));
    EXPECT_FALSE(S.IsQuote('`'));
    EXPECT_TRUE(S.IsIdentQuote('"'));
    EXPECT_FALSE(S.IsIdentQuote('\''));
    EXPECT_TRUE(S.IsLegalSymbol('_'));
    EXPECT_FALSE(S.IsAlpha('_'));
    EXPECT_FALSE(S.IsAlpha(static_cast<char>(0xC3)));
    EXPECT_TRUE(S.IsIdentifier("a1_"));
    EXPECT_FALSE(S.IsIdentifier(""));
    EXPECT_TRUE(S.IsInteger("0123"));
    EXPECT_FALSE(S.IsInteger("1.0"));
    EXPECT_EQ(S.GetQuotePair('['), '[');
    EXPECT_EQ(S.GetIdentQuote(), '"');
    EXPECT_EQ(S.GetStringQuote(), '\'');
    EXPECT_FALSE(S.GetProcessAliases());
    EXPECT_TRUE(S.GetQuoteIdentifiers());
}

TEST(TZvSQLScanner, TerminatorNeedsAnEvenRunOfQuotesBeforeIt) {
    TZvSQLScanner S;
    EXPECT_TRUE(S.IsTerminator('\'', "ab", ' ', '\''));
    EXPECT_FALSE(S.IsTerminator('\'', "ab", '\'', '\''));
    EXPECT_FALSE(S.IsTerminator('\'', "ab'", 'x', '\''));
    EXPECT_TRUE(S.IsTerminator('\'', "ab''", 'x', '\''));
    EXPECT_FALSE(S.IsTerminator('"', "ab", 'x', '\''));
}

// --- the base cursor layer -----------------------------------------------------------------------

TEST(TZvScanner, BaseLayerReadsWordsAndSingleDelimiters) {
    TZvScanner S;
    S.SetExpression("ab (c)");
    EXPECT_EQ(S.Token, "ab");
    S.GetNextToken();
    EXPECT_EQ(S.Token, " ");
    S.GetNextToken();
    EXPECT_EQ(S.Token, "(");
    EXPECT_EQ(S.Level, 1);
    S.GetNextToken();
    EXPECT_EQ(S.Token, "c");
    S.GetNextToken();
    EXPECT_EQ(S.Token, ")");
    EXPECT_EQ(S.Level, 0);
    S.GetNextToken();
    EXPECT_EQ(S.Token, "");
}

TEST(TZvScanner, BaseLayerQuotesOnAnyQuoteCharacterForward) {
    TZvScanner S;
    S.SetExpression("'a b' c");
    EXPECT_EQ(S.Token, "'a b'");
    EXPECT_FALSE(S.InQuote);
}

// --- bad input -----------------------------------------------------------------------------------

TEST(TZvSQLScanner, ArbitraryBytesEndInTokensOrAParseError) {
    std::mt19937 Random(20261122);
    const std::string Alphabet = "ab1 .,'\"()\r\n;<=>|+-*/:\t\\[]!~_\x80\xff";
    for (int Round = 0; Round < 3000; ++Round) {
        std::string Text;
        const std::size_t Size = Random() % 40;
        for (std::size_t I = 0; I < Size; ++I) {
            Text += (Round % 3 == 0) ? static_cast<char>(Random() % 256)
                                     : Alphabet[Random() % Alphabet.size()];
        }
        TZvSQLScanner S;
        try {
            S.SetExpression(Text);
            int Calls = 0;
            while (!S.TokenKinds.Contains(tkEnd)) {
                ASSERT_LE(++Calls, static_cast<int>(Text.size()) * 2 + 2) << "no progress on: " << Text;
                ASSERT_LE(S.Position, S.Length + 1);
                S.GetNextToken();
            }
        } catch (const EZvParserError& E) {
            EXPECT_EQ(E.GetErrorType(), 3);
            EXPECT_GE(E.GetPosition(), 1);
        }
    }
}

TEST(TZvSQLScanner, TokenPosMarksWhereTheTokenTextBegins) {
    TZvSQLScanner S;
    S.SetExpression("ab  'c''d' \"e\"");
    EXPECT_EQ(S.TokenPos, 1);
    S.GetNextToken();
    EXPECT_EQ(S.Token, "c''d");
    EXPECT_EQ(S.TokenPos, 6);
    EXPECT_TRUE(S.InQuote);
    EXPECT_EQ(S.Expression.substr(static_cast<std::size_t>(S.TokenPos - 2),
                                  static_cast<std::size_t>(S.Position - S.TokenPos + 2)),
              "'c''d'");
    S.GetTokenPlus();
    EXPECT_EQ(S.TokenPos, 6);
    S.GetNextToken();
    EXPECT_EQ(S.Token, "e");
    EXPECT_EQ(S.TokenPos, 13);
}

namespace {

// Derives without overriding anything: its words go through the virtual word tests, where the
// base scanner's own words are classified from its class table. The two must read alike.
class TZvPlainDerivedScanner : public TZvSQLScanner {};

struct TScanState {
    std::string Token;
    std::uint16_t Kinds;
    std::int32_t Line, Column, TokenPos, Position, Level, SpaceCount;
    bool InQuote, EmptyQuote;
    bool operator==(const TScanState&) const = default;
};

std::vector<TScanState> ScanAll(TZvSQLScanner& S, const std::string& Text, std::string& Error) {
    std::vector<TScanState> States;
    try {
        S.SetExpression(Text);
        for (int Calls = 0; Calls < 1000 && S.Position <= S.Length; ++Calls) {
            S.GetNextToken();
            States.push_back({S.Token, S.TokenKinds.GetBits(), S.Line, S.Column, S.TokenPos, S.Position,
                              S.Level, S.SpaceCount, S.InQuote, S.EmptyQuote});
        }
    } catch (const EZvParserError& E) {
        Error = E.what();
    }
    return States;
}

} // namespace

TEST(TZvSQLScanner, BaseScannerReadsWordsAsItsDerivedClassesDo) {
    const std::vector<std::string> Texts = {
        "SELECT t1.name, COUNT(*) AS n FROM orders t1 WHERE t1.id >= 10 AND x <> 'a''b' OR y IS NULL",
        "select 1.5, 1.5a, 12., .5, 1..2, a.b.c, \"x.y\", \"a b\".c, True, false, sum(x)+avg(y)||z",
        "a\r\nb\r\n\r\n  c\rd\n e;f ; g",
        "x_1 _y 9z z9 SELECTED selec fromage FROM9 LENGTH INTEGERS TIMESTAMP TIMESTAMPS",
        "((a)) (b (c)) ) ( \"q\" 'r' \"\" '' ''''",
        "\x80\xff abc\xc3\xa9 \xc3\xa9t\xc3\xa9 $x #y @z",
    };
    std::mt19937 Random(17);
    std::vector<std::string> All = Texts;
    const std::string Alphabet = "aZ_9.1 \t\r\n'\"()<>=!|+-*/,;:$#~";
    for (int Round = 0; Round < 500; ++Round) {
        std::string Text;
        for (std::size_t I = Random() % 30; I > 0; --I)
            Text += Alphabet[Random() % Alphabet.size()];
        All.push_back(Text);
    }
    for (const std::string& Text : All) {
        TZvSQLScanner Base;
        TZvPlainDerivedScanner Derived;
        std::string BaseError, DerivedError;
        const std::vector<TScanState> BaseStates = ScanAll(Base, Text, BaseError);
        EXPECT_TRUE(BaseStates == ScanAll(Derived, Text, DerivedError)) << Text;
        EXPECT_EQ(BaseError, DerivedError) << Text;
    }
}

TEST(TZvSQLScanner, WordsAroundEightBytesAreClassified) {
    TZvSQLScanner S;
    // DISTINCT has 8 bytes, ASCENDING 9, TIMESTAMP 9; their neighbours in length are names.
    S.SetExpression("distinct DISTINCTS ascending ascendin timestamp TIMESTAM");
    const std::vector<std::pair<std::string, TTokenKinds>> Expected = {
        {"distinct", TTokenKinds{tkKeyword}}, {"DISTINCTS", TTokenKinds{tkIdent}},
        {"ascending", TTokenKinds{tkKeyword}}, {"ascendin", TTokenKinds{tkIdent}},
        {"timestamp", TTokenKinds{tkKeyword}}, {"TIMESTAM", TTokenKinds{tkIdent}},
    };
    for (const auto& [Text, Kinds] : Expected) {
        EXPECT_EQ(S.Token, Text);
        EXPECT_EQ(S.TokenKinds, Kinds) << Text;
        S.GetNextToken();
    }
}

TEST(TZvSQLScanner, ListedWordsEndingTheTextAreClassified) {
    // A word is looked up with the bytes after it in the text; at the end there are fewer of them.
    for (const char* Word : {"in", "Sum", "DESC", "Count", "select", "Between", "distinct", "ASCENDING", "xyz"}) {
        for (const std::string& Text : {std::string(Word), std::string("a ").append(Word), std::string("(").append(Word)}) {
            TZvSQLScanner S;
            S.SetExpression(Text);
            while (S.Position <= S.Length)
                S.GetNextToken();
            const bool Listed = std::string_view(Word) != "xyz";
            EXPECT_EQ(S.Token, Word) << Text;
            EXPECT_EQ(IsIntersected(S.TokenKinds, {tkKeyword, tkFunction}), Listed) << Text;
            EXPECT_EQ(S.TokenKinds.Contains(tkIdent), !Listed) << Text;
        }
    }
}

TEST(TZvSQLScanner, DelimitersKeepTheirLevelsAndOperationMarks) {
    TZvSQLScanner S;
    S.SetExpression("a*(b/c);d");
    const std::vector<std::tuple<std::string, TTokenKinds, std::int32_t>> Expected = {
        {"a", TTokenKinds{tkIdent}, 0},
        {"*", TTokenKinds{tkDelim, tkOperation}, 0},
        {"(", TTokenKinds{tkDelim}, 1},
        {"b", TTokenKinds{tkIdent}, 1},
        {"/", TTokenKinds{tkDelim, tkOperation}, 1},
        {"c", TTokenKinds{tkIdent}, 1},
        {")", TTokenKinds{tkDelim}, 0},
        {";", TTokenKinds{tkEnd}, 0},
        {"d", TTokenKinds{tkIdent}, 0},
    };
    for (const auto& [Text, Kinds, Level] : Expected) {
        EXPECT_EQ(S.Token, Text);
        EXPECT_EQ(S.TokenKinds, Kinds) << Text;
        EXPECT_EQ(S.Level, Level) << Text;
        S.GetNextToken();
    }
}
