// Tables of the FROM list and the statement-wide bookkeeping: positions in the SELECT list,
// unique aliases, renames and deletions with the repair of what refers to them, moving
// unqualified columns into their table, and stored-procedure parameter lists.
#include <gtest/gtest.h>

#include "ZvParser.h"
#include "ZvUtils.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

using namespace zv;

namespace {

// A parser with helpers to build a model in code.
struct TModel {
    TZvSelectParser Parser;
    TZvTableDefs& Tables = Parser.GetTableDefs();

    TZvTableDef* Table(const std::string& Name, const std::string& Alias = "") {
        TZvTableDef* T = Tables.Add();
        T->SetName(Name);
        if (!Alias.empty())
            T->SetAlias(Alias);
        return T;
    }
    // A plain column: its alias equals its name, as when it is ticked in the diagram.
    static TZvFieldDef* Column(TZvTableDef* T, const std::string& Name) {
        TZvFieldDef* F = T->GetFieldDefs().Add();
        F->SetName(Name);
        F->SetKind(fkIdentifier);
        F->SetAlias(Name);
        return F;
    }
    static TZvFieldDef* Expression(TZvTableDef* T, const std::string& Text) {
        TZvFieldDef* F = T->GetFieldDefs().Add();
        F->SetName(Text);
        F->SetKind(fkExpression);
        return F;
    }
    // The scripts of the fields in SELECT-list order.
    std::vector<std::string> SelectList() const {
        std::vector<std::string> R;
        for (int I = 0; I < Tables.GetFieldCount(); ++I)
            R.push_back(Tables.GetFieldDefs(I)->GetScript());
        return R;
    }
    std::vector<std::string> OrderBy() {
        std::vector<std::string> R;
        for (int I = 0; I < Parser.GetOrderByItems().Count(); ++I)
            R.push_back(Parser.GetOrderByItems()[I]);
        return R;
    }
    // Every field's AbsIndex names its own slot, and the slots are 0 .. count - 1.
    void ExpectDensePositions() const {
        std::vector<int> Seen;
        for (int T = 0; T < Tables.Count(); ++T) {
            const TZvFieldDefs& Fields = Tables.Items(T)->GetFieldDefs();
            for (int F = 0; F < Fields.Count(); ++F) {
                Seen.push_back(Fields.Items(F)->GetAbsIndex());
                EXPECT_EQ(Tables.GetFieldDefs(Fields.Items(F)->GetAbsIndex()), Fields.Items(F));
            }
        }
        std::sort(Seen.begin(), Seen.end());
        ASSERT_EQ(static_cast<int>(Seen.size()), Tables.GetFieldCount());
        for (int I = 0; I < static_cast<int>(Seen.size()); ++I)
            EXPECT_EQ(Seen[static_cast<std::size_t>(I)], I);
    }
};

TZvJoinDef* Join(TZvTableDef* From, const std::string& Left, const std::string& Target,
                 const std::string& Right) {
    TZvJoinDef* J = From->GetJoinDefs().Add();
    J->SetLeftField(Left);
    J->SetTableAlias(Target);
    J->SetRightField(Right);
    return J;
}

TZvFieldDef* Param(TZvTableDef* Proc, const std::string& Name, TFieldType Type, TZvValue Value) {
    TZvFieldDef* F = Proc->GetFieldDefs().Add();
    F->SetName(Name);
    F->SetKind(fkIdentifier);
    F->SetUsage(1);
    F->SetDataType(Type);
    F->SetValue(std::move(Value));
    return F;
}

} // namespace

// ---- Positions ------------------------------------------------------------------------------

TEST(TZvTableDefs, NewFieldsGoToTheEndOfTheSelectListWhateverTheirTable) {
    TModel M;
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    M.Column(A, "X");
    M.Column(B, "Y");
    M.Column(A, "Z");
    EXPECT_EQ(M.Tables.GetFieldCount(), 3);
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"A.X", "B.Y", "A.Z"}));
    EXPECT_EQ(M.Tables.GetFieldDefs(3), nullptr);
    EXPECT_EQ(M.Tables.GetFieldDefs(-1), nullptr);
    M.ExpectDensePositions();
}

TEST(TZvTableDefs, MovingAFieldFromFirstToLastShiftsTheOthersUp) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    TZvFieldDef* F0 = M.Column(T, "F0");
    TZvFieldDef* F1 = M.Column(T, "F1");
    TZvFieldDef* F2 = M.Column(T, "F2");
    F0->SetAbsIndex(2);
    EXPECT_EQ(F1->GetAbsIndex(), 0);
    EXPECT_EQ(F2->GetAbsIndex(), 1);
    EXPECT_EQ(F0->GetAbsIndex(), 2);
    F0->SetAbsIndex(0);
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"T.F0", "T.F1", "T.F2"}));
    M.ExpectDensePositions();
}

TEST(TZvTableDefs, APositionOutsideTheListIsIgnored) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    TZvFieldDef* F0 = M.Column(T, "F0");
    M.Column(T, "F1");
    F0->SetAbsIndex(2);
    F0->SetAbsIndex(-1);
    EXPECT_EQ(F0->GetAbsIndex(), 0);
    M.ExpectDensePositions();
}

TEST(TZvTableDefs, DeletingAFieldClosesTheGapAcrossAllTables) {
    TModel M;
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    M.Column(A, "X");
    M.Column(B, "Y");
    M.Column(A, "Z");
    M.Column(B, "W");
    A->GetFieldDefs().Delete(0);
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"B.Y", "A.Z", "B.W"}));
    M.ExpectDensePositions();
}

TEST(TZvTableDefs, PositionsStayDenseAndInOrderThroughMixedInsertsMovesAndDeletes) {
    // A reference list of names is edited alongside the model; both must agree at every step.
    TModel M;
    std::vector<TZvTableDef*> Tables = {M.Table("A"), M.Table("B"), M.Table("C")};
    std::vector<std::string> Expected;
    unsigned Seed = 12345;
    auto Next = [&Seed](unsigned Range) {
        Seed = Seed * 1103515245u + 12345u;
        return (Seed >> 16) % Range;
    };
    int Made = 0;
    for (int Step = 0; Step < 400; ++Step) {
        const unsigned Action = Next(4);
        if (Action <= 1 || Expected.empty()) {
            TZvTableDef* T = Tables[Next(3)];
            const int At = static_cast<int>(Next(static_cast<unsigned>(T->GetFieldDefs().Count()) + 1));
            TZvFieldDef* F = T->GetFieldDefs().Insert(At);
            F->SetName("F" + std::to_string(Made++));
            F->SetKind(fkIdentifier);
            Expected.push_back(F->GetScript());
        } else if (Action == 2) {
            const auto From = Next(static_cast<unsigned>(Expected.size()));
            const auto To = Next(static_cast<unsigned>(Expected.size()));
            M.Tables.GetFieldDefs(static_cast<int>(From))->SetAbsIndex(static_cast<int>(To));
            const std::string Moved = Expected[From];
            Expected.erase(Expected.begin() + From);
            Expected.insert(Expected.begin() + To, Moved);
        } else {
            const auto At = Next(static_cast<unsigned>(Expected.size()));
            TZvFieldDef* F = M.Tables.GetFieldDefs(static_cast<int>(At));
            F->GetCollection()->Delete(F->GetIndex());
            Expected.erase(Expected.begin() + At);
        }
        ASSERT_EQ(M.SelectList(), Expected) << "step " << Step;
    }
    M.ExpectDensePositions();
}

