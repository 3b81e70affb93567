// The host component's shell: its parts and published settings, and the handlers that keep the
// query model in step with the diagram (tables added, removed and renamed, fields checked and
// unchecked, the clean-up of numbered output aliases, stored procedures and their parameters).
#include "ZvDiagramTestSupport.h"
#include "ZvErrors.h"
#include "ZvFunctionDefs.h"
#include "ZvTestSupport.h"

#include <QSignalSpy>
#include <QSplitter>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

namespace zv {
namespace {

using test::ModelAliases;
using test::ModelFields;
using test::TZvDiagramTest;

TZvFieldDef* ModelField(TZvSelectParser& Parser, const std::string& Alias, const std::string& Name) {
    TZvTableDef* Table = Parser.GetTableDefs().FindByAlias(Alias);
    return Table ? Table->GetFieldDefs().FindByName(Name) : nullptr;
}

// --- the shell ---

TEST(ZvHost, OwnsItsPartsInTheDesignedLayout) {
    TSQLZevrin Host;
    EXPECT_EQ(Host.size(), QSize(300, 340));
    ASSERT_NE(Host.GetWorkArea(), nullptr);
    EXPECT_EQ(Host.GetWorkArea()->GetHost(), &Host);
    EXPECT_EQ(Host.GetPageControl()->objectName(), QStringLiteral("PageCtrl"));
    EXPECT_EQ(Host.GetPalette()->parent(), &Host);
    EXPECT_EQ(Host.GetStyle()->parent(), &Host);
    EXPECT_EQ(Host.GetTables().Count(), 0);
    EXPECT_EQ(Host.GetLinks().Count(), 0);
    auto* Splitter = Host.findChild<QSplitter*>(QStringLiteral("Splitter"));
    ASSERT_NE(Splitter, nullptr);
    EXPECT_EQ(Splitter->handleWidth(), 5);
    EXPECT_EQ(Splitter->indexOf(Host.GetPageControl()), 0);
    EXPECT_EQ(Splitter->indexOf(Host.GetWorkArea()), 1);
}

TEST(ZvHost, TheParserIsMadeOnceByTheFactory) {
    class TCountingFactory : public TSQLZevrin {
    public:
        int Made = 0;

    protected:
        std::unique_ptr<TZvSelectParser> CreateParser() override {
            ++Made;
            return TSQLZevrin::CreateParser();
        }
    };
    TCountingFactory Host;
    TZvSelectParser* Parser = Host.GetParser();
    EXPECT_EQ(Host.GetParser(), Parser);
    EXPECT_EQ(Host.Made, 1);
}

TEST(ZvHost, PublishedSettingsHaveTheirDefaultsAndStoredRules) {
    TSQLZevrin Host;
    EXPECT_EQ(Host.GetOptions(), TZvOptions(zvoRowSelect));
    EXPECT_FALSE(ZvIsStored(Host, "Options"));
    EXPECT_EQ(Host.GetTabHeight(), 170);
    EXPECT_FALSE(ZvIsStored(Host, "TabHeight"));
    EXPECT_TRUE(Host.GetCheckLinkFieldsType());
    EXPECT_FALSE(ZvIsStored(Host, "CheckLinkFieldsType"));
    EXPECT_EQ(Host.property("_Version").toString(), QStringLiteral("2.94"));
    EXPECT_FALSE(ZvIsStored(Host, "_Version"));
    EXPECT_FALSE(Host.GetAutoAlias());
    EXPECT_LT(Host.metaObject()->indexOfProperty("AutoAlias"), 0);
}

TEST(ZvHost, ChangedSettingsAreStoredAndForwarded) {
    TSQLZevrin Host;
    Host.SetOptions(zvoRowSelect | zvoShowFieldTypes);
    EXPECT_TRUE(ZvIsStored(Host, "Options"));
    Host.SetTabHeight(120);
    EXPECT_EQ(Host.GetTabHeight(), 120);
    EXPECT_TRUE(ZvIsStored(Host, "TabHeight"));
    Host.SetCheckLinkFieldsType(false);
    EXPECT_FALSE(Host.GetWorkArea()->GetCheckLinkFieldsType());
    EXPECT_TRUE(ZvIsStored(Host, "CheckLinkFieldsType"));
}

TEST(ZvHost, DragFieldNameFollowsTheOptions) {
    TSQLZevrin Host;
    EXPECT_FALSE(Host.GetWorkArea()->GetDragFieldName());
    Host.SetOptions(zvoDragFieldName);
    EXPECT_TRUE(Host.GetWorkArea()->GetDragFieldName());
}

TEST(ZvHost, LoadingAndDesignModeAreStates) {
    TSQLZevrin Host;
    EXPECT_FALSE(Host.IsLoading());
    Host.BeginLoading();
    EXPECT_TRUE(Host.IsLoading());
    Host.Loaded();
    EXPECT_FALSE(Host.IsLoading());
    Host.SetDesigning(true);
    EXPECT_TRUE(Host.IsDesigning());
}

TEST(ZvHost, UpdatingBracketsTheWorkArea) {
    TSQLZevrin Host;
    Host.BeginUpdate();
    EXPECT_TRUE(Host.IsUpdating());
    EXPECT_TRUE(Host.GetWorkArea()->IsUpdating());
    Host.EndUpdate();
    EXPECT_FALSE(Host.IsUpdating());
    EXPECT_FALSE(Host.GetWorkArea()->IsUpdating());
}

TEST(ZvHost, ATableObjectNeedsAWorkArea) {
    try {
        TZvTable Table(nullptr, nullptr, "EMP");
        FAIL() << "no error";
    } catch (const EZvError& Error) {
        EXPECT_STREQ(Error.what(), "Invalid parent for table object!");
    }
}

// --- tables and the model ---

TEST_F(TZvDiagramTest, AddingATableAddsItToTheModelWithItsAlias) {
    Add("EMP");
    Add("EMP");
    Add("DEPT", "D");
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP", "EMP1", "D"}));
    EXPECT_EQ(Parser->GetTableDefs().Items(1)->GetName(), "EMP");
    EXPECT_EQ(Parser->GetTableDefs().Items(0)->GetTableType(), qttTable);
}

TEST_F(TZvDiagramTest, ATableTheModelAlreadyHoldsIsNotAddedTwice) {
    TZvTableDef* Model = Parser->GetTableDefs().Add();
    Model->SetName("EMP");
    Model->SetAlias("E");
    Add("EMP", "E");
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"E"}));
}

