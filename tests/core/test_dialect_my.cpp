// The MySQL dialect: its scanner's lists, back-quoted names and backslash escapes, the options
// object's texts, and the parser reading and placing the filter word, the option words and LIMIT,
// plus the zevrin dialect that selects it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ZvDialectTestSupport.h"
#include "dialects/ZvMyDialect.h"

using namespace zv;
using namespace zv::test;

// --- scanner: word lists ---------------------------------------------------------------------

TEST(ZvMySQLScanner, KeywordListHasItsTwoHundredTwentyNineEntries) {
    TZvMySQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetKeywords().Items();
    EXPECT_EQ(Words.size(), 229u);
    EXPECT_EQ(Words.front(), "ACTION");
    EXPECT_EQ(Words.back(), "ZEROFILL");
    for (const char* Word : {"DISTINCTROW", "STRAIGHT_JOIN", "SQL_SMALL_RESULT", "SQL_BIG_RESULT",
                             "HIGH_PRIORITY", "LIMIT", "REGEXP"})
        EXPECT_TRUE(Scanner.IsKeyword(Word)) << Word;
    EXPECT_FALSE(Scanner.IsKeyword("SQL_BUFFER_RESULT"));
}

TEST(ZvMySQLScanner, FunctionListHasItsHundredThirtyNineEntriesWithLocateTwice) {
    TZvMySQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetFunctions().Items();
    EXPECT_EQ(Words.size(), 139u);
    EXPECT_EQ(Words.front(), "BIT_COUNT");
    EXPECT_EQ(Words.back(), "VARIANCE");
    EXPECT_EQ(std::count(Words.begin(), Words.end(), "LOCATE"), 2);
    EXPECT_TRUE(Scanner.IsFunction("group_concat"));
}

TEST(ZvMySelectParser, AggregateListHasItsElevenEntries) {
    TZvMySelectParser Parser;
    EXPECT_EQ(Parser.GetAggregates().Count(), 11u);
    EXPECT_EQ(Parser.GetAggregates().GetCommaText(),
              "COUNT,AVG,MIN,MAX,SUM,GROUP_CONCAT,VARIANCE,STD,STDDEV,BIT_OR,BIT_AND");
}

TEST(ZvMySQLScanner, OperatorsAndBooleansAreTheGenericOnes) {
    TZvMySQLScanner Scanner;
    TZvSQLScanner Generic;
    EXPECT_EQ(Scanner.GetOperations().GetCommaText(), Generic.GetOperations().GetCommaText());
    EXPECT_EQ(Scanner.GetCompareOperators().GetCommaText(), "=,<>,<,<=,>,>=");
    EXPECT_EQ(Scanner.GetBooleans(false), "False");
    EXPECT_EQ(Scanner.GetBooleans(true), "True");
}

// --- scanner: quotes -------------------------------------------------------------------------

TEST(ZvMySQLScanner, BackQuoteEnclosesNamesAndBothOtherQuotesEncloseStrings) {
    TZvMySQLScanner Scanner;
    EXPECT_EQ(Scanner.GetIdentQuote(), '`');
    EXPECT_TRUE(Scanner.IsIdentQuote('`'));
    EXPECT_FALSE(Scanner.IsIdentQuote('"'));
    EXPECT_TRUE(Scanner.IsQuote('"'));
    EXPECT_TRUE(Scanner.IsQuote('\''));
    EXPECT_FALSE(Scanner.IsQuote('`'));
}

TEST(ZvMySQLScanner, ANameInBackQuotesIsOneIdentifier) {
    TZvMySQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "`my col`, `select` \"text\"");
    ASSERT_EQ(T.size(), 4u);
    EXPECT_EQ(T[0].Text, "my col");
    EXPECT_EQ(T[0].Kinds, TTokenKinds{tkIdent});
    EXPECT_EQ(T[2].Text, "select");
    EXPECT_EQ(T[2].Kinds, TTokenKinds{tkIdent});
    EXPECT_EQ(T[3].Text, "text");
    EXPECT_EQ(T[3].Kinds, TTokenKinds{tkString});
}

TEST(ZvMySQLScanner, AQuoteEscapedByABackslashDoesNotEndTheString) {
    TZvMySQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "'it\\'s' x \"say \\\"hi\\\"\" y");
    ASSERT_EQ(T.size(), 4u);
    EXPECT_EQ(T[0].Text, "it\\'s");
    EXPECT_EQ(T[0].Kinds, TTokenKinds{tkString});
    EXPECT_EQ(T[1].Text, "x");
    EXPECT_EQ(T[2].Text, "say \\\"hi\\\"");
    EXPECT_EQ(T[3].Text, "y");
}

