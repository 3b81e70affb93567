// The model's text lists: entries with attached objects, look-up, change notification, name
// quoting through the parser, and the ORDER BY list's directions kept in step with its entries.
#include <gtest/gtest.h>

#include "ZvErrors.h"
#include "ZvSelectParser.h"
#include "ZvStringList.h"

#include <string>
#include <vector>

using namespace zv;

namespace {

std::vector<std::string> Entries(const TZvStringList& L) {
    std::vector<std::string> R;
    for (int I = 0; I < L.Count(); ++I)
        R.push_back(L[I]);
    return R;
}

std::vector<TZvOrderKind> Orders(const TZvOrderByItems& L) {
    std::vector<TZvOrderKind> R;
    for (int I = 0; I < L.Count(); ++I)
        R.push_back(L.GetOrders(I));
    return R;
}

} // namespace

TEST(TZvStringList, EntriesKeepTheirOrderAndAttachedObjects) {
    TZvSelectParser Owner;
    TZvStringList L;
    EXPECT_EQ(L.Add("b"), 0);
    L.Insert(0, "a");
    EXPECT_EQ(L.AddObject("c", &Owner), 2);
    EXPECT_EQ(Entries(L), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(L.GetObject(2), &Owner);
    EXPECT_EQ(L.GetObject(0), nullptr);
    L.Put(1, "B");
    L.Delete(0);
    EXPECT_EQ(Entries(L), (std::vector<std::string>{"B", "c"}));
    EXPECT_EQ(L.GetObject(1), &Owner);
}

TEST(TZvStringList, AnIndexOutsideTheListRaisesAGeneralError) {
    TZvStringList L;
    L.Add("a");
    EXPECT_THROW(L.Get(1), EZvError);
    EXPECT_THROW(L.Delete(-1), EZvError);
    EXPECT_THROW(L.Insert(2, "x"), EZvError);
    EXPECT_EQ(L.Count(), 1);
}

TEST(TZvStringList, IndexOfIgnoresCaseUnlessTheListIsCaseSensitive) {
    TZvStringList L;
    L.Add("O.ID");
    L.Add("NAME");
    EXPECT_EQ(L.IndexOf("name"), 1);
    EXPECT_EQ(L.IndexOf("o.id"), 0);
    EXPECT_EQ(L.IndexOf("NAM"), -1);
    L.SetCaseSensitive(true);
    EXPECT_EQ(L.IndexOf("name"), -1);
    EXPECT_EQ(L.IndexOf("NAME"), 1);
}

TEST(TZvStringList, OnChangeRunsOncePerUpdateBracketAndAfterEachSingleChange) {
    TZvStringList L;
    int Changes = 0;
    L.OnChange = [&](TZvStringList&) { ++Changes; };
    L.Add("a");
    EXPECT_EQ(Changes, 1);
    L.BeginUpdate();
    L.Add("b");
    L.BeginUpdate();
    L.Delete(0);
    L.EndUpdate();
    EXPECT_EQ(Changes, 1);
    L.EndUpdate();
    EXPECT_EQ(Changes, 2);
    L.BeginUpdate();
    L.EndUpdate();
    EXPECT_EQ(Changes, 2);
}

TEST(TZvStringList, NamesAndAliasesPassUnchangedWithoutAParser) {
    TZvStringList L;
    EXPECT_EQ(L.ProcessName("my col"), "my col");
    EXPECT_EQ(L.ProcessAlias("my col"), "my col");
}

TEST(TZvStringList, AliasesAreQuotedLikeNamesOnlyWhenTheScannerSaysSo) {
    TZvSelectParser Parser;
    TZvStringList L(&Parser);
    EXPECT_EQ(L.ProcessName("my col"), "\"my col\"");
    EXPECT_EQ(L.ProcessAlias("my col"), "my col");
    Parser.GetScanner().ProcessAliases = true;
    EXPECT_EQ(L.ProcessAlias("my col"), "\"my col\"");
}

TEST(TZvOrderByItems, DirectionsStayWithTheirEntriesThroughInsertsAndDeletes) {
    TZvOrderByItems L;
    L.AddOrdered("A", okDesc);
    L.Add("B");
    L.Insert(0, "Z");
    L.AddOrdered("C", okDesc);
    EXPECT_EQ(Entries(L), (std::vector<std::string>{"Z", "A", "B", "C"}));
    EXPECT_EQ(Orders(L), (std::vector<TZvOrderKind>{okAsc, okDesc, okAsc, okDesc}));
    L.Delete(1);
    EXPECT_EQ(Orders(L), (std::vector<TZvOrderKind>{okAsc, okAsc, okDesc}));
    L.SetOrders(0, okDesc);
    EXPECT_EQ(Orders(L), (std::vector<TZvOrderKind>{okDesc, okAsc, okDesc}));
    L.Clear();
    EXPECT_EQ(L.Count(), 0);
    L.Add("X");
    EXPECT_EQ(L.GetOrders(0), okAsc);
}

TEST(TZvOrderByItems, ARefusedIndexLeavesEntriesDirectionsAndBracketsUntouched) {
    TZvOrderByItems L;
    int Changes = 0;
    L.OnChange = [&](TZvStringList&) { ++Changes; };
    L.AddOrdered("A", okDesc);
    EXPECT_THROW(L.Insert(5, "x"), EZvError);
    EXPECT_THROW(L.Delete(3), EZvError);
    EXPECT_THROW(L.GetOrders(1), EZvError);
    EXPECT_THROW(L.SetOrders(-1, okAsc), EZvError);
    EXPECT_EQ(L.Count(), 1);
    EXPECT_EQ(L.GetOrders(0), okDesc);
    const int Before = Changes;
    L.Add("B"); // a bracket left open by a refused call would swallow this notification
    EXPECT_EQ(Changes, Before + 1);
}

TEST(TZvOrderByItems, OnChangeSeesEntriesWithTheirDirections) {
    TZvOrderByItems L;
    std::vector<std::vector<TZvOrderKind>> Seen;
    L.OnChange = [&](TZvStringList& List) { Seen.push_back(Orders(static_cast<TZvOrderByItems&>(List))); };
    L.AddOrdered("A", okDesc);
    L.Insert(0, "B");
    L.Delete(1);
    L.Clear();
    const std::vector<std::vector<TZvOrderKind>> Expected = {{okDesc}, {okAsc, okDesc}, {okAsc}, {}};
    EXPECT_EQ(Seen, Expected);
}

TEST(TZvOrderByItems, AssignCopiesDirectionsFromAnOrderByListAndSortsOtherListsAscending) {
    TZvOrderByItems Source;
    Source.AddOrdered("A", okDesc);
    Source.AddOrdered("B", okAsc);
    TZvOrderByItems Target;
    Target.AddOrdered("old", okDesc);
    Target.Assign(Source);
    EXPECT_EQ(Entries(Target), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(Orders(Target), (std::vector<TZvOrderKind>{okDesc, okAsc}));
    TZvGroupByItems Plain;
    Plain.Add("X");
    Plain.Add("Y");
    Plain.Add("Z");
    Target.Assign(Plain);
    EXPECT_EQ(Entries(Target), (std::vector<std::string>{"X", "Y", "Z"}));
    EXPECT_EQ(Orders(Target), (std::vector<TZvOrderKind>{okAsc, okAsc, okAsc}));
}
