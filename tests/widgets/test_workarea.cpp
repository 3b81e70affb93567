// The work area: its owner check, alias generation, placement without overlap, remembered
// positions, the table list order, the control messages (with exceptions carried back to the
// sender), links and the model's joins, selection and keyboard, alias editing, cursors, hints and
// the painting order. Input-driven behaviour is driven by real mouse and key events.
#include "ZvDiagramTestSupport.h"
#include "ZvErrors.h"
#include "ZvTestSupport.h"
#include "dialects/ZvPgDialect.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QMenu>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <stdexcept>

namespace zv {
namespace {

using test::DiagramAliases;
using test::ModelAliases;
using test::TZvDiagramTest;
using test::TZvMessageRecorder;

using test::Grab;
using test::HoverAt;
using test::TPointerAt;
using test::WaitFor;

// --- construction ---

TEST(ZvWorkAreaOwner, AnOwnerOtherThanAHostComponentIsRefused) {
    QWidget NotAHost;
    try {
        TZvWorkArea Area(&NotAHost);
        FAIL() << "no error";
    } catch (const EZvError& Error) {
        EXPECT_STREQ(Error.what(), "Given parent is not valid for work area!");
    }
    EXPECT_TRUE(NotAHost.children().isEmpty());
    EXPECT_THROW(TZvWorkArea(nullptr), EZvError);
}

TEST_F(TZvDiagramTest, TheSurfaceIs5000By5000Pixels) {
    const QSize View = Area->viewport()->size();
    EXPECT_EQ(Area->horizontalScrollBar()->maximum(), 5000 - View.width());
    EXPECT_EQ(Area->verticalScrollBar()->maximum(), 5000 - View.height());
}

TEST_F(TZvDiagramTest, ControlMessagesCarryTheirDesignedNumbers) {
    EXPECT_EQ(CMMoveControl, 0xB067);
    EXPECT_EQ(CMResizeControl, 0xB068);
    EXPECT_EQ(CMCloseTable, 0xB069);
    EXPECT_EQ(CMUnlinkTable, 0xB06A);
    EXPECT_EQ(CMDeleteLink, 0xB06B);
}

// --- aliases ---

TEST_F(TZvDiagramTest, AddingEmpThreeTimesGivesEmpEmp1AndEmp2) {
    Add("EMP");
    Add("EMP");
    Add("EMP");
    EXPECT_EQ(DiagramAliases(*Area), (std::vector<std::string>{"EMP2", "EMP1", "EMP"}));
    EXPECT_EQ(Area->TableAt(2)->GetRawAlias(), "");
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP", "EMP1", "EMP2"}));
}

TEST_F(TZvDiagramTest, ADottedNameWhoseLastPartIsTakenIsNumberedFromThatPart) {
    Add("EMP");
    TZvTable* Dotted = Add("db.schema.EMP");
    EXPECT_EQ(Dotted->GetAlias(), "EMP1");
    EXPECT_EQ(Dotted->GetName(), "db.schema.EMP");
}

TEST_F(TZvDiagramTest, ADottedNameStandsForItselfWhileNothingClashes) {
    EXPECT_EQ(Area->GenerateUniqueAlias("db.schema.EMP", "TABLE_"), "db.schema.EMP");
    EXPECT_EQ(Add("db.schema.EMP")->GetAlias(), "db.schema.EMP");
    EXPECT_EQ(Area->GenerateUniqueAlias("other.EMP.", "TABLE_"), "other.EMP.");
    Add("EMP");
    EXPECT_EQ(DiagramAliases(*Area).front(), "EMP");
}

TEST_F(TZvDiagramTest, ANameOfQuotesAloneIsNumberedFromThePrefix) {
    const std::string Quotes = "\"\"";
    EXPECT_EQ(Add(Quotes)->GetAlias(), Quotes);
    EXPECT_EQ(Add(Quotes)->GetAlias(), "TABLE_11");
    EXPECT_EQ(Area->GenerateUniqueAlias(Quotes, "PROC_"), "PROC_11");
}

TEST_F(TZvDiagramTest, AnExplicitAliasIsKeptAndNumberedWhenTaken) {
    EXPECT_EQ(Add("EMP", "E")->GetAlias(), "E");
    EXPECT_EQ(Add("DEPT", "E")->GetAlias(), "E1");
    EXPECT_EQ(Add("DEPT", "   ")->GetAlias(), "DEPT");
}

class TZvLowerCaseZevrin : public TSQLZevrin {
protected:
    std::unique_ptr<TZvSelectParser> CreateParser() override { return std::make_unique<TZvPgSelectParser>(); }
};

TEST(ZvWorkAreaAliases, ADialectThatFoldsToLowerCaseNumbersFromALowerCasePrefix) {
    TZvLowerCaseZevrin Host;
    EXPECT_EQ(Host.GetWorkArea()->GenerateUniqueAlias("\"\"", "TABLE_"), "\"\"");
    Host.GetTables().AddTable("\"\"", "", nullptr);
    EXPECT_EQ(Host.GetWorkArea()->GenerateUniqueAlias("\"\"", "TABLE_"), "table_11");
}

// --- look-up and order ---

TEST_F(TZvDiagramTest, GetTableWithoutAnAliasAnswersOnlyForASingleTable) {
    EXPECT_EQ(Area->GetTable(""), nullptr);
    TZvTable* Emp = Add("EMP");
    EXPECT_EQ(Area->GetTable(""), Emp);
    EXPECT_EQ(Area->GetTable("   "), Emp);
    Add("DEPT");
    EXPECT_EQ(Area->GetTable(""), nullptr);
}

TEST_F(TZvDiagramTest, GetTableComparesTheTrimmedAliasExactly) {
    TZvTable* Emp = Add("EMP", "E");
    EXPECT_EQ(Area->GetTable(" E "), Emp);
    EXPECT_EQ(Area->GetTable("e"), nullptr);
    EXPECT_EQ(Area->GetTable("EMP"), nullptr);
}

TEST_F(TZvDiagramTest, NewTablesGoToTheFrontAndAreSelected) {
    TZvTable* A = Add("A");
    TZvTable* B = Add("B");
    EXPECT_EQ(Area->TableAt(0), B);
    EXPECT_EQ(Area->GetSelected(), B);
    EXPECT_TRUE(B->GetSelected());
    EXPECT_FALSE(A->GetSelected());
}

TEST_F(TZvDiagramTest, TableToFrontKeepsTheOthersInOrder) {
    Add("A");
    Add("B");
    Add("C");
    Add("D");
    Area->TableToFront(Area->GetTable("B"));
    EXPECT_EQ(DiagramAliases(*Area), (std::vector<std::string>{"B", "D", "C", "A"}));
    Area->TableToFront(Area->GetTable("B"));
    EXPECT_EQ(DiagramAliases(*Area), (std::vector<std::string>{"B", "D", "C", "A"}));
}

TEST_F(TZvDiagramTest, FindByNameAndAliasCompareAsTheParserDoes) {
    TZvTable* Emp = Add("EMP", "E");
    EXPECT_EQ(Host->GetTables().FindByName("emp"), Emp);
    EXPECT_EQ(Host->GetTables().FindByAlias("e"), Emp);
    Parser->SetCaseSensitiveIdentifiers(true);
    EXPECT_EQ(Host->GetTables().FindByName("emp"), nullptr);
    EXPECT_EQ(Host->GetTables().FindByAlias("E"), Emp);
    EXPECT_EQ(Host->GetTables().FindByAlias("X"), nullptr);
}

// --- placement ---

TEST_F(TZvDiagramTest, TheFirstTableIsPlacedAt50By20) {
    TZvTable* Emp = Add("EMP");
    EXPECT_EQ(Emp->GetLeft(), 50);
    EXPECT_EQ(Emp->GetTop(), 20);
}

TEST_F(TZvDiagramTest, EachCollisionPushesTheNewTableTenPixelsPastTheOther) {
    TZvTable* First = Add("EMP");
    TZvTable* Second = Add("DEPT");
    EXPECT_EQ(Second->GetLeft(), First->GetLeft() + First->GetWidth() + 10);
    EXPECT_EQ(Second->GetTop(), 20);
    TZvTable* Third = Add("EMP");
    EXPECT_EQ(Third->GetLeft(), Second->GetLeft() + Second->GetWidth() + 10);
}

TEST_F(TZvDiagramTest, AutomaticPlacementNeverOverlaps) {
    Host->GetTables().AddTableAt("X", "", &EmpFields, QPoint(200, 0));
    Host->GetTables().AddTableAt("Y", "", &DeptFields, QPoint(95, 60));
    for (int I = 0; I < 12; ++I)
        Add(I % 2 ? "EMP" : "DEPT");
    for (int I = 0; I < Area->TableCount(); ++I)
        for (int J = I + 1; J < Area->TableCount(); ++J)
            EXPECT_FALSE(Area->TableAt(I)->GetBoundsRect().intersects(Area->TableAt(J)->GetBoundsRect()))
                << Area->TableAt(I)->GetAlias() << " and " << Area->TableAt(J)->GetAlias();
}

TEST_F(TZvDiagramTest, AddingAtAPointPlacesThereAndClampsNegativeCoordinates) {
    TZvTable* At = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(300, 400));
    EXPECT_EQ(QPoint(At->GetLeft(), At->GetTop()), QPoint(300, 400));
    TZvTable* Overlapping = Host->GetTables().AddTableAt("DEPT", "", &DeptFields, QPoint(300, 400));
    EXPECT_EQ(QPoint(Overlapping->GetLeft(), Overlapping->GetTop()), QPoint(300, 400));
    TZvTable* Negative = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(-40, -7));
    EXPECT_EQ(QPoint(Negative->GetLeft(), Negative->GetTop()), QPoint(0, 0));
}

