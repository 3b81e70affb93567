// Joins: the text of one join, the chains of joined tables in a FROM entry with merged conditions,
// look-ups and clean-up of the join list, joins against constants and their distribution, and the
// joins' response to renamed and deleted tables.
#include <gtest/gtest.h>

#include "ZvParser.h"

#include <string>
#include <vector>

using namespace zv;

namespace {

// Dialect switches the join rules ask the parser about.
class TConstJoinParser : public TZvSelectParser {
public:
    bool IsConstInJoin() override { return true; }
};

class TWhereJoinParser : public TZvSelectParser {
public:
    bool IsOracleJoins() override { return true; }
};

class TAsAliasParser : public TZvSelectParser {
public:
    std::string GetTableNameAndAliasDeilm() override { return " as "; }
};

// A join whose dialect writes no ON condition.
class TNoConditionJoin : public TZvJoinDef {
public:
    bool GetUseCondition() const override { return false; }
};

// A join whose text is its own: nothing at all when Silent, the usual text otherwise.
class TSilenceableJoin : public TZvJoinDef {
public:
    bool Silent = false;
    void WriteScript(std::string& Out) const override {
        if (!Silent)
            TZvJoinDef::WriteScript(Out);
    }
};

// Builds a model in code on a parser of type P.
template <class P = TZvSelectParser>
struct TModel {
    P Parser;
    TZvTableDefs& Tables = Parser.GetTableDefs();

    TZvTableDef* Table(const std::string& Name, const std::string& Alias = "") {
        TZvTableDef* T = Tables.Add();
        T->SetName(Name);
        if (!Alias.empty())
            T->SetAlias(Alias);
        return T;
    }
    static TZvJoinDef* Join(TZvTableDef* Owner, const std::string& Left, const std::string& Target,
                            const std::string& Right, TZvJoinKind Kind = zvjInnerJoin) {
        TZvJoinDef* J = Owner->GetJoinDefs().Add();
        J->SetLeftField(Left);
        J->SetTableAlias(Target);
        J->SetRightField(Right);
        J->SetKind(Kind);
        return J;
    }
    // A join against a constant as the statement reader leaves it: no target yet, the constant on
    // the right, pending distribution; Swapped when the constant was written first.
    static TZvJoinDef* ConstJoin(TZvTableDef* Owner, const std::string& Column, const std::string& Constant,
                                 bool Swapped = false) {
        TZvJoinDef* J = Owner->GetJoinDefs().Add();
        J->SetLeftField(Column);
        J->SetRightField(Constant);
        J->SetRightConst(true);
        J->SetSwapped(Swapped);
        J->SetPending(true);
        return J;
    }
    // The join chain lines of a FROM entry, as GenerateJoinsScript leaves them.
    static std::vector<std::string> Lines(const TZvTableDef* T) {
        TZvJoinLines L;
        T->GenerateJoinsScript(T->GetJoinDefs(), L);
        std::vector<std::string> R;
        for (const TZvJoinLine& Line : L)
            R.push_back(Line.Text);
        return R;
    }
};

// ORDERS O and CUSTOMERS C, as in the statement every example here starts from.
template <class P = TZvSelectParser>
struct TOrders : TModel<P> {
    TZvTableDef* O = this->Table("ORDERS", "O");
    TZvTableDef* C = this->Table("CUSTOMERS", "C");
};

const char* const AND_BREAK = " AND \r\n    ";

} // namespace

// ---- the text of one join ----------------------------------------------------------------------

TEST(TZvJoinDef, AnInnerJoinIsWrittenWithItsTargetAndBracketedCondition) {
    TOrders M;
    const TZvJoinDef* J = M.Join(M.O, "CUST_ID", "C", "ID");
    EXPECT_EQ(J->GetScript(), "INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)");
}

TEST(TZvJoinDef, EachKindHasItsWords) {
    const struct {
        TZvJoinKind Kind;
        const char* Text;
    } Rows[] = {
        {zvjInnerJoin, "INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)"},
        {zvjLOuterJoin, "LEFT OUTER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)"},
        {zvjROuterJoin, "RIGHT OUTER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)"},
        {zvjFOuterJoin, "FULL OUTER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)"},
    };
    for (const auto& Row : Rows) {
        TOrders M;
        EXPECT_EQ(M.Join(M.O, "CUST_ID", "C", "ID", Row.Kind)->GetScript(), Row.Text);
    }
}

TEST(TZvJoinDef, KindJoinAndOnFollowTheKeywordCase) {
    const struct {
        TZvFormatMode Mode;
        const char* Text;
    } Rows[] = {
        {qfmAsIs, "LEFT OUTER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)"},
        {qfmUpperCase, "LEFT OUTER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)"},
        {qfmLowerCase, "left outer join CUSTOMERS C on (O.CUST_ID = C.ID)"},
        {qfmFirstUpper, "Left outer Join CUSTOMERS C On (O.CUST_ID = C.ID)"},
    };
    for (const auto& Row : Rows) {
        TOrders M;
        M.Parser.GetScriptFormat().SetKeywordsFormat(Row.Mode);
        EXPECT_EQ(M.Join(M.O, "CUST_ID", "C", "ID", zvjLOuterJoin)->GetScript(), Row.Text);
    }
}

TEST(TZvJoinDef, TheOperatorIsWrittenAsItStands) {
    TOrders M;
    TZvJoinDef* J = M.Join(M.O, "AMOUNT", "C", "CREDIT_LIMIT");
    J->SetOperator("<=");
    EXPECT_EQ(J->GetScript(), "INNER JOIN CUSTOMERS C ON (O.AMOUNT <= C.CREDIT_LIMIT)");
}

