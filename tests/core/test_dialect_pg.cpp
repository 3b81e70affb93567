// The PostgreSQL dialect: its scanner's lists, lower-case name folding and quoting, the "~"
// comparisons, and the parser's DISTINCT ON, LIMIT, OFFSET and ILIKE, plus its zevrin row.
#include <gtest/gtest.h>

#include <algorithm>

#include "ZvDialectTestSupport.h"
#include "dialects/ZvPgDialect.h"

using namespace zv;
using namespace zv::test;

namespace {

constexpr const char* kIssuedFunctions =
    "AVG,COUNT,MAX,MIN,SUM,ARRAY_AGG,BIT_AND,BIT_OR,BOOL_AND,BOOL_OR,EVERY,JSON_AGG,STRING_AGG,STDDEV,"
    "STDDEV_POP,STDDEV_SAMP,VARIANCE,VAR_POP,VAR_SAMP,ABS,CBRT,CEIL,CEILING,DEGREES,DIV,EXP,FLOOR,LN,LOG,"
    "MOD,PI,POWER,RADIANS,RANDOM,ROUND,SIGN,SQRT,TRUNC,ACOS,ASIN,ATAN,ATAN2,COS,COT,SIN,TAN,ASCII,BTRIM,"
    "CHAR_LENGTH,CHARACTER_LENGTH,CHR,CONCAT,CONCAT_WS,INITCAP,LENGTH,LOWER,LPAD,LTRIM,MD5,OCTET_LENGTH,"
    "REGEXP_REPLACE,REPEAT,REPLACE,REVERSE,RPAD,RTRIM,SPLIT_PART,STRPOS,SUBSTR,TO_ASCII,TO_HEX,TRANSLATE,"
    "UPPER,AGE,CLOCK_TIMESTAMP,DATE_PART,DATE_TRUNC,ISFINITE,JUSTIFY_DAYS,JUSTIFY_HOURS,NOW,TIMEOFDAY,"
    "TO_CHAR,TO_DATE,TO_NUMBER,TO_TIMESTAMP,COALESCE,NULLIF,GREATEST,LEAST";

std::vector<std::string> Captions(TZvSelectParser& Parser) {
    std::vector<std::string> Result;
    for (int I = 0; I < Parser.GetOperators().Count(); ++I)
        Result.push_back(Parser.GetOperators().Items(I)->GetCaption());
    return Result;
}

} // namespace

// --- scanner -----------------------------------------------------------------------------------

TEST(ZvPgSQLScanner, KeywordListHasItsThreeHundredNineteenEntries) {
    TZvPgSQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetKeywords().Items();
    EXPECT_EQ(Words.size(), 319u);
    EXPECT_EQ(Words.front(), "ABORT");
    for (const char* Word : {"LIMIT", "OFFSET", "ILIKE", "DISTINCT", "ON", "FETCH"})
        EXPECT_TRUE(Scanner.IsKeyword(Word)) << Word;
    EXPECT_FALSE(Scanner.IsKeyword("ROWS"));
}

TEST(ZvPgSQLScanner, FunctionListIsExactlyTheNinetyNamesGiven) {
    TZvPgSQLScanner Scanner;
    EXPECT_EQ(Scanner.GetFunctions().Count(), 90u);
    EXPECT_EQ(Scanner.GetFunctions().GetCommaText(), kIssuedFunctions);
}

TEST(ZvPgSQLScanner, OperatorListsAndBooleans) {
    TZvPgSQLScanner Scanner;
    EXPECT_EQ(Scanner.GetOperations().GetCommaText(), "+,-,*,/,||");
    EXPECT_EQ(Scanner.GetCompareOperators().GetCommaText(), "=,<>,<,<=,>,>=,~,~*,!~,!~*");
    EXPECT_EQ(Scanner.GetJoinOperators().GetCommaText(), "=,<>,<,<=,>,>=");
    EXPECT_EQ(Scanner.GetComplexOperators().Count(), 0u);
    EXPECT_EQ(Scanner.GetBooleans(false), "False");
    EXPECT_EQ(Scanner.GetBooleans(true), "True");
}