TEST_F(TZvDiagramTest, ATableIsWidenedToShowItsWholeCaption) {
    TZvTable* Long = Add("A_VERY_LONG_TABLE_NAME_THAT_NEEDS_ROOM", "AND_A_LONG_ALIAS_AS_WELL");
    EXPECT_GT(Long->GetWidth(), 100);
    EXPECT_GE(Long->GetCaptionRect().width(), Long->CaptionRect(false).width());
    EXPECT_EQ(Add("T")->GetWidth(), 100);
}

TEST_F(TZvDiagramTest, AfterClearContentsATableComesBackWhereItWas) {
    TZvTable* Emp = Add("EMP", "E");
    Emp->SetTopLeft(QPoint(321, 123));
    Emp->SetWidth(180);
    Emp->SetHeight(150);
    Emp->SetExpand(false);
    Add("DEPT");
    Area->ClearContents();
    EXPECT_EQ(Area->TableCount(), 0);
    ASSERT_EQ(Area->GetArrangements().Count(), 2);
    const int Index = Area->GetArrangements().IndexOf("E");
    ASSERT_GE(Index, 0);
    const TZvObjectArrangement& Saved = Area->GetArrangements().Items(Index);
    EXPECT_EQ(&Saved, &Area->GetArrangements()[Index]);
    EXPECT_THROW(Area->GetArrangements().Items(2), std::out_of_range);
    EXPECT_EQ(Saved.Left, 321);
    EXPECT_EQ(Saved.Top, 123);
    EXPECT_EQ(Saved.Width, 180);
    EXPECT_EQ(Saved.Height, 150);
    EXPECT_FALSE(Saved.Expanded);

    TZvTable* Again = Add("EMP", "E");
    EXPECT_EQ(QRect(Again->GetLeft(), Again->GetTop(), Again->GetWidth(), Again->GetHeight()),
              QRect(321, 123, 180, 150));
    EXPECT_FALSE(Again->GetExpand());
    EXPECT_EQ(Area->GetArrangements().IndexOf("e"), -1);
}

