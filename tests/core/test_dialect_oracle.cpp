// The Oracle dialect: its scanner's lists (with "SINGLE,ROW,FUNCTIONS" and without FETCH), the
// outer-join mark read as one token, FETCH FIRST found wherever a clause may begin, the operator
// list, and joins read from WHERE conditions and written back into the WHERE clause with the mark
// on the same side, plus its zevrin row.
#include <gtest/gtest.h>

#include <algorithm>

#include "ZvDialectTestSupport.h"
#include "dialects/ZvOracleDialect.h"

using namespace zv;
using namespace zv::test;

namespace {

// The one join of the statement's table Owner.
const TZvJoinDef& OnlyJoin(TZvSelectParser& Parser, const std::string& Owner) {
    const TZvTableDef* Table = Parser.GetTableDefs().FindByAlias(Owner);
    EXPECT_NE(Table, nullptr) << Owner;
    EXPECT_EQ(Table->GetJoinDefs().Count(), 1);
    return *Table->GetJoinDefs().Items(0);
}

int JoinCount(TZvSelectParser& Parser) {
    int Count = 0;
    for (int I = 0; I < Parser.GetTableDefs().Count(); ++I)
        Count += Parser.GetTableDefs().Items(I)->GetJoinDefs().Count();
    return Count;
}

// The WHERE clause of the generated statement, up to the next clause.
std::string WhereText(TZvSelectParser& Parser) {
    const std::string Text = Parser.GetExpression();
    const std::size_t Start = Text.find("WHERE\r\n");
    return Start == std::string::npos ? std::string() : Text.substr(Start);
}

} // namespace

// --- scanner -----------------------------------------------------------------------------------

TEST(ZvOracleSQLScanner, FunctionListHasItsEntriesWithSingleRowFunctionsAsThree) {
    TZvOracleSQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetFunctions().Items();
    EXPECT_EQ(Words.size(), 64u);
    const auto Single = std::find(Words.begin(), Words.end(), "SINGLE");
    ASSERT_NE(Single, Words.end());
    EXPECT_EQ(*(Single + 1), "ROW");
    EXPECT_EQ(*(Single + 2), "FUNCTIONS");
    EXPECT_EQ(Words.front(), "AVG");
    EXPECT_EQ(Words.back(), "TO_CHAR");
}

TEST(ZvOracleSQLScanner, KeywordListHasItsEntriesAndLacksFetch) {
    TZvOracleSQLScanner Scanner;
    const std::vector<std::string>& Words = Scanner.GetKeywords().Items();
    EXPECT_EQ(Words.size(), 490u);
    EXPECT_EQ(Words.front(), "ACCESS");
    EXPECT_EQ(Words.back(), "XID");
    EXPECT_FALSE(Scanner.IsKeyword("FETCH"));
    for (const char* Word : {"FIRST", "ROW", "ROWS", "ONLY", "CLOSED_CACHED_OPEN_"})
        EXPECT_TRUE(Scanner.IsKeyword(Word)) << Word;
}

TEST(ZvOracleSQLScanner, OperatorListsBooleansAndAggregates) {
    TZvOracleSQLScanner Scanner;
    EXPECT_EQ(Scanner.GetOperations().GetCommaText(), "+,-,*,/,||");
    EXPECT_EQ(Scanner.GetComplexOperators().GetCommaText(), "(+)");
    EXPECT_EQ(Scanner.GetCompareOperators().GetCommaText(), "=,!=,<,<=,>,>=");
    EXPECT_EQ(Scanner.GetJoinOperators().GetCommaText(), "=,!=,<,<=,>,>=");
    EXPECT_EQ(Scanner.GetBooleans(false), "False");
    EXPECT_EQ(Scanner.GetBooleans(true), "True");
    TZvOracleSelectParser Parser;
    EXPECT_EQ(Parser.GetAggregates().GetCommaText(), "AVG,COUNT,MAX,MIN,STDDEV,SUM,VARIANCE");
}

TEST(ZvOracleSQLScanner, TheOuterJoinMarkIsOneSpecialToken) {
    TZvOracleSQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "b.id(+) = a.id");
    ASSERT_EQ(T.size(), 8u);
    EXPECT_EQ(T[2].Text, "ID");
    EXPECT_EQ(T[3].Text, "(+)");
    EXPECT_EQ(T[3].Kinds, TTokenKinds{tkSpecial});
    EXPECT_EQ(T[4].Kinds, TTokenKinds{tkComparison});
}

