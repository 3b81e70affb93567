// Metadata from a live PostgreSQL server started for this test: tables, views and schemas, column
// types from the catalog (identity and serial keys, arrays, time zones), and set-returning
// functions with their arguments and result columns.
#include "ZvSqlMetadata.h"
#include "ZvTestServers.h"
#include "ZvTestSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace zv {
namespace {

using test::TZvTestPostgres;

using TFields = std::vector<std::pair<std::string, TFieldType>>;

TFields Fields(const TZvDataSet& DataSet) {
    TFields Result;
    for (const TZvDataField& Field : DataSet.GetFieldDefs()) {
        Result.emplace_back(Field.Name, Field.DataType);
    }
    return Result;
}

struct TParamRow {
    std::string Name;
    TParamType Kind;
    TFieldType Type;
    friend bool operator==(const TParamRow&, const TParamRow&) = default;
};

std::vector<TParamRow> Rows(const TZvParams& Params) {
    std::vector<TParamRow> Result;
    for (int I = 0; I < Params.Count(); ++I) {
        Result.push_back({Params[I].Name, Params[I].ParamType, Params[I].DataType});
    }
    return Result;
}

void PrintTo(const TParamRow& Row, std::ostream* Out) {
    *Out << "{" << Row.Name << ", " << int(Row.Kind) << ", " << int(Row.Type) << "}";
}

const char* const Schema = R"sql(
CREATE TABLE customer (
    customer_id integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    name varchar(60) NOT NULL,
    country char(2),
    balance numeric(12, 2),
    vip boolean,
    joined timestamptz,
    birthday date,
    notes text,
    tags text[],
    token uuid,
    photo bytea,
    score double precision,
    big_id bigint,
    big_serial bigserial
);
CREATE TABLE "Order" (order_id serial PRIMARY KEY, customer_id integer REFERENCES customer, placed time);
CREATE VIEW vip_customer AS SELECT customer_id, name, balance FROM customer WHERE vip;
CREATE SCHEMA stock;
CREATE TABLE stock.item (item_id smallint PRIMARY KEY, label varchar(20));

CREATE FUNCTION orders_of(p_customer integer, p_since date DEFAULT NULL)
    RETURNS TABLE (order_id integer, placed time) LANGUAGE sql
    AS 'SELECT order_id, placed FROM "Order" WHERE customer_id = p_customer';
CREATE FUNCTION split_balance(IN p_customer integer, INOUT p_factor numeric, OUT part numeric)
    RETURNS SETOF record LANGUAGE sql AS 'SELECT p_factor, balance * p_factor FROM customer';
CREATE FUNCTION all_customers() RETURNS SETOF customer LANGUAGE sql AS 'SELECT * FROM customer';
CREATE FUNCTION numbers_to(integer) RETURNS SETOF integer LANGUAGE sql AS 'SELECT generate_series(1, $1)';
CREATE FUNCTION numbers_to(integer, integer) RETURNS SETOF integer LANGUAGE sql
    AS 'SELECT generate_series($1, $2)';
CREATE FUNCTION stock.low_items(p_limit smallint) RETURNS SETOF stock.item LANGUAGE sql
    AS 'SELECT * FROM stock.item WHERE item_id < p_limit';
CREATE FUNCTION customer_count() RETURNS bigint LANGUAGE sql AS 'SELECT count(*) FROM customer';
)sql";

class ZvPostgresMetadata : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        // Fails every test of the suite, loudly, when the server cannot be started.
        try {
            TZvTestPostgres& Server = test::SharedServer<TZvTestPostgres>();
            QSqlDatabase Admin = Server.Connect(QStringLiteral("pg-admin"));
            test::ExecuteSql(Admin, QStringLiteral("CREATE DATABASE metadata"));
            Admin.close();
            QSqlDatabase Connection =
                Server.Connect(QStringLiteral("pg-metadata"), QStringLiteral("metadata"));
            test::ExecuteSql(Connection, QString::fromUtf8(Schema));
        } catch (const test::TZvServerOptedOut& OptedOut) {
            SkipReason = OptedOut.what();
        } catch (const std::exception& Error) {
            SetUpFailure = Error.what();
        }
    }

    void SetUp() override {
        if (!SkipReason.empty()) {
            GTEST_SKIP() << SkipReason;
        }
        ASSERT_TRUE(SetUpFailure.empty()) << SetUpFailure;
        Database = QSqlDatabase::database(QStringLiteral("pg-metadata"));
        ASSERT_TRUE(Database.isOpen());
    }

    static inline std::string SetUpFailure;
    static inline std::string SkipReason;
    QSqlDatabase Database;
};