TEST_F(TZvDiagramTest, ARememberedPlaceThatIsTakenIsStillAvoided) {
    Add("EMP");
    Area->ClearContents();
    TZvTable* Blocker = Host->GetTables().AddTableAt("DEPT", "", &DeptFields, QPoint(50, 20));
    TZvTable* Again = Add("EMP");
    EXPECT_EQ(Again->GetLeft(), Blocker->GetLeft() + Blocker->GetWidth() + 10);
}

// --- the host's veto ---

TEST_F(TZvDiagramTest, AVetoedAdditionLeavesEverythingUnchanged) {
    Add("DEPT");
    int Asked = 0;
    Host->OnAddRemoveTable = [&](TCustomZevrin&, TZvTable& Table, TZvAction Action, bool& Accept) {
        ++Asked;
        EXPECT_EQ(Action, zvaAdd);
        EXPECT_EQ(Table.GetName(), "EMP");
        Accept = false;
    };
    EXPECT_EQ(Add("EMP"), nullptr);
    EXPECT_EQ(Asked, 1);
    EXPECT_EQ(DiagramAliases(*Area), (std::vector<std::string>{"DEPT"}));
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"DEPT"}));
}

TEST_F(TZvDiagramTest, DeleteTableTravelsAsCloseTableAndCanBeVetoed) {
    TZvTable* Emp = Add("EMP");
    std::vector<TZvAction> Actions;
    bool Refuse = true;
    Host->OnAddRemoveTable = [&](TCustomZevrin&, TZvTable&, TZvAction Action, bool& Accept) {
        Actions.push_back(Action);
        Accept = !Refuse;
    };
    Host->GetTables().DeleteTable(Emp);
    EXPECT_EQ(Area->TableCount(), 1);
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP"}));
    Refuse = false;
    Host->GetTables().DeleteTable(Emp);
    EXPECT_EQ(Area->TableCount(), 0);
    EXPECT_TRUE(ModelAliases(*Parser).empty());
    EXPECT_EQ(Actions, (std::vector<TZvAction>{zvaRemove, zvaRemove}));
}

TEST_F(TZvDiagramTest, AnExceptionWhileAMessageIsHandledReachesTheSender) {
    TZvTable* Emp = Add("EMP");
    Host->OnAddRemoveTable = [](TCustomZevrin&, TZvTable&, TZvAction, bool&) {
        throw std::runtime_error("refused by the application");
    };
    try {
        Host->GetTables().DeleteTable(Emp);
        FAIL() << "no error";
    } catch (const std::runtime_error& Error) {
        EXPECT_STREQ(Error.what(), "refused by the application");
    }
    EXPECT_EQ(Area->TableAt(0), Emp);
    // The same failure from a user action goes to the error display instead of into Qt.
    TZvMessageRecorder Recorder;
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::CaptionPoint(*Emp));
    QTest::keyClick(Area, Qt::Key_Delete);
    ASSERT_EQ(Recorder.Errors.size(), 1u);
    EXPECT_EQ(Recorder.Errors[0].Message, QStringLiteral("refused by the application"));
    EXPECT_EQ(Area->TableCount(), 1);
}

// --- links and the model's joins ---

class TZvLinkTest : public TZvDiagramTest {
protected:
    TZvLinkTest() {
        EmpTable = Add("EMP", "E");
        DeptTable = Add("DEPT", "D");
    }
    TZvLink* LinkEmpToDept() {
        return Host->GetLinks().AddLink(EmpTable, DeptTable, EmpTable->GetFieldItem("DEPT_ID"),
                                        DeptTable->GetFieldItem("ID"));
    }
    TZvJoinDefs& EmpJoins() { return Parser->GetTableDefs().FindByAlias("E")->GetJoinDefs(); }

    TZvTable* EmpTable;
    TZvTable* DeptTable;
};

TEST_F(TZvLinkTest, AddingALinkRecordsTheJoinInTheModel) {
    TZvLink* Link = LinkEmpToDept();
    ASSERT_NE(Link, nullptr);
    EXPECT_EQ(Host->GetLinks().Count(), 1);
    EXPECT_EQ(Area->JoinCount(), 1);
    ASSERT_EQ(EmpJoins().Count(), 1);
    EXPECT_EQ(EmpJoins().Items(0)->GetLeftField(), "DEPT_ID");
    EXPECT_EQ(EmpJoins().Items(0)->GetTableAlias(), "D");
    EXPECT_EQ(EmpJoins().Items(0)->GetRightField(), "ID");
    EXPECT_EQ(Link->GetLinkID(), "EMP_DEPT_ID-DEPT_ID");
    EXPECT_EQ(Link->GetHint(), QStringLiteral("E.DEPT_ID=D.ID"));
    EXPECT_EQ(Host->GetLinks().FindLinkByID("EMP_DEPT_ID-DEPT_ID"), Link);
    EXPECT_EQ(Host->GetLinks().FindLinkByID("emp_DEPT_ID-DEPT_ID"), nullptr);
    EXPECT_EQ(Host->GetLinks().FindLink(DeptTable, EmpTable, DeptTable->GetFieldItem("ID"),
                                        EmpTable->GetFieldItem("DEPT_ID")),
              Link);
}

TEST_F(TZvLinkTest, AnEqualModelJoinIsNotRecordedTwice) {
    TZvJoinDef* Existing = EmpJoins().Add();
    Existing->SetLeftField("DEPT_ID");
    Existing->SetTableAlias("D");
    Existing->SetRightField("ID");
    ASSERT_NE(LinkEmpToDept(), nullptr);
    EXPECT_EQ(EmpJoins().Count(), 1);
}