TEST(ZvOracleSQLScanner, FetchIsAKeywordOnlyWhenFirstFollows) {
    TZvOracleSQLScanner Scanner;
    std::vector<TToken> T = Tokens(Scanner, "fetch first");
    ASSERT_EQ(T.size(), 2u);
    EXPECT_EQ(T[0].Kinds, TTokenKinds{tkKeyword});
    T = Tokens(Scanner, "fetch next");
    EXPECT_TRUE(T[0].Kinds.Contains(tkIdent));
    EXPECT_EQ(T[0].Text, "FETCH");
    T = Tokens(Scanner, "\"FETCH\" first");
    EXPECT_TRUE(T[0].Kinds.Contains(tkIdent));
    // A long run of FETCH is read one look-ahead each, without recursion.
    std::string Run;
    for (int I = 0; I < 20000; ++I)
        Run += "FETCH ";
    EXPECT_EQ(Tokens(Scanner, Run + "FIRST").size(), 20001u);
}

TEST(ZvOracleSQLScanner, NamesFoldToUpperCaseAndNeedQuotesByTheFoldingRule) {
    TZvOracleSQLScanner Scanner;
    const std::vector<TToken> T = Tokens(Scanner, "orders \"lower\" a$b");
    ASSERT_EQ(T.size(), 3u);
    EXPECT_EQ(T[0].Text, "ORDERS");
    EXPECT_EQ(T[1].Text, "lower");
    EXPECT_EQ(T[2].Text, "A$B");
    EXPECT_FALSE(Scanner.NeedQuotes("ORDERS"));
    EXPECT_FALSE(Scanner.NeedQuotes("FETCH"));
    EXPECT_TRUE(Scanner.NeedQuotes("ROW"));    // keyword and function
    EXPECT_TRUE(Scanner.NeedQuotes("lower"));
    EXPECT_FALSE(Scanner.NeedQuotes("\"lower\""));
}

// --- parser: operators and FETCH FIRST ------------------------------------------------------------

TEST(ZvOracleSelectParser, OperatorsUseNotEqualsAndAddAnyAllExists) {
    TZvOracleSelectParser Parser;
    std::vector<std::string> C;
    for (int I = 0; I < Parser.GetOperators().Count(); ++I)
        C.push_back(Parser.GetOperators().Items(I)->GetCaption());
    EXPECT_EQ(C, (std::vector<std::string>{"=", "!=", "<", "<=", ">", ">=", "LIKE", "NOT LIKE", "IN",
                                           "NOT IN", "BETWEEN", "NOT BETWEEN", "IS NULL", "IS NOT NULL",
                                           "ANY", "ALL", "EXISTS"}));
    const TZvOperator* Between = Parser.GetOperators().FindByCaption("BETWEEN");
    EXPECT_EQ(Between->GetCount(), 2);
    EXPECT_EQ(Between->GetRelate(), "AND");
    EXPECT_TRUE(Parser.GetOperators().FindByCaption("IN")->GetCommaList());
    EXPECT_EQ(Parser.GetOperators().FindByCaption("IS NULL")->GetCount(), 0);
    Parser.SetExpression("SELECT a.x FROM a WHERE a.x ANY (SELECT b.y FROM b)");
    EXPECT_EQ(Parser.GetWhereItems().Items(0)->GetOperatorCaption(), "ANY");
}

TEST(ZvOracleSelectParser, FetchFirstOneRowOnlyIsGeneratedWithThePlural) {
    TZvOracleSelectParser Parser;
    EXPECT_EQ(Format(Parser, "SELECT a FROM t FETCH FIRST 1 ROW ONLY"),
              "SELECT \r\n  A\r\nFROM\r\n  T\r\nFETCH FIRST 1 ROWS ONLY\r\n");
    EXPECT_EQ(Parser.GetOracleOptions().GetFetchFirst(), 1);
}

