// The condition trees: the text of single conditions under every kind of operator, of lists under
// every connective and bracketing setting, of the WHERE and HAVING clauses; copying, the operator
// fallback on a change of parser, and the removal of conditions when a table leaves the model.
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "ZvCriteria.h"
#include "ZvOperators.h"
#include "ZvSelectParser.h"
#include "ZvTableDefs.h"

using namespace zv;

namespace {

struct TOperand {
    std::string Text;
    TZvFunctionKind Kind = fkInteger;
};

// Appends the condition "Left Caption Right..." to List: Left a bare column reference, each right
// operand of the kind given.
TZvCriterion* AddCondition(TZvCriterions& List, const std::string& Left, const std::string& Caption,
                           std::initializer_list<TOperand> Right = {}) {
    TZvCriterion* Criterion = List.Add();
    Criterion->GetLeftSide().SetName(Left);
    Criterion->GetLeftSide().SetKind(fkIdentifier);
    Criterion->SetOperatorCaption(Caption);
    for (const TOperand& Operand : Right) {
        TZvFunctionDef* Item = Criterion->GetRightSide().Add();
        Item->SetName(Operand.Text);
        Item->SetKind(Operand.Kind);
    }
    return Criterion;
}

// Appends a group criterion whose nested list joins by Filter; returns the nested list.
TZvCriterions& AddGroup(TZvCriterions& List, TZvCriterionFilter Filter) {
    TZvCriterions& Sub = List.Add()->GetSubItems();
    Sub.SetFilter(Filter);
    return Sub;
}

// A parser with its standard operators and an empty WHERE tree; conditions are bracketed unless a
// test says otherwise.
class Criteria : public ::testing::Test {
protected:
    void SetBracketing(bool Always) { Parser.GetScriptFormat().SetAlwaysBracketConditions(Always); }
    void SetKeywordCase(TZvFormatMode Mode) { Parser.GetScriptFormat().SetKeywordsFormat(Mode); }

    TZvSelectParser Parser;
    TZvWhereItems& Where = Parser.GetWhereItems();
    TZvHavingItems& Having = Parser.GetHavingItems();
};

// A dialect that offers only its own operators, "LIKE" first.
class TLikeFirstParser : public TZvSelectParser {
protected:
    void DefineOperators() override {
        GetOperators().AddOperator("LIKE", "LIKE");
        GetOperators().AddOperator("=", "=");
    }
};

// A dialect with no comparison operators at all.
class TNoOperatorsParser : public TZvSelectParser {
protected:
    void DefineOperators() override {}
};

} // namespace

// ---- connective words -------------------------------------------------------------------------

TEST(ZvCriterionFilter, EachConnectiveHasItsUserVisibleWord) {
    EXPECT_EQ(GetFilterAsString(cfAll), "All");
    EXPECT_EQ(GetFilterAsString(cfAny), "Any");
    EXPECT_EQ(GetFilterAsString(cfNone), "None");
    EXPECT_EQ(GetFilterAsString(cfNotAll), "Not all");
    EXPECT_EQ(GetFilterAsString(cfNot), "Not");
}

TEST(ZvCriterions, ANewListJoinsByAll) {
    TZvCriterions List(nullptr);
    EXPECT_EQ(List.GetFilter(), cfAll);
}

// ---- the parser's parts -------------------------------------------------------------------------

TEST(ZvSelectParser, OwnsTopLevelListsOfTheClausesOwnClassesBoundToItself) {
    TZvSelectParser Parser;
    EXPECT_EQ(Parser.GetWhereItems().GetParser(), &Parser);
    EXPECT_EQ(Parser.GetHavingItems().GetParser(), &Parser);
    EXPECT_EQ(Parser.GetWhereItems().GetOwner(), &Parser);
    EXPECT_NE(dynamic_cast<TZvWhereItem*>(Parser.GetWhereItems().Add()), nullptr);
    EXPECT_NE(dynamic_cast<TZvHavingItem*>(Parser.GetHavingItems().Add()), nullptr);
}

TEST(ZvSelectParser, StartsWithTheStandardOperators) {
    TZvSelectParser Parser;
    ASSERT_EQ(Parser.GetOperators().Count(), 14);
    EXPECT_EQ(Parser.GetOperators().Items(0)->GetCaption(), "=");
    EXPECT_EQ(Parser.GetOperators().Items(13)->GetCaption(), "IS NOT NULL");
}

TEST(ZvSelectParser, TakesTheOperatorsADialectDefines) {
    TLikeFirstParser Parser;
    ASSERT_EQ(Parser.GetOperators().Count(), 2);
    EXPECT_EQ(Parser.GetOperators().Items(0)->GetCaption(), "LIKE");
}

TEST(ZvSelectParser, SetOperatorsCopiesTheGivenList) {
    TZvSelectParser Parser;
    TZvOperators Own(nullptr);
    Own.AddOperator("contains", "CONTAINING");
    Parser.SetOperators(Own);
    ASSERT_EQ(Parser.GetOperators().Count(), 1);
    EXPECT_EQ(Parser.GetOperators().Items(0)->GetName(), "CONTAINING");
    EXPECT_NE(Parser.GetOperators().Items(0), Own.Items(0));
}

TEST_F(Criteria, ClearEmptiesBothTreesAndStartsThemAgainAsAllOf) {
    Where.SetFilter(cfAny);
    AddCondition(Where, "A.X", "=", {{"1"}});
    Having.SetFilter(cfNone);
    AddCondition(Having, "A.Y", "=", {{"2"}});
    Parser.Clear();
    EXPECT_EQ(Where.Count(), 0);
    EXPECT_EQ(Where.GetFilter(), cfAll);
    EXPECT_EQ(Having.Count(), 0);
    EXPECT_EQ(Having.GetFilter(), cfAll);
}