TEST_F(TZvLinkTest, LinksBetweenTheSameTablesShareOneJoin) {
    LinkEmpToDept();
    Host->GetLinks().AddLink(EmpTable, DeptTable, EmpTable->GetFieldItem("NAME"),
                             DeptTable->GetFieldItem("TITLE"));
    EXPECT_EQ(Host->GetLinks().Count(), 2);
    EXPECT_EQ(Area->JoinCount(), 1);
    EXPECT_EQ(EmpJoins().Count(), 2);
}

TEST_F(TZvLinkTest, AVetoedLinkLeavesNoJoinBehind) {
    Host->OnAddRemoveLink = [](TCustomZevrin&, TZvLink&, TZvAction, bool& Accept) { Accept = false; };
    EXPECT_EQ(LinkEmpToDept(), nullptr);
    EXPECT_EQ(Host->GetLinks().Count(), 0);
    EXPECT_EQ(Area->JoinCount(), 0);
    EXPECT_EQ(EmpJoins().Count(), 0);
}

TEST_F(TZvLinkTest, DeleteLinkRemovesTheModelJoinUnlessVetoed) {
    TZvLink* Link = LinkEmpToDept();
    bool Refuse = true;
    Host->OnAddRemoveLink = [&](TCustomZevrin&, TZvLink&, TZvAction Action, bool& Accept) {
        EXPECT_EQ(Action, zvaRemove);
        Accept = !Refuse;
    };
    Host->GetLinks().DeleteLink(Link);
    EXPECT_EQ(Host->GetLinks().Count(), 1);
    EXPECT_EQ(EmpJoins().Count(), 1);
    Refuse = false;
    Host->GetLinks().DeleteLink(Link);
    EXPECT_EQ(Host->GetLinks().Count(), 0);
    EXPECT_EQ(Area->JoinCount(), 0);
    EXPECT_EQ(EmpJoins().Count(), 0);
}

TEST_F(TZvLinkTest, TheUnlinkButtonRemovesEveryLinkOfTheTable) {
    LinkEmpToDept();
    TZvTable* Other = Add("EMP", "X");
    Host->GetLinks().AddLink(Other, EmpTable, Other->GetFieldItem("ID"), EmpTable->GetFieldItem("ID"));
    Host->GetLinks().AddLink(Other, DeptTable, Other->GetFieldItem("ID"), DeptTable->GetFieldItem("ID"));
    ASSERT_EQ(Host->GetLinks().Count(), 3);
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::ButtonPoint(*DeptTable, 1));
    EXPECT_EQ(Host->GetLinks().Count(), 1);
    EXPECT_EQ(Host->GetLinks().Links(0)->GetJoin()->GetTable2(), EmpTable);
    EXPECT_EQ(EmpJoins().Count(), 0);
    EXPECT_EQ(Parser->GetTableDefs().FindByAlias("X")->GetJoinDefs().Count(), 1);
}

TEST_F(TZvLinkTest, ClosingATableRemovesItsLinksAndModelTable) {
    LinkEmpToDept();
    Host->GetTables().DeleteTable(DeptTable);
    EXPECT_EQ(Host->GetLinks().Count(), 0);
    EXPECT_EQ(Area->JoinCount(), 0);
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"E"}));
    EXPECT_EQ(EmpJoins().Count(), 0);
}

TEST_F(TZvLinkTest, DeleteOnASelectedLinkAsksAndRemovesItOnConsent) {
    TZvLink* Link = LinkEmpToDept();
    Area->SelectLink(Link);
    EXPECT_TRUE(EmpTable->GetFieldItem("DEPT_ID")->GetSelect());
    TZvMessageRecorder Recorder(QMessageBox::No);
    QTest::keyClick(Area, Qt::Key_Delete);
    ASSERT_EQ(Recorder.Questions.size(), 1u);
    EXPECT_EQ(Recorder.Questions[0].Caption, QStringLiteral("Attention!"));
    EXPECT_EQ(Recorder.Questions[0].Text,
              QStringLiteral("Do you really want to delete the link between \r\nEMP and DEPT"));
    EXPECT_EQ(Host->GetLinks().Count(), 1);
    Area->SelectLink(Link);
    Recorder.SetAnswer(QMessageBox::Yes);
    QTest::keyClick(Area, Qt::Key_Delete);
    EXPECT_EQ(Host->GetLinks().Count(), 0);
    EXPECT_FALSE(EmpTable->GetFieldItem("DEPT_ID")->GetSelect());
}

TEST_F(TZvLinkTest, ClearContentsFreesLinksAndJoins) {
    LinkEmpToDept();
    Area->ClearContents();
    EXPECT_EQ(Host->GetLinks().Count(), 0);
    EXPECT_EQ(Area->JoinCount(), 0);
}

// --- selection and keyboard ---

TEST_F(TZvDiagramTest, ClickingATableSelectsItAndBringsItToTheFront) {
    TZvTable* Emp = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(10, 10));
    TZvTable* Dept = Host->GetTables().AddTableAt("DEPT", "", &DeptFields, QPoint(400, 10));
    ASSERT_EQ(Area->GetSelected(), Dept);
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::CaptionPoint(*Emp));
    EXPECT_EQ(Area->GetSelected(), Emp);
    EXPECT_EQ(Area->TableAt(0), Emp);
    EXPECT_FALSE(Dept->GetSelected());
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, QPoint(700, 500));
    EXPECT_EQ(Area->GetSelected(), nullptr);
    EXPECT_FALSE(Emp->GetSelected());
}

TEST_F(TZvDiagramTest, TabSelectsTheLowestTableSoThatRepeatedTabsVisitAll) {
    Add("A");
    Add("B");
    Add("C");
    std::vector<std::string> Visited;
    for (int I = 0; I < 3; ++I) {
        QTest::keyClick(Area, Qt::Key_Tab);
        Visited.push_back(dynamic_cast<TZvTable*>(Area->GetSelected())->GetAlias());
    }
    EXPECT_EQ(Visited, (std::vector<std::string>{"A", "B", "C"}));
}