TEST_F(TZvDiagramTest, RemovingATableDeletesItsModelTable) {
    Add("EMP");
    TZvTable* Second = Add("EMP");
    Add("DEPT");
    Host->GetTables().DeleteTable(Second);
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP", "DEPT"}));
}

TEST_F(TZvDiagramTest, ReadingSqlFollowsTheDiagram) {
    TZvTable* Emp = Add("EMP");
    Emp->GetFieldItem("NAME")->SetCheck(true);
    const std::string Sql = Parser->GetExpression();
    EXPECT_NE(Sql.find("NAME"), std::string::npos) << Sql;
    EXPECT_NE(Sql.find("FROM"), std::string::npos) << Sql;
    Host->GetTables().DeleteTable(Emp);
    EXPECT_EQ(Parser->GetExpression().find("EMP"), std::string::npos);
}

TEST_F(TZvDiagramTest, CheckingARowAddsAnIdentifierFieldAndUncheckingRemovesIt) {
    TZvTable* Emp = Add("EMP");
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::RowCheckPoint(*Emp, 1));
    EXPECT_TRUE(Emp->GetItem(1)->GetCheck());
    EXPECT_EQ(ModelFields(*Parser, "EMP"), (std::vector<std::string>{"NAME"}));
    EXPECT_EQ(ModelField(*Parser, "EMP", "NAME")->GetKind(), fkIdentifier);
    EXPECT_EQ(ModelField(*Parser, "EMP", "NAME")->GetAlias(), "");
    EXPECT_EQ(Emp->GetFieldState(), 1);
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::RowCheckPoint(*Emp, 1));
    EXPECT_FALSE(Emp->GetItem(1)->GetCheck());
    EXPECT_TRUE(ModelFields(*Parser, "EMP").empty());
    EXPECT_EQ(Emp->GetFieldState(), 0);
}