TEST(TZvJoinDef, AKindOutsideTheFourWritesNothing) {
    TOrders M;
    TZvJoinDef* J = M.Join(M.O, "CUST_ID", "C", "ID", static_cast<TZvJoinKind>(4));
    EXPECT_FALSE(J->GetUseCondition());
    EXPECT_EQ(J->GetScript(), "");
    EXPECT_EQ(M.O->GetScript(), "  ORDERS O");
}

TEST(TZvJoinDef, EveryKnownKindUsesACondition) {
    TOrders M;
    for (TZvJoinKind K : {zvjInnerJoin, zvjLOuterJoin, zvjROuterJoin, zvjFOuterJoin})
        EXPECT_TRUE(M.Join(M.O, "CUST_ID", "C", "ID", K)->GetUseCondition());
}

TEST(TZvJoinDef, AJoinToATableThatNoLongerExistsWritesNothing) {
    TOrders M;
    TZvJoinDef* J = M.Join(M.O, "CUST_ID", "X", "ID");
    EXPECT_EQ(J->GetScript(), "");
    EXPECT_EQ(M.O->GetScript(), "  ORDERS O");
}

TEST(TZvJoinDef, AnEmptyLeftFieldABlankRightFieldOrNoTargetWritesNothing) {
    TOrders M;
    EXPECT_EQ(M.Join(M.O, "", "C", "ID")->GetScript(), "");
    EXPECT_EQ(M.Join(M.O, "CUST_ID", "C", "   ")->GetScript(), "");
    EXPECT_EQ(M.Join(M.O, "CUST_ID", "C", "")->GetScript(), "");
    EXPECT_EQ(M.Join(M.O, "CUST_ID", "", "ID")->GetScript(), "");
    // None of them leaves an empty line in the FROM entry.
    EXPECT_EQ(M.O->GetScript(), "  ORDERS O");
}

TEST(TZvJoinDef, AnOwnerWithNeitherNameNorAliasCannotBeNamedAndWritesNothing) {
    TModel<> M;
    TZvTableDef* Nameless = M.Table("");
    M.Table("CUSTOMERS", "C");
    TZvJoinDef* J = M.Join(Nameless, "CUST_ID", "C", "ID");
    ASSERT_EQ(Nameless->GetPrefix(), "");
    EXPECT_EQ(J->GetScript(), "");
    EXPECT_EQ(Nameless->GetScript(), "  ");
}

TEST(TZvJoinDef, WritesTextTellsWhetherTheJoinWritesAnyTextAndLeavesTheScratchAsItWas) {
    TModel<TConstJoinParser> M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    TZvTableDef* Nameless = M.Table("");
    M.Table("CUSTOMERS", "C");
    std::vector<TZvJoinDef*> Joins{
        M.Join(O, "CUST_ID", "C", "ID"),
        M.Join(O, "CUST_ID", "customers", "ID"),
        M.Join(O, "CUST_ID", "X", "ID"),
        M.Join(O, "", "C", "ID"),
        M.Join(O, "CUST_ID", "C", "  "),
        M.Join(O, "CUST_ID", "", "ID"),
        M.Join(O, "CUST_ID", "C", "ID", static_cast<TZvJoinKind>(4)),
        M.Join(Nameless, "CUST_ID", "C", "ID"),
        M.Join(O, "ID", "", "CUST_ID"),
    };
    // Against a constant the owner still has to be nameable, though its qualifier is not written.
    TZvJoinDef* Constant = M.Join(Nameless, "'A'", "C", "STATUS");
    Constant->SetLeftConst(true);
    Joins.push_back(Constant);
    TZvJoinDef* Named = M.Join(O, "'A'", "C", "STATUS");
    Named->SetLeftConst(true);
    Joins.push_back(Named);
    int Writing = 0;
    for (const TZvJoinDef* J : Joins) {
        std::string Scratch = "SELECT ";
        const bool Writes = J->WritesText(Scratch);
        EXPECT_EQ(Writes, !J->GetScript().empty()) << J->GetLeftField() << " " << J->GetTableAlias();
        EXPECT_EQ(Scratch, "SELECT ");
        Writing += Writes ? 1 : 0;
    }
    EXPECT_EQ(Writing, 3);
    EXPECT_EQ(Named->GetScript(), "INNER JOIN CUSTOMERS C ON ('A' = C.STATUS)");
    EXPECT_EQ(Constant->GetScript(), "");
}

TEST(TZvJoinDef, AJoinInNoListWritesNothing) {
    TZvJoinDef J;
    J.SetLeftField("CUST_ID");
    J.SetTableAlias("C");
    J.SetRightField("ID");
    EXPECT_EQ(J.GetTableDef(), nullptr);
    EXPECT_EQ(J.GetScript(), "");
}

TEST(TZvJoinDef, ATableOutsideAStatementNamesTheTargetByTheJoinsOwnTexts) {
    TZvSelectParser Parser;
    TZvTableDef T;
    T.SetParser(&Parser);
    T.SetName("ORDERS");
    T.SetAlias("O");
    TZvJoinDef* J = T.GetJoinDefs().Add();
    J->SetLeftField("CUST_ID");
    J->SetTableAlias("my customers");
    J->SetRightField("ID");
    EXPECT_EQ(J->GetTableDef(), &T);
    EXPECT_EQ(J->GetScript(), "INNER JOIN \"my customers\" ON (O.CUST_ID = \"my customers\".ID)");
}