TEST_F(TZvDiagramTest, ShiftTabSelectsTheTableBehindTheSelectedOne) {
    Add("A");
    Add("B");
    Add("C");
    ASSERT_EQ(DiagramAliases(*Area), (std::vector<std::string>{"C", "B", "A"}));
    QTest::keyClick(Area, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(dynamic_cast<TZvTable*>(Area->GetSelected())->GetAlias(), "B");
    EXPECT_EQ(DiagramAliases(*Area), (std::vector<std::string>{"B", "C", "A"}));
}

TEST_F(TZvDiagramTest, TabWithoutTablesDoesNothing) {
    QTest::keyClick(Area, Qt::Key_Tab);
    EXPECT_EQ(Area->GetSelected(), nullptr);
}

TEST_F(TZvDiagramTest, DeleteClosesTheSelectedTable) {
    Add("EMP");
    Add("DEPT");
    QTest::keyClick(Area, Qt::Key_Delete);
    EXPECT_EQ(DiagramAliases(*Area), (std::vector<std::string>{"EMP"}));
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP"}));
    EXPECT_EQ(Area->GetSelected(), nullptr);
    QTest::keyClick(Area, Qt::Key_Delete);
    EXPECT_EQ(Area->TableCount(), 1);
}

TEST_F(TZvDiagramTest, TheCloseButtonRemovesTheTable) {
    TZvTable* Emp = Add("EMP");
    Emp->GetFieldItem("ID")->SetCheck(true);
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::ButtonPoint(*Emp, 2));
    EXPECT_EQ(Area->TableCount(), 0);
    EXPECT_TRUE(ModelAliases(*Parser).empty());
}

TEST_F(TZvDiagramTest, ReleasingOverAnotherButtonDoesNothing) {
    TZvTable* Emp = Add("EMP");
    QTest::mousePress(Area->viewport(), Qt::LeftButton, {}, test::ButtonPoint(*Emp, 2));
    QTest::mouseRelease(Area->viewport(), Qt::LeftButton, {}, test::ButtonPoint(*Emp, 0));
    EXPECT_EQ(Area->TableCount(), 1);
    EXPECT_TRUE(Emp->GetExpand());
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::ButtonPoint(*Emp, 0));
    EXPECT_FALSE(Emp->GetExpand());
}

// --- alias editing ---

class TZvAliasEditTest : public TZvDiagramTest {
protected:
    TZvAliasEditTest() {
        EmpTable = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(10, 10));
        DeptTable = Host->GetTables().AddTableAt("DEPT", "", &DeptFields, QPoint(300, 10));
    }
    void EditAliasOf(TZvTable& Table, const QString& Text, Qt::Key End = Qt::Key_Return) {
        QTest::mouseDClick(Area->viewport(), Qt::LeftButton, {}, test::CaptionPoint(Table));
        ASSERT_TRUE(Area->GetAliasEdit()->isVisible());
        Area->GetAliasEdit()->selectAll();
        QTest::keyClicks(Area->GetAliasEdit(), Text);
        QTest::keyClick(Area->GetAliasEdit(), End);
    }
    TZvTable* EmpTable;
    TZvTable* DeptTable;
};

TEST_F(TZvAliasEditTest, DoubleClickOnTheCaptionShowsTheEditWithTheAlias) {
    QTest::mouseDClick(Area->viewport(), Qt::LeftButton, {}, test::CaptionPoint(*EmpTable));
    EXPECT_TRUE(Area->GetAliasEdit()->isVisible());
    EXPECT_EQ(Area->GetAliasEdit()->text(), QStringLiteral("EMP"));
    EXPECT_EQ(Area->GetSelected(), EmpTable);
    EXPECT_TRUE(Area->ToViewport(EmpTable->GetCaptionRect()).intersects(Area->GetAliasEdit()->geometry()));
}

TEST_F(TZvAliasEditTest, EnterSetsTheAliasInDiagramAndModel) {
    EditAliasOf(*EmpTable, QStringLiteral("E"));
    EXPECT_FALSE(Area->GetAliasEdit()->isVisible());
    EXPECT_EQ(EmpTable->GetAlias(), "E");
    EXPECT_EQ(EmpTable->GetCaption(), "EMP (E)");
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"E", "DEPT"}));
}

TEST_F(TZvAliasEditTest, ADuplicateAliasIsReportedAndTheOldOneKept) {
    TZvMessageRecorder Recorder;
    EditAliasOf(*EmpTable, QStringLiteral("DEPT"));
    ASSERT_EQ(Recorder.Errors.size(), 1u);
    EXPECT_EQ(Recorder.Errors[0].Message, QStringLiteral("Table with alias DEPT already exists"));
    EXPECT_EQ(EmpTable->GetAlias(), "EMP");
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP", "DEPT"}));
    EXPECT_FALSE(Area->GetAliasEdit()->isVisible());
}

TEST_F(TZvAliasEditTest, TheTableNameAsAliasClearsTheAlias) {
    EditAliasOf(*EmpTable, QStringLiteral("E"));
    EditAliasOf(*EmpTable, QStringLiteral("EMP"));
    EXPECT_EQ(EmpTable->GetRawAlias(), "");
    EXPECT_EQ(EmpTable->GetCaption(), "EMP");
    EXPECT_EQ(ModelAliases(*Parser), (std::vector<std::string>{"EMP", "DEPT"}));
}

TEST_F(TZvAliasEditTest, DotsAreRemovedFromTheNewAlias) {
    EditAliasOf(*EmpTable, QStringLiteral("a.b.c"));
    EXPECT_EQ(EmpTable->GetAlias(), "abc");
    EXPECT_EQ(ModelAliases(*Parser).front(), "abc");
}

