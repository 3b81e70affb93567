// Word lists: comma texts in, case-insensitive whole-entry look-ups out.
#include <gtest/gtest.h>

#include <string>

#include "ZvWordList.h"

using namespace zv;

TEST(TZvWordList, CommaTextSplitsAtCommasAndTrimsBlanks) {
    TZvWordList L;
    L.SetCommaText(" SELECT , from,Where ");
    ASSERT_EQ(L.Count(), 3u);
    EXPECT_EQ(L.Items()[0], "SELECT");
    EXPECT_EQ(L.Items()[1], "from");
    EXPECT_EQ(L.Items()[2], "Where");
    EXPECT_EQ(L.GetCommaText(), "SELECT,from,Where");
}

TEST(TZvWordList, EmptyCommaTextGivesAnEmptyList) {
    TZvWordList L;
    L.SetCommaText("A,B");
    L.SetCommaText("");
    EXPECT_EQ(L.Count(), 0u);
    EXPECT_FALSE(L.Contains("A"));
}

TEST(TZvWordList, LookupIgnoresCaseAndMatchesWholeEntriesOnly) {
    TZvWordList L;
    L.SetCommaText("SELECT,COUNT");
    EXPECT_TRUE(L.Contains("select"));
    EXPECT_TRUE(L.Contains("CoUnT"));
    EXPECT_FALSE(L.Contains("SELEC"));
    EXPECT_FALSE(L.Contains("SELECTS"));
    EXPECT_FALSE(L.Contains(""));
}

TEST(TZvWordList, RepeatedEntriesAreKeptAndStillFound) {
    TZvWordList L;
    L.SetCommaText("FROM,A,FROM");
    EXPECT_EQ(L.Count(), 3u);
    EXPECT_TRUE(L.Contains("from"));
}

TEST(TZvWordList, NonAsciiBytesAreComparedExactly) {
    TZvWordList L;
    L.SetCommaText("\xC3\xA9T\xC3\xA9");  // "été" in UTF-8 with an upper-case T
    EXPECT_TRUE(L.Contains("\xC3\xA9t\xC3\xA9"));
    EXPECT_FALSE(L.Contains("\xC3\x89T\xC3\x89"));  // upper-case É is a different byte sequence
}

TEST(TZvWordList, OnlyAsciiLettersAreFoldedInShortAndLongWords) {
    TZvWordList L;
    // 0xC1 and 0xE1 differ in the bit that tells the case of an ASCII letter, but are no letters.
    L.SetCommaText("X\xC1,@[`{,ABCDEFGHIJ\xC1");
    EXPECT_TRUE(L.Contains("x\xC1"));
    EXPECT_FALSE(L.Contains("x\xE1"));
    EXPECT_FALSE(L.Contains("X\xE1"));
    EXPECT_TRUE(L.Contains("abcdefghij\xC1"));
    EXPECT_FALSE(L.Contains("abcdefghij\xE1"));
    // The characters next to the letters are no letters either.
    EXPECT_TRUE(L.Contains("@[`{"));
    EXPECT_FALSE(L.Contains("`{@["));
    EXPECT_FALSE(L.Contains("@[@["));
}

TEST(TZvWordList, LargeListsFindEveryEntry) {
    TZvWordList L;
    std::string Text;
    for (int I = 0; I < 600; ++I)
        Text += (I ? ",W" : "W") + std::to_string(I);
    L.SetCommaText(Text);
    for (int I = 0; I < 600; ++I)
        EXPECT_TRUE(L.Contains("w" + std::to_string(I))) << I;
    EXPECT_FALSE(L.Contains("W600"));
}

TEST(TZvWordList, WordsUpToEightBytesAndLongerAreFoundByWholeEntry) {
    TZvWordList L;
    L.SetCommaText("A,ABCDEFG,ABCDEFGH,ABCDEFGHI,X\x80Y");
    for (const char* Word : {"a", "abcdefg", "AbCdEfGh", "abcdefghi", "x\x80y"})
        EXPECT_TRUE(L.Contains(Word)) << Word;
    // A word is not found by a prefix, an extension, or a trailing zero byte.
    for (const char* Word : {"ab", "abcdef", "abcdefgh_", "abcdefghij", "x\x80"})
        EXPECT_FALSE(L.Contains(Word)) << Word;
    EXPECT_FALSE(L.Contains(std::string_view("A\0", 2)));
    EXPECT_FALSE(L.Contains(std::string_view("ABCDEFG\0", 8)));
    // Words that share an entry's first letter and length are told apart by the table itself.
    for (const char* Word : {"abcdefx", "abcdefgx", "abcdefghx", "x\x80z"})
        EXPECT_FALSE(L.Contains(Word)) << Word;
}

TEST(TZvWordList, PrefixTestFindsBeginningsOfEntries) {
    TZvWordList L;
    L.SetCommaText("<=,<>,(+)");
    EXPECT_TRUE(L.IsPrefixOfEntry("<"));
    EXPECT_TRUE(L.IsPrefixOfEntry("<="));
    EXPECT_TRUE(L.IsPrefixOfEntry("(+"));
    EXPECT_FALSE(L.IsPrefixOfEntry("<=="));
    EXPECT_FALSE(L.IsPrefixOfEntry("+"));
}

TEST(TZvWordList, AssignCopiesEntriesAndIndex) {
    TZvWordList A, B;
    A.SetCommaText("X,Y");
    B.Assign(A);
    EXPECT_TRUE(B.Contains("x"));
    B.Assign(B);
    EXPECT_EQ(B.Count(), 2u);
    B.Add("Z");
    EXPECT_TRUE(B.Contains("z"));
    EXPECT_FALSE(A.Contains("z"));
}