TEST(ZvOracleSelectParser, FetchFirstBeginsTheTrailingClauseAfterEveryClauseAndIsNeverAnAlias) {
    TZvOracleSelectParser Parser;
    for (const char* Text : {"SELECT a FROM t FETCH FIRST 2 ROWS ONLY",
                             "SELECT a FROM t, u WHERE t.a = 1 FETCH FIRST 2 ROWS ONLY",
                             "SELECT a FROM t GROUP BY a FETCH FIRST 2 ROWS ONLY",
                             "SELECT a FROM t GROUP BY a HAVING COUNT(a) > 1 FETCH FIRST 2 ROWS ONLY",
                             "SELECT a FROM t ORDER BY a FETCH FIRST 2 ROWS ONLY"}) {
        Parser.SetExpression(Text);
        EXPECT_EQ(Parser.GetOracleOptions().GetFetchFirst(), 2) << Text;
        EXPECT_TRUE(Parser.GetTableDefs().Items(0)->GetAlias().empty()) << Text;
    }
    // FETCH without FIRST after it is a name like any other.
    Parser.SetExpression("SELECT fetch FROM t fetch");
    EXPECT_EQ(Parser.GetTableDefs().FindByAlias("FETCH")->GetName(), "T");
}

TEST(ZvOracleSelectParser, FetchFirstErrors) {
    TZvOracleSelectParser Parser;
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t FETCH FIRST 0 ROWS ONLY").GetToken(), "0");
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t FETCH FIRST 1 ROWS").GetErrorType(), zvpeUnexpectedEnd);
    EXPECT_EQ(ParseError(Parser, "SELECT a FROM t FETCH FIRST 1 ROWS ONLY x").GetToken(), "X");
}

// --- parser: joins -------------------------------------------------------------------------------

TEST(ZvOracleSelectParser, MarkOnTheRightFieldIsALeftOuterJoinWrittenBackWithTheMarkOnTheSameSide) {
    TZvOracleSelectParser Parser;
    Parser.SetExpression("SELECT a.x FROM a, b WHERE a.id = b.id (+)");
    const TZvJoinDef& Join = OnlyJoin(Parser, "A");
    EXPECT_EQ(Join.GetKind(), zvjLOuterJoin);
    EXPECT_EQ(Join.GetLeftField(), "ID");
    EXPECT_EQ(Join.GetTableAlias(), "B");
    EXPECT_EQ(Join.GetRightField(), "ID");
    EXPECT_EQ(Join.GetOperator(), "=");
    EXPECT_EQ(Parser.GetWhereItems().Count(), 0);
    EXPECT_EQ(WhereText(Parser), "WHERE\r\n  A.ID = B.ID (+)\r\n");
}

TEST(ZvOracleSelectParser, MarkOnTheLeftFieldIsARightOuterJoinOfTheLeftHandTable) {
    TZvOracleSelectParser Parser;
    Parser.SetExpression("SELECT a.x FROM a, b WHERE a.id(+) = b.refno");
    const TZvJoinDef& Join = OnlyJoin(Parser, "A");
    EXPECT_EQ(Join.GetKind(), zvjROuterJoin);
    EXPECT_EQ(Join.GetRightField(), "REFNO");
    EXPECT_EQ(WhereText(Parser), "WHERE\r\n  A.ID (+) = B.REFNO\r\n");
}

TEST(ZvOracleSelectParser, AnUnmarkedConditionBetweenTwoTablesIsAnInnerJoin) {
    TZvOracleSelectParser Parser;
    Parser.SetExpression("SELECT a.x FROM a, b WHERE a.id != b.id AND a.z > 1 AND a.y = a.w");
    const TZvJoinDef& Join = OnlyJoin(Parser, "A");
    EXPECT_EQ(Join.GetKind(), zvjInnerJoin);
    EXPECT_EQ(Join.GetOperator(), "!=");
    // A comparison of a constant and one within a table stay conditions.
    EXPECT_EQ(Parser.GetWhereItems().Count(), 2);
    EXPECT_EQ(WhereText(Parser), "WHERE\r\n  A.ID != B.ID AND\r\n  (A.Z > 1) AND \r\n  (A.Y = A.W)\r\n");
}

