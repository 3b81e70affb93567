// The designer over a live PostgreSQL server started for this test: the catalog from the server,
// and the preview read through a connection that the preview thread opens with the same
// parameters, checked against the server directly.
#include "ZvCatalogView.h"
#include "ZvConnection.h"
#include "ZvDesignerWindow.h"
#include "ZvPreviewModel.h"
#include "ZvSqlPane.h"
#include "ZvTestServers.h"

#include <QSqlQuery>

#include <gtest/gtest.h>

#include <memory>

namespace zv {
namespace {

using test::TZvTestPostgres;

const char* const kSchema = R"sql(
CREATE TABLE regions (region_id integer PRIMARY KEY, name varchar(40) NOT NULL);
INSERT INTO regions SELECT i, 'Region ' || i FROM generate_series(1, 250) AS i;
CREATE FUNCTION big_regions(lowest integer) RETURNS TABLE (region_id integer, name varchar)
    LANGUAGE sql AS 'SELECT region_id, name FROM regions WHERE region_id >= lowest';
)sql";

TZvConnectionInfo ServerConnection(const TZvTestPostgres& Server) {
    TZvConnectionInfo Info;
    Info.Sample = false;
    Info.Driver = QStringLiteral("QPSQL");
    Info.Host = QString::fromStdString(Server.GetDirectory().string());
    Info.Port = Server.GetPort();
    Info.User = QStringLiteral("postgres");
    Info.DatabaseName = QStringLiteral("designer");
    return Info;
}

class ZvDesignerPostgresTest : public ::testing::Test {
protected:
    // One database for the suite; the tests only read it.
    static void SetUpTestSuite() {
        // Fails every test of the suite, loudly, when the server cannot be started; skips them
        // when the server is opted out through ZEVRIN_SKIP_SERVERS.
        try {
            TZvTestPostgres& Server = test::SharedServer<TZvTestPostgres>();
            QSqlDatabase Admin = Server.Connect(QStringLiteral("designer-admin"));
            // The server is fresh for this process. CREATE DATABASE runs alone: it refuses the
            // transaction of a multi-statement text.
            test::ExecuteSql(Admin, QStringLiteral("CREATE DATABASE designer"));
            QSqlDatabase Schema =
                Server.Connect(QStringLiteral("designer-schema"), QStringLiteral("designer"));
            test::ExecuteSql(Schema, QString::fromUtf8(kSchema));
        } catch (const test::TZvServerOptedOut& OptedOut) {
            SkipReason = OptedOut.what();
        } catch (const std::exception& Error) {
            SetUpFailure = Error.what();
        }
        ZvCloseConnection(QStringLiteral("designer-admin"));
        ZvCloseConnection(QStringLiteral("designer-schema"));
    }

    void SetUp() override {
        if (!SkipReason.empty()) {
            GTEST_SKIP() << SkipReason;
        }
        ASSERT_TRUE(SetUpFailure.empty()) << SetUpFailure;
        TZvTestPostgres& Server = test::SharedServer<TZvTestPostgres>();
        Direct = Server.Connect(QStringLiteral("designer-direct"), QStringLiteral("designer"));
        Info = ServerConnection(Server);
        QString Error;
        Database = ZvOpenConnection(Info, QStringLiteral("designer-pg"), &Error);
        ASSERT_TRUE(Database.isOpen()) << Error.toStdString();
        Window = std::make_unique<TZvDesignerWindow>(Database, Info);
    }
    void TearDown() override {
        Window.reset();
        Database = QSqlDatabase();
        Direct = QSqlDatabase();
        ZvCloseConnection(QStringLiteral("designer-pg"));
        ZvCloseConnection(QStringLiteral("designer-direct"));
    }

    static inline std::string SetUpFailure;
    static inline std::string SkipReason;
    TZvConnectionInfo Info;
    QSqlDatabase Database;
    QSqlDatabase Direct;
    std::unique_ptr<TZvDesignerWindow> Window;
};

TEST_F(ZvDesignerPostgresTest, TheCatalogListsTheServersTablesAndProcedures) {
    const QTreeWidgetItem* Regions = Window->Catalog()->Fields(QStringLiteral("regions"));
    ASSERT_NE(Regions, nullptr);
    ASSERT_EQ(Regions->childCount(), 2);
    EXPECT_EQ(Regions->child(1)->text(0), QStringLiteral("name"));
    EXPECT_EQ(Regions->child(1)->text(1), QStringLiteral("String"));
    const QTreeWidgetItem* Procedure = Window->Catalog()->Fields(QStringLiteral("big_regions"));
    ASSERT_NE(Procedure, nullptr);
    EXPECT_EQ(Procedure->text(1), QStringLiteral("procedure"));
    ASSERT_EQ(Procedure->childCount(), 2); // the columns it returns
    EXPECT_EQ(Procedure->child(0)->text(0), QStringLiteral("region_id"));
}

TEST_F(ZvDesignerPostgresTest, ThePreviewReadsTheServerOnItsOwnConnection) {
    ASSERT_TRUE(Window->SqlPane()->SetDialect(QStringLiteral("postgresql")));
    ASSERT_TRUE(
        Window->LoadStatement(QStringLiteral("SELECT r.name FROM regions r WHERE r.region_id > 240")));
    ASSERT_TRUE(Window->WaitForPreview(20000));
    QSqlQuery Query(Direct);
    ASSERT_TRUE(
        Query.exec(QStringLiteral("SELECT COUNT(*) FROM (%1) AS q").arg(Window->SqlPane()->GeneratedSql())));
    ASSERT_TRUE(Query.next());
    EXPECT_EQ(Query.value(0).toInt(), 10);
    EXPECT_EQ(Window->PreviewModel()->rowCount(), 10);
    EXPECT_EQ(Window->PreviewStatus(), QStringLiteral("10 rows"));
}

TEST_F(ZvDesignerPostgresTest, ALargeResultStopsAtTheLimit) {
    ASSERT_TRUE(Window->LoadStatement(QStringLiteral("SELECT r.region_id FROM regions r")));
    ASSERT_TRUE(Window->WaitForPreview(20000));
    EXPECT_EQ(Window->PreviewModel()->rowCount(), 200);
    EXPECT_EQ(Window->PreviewStatus(), QStringLiteral("The first 200 rows; the statement returns more."));
}

} // namespace
} // namespace zv
