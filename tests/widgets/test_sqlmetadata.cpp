// Metadata from a live SQLite connection and the mapping of declared and driver types to
// TFieldType.
#include "ZvSqlMetadata.h"
#include "ZvTestSupport.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

namespace zv {
namespace {

struct TTypeRow {
    const char* Declared;
    std::optional<TFieldType> Type;
};

const TTypeRow DeclaredTypes[] = {
    {"INTEGER", ftInteger},
    {"int", ftInteger},
    {"int4", ftInteger},
    {"SMALLINT", ftSmallint},
    {"tinyint", ftSmallint},
    {"BIGINT", ftLargeint},
    {"int8", ftLargeint},
    {"serial", ftAutoInc},
    {"bigserial", ftLargeint},
    {"BOOLEAN", ftBoolean},
    {"bool", ftBoolean},
    {"REAL", ftFloat},
    {"double precision", ftFloat},
    {"FLOAT8", ftFloat},
    {"money", ftCurrency},
    {"NUMERIC(10, 2)", ftBCD},
    {"decimal(18,4)", ftBCD},
    {"CHAR(2)", ftFixedChar},
    {"character(10)", ftFixedChar},
    {"bpchar", ftFixedChar},
    {"VARCHAR(40)", ftString},
    {"character varying(40)", ftString},
    {"NVARCHAR(100)", ftString},
    {"name", ftString},
    {"TEXT", ftMemo},
    {"jsonb", ftMemo},
    {"DATE", ftDate},
    {"TIME", ftTime},
    {"time(6) without time zone", ftTime},
    {"timetz", ftTime},
    {"TIMESTAMP", ftDateTime},
    {"timestamp(3) with time zone", ftDateTime},
    {"DATETIME", ftDateTime},
    {"BINARY(16)", ftBytes},
    {"VARBINARY(200)", ftVarBytes},
    {"bytea", ftBlob},
    {"BLOB", ftBlob},
    {"uuid", ftGuid},
    {"integer[]", ftArray},
    {"character varying(20)[]", ftArray},
    {"INT UNSIGNED", ftInteger},
    {"  Double   Precision  ", ftFloat},
    {"", std::nullopt},
    {"interval", std::nullopt},
    {"point", std::nullopt},
    {"unsigned big int", std::nullopt},
};

TEST(ZvSqlMetadata, DeclaredTypeNamesMapByTheDocumentedTable) {
    for (const TTypeRow& Row : DeclaredTypes) {
        EXPECT_EQ(ZvFieldTypeFromSqlType(Row.Declared), Row.Type) << '"' << Row.Declared << '"';
    }
}

// Names outside the table, read by SQLite's affinity rules.
const TTypeRow SqliteOnlyTypes[] = {
    {"unsigned big int", ftInteger},
    {"varying character(70)", ftString},
    {"native character", ftString},
    {"long blob data", ftBlob},
    {"float64", ftFloat},
    {"floating point", ftInteger}, // "int" is looked for first, as SQLite itself does
    {"interval", ftInteger},
    {"geometry", std::nullopt},
    {"", std::nullopt},
};

TEST(ZvSqlMetadata, SqliteTypeNamesFallBackOnAffinityRules) {
    for (const TTypeRow& Row : DeclaredTypes) {
        if (Row.Type) {
            EXPECT_EQ(ZvFieldTypeFromSqliteType(Row.Declared), Row.Type) << '"' << Row.Declared << '"';
        }
    }
    for (const TTypeRow& Row : SqliteOnlyTypes) {
        EXPECT_EQ(ZvFieldTypeFromSqliteType(Row.Declared), Row.Type) << '"' << Row.Declared << '"';
    }
}

TEST(ZvSqlMetadata, DriverValueTypesMapToFieldTypes) {
    const std::pair<QMetaType::Type, TFieldType> Rows[] = {
        {QMetaType::Int, ftInteger},         {QMetaType::UInt, ftInteger},
        {QMetaType::Short, ftSmallint},      {QMetaType::LongLong, ftLargeint},
        {QMetaType::ULongLong, ftLargeint},  {QMetaType::Double, ftFloat},
        {QMetaType::Float, ftFloat},         {QMetaType::Bool, ftBoolean},
        {QMetaType::QString, ftString},      {QMetaType::QByteArray, ftBlob},
        {QMetaType::QDate, ftDate},          {QMetaType::QTime, ftTime},
        {QMetaType::QDateTime, ftDateTime},  {QMetaType::QUuid, ftGuid},
        {QMetaType::QVariantMap, ftUnknown}, {QMetaType::UnknownType, ftUnknown},
    };
    for (const auto& [Meta, Type] : Rows) {
        EXPECT_EQ(ZvFieldTypeFromMetaType(QMetaType(Meta)), Type) << QMetaType(Meta).name();
    }
}

class ZvSqliteMetadata : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Directory.isValid());
        Database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("metadata-test"));
        Database.setDatabaseName(Directory.filePath(QStringLiteral("test.sqlite")));
        ASSERT_TRUE(Database.open()) << Database.lastError().text().toStdString();
        for (const char* Statement : {
                 "CREATE TABLE Warehouse (id INTEGER PRIMARY KEY AUTOINCREMENT, code CHAR(4) NOT NULL,"
                 " city VARCHAR(40), opened DATE, updated TIMESTAMP, active BOOLEAN, capacity NUMERIC(12,2),"
                 " notes TEXT, photo BLOB, ratio REAL, untyped, sku BIGINT, mood interval)",
                 "CREATE TABLE stock (warehouse_id INTEGER NOT NULL, item INTEGER NOT NULL, qty SMALLINT,"
                 " PRIMARY KEY (warehouse_id, item))",
                 "CREATE TABLE tag (tag_id INT PRIMARY KEY, label VARCHAR(20))",
                 "CREATE VIEW busy_warehouses AS SELECT w.id, w.city, s.qty, s.qty * 2 AS doubled"
                 " FROM Warehouse w JOIN stock s ON s.warehouse_id = w.id",
                 "INSERT INTO Warehouse (code) VALUES ('A1')",
             }) {
            QSqlQuery Query(Database);
            ASSERT_TRUE(Query.exec(QString::fromLatin1(Statement))) << Query.lastError().text().toStdString();
        }
    }

    void TearDown() override {
        Database.close();
        Database = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("metadata-test"));
    }

    static std::vector<std::pair<std::string, TFieldType>> Fields(const TZvDataSet& DataSet) {
        std::vector<std::pair<std::string, TFieldType>> Result;
        for (const TZvDataField& Field : DataSet.GetFieldDefs()) {
            Result.emplace_back(Field.Name, Field.DataType);
        }
        return Result;
    }

    QTemporaryDir Directory;
    QSqlDatabase Database;
};