TEST(TZvFieldDefs, ClearingTheFieldsOfOneTableKeepsTheOtherTablesPositionsDense) {
    TModel M;
    TZvTableDef* A = M.Table("A");
    TZvTableDef* B = M.Table("B");
    M.Column(A, "X");
    M.Column(B, "Y");
    M.Column(A, "Z");
    M.Column(B, "W");
    M.Parser.GetOrderByItems().Add("Z");
    M.Parser.GetOrderByItems().Add("W");
    A->GetFieldDefs().Clear();
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"B.Y", "B.W"}));
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"W"}));
    M.ExpectDensePositions();
}

TEST(TZvFieldDef, DeletingAFieldDropsTheOrderByEntryThatNamesItsAlias) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    M.Column(T, "A");
    TZvFieldDef* Total = M.Expression(T, "X + Y");
    M.Parser.GetOrderByItems().Add("T.A");
    M.Parser.GetOrderByItems().Add("field_1");
    M.Parser.GetOrderByItems().Add("B");
    T->GetFieldDefs().Remove(Total);
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"T.A", "B"}));
}

// ---- Aliases --------------------------------------------------------------------------------

TEST(TZvTableDefs, TheSameColumnSelectedTwiceGetsANumberedAliasAtEndUpdate) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    M.Tables.BeginUpdate();
    TZvFieldDef* First = M.Column(T, "ID");
    TZvFieldDef* Second = M.Column(T, "ID");
    EXPECT_EQ(Second->GetAlias(), "ID");
    M.Tables.EndUpdate();
    EXPECT_EQ(First->GetAlias(), "ID");
    EXPECT_EQ(Second->GetAlias(), "ID1");
    EXPECT_EQ(Second->GetScript(), "T.ID AS ID1");
}

TEST(TZvTableDefs, TheNumberedAliasSkipsAliasesTakenInOtherTables) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    TZvTableDef* U = M.Table("U");
    M.Column(U, "X")->SetAlias("id1");
    M.Column(U, "Y")->SetAlias("ID2");
    M.Tables.BeginUpdate();
    M.Column(T, "ID");
    TZvFieldDef* Second = M.Column(T, "ID");
    M.Tables.EndUpdate();
    EXPECT_EQ(Second->GetAlias(), "ID3");
}

TEST(TZvTableDefs, OnlyTheOutermostEndUpdateRepairsAliases) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    M.Tables.BeginUpdate();
    M.Tables.BeginUpdate();
    M.Column(T, "ID");
    TZvFieldDef* Second = M.Column(T, "ID");
    M.Tables.EndUpdate();
    EXPECT_EQ(Second->GetAlias(), "ID");
    M.Tables.EndUpdate();
    EXPECT_EQ(Second->GetAlias(), "ID1");
}

TEST(TZvTableDefs, AComputedFieldNamedLikeAnotherFieldsAliasGetsAFieldAlias) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    M.Column(T, "TOTAL");
    TZvFieldDef* Computed = T->GetFieldDefs().Add();
    Computed->SetName("TOTAL");
    Computed->SetKind(fkUnknown);
    Computed->SetAlias("TOTAL");
    M.Tables.EndUpdate();
    EXPECT_EQ(Computed->GetAlias(), "FIELD_1");
}

TEST(TZvTableDefs, ColumnsOfDifferentTablesMayShareAName) {
    TModel M;
    TZvFieldDef* A = M.Column(M.Table("A"), "ID");
    TZvFieldDef* B = M.Column(M.Table("B"), "ID");
    M.Tables.EndUpdate();
    EXPECT_EQ(A->GetAlias(), "ID");
    EXPECT_EQ(B->GetAlias(), "ID");
}

TEST(TZvTableDefs, UniqueAliasSkipsAliasesOfEveryTable) {
    TModel M;
    EXPECT_EQ(M.Tables.GetUniqueAlias("FIELD_", true), "FIELD_1");
    EXPECT_EQ(M.Tables.GetUniqueAlias("ID", false), "ID");
    M.Column(M.Table("A"), "X")->SetAlias("FIELD_1");
    M.Column(M.Table("B"), "Y")->SetAlias("ID");
    EXPECT_EQ(M.Tables.GetUniqueAlias("FIELD_", true), "FIELD_2");
    EXPECT_EQ(M.Tables.GetUniqueAlias("ID", false), "ID1");
    EXPECT_EQ(M.Tables.GetUniqueAlias("id", false), "id1");
}

TEST(TZvTableDefs, UniqueAliasComparesWithRegardToCaseWhenTheParserSaysSo) {
    TModel M;
    M.Column(M.Table("A"), "ID");
    EXPECT_EQ(M.Tables.GetUniqueAlias("id", false), "id1");
    M.Parser.SetCaseSensitiveIdentifiers(true);
    EXPECT_EQ(M.Tables.GetUniqueAlias("id", false), "id");
    EXPECT_EQ(M.Tables.GetUniqueAlias("ID", false), "ID1");
}

TEST(TZvTableDefs, UniqueAliasFollowsRenamesAndDeletionsOfAliases) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    TZvFieldDef* F = M.Column(T, "A");
    F->SetAlias("FIELD_1");
    EXPECT_EQ(M.Tables.GetUniqueAlias("FIELD_", true), "FIELD_2");
    F->SetAlias("OTHER");
    EXPECT_EQ(M.Tables.GetUniqueAlias("FIELD_", true), "FIELD_1");
    F->SetAlias("FIELD_1");
    T->GetFieldDefs().Delete(0);
    EXPECT_EQ(M.Tables.GetUniqueAlias("FIELD_", true), "FIELD_1");
}

TEST(TZvTableDefs, ComputedFieldsOfAStatementGetConsecutiveFieldAliases) {
    TModel M;
    TZvTableDef* Holder = M.Table("");
    EXPECT_EQ(M.Expression(Holder, "1 + 2")->GetAlias(), "FIELD_1");
    EXPECT_EQ(M.Expression(M.Table("T"), "T.A * 2")->GetAlias(), "FIELD_2");
    EXPECT_EQ(M.Expression(Holder, "3")->GetAlias(), "FIELD_3");
}

namespace {
struct TLowerCaseAliasParser : TZvSelectParser {
    bool IsLowerCaseAliases() override { return true; }
};
} // namespace

TEST(TZvTableDefs, LowerCaseAliasDialectsGetLowerCaseGeneratedAliases) {
    TLowerCaseAliasParser Parser;
    EXPECT_EQ(Parser.GetTableDefs().GetUniqueAlias("FIELD_", true), "field_1");
    EXPECT_EQ(Parser.GetTableDefs().GetUniqueAlias("Id", false), "id");
}

// ---- Names and aliases of tables -------------------------------------------------------------

TEST(TZvTableDef, SetNameMovesAnAliasThatEqualsTheOldName) {
    TModel M;
    TZvTableDef* T = M.Table("ORDERS");
    EXPECT_EQ(T->GetAlias(), "ORDERS");
    T->SetName("ORDERS2");
    EXPECT_EQ(T->GetAlias(), "ORDERS2");
    T->SetAlias("O");
    T->SetName("ORDERS3");
    EXPECT_EQ(T->GetAlias(), "O");
    EXPECT_EQ(T->GetName(), "ORDERS3");
}

TEST(TZvTableDef, SetNameComparesExactly) {
    TModel M;
    TZvTableDef* T = M.Table("orders");
    T->SetAlias("Orders");
    T->SetName("ORDERS");
    EXPECT_EQ(T->GetAlias(), "Orders");
    EXPECT_EQ(T->GetName(), "ORDERS");
}

