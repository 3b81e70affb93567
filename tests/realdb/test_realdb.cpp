// Real databases: every statement of the suite runs as written and as our dialect generates it on
// SQLite (generic dialect), PostgreSQL, MariaDB (MySQL dialect) and Firebird (InterBase dialect,
// server kind Firebird), and both must return the same rows. The statements whose meaning the
// generator changes by design run too, and must show that change.
//
// The servers are reached through the Qt SQL drivers: one in-process API for all four, typed
// values, no output of command-line clients to parse, and no process per statement.
#include "ZvCli.h"
#include "ZvParser.h"
#include "ZvRealDbCases.h"
#include "ZvRealDbSchema.h"
#include "ZvTestServers.h"

#include <QCoreApplication>
#include <QDate>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>

namespace zv::test {
namespace {

using TRow = std::vector<std::string>;
using TRows = std::vector<TRow>;

// A server of the suite: how to start it and which of our dialects speaks to it.
struct TZvRealDbTarget {
    const char* Name; // the prefix of the test names
    unsigned Bit;
    TZvTestServer& (*Server)();
    const char* Dialect;
    const char* IBServer; // interbase only
};

template <class TServer>
TZvTestServer& Start() {
    return SharedServer<TServer>();
}

const TZvRealDbTarget kSQLiteTarget{"SQLite", kSQLite, Start<TZvTestSQLite>, "generic", ""};
const TZvRealDbTarget kPostgreSQLTarget{"PostgreSQL", kPostgreSQL, Start<TZvTestPostgres>, "postgresql", ""};
const TZvRealDbTarget kMariaDBTarget{"MariaDB", kMariaDB, Start<TZvTestMariaDB>, "mysql", ""};
const TZvRealDbTarget kFirebirdTarget{"Firebird", kFirebird, Start<TZvTestFirebird>, "interbase", "firebird"};

// The connection of a target with the schema and rows loaded, made on first use. A failure is
// kept and fails every later test of the target with the same message.
struct TConnectionState {
    std::optional<QSqlDatabase> Database;
    std::string Failure;
    bool OptedOut = false;
};

std::map<unsigned, TConnectionState>& Connections() {
    static std::map<unsigned, TConnectionState> States;
    return States;
}

void LoadSchema(QSqlDatabase& Database) {
    for (const std::string& Statement : RealDbSchema()) {
        ExecuteSql(Database, QString::fromStdString(Statement));
    }
    // One transaction for the rows: Firebird writes every commit through to the disk.
    if (!Database.transaction()) {
        throw std::runtime_error("cannot begin a transaction: " + Database.lastError().text().toStdString());
    }
    for (const std::string& Statement : RealDbRows()) {
        ExecuteSql(Database, QString::fromStdString(Statement));
    }
    if (!Database.commit()) {
        throw std::runtime_error("cannot commit the rows: " + Database.lastError().text().toStdString());
    }
}

TConnectionState& ConnectionOf(const TZvRealDbTarget& Target) {
    TConnectionState& State = Connections()[Target.Bit];
    if (State.Database || !State.Failure.empty()) {
        return State;
    }
    try {
        QSqlDatabase Database =
            Target.Server().Connect(QStringLiteral("realdb-") + QString::fromUtf8(Target.Name));
        LoadSchema(Database);
        State.Database = Database;
    } catch (const TZvServerOptedOut& OptedOut) {
        State.Failure = OptedOut.what();
        State.OptedOut = true;
    } catch (const std::exception& Error) {
        State.Failure = std::string(Target.Name) + ": " + Error.what();
    }
    return State;
}

// A value as text that is equal exactly when the server's values are: NULL apart from every text,
// dates in ISO form, floating-point numbers with all their digits.
std::string ValueText(const QVariant& Value) {
    if (Value.isNull()) {
        return "<NULL>";
    }
    switch (Value.metaType().id()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return QString::number(Value.toDouble(), 'g', 17).toStdString();
    case QMetaType::QDate:
        return Value.toDate().toString(Qt::ISODate).toStdString();
    default:
        return Value.toString().toStdString();
    }
}

struct TResult {
    bool Ok = false;
    std::string Error;
    int Columns = 0;
    TRows Rows;
};

TResult Query(QSqlDatabase& Database, const std::string& Sql) {
    QSqlQuery Query(Database);
    Query.setForwardOnly(true);
    TResult Result;
    if (!Query.exec(QString::fromStdString(Sql))) {
        Result.Error = Query.lastError().text().toStdString();
        return Result;
    }
    Result.Ok = true;
    Result.Columns = Query.record().count();
    while (Query.next()) {
        TRow Row;
        for (int Column = 0; Column < Result.Columns; ++Column) {
            Row.push_back(ValueText(Query.value(Column)));
        }
        Result.Rows.push_back(std::move(Row));
    }
    return Result;
}

TRows Sorted(TRows Rows) {
    std::sort(Rows.begin(), Rows.end());
    return Rows;
}

std::string Describe(const TRows& Rows) {
    std::string Text;
    for (const TRow& Row : Rows) {
        Text += "  (";
        for (std::size_t I = 0; I < Row.size(); ++I) {
            Text += (I ? ", " : "") + Row[I];
        }
        Text += ")\n";
    }
    return Text.empty() ? "  no rows\n" : Text;
}

// The statement as our dialect for the target generates it in Layout. Throws EZvParserError.
std::string Generate(const TZvRealDbTarget& Target, const std::string& Sql, TZvLayout Layout) {
    TZvCliOptions Options;
    Options.Command = "format";
    Options.Dialect = Target.Dialect;
    if (*Target.IBServer) {
        Options.IBServer = Target.IBServer;
    }
    if (Layout == TZvLayout::Restyled) {
        Options.Keywords = "firstupper";
        Options.Functions = "upper";
        Options.AlwaysBracket = false;
    }
    std::unique_ptr<TZvSelectParser> Parser = CreateCliParser(Options);
    Parser->SetExpression(NormalizeInputText(Sql));
    return Parser->GetExpression();
}

// Compared without regard to case, blanks and name quotes, which differ between the dialects.
std::string Squeezed(const std::string& Text) {
    std::string Result;
    for (const char Byte : Text) {
        const auto C = static_cast<unsigned char>(Byte);
        if (!std::isspace(C) && C != '"' && C != '`') {
            Result += static_cast<char>(std::toupper(C));
        }
    }
    return Result;
}

template <class TCase>
struct TParam {
    const TCase* Case;
    const TZvRealDbTarget* Target;
};

// Failure reports name the statement and the server rather than dumping the pointers.
template <class TCase>
void PrintTo(const TParam<TCase>& Param, std::ostream* Out) {
    *Out << Param.Case->Name << " on " << Param.Target->Name;
}

// Whether a case belongs in the suite of Layout (every case but those pinned among the changes).
bool RunsIn(const TZvRealDbCase& Case, TZvLayout Layout) {
    return Layout == TZvLayout::Default || !Case.BareNotChangesMeaning;
}

bool RunsIn(const TZvRealDbChange&, TZvLayout) {
    return true;
}

template <class TCase>
std::vector<TParam<TCase>> ParamsFor(const std::vector<TCase>& Cases, const TZvRealDbTarget& Target,
                                     TZvLayout Layout = TZvLayout::Default) {
    std::vector<TParam<TCase>> Params;
    for (const TCase& Case : Cases) {
        if ((Case.Servers & Target.Bit) && RunsIn(Case, Layout)) {
            Params.push_back({&Case, &Target});
        }
    }
    return Params;
}

template <class TCase>
std::string ParamName(const ::testing::TestParamInfo<TParam<TCase>>& Info) {
    return Info.param.Case->Name;
}

// Starts the target's server (once) and hands its loaded connection to the test.
template <class TCase>
class ZvRealDbTest : public ::testing::TestWithParam<TParam<TCase>> {
protected:
    void SetUp() override {
        TConnectionState& State = ConnectionOf(*this->GetParam().Target);
        if (State.OptedOut) {
            GTEST_SKIP() << State.Failure;
        }
        ASSERT_TRUE(State.Database) << State.Failure;
        Database = *State.Database;
    }

