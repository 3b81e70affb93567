// The link properties dialog: opened from the link's menu with its texts, the outer-join check
// boxes with and without full outer joins, the operator choice of the dialect, the write-back of
// kind and operator to the diagram and the model (checked in the model's join text), and the
// sizing rules of the form.
#include "ZvErrors.h"
#include "ZvLinkTestSupport.h"
#include "ZvTestSupport.h"
#include "dialects/ZvMSDialect.h"
#include "dialects/ZvOracleDialect.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

namespace zv {
namespace {

using test::TZvLinkFixture;
using TZvDialectZevrinMake = test::TZvDialectZevrin::TMakeParser;

QStringList Choices(const QComboBox& Combo) {
    QStringList Items;
    for (int I = 0; I < Combo.count(); ++I)
        Items << Combo.itemText(I);
    return Items;
}

class TZvLinkPropTest : public TZvLinkFixture {
protected:
    explicit TZvLinkPropTest(TZvDialectZevrinMake Make = {}) : TZvLinkFixture(std::move(Make)) {}

    // Opens the dialog from the link's menu, as a user does, and lets Work act on it as the user;
    // returns the dialog's result.
    int OpenProperties(TZvLink& Link, const std::function<void(TfmLinkProp&)>& Work) {
        int Result = -1;
        TfmLinkProp::ExecDialog = [&](TfmLinkProp& Dialog) {
            Dialog.show();
            Work(Dialog);
            Result = Dialog.result();
            Dialog.hide();
            return Result;
        };
        ChooseFromMenu(QStringLiteral("Property"));
        RightClick(ToView((Link.GetPoints()[1] + Link.GetPoints()[2]) / 2));
        return Result;
    }
    static void Click(QWidget* Widget) {
        QTest::mouseClick(Widget, Qt::LeftButton, {}, QPoint(5, Widget->height() / 2));
    }
};

TEST_F(TZvLinkPropTest, ThePropertyEntryShowsTheLinkInTheDialog) {
    TZvLink* Link = LinkDeptId();
    const int Result = OpenProperties(*Link, [&](TfmLinkProp& Dialog) {
        EXPECT_EQ(CurrentLnk, Link);
        EXPECT_EQ(Dialog.windowTitle(), QStringLiteral("Link properties"));
        EXPECT_EQ(Dialog.laCaption->text(), QStringLiteral("join tables: EMP (E) and DEPT (D)"));
        EXPECT_EQ(Dialog.laLeftField->text(), QStringLiteral("DEPT_ID"));
        EXPECT_EQ(Dialog.laRightField->text(), QStringLiteral("ID"));
        EXPECT_EQ(Dialog.chLeftOuter->text(), QStringLiteral("Include all from EMP"));
        EXPECT_EQ(Dialog.chRightOuter->text(), QStringLiteral("Include all from DEPT"));
        EXPECT_FALSE(Dialog.chLeftOuter->isChecked());
        EXPECT_FALSE(Dialog.chRightOuter->isChecked());
        EXPECT_EQ(Dialog.cbConditions->currentText(), QStringLiteral("="));
        EXPECT_EQ(Choices(*Dialog.cbConditions), QString("=,<>,<,<=,>,>=").split(','));
        EXPECT_EQ(Dialog.buOK->text(), QStringLiteral("OK"));
        EXPECT_EQ(Dialog.buCancel->text(), QStringLiteral("Cancel"));
        EXPECT_TRUE(Dialog.buOK->isDefault());
        EXPECT_TRUE(Dialog.GetFullOuterJoinSupported());
        EXPECT_TRUE(Dialog.windowFlags().testFlag(Qt::Tool));
        Click(Dialog.buCancel);
    });
    EXPECT_EQ(Result, QDialog::Rejected);
    EXPECT_EQ(CurrentLnk, nullptr);
}

TEST_F(TZvLinkPropTest, ATableWithoutAnAliasIsCaptionedByItsNameAlone) {
    TZvTable* Plain = Host->GetTables().AddTableAt("EMP", "", &EmpFields, QPoint(20, 300));
    TZvLink* Link = Area->AddLink(Plain, Dept, Row(Plain, "ID"), Row(Dept, "ID"));
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        EXPECT_EQ(Dialog.laCaption->text(), QStringLiteral("join tables: EMP and DEPT (D)"));
    });
}