TEST_F(TZvDiagramTest, TheCaptionCheckBoxChecksAllRowsOrWhenAllAreCheckedNone) {
    TZvTable* Emp = Add("EMP");
    Emp->GetFieldItem("ID")->SetCheck(true);
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::CheckBoxPoint(*Emp));
    EXPECT_EQ(Emp->GetFieldState(), 2);
    EXPECT_EQ(ModelFields(*Parser, "EMP"), (std::vector<std::string>{"ID", "NAME", "DEPT_ID"}));
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::CheckBoxPoint(*Emp));
    EXPECT_EQ(Emp->GetFieldState(), 0);
    EXPECT_TRUE(ModelFields(*Parser, "EMP").empty());
}

TEST_F(TZvDiagramTest, CheckingAFieldTheModelHoldsAddsNothing) {
    TZvTable* Emp = Add("EMP");
    TZvFieldDef* Existing = Parser->GetTableDefs().FindByAlias("EMP")->GetFieldDefs().Add();
    Existing->SetName("ID");
    Emp->GetFieldItem("ID")->SetCheck(true);
    EXPECT_EQ(ModelFields(*Parser, "EMP"), (std::vector<std::string>{"ID"}));
}

TEST_F(TZvDiagramTest, ARowWithoutFeedbackLeavesTheModelAlone) {
    TZvTable* Emp = Add("EMP");
    TZvListItem* Id = Emp->GetFieldItem("ID");
    Id->SetNoFeedback(true);
    Id->SetCheck(true);
    EXPECT_TRUE(Id->GetCheck());
    EXPECT_TRUE(ModelFields(*Parser, "EMP").empty());
}

TEST_F(TZvDiagramTest, WithAutomaticAliasesACheckedFieldGetsTheModelsAlias) {
    Host->SetAutoAlias(true);
    TZvTable* First = Add("EMP");
    TZvTable* Second = Add("EMP");
    First->GetFieldItem("ID")->SetCheck(true);
    Second->GetFieldItem("ID")->SetCheck(true);
    EXPECT_EQ(ModelField(*Parser, "EMP", "ID")->GetAlias(), "ID");
    EXPECT_EQ(ModelField(*Parser, "EMP1", "ID")->GetAlias(), "ID1");
}

TEST_F(TZvDiagramTest, UncheckingOneOfTwoTwinsGivesTheOtherItsPlainNameBack) {
    Host->SetAutoAlias(true);
    TZvTable* First = Add("EMP");
    TZvTable* Second = Add("EMP");
    First->GetFieldItem("ID")->SetCheck(true);
    Second->GetFieldItem("ID")->SetCheck(true);
    First->GetFieldItem("ID")->SetCheck(false);
    EXPECT_EQ(ModelField(*Parser, "EMP1", "ID")->GetAlias(), "");
}

TEST_F(TZvDiagramTest, TheCleanUpLeavesTwinsWhileTwoRemain) {
    Host->SetAutoAlias(true);
    TZvTable* A = Add("EMP");
    TZvTable* B = Add("EMP");
    TZvTable* C = Add("EMP");
    for (TZvTable* Table : {A, B, C})
        Table->GetFieldItem("ID")->SetCheck(true);
    A->GetFieldItem("ID")->SetCheck(false);
    EXPECT_EQ(ModelField(*Parser, "EMP1", "ID")->GetAlias(), "ID1");
    EXPECT_EQ(ModelField(*Parser, "EMP2", "ID")->GetAlias(), "ID2");
}

TEST_F(TZvDiagramTest, TheCleanUpClearsOnlyANameFollowedByDigits) {
    TZvTable* A = Add("EMP");
    TZvTable* B = Add("EMP");
    A->GetFieldItem("ID")->SetCheck(true);
    B->GetFieldItem("ID")->SetCheck(true);
    ModelField(*Parser, "EMP1", "ID")->SetAlias("ID_2");
    A->GetFieldItem("ID")->SetCheck(false);
    EXPECT_EQ(ModelField(*Parser, "EMP1", "ID")->GetAlias(), "ID_2");
    A->GetFieldItem("ID")->SetCheck(true);
    ModelField(*Parser, "EMP1", "ID")->SetAlias("ID");
    A->GetFieldItem("ID")->SetCheck(false);
    EXPECT_EQ(ModelField(*Parser, "EMP1", "ID")->GetAlias(), "ID");
}

