// The designer window offscreen: the catalog of the sample database, statements parsed and written
// back through the core, errors placed in the editor, the preview read in its own thread and
// checked against SQLite directly, the screenshot, and the zevrin-designer process.
#include "ZvCatalogView.h"
#include "ZvConnection.h"
#include "ZvDesignerDiagram.h"
#include "ZvDesignerWindow.h"
#include "ZvDiagramTestSupport.h"
#include "ZvLinkProp.h"
#include "ZvLinks.h"
#include "ZvPreview.h"
#include "ZvPreviewModel.h"
#include "ZvSampleDatabase.h"
#include "ZvScreenshot.h"
#include "ZvSqlMetadata.h"
#include "ZvSqlPane.h"
#include "ZvTestSupport.h"
#include "ZvWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QSet>
#include <QSignalSpy>
#include <QSplitter>
#include <QSqlError>
#include <QSqlQuery>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTimer>

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <ostream>

// Texts print as text in test failures.
inline void PrintTo(const QString& Text, std::ostream* Out) {
    *Out << '"' << Text.toStdString() << '"';
}

namespace zv {
namespace {

constexpr int kWaitMs = 20000;

class ZvDesignerWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        QString Error;
        Database = ZvOpenConnection(TZvConnectionInfo{}, QStringLiteral("designer-test"), &Error);
        ASSERT_TRUE(Database.isOpen()) << Error.toStdString();
        Direct = ZvOpenSampleDatabase(QStringLiteral("designer-direct"));
        ASSERT_TRUE(Direct.isOpen());
        Window = std::make_unique<TZvDesignerWindow>(Database, TZvConnectionInfo{});
    }
    void TearDown() override {
        Window.reset();
        Database = QSqlDatabase();
        Direct = QSqlDatabase();
        ZvCloseConnection(QStringLiteral("designer-test"));
        ZvCloseConnection(QStringLiteral("designer-direct"));
    }

    // Loads Text, which must parse, and waits for its preview.
    void LoadAndWait(const QString& Text) {
        ASSERT_TRUE(Window->LoadStatement(Text)) << Window->SqlPane()->ErrorText().toStdString();
        ASSERT_TRUE(Window->WaitForPreview(kWaitMs)) << "the preview did not report";
    }
    // The number of rows SQLite itself returns for the statement.
    qlonglong DirectCount(const QString& Sql) {
        QSqlQuery Query(Direct);
        EXPECT_TRUE(Query.exec(QStringLiteral("SELECT COUNT(*) FROM (%1)").arg(Sql)))
            << Query.lastError().text().toStdString();
        EXPECT_TRUE(Query.next());
        return Query.value(0).toLongLong();
    }
    QPlainTextEdit& Editor() { return *Window->SqlPane()->Editor(); }

    QSqlDatabase Database;
    QSqlDatabase Direct;
    std::unique_ptr<TZvDesignerWindow> Window;
};

// --- catalog -----------------------------------------------------------------------------------

TEST_F(ZvDesignerWindowTest, CatalogListsEveryTableAndViewOfTheDatabase) {
    const QStringList Tables = ZvListTables(Database);
    ASSERT_EQ(Tables.size(), 9);
    EXPECT_EQ(Window->GetMetadata().Tables(), Tables);
    TZvCatalogView& Catalog = *Window->Catalog();
    ASSERT_EQ(Catalog.topLevelItemCount(), Tables.size());
    for (int I = 0; I < Tables.size(); ++I)
        EXPECT_EQ(Catalog.topLevelItem(I)->text(0), Tables[I]);
}

TEST_F(ZvDesignerWindowTest, CatalogShowsFieldsInColumnOrderWithTheComponentsTypeNames) {
    const QTreeWidgetItem* Products = Window->Catalog()->Fields(QStringLiteral("products"));
    ASSERT_NE(Products, nullptr);
    ASSERT_EQ(Products->childCount(), 8);
    const struct {
        const char* Name;
        const char* Type;
    } Expected[] = {{"product_id", "Integer"},  {"name", "String"},         {"category_id", "Integer"},
                    {"supplier_id", "Integer"}, {"unit_price", "BCD"},      {"units_in_stock", "Integer"},
                    {"weight_kg", "Float"},     {"discontinued", "Boolean"}};
    for (int I = 0; I < Products->childCount(); ++I) {
        EXPECT_EQ(Products->child(I)->text(0), QString::fromLatin1(Expected[I].Name));
        EXPECT_EQ(Products->child(I)->text(1), QString::fromLatin1(Expected[I].Type)) << Expected[I].Name;
    }
    const QTreeWidgetItem* Orders = Window->Catalog()->Fields(QStringLiteral("orders"));
    ASSERT_NE(Orders, nullptr);
    EXPECT_EQ(Orders->child(3)->text(0), QStringLiteral("order_date"));
    EXPECT_EQ(Orders->child(3)->text(1), QStringLiteral("Date"));
}

TEST_F(ZvDesignerWindowTest, DoubleClickingAFieldInsertsItsQualifiedNameAtTheCursor) {
    Editor().setPlainText(QStringLiteral("SELECT  FROM products"));
    QTextCursor Cursor = Editor().textCursor();
    Cursor.setPosition(7);
    Editor().setTextCursor(Cursor);
    QTreeWidgetItem* Products = Window->Catalog()->Fields(QStringLiteral("products"));
    ASSERT_NE(Products, nullptr);
    emit Window->Catalog()->itemDoubleClicked(Products->child(1), 0);
    EXPECT_EQ(Editor().toPlainText(), QStringLiteral("SELECT products.name FROM products"));
}

