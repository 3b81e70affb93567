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

TEST(TZvWordFlags, WordsInsideATextAreFoundAsAlone) {
    TZvWordFlags Flags;
    for (const char* Key : {"AS", "Or", "not", "LIKE", "count", "SELECT", "BETWEEN", "DISTINCT", "ASCENDING", "_x"})
        Flags.Add(Key, 1);
    Flags.Add("between", 2);
    // Each word at the start, in the middle and at the very end of a text, so that the bytes after
    // it are other words, blanks or only the terminating zero.
    const std::string Text = "as OR Not like COUNT Select between distinct ascending _X sel distincts xs";
    std::size_t Start = 0;
    while (Start < Text.size()) {
        std::size_t End = Text.find(' ', Start);
        if (End == std::string::npos)
            End = Text.size();
        const std::string_view Word(Text.data() + Start, End - Start);
        const std::size_t Readable = Text.size() + 1 - Start;
        EXPECT_EQ(Flags.FindInText(Word.data(), Word.size(), Readable), Flags.Find(Word)) << Word;
        // The same word as the end of its own text.
        const std::string Alone(Word);
        EXPECT_EQ(Flags.FindInText(Alone.data(), Alone.size(), Alone.size() + 1), Flags.Find(Word)) << Word;
        Start = End + 1;
    }
    EXPECT_EQ(Flags.Find("BeTwEeN"), 3);
    EXPECT_EQ(Flags.Find("sel"), 0);
    EXPECT_EQ(Flags.Find("x"), 0);
}

TEST(TZvWordFlags, TheFirstLetterMatchesInEitherCase) {
    TZvWordFlags Flags;
    Flags.Add("Abc", 4);
    Flags.Add("zz", 8);
    const std::string Text = "aBC ABC abc ZZ zZ abd";
    EXPECT_EQ(Flags.FindInText(Text.data(), 3, Text.size() + 1), 4);
    EXPECT_EQ(Flags.FindInText(Text.data() + 4, 3, Text.size() - 3), 4);
    EXPECT_EQ(Flags.FindInText(Text.data() + 8, 3, Text.size() - 7), 4);
    EXPECT_EQ(Flags.FindInText(Text.data() + 12, 2, Text.size() - 11), 8);
    EXPECT_EQ(Flags.FindInText(Text.data() + 15, 2, Text.size() - 14), 8);
    EXPECT_EQ(Flags.FindInText(Text.data() + 18, 3, 4), 0);
    // A byte next to a letter in the code table is not that letter in another case.
    EXPECT_EQ(Flags.Find("@bc"), 0);
    EXPECT_EQ(Flags.Find("!bc"), 0);
}
