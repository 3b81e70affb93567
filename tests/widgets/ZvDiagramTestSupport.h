// Shared pieces of the diagram tests: a shown component on the offscreen platform, data sets
// made from field lists, and the points of a table's parts in viewport coordinates, so that tests
// can click where a user would.
#pragma once

#include "ZvSelectParser.h"
#include "ZvTableDefs.h"
#include "ZvWindow.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPoint>
#include <QStringList>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace zv::test {

// A data set of string fields with these names.
TZvDataSet FieldsDataSet(std::initializer_list<const char*> Names);

// The work-area point (X, Y) in the work area's viewport coordinates.
QPoint SurfacePoint(const TZvWorkArea& Area, int X, int Y);
// The centre of a work-area rectangle, in the work area's viewport coordinates.
QPoint ViewportCenter(const TZvWorkArea& Area, const QRect& SurfaceRect);
// Where a user clicks: the caption text, the caption check box, caption button I (0..2), and the
// check square of row I.
QPoint CaptionPoint(const TZvTable& Table);
QPoint CheckBoxPoint(const TZvTable& Table);
QPoint ButtonPoint(const TZvTable& Table, int Index);
QPoint RowCheckPoint(const TZvTable& Table, int Row);
// A point on the text of row I, right of its check square: where a row drag starts.
QPoint RowTextPoint(const TZvTable& Table, int Row);

// A left-button drag on the work area's viewport as a hand gives it: MouseDragTo moves with the
// button held, a pixel first and then in a few steps; DragWithMouse presses, moves and releases.
void MouseDragTo(TZvWorkArea& Area, QPoint From, QPoint To);
void DragWithMouse(TZvWorkArea& Area, QPoint From, QPoint To);

// The aliases of the model's tables, in model order.
std::vector<std::string> ModelAliases(TZvSelectParser& Parser);
// The names of a model table's output fields, in order; empty when the table is absent.
std::vector<std::string> ModelFields(TZvSelectParser& Parser, const std::string& Alias);
// The aliases of the diagram's tables, front to back.
std::vector<std::string> DiagramAliases(const TZvWorkArea& Area);

// Processes events until Condition holds or a generous limit passes; timers of the work area
// fire in between. Returns whether the condition came true.
template <class TCondition>
bool WaitFor(TCondition Condition, int LimitMs = 5000) {
    QElapsedTimer Clock;
    Clock.start();
    while (!Condition()) {
        if (Clock.elapsed() > LimitMs)
            return false;
        QTest::qWait(20);
    }
    return true;
}

// Moves the pointer onto Point. Qt drops a move to where the pointer already is, so the pointer
// first goes to a corner where no object lies.
void HoverAt(TZvWorkArea& Area, QPoint Point);

// The work area's viewport as it paints now.
QImage Grab(TZvWorkArea& Area);

// Places the pointer the hover timer reads at a viewport point for the lifetime of the object.
class TPointerAt {
public:
    TPointerAt(TZvWorkArea& Area, QPoint Point);
    ~TPointerAt();
    TPointerAt(const TPointerAt&) = delete;
    TPointerAt& operator=(const TPointerAt&) = delete;

private:
    std::function<QPoint()> Saved;
};

// Counts the move and resize notices (CMMoveControl, CMResizeControl) that reach an object; given
// the object, it watches it for its own lifetime.
class TMessageCounter : public QObject {
public:
    explicit TMessageCounter(QObject* AWatched = nullptr);
    ~TMessageCounter() override;
    bool eventFilter(QObject* Watched, QEvent* Event) override;
    int Moves = 0;
    int Resizes = 0;

private:
    QObject* Watched;
};

// Replaces the context menu's run for a test: records the entries and triggers the one named.
class TMenuChooser {
public:
    explicit TMenuChooser(QString Choice);
    ~TMenuChooser();
    TMenuChooser(const TMenuChooser&) = delete;
    TMenuChooser& operator=(const TMenuChooser&) = delete;
    int Shown = 0;
    QStringList Entries;

private:
    std::function<void(QMenu&, QPoint)> Saved;
};

// A generic component, 800 x 600, shown on the offscreen screen, with its work area.
class TZvDiagramTest : public ::testing::Test {
protected:
    TZvDiagramTest();
    ~TZvDiagramTest() override;

    TZvTable* Add(const std::string& Name, const std::string& Alias = "");

    std::function<void(QMenu&, QPoint)> SavedExecPopupMenu;
    std::unique_ptr<TSQLZevrin> Host;
    TZvWorkArea* Area;
    TZvSelectParser* Parser;
    TZvDataSet EmpFields;
    TZvDataSet DeptFields;
};

} // namespace zv::test