TEST(ZvOracleSelectParser, JoinsFromOnClausesAreWrittenInWhereWithTheMark) {
    TZvOracleSelectParser Parser;
    EXPECT_TRUE(Parser.IsOracleJoins());
    Parser.SetExpression("SELECT o.id FROM orders o LEFT JOIN customers c ON c.id = o.cust");
    EXPECT_EQ(OnlyJoin(Parser, "O").GetKind(), zvjLOuterJoin);
    const std::string Text = Parser.GetExpression();
    EXPECT_EQ(Text, "SELECT \r\n  O.ID\r\nFROM\r\n  ORDERS O,\r\n  CUSTOMERS C\r\n"
                    "WHERE\r\n  O.CUST = C.ID (+)\r\n");
    // The text reads back into the same join.
    Parser.SetExpression(Text);
    EXPECT_EQ(OnlyJoin(Parser, "O").GetKind(), zvjLOuterJoin);
    EXPECT_EQ(Parser.GetExpression(), Text);
    Parser.SetExpression("SELECT o.id FROM orders o RIGHT OUTER JOIN customers c ON o.cust = c.id");
    EXPECT_EQ(WhereText(Parser), "WHERE\r\n  O.CUST (+) = C.ID\r\n");
    Parser.SetExpression("SELECT o.id FROM orders o INNER JOIN customers c ON o.cust = c.id WHERE o.n = 1");
    EXPECT_EQ(WhereText(Parser), "WHERE\r\n  O.CUST = C.ID AND\r\n  (O.N = 1)\r\n");
}

TEST(ZvOracleSelectParser, AFullOuterJoinIsInadmissible) {
    TZvOracleSelectParser Parser;
    EXPECT_FALSE(Parser.IsFullOuterJoinSupported());
    const EZvParserError E = ParseError(Parser, "SELECT a.x FROM a FULL OUTER JOIN b ON a.id = b.id");
    EXPECT_EQ(E.GetErrorType(), zvpeInadmissibleJoin);
    EXPECT_EQ(ParseError(Parser, "SELECT a.x FROM a FULL JOIN b ON a.id = b.id").GetErrorType(),
              zvpeInadmissibleJoin);
}

TEST(ZvOracleSelectParser, MarksThatCannotBeReadAsJoinsAreInadmissible) {
    TZvOracleSelectParser Parser;
    for (const char* Text : {"SELECT a.x FROM a, b WHERE a.id = b.id (+) OR a.z = 1",
                             "SELECT a.x FROM a, b WHERE a.z = 1 OR (a.q = 2 AND a.id = b.id (+))",
                             "SELECT a.x FROM a, b WHERE NOT a.id = b.id (+)",
                             "SELECT a.x FROM a, b WHERE a.id (+) = b.id (+)",
                             "SELECT a.x FROM a WHERE a.id (+) = 1",
                             "SELECT a.x FROM a WHERE a.id = a.up (+)",
                             "SELECT a.x FROM a, b WHERE a.id LIKE b.id (+)",
                             "SELECT a.x FROM a, b GROUP BY a.x HAVING a.x = b.y (+)"})
        EXPECT_EQ(ParseError(Parser, Text).GetErrorType(), zvpeInadmissibleJoin) << Text;
}

TEST(ZvOracleSelectParser, ConditionsFollowTheJoinsAndAnOrTreeIsBracketedAsAWhole) {
    TZvOracleSelectParser Parser;
    Parser.SetExpression("SELECT a.x FROM a, b WHERE a.z = 1 OR a.w = 2");
    EXPECT_EQ(JoinCount(Parser), 0);
    Parser.GetTableDefs().FindByAlias("A")->GetJoinDefs().Add()->SetTableAlias("B");
    TZvJoinDef& Join = *Parser.GetTableDefs().FindByAlias("A")->GetJoinDefs().Items(0);
    Join.SetLeftField("ID");
    Join.SetRightField("AID");
    EXPECT_EQ(WhereText(Parser), "WHERE\r\n  A.ID = B.AID AND\r\n  ((A.Z = 1) OR \r\n  (A.W = 2))\r\n");
    // Read back, the bracketed OR stays one condition beside the join.
    Parser.SetExpression(Parser.GetExpression());
    EXPECT_EQ(JoinCount(Parser), 1);
    EXPECT_EQ(Parser.GetWhereItems().Count(), 1);
    EXPECT_EQ(Parser.GetWhereItems().Items(0)->GetSubItems().GetFilter(), cfAny);
}

