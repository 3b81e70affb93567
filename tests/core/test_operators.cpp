// The comparison operators: the standard set in its order with every field, copying, and the three
// look-ups (by caption, by name, and the completion of a typed operator).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ZvOperators.h"

using namespace zv;

namespace {

struct TExpectedOperator {
    std::string Text;
    int Count;
    std::string Relate;
    std::string Prefix;
    std::string Postfix;
    bool CommaList;
};

// One operator per row, kept out of the formatter, so that the list reads as the table it is.
// clang-format off
const std::vector<TExpectedOperator> Standard = {
    {"=", 1, "", "", "", false},
    {"<>", 1, "", "", "", false},
    {"<", 1, "", "", "", false},
    {">", 1, "", "", "", false},
    {"<=", 1, "", "", "", false},
    {">=", 1, "", "", "", false},
    {"LIKE", 1, "", "", "", false},
    {"NOT LIKE", 1, "", "", "", false},
    {"IN", 1, "", "(", ")", true},
    {"NOT IN", 1, "", "(", ")", true},
    {"BETWEEN", 2, "AND", "", "", false},
    {"NOT BETWEEN", 2, "AND", "", "", false},
    {"IS NULL", 0, "", "", "", false},
    {"IS NOT NULL", 0, "", "", "", false},
};
// clang-format on

class StandardOperators : public ::testing::Test {
protected:
    void SetUp() override { Operators.AddStandardOperators(); }
    TZvOperators Operators{nullptr};
};

} // namespace

TEST(ZvOperator, ANewOperatorTakesOneOperandAndNoListOrDecoration) {
    TZvOperators Operators(nullptr);
    TZvOperator* Op = Operators.Add();
    EXPECT_EQ(Op->GetCount(), 1);
    EXPECT_FALSE(Op->GetCommaList());
    EXPECT_EQ(Op->GetCaption(), "");
    EXPECT_EQ(Op->GetName(), "");
    EXPECT_EQ(Op->GetRelate(), "");
    EXPECT_EQ(Op->GetPrefix(), "");
    EXPECT_EQ(Op->GetPostfix(), "");
}

TEST_F(StandardOperators, HoldTheFourteenOperatorsInTheirOrderWithEveryField) {
    ASSERT_EQ(Operators.Count(), static_cast<int>(Standard.size()));
    for (int I = 0; I < Operators.Count(); ++I) {
        const TZvOperator* Op = Operators.Items(I);
        const TExpectedOperator& E = Standard[static_cast<std::size_t>(I)];
        SCOPED_TRACE(E.Text);
        EXPECT_EQ(Op->GetCaption(), E.Text);
        EXPECT_EQ(Op->GetName(), E.Text);
        EXPECT_EQ(Op->GetCount(), E.Count);
        EXPECT_EQ(Op->GetRelate(), E.Relate);
        EXPECT_EQ(Op->GetPrefix(), E.Prefix);
        EXPECT_EQ(Op->GetPostfix(), E.Postfix);
        EXPECT_EQ(Op->GetCommaList(), E.CommaList);
    }
}

TEST_F(StandardOperators, AreCopiedFieldByFieldByAssign) {
    TZvOperators Copy(nullptr);
    Copy.AddOperator("old", "OLD");
    Copy.Assign(Operators);
    ASSERT_EQ(Copy.Count(), Operators.Count());
    const TZvOperator* Between = Copy.Items(10);
    EXPECT_EQ(Between->GetCaption(), "BETWEEN");
    EXPECT_EQ(Between->GetCount(), 2);
    EXPECT_EQ(Between->GetRelate(), "AND");
    const TZvOperator* In = Copy.Items(8);
    EXPECT_EQ(In->GetPrefix(), "(");
    EXPECT_EQ(In->GetPostfix(), ")");
    EXPECT_TRUE(In->GetCommaList());
    EXPECT_NE(In, Operators.Items(8));
}

TEST(ZvOperators, FindByCaptionIgnoresCaseAndLooksOnlyAtCaptions) {
    TZvOperators Operators(nullptr);
    TZvOperator* Contains = Operators.AddOperator("contains", "LIKE");
    TZvOperator* Like = Operators.AddOperator("Like", "LIKE");
    EXPECT_EQ(Operators.FindByCaption("CONTAINS"), Contains);
    EXPECT_EQ(Operators.FindByCaption("like"), Like);
    EXPECT_EQ(Operators.FindByCaption("LIK"), nullptr);
    EXPECT_EQ(Operators.FindByCaption("contains "), nullptr);
}

TEST(ZvOperators, FindByNameReturnsTheFirstOperatorOfThatNameWhateverItsCase) {
    TZvOperators Operators(nullptr);
    TZvOperator* Contains = Operators.AddOperator("contains", "LIKE");
    Operators.AddOperator("Like", "LIKE");
    EXPECT_EQ(Operators.FindByName("like"), Contains);
    EXPECT_EQ(Operators.FindByName("contains"), nullptr);
}

TEST(ZvOperators, LookUpsInAnEmptyListFindNothing) {
    TZvOperators Operators(nullptr);
    bool NotExact = true;
    EXPECT_EQ(Operators.FindByCaption("="), nullptr);
    EXPECT_EQ(Operators.FindByName("="), nullptr);
    EXPECT_EQ(Operators.FindNearest("=", NotExact), nullptr);
    EXPECT_TRUE(NotExact);
}

TEST_F(StandardOperators, FindNearestPrefersAWholeNameToAnEarlierLongerOne) {
    bool NotExact = true;
    // "<>" comes before "<" and begins with "<", yet the whole name "<" wins.
    EXPECT_EQ(Operators.FindNearest("<", NotExact), Operators.Items(2));
    EXPECT_FALSE(NotExact);
}

TEST_F(StandardOperators, FindNearestMatchesAWholeNameWithoutRegardToCase) {
    bool NotExact = true;
    EXPECT_EQ(Operators.FindNearest("not like", NotExact), Operators.Items(7));
    EXPECT_FALSE(NotExact);
}

TEST_F(StandardOperators, FindNearestCompletesToTheFirstNameThatBeginsWithTheText) {
    bool NotExact = false;
    EXPECT_EQ(Operators.FindNearest("NOT", NotExact), Operators.Items(7));
    EXPECT_TRUE(NotExact);
    NotExact = false;
    EXPECT_EQ(Operators.FindNearest("is n", NotExact), Operators.Items(12));
    EXPECT_TRUE(NotExact);
    NotExact = false;
    EXPECT_EQ(Operators.FindNearest("", NotExact), Operators.Items(0));
    EXPECT_TRUE(NotExact);
}

TEST_F(StandardOperators, FindNearestLeavesTheFlagAloneWhenNoNameBeginsWithTheText) {
    bool NotExact = false;
    EXPECT_EQ(Operators.FindNearest("!", NotExact), nullptr);
    EXPECT_FALSE(NotExact);
    NotExact = true;
    EXPECT_EQ(Operators.FindNearest("LIKES", NotExact), nullptr);
    EXPECT_TRUE(NotExact);
}

TEST(ZvOperators, FindNearestJudgesACompletionByTheCaption) {
    // A completion is exact when the typed text is the caption, though only a part of the name.
    TZvOperators Operators(nullptr);
    TZvOperator* Starting = Operators.AddOperator("STARTING", "STARTING WITH");
    bool NotExact = true;
    EXPECT_EQ(Operators.FindNearest("starting", NotExact), Starting);
    EXPECT_FALSE(NotExact);
    EXPECT_EQ(Operators.FindNearest("START", NotExact), Starting);
    EXPECT_TRUE(NotExact);
}
