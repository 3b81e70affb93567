// The Microsoft SQL Server dialect: its scanner's lists, brackets, quoted-identifier switch and
// name rules, the TOP text, and the parser reading and placing ALL, DISTINCT and TOP and its extra
// operators, plus the zevrin options that select it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ZvDialectTestSupport.h"
#include "dialects/ZvMSDialect.h"

using namespace zv;
using namespace zv::test;

// --- scanner: word lists ---------------------------------------------------------------------

TEST(ZvMSSQLScanner, KeywordListHasItsHundredSeventyFourEntriesWithNationalTrimmed) {
    TZvMSSQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetKeywords().Items();
    EXPECT_EQ(Words.size(), 174u);
    EXPECT_EQ(Words.front(), "ADD");
    EXPECT_EQ(Words.back(), "WRITETEXT");
    EXPECT_NE(std::find(Words.begin(), Words.end(), "NATIONAL"), Words.end());
    EXPECT_TRUE(Scanner.IsKeyword("national"));
    for (const char* Word : {"TOP", "PERCENT", "WITH"})
        EXPECT_TRUE(Scanner.IsKeyword(Word)) << Word;
    EXPECT_FALSE(Scanner.IsKeyword("TIES"));
}

TEST(ZvMSSQLScanner, FunctionListHasItsHundredNinetySixEntriesDuplicatesIncluded) {
    TZvMSSQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetFunctions().Items();
    EXPECT_EQ(Words.size(), 196u);
    EXPECT_EQ(Words.front(), "AVG");
    EXPECT_EQ(Words.back(), "INDEX_COL");
    EXPECT_EQ(std::count(Words.begin(), Words.end(), "GETDATE"), 2);
    EXPECT_EQ(std::count(Words.begin(), Words.end(), "fn_virtualfilestats"), 2);
    EXPECT_TRUE(Scanner.IsFunction("@@version"));
}

TEST(ZvMSSelectParser, AggregateListHasItsFourteenEntries) {
    TZvMSSelectParser Parser;
    EXPECT_EQ(Parser.GetAggregates().Count(), 14u);
    EXPECT_EQ(Parser.GetAggregates().GetCommaText(), "AVG,BINARY_CHECKSUM,CHECKSUM,CHECKSUM_AGG,COUNT,COUNT_"
                                                     "BIG,GROUPING,MAX,MIN,SUM,STDEV,STDEVP,VAR,VARP");
}

TEST(ZvMSSQLScanner, OperatorListsAndBooleansAreTheServers) {
    TZvMSSQLScanner Scanner;
    EXPECT_EQ(Scanner.GetOperations().GetCommaText(), "+,-,*,/,%,&,|,^,~,!");
    EXPECT_EQ(Scanner.GetOperations().Count(), 10u);
    EXPECT_EQ(Scanner.GetCompareOperators().GetCommaText(), "=,<>,<,>,<=,>=,!<,!=,!>");
    EXPECT_EQ(Scanner.GetCompareOperators().Count(), 9u);
    EXPECT_EQ(Scanner.GetJoinOperators().GetCommaText(), Scanner.GetCompareOperators().GetCommaText());
    EXPECT_EQ(Scanner.GetBooleans(false), "FALSE");
    EXPECT_EQ(Scanner.GetBooleans(true), "TRUE");
}

TEST(ZvMSSQLScanner, ExtraComparisonsAndOperationsAreTokensOfTheirOwn) {
    TZvMSSQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "a!<b c != d e!>f g % h");
    ASSERT_EQ(T.size(), 12u);
    for (std::size_t I : {1u, 4u, 7u})
        EXPECT_EQ(T[I].Kinds, TTokenKinds{tkComparison}) << T[I].Text;
    EXPECT_EQ(T[1].Text, "!<");
    EXPECT_EQ(T[4].Text, "!=");
    EXPECT_EQ(T[7].Text, "!>");
    EXPECT_EQ(T[10].Text, "%");
    EXPECT_TRUE(T[10].Kinds.Contains(tkOperation));
}

// --- scanner: brackets and the quoted-identifier switch --------------------------------------