TEST(TZvTableDef, SetNameCarriesReferencesAlongWithTheAlias) {
    TModel M;
    TZvTableDef* Orders = M.Table("ORDERS");
    TZvTableDef* Customers = M.Table("CUSTOMERS", "C");
    Join(Customers, "ID", "ORDERS", "CUST_ID");
    M.Parser.GetOrderByItems().Add("ORDERS.ID");
    Orders->SetName("SALES");
    EXPECT_EQ(Customers->GetJoinDefs().Items(0)->GetTableAlias(), "SALES");
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"SALES.ID"}));
}

TEST(TZvTableDef, RenamingAnAliasRewritesOrderByEntriesQualifiedByIt) {
    TModel M;
    TZvTableDef* A = M.Table("T1", "A");
    M.Table("T3", "C");
    for (const char* Entry : {"A.NAME", "C.NAME", "a.NAME", "NAME", "A.", "AA.NAME"})
        M.Parser.GetOrderByItems().Add(Entry);
    A->SetAlias("B");
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"B.NAME", "C.NAME", "B.NAME", "NAME", "A.", "AA.NAME"}));
    EXPECT_EQ(A->GetAlias(), "B");
}

TEST(TZvTableDef, WithCaseSensitiveIdentifiersOnlyTheExactAliasIsRewritten) {
    TModel M;
    M.Parser.SetCaseSensitiveIdentifiers(true);
    TZvTableDef* A = M.Table("T1", "A");
    M.Parser.GetOrderByItems().Add("A.NAME");
    M.Parser.GetOrderByItems().Add("a.NAME");
    A->SetAlias("B");
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"B.NAME", "a.NAME"}));
}

TEST(TZvTableDef, AnEntryOfAnotherTableWithTheSameSpellingStays) {
    // Two tables whose aliases differ only in case, in a case-insensitive dialect: an entry that
    // matches the other table is that table's, and renaming this one leaves it alone.
    TModel M;
    TZvTableDef* A = M.Table("T1", "A");
    M.Table("T2", "a");
    M.Parser.GetOrderByItems().Add("A.NAME");
    A->SetAlias("B");
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"A.NAME"}));
}

TEST(TZvTableDef, TheNewAliasIsWrittenAsAnAliasInTheOrderBy) {
    TModel M;
    M.Parser.GetScanner().ProcessAliases = true;
    TZvTableDef* A = M.Table("T1", "A");
    M.Parser.GetOrderByItems().AddOrdered("A.NAME", okDesc);
    A->SetAlias("my alias");
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"\"my alias\".NAME"}));
    EXPECT_EQ(M.Parser.GetOrderByItems().GetOrders(0), okDesc);
}

TEST(TZvTableDef, RenamingAnAliasRepointsTheJoinsAimedAtIt) {
    TModel M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    TZvTableDef* C = M.Table("CUSTOMERS", "C");
    TZvTableDef* R = M.Table("REGIONS", "R");
    Join(O, "CUST_ID", "C", "ID");
    Join(R, "ID", "c", "REGION_ID");
    Join(O, "REGION", "R", "ID");
    C->SetAlias("CU");
    EXPECT_EQ(O->GetJoinDefs().Items(0)->GetTableAlias(), "CU");
    EXPECT_EQ(R->GetJoinDefs().Items(0)->GetTableAlias(), "CU");
    EXPECT_EQ(O->GetJoinDefs().Items(1)->GetTableAlias(), "R");
    EXPECT_TRUE(M.Tables.IsTableJoined(C));
}

TEST(TZvTableDef, EmptyNameMeansBlankNameAndAlias) {
    TZvTableDef T;
    EXPECT_TRUE(T.IsEmptyName());
    T.SetName("  ");
    EXPECT_TRUE(T.IsEmptyName());
    T.SetAlias("X");
    EXPECT_FALSE(T.IsEmptyName());
}

TEST(TZvTableDefs, FindByAliasAndNameReturnTheFirstMatchThroughSameIdentifier) {
    TModel M;
    TZvTableDef* A = M.Table("ORDERS", "O");
    TZvTableDef* B = M.Table("orders", "o");
    EXPECT_EQ(M.Tables.FindByAlias("o"), A);
    EXPECT_EQ(M.Tables.FindByName("Orders"), A);
    EXPECT_EQ(M.Tables.FindByAlias("X"), nullptr);
    M.Parser.SetCaseSensitiveIdentifiers(true);
    EXPECT_EQ(M.Tables.FindByAlias("o"), B);
    EXPECT_EQ(M.Tables.FindByName("Orders"), nullptr);
}

TEST(TZvTableDefs, FindByAliasComparesWholeKeysAndOnlyLettersWithoutCase) {
    // Keys of one length that differ in their first byte only by the bit that tells ASCII case
    // apart are the same key only where both bytes are letters: "@" and "`" stay different, as do
    // "[" and "{".
    TModel M;
    TZvTableDef* At = M.Table("T1", "@x");
    TZvTableDef* Tick = M.Table("T2", "`x");
    TZvTableDef* Upper = M.Table("T3", "Qa");
    TZvTableDef* Bracket = M.Table("T4", "[b]");
    TZvTableDef* Blank = M.Tables.Add();
    Blank->Define("", "T5", qttTable);
    struct TLookUp {
        const char* Key;
        bool CaseSensitive;
        TZvTableDef* Found;
    };
    const std::vector<TLookUp> LookUps = {
        {"`x", false, Tick},   {"@x", false, At},       {"qA", false, Upper},    {"{b]", false, nullptr},
        {"[b]", false, Bracket}, {"@X", false, At},     {"Q", false, nullptr},   {"Qab", false, nullptr},
        // The empty alias of a table defined without one is a key like any other.
        {"", false, Blank},    {"qA", true, nullptr},   {"Qa", true, Upper},     {"@X", true, nullptr},
    };
    for (const TLookUp& L : LookUps) {
        M.Parser.SetCaseSensitiveIdentifiers(L.CaseSensitive);
        EXPECT_EQ(M.Tables.FindByAlias(L.Key), L.Found) << '"' << L.Key << "\" case sensitive " << L.CaseSensitive;
    }
    M.Parser.SetCaseSensitiveIdentifiers(false);
    EXPECT_EQ(M.Tables.FindByName("t5"), Blank);
}

TEST(TZvTableDefs, WritingTheStatementMakesNoJoinOrFieldListForATableWithoutThem) {
    TModel M;
    TZvTableDef* Orders = M.Table("ORDERS", "O");
    TZvTableDef* Items = M.Table("ITEMS", "I");
    TZvTableDef* Notes = M.Table("NOTES", "N");
    TModel::Column(Orders, "ID");
    TModel::Column(Items, "QTY");
    for (auto [Alias, Column] : {std::pair{"I", "ORDER_ID"}, std::pair{"N", "REF"}}) {
        TZvJoinDef* Join = Orders->GetJoinDefs().Add();
        Join->SetLeftField("ID");
        Join->SetTableAlias(Alias);
        Join->SetRightField(Column);
    }
    const std::string Script = M.Parser.GetExpression();
    EXPECT_NE(Script.find("INNER JOIN ITEMS I ON (O.ID = I.ORDER_ID)"), std::string::npos) << Script;
    EXPECT_NE(Script.find("INNER JOIN NOTES N ON (O.ID = N.REF)"), std::string::npos) << Script;
    EXPECT_EQ(Items->FindJoinDefs(), nullptr);
    EXPECT_EQ(Notes->FindFieldDefs(), nullptr);
    ASSERT_NE(Orders->FindJoinDefs(), nullptr);
    // Asking which tables are joined, by a walk over a few tables and through the join index
    // over many, reads the joins that exist and makes no list either.
    EXPECT_TRUE(M.Tables.IsTableJoined(Items));
    EXPECT_FALSE(M.Tables.IsTableJoined(Orders));
    for (int T = 0; T < 20; ++T)
        M.Table("EXTRA" + std::to_string(T), "E" + std::to_string(T));
    EXPECT_TRUE(M.Tables.IsTableJoined(Items));
    EXPECT_FALSE(M.Tables.IsTableJoined(Orders));
    EXPECT_FALSE(M.Tables.IsTableJoined(M.Tables.Items(5)));
    for (int T = 1; T < M.Tables.Count(); ++T)
        EXPECT_EQ(M.Tables.Items(T)->FindJoinDefs(), nullptr) << T;
}

