// The designer's command line, its connections, and the mapping of the core's byte positions to
// editor positions.
#include "ZvConnection.h"
#include "ZvDesignerOptions.h"
#include "ZvEditorPosition.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zv {
namespace {

TZvDesignerOptions Parse(const QStringList& Arguments) {
    return ParseDesignerArguments(Arguments);
}

QString UsageErrorOf(const QStringList& Arguments) {
    try {
        Parse(Arguments);
    } catch (const TZvDesignerUsageError& Error) {
        return Error.Message;
    }
    return QStringLiteral("(no error)");
}

TEST(ZvDesignerOptions, WithoutArgumentsOpensTheSampleDatabaseInTheGenericDialect) {
    const TZvDesignerOptions Options = Parse({});
    EXPECT_TRUE(Options.Connection.Sample);
    EXPECT_EQ(Options.Dialect, QStringLiteral("generic"));
    EXPECT_TRUE(Options.StatementFile.isEmpty());
    EXPECT_TRUE(Options.Screenshot.isEmpty());
    EXPECT_FALSE(Options.Help);
}

TEST(ZvDesignerOptions, DbNamesAnSqliteFile) {
    const TZvDesignerOptions Options = Parse({QStringLiteral("--db"), QStringLiteral("/data/shop.sqlite")});
    EXPECT_FALSE(Options.Connection.Sample);
    EXPECT_EQ(Options.Connection.Driver, QStringLiteral("QSQLITE"));
    EXPECT_EQ(Options.Connection.DatabaseName, QStringLiteral("/data/shop.sqlite"));
}

TEST(ZvDesignerOptions, DriverTakesTheServerOptionsInBothSpellings) {
    const TZvDesignerOptions Options = Parse(
        {QStringLiteral("--driver"), QStringLiteral("QPSQL"), QStringLiteral("--host=/tmp/sock"),
         QStringLiteral("--port"), QStringLiteral("5433"), QStringLiteral("--dbname"), QStringLiteral("shop"),
         QStringLiteral("--user=ann"), QStringLiteral("--password"), QStringLiteral("s3cret")});
    const TZvConnectionInfo& Info = Options.Connection;
    EXPECT_FALSE(Info.Sample);
    EXPECT_EQ(Info.Driver, QStringLiteral("QPSQL"));
    EXPECT_EQ(Info.Host, QStringLiteral("/tmp/sock"));
    EXPECT_EQ(Info.Port, 5433);
    EXPECT_EQ(Info.DatabaseName, QStringLiteral("shop"));
    EXPECT_EQ(Info.User, QStringLiteral("ann"));
    EXPECT_EQ(Info.Password, QStringLiteral("s3cret"));
}

TEST(ZvDesignerOptions, DialectStatementAndScreenshotAreKept) {
    const TZvDesignerOptions Options =
        Parse({QStringLiteral("--dialect"), QStringLiteral("oracle"), QStringLiteral("--sql"),
               QStringLiteral("q.sql"), QStringLiteral("--screenshot"), QStringLiteral("out.png")});
    EXPECT_EQ(Options.Dialect, QStringLiteral("oracle"));
    EXPECT_EQ(Options.StatementFile, QStringLiteral("q.sql"));
    EXPECT_EQ(Options.Screenshot, QStringLiteral("out.png"));
}

TEST(ZvDesignerOptions, HelpWinsOverEverythingElse) {
    EXPECT_TRUE(Parse({QStringLiteral("--help")}).Help);
    EXPECT_TRUE(Parse({QStringLiteral("-h"), QStringLiteral("--dialect"), QStringLiteral("nonsense")}).Help);
}

TEST(ZvDesignerOptions, UsageErrorsSayWhatIsWrong) {
    EXPECT_EQ(UsageErrorOf({QStringLiteral("--bogus")}), QStringLiteral("Unknown option 'bogus'."));
    EXPECT_EQ(UsageErrorOf({QStringLiteral("--db")}), QStringLiteral("Missing value after '--db'."));
    EXPECT_EQ(
        UsageErrorOf({QStringLiteral("--dialect"), QStringLiteral("sqlite")}),
        QStringLiteral("unknown dialect 'sqlite' (generic, interbase, mysql, dbisam, mssql, postgresql, db2, "
                       "oracle)"));
    EXPECT_EQ(UsageErrorOf({QStringLiteral("--db"), QStringLiteral("a"), QStringLiteral("--driver"),
                            QStringLiteral("QPSQL")}),
              QStringLiteral("options --db and --driver both name a database; give one of them"));
    EXPECT_EQ(UsageErrorOf({QStringLiteral("--host"), QStringLiteral("h")}),
              QStringLiteral("option --host goes with --driver"));
    EXPECT_EQ(UsageErrorOf({QStringLiteral("--db"), QStringLiteral("a"), QStringLiteral("--user"),
                            QStringLiteral("u")}),
              QStringLiteral("option --user goes with --driver"));
    EXPECT_EQ(UsageErrorOf({QStringLiteral("statement.sql")}),
              QStringLiteral("unexpected argument 'statement.sql' (options only; see --help)"));
    for (const char* Port : {"0", "65536", "-1", "54x", ""}) {
        EXPECT_EQ(UsageErrorOf({QStringLiteral("--driver"), QStringLiteral("QPSQL"), QStringLiteral("--port"),
                                QString::fromLatin1(Port)}),
                  QStringLiteral("option --port: '%1' is not a port number (1 to 65535)")
                      .arg(QString::fromLatin1(Port)));
    }
}

TEST(ZvDesignerOptions, UsageListsEveryOptionAndTheRowLimit) {
    const QString Usage = DesignerUsage();
    for (const char* Option :
         {"--db FILE", "--driver NAME", "--host HOST", "--port PORT", "--dbname NAME", "--user NAME",
          "--password TEXT", "--dialect NAME", "--sql FILE", "--screenshot FILE", "--help"})
        EXPECT_TRUE(Usage.contains(QString::fromLatin1(Option))) << Option;
    EXPECT_TRUE(Usage.contains(QStringLiteral("the first 200 rows")));
    EXPECT_TRUE(Usage.contains(
        QStringLiteral("dialects: generic, interbase, mysql, dbisam, mssql, postgresql, db2, oracle")));
}

// --- connections -------------------------------------------------------------------------------

TEST(ZvConnection, AMissingSqliteFileIsReportedAndNotCreated) {
    QTemporaryDir Directory;
    const QString File = Directory.filePath(QStringLiteral("missing.sqlite"));
    QString Error;
    QSqlDatabase Database =
        ZvOpenConnection(ZvSqliteConnection(File), QStringLiteral("connection-missing"), &Error);
    EXPECT_FALSE(Database.isOpen());
    EXPECT_EQ(Error, QStringLiteral("database file '%1' does not exist").arg(File));
    EXPECT_FALSE(QFileInfo::exists(File));
    Database = QSqlDatabase();
    ZvCloseConnection(QStringLiteral("connection-missing"));
}

TEST(ZvConnection, AnUnknownDriverIsNamedWithTheInstalledOnes) {
    TZvConnectionInfo Info;
    Info.Sample = false;
    Info.Driver = QStringLiteral("QNOSUCH");
    QString Error;
    QSqlDatabase Database = ZvOpenConnection(Info, QStringLiteral("connection-driver"), &Error);
    EXPECT_FALSE(Database.isOpen());
    EXPECT_TRUE(Error.startsWith(QStringLiteral("the Qt SQL driver 'QNOSUCH' is not installed (installed: ")))
        << Error.toStdString();
    EXPECT_TRUE(Error.contains(QStringLiteral("QSQLITE"))) << Error.toStdString();
}

TEST(ZvConnection, TheSampleOpensReadOnly) {
    QString Error;
    QSqlDatabase Database =
        ZvOpenConnection(TZvConnectionInfo{}, QStringLiteral("connection-sample"), &Error);
    ASSERT_TRUE(Database.isOpen()) << Error.toStdString();
    EXPECT_TRUE(Error.isEmpty());
    EXPECT_EQ(Database.connectOptions(), QStringLiteral("QSQLITE_OPEN_READONLY"));
    Database = QSqlDatabase();
    ZvCloseConnection(QStringLiteral("connection-sample"));
    EXPECT_FALSE(QSqlDatabase::contains(QStringLiteral("connection-sample")));
}

TEST(ZvConnection, DescriptionsNameWhatIsOpen) {
    EXPECT_EQ(ZvDescribeConnection(TZvConnectionInfo{}), QStringLiteral("Sample database (SQLite)"));
    EXPECT_EQ(ZvDescribeConnection(ZvSqliteConnection(QStringLiteral("/d/x.db"))),
              QStringLiteral("SQLite: /d/x.db"));
    TZvConnectionInfo Server;
    Server.Sample = false;
    Server.Driver = QStringLiteral("QPSQL");
    Server.DatabaseName = QStringLiteral("shop");
    Server.Host = QStringLiteral("db1");
    Server.Port = 5433;
    Server.User = QStringLiteral("ann");
    Server.Password = QStringLiteral("s3cret");
    EXPECT_EQ(ZvDescribeConnection(Server), QStringLiteral("QPSQL: shop on db1:5433 as ann"));
    Server.Host.clear();
    Server.Port = -1;
    Server.User.clear();
    EXPECT_EQ(ZvDescribeConnection(Server), QStringLiteral("QPSQL: shop"));
}

// --- editor positions --------------------------------------------------------------------------

TEST(ZvEditorPosition, AsciiBytesAreCharacters) {
    const QString Text = QStringLiteral("SELECT a\nFROM t\nFOR UPDATE");
    EXPECT_EQ(ZvEditorPosition(Text, 1, 1), 0);
    EXPECT_EQ(ZvEditorPosition(Text, 1, 8), 7);
    EXPECT_EQ(ZvEditorPosition(Text, 2, 1), 9);
    EXPECT_EQ(ZvEditorPosition(Text, 3, 5), 20);
}

TEST(ZvEditorPosition, MultiByteLettersBeforeThePlaceCountOnce) {
    // "ä" is two bytes, "€" three, "😀" four bytes and two UTF-16 units.
    EXPECT_EQ(ZvEditorPosition(QStringLiteral("a = 'Käse' )"), 1, 13), 11);
    EXPECT_EQ(ZvEditorPosition(QStringLiteral("x\n'€€' y"), 2, 10), 7);
    EXPECT_EQ(ZvEditorPosition(QStringLiteral("'😀' z"), 1, 8), 5);
}

TEST(ZvEditorPosition, OnlyThatLinesBytesCount) {
    const QString Text = QStringLiteral("ÄÖÜ\nabc");
    EXPECT_EQ(ZvEditorPosition(Text, 2, 3), 6);
}

TEST(ZvEditorPosition, APositionInsideACharacterIsThatCharacter) {
    EXPECT_EQ(ZvEditorPosition(QStringLiteral("a€b"), 1, 3), 1);
    EXPECT_EQ(ZvEditorPosition(QStringLiteral("a€b"), 1, 4), 1);
    EXPECT_EQ(ZvEditorPosition(QStringLiteral("a€b"), 1, 5), 2);
}

TEST(ZvEditorPosition, PlacesOutsideTheTextComeToItsNearestEdge) {
    const QString Text = QStringLiteral("ab\ncd");
    EXPECT_EQ(ZvEditorPosition(Text, 0, 2), 1); // a line before the first is the first
    EXPECT_EQ(ZvEditorPosition(Text, 9, 1), 5); // a line after the last is the end
    EXPECT_EQ(ZvEditorPosition(Text, 1, 0), 0); // before the line's start
    EXPECT_EQ(ZvEditorPosition(Text, 1, 9), 2); // past the line's end
    EXPECT_EQ(ZvEditorPosition(Text, 2, 3), 5); // just past the last character
    EXPECT_EQ(ZvEditorPosition(QString(), 1, 1), 0);
}

} // namespace
} // namespace zv
