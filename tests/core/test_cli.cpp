// The zevrin command-line tool: options, input normalisation, exit codes and outputs.
#include <gtest/gtest.h>

#include <sstream>

#include "ZvCli.h"
#include "ZvDialectTestSupport.h"
#include "ZvParser.h"

using namespace zv;

using test::RunTool;
using test::UsageErrorOf;
using TResult = test::TRun;

TEST(ZvCli, FormatWritesTheGeneratedTextAndNothingElse) {
    const TResult R = RunTool({"format"}, "select a.x from a\n");
    EXPECT_EQ(R.Code, 0);
    EXPECT_EQ(R.Out, "SELECT \r\n  a.x\r\nFROM\r\n  a\r\n");
    EXPECT_EQ(R.Err, "");
}

TEST(ZvCli, ParseErrorPrintsTheMessageAloneAndExitsOne) {
    const TResult R = RunTool({"format"}, "SELECT A FROM T FOR UPDATE");
    EXPECT_EQ(R.Code, 1);
    EXPECT_EQ(R.Out, "");
    EXPECT_EQ(R.Err, "Invalid token 'FOR' at position 17 of line 1.\n");
}

TEST(ZvCli, LineFeedsBecomeLineEndsSoErrorsNameTheRightLine) {
    const TResult R = RunTool({"format"}, "SELECT A\nFROM T\nFOR UPDATE\n");
    EXPECT_EQ(R.Err, "Invalid token 'FOR' at position 1 of line 3.\n");
}

TEST(ZvCli, LinesFormatsEachNonEmptyLine) {
    const TResult R = RunTool({"format", "--lines"}, "SELECT A FROM T\n\nSELECT\r\nSELECT B FROM U\n");
    EXPECT_EQ(R.Code, 0);
    EXPECT_EQ(R.Out, "SELECT \r\n  A\r\nFROM\r\n  T\r\n\n"
                     "error: Unexpected end of statement.\n"
                     "SELECT \r\n  B\r\nFROM\r\n  U\r\n\n");
}

TEST(ZvCli, LinesOutputOfManyBlocksComesOutWholeAndInOrder) {
    std::string Input;
    std::string Expected;
    for (int I = 0; I < 6000; ++I) {
        const std::string Table = "T" + std::to_string(I);
        Input += "SELECT A FROM " + Table + "\n";
        Expected += "SELECT \r\n  A\r\nFROM\r\n  " + Table + "\r\n\n";
        if (I % 1000 == 999) {
            Input += "SELECT\n";
            Expected += "error: Unexpected end of statement.\n";
        }
    }
    ASSERT_GT(Expected.size(), 2u << 16) << "the output must span several of the tool's write blocks";
    const TResult R = RunTool({"format", "--lines"}, Input);
    EXPECT_EQ(R.Code, 0);
    EXPECT_EQ(R.Out, Expected);
}

TEST(ZvCli, CaseOptionsReachTheGenerator) {
    const TResult R = RunTool({"format", "--keywords", "lower", "--functions=upper"}, "SELECT count(*) FROM T");
    EXPECT_EQ(R.Out, "select \r\n  COUNT(*) as FIELD_1\r\nfrom\r\n  T\r\n");
}

TEST(ZvCli, BracketAndQuotingOptionsReachTheGenerator) {
    const TResult R = RunTool({"format", "--no-always-bracket", "--no-quote-identifiers"},
                          "SELECT \"a b\".x FROM \"a b\" WHERE \"a b\".x = 1 AND \"a b\".y = 2");
    EXPECT_EQ(R.Out, "SELECT \r\n  a b.x\r\nFROM\r\n  a b\r\nWHERE\r\n  a b.x = 1 AND \r\n  a b.y = 2\r\n");
}

TEST(ZvCli, ModelPrintsTheParsedModelAsJson) {
    const TResult R = RunTool({"model"}, "SELECT DISTINCT O.ID FROM ORDERS O JOIN C ON O.CID = C.ID "
                                     "WHERE O.X = 1 GROUP BY O.ID ORDER BY O.ID DESC");
    ASSERT_EQ(R.Code, 0) << R.Err;
    for (const char* Part :
         {"\"distinct\": true", "\"name\": \"ORDERS\"", "\"alias\": \"O\"", "\"type\": \"table\"",
          "\"kind\": \"identifier\"", "\"leftField\": \"CID\"", "\"table\": \"C\"", "\"filter\": \"all\"",
          "\"operator\": \"=\"", "\"groupBy\": [\n    \"O.ID\"\n  ]", "\"direction\": \"desc\""}) {
        EXPECT_NE(R.Out.find(Part), std::string::npos) << Part << "\n" << R.Out;
    }
}

TEST(ZvCli, ModelErrorIsAJsonObjectWithEveryDetail) {
    const TResult R = RunTool({"model"}, "SELECT A FROM T WHERE A = 'x");
    EXPECT_EQ(R.Code, 1);
    EXPECT_EQ(R.Out, "{\n  \"error\": {\n    \"type\": 3,\n    \"message\": \"Unterminated string.\",\n"
                     "    \"line\": 1,\n    \"position\": 28,\n    \"token\": \"x\"\n  }\n}\n");
}

TEST(ZvCli, ModelOfInvalidUtf8IsStillJson) {
    const TResult R = RunTool({"model"}, "SELECT \"\xff\" FROM T");
    EXPECT_EQ(R.Code, 0);
    EXPECT_NE(R.Out.find("\xEF\xBF\xBD"), std::string::npos);
}

TEST(ZvCli, UsageErrorsSayWhatIsWrong) {
    EXPECT_EQ(UsageErrorOf({}), "no command given (format, model)");
    EXPECT_EQ(UsageErrorOf({"render"}), "unknown command 'render' (format, model)");
    EXPECT_EQ(UsageErrorOf({"format", "--dialect", "cobol"}), "unknown dialect 'cobol'");
    EXPECT_EQ(UsageErrorOf({"format", "--dialect"}), "option --dialect needs a value");
    EXPECT_EQ(UsageErrorOf({"format", "--keywords", "shout"}),
              "option --keywords: unknown case mode 'shout' (asis, upper, lower, firstupper)");
    EXPECT_EQ(UsageErrorOf({"format", "--frobnicate"}), "unknown option '--frobnicate'");
    EXPECT_EQ(UsageErrorOf({"format", "a.sql", "b.sql"}), "more than one input file ('a.sql', 'b.sql')");
    EXPECT_EQ(UsageErrorOf({"model", "--lines"}), "--lines goes with the format command");
}

TEST(ZvCli, HelpNeedsNoCommandAndNamesEveryOption) {
    EXPECT_TRUE(ParseCliArguments({"--help"}).Help);
    const std::string Usage = CliUsage();
    for (const char* Option : {"--dialect", "--keywords", "--functions", "--no-always-bracket",
                               "--no-quote-identifiers", "--lines", "--help"})
        EXPECT_NE(Usage.find(Option), std::string::npos) << Option;
}