TEST_F(ZvDesignerWindowTest, TheStatementsTablesAreOpenedInTheCatalog) {
    LoadAndWait(ZvSampleStatement());
    QStringList Tables = Window->StatementTables();
    Tables.sort(); // the model's order is not the point here
    EXPECT_EQ(Tables, (QStringList{QStringLiteral("categories"), QStringLiteral("products"),
                                   QStringLiteral("suppliers")}));
    TZvCatalogView& Catalog = *Window->Catalog();
    QStringList Expanded;
    for (int I = 0; I < Catalog.topLevelItemCount(); ++I) {
        if (Catalog.topLevelItem(I)->isExpanded())
            Expanded << Catalog.topLevelItem(I)->text(0);
    }
    EXPECT_EQ(Expanded, (QStringList{QStringLiteral("categories"), QStringLiteral("products"),
                                     QStringLiteral("suppliers")}));
    LoadAndWait(QStringLiteral("SELECT R.name FROM REGIONS R"));
    EXPECT_TRUE(Catalog.FindTable(QStringLiteral("regions"))->isExpanded());
    EXPECT_FALSE(Catalog.FindTable(QStringLiteral("products"))->isExpanded());
}

TEST_F(ZvDesignerWindowTest, ATablesFieldsAreReadWhenItIsFirstOpened) {
    TZvCatalogView& Catalog = *Window->Catalog();
    QTreeWidgetItem* Regions = Catalog.FindTable(QStringLiteral("regions"));
    ASSERT_NE(Regions, nullptr);
    EXPECT_EQ(Regions->childCount(), 0);
    EXPECT_EQ(Regions->childIndicatorPolicy(), QTreeWidgetItem::ShowIndicator);
    Regions->setExpanded(true);
    ASSERT_EQ(Regions->childCount(), 2);
    EXPECT_EQ(Regions->child(0)->text(0), QStringLiteral("region_id"));
    Regions->setExpanded(false);
    Regions->setExpanded(true);
    EXPECT_EQ(Regions->childCount(), 2) << "the fields are read once";
    EXPECT_EQ(Catalog.Fields(QStringLiteral("no_such_table")), nullptr);
}

// --- SQL pane ----------------------------------------------------------------------------------

TEST_F(ZvDesignerWindowTest, ApplyingWritesTheGeneratedStatementBackAsOneUndoStep) {
    const QString Typed = QStringLiteral("select p.name\nfrom products p");
    ASSERT_TRUE(Window->LoadStatement(Typed));
    EXPECT_EQ(Window->SqlPane()->GeneratedSql(),
              QStringLiteral("SELECT \r\n  p.name\r\nFROM\r\n  products p\r\n"));
    EXPECT_EQ(Editor().toPlainText(), QStringLiteral("SELECT \n  p.name\nFROM\n  products p"));
    EXPECT_TRUE(Window->SqlPane()->ErrorText().isEmpty());
    Editor().undo();
    EXPECT_EQ(Editor().toPlainText(), Typed);
}

TEST_F(ZvDesignerWindowTest, TheDialectChooserOffersEveryDialectAndRegeneratesTheStatement) {
    QComboBox& Chooser = *Window->SqlPane()->DialectChooser();
    ASSERT_EQ(Chooser.count(), 8);
    EXPECT_EQ(Chooser.itemText(0), QStringLiteral("Generic SQL"));
    EXPECT_EQ(Chooser.itemData(4).toString(), QStringLiteral("mssql"));
    ASSERT_TRUE(Window->LoadStatement(QStringLiteral("SELECT \"unit price\" FROM products")));
    EXPECT_EQ(Editor().toPlainText(), QStringLiteral("SELECT \n  \"unit price\"\nFROM\n  products"));
    ASSERT_TRUE(Window->SqlPane()->SetDialect(QStringLiteral("mssql")));
    EXPECT_EQ(Window->SqlPane()->Dialect(), QStringLiteral("mssql"));
    EXPECT_EQ(Editor().toPlainText(), QStringLiteral("SELECT \n  [unit price]\nFROM\n  products"));
    EXPECT_FALSE(Window->SqlPane()->SetDialect(QStringLiteral("sqlite")));
    EXPECT_EQ(Window->SqlPane()->Dialect(), QStringLiteral("mssql"));
}

TEST_F(ZvDesignerWindowTest, AClauseOfOneDialectIsAnErrorInAnother) {
    ASSERT_TRUE(Window->SqlPane()->SetDialect(QStringLiteral("mysql")));
    LoadAndWait(QStringLiteral("SELECT p.name FROM products p ORDER BY p.name LIMIT 5"));
    EXPECT_EQ(Window->PreviewModel()->rowCount(), 5);
    ASSERT_TRUE(Window->SqlPane()->SetDialect(QStringLiteral("generic")));
    // The editor holds the statement as MySQL wrote it; generic SQL stops at its LIMIT line.
    EXPECT_EQ(Window->SqlPane()->ErrorText(),
              QStringLiteral("Invalid token 'LIMIT' at position 1 of line 7."));
    EXPECT_EQ(Editor().textCursor().blockNumber(), 6);
    EXPECT_EQ(Editor().textCursor().positionInBlock(), 0);
}