TEST_F(ZvSqliteMetadata, ListsTablesAndViewsSortedWithoutSystemTables) {
    // AUTOINCREMENT made SQLite create its sqlite_sequence table, which is not the user's.
    EXPECT_EQ(ZvListTables(Database), (QStringList{QStringLiteral("busy_warehouses"), QStringLiteral("stock"),
                                                   QStringLiteral("tag"), QStringLiteral("Warehouse")}));
}

TEST_F(ZvSqliteMetadata, ReadsFieldsInColumnOrderWithMappedTypes) {
    TZvDataSet DataSet;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("Warehouse"), DataSet));
    const std::vector<std::pair<std::string, TFieldType>> Want{
        {"id", ftAutoInc},       {"code", ftFixedChar}, {"city", ftString},    {"opened", ftDate},
        {"updated", ftDateTime}, {"active", ftBoolean}, {"capacity", ftBCD},   {"notes", ftMemo},
        {"photo", ftBlob},       {"ratio", ftFloat},    {"untyped", ftString}, {"sku", ftLargeint},
        {"mood", ftInteger}, // SQLite gives "interval" integer affinity, and so do we
    };
    EXPECT_EQ(Fields(DataSet), Want);
}

TEST_F(ZvSqliteMetadata, OnlyASingleIntegerKeyIsTheAutoNumberedRowId) {
    TZvDataSet Stock;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("stock"), Stock));
    EXPECT_EQ(Fields(Stock), (std::vector<std::pair<std::string, TFieldType>>{
                                 {"warehouse_id", ftInteger}, {"item", ftInteger}, {"qty", ftSmallint}}));
    TZvDataSet Tag; // INT PRIMARY KEY is an ordinary column in SQLite, not the row id
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("tag"), Tag));
    EXPECT_EQ(Fields(Tag)[0], (std::pair<std::string, TFieldType>{"tag_id", ftInteger}));
}

