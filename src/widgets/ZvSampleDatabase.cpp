// Extracts the embedded sample database to a cache file and opens it with the SQLite driver.
#include "ZvSampleDatabase.h"

#include "ZvResourceInit.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSqlError>
#include <QStandardPaths>

namespace zv {
namespace {

QString CacheDirectory() {
    const QString Cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    const QString Base = Cache.isEmpty() ? QDir::tempPath() : Cache;
    return Base + QStringLiteral("/zevrin");
}

} // namespace

QString ZvSampleDatabaseResource() {
    ZvInitResources();
    return QStringLiteral(":/zevrin/sample/zevrin-sample.sqlite");
}

QString ZvSampleDatabaseFile() {
    QFile Resource(ZvSampleDatabaseResource());
    if (!Resource.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray Contents = Resource.readAll();
    // Named after the contents: a newer build never reuses an older copy, and an existing copy of
    // the right name and size is the right file.
    const QString Digest =
        QString::fromLatin1(QCryptographicHash::hash(Contents, QCryptographicHash::Sha256).toHex().left(16));
    const QString Directory = CacheDirectory();
    const QString Path = Directory + QStringLiteral("/sample-") + Digest + QStringLiteral(".sqlite");
    if (QFileInfo(Path).size() == Contents.size()) {
        return Path;
    }
    if (!QDir().mkpath(Directory)) {
        return {};
    }
    QSaveFile Copy(Path);
    if (!Copy.open(QIODevice::WriteOnly) || Copy.write(Contents) != Contents.size() || !Copy.commit()) {
        return {};
    }
    return Path;
}

QSqlDatabase ZvOpenSampleDatabase(const QString& ConnectionName) {
    if (QSqlDatabase::contains(ConnectionName)) {
        QSqlDatabase::removeDatabase(ConnectionName);
    }
    QSqlDatabase Database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), ConnectionName);
    const QString File = ZvSampleDatabaseFile();
    if (File.isEmpty()) {
        return Database;
    }
    Database.setDatabaseName(File);
    // Read-only keeps the shared copy as built, whatever a query tries.
    Database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    Database.open();
    return Database;
}

} // namespace zv