// One broken statement: the core's message, and where the cursor must stand (block and column in
// characters, 0-based).
struct TBrokenStatement {
    const char* Text;
    const char* Message;
    int Block;
    int Column;
};

TEST_F(ZvDesignerWindowTest, ASyntaxErrorShowsTheMessageAndPutsTheCursorOnTheError) {
    const TBrokenStatement Cases[] = {
        {"SELECT a\nFROM t\nFOR UPDATE", "Invalid token 'FOR' at position 1 of line 3.", 2, 0},
        {"SELECT p.name\nFROM products p\nWHERE p.name = 'Käse' AND )",
         "Invalid token ')' at position 28 of line 3.", 2, 26},
        {"SELECT '€€€' AS x, p.name FROM products p ORDER", "Invalid token 'ORDER' at position 49 of line 1.",
         0, 42},
        {"SELECT '😀' AS x, p.name FROM products p ORDER", "Invalid token 'ORDER' at position 44 of line 1.",
         0, 41},
        {"SELECT a\nFROM t\nWHERE a = '日本' FOR UPDATE", "Invalid token 'FOR' at position 20 of line 3.", 2,
         15},
        // The position of an unterminated string is that of its first character after the quote.
        {"SELECT a\nFROM t\nWHERE x = 'ö\nb", "Unterminated string.", 2, 11},
        {"SELECT a\nFROM", "Unexpected end of statement.", 1, 4},
    };
    for (const TBrokenStatement& Case : Cases) {
        const QString Text = QString::fromUtf8(Case.Text);
        EXPECT_FALSE(Window->LoadStatement(Text)) << Case.Text;
        EXPECT_EQ(Editor().toPlainText(), Text) << "the typed text must stay as it was";
        EXPECT_EQ(Window->SqlPane()->ErrorText(), QString::fromUtf8(Case.Message)) << Case.Text;
        const QTextCursor Cursor = Editor().textCursor();
        EXPECT_EQ(Cursor.blockNumber(), Case.Block) << Case.Text;
        EXPECT_EQ(Cursor.positionInBlock(), Case.Column) << Case.Text;
        EXPECT_TRUE(Window->SqlPane()->GeneratedSql().isEmpty());
    }
}

TEST_F(ZvDesignerWindowTest, PastedWindowsLineBreaksCountAsOneLineBreak) {
    EXPECT_FALSE(Window->LoadStatement(QStringLiteral("SELECT a\r\nFROM t\r\nWHERE a = 'ü' FOR UPDATE")));
    EXPECT_EQ(Window->SqlPane()->ErrorText(),
              QStringLiteral("Invalid token 'FOR' at position 16 of line 3."));
    EXPECT_EQ(Editor().textCursor().blockNumber(), 2);
    EXPECT_EQ(Editor().textCursor().positionInBlock(), 14);
}

TEST_F(ZvDesignerWindowTest, ASyntaxErrorEmptiesThePreviewAndSaysWhy) {
    LoadAndWait(QStringLiteral("SELECT r.name FROM regions r"));
    EXPECT_EQ(Window->PreviewModel()->rowCount(), 6);
    EXPECT_FALSE(Window->LoadStatement(QStringLiteral("SELECT r.name FROM regions r ORDER")));
    EXPECT_EQ(Window->PreviewModel()->rowCount(), 0);
    EXPECT_EQ(Window->PreviewStatus(), QStringLiteral("No preview: the statement has a syntax error."));
    EXPECT_FALSE(Window->Preview().IsBusy());
}

TEST_F(ZvDesignerWindowTest, AnEmptyEditorClearsStatementAndPreview) {
    LoadAndWait(QStringLiteral("SELECT r.name FROM regions r"));
    QSignalSpy Cleared(Window->SqlPane(), &TZvSqlPane::StatementCleared);
    EXPECT_FALSE(Window->LoadStatement(QStringLiteral("  \n\t ")));
    EXPECT_EQ(Cleared.count(), 1);
    EXPECT_TRUE(Window->SqlPane()->ErrorText().isEmpty());
    EXPECT_TRUE(Window->SqlPane()->GeneratedSql().isEmpty());
    EXPECT_EQ(Window->PreviewModel()->rowCount(), 0);
    EXPECT_TRUE(Window->PreviewStatus().isEmpty());
}

// --- preview -----------------------------------------------------------------------------------

TEST_F(ZvDesignerWindowTest, ThePreviewHoldsAsManyRowsAsSqliteReturns) {
    LoadAndWait(ZvSampleStatement());
    const QString Generated = Window->SqlPane()->GeneratedSql();
    const qlonglong Expected = DirectCount(Generated);
    EXPECT_EQ(Expected, 29);
    EXPECT_EQ(Window->PreviewModel()->rowCount(), Expected);
    EXPECT_EQ(Window->PreviewStatus(), QStringLiteral("29 rows"));
    const QStringList Headers = {QStringLiteral("category"), QStringLiteral("product"),
                                 QStringLiteral("supplier"), QStringLiteral("unit_price"),
                                 QStringLiteral("units_in_stock")};
    ASSERT_EQ(Window->PreviewModel()->columnCount(), Headers.size());
    for (int I = 0; I < Headers.size(); ++I)
        EXPECT_EQ(Window->PreviewModel()->headerData(I, Qt::Horizontal).toString(), Headers[I]);
}