TEST_F(TZvDiagramTest, TheCleanUpCountsOnlyFieldsOfExactlyThatName) {
    TZvTable* A = Add("EMP");
    TZvDataSet Lower = test::FieldsDataSet({"id"});
    TZvTable* B = Host->GetTables().AddTable("LOW", "", &Lower);
    A->GetFieldItem("ID")->SetCheck(true);
    B->GetFieldItem("id")->SetCheck(true);
    ModelField(*Parser, "LOW", "id")->SetAlias("id1");
    A->GetFieldItem("ID")->SetCheck(false);
    EXPECT_EQ(ModelField(*Parser, "LOW", "id")->GetAlias(), "id1");
}

TEST_F(TZvDiagramTest, ClosingATableTakesItsFieldsAndTheirNumberingWithIt) {
    Host->SetAutoAlias(true);
    TZvTable* A = Add("EMP");
    TZvTable* B = Add("EMP");
    A->GetFieldItem("ID")->SetCheck(true);
    B->GetFieldItem("ID")->SetCheck(true);
    Host->GetTables().DeleteTable(A);
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP1"}));
    EXPECT_EQ(ModelField(*Parser, "EMP1", "ID")->GetAlias(), "");
}

TEST_F(TZvDiagramTest, RenamingATableRenamesItsModelTableAndJoins) {
    TZvTable* Emp = Add("EMP");
    TZvTable* Dept = Add("DEPT");
    Host->GetLinks().AddLink(Emp, Dept, Emp->GetFieldItem("DEPT_ID"), Dept->GetFieldItem("ID"));
    Area->EditAlias(*Dept);
    Area->GetAliasEdit()->setText(QStringLiteral("D"));
    Area->CommitAliasEdit();
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP", "D"}));
    EXPECT_EQ(Parser->GetTableDefs().FindByAlias("EMP")->GetJoinDefs().Items(0)->GetTableAlias(), "D");
    Area->EditAlias(*Dept);
    Area->GetAliasEdit()->setText(QStringLiteral("DEPT"));
    Area->CommitAliasEdit();
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP", "DEPT"}));
}

TEST_F(TZvDiagramTest, DottedFieldNamesAreQuotedByTheParser) {
    TZvDataSet Dotted = test::FieldsDataSet({"my field.part", "plain"});
    TZvTable* Table = Host->GetTables().AddTable("T", "", &Dotted);
    const std::string Expected = Parser->GetScanner().ProcessName("my field.part");
    ASSERT_NE(Expected, "my field.part");
    EXPECT_EQ(Table->GetItem(0)->GetName(), Expected);
    EXPECT_EQ(Table->GetItem(1)->GetName(), "plain");
}

TEST_F(TZvDiagramTest, AFieldRowChangeOfAModelFieldRefreshesTheFieldLists) {
    TZvTable* Emp = Add("EMP");
    QSignalSpy Spy(Host.get(), &TCustomZevrin::FieldListsChanged);
    Host->HandleAddRemoveField(*Emp, *Emp->GetFieldItem("ID"));
    EXPECT_EQ(Spy.count(), 0);
    Emp->GetFieldItem("ID")->SetCheck(true);
    Host->HandleAddRemoveField(*Emp, *Emp->GetFieldItem("ID"));
    EXPECT_EQ(Spy.count(), 1);
}

// --- stored procedures ---

class TZvProcTest : public TZvDiagramTest {
protected:
    TZvProcTest() {
        Result.AddFieldDef("TOTAL", ftFloat);
        Params.Add({"FROM_ID", ptInput, ftInteger, TZvValue(7)});
        Params.Add({"LIMIT", ptInputOutput, ftInteger, TZvValue()});
        Params.Add({"TOTAL", ptOutput, ftFloat, TZvValue()});
    }
    TZvDataSet Result;
    TZvParams Params;
};