TEST_F(TZvLinkPropTest, ShownWithoutALinkTheDialogRaisesInvalidLink) {
    TfmLinkProp Dialog;
    try {
        Dialog.FormShow();
        ADD_FAILURE() << "no error";
    } catch (const EZvError& Error) {
        EXPECT_STREQ(Error.what(), "Invalid link");
    }
}

TEST_F(TZvLinkPropTest, IncludingAllOfTheFirstTableMakesALeftOuterJoin) {
    TZvLink* Link = LinkDeptId();
    const int Result = OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        Click(Dialog.chLeftOuter);
        Click(Dialog.buOK);
    });
    EXPECT_EQ(Result, QDialog::Accepted);
    EXPECT_EQ(Link->GetJoin()->JoinType, 1);
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  LEFT OUTER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        EXPECT_TRUE(Dialog.chLeftOuter->isChecked());
        EXPECT_FALSE(Dialog.chRightOuter->isChecked());
        Click(Dialog.chLeftOuter);
        Click(Dialog.chRightOuter);
        Click(Dialog.buOK);
    });
    EXPECT_EQ(Link->GetJoin()->JoinType, 2);
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  RIGHT OUTER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
}

TEST_F(TZvLinkPropTest, OKTellsTheChangeLinkHookAndCancelDoesNot) {
    TZvLink* Link = LinkDeptId();
    std::vector<TZvLink*> Heard;
    Area->OnChangeLink = [&](TZvWorkArea&, TZvLink& Changed) {
        Heard.push_back(&Changed);
        // The model holds the new kind by the time the hook hears of it.
        EXPECT_EQ(FromText("E"), "  EMP E\r\n  LEFT OUTER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
    };
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        Click(Dialog.chLeftOuter);
        Click(Dialog.buCancel);
    });
    EXPECT_TRUE(Heard.empty());
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        Click(Dialog.chLeftOuter);
        Click(Dialog.buOK);
    });
    EXPECT_EQ(Heard, (std::vector<TZvLink*>{Link}));
}

TEST_F(TZvLinkPropTest, WithFullOuterJoinsBothBoxesStayAndOKStoresThree) {
    TZvLink* Link = LinkDeptId();
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        Click(Dialog.chLeftOuter);
        Click(Dialog.chRightOuter);
        EXPECT_TRUE(Dialog.chLeftOuter->isChecked());
        EXPECT_TRUE(Dialog.chRightOuter->isChecked());
        Click(Dialog.buOK);
    });
    EXPECT_EQ(Link->GetJoin()->JoinType, 3);
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  FULL OUTER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        EXPECT_TRUE(Dialog.chLeftOuter->isChecked());
        EXPECT_TRUE(Dialog.chRightOuter->isChecked());
        Click(Dialog.chLeftOuter);
        Click(Dialog.chRightOuter);
        Click(Dialog.buOK);
    });
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
}

class TZvLinkPropOracleTest : public TZvLinkPropTest {
protected:
    TZvLinkPropOracleTest() : TZvLinkPropTest([] { return std::make_unique<TZvOracleSelectParser>(); }) {}
};

TEST_F(TZvLinkPropOracleTest, WithoutFullOuterJoinsOnlyTheBoxClickedLastStaysChecked) {
    TZvLink* Link = LinkDeptId();
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        EXPECT_FALSE(Dialog.GetFullOuterJoinSupported());
        Click(Dialog.chLeftOuter);
        Click(Dialog.chRightOuter);
        EXPECT_FALSE(Dialog.chLeftOuter->isChecked());
        EXPECT_TRUE(Dialog.chRightOuter->isChecked());
        Click(Dialog.chLeftOuter);
        EXPECT_TRUE(Dialog.chLeftOuter->isChecked());
        EXPECT_FALSE(Dialog.chRightOuter->isChecked());
        EXPECT_EQ(Choices(*Dialog.cbConditions), QString("=,!=,<,<=,>,>=").split(','));
        Click(Dialog.buOK);
    });
    EXPECT_EQ(Link->GetJoin()->JoinType, 1);
    EXPECT_EQ(JoinsOf("E").Items(0)->GetKind(), zvjLOuterJoin);
}