TEST_F(ZvDesignerWindowTest, ThePreviewShowsTheSameFirstRowAsSqlite) {
    LoadAndWait(QStringLiteral("SELECT o.order_id, o.order_date FROM orders o WHERE o.order_id = 17"));
    ASSERT_EQ(Window->PreviewModel()->rowCount(), 1);
    EXPECT_EQ(Window->PreviewStatus(), QStringLiteral("1 row"));
    QSqlQuery Query(Direct);
    ASSERT_TRUE(Query.exec(QStringLiteral("SELECT order_date FROM orders WHERE order_id = 17")) &&
                Query.next());
    const TZvPreviewModel& Model = *Window->PreviewModel();
    EXPECT_EQ(Model.data(Model.index(0, 0)).toInt(), 17);
    EXPECT_EQ(Model.data(Model.index(0, 1)).toString(), Query.value(0).toString());
}

TEST_F(ZvDesignerWindowTest, ThePreviewStopsAtTheRowLimitAndSaysThereAreMore) {
    LoadAndWait(QStringLiteral("SELECT o.order_id FROM orders o ORDER BY o.order_id"));
    EXPECT_EQ(DirectCount(Window->SqlPane()->GeneratedSql()), 420);
    EXPECT_EQ(Window->PreviewModel()->rowCount(), kZvPreviewRowLimit);
    EXPECT_EQ(Window->PreviewStatus(), QStringLiteral("The first 200 rows; the statement returns more."));
    const TZvPreviewModel& Model = *Window->PreviewModel();
    EXPECT_EQ(Model.data(Model.index(kZvPreviewRowLimit - 1, 0)).toInt(), 200);
    EXPECT_EQ(Model.headerData(kZvPreviewRowLimit - 1, Qt::Vertical).toInt(), 200);
}

TEST_F(ZvDesignerWindowTest, ExactlyTheLimitIsNotMore) {
    LoadAndWait(QStringLiteral("SELECT o.order_id FROM orders o WHERE o.order_id <= 200"));
    EXPECT_EQ(Window->PreviewModel()->rowCount(), 200);
    EXPECT_EQ(Window->PreviewStatus(), QStringLiteral("200 rows"));
}

TEST_F(ZvDesignerWindowTest, NullIsShownAsAGreyedNull) {
    LoadAndWait(QStringLiteral("SELECT p.name, p.supplier_id FROM products p WHERE p.supplier_id IS NULL"));
    ASSERT_GT(Window->PreviewModel()->rowCount(), 0);
    const TZvPreviewModel& Model = *Window->PreviewModel();
    const QModelIndex Cell = Model.index(0, 1);
    EXPECT_EQ(Model.data(Cell).toString(), QStringLiteral("NULL"));
    EXPECT_TRUE(Model.data(Cell, Qt::ForegroundRole).isValid());
    EXPECT_FALSE(Model.data(Model.index(0, 0), Qt::ForegroundRole).isValid());
}

TEST_F(ZvDesignerWindowTest, TheDatabasesErrorIsShownInThePreview) {
    LoadAndWait(QStringLiteral("SELECT x.a FROM no_such_table x"));
    EXPECT_EQ(Window->PreviewModel()->rowCount(), 0);
    EXPECT_TRUE(Window->PreviewStatus().startsWith(QStringLiteral("The database refused the statement: ")))
        << Window->PreviewStatus().toStdString();
    EXPECT_TRUE(Window->PreviewStatus().contains(QStringLiteral("no_such_table")))
        << Window->PreviewStatus().toStdString();
}

TEST_F(ZvDesignerWindowTest, ThePreviewIsReadInAThreadOfItsOwn) {
    const QThread* Worker = Window->Preview().WorkerThread();
    EXPECT_NE(Worker, QThread::currentThread());
    EXPECT_TRUE(Worker->isRunning());
}

// A statement without end: only the thread of the preview can be stuck in it.
const QString kEndlessRows =
    QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n");

TEST(ZvPreview, TheWindowsEventLoopRunsWhileAStatementIsRead) {
    TZvPreview Preview(TZvConnectionInfo{}, INT_MAX);
    QSignalSpy Finished(&Preview, &TZvPreview::Finished);
    Preview.Run(kEndlessRows);
    int Ticks = 0;
    QTimer Timer;
    QObject::connect(&Timer, &QTimer::timeout, [&Ticks] { ++Ticks; });
    Timer.start(5);
    ASSERT_TRUE(QTest::qWaitFor([&Ticks] { return Ticks >= 5; }, kWaitMs));
    EXPECT_TRUE(Preview.IsBusy());
    EXPECT_EQ(Finished.count(), 0);
    Preview.Cancel(); // the reader stops at its next row
    EXPECT_FALSE(Preview.IsBusy());
}