TEST(ZvPgSQLScanner, NameTildeStarNameIsThreeTokensWithAComparisonInTheMiddle) {
    TZvPgSQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "a~*b");
    ASSERT_EQ(T.size(), 3u);
    EXPECT_EQ(T[0].Text, "a");
    EXPECT_TRUE(T[0].Kinds.Contains(tkIdent));
    EXPECT_EQ(T[1].Text, "~*");
    EXPECT_EQ(T[1].Kinds, TTokenKinds{tkComparison});
    EXPECT_EQ(T[2].Text, "b");
    for (const char* Op : {"~", "!~", "!~*"}) {
        const std::vector<TToken> U = Tokens(Scanner, std::string("x ") + Op + " y");
        ASSERT_EQ(U.size(), 3u) << Op;
        EXPECT_EQ(U[1].Text, Op);
        EXPECT_EQ(U[1].Kinds, TTokenKinds{tkComparison});
    }
}

TEST(ZvPgSQLScanner, UnderscoreMayBeginANameAndOnlyLowerCaseLettersAreAlphabetic) {
    TZvPgSQLScanner Scanner;
    EXPECT_TRUE(Scanner.IsIdentifier("_x1"));
    EXPECT_TRUE(Scanner.IsIdentifier("abc"));
    EXPECT_FALSE(Scanner.IsIdentifier("Abc"));
    EXPECT_FALSE(Scanner.IsIdentifier("1a"));
    EXPECT_FALSE(Scanner.IsIdentifier("a$"));
    EXPECT_TRUE(Scanner.IsAlpha('q'));
    EXPECT_FALSE(Scanner.IsAlpha('Q'));
}

TEST(ZvPgSQLScanner, ApostropheQuotesStringsAndDoubleQuoteQuotesNames) {
    TZvPgSQLScanner Scanner;
    EXPECT_TRUE(Scanner.IsQuote('\''));
    EXPECT_FALSE(Scanner.IsQuote('"'));
    EXPECT_TRUE(Scanner.IsIdentQuote('"'));
    const std::vector<TToken> T = Tokens(Scanner, "'s' \"My Name\"");
    ASSERT_EQ(T.size(), 2u);
    EXPECT_TRUE(T[0].Kinds.Contains(tkString));
    EXPECT_FALSE(T[0].Kinds.Contains(tkIdent));
    EXPECT_EQ(T[1].Text, "My Name");
    EXPECT_TRUE(T[1].Kinds.Contains(tkIdent));
    EXPECT_FALSE(T[1].Kinds.Contains(tkString));
}

TEST(ZvPgSQLScanner, UnquotedWordsFoldToLowerCaseAndQuotedOnesStayAsWritten) {
    TZvPgSQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "Orders \"Orders\" Upper SELECT");
    ASSERT_EQ(T.size(), 4u);
    EXPECT_EQ(T[0].Text, "orders");
    EXPECT_EQ(T[1].Text, "Orders");
    // A function name and a keyword fold too: used as names they must name what the server reads.
    EXPECT_EQ(T[2].Text, "upper");
    EXPECT_EQ(T[3].Text, "select");
    EXPECT_EQ(Scanner.ProcessIdent("\"Mixed\""), "Mixed");
    EXPECT_EQ(Scanner.ProcessIdent("Mixed"), "mixed");
    EXPECT_EQ(Scanner.GetFormatTokenIdent("Mixed", false), "mixed");
    EXPECT_EQ(Scanner.GetFormatTokenIdent("Mixed", true), "Mixed");
}

TEST(ZvPgSQLScanner, NeedQuotesForReservedWordsAndNamesTheServerWouldFold) {
    TZvPgSQLScanner Scanner;
    EXPECT_FALSE(Scanner.NeedQuotes("orders"));
    EXPECT_FALSE(Scanner.NeedQuotes("_tmp"));
    EXPECT_FALSE(Scanner.NeedQuotes("\"Orders\""));
    EXPECT_TRUE(Scanner.NeedQuotes("Orders"));
    EXPECT_TRUE(Scanner.NeedQuotes("my name"));
    EXPECT_TRUE(Scanner.NeedQuotes("1st"));
    EXPECT_TRUE(Scanner.NeedQuotes("select"));  // keyword
    EXPECT_TRUE(Scanner.NeedQuotes("now"));     // function
    EXPECT_EQ(Scanner.ProcessName("Orders.id"), "\"Orders\".id");
    EXPECT_EQ(Scanner.ProcessName("t.count"), "t.\"count\"");
    EXPECT_TRUE(Scanner.GetProcessAliases());
}

