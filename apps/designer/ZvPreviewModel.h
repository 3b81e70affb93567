// The rows of a preview as a table model: column names from the result, one row per fetched record,
// NULL shown as a greyed "NULL" so that it is told apart from an empty text.
#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>
#include <QVariant>

namespace zv {

class TZvPreviewModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    // Replaces the whole content.
    void SetRows(const QStringList& Columns, const QList<QVariantList>& Rows);
    void Clear() { SetRows({}, {}); }

    int rowCount(const QModelIndex& Parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& Parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& Index, int Role = Qt::DisplayRole) const override;
    QVariant headerData(int Section, Qt::Orientation Orientation, int Role = Qt::DisplayRole) const override;

private:
    QStringList ColumnNames;
    QList<QVariantList> Records;
};

} // namespace zv
