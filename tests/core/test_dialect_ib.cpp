// The InterBase/Firebird dialect: its scanner's lists, character classes, quotes and name rules
// under both dialect numbers, the two options objects and their texts, and the parser reading and
// placing FIRST/SKIP and ROWS for each server kind, plus the zevrin options that select them.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "ZvCli.h"
#include "ZvDialectTestSupport.h"
#include "ZvParser.h"
#include "dialects/ZvIBDialect.h"

using namespace zv;

namespace {

struct TToken {
    std::string Text;
    TTokenKinds Kinds;
};

std::vector<TToken> Tokens(TZvSQLScanner& Scanner, const std::string& Text) {
    std::vector<TToken> Result;
    Scanner.SetExpression(Text);
    while (!Scanner.TokenKinds.Contains(tkEnd)) {
        Result.push_back({Scanner.Token, Scanner.TokenKinds});
        Scanner.GetNextToken();
    }
    return Result;
}

// A parser of the dialect for the given server kind and dialect number.
std::unique_ptr<TZvIBSelectParser> MakeParser(TZvIBSQLServer Server = qssDontCare,
                                              TZvSQLDialect Dialect = qibDialect3) {
    auto Parser = std::make_unique<TZvIBSelectParser>();
    Parser->SetSQLServer(Server);
    Parser->SetSQLDialect(Dialect);
    return Parser;
}

// The error a statement raises, or a type of 0 when it parses.
EZvParserError ParseError(TZvSelectParser& Parser, const std::string& Text) {
    try {
        Parser.SetExpression(Text);
    } catch (const EZvParserError& E) {
        return E;
    }
    return EZvParserError(0, "", 0, 0);
}

// Parses Text and returns the generated statement.
std::string Format(TZvSelectParser& Parser, const std::string& Text) {
    Parser.SetExpression(Text);
    return Parser.GetExpression();
}

} // namespace

// --- scanner: word lists ---------------------------------------------------------------------

TEST(ZvIBScanner, KeywordListHasItsTwoHundredEightyTwoEntriesWithOptionorAsOne) {
    TZvIBScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetKeywords().Items();
    EXPECT_EQ(Words.size(), 282u);
    EXPECT_EQ(Words.front(), "ACTION");
    EXPECT_EQ(Words.back(), "TIES");
    EXPECT_TRUE(Scanner.IsKeyword("OPTIONOR"));
    EXPECT_FALSE(Scanner.IsKeyword("OPTION"));
    EXPECT_TRUE(Scanner.IsKeyword("OR"));
    EXPECT_TRUE(Scanner.IsKeyword("RDB$DB_KEY"));
    for (const char* Word : {"FIRST", "SKIP", "ROWS", "PERCENT", "TIES", "CONTAINING", "STARTING"})
        EXPECT_TRUE(Scanner.IsKeyword(Word)) << Word;
}

TEST(ZvIBScanner, FunctionAndOperationListsAreTheDialects) {
    TZvIBScanner Scanner;
    EXPECT_EQ(Scanner.GetFunctions().GetCommaText(), "AVG,CAST,COUNT,GEN_ID,MAX,MIN,SUM,UPPER");
    EXPECT_EQ(Scanner.GetOperations().GetCommaText(), "+,-,*,/,||");
    EXPECT_TRUE(Scanner.IsFunction("gen_id"));
}

TEST(ZvIBScanner, HasNoBooleanLiterals) {
    TZvIBScanner Scanner;
    EXPECT_EQ(Scanner.GetBooleans(false), "");
    EXPECT_EQ(Scanner.GetBooleans(true), "");
    const std::vector<TToken> T = Tokens(Scanner, "TRUE False");
    ASSERT_EQ(T.size(), 2u);
    EXPECT_EQ(T[0].Kinds, TTokenKinds{tkIdent});
    EXPECT_EQ(T[1].Kinds, TTokenKinds{tkIdent});
}

// --- scanner: characters and quotes ----------------------------------------------------------

TEST(ZvIBScanner, OnlyCapitalsAreAlphabeticSoLowerCaseNamesAreReadInUpperCase) {
    TZvIBScanner Scanner;
    EXPECT_TRUE(Scanner.IsAlpha('Q'));
    EXPECT_FALSE(Scanner.IsAlpha('q'));
    EXPECT_FALSE(Scanner.IsIdentifier("abc"));
    const std::vector<TToken> T = Tokens(Scanner, "select abc from t");
    ASSERT_EQ(T.size(), 4u);
    EXPECT_EQ(T[1].Text, "ABC");
    EXPECT_EQ(T[1].Kinds, TTokenKinds{tkIdent});
    EXPECT_EQ(T[3].Text, "T");
}