TEST(ZvMSSQLScanner, BracketsAreIdentifierQuotesNotDelimitersAndPairWithEachOther) {
    TZvMSSQLScanner Scanner;
    EXPECT_FALSE(Scanner.IsDelim('['));
    EXPECT_FALSE(Scanner.IsDelim(']'));
    EXPECT_TRUE(Scanner.IsDelim('('));
    EXPECT_TRUE(Scanner.IsDelim('!'));
    EXPECT_TRUE(Scanner.IsIdentQuote('['));
    EXPECT_TRUE(Scanner.IsIdentQuote(']'));
    EXPECT_EQ(Scanner.GetQuotePair('['), ']');
    EXPECT_EQ(Scanner.GetQuotePair(']'), '[');
    EXPECT_EQ(Scanner.GetQuotePair('\''), '\'');
    EXPECT_EQ(Scanner.GetIdentQuote(), '[');
}

TEST(ZvMSSQLScanner, ABracketedNameHoldingADotOrABlankStaysOneToken) {
    TZvMSSQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "[a.b] [my col] [x y.z] [select]");
    ASSERT_EQ(T.size(), 4u);
    EXPECT_EQ(T[0].Text, "[a.b]");
    EXPECT_EQ(T[0].Kinds, TTokenKinds{tkIdent});
    EXPECT_EQ(T[1].Text, "my col");
    EXPECT_EQ(T[1].Kinds, TTokenKinds{tkIdent});
    // A dot and a blank together make no identifier, but the text is still one token.
    EXPECT_EQ(T[2].Text, "x y.z");
    EXPECT_EQ(T[3].Text, "select");
    EXPECT_EQ(T[3].Kinds, TTokenKinds{tkIdent});
}

TEST(ZvMSSQLScanner, WithTheSwitchOnADoubleQuotedTextIsANameAndWithItOffAString) {
    TZvMSSQLScanner Scanner;
    EXPECT_TRUE(Scanner.GetQuotedIdentifier());
    EXPECT_TRUE(Scanner.IsIdentQuote('"'));
    EXPECT_FALSE(Scanner.IsQuote('"'));
    EXPECT_EQ(Tokens(Scanner, "\"x y\"")[0].Kinds, TTokenKinds{tkIdent});
    Scanner.SetQuotedIdentifier(false);
    EXPECT_FALSE(Scanner.IsIdentQuote('"'));
    EXPECT_TRUE(Scanner.IsQuote('"'));
    EXPECT_TRUE(Scanner.IsQuote('\''));
    EXPECT_EQ(Tokens(Scanner, "\"x y\"")[0].Kinds, TTokenKinds{tkString});
    EXPECT_EQ(Tokens(Scanner, "[x y]")[0].Kinds, TTokenKinds{tkIdent});
    Scanner.SetQuotedIdentifier(true);
    EXPECT_EQ(Tokens(Scanner, "\"x y\"")[0].Kinds, TTokenKinds{tkIdent});
}

TEST(ZvMSSQLScanner, NamesMayBeginWithAtSignHashOrUnderscore) {
    TZvMSSQLScanner Scanner;
    for (char C : {'@', '#', '_', 'a', 'Z'})
        EXPECT_TRUE(Scanner.IsAlpha(C)) << C;
    EXPECT_FALSE(Scanner.IsAlpha('1'));
    EXPECT_TRUE(Scanner.IsIdentifier("#temp"));
    EXPECT_TRUE(Scanner.IsIdentifier("@var"));
    EXPECT_EQ(Tokens(Scanner, "#temp")[0].Kinds, TTokenKinds{tkIdent});
}

// --- scanner: names --------------------------------------------------------------------------