// --- parser ------------------------------------------------------------------------------------

TEST(ZvPgSelectParser, OperatorsAreTheStandardOnesThenTheMatchesAndIlike) {
    TZvPgSelectParser Parser;
    const std::vector<std::string> C = Captions(Parser);
    ASSERT_EQ(C.size(), 20u);
    EXPECT_EQ(C[0], "=");
    EXPECT_EQ(C[13], "IS NOT NULL");
    EXPECT_EQ(std::vector<std::string>(C.begin() + 14, C.end()),
              (std::vector<std::string>{"~", "~*", "!~", "!~*", "ILIKE", "NOT ILIKE"}));
    EXPECT_EQ(Parser.GetOperators().FindByCaption("NOT ILIKE")->GetName(), "NOT ILIKE");
    EXPECT_EQ(Parser.GetAggregates().GetCommaText(), "SUM,MIN,MAX,AVG,COUNT");
}

TEST(ZvPgSelectParser, IlikeAndRegularExpressionConditionsAreReadWithTheirOperators) {
    TZvPgSelectParser Parser;
    Parser.SetExpression("SELECT a FROM t WHERE a NOT ILIKE 'x%' AND b !~* 'y'");
    TZvWhereItems& Where = Parser.GetWhereItems();
    ASSERT_EQ(Where.Count(), 2);
    EXPECT_EQ(Where.Items(0)->GetOperatorCaption(), "NOT ILIKE");
    EXPECT_EQ(Where.Items(1)->GetOperatorCaption(), "!~*");
}

TEST(ZvPgSelectParser, DistinctOnReadsQualifiedNamesAndIsWrittenInPlaceOfDistinct) {
    TZvPgSelectParser Parser;
    const std::string Text = Format(Parser, "select distinct on (o.Cust, \"My T\".b, c) o.id from orders o");
    EXPECT_TRUE(Parser.GetDistinct());
    EXPECT_EQ(Parser.GetPgOptions().GetDistinctOn(),
              (std::vector<std::string>{"o.cust", "\"My T\".b", "c"}));
    EXPECT_EQ(Text.substr(0, Text.find('\n') + 1), "SELECT DISTINCT ON (o.cust, \"My T\".b, c) \r\n");
}

TEST(ZvPgSelectParser, PlainDistinctAndAnEmptyListWriteOnlyDistinct) {
    TZvPgSelectParser Parser;
    EXPECT_EQ(Format(Parser, "SELECT DISTINCT a FROM t").substr(0, 18), "SELECT DISTINCT \r\n");
    EXPECT_TRUE(Parser.GetPgOptions().GetDistinctOn().empty());
    // A list left over with Distinct switched off writes nothing: DISTINCT ON is a kind of DISTINCT.
    Parser.SetExpression("SELECT DISTINCT ON (a) a FROM t");
    Parser.SetDistinct(false);
    EXPECT_EQ(Parser.GetExpression().substr(0, 9), "SELECT \r\n");
}

TEST(ZvPgSelectParser, DistinctOnErrors) {
    TZvPgSelectParser Parser;
    EXPECT_EQ(ParseError(Parser, "SELECT DISTINCT ON a FROM t").GetToken(), "a");
    EXPECT_EQ(ParseError(Parser, "SELECT DISTINCT ON (a b) a FROM t").GetToken(), "b");
    EXPECT_EQ(ParseError(Parser, "SELECT DISTINCT ON () a FROM t").GetToken(), ")");
    EXPECT_EQ(ParseError(Parser, "SELECT DISTINCT ON (a.) a FROM t").GetToken(), ")");
    EXPECT_EQ(ParseError(Parser, "SELECT DISTINCT ON (a").GetErrorType(), zvpeUnexpectedEnd);
}

TEST(ZvPgSelectParser, LimitAndOffsetAreReadInEitherOrderAndWrittenLimitFirst) {
    TZvPgSelectParser Parser;
    const std::string Text = Format(Parser, "SELECT a FROM t OFFSET 20 LIMIT 10");
    EXPECT_EQ(Parser.GetPgOptions().GetLimit(), 10);
    EXPECT_EQ(Parser.GetPgOptions().GetOffset(), 20);
    EXPECT_EQ(Text, "SELECT \r\n  a\r\nFROM\r\n  t\r\nLIMIT 10\r\nOFFSET 20\r\n");
}