TEST(ZvMySQLScanner, AnEscapedQuoteRightBeforeTheClosingOneIsLeftOutOfTheCount) {
    TZvMySQLScanner Scanner;
    // 'a\'' : the first quote after a is escaped, the second ends the text.
    const std::vector<TToken> T = Tokens(Scanner, "'a\\'' b");
    ASSERT_EQ(T.size(), 2u);
    EXPECT_EQ(T[0].Text, "a\\'");
    EXPECT_EQ(T[1].Text, "b");
    EXPECT_FALSE(Scanner.IsTerminator('\'', "a\\", 'x', '\''));
    EXPECT_TRUE(Scanner.IsTerminator('\'', "a\\'", ' ', '\''));
}

TEST(ZvMySQLScanner, AnEscapedBackslashLeavesTheQuoteAfterItFree) {
    TZvMySQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "'a\\\\' b 'p''q'");
    ASSERT_EQ(T.size(), 3u);
    EXPECT_EQ(T[0].Text, "a\\\\");
    EXPECT_EQ(T[1].Text, "b");
    EXPECT_EQ(T[2].Text, "p''q");
}

TEST(ZvMySQLScanner, AnEscapedQuoteLeavesTheStringOpenUnlessItIsTheLastCharacter) {
    TZvMySQLScanner Scanner;
    EXPECT_THROW(Tokens(Scanner, "'abc\\' "), EZvParserError);
    // The last character of the text closes an open quote whatever stands before it.
    const std::vector<TToken> T = Tokens(Scanner, "'abc\\'");
    ASSERT_EQ(T.size(), 1u);
    EXPECT_EQ(T[0].Text, "abc\\");
}

// --- scanner: names --------------------------------------------------------------------------

TEST(ZvMySQLScanner, ANameInBackQuotesNeedsNoQuotesAndOthersFollowTheGenericRule) {
    TZvMySQLScanner Scanner;
    EXPECT_FALSE(Scanner.NeedQuotes("`my col`"));
    EXPECT_FALSE(Scanner.NeedQuotes("`select`"));
    EXPECT_TRUE(Scanner.NeedQuotes("my col"));
    EXPECT_TRUE(Scanner.NeedQuotes("select"));
    EXPECT_TRUE(Scanner.NeedQuotes("\"x\""));
    EXPECT_FALSE(Scanner.NeedQuotes("my_col"));
    EXPECT_FALSE(Scanner.NeedQuotes("MixedCase"));
}

TEST(ZvMySQLScanner, NamesAreQuotedInBackQuotesAndStringsKeepTheirQuote) {
    TZvMySQLScanner Scanner;
    EXPECT_EQ(Scanner.ProcessName("db.my col"), "db.`my col`");
    EXPECT_EQ(Scanner.QuoteName("order"), "`order`");
    EXPECT_EQ(Scanner.QuoteStr("\"x\""), "\"x\"");
    EXPECT_EQ(Scanner.QuoteStr("'x'"), "'x'");
    EXPECT_EQ(Scanner.QuoteStr("it's"), "'it''s'");
}

// --- options ---------------------------------------------------------------------------------

TEST(ZvMySQLOptions, FilterScriptWritesTheWordAndOneBlank) {
    TZvMySQLOptions Options;
    EXPECT_EQ(Options.GetFilterScript(), "");
    const std::pair<TZvMySQLFilter, const char*> Rows[] = {
        {myfoDistinct, "DISTINCT "}, {myfoDistinctRow, "DISTINCTROW "}, {myfoAll, "ALL "}};
    for (const auto& [Filter, Text] : Rows) {
        Options.SetFilter(Filter);
        EXPECT_EQ(Options.GetFilterScript(), Text);
    }
}

TEST(ZvMySQLOptions, OptionsScriptWritesTheSetWordsInTheirFixedOrder) {
    TZvMySQLOptions Options;
    EXPECT_EQ(Options.GetOptionsScript(), "");
    Options.SetSelectOption(mysoHighPriority, true);
    Options.SetSelectOption(mysoStraightJoin, true);
    EXPECT_EQ(Options.GetOptionsScript(), "STRAIGHT_JOIN HIGH_PRIORITY ");
    Options.SetSelectOptions(TZvMySQLSelectOptions().set());
    EXPECT_EQ(Options.GetOptionsScript(),
              "STRAIGHT_JOIN SQL_SMALL_RESULT SQL_BIG_RESULT SQL_BUFFER_RESULT HIGH_PRIORITY ");
    Options.SetSelectOption(mysoSQLBigResult, false);
    EXPECT_FALSE(Options.HasSelectOption(mysoSQLBigResult));
    EXPECT_TRUE(Options.HasSelectOption(mysoSQLBufferResult));
}

