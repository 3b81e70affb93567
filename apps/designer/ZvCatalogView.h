// The catalog: the tables and views of the connection, each with its fields and their types as the
// component names them, and a database's stored procedures with their result columns. A double
// click hands a name to the SQL pane.
#pragma once

#include <QTreeWidget>

namespace zv {

class TZvSqlMetadata;

class TZvCatalogView : public QTreeWidget {
    Q_OBJECT

public:
    explicit TZvCatalogView(QWidget* Parent = nullptr);

    // Replaces the content by the tables and procedures Metadata lists.
    void Load(const TZvSqlMetadata& Metadata);
    // The top-level item of the table or procedure of that name (case ignored); null when there is
    // none.
    QTreeWidgetItem* FindTable(const QString& Name) const;
    // Shows the fields of exactly the named tables, so that those of the statement are at hand.
    void ExpandOnly(const QStringList& Names);

signals:
    // A table's name, or "table.field" for a field, chosen by a double click.
    void NameActivated(const QString& Name);

private:
    void AddTable(const TZvSqlMetadata& Metadata, const QString& Name, bool Procedure);
    void Activate(QTreeWidgetItem* Item);
};

} // namespace zv