TEST(TZvJoinDef, ATargetWhoseAliasIsItsNameIsNamedOnce) {
    TModel<> M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    M.Table("CUSTOMERS");
    EXPECT_EQ(M.Join(O, "CUST_ID", "CUSTOMERS", "ID")->GetScript(),
              "INNER JOIN CUSTOMERS ON (O.CUST_ID = CUSTOMERS.ID)");
}

TEST(TZvJoinDef, AnOwnerWithoutAliasIsQualifiedByItsName) {
    TModel<> M;
    TZvTableDef* O = M.Table("ORDERS");
    M.Table("CUSTOMERS", "C");
    O->SetAlias("");
    EXPECT_EQ(M.Join(O, "CUST_ID", "C", "ID")->GetScript(),
              "INNER JOIN CUSTOMERS C ON (ORDERS.CUST_ID = C.ID)");
}

TEST(TZvJoinDef, ATargetNamedByItsTableNameIsFoundByName) {
    TOrders M;
    EXPECT_EQ(M.Join(M.O, "CUST_ID", "customers", "ID")->GetScript(),
              "INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)");
}

TEST(TZvJoinDef, NamesAreQuotedWhereTheyNeedItAndAliasesOnlyWhereTheDialectQuotesAliases) {
    TModel<> M;
    TZvTableDef* O = M.Table("ORDER ITEMS", "oi x");
    M.Table("ALL CUSTOMERS", "c y");
    const TZvJoinDef* J = M.Join(O, "CUSTOMER ID", "c y", "ID");
    EXPECT_EQ(J->GetScript(), "INNER JOIN \"ALL CUSTOMERS\" c y ON (oi x.\"CUSTOMER ID\" = c y.ID)");
    M.Parser.GetScanner().ProcessAliases = true;
    EXPECT_EQ(J->GetScript(),
              "INNER JOIN \"ALL CUSTOMERS\" \"c y\" ON (\"oi x\".\"CUSTOMER ID\" = \"c y\".ID)");
}

TEST(TZvJoinDef, AColumnThatIsARenamedFieldsAliasIsWrittenAsAnAlias) {
    TOrders M;
    TZvFieldDef* F = M.O->GetFieldDefs().Add();
    F->SetName("CUST_ID");
    F->SetKind(fkIdentifier);
    F->SetAlias("cust no");
    const TZvJoinDef* J = M.Join(M.O, "cust no", "C", "ID");
    // As an alias it stays bare (this dialect does not quote aliases); a column would be quoted.
    EXPECT_EQ(J->GetScript(), "INNER JOIN CUSTOMERS C ON (O.cust no = C.ID)");
    F->SetAlias("CUST_ID");
    EXPECT_EQ(J->GetScript(), "INNER JOIN CUSTOMERS C ON (O.\"cust no\" = C.ID)");
}

TEST(TZvJoinDef, AStoredProcedureTargetCarriesItsParameters) {
    TOrders M;
    TZvTableDef* P = M.Table("GET_ITEMS", "G");
    P->SetTableType(qttStoredProc);
    TZvFieldDef* Param = P->GetFieldDefs().Add();
    Param->SetName("ORDER_NO");
    Param->SetUsage(3);
    EXPECT_EQ(M.Join(M.O, "ID", "G", "ORDER_ID")->GetScript(),
              "INNER JOIN GET_ITEMS(:ORDER_NO) G ON (O.ID = G.ORDER_ID)");
}

TEST(TZvJoinDef, AJoinWithoutConditionNamesOnlyItsTarget) {
    TOrders M;
    TZvJoinDefs Joins(M.O, ItemClassOf<TNoConditionJoin>());
    TZvJoinDef* J = Joins.Add();
    J->SetLeftField("CUST_ID");
    J->SetTableAlias("C");
    J->SetRightField("ID");
    J->SetKind(zvjLOuterJoin);
    EXPECT_EQ(J->GetScript(), "LEFT OUTER JOIN CUSTOMERS C");
}

TEST(TZvJoinDef, AssignCopiesEveryField) {
    TOrders M;
    TZvJoinDef* J = M.Join(M.O, "CUST_ID", "C", "ID", zvjROuterJoin);
    J->SetOperator(">");
    J->SetPending(true);
    J->SetLeftConst(true);
    J->SetSwapped(true);
    TZvJoinDef* Copy = M.C->GetJoinDefs().Add();
    Copy->Assign(*J);
    EXPECT_EQ(Copy->GetOperator(), ">");
    EXPECT_EQ(Copy->GetKind(), zvjROuterJoin);
    EXPECT_EQ(Copy->GetLeftField(), "CUST_ID");
    EXPECT_EQ(Copy->GetTableAlias(), "C");
    EXPECT_EQ(Copy->GetRightField(), "ID");
    EXPECT_TRUE(Copy->GetPending());
    EXPECT_TRUE(Copy->GetLeftConst());
    EXPECT_FALSE(Copy->GetRightConst());
    EXPECT_TRUE(Copy->GetSwapped());
    EXPECT_EQ(Copy->GetTableDef(), M.C);
}

// ---- joins against constants ---------------------------------------------------------------------

TEST(TZvJoinDef, AConstantJoinIsWrittenInsideTheOnClause) {
    TOrders<TConstJoinParser> M;
    TZvJoinDef* J = M.Join(M.O, "STATUS", "C", "'A'");
    J->SetRightConst(true);
    EXPECT_EQ(J->GetScript(), "INNER JOIN CUSTOMERS C ON (O.STATUS = 'A')");
    J->SetSwapped(true);
    EXPECT_EQ(J->GetScript(), "INNER JOIN CUSTOMERS C ON ('A' = O.STATUS)");
}

