// The catalog tree.
#include "ZvCatalogView.h"

#include "ZvResource.h"
#include "ZvSqlMetadata.h"

#include <QHeaderView>

namespace zv {

TZvCatalogView::TZvCatalogView(QWidget* Parent) : QTreeWidget(Parent) {
    setColumnCount(2);
    setHeaderLabels({tr("Table / field"), tr("Type")});
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* Item) { Activate(Item); });
}

void TZvCatalogView::Load(const TZvSqlMetadata& Metadata) {
    clear();
    for (const QString& Table : Metadata.Tables())
        AddTable(Metadata, Table, false);
    for (const QString& Procedure : Metadata.Procedures())
        AddTable(Metadata, Procedure, true);
}

void TZvCatalogView::AddTable(const TZvSqlMetadata& Metadata, const QString& Name, bool Procedure) {
    TZvDataSet DataSet;
    TZvParams Params;
    Metadata.GetTableFields(Name.toStdString(), DataSet, Params);
    auto* Item = new QTreeWidgetItem(this, {Name, Procedure ? tr("procedure") : QString()});
    for (const TZvDataField& Field : DataSet.GetFieldDefs())
        new QTreeWidgetItem(Item, {QString::fromStdString(Field.Name), ZvFieldTypeText(Field.DataType)});
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
    emit NameActivated(Table == nullptr ? Item->text(0) : Table->text(0) + QLatin1Char('.') + Item->text(0));
}

} // namespace zv
