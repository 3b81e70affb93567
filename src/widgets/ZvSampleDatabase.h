// The sample database that ships inside the widgets library: the SQLite file the build makes from
// resources/sample, compiled into the Qt resource ":/zevrin/sample/zevrin-sample.sqlite". It is
// what the designer opens when no database is named, so that the component always has metadata
// and rows to show.
#pragma once

#include <QSqlDatabase>
#include <QString>

namespace zv {

// The resource path of the embedded file.
QString ZvSampleDatabaseResource();
// A file holding the sample database, for SQLite to open (it cannot read from the resource): a
// copy in the user's cache directory (the temporary directory when there is none), named after its
// contents, made when missing and written atomically so that concurrent processes share it.
// Empty when it cannot be written.
QString ZvSampleDatabaseFile();
// Opens the sample database read-only under ConnectionName (replacing a connection of that name).
// The result is open on success and closed on failure (lastError() says why when the driver
// refused the file).
QSqlDatabase ZvOpenSampleDatabase(const QString& ConnectionName = QStringLiteral("zevrin-sample"));

} // namespace zv
