// Joins drawn between tables of a live database: for every foreign key of the bundled sample
// database, the two tables are laid out from the database's own field types, the key column's row
// is dropped on the referenced row, and the statement the model then writes runs on the database.
#include "ZvDiagramTestSupport.h"
#include "ZvFloatTable.h"
#include "ZvLinks.h"
#include "ZvSampleDatabase.h"
#include "ZvSqlMetadata.h"
#include "ZvTableDefs.h"

#include <QApplication>
#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

namespace zv {
namespace {

struct TZvForeignKey {
    QString Table;
    QString Column;
    QString Target;
    QString TargetColumn;
};

std::vector<TZvForeignKey> ForeignKeys(const QSqlDatabase& Database) {
    std::vector<TZvForeignKey> Keys;
    for (const QString& Table : Database.tables()) {
        QSqlQuery Query(Database);
        EXPECT_TRUE(Query.exec(QStringLiteral("PRAGMA foreign_key_list(%1)").arg(Table)));
        while (Query.next())
            Keys.push_back({Table, Query.value(QStringLiteral("from")).toString(),
                            Query.value(QStringLiteral("table")).toString(),
                            Query.value(QStringLiteral("to")).toString()});
    }
    return Keys;
}

class TZvLiveLinkTest : public ::testing::Test {
protected:
    void SetUp() override {
        Database = ZvOpenSampleDatabase(QStringLiteral("links-live"));
        ASSERT_TRUE(Database.isOpen()) << Database.lastError().text().toStdString();
    }
    void TearDown() override {
        Database.close();
        Database = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("links-live"));
    }

    // A table of the database on Host's surface at Point, tall enough to show every row.
    TZvTable* AddLive(TSQLZevrin& Host, const QString& Name, QPoint Point) {
        auto& DataSet = DataSets.emplace_back(std::make_unique<TZvSqlDataSet>(Database, Name));
        DataSet->Open();
        TZvTable* Table = Host.GetTables().AddTableAt(Name.toStdString(), "", DataSet.get(), Point);
        if (Table)
            Table->SetHeight(Table->GetCaptionHeight() +
                             (Table->ItemCount() + 1) * (Table->GetItemHeight() + 1) + 8);
        return Table;
    }

    QSqlDatabase Database;
    std::vector<std::unique_ptr<TZvSqlDataSet>> DataSets;
};

TEST_F(TZvLiveLinkTest, EveryForeignKeyOfTheSampleDatabaseIsDrawnAsAJoinThatRuns) {
    const std::vector<TZvForeignKey> Keys = ForeignKeys(Database);
    ASSERT_GE(Keys.size(), 5u);
    for (const TZvForeignKey& Key : Keys) {
        SCOPED_TRACE(
            (Key.Table + "." + Key.Column + " -> " + Key.Target + "." + Key.TargetColumn).toStdString());
        TSQLZevrin Host;
        Host.resize(1000, 900);
        Host.show();
        QApplication::processEvents();
        TZvTable* Child = AddLive(Host, Key.Table, QPoint(20, 10));
        TZvTable* Parent = AddLive(Host, Key.Target, QPoint(500, 10));
        ASSERT_TRUE(Child && Parent);
        TZvListItem* From = Child->GetFieldItem(Key.Column.toStdString());
        TZvListItem* To = Parent->GetFieldItem(Key.TargetColumn.toStdString());
        ASSERT_TRUE(From && To);
        TZvWorkArea& Area = *Host.GetWorkArea();
        TZvLink* Link = Area.HandleDragDrop(From, test::ViewportCenter(Area, Parent->GetItemRect(To)));
        ASSERT_NE(Link, nullptr) << "types " << int(From->GetFieldType()) << " and "
                                 << int(To->GetFieldType());
        EXPECT_EQ(Link->GetItem2(), To);
        From->SetCheck(true);
        const std::string Statement = Host.GetParser()->GetExpression();
        const std::string Target =
            Parent->GetName() + (Parent->GetAlias() != Parent->GetName() ? " " + Parent->GetAlias() : "");
        const std::string Join = "INNER JOIN " + Target + " ON (" + Child->GetAlias() + "." +
                                 Key.Column.toStdString() + " = " + Parent->GetAlias() + "." +
                                 Key.TargetColumn.toStdString() + ")";
        EXPECT_NE(Statement.find(Join), std::string::npos) << Statement;
        QSqlQuery Query(Database);
        ASSERT_TRUE(Query.exec(QString::fromStdString(Statement)))
            << Query.lastError().text().toStdString() << "\n"
            << Statement;
        EXPECT_TRUE(Query.next()) << Statement;
    }
}

} // namespace
} // namespace zv