TEST(ZvIBScanner, DollarIsALegalSymbolInNames) {
    TZvIBScanner Scanner;
    EXPECT_TRUE(Scanner.IsLegalSymbol('$'));
    EXPECT_TRUE(Scanner.IsIdentifier("RDB$RELATION_NAME"));
    EXPECT_FALSE(Scanner.IsIdentifier("$A"));
    EXPECT_FALSE(Scanner.NeedQuotes("RDB$RELATION_NAME"));
}

TEST(ZvIBScanner, DialectThreeQuotesNamesInDoubleQuotesAndStringsInApostrophes) {
    TZvIBScanner Scanner;
    EXPECT_FALSE(Scanner.IsQuote('"'));
    EXPECT_TRUE(Scanner.IsQuote('\''));
    EXPECT_TRUE(Scanner.IsIdentQuote('"'));
    const std::vector<TToken> T = Tokens(Scanner, "\"Name\" 'text'");
    ASSERT_EQ(T.size(), 2u);
    EXPECT_EQ(T[0].Text, "Name");
    EXPECT_EQ(T[0].Kinds, TTokenKinds{tkIdent});
    EXPECT_EQ(T[1].Text, "text");
    EXPECT_EQ(T[1].Kinds, TTokenKinds{tkString});
}

TEST(ZvIBScanner, DialectOneReadsBothQuotesAsStringsAndHasNoNameQuote) {
    TZvIBScanner Scanner;
    Scanner.SetSQLDialect(qibDialect1);
    EXPECT_TRUE(Scanner.IsQuote('"'));
    EXPECT_TRUE(Scanner.IsQuote('\''));
    EXPECT_FALSE(Scanner.IsIdentQuote('"'));
    EXPECT_EQ(Scanner.GetIdentQuote(), '"');
    const std::vector<TToken> T = Tokens(Scanner, "\"Name\" 'text'");
    ASSERT_EQ(T.size(), 2u);
    EXPECT_EQ(T[0].Kinds, TTokenKinds{tkString});
    EXPECT_EQ(T[1].Kinds, TTokenKinds{tkString});
}

TEST(ZvIBScanner, ChangingTheDialectNumberOfAScannerInUseChangesHowItReadsQuotes) {
    TZvIBScanner Scanner;
    EXPECT_EQ(Tokens(Scanner, "\"A\"")[0].Kinds, TTokenKinds{tkIdent});
    Scanner.SetSQLDialect(qibDialect1);
    EXPECT_EQ(Tokens(Scanner, "\"A\"")[0].Kinds, TTokenKinds{tkString});
    Scanner.SetSQLDialect(qibDialect3);
    EXPECT_EQ(Tokens(Scanner, "\"A\"")[0].Kinds, TTokenKinds{tkIdent});
}

TEST(ZvIBScanner, QuotesIdentifiersInDialectThreeOnlyAndProcessesAliasesAlways) {
    TZvIBScanner Scanner;
    EXPECT_TRUE(Scanner.GetQuoteIdentifiers());
    EXPECT_TRUE(Scanner.GetProcessAliases());
    Scanner.QuoteIdentifiers = false;
    EXPECT_FALSE(Scanner.GetQuoteIdentifiers());
    Scanner.QuoteIdentifiers = true;
    Scanner.SetSQLDialect(qibDialect1);
    EXPECT_FALSE(Scanner.GetQuoteIdentifiers());
    EXPECT_TRUE(Scanner.GetProcessAliases());
}

TEST(ZvIBScanner, AStringLiteralInEitherQuoteOfTheDialectStaysAsWritten) {
    TZvIBScanner Scanner;
    Scanner.SetSQLDialect(qibDialect1);
    EXPECT_EQ(Scanner.QuoteStr("\"x y\""), "\"x y\"");
    EXPECT_EQ(Scanner.QuoteStr("'x'"), "'x'");
    EXPECT_EQ(Scanner.QuoteStr("it's"), "'it''s'");
    Scanner.SetSQLDialect(qibDialect3);
    EXPECT_EQ(Scanner.QuoteStr("\"x\""), "'\"x\"'");
}

// --- scanner: names --------------------------------------------------------------------------

TEST(ZvIBScanner, NeedQuotesForLowerCaseNamesReservedWordsAndOddCharacters) {
    TZvIBScanner Scanner;
    EXPECT_TRUE(Scanner.NeedQuotes("abc"));
    EXPECT_FALSE(Scanner.NeedQuotes("ABC_1"));
    EXPECT_TRUE(Scanner.NeedQuotes("ROWS"));
    EXPECT_TRUE(Scanner.NeedQuotes("rows"));
    EXPECT_TRUE(Scanner.NeedQuotes("UPPER"));
    EXPECT_TRUE(Scanner.NeedQuotes("A B"));
    EXPECT_TRUE(Scanner.NeedQuotes("1A"));
    EXPECT_FALSE(Scanner.NeedQuotes("\"ROWS\""));
    EXPECT_FALSE(Scanner.NeedQuotes("*"));
}