    // Runs Sql; fails the test with the server's message when the server refuses it.
    TResult Run(const std::string& Sql, const char* Which) {
        TResult Result = Query(Database, Sql);
        EXPECT_TRUE(Result.Ok) << this->GetParam().Target->Name << " refused the " << Which
                               << " statement: " << Result.Error << "\n"
                               << Sql;
        return Result;
    }

    // Generates the case's statement in Layout, runs both texts and compares their rows.
    void ExpectSameRows(TZvLayout Layout) {
        const TZvRealDbCase& Case = *this->GetParam().Case;
        std::string Generated;
        ASSERT_NO_THROW(Generated = Generate(*this->GetParam().Target, Case.Sql, Layout)) << Case.Sql;
        const TResult Original = Run(Case.Sql, "original");
        const TResult Regenerated = Run(Generated, "generated");
        ASSERT_TRUE(Original.Ok && Regenerated.Ok);
        EXPECT_EQ(Original.Rows.empty(), Case.Empty)
            << "the original statement found " << Original.Rows.size() << " rows:\n"
            << Case.Sql;
        EXPECT_EQ(Original.Columns, Regenerated.Columns) << Generated;
        const bool InOrder = Case.Order == TZvRowOrder::Fixed;
        const TRows Expected = InOrder ? Original.Rows : Sorted(Original.Rows);
        const TRows Actual = InOrder ? Regenerated.Rows : Sorted(Regenerated.Rows);
        EXPECT_EQ(Expected, Actual) << (InOrder ? "in order" : "as multisets") << "\noriginal:\n"
                                    << Case.Sql << "\n"
                                    << Describe(Expected) << "generated:\n"
                                    << Generated << "\n"
                                    << Describe(Actual);
    }

