// The DB2 dialect: its scanner's lists with their repeated and odd entries, upper-case name folding
// and quoting, the "!" comparisons, and the parser's FETCH FIRST, DISTINCT and " AS " aliases,
// plus its zevrin row.
#include <gtest/gtest.h>

#include <algorithm>

#include "ZvDialectTestSupport.h"
#include "dialects/ZvDb2Dialect.h"

using namespace zv;
using namespace zv::test;

// --- scanner -----------------------------------------------------------------------------------

TEST(ZvDb2SQLScanner, FunctionListHasItsEntriesWithTheRepeatsAndTheBarsKept) {
    TZvDb2SQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetFunctions().Items();
    EXPECT_EQ(Words.size(), 182u);
    EXPECT_EQ((std::vector<std::string>(Words.begin(), Words.begin() + 4)),
              (std::vector<std::string>{"ABS", "ABSVAL", "ABS", "ABSVAL"}));
    EXPECT_NE(std::find(Words.begin(), Words.end(), "||"), Words.end());
    EXPECT_EQ(Words.back(), "YEAR");
    EXPECT_TRUE(Scanner.IsFunction("||"));
    EXPECT_TRUE(Scanner.IsFunction("value"));
}

TEST(ZvDb2SQLScanner, KeywordListHasItsEntriesWithTheLeadingBlankOfBufferpoolTrimmed) {
    TZvDb2SQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetKeywords().Items();
    EXPECT_EQ(Words.size(), 447u);
    EXPECT_EQ(Words.front(), "ADD");
    EXPECT_EQ(Words.back(), "ZONE");
    EXPECT_EQ(Words[21], "BUFFERPOOL");
    EXPECT_TRUE(Scanner.IsKeyword("BUFFERPOOL"));
    EXPECT_NE(Scanner.GetCommaKeywords().find("BINARY, BUFFERPOOL,"), std::string::npos);
    for (const char* Word : {"FETCH", "FIRST", "ROW", "ROWS", "ONLY", "END-EXEC"})
        EXPECT_TRUE(Scanner.IsKeyword(Word)) << Word;
}

TEST(ZvDb2SQLScanner, OperationsHaveASingleBarAndComparisonsTheNegatedForms) {
    TZvDb2SQLScanner Scanner;
    EXPECT_EQ(Scanner.GetOperations().GetCommaText(), "+,-,*,/,|");
    EXPECT_FALSE(Scanner.IsOperation("||"));
    EXPECT_EQ(Scanner.GetCompareOperators().GetCommaText(), "=,<>,<,<=,>,>=,!=,!>,!<");
    EXPECT_EQ(Scanner.GetJoinOperators().GetCommaText(), "=,<>,<,<=,>,>=,!=,!>,!<");
    EXPECT_EQ(Scanner.GetBooleans(false), "False");
    EXPECT_EQ(Scanner.GetBooleans(true), "True");
    const std::vector<TToken> T = Tokens(Scanner, "a!>b");
    ASSERT_EQ(T.size(), 3u);
    EXPECT_EQ(T[1].Text, "!>");
    EXPECT_EQ(T[1].Kinds, TTokenKinds{tkComparison});
}

TEST(ZvDb2SQLScanner, UnquotedNamesFoldToUpperCaseWithDollarAndHashLegal) {
    TZvDb2SQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "Orders amount$ code# \"lower\" value");
    ASSERT_EQ(T.size(), 5u);
    EXPECT_EQ(T[0].Text, "ORDERS");
    EXPECT_EQ(T[1].Text, "AMOUNT$");
    EXPECT_TRUE(T[1].Kinds.Contains(tkIdent));
    EXPECT_EQ(T[2].Text, "CODE#");
    EXPECT_EQ(T[3].Text, "lower");
    EXPECT_EQ(T[4].Text, "VALUE");
    EXPECT_TRUE(Scanner.IsAlpha('Q'));
    EXPECT_FALSE(Scanner.IsAlpha('q'));
    EXPECT_FALSE(Scanner.IsQuote('"'));
    EXPECT_TRUE(Scanner.IsQuote('\''));
}

TEST(ZvDb2SQLScanner, NeedQuotesForReservedWordsAndNamesTheServerWouldFold) {
    TZvDb2SQLScanner Scanner;
    EXPECT_FALSE(Scanner.NeedQuotes("ORDERS"));
    EXPECT_FALSE(Scanner.NeedQuotes("A$B#1"));
    EXPECT_FALSE(Scanner.NeedQuotes("\"lower\""));
    EXPECT_TRUE(Scanner.NeedQuotes("lower"));
    EXPECT_TRUE(Scanner.NeedQuotes("_X"));  // a name begins with a letter here
    EXPECT_TRUE(Scanner.NeedQuotes("VALUE"));
    EXPECT_TRUE(Scanner.NeedQuotes("DAYS"));
    EXPECT_EQ(Scanner.ProcessName("T.lower"), "T.\"lower\"");
    EXPECT_EQ(Scanner.QuoteName("\"ROW\""), "\"ROW\"");
}