TEST(TZvTableDefs, FindByAliasAndNameFollowRenamesRemovalsAndInsertions) {
    TModel M;
    TZvTableDef* A = M.Table("ORDERS", "O");
    TZvTableDef* B = M.Table("ITEMS", "O");
    EXPECT_EQ(M.Tables.FindByAlias("o"), A);
    // The first table with an alias gives it up: the next one with it is found.
    A->SetAlias("A");
    EXPECT_EQ(M.Tables.FindByAlias("O"), B);
    EXPECT_EQ(M.Tables.FindByAlias("a"), A);
    // Taking an alias that a later table carries makes the earlier table the one found.
    A->SetAlias("O");
    EXPECT_EQ(M.Tables.FindByAlias("O"), A);
    EXPECT_EQ(M.Tables.FindByAlias("A"), nullptr);
    B->SetName("orders");
    EXPECT_EQ(M.Tables.FindByName("ITEMS"), nullptr);
    EXPECT_EQ(M.Tables.FindByName("Orders"), A);
    M.Tables.Remove(A);
    EXPECT_EQ(M.Tables.FindByAlias("O"), B);
    EXPECT_EQ(M.Tables.FindByName("ORDERS"), B);
    TZvTableDef* C = M.Tables.Insert(0);
    C->SetName("CUSTOMERS");
    C->SetAlias("O");
    EXPECT_EQ(M.Tables.FindByAlias("O"), C);
    EXPECT_EQ(M.Tables.FindByName("customers"), C);
    TZvTableDef* D = M.Table("LINES");
    D->Assign(*C);
    EXPECT_EQ(M.Tables.FindByName("LINES"), nullptr);
    EXPECT_EQ(M.Tables.FindByName("CUSTOMERS"), C);
    M.Tables.Remove(C);
    EXPECT_EQ(M.Tables.FindByName("CUSTOMERS"), D);
    M.Tables.Clear();
    EXPECT_EQ(M.Tables.FindByAlias("O"), nullptr);
    EXPECT_EQ(M.Tables.FindByName(""), nullptr);
}

TEST(TZvTableDefs, ManyTablesAreFoundByAliasAndNameThroughRenamesRemovalsAndInsertions) {
    TModel M;
    std::vector<TZvTableDef*> T;
    for (int I = 0; I < 12; ++I)
        T.push_back(M.Table("T" + std::to_string(I), "A" + std::to_string(I)));
    TZvTableDef* Twin = M.Table("t3", "a3");
    EXPECT_EQ(M.Tables.FindByAlias("a3"), T[3]);
    EXPECT_EQ(M.Tables.FindByName("t11"), T[11]);
    EXPECT_EQ(M.Tables.FindByAlias("A12"), nullptr);
    T[3]->SetAlias("THREE");
    EXPECT_EQ(M.Tables.FindByAlias("A3"), Twin);
    EXPECT_EQ(M.Tables.FindByAlias("three"), T[3]);
    T[3]->SetName("X");
    EXPECT_EQ(M.Tables.FindByName("T3"), Twin);
    M.Tables.Remove(T[0]);
    EXPECT_EQ(M.Tables.FindByAlias("A0"), nullptr);
    EXPECT_EQ(M.Tables.FindByAlias("A1"), T[1]);
    TZvTableDef* First = M.Tables.Insert(0);
    First->SetName("T5");
    EXPECT_EQ(M.Tables.FindByName("t5"), First);
    M.Parser.SetCaseSensitiveIdentifiers(true);
    EXPECT_EQ(M.Tables.FindByAlias("a3"), Twin);
    EXPECT_EQ(M.Tables.FindByName("t5"), nullptr);
    EXPECT_EQ(M.Tables.FindByName("T5"), First);
}

// ---- Joins kept in step -----------------------------------------------------------------------

TEST(TZvTableDefs, IsTableJoinedLooksAtTheJoinsOfEveryTable) {
    TModel M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    TZvTableDef* C = M.Table("CUSTOMERS", "C");
    EXPECT_FALSE(M.Tables.IsTableJoined(C));
    EXPECT_FALSE(M.Tables.IsTableJoined(nullptr));
    Join(O, "CUST_ID", "c", "ID");
    EXPECT_TRUE(M.Tables.IsTableJoined(C));
    EXPECT_FALSE(M.Tables.IsTableJoined(O));
}

TEST(TZvTableDefs, JoinOfATableToItselfLeavesItUnjoinedAndInTheFromList) {
    // A table is in another's join chain only when another table joins it; a join it holds to
    // itself must not make it vanish from FROM.
    TModel M;
    TZvTableDef* C = M.Table("CUSTOMERS", "C");
    TZvTableDef* O = M.Table("ORDERS", "O");
    TModel::Column(C, "NAME");
    Join(C, "ID", "c", "ID");
    EXPECT_FALSE(M.Tables.IsTableJoined(C));
    EXPECT_FALSE(M.Tables.IsTableJoined(O));
    const std::string Script = M.Tables.GetScript();
    EXPECT_NE(Script.find("\r\n  CUSTOMERS C"), std::string::npos) << Script;
    EXPECT_NE(Script.find("\r\n  ORDERS O"), std::string::npos) << Script;
    Join(O, "CUST_ID", "C", "ID");
    EXPECT_TRUE(M.Tables.IsTableJoined(C));
    EXPECT_FALSE(M.Tables.IsTableJoined(O));
}

TEST(TZvTableDefs, UpdateJoinsDropsJoinsWhoseTargetIsFoundNeitherByAliasNorByName) {
    TModel M;
    TZvTableDef* O = M.Table("ORDERS", "O");
    M.Table("CUSTOMERS", "C");
    Join(O, "A", "C", "ID");
    Join(O, "B", "GONE", "ID");
    Join(O, "C", "CUSTOMERS", "ID");
    Join(O, "D", "GONE2", "ID");
    M.Tables.UpdateJoins();
    ASSERT_EQ(O->GetJoinDefs().Count(), 2);
    EXPECT_EQ(O->GetJoinDefs().Items(0)->GetLeftField(), "A");
    EXPECT_EQ(O->GetJoinDefs().Items(1)->GetLeftField(), "C");
}

