// Statement generation: the SELECT list by position, the FROM clause with its join chains, the
// GROUP BY list with its regrouping, the ORDER BY list, and the statement as a whole in every
// keyword case, byte for byte with its "\r\n" line breaks.
#include <gtest/gtest.h>

#include "ZvParser.h"

#include <string>
#include <vector>

using namespace zv;

namespace {

class TConstJoinParser : public TZvSelectParser {
public:
    bool IsConstInJoin() override { return true; }
};

// Builds a statement in code on a parser of type P.
template <class P = TZvSelectParser>
struct TStatement {
    P Parser;
    TZvTableDefs& Tables = Parser.GetTableDefs();

    TZvTableDef* Table(const std::string& Name, const std::string& Alias = "") {
        TZvTableDef* T = Tables.Add();
        T->SetName(Name);
        if (!Alias.empty())
            T->SetAlias(Alias);
        return T;
    }
    // A column without alias, as the worked example has them.
    static TZvFieldDef* Column(TZvTableDef* T, const std::string& Name, std::uint8_t Usage = 2) {
        TZvFieldDef* F = T->GetFieldDefs().Add();
        F->SetName(Name);
        F->SetKind(fkIdentifier);
        F->SetUsage(Usage);
        return F;
    }
    // Function(Argument) in Table's field list, Argument a column of that table; an aggregate when
    // Function is one.
    static TZvFieldDef* Call(TZvTableDef* T, const std::string& Function, const std::string& Argument) {
        TZvFieldDef* F = T->GetFieldDefs().Add();
        F->SetName(Function);
        TZvFunctionDef* A = F->GetArguments().Add();
        A->SetName(Argument);
        A->SetKind(fkIdentifier);
        F->SetKind(fkFunction);
        return F;
    }
    static void Join(TZvTableDef* Owner, const std::string& Left, const std::string& Target,
                     const std::string& Right) {
        TZvJoinDef* J = Owner->GetJoinDefs().Add();
        J->SetLeftField(Left);
        J->SetTableAlias(Target);
        J->SetRightField(Right);
    }
    TZvCriterion* Where(const std::string& Left, const std::string& Caption, const std::string& Right) {
        TZvCriterion* C = Parser.GetWhereItems().Add();
        C->GetLeftSide().SetName(Left);
        C->GetLeftSide().SetKind(fkIdentifier);
        C->SetOperatorCaption(Caption);
        TZvFunctionDef* R = C->GetRightSide().Add();
        R->SetName(Right);
        R->SetKind(fkInteger);
        return C;
    }
    // Function(Argument) Caption Right, Argument a qualified column.
    TZvCriterion* Having(const std::string& Function, const std::string& Argument, const std::string& Caption,
                         const std::string& Right) {
        TZvCriterion* C = Parser.GetHavingItems().Add();
        C->GetLeftSide().SetName(Function);
        TZvFunctionDef* A = C->GetLeftSide().GetArguments().Add();
        A->SetName(Argument);
        A->SetKind(fkIdentifier);
        C->GetLeftSide().SetKind(fkFunction);
        C->SetOperatorCaption(Caption);
        TZvFunctionDef* R = C->GetRightSide().Add();
        R->SetName(Right);
        R->SetKind(fkInteger);
        return C;
    }
    std::vector<std::string> GroupBy() {
        std::vector<std::string> R;
        for (int I = 0; I < Parser.GetGroupByItems().Count(); ++I)
            R.push_back(Parser.GetGroupByItems()[I]);
        return R;
    }
};

// The model of the worked example: ORDERS O joined to CUSTOMERS C, O.ID and C.NAME selected,
// WHERE O.AMOUNT > 100.
struct TWorkedExample : TStatement<> {
    TZvTableDef* O = Table("ORDERS", "O");
    TZvTableDef* C = Table("CUSTOMERS", "C");
    TWorkedExample() {
        Join(O, "CUST_ID", "C", "ID");
        Column(O, "ID");
        Column(C, "NAME");
        Where("O.AMOUNT", ">", "100");
    }
};

} // namespace

// ---- the worked example -------------------------------------------------------------------------