TEST(ZvIBScanner, ProcessIdentUpperCasesQuotesAndAll) {
    TZvIBScanner Scanner;
    EXPECT_EQ(Scanner.ProcessIdent("\"ab\""), "\"AB\"");
    EXPECT_EQ(Scanner.ProcessIdent("ab"), "AB");
}

TEST(ZvIBScanner, FormatTokenIdentUpperCasesOnlyWhatWasNotQuoted) {
    TZvIBScanner Scanner;
    EXPECT_EQ(Scanner.GetFormatTokenIdent("ab", false), "AB");
    EXPECT_EQ(Scanner.GetFormatTokenIdent("ab", true), "ab");
    EXPECT_EQ(Scanner.GetFormatTokenIdent("a.b", true), "\"a.b\"");
}

TEST(ZvIBScanner, DialectOneMakesANameLegalInsteadOfQuotingIt) {
    TZvIBScanner Scanner;
    Scanner.SetSQLDialect(qibDialect1);
    EXPECT_EQ(Scanner.ProcessName("a b"), "A_B");
    EXPECT_EQ(Scanner.ProcessName("my long name"), "MY_LONG_NAME");
    EXPECT_EQ(Scanner.QuoteName("a b"), "A_B");
}

TEST(ZvIBScanner, DialectThreeQuotesNamesByTheGenericRule) {
    TZvIBScanner Scanner;
    EXPECT_EQ(Scanner.ProcessName("a b"), "\"a b\"");
    EXPECT_EQ(Scanner.ProcessName("T.my col"), "T.\"my col\"");
    EXPECT_EQ(Scanner.ProcessName("NAME"), "NAME");
    EXPECT_EQ(Scanner.QuoteName("rows"), "\"rows\"");
}

// --- options ---------------------------------------------------------------------------------

TEST(ZvFBOptions, ScriptWritesEachNumberAboveZeroAndEndsInOneBlank) {
    TZvFBOptions Options;
    EXPECT_EQ(Options.GetScript(), "");
    Options.SetFirst(10);
    EXPECT_EQ(Options.GetScript(), "FIRST 10 ");
    Options.SetSkip(5);
    EXPECT_EQ(Options.GetScript(), "FIRST 10 SKIP 5 ");
    Options.SetFirst(0);
    EXPECT_EQ(Options.GetScript(), "SKIP 5 ");
    Options.SetSkip(-1);
    EXPECT_EQ(Options.GetScript(), "");
}

TEST(ZvIBOptions, ScriptIsEmptyUntilSomeNumberIsAboveZero) {
    TZvIBOptions Options;
    Options.SetPercent(true);
    Options.SetWithTies(true);
    EXPECT_EQ(Options.GetScript(), "");
    Options.SetRowsFrom(3);
    EXPECT_EQ(Options.GetScript(), "ROWS 3 PERCENT WITH TIES");
}

TEST(ZvIBOptions, WithOnlyRowsToTheFromNumberIsWrittenAsZero) {
    TZvIBOptions Options;
    Options.SetRowsTo(5);
    EXPECT_EQ(Options.GetScript(), "ROWS 0 TO 5");
    Options.SetRowsTo(0);
    Options.SetRowsBy(4);
    EXPECT_EQ(Options.GetScript(), "ROWS 0 BY 4");
}

TEST(ZvIBOptions, ScriptWritesTheClauseInTheOrderTheServerReadsIt) {
    TZvIBOptions Options;
    Options.SetRowsFrom(1);
    Options.SetRowsTo(10);
    Options.SetRowsBy(2);
    Options.SetPercent(true);
    Options.SetWithTies(true);
    EXPECT_EQ(Options.GetScript(), "ROWS 1 TO 10 BY 2 PERCENT WITH TIES");
}