namespace {

// A statement of more tables than are walked for their joins: N tables T0..T(N-1) with aliases
// A0..A(N-1), each table after the first joined from the one before it.
std::vector<TZvTableDef*> JoinedChain(TModel& M, int N) {
    std::vector<TZvTableDef*> Tables;
    for (int I = 0; I < N; ++I) {
        Tables.push_back(M.Table("T" + std::to_string(I), "A" + std::to_string(I)));
        if (I > 0)
            Join(Tables[static_cast<std::size_t>(I - 1)], "ID", "A" + std::to_string(I), "PARENT_ID");
    }
    return Tables;
}

// IsTableJoined as a walk over every join, the rule the index must agree with: a join held by
// another table names the table as its target.
bool JoinedByWalk(const TZvTableDefs& Tables, const TZvTableDef* Table, bool CaseSensitive) {
    const auto Same = [CaseSensitive](const std::string& A, const std::string& B) {
        return CaseSensitive ? A == B : SameText(A, B);
    };
    for (int T = 0; T < Tables.Count(); ++T) {
        const TZvJoinDefs& Joins = Tables.Items(T)->GetJoinDefs();
        for (int J = 0; J < Joins.Count(); ++J) {
            const std::string& Target = Joins.Items(J)->GetTableAlias();
            if (Same(Target, Table->GetAlias()) && !Same(Target, Tables.Items(T)->GetAlias()))
                return true;
        }
    }
    return false;
}

} // namespace

TEST(TZvTableDefs, ManyTablesAreJoinedAndRepointedLikeFew) {
    TModel M;
    const std::vector<TZvTableDef*> T = JoinedChain(M, 40);
    EXPECT_FALSE(M.Tables.IsTableJoined(T[0]));
    for (std::size_t I = 1; I < T.size(); ++I)
        EXPECT_TRUE(M.Tables.IsTableJoined(T[I])) << I;
    // A join naming the target in another case counts where names compare without case.
    Join(T[5], "X", "a0", "Y");
    EXPECT_TRUE(M.Tables.IsTableJoined(T[0]));
    T[0]->SetAlias("FIRST");
    EXPECT_EQ(T[5]->GetJoinDefs().Items(1)->GetTableAlias(), "FIRST");
    EXPECT_TRUE(M.Tables.IsTableJoined(T[0]));
    T[20]->SetAlias("MIDDLE");
    EXPECT_EQ(T[19]->GetJoinDefs().Items(0)->GetTableAlias(), "MIDDLE");
    EXPECT_TRUE(M.Tables.IsTableJoined(T[20]));
    // The old alias names nothing any more: a table taking it is not joined.
    T[30]->SetAlias("A20x");
    TZvTableDef* Newcomer = M.Table("NEW", "A20");
    EXPECT_FALSE(M.Tables.IsTableJoined(Newcomer));
    M.Parser.SetCaseSensitiveIdentifiers(true);
    T[5]->GetJoinDefs().Items(1)->SetTableAlias("first");
    EXPECT_FALSE(M.Tables.IsTableJoined(T[0]));
    M.Parser.SetCaseSensitiveIdentifiers(false);
    EXPECT_TRUE(M.Tables.IsTableJoined(T[0]));
}

TEST(TZvTableDefs, ManyTablesFollowJoinsThatGoWithTheirListsAndTables) {
    TModel M;
    const std::vector<TZvTableDef*> T = JoinedChain(M, 30);
    ASSERT_TRUE(M.Tables.IsTableJoined(T[10]));
    T[9]->GetJoinDefs().Delete(0);
    EXPECT_FALSE(M.Tables.IsTableJoined(T[10]));
    Join(T[3], "ID", "A10", "ID");
    EXPECT_TRUE(M.Tables.IsTableJoined(T[10]));
    T[3]->GetJoinDefs().Clear();
    EXPECT_FALSE(M.Tables.IsTableJoined(T[10]));
    // A copied join list files its joins under their targets too.
    T[3]->GetJoinDefs().Assign(T[11]->GetJoinDefs());
    ASSERT_EQ(T[3]->GetJoinDefs().Count(), 1);
    EXPECT_EQ(T[3]->GetJoinDefs().Items(0)->GetTableAlias(), "A12");
    T[12]->SetAlias("TWELVE");
    EXPECT_EQ(T[3]->GetJoinDefs().Items(0)->GetTableAlias(), "TWELVE");
    EXPECT_EQ(T[11]->GetJoinDefs().Items(0)->GetTableAlias(), "TWELVE");
    // A table that goes takes its joins along: what only it joined is joined no more.
    M.Tables.Remove(T[14]);
    EXPECT_FALSE(M.Tables.IsTableJoined(T[15]));
    EXPECT_TRUE(M.Tables.IsTableJoined(T[16]));
    M.Tables.Clear();
    TZvTableDef* Alone = M.Table("T", "A16");
    EXPECT_FALSE(M.Tables.IsTableJoined(Alone));
}

TEST(TZvTableDefs, ManyTablesAgreeWithAWalkOverEveryJoinThroughRandomEdits) {
    TModel M;
    std::vector<TZvTableDef*> T = JoinedChain(M, 24);
    std::uint32_t Seed = 7;
    auto Next = [&Seed](std::uint32_t Bound) {
        Seed = Seed * 1664525u + 1013904223u;
        return (Seed >> 8) % Bound;
    };
    const std::string Names[] = {"A1", "a1", "A2", "X", "x", "A7", "A23", "B"};
    for (int Step = 0; Step < 600; ++Step) {
        TZvTableDef* Table = T[Next(static_cast<std::uint32_t>(T.size()))];
        const std::string& Name = Names[Next(8)];
        switch (Next(6)) {
        case 0:
            Table->SetAlias(Name);
            break;
        case 1:
            Join(Table, "ID", Name, "ID");
            break;
        case 2:
            if (Table->GetJoinDefs().Count() > 0)
                Table->GetJoinDefs().Delete(static_cast<int>(Next(static_cast<std::uint32_t>(Table->GetJoinDefs().Count()))));
            break;
        case 3:
            if (Table->GetJoinDefs().Count() > 0)
                Table->GetJoinDefs().Items(0)->SetTableAlias(Name);
            break;
        case 4:
            M.Parser.SetCaseSensitiveIdentifiers(Next(2) == 0);
            break;
        default:
            if (T.size() > 18) {
                const auto At = static_cast<std::ptrdiff_t>(Next(static_cast<std::uint32_t>(T.size())));
                M.Tables.Remove(T[static_cast<std::size_t>(At)]);
                T.erase(T.begin() + At);
            }
            T.push_back(M.Table("N" + std::to_string(Step), Name));
        }
        const bool Exact = M.Parser.GetCaseSensitiveIdentifiers();
        for (const TZvTableDef* Each : T)
            ASSERT_EQ(M.Tables.IsTableJoined(Each), JoinedByWalk(M.Tables, Each, Exact))
                << "step " << Step << ", table " << Each->GetName();
    }
}

// ---- Where joins lead ---------------------------------------------------------------------------

namespace {

// JoinsLeadTo as a plain walk from From along the joins, the rule the two-sided search must agree
// with: a join leads to the table FindByAlias finds for its target.
bool LeadsByWalk(const TZvTableDefs& Tables, const TZvTableDef* From, const TZvTableDef* To) {
    std::vector<const TZvTableDef*> Pending{From};
    std::vector<const TZvTableDef*> Seen{From};
    while (!Pending.empty()) {
        const TZvJoinDefs& Joins = Pending.back()->GetJoinDefs();
        Pending.pop_back();
        for (int J = 0; J < Joins.Count(); ++J) {
            const TZvTableDef* Target = Tables.FindByAlias(Joins.Items(J)->GetTableAlias());
            if (Target == To)
                return true;
            if (Target != nullptr && std::find(Seen.begin(), Seen.end(), Target) == Seen.end()) {
                Seen.push_back(Target);
                Pending.push_back(Target);
            }
        }
    }
    return false;
}

} // namespace

