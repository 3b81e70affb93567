// Shared pieces of the diagram tests.
#include "ZvDiagramTestSupport.h"

#include <QApplication>
#include <QMenu>

namespace zv::test {

TZvDataSet FieldsDataSet(std::initializer_list<const char*> Names) {
    TZvDataSet DataSet;
    for (const char* Name : Names)
        DataSet.AddFieldDef(Name, ftString);
    return DataSet;
}

QPoint SurfacePoint(const TZvWorkArea& Area, int X, int Y) {
    return Area.ToViewport(QRect(X, Y, 1, 1)).topLeft();
}

QPoint ViewportCenter(const TZvWorkArea& Area, const QRect& SurfaceRect) {
    return Area.ToViewport(SurfaceRect).center();
}

QPoint CaptionPoint(const TZvTable& Table) {
    const QRect Caption = Table.GetCaptionRect();
    return Table.GetWorkArea()
        ->ToViewport(QRect(Caption.left() + 4, Caption.top() + Caption.height() / 2, 1, 1))
        .topLeft();
}

QPoint CheckBoxPoint(const TZvTable& Table) {
    return Table.GetWorkArea()
        ->ToViewport(QRect(Table.GetLeft() + TZvTable::BorderWidth + 6,
                           Table.GetTop() + TZvTable::BorderWidth + 6, 1, 1))
        .topLeft();
}

QPoint ButtonPoint(const TZvTable& Table, int Index) {
    const QRect Buttons = Table.GetButtonRect();
    const int Width = Buttons.width() / 3;
    return Table.GetWorkArea()
        ->ToViewport(
            QRect(Buttons.left() + Width * Index + Width / 2, Buttons.top() + Buttons.height() / 2, 1, 1))
        .topLeft();
}

QPoint RowCheckPoint(const TZvTable& Table, int Row) {
    const QRect R = Table.GetItemRect(Table.GetItem(Row));
    return Table.GetWorkArea()->ToViewport(QRect(R.left() + 4, R.top() + R.height() / 2, 1, 1)).topLeft();
}

QPoint RowTextPoint(const TZvTable& Table, int Row) {
    return RowCheckPoint(Table, Row) + QPoint(30, 0);
}

void MouseDragTo(TZvWorkArea& Area, QPoint From, QPoint To) {
    QTest::mouseMove(Area.viewport(), From + QPoint(1, 0));
    for (int Step = 1; Step <= 4; ++Step)
        QTest::mouseMove(Area.viewport(), From + (To - From) * Step / 4);
}

void DragWithMouse(TZvWorkArea& Area, QPoint From, QPoint To) {
    QTest::mousePress(Area.viewport(), Qt::LeftButton, {}, From);
    MouseDragTo(Area, From, To);
    QTest::mouseRelease(Area.viewport(), Qt::LeftButton, {}, To);
}

std::vector<std::string> ModelAliases(TZvSelectParser& Parser) {
    std::vector<std::string> Aliases;
    TZvTableDefs& Defs = Parser.GetTableDefs();
    for (int I = 0; I < Defs.Count(); ++I)
        Aliases.push_back(Defs.Items(I)->GetAlias());
    return Aliases;
}

std::vector<std::string> ModelFields(TZvSelectParser& Parser, const std::string& Alias) {
    std::vector<std::string> Names;
    const TZvTableDef* Table = Parser.GetTableDefs().FindByAlias(Alias);
    if (!Table)
        return Names;
    for (int I = 0; I < Table->GetFieldDefs().Count(); ++I)
        Names.push_back(Table->GetFieldDefs().Items(I)->GetName());
    return Names;
}

std::vector<std::string> DiagramAliases(const TZvWorkArea& Area) {
    std::vector<std::string> Aliases;
    for (int I = 0; I < Area.TableCount(); ++I)
        Aliases.push_back(Area.TableAt(I)->GetAlias());
    return Aliases;
}

void HoverAt(TZvWorkArea& Area, QPoint Point) {
    QTest::mouseMove(Area.viewport(), QPoint(Area.viewport()->width() - 2, Area.viewport()->height() - 2));
    QTest::mouseMove(Area.viewport(), Point);
}

QImage Grab(TZvWorkArea& Area) {
    return Area.viewport()->grab().toImage();
}

TPointerAt::TPointerAt(TZvWorkArea& Area, QPoint Point) : Saved(TZvWorkArea::CursorPosition) {
    TZvWorkArea::CursorPosition = [&Area, Point] { return Area.viewport()->mapToGlobal(Point); };
}

TPointerAt::~TPointerAt() {
    TZvWorkArea::CursorPosition = Saved;
}

TMessageCounter::TMessageCounter(QObject* AWatched) : Watched(AWatched) {
    if (Watched)
        Watched->installEventFilter(this);
}

TMessageCounter::~TMessageCounter() {
    if (Watched)
        Watched->removeEventFilter(this);
}

bool TMessageCounter::eventFilter(QObject* /*Watched*/, QEvent* Event) {
    if (Event->type() == CMMoveControl)
        ++Moves;
    else if (Event->type() == CMResizeControl)
        ++Resizes;
    return false;
}

TMenuChooser::TMenuChooser(QString Choice) : Saved(TZvWorkArea::ExecPopupMenu) {
    TZvWorkArea::ExecPopupMenu = [this, Choice](QMenu& Menu, QPoint) {
        ++Shown;
        Entries.clear();
        for (QAction* Action : Menu.actions())
            Entries.push_back(Action->isSeparator() ? QStringLiteral("-") : Action->text());
        for (QAction* Action : Menu.actions())
            if (Action->text() == Choice)
                Action->trigger();
    };
}

TMenuChooser::~TMenuChooser() {
    TZvWorkArea::ExecPopupMenu = Saved;
}

TZvDiagramTest::TZvDiagramTest()
    : SavedExecPopupMenu(TZvWorkArea::ExecPopupMenu), Host(std::make_unique<TSQLZevrin>()),
      Area(Host->GetWorkArea()), Parser(Host->GetParser()),
      EmpFields(FieldsDataSet({"ID", "NAME", "DEPT_ID"})), DeptFields(FieldsDataSet({"ID", "TITLE"})) {
    // A context menu would wait for a user: a test that opens one replaces this.
    TZvWorkArea::ExecPopupMenu = [](QMenu&, QPoint) { ADD_FAILURE() << "a context menu was opened"; };
    Host->resize(800, 600);
    Host->show();
    QApplication::processEvents();
}

TZvDiagramTest::~TZvDiagramTest() {
    TZvWorkArea::ExecPopupMenu = SavedExecPopupMenu;
}

TZvTable* TZvDiagramTest::Add(const std::string& Name, const std::string& Alias) {
    return Host->GetTables().AddTable(Name, Alias, Name == "DEPT" ? &DeptFields : &EmpFields);
}

} // namespace zv::test