TEST(ZvIBOptions, AssignCopiesEveryFieldAndClearResetsThem) {
    TZvIBOptions Source;
    Source.SetRowsFrom(1);
    Source.SetRowsTo(2);
    Source.SetRowsBy(3);
    Source.SetPercent(true);
    Source.SetWithTies(true);
    TZvIBOptions Copy;
    Copy.Assign(Source);
    EXPECT_EQ(Copy.GetScript(), "ROWS 1 TO 2 BY 3 PERCENT WITH TIES");
    Copy.Clear();
    EXPECT_EQ(Copy.GetRowsFrom(), 0);
    EXPECT_EQ(Copy.GetRowsTo(), 0);
    EXPECT_EQ(Copy.GetRowsBy(), 0);
    EXPECT_FALSE(Copy.GetPercent());
    EXPECT_FALSE(Copy.GetWithTies());

    TZvFBOptions First;
    First.SetFirst(7);
    First.SetSkip(8);
    TZvFBOptions FirstCopy;
    FirstCopy.Assign(First);
    EXPECT_EQ(FirstCopy.GetFirst(), 7);
    EXPECT_EQ(FirstCopy.GetSkip(), 8);
    FirstCopy.Clear();
    EXPECT_EQ(FirstCopy.GetFirst(), 0);
    EXPECT_EQ(FirstCopy.GetSkip(), 0);
}

TEST(ZvIBSelectParser, OptionSettersCopyAndClearEmptiesBoth) {
    auto Parser = MakeParser();
    TZvIBOptions Rows;
    Rows.SetRowsFrom(4);
    TZvFBOptions First;
    First.SetFirst(2);
    Parser->SetIBOptions(Rows);
    Parser->SetFBOptions(First);
    Rows.SetRowsFrom(9);
    First.SetFirst(9);
    EXPECT_EQ(Parser->GetIBOptions().GetRowsFrom(), 4);
    EXPECT_EQ(Parser->GetFBOptions().GetFirst(), 2);
    Parser->Clear();
    EXPECT_EQ(Parser->GetIBOptions().GetRowsFrom(), 0);
    EXPECT_EQ(Parser->GetFBOptions().GetFirst(), 0);
}

// --- parser: FIRST and SKIP ------------------------------------------------------------------

TEST(ZvIBSelectParser, FirebirdReadsFirstAndSkipAndWritesThemBack) {
    auto Parser = MakeParser(qssFireBird);
    EXPECT_EQ(Format(*Parser, "SELECT FIRST 10 SKIP 5 A FROM T"), "SELECT FIRST 10 SKIP 5 \r\n  A\r\nFROM\r\n  T\r\n");
    EXPECT_EQ(Parser->GetFBOptions().GetFirst(), 10);
    EXPECT_EQ(Parser->GetFBOptions().GetSkip(), 5);
}

TEST(ZvIBSelectParser, InterBaseFailsAtFirstWhichCannotBeginTheFieldList) {
    auto Parser = MakeParser(qssInterBase);
    const EZvParserError E = ParseError(*Parser, "SELECT FIRST 10 SKIP 5 A FROM T");
    EXPECT_EQ(E.GetErrorType(), zvpeInvalidToken);
    EXPECT_EQ(E.GetToken(), "FIRST");
    EXPECT_EQ(E.GetPosition(), 8);
}

TEST(ZvIBSelectParser, FirstAndSkipAreEachOptionalAndStandBeforeDistinct) {
    auto Parser = MakeParser();
    EXPECT_EQ(Format(*Parser, "select skip 3 distinct a from t"), "SELECT SKIP 3 DISTINCT \r\n  A\r\nFROM\r\n  T\r\n");
    EXPECT_EQ(Parser->GetFBOptions().GetFirst(), 0);
    EXPECT_TRUE(Parser->GetDistinct());
    EXPECT_EQ(Format(*Parser, "SELECT FIRST 1 * FROM T"), "SELECT FIRST 1 *\r\nFROM\r\n  T\r\n");
    EXPECT_EQ(Parser->GetFBOptions().GetSkip(), 0);
}

TEST(ZvIBSelectParser, FirstAfterDistinctOrSkipBeforeFirstIsAnError) {
    auto Parser = MakeParser();
    EXPECT_EQ(ParseError(*Parser, "SELECT DISTINCT FIRST 1 A FROM T").GetToken(), "FIRST");
    EXPECT_EQ(ParseError(*Parser, "SELECT SKIP 1 FIRST 1 A FROM T").GetToken(), "FIRST");
}

TEST(ZvIBSelectParser, FirstOrSkipWithoutAnIntegerIsAnError) {
    auto Parser = MakeParser(qssFireBird);
    EXPECT_EQ(ParseError(*Parser, "SELECT FIRST X A FROM T").GetToken(), "X");
    EXPECT_EQ(ParseError(*Parser, "SELECT FIRST 1.5 A FROM T").GetToken(), "1.5");
    EXPECT_EQ(ParseError(*Parser, "SELECT FIRST 1 SKIP 'a' A FROM T").GetErrorType(), zvpeInvalidToken);
    EXPECT_EQ(ParseError(*Parser, "SELECT FIRST").GetErrorType(), zvpeUnexpectedEnd);
    EXPECT_FALSE(Parser->GetValid());
    EXPECT_EQ(Parser->GetTableDefs().Count(), 0);
}