TEST(TZvTableDefs, JoinsLeadAlongTheirDirectionOnly) {
    for (const int N : {4, 40}) {
        SCOPED_TRACE(N);
        TModel M;
        const std::vector<TZvTableDef*> T = JoinedChain(M, N);
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*T[0], *T[1]));
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*T[0], *T[static_cast<std::size_t>(N - 1)]));
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*T[1], *T[static_cast<std::size_t>(N - 1)]));
        EXPECT_FALSE(M.Tables.JoinsLeadTo(*T[static_cast<std::size_t>(N - 1)], *T[0]));
        EXPECT_FALSE(M.Tables.JoinsLeadTo(*T[2], *T[1]));
        // A table without joins leads nowhere; a break in the chain ends the way.
        TZvTableDef* Alone = M.Table("ALONE", "Z");
        EXPECT_FALSE(M.Tables.JoinsLeadTo(*Alone, *T[0]));
        EXPECT_FALSE(M.Tables.JoinsLeadTo(*T[0], *Alone));
        T[1]->GetJoinDefs().Clear();
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*T[0], *T[1]));
        EXPECT_FALSE(M.Tables.JoinsLeadTo(*T[0], *T[2]));
        // A join naming its target in another case leads there where names compare without case.
        Join(T[1], "ID", "a2", "ID");
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*T[0], *T[static_cast<std::size_t>(N - 1)]));
        M.Parser.SetCaseSensitiveIdentifiers(true);
        EXPECT_FALSE(M.Tables.JoinsLeadTo(*T[0], *T[2]));
        M.Parser.SetCaseSensitiveIdentifiers(false);
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*T[0], *T[2]));
    }
}

TEST(TZvTableDefs, AJoinLeadsToTheFirstTableOfItsTargetAlias) {
    for (const int N : {3, 30}) {
        SCOPED_TRACE(N);
        TModel M;
        const std::vector<TZvTableDef*> T = JoinedChain(M, N);
        // A later table that takes the alias A1 is not where T0's join leads, nor what follows.
        TZvTableDef* Twin = M.Table("TWIN", "A1");
        Join(Twin, "ID", "A0", "ID");
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*T[0], *T[1]));
        EXPECT_FALSE(M.Tables.JoinsLeadTo(*T[0], *Twin));
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*Twin, *T[static_cast<std::size_t>(N - 1)]));
        // Once the first A1 goes by another alias, the joins aimed at A1 follow it, and the twin is
        // still reached by none.
        T[1]->SetAlias("ONE");
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*T[0], *T[1]));
        EXPECT_FALSE(M.Tables.JoinsLeadTo(*T[0], *Twin));
        Join(T[static_cast<std::size_t>(N - 1)], "ID", "A1", "ID");
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*T[0], *Twin));
        EXPECT_TRUE(M.Tables.JoinsLeadTo(*Twin, *T[0]));
    }
}

TEST(TZvTableDefs, JoinsLeadWhereAWalkGoesThroughRandomEdits) {
    for (const int N : {6, 24}) {
        SCOPED_TRACE(N);
        TModel M;
        std::vector<TZvTableDef*> T = JoinedChain(M, N);
        std::uint32_t Seed = 11;
        auto Next = [&Seed](std::uint32_t Bound) {
            Seed = Seed * 1664525u + 1013904223u;
            return (Seed >> 8) % Bound;
        };
        const auto Count = [](const auto& List) { return static_cast<std::uint32_t>(List.size()); };
        for (int Step = 0; Step < 200; ++Step) {
            TZvTableDef* Table = T[Next(Count(T))];
            const std::string Alias = "A" + std::to_string(Next(Count(T) + 2));
            switch (Next(5)) {
            case 0:
                Table->SetAlias(Next(2) == 0 ? Alias : LowerCase(Alias));
                break;
            case 1:
            case 2:
                Join(Table, "ID", Next(3) == 0 ? LowerCase(Alias) : Alias, "ID");
                break;
            case 3:
                if (Table->GetJoinDefs().Count() > 0)
                    Table->GetJoinDefs().Delete(0);
                break;
            default:
                M.Parser.SetCaseSensitiveIdentifiers(Next(3) == 0);
            }
            for (const TZvTableDef* From : T) {
                for (const TZvTableDef* To : T) {
                    if (From == To)
                        continue;
                    ASSERT_EQ(M.Tables.JoinsLeadTo(*From, *To), LeadsByWalk(M.Tables, From, To))
                        << "step " << Step << ", " << From->GetAlias() << " to " << To->GetAlias();
                }
            }
        }
    }
}

// ---- Deleting a table -------------------------------------------------------------------------

TEST(TZvTableDefs, DeletingATableRemovesWhatRefersToIt) {
    TModel M;
    TZvTableDef* A = M.Table("T1", "A");
    TZvTableDef* C = M.Table("T3", "C");
    TZvTableDef* Holder = M.Table("");
    M.Column(A, "NAME");
    M.Column(C, "NAME");
    M.Expression(Holder, "A.PRICE * 2");
    M.Expression(Holder, "C.PRICE * 2");
    TZvFieldDef* Upper = C->GetFieldDefs().Add();
    Upper->SetName("UPPER");
    Upper->SetKind(fkFunction);
    TZvFunctionDef* Arg = Upper->GetArguments().Add();
    Arg->SetName("a.NAME");
    Arg->SetKind(fkExpression);
    Join(C, "ID", "A", "ID");
    Join(A, "ID", "C", "ID");
    for (const char* Entry : {"A.NAME", "C.NAME", "FIELD_1", "FIELD_2", "NAME", "XA.NAME"})
        M.Parser.GetOrderByItems().Add(Entry);
    M.Tables.Remove(A);
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"C.NAME", "C.PRICE * 2 AS FIELD_2"}));
    // FIELD_1 named the dropped expression and NAME the alias of A's own column.
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"C.NAME", "FIELD_2", "XA.NAME"}));
    EXPECT_EQ(C->GetJoinDefs().Count(), 0);
    EXPECT_EQ(M.Tables.Count(), 2);
    M.ExpectDensePositions();
}

TEST(TZvTableDefs, DeletingATableMatchesItsPrefixWithRegardToCaseWhenIdentifiersAreCaseSensitive) {
    TModel M;
    M.Parser.SetCaseSensitiveIdentifiers(true);
    TZvTableDef* A = M.Table("T1", "A");
    TZvTableDef* Holder = M.Table("");
    M.Expression(Holder, "A.X + 1");
    M.Expression(Holder, "a.X + 1");
    M.Parser.GetOrderByItems().Add("a.X");
    M.Tables.Remove(A);
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"a.X + 1 AS FIELD_2"}));
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"a.X"}));
}

TEST(TZvTableDefs, DeletingTheHolderOfUnqualifiedExpressionsLeavesQualifiedColumnsAlone) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    TZvTableDef* Holder = M.Table("");
    M.Expression(Holder, "1 + 2");
    M.Column(T, "A");
    M.Parser.GetOrderByItems().Add("T.A");
    M.Tables.Remove(Holder);
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"T.A"}));
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"T.A"}));
    M.ExpectDensePositions();
}

