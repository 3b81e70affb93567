// The catalog: the tables and views of the connection, each with its fields and their types as the
// component names them, and a database's stored procedures with their result columns. Fields are
// read when a table is first opened. A table is dragged onto the diagram, or double-clicked to
// place it there; a double click on a field hands "table.field" to the SQL pane.
#pragma once

#include <QTreeWidget>

#include <memory>

namespace zv {

class TZvSqlMetadata;

class TZvCatalogView : public QTreeWidget {
    Q_OBJECT

public:
    explicit TZvCatalogView(QWidget* Parent = nullptr);
    ~TZvCatalogView() override;

    // Replaces the content by the tables and procedures Metadata lists; keeps a copy of Metadata to
    // read fields from.
    void Load(const TZvSqlMetadata& Metadata);
    // The top-level item of the table or procedure of that name (case ignored); null when there is
    // none.
    QTreeWidgetItem* FindTable(const QString& Name) const;
    // The item of the named table with its fields read (FindTable, then the fields as opening it
    // reads them); null when there is no such table.
    QTreeWidgetItem* Fields(const QString& Name);
    // Shows the fields of exactly the named tables, so that those of the statement are at hand.
    void ExpandOnly(const QStringList& Names);

    // The data a drag of Item carries: the table's name for a table or procedure, nothing (null)
    // for a field.
    QMimeData* DragData(QTreeWidgetItem* Item) const;

signals:
    // "table.field", chosen by a double click on a field.
    void NameActivated(const QString& Name);
    // A table's or procedure's name, chosen by a double click.
    void TableActivated(const QString& Name);

protected:
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QList<QTreeWidgetItem*>& Items) const override;

private:
    void AddTable(const QString& Name, const QString& Kind);
    void ReadFields(QTreeWidgetItem* Table);
    void Activate(QTreeWidgetItem* Item);

    std::unique_ptr<TZvSqlMetadata> Source;
};

} // namespace zv
