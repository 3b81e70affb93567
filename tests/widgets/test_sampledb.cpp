// The embedded sample database: extracted and opened read-only, its tables and view as metadata,
// and its contents consistent (keys, the management tree, deliberate NULLs) for real queries.
#include "ZvSampleDatabase.h"
#include "ZvSqlMetadata.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

#include <cstdlib>

namespace zv {
namespace {

class ZvSampleDatabaseTest : public ::testing::Test {
protected:
    void SetUp() override {
        Database = ZvOpenSampleDatabase(QStringLiteral("sample-test"));
        ASSERT_TRUE(Database.isOpen()) << Database.lastError().text().toStdString();
    }
    void TearDown() override {
        Database.close();
        Database = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("sample-test"));
    }

    qlonglong Scalar(const QString& Sql) {
        QSqlQuery Query(Database);
        EXPECT_TRUE(Query.exec(Sql)) << Query.lastError().text().toStdString() << "\n" << Sql.toStdString();
        EXPECT_TRUE(Query.next()) << Sql.toStdString();
        return Query.value(0).toLongLong();
    }

    QSqlDatabase Database;
};

TEST_F(ZvSampleDatabaseTest, IsCompiledInAndExtractedOnceUnderAContentName) {
    EXPECT_TRUE(QFileInfo::exists(ZvSampleDatabaseResource()));
    const QString First = ZvSampleDatabaseFile();
    ASSERT_FALSE(First.isEmpty());
    EXPECT_TRUE(QFileInfo(First).fileName().startsWith(QStringLiteral("sample-")));
    const QDateTime Written = QFileInfo(First).lastModified();
    EXPECT_EQ(ZvSampleDatabaseFile(), First);
    EXPECT_EQ(QFileInfo(First).lastModified(), Written);
    EXPECT_EQ(Database.databaseName(), First);
}

TEST_F(ZvSampleDatabaseTest, ListsItsTablesAndView) {
    EXPECT_EQ(
        ZvListTables(Database),
        (QStringList{QStringLiteral("categories"), QStringLiteral("customers"), QStringLiteral("employees"),
                     QStringLiteral("order_lines"), QStringLiteral("order_totals"), QStringLiteral("orders"),
                     QStringLiteral("products"), QStringLiteral("regions"), QStringLiteral("suppliers")}));
}

TEST_F(ZvSampleDatabaseTest, FieldTypesCoverNumbersTextDatesAndFlags) {
    TZvDataSet Products;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("products"), Products));
    const auto TypeOf = [&Products](const char* Name) {
        const TZvDataField* Field = Products.FindField(Name);
        return Field ? Field->DataType : ftUnknown;
    };
    EXPECT_EQ(TypeOf("product_id"), ftAutoInc);
    EXPECT_EQ(TypeOf("name"), ftString);
    EXPECT_EQ(TypeOf("category_id"), ftInteger);
    EXPECT_EQ(TypeOf("unit_price"), ftBCD);
    EXPECT_EQ(TypeOf("units_in_stock"), ftSmallint);
    EXPECT_EQ(TypeOf("weight_kg"), ftFloat);
    EXPECT_EQ(TypeOf("discontinued"), ftBoolean);

    TZvDataSet Orders;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("orders"), Orders));
    EXPECT_EQ(Orders.FindField("order_date")->DataType, ftDate);
    TZvDataSet Customers;
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("customers"), Customers));
    EXPECT_EQ(Customers.FindField("created_at")->DataType, ftDateTime);
    TZvDataSet Lines; // a two-column key is not an auto-numbered row id
    ASSERT_TRUE(ZvReadTableFields(Database, QStringLiteral("order_lines"), Lines));
    EXPECT_EQ(Lines.FindField("order_id")->DataType, ftInteger);
}

TEST_F(ZvSampleDatabaseTest, HoldsEnoughRowsForRealQueries) {
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM regions")), 6);
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM categories")), 8);
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM suppliers")), 8);
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM products")), 32);
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM employees")), 12);
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM customers")), 36);
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM orders")), 420);
    // One to four lines per order, by the order number.
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM order_lines")),
              Scalar(QStringLiteral("SELECT SUM(order_id % 4 + 1) FROM orders")));
}