TEST(TZvJoinDef, AConstantOnTheLeftStandsAsWritten) {
    TOrders<TConstJoinParser> M;
    TZvJoinDef* J = M.Join(M.O, "1", "C", "KIND");
    J->SetLeftConst(true);
    EXPECT_EQ(J->GetScript(), "INNER JOIN CUSTOMERS C ON (1 = C.KIND)");
}

TEST(TZvJoinDef, ConstantFlagsAreIgnoredWhereTheDialectDoesNotWriteConstantsInJoins) {
    TOrders M;
    TZvJoinDef* J = M.Join(M.O, "STATUS", "C", "'A'");
    J->SetRightConst(true);
    J->SetSwapped(true);
    EXPECT_FALSE(J->IsConstCondition());
    EXPECT_EQ(J->GetScript(), "INNER JOIN CUSTOMERS C ON (O.STATUS = C.\"'A'\")");
}

// ---- the join list ---------------------------------------------------------------------------------

TEST(TZvJoinDefs, FindMatchesAllThreeTextsAsIdentifiers) {
    TOrders M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    TZvJoinDef* Second = M.Join(M.O, "REGION", "C", "REGION");
    const TZvJoinDefs& Joins = M.O->GetJoinDefs();
    EXPECT_EQ(Joins.Find("region", "c", "Region"), Second);
    EXPECT_EQ(Joins.Find("CUST_ID", "C", "REGION"), nullptr);
    EXPECT_EQ(Joins.Find("REGION", "O", "REGION"), nullptr);
    M.Parser.SetCaseSensitiveIdentifiers(true);
    EXPECT_EQ(Joins.Find("region", "c", "Region"), nullptr);
    EXPECT_EQ(Joins.Find("REGION", "C", "REGION"), Second);
}

TEST(TZvJoinDefs, TheListWritesEachJoinOnItsOwnIndentedLine) {
    TOrders M;
    M.Table("PRODUCTS", "P");
    M.Join(M.O, "CUST_ID", "C", "ID");
    M.Join(M.O, "X", "GONE", "Y");
    M.Join(M.O, "PRODUCT_ID", "P", "ID", zvjLOuterJoin);
    EXPECT_EQ(M.O->GetJoinDefs().GetScript(), "\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)"
                                              "\r\n  LEFT OUTER JOIN PRODUCTS P ON (O.PRODUCT_ID = P.ID)");
    EXPECT_EQ(M.C->GetJoinDefs().GetScript(), "");
}

TEST(TZvJoinDefs, AListWithoutOwnerWritesNothing) {
    TZvJoinDefs Joins(nullptr, ItemClassOf<TZvJoinDef>());
    TZvJoinDef* J = Joins.Add();
    J->SetLeftField("A");
    J->SetTableAlias("T");
    J->SetRightField("B");
    EXPECT_EQ(Joins.GetScript(), "");
}

TEST(TZvJoinDefs, EditingAConstantJoinDropsTheOtherConstantJoinsToTheSameTable) {
    TModel<TConstJoinParser> M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    M.Table("CUSTOMERS", "C");
    M.Table("PRODUCTS", "P");
    TZvJoinDef* Edited = M.Join(O, "STATUS", "C", "'A'");
    Edited->SetRightConst(true);
    M.Join(O, "STATUS", "C", "'B'")->SetRightConst(true);
    M.Join(O, "'X'", "C", "KIND")->SetLeftConst(true);
    TZvJoinDef* Elsewhere = M.Join(O, "STATUS", "P", "'A'");
    Elsewhere->SetRightConst(true);
    TZvJoinDefs& Joins = O->GetJoinDefs();
    Joins.DeleteCorrespondedJoinsWithConst(Edited);
    ASSERT_EQ(Joins.Count(), 2);
    EXPECT_EQ(Joins.Items(0), Edited);
    EXPECT_EQ(Joins.Items(1), Elsewhere);
}

TEST(TZvJoinDefs, AColumnJoinToTheSameTableKeepsTheConstantJoins) {
    TModel<TConstJoinParser> M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    M.Table("CUSTOMERS", "C");
    TZvJoinDef* Edited = M.Join(O, "STATUS", "C", "'A'");
    Edited->SetRightConst(true);
    M.Join(O, "STATUS", "C", "'B'")->SetRightConst(true);
    M.Join(O, "CUST_ID", "C", "ID");
    O->GetJoinDefs().DeleteCorrespondedJoinsWithConst(Edited);
    EXPECT_EQ(O->GetJoinDefs().Count(), 3);
}

TEST(TZvJoinDefs, TheTargetAliasIsComparedExactlyWhenDroppingCorrespondingJoins) {
    TModel<TConstJoinParser> M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    M.Table("CUSTOMERS", "C");
    TZvJoinDef* Edited = M.Join(O, "STATUS", "C", "'A'");
    Edited->SetRightConst(true);
    M.Join(O, "STATUS", "c", "'B'")->SetRightConst(true);
    O->GetJoinDefs().DeleteCorrespondedJoinsWithConst(Edited);
    EXPECT_EQ(O->GetJoinDefs().Count(), 2);
}

