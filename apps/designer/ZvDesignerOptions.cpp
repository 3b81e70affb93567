// Command-line handling of zevrin-designer.
#include "ZvDesignerOptions.h"

#include "ZvDialects.h"
#include "ZvPreview.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <string>
#include <vector>

namespace zv {
namespace {

QString Tr(const char* Text) {
    return QCoreApplication::translate("ZvDesignerOptions", Text);
}

QString DialectList() {
    QStringList Names;
    for (const std::string& Name : DialectNames())
        Names << QString::fromStdString(Name);
    return Names.join(QStringLiteral(", "));
}

struct TValueOption {
    const char* Name;
    const char* ValueName;
    const char* Description;
};

// The options that take a value, in the order --help lists them.
constexpr TValueOption kValueOptions[] = {
    {"db", "FILE", "Open the SQLite database FILE (read-only) instead of the sample database."},
    {"driver", "NAME", "Connect through the Qt SQL driver NAME (QPSQL, QSQLITE, ...)."},
    {"host", "HOST", "(--driver) Host name, or a directory holding the server's Unix socket."},
    {"port", "PORT", "(--driver) Port number."},
    {"dbname", "NAME", "(--driver) Database name; for QSQLITE the database file."},
    {"user", "NAME", "(--driver) User name."},
    {"password", "TEXT", "(--driver) Password."},
    {"dialect", "NAME", "SQL dialect of the SQL pane (default generic)."},
    {"sql", "FILE", "Load the statement in FILE at start (UTF-8)."},
    {"screenshot", "FILE",
     "Render the window with the statement loaded and its preview to the PNG "
     "FILE, then exit; needs no display."},
};

// The parser over the options above plus --help; QCommandLineParser reports unknown options and
// missing values in its own words.
void AddOptions(QCommandLineParser& Parser) {
    Parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    for (const TValueOption& Option : kValueOptions) {
        Parser.addOption(QCommandLineOption(QString::fromLatin1(Option.Name), Tr(Option.Description),
                                            QString::fromLatin1(Option.ValueName)));
    }
    Parser.addOption(
        QCommandLineOption(QStringList{QStringLiteral("h"), QStringLiteral("help")}, Tr("Show this text.")));
}

int PortNumber(const QString& Text) {
    bool Ok = false;
    const int Port = Text.toInt(&Ok);
    if (!Ok || Port < 1 || Port > 65535)
        throw TZvDesignerUsageError{Tr("option --port: '%1' is not a port number (1 to 65535)").arg(Text)};
    return Port;
}

void CheckDialect(const QString& Name) {
    const std::vector<std::string> Names = DialectNames();
    if (std::find(Names.begin(), Names.end(), Name.toStdString()) == Names.end())
        throw TZvDesignerUsageError{Tr("unknown dialect '%1' (%2)").arg(Name, DialectList())};
}

// The server options apply only to a connection made through --driver.
void ReadDriverConnection(const QCommandLineParser& Parser, TZvConnectionInfo& Info) {
    static const char* const kDriverOptions[] = {"host", "port", "dbname", "user", "password"};
    if (!Parser.isSet(QStringLiteral("driver"))) {
        for (const char* Name : kDriverOptions) {
            if (Parser.isSet(QString::fromLatin1(Name)))
                throw TZvDesignerUsageError{
                    Tr("option --%1 goes with --driver").arg(QString::fromLatin1(Name))};
        }
        return;
    }
    Info.Sample = false;
    Info.Driver = Parser.value(QStringLiteral("driver"));
    Info.DatabaseName = Parser.value(QStringLiteral("dbname"));
    Info.Host = Parser.value(QStringLiteral("host"));
    if (Parser.isSet(QStringLiteral("port")))
        Info.Port = PortNumber(Parser.value(QStringLiteral("port")));
    Info.User = Parser.value(QStringLiteral("user"));
    Info.Password = Parser.value(QStringLiteral("password"));
}

} // namespace

TZvDesignerOptions ParseDesignerArguments(const QStringList& Arguments) {
    QCommandLineParser Parser;
    AddOptions(Parser);
    // QCommandLineParser expects the program name first.
    if (!Parser.parse(QStringList{QStringLiteral("zevrin-designer")} + Arguments))
        throw TZvDesignerUsageError{Parser.errorText()};
    TZvDesignerOptions Options;
    Options.Help = Parser.isSet(QStringLiteral("help"));
    if (Options.Help)
        return Options;
    if (!Parser.positionalArguments().isEmpty())
        throw TZvDesignerUsageError{Tr("unexpected argument '%1' (options only; see --help)")
                                        .arg(Parser.positionalArguments().first())};
    if (Parser.isSet(QStringLiteral("db")) && Parser.isSet(QStringLiteral("driver")))
        throw TZvDesignerUsageError{Tr("options --db and --driver both name a database; give one of them")};
    if (Parser.isSet(QStringLiteral("db")))
        Options.Connection = ZvSqliteConnection(Parser.value(QStringLiteral("db")));
    ReadDriverConnection(Parser, Options.Connection);
    if (Parser.isSet(QStringLiteral("dialect"))) {
        Options.Dialect = Parser.value(QStringLiteral("dialect"));
        CheckDialect(Options.Dialect);
    }
    Options.StatementFile = Parser.value(QStringLiteral("sql"));
    Options.Screenshot = Parser.value(QStringLiteral("screenshot"));
    return Options;
}

QString DesignerUsage() {
    QString Text = Tr("usage: zevrin-designer [options]\n"
                      "\n"
                      "Designs SELECT statements over a database: its tables and fields on the left, the\n"
                      "statement in the SQL pane (Ctrl+Return parses it and writes it in the dialect's\n"
                      "layout), and the first %1 rows it returns below. Without --db or --driver the\n"
                      "bundled sample database is opened.\n"
                      "\n"
                      "options:\n")
                       .arg(kZvPreviewRowLimit);
    for (const TValueOption& Option : kValueOptions) {
        const QString Head =
            QStringLiteral("  --%1 %2")
                .arg(QString::fromLatin1(Option.Name), QString::fromLatin1(Option.ValueName));
        Text += Head.leftJustified(20) + QLatin1Char(' ') + Tr(Option.Description) + QLatin1Char('\n');
    }
    Text += QStringLiteral("  --help").leftJustified(20) + QLatin1Char(' ') + Tr("Show this text.") +
            QLatin1Char('\n');
    Text += Tr("\ndialects: %1\n"
               "exit codes: 0 success, 1 the database or a file cannot be opened or written, 2 usage error\n")
                .arg(DialectList());
    return Text;
}

} // namespace zv