TEST(ZvIBSelectParser, ANumberTooLargeForTheClauseIsAnError) {
    auto Parser = MakeParser();
    const EZvParserError E = ParseError(*Parser, "SELECT FIRST 2147483648 A FROM T");
    EXPECT_EQ(E.GetErrorType(), zvpeInvalidToken);
    EXPECT_EQ(E.GetToken(), "2147483648");
    EXPECT_EQ(Format(*Parser, "SELECT FIRST 2147483647 A FROM T").substr(0, 24), "SELECT FIRST 2147483647 ");
}

// --- parser: ROWS ----------------------------------------------------------------------------

TEST(ZvIBSelectParser, RowsClauseIsReadIntoItsFiveFieldsAndWrittenBack) {
    auto Parser = MakeParser(qssInterBase);
    EXPECT_EQ(Format(*Parser, "SELECT A FROM T ROWS 1 TO 10 BY 2 PERCENT WITH TIES"),
              "SELECT \r\n  A\r\nFROM\r\n  T\r\nROWS 1 TO 10 BY 2 PERCENT WITH TIES\r\n");
    const TZvIBOptions& Rows = Parser->GetIBOptions();
    EXPECT_EQ(Rows.GetRowsFrom(), 1);
    EXPECT_EQ(Rows.GetRowsTo(), 10);
    EXPECT_EQ(Rows.GetRowsBy(), 2);
    EXPECT_TRUE(Rows.GetPercent());
    EXPECT_TRUE(Rows.GetWithTies());
}

TEST(ZvIBSelectParser, RowsFollowedByANameIsAnError) {
    auto Parser = MakeParser();
    const EZvParserError E = ParseError(*Parser, "SELECT A FROM T ROWS N");
    EXPECT_EQ(E.GetErrorType(), zvpeInvalidToken);
    EXPECT_EQ(E.GetToken(), "N");
    EXPECT_EQ(E.GetPosition(), 22);
    EXPECT_EQ(ParseError(*Parser, "SELECT A FROM T ROWS").GetErrorType(), zvpeUnexpectedEnd);
    EXPECT_EQ(ParseError(*Parser, "SELECT A FROM T ROWS 1 TO").GetErrorType(), zvpeUnexpectedEnd);
    EXPECT_EQ(ParseError(*Parser, "SELECT A FROM T ROWS 1 BY X").GetToken(), "X");
}

TEST(ZvIBSelectParser, WithMustBeFollowedByTies) {
    auto Parser = MakeParser();
    EXPECT_EQ(ParseError(*Parser, "SELECT A FROM T ROWS 1 WITH X").GetToken(), "X");
    EXPECT_EQ(ParseError(*Parser, "SELECT A FROM T ROWS 1 WITH").GetErrorType(), zvpeUnexpectedEnd);
}

TEST(ZvIBSelectParser, OnlyTheEndMayFollowTheRowsClause) {
    auto Parser = MakeParser();
    EXPECT_EQ(ParseError(*Parser, "SELECT A FROM T ROWS 1 ORDER BY A").GetToken(), "ORDER");
    EXPECT_EQ(ParseError(*Parser, "SELECT A FROM T ROWS 1 BY 2 TO 3").GetToken(), "TO");
    EXPECT_EQ(ParseError(*Parser, "SELECT A FROM T ROWS 1 WITH TIES PERCENT").GetToken(), "PERCENT");
    EXPECT_EQ(Format(*Parser, "SELECT A FROM T ROWS 1;"), "SELECT \r\n  A\r\nFROM\r\n  T\r\nROWS 1\r\n");
}

TEST(ZvIBSelectParser, RowsMayFollowEveryClause) {
    auto Parser = MakeParser();
    for (const char* Text : {"SELECT A FROM T ROWS 2", "SELECT A FROM T WHERE A = 1 ROWS 2",
                             "SELECT A FROM T GROUP BY A ROWS 2", "SELECT A FROM T GROUP BY A HAVING A > 1 ROWS 2",
                             "SELECT A FROM T ORDER BY A DESC ROWS 2"}) {
        const std::string Out = Format(*Parser, Text);
        EXPECT_EQ(Parser->GetIBOptions().GetRowsFrom(), 2) << Text;
        EXPECT_EQ(Out.substr(Out.size() - 10), "\r\nROWS 2\r\n") << Text;
    }
}