// --- parser ------------------------------------------------------------------------------------

TEST(ZvDb2SelectParser, OperatorsAreTheStandardOnesThenTheNegatedComparisons) {
    TZvDb2SelectParser Parser;
    TZvOperators& List = Parser.GetOperators();
    ASSERT_EQ(List.Count(), 17);
    EXPECT_EQ(List.Items(14)->GetCaption(), "!<");
    EXPECT_EQ(List.Items(15)->GetCaption(), "!=");
    EXPECT_EQ(List.Items(16)->GetCaption(), "!>");
    EXPECT_EQ(Parser.GetAggregates().GetCommaText(), "SUM,MIN,MAX,AVG,COUNT");
    Parser.SetExpression("SELECT A FROM T WHERE A !< 1");
    EXPECT_EQ(Parser.GetWhereItems().Items(0)->GetOperatorCaption(), "!<");
}

TEST(ZvDb2SelectParser, FetchFirstOneRowOnlyIsGeneratedWithThePlural) {
    TZvDb2SelectParser Parser;
    const std::string Text = Format(Parser, "SELECT a FROM t FETCH FIRST 1 ROW ONLY");
    EXPECT_EQ(Parser.GetDb2Options().GetFetchFirst(), 1);
    EXPECT_EQ(Text, "SELECT \r\n  A\r\nFROM\r\n  T\r\nFETCH FIRST 1 ROWS ONLY\r\n");
}

TEST(ZvDb2SelectParser, FetchFirstFollowsEveryClauseOnALineOfItsOwn) {
    TZvDb2SelectParser Parser;
    const std::string Text = Format(Parser, "SELECT a, COUNT(b) FROM t WHERE a > 0 GROUP BY a "
                                            "HAVING COUNT(b) > 1 ORDER BY a FETCH FIRST 7 ROWS ONLY");
    EXPECT_EQ(Text.substr(Text.rfind("  A\r\n")), "  A\r\nFETCH FIRST 7 ROWS ONLY\r\n");
}

TEST(ZvDb2SelectParser, FetchFirstErrors) {
    TZvDb2SelectParser Parser;
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t FETCH FIRST 0 ROWS ONLY").GetToken(), "0");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t FETCH NEXT 1 ROWS ONLY").GetToken(), "NEXT");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t FETCH FIRST ROWS ONLY").GetToken(), "ROWS");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t FETCH FIRST 2 LINES ONLY").GetToken(), "LINES");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t FETCH FIRST 2 ROWS").GetErrorType(), zvpeUnexpectedEnd);
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t FETCH FIRST 2 ROWS ONLY ONLY").GetToken(), "ONLY");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT 2").GetToken(), "LIMIT");
}

TEST(ZvDb2SelectParser, DistinctIsWrittenAfterSelectAndAliasesAfterAs) {
    TZvDb2SelectParser Parser;
    EXPECT_EQ(Parser.GetTableNameAndAliasDeilm(), " AS ");
    const std::string Text = Format(Parser, "SELECT DISTINCT x.a FROM t x");
    EXPECT_EQ(Text, "SELECT DISTINCT \r\n  X.A\r\nFROM\r\n  T AS X\r\n");
    EXPECT_EQ(Format(Parser, Text), Text);
}

TEST(ZvDb2SelectParser, OptionsScriptCopyingAndClearing) {
    TZvDb2SQLOptions Options;
    EXPECT_EQ(Options.GetScript(), "");
    Options.SetFetchFirst(3);
    EXPECT_EQ(Options.GetScript(), "FETCH FIRST 3 ROWS ONLY");
    TZvDb2SelectParser Parser;
    Parser.SetDb2Options(Options);
    TZvDb2SelectParser Copy;
    Copy.Assign(Parser);
    EXPECT_EQ(Copy.GetDb2Options().GetFetchFirst(), 3);
    Copy.SetExpression("SELECT a FROM t");
    EXPECT_EQ(Copy.GetDb2Options().GetFetchFirst(), 0);
}

// --- zevrin ------------------------------------------------------------------------------------

TEST(ZvCliDb2, DialectIsListedAndTheModelShowsFetchFirst) {
    const std::vector<std::string> Names = DialectNames();
    EXPECT_NE(std::find(Names.begin(), Names.end(), "db2"), Names.end());
    const TRun R = RunTool({"model", "--dialect", "db2"}, "SELECT a FROM t FETCH FIRST 4 ROWS ONLY");
    EXPECT_EQ(R.Code, 0) << R.Err;
    EXPECT_NE(R.Out.find("\"options\": {\n    \"fetchFirst\": 4\n  }"), std::string::npos) << R.Out;
}