TEST_F(Criteria, AssignOfAParserCopiesBothTrees) {
    Where.SetFilter(cfAny);
    AddCondition(Where, "A.X", "=", {{"1"}});
    AddCondition(Having, "A.Y", ">", {{"2"}});
    TZvSelectParser Copy;
    Copy.Assign(Parser);
    ASSERT_EQ(Copy.GetWhereItems().Count(), 1);
    EXPECT_EQ(Copy.GetWhereItems().GetFilter(), cfAny);
    EXPECT_EQ(Copy.GetWhereItems().Items(0)->GetScript(), "A.X = 1");
    ASSERT_EQ(Copy.GetHavingItems().Count(), 1);
    EXPECT_EQ(Copy.GetHavingItems().Items(0)->GetScript(), "A.Y > 2");
}

// ---- text of one condition --------------------------------------------------------------------

TEST_F(Criteria, AComparisonIsLeftOperatorAndRightSeparatedByBlanks) {
    EXPECT_EQ(AddCondition(Where, "A.X", "=", {{"1"}})->GetScript(), "A.X = 1");
    EXPECT_EQ(AddCondition(Where, "A.NAME", "LIKE", {{"J%", fkString}})->GetScript(), "A.NAME LIKE 'J%'");
}

TEST_F(Criteria, BetweenJoinsItsTwoOperandsWithAnd) {
    EXPECT_EQ(AddCondition(Where, "X", "BETWEEN", {{"1"}, {"5"}})->GetScript(), "X BETWEEN 1 AND 5");
    EXPECT_EQ(AddCondition(Where, "X", "NOT BETWEEN", {{"1"}, {"5"}})->GetScript(), "X NOT BETWEEN 1 AND 5");
}

TEST_F(Criteria, BetweenWithOneOperandWritesABlankForTheMissingOne) {
    EXPECT_EQ(AddCondition(Where, "X", "BETWEEN", {{"1"}})->GetScript(), "X BETWEEN 1 ");
}

TEST_F(Criteria, InWritesItsListWithoutBlanksAfterTheCommas) {
    EXPECT_EQ(AddCondition(Where, "X", "IN", {{"1"}, {"2"}, {"3"}})->GetScript(), "X IN (1,2,3)");
    EXPECT_EQ(AddCondition(Where, "X", "NOT IN", {{"a", fkString}})->GetScript(), "X NOT IN ('a')");
}

TEST_F(Criteria, InWithAnEmptyListStillWritesItsBrackets) {
    EXPECT_EQ(AddCondition(Where, "X", "IN")->GetScript(), "X IN ()");
}

TEST_F(Criteria, AnOperatorWithoutOperandsIsWrittenAfterTheLeftSide) {
    EXPECT_EQ(AddCondition(Where, "X", "IS NULL")->GetScript(), "X IS NULL");
    EXPECT_EQ(AddCondition(Where, "X", "IS NOT NULL")->GetScript(), "X IS NOT NULL");
}

TEST_F(Criteria, AnOperatorWithoutOperandsIgnoresOperandsItWasGiven) {
    EXPECT_EQ(AddCondition(Where, "X", "IS NULL", {{"1"}})->GetScript(), "X IS NULL");
}

TEST_F(Criteria, AOneOperandComparisonWithoutItsOperandIsTheLeftSideAlone) {
    EXPECT_EQ(AddCondition(Where, "A.ACTIVE", "=")->GetScript(), "A.ACTIVE");
}

TEST_F(Criteria, AnUnknownCaptionIsWrittenAsItStandsWithNothingAfterIt) {
    TZvCriterion* Criterion = AddCondition(Where, "X", "=", {{"1"}});
    Criterion->SetOperatorCaption("caption");
    EXPECT_EQ(Criterion->GetScript(), "X caption");
}

TEST_F(Criteria, TheOperatorIsFoundByCaptionAndWrittenByName) {
    Parser.GetOperators().AddOperator("starts with", "STARTING WITH");
    EXPECT_EQ(AddCondition(Where, "X", "Starts With", {{"a", fkString}})->GetScript(), "X STARTING WITH 'a'");
}

TEST_F(Criteria, OperatorWordsAndTheirJoiningWordFollowTheKeywordCase) {
    SetKeywordCase(qfmLowerCase);
    EXPECT_EQ(AddCondition(Where, "X", "BETWEEN", {{"1"}, {"5"}})->GetScript(), "X between 1 and 5");
    EXPECT_EQ(AddCondition(Where, "X", "IS NULL")->GetScript(), "X is null");
    EXPECT_EQ(AddCondition(Where, "X", "IN", {{"1"}})->GetScript(), "X in (1)");
}

TEST_F(Criteria, OperandsThatAreNotBareColumnsAreWrittenByTheirOwnText) {
    TZvCriterion* Criterion = AddCondition(Having, "", ">", {{"P1", fkParameter}});
    TZvFunctionDef& Left = Criterion->GetLeftSide();
    Left.SetName("COUNT");
    Left.SetKind(fkFunction);
    TZvFunctionDef* Star = Left.GetArguments().Add();
    Star->SetName("*");
    Star->SetKind(fkIdentifier);
    EXPECT_EQ(Criterion->GetScript(), "COUNT(*) > :P1");
}

TEST_F(Criteria, ColumnReferencesAreQuotedTablePartAndColumnPartApart) {
    TZvCriterion* Criterion = AddCondition(Where, "O.ORDER DATE", ">", {{"O.SHIP DATE", fkIdentifier}});
    EXPECT_EQ(Criterion->GetScript(), "O.\"ORDER DATE\" > O.\"SHIP DATE\"");
}

TEST_F(Criteria, ProcessNameKeepsADotInsideQuotesWithTheTablePart) {
    TZvCriterion* Criterion = Where.Add();
    EXPECT_EQ(Criterion->ProcessName("\"My.Table\".X"), "\"My.Table\".X");
    EXPECT_EQ(Criterion->ProcessName("\"My.Table\".MY COL"), "\"My.Table\".\"MY COL\"");
}