TEST(ZvPgSelectParser, TrailingClausesFollowTheLastClauseWithoutAnEmptyLine) {
    TZvPgSelectParser Parser;
    const std::string Text = Format(Parser, "SELECT a FROM t ORDER BY a LIMIT 1");
    EXPECT_EQ(Text, "SELECT \r\n  a\r\nFROM\r\n  t\r\nORDER BY\r\n  a\r\nLIMIT 1\r\n");
}

TEST(ZvPgSelectParser, LimitAndOffsetErrors) {
    TZvPgSelectParser Parser;
    // The options keep 0 for "no limit": LIMIT 0 would come back as every row.
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT 0").GetToken(), "0");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT x").GetToken(), "x");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT 1 LIMIT 2").GetToken(), "limit");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT 99999999999").GetToken(), "99999999999");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t OFFSET").GetErrorType(), zvpeUnexpectedEnd);
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT 1 x").GetToken(), "x");
    // OFFSET 0 skips nothing, so reading it as no clause keeps the statement's meaning.
    EXPECT_EQ(Format(Parser, "SELECT a FROM t OFFSET 0"), "SELECT \r\n  a\r\nFROM\r\n  t\r\n");
}

TEST(ZvPgSelectParser, OptionsScriptAndCopying) {
    TZvPgSQLOptions Options;
    EXPECT_EQ(Options.GetScript(), "");
    Options.SetOffset(4);
    EXPECT_EQ(Options.GetScript(), "OFFSET 4\r\n");
    Options.SetLimit(3);
    Options.SetDistinctOn({"a"});
    EXPECT_EQ(Options.GetScript(), "LIMIT 3\r\nOFFSET 4\r\n");
    TZvPgSelectParser Parser;
    Parser.SetPgOptions(Options);
    EXPECT_EQ(Parser.GetPgOptions().GetLimit(), 3);
    TZvPgSelectParser Copy;
    Copy.Assign(Parser);
    EXPECT_EQ(Copy.GetPgOptions().GetOffset(), 4);
    EXPECT_EQ(Copy.GetPgOptions().GetDistinctOn(), std::vector<std::string>{"a"});
    Copy.Clear();
    EXPECT_EQ(Copy.GetPgOptions().GetLimit(), 0);
    EXPECT_TRUE(Copy.GetPgOptions().GetDistinctOn().empty());
}

TEST(ZvPgSelectParser, ANewParseForgetsTheClausesOfTheLastOne) {
    TZvPgSelectParser Parser;
    Parser.SetExpression("SELECT DISTINCT ON (a) a FROM t LIMIT 2 OFFSET 1");
    Parser.SetExpression("SELECT a FROM t");
    EXPECT_EQ(Parser.GetPgOptions().GetLimit(), 0);
    EXPECT_EQ(Parser.GetPgOptions().GetOffset(), 0);
    EXPECT_TRUE(Parser.GetPgOptions().GetDistinctOn().empty());
}

TEST(ZvPgSelectParser, GeneratedAliasesAreLowerCaseAndNamesCompareExactly) {
    TZvPgSelectParser Parser;
    EXPECT_TRUE(Parser.IsLowerCaseAliases());
    EXPECT_TRUE(Parser.GetCaseSensitiveIdentifiers());
    EXPECT_NE(Format(Parser, "SELECT a + 1 FROM t").find("a + 1 AS field_1"), std::string::npos);
}

// --- zevrin ------------------------------------------------------------------------------------

TEST(ZvCliPostgreSQL, DialectIsListedAndTheModelShowsItsClauses) {
    const std::vector<std::string> Names = DialectNames();
    EXPECT_NE(std::find(Names.begin(), Names.end(), "postgresql"), Names.end());
    const TRun R = RunTool({"model", "--dialect", "postgresql"},
                           "SELECT DISTINCT ON (t.a) t.a FROM t LIMIT 5 OFFSET 2");
    EXPECT_EQ(R.Code, 0) << R.Err;
    EXPECT_NE(R.Out.find("\"options\": {\n    \"distinctOn\": [\n      \"t.a\"\n    ],\n    \"limit\": 5,\n"
                         "    \"offset\": 2\n  }"),
              std::string::npos)
        << R.Out;
}