class TZvLinkPropMSTest : public TZvLinkPropTest {
protected:
    TZvLinkPropMSTest() : TZvLinkPropTest([] { return std::make_unique<TZvMSSelectParser>(); }) {}
};

TEST_F(TZvLinkPropMSTest, TheDialectsJoinOperatorsAreTheChoices) {
    TZvLink* Link = LinkDeptId();
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        EXPECT_EQ(Choices(*Dialog.cbConditions), QString("=,<>,<,>,<=,>=,!<,!=,!>").split(','));
        Dialog.cbConditions->setCurrentText(QStringLiteral("!<"));
        Click(Dialog.buOK);
    });
    EXPECT_EQ(Link->GetOperator(), "!<");
    EXPECT_EQ(JoinsOf("E").Items(0)->GetOperator(), "!<");
}

TEST_F(TZvLinkPropTest, TheOperatorGoesToTheLinkAndItsJoinTheKindToEveryJoinOfTheTables) {
    TZvLink* First = LinkDeptId();
    TZvLink* Second = Area->AddLink(Emp, Dept, Row(Emp, "NAME"), Row(Dept, "TITLE"));
    OpenProperties(*Second, [](TfmLinkProp& Dialog) {
        Dialog.cbConditions->setCurrentText(QStringLiteral(">="));
        Click(Dialog.chRightOuter);
        Click(Dialog.buOK);
    });
    EXPECT_EQ(Second->GetOperator(), ">=");
    EXPECT_EQ(Second->GetHint(), QStringLiteral("E.NAME>=D.TITLE"));
    EXPECT_EQ(First->GetOperator(), "=");
    EXPECT_EQ(First->GetJoin(), Second->GetJoin());
    EXPECT_EQ(JoinsOf("E").Items(0)->GetKind(), zvjROuterJoin);
    EXPECT_EQ(JoinsOf("E").Items(1)->GetKind(), zvjROuterJoin);
    EXPECT_EQ(FromText("E"),
              "  EMP E\r\n  RIGHT OUTER JOIN DEPT D ON (E.DEPT_ID = D.ID) AND \r\n    (E.NAME >= D.TITLE)");
}

TEST_F(TZvLinkPropTest, ChangingTheKindOfOneLinkChangesTheMarkersOfEveryLinkOfTheTables) {
    TZvLink* First = LinkDeptId();
    TZvLink* Second = Area->AddLink(Emp, Dept, Row(Emp, "NAME"), Row(Dept, "TITLE"));
    OpenProperties(*Second, [](TfmLinkProp& Dialog) {
        Click(Dialog.chLeftOuter);
        Click(Dialog.buOK);
    });
    // A filled triangle just outside EMP's edge on the first link, which was not edited.
    const QPoint Start = First->GetPoint(0);
    const QImage Image = Area->viewport()->grab().toImage();
    EXPECT_LT(qGray(Image.pixel(Start + QPoint(5, -1))), 128);
    EXPECT_EQ(First->GetJoin()->JoinType, 1);
}

TEST_F(TZvLinkPropTest, CancelChangesNothing) {
    TZvLink* Link = LinkDeptId();
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        Click(Dialog.chLeftOuter);
        Dialog.cbConditions->setCurrentText(QStringLiteral("<>"));
        Click(Dialog.buCancel);
    });
    EXPECT_EQ(Link->GetJoin()->JoinType, 0);
    EXPECT_EQ(Link->GetOperator(), "=");
    EXPECT_EQ(FromText("E"), "  EMP E\r\n  INNER JOIN DEPT D ON (E.DEPT_ID = D.ID)");
}