TEST_F(Criteria, ProcessNameWritesALonePartWithoutTheDot) {
    TZvCriterion* Criterion = Where.Add();
    EXPECT_EQ(Criterion->ProcessName("A."), "A");
    EXPECT_EQ(Criterion->ProcessName("MY COL"), "\"MY COL\"");
}

TEST_F(Criteria, ProcessNameHandsANameOfBlankPartsWholeToTheScannersQuoting) {
    EXPECT_EQ(Where.Add()->ProcessName(" . "), "\" \".\" \"");
}

TEST(ZvCriterion, ProcessNameWithoutAParserLeavesTheNameAsItIs) {
    TZvCriterions List(nullptr);
    EXPECT_EQ(List.Add()->ProcessName("A.MY COL"), "A.MY COL");
}

TEST(ZvCriterion, WithoutAParserTheOperatorIsLeftOutAndTheOperandsListed) {
    // No parser means no operator list to write the operator by: only the operands remain.
    TZvCriterions List(nullptr);
    TZvCriterion* Criterion = AddCondition(List, "X", "BETWEEN", {{"1"}, {"5"}});
    EXPECT_EQ(Criterion->GetScript(), "X  1, 5");
}

TEST(ZvCriterion, WithAnEmptyOperatorListEveryCaptionIsUnknown) {
    TNoOperatorsParser Parser;
    TZvCriterion* Criterion = AddCondition(Parser.GetWhereItems(), "X", "=", {{"1"}});
    EXPECT_EQ(Criterion->GetScript(), "X =");
}

// ---- text of a list -----------------------------------------------------------------------------

TEST_F(Criteria, BracketedWhereTreeOfTwoConditions) {
    AddCondition(Where, "A.X", "=", {{"1"}});
    AddCondition(Where, "A.Y", ">", {{"2"}});
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n  (A.X = 1) AND \r\n  (A.Y > 2)\r\n");
}

TEST_F(Criteria, UnbracketedWhereTreeOfTwoConditions) {
    SetBracketing(false);
    AddCondition(Where, "A.X", "=", {{"1"}});
    AddCondition(Where, "A.Y", ">", {{"2"}});
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n  A.X = 1 AND \r\n  A.Y > 2\r\n");
}

TEST_F(Criteria, AnOrGroupOfTwoStaysBracketedWhereConditionsStandBare) {
    SetBracketing(false);
    AddCondition(Where, "A.X", "=", {{"1"}});
    TZvCriterions& Any = AddGroup(Where, cfAny);
    AddCondition(Any, "A.Y", "=", {{"2"}});
    AddCondition(Any, "A.Z", "=", {{"3"}});
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n  A.X = 1 AND \r\n  (A.Y = 2 OR \r\n  A.Z = 3)\r\n");
}

TEST_F(Criteria, AnOrGroupOfOneStandsBareWhereConditionsStandBare) {
    SetBracketing(false);
    AddCondition(Where, "A.X", "=", {{"1"}});
    AddCondition(AddGroup(Where, cfAny), "A.Y", "=", {{"2"}});
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n  A.X = 1 AND \r\n  A.Y = 2\r\n");
}

TEST_F(Criteria, AnAndGroupStandsBareWhereConditionsStandBare) {
    SetBracketing(false);
    Where.SetFilter(cfAny);
    AddCondition(Where, "A.X", "=", {{"1"}});
    TZvCriterions& All = AddGroup(Where, cfAll);
    AddCondition(All, "A.Y", "=", {{"2"}});
    AddCondition(All, "A.Z", "=", {{"3"}});
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n  A.X = 1 OR \r\n  A.Y = 2 AND \r\n  A.Z = 3\r\n");
}

TEST_F(Criteria, ANoneListOfTwoIsTheNegationOfTheirOr) {
    TZvCriterions& None = AddGroup(Where, cfNone);
    AddCondition(None, "C1", "=", {{"1"}});
    AddCondition(None, "C2", "=", {{"2"}});
    EXPECT_EQ(None.GetScript(), "NOT ((C1 = 1) OR \r\n  (C2 = 2))");
}

TEST_F(Criteria, ANotAllListOfTwoIsTheNegationOfTheirAnd) {
    TZvCriterions& NotAll = AddGroup(Where, cfNotAll);
    AddCondition(NotAll, "C1", "=", {{"1"}});
    AddCondition(NotAll, "C2", "=", {{"2"}});
    EXPECT_EQ(NotAll.GetScript(), "NOT ((C1 = 1) AND \r\n  (C2 = 2))");
}

TEST_F(Criteria, ANotListOfOneNegatesItsCondition) {
    TZvCriterions& Not = AddGroup(Where, cfNot);
    AddCondition(Not, "C1", "=", {{"1"}});
    EXPECT_EQ(Not.GetScript(), "NOT (C1 = 1)");
    SetBracketing(false);
    EXPECT_EQ(Not.GetScript(), "NOT C1 = 1");
}

TEST_F(Criteria, ANotListOfTwoNegatesTheirAnd) {
    SetBracketing(false);
    TZvCriterions& Not = AddGroup(Where, cfNot);
    AddCondition(Not, "C1", "=", {{"1"}});
    AddCondition(Not, "C2", "=", {{"2"}});
    EXPECT_EQ(Not.GetScript(), "NOT (C1 = 1 AND \r\n  C2 = 2)");
}

TEST_F(Criteria, TheNegationBracketsByTheItemsHeldNotByThoseWritten) {
    // The second condition writes nothing, yet the list holds two items: NOT applies to the
    // connective, so the written text is bracketed.
    SetBracketing(false);
    TZvCriterions& Not = AddGroup(Where, cfNot);
    AddCondition(Not, "C1", "=", {{"1"}});
    Not.Add();
    EXPECT_EQ(Not.GetScript(), "NOT (C1 = 1)");
}