TEST(ZvMySQLOptions, LimitScriptNeedsTheFirstNumber) {
    TZvMySQLOptions Options;
    EXPECT_EQ(Options.GetLimitScript(), "");
    Options.SetLimitSecond("7");
    EXPECT_EQ(Options.GetLimitScript(), "");
    Options.SetLimitFirst("5");
    EXPECT_EQ(Options.GetLimitScript(), "LIMIT 5, 7");
    Options.SetLimitSecond("");
    EXPECT_EQ(Options.GetLimitScript(), "LIMIT 5");
}

TEST(ZvMySQLOptions, AssignCopiesEverythingAndClearResetsIt) {
    TZvMySQLOptions Source;
    Source.SetFilter(myfoDistinctRow);
    Source.SetSelectOption(mysoSQLSmallResult, true);
    Source.SetLimitFirst("1");
    Source.SetLimitSecond("2");
    TZvMySQLOptions Copy;
    Copy.Assign(Source);
    EXPECT_EQ(Copy.GetFilterScript() + Copy.GetOptionsScript() + Copy.GetLimitScript(),
              "DISTINCTROW SQL_SMALL_RESULT LIMIT 1, 2");
    Copy.Clear();
    EXPECT_EQ(Copy.GetFilter(), myfoNone);
    EXPECT_TRUE(Copy.GetSelectOptions().none());
    EXPECT_EQ(Copy.GetLimitFirst(), "");
    EXPECT_EQ(Copy.GetLimitSecond(), "");
}

// --- parser: after SELECT --------------------------------------------------------------------

TEST(ZvMySelectParser, ReadsTheFilterWordAndOptionWordsAndWritesThemInTheServersOrder) {
    TZvMySelectParser Parser;
    EXPECT_EQ(Format(Parser, "select distinctrow high_priority sql_buffer_result straight_join a from t"),
              "SELECT DISTINCTROW STRAIGHT_JOIN SQL_BUFFER_RESULT HIGH_PRIORITY \r\n  a\r\nFROM\r\n  t\r\n");
    const TZvMySQLOptions& Options = Parser.GetMySQLOptions();
    EXPECT_EQ(Options.GetFilter(), myfoDistinctRow);
    EXPECT_TRUE(Options.HasSelectOption(mysoStraightJoin));
    EXPECT_TRUE(Options.HasSelectOption(mysoSQLBufferResult));
    EXPECT_TRUE(Options.HasSelectOption(mysoHighPriority));
    EXPECT_FALSE(Options.HasSelectOption(mysoSQLSmallResult));
    EXPECT_FALSE(Options.HasSelectOption(mysoSQLBigResult));
}

TEST(ZvMySelectParser, DistinctIsTrueOnlyForTheDistinctFilter) {
    TZvMySelectParser Parser;
    const std::pair<const char*, bool> Rows[] = {{"SELECT DISTINCT a FROM t", true},
                                                 {"SELECT DISTINCTROW a FROM t", false},
                                                 {"SELECT ALL a FROM t", false},
                                                 {"SELECT a FROM t", false}};
    for (const auto& [Text, Distinct] : Rows) {
        Parser.SetExpression(Text);
        EXPECT_EQ(Parser.GetDistinct(), Distinct) << Text;
    }
    EXPECT_EQ(Format(Parser, "select all a from t"), "SELECT ALL \r\n  a\r\nFROM\r\n  t\r\n");
}

TEST(ZvMySelectParser, SettingDistinctChoosesOrDropsOnlyTheDistinctFilter) {
    TZvMySelectParser Parser;
    Parser.SetDistinct(true);
    EXPECT_EQ(Parser.GetMySQLOptions().GetFilter(), myfoDistinct);
    Parser.SetDistinct(false);
    EXPECT_EQ(Parser.GetMySQLOptions().GetFilter(), myfoNone);
    Parser.GetMySQLOptions().SetFilter(myfoDistinctRow);
    Parser.SetDistinct(false);
    EXPECT_EQ(Parser.GetMySQLOptions().GetFilter(), myfoDistinctRow);
}