TEST(TZvTableDefs, DeletingTablesOneByOneInAModelOfSeveralTablesKeepsItConsistent) {
    TModel M;
    const char* Names[] = {"A", "B", "C", "D"};
    for (const char* Name : Names) {
        TZvTableDef* T = M.Table(std::string("T_") + Name, Name);
        M.Column(T, "ID");
        M.Column(T, std::string(Name) + "_NAME");
    }
    for (const char* Name : Names)
        M.Parser.GetOrderByItems().Add(std::string(Name) + ".ID");
    Join(M.Tables.Items(0), "ID", "B", "ID");
    Join(M.Tables.Items(1), "ID", "C", "ID");
    Join(M.Tables.Items(3), "ID", "B", "ID");
    M.Tables.Remove(M.Tables.FindByAlias("B"));
    EXPECT_EQ(M.SelectList(),
              (std::vector<std::string>{"A.ID", "A.A_NAME", "C.ID", "C.C_NAME", "D.ID", "D.D_NAME"}));
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"A.ID", "C.ID", "D.ID"}));
    EXPECT_EQ(M.Tables.Items(0)->GetJoinDefs().Count(), 0);
    EXPECT_EQ(M.Tables.Items(2)->GetJoinDefs().Count(), 0);
    M.ExpectDensePositions();
    M.Tables.Delete(0);
    M.Tables.FindByAlias("D")->SetAlias("E");
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"C.ID", "C.C_NAME", "E.ID", "E.D_NAME"}));
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"C.ID", "E.ID"}));
    M.ExpectDensePositions();
}

// ---- Copying and moving ------------------------------------------------------------------------

TEST(TZvTableDef, AssignCopiesNameAliasTypeAndFieldsButNotJoins) {
    TModel M;
    TZvTableDef* Source = M.Table("PROC", "P");
    Source->SetTableType(qttStoredProc);
    M.Column(Source, "X");
    Join(Source, "X", "P", "X");
    TZvTableDef* Copy = M.Tables.Add();
    Copy->Assign(*Source);
    EXPECT_EQ(Copy->GetName(), "PROC");
    EXPECT_EQ(Copy->GetAlias(), "P");
    EXPECT_EQ(Copy->GetTableType(), qttStoredProc);
    ASSERT_EQ(Copy->GetFieldDefs().Count(), 1);
    EXPECT_NE(Copy->GetFieldDefs().Items(0), Source->GetFieldDefs().Items(0));
    EXPECT_EQ(Copy->GetFieldDefs().Items(0)->GetAbsIndex(), 1);
    EXPECT_EQ(Copy->GetJoinDefs().Count(), 0);
    EXPECT_EQ(Copy->GetParser(), &M.Parser);
}

TEST(TZvTableDef, FindFieldsWOPrefixMovesKnownColumnsIntoTheTableKeepingTheirPlaces) {
    TModel M;
    TZvTableDef* Holder = M.Table("");
    TZvTableDef* T = M.Table("T");
    M.Column(Holder, "A");
    M.Expression(Holder, "A + 1");
    M.Column(T, "C");
    M.Column(Holder, "B");
    M.Column(Holder, "UNKNOWN");
    M.Parser.GetOrderByItems().Add("B");
    const TZvDataSet DataSet({{"a", ftInteger}, {"B", ftString}, {"C", ftString}});
    T->FindFieldsWOPrefix(DataSet);
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"T.A", "A + 1 AS FIELD_1", "T.C", "T.B", "UNKNOWN"}));
    ASSERT_EQ(T->GetFieldDefs().Count(), 3);
    EXPECT_EQ(T->GetFieldDefs().Items(0)->GetName(), "A");
    EXPECT_EQ(T->GetFieldDefs().Items(1)->GetName(), "C");
    EXPECT_EQ(T->GetFieldDefs().Items(2)->GetName(), "B");
    EXPECT_EQ(Holder->GetFieldDefs().Count(), 2);
    EXPECT_EQ(M.OrderBy(), (std::vector<std::string>{"B"}));
    M.ExpectDensePositions();
    EXPECT_EQ(M.Tables.GetUniqueAlias("B", false), "B1");
}

TEST(TZvTableDef, FindFieldsWOPrefixDoesNothingWithoutAHolderTable) {
    TModel M;
    TZvTableDef* T = M.Table("T");
    M.Column(T, "A");
    T->FindFieldsWOPrefix(TZvDataSet({{"A", ftInteger}}));
    EXPECT_EQ(M.SelectList(), (std::vector<std::string>{"T.A"}));
}

// ---- Stored-procedure parameters ---------------------------------------------------------------

TEST(TZvTableDef, ProcedureParametersAreWrittenByValueAndDataType) {
    TModel M;
    TZvTableDef* P = M.Table("PROC");
    P->SetTableType(qttStoredProc);
    M.Column(P, "RESULT"); // an output column, not a parameter
    Param(P, "BOUND", ftInteger, TZvValue());
    Param(P, "NOTHING", ftString, TZvValue::Null());
    Param(P, "S", ftString, TZvValue("it's"));
    Param(P, "N", ftInteger, TZvValue(42));
    Param(P, "F", ftFloat, TZvValue(1.5));
    Param(P, "B", ftBoolean, TZvValue(true));
    Param(P, "D", ftDate, TZvValue(TZvDateTime{2024, 2, 29, 13, 5, 9, 0}));
    Param(P, "T", ftTime, TZvValue(TZvDateTime{2024, 2, 29, 13, 5, 9, 250}));
    Param(P, "DT", ftDateTime, TZvValue(TZvDateTime{2024, 2, 29, 13, 5, 9, 0}));
    Param(P, "TEXTDATE", ftDate, TZvValue("yesterday"));
    Param(P, "G", ftGuid, TZvValue("{0A}"));
    Param(P, "OTHER", ftCursor, TZvValue(7));
    P->GetFieldDefs().Items(4)->SetUsage(3);
    EXPECT_EQ(P->GetProcParamString(), "(:BOUND, NULL, 'it''s', 42, 1.5, True, '2024-02-29', '13:05:09.250', "
                                       "'2024-02-29T13:05:09', 'yesterday', '{0A}', 7)");
}

TEST(TZvTableDef, NumericDateValuesCountDaysFromTheEndOf1899) {
    TModel M;
    TZvTableDef* P = M.Table("PROC");
    Param(P, "D", ftDateTime, TZvValue(45351.75));
    Param(P, "E", ftTimeStamp, TZvValue(2));
    EXPECT_EQ(P->GetProcParamString(), "('2024-02-29T18:00:00', '1900-01-01T00:00:00')");
}

TEST(TZvTableDef, BooleanParametersUseTheScannersLiteralsOrTheStandardWords) {
    TZvTableDef Alone;
    Param(&Alone, "A", ftBoolean, TZvValue("false"));
    Param(&Alone, "B", ftBoolean, TZvValue(1));
    Param(&Alone, "C", ftBoolean, TZvValue("maybe"));
    EXPECT_EQ(Alone.GetProcParamString(), "(FALSE, TRUE, maybe)");
    TModel M;
    TZvTableDef* P = M.Table("PROC");
    Param(P, "A", ftBoolean, TZvValue(false));
    EXPECT_EQ(P->GetProcParamString(), "(" + M.Parser.GetScanner().GetBooleans(false) + ")");
}

TEST(TZvTableDef, StringParametersWithoutAParserAreQuotedWithApostrophes) {
    TZvTableDef Alone;
    Param(&Alone, "A", ftMemo, TZvValue("x'y"));
    Param(&Alone, "B", ftFixedChar, TZvValue("'as is'"));
    EXPECT_EQ(Alone.GetProcParamString(), "('x''y', 'as is')");
}

namespace {
struct TBracketParser : TZvSelectParser {
    bool IsProcEmptyInputParamsBracket() override { return true; }
};
} // namespace