TEST(ZvPreview, OnlyTheLatestRequestReports) {
    TZvPreview Preview(TZvConnectionInfo{}, INT_MAX);
    QSignalSpy Finished(&Preview, &TZvPreview::Finished);
    Preview.Run(kEndlessRows);
    const quint64 Latest = Preview.Run(QStringLiteral("SELECT COUNT(*) AS n FROM orders"));
    ASSERT_TRUE(Finished.wait(kWaitMs));
    ASSERT_EQ(Finished.count(), 1);
    const auto Result = Finished.at(0).at(0).value<TZvPreviewResult>();
    EXPECT_EQ(Result.Request, Latest);
    EXPECT_EQ(Result.Columns, QStringList{QStringLiteral("n")});
    ASSERT_EQ(Result.Rows.size(), 1);
    EXPECT_EQ(Result.Rows[0][0].toInt(), 420);
    EXPECT_FALSE(Result.More);
    EXPECT_FALSE(Preview.IsBusy());
}

TEST(ZvPreview, AConnectionThatCannotOpenIsReportedAsTheError) {
    TZvPreview Preview(ZvSqliteConnection(QStringLiteral("/nonexistent/zevrin.sqlite")));
    QSignalSpy Finished(&Preview, &TZvPreview::Finished);
    Preview.Run(QStringLiteral("SELECT 1"));
    ASSERT_TRUE(Finished.wait(kWaitMs));
    const auto Result = Finished.at(0).at(0).value<TZvPreviewResult>();
    EXPECT_EQ(Result.Error, QStringLiteral("database file '/nonexistent/zevrin.sqlite' does not exist"));
    EXPECT_TRUE(Result.Rows.isEmpty());
}

// --- the diagram over the database ----------------------------------------------------------