TEST_F(Criteria, ConditionsThatWriteNothingLeaveNoConnectiveBehind) {
    Where.Add();
    AddCondition(Where, "A.X", "=", {{"1"}});
    Where.Add();
    AddCondition(Where, "A.Y", "=", {{"2"}});
    Where.Add();
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n  (A.X = 1) AND \r\n  (A.Y = 2)\r\n");
}

TEST_F(Criteria, WritingAppendsToTheTextBeforeAndLeavesItAloneWhenNothingIsWritten) {
    std::string Text = "SELECT";
    Where.Add();
    Where.SetFilter(cfNone);
    Where.WriteScript(Text);
    EXPECT_EQ(Text, "SELECT");
    AddCondition(Where, "A.X", "=", {{"1"}});
    Where.Add();
    AddCondition(Where, "A.Y", "=", {{"2"}});
    Where.WriteScript(Text);
    EXPECT_EQ(Text, "SELECTWHERE\r\n  NOT ((A.X = 1) OR \r\n  (A.Y = 2))\r\n");
    EXPECT_EQ(Text, "SELECT" + Where.GetScript());
}

TEST_F(Criteria, AnEmptyTreeWritesNoClause) {
    EXPECT_EQ(Where.GetScript(), "");
    Where.Add();
    Where.SetFilter(cfNone);
    EXPECT_EQ(Where.GetScript(), "");
    EXPECT_EQ(AddGroup(Where, cfAll).GetScript(), "");
}

TEST_F(Criteria, OnlyATopLevelListEndsWithALineBreak) {
    TZvCriterions& Group = AddGroup(Where, cfAll);
    AddCondition(Group, "A.X", "=", {{"1"}});
    EXPECT_EQ(Group.GetScript(), "(A.X = 1)");
    EXPECT_EQ(Where.Items(0)->GetScript(), "(A.X = 1)");
    EXPECT_EQ(Where.TZvCriterions::GetScript(), "((A.X = 1))\r\n");
}

TEST_F(Criteria, NestedGroupsUnderEveryConnective) {
    // (A OR B) AND NOT (C OR D) AND NOT (E AND F) AND NOT (G) AND (H AND I), each group nested
    // in the top-level list.
    TZvCriterions& Any = AddGroup(Where, cfAny);
    AddCondition(Any, "A", "=", {{"1"}});
    AddCondition(Any, "B", "=", {{"2"}});
    TZvCriterions& None = AddGroup(Where, cfNone);
    AddCondition(None, "C", "=", {{"3"}});
    AddCondition(None, "D", "=", {{"4"}});
    TZvCriterions& NotAll = AddGroup(Where, cfNotAll);
    AddCondition(NotAll, "E", "=", {{"5"}});
    AddCondition(NotAll, "F", "=", {{"6"}});
    TZvCriterions& Not = AddGroup(Where, cfNot);
    AddCondition(Not, "G", "=", {{"7"}});
    TZvCriterions& All = AddGroup(Where, cfAll);
    AddCondition(All, "H", "=", {{"8"}});
    AddCondition(All, "I", "=", {{"9"}});
    SetBracketing(false);
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n"
                                 "  (A = 1 OR \r\n  B = 2) AND \r\n"
                                 "  NOT (C = 3 OR \r\n  D = 4) AND \r\n"
                                 "  NOT (E = 5 AND \r\n  F = 6) AND \r\n"
                                 "  NOT G = 7 AND \r\n"
                                 "  H = 8 AND \r\n  I = 9\r\n");
    SetBracketing(true);
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n"
                                 "  ((A = 1) OR \r\n  (B = 2)) AND \r\n"
                                 "  (NOT ((C = 3) OR \r\n  (D = 4))) AND \r\n"
                                 "  (NOT ((E = 5) AND \r\n  (F = 6))) AND \r\n"
                                 "  (NOT (G = 7)) AND \r\n"
                                 "  ((H = 8) AND \r\n  (I = 9))\r\n");
}

TEST_F(Criteria, GroupsNestDeeperThanOneLevel) {
    SetBracketing(false);
    Where.SetFilter(cfNone);
    TZvCriterions& Outer = AddGroup(Where, cfAll);
    AddCondition(Outer, "A", "=", {{"1"}});
    TZvCriterions& Inner = AddGroup(Outer, cfAny);
    AddCondition(Inner, "B", "=", {{"2"}});
    AddCondition(AddGroup(Inner, cfNot), "C", "=", {{"3"}});
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n  NOT A = 1 AND \r\n  (B = 2 OR \r\n  NOT C = 3)\r\n");
}

TEST_F(Criteria, ConnectivesNotAndTheClauseWordFollowTheKeywordCase) {
    SetKeywordCase(qfmLowerCase);
    Where.SetFilter(cfNone);
    AddCondition(Where, "A.X", "=", {{"1"}});
    AddCondition(Where, "A.Y", "=", {{"2"}});
    EXPECT_EQ(Where.GetScript(), "where\r\n  not ((A.X = 1) or \r\n  (A.Y = 2))\r\n");
    SetKeywordCase(qfmFirstUpper);
    EXPECT_EQ(Where.GetScript(), "Where\r\n  Not ((A.X = 1) or \r\n  (A.Y = 2))\r\n");
}

TEST(ZvCriterions, WithoutAParserEveryItemIsBracketedAndTheWordsStayUpperCase) {
    TZvWhereItems Where(nullptr);
    Where.SetFilter(cfNone);
    AddCondition(Where, "A.X", "IS NULL");
    AddCondition(Where, "A.Y", "IS NULL");
    EXPECT_EQ(Where.GetScript(), "WHERE\r\n  NOT ((A.X ) OR \r\n  (A.Y ))\r\n");
}