TEST(TZvSelectParser, TheWorkedExampleIsWrittenByteForByte) {
    TWorkedExample S;
    EXPECT_EQ(S.Parser.GetExpression(), "SELECT \r\n"
                                        "  O.ID,\r\n"
                                        "  C.NAME\r\n"
                                        "FROM\r\n"
                                        "  ORDERS O\r\n"
                                        "  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)\r\n"
                                        "WHERE\r\n"
                                        "  (O.AMOUNT > 100)\r\n");
}

TEST(TZvSelectParser, TheWorkedExampleInEveryKeywordCase) {
    const struct {
        TZvFormatMode Mode;
        const char* Text;
    } Rows[] = {
        {qfmUpperCase, "SELECT \r\n  O.ID,\r\n  C.NAME\r\nFROM\r\n  ORDERS O\r\n"
                       "  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)\r\nWHERE\r\n  (O.AMOUNT > 100)\r\n"},
        {qfmLowerCase, "select \r\n  O.ID,\r\n  C.NAME\r\nfrom\r\n  ORDERS O\r\n"
                       "  inner join CUSTOMERS C on (O.CUST_ID = C.ID)\r\nwhere\r\n  (O.AMOUNT > 100)\r\n"},
        {qfmFirstUpper, "Select \r\n  O.ID,\r\n  C.NAME\r\nFrom\r\n  ORDERS O\r\n"
                        "  Inner Join CUSTOMERS C On (O.CUST_ID = C.ID)\r\nWhere\r\n  (O.AMOUNT > 100)\r\n"},
    };
    for (const auto& Row : Rows) {
        TWorkedExample S;
        S.Parser.GetScriptFormat().SetKeywordsFormat(Row.Mode);
        EXPECT_EQ(S.Parser.GetExpression(), Row.Text) << "mode " << int(Row.Mode);
    }
}

TEST(TZvSelectParser, DistinctFollowsSelectWithItsOwnBlank) {
    TWorkedExample S;
    S.Parser.SetDistinct(true);
    S.Parser.GetScriptFormat().SetKeywordsFormat(qfmLowerCase);
    EXPECT_EQ(S.Parser.GetExpression().substr(0, 27), "select distinct \r\n  O.ID,\r\n");
}

TEST(TZvSelectParser, EveryClauseFollowsInItsPlace) {
    TWorkedExample S;
    S.Call(S.O, "SUM", "AMOUNT");
    S.Having("SUM", "O.AMOUNT", ">", "1000");
    S.Parser.GetOrderByItems().AddOrdered("C.NAME", okDesc);
    EXPECT_EQ(S.Parser.GetExpression(), "SELECT \r\n"
                                        "  O.ID,\r\n"
                                        "  C.NAME,\r\n"
                                        "  SUM(O.AMOUNT) AS FIELD_1\r\n"
                                        "FROM\r\n"
                                        "  ORDERS O\r\n"
                                        "  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)\r\n"
                                        "WHERE\r\n"
                                        "  (O.AMOUNT > 100)\r\n"
                                        "GROUP BY\r\n"
                                        "  O.ID,\r\n"
                                        "  C.NAME\r\n"
                                        "HAVING\r\n"
                                        "  (SUM(O.AMOUNT) > 1000)\r\n"
                                        "ORDER BY\r\n"
                                        "  C.NAME DESC\r\n");
}

TEST(TZvSelectParser, AppendingTheStatementAddsWhatGetExpressionReturns) {
    TWorkedExample S;
    S.Call(S.O, "SUM", "AMOUNT");
    S.Parser.GetOrderByItems().AddOrdered("C.NAME", okDesc);
    const std::string Whole = S.Parser.GetExpression();
    std::string Out = "before\n";
    S.Parser.AppendExpression(Out);
    EXPECT_EQ(Out, "before\n" + Whole);
    // Appended twice, the regrouped GROUP BY list is written alike both times.
    S.Parser.AppendExpression(Out);
    EXPECT_EQ(Out, "before\n" + Whole + Whole);
}

TEST(TZvSelectParser, AppendingAStatementWithoutTablesLeavesTheBufferAsItWas) {
    TZvSelectParser Parser;
    EXPECT_EQ(Parser.GetExpression(), "");
    std::string Out = "kept";
    Parser.AppendExpression(Out);
    EXPECT_EQ(Out, "kept");
}

// ---- SELECT list and FROM clause --------------------------------------------------------------------