    QSqlDatabase Database;
};

using ZvRealDbSameRows = ZvRealDbTest<TZvRealDbCase>;
class ZvRealDbRestyledRows : public ZvRealDbTest<TZvRealDbCase> {};
using ZvRealDbChangedRows = ZvRealDbTest<TZvRealDbChange>;

TEST_P(ZvRealDbSameRows, GeneratedStatementReturnsTheOriginalRows) {
    ExpectSameRows(TZvLayout::Default);
}

// Keywords in first-upper case, function names in capitals, conditions without brackets.
TEST_P(ZvRealDbRestyledRows, RestyledStatementReturnsTheOriginalRows) {
    ExpectSameRows(TZvLayout::Restyled);
}

TEST_P(ZvRealDbChangedRows, GeneratedStatementShowsTheIntendedChange) {
    const TZvRealDbChange& Change = *GetParam().Case;
    std::string Generated;
    ASSERT_NO_THROW(Generated = Generate(*GetParam().Target, Change.Sql, Change.Layout)) << Change.Sql;
    EXPECT_NE(Squeezed(Generated).find(Squeezed(Change.Present)), std::string::npos) << Generated;
    EXPECT_EQ(Squeezed(Generated).find(Squeezed(Change.Absent)), std::string::npos) << Generated;
    const TResult Original = Run(Change.Sql, "original");
    const TResult Regenerated = Run(Generated, "generated");
    ASSERT_TRUE(Original.Ok && Regenerated.Ok);
    EXPECT_NE(Sorted(Original.Rows), Sorted(Regenerated.Rows)) << "the change left the rows as they were:\n"
                                                               << Describe(Original.Rows);
}

// The test names read "<Server>/<suite>.<test>/<statement>".
#define ZV_REALDB_TARGET(Server)                                                                             \
    INSTANTIATE_TEST_SUITE_P(Server, ZvRealDbSameRows,                                                       \
                             ::testing::ValuesIn(ParamsFor(RealDbCases(), k##Server##Target)),               \
                             ParamName<TZvRealDbCase>);                                                      \
    INSTANTIATE_TEST_SUITE_P(                                                                                \
        Server, ZvRealDbRestyledRows,                                                                        \
        ::testing::ValuesIn(ParamsFor(RealDbCases(), k##Server##Target, TZvLayout::Restyled)),               \
        ParamName<TZvRealDbCase>);                                                                           \
    INSTANTIATE_TEST_SUITE_P(Server, ZvRealDbChangedRows,                                                    \
                             ::testing::ValuesIn(ParamsFor(RealDbChanges(), k##Server##Target)),             \
                             ParamName<TZvRealDbChange>)

ZV_REALDB_TARGET(SQLite);
ZV_REALDB_TARGET(PostgreSQL);
ZV_REALDB_TARGET(MariaDB);
ZV_REALDB_TARGET(Firebird);

// Connections are closed before the servers stop, so that the Firebird file is free to remove.
class TServersEnvironment : public ::testing::Environment {
public:
    void TearDown() override {
        for (auto& [Bit, State] : Connections()) {
            if (State.Database) {
                const QString Name = State.Database->connectionName();
                State.Database->close();
                State.Database.reset();
                QSqlDatabase::removeDatabase(Name);
            }
        }
        StopSharedServers();
    }
};

} // namespace
} // namespace zv::test

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QCoreApplication Application(argc, argv);
    ::testing::AddGlobalTestEnvironment(new zv::test::TServersEnvironment);
    return RUN_ALL_TESTS();
}