TEST(ZvMSSQLScanner, NeedQuotesFollowsTheReservedWordRule) {
    TZvMSSQLScanner Scanner;
    EXPECT_FALSE(Scanner.NeedQuotes("[select]"));
    EXPECT_FALSE(Scanner.NeedQuotes("\"a b\""));
    EXPECT_TRUE(Scanner.NeedQuotes("select"));
    EXPECT_TRUE(Scanner.NeedQuotes("Top"));
    EXPECT_TRUE(Scanner.NeedQuotes("getdate"));
    EXPECT_TRUE(Scanner.NeedQuotes("a b"));
    EXPECT_TRUE(Scanner.NeedQuotes("1a"));
    EXPECT_FALSE(Scanner.NeedQuotes("MixedCase"));
    EXPECT_FALSE(Scanner.NeedQuotes("#temp"));
    EXPECT_FALSE(Scanner.NeedQuotes("@@VERSION"));
    EXPECT_FALSE(Scanner.NeedQuotes("@var"));
}

TEST(ZvMSSQLScanner, NamesAreQuotedInBracketsAndUnquotedOnlyFromAnOpeningQuote) {
    TZvMSSQLScanner Scanner;
    EXPECT_EQ(Scanner.ProcessName("dbo.my table"), "dbo.[my table]");
    EXPECT_EQ(Scanner.QuoteName("order"), "[order]");
    EXPECT_EQ(Scanner.QuoteName("[my col]"), "[my col]");
    EXPECT_EQ(Scanner.ProcessIdent("[a b]"), "a b");
    EXPECT_EQ(Scanner.ProcessIdent("]a b["), "]a b[");
    EXPECT_EQ(Scanner.GetFormatTokenIdent("a.b", true), "[a.b]");
}

TEST(ZvMSSQLScanner, AStringInEitherQuoteKeepsItsQuote) {
    TZvMSSQLScanner Scanner;
    Scanner.SetQuotedIdentifier(false);
    EXPECT_EQ(Scanner.QuoteStr("\"x\""), "\"x\"");
    EXPECT_EQ(Scanner.QuoteStr("x"), "'x'");
    Scanner.SetQuotedIdentifier(true);
    EXPECT_EQ(Scanner.QuoteStr("\"x\""), "'\"x\"'");
}

// --- options ---------------------------------------------------------------------------------

TEST(ZvMSSQLOptions, TopScriptWritesTheNumberThenPercentAndWithTiesAndEndsInABlank) {
    struct TRow {
        std::int32_t Top;
        bool Percent, WithTies;
        const char* Text;
    };
    const TRow Rows[] = {{0, true, true, ""},
                         {-3, false, false, ""},
                         {5, false, false, "TOP 5 "},
                         {5, true, false, "TOP 5 PERCENT "},
                         {5, false, true, "TOP 5 WITH TIES "},
                         {5, true, true, "TOP 5 PERCENT WITH TIES "}};
    for (const TRow& Row : Rows) {
        TZvMSSQLOptions Options;
        Options.SetTop(Row.Top);
        Options.SetPercent(Row.Percent);
        Options.SetWithTies(Row.WithTies);
        EXPECT_EQ(Options.GetTopScript(), Row.Text) << Row.Top << Row.Percent << Row.WithTies;
    }
}

TEST(ZvMSSQLOptions, AssignCopiesEveryFieldAndClearResetsThem) {
    TZvMSSQLOptions Source;
    Source.SetAll(true);
    Source.SetTop(3);
    Source.SetPercent(true);
    Source.SetWithTies(true);
    TZvMSSQLOptions Copy;
    Copy.Assign(Source);
    EXPECT_TRUE(Copy.GetAll());
    EXPECT_EQ(Copy.GetTopScript(), "TOP 3 PERCENT WITH TIES ");
    Copy.Clear();
    EXPECT_FALSE(Copy.GetAll());
    EXPECT_EQ(Copy.GetTop(), 0);
    EXPECT_FALSE(Copy.GetPercent());
    EXPECT_FALSE(Copy.GetWithTies());
}

// --- parser: ALL, DISTINCT and TOP -----------------------------------------------------------