// ---- the two clauses ----------------------------------------------------------------------------

TEST_F(Criteria, HavingWithoutGroupByWritesNothing) {
    AddCondition(Having, "A.X", ">", {{"1"}});
    EXPECT_EQ(Having.GetScript(), "");
}

TEST_F(Criteria, HavingWithGroupByIsItsListAfterTheKeyword) {
    Parser.GetGroupByItems().Add("A.Y");
    AddCondition(Having, "A.X", ">", {{"1"}});
    EXPECT_EQ(Having.GetScript(), "HAVING\r\n  (A.X > 1)\r\n");
    SetKeywordCase(qfmLowerCase);
    EXPECT_EQ(Having.GetScript(), "having\r\n  (A.X > 1)\r\n");
}

TEST_F(Criteria, HavingWithGroupByButNoConditionWritesNothing) {
    Parser.GetGroupByItems().Add("A.Y");
    Having.Add();
    EXPECT_EQ(Having.GetScript(), "");
}

TEST(ZvHavingItems, WithoutAParserWritesNothing) {
    TZvHavingItems Having(nullptr);
    AddCondition(Having, "A.X", ">", {{"1"}});
    EXPECT_EQ(Having.GetScript(), "");
}

// ---- sub-lists ----------------------------------------------------------------------------------

TEST_F(Criteria, EveryNestedGroupIsAPlainListOwnedByItsCriterion) {
    for (TZvCriterions* Top : {static_cast<TZvCriterions*>(&Where), static_cast<TZvCriterions*>(&Having)}) {
        TZvCriterion* Item = Top->Add();
        TZvCriterions& Sub = Item->GetSubItems();
        EXPECT_EQ(dynamic_cast<TZvWhereItems*>(&Sub), nullptr);
        EXPECT_EQ(dynamic_cast<TZvHavingItems*>(&Sub), nullptr);
        EXPECT_EQ(Sub.GetOwner(), Item);
        TZvCriterion* Nested = Sub.Add();
        EXPECT_EQ(dynamic_cast<TZvWhereItem*>(Nested), nullptr);
        EXPECT_EQ(dynamic_cast<TZvHavingItem*>(Nested), nullptr);
    }
}

TEST_F(Criteria, TheClauseItemsMakeListsOfTheirOwnClassOnlyWhenAsked) {
    auto* WhereItem = static_cast<TZvWhereItem*>(Where.Add());
    std::unique_ptr<TZvCriterions> WhereSub = WhereItem->CreateSubItems();
    ASSERT_NE(dynamic_cast<TZvWhereItems*>(WhereSub.get()), nullptr);
    EXPECT_EQ(WhereSub->GetOwner(), WhereItem);
    EXPECT_EQ(WhereSub->GetParser(), &Parser);
    EXPECT_NE(dynamic_cast<TZvWhereItem*>(WhereSub->Add()), nullptr);

    auto* HavingItem = static_cast<TZvHavingItem*>(Having.Add());
    std::unique_ptr<TZvCriterions> HavingSub = HavingItem->CreateSubItems();
    ASSERT_NE(dynamic_cast<TZvHavingItems*>(HavingSub.get()), nullptr);
    EXPECT_NE(dynamic_cast<TZvHavingItem*>(HavingSub->Add()), nullptr);

    std::unique_ptr<TZvCriterions> Plain = static_cast<TZvCriterion*>(WhereItem)->CreateSubItems();
    EXPECT_EQ(dynamic_cast<TZvWhereItems*>(Plain.get()), nullptr);
}

// ---- parser hand-over and the operator fallback -------------------------------------------------

TEST(ZvCriterion, SetParserReachesBothSidesAndTheNestedCriteria) {
    TZvSelectParser Parser;
    TZvCriterions List(nullptr);
    TZvCriterion* Group = List.Add();
    TZvCriterion* Nested = AddCondition(Group->GetSubItems(), "A.X", "=", {{"1"}});
    List.SetParser(&Parser);
    EXPECT_EQ(Group->GetLeftSide().GetParser(), &Parser);
    EXPECT_EQ(Group->GetRightSide().GetParser(), &Parser);
    EXPECT_EQ(Group->GetSubItems().GetParser(), &Parser);
    EXPECT_EQ(Nested->GetParser(), &Parser);
    EXPECT_EQ(Nested->GetLeftSide().GetParser(), &Parser);
    EXPECT_EQ(Nested->GetRightSide().Items(0)->GetParser(), &Parser);
}

TEST(ZvCriterion, AnOperatorTheNewParserLacksFallsBackToItsFirstOperator) {
    TZvCriterions List(nullptr);
    TZvCriterion* Criterion = AddCondition(List, "A.X", "CONTAINING", {{"a", fkString}});
    TZvCriterion* Nested = AddCondition(AddGroup(List, cfAll), "A.Y", "CONTAINING", {{"b", fkString}});
    TLikeFirstParser Parser;
    List.SetParser(&Parser);
    EXPECT_EQ(Criterion->GetOperatorCaption(), "LIKE");
    EXPECT_EQ(Nested->GetOperatorCaption(), "LIKE");
    EXPECT_EQ(Criterion->GetScript(), "A.X LIKE 'a'");
}

TEST(ZvCriterion, AnOperatorTheNewParserKnowsIsKeptAsWritten) {
    TZvCriterions List(nullptr);
    TZvCriterion* Criterion = AddCondition(List, "A.X", "is null");
    TZvSelectParser Parser;
    List.SetParser(&Parser);
    EXPECT_EQ(Criterion->GetOperatorCaption(), "is null");
    EXPECT_EQ(Criterion->GetScript(), "A.X IS NULL");
}