TEST_F(ZvPostgresMetadata, ListsTablesViewsAndSchemaQualifiedTables) {
    const QStringList Tables = ZvListTables(Database);
    EXPECT_EQ(Tables, (QStringList{QStringLiteral("customer"), QStringLiteral("Order"),
                                   QStringLiteral("stock.item"), QStringLiteral("vip_customer")}));
}

TEST_F(ZvPostgresMetadata, ReadsColumnTypesFromTheCatalog) {
    TZvDataSet DataSet;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("customer"), DataSet));
    EXPECT_EQ(Fields(DataSet), (TFields{{"customer_id", ftAutoInc},
                                        {"name", ftString},
                                        {"country", ftFixedChar},
                                        {"balance", ftBCD},
                                        {"vip", ftBoolean},
                                        {"joined", ftDateTime},
                                        {"birthday", ftDate},
                                        {"notes", ftMemo},
                                        {"tags", ftArray},
                                        {"token", ftGuid},
                                        {"photo", ftBlob},
                                        {"score", ftFloat},
                                        {"big_id", ftLargeint},
                                        {"big_serial", ftLargeint}}));
}

TEST_F(ZvPostgresMetadata, QuotedAndSchemaQualifiedNamesResolve) {
    TZvDataSet Order;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("Order"), Order));
    EXPECT_EQ(Fields(Order),
              (TFields{{"order_id", ftAutoInc}, {"customer_id", ftInteger}, {"placed", ftTime}}));
    TZvDataSet Item;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("stock.item"), Item));
    EXPECT_EQ(Fields(Item), (TFields{{"item_id", ftSmallint}, {"label", ftString}}));
    TZvDataSet View;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("vip_customer"), View));
    EXPECT_EQ(Fields(View), (TFields{{"customer_id", ftInteger}, {"name", ftString}, {"balance", ftBCD}}));
}

TEST_F(ZvPostgresMetadata, UnknownTableAppendsNothing) {
    TZvDataSet DataSet;
    EXPECT_FALSE(ZvReadTableFields(Database, QStringLiteral("order"), DataSet)); // case matters once quoted
    EXPECT_FALSE(ZvReadTableFields(Database, QStringLiteral("nowhere.customer"), DataSet));
    EXPECT_TRUE(DataSet.GetFieldDefs().empty());
}

TEST_F(ZvPostgresMetadata, ListsOnlySetReturningFunctions) {
    EXPECT_EQ(ZvListProcedures(Database),
              (QStringList{QStringLiteral("all_customers"), QStringLiteral("numbers_to"),
                           QStringLiteral("orders_of"), QStringLiteral("split_balance"),
                           QStringLiteral("stock.low_items")}));
}

TEST_F(ZvPostgresMetadata, TableFunctionGivesInputParametersAndResultColumns) {
    TZvDataSet Result;
    TZvParams Params;
    ASSERT_TRUE(ZvReadProcedure(Database, QStringLiteral("orders_of"), Result, Params));
    EXPECT_EQ(Rows(Params), (std::vector<TParamRow>{{"p_customer", ptInput, ftInteger},
                                                    {"p_since", ptInput, ftDate},
                                                    {"order_id", ptOutput, ftInteger},
                                                    {"placed", ptOutput, ftTime}}));
    EXPECT_EQ(Fields(Result), (TFields{{"order_id", ftInteger}, {"placed", ftTime}}));
}

