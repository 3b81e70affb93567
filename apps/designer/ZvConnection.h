// Where the designer's data comes from: the parameters of a Qt SQL connection kept as plain values,
// so that the preview thread can open a connection of its own with the same parameters (a
// QSqlDatabase may only be used in the thread that opened it).
#pragma once

#include <QSqlDatabase>
#include <QString>

namespace zv {

struct TZvConnectionInfo {
    // The bundled sample database: the file is found when the connection is opened.
    bool Sample = true;
    // A Qt SQL driver name: QSQLITE, QPSQL, ...
    QString Driver = QStringLiteral("QSQLITE");
    // For SQLite the database file.
    QString DatabaseName;
    QString Host;
    int Port = -1; // -1: the driver's default
    QString User;
    QString Password;
};

// The connection to an SQLite database file.
TZvConnectionInfo ZvSqliteConnection(const QString& File);

// Opens a connection after Info under ConnectionName, replacing a connection of that name. SQLite
// files are opened read-only and must exist: the designer only reads, and a mistyped name must not
// leave a new empty database behind. On failure the result is not open and Error (when given)
// says what failed and where.
QSqlDatabase ZvOpenConnection(const TZvConnectionInfo& Info, const QString& ConnectionName, QString* Error);
// Closes and forgets the named connection; call it from the thread that opened it.
void ZvCloseConnection(const QString& ConnectionName);

// One line for the status bar: "Sample database (SQLite)", "SQLite: FILE", "QPSQL: NAME on HOST:PORT
// as USER" (parts Info leaves empty are left out).
QString ZvDescribeConnection(const TZvConnectionInfo& Info);

} // namespace zv
