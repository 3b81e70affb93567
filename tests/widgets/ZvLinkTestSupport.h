// Shared pieces of the link tests: a shown component whose dialect parser the test chooses, two
// tables side by side (EMP E and DEPT D) with typed fields, the model's FROM text, real mouse
// events with a held button, and a context menu that picks an entry instead of waiting.
#pragma once

#include "ZvDiagramTestSupport.h"
#include "ZvFloatTable.h"
#include "ZvLinkProp.h"
#include "ZvLinks.h"
#include "ZvSelectParser.h"
#include "ZvTableDefs.h"
#include "ZvWindow.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zv::test {

// A generic component whose parser comes from Make (the plain parser when Make is empty).
class TZvDialectZevrin : public TSQLZevrin {
public:
    using TMakeParser = std::function<std::unique_ptr<TZvSelectParser>()>;
    explicit TZvDialectZevrin(TMakeParser AMake) : Make(std::move(AMake)) {}

protected:
    std::unique_ptr<TZvSelectParser> CreateParser() override {
        return Make ? Make() : TSQLZevrin::CreateParser();
    }

private:
    TMakeParser Make;
};

// A parser of a dialect that writes column-to-constant comparisons into its joins.
class TZvConstJoinParser : public TZvSelectParser {
public:
    bool IsConstInJoin() override { return true; }
};

// Sends a mouse event with the button state a user's hand would give it.
inline void SendMouse(QWidget* Widget, QEvent::Type Type, QPoint At, Qt::MouseButton Button,
                      Qt::MouseButtons Held) {
    QMouseEvent Event(Type, QPointF(At), QPointF(Widget->mapToGlobal(At)), Button, Held, Qt::NoModifier);
    QApplication::sendEvent(Widget, &Event);
}

// Two tables on a shown 800 x 600 component: EMP E at (20, 20) with ID (integer), NAME (string),
// DEPT_ID (integer), and DEPT D at (300, 40) with ID (large integer), TITLE (string).
class TZvLinkFixture : public ::testing::Test {
protected:
    explicit TZvLinkFixture(TZvDialectZevrin::TMakeParser Make = {})
        : SavedMenu(TZvWorkArea::ExecPopupMenu), SavedDialog(TfmLinkProp::ExecDialog),
          Host(std::make_unique<TZvDialectZevrin>(std::move(Make))), Area(Host->GetWorkArea()),
          Parser(Host->GetParser()) {
        EmpFields.AddFieldDef("ID", ftInteger);
        EmpFields.AddFieldDef("NAME", ftString);
        EmpFields.AddFieldDef("DEPT_ID", ftInteger);
        DeptFields.AddFieldDef("ID", ftLargeint);
        DeptFields.AddFieldDef("TITLE", ftString);
        TZvWorkArea::ExecPopupMenu = [](QMenu&, QPoint) { ADD_FAILURE() << "a context menu was opened"; };
        TfmLinkProp::ExecDialog = [](TfmLinkProp&) {
            ADD_FAILURE() << "the link properties dialog was opened";
            return int(QDialog::Rejected);
        };
        Host->resize(800, 600);
        Host->show();
        QApplication::processEvents();
        Emp = Host->GetTables().AddTableAt("EMP", "E", &EmpFields, QPoint(20, 20));
        Dept = Host->GetTables().AddTableAt("DEPT", "D", &DeptFields, QPoint(300, 40));
    }
    ~TZvLinkFixture() override {
        TZvWorkArea::ExecPopupMenu = SavedMenu;
        TfmLinkProp::ExecDialog = SavedDialog;
    }

    TZvListItem* Row(TZvTable* Table, const std::string& Name) { return Table->GetFieldItem(Name); }
    // E.DEPT_ID to D.ID.
    TZvLink* LinkDeptId() { return Area->AddLink(Emp, Dept, Row(Emp, "DEPT_ID"), Row(Dept, "ID")); }
    TZvJoinDefs& JoinsOf(const std::string& Alias) {
        return Parser->GetTableDefs().FindByAlias(Alias)->GetJoinDefs();
    }
    // A join the model holds already, as a statement read in would give it.
    TZvJoinDef* AddModelJoin(const std::string& Owner, const std::string& Left, const std::string& Target,
                             const std::string& Right, const std::string& Operator = "=",
                             TZvJoinKind Kind = zvjInnerJoin) {
        TZvJoinDef* Def = JoinsOf(Owner).Add();
        Def->SetLeftField(Left);
        Def->SetTableAlias(Target);
        Def->SetRightField(Right);
        Def->SetOperator(Operator);
        Def->SetKind(Kind);
        return Def;
    }
    // The FROM entry of a model table with its joins, as the statement writes it.
    std::string FromText(const std::string& Alias) {
        return Parser->GetTableDefs().FindByAlias(Alias)->GetScript();
    }

    // Runs the next context menu: records its entries and triggers the one with text Choice.
    void ChooseFromMenu(const QString& Choice) {
        TZvWorkArea::ExecPopupMenu = [this, Choice](QMenu& Menu, QPoint) {
            MenuTexts.clear();
            QAction* Chosen = nullptr;
            for (QAction* Action : Menu.actions()) {
                MenuTexts.push_back(Action->isSeparator() ? QStringLiteral("-") : Action->text());
                if (Action->text() == Choice)
                    Chosen = Action;
            }
            ASSERT_NE(Chosen, nullptr) << Choice.toStdString();
            Chosen->trigger();
        };
    }
    // A right click at a viewport point, as a user gives it.
    void RightClick(QPoint At) { QTest::mouseClick(Area->viewport(), Qt::RightButton, {}, At); }
    QPoint ToView(QPoint SurfacePoint) const {
        return SurfacePoint - QPoint(Area->HorzScrollPos(), Area->VertScrollPos());
    }

    std::function<void(QMenu&, QPoint)> SavedMenu;
    std::function<int(TfmLinkProp&)> SavedDialog;
    std::unique_ptr<TZvDialectZevrin> Host;
    TZvWorkArea* Area;
    TZvSelectParser* Parser;
    TZvDataSet EmpFields;
    TZvDataSet DeptFields;
    TZvTable* Emp = nullptr;
    TZvTable* Dept = nullptr;
    std::vector<QString> MenuTexts;
};

} // namespace zv::test