TEST(ZvIBSelectParser, FirebirdDoesNotReadRows) {
    auto Parser = MakeParser(qssFireBird);
    const EZvParserError E = ParseError(*Parser, "SELECT A FROM T ROWS 1");
    EXPECT_EQ(E.GetErrorType(), zvpeInvalidToken);
    EXPECT_EQ(E.GetToken(), "ROWS");
}

TEST(ZvIBSelectParser, DontCareReadsAndWritesBothClauses) {
    auto Parser = MakeParser(qssDontCare);
    EXPECT_EQ(Format(*Parser, "SELECT FIRST 2 SKIP 1 DISTINCT A FROM T ORDER BY A ROWS 3 TO 4"),
              "SELECT FIRST 2 SKIP 1 DISTINCT \r\n  A\r\nFROM\r\n  T\r\nORDER BY\r\n  A\r\nROWS 3 TO 4\r\n");
}

TEST(ZvIBSelectParser, EachParseStartsFromClearedOptions) {
    auto Parser = MakeParser();
    Parser->SetExpression("SELECT FIRST 2 SKIP 1 A FROM T ROWS 3 TO 4 BY 5 PERCENT WITH TIES");
    Parser->SetExpression("SELECT A FROM T");
    EXPECT_EQ(Parser->GetFBOptions().GetScript(), "");
    EXPECT_EQ(Parser->GetIBOptions().GetScript(), "");
    EXPECT_FALSE(Parser->GetIBOptions().GetPercent());
    EXPECT_FALSE(Parser->GetIBOptions().GetWithTies());
}

// --- parser: placing the options -------------------------------------------------------------

struct TPlacementRow {
    TZvIBSQLServer Server;
    bool WritesFirst;
    bool WritesRows;
};

class IBPlacement : public testing::TestWithParam<TPlacementRow> {};

TEST_P(IBPlacement, EachServerKindWritesOnlyTheClausesItReads) {
    const TPlacementRow& Row = GetParam();
    auto Parser = MakeParser(Row.Server);
    TZvTableDef* Table = Parser->GetTableDefs().Add();
    Table->SetName("T");
    TZvFBOptions First;
    First.SetFirst(1);
    TZvIBOptions Rows;
    Rows.SetRowsFrom(2);
    Parser->SetFBOptions(First);
    Parser->SetIBOptions(Rows);
    const std::string Expected = std::string("SELECT ") + (Row.WritesFirst ? "FIRST 1 " : "") + "*\r\nFROM\r\n  T\r\n" +
                                 (Row.WritesRows ? "ROWS 2\r\n" : "");
    EXPECT_EQ(Parser->GetExpression(), Expected);
}

INSTANTIATE_TEST_SUITE_P(ServerKinds, IBPlacement,
                         testing::Values(TPlacementRow{qssDontCare, true, true}, TPlacementRow{qssInterBase, false, true},
                                         TPlacementRow{qssFireBird, true, false}));

TEST(ZvIBSelectParser, AnEmptyModelWritesNoOptionsEither) {
    auto Parser = MakeParser();
    TZvFBOptions First;
    First.SetFirst(1);
    Parser->SetFBOptions(First);
    EXPECT_EQ(Parser->GetExpression(), "");
}

TEST(ZvIBSelectParser, OptionTextsFollowTheKeywordCase) {
    auto Parser = MakeParser();
    TZvScriptFormat Format;
    Format.SetKeywordsFormat(qfmLowerCase);
    Parser->SetScriptFormat(Format);
    Parser->SetExpression("SELECT FIRST 2 SKIP 1 A FROM T ROWS 3 WITH TIES");
    EXPECT_EQ(Parser->GetExpression(), "select first 2 skip 1 \r\n  A\r\nfrom\r\n  T\r\nrows 3 with ties\r\n");
    Format.SetKeywordsFormat(qfmFirstUpper);
    Parser->SetScriptFormat(Format);
    EXPECT_EQ(Parser->GetExpression(), "Select First 2 skip 1 \r\n  A\r\nFrom\r\n  T\r\nRows 3 with ties\r\n");
}

// --- parser: operators, names, settings ------------------------------------------------------

TEST(ZvIBSelectParser, OperatorsAreTheStandardOnesThenContainingAndStartingWith) {
    auto Parser = MakeParser();
    TZvSelectParser Generic;
    TZvOperators& Operators = Parser->GetOperators();
    ASSERT_EQ(Operators.Count(), Generic.GetOperators().Count() + 2);
    for (int I = 0; I < Generic.GetOperators().Count(); ++I)
        EXPECT_EQ(Operators.Items(I)->GetName(), Generic.GetOperators().Items(I)->GetName());
    const TZvOperator* Containing = Operators.Items(Operators.Count() - 2);
    const TZvOperator* Starting = Operators.Items(Operators.Count() - 1);
    EXPECT_EQ(Containing->GetCaption(), "CONTAINING");
    EXPECT_EQ(Containing->GetName(), "CONTAINING");
    EXPECT_EQ(Starting->GetCaption(), "STARTING WITH");
    EXPECT_EQ(Starting->GetName(), "STARTING WITH");
}