TEST(TZvTableDef, AProcedureWithoutParametersGetsBracketsOnlyWhenTheDialectAsks) {
    TModel M;
    TZvTableDef* P = M.Table("PROC");
    M.Column(P, "RESULT");
    EXPECT_EQ(P->GetProcParamString(), "");
    TBracketParser Bracketing;
    TZvTableDef* Q = Bracketing.GetTableDefs().Add();
    EXPECT_EQ(Q->GetProcParamString(), "()");
}

TEST(TZvTableDef, AParameterWhoseLiteralIsEmptyGetsNoSeparatorOfItsOwn) {
    TZvTableDef Alone;
    Param(&Alone, "A", ftInteger, TZvValue(""));
    Param(&Alone, "B", ftInteger, TZvValue(2));
    EXPECT_EQ(Alone.GetProcParamString(), "(2)");
}

TEST(TZvTableDefs, ATableAddedAfterAClearIsAsNewWhateverTheClearedTablesHeld) {
    TModel M;
    TZvTableDef* Proc = M.Table("PROC_WITH_A_LONG_NAME", "P");
    Proc->SetTableType(qttStoredProc);
    Param(Proc, "A", ftInteger, TZvValue(7));
    TModel::Column(Proc, "RESULT")->SetUsage(3);
    TZvTableDef* Orders = M.Table("ORDERS", "O");
    TModel::Expression(Orders, "O.QTY * 2");
    TZvJoinDef* Join = Orders->GetJoinDefs().Add();
    Join->SetLeftField("ID");
    Join->SetTableAlias("P");
    Join->SetRightField("RESULT");
    M.Tables.Clear();
    ASSERT_EQ(M.Tables.Count(), 0);
    EXPECT_EQ(M.Tables.GetFieldCount(), 0);

    for (int I = 0; I < 3; ++I) {
        TZvTableDef* Fresh = M.Tables.Add();
        EXPECT_EQ(Fresh->GetIndex(), I);
        EXPECT_EQ(Fresh->GetCollection(), &M.Tables);
        EXPECT_EQ(Fresh->GetParser(), &M.Parser);
        EXPECT_EQ(Fresh->GetAlias(), "");
        EXPECT_EQ(Fresh->GetName(), "");
        EXPECT_EQ(Fresh->GetTableType(), qttTable);
        EXPECT_EQ(Fresh->GetFieldDefs().Count(), 0);
        EXPECT_EQ(Fresh->GetJoinDefs().Count(), 0);
        EXPECT_EQ(Fresh->GetFieldDefs().GetParser(), &M.Parser);
        EXPECT_EQ(Fresh->GetJoinDefs().GetParser(), &M.Parser);
        EXPECT_EQ(Fresh->GetProcParamString(), "");
    }
    // The rebuilt model numbers, finds and writes as one built in a new parser does.
    M.Tables.Clear();
    TModel New;
    for (TModel* Built : {&M, &New}) {
        TZvTableDef* T = Built->Table("ITEMS", "I");
        TModel::Column(T, "ID");
        TModel::Expression(T, "I.PRICE + 1");
        TModel::Column(Built->Table("NOTES"), "ID");
    }
    EXPECT_EQ(M.SelectList(), New.SelectList());
    EXPECT_EQ(M.Tables.FindByAlias("I"), M.Tables.Items(0));
    EXPECT_EQ(M.Tables.FindByName("NOTES"), M.Tables.Items(1));
    EXPECT_EQ(M.Parser.GetExpression(), New.Parser.GetExpression());
    M.ExpectDensePositions();
}

namespace {
// A table class of its own, holding more than a plain table.
struct TNotedTable : TZvTableDef {
    int Note = 0;
};
} // namespace

TEST(TZvTableDefs, TablesOfAnotherClassOrMakerAreMadeAnewAfterAClear) {
    TZvTableDefs Noted(nullptr, ItemClassOf<TNotedTable>());
    static_cast<TNotedTable*>(Noted.Add())->Note = 5;
    Noted.Clear();
    auto* Again = dynamic_cast<TNotedTable*>(Noted.Add());
    ASSERT_NE(Again, nullptr);
    EXPECT_EQ(Again->Note, 0);

    int Made = 0;
    TZvTableDefs Counted(nullptr, [&Made] {
        ++Made;
        return std::make_unique<TZvTableDef>();
    });
    Counted.Add()->SetName("A");
    Counted.Add()->SetName("B");
    Counted.Clear();
    EXPECT_EQ(Counted.Add()->GetName(), "");
    EXPECT_EQ(Made, 3);
}

TEST(TZvTableDefs, ClearingAfterAStatementOfManyTablesKeepsTheNextStatementWhole) {
    TModel M;
    for (int T = 0; T < 40; ++T) {
        TZvTableDef* Table = M.Table("T" + std::to_string(T), "A" + std::to_string(T));
        for (int F = 0; F < (T == 3 ? 100 : 2); ++F)
            TModel::Column(Table, "C" + std::to_string(F));
    }
    M.Tables.Clear();
    TModel New;
    for (TModel* Built : {&M, &New})
        for (int T = 0; T < 20; ++T)
            TModel::Column(Built->Table("U" + std::to_string(T)), "X");
    EXPECT_EQ(M.Tables.GetFieldCount(), 20);
    EXPECT_EQ(M.Parser.GetExpression(), New.Parser.GetExpression());
    M.ExpectDensePositions();
}

TEST(TZvTableDefs, AFieldMadeForTheReaderAfterAClearIsAsNewWhateverTheClearedFieldsHeld) {
    TModel M;
    TZvTableDef* Proc = M.Table("PROC", "P");
    Param(Proc, "A", ftDate, TZvValue(TZvDateTime{2020, 1, 2}))->SetTag(7);
    TZvFieldDef* Call = TModel::Expression(Proc, "UPPER");
    Call->SetKind(fkFunction);
    Call->GetArguments().Add()->SetName("P.NAME");
    Call->SetAlias("SHOUTED");
    M.Tables.Clear();
    for (int I = 0; I < 3; ++I) {
        const std::unique_ptr<TZvFieldDef> Field = M.Tables.MakeField();
        EXPECT_EQ(Field->GetCollection(), nullptr);
        EXPECT_EQ(Field->GetIndex(), -1);
        EXPECT_EQ(Field->GetParser(), nullptr);
        EXPECT_EQ(Field->GetName(), "");
        EXPECT_EQ(Field->GetKind(), fkUnknown);
        EXPECT_EQ(Field->GetAlias(), "");
        EXPECT_EQ(Field->GetTag(), 0);
        EXPECT_EQ(Field->GetUsage(), 2);
        EXPECT_EQ(Field->GetAbsIndex(), 0);
        EXPECT_EQ(Field->GetDataType(), ftUnknown);
        EXPECT_TRUE(Field->GetValue().IsUnassigned());
        EXPECT_FALSE(Field->HasArguments());
        EXPECT_EQ(Field->GetScript(), "");
    }
    // Fields read into the statement after the clear are numbered and written as new ones are.
    TModel New;
    for (TModel* Built : {&M, &New}) {
        TZvTableDef* T = Built->Table("ITEMS");
        std::unique_ptr<TZvFieldDef> Field = Built->Tables.MakeField();
        Field->SetName("COUNT");
        Field->SetKind(fkFunction);
        T->GetFieldDefs().Adopt(std::move(Field));
        TModel::Column(T, "ID");
    }
    EXPECT_EQ(M.SelectList(), New.SelectList());
    EXPECT_EQ(M.Parser.GetExpression(), New.Parser.GetExpression());
    M.ExpectDensePositions();
}