TEST(ZvOracleSelectParser, SeveralJoinsStandOneALineInTableOrder) {
    TZvOracleSelectParser Parser;
    const std::string Text =
        Format(Parser, "SELECT a.x FROM a, b, c WHERE b.k = c.k (+) AND a.id (+) = b.id AND a.id = b.id (+)");
    EXPECT_EQ(WhereText(Parser),
              "WHERE\r\n  A.ID (+) = B.ID AND\r\n  A.ID = B.ID (+) AND\r\n  B.K = C.K (+)\r\n");
    EXPECT_EQ(Format(Parser, Text), Text);
}

// --- model classes -------------------------------------------------------------------------------

TEST(ZvOracleJoinDef, TablesOfTheDialectHoldMarkedJoinsWrittenWithoutOn) {
    TZvOracleSelectParser Parser;
    Parser.SetExpression("SELECT a.x FROM a, b b1");
    TZvTableDef* A = Parser.GetTableDefs().FindByAlias("A");
    ASSERT_NE(dynamic_cast<TZvOracleTableDef*>(A), nullptr);
    TZvJoinDef* Join = A->GetJoinDefs().Add();
    ASSERT_NE(dynamic_cast<TZvOracleJoinDef*>(Join), nullptr);
    EXPECT_FALSE(Join->GetUseCondition());
    Join->SetLeftField("ID");
    Join->SetRightField("AID");
    // Without a target there is nothing to write.
    EXPECT_EQ(Join->GetScript(), "");
    Join->SetTableAlias("B1");
    EXPECT_EQ(Join->GetScript(), "A.ID = B1.AID");
    Join->SetKind(zvjLOuterJoin);
    EXPECT_EQ(Join->GetScript(), "A.ID = B1.AID (+)");
    Join->SetKind(zvjROuterJoin);
    Join->SetOperator("<=");
    EXPECT_EQ(Join->GetScript(), "A.ID (+) <= B1.AID");
    // A full outer join has no such form; both marks make the server refuse it rather than read
    // a join of another meaning, and this reader refuses it too.
    Join->SetKind(zvjFOuterJoin);
    EXPECT_EQ(Join->GetScript(), "A.ID (+) <= B1.AID (+)");
    EXPECT_EQ(ParseError(Parser, Parser.GetExpression()).GetErrorType(), zvpeInadmissibleJoin);
}

TEST(ZvOracleJoinDef, QuotedNamesKeepTheirQuotesAroundTheMark) {
    TZvOracleSelectParser Parser;
    const std::string Text =
        Format(Parser, "SELECT \"a t\".x FROM \"a t\", b WHERE \"a t\".\"id\" = b.id (+)");
    EXPECT_EQ(WhereText(Parser), "WHERE\r\n  \"a t\".\"id\" = B.ID (+)\r\n");
    EXPECT_EQ(Format(Parser, Text), Text);
}

TEST(ZvOracleSelectParser, OptionsAreCopiedAndClearedWithTheModel) {
    TZvOracleSelectParser Parser;
    Parser.SetExpression("SELECT a FROM t FETCH FIRST 9 ROWS ONLY");
    TZvOracleSelectParser Copy;
    Copy.Assign(Parser);
    EXPECT_EQ(Copy.GetOracleOptions().GetFetchFirst(), 9);
    Copy.Clear();
    EXPECT_EQ(Copy.GetOracleOptions().GetFetchFirst(), 0);
    TZvOracleSQLOptions Options;
    Options.SetFetchFirst(2);
    Copy.SetOracleOptions(Options);
    EXPECT_EQ(Copy.GetOracleOptions().GetFetchFirst(), 2);
}

// --- zevrin ------------------------------------------------------------------------------------

TEST(ZvCliOracle, DialectIsListedAndTheModelShowsFetchFirstAndTheJoins) {
    const std::vector<std::string> Names = DialectNames();
    EXPECT_NE(std::find(Names.begin(), Names.end(), "oracle"), Names.end());
    const TRun R = RunTool({"model", "--dialect", "oracle"},
                           "SELECT a.x FROM a, b WHERE a.id = b.id (+) FETCH FIRST 3 ROWS ONLY");
    EXPECT_EQ(R.Code, 0) << R.Err;
    EXPECT_NE(R.Out.find("\"options\": {\n    \"fetchFirst\": 3\n  }"), std::string::npos) << R.Out;
    EXPECT_NE(R.Out.find("\"kind\": \"left outer\""), std::string::npos) << R.Out;
}
