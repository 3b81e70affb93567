// The preview's table model.
#include "ZvPreviewModel.h"

#include <QApplication>
#include <QBrush>
#include <QPalette>

namespace zv {

void TZvPreviewModel::SetRows(const QStringList& Columns, const QList<QVariantList>& Rows) {
    beginResetModel();
    ColumnNames = Columns;
    Records = Rows;
    endResetModel();
}

int TZvPreviewModel::rowCount(const QModelIndex& Parent) const {
    return Parent.isValid() ? 0 : static_cast<int>(Records.size());
}

int TZvPreviewModel::columnCount(const QModelIndex& Parent) const {
    return Parent.isValid() ? 0 : static_cast<int>(ColumnNames.size());
}

QVariant TZvPreviewModel::data(const QModelIndex& Index, int Role) const {
    if (!Index.isValid() || Index.row() >= Records.size())
        return {};
    const QVariantList& Record = Records[Index.row()];
    if (Index.column() >= Record.size())
        return {};
    const QVariant& Value = Record[Index.column()];
    const bool IsNull = Value.isNull();
    switch (Role) {
    case Qt::DisplayRole:
        return IsNull ? QVariant(QStringLiteral("NULL")) : Value;
    case Qt::ForegroundRole:
        return IsNull ? QVariant(QApplication::palette().brush(QPalette::Disabled, QPalette::Text))
                      : QVariant();
    case Qt::TextAlignmentRole: {
        const int Type = Value.metaType().id();
        const bool Numeric = Type == QMetaType::Int || Type == QMetaType::LongLong ||
                             Type == QMetaType::Double || Type == QMetaType::UInt ||
                             Type == QMetaType::ULongLong;
        return Numeric ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter)) : QVariant();
    }
    default:
        return {};
    }
}

QVariant TZvPreviewModel::headerData(int Section, Qt::Orientation Orientation, int Role) const {
    if (Role != Qt::DisplayRole)
        return {};
    if (Orientation == Qt::Vertical)
        return Section + 1;
    return Section < ColumnNames.size() ? QVariant(ColumnNames[Section]) : QVariant();
}

} // namespace zv