TEST(ZvMSSelectParser, ReadsEveryFormOfTheTopClauseAndWritesItBack) {
    TZvMSSelectParser Parser;
    const std::pair<const char*, const char*> Rows[] = {
        {"select top 10 a from t", "SELECT TOP 10 "},
        {"select top 10 percent a from t", "SELECT TOP 10 PERCENT "},
        {"select top 10 with ties a from t order by a", "SELECT TOP 10 WITH TIES "},
        {"select distinct top 1 percent with ties a from t", "SELECT DISTINCT TOP 1 PERCENT WITH TIES "},
        {"select all top 2 a from t", "SELECT ALL TOP 2 "},
        {"select all a from t", "SELECT ALL "},
        {"select distinct a from t", "SELECT DISTINCT "}};
    for (const auto& [Text, Start] : Rows) {
        const std::string Out = Format(Parser, Text);
        EXPECT_EQ(Out.substr(0, Out.find("\r\n")), Start) << Text;
    }
    Parser.SetExpression("SELECT DISTINCT TOP 7 PERCENT WITH TIES a FROM t");
    EXPECT_TRUE(Parser.GetDistinct());
    EXPECT_EQ(Parser.GetMSSQLOptions().GetTop(), 7);
    EXPECT_TRUE(Parser.GetMSSQLOptions().GetPercent());
    EXPECT_TRUE(Parser.GetMSSQLOptions().GetWithTies());
    EXPECT_FALSE(Parser.GetMSSQLOptions().GetAll());
}

TEST(ZvMSSelectParser, TopWithoutANumberIsErrorTypeOneOrTwoAtTheEnd) {
    TZvMSSelectParser Parser;
    const EZvParserError Name = ParseError(Parser, "SELECT TOP a FROM t");
    EXPECT_EQ(Name.GetErrorType(), zvpeInvalidToken);
    EXPECT_EQ(Name.GetToken(), "a");
    EXPECT_EQ(Name.GetPosition(), 12);
    EXPECT_EQ(ParseError(Parser, "SELECT TOP").GetErrorType(), zvpeUnexpectedEnd);
    EXPECT_EQ(ParseError(Parser, "SELECT TOP (5) a FROM t").GetToken(), "(");
    EXPECT_EQ(ParseError(Parser, "SELECT TOP 2147483648 a FROM t").GetToken(), "2147483648");
    EXPECT_FALSE(Parser.GetValid());
}

TEST(ZvMSSelectParser, WithMustBeFollowedByTiesAndTheOrderIsFixed) {
    TZvMSSelectParser Parser;
    EXPECT_EQ(ParseError(Parser, "SELECT TOP 5 WITH a FROM t").GetToken(), "a");
    EXPECT_EQ(ParseError(Parser, "SELECT TOP 5 WITH").GetErrorType(), zvpeUnexpectedEnd);
    EXPECT_EQ(ParseError(Parser, "SELECT TOP 5 DISTINCT a FROM t").GetToken(), "DISTINCT");
    EXPECT_EQ(ParseError(Parser, "SELECT TOP 5 WITH TIES PERCENT a FROM t").GetToken(), "PERCENT");
    EXPECT_EQ(ParseError(Parser, "SELECT DISTINCT ALL a FROM t").GetToken(), "ALL");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t TOP 5").GetToken(), "TOP");
}

TEST(ZvMSSelectParser, DistinctWinsOverAllWhenBothAreSet) {
    TZvMSSelectParser Parser;
    Parser.SetExpression("SELECT ALL a FROM t");
    Parser.SetDistinct(true);
    EXPECT_EQ(Parser.GetExpression().substr(0, 16), "SELECT DISTINCT ");
}

TEST(ZvMSSelectParser, OptionTextsFollowTheKeywordCase) {
    TZvMSSelectParser Parser;
    TZvScriptFormat Format;
    Format.SetKeywordsFormat(qfmLowerCase);
    Parser.SetScriptFormat(Format);
    Parser.SetExpression("SELECT ALL TOP 3 WITH TIES a FROM t");
    EXPECT_EQ(Parser.GetExpression(), "select all top 3 with ties \r\n  a\r\nfrom\r\n  t\r\n");
}

// --- parser: operators, names, settings ------------------------------------------------------

