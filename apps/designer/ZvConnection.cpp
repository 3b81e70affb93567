// Opening the designer's connections and describing them.
#include "ZvConnection.h"

#include "ZvSampleDatabase.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSqlError>
#include <QStringList>

namespace zv {
namespace {

QString Tr(const char* Text) {
    return QCoreApplication::translate("ZvConnection", Text);
}

// The database file Info names, the sample's extracted copy for the sample; empty with Error
// set when there is none.
QString SqliteFile(const TZvConnectionInfo& Info, QString& Error) {
    if (Info.Sample) {
        const QString File = ZvSampleDatabaseFile();
        if (File.isEmpty())
            Error = Tr("cannot extract the sample database to the cache directory");
        return File;
    }
    if (!QFileInfo(Info.DatabaseName).isFile()) {
        Error = Tr("database file '%1' does not exist").arg(Info.DatabaseName);
        return {};
    }
    return Info.DatabaseName;
}

bool IsSqlite(const TZvConnectionInfo& Info) {
    return Info.Sample || Info.Driver == QLatin1String("QSQLITE");
}

} // namespace

TZvConnectionInfo ZvSqliteConnection(const QString& File) {
    TZvConnectionInfo Info;
    Info.Sample = false;
    Info.DatabaseName = File;
    return Info;
}

QSqlDatabase ZvOpenConnection(const TZvConnectionInfo& Info, const QString& ConnectionName, QString* Error) {
    QString Reason;
    const QString Driver = Info.Sample ? QStringLiteral("QSQLITE") : Info.Driver;
    if (QSqlDatabase::contains(ConnectionName))
        ZvCloseConnection(ConnectionName);
    QSqlDatabase Database;
    if (!QSqlDatabase::isDriverAvailable(Driver)) {
        Reason = Tr("the Qt SQL driver '%1' is not installed (installed: %2)")
                     .arg(Driver, QSqlDatabase::drivers().join(QStringLiteral(", ")));
    } else if (IsSqlite(Info)) {
        const QString File = SqliteFile(Info, Reason);
        if (!File.isEmpty()) {
            Database = QSqlDatabase::addDatabase(Driver, ConnectionName);
            Database.setDatabaseName(File);
            Database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        }
    } else {
        Database = QSqlDatabase::addDatabase(Driver, ConnectionName);
        Database.setDatabaseName(Info.DatabaseName);
        Database.setHostName(Info.Host);
        Database.setPort(Info.Port);
        Database.setUserName(Info.User);
        Database.setPassword(Info.Password);
    }
    if (Database.isValid() && !Database.open())
        Reason = Tr("cannot open %1: %2").arg(ZvDescribeConnection(Info), Database.lastError().text());
    if (Error != nullptr)
        *Error = Reason;
    return Database;
}

void ZvCloseConnection(const QString& ConnectionName) {
    {
        QSqlDatabase Database = QSqlDatabase::database(ConnectionName, false);
        Database.close();
    }
    QSqlDatabase::removeDatabase(ConnectionName);
}

QString ZvDescribeConnection(const TZvConnectionInfo& Info) {
    if (Info.Sample)
        return Tr("Sample database (SQLite)");
    if (Info.Driver == QLatin1String("QSQLITE"))
        return Tr("SQLite: %1").arg(Info.DatabaseName);
    QString Text = Info.Driver + QStringLiteral(":");
    if (!Info.DatabaseName.isEmpty())
        Text += QLatin1Char(' ') + Info.DatabaseName;
    if (!Info.Host.isEmpty() || Info.Port > 0) {
        Text += QLatin1Char(' ') + Tr("on") + QLatin1Char(' ') + Info.Host;
        if (Info.Port > 0)
            Text += QLatin1Char(':') + QString::number(Info.Port);
    }
    if (!Info.User.isEmpty())
        Text += QLatin1Char(' ') + Tr("as") + QLatin1Char(' ') + Info.User;
    return Text;
}

} // namespace zv