TEST_F(ZvSampleDatabaseTest, EveryReferenceResolvesAndTheFileIsSound) {
    QSqlQuery Check(Database);
    ASSERT_TRUE(Check.exec(QStringLiteral("PRAGMA foreign_key_check")));
    EXPECT_FALSE(Check.next()) << "dangling reference in table " << Check.value(0).toString().toStdString();
    QSqlQuery Integrity(Database);
    ASSERT_TRUE(Integrity.exec(QStringLiteral("PRAGMA integrity_check")) && Integrity.next());
    EXPECT_EQ(Integrity.value(0).toString(), QStringLiteral("ok"));
}

TEST_F(ZvSampleDatabaseTest, EmployeesFormOneManagementTree) {
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM employees WHERE manager_id IS NULL")), 1);
    // Walking down from the root reaches everyone, each exactly once, in three levels below it.
    const QString Walk = QStringLiteral(
        "WITH RECURSIVE tree(id, depth) AS ("
        " SELECT employee_id, 0 FROM employees WHERE manager_id IS NULL"
        " UNION ALL SELECT e.employee_id, t.depth + 1 FROM employees e JOIN tree t ON e.manager_id = t.id"
        " WHERE t.depth < 20) ");
    EXPECT_EQ(Scalar(Walk + QStringLiteral("SELECT COUNT(*) FROM tree")), 12);
    EXPECT_EQ(Scalar(Walk + QStringLiteral("SELECT COUNT(DISTINCT id) FROM tree")), 12);
    EXPECT_EQ(Scalar(Walk + QStringLiteral("SELECT MAX(depth) FROM tree")), 2);
}

TEST_F(ZvSampleDatabaseTest, HasNullsWhereQueriesMustHandleThem) {
    for (const char* Sql : {
             "SELECT COUNT(*) FROM customers WHERE region_id IS NULL",
             "SELECT COUNT(*) FROM customers WHERE fax IS NULL",
             "SELECT COUNT(*) FROM customers WHERE contact_name IS NULL",
             "SELECT COUNT(*) FROM products WHERE supplier_id IS NULL",
             "SELECT COUNT(*) FROM orders WHERE shipped_date IS NULL",
             "SELECT COUNT(*) FROM orders WHERE employee_id IS NULL",
             "SELECT COUNT(*) FROM categories WHERE description IS NULL",
         }) {
        EXPECT_GT(Scalar(QString::fromLatin1(Sql)), 0) << Sql;
    }
    EXPECT_GT(Scalar(QStringLiteral("SELECT COUNT(*) FROM customers WHERE fax IS NOT NULL")), 0);
}

TEST_F(ZvSampleDatabaseTest, OrdersAreInDateOrderAndShippedAfterOrdering) {
    EXPECT_EQ(
        Scalar(QStringLiteral("SELECT COUNT(*) FROM orders a JOIN orders b ON b.order_id = a.order_id + 1"
                              " WHERE b.order_date < a.order_date")),
        0);
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM orders WHERE shipped_date <= order_date")), 0);
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM orders WHERE required_date <= order_date")), 0);
}

TEST_F(ZvSampleDatabaseTest, AJoinOverFiveTablesAgreesWithTheView) {
    // Revenue per category through the join equals the view's total amount, within rounding.
    const qlonglong JoinCents = Scalar(QStringLiteral(
        "SELECT CAST(ROUND(SUM(l.quantity * l.unit_price * (1 - l.discount)) * 100) AS INTEGER)"
        " FROM orders o JOIN customers c ON c.customer_id = o.customer_id"
        " JOIN order_lines l ON l.order_id = o.order_id JOIN products p ON p.product_id = l.product_id"
        " JOIN categories g ON g.category_id = p.category_id"));
    const qlonglong ViewCents =
        Scalar(QStringLiteral("SELECT CAST(ROUND(SUM(amount) * 100) AS INTEGER) FROM order_totals"));
    EXPECT_GT(JoinCents, 0);
    EXPECT_LE(std::llabs(JoinCents - ViewCents), 210); // at most half a cent of rounding per order
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM order_totals")), 420);
}

TEST_F(ZvSampleDatabaseTest, IsOpenedReadOnly) {
    QSqlQuery Query(Database);
    EXPECT_FALSE(Query.exec(QStringLiteral("DELETE FROM regions")));
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM regions")), 6);
}

} // namespace
} // namespace zv