TEST(TZvTableDefs, WithoutFieldsTheStatementSelectsEverything) {
    TStatement<> S;
    S.Table("ORDERS", "O");
    S.Table("CUSTOMERS");
    EXPECT_EQ(S.Parser.GetExpression(), "SELECT *\r\nFROM\r\n  ORDERS O,\r\n  CUSTOMERS\r\n");
}

TEST(TZvTableDefs, WithoutTablesTheStatementIsEmptyWhateverWhereHolds) {
    TStatement<> S;
    S.Where("O.AMOUNT", ">", "100");
    S.Parser.GetOrderByItems().Add("X");
    EXPECT_EQ(S.Tables.GetScript(), "");
    EXPECT_EQ(S.Parser.GetExpression(), "");
}

TEST(TZvTableDefs, FieldsAreWrittenInSelectListOrderAcrossTables) {
    TStatement<> S;
    TZvTableDef* A = S.Table("A");
    TZvTableDef* B = S.Table("B");
    S.Column(A, "X");
    S.Column(B, "Y");
    TZvFieldDef* Z = S.Column(A, "Z");
    Z->SetAbsIndex(0);
    EXPECT_EQ(S.Tables.GetScript(), "\r\n  A.Z,\r\n  A.X,\r\n  B.Y\r\nFROM\r\n  A,\r\n  B\r\n");
}

TEST(TZvTableDefs, FieldsLeftOutOfTheSelectListLeaveNoSeparator) {
    for (std::uint8_t Hidden : {std::uint8_t{1}, std::uint8_t{3}}) {
        TStatement<> S;
        TZvTableDef* A = S.Table("A");
        S.Column(A, "X", Hidden);
        S.Column(A, "Y", 0);
        S.Column(A, "Z", Hidden);
        S.Column(A, "W");
        S.Column(A, "V", Hidden);
        EXPECT_EQ(S.Tables.GetScript(), "\r\n  A.Y,\r\n  A.W\r\nFROM\r\n  A\r\n") << int(Hidden);
    }
}

TEST(TZvTableDefs, OnlyHiddenFieldsSelectEverything) {
    TStatement<> S;
    S.Column(S.Table("A"), "X", 1);
    EXPECT_EQ(S.Parser.GetExpression(), "SELECT *\r\nFROM\r\n  A\r\n");
}

TEST(TZvTableDefs, TheHolderOfUnqualifiedExpressionsIsNotAFromEntry) {
    TStatement<> S;
    TZvTableDef* Holder = S.Table("");
    TZvFieldDef* One = Holder->GetFieldDefs().Add();
    One->SetName("1");
    One->SetKind(fkInteger);
    S.Column(S.Table("T"), "ID");
    EXPECT_EQ(S.Parser.GetExpression(), "SELECT \r\n  1 AS FIELD_1,\r\n  T.ID\r\nFROM\r\n  T\r\n");
}

TEST(TZvTableDefs, FieldsWithoutANamedTableHaveNoFromClause) {
    TStatement<> S;
    TZvFieldDef* One = S.Table("")->GetFieldDefs().Add();
    One->SetName("1");
    One->SetKind(fkInteger);
    EXPECT_EQ(S.Parser.GetExpression(), "SELECT \r\n  1 AS FIELD_1");
}

TEST(TZvTableDefs, AJoinedTableIsWrittenOnlyInsideTheChainOfTheTableJoiningIt) {
    TStatement<> S;
    S.Table("CUSTOMERS", "C");
    TZvTableDef* O = S.Table("ORDERS", "O");
    S.Table("REGIONS", "R");
    S.Join(O, "CUST_ID", "C", "ID");
    EXPECT_EQ(S.Tables.GetScript(),
              "*\r\nFROM\r\n  ORDERS O\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID),\r\n"
              "  REGIONS R\r\n");
}

TEST(TZvTableDefs, WithoutParserTheFromKeywordIsWrittenAsItStands) {
    TZvTableDefs Tables(nullptr);
    TZvTableDef* T = Tables.Add();
    T->SetName("ORDERS");
    T->SetAlias("O");
    TZvFieldDef* F = T->GetFieldDefs().Add();
    F->SetName("ID");
    F->SetKind(fkIdentifier);
    EXPECT_EQ(Tables.GetScript(), "\r\n  O.ID\r\nFROM\r\n  ORDERS O\r\n");
}