TEST(ZvMSSelectParser, OperatorsAreTheStandardOnesThenTheThreeNegatedComparisons) {
    TZvMSSelectParser Parser;
    TZvSelectParser Generic;
    TZvOperators& Operators = Parser.GetOperators();
    ASSERT_EQ(Operators.Count(), Generic.GetOperators().Count() + 3);
    const int First = Generic.GetOperators().Count();
    EXPECT_EQ(Operators.Items(First)->GetName(), "!<");
    EXPECT_EQ(Operators.Items(First + 1)->GetName(), "!=");
    EXPECT_EQ(Operators.Items(First + 2)->GetName(), "!>");
    EXPECT_EQ(Operators.Items(First + 2)->GetCaption(), "!>");
}

TEST(ZvMSSelectParser, ConditionsAndJoinsReadTheNegatedComparisons) {
    TZvMSSelectParser Parser;
    EXPECT_EQ(
        Format(Parser, "SELECT a FROM t WHERE a !< 1 AND b != 2 AND c !> 3"),
        "SELECT \r\n  a\r\nFROM\r\n  t\r\nWHERE\r\n  (a !< 1) AND \r\n  (b != 2) AND \r\n  (c !> 3)\r\n");
    EXPECT_EQ(Parser.GetWhereItems().Items(2)->GetOperatorCaption(), "!>");
    EXPECT_EQ(Format(Parser, "SELECT t.a FROM t INNER JOIN u ON t.a != u.b"),
              "SELECT \r\n  t.a\r\nFROM\r\n  t\r\n  INNER JOIN u ON (t.a != u.b)\r\n");
}

TEST(ZvMSSelectParser, AwkwardNamesAreWrittenInBracketsWhicheverWayTheSwitchStands) {
    TZvMSSelectParser Parser;
    const std::string Expected =
        "SELECT \r\n  [my col],\r\n  [a.b],\r\n  t.[order]\r\nFROM\r\n  dbo.[my table] t\r\n";
    EXPECT_EQ(Format(Parser, "SELECT [my col], [a.b], t.[order] FROM [dbo].[my table] t"), Expected);
    EXPECT_EQ(Format(Parser, "SELECT \"my col\", \"a.b\", t.\"order\" FROM \"dbo\".\"my table\" t"),
              Expected);
    Parser.SetQuotedIdentifier(false);
    EXPECT_EQ(Format(Parser, "SELECT [my col], [a.b], t.[order] FROM [dbo].[my table] t"), Expected);
}

TEST(ZvMSSelectParser, WithTheSwitchOffADoubleQuotedTextIsAStringLiteral) {
    TZvMSSelectParser Parser;
    Parser.SetQuotedIdentifier(false);
    EXPECT_EQ(Format(Parser, "SELECT a FROM t WHERE b = \"x y\""),
              "SELECT \r\n  a\r\nFROM\r\n  t\r\nWHERE\r\n  (b = \"x y\")\r\n");
    EXPECT_EQ(Parser.GetWhereItems().Items(0)->GetRightSide().Items(0)->GetKind(), fkString);
    Parser.SetQuotedIdentifier(true);
    Parser.SetExpression("SELECT a FROM t WHERE b = \"x y\"");
    EXPECT_EQ(Parser.GetWhereItems().Items(0)->GetRightSide().Items(0)->GetKind(), fkIdentifier);
}

TEST(ZvMSSelectParser, VariablesAndSystemFunctionsAreWrittenBare) {
    TZvMSSelectParser Parser;
    EXPECT_EQ(Format(Parser, "SELECT @@VERSION, #t.x FROM #t WHERE x = @v"),
              "SELECT \r\n  @@VERSION,\r\n  #t.x\r\nFROM\r\n  #t\r\nWHERE\r\n  (x = @v)\r\n");
}

TEST(ZvMSSelectParser, QuotedIdentifierSwitchIsKeptOnTheScanner) {
    TZvMSSelectParser Parser;
    EXPECT_TRUE(Parser.GetQuotedIdentifier());
    Parser.SetQuotedIdentifier(false);
    EXPECT_FALSE(dynamic_cast<TZvMSSQLScanner&>(Parser.GetScanner()).GetQuotedIdentifier());
}

// A parser of the dialect whose scanner was replaced by a generic one.
class TGenericScannerMSParser : public TZvMSSelectParser {
protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override { return std::make_unique<TZvSQLScanner>(); }
};