TEST(ZvCriterion, AParserWithoutOperatorsLeavesTheCaptionAlone) {
    TZvCriterions List(nullptr);
    TZvCriterion* Criterion = AddCondition(List, "A.X", "CONTAINING");
    TNoOperatorsParser Parser;
    List.SetParser(&Parser);
    EXPECT_EQ(Criterion->GetOperatorCaption(), "CONTAINING");
}

TEST(ZvCriterion, LosingTheParserLeavesTheCaptionAlone) {
    TZvSelectParser Parser;
    TZvCriterions List(nullptr);
    List.SetParser(&Parser);
    TZvCriterion* Criterion = AddCondition(List, "A.X", "CONTAINING");
    List.SetParser(nullptr);
    EXPECT_EQ(Criterion->GetOperatorCaption(), "CONTAINING");
    EXPECT_EQ(Criterion->GetParser(), nullptr);
}

TEST_F(Criteria, ACriterionAddedToAListWithAParserStartsWithItsFirstOperator) {
    EXPECT_EQ(Where.Add()->GetOperatorCaption(), "=");
}

// ---- copying ------------------------------------------------------------------------------------

TEST_F(Criteria, AssignCopiesSidesCaptionSubItemsAndTag) {
    TZvCriterion* Source = Where.Add();
    Source->SetTag(42);
    Source->GetSubItems().SetFilter(cfAny);
    AddCondition(Source->GetSubItems(), "A.X", "BETWEEN", {{"1"}, {"5"}});
    AddCondition(Source->GetSubItems(), "A.Y", "IS NULL");
    Source->GetLeftSide().SetName("A.Z");
    Source->SetOperatorCaption("<>");
    Source->GetRightSide().Add()->SetName("7");

    TZvCriterion* Copy = Where.Add();
    Copy->Assign(*Source);
    EXPECT_EQ(Copy->GetTag(), 42);
    EXPECT_EQ(Copy->GetOperatorCaption(), "<>");
    EXPECT_EQ(Copy->GetLeftSide().GetName(), "A.Z");
    ASSERT_EQ(Copy->GetRightSide().Count(), 1);
    EXPECT_EQ(Copy->GetRightSide().Items(0)->GetName(), "7");
    EXPECT_EQ(Copy->GetSubItems().GetFilter(), cfAny);
    EXPECT_EQ(Copy->GetScript(), Source->GetScript());
    EXPECT_EQ(Copy->GetScript(), "(A.X BETWEEN 1 AND 5) OR \r\n  (A.Y IS NULL)");
    EXPECT_NE(Copy->GetSubItems().Items(0), Source->GetSubItems().Items(0));
}

TEST_F(Criteria, TakeFromMovesSidesCaptionSubItemsAndTagOutOfADetachedCondition) {
    TZvCriterion Source;
    Source.SetParser(&Parser);
    Source.SetTag(42);
    Source.GetSubItems().SetFilter(cfAny);
    TZvCriterion* Nested = AddCondition(Source.GetSubItems(), "A.X", "BETWEEN", {{"1"}, {"5"}});
    AddCondition(Source.GetSubItems(), "A.Y", "IS NULL");
    Source.GetLeftSide().SetName("A.Z");
    Source.SetOperatorCaption("<>");
    TZvFunctionDef* Seven = Source.GetRightSide().Add();
    Seven->SetName("7");
    const std::string Expected = Source.GetScript();

    TZvCriterion* Target = Where.Add();
    Target->GetRightSide().Add()->SetName("OLD");
    Target->TakeFrom(Source);
    EXPECT_EQ(Target->GetTag(), 42);
    EXPECT_EQ(Target->GetOperatorCaption(), "<>");
    EXPECT_EQ(Target->GetLeftSide().GetName(), "A.Z");
    ASSERT_EQ(Target->GetRightSide().Count(), 1);
    EXPECT_EQ(Target->GetRightSide().Items(0), Seven);
    EXPECT_EQ(Target->GetSubItems().GetFilter(), cfAny);
    EXPECT_EQ(Target->GetSubItems().Items(0), Nested);
    EXPECT_EQ(Nested->GetCollection(), &Target->GetSubItems());
    EXPECT_EQ(Target->GetScript(), Expected);
    EXPECT_EQ(Target->GetScript(), "(A.X BETWEEN 1 AND 5) OR \r\n  (A.Y IS NULL)");
    EXPECT_EQ(Source.GetRightSide().Count(), 0);
    EXPECT_EQ(Source.GetSubItems().Count(), 0);
    EXPECT_EQ(Source.GetLeftSide().GetName(), "");
}

TEST_F(Criteria, SettersOfTheSidesAndSubItemsCopyByValue) {
    TZvCriterion* Source = AddCondition(Where, "A.X", "IN", {{"1"}, {"2"}});
    TZvCriterion* Target = Where.Add();
    Target->SetOperatorCaption("IN");
    Target->SetLeftSide(Source->GetLeftSide());
    Target->SetRightSide(Source->GetRightSide());
    EXPECT_EQ(Target->GetScript(), "A.X IN (1,2)");
    Source->GetRightSide().Items(0)->SetName("9");
    EXPECT_EQ(Target->GetScript(), "A.X IN (1,2)");

    TZvCriterions Group(nullptr);
    Group.SetFilter(cfNot);
    AddCondition(Group, "A.Y", "=", {{"3"}});
    Target->SetSubItems(Group);
    EXPECT_EQ(Target->GetScript(), "NOT (A.Y = 3)");
}

