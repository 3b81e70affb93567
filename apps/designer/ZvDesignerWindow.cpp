// The designer's main window: wiring of catalog, SQL pane and preview.
#include "ZvDesignerWindow.h"

#include "ZvCatalogView.h"
#include "ZvDesignerDiagram.h"
#include "ZvMessages.h"
#include "ZvParser.h"
#include "ZvPreview.h"
#include "ZvPreviewModel.h"
#include "ZvSqlMetadata.h"
#include "ZvSqlPane.h"

#include <QEventLoop>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace zv {
namespace {

QString RowCountText(qsizetype Count) {
    return Count == 1 ? TZvDesignerWindow::tr("1 row") : TZvDesignerWindow::tr("%1 rows").arg(Count);
}

} // namespace

QString ZvSampleStatement() {
    return QStringLiteral(
        "SELECT g.name AS category, p.name AS product, s.company_name AS supplier, p.unit_price,\n"
        "  p.units_in_stock\n"
        "FROM products p\n"
        "  INNER JOIN categories g ON g.category_id = p.category_id\n"
        "  LEFT OUTER JOIN suppliers s ON s.supplier_id = p.supplier_id\n"
        "WHERE p.discontinued = 0 AND p.units_in_stock > 0\n"
        "ORDER BY g.name, p.unit_price DESC");
}

TZvDesignerWindow::TZvDesignerWindow(const QSqlDatabase& Database, const TZvConnectionInfo& Info,
                                     QWidget* Parent)
    : QMainWindow(Parent), Metadata(Database), CatalogView(new TZvCatalogView(this)),
      Sql(new TZvSqlPane(this)), Rows(new TZvPreviewModel(this)), PreviewView(new QTableView(this)),
      PreviewLabel(new QLabel(this)), RightSplitter(new QSplitter(Qt::Vertical, this)),
      Reader(std::make_unique<TZvPreview>(Info)) {
    setWindowTitle(tr("Zevrin Designer - %1").arg(ZvDescribeConnection(Info)));
    statusBar()->addPermanentWidget(new QLabel(ZvDescribeConnection(Info), this));
    CatalogView->Load(Metadata);
    DesignerDiagram = new TZvDesignerDiagram(Metadata, this);
    CreateLayout();
    CreateMenus();
    ConnectParts();
    resize(1200, 800);
}

QWidget* TZvDesignerWindow::CreatePreviewPanel() {
    PreviewView->setModel(Rows);
    PreviewView->setAlternatingRowColors(true);
    PreviewView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    PreviewView->verticalHeader()->setDefaultSectionSize(PreviewView->fontMetrics().height() + 6);
    auto* Panel = new QWidget(this);
    auto* Layout = new QVBoxLayout(Panel);
    Layout->setContentsMargins(0, 0, 0, 0);
    Layout->addWidget(PreviewLabel);
    Layout->addWidget(PreviewView, 1);
    return Panel;
}

// Catalog | (diagram area when placed, SQL pane, preview).
void TZvDesignerWindow::CreateLayout() {
    RightSplitter->addWidget(Sql);
    RightSplitter->addWidget(CreatePreviewPanel());
    RightSplitter->setStretchFactor(0, 2);
    RightSplitter->setStretchFactor(1, 3);
    auto* MainSplitter = new QSplitter(Qt::Horizontal, this);
    MainSplitter->addWidget(CatalogView);
    MainSplitter->addWidget(RightSplitter);
    MainSplitter->setStretchFactor(1, 1);
    MainSplitter->setSizes({260, 940});
    setCentralWidget(MainSplitter);
    SetDiagramArea(DesignerDiagram);
}

void TZvDesignerWindow::ConnectParts() {
    connect(Sql, &TZvSqlPane::StatementApplied, this, &TZvDesignerWindow::StartPreview);
    connect(Sql, &TZvSqlPane::StatementFailed, this,
            [this] { StopPreview(tr("No preview: the statement has a syntax error.")); });
    connect(Sql, &TZvSqlPane::StatementCleared, this, [this] { StopPreview({}); });
    connect(CatalogView, &TZvCatalogView::NameActivated, Sql, &TZvSqlPane::InsertText);
    connect(CatalogView, &TZvCatalogView::TableActivated, DesignerDiagram,
            [this](const QString& Name) { DesignerDiagram->AddTable(Name); });
    // The diagram's statement replaces the pane's as one undo step, and is applied (and previewed).
    connect(DesignerDiagram, &TZvDesignerDiagram::StatementChanged, Sql, &TZvSqlPane::ReplaceStatement);
    connect(Reader.get(), &TZvPreview::Finished, this, &TZvDesignerWindow::ShowPreview);
}