TEST(TZvJoinDefs, NothingIsDroppedWhereTheDialectDoesNotWriteConstantsInJoins) {
    TOrders M;
    TZvJoinDef* Edited = M.Join(M.O, "STATUS", "C", "'A'");
    Edited->SetRightConst(true);
    M.Join(M.O, "STATUS", "C", "'B'")->SetRightConst(true);
    M.O->GetJoinDefs().DeleteCorrespondedJoinsWithConst(Edited);
    EXPECT_EQ(M.O->GetJoinDefs().Count(), 2);
}

// ---- chains in the FROM entry ----------------------------------------------------------------------

TEST(TZvTableDef, AFromEntryIsFollowedByItsJoins) {
    TOrders M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    EXPECT_EQ(M.O->GetScript(), "  ORDERS O\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)");
}

TEST(TZvTableDef, ASecondConditionBetweenTheSameTablesExtendsTheLine) {
    TOrders M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    M.Join(M.O, "REGION", "C", "REGION");
    EXPECT_EQ(M.O->GetScript(), std::string("  ORDERS O\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)") +
                                    AND_BREAK + "(O.REGION = C.REGION)");
}

TEST(TZvTableDef, TheSameConditionGivenTwiceIsWrittenOnce) {
    TOrders M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    M.Join(M.O, "REGION", "C", "REGION");
    M.Join(M.O, "CUST_ID", "C", "ID");
    M.Join(M.O, "REGION", "C", "REGION");
    EXPECT_EQ(M.O->GetScript(), std::string("  ORDERS O\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)") +
                                    AND_BREAK + "(O.REGION = C.REGION)");
}

TEST(TZvTableDef, MergedConditionsQuoteTheAliasesLikeNames) {
    TModel<> M;
    TZvTableDef* O = M.Table("ORDERS", "o x");
    M.Table("CUSTOMERS", "c y");
    M.Join(O, "CUST_ID", "c y", "ID");
    M.Join(O, "REGION", "c y", "REGION");
    EXPECT_EQ(M.Lines(O),
              std::vector<std::string>{std::string("INNER JOIN CUSTOMERS c y ON (o x.CUST_ID = c y.ID)") +
                                       AND_BREAK + "(\"o x\".REGION = \"c y\".REGION)"});
}

TEST(TZvTableDef, AChainOfJoinedTablesFollowsTheFirstTable) {
    TModel<> M;
    TZvTableDef* A = M.Table("ORDERS", "O");
    TZvTableDef* B = M.Table("ORDER_LINES", "L");
    TZvTableDef* C = M.Table("PRODUCTS", "P");
    M.Table("SUPPLIERS", "S");
    M.Join(A, "ID", "L", "ORDER_ID");
    M.Join(B, "PRODUCT_ID", "P", "ID", zvjLOuterJoin);
    M.Join(C, "SUPPLIER_ID", "S", "ID");
    EXPECT_EQ(A->GetScript(), "  ORDERS O"
                              "\r\n  INNER JOIN ORDER_LINES L ON (O.ID = L.ORDER_ID)"
                              "\r\n  LEFT OUTER JOIN PRODUCTS P ON (L.PRODUCT_ID = P.ID)"
                              "\r\n  INNER JOIN SUPPLIERS S ON (P.SUPPLIER_ID = S.ID)");
    EXPECT_EQ(M.Tables.GetScript(), "*\r\nFROM\r\n" + A->GetScript() + "\r\n");
}

TEST(TZvTableDef, ABranchIsWrittenAfterTheWholeChainOfTheBranchBeforeIt) {
    TModel<> M;
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    M.Table("C");
    M.Table("D");
    M.Join(A, "BID", "B", "ID");
    M.Join(A, "CID", "C", "ID");
    M.Join(B, "DID", "D", "ID");
    EXPECT_EQ(M.Lines(A),
              (std::vector<std::string>{"INNER JOIN B ON (A.BID = B.ID)", "INNER JOIN D ON (B.DID = D.ID)",
                                        "INNER JOIN C ON (A.CID = C.ID)"}));
}

TEST(TZvTableDef, AChainThatReturnsToItsFirstTableEndsOnTheRepeatedCondition) {
    TModel<> M;
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    M.Join(A, "ID", "B", "AID");
    M.Join(B, "AID", "A", "ID");
    EXPECT_EQ(M.Lines(A),
              (std::vector<std::string>{"INNER JOIN B ON (A.ID = B.AID)", "INNER JOIN A ON (B.AID = A.ID)"}));
}

TEST(TZvTableDef, AChainThatReturnsToAJoinedTableAddsItsConditionOnceAndStops) {
    TModel<> M;
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    TZvTableDef* C = M.Table("C");
    M.Join(A, "ID", "B", "AID");
    M.Join(B, "ID", "C", "BID");
    M.Join(C, "BID", "B", "ID");
    EXPECT_EQ(M.Lines(A), (std::vector<std::string>{std::string("INNER JOIN B ON (A.ID = B.AID)") +
                                                        AND_BREAK + "(C.BID = B.ID)",
                                                    "INNER JOIN C ON (B.ID = C.BID)"}));
}

TEST(TZvTableDef, ConditionsMergedIntoEarlierLinesKeepTheLinesBehindThemWhole) {
    TModel<> M;
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    M.Table("C");
    TZvTableDef* D = M.Table("D");
    M.Join(A, "ID", "B", "AID");
    M.Join(B, "ID", "D", "BID");
    // Comes back to B while D's line stands behind B's.
    M.Join(D, "BID", "B", "ID");
    M.Join(A, "ID", "C", "AID");
    // A second condition for D, whose line now has C's behind it.
    M.Join(A, "REGION", "D", "REGION");
    const std::vector<std::string> Expected{
        std::string("INNER JOIN B ON (A.ID = B.AID)") + AND_BREAK + "(D.BID = B.ID)",
        std::string("INNER JOIN D ON (B.ID = D.BID)") + AND_BREAK + "(A.REGION = D.REGION)",
        "INNER JOIN C ON (A.ID = C.AID)"};
    EXPECT_EQ(M.Lines(A), Expected);
    EXPECT_EQ(A->GetScript(), "  A\r\n  " + Expected[0] + "\r\n  " + Expected[1] + "\r\n  " + Expected[2]);
}