TEST_F(TZvAliasEditTest, EscapeLeavesTheAliasAsItWas) {
    EditAliasOf(*EmpTable, QStringLiteral("X"), Qt::Key_Escape);
    EXPECT_FALSE(Area->GetAliasEdit()->isVisible());
    EXPECT_EQ(EmpTable->GetAlias(), "EMP");
}

TEST_F(TZvAliasEditTest, LeavingTheEditCommitsIt) {
    QTest::mouseDClick(Area->viewport(), Qt::LeftButton, {}, test::CaptionPoint(*DeptTable));
    Area->GetAliasEdit()->setText(QStringLiteral("D"));
    Area->CommitAliasEdit();
    EXPECT_EQ(DeptTable->GetAlias(), "D");
    EXPECT_THROW(
        {
            Area->EditAlias(*DeptTable);
            Area->GetAliasEdit()->setText(QStringLiteral("EMP"));
            Area->CommitAliasEdit();
        },
        EZvError);
    EXPECT_EQ(DeptTable->GetAlias(), "D");
}

TEST_F(TZvAliasEditTest, TheHookReceivesTheOldAlias) {
    std::vector<std::string> Old;
    Area->OnChangeAlias = [&](TZvTable& Table, const std::string& Alias) {
        Old.push_back(Alias);
        Host->HandleChangeAlias(Table, Alias);
    };
    EditAliasOf(*EmpTable, QStringLiteral("E"));
    EditAliasOf(*EmpTable, QStringLiteral("F"));
    EXPECT_EQ(Old, (std::vector<std::string>{"EMP", "E"}));
    EXPECT_EQ(ModelAliases(*Parser).front(), "F");
}

// --- cursors and hints ---

TEST(ZvWorkAreaCursor, EachHitKindHasItsCursor) {
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTLeft), Qt::SizeHorCursor);
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTRight), Qt::SizeHorCursor);
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTTop), Qt::SizeVerCursor);
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTBottom), Qt::SizeVerCursor);
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTLeftTop), Qt::SizeFDiagCursor);
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTRightBottom), Qt::SizeFDiagCursor);
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTLeftBottom), Qt::SizeBDiagCursor);
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTRightTop), Qt::SizeBDiagCursor);
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTEndLine), Qt::UpArrowCursor);
    EXPECT_EQ(TZvWorkArea::CursorForHit(htTPoint), Qt::SizeAllCursor);
    for (TTableHitTest Hit : {htTCaption, htTClient, htTbutton, htTCheck, htTOutSide})
        EXPECT_EQ(TZvWorkArea::CursorForHit(Hit), Qt::ArrowCursor) << int(Hit);
}

TEST_F(TZvDiagramTest, MovingOverABorderShowsTheSizingCursor) {
    TZvTable* Emp = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const QPoint LeftEdge = Area->ToViewport(QRect(Emp->GetLeft() + 1, Emp->GetTop() + 30, 1, 1)).topLeft();
    HoverAt(*Area, LeftEdge);
    EXPECT_EQ(Area->viewport()->cursor().shape(), Qt::SizeHorCursor);
    QTest::mouseMove(Area->viewport(), test::CaptionPoint(*Emp));
    EXPECT_EQ(Area->viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(TZvDiagramTest, AHintAppearsAfterHoveringAndGoesAgain) {
    TZvTable* Emp = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const QPoint Over = test::CaptionPoint(*Emp);
    const TPointerAt Pointer(*Area, Over);
    HoverAt(*Area, Over);
    EXPECT_EQ(Emp->GetHint(), QStringLiteral("Double click to edit alias"));
    EXPECT_FALSE(Area->IsHintShown());
    EXPECT_TRUE(WaitFor([&] { return Area->IsHintShown(); }));
    EXPECT_EQ(Area->GetHintText(), QStringLiteral("Double click to edit alias"));
    EXPECT_TRUE(WaitFor([&] { return !Area->IsHintShown(); }));
}

TEST_F(TZvDiagramTest, NoHintWhenThePointerHasLeftTheObject) {
    TZvTable* Emp = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const TPointerAt Pointer(*Area, QPoint(700, 500));
    HoverAt(*Area, test::CaptionPoint(*Emp));
    QTest::qWait(700);
    EXPECT_FALSE(Area->IsHintShown());
}

TEST_F(TZvDiagramTest, AKeyHidesAShownHint) {
    TZvTable* Emp = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const QPoint Over = test::CaptionPoint(*Emp);
    const TPointerAt Pointer(*Area, Over);
    HoverAt(*Area, Over);
    ASSERT_TRUE(WaitFor([&] { return Area->IsHintShown(); }));
    QTest::keyClick(Area, Qt::Key_Shift);
    EXPECT_FALSE(Area->IsHintShown());
}

// --- painting ---

TEST_F(TZvDiagramTest, TheBackgroundIsTheWorkSpaceColour) {
    Host->GetPalette()->SetWorkSpace(0x336699u);
    EXPECT_EQ(Grab(*Area).pixelColor(5, 5), QColor(0x99, 0x66, 0x33));
}

TEST_F(TZvDiagramTest, TheTableAtTheFrontIsPaintedLast) {
    Host->GetPalette()->SetActiveCaption(0x0000FFu);   // red
    Host->GetPalette()->SetInactiveCaption(0x00FF00u); // green
    TZvTable* Back = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(20, 20));
    TZvTable* Front = Host->GetTables().AddTableAt("DEPT", "", &DeptFields, QPoint(60, 20));
    ASSERT_EQ(Area->TableAt(0), Front);
    // A caption pixel where both tables lie, away from text and buttons.
    const QPoint Shared = Area->ToViewport(QRect(Front->GetLeft() + 3, Front->GetTop() + 3, 1, 1)).topLeft();
    ASSERT_TRUE(
        Back->GetBoundsRect().contains(Shared + QPoint(Area->HorzScrollPos(), Area->VertScrollPos())));
    EXPECT_EQ(Grab(*Area).pixelColor(Shared + QPoint(0, 0)), QColor(255, 0, 0));
    Area->TableToFront(Back);
    const QPoint BackCaption =
        Area->ToViewport(QRect(Front->GetLeft() + 3, Back->GetTop() + 3, 1, 1)).topLeft();
    EXPECT_EQ(Grab(*Area).pixelColor(BackCaption), QColor(0, 255, 0));
}

TEST_F(TZvDiagramTest, TablesCoverTheLinksBehindThem) {
    TZvTable* A = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(20, 20));
    TZvTable* B = Host->GetTables().AddTableAt("DEPT", "", &DeptFields, QPoint(400, 20));
    TZvLink* Link = Host->GetLinks().AddLink(A, B, A->GetFieldItem("ID"), B->GetFieldItem("ID"));
    Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(200, 0));
    const QImage Image = Grab(*Area);
    const int Y = Link->GetPoint(0).y();
    // Between A and the covering table the link shows; inside the covering table it does not.
    EXPECT_EQ(Image.pixelColor(150, Y), QColor(Qt::black));
    EXPECT_NE(Image.pixelColor(250, Y), QColor(Qt::black));
}