TEST_F(Criteria, ACriterionCopiedIntoItsOwnNewChildIsCopiedAsItWasBeforeTheCopy) {
    // The conditions editor turns a condition into a group by giving it a new child that takes
    // over the condition; the child receives the condition as it stood, empty child included.
    TZvCriterion* Condition = AddCondition(Where, "A.X", "=", {{"1"}});
    TZvCriterion* Child = Condition->GetSubItems().Add();
    Child->Assign(*Condition);
    ASSERT_EQ(Condition->GetSubItems().Count(), 1);
    ASSERT_EQ(Condition->GetSubItems().Items(0), Child);
    EXPECT_EQ(Child->GetLeftSide().GetName(), "A.X");
    EXPECT_EQ(Child->GetOperatorCaption(), "=");
    ASSERT_EQ(Child->GetSubItems().Count(), 1);
    const TZvCriterion* Former = Child->GetSubItems().Items(0);
    EXPECT_EQ(Former->GetLeftSide().GetName(), "");
    EXPECT_EQ(Former->GetSubItems().Count(), 0);
}

TEST_F(Criteria, ACriterionTakesOverOneOfItsOwnNestedCriteria) {
    TZvCriterion* Group = Where.Add();
    Group->SetTag(1);
    TZvCriterion* Nested = AddCondition(Group->GetSubItems(), "A.X", "=", {{"1"}});
    Nested->SetTag(7);
    Group->Assign(*Nested);
    EXPECT_EQ(Group->GetSubItems().Count(), 0);
    EXPECT_EQ(Group->GetTag(), 7);
    EXPECT_EQ(Group->GetScript(), "A.X = 1");
}

TEST_F(Criteria, AListAssignedFromAListNestedInItKeepsACopy) {
    TZvCriterions& Sub = AddGroup(Where, cfAny);
    AddCondition(Sub, "A.X", "=", {{"1"}});
    AddCondition(Sub, "A.Y", "=", {{"2"}});
    Where.Assign(Sub);
    EXPECT_EQ(Where.GetFilter(), cfAny);
    ASSERT_EQ(Where.Count(), 2);
    EXPECT_EQ(Where.Items(1)->GetScript(), "A.Y = 2");
}

// ---- tables leaving the model --------------------------------------------------------------------

class CriteriaOfTables : public Criteria {
protected:
    void SetUp() override {
        AddTable("ORDERS", "O");
        AddTable("CUSTOMERS", "C");
    }
    TZvTableDef* AddTable(const std::string& Name, const std::string& Alias) {
        TZvTableDef* Table = Parser.GetTableDefs().Add();
        Table->SetName(Name);
        Table->SetAlias(Alias);
        return Table;
    }
    void DeleteTable(const std::string& Alias) {
        TZvTableDefs& Tables = Parser.GetTableDefs();
        Tables.Delete(Tables.FindByAlias(Alias)->GetIndex());
    }
    static std::vector<std::string> Texts(const TZvCriterions& List) {
        std::vector<std::string> Result;
        for (int I = 0; I < List.Count(); ++I)
            Result.push_back(List.Items(I)->GetScript());
        return Result;
    }
};

TEST_F(CriteriaOfTables, DeletingATableDropsTheTopLevelConditionsThatNameIt) {
    AddCondition(Where, "O.AMOUNT", ">", {{"100"}});
    AddCondition(Where, "C.NAME", "LIKE", {{"A%", fkString}});
    AddCondition(Where, "C.ID", "=", {{"O.CUST_ID", fkIdentifier}});
    AddCondition(Having, "O.TOTAL", ">", {{"5"}});
    AddCondition(Having, "C.CITY", "IS NOT NULL");
    DeleteTable("O");
    EXPECT_EQ(Texts(Where), std::vector<std::string>({"C.NAME LIKE 'A%'"}));
    EXPECT_EQ(Texts(Having), std::vector<std::string>({"C.CITY IS NOT NULL"}));
}

TEST_F(CriteriaOfTables, DeletingATableDropsAWholeGroupThatNamesItAnywhereInside) {
    TZvCriterions& Any = AddGroup(Where, cfAny);
    AddCondition(Any, "C.NAME", "=", {{"x", fkString}});
    TZvCriterions& Deep = AddGroup(Any, cfAll);
    AddCondition(Deep, "O.ID", "IS NULL");
    AddCondition(Where, "C.ID", ">", {{"0"}});
    DeleteTable("O");
    EXPECT_EQ(Texts(Where), std::vector<std::string>({"C.ID > 0"}));
}

TEST_F(CriteriaOfTables, ConditionsNamingOnlyOtherTablesSurvive) {
    AddCondition(Where, "C.NAME", "=", {{"x", fkString}});
    AddCondition(Where, "C.ID", "IN", {{"1"}, {"2"}});
    DeleteTable("O");
    EXPECT_EQ(Where.Count(), 2);
}

TEST_F(CriteriaOfTables, ConditionsAreMatchedWithoutRegardToCaseWhenIdentifiersAreCaseBlind) {
    AddCondition(Where, "o.AMOUNT", ">", {{"100"}});
    AddCondition(Where, "C.ID", ">", {{"0"}});
    DeleteTable("O");
    EXPECT_EQ(Texts(Where), std::vector<std::string>({"C.ID > 0"}));
}

TEST_F(CriteriaOfTables, ConditionsAreMatchedWithRegardToCaseWhenIdentifiersAreCaseSensitive) {
    Parser.SetCaseSensitiveIdentifiers(true);
    AddCondition(Where, "o.AMOUNT", ">", {{"100"}});
    AddCondition(Where, "O.AMOUNT", "<", {{"5"}});
    DeleteTable("O");
    EXPECT_EQ(Texts(Where), std::vector<std::string>({"o.AMOUNT > 100"}));
}

TEST_F(CriteriaOfTables, ATableWithoutAliasIsNamedByItsName) {
    AddTable("ITEMS", "");
    AddCondition(Where, "ITEMS.QTY", ">", {{"1"}});
    AddCondition(Where, "C.ID", ">", {{"0"}});
    DeleteTable("");
    EXPECT_EQ(Texts(Where), std::vector<std::string>({"C.ID > 0"}));
}