// The preview goes first: its thread must stop before the widgets it reports to. The diagram goes
// before the metadata it reads from.
TZvDesignerWindow::~TZvDesignerWindow() {
    Reader.reset();
    delete Diagram;
}

void TZvDesignerWindow::CreateMenus() {
    QMenu* File = menuBar()->addMenu(tr("&File"));
    File->addAction(tr("&Open statement..."), QKeySequence::Open, this,
                    &TZvDesignerWindow::OpenStatementFile);
    File->addSeparator();
    File->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
    QMenu* Statement = menuBar()->addMenu(tr("&Statement"));
    Statement->addAction(tr("&Apply (Ctrl+Return in the SQL pane)"), Sql, &TZvSqlPane::Apply);
    Statement->addAction(tr("&Refresh preview"), QKeySequence::Refresh, this, [this] {
        if (!Sql->GeneratedSql().isEmpty())
            StartPreview(Sql->GeneratedSql());
    });
}

QStringList TZvDesignerWindow::StatementTables() const {
    QStringList Names;
    TZvTableDefs& Tables = Sql->GetParser().GetTableDefs();
    for (int I = 0; I < Tables.Count(); ++I)
        Names << QString::fromStdString(Tables.Items(I)->GetName());
    return Names;
}

QString TZvDesignerWindow::PreviewStatus() const {
    return PreviewLabel->text();
}

bool TZvDesignerWindow::LoadStatement(const QString& Text) {
    return Sql->SetStatement(Text);
}

bool TZvDesignerWindow::LoadStatementFile(const QString& FileName, QString* Error) {
    QFile File(FileName);
    if (!File.open(QIODevice::ReadOnly)) {
        if (Error != nullptr)
            *Error = tr("cannot read '%1': %2").arg(FileName, File.errorString());
        return false;
    }
    LoadStatement(QString::fromUtf8(File.readAll()));
    return true;
}

bool TZvDesignerWindow::WaitForPreview(int TimeoutMs) {
    if (!Reader->IsBusy())
        return true;
    QEventLoop Loop;
    connect(this, &TZvDesignerWindow::PreviewUpdated, &Loop, &QEventLoop::quit);
    QTimer::singleShot(TimeoutMs, &Loop, &QEventLoop::quit);
    Loop.exec();
    return !Reader->IsBusy();
}

void TZvDesignerWindow::SetDiagramArea(QWidget* Area) {
    delete Diagram;
    Diagram = Area;
    if (Area != nullptr) {
        RightSplitter->insertWidget(0, Area);
        RightSplitter->setStretchFactor(0, 3);
    }
}

void TZvDesignerWindow::StartPreview(const QString& Statement) {
    CatalogView->ExpandOnly(StatementTables());
    PreviewLabel->setText(tr("Reading rows..."));
    Reader->Run(Statement);
}

void TZvDesignerWindow::StopPreview(const QString& Status) {
    Reader->Cancel();
    Rows->Clear();
    PreviewLabel->setText(Status);
    emit PreviewUpdated();
}

void TZvDesignerWindow::ShowPreview(const TZvPreviewResult& Result) {
    if (!Result.Error.isEmpty()) {
        Rows->Clear();
        PreviewLabel->setText(tr("The database refused the statement: %1").arg(Result.Error));
    } else {
        Rows->SetRows(Result.Columns, Result.Rows);
        PreviewView->resizeColumnsToContents();
        PreviewLabel->setText(
            Result.More ? tr("The first %1 rows; the statement returns more.").arg(Result.Rows.size())
                        : RowCountText(Result.Rows.size()));
    }
    emit PreviewUpdated();
}

void TZvDesignerWindow::OpenStatementFile() {
    const QString File = QFileDialog::getOpenFileName(this, tr("Open statement"), QString(),
                                                      tr("SQL files (*.sql);;All files (*)"));
    if (File.isEmpty())
        return;
    QString Error;
    if (!LoadStatementFile(File, &Error))
        ZvShowError(this, Error);
}

} // namespace zv
