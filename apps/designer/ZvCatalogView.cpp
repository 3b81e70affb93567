// The catalog tree.
#include "ZvCatalogView.h"

#include "ZvDesignerDiagram.h"
#include "ZvResource.h"
#include "ZvSqlMetadata.h"

#include <QHeaderView>
#include <QMimeData>

namespace zv {

TZvCatalogView::TZvCatalogView(QWidget* Parent) : QTreeWidget(Parent) {
    setColumnCount(2);
    setHeaderLabels({tr("Table / field"), tr("Type")});
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    setUniformRowHeights(true);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* Item) { Activate(Item); });
    connect(this, &QTreeWidget::itemExpanded, this, &TZvCatalogView::ReadFields);
}

TZvCatalogView::~TZvCatalogView() = default;

void TZvCatalogView::Load(const TZvSqlMetadata& Metadata) {
    clear();
    Source = std::make_unique<TZvSqlMetadata>(Metadata);
    for (const QString& Table : Metadata.Tables())
        AddTable(Table, QString());
    for (const QString& Procedure : Metadata.Procedures())
        AddTable(Procedure, tr("procedure"));
}

// A database of many tables must not cost a query per table at start: an item shows that it can
// be opened and reads its fields when it is.
void TZvCatalogView::AddTable(const QString& Name, const QString& Kind) {
    auto* Item = new QTreeWidgetItem(this, {Name, Kind});
    Item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
}

void TZvCatalogView::ReadFields(QTreeWidgetItem* Table) {
    if (Table->parent() != nullptr || Table->childCount() > 0 || !Source)
        return;
    TZvDataSet DataSet;
    TZvParams Params;
    Source->GetTableFields(Table->text(0).toStdString(), DataSet, Params);
    for (const TZvDataField& Field : DataSet.GetFieldDefs())
        new QTreeWidgetItem(Table, {QString::fromStdString(Field.Name), ZvFieldTypeText(Field.DataType)});
    Table->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
}

QTreeWidgetItem* TZvCatalogView::Fields(const QString& Name) {
    QTreeWidgetItem* Table = FindTable(Name);
    if (Table != nullptr)
        ReadFields(Table);
    return Table;
}

QTreeWidgetItem* TZvCatalogView::FindTable(const QString& Name) const {
    const QList<QTreeWidgetItem*> Found = findItems(Name, Qt::MatchFixedString, 0);
    return Found.isEmpty() ? nullptr : Found.first();
}

void TZvCatalogView::ExpandOnly(const QStringList& Names) {
    for (int I = 0; I < topLevelItemCount(); ++I) {
        QTreeWidgetItem* Item = topLevelItem(I);
        Item->setExpanded(Names.contains(Item->text(0), Qt::CaseInsensitive));
    }
}

void TZvCatalogView::Activate(QTreeWidgetItem* Item) {
    if (Item == nullptr)
        return;
    QTreeWidgetItem* Table = Item->parent();
    if (Table == nullptr)
        emit TableActivated(Item->text(0));
    else
        emit NameActivated(Table->text(0) + QLatin1Char('.') + Item->text(0));
}

QStringList TZvCatalogView::mimeTypes() const {
    return {TZvDesignerDiagram::DragMimeType()};
}

// Only tables travel: a field alone means nothing on the diagram.
QMimeData* TZvCatalogView::mimeData(const QList<QTreeWidgetItem*>& Items) const {
    if (Items.size() != 1 || Items.front()->parent() != nullptr)
        return nullptr;
    auto* Data = new QMimeData;
    Data->setData(TZvDesignerDiagram::DragMimeType(), Items.front()->text(0).toUtf8());
    return Data;
}

QMimeData* TZvCatalogView::DragData(QTreeWidgetItem* Item) const {
    return Item ? mimeData({Item}) : nullptr;
}

} // namespace zv
