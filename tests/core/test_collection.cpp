// The collection base: ownership and positions of items, parser propagation, identifier
// comparison, and which removals run an item's clean-up rules.
#include <gtest/gtest.h>

#include "ZvCollection.h"
#include "ZvErrors.h"
#include "ZvSelectParser.h"

#include <string>
#include <vector>

using namespace zv;

namespace {

// An item that records what the collection does to it.
struct TProbeItem : TZvCollectionItem {
    std::string Text;
    int ParserCalls = 0;
    int* Removals = nullptr;

    void Assign(const TZvCollectionItem& Source) override {
        if (const auto* P = dynamic_cast<const TProbeItem*>(&Source))
            Text = P->Text;
    }
    void SetParser(TZvSelectParser* Value) override {
        ++ParserCalls;
        TZvCollectionItem::SetParser(Value);
    }

protected:
    void Removing() override {
        if (Removals)
            ++*Removals;
    }
};

struct TProbeList : TZvCollection {
    TProbeList() : TZvCollection(nullptr, ItemClassOf<TProbeItem>()) {}
    TProbeItem* Item(int I) const { return static_cast<TProbeItem*>(GetItem(I)); }
    TProbeItem* AddText(const std::string& S) {
        auto* Item = static_cast<TProbeItem*>(Add());
        Item->Text = S;
        return Item;
    }
};

std::vector<std::string> Texts(const TProbeList& L) {
    std::vector<std::string> R;
    for (int I = 0; I < L.Count(); ++I)
        R.push_back(L.Item(I)->Text);
    return R;
}

void ExpectIndicesMatchPositions(const TProbeList& L) {
    for (int I = 0; I < L.Count(); ++I) {
        EXPECT_EQ(L.Item(I)->GetIndex(), I);
        EXPECT_EQ(L.Item(I)->GetCollection(), &L);
    }
}

} // namespace

TEST(TZvCollection, AddAppendsAndInsertPlacesItemsAtTheirIndex) {
    TProbeList L;
    L.AddText("b");
    static_cast<TProbeItem*>(L.Insert(0))->Text = "a";
    L.AddText("d");
    static_cast<TProbeItem*>(L.Insert(2))->Text = "c";
    EXPECT_EQ(Texts(L), (std::vector<std::string>{"a", "b", "c", "d"}));
    ExpectIndicesMatchPositions(L);
}

TEST(TZvCollection, DeleteRenumbersTheItemsThatFollow) {
    TProbeList L;
    for (const char* S : {"a", "b", "c", "d"})
        L.AddText(S);
    L.Delete(1);
    EXPECT_EQ(Texts(L), (std::vector<std::string>{"a", "c", "d"}));
    ExpectIndicesMatchPositions(L);
    L.Remove(L.Item(2));
    EXPECT_EQ(Texts(L), (std::vector<std::string>{"a", "c"}));
    ExpectIndicesMatchPositions(L);
}

TEST(TZvCollection, AnIndexOutsideTheListRaisesAGeneralError) {
    TProbeList L;
    L.AddText("a");
    EXPECT_THROW(L.GetItem(1), EZvError);
    EXPECT_THROW(L.GetItem(-1), EZvError);
    EXPECT_THROW(L.Delete(1), EZvError);
    EXPECT_THROW(L.Insert(2), EZvError);
    EXPECT_NO_THROW(L.Insert(1));
    EXPECT_EQ(L.Count(), 2);
}

TEST(TZvCollection, RemoveIgnoresAnItemOfAnotherCollection) {
    TProbeList A;
    TProbeList B;
    A.AddText("a");
    TProbeItem* Foreign = B.AddText("b");
    A.Remove(Foreign);
    A.Remove(nullptr);
    EXPECT_EQ(A.Count(), 1);
    EXPECT_EQ(B.Count(), 1);
}

TEST(TZvCollection, DeleteRunsTheItemsCleanUpButClearAndDestructionDoNot) {
    int Removals = 0;
    {
        TProbeList L;
        for (int I = 0; I < 4; ++I)
            L.AddText("x")->Removals = &Removals;
        L.Delete(0);
        L.Remove(L.Item(0));
        EXPECT_EQ(Removals, 2);
        L.Clear();
        EXPECT_EQ(L.Count(), 0);
        EXPECT_EQ(Removals, 2);
        for (int I = 0; I < 3; ++I)
            L.AddText("y")->Removals = &Removals;
    }
    EXPECT_EQ(Removals, 2);
}

