// The designer's diagram: catalog drops, tables over live metadata, and the statement it stands
// for.
#include "ZvDesignerDiagram.h"

#include "ZvMessages.h"
#include "ZvSelectParser.h"
#include "ZvSqlMetadata.h"
#include "ZvWindow.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QVBoxLayout>

namespace zv {

TZvDesignerDiagram::TZvDesignerDiagram(const TZvSqlMetadata& Metadata, QWidget* Parent)
    : QWidget(Parent), Source(Metadata), Host(new TSQLZevrin(this)) {
    auto* Layout = new QVBoxLayout(this);
    Layout->setContentsMargins(0, 0, 0, 0);
    Layout->addWidget(Host);
    TZvWorkArea* Area = Host->GetWorkArea();
    Area->viewport()->setAcceptDrops(true);
    Area->viewport()->installEventFilter(this);

    // Every edit of the model made on the diagram passes one of these; the statement is rebuilt
    // once the edit is complete.
    Host->OnAddRemoveTable = [this](TCustomZevrin&, TZvTable&, TZvAction, bool&) { ScheduleRefresh(); };
    Host->OnAddRemoveLink = [this](TCustomZevrin&, TZvLink&, TZvAction, bool&) { ScheduleRefresh(); };
    Area->OnChangeLink = [this](TZvWorkArea&, TZvLink&) { ScheduleRefresh(); };
    const auto CheckField = Area->OnCheckField;
    Area->OnCheckField = [this, CheckField](TZvTable& Table, TZvListItem& Item) {
        CheckField(Table, Item);
        ScheduleRefresh();
    };
    const auto ChangeAlias = Area->OnChangeAlias;
    Area->OnChangeAlias = [this, ChangeAlias](TZvTable& Table, const std::string& OldAlias) {
        ChangeAlias(Table, OldAlias);
        ScheduleRefresh();
    };
}

TZvDesignerDiagram::~TZvDesignerDiagram() = default;

QString TZvDesignerDiagram::DragMimeType() {
    return QStringLiteral("application/x-zevrin-table");
}

QString TZvDesignerDiagram::TableOf(const QMimeData& Data) {
    return QString::fromUtf8(Data.data(DragMimeType()));
}

TZvTable* TZvDesignerDiagram::AddTable(const QString& Name) {
    return Place(Name, nullptr);
}

TZvTable* TZvDesignerDiagram::AddTableAt(const QString& Name, QPoint At) {
    return Place(Name, &At);
}

TZvTable* TZvDesignerDiagram::Place(const QString& Name, const QPoint* At) {
    TZvDataSet DataSet;
    TZvParams Params;
    const std::string Table = Name.toStdString();
    if (Name.isEmpty() || !Source.GetTableFields(Table, DataSet, Params)) {
        ZvShowError(this, tr("The database has no table or procedure named '%1'.").arg(Name));
        return nullptr;
    }
    TZvWorkArea* Area = Host->GetWorkArea();
    TZvTable* Placed = nullptr;
    if (Source.IsProcedure(Name))
        Placed = At ? Area->AddProcAt(Table, "", &DataSet, &Params, *At) : Area->AddProc(Table, "", &DataSet, &Params);
    else
        Placed = At ? Area->AddPanelAt(Table, "", &DataSet, *At) : Area->AddPanel(Table, "", &DataSet);
    if (Placed)
        Area->ShowPanel(Placed);
    return Placed;
}

QString TZvDesignerDiagram::Statement() const {
    return QString::fromStdString(Host->GetParser()->GetExpression());
}

void TZvDesignerDiagram::ScheduleRefresh() {
    if (RefreshPending)
        return;
    RefreshPending = true;
    QTimer::singleShot(0, this, [this] { Refresh(); });
}

void TZvDesignerDiagram::Refresh() {
    RefreshPending = false;
    const QString Now = Statement();
    if (Now == LastStatement)
        return;
    LastStatement = Now;
    emit StatementChanged(Now);
}

// Drops from the catalog: a table's name lands with its top-left under the pointer.
bool TZvDesignerDiagram::eventFilter(QObject* Watched, QEvent* Event) {
    switch (Event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto* Drag = static_cast<QDropEvent*>(Event);
        if (!Drag->mimeData()->hasFormat(DragMimeType()))
            return false;
        Drag->acceptProposedAction();
        return true;
    }
    case QEvent::Drop: {
        auto* Drop = static_cast<QDropEvent*>(Event);
        if (!Drop->mimeData()->hasFormat(DragMimeType()))
            return false;
        const TZvWorkArea* Area = Host->GetWorkArea();
        const QPoint At = Drop->position().toPoint() + QPoint(Area->HorzScrollPos(), Area->VertScrollPos());
        Drop->acceptProposedAction();
        AddTableAt(TableOf(*Drop->mimeData()), At);
        return true;
    }
    default:
        return QWidget::eventFilter(Watched, Event);
    }
}

} // namespace zv