TEST(TZvTableDefs, ConstantJoinsOfAllTablesStartTheChainAtTheFirstNamedTable) {
    TStatement<TConstJoinParser> S;
    TZvTableDef* A = S.Table("A");
    TZvTableDef* B = S.Table("B");
    S.Join(A, "ID", "B", "AID");
    S.Join(B, "AID", "A", "ID");
    S.Column(A, "ID");
    EXPECT_EQ(S.Parser.GetExpression(),
              "SELECT \r\n  A.ID\r\nFROM\r\n  A\r\n  INNER JOIN B ON (A.ID = B.AID)\r\n"
              "  INNER JOIN A ON (B.AID = A.ID)\r\n");
}

TEST(TZvTableDefs, AnIncompleteJoinDoesNotOpenALineForLaterConditions) {
    TStatement<> S;
    TZvTableDef* O = S.Table("ORDERS", "O");
    S.Table("CUSTOMERS", "C");
    S.Join(O, "", "C", "ID");
    S.Join(O, "CUST_ID", "C", "ID");
    S.Join(O, "REGION", "C", " ");
    EXPECT_EQ(S.Tables.GetScript(),
              "*\r\nFROM\r\n  ORDERS O\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)\r\n");
}

// ---- GROUP BY -----------------------------------------------------------------------------------

TEST(TZvGroupByItems, AnAggregateWithAPlainColumnRegroupsByTheColumn) {
    TWorkedExample S;
    S.O->GetFieldDefs().Clear();
    S.Call(S.O, "COUNT", "ID");
    S.Parser.GetGroupByItems().Add("O.STATUS");
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "GROUP BY\r\n  C.NAME\r\n");
    EXPECT_EQ(S.GroupBy(), std::vector<std::string>{"C.NAME"});
}

TEST(TZvGroupByItems, RegroupingTakesEveryPlainColumnInSelectOrder) {
    TStatement<> S;
    TZvTableDef* O = S.Table("ORDERS", "O");
    TZvTableDef* C = S.Table("CUSTOMERS", "C");
    S.Column(C, "NAME");
    S.Call(O, "sum", "AMOUNT");
    S.Column(O, "ID");
    S.Call(C, "UPPER", "CITY");
    S.Column(C, "REGION")->SetAbsIndex(0);
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "GROUP BY\r\n  C.REGION,\r\n  C.NAME,\r\n  O.ID\r\n");
}

TEST(TZvGroupByItems, OnlyPlainColumnsOrOnlyAggregatesLeaveTheListAsTheUserSetIt) {
    TStatement<> S;
    TZvTableDef* O = S.Table("ORDERS", "O");
    S.Column(O, "ID");
    S.Call(O, "UPPER", "NAME");
    S.Parser.GetGroupByItems().Add("O.STATUS");
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "GROUP BY\r\n  O.STATUS\r\n");

    TStatement<> T;
    TZvTableDef* P = T.Table("ORDERS", "O");
    T.Call(P, "COUNT", "ID");
    T.Call(P, "MAX", "AMOUNT");
    T.Parser.GetGroupByItems().Add("O.STATUS");
    EXPECT_EQ(T.Parser.GetGroupByItems().GetScript(), "GROUP BY\r\n  O.STATUS\r\n");
}

TEST(TZvGroupByItems, AnAggregateNameOfAnotherKindIsAPlainField) {
    TStatement<> S;
    TZvTableDef* O = S.Table("ORDERS", "O");
    TZvFieldDef* Named = S.Column(O, "COUNT");
    S.Column(O, "ID");
    S.Parser.GetGroupByItems().Add("O.STATUS");
    // Neither field is an aggregate call; the column named like one is not a group entry either.
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "GROUP BY\r\n  O.STATUS\r\n");
    S.Call(O, "COUNT", "ID");
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "GROUP BY\r\n  O.ID\r\n");
    EXPECT_EQ(Named->GetKind(), fkIdentifier);
}

TEST(TZvGroupByItems, RegroupingWritesAnUnqualifiedColumnAlone) {
    TStatement<> S;
    TZvTableDef* Holder = S.Table("");
    S.Column(Holder, "ID");
    S.Call(Holder, "COUNT", "*");
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "GROUP BY\r\n  ID\r\n");
}

