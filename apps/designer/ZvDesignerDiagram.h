// The designer's diagram: the component over the window's connection. Tables chosen in the catalog
// (dropped on the work area, or double-clicked) become table objects with the fields the database
// reports; every change made on the diagram regenerates the statement, which the window puts into
// the SQL pane.
#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>

class QMimeData;

namespace zv {

class TSQLZevrin;
class TZvSqlMetadata;
class TZvTable;

class TZvDesignerDiagram : public QWidget {
    Q_OBJECT

public:
    // Metadata answers the field look-ups; it must outlive the diagram.
    explicit TZvDesignerDiagram(const TZvSqlMetadata& Metadata, QWidget* Parent = nullptr);
    ~TZvDesignerDiagram() override;

    TSQLZevrin* Component() const { return Host; }
    // Adds the table (or procedure) Name with its fields read from the database, placed
    // automatically, or with its top-left at At (work-area coordinates, clamped to the surface).
    // Null when the database knows no such table (the reason goes to the error display) or the
    // component refused it.
    TZvTable* AddTable(const QString& Name);
    TZvTable* AddTableAt(const QString& Name, QPoint At);
    // The statement the diagram stands for, as the component generates it; empty without tables.
    QString Statement() const;

    // The data a drag from the catalog carries: the table's name under DragMimeType.
    static QString DragMimeType();
    static QString TableOf(const QMimeData& Data);

signals:
    // The diagram now stands for another statement (Sql, "\r\n" line breaks; empty when the
    // diagram holds no table).
    void StatementChanged(const QString& Sql);

protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override;

private:
    TZvTable* Place(const QString& Name, const QPoint* At);
    void ScheduleRefresh();
    void Refresh();

    const TZvSqlMetadata& Source;
    TSQLZevrin* Host; // a child widget
    QString LastStatement;
    bool RefreshPending = false;
};

} // namespace zv