TEST(TZvCollection, TakeItemsMovesTheItemsInOrderAndLeavesTheSourceEmpty) {
    TZvSelectParser Parser;
    TProbeList Target;
    TProbeList Source;
    Target.SetParser(&Parser);
    Target.AddText("a");
    TProbeItem* B = Source.AddText("b");
    TProbeItem* C = Source.AddText("c");
    int Removals = 0;
    B->Removals = &Removals;
    Target.TakeItems(Source);
    EXPECT_EQ(Source.Count(), 0);
    EXPECT_EQ(Texts(Target), (std::vector<std::string>{"a", "b", "c"}));
    ExpectIndicesMatchPositions(Target);
    // The same objects, now owned by the target and bound to its parser; nothing was removed.
    EXPECT_EQ(Target.Item(1), B);
    EXPECT_EQ(Target.Item(2), C);
    EXPECT_EQ(C->GetParser(), &Parser);
    EXPECT_EQ(Removals, 0);
    Target.TakeItems(Target);
    Target.TakeItems(Source);
    EXPECT_EQ(Texts(Target), (std::vector<std::string>{"a", "b", "c"}));
    Source.AddText("d");
    EXPECT_EQ(Source.Item(0)->GetIndex(), 0);
}

namespace {
// An item class the probe list does not make.
struct TOtherItem : TZvCollectionItem {};
} // namespace

TEST(TZvCollection, AListTellsWhichItemClassItMakesAndMakesOneStandingAlone) {
    TProbeList L;
    EXPECT_TRUE(L.MakesItemsOf<TProbeItem>());
    EXPECT_FALSE(L.MakesItemsOf<TOtherItem>());
    EXPECT_FALSE(L.MakesItemsOf<TZvCollectionItem>());
    std::unique_ptr<TZvCollectionItem> Made = L.MakeItem();
    ASSERT_NE(dynamic_cast<TProbeItem*>(Made.get()), nullptr);
    EXPECT_EQ(Made->GetCollection(), nullptr);
    EXPECT_EQ(Made->GetIndex(), -1);
    EXPECT_EQ(L.Count(), 0);
    // A list of another maker, even one that makes the same class, is not taken for it.
    TZvCollection Custom(nullptr, [] { return std::make_unique<TProbeItem>(); });
    EXPECT_FALSE(Custom.MakesItemsOf<TProbeItem>());
}

TEST(TZvCollection, AdoptPutsAnItemStandingAloneAtTheEndAsAddPutsANewOne) {
    TZvSelectParser Parser;
    TProbeList L;
    L.SetParser(&Parser);
    L.AddText("a");
    auto Alone = std::make_unique<TProbeItem>();
    Alone->Text = "b";
    TProbeItem* Kept = Alone.get();
    EXPECT_EQ(L.Adopt(std::move(Alone)), Kept);
    EXPECT_EQ(Texts(L), (std::vector<std::string>{"a", "b"}));
    ExpectIndicesMatchPositions(L);
    EXPECT_EQ(Kept->GetParser(), &Parser);
    EXPECT_EQ(Kept->ParserCalls, 1);
    int Removals = 0;
    Kept->Removals = &Removals;
    L.Remove(Kept);
    EXPECT_EQ(Removals, 1);
    EXPECT_EQ(L.Count(), 1);
}

TEST(TZvCollection, AddAndInsertHandTheCollectionsParserToTheNewItem) {
    TZvSelectParser Parser;
    TProbeList L;
    L.SetParser(&Parser);
    TProbeItem* Added = L.AddText("a");
    auto* Inserted = static_cast<TProbeItem*>(L.Insert(0));
    EXPECT_EQ(Added->GetParser(), &Parser);
    EXPECT_EQ(Inserted->GetParser(), &Parser);
    EXPECT_EQ(Added->ParserCalls, 1);
}

TEST(TZvCollection, SetParserReachesEveryItemOnceAndNothingWhenUnchanged) {
    TZvSelectParser Parser;
    TProbeList L;
    L.AddText("a");
    L.AddText("b");
    L.SetParser(&Parser);
    L.SetParser(&Parser);
    for (int I = 0; I < L.Count(); ++I) {
        EXPECT_EQ(L.Item(I)->ParserCalls, 2); // once from Add (null), once from SetParser
        EXPECT_EQ(L.Item(I)->GetParser(), &Parser);
    }
}