TEST_F(TZvLinkPropTest, AnOperatorOutsideTheListStaysAChoice) {
    TZvLink* Link = LinkDeptId();
    Link->SetOperator("~");
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        EXPECT_EQ(Dialog.cbConditions->currentText(), QStringLiteral("~"));
        EXPECT_EQ(Dialog.cbConditions->count(), 7);
        Click(Dialog.buOK);
    });
    EXPECT_EQ(Link->GetOperator(), "~");
}

TEST(ZvLinkProp, TheOperatorListIsCommaText) {
    TfmLinkProp Dialog;
    EXPECT_EQ(Dialog.GetCompareOperatorList(), QStringLiteral("=,>,<,>=,<=,<>"));
    Dialog.SetCompareOperatorList(QStringLiteral("=, <>,,LIKE"));
    EXPECT_EQ(Dialog.GetCompareOperatorList(), QStringLiteral("=,<>,LIKE"));
    Dialog.SetFullOuterJoinSupported(false);
    EXPECT_FALSE(Dialog.GetFullOuterJoinSupported());
}

// --- sizing ---

TEST_F(TZvLinkPropTest, TheFormIsWidenedToShowBothCheckBoxesAndKeepsItsControlsCentred) {
    TZvDataSet Fields;
    Fields.AddFieldDef("ID", ftInteger);
    TZvTable* Long = Host->GetTables().AddTableAt("A_TABLE_WITH_A_VERY_LONG_NAME_INDEED_AND_MORE", "L",
                                                  &Fields, QPoint(20, 300));
    TZvLink* Link = Area->AddLink(Emp, Long, Row(Emp, "ID"), Long->GetItem(0));
    OpenProperties(*Link, [](TfmLinkProp& Dialog) {
        const QCheckBox& Right = *Dialog.chRightOuter;
        EXPECT_EQ(Right.width(), QFontMetrics(Right.font()).horizontalAdvance(Right.text()) + 20);
        EXPECT_GE(Dialog.GetMinWidth(), 2 * Right.width() + 8);
        EXPECT_EQ(Dialog.width(), Dialog.GetMinWidth());
        const auto ExpectCentred = [&] {
            const int Middle = Dialog.width() / 2;
            const QRect Combo = Dialog.cbConditions->geometry();
            EXPECT_EQ(Combo.left() + Combo.width() / 2, Middle);
            const QRect Left = Dialog.laLeftField->geometry();
            EXPECT_EQ(Left.left() + Left.width(), Combo.left() - 1);
            EXPECT_EQ(Dialog.laRightField->geometry().left(), Combo.left() + Combo.width() + 1);
            const QRect LeftBox = Dialog.chLeftOuter->geometry();
            EXPECT_EQ(LeftBox.left() + LeftBox.width(), Middle - 4);
            EXPECT_EQ(Dialog.chRightOuter->geometry().left(), Middle + 4);
            const QRect OK = Dialog.buOK->geometry();
            EXPECT_EQ(OK.left() + OK.width(), Middle - 20);
            EXPECT_EQ(Dialog.buCancel->geometry().left(), Middle + 20);
            EXPECT_TRUE(Dialog.laLeftField->alignment().testFlag(Qt::AlignRight));
            EXPECT_TRUE(Dialog.laCaption->alignment().testFlag(Qt::AlignHCenter));
        };
        ExpectCentred();
        Dialog.resize(Dialog.width() + 101, Dialog.height());
        ExpectCentred();
        EXPECT_TRUE(Dialog.FormCanResize(Dialog.GetMinWidth(), Dialog.height()));
        EXPECT_FALSE(Dialog.FormCanResize(Dialog.GetMinWidth() - 1, Dialog.height()));
        EXPECT_FALSE(Dialog.FormCanResize(Dialog.width(), Dialog.height() + 1));
        // The window system is held to the same rules.
        Dialog.resize(Dialog.GetMinWidth() - 50, Dialog.height() + 40);
        EXPECT_EQ(Dialog.width(), Dialog.GetMinWidth());
        EXPECT_EQ(Dialog.height(), TfmLinkProp::FormHeight);
        Click(Dialog.buCancel);
    });
}

} // namespace
} // namespace zv