TEST_F(TZvDiagramTest, NothingIsPaintedWhileUpdating) {
    Host->GetPalette()->SetWorkSpace(0x0000FFu);
    Host->BeginUpdate();
    EXPECT_TRUE(Area->IsUpdating());
    Area->BeginUpdate();
    Area->EndUpdate();
    EXPECT_TRUE(Area->IsUpdating());
    Host->EndUpdate();
    EXPECT_FALSE(Area->IsUpdating());
    EXPECT_EQ(Grab(*Area).pixelColor(5, 5), QColor(255, 0, 0));
}

} // namespace
} // namespace zv

namespace zv {
namespace {

using test::TMessageCounter;

TEST_F(TZvDiagramTest, MovingAndResizingATableNotifyTheSurface) {
    TZvTable* Emp = Add("EMP");
    TMessageCounter Counter;
    Area->installEventFilter(&Counter);
    Emp->SetTopLeft(QPoint(200, 100));
    Emp->SetLeft(200);
    Emp->SetWidth(220);
    Emp->SetHeight(200);
    Emp->SetExpand(false);
    Emp->SetExpand(false);
    Area->removeEventFilter(&Counter);
    EXPECT_EQ(Counter.Moves, 1);
    EXPECT_EQ(Counter.Resizes, 3);
    EXPECT_EQ(QPoint(Emp->GetLeft(), Emp->GetTop()), QPoint(200, 100));
}

TEST_F(TZvDiagramTest, SizesHaveTheirMinimums) {
    TZvTable* Emp = Add("EMP");
    Emp->SetWidth(1);
    EXPECT_EQ(Emp->GetWidth(), Emp->GetCaptionHeight() + TZvTable::ButtonsWidth + 20);
    Emp->SetHeight(1);
    EXPECT_EQ(Emp->GetHeight(), 2 * Emp->GetItemHeight() + Emp->GetCaptionHeight() + 4);
    EXPECT_EQ(Emp->GetVisibleCount(), 1);
}

TEST_F(TZvDiagramTest, ATableShowsUpToSixRows) {
    TZvDataSet Three = test::FieldsDataSet({"A", "B", "C"});
    TZvDataSet Twenty;
    for (int I = 0; I < 20; ++I)
        Twenty.AddFieldDef("F" + std::to_string(I), ftInteger);
    EXPECT_EQ(Host->GetTables().AddTable("T3", "", &Three)->GetVisibleCount(), 3);
    TZvTable* Big = Host->GetTables().AddTable("T20", "", &Twenty);
    EXPECT_EQ(Big->GetVisibleCount(), 6);
    EXPECT_EQ(Big->GetHeight(), 6 * (Big->GetItemHeight() + 1) + Big->GetCaptionHeight() + 2 + 4);
    EXPECT_EQ(Host->GetTables().AddTable("NONE", "", nullptr)->ItemCount(), 0);
}

TEST_F(TZvDiagramTest, HitTestFindsEdgesCornersCaptionPartsAndRows) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    const auto HitAt = [&](int X, int Y) {
        return T->HitTest(Area->ToViewport(QRect(X, Y, 1, 1)).topLeft());
    };
    const int R = T->GetLeft() + T->GetWidth() - 1;
    const int B = T->GetTop() + T->GetHeight() - 1;
    EXPECT_EQ(HitAt(99, 120), htTOutSide);
    EXPECT_EQ(HitAt(100, 100), htTLeftTop);
    EXPECT_EQ(HitAt(100, B), htTLeftBottom);
    EXPECT_EQ(HitAt(R, 100), htTRightTop);
    EXPECT_EQ(HitAt(R, B), htTRightBottom);
    EXPECT_EQ(HitAt(101, 130), htTLeft);
    EXPECT_EQ(HitAt(R - 2, 130), htTRight);
    EXPECT_EQ(HitAt(150, 101), htTTop);
    EXPECT_EQ(HitAt(150, B - 1), htTBottom);
    EXPECT_EQ(HitAt(R + 1, 130), htTOutSide);
    EXPECT_EQ(HitAt(150, T->GetTop() + T->GetCaptionHeight() + 3), htTClient);
    EXPECT_EQ(HitAt(T->GetLeft() + 6, T->GetTop() + 8), htTCheck);
    EXPECT_EQ(HitAt(R - 10, T->GetTop() + 8), htTbutton);
    EXPECT_EQ(T->HitTest(test::CaptionPoint(*T)), htTCaption);
}

TEST_F(TZvDiagramTest, ACollapsedTableHasNoGrips) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    T->SetExpand(false);
    const auto HitAt = [&](int X, int Y) {
        return T->HitTest(Area->ToViewport(QRect(X, Y, 1, 1)).topLeft());
    };
    EXPECT_EQ(HitAt(T->GetLeft() + 14, T->GetTop() + T->GetCaptionHeight() - 1), htTCaption);
    EXPECT_EQ(HitAt(T->GetLeft() + 30, T->GetTop() + T->GetCaptionHeight()), htTOutSide);
    EXPECT_EQ(HitAt(T->GetLeft(), T->GetTop()), htTCaption);
}

