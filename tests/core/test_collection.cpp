// The collection base: ownership and positions of items, parser propagation, identifier
// comparison, and which removals run an item's clean-up rules.
#include <gtest/gtest.h>

#include "ZvCollection.h"
#include "ZvErrors.h"
#include "ZvSelectParser.h"

#include <functional>
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

namespace {

// An item that writes its text into a shared log when it is freed, with what it still knew of
// its list at that moment.
struct TLoggingItem : TZvCollectionItem {
    std::string Text;
    std::vector<std::string>* Log = nullptr;
    ~TLoggingItem() override {
        if (Log)
            Log->push_back(Text + (GetCollection() ? "@list" : "@alone"));
    }
};

struct TLoggingList : TZvCollection {
    TLoggingList() : TZvCollection(nullptr, ItemClassOf<TLoggingItem>()) {}
    TLoggingItem* AddLogged(const std::string& S, std::vector<std::string>& Log) {
        auto* Item = static_cast<TLoggingItem*>(Add());
        Item->Text = S;
        Item->Log = &Log;
        return Item;
    }
    int DropIf(const std::function<bool(const TZvCollectionItem&)>& Doomed) { return RemoveItemsIf(Doomed); }
};

} // namespace

TEST(TZvCollection, InsertsAndDeletesAnywhereKeepOrderAndPositionsAsTheListGrowsPastItsFirstItems) {
    // A list keeps its first few items in place and the rest in a block of their own: a fixed
    // mix of inserts and deletes in front, middle and back, followed on a plain vector, must give
    // the same order after every step, well past that boundary and back below it.
    TProbeList L;
    std::vector<std::string> Expected;
    unsigned Seed = 12345;
    auto Next = [&Seed](unsigned Limit) {
        Seed = Seed * 1103515245u + 12345u;
        return (Seed >> 16) % Limit;
    };
    for (int Step = 0; Step < 400; ++Step) {
        const bool Grow = Step < 200 ? Next(4) != 0 : Next(4) == 0;
        if (Grow || Expected.empty()) {
            const int At = static_cast<int>(Next(static_cast<unsigned>(Expected.size()) + 1));
            const std::string Text = "t" + std::to_string(Step);
            static_cast<TProbeItem*>(L.Insert(At))->Text = Text;
            Expected.insert(Expected.begin() + At, Text);
        } else {
            const int At = static_cast<int>(Next(static_cast<unsigned>(Expected.size())));
            L.Delete(At);
            Expected.erase(Expected.begin() + At);
        }
        ASSERT_EQ(Texts(L), Expected) << "after step " << Step;
        ExpectIndicesMatchPositions(L);
    }
}

TEST(TZvCollection, TakeItemsAcrossTheFirstFewItemsKeepsEveryItemAndItsOrder) {
    TProbeList Target;
    TProbeList Source;
    for (const char* S : {"a", "b", "c"})
        Target.AddText(S);
    for (const char* S : {"d", "e", "f", "g", "h", "i"})
        Source.AddText(S);
    TProbeItem* G = Source.Item(3);
    Target.TakeItems(Source);
    EXPECT_EQ(Texts(Target), (std::vector<std::string>{"a", "b", "c", "d", "e", "f", "g", "h", "i"}));
    ExpectIndicesMatchPositions(Target);
    EXPECT_EQ(Target.Item(6), G);
    EXPECT_EQ(Source.Count(), 0);
    // The emptied source takes items again from its start.
    Source.AddText("j");
    Source.TakeItems(Target);
    EXPECT_EQ(Texts(Source), (std::vector<std::string>{"j", "a", "b", "c", "d", "e", "f", "g", "h", "i"}));
    ExpectIndicesMatchPositions(Source);
    EXPECT_EQ(Target.Count(), 0);
}

TEST(TZvCollection, ClearFreesEveryItemFromTheBackEachAlreadyOutOfTheList) {
    std::vector<std::string> Log;
    TLoggingList L;
    for (const char* S : {"a", "b", "c", "d", "e", "f"})
        L.AddLogged(S, Log);
    L.Clear();
    EXPECT_EQ(Log, (std::vector<std::string>{"f@alone", "e@alone", "d@alone", "c@alone", "b@alone", "a@alone"}));
    EXPECT_EQ(L.Count(), 0);
    // The list is as good as new: it fills and frees again, this time through its destructor.
    Log.clear();
    {
        TLoggingList Again;
        for (const char* S : {"x", "y"})
            Again.AddLogged(S, Log);
    }
    EXPECT_EQ(Log, (std::vector<std::string>{"y@alone", "x@alone"}));
}

TEST(TZvCollection, DeleteFreesOnlyTheDeletedItemAndLeavesTheOthersInTheirOrder) {
    std::vector<std::string> Log;
    TLoggingList L;
    for (const char* S : {"a", "b", "c", "d", "e", "f"})
        L.AddLogged(S, Log);
    L.Delete(4);
    L.Delete(0);
    EXPECT_EQ(Log, (std::vector<std::string>{"e@alone", "a@alone"}));
    ASSERT_EQ(L.Count(), 4);
    EXPECT_EQ(static_cast<TLoggingItem*>(L.GetItem(0))->Text, "b");
    EXPECT_EQ(static_cast<TLoggingItem*>(L.GetItem(3))->Text, "f");
    EXPECT_EQ(L.GetItem(3)->GetIndex(), 3);
}

TEST(TZvCollection, RemovingItemsByARuleKeepsTheRestInOrderAndFreesTheRemovedOnes) {
    std::vector<std::string> Log;
    TLoggingList L;
    for (const char* S : {"a", "b", "c", "d", "e", "f", "g"})
        L.AddLogged(S, Log);
    const int Removed = L.DropIf([](const TZvCollectionItem& Item) {
        const std::string& Text = static_cast<const TLoggingItem&>(Item).Text;
        return Text == "b" || Text == "e" || Text == "f";
    });
    EXPECT_EQ(Removed, 3);
    EXPECT_EQ(Log, (std::vector<std::string>{"b@alone", "e@alone", "f@alone"}));
    std::vector<std::string> Kept;
    for (int I = 0; I < L.Count(); ++I) {
        Kept.push_back(static_cast<TLoggingItem*>(L.GetItem(I))->Text);
        EXPECT_EQ(L.GetItem(I)->GetIndex(), I);
    }
    EXPECT_EQ(Kept, (std::vector<std::string>{"a", "c", "d", "g"}));
    EXPECT_EQ(L.DropIf([](const TZvCollectionItem&) { return false; }), 0);
}