TEST(TZvGroupByItems, RegroupingQuotesNamesThatNeedIt) {
    TStatement<> S;
    TZvTableDef* T = S.Table("ORDER LINES", "my lines");
    S.Column(T, "UNIT PRICE");
    S.Call(T, "SUM", "QTY");
    EXPECT_EQ(S.GroupBy(), std::vector<std::string>{});
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "GROUP BY\r\n  \"my lines\".\"UNIT PRICE\"\r\n");
    EXPECT_EQ(S.GroupBy(), std::vector<std::string>{"\"my lines\".\"UNIT PRICE\""});
    // Written again, the stored entry keeps its quotes once.
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "GROUP BY\r\n  \"my lines\".\"UNIT PRICE\"\r\n");
}

TEST(TZvGroupByItems, EntriesAreWrittenWithTheNameProcessingOfOrderByEntries) {
    TStatement<> S;
    S.Table("ORDERS", "O");
    TZvGroupByItems& List = S.Parser.GetGroupByItems();
    List.Add("O.unit price");
    List.Add("X.unit price");
    List.Add("total sum");
    List.Add("O.\"odd name\"");
    EXPECT_EQ(List.GetScript(), "GROUP BY\r\n"
                                "  O.\"unit price\",\r\n"
                                "  X.\"unit price\",\r\n"
                                "  \"total sum\",\r\n"
                                "  O.\"odd name\"\r\n");
}

TEST(TZvGroupByItems, TheKeywordsFollowTheKeywordCase) {
    TStatement<> S;
    S.Parser.GetGroupByItems().Add("A");
    S.Parser.GetScriptFormat().SetKeywordsFormat(qfmFirstUpper);
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "Group By\r\n  A\r\n");
    S.Parser.GetScriptFormat().SetKeywordsFormat(qfmLowerCase);
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "group by\r\n  A\r\n");
}

TEST(TZvGroupByItems, AnEmptyListWritesNothing) {
    TStatement<> S;
    EXPECT_EQ(S.Parser.GetGroupByItems().GetScript(), "");
}

TEST(TZvGroupByItems, WithoutParserEntriesAreWrittenAsTheyStand) {
    TZvGroupByItems List;
    List.Add("a b.c d");
    List.Add("E");
    EXPECT_EQ(List.GetScript(), "GROUP BY\r\n  a b.c d,\r\n  E\r\n");
}

TEST(TZvHavingItems, RegroupingLetsTheHavingClauseBeWritten) {
    TStatement<> S;
    TZvTableDef* O = S.Table("ORDERS", "O");
    S.Column(O, "CUST_ID");
    S.Call(O, "COUNT", "ID");
    S.Having("COUNT", "O.ID", ">", "5");
    EXPECT_EQ(S.Parser.GetExpression(), "SELECT \r\n  O.CUST_ID,\r\n  COUNT(O.ID) AS FIELD_1\r\n"
                                        "FROM\r\n  ORDERS O\r\n"
                                        "GROUP BY\r\n  O.CUST_ID\r\n"
                                        "HAVING\r\n  (COUNT(O.ID) > 5)\r\n");
}

// ---- ORDER BY -----------------------------------------------------------------------------------

TEST(TZvOrderByItems, EntriesAreWrittenWithDescOnlyForDescendingOnes) {
    TStatement<> S;
    S.Table("ORDERS", "O");
    TZvOrderByItems& List = S.Parser.GetOrderByItems();
    List.AddOrdered("O.ID", okAsc);
    List.AddOrdered("O.ORDER_DATE", okDesc);
    List.Add("O.NO");
    EXPECT_EQ(List.GetScript(), "ORDER BY\r\n  O.ID,\r\n  O.ORDER_DATE DESC,\r\n  O.NO\r\n");
}

TEST(TZvOrderByItems, DescStaysAsWrittenWhateverTheKeywordCase) {
    TStatement<> S;
    S.Table("ORDERS", "O");
    S.Parser.GetOrderByItems().AddOrdered("O.ID", okDesc);
    S.Parser.GetScriptFormat().SetKeywordsFormat(qfmLowerCase);
    EXPECT_EQ(S.Parser.GetOrderByItems().GetScript(), "order by\r\n  O.ID DESC\r\n");
    S.Parser.GetScriptFormat().SetKeywordsFormat(qfmFirstUpper);
    EXPECT_EQ(S.Parser.GetOrderByItems().GetScript(), "Order By\r\n  O.ID DESC\r\n");
}

