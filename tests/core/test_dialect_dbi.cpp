// The DBISAM dialect: its scanner's lists, quotes and boolean literals, and the parser's
// aggregates, names and the absence of clauses of its own, plus the zevrin dialect.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ZvDialectTestSupport.h"
#include "dialects/ZvDbiDialect.h"

using namespace zv;
using namespace zv::test;

TEST(ZvDbiSQLScanner, KeywordListHasItsTwoHundredElevenEntries) {
    TZvDbiSQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetKeywords().Items();
    EXPECT_EQ(Words.size(), 211u);
    EXPECT_EQ(Words.front(), "ABS");
    EXPECT_EQ(Words.back(), "YEARSFROMMSECS");
    EXPECT_TRUE(Scanner.IsKeyword("TRUE"));
    EXPECT_TRUE(Scanner.IsKeyword("top"));
}

TEST(ZvDbiSQLScanner, FunctionListHasItsSixtyTwoEntries) {
    TZvDbiSQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetFunctions().Items();
    EXPECT_EQ(Words.size(), 62u);
    EXPECT_EQ(Words.front(), "LOWER");
    EXPECT_EQ(Words.back(), "RUNSUM");
}

TEST(ZvDbiSelectParser, AggregateListHasItsSixEntries) {
    TZvDbiSelectParser Parser;
    EXPECT_EQ(Parser.GetAggregates().Count(), 6u);
    EXPECT_EQ(Parser.GetAggregates().GetCommaText(), "AVG,COUNT,MAX,MIN,SUM,RUNSUM");
}

TEST(ZvDbiSQLScanner, OperatorsAreTheGenericOnes) {
    TZvDbiSQLScanner Scanner;
    EXPECT_EQ(Scanner.GetOperations().GetCommaText(), "+,-,*,/,||");
    EXPECT_EQ(Scanner.GetCompareOperators().GetCommaText(), "=,<>,<,<=,>,>=");
    EXPECT_EQ(Scanner.GetJoinOperators().GetCommaText(), "=,<>,<,<=,>,>=");
}

TEST(ZvDbiSQLScanner, ApostropheQuotesStringsAndDoubleQuoteQuotesNames) {
    TZvDbiSQLScanner Scanner;
    EXPECT_TRUE(Scanner.IsQuote('\''));
    EXPECT_FALSE(Scanner.IsQuote('"'));
    EXPECT_TRUE(Scanner.IsIdentQuote('"'));
    const std::vector<TToken> T = Tokens(Scanner, "\"my col\" 'text'");
    ASSERT_EQ(T.size(), 2u);
    EXPECT_EQ(T[0].Text, "my col");
    EXPECT_EQ(T[0].Kinds, TTokenKinds{tkIdent});
    EXPECT_EQ(T[1].Kinds, TTokenKinds{tkString});
}

TEST(ZvDbiSQLScanner, TrueAndFalseAreBooleanLiteralsThoughTheyAreKeywords) {
    TZvDbiSQLScanner Scanner;
    EXPECT_EQ(Scanner.GetBooleans(false), "FALSE");
    EXPECT_EQ(Scanner.GetBooleans(true), "TRUE");
    const std::vector<TToken> T = Tokens(Scanner, "true FALSE \"TRUE\" TOP");
    ASSERT_EQ(T.size(), 4u);
    EXPECT_EQ(T[0].Kinds, TTokenKinds{tkBoolean});
    EXPECT_EQ(T[1].Kinds, TTokenKinds{tkBoolean});
    EXPECT_EQ(T[2].Kinds, TTokenKinds{tkIdent});
    EXPECT_EQ(T[3].Kinds, TTokenKinds{tkKeyword});
}

TEST(ZvDbiSQLScanner, AnEnclosedNameNeedsNoQuotesAndOthersFollowTheGenericRule) {
    TZvDbiSQLScanner Scanner;
    EXPECT_FALSE(Scanner.NeedQuotes("\"my col\""));
    EXPECT_FALSE(Scanner.NeedQuotes("\"SELECT\""));
    EXPECT_TRUE(Scanner.NeedQuotes("my col"));
    EXPECT_TRUE(Scanner.NeedQuotes("memo"));
    EXPECT_TRUE(Scanner.NeedQuotes("Runsum"));
    EXPECT_FALSE(Scanner.NeedQuotes("MixedCase"));
    EXPECT_EQ(Scanner.ProcessName("t.my col"), "t.\"my col\"");
}

TEST(ZvDbiSelectParser, ConditionsReadTheBooleanLiterals) {
    TZvDbiSelectParser Parser;
    EXPECT_EQ(Format(Parser, "SELECT a FROM t WHERE b = TRUE AND c <> false"),
              "SELECT \r\n  a\r\nFROM\r\n  t\r\nWHERE\r\n  (b = TRUE) AND \r\n  (c <> false)\r\n");
}

TEST(ZvDbiSelectParser, AwkwardNamesAreWrittenInDoubleQuotes) {
    TZvDbiSelectParser Parser;
    EXPECT_EQ(
        Format(Parser, "SELECT \"my col\", \"memo\", t.\"a b\" FROM \"my table\" t WHERE \"x\" = 'it''s'"),
        "SELECT \r\n  \"my col\",\r\n  \"memo\",\r\n  t.\"a b\"\r\nFROM\r\n  \"my table\" t\r\nWHERE\r\n"
        "  (x = 'it''s')\r\n");
}

TEST(ZvDbiSelectParser, AggregatesWithPlainColumnsRegroupByTheColumns) {
    TZvDbiSelectParser Parser;
    EXPECT_EQ(Format(Parser, "SELECT a, RUNSUM(b) FROM t"),
              "SELECT \r\n  a,\r\n  RUNSUM(b) AS FIELD_1\r\nFROM\r\n  t\r\nGROUP BY\r\n  a\r\n");
}

TEST(ZvDbiSelectParser, HasNoClausesOfItsOwn) {
    TZvDbiSelectParser Parser;
    EXPECT_EQ(ParseError(Parser, "SELECT TOP 5 a FROM t").GetToken(), "TOP");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t TOP 5").GetToken(), "TOP");
    const EZvParserError Limit = ParseError(Parser, "SELECT a FROM t LIMIT 5");
    EXPECT_EQ(Limit.GetErrorType(), zvpeInvalidToken);
    EXPECT_EQ(Limit.GetToken(), "5");
}

TEST(ZvDbiSelectParser, IdentifiersAreNeverCaseSensitive) {
    TZvDbiSelectParser Parser;
    EXPECT_FALSE(Parser.GetCaseSensitiveIdentifiers());
    Parser.SetCaseSensitiveIdentifiers(true);
    EXPECT_FALSE(Parser.GetCaseSensitiveIdentifiers());
}

TEST(ZvCliDbisam, DialectIsListedAndHasNoOptionsInTheModel) {
    const std::vector<std::string> Names = DialectNames();
    EXPECT_NE(std::find(Names.begin(), Names.end(), "dbisam"), Names.end());
    const TRun R = RunTool({"model", "--dialect", "dbisam"}, "select \"a b\" from t where c = true");
    ASSERT_EQ(R.Code, 0) << R.Err;
    EXPECT_EQ(R.Out.find("\"options\""), std::string::npos);
    EXPECT_NE(R.Out.find("\"sql\": \"SELECT \\r\\n  \\\"a b\\\"\\r\\nFROM"), std::string::npos) << R.Out;
}