TEST_F(ZvPostgresMetadata, InOutArgumentsAreBothParameterAndColumn) {
    TZvDataSet Result;
    TZvParams Params;
    ASSERT_TRUE(ZvReadProcedure(Database, QStringLiteral("split_balance"), Result, Params));
    EXPECT_EQ(Rows(Params), (std::vector<TParamRow>{{"p_customer", ptInput, ftInteger},
                                                    {"p_factor", ptInputOutput, ftBCD},
                                                    {"part", ptOutput, ftBCD}}));
    EXPECT_EQ(Fields(Result), (TFields{{"p_factor", ftBCD}, {"part", ftBCD}}));
}

TEST_F(ZvPostgresMetadata, RowTypeResultGivesTheColumnsOfThatRow) {
    TZvDataSet Result;
    TZvParams Params;
    ASSERT_TRUE(ZvReadProcedure(Database, QStringLiteral("all_customers"), Result, Params));
    EXPECT_EQ(Params.Count(), 0);
    ASSERT_EQ(Result.GetFieldDefs().size(), 14u);
    EXPECT_EQ(Result.GetFieldDefs()[0].Name, "customer_id");
    EXPECT_EQ(Result.GetFieldDefs()[8].DataType, ftArray);

    TZvDataSet Items;
    ASSERT_TRUE(ZvReadProcedure(Database, QStringLiteral("stock.low_items"), Items, Params));
    EXPECT_EQ(Rows(Params), (std::vector<TParamRow>{{"p_limit", ptInput, ftSmallint}}));
    EXPECT_EQ(Fields(Items), (TFields{{"item_id", ftSmallint}, {"label", ftString}}));
}

TEST_F(ZvPostgresMetadata, ScalarResultIsOneColumnNamedAfterTheFunctionAndUnnamedArgumentsAreNumbered) {
    TZvDataSet Result;
    TZvParams Params;
    Params.Add({"stale", ptResult, ftString, {}});
    ASSERT_TRUE(ZvReadProcedure(Database, QStringLiteral("numbers_to"), Result, Params));
    // The first created of the two overloads, with one argument.
    EXPECT_EQ(Rows(Params), (std::vector<TParamRow>{{"$1", ptInput, ftInteger}}));
    EXPECT_EQ(Fields(Result), (TFields{{"numbers_to", ftInteger}}));
}

TEST_F(ZvPostgresMetadata, PlainFunctionsAndUnknownNamesAreNoProcedures) {
    TZvDataSet Result;
    TZvParams Params;
    EXPECT_FALSE(ZvReadProcedure(Database, QStringLiteral("customer_count"), Result, Params));
    EXPECT_FALSE(ZvReadProcedure(Database, QStringLiteral("no_such_function"), Result, Params));
    EXPECT_FALSE(ZvReadProcedure(Database, QStringLiteral("public.low_items"), Result, Params));
    EXPECT_TRUE(Result.GetFieldDefs().empty());
}

TEST_F(ZvPostgresMetadata, MetadataSourceAnswersForTablesAndProcedures) {
    const TZvSqlMetadata Metadata(Database);
    EXPECT_TRUE(Metadata.IsProcedure(QStringLiteral("orders_of")));
    EXPECT_TRUE(Metadata.IsProcedure(QStringLiteral("ORDERS_OF")));
    EXPECT_FALSE(Metadata.IsProcedure(QStringLiteral("customer")));

    TZvDataSet Table;
    TZvParams NoParams;
    ASSERT_TRUE(Metadata.GetTableFields("stock.item", Table, NoParams));
    EXPECT_EQ(Table.GetFieldDefs().size(), 2u);
    EXPECT_EQ(NoParams.Count(), 0);

    TZvDataSet Proc;
    TZvParams Params;
    ASSERT_TRUE(Metadata.GetTableFields("orders_of", Proc, Params));
    EXPECT_EQ(Params.Count(), 4);
    EXPECT_EQ(Proc.GetFieldDefs().size(), 2u);

    TZvDataSet Nothing;
    EXPECT_FALSE(Metadata.GetTableFields("nothing", Nothing, Params));
}

} // namespace
} // namespace zv