TEST(ZvIBSelectParser, ConditionsReadAndWriteTheDialectsOperators) {
    auto Parser = MakeParser();
    EXPECT_EQ(Format(*Parser, "SELECT A FROM T WHERE A CONTAINING 'x' OR B STARTING WITH 'y'"),
              "SELECT \r\n  A\r\nFROM\r\n  T\r\nWHERE\r\n  (A CONTAINING 'x') OR \r\n  (B STARTING WITH 'y')\r\n");
    const TZvWhereItems& Where = Parser->GetWhereItems();
    ASSERT_EQ(Where.Count(), 2);
    EXPECT_EQ(Where.Items(0)->GetOperatorCaption(), "CONTAINING");
    EXPECT_EQ(Where.Items(1)->GetOperatorCaption(), "STARTING WITH");
}

TEST(ZvIBSelectParser, UnquotedNamesAreUpperCaseAndQuotedOnesKeepTheirCase) {
    auto Parser = MakeParser();
    EXPECT_EQ(Format(*Parser, "select a, \"Mixed\" from tab t where t.a = 1"),
              "SELECT \r\n  A,\r\n  \"Mixed\"\r\nFROM\r\n  TAB T\r\nWHERE\r\n  (T.A = 1)\r\n");
}

TEST(ZvIBSelectParser, DialectOneKeepsADoubleQuotedLiteralAsAString) {
    auto Parser = MakeParser(qssDontCare, qibDialect1);
    EXPECT_EQ(Format(*Parser, "SELECT A FROM T WHERE B = \"x y\""),
              "SELECT \r\n  A\r\nFROM\r\n  T\r\nWHERE\r\n  (B = \"x y\")\r\n");
}

TEST(ZvIBSelectParser, IdentifiersAreCaseSensitiveExceptInDialectOne) {
    auto Parser = MakeParser();
    EXPECT_TRUE(Parser->GetCaseSensitiveIdentifiers());
    Parser->SetCaseSensitiveIdentifiers(false);
    EXPECT_TRUE(Parser->GetCaseSensitiveIdentifiers());
    Parser->SetSQLDialect(qibDialect1);
    EXPECT_FALSE(Parser->GetCaseSensitiveIdentifiers());
}

// A parser of the dialect whose scanner was replaced by a generic one.
class TGenericScannerIBParser : public TZvIBSelectParser {
protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override { return std::make_unique<TZvSQLScanner>(); }
};

TEST(ZvIBSelectParser, WithAnotherScannerTheDialectNumberReadsOneAndNamesAreCaseSensitive) {
    TGenericScannerIBParser Parser;
    EXPECT_EQ(Parser.GetSQLDialect(), qibDialect1);
    Parser.SetSQLDialect(qibDialect3);
    EXPECT_EQ(Parser.GetSQLDialect(), qibDialect1);
    EXPECT_TRUE(Parser.GetCaseSensitiveIdentifiers());
}

TEST(ZvIBSelectParser, DialectNumberIsKeptOnTheScanner) {
    auto Parser = MakeParser(qssDontCare, qibDialect1);
    EXPECT_EQ(Parser->GetSQLDialect(), qibDialect1);
    EXPECT_EQ(dynamic_cast<TZvIBScanner&>(Parser->GetScanner()).GetSQLDialect(), qibDialect1);
    EXPECT_EQ(TZvIBSelectParser().GetSQLDialect(), qibDialect3);
    EXPECT_EQ(TZvIBSelectParser().GetSQLServer(), qssDontCare);
}

TEST(ZvIBSelectParser, AStoredProcedureWithoutInputParametersHasNoBrackets) {
    auto Parser = MakeParser();
    EXPECT_FALSE(Parser->IsProcEmptyInputParamsBracket());
    Parser->SetExpression("SELECT P.A FROM PROC() P");
    const TZvTableDef* Proc = Parser->GetTableDefs().FindByAlias("P");
    ASSERT_NE(Proc, nullptr);
    EXPECT_EQ(Proc->GetTableType(), qttStoredProc);
    EXPECT_EQ(Parser->GetExpression(), "SELECT \r\n  P.A\r\nFROM\r\n  PROC P\r\n");
}

