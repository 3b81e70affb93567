// Opening the designer's connections and describing them.
#include "ZvConnectionSpec.h"

#include "ZvSampleDatabase.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSqlError>
#include <QStringList>

namespace zv {
namespace {

QString Tr(const char* Text) {
    return QCoreApplication::translate("ZvConnectionSpec", Text);
}

// The database file the spec names, the sample's extracted copy for the sample; empty with Error
// set when there is none.
QString SqliteFile(const TZvConnectionSpec& Spec, QString& Error) {
    if (Spec.Sample) {
        const QString File = ZvSampleDatabaseFile();
        if (File.isEmpty())
            Error = Tr("cannot extract the sample database to the cache directory");
        return File;
    }
    if (!QFileInfo(Spec.DatabaseName).isFile()) {
        Error = Tr("database file '%1' does not exist").arg(Spec.DatabaseName);
        return {};
    }
    return Spec.DatabaseName;
}

bool IsSqlite(const TZvConnectionSpec& Spec) {
    return Spec.Sample || Spec.Driver == QLatin1String("QSQLITE");
}

} // namespace

TZvConnectionSpec ZvSqliteConnection(const QString& File) {
    TZvConnectionSpec Spec;
    Spec.Sample = false;
    Spec.DatabaseName = File;
    return Spec;
}

QSqlDatabase ZvOpenConnection(const TZvConnectionSpec& Spec, const QString& ConnectionName, QString* Error) {
    QString Reason;
    const QString Driver = Spec.Sample ? QStringLiteral("QSQLITE") : Spec.Driver;
    if (QSqlDatabase::contains(ConnectionName))
        ZvCloseConnection(ConnectionName);
    QSqlDatabase Database;
    if (!QSqlDatabase::isDriverAvailable(Driver)) {
        Reason = Tr("the Qt SQL driver '%1' is not installed (installed: %2)")
                     .arg(Driver, QSqlDatabase::drivers().join(QStringLiteral(", ")));
    } else if (IsSqlite(Spec)) {
        const QString File = SqliteFile(Spec, Reason);
        if (!File.isEmpty()) {
            Database = QSqlDatabase::addDatabase(Driver, ConnectionName);
            Database.setDatabaseName(File);
            Database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        }
    } else {
        Database = QSqlDatabase::addDatabase(Driver, ConnectionName);
        Database.setDatabaseName(Spec.DatabaseName);
        Database.setHostName(Spec.Host);
        Database.setPort(Spec.Port);
        Database.setUserName(Spec.User);
        Database.setPassword(Spec.Password);
    }
    if (Database.isValid() && !Database.open())
        Reason = Tr("cannot open %1: %2").arg(ZvDescribeConnection(Spec), Database.lastError().text());
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

QString ZvDescribeConnection(const TZvConnectionSpec& Spec) {
    if (Spec.Sample)
        return Tr("Sample database (SQLite)");
    if (Spec.Driver == QLatin1String("QSQLITE"))
        return Tr("SQLite: %1").arg(Spec.DatabaseName);
    QString Text = Spec.Driver + QStringLiteral(":");
    if (!Spec.DatabaseName.isEmpty())
        Text += QLatin1Char(' ') + Spec.DatabaseName;
    if (!Spec.Host.isEmpty() || Spec.Port > 0) {
        Text += QLatin1Char(' ') + Tr("on") + QLatin1Char(' ') + Spec.Host;
        if (Spec.Port > 0)
            Text += QLatin1Char(':') + QString::number(Spec.Port);
    }
    if (!Spec.User.isEmpty())
        Text += QLatin1Char(' ') + Tr("as") + QLatin1Char(' ') + Spec.User;
    return Text;
}

} // namespace zv