TEST_F(TZvDiagramTest, ScrolledTablesAreHitWhereTheyShow) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(1500, 1200));
    EXPECT_EQ(T->HitTest(QPoint(10, 10)), htTOutSide);
    Area->ShowPanel(T);
    EXPECT_EQ(Area->HorzScrollPos(), 1500);
    EXPECT_EQ(Area->VertScrollPos(), 1200);
    EXPECT_EQ(T->HitTest(test::CaptionPoint(*T)), htTCaption);
    EXPECT_EQ(test::CaptionPoint(*T).x(), T->GetCaptionRect().left() + 4 - 1500);
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, QPoint(600, 500));
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, test::CaptionPoint(*T));
    EXPECT_EQ(Area->GetSelected(), T);
}

TEST_F(TZvDiagramTest, ObjectMouseHooksReceiveButtonShiftAndPoint) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    Qt::MouseButton Button = Qt::NoButton;
    TShiftState Shift = 0;
    QPoint At;
    T->OnMouseDown = [&](TZvFloatObject& Sender, Qt::MouseButton B, TShiftState S, int X, int Y) {
        EXPECT_EQ(&Sender, T);
        Button = B;
        Shift = S;
        At = QPoint(X, Y);
    };
    const QPoint Click = test::CaptionPoint(*T);
    QTest::mousePress(Area->viewport(), Qt::MiddleButton, Qt::ControlModifier, Click);
    QTest::mouseRelease(Area->viewport(), Qt::MiddleButton, Qt::ControlModifier, Click);
    EXPECT_EQ(Button, Qt::MiddleButton);
    EXPECT_EQ(Shift, ssMiddle | ssCtrl);
    EXPECT_EQ(At, Click + QPoint(Area->HorzScrollPos(), Area->VertScrollPos()));
    int Ups = 0;
    T->OnMouseUp = [&](TZvFloatObject&, Qt::MouseButton B, TShiftState S, int, int) {
        ++Ups;
        EXPECT_EQ(B, Qt::LeftButton);
        EXPECT_EQ(S, ssLeft | ssShift);
    };
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, Qt::ShiftModifier, Click);
    EXPECT_EQ(Ups, 1);
}

TEST_F(TZvDiagramTest, ChangingTheFontReachesTheHookAndTheTables) {
    TZvTable* T = Add("EMP");
    QFont Large = Area->GetFont();
    Large.setPixelSize(30);
    int Calls = 0;
    Area->SetFontHook = [&](const QFont& Value) {
        ++Calls;
        EXPECT_EQ(Value.pixelSize(), 30);
    };
    Area->SetFont(Large);
    EXPECT_EQ(Calls, 1);
    EXPECT_EQ(T->GetCaptionHeight(), QFontMetrics(Large).height() + 4);
    EXPECT_GE(T->GetItemHeight(), QFontMetrics(Large).height());
}

TEST_F(TZvDiagramTest, NamesAndCaptionsFollowTheAlias) {
    TZvTable* T = Add("EMP", "   ");
    EXPECT_EQ(T->GetAlias(), "EMP");
    EXPECT_EQ(T->GetCaption(), "EMP");
    T->SetAlias("EMP");
    EXPECT_EQ(T->GetCaption(), "EMP");
    T->SetAlias("emp");
    EXPECT_EQ(T->GetCaption(), "EMP (emp)");
    T->SetAlias("   ");
    EXPECT_EQ(T->GetAlias(), "EMP");
    EXPECT_EQ(T->GetCaption(), "EMP");
}

} // namespace
} // namespace zv

namespace zv {
namespace {

using test::TMenuChooser;

TEST_F(TZvDiagramTest, TheCaptionMenuOffersDeleteAndRename) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    TMenuChooser Chooser(QStringLiteral("Rename table"));
    QTest::mouseClick(Area->viewport(), Qt::RightButton, {}, test::CaptionPoint(*T));
    EXPECT_EQ(Chooser.Shown, 1);
    EXPECT_EQ(Chooser.Entries, (QStringList{QStringLiteral("Delete table"), QStringLiteral("-"),
                                            QStringLiteral("Rename table")}));
    EXPECT_TRUE(Area->GetAliasEdit()->isVisible());
}

TEST_F(TZvDiagramTest, DeleteTableFromTheMenuClosesTheTable) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    TMenuChooser Chooser(QStringLiteral("Delete table"));
    QTest::mouseClick(Area->viewport(), Qt::RightButton, {}, test::CaptionPoint(*T));
    EXPECT_EQ(Area->TableCount(), 0);
    EXPECT_TRUE(ModelAliases(*Parser).empty());
}

TEST_F(TZvDiagramTest, NoMenuOverRowsOrTheEmptySurface) {
    TZvTable* T = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(100, 100));
    TMenuChooser Chooser(QString{});
    QTest::mouseClick(Area->viewport(), Qt::RightButton, {}, test::RowCheckPoint(*T, 0) + QPoint(30, 0));
    QTest::mouseClick(Area->viewport(), Qt::RightButton, {}, QPoint(700, 500));
    EXPECT_EQ(Chooser.Shown, 0);
}

} // namespace
} // namespace zv