TEST(ZvIBSelectParser, AssignCopiesServerKindOptionsAndDialectNumberFromItsOwnKind) {
    auto Source = MakeParser(qssFireBird, qibDialect1);
    Source->SetExpression("SELECT FIRST 4 A FROM T");
    TZvIBSelectParser Copy;
    Copy.Assign(*Source);
    EXPECT_EQ(Copy.GetSQLServer(), qssFireBird);
    EXPECT_EQ(Copy.GetSQLDialect(), qibDialect1);
    EXPECT_EQ(Copy.GetFBOptions().GetFirst(), 4);
    EXPECT_EQ(Copy.GetExpression(), Source->GetExpression());

    TZvSelectParser Generic;
    Generic.SetExpression("SELECT B FROM U");
    Copy.Assign(Generic);
    EXPECT_EQ(Copy.GetSQLServer(), qssFireBird);
    EXPECT_EQ(Copy.GetFBOptions().GetFirst(), 4);
}

// --- zevrin ----------------------------------------------------------------------------------

using test::RunTool;
using test::TRun;
using test::UsageErrorOf;

TEST(ZvCliInterBase, DialectIsListedAndDefaultsToDialectThreeAndAnyServer) {
    const std::vector<std::string> Names = DialectNames();
    EXPECT_NE(std::find(Names.begin(), Names.end(), "interbase"), Names.end());
    const TZvCliOptions Options = ParseCliArguments({"format", "--dialect", "interbase"});
    EXPECT_EQ(Options.IBDialect, 3);
    EXPECT_EQ(Options.IBServer, "dontcare");
    const TRun R = RunTool({"format", "--dialect", "interbase"}, "select first 1 a from t rows 2\n");
    EXPECT_EQ(R.Out, "SELECT FIRST 1 \r\n  A\r\nFROM\r\n  T\r\nROWS 2\r\n");
}

TEST(ZvCliInterBase, OptionsChooseTheDialectNumberAndServerKind) {
    const TRun Fb = RunTool({"format", "--dialect", "interbase", "--ib-server", "firebird"}, "select a from t rows 1");
    EXPECT_EQ(Fb.Code, 1);
    EXPECT_EQ(Fb.Err, "Invalid token 'rows' at position 17 of line 1.\n");
    const TRun D1 = RunTool({"format", "--dialect=interbase", "--ib-dialect=1"}, "select a from t where b = \"x\"");
    EXPECT_EQ(D1.Out, "SELECT \r\n  A\r\nFROM\r\n  T\r\nWHERE\r\n  (B = \"x\")\r\n");
}

TEST(ZvCliInterBase, ModelShowsTheDialectsSettingsAndClauses) {
    const TRun R = RunTool({"model", "--dialect", "interbase", "--ib-dialect", "1", "--ib-server", "dontcare"},
                           "select first 1 skip 2 a from t rows 3 to 4 by 5 percent with ties");
    ASSERT_EQ(R.Code, 0) << R.Err;
    EXPECT_NE(R.Out.find("\"options\": {\n    \"sqlDialect\": 1,\n    \"sqlServer\": \"dontcare\",\n"
                         "    \"fbOptions\": {\n      \"first\": 1,\n      \"skip\": 2\n    },\n"
                         "    \"ibOptions\": {\n      \"rowsFrom\": 3,\n      \"rowsTo\": 4,\n      \"rowsBy\": 5,\n"
                         "      \"percent\": true,\n      \"withTies\": true\n    }\n  },\n  \"sql\""),
              std::string::npos)
        << R.Out;
    EXPECT_EQ(RunTool({"model"}, "select a from t").Out.find("\"options\""), std::string::npos);
}

TEST(ZvCliInterBase, BadValuesAndMisplacedOptionsAreUsageErrors) {
    EXPECT_EQ(UsageErrorOf({"format", "--dialect", "interbase", "--ib-dialect", "2"}),
              "option --ib-dialect: unknown SQL dialect '2' (1, 3)");
    EXPECT_EQ(UsageErrorOf({"format", "--dialect", "interbase", "--ib-server", "oracle"}),
              "option --ib-server: unknown server kind 'oracle' (dontcare, interbase, firebird)");
    EXPECT_EQ(UsageErrorOf({"format", "--ib-server", "firebird"}),
              "--ib-dialect and --ib-server go with --dialect interbase");
    EXPECT_EQ(UsageErrorOf({"format", "--dialect", "interbase", "--ib-dialect"}), "option --ib-dialect needs a value");
}

TEST(ZvCliInterBase, HelpDocumentsTheDialectAndItsOptions) {
    const std::string Usage = CliUsage();
    for (const char* Text : {"interbase", "--ib-dialect 1|3", "--ib-server KIND", "dontcare", "firebird"})
        EXPECT_NE(Usage.find(Text), std::string::npos) << Text;
}