TEST_F(ZvSqliteMetadata, ViewColumnsTakeTheTypesOfTheirSourceColumns) {
    TZvDataSet View;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("busy_warehouses"), View));
    const auto Got = Fields(View);
    ASSERT_EQ(Got.size(), 4u);
    EXPECT_EQ(Got[0], (std::pair<std::string, TFieldType>{"id", ftInteger})); // a view has no row id
    EXPECT_EQ(Got[1], (std::pair<std::string, TFieldType>{"city", ftString}));
    EXPECT_EQ(Got[2], (std::pair<std::string, TFieldType>{"qty", ftSmallint}));
    EXPECT_EQ(Got[3].first, "doubled");
}

TEST_F(ZvSqliteMetadata, TableNamesAreCaseInsensitiveAsInSqlite) {
    TZvDataSet DataSet;
    EXPECT_TRUE(ZvReadTableFields(Database, QStringLiteral("WAREHOUSE"), DataSet));
    EXPECT_EQ(DataSet.GetFieldDefs().size(), 13u);
}

TEST_F(ZvSqliteMetadata, UnknownTableAppendsNothing) {
    TZvDataSet DataSet({{"kept", ftInteger}});
    EXPECT_FALSE(ZvReadTableFields(Database, QStringLiteral("no_such_table"), DataSet));
    EXPECT_FALSE(ZvReadTableFields(Database, QString(), DataSet));
    EXPECT_EQ(Fields(DataSet), (std::vector<std::pair<std::string, TFieldType>>{{"kept", ftInteger}}));
}

TEST_F(ZvSqliteMetadata, ClosedConnectionGivesNoFields) {
    Database.close();
    TZvDataSet DataSet;
    EXPECT_FALSE(ZvReadTableFields(Database, QStringLiteral("stock"), DataSet));
    EXPECT_TRUE(DataSet.GetFieldDefs().empty());
}

TEST_F(ZvSqliteMetadata, SqliteHasNoStoredProcedures) {
    EXPECT_TRUE(ZvListProcedures(Database).isEmpty());
    TZvDataSet Result;
    TZvParams Params;
    EXPECT_FALSE(ZvReadProcedure(Database, QStringLiteral("stock"), Result, Params));
    EXPECT_TRUE(Result.GetFieldDefs().empty());
    EXPECT_EQ(Params.Count(), 0);
}

TEST_F(ZvSqliteMetadata, MetadataSourceAnswersTheTableFieldsHook) {
    const TZvSqlMetadata Metadata(Database);
    EXPECT_EQ(Metadata.Tables(), ZvListTables(Database));
    EXPECT_FALSE(Metadata.IsProcedure(QStringLiteral("stock")));
    TZvDataSet DataSet;
    TZvParams Params;
    ASSERT_TRUE(Metadata.GetTableFields("stock", DataSet, Params));
    EXPECT_EQ(DataSet.GetFieldDefs().size(), 3u);
    ASSERT_NE(DataSet.FindField("QTY"), nullptr);
    EXPECT_EQ(DataSet.FindField("QTY")->DataType, ftSmallint);
    EXPECT_EQ(Params.Count(), 0);
    TZvDataSet Missing;
    EXPECT_FALSE(Metadata.GetTableFields("nowhere", Missing, Params));
}

TEST_F(ZvSqliteMetadata, SqlDataSetReadsItsFieldsWhenOpenedAndKeepsThemWhenClosed) {
    TZvSqlDataSet DataSet(Database, QStringLiteral("tag"));
    EXPECT_FALSE(DataSet.GetActive());
    EXPECT_TRUE(DataSet.GetFieldDefs().empty());
    DataSet.Open();
    EXPECT_TRUE(DataSet.GetActive());
    EXPECT_EQ(Fields(DataSet),
              (std::vector<std::pair<std::string, TFieldType>>{{"tag_id", ftInteger}, {"label", ftString}}));
    DataSet.Close();
    EXPECT_FALSE(DataSet.GetActive());
    EXPECT_EQ(DataSet.GetFieldDefs().size(), 2u);
    // Opening again reads afresh instead of appending a second copy.
    QSqlQuery(Database).exec(QStringLiteral("ALTER TABLE tag ADD COLUMN colour VARCHAR(10)"));
    DataSet.Open();
    EXPECT_EQ(DataSet.GetFieldDefs().size(), 3u);
}

TEST_F(ZvSqliteMetadata, SqlDataSetOverAnUnknownTableStaysClosed) {
    TZvSqlDataSet DataSet(Database, QStringLiteral("missing"));
    DataSet.Open();
    EXPECT_FALSE(DataSet.GetActive());
    EXPECT_TRUE(DataSet.GetFieldDefs().empty());
}

} // namespace
} // namespace zv