TEST(TZvTableDef, AnIncompleteSecondConditionIsNotMergedIntoTheLine) {
    TOrders M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    M.Join(M.O, "REGION", "C", " ");
    M.Join(M.O, "", "C", "REGION");
    M.Join(M.O, "REGION", "C", "REGION", static_cast<TZvJoinKind>(4));
    M.Join(M.O, "AREA", "C", "AREA");
    EXPECT_EQ(M.Lines(M.O), std::vector<std::string>{std::string("INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)") +
                                                      AND_BREAK + "(O.AREA = C.AREA)"});
}

TEST(TZvTableDef, AJoinWithATextOfItsOwnIsMergedOnlyWhenThatTextIsNotEmpty) {
    TOrders M;
    TZvJoinDefs Joins(M.O, ItemClassOf<TSilenceableJoin>());
    auto Add = [&Joins](const char* Left, const char* Right, bool Silent) {
        auto* J = static_cast<TSilenceableJoin*>(Joins.Add());
        J->SetLeftField(Left);
        J->SetTableAlias("C");
        J->SetRightField(Right);
        J->Silent = Silent;
    };
    Add("CUST_ID", "ID", false);
    Add("REGION", "REGION", true);
    Add("AREA", "AREA", false);
    TZvJoinLines Lines;
    M.O->GenerateJoinsScript(Joins, Lines);
    ASSERT_EQ(Lines.size(), 1U);
    EXPECT_EQ(Lines[0].Text, std::string("INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)") + AND_BREAK +
                                 "(O.AREA = C.AREA)");
    EXPECT_EQ(Lines[0].Target, M.C);
}

TEST(TZvTableDef, AMergedConstantConditionKeepsTheConstantWhereItWasWritten) {
    TOrders<TConstJoinParser> M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    TZvJoinDef* Status = M.Join(M.O, "STATUS", "C", "'A'");
    Status->SetRightConst(true);
    TZvJoinDef* Kind = M.Join(M.O, "KIND", "C", "1");
    Kind->SetRightConst(true);
    Kind->SetSwapped(true);
    EXPECT_EQ(M.Lines(M.O),
              std::vector<std::string>{std::string("INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)") + AND_BREAK +
                                       "(O.STATUS = 'A')" + AND_BREAK + "(1 = O.KIND)"});
}

TEST(TZvTableDef, AChainOfManyLinesKeepsEachLineWholeWhenAnEarlyOneGrows) {
    TModel<> M;
    TZvTableDef* A = M.Table("A");
    std::vector<TZvTableDef*> Joined;
    for (int I = 1; I <= 12; ++I)
        Joined.push_back(M.Table("T" + std::to_string(I)));
    for (TZvTableDef* T : Joined)
        M.Join(A, "ID", T->GetName(), "AID");
    // The last table comes back to the first joined one, whose line has eleven lines behind it.
    M.Join(Joined.back(), "ID", "T1", "T12ID");
    std::vector<std::string> Expected;
    for (TZvTableDef* T : Joined)
        Expected.push_back("INNER JOIN " + T->GetName() + " ON (A.ID = " + T->GetName() + ".AID)");
    Expected[0] += std::string(AND_BREAK) + "(T12.ID = T1.T12ID)";
    EXPECT_EQ(M.Lines(A), Expected);
    std::string Entry = "  A";
    for (const std::string& Line : Expected)
        Entry += "\r\n  " + Line;
    EXPECT_EQ(A->GetScript(), Entry);
}

TEST(TZvTableDef, AChainNamingItsTargetByTheJoinsAliasOnlyFollowsTablesFoundByAlias) {
    TOrders M;
    // GetScript of the join finds the target by name, the chain only by alias.
    M.Join(M.O, "CUST_ID", "CUSTOMERS", "ID");
    EXPECT_EQ(M.Lines(M.O), std::vector<std::string>{});
}

TEST(TZvTableDef, TheAliasFollowsTheDialectsDelimiterInItsKeywordCase) {
    TModel<TAsAliasParser> M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    M.Table("CUSTOMERS", "C");
    M.Join(O, "CUST_ID", "C", "ID");
    M.Parser.GetScriptFormat().SetKeywordsFormat(qfmUpperCase);
    EXPECT_EQ(O->GetScript(), "  ORDERS AS O\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)");
}

TEST(TZvTableDef, ATableWithoutParserOrListIsWrittenWithAPlainBlankAndNoJoins) {
    TZvTableDef T;
    T.SetName("ORDERS");
    T.SetAlias("O");
    TZvJoinDef* J = T.GetJoinDefs().Add();
    J->SetLeftField("CUST_ID");
    J->SetTableAlias("C");
    J->SetRightField("ID");
    EXPECT_EQ(T.GetScript(), "  ORDERS O");
}

TEST(TZvTableDef, AStoredProcedureEntryCarriesItsParameters) {
    TModel<> M;
    TZvTableDef* P = M.Table("GET_ITEMS", "G");
    P->SetTableType(qttStoredProc);
    TZvFieldDef* Param = P->GetFieldDefs().Add();
    Param->SetName("ORDER_NO");
    Param->SetUsage(1);
    Param->SetValue(TZvValue(std::int64_t{42}));
    Param->SetDataType(ftInteger);
    EXPECT_EQ(P->GetScript(), "  GET_ITEMS(42) G");
}