TEST(ZvMySelectParser, OptionWordsAreKnownByTheirTextKeywordOrNot) {
    TZvMySelectParser Parser;
    Parser.SetExpression("SELECT SQL_BUFFER_RESULT sql_small_result a FROM t");
    EXPECT_TRUE(Parser.GetMySQLOptions().HasSelectOption(mysoSQLBufferResult));
    EXPECT_TRUE(Parser.GetMySQLOptions().HasSelectOption(mysoSQLSmallResult));
    // In back quotes the word is a column.
    EXPECT_EQ(Format(Parser, "SELECT `SQL_BUFFER_RESULT` FROM t"),
              "SELECT \r\n  SQL_BUFFER_RESULT\r\nFROM\r\n  t\r\n");
    EXPECT_TRUE(Parser.GetMySQLOptions().GetSelectOptions().none());
}

TEST(ZvMySelectParser, AFilterWordAfterTheOptionWordsIsAnError) {
    TZvMySelectParser Parser;
    const EZvParserError E = ParseError(Parser, "SELECT HIGH_PRIORITY DISTINCT a FROM t");
    EXPECT_EQ(E.GetErrorType(), zvpeInvalidToken);
    EXPECT_EQ(E.GetToken(), "DISTINCT");
    EXPECT_EQ(ParseError(Parser, "SELECT DISTINCT ALL a FROM t").GetToken(), "ALL");
    EXPECT_EQ(ParseError(Parser, "SELECT STRAIGHT_JOIN").GetErrorType(), zvpeUnexpectedEnd);
}

// --- parser: LIMIT ---------------------------------------------------------------------------

TEST(ZvMySelectParser, LimitWithOneOrTwoNumbersStandsOnALineOfItsOwnAtTheEnd) {
    TZvMySelectParser Parser;
    EXPECT_EQ(Format(Parser, "SELECT a FROM t LIMIT 10"), "SELECT \r\n  a\r\nFROM\r\n  t\r\nLIMIT 10\r\n");
    EXPECT_EQ(Parser.GetMySQLOptions().GetLimitFirst(), "10");
    EXPECT_EQ(Parser.GetMySQLOptions().GetLimitSecond(), "");
    EXPECT_EQ(
        Format(Parser, "SELECT a FROM t WHERE a = 1 ORDER BY a DESC LIMIT 5,10"),
        "SELECT \r\n  a\r\nFROM\r\n  t\r\nWHERE\r\n  (a = 1)\r\nORDER BY\r\n  a DESC\r\nLIMIT 5, 10\r\n");
    EXPECT_EQ(Parser.GetMySQLOptions().GetLimitFirst(), "5");
    EXPECT_EQ(Parser.GetMySQLOptions().GetLimitSecond(), "10");
}

TEST(ZvMySelectParser, LimitFollowsEveryClauseAndKeepsNumbersBeyondThirtyTwoBits) {
    TZvMySelectParser Parser;
    for (const char* Text :
         {"SELECT a FROM t GROUP BY a LIMIT 1", "SELECT a FROM t GROUP BY a HAVING a > 1 LIMIT 1",
          "SELECT a FROM t WHERE a = 1 LIMIT 1", "SELECT a FROM t LIMIT 1;"}) {
        Parser.SetExpression(Text);
        EXPECT_EQ(Parser.GetMySQLOptions().GetLimitFirst(), "1") << Text;
    }
    EXPECT_EQ(Format(Parser, "SELECT a FROM t LIMIT 5, 18446744073709551615"),
              "SELECT \r\n  a\r\nFROM\r\n  t\r\nLIMIT 5, 18446744073709551615\r\n");
}

TEST(ZvMySelectParser, LimitWithoutItsNumbersOrWithMoreAfterItIsAnError) {
    TZvMySelectParser Parser;
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT").GetErrorType(), zvpeUnexpectedEnd);
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT 1,").GetErrorType(), zvpeUnexpectedEnd);
    const EZvParserError Name = ParseError(Parser, "SELECT a FROM t LIMIT n");
    EXPECT_EQ(Name.GetErrorType(), zvpeInvalidToken);
    EXPECT_EQ(Name.GetToken(), "n");
    EXPECT_EQ(Name.GetPosition(), 23);
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT 1, 2.5").GetToken(), "2.5");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT 1 2").GetToken(), "2");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t LIMIT 1 ORDER BY a").GetToken(), "ORDER");
    EXPECT_FALSE(Parser.GetValid());
    EXPECT_EQ(Parser.GetTableDefs().Count(), 0);
}