TEST_F(TZvProcTest, AProcedureGetsTheProcPrefixAndItsParameterRows) {
    TZvTable* Proc = Host->GetTables().AddProc("\"\"", "", &Result, &Params);
    ASSERT_NE(Proc, nullptr);
    EXPECT_EQ(Area->GenerateUniqueAlias("\"\"", "PROC_"), "PROC_11");
    auto* Stored = dynamic_cast<TZvStoredProc*>(Proc);
    ASSERT_NE(Stored, nullptr);
    EXPECT_EQ(Stored->GetParams().Count(), 3);
    ASSERT_EQ(Proc->ItemCount(), 3);
    EXPECT_EQ(Proc->GetItem(0)->GetParamType(), ptOutput);
    EXPECT_EQ(Proc->GetItem(1)->GetName(), "FROM_ID");
    EXPECT_TRUE(Proc->GetItem(1)->GetCheck());
    EXPECT_EQ(Proc->GetItem(2)->GetParamType(), ptInputOutput);
    EXPECT_FALSE(Proc->GetItem(2)->GetCheck());
    EXPECT_EQ(Proc->GetClientColor(), Host->GetPalette()->GetProcClient());
}

TEST_F(TZvProcTest, TheModelTableIsAProcedureWithTheParameterRowsAsInputs) {
    TZvTableDef* Model = Parser->GetTableDefs().Add();
    Model->SetName("GET_TOTAL");
    TZvFieldDef* Stale = Model->GetFieldDefs().Add();
    Stale->SetName("OLD_PARAM");
    Stale->SetUsage(3);
    Host->GetTables().AddProc("GET_TOTAL", "", &Result, &Params);
    ASSERT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"GET_TOTAL"}));
    EXPECT_EQ(Model->GetTableType(), qttStoredProc);
    EXPECT_EQ(ModelFields(*Parser, "GET_TOTAL"), (std::vector<std::string>{"FROM_ID", "LIMIT"}));
    const TZvFieldDef* FromId = Model->GetFieldDefs().Items(0);
    EXPECT_EQ(FromId->GetUsage(), 3);
    EXPECT_EQ(FromId->GetDataType(), ftInteger);
    EXPECT_EQ(FromId->GetValue(), TZvValue(7));
    EXPECT_TRUE(Model->GetFieldDefs().Items(1)->GetValue().IsUnassigned());
}

TEST_F(TZvProcTest, DoubleClickingAParameterRowAsksTheApplicationForItsValue) {
    TZvTable* Proc = Area->AddProcAt("GET_TOTAL", "", &Result, &Params, QPoint(40, 40));
    std::vector<std::string> Asked;
    Host->OnEnterProcParameter = [&](TCustomZevrin& Sender, TZvTable& Table, TZvListItem& Item) {
        EXPECT_EQ(&Sender, Host.get());
        EXPECT_EQ(&Table, Proc);
        Asked.push_back(Item.GetName());
        Item.SetValue(TZvValue(42));
    };
    const QPoint Row = Area->ToViewport(Proc->GetItemRect(Proc->GetItem(2))).center();
    TTableHitTest Hit = htTOutSide;
    EXPECT_EQ(Area->ObjectAt(Row, Hit), Proc);
    EXPECT_EQ(Hit, htTClient);
    // The first click of the double click makes the row current.
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, Row);
    EXPECT_EQ(Proc->GetCurrentItem(), Proc->GetItem(2));
    QTest::mouseDClick(Area->viewport(), Qt::LeftButton, {}, Row);
    EXPECT_EQ(Proc->GetCurrentItem(), Proc->GetItem(2));
    EXPECT_EQ(Asked, (std::vector<std::string>{"LIMIT"}));
    Proc->GetItem(2)->SetReadOnly(true);
    QTest::mouseDClick(Area->viewport(), Qt::LeftButton, {}, Row);
    EXPECT_EQ(Asked.size(), 1u);
}

} // namespace
} // namespace zv