TEST(TZvOrderByItems, OutputAliasesAreWrittenAsAliases) {
    TStatement<> S;
    TZvTableDef* O = S.Table("ORDERS", "O");
    TZvFieldDef* Total = S.Call(O, "SUM", "AMOUNT");
    Total->SetAlias("order total");
    TZvOrderByItems& List = S.Parser.GetOrderByItems();
    List.AddOrdered("order total", okDesc);
    List.Add("X.unit price");
    EXPECT_EQ(List.GetScript(), "ORDER BY\r\n  order total DESC,\r\n  X.unit price\r\n");
    S.Parser.GetScanner().ProcessAliases = true;
    EXPECT_EQ(List.GetScript(), "ORDER BY\r\n  \"order total\" DESC,\r\n  X.\"unit price\"\r\n");
}

TEST(TZvOrderByItems, AColumnOfAKnownTableIsQuotedPartByPart) {
    TStatement<> S;
    S.Table("ORDER LINES", "my lines");
    S.Parser.GetOrderByItems().Add("\"my lines\".unit price");
    // The table part must name a table by its alias as stored; quotes around it do not.
    EXPECT_EQ(S.Parser.GetOrderByItems().GetScript(), "ORDER BY\r\n  \"my lines\".unit price\r\n");
    S.Parser.GetOrderByItems().Put(0, "my lines.unit price");
    EXPECT_EQ(S.Parser.GetOrderByItems().GetScript(), "ORDER BY\r\n  \"my lines\".\"unit price\"\r\n");
}

TEST(TZvOrderByItems, WithoutParserEntriesAreWrittenAsTheyStand) {
    TZvOrderByItems List;
    List.AddOrdered("a b.c d", okDesc);
    EXPECT_EQ(List.GetScript(), "ORDER BY\r\n  a b.c d DESC\r\n");
    EXPECT_EQ(TZvOrderByItems().GetScript(), "");
}

// ---- renames and deletions seen in the statement --------------------------------------------------

TEST(TZvSelectParser, RenamingAnAliasRewritesFieldsJoinsAndOrderBy) {
    TWorkedExample S;
    S.Parser.GetWhereItems().Clear();
    S.Parser.GetOrderByItems().Add("C.NAME");
    S.C->SetAlias("K");
    EXPECT_EQ(S.Parser.GetExpression(), "SELECT \r\n  O.ID,\r\n  K.NAME\r\nFROM\r\n  ORDERS O\r\n"
                                        "  INNER JOIN CUSTOMERS K ON (O.CUST_ID = K.ID)\r\n"
                                        "ORDER BY\r\n  K.NAME\r\n");
}

TEST(TZvSelectParser, DeletingAJoinedTableDropsItsJoinFieldsAndConditions) {
    TWorkedExample S;
    S.Where("C.ID", ">", "0");
    S.Parser.GetOrderByItems().Add("C.NAME");
    S.Tables.Delete(S.C->GetIndex());
    EXPECT_EQ(S.Parser.GetExpression(),
              "SELECT \r\n  O.ID\r\nFROM\r\n  ORDERS O\r\nWHERE\r\n  (O.AMOUNT > 100)\r\n");
}

// ---- the round trip through the statement reader ----------------------------------------------------

TEST(TZvSelectParser, TheWorkedExampleReadFromTextIsWrittenBackTheSame) {
    const std::string Text =
        "SELECT \r\n  O.ID,\r\n  C.NAME\r\nFROM\r\n  ORDERS O\r\n"
        "  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)\r\nWHERE\r\n  (O.AMOUNT > 100)\r\n";
    TZvSelectParser Parser;
    Parser.SetExpression("select O.ID, C.NAME from ORDERS O join CUSTOMERS C on O.CUST_ID = C.ID "
                         "where O.AMOUNT > 100");
    EXPECT_EQ(Parser.GetExpression(), Text);
    Parser.SetExpression(Text);
    EXPECT_EQ(Parser.GetExpression(), Text);
}