TEST(ZvMySelectParser, OptionTextsFollowTheKeywordCase) {
    TZvMySelectParser Parser;
    TZvScriptFormat Format;
    Format.SetKeywordsFormat(qfmLowerCase);
    Parser.SetScriptFormat(Format);
    Parser.SetExpression("SELECT DISTINCT SQL_BIG_RESULT a FROM t LIMIT 2, 3");
    EXPECT_EQ(Parser.GetExpression(),
              "select distinct sql_big_result \r\n  a\r\nfrom\r\n  t\r\nlimit 2, 3\r\n");
}

TEST(ZvMySelectParser, ClearEmptiesTheOptionsAndSettersCopy) {
    TZvMySelectParser Parser;
    Parser.SetExpression("SELECT DISTINCTROW HIGH_PRIORITY a FROM t LIMIT 4");
    TZvMySQLOptions Options;
    Options.SetLimitFirst("9");
    Parser.SetMySQLOptions(Options);
    Options.SetLimitFirst("8");
    EXPECT_EQ(Parser.GetMySQLOptions().GetLimitFirst(), "9");
    EXPECT_EQ(Parser.GetMySQLOptions().GetFilter(), myfoNone);
    Parser.Clear();
    EXPECT_EQ(Parser.GetMySQLOptions().GetLimitFirst(), "");
    EXPECT_EQ(Parser.GetExpression(), "");
}

TEST(ZvMySelectParser, AssignCopiesTheOptionsFromItsOwnKindOnly) {
    TZvMySelectParser Source;
    Source.SetExpression("SELECT ALL STRAIGHT_JOIN a FROM t LIMIT 3");
    TZvMySelectParser Copy;
    Copy.Assign(Source);
    EXPECT_EQ(Copy.GetExpression(), Source.GetExpression());
    EXPECT_EQ(Copy.GetMySQLOptions().GetFilter(), myfoAll);
    TZvSelectParser Generic;
    Generic.SetExpression("SELECT b FROM u");
    Copy.Assign(Generic);
    EXPECT_EQ(Copy.GetMySQLOptions().GetLimitFirst(), "3");
}

TEST(ZvMySelectParser, IdentifiersAreNeverCaseSensitive) {
    TZvMySelectParser Parser;
    EXPECT_FALSE(Parser.GetCaseSensitiveIdentifiers());
    Parser.SetCaseSensitiveIdentifiers(true);
    EXPECT_FALSE(Parser.GetCaseSensitiveIdentifiers());
}

TEST(ZvMySelectParser, AwkwardNamesAreWrittenInBackQuotesAndEscapedStringsStayAsWritten) {
    TZvMySelectParser Parser;
    EXPECT_EQ(Format(Parser,
                     "SELECT `my col`, `order`, t.`a.b` FROM `my db`.`t` t WHERE s = 'it\\'s' OR u = \"x\""),
              "SELECT \r\n  `my col`,\r\n  `order`,\r\n  t.`a.b`\r\nFROM\r\n  `my db`.t t\r\nWHERE\r\n"
              "  (s = 'it\\'s') OR \r\n  (u = \"x\")\r\n");
}

// --- zevrin ----------------------------------------------------------------------------------

TEST(ZvCliMySQL, DialectIsListedAndFormats) {
    const std::vector<std::string> Names = DialectNames();
    EXPECT_NE(std::find(Names.begin(), Names.end(), "mysql"), Names.end());
    const TRun R = RunTool({"format", "--dialect", "mysql"}, "select distinct a from t limit 1\n");
    EXPECT_EQ(R.Out, "SELECT DISTINCT \r\n  a\r\nFROM\r\n  t\r\nLIMIT 1\r\n");
}

TEST(ZvCliMySQL, ModelShowsTheFilterTheOptionWordsAndTheLimit) {
    const TRun R =
        RunTool({"model", "--dialect", "mysql"}, "select distinctrow sql_big_result a from t limit 2, 3");
    ASSERT_EQ(R.Code, 0) << R.Err;
    EXPECT_NE(
        R.Out.find(
            "\"options\": {\n    \"filter\": \"distinctrow\",\n    \"selectOptions\": [\n"
            "      \"SQL_BIG_RESULT\"\n    ],\n    \"limit\": [\n      \"2\",\n      \"3\"\n    ]\n  },"),
        std::string::npos)
        << R.Out;
    const TRun Plain = RunTool({"model", "--dialect", "mysql"}, "select a from t");
    EXPECT_NE(Plain.Out.find("\"filter\": \"none\",\n    \"selectOptions\": [],\n    \"limit\": []"),
              std::string::npos)
        << Plain.Out;
}