TEST(ZvMSSelectParser, WithAnotherScannerTheSwitchReadsOnAndCannotBeSet) {
    TGenericScannerMSParser Parser;
    Parser.SetQuotedIdentifier(false);
    EXPECT_TRUE(Parser.GetQuotedIdentifier());
}

TEST(ZvMSSelectParser, AssignCopiesOptionsAndTheSwitchAndClearEmptiesTheOptions) {
    TZvMSSelectParser Source;
    Source.SetQuotedIdentifier(false);
    Source.SetExpression("SELECT ALL TOP 4 PERCENT a FROM t");
    TZvMSSelectParser Copy;
    Copy.Assign(Source);
    EXPECT_FALSE(Copy.GetQuotedIdentifier());
    EXPECT_TRUE(Copy.GetMSSQLOptions().GetAll());
    EXPECT_EQ(Copy.GetMSSQLOptions().GetTop(), 4);
    EXPECT_EQ(Copy.GetExpression(), Source.GetExpression());
    TZvMSSQLOptions Options;
    Options.SetTop(9);
    Copy.SetMSSQLOptions(Options);
    Options.SetTop(1);
    EXPECT_EQ(Copy.GetMSSQLOptions().GetTop(), 9);
    Copy.Clear();
    EXPECT_EQ(Copy.GetMSSQLOptions().GetTop(), 0);
    EXPECT_FALSE(Copy.GetQuotedIdentifier());
}

// --- zevrin ----------------------------------------------------------------------------------

TEST(ZvCliMSSQL, DialectIsListedAndTheSwitchDefaultsToOn) {
    const std::vector<std::string> Names = DialectNames();
    EXPECT_NE(std::find(Names.begin(), Names.end(), "mssql"), Names.end());
    EXPECT_TRUE(ParseCliArguments({"format", "--dialect", "mssql"}).MSQuotedIdentifier);
    const TRun On = RunTool({"format", "--dialect", "mssql"}, "select top 1 a from t where b = \"c\"");
    EXPECT_EQ(On.Out, "SELECT TOP 1 \r\n  a\r\nFROM\r\n  t\r\nWHERE\r\n  (b = c)\r\n");
    const TRun Off = RunTool({"format", "--dialect", "mssql", "--mssql-quoted-identifier=off"},
                             "select top 1 a from t where b = \"c\"");
    EXPECT_EQ(Off.Out, "SELECT TOP 1 \r\n  a\r\nFROM\r\n  t\r\nWHERE\r\n  (b = \"c\")\r\n");
}

TEST(ZvCliMSSQL, ModelShowsTheSwitchAndTheTopClause) {
    const TRun R = RunTool({"model", "--dialect", "mssql", "--mssql-quoted-identifier", "off"},
                           "select all top 5 percent with ties a from t");
    ASSERT_EQ(R.Code, 0) << R.Err;
    EXPECT_NE(
        R.Out.find("\"options\": {\n    \"quotedIdentifier\": false,\n    \"all\": true,\n    \"top\": 5,\n"
                   "    \"percent\": true,\n    \"withTies\": true\n  },\n  \"sql\""),
        std::string::npos)
        << R.Out;
}

TEST(ZvCliMSSQL, BadValuesAndMisplacedSwitchesAreUsageErrors) {
    EXPECT_EQ(UsageErrorOf({"format", "--dialect", "mssql", "--mssql-quoted-identifier", "yes"}),
              "option --mssql-quoted-identifier: 'yes' is neither on nor off");
    EXPECT_EQ(UsageErrorOf({"format", "--mssql-quoted-identifier", "on"}),
              "--mssql-quoted-identifier goes with --dialect mssql");
    EXPECT_EQ(UsageErrorOf({"format", "--dialect", "mssql", "--mssql-quoted-identifier"}),
              "option --mssql-quoted-identifier needs a value");
    const std::string Usage = CliUsage();
    for (const char* Text : {"mysql", "dbisam", "mssql", "--mssql-quoted-identifier on|off"})
        EXPECT_NE(Usage.find(Text), std::string::npos) << Text;
}