// The designer's diagram and its work area, with a helper that waits for the statement a diagram
// edit produces to reach the SQL pane.
class ZvDesignerDiagramTest : public ZvDesignerWindowTest {
protected:
    void SetUp() override {
        ZvDesignerWindowTest::SetUp();
        Window->show();
        Diagram = Window->Designer();
        ASSERT_NE(Diagram, nullptr);
        Area = Diagram->Component()->GetWorkArea();
    }
    bool WaitForStatement() {
        QSignalSpy Spy(Diagram, &TZvDesignerDiagram::StatementChanged);
        return Spy.wait(kWaitMs);
    }
    QTreeWidgetItem* CatalogTable(const char* Name) { return Window->Catalog()->Fields(QString::fromUtf8(Name)); }
    void Drop(const QMimeData& Data, QPoint At) {
        QDragEnterEvent Enter(At, Qt::CopyAction, &Data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(Area->viewport(), &Enter);
        EXPECT_TRUE(Enter.isAccepted());
        QDropEvent Dropped(QPointF(At), Qt::CopyAction, &Data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(Area->viewport(), &Dropped);
    }
    TZvDesignerDiagram* Diagram = nullptr;
    TZvWorkArea* Area = nullptr;
};

TEST_F(ZvDesignerDiagramTest, DoubleClickingATableInTheCatalogPlacesItWithTheDatabasesFields) {
    QTreeWidgetItem* Products = CatalogTable("products");
    ASSERT_NE(Products, nullptr);
    emit Window->Catalog()->itemDoubleClicked(Products, 0);
    ASSERT_EQ(Area->TableCount(), 1);
    const TZvTable* Table = Area->TableAt(0);
    EXPECT_EQ(Table->GetName(), "products");
    ASSERT_EQ(Table->ItemCount(), Products->childCount());
    for (int I = 0; I < Products->childCount(); ++I) {
        EXPECT_EQ(QString::fromStdString(Table->GetItem(I)->GetName()), Products->child(I)->text(0));
        EXPECT_EQ(Table->GetItem(I)->GetDataName(), Products->child(I)->text(1));
    }
}

TEST_F(ZvDesignerDiagramTest, TickingFieldsPutsTheDiagramsStatementIntoTheSqlPane) {
    emit Window->Catalog()->itemDoubleClicked(CatalogTable("categories"), 0);
    ASSERT_TRUE(WaitForStatement());
    EXPECT_EQ(Window->SqlPane()->GeneratedSql(), QStringLiteral("SELECT *\r\nFROM\r\n  categories\r\n"));
    TZvTable* Table = Area->TableAt(0);
    QTest::mouseClick(Area->viewport(), Qt::LeftButton, {}, Area->ToViewport(Table->GetItemRect(Table->GetItem(1))).topLeft() + QPoint(4, 4));
    ASSERT_TRUE(Table->GetItem(1)->GetCheck());
    ASSERT_TRUE(WaitForStatement());
    const QString Expected = Diagram->Statement();
    EXPECT_TRUE(Expected.contains(QString::fromStdString(Table->GetItem(1)->GetName()))) << Expected.toStdString();
    EXPECT_EQ(Window->SqlPane()->GeneratedSql(), Expected);
    EXPECT_TRUE(Window->SqlPane()->ErrorText().isEmpty());
    ASSERT_TRUE(Window->WaitForPreview(kWaitMs));
    EXPECT_EQ(Window->PreviewModel()->rowCount(), DirectCount(QStringLiteral("SELECT * FROM categories")));
}

TEST_F(ZvDesignerDiagramTest, TheDiagramsStatementReplacesThePanesAsOneUndoStep) {
    Editor().setPlainText(QStringLiteral("SELECT 1"));
    emit Window->Catalog()->itemDoubleClicked(CatalogTable("categories"), 0);
    ASSERT_TRUE(WaitForStatement());
    EXPECT_NE(Editor().toPlainText(), QStringLiteral("SELECT 1"));
    Editor().undo();
    EXPECT_EQ(Editor().toPlainText(), QStringLiteral("SELECT 1"));
}

TEST_F(ZvDesignerDiagramTest, ClosingTheLastTableEmptiesTheStatement) {
    emit Window->Catalog()->itemDoubleClicked(CatalogTable("categories"), 0);
    ASSERT_TRUE(WaitForStatement());
    Diagram->Component()->GetTables().DeleteTable(Area->TableAt(0));
    ASSERT_TRUE(WaitForStatement());
    EXPECT_TRUE(Editor().toPlainText().isEmpty());
    EXPECT_TRUE(Window->SqlPane()->GeneratedSql().isEmpty());
}

TEST_F(ZvDesignerDiagramTest, ATableDraggedFromTheCatalogLandsWhereItIsDropped) {
    std::unique_ptr<QMimeData> Data(Window->Catalog()->DragData(CatalogTable("suppliers")));
    ASSERT_NE(Data, nullptr);
    EXPECT_EQ(TZvDesignerDiagram::TableOf(*Data), QStringLiteral("suppliers"));
    const QPoint Scrolled(Area->HorzScrollPos(), Area->VertScrollPos());
    Drop(*Data, QPoint(120, 40));
    ASSERT_EQ(Area->TableCount(), 1);
    EXPECT_EQ(Area->TableAt(0)->GetName(), "suppliers");
    EXPECT_EQ(QPoint(Area->TableAt(0)->GetLeft(), Area->TableAt(0)->GetTop()), QPoint(120, 40) + Scrolled);
}

TEST_F(ZvDesignerDiagramTest, AFieldCarriesNoDragData) {
    QTreeWidgetItem* Products = CatalogTable("products");
    EXPECT_EQ(Window->Catalog()->DragData(Products->child(0)), nullptr);
}

TEST_F(ZvDesignerDiagramTest, AnUnknownTableIsReportedAndNothingIsPlaced) {
    test::TZvMessageRecorder Recorder;
    QMimeData Data;
    Data.setData(TZvDesignerDiagram::DragMimeType(), QByteArrayLiteral("no_such_table"));
    Drop(Data, QPoint(50, 50));
    EXPECT_EQ(Area->TableCount(), 0);
    ASSERT_EQ(Recorder.Errors.size(), 1u);
    EXPECT_EQ(Recorder.Errors[0].Message,
              QStringLiteral("The database has no table or procedure named 'no_such_table'."));
}

TEST_F(ZvDesignerDiagramTest, OtherDragsAreNotTaken) {
    QMimeData Data;
    Data.setText(QStringLiteral("products"));
    QDragEnterEvent Enter(QPoint(50, 50), Qt::CopyAction, &Data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(Area->viewport(), &Enter);
    EXPECT_FALSE(Enter.isAccepted());
}

// --- joins drawn on the diagram ----------------------------------------------------------------

// categories at the left and products at the right of the work area, over the sample database.
class ZvDesignerJoinTest : public ZvDesignerDiagramTest {
protected:
    void SetUp() override {
        ZvDesignerDiagramTest::SetUp();
        if (HasFatalFailure())
            return;
        Categories = Diagram->AddTableAt(QStringLiteral("categories"), QPoint(20, 20));
        Products = Diagram->AddTableAt(QStringLiteral("products"), QPoint(320, 20));
        ASSERT_NE(Categories, nullptr);
        ASSERT_NE(Products, nullptr);
        ASSERT_TRUE(WaitForStatement());
    }
    // Drags the row From of categories onto the row To of products with real mouse events.
    void DragRow(const char* From, const char* To) {
        const QPoint Start = test::RowTextPoint(*Categories, Categories->GetFieldItem(From)->GetIndex());
        const QPoint End = test::RowTextPoint(*Products, Products->GetFieldItem(To)->GetIndex());
        ASSERT_TRUE(Area->viewport()->rect().contains(End));
        QTest::mousePress(Area->viewport(), Qt::LeftButton, {}, Start);
        test::MouseDragTo(*Area, Start, End);
        QTest::mouseRelease(Area->viewport(), Qt::LeftButton, {}, End);
    }
    TZvTable* Categories = nullptr;
    TZvTable* Products = nullptr;
};

TEST_F(ZvDesignerJoinTest, ARowDraggedOntoARelatedRowPutsTheJoinIntoTheSqlPane) {
    DragRow("category_id", "category_id");
    ASSERT_EQ(Area->LinkCount(), 1);
    ASSERT_TRUE(WaitForStatement());
    const QString Sql = Window->SqlPane()->GeneratedSql();
    EXPECT_EQ(Sql, Diagram->Statement());
    EXPECT_TRUE(Sql.contains(QStringLiteral(
        "categories\r\n  INNER JOIN products ON (categories.category_id = products.category_id)")))
        << Sql.toStdString();
    EXPECT_TRUE(Window->SqlPane()->ErrorText().isEmpty());
    ASSERT_TRUE(Window->WaitForPreview(kWaitMs));
    EXPECT_EQ(Window->PreviewModel()->rowCount(), DirectCount(Sql));
}

TEST_F(ZvDesignerJoinTest, ARowOfAnotherTypeJoinsNothingAndLeavesTheStatement) {
    const QString Before = Window->SqlPane()->GeneratedSql();
    DragRow("category_id", "name");
    EXPECT_EQ(Area->LinkCount(), 0);
    QTest::qWait(50);
    EXPECT_EQ(Window->SqlPane()->GeneratedSql(), Before);
}

TEST_F(ZvDesignerJoinTest, TheLinkPropertiesDialogRefreshesTheStatement) {
    DragRow("category_id", "category_id");
    ASSERT_TRUE(WaitForStatement());
    const TZvLink* Link = Area->LinkAt(0);
    const auto SavedDialog = TfmLinkProp::ExecDialog;
    TfmLinkProp::ExecDialog = [](TfmLinkProp& Dialog) {
        Dialog.show();
        QTest::mouseClick(Dialog.chLeftOuter, Qt::LeftButton, {},
                          QPoint(5, Dialog.chLeftOuter->height() / 2));
        Dialog.cbConditions->setCurrentText(QStringLiteral(">="));
        QTest::mouseClick(Dialog.buOK, Qt::LeftButton);
        Dialog.hide();
        return Dialog.result();
    };
    const test::TMenuChooser Menu(QStringLiteral("Property"));
    const QPoint Middle = (Link->GetPoints()[1] + Link->GetPoints()[2]) / 2;
    QTest::mouseClick(Area->viewport(), Qt::RightButton, {},
                      Area->ToViewport(QRect(Middle, QSize(1, 1))).topLeft());
    TfmLinkProp::ExecDialog = SavedDialog;
    ASSERT_EQ(Menu.Shown, 1);
    ASSERT_TRUE(WaitForStatement());
    const QString Sql = Window->SqlPane()->GeneratedSql();
    EXPECT_TRUE(Sql.contains(QStringLiteral(
        "categories\r\n  LEFT OUTER JOIN products ON (categories.category_id >= products.category_id)")))
        << Sql.toStdString();
}

// --- window layout, files, screenshot ----------------------------------------------------------

TEST_F(ZvDesignerWindowTest, ADiagramAreaGoesAboveTheSqlPaneAndReplacesTheLastOne) {
    auto* Splitter = qobject_cast<QSplitter*>(Window->SqlPane()->parentWidget());
    ASSERT_NE(Splitter, nullptr);
    EXPECT_EQ(Splitter->count(), 3);
    ASSERT_NE(Window->Designer(), nullptr);
    EXPECT_EQ(Splitter->widget(0), Window->Designer());
    EXPECT_EQ(Window->DiagramArea(), Window->Designer());
    QPointer<QLabel> First = new QLabel(QStringLiteral("first"));
    Window->SetDiagramArea(First);
    EXPECT_EQ(Window->Designer(), nullptr);
    EXPECT_EQ(Splitter->count(), 3);
    EXPECT_EQ(Splitter->widget(0), First.data());
    EXPECT_EQ(Splitter->widget(1), Window->SqlPane());
    auto* Second = new QLabel(QStringLiteral("second"));
    Window->SetDiagramArea(Second);
    EXPECT_TRUE(First.isNull());
    EXPECT_EQ(Window->DiagramArea(), Second);
    EXPECT_EQ(Splitter->widget(0), Second);
    Window->SetDiagramArea(nullptr);
    EXPECT_EQ(Splitter->count(), 2);
    EXPECT_EQ(Window->DiagramArea(), nullptr);
}

TEST_F(ZvDesignerWindowTest, AStatementFileIsLoadedAsUtf8) {
    QTemporaryDir Directory;
    QFile File(Directory.filePath(QStringLiteral("q.sql")));
    ASSERT_TRUE(File.open(QIODevice::WriteOnly));
    File.write(QStringLiteral("SELECT c.city AS Straße\nFROM customers c\n").toUtf8());
    File.close();
    QString Error;
    ASSERT_TRUE(Window->LoadStatementFile(File.fileName(), &Error)) << Error.toStdString();
    EXPECT_TRUE(Editor().toPlainText().contains(QStringLiteral("Straße")))
        << Editor().toPlainText().toStdString();
}

TEST_F(ZvDesignerWindowTest, AMissingStatementFileIsNamedInTheError) {
    QString Error;
    EXPECT_FALSE(Window->LoadStatementFile(QStringLiteral("/nonexistent/q.sql"), &Error));
    EXPECT_TRUE(Error.startsWith(QStringLiteral("cannot read '/nonexistent/q.sql': ")))
        << Error.toStdString();
}

// Distinct colours in a grid of samples: a blank picture has one or two.
int SampledColours(const QImage& Image) {
    QSet<QRgb> Colours;
    for (int Y = 0; Y < Image.height(); Y += 7) {
        for (int X = 0; X < Image.width(); X += 7)
            Colours.insert(Image.pixel(X, Y));
    }
    return static_cast<int>(Colours.size());
}

TEST_F(ZvDesignerWindowTest, TheScreenshotIsAPngOfTheWindowsSizeWithContent) {
    Window->resize(900, 600);
    Window->show();
    LoadAndWait(ZvSampleStatement());
    QTemporaryDir Directory;
    const QString File = Directory.filePath(QStringLiteral("window.png"));
    QString Error;
    ASSERT_TRUE(ZvWriteScreenshot(*Window, File, &Error)) << Error.toStdString();
    ASSERT_TRUE(QFileInfo::exists(File));
    QImageReader Reader(File);
    EXPECT_EQ(Reader.format(), QByteArray("png"));
    const QImage Image = Reader.read();
    ASSERT_FALSE(Image.isNull());
    EXPECT_EQ(Image.size(), Window->size() * Window->devicePixelRatio());
    EXPECT_GT(SampledColours(Image), 8);
}

TEST_F(ZvDesignerWindowTest, AScreenshotThatCannotBeWrittenSaysWhere) {
    QString Error;
    EXPECT_FALSE(ZvWriteScreenshot(*Window, QStringLiteral("/nonexistent/dir/w.png"), &Error));
    EXPECT_TRUE(Error.startsWith(QStringLiteral("cannot write the screenshot '/nonexistent/dir/w.png': ")))
        << Error.toStdString();
}

// --- the process -------------------------------------------------------------------------------

struct TProcessRun {
    int Code = -1;
    QString Out;
    QString Err;
};

TProcessRun RunDesigner(const QStringList& Arguments, const QProcessEnvironment& Environment) {
    QProcess Process;
    Process.setProcessEnvironment(Environment);
    Process.start(QStringLiteral(ZEVRIN_DESIGNER_EXE), Arguments);
    EXPECT_TRUE(Process.waitForFinished(60000)) << "zevrin-designer did not finish";
    return {Process.exitStatus() == QProcess::NormalExit ? Process.exitCode() : -1,
            QString::fromLocal8Bit(Process.readAllStandardOutput()),
            QString::fromLocal8Bit(Process.readAllStandardError())};
}

// The environment of a machine without a display.
QProcessEnvironment Headless() {
    QProcessEnvironment Environment = QProcessEnvironment::systemEnvironment();
    for (const char* Name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        Environment.remove(QString::fromLatin1(Name));
    return Environment;
}

TEST(ZvDesignerProcess, WritesAScreenshotWithoutADisplay) {
    QTemporaryDir Directory;
    const QString File = Directory.filePath(QStringLiteral("designer.png"));
    const TProcessRun Run = RunDesigner({QStringLiteral("--screenshot"), File}, Headless());
    EXPECT_EQ(Run.Code, 0) << Run.Err.toStdString();
    const QImage Image(File);
    ASSERT_FALSE(Image.isNull()) << "no PNG at " << File.toStdString();
    EXPECT_EQ(Image.size(), QSize(1200, 800));
    EXPECT_GT(SampledColours(Image), 8);
}

TEST(ZvDesignerProcess, OpensAnSqliteFileAndAStatementFile) {
    QTemporaryDir Directory;
    const QString Statement = Directory.filePath(QStringLiteral("q.sql"));
    QFile File(Statement);
    ASSERT_TRUE(File.open(QIODevice::WriteOnly));
    File.write("SELECT r.name FROM regions r\n");
    File.close();
    const QString Picture = Directory.filePath(QStringLiteral("regions.png"));
    const TProcessRun Run =
        RunDesigner({QStringLiteral("--db"), ZvSampleDatabaseFile(), QStringLiteral("--sql"), Statement,
                     QStringLiteral("--screenshot"), Picture},
                    Headless());
    EXPECT_EQ(Run.Code, 0) << Run.Err.toStdString();
    EXPECT_TRUE(QFileInfo::exists(Picture));
}

TEST(ZvDesignerProcess, WithoutADisplayOrScreenshotItSaysWhatToDo) {
    const TProcessRun Run = RunDesigner({}, Headless());
    EXPECT_EQ(Run.Code, 1);
    EXPECT_EQ(Run.Err, QStringLiteral("zevrin-designer: no display (DISPLAY and WAYLAND_DISPLAY are unset); "
                                      "--screenshot FILE renders the window to a PNG file without one\n"));
}

TEST(ZvDesignerProcess, ReportsADatabaseThatCannotBeOpened) {
    const TProcessRun Run =
        RunDesigner({QStringLiteral("--db"), QStringLiteral("/nonexistent/x.sqlite"),
                     QStringLiteral("--screenshot"), QStringLiteral("/tmp/never-written.png")},
                    Headless());
    EXPECT_EQ(Run.Code, 1);
    EXPECT_EQ(Run.Err,
              QStringLiteral("zevrin-designer: database file '/nonexistent/x.sqlite' does not exist\n"));
}

TEST(ZvDesignerProcess, HelpAndUsageErrorsNeedNoDisplay) {
    const TProcessRun Help = RunDesigner({QStringLiteral("--help")}, Headless());
    EXPECT_EQ(Help.Code, 0);
    EXPECT_TRUE(Help.Out.startsWith(QStringLiteral("usage: zevrin-designer [options]\n")));
    const TProcessRun Bad = RunDesigner({QStringLiteral("--dialect"), QStringLiteral("x")}, Headless());
    EXPECT_EQ(Bad.Code, 2);
    EXPECT_TRUE(Bad.Err.startsWith(QStringLiteral("zevrin-designer: unknown dialect 'x' (")))
        << Bad.Err.toStdString();
}

} // namespace
} // namespace zv