TEST(TZvCollectionItem, OwnParserWinsOverTheCollectionsParser) {
    TZvSelectParser ListParser;
    TZvSelectParser OwnParser;
    TProbeList L;
    L.SetParser(&ListParser);
    TProbeItem* Item = L.AddText("a");
    EXPECT_EQ(Item->GetParser(), &ListParser);
    Item->SetParser(&OwnParser);
    EXPECT_EQ(Item->GetParser(), &OwnParser);
    Item->SetParser(nullptr);
    EXPECT_EQ(Item->GetParser(), &ListParser);
    TProbeItem Alone;
    EXPECT_EQ(Alone.GetParser(), nullptr);
    EXPECT_EQ(Alone.GetIndex(), -1);
}

TEST(TZvCollection, SameIdentifierIsExactWithoutAParser) {
    TProbeList L;
    EXPECT_TRUE(L.SameIdentifier("Name", "Name"));
    EXPECT_FALSE(L.SameIdentifier("Name", "NAME"));
}

TEST(TZvCollection, SameIdentifierIgnoresCaseUnlessTheParserSaysIdentifiersAreCaseSensitive) {
    TZvSelectParser Parser;
    TProbeList L;
    L.SetParser(&Parser);
    EXPECT_TRUE(L.SameIdentifier("Name", "NAME"));
    EXPECT_FALSE(L.SameIdentifier("Name", "Names"));
    Parser.SetCaseSensitiveIdentifiers(true);
    EXPECT_FALSE(L.SameIdentifier("Name", "NAME"));
    EXPECT_TRUE(L.SameIdentifier("Name", "Name"));
}

TEST(TZvCollectionItem, SameIdentifierGoesThroughTheCollectionAndIsExactForAnItemStandingAlone) {
    TZvSelectParser Parser;
    TProbeList L;
    L.SetParser(&Parser);
    TProbeItem* Item = L.AddText("a");
    EXPECT_TRUE(Item->SameIdentifier("abc", "ABC"));
    TProbeItem Alone;
    Alone.SetParser(&Parser);
    EXPECT_FALSE(Alone.SameIdentifier("abc", "ABC"));
}

TEST(TZvCollectionItem, TextOperationsReturnTheirInputWithoutAParser) {
    TProbeItem Alone;
    EXPECT_EQ(Alone.ProcessName("my table"), "my table");
    EXPECT_EQ(Alone.QuoteName("my table"), "my table");
    EXPECT_EQ(Alone.ProcessKeyword("select"), "select");
    EXPECT_EQ(Alone.ProcessFunction("count"), "count");
    EXPECT_EQ(Alone.GetScanner(), nullptr);
}

TEST(TZvCollectionItem, TextOperationsGoThroughTheParserAndItsScanner) {
    TZvSelectParser Parser;
    Parser.GetScriptFormat().SetKeywordsFormat(qfmLowerCase);
    Parser.GetScriptFormat().SetFunctionsFormat(qfmUpperCase);
    TProbeList L;
    L.SetParser(&Parser);
    TProbeItem* Item = L.AddText("a");
    EXPECT_EQ(Item->ProcessName("my table"), "\"my table\"");
    EXPECT_EQ(Item->ProcessName("ORDERS"), "ORDERS");
    EXPECT_EQ(Item->QuoteName("my table"), "\"my table\"");
    EXPECT_EQ(Item->ProcessKeyword("SELECT"), "select");
    EXPECT_EQ(Item->ProcessFunction("count"), "COUNT");
}

TEST(TZvCollection, AssignCopiesTheItemsOfTheSourceWithTheTargetsItemClass) {
    TProbeList Source;
    Source.AddText("a");
    Source.AddText("b");
    TProbeList Target;
    Target.AddText("old");
    Target.Assign(Source);
    EXPECT_EQ(Texts(Target), (std::vector<std::string>{"a", "b"}));
    ExpectIndicesMatchPositions(Target);
    EXPECT_NE(Target.Item(0), Source.Item(0));
    EXPECT_EQ(Target.GetUpdateCount(), 0);
}

TEST(TZvCollection, UpdateBracketsNestAndAnUnmatchedEndStopsAtZero) {
    TProbeList L;
    L.BeginUpdate();
    L.BeginUpdate();
    EXPECT_EQ(L.GetUpdateCount(), 2);
    L.EndUpdate();
    L.EndUpdate();
    L.EndUpdate();
    EXPECT_EQ(L.GetUpdateCount(), 0);
}