TEST(TZvTableDef, JoinsWrittenInTheWhereClauseLeaveTheFromEntryBare) {
    TOrders<TWhereJoinParser> M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    EXPECT_EQ(M.O->GetScript(), "  ORDERS O");
    // Both tables are listed then, since no chain writes the joined one.
    EXPECT_EQ(M.Tables.GetScript(), "*\r\nFROM\r\n  ORDERS O,\r\n  CUSTOMERS C\r\n");
}

// ---- distribution of joins against constants --------------------------------------------------------

TEST(TZvTableDefs, AConstantConditionJoinsTheTableTheColumnJoinTargets) {
    TOrders<TConstJoinParser> M;
    TZvJoinDef* Columns = M.Join(M.O, "CUST_ID", "C", "ID");
    Columns->SetPending(true);
    TZvJoinDef* Constant = M.ConstJoin(M.O, "STATUS", "'A'");
    M.Tables.UpdateJoinsWithConsts();
    const TZvJoinDefs& Joins = M.O->GetJoinDefs();
    ASSERT_EQ(Joins.Count(), 2);
    EXPECT_EQ(Joins.Items(1), Constant);
    EXPECT_EQ(Constant->GetTableAlias(), "C");
    EXPECT_TRUE(Constant->GetRightConst());
    EXPECT_FALSE(Constant->GetPending());
    EXPECT_FALSE(Columns->GetPending());
    EXPECT_FALSE(Columns->GetRightConst());
    EXPECT_EQ(M.O->GetScript(), std::string("  ORDERS O\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)") +
                                    AND_BREAK + "(O.STATUS = 'A')");
}

TEST(TZvTableDefs, AConstantWrittenFirstStaysFirst) {
    TOrders<TConstJoinParser> M;
    M.Join(M.O, "CUST_ID", "C", "ID")->SetPending(true);
    M.ConstJoin(M.O, "STATUS", "'A'", true);
    M.Tables.UpdateJoinsWithConsts();
    EXPECT_EQ(M.O->GetScript(), std::string("  ORDERS O\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)") +
                                    AND_BREAK + "('A' = O.STATUS)");
}

TEST(TZvTableDefs, AConstantConditionIsCopiedToEveryTableTheJoinsTouch) {
    TModel<TConstJoinParser> M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    M.Table("CUSTOMERS", "C");
    M.Table("PRODUCTS", "P");
    M.Join(O, "CUST_ID", "C", "ID")->SetPending(true);
    M.Join(O, "PRODUCT_ID", "P", "ID")->SetPending(true);
    TZvJoinDef* Constant = M.ConstJoin(O, "STATUS", "'A'");
    M.Tables.UpdateJoinsWithConsts();
    const TZvJoinDefs& Joins = O->GetJoinDefs();
    ASSERT_EQ(Joins.Count(), 4);
    EXPECT_EQ(Constant->GetTableAlias(), "C");
    EXPECT_EQ(Joins.Items(3)->GetTableAlias(), "P");
    EXPECT_EQ(Joins.Items(3)->GetLeftField(), "STATUS");
    EXPECT_EQ(Joins.Items(3)->GetRightField(), "'A'");
    EXPECT_TRUE(Joins.Items(3)->GetRightConst());
    EXPECT_EQ(O->GetScript(),
              std::string("  ORDERS O") + "\r\n  INNER JOIN CUSTOMERS C ON (O.CUST_ID = C.ID)" + AND_BREAK +
                  "(O.STATUS = 'A')" + "\r\n  INNER JOIN PRODUCTS P ON (O.PRODUCT_ID = P.ID)" + AND_BREAK +
                  "(O.STATUS = 'A')");
}

TEST(TZvTableDefs, ATableThatJoinsTheConstantsTableReceivesTheConditionMirrored) {
    TOrders<TConstJoinParser> M;
    M.ConstJoin(M.O, "STATUS", "'A'");
    M.Join(M.C, "ID", "O", "CUST_ID")->SetPending(true);
    M.Tables.UpdateJoinsWithConsts();
    // The original had no table left to join and is gone.
    EXPECT_EQ(M.O->GetJoinDefs().Count(), 0);
    const TZvJoinDefs& Joins = M.C->GetJoinDefs();
    ASSERT_EQ(Joins.Count(), 2);
    const TZvJoinDef* Mirror = Joins.Items(1);
    EXPECT_EQ(Mirror->GetLeftField(), "'A'");
    EXPECT_TRUE(Mirror->GetLeftConst());
    EXPECT_EQ(Mirror->GetTableAlias(), "O");
    EXPECT_EQ(Mirror->GetRightField(), "STATUS");
    EXPECT_FALSE(Mirror->GetRightConst());
    EXPECT_TRUE(Mirror->GetSwapped());
    EXPECT_FALSE(Mirror->GetPending());
    EXPECT_EQ(M.Tables.GetScript(), std::string("*\r\nFROM\r\n  CUSTOMERS C") +
                                        "\r\n  INNER JOIN ORDERS O ON (C.ID = O.CUST_ID)" + AND_BREAK +
                                        "(O.STATUS = 'A')\r\n");
}