TEST_F(CriteriaOfTables, ClearingTheTablesLeavesTheConditionsToTheCaller) {
    // Clearing the whole model is not a deletion of single tables: the parser clears the trees
    // itself, and a bare table clear touches nothing else.
    AddCondition(Where, "O.AMOUNT", ">", {{"100"}});
    Parser.GetTableDefs().Clear();
    EXPECT_EQ(Where.Count(), 1);
}

namespace {
// What a criterion holds that a new one must not: every part compared with a new criterion of
// the same list class in a parser of its own.
void ExpectLikeNew(const TZvCriterion& Item, const TZvCriterion& New) {
    EXPECT_EQ(Item.GetLeftSide().GetName(), "");
    EXPECT_EQ(Item.GetLeftSide().GetKind(), fkUnknown);
    EXPECT_EQ(Item.GetLeftSide().GetTag(), 0);
    EXPECT_FALSE(Item.GetLeftSide().HasArguments());
    EXPECT_EQ(Item.GetOperatorCaption(), New.GetOperatorCaption());
    EXPECT_EQ(Item.GetRightSide().Count(), 0);
    EXPECT_EQ(Item.GetSubItems().Count(), 0);
    EXPECT_EQ(Item.GetSubItems().GetFilter(), cfAll);
    EXPECT_EQ(Item.GetTag(), 0);
    EXPECT_EQ(Item.GetScript(), New.GetScript());
}

// Fills List with conditions that use every part of a criterion.
void FillEveryPart(TZvCriterions& List) {
    TZvCriterion* Call = AddCondition(List, "", "IN", {{"1"}, {"2"}, {"'three'", fkString}});
    Call->GetLeftSide().SetName("UPPER");
    Call->GetLeftSide().SetKind(fkFunction);
    Call->GetLeftSide().GetArguments().Add()->SetName("A.NAME");
    Call->GetLeftSide().SetTag(9);
    Call->SetTag(42);
    TZvCriterions& Any = AddGroup(List, cfNone);
    AddCondition(Any, "A.X", "=", {{"1"}});
    AddCondition(AddGroup(Any, cfAny), "A.Y", "<", {{"2"}});
    List.SetFilter(cfAny);
}
} // namespace

TEST_F(Criteria, AConditionAddedAfterAClearIsAsNewWhateverTheClearedConditionsHeld) {
    TZvSelectParser Other;
    for (TZvCriterions* List : {static_cast<TZvCriterions*>(&Where), static_cast<TZvCriterions*>(&Parser.GetHavingItems())}) {
        const bool IsWhere = List == &Where;
        TZvCriterions& NewList = IsWhere ? static_cast<TZvCriterions&>(Other.GetWhereItems())
                                         : static_cast<TZvCriterions&>(Other.GetHavingItems());
        const TZvCriterion* New = NewList.Add();
        FillEveryPart(*List);
        List->Clear();
        List->SetFilter(cfAll);
        ASSERT_EQ(List->Count(), 0);
        for (int I = 0; I < 3; ++I) {
            TZvCriterion* Item = List->Add();
            EXPECT_EQ(Item->GetIndex(), I);
            EXPECT_EQ(Item->GetParser(), &Parser);
            EXPECT_EQ(Item->GetRightSide().GetParser(), &Parser);
            EXPECT_EQ(Item->GetSubItems().GetParser(), &Parser);
            const TZvCriterion& Made = *Item;
            const TZvCriterion& Wanted = *New;
            EXPECT_EQ(typeid(Made), typeid(Wanted));
            ExpectLikeNew(*Item, *New);
        }
        List->Clear();
        FillEveryPart(*List);
        List->Clear();
        // One standing alone is as MakeItem makes it: in no list, without a parser.
        const std::unique_ptr<TZvCollectionItem> Alone = List->MakeItem();
        EXPECT_EQ(Alone->GetCollection(), nullptr);
        EXPECT_EQ(Alone->GetIndex(), -1);
        EXPECT_EQ(Alone->GetParser(), nullptr);
        const std::unique_ptr<TZvCollectionItem> NewAlone = NewList.MakeItem();
        EXPECT_EQ(static_cast<TZvCriterion&>(*Alone).GetOperatorCaption(),
                  static_cast<TZvCriterion&>(*NewAlone).GetOperatorCaption());
    }
}

TEST_F(Criteria, ATreeRebuiltAfterAClearIsWrittenAsTheSameTreeInANewParser) {
    FillEveryPart(Where);
    AddCondition(Where, "A.Z", "BETWEEN", {{"1"}, {"9"}});
    Parser.Clear();
    TZvSelectParser Other;
    for (TZvSelectParser* P : {&Parser, &Other}) {
        TZvWhereItems& List = P->GetWhereItems();
        AddCondition(List, "B.ID", "=", {{"4"}});
        AddCondition(AddGroup(List, cfAny), "B.KIND", "IS NULL");
        P->GetTableDefs().Add()->SetName("B");
    }
    EXPECT_EQ(Parser.GetWhereItems().GetScript(), Other.GetWhereItems().GetScript());
    EXPECT_EQ(Parser.GetExpression(), Other.GetExpression());
}

namespace {
// A condition class of its own, holding more than a plain condition.
struct TNotedCriterion : TZvCriterion {
    int Note = 0;
};
} // namespace

TEST(TZvCriterions, ConditionsOfAnotherClassAreMadeAnewAfterAClear) {
    TZvSelectParser Parser;
    TZvCriterions Noted(&Parser, ItemClassOf<TNotedCriterion>());
    static_cast<TNotedCriterion*>(Noted.Add())->Note = 5;
    Noted.Clear();
    auto* Again = dynamic_cast<TNotedCriterion*>(Noted.Add());
    ASSERT_NE(Again, nullptr);
    EXPECT_EQ(Again->Note, 0);
}
