// The designer's main window: the catalog on the left; on the right, from top to bottom, the
// diagram area (when one is placed), the SQL pane and the result preview, in a splitter.
#pragma once

#include "ZvConnection.h"
#include "ZvDesignerDiagram.h"
#include "ZvSqlMetadata.h"

#include <QMainWindow>
#include <QPointer>
#include <QSqlDatabase>

#include <memory>

class QLabel;
class QSplitter;
class QTableView;

namespace zv {

class TZvCatalogView;
class TZvPreview;
class TZvPreviewModel;
class TZvSqlPane;
struct TZvPreviewResult;

// The statement the designer shows on the sample database when no other is given.
QString ZvSampleStatement();

class TZvDesignerWindow : public QMainWindow {
    Q_OBJECT

public:
    // Database is an open connection for the catalog, used in this thread; Info holds its
    // parameters, from which the preview opens a connection of its own.
    TZvDesignerWindow(const QSqlDatabase& Database, const TZvConnectionInfo& Info, QWidget* Parent = nullptr);
    ~TZvDesignerWindow() override;

    // The metadata of the window's connection, for the parts that ask for a table's fields.
    const TZvSqlMetadata& GetMetadata() const { return Metadata; }
    TZvSqlPane* SqlPane() const { return Sql; }
    TZvCatalogView* Catalog() const { return CatalogView; }
    QTableView* PreviewTable() const { return PreviewView; }
    TZvPreviewModel* PreviewModel() const { return Rows; }
    TZvPreview& Preview() const { return *Reader; }
    // The names of the tables in the last statement that parsed.
    QStringList StatementTables() const;
    // The line above the preview: the row count, that there are more rows, or why there are none.
    QString PreviewStatus() const;

    // Puts Text into the SQL pane and applies it, which starts the preview; true when it parsed.
    bool LoadStatement(const QString& Text);
    // Loads the statement in a UTF-8 file; false with Error saying why when it cannot be read.
    bool LoadStatementFile(const QString& File, QString* Error);
    // Runs the event loop until the preview has reported or TimeoutMs have passed; true when it
    // has reported.
    bool WaitForPreview(int TimeoutMs);

    // Places Area above the SQL pane, taking ownership; a previous area (at first the designer's
    // own diagram) is deleted. Null removes the area.
    void SetDiagramArea(QWidget* Area);
    QWidget* DiagramArea() const { return Diagram; }
    // The designer's diagram, null once another area replaced it.
    TZvDesignerDiagram* Designer() const { return DesignerDiagram; }

signals:
    // The preview shows new rows, an error, or nothing.
    void PreviewUpdated();

private:
    QWidget* CreatePreviewPanel();
    void CreateLayout();
    void CreateMenus();
    void ConnectParts();
    void StartPreview(const QString& Sql);
    void StopPreview(const QString& Status);
    void ShowPreview(const TZvPreviewResult& Result);
    void OpenStatementFile();

    TZvSqlMetadata Metadata;
    TZvCatalogView* CatalogView;
    TZvSqlPane* Sql;
    TZvPreviewModel* Rows;
    QTableView* PreviewView;
    QLabel* PreviewLabel;
    QSplitter* RightSplitter;
    QWidget* Diagram = nullptr;
    QPointer<TZvDesignerDiagram> DesignerDiagram;
    std::unique_ptr<TZvPreview> Reader;
};

} // namespace zv