TEST(TZvTableDefs, TheMirrorKeepsTheOperatorAndKind) {
    TOrders<TConstJoinParser> M;
    TZvJoinDef* Constant = M.ConstJoin(M.O, "AMOUNT", "100");
    Constant->SetOperator(">");
    Constant->SetKind(zvjLOuterJoin);
    M.Join(M.C, "ID", "O", "CUST_ID")->SetPending(true);
    M.Tables.UpdateJoinsWithConsts();
    const TZvJoinDef* Mirror = M.C->GetJoinDefs().Items(1);
    EXPECT_EQ(Mirror->GetOperator(), ">");
    EXPECT_EQ(Mirror->GetKind(), zvjLOuterJoin);
    EXPECT_EQ(Mirror->GetScript(), "LEFT OUTER JOIN ORDERS O ON (O.AMOUNT > 100)");
}

TEST(TZvTableDefs, AConstantConditionWithNoOtherTableIsDropped) {
    TModel<TConstJoinParser> M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    M.ConstJoin(O, "STATUS", "'A'");
    M.Tables.UpdateJoinsWithConsts();
    EXPECT_EQ(O->GetJoinDefs().Count(), 0);
    EXPECT_EQ(M.Tables.GetScript(), "*\r\nFROM\r\n  ORDERS O\r\n");
}

TEST(TZvTableDefs, OnlyPendingJoinsAreDistributed) {
    TOrders<TConstJoinParser> M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    TZvJoinDef* Constant = M.ConstJoin(M.O, "STATUS", "'A'");
    Constant->SetPending(false);
    M.Tables.UpdateJoinsWithConsts();
    // Nothing was pending, so nothing was touched: the unsettled constant stays as it was.
    ASSERT_EQ(M.O->GetJoinDefs().Count(), 2);
    EXPECT_EQ(Constant->GetTableAlias(), "");
}

TEST(TZvTableDefs, ConstantsAreNotDistributedWhereTheDialectDoesNotWriteThemInJoins) {
    TOrders M;
    M.Join(M.O, "CUST_ID", "C", "ID")->SetPending(true);
    TZvJoinDef* Constant = M.ConstJoin(M.O, "STATUS", "'A'");
    M.Tables.UpdateJoinsWithConsts();
    EXPECT_EQ(M.O->GetJoinDefs().Count(), 2);
    EXPECT_TRUE(Constant->GetPending());
    EXPECT_EQ(Constant->GetTableAlias(), "");
}

TEST(TZvTableDefs, WritingAppendsToTheTextBeforeAndLeavesItAloneWhenNothingIsWritten) {
    TModel<> M;
    std::string Text = "SELECT ";
    M.Tables.WriteScript(Text);
    EXPECT_EQ(Text, "SELECT ");
    M.Table("ORDERS", "O");
    M.Tables.WriteScript(Text);
    EXPECT_EQ(Text, "SELECT *\r\nFROM\r\n  ORDERS O\r\n");
}

TEST(TZvTableDefs, TablesThatAllJoinOneAnotherAreWrittenFromTheFirstNamedTable) {
    TModel<TConstJoinParser> M;
    M.Table("", "");
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    M.Join(A, "ID", "B", "AID");
    M.Join(B, "AID", "A", "ID");
    EXPECT_EQ(M.Tables.GetScript(), "*\r\nFROM\r\n  A\r\n  INNER JOIN B ON (A.ID = B.AID)\r\n"
                                    "  INNER JOIN A ON (B.AID = A.ID)\r\n");
}

TEST(TZvTableDefs, WithoutConstantJoinsTablesThatAllJoinOneAnotherLeaveNoFromClause) {
    TModel<> M;
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    M.Join(A, "ID", "B", "AID");
    M.Join(B, "AID", "A", "ID");
    EXPECT_EQ(M.Tables.GetScript(), "");
}

// ---- renames and deletions -------------------------------------------------------------------------

TEST(TZvTableDefs, RenamingATargetAliasRepointsItsJoinsInTheText) {
    TOrders M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    M.C->SetAlias("K");
    EXPECT_EQ(M.O->GetJoinDefs().Items(0)->GetTableAlias(), "K");
    EXPECT_EQ(M.Tables.GetScript(),
              "*\r\nFROM\r\n  ORDERS O\r\n  INNER JOIN CUSTOMERS K ON (O.CUST_ID = K.ID)\r\n");
}

TEST(TZvTableDefs, RenamingTheOwnerAliasChangesTheLeftQualifier) {
    TOrders M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    M.O->SetAlias("ORD");
    EXPECT_EQ(M.O->GetScript(), "  ORDERS ORD\r\n  INNER JOIN CUSTOMERS C ON (ORD.CUST_ID = C.ID)");
}

TEST(TZvTableDefs, DeletingATableInTheMiddleOfAChainDropsItsJoinAndFreesTheRest) {
    TModel<> M;
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    M.Table("C");
    M.Join(A, "BID", "B", "ID");
    M.Join(B, "CID", "C", "ID");
    M.Tables.Delete(B->GetIndex());
    EXPECT_EQ(A->GetJoinDefs().Count(), 0);
    // C is joined by nobody now and stands in the FROM list on its own.
    EXPECT_EQ(M.Tables.GetScript(), "*\r\nFROM\r\n  A,\r\n  C\r\n");
}

TEST(TZvTableDefs, DeletingTheJoiningTableListsTheJoinedOneAgain) {
    TOrders M;
    M.Join(M.O, "CUST_ID", "C", "ID");
    M.Tables.Delete(M.O->GetIndex());
    EXPECT_EQ(M.Tables.GetScript(), "*\r\nFROM\r\n  CUSTOMERS C\r\n");
}
