// Tests of the stateless helpers in ZvUtils: case mapping, quoting, the one-line code encoding,
// dotted names, searching, and the diagram's point-near-polyline and transform geometry.
#include "ZvErrors.h"
#include "ZvUtils.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace std::string_literals;
using namespace std::string_view_literals;

namespace zv {
namespace {

// ---- Case mapping and trimming --------------------------------------------------------------

// "café ÿ" in UTF-8: the bytes of é (C3 A9) and ÿ (C3 BF) would change under a locale mapping.
const std::string Utf8Mixed = "caf\xC3\xA9 \xC3\xBF";

TEST(ZvUtils, UpperCaseMapsAsciiLettersAndLeavesUtf8BytesAlone) {
    EXPECT_EQ(UpperCase("select a_1 from T"), "SELECT A_1 FROM T");
    EXPECT_EQ(UpperCase(Utf8Mixed), "CAF\xC3\xA9 \xC3\xBF");
    EXPECT_EQ(UpperCase(""), "");
}

TEST(ZvUtils, LowerCaseMapsAsciiLettersAndLeavesUtf8BytesAlone) {
    EXPECT_EQ(LowerCase("SELECT A_1 From t"), "select a_1 from t");
    EXPECT_EQ(LowerCase("CAF\xC3\x89"), "caf\xC3\x89");
}

TEST(ZvUtils, SameTextFoldsAsciiCaseOnly) {
    EXPECT_TRUE(SameText("Select", "sELECT"));
    EXPECT_TRUE(SameText("", ""));
    EXPECT_FALSE(SameText("select", "selec"));
    EXPECT_FALSE(SameText("a[", "A{"));
    EXPECT_FALSE(SameText("caf\xC3\xA9", "CAF\xC3\x89"));
}

TEST(ZvUtils, TrimRemovesBlanksAndControlCharactersFromBothEnds) {
    EXPECT_EQ(Trim(" \t\r\n a b \x01\x1f"), "a b");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim("x"), "x");
}

TEST(ZvUtils, TrimKeepsBytesAboveAsciiAtTheEnds) {
    // A no-break space (C2 A0) is not a blank here: bytes compare as unsigned values.
    EXPECT_EQ(Trim(" \xC2\xA0x\xC2\xA0 "), "\xC2\xA0x\xC2\xA0");
}

// ---- QuoteString / QuoteStringIfNeed --------------------------------------------------------

TEST(ZvUtils, QuotingWithBracketsLeavesInnerClosingBracketSingle) {
    EXPECT_EQ(QuoteString("a]b", '[', ']'), "[a]b]");
    EXPECT_EQ(QuoteString("a[b", '[', ']'), "[a[b]");
}

TEST(ZvUtils, QuotingWithTheSameCharacterOnBothSidesDoublesItInside) {
    EXPECT_EQ(QuoteString("a'b", '\'', '\''), "'a''b'");
    EXPECT_EQ(QuoteString("it's", '\'', '\''), "'it''s'");
    EXPECT_EQ(QuoteString("''", '\'', '\''), "''''''");
    EXPECT_EQ(QuoteString("say \"hi\"", '"', '"'), "\"say \"\"hi\"\"\"");
}

TEST(ZvUtils, QuotingEmptyTextGivesJustTheQuotes) {
    EXPECT_EQ(QuoteString("", '"', '"'), "\"\"");
    EXPECT_EQ(QuoteString("", '[', ']'), "[]");
}

TEST(ZvUtils, QuotingLeavesUtf8BytesUnchanged) {
    EXPECT_EQ(QuoteString(Utf8Mixed, '"', '"'), "\"" + Utf8Mixed + "\"");
}

TEST(ZvUtils, AppendedQuotingAddsToWhatIsThereAsQuoteStringWrites) {
    for (const char* Text : {"", "a", "a'b", "''", "'", "x'", "'x", "it's a 'quote'", "a]b", "[a]"}) {
        for (const auto& [L, R] : {std::pair{'\'', '\''}, std::pair{'"', '"'}, std::pair{'[', ']'}}) {
            std::string Out = "ab";
            AppendQuotedString(Out, Text, L, R);
            EXPECT_EQ(Out, "ab" + QuoteString(Text, L, R)) << Text << " in " << L << R;
        }
    }
    std::string Out;
    AppendQuotedString(Out, "a'b''c", '\'', '\'');
    EXPECT_EQ(Out, "'a''b''''c'");
}

TEST(ZvUtils, QuoteIfNeededQuotesAnEmptyText) {
    EXPECT_EQ(QuoteStringIfNeed("", '\'', '\''), "''");
    EXPECT_EQ(QuoteStringIfNeed("", '[', ']'), "[]");
}

TEST(ZvUtils, QuoteIfNeededReturnsAnAlreadyBracketedNameUnchanged) {
    EXPECT_EQ(QuoteStringIfNeed("[x]", '[', ']'), "[x]");
    EXPECT_EQ(QuoteStringIfNeed("'ab'", '\'', '\''), "'ab'");
}

TEST(ZvUtils, QuoteIfNeededLooksOnlyAtTheTwoEndCharacters) {
    EXPECT_EQ(QuoteStringIfNeed("'a'b'", '\'', '\''), "'a'b'");
    EXPECT_EQ(QuoteStringIfNeed("[a]b]", '[', ']'), "[a]b]");
}

TEST(ZvUtils, QuoteIfNeededTakesALoneQuoteCharacterAsQuotedWhenBothQuotesAreEqual) {
    EXPECT_EQ(QuoteStringIfNeed("'", '\'', '\''), "'");
    EXPECT_EQ(QuoteStringIfNeed("[", '[', ']'), "[[]");
}

TEST(ZvUtils, QuoteIfNeededQuotesATextQuotedOnOneSideOnly) {
    EXPECT_EQ(QuoteStringIfNeed("x", '[', ']'), "[x]");
    EXPECT_EQ(QuoteStringIfNeed("[x", '[', ']'), "[[x]");
    EXPECT_EQ(QuoteStringIfNeed("x]", '[', ']'), "[x]]");
    EXPECT_EQ(QuoteStringIfNeed("'x", '\'', '\''), "'''x'");
}

// ---- ExtractQuotedString --------------------------------------------------------------------

TEST(ZvUtils, ExtractingUndoublesQuotesAndDropsWhatFollowsTheClosingQuote) {
    EXPECT_EQ(ExtractQuotedString("'ab''c'd", '\'', '\''), "ab'c");
    EXPECT_EQ(ExtractQuotedString("''", '\'', '\''), "");
    EXPECT_EQ(ExtractQuotedString("''''", '\'', '\''), "'");
}

TEST(ZvUtils, ExtractingLeavesAnUnclosedBracketedNameUnchanged) {
    EXPECT_EQ(ExtractQuotedString("[ab", '[', ']'), "[ab");
    EXPECT_EQ(ExtractQuotedString("[ab]c", '[', ']'), "[ab]c");
}

TEST(ZvUtils, ExtractingBracketsRemovesOnlyTheOuterPair) {
    EXPECT_EQ(ExtractQuotedString("[a]b]", '[', ']'), "a]b");
    EXPECT_EQ(ExtractQuotedString("[]", '[', ']'), "");
}

TEST(ZvUtils, ExtractingLeavesAOneCharacterTextUnchanged) {
    EXPECT_EQ(ExtractQuotedString("'", '\'', '\''), "'");
    EXPECT_EQ(ExtractQuotedString("[", '[', ']'), "[");
    EXPECT_EQ(ExtractQuotedString("", '[', ']'), "");
}

TEST(ZvUtils, ExtractingWithoutAClosingQuoteRunsToTheEnd) {
    EXPECT_EQ(ExtractQuotedString("'abc", '\'', '\''), "abc");
    EXPECT_EQ(ExtractQuotedString("'ab''", '\'', '\''), "ab'");
}

TEST(ZvUtils, ExtractingLeavesATextThatDoesNotStartWithTheQuoteUnchanged) {
    EXPECT_EQ(ExtractQuotedString("ab'", '\'', '\''), "ab'");
    EXPECT_EQ(ExtractQuotedString("'a'", '[', ']'), "'a'");
}

TEST(ZvUtils, ExtractingUndoesQuoting) {
    for (const std::string S : {"", "a", "it's", "''", "'x'", "a]b", "[x]", Utf8Mixed.c_str()}) {
        EXPECT_EQ(ExtractQuotedString(QuoteString(S, '\'', '\''), '\'', '\''), S) << S;
        EXPECT_EQ(ExtractQuotedString(QuoteString(S, '[', ']'), '[', ']'), S) << S;
    }
}

// ---- GetEncodedString / GetDecodedString ----------------------------------------------------

// What the settings store hands back: the encoded value without its outer pair of quotes.
std::string StoredValue(std::string_view S, char Q = '"', char C = '#') {
    const std::string Encoded = GetEncodedString(S, Q, C);
    EXPECT_GE(Encoded.size(), 2u);
    EXPECT_EQ(Encoded.front(), Q);
    EXPECT_EQ(Encoded.back(), Q);
    return Encoded.substr(1, Encoded.size() - 2);
}

std::string RoundTrip(std::string_view S, char Q = '"', char C = '#') {
    return GetDecodedString(StoredValue(S, Q, C), Q, C);
}

TEST(ZvUtils, EncodingEmptyTextGivesFourQuotes) {
    EXPECT_EQ(GetEncodedString("", '"', '#'), "\"\"\"\"");
    EXPECT_EQ(GetEncodedString("", '\'', '#'), "''''");
}

TEST(ZvUtils, EncodingPutsALineFeedAsACodeBetweenQuotedStretches) {
    EXPECT_EQ(GetEncodedString("a\nb", '"', '#'), R"(""a"#10"b"")");
}

TEST(ZvUtils, EncodingPutsCarriageReturnAndLineFeedInOneStretchOfCodes) {
    EXPECT_EQ(GetEncodedString("a\r\nb", '"', '#'), R"(""a"#13#10"b"")");
}

TEST(ZvUtils, EncodingAPrintableTextOnlyQuotesItTwice) {
    EXPECT_EQ(GetEncodedString("select *", '"', '#'), R"(""select *"")");
    EXPECT_EQ(GetEncodedString("a\"b", '"', '#'), R"(""a""b"")");
}

TEST(ZvUtils, EncodingControlCharactersAtEitherEnd) {
    EXPECT_EQ(GetEncodedString("\tx", '"', '#'), R"("""#9"x"")");
    EXPECT_EQ(GetEncodedString("x\t", '"', '#'), R"(""x"#9""")");
    EXPECT_EQ(GetEncodedString("\0"sv, '"', '#'), R"("""#0""")");
}

TEST(ZvUtils, EncodingPassesUtf8BytesAsPrintable) {
    EXPECT_EQ(GetEncodedString(Utf8Mixed, '"', '#'), "\"\"" + Utf8Mixed + "\"\"");
}

TEST(ZvUtils, EncodingUsesTheGivenQuoteAndCodeCharacters) {
    EXPECT_EQ(GetEncodedString("a\nb'", '\'', '^'), "''a'^10'b''''");
}

TEST(ZvUtils, DecodingTurnsCodesBackIntoCharacters) {
    EXPECT_EQ(GetDecodedString(R"("a"#10"b")", '"', '#'), "a\nb");
    EXPECT_EQ(GetDecodedString(R"("a"#13#10"b")", '"', '#'), "a\r\nb");
    EXPECT_EQ(GetDecodedString(R"("x"#065#+66"")", '"', '#'), "xAB");
}

TEST(ZvUtils, DecodingTakesTheRestAsCodesWhenTheCodeListIsNotClosed) {
    EXPECT_EQ(GetDecodedString(R"("a"#10)", '"', '#'), "a\n");
    EXPECT_EQ(GetDecodedString(R"("a"#13#10)", '"', '#'), "a\r\n");
}

TEST(ZvUtils, DecodingGivesEveryTextBackThatHoldsNoQuoteFollowedByTheCodeCharacter) {
    std::string AllBytesDescending;
    for (int Code = 255; Code >= 0; --Code)
        AllBytesDescending += static_cast<char>(Code);
    const std::vector<std::string> Texts = {
        "",
        "abc",
        "a\nb",
        "\r\n",
        "\r\nselect\r\n",
        "\"",
        "\"\"",
        "say \"hi\"",
        "x\"\n",
        "\n\"",
        "\x01\x02\x1f",
        "\tat start",
        "at end\t",
        "\n#",
        "a#b#",
        "\x7f",
        Utf8Mixed,
        "select *\r\nfrom \"T\"\r\nwhere a = '#1'\r\n",
        "\0\0"s,
        "\0x\0"s,
        AllBytesDescending,
    };
    for (const std::string& S : Texts)
        EXPECT_EQ(RoundTrip(S), S) << "text: " << S;
}

TEST(ZvUtils, DecodingGivesTextBackWithOtherQuoteAndCodeCharacters) {
    for (const std::string S : {"it's\r\nfine", "", "a^b", "\x05'"})
        EXPECT_EQ(RoundTrip(S, '\'', '^'), S) << S;
}

// The decoder takes any Q followed by C as the start of a code list, even where the encoder
// wrote a doubled quote from the text: the first quote then closes the text early.
TEST(ZvUtils, DecodingCutsATextHoldingAQuoteFollowedByTheCodeCharacter) {
    EXPECT_EQ(RoundTrip("x\"#65"), "x");
    EXPECT_EQ(RoundTrip("ab\"#66\"cd"), "ab");
    EXPECT_THROW(RoundTrip("\"#"), EZvConvertError);
}

// The opening quote of the encoded text followed by a leading C forms the same pair.
TEST(ZvUtils, DecodingReadsALeadingCodeCharacterAsACodeList) {
    EXPECT_EQ(RoundTrip("#65"), "A");
    EXPECT_EQ(RoundTrip("#10#13"), "\n\r");
    EXPECT_THROW(RoundTrip("#abc"), EZvConvertError);
}

TEST(ZvUtils, DecodingRefusesMalformedCodeLists) {
    for (const char* Literal : {R"("a"#)", R"("a"#")", R"("a"#abc"")", R"("a"#10#"")", R"("a"##10"")",
                                R"("a"#256"")", R"("a"#-1"")", R"("a"# 10"")", R"("a"#1 0"")",
                                R"("a"#0x41"")", R"("a"#+"")", R"("a"#99999999999999999999999"")"})
        EXPECT_THROW(GetDecodedString(Literal, '"', '#'), EZvConvertError) << Literal;
}

TEST(ZvUtils, DecodingErrorNamesTheBadCode) {
    try {
        GetDecodedString(R"("a"#10#abc"")", '"', '#');
        FAIL() << "no error raised";
    } catch (const EZvConvertError& E) {
        EXPECT_EQ(std::string(E.what()), "'abc' is not a valid character code");
    }
}

TEST(ZvUtils, ConvertErrorIsAGeneralError) {
    EXPECT_THROW(GetDecodedString(R"("#x")", '"', '#'), EZvError);
}

// ---- EncodeIdent / DecodeIdent --------------------------------------------------------------

TEST(ZvUtils, EncodeIdentReplacesEveryDotByATab) {
    EXPECT_EQ(EncodeIdent("s.t.f"), "s\tt\tf");
    EXPECT_EQ(EncodeIdent(".."), "\t\t");
    EXPECT_EQ(EncodeIdent("abc"), "abc");
}

TEST(ZvUtils, DecodeIdentReplacesEveryTabByADot) {
    EXPECT_EQ(DecodeIdent("s\tt\tf\t"), "s.t.f.");
    EXPECT_EQ(DecodeIdent("a b"), "a b");
    EXPECT_EQ(DecodeIdent(EncodeIdent("x.y.z")), "x.y.z");
}

// ---- ExtractTableName / ExtractFieldName ----------------------------------------------------

TEST(ZvUtils, TableNameIsTheQualifierBeforeTheLastDot) {
    EXPECT_EQ(ExtractTableName("t.f", '"', '"'), "t");
    EXPECT_EQ(ExtractTableName("s.t.f", '"', '"'), "s.t");
    EXPECT_EQ(ExtractFieldName("s.t.f", '"', '"'), "f");
    EXPECT_EQ(ExtractFieldName("t.f", '"', '"'), "f");
}

TEST(ZvUtils, NamePartsAreViewsIntoTheGivenText) {
    const std::string Name = R"(s."a.b""c")";
    const std::string_view Table = TableNamePart(Name, '"', '"');
    const std::string_view Field = FieldNamePart(Name, '"', '"');
    EXPECT_EQ(Table, "s");
    EXPECT_EQ(Field, R"("a.b""c")");
    EXPECT_EQ(Table.data(), Name.data());
    EXPECT_EQ(Field.data(), Name.data() + 2);
    EXPECT_TRUE(TableNamePart("f", '"', '"').empty());
    EXPECT_EQ(FieldNamePart("f", '"', '"'), "f");
    EXPECT_EQ(FieldNamePart(".f", '"', '"'), ".f");
}

TEST(ZvUtils, SplittingGivesBothNamePartsAtOnce) {
    for (const char* Name : {"t.f", "s.t.f", "f", "", ".f", "t.", "\"a.b\"", R"("x.y"."z")", R"(s."a.b""c")",
                             "[a.b].c", "a.[b.c]", "..", "a\"b.c"}) {
        for (const auto& [L, R] : {std::pair{'"', '"'}, std::pair{'[', ']'}}) {
            const TZvNameParts Parts = SplitQualifiedName(Name, L, R);
            EXPECT_EQ(Parts.Table, TableNamePart(Name, L, R)) << Name;
            EXPECT_EQ(Parts.Field, FieldNamePart(Name, L, R)) << Name;
        }
    }
    const std::string Name = "a.[b.c]";
    const TZvNameParts Parts = SplitQualifiedName(Name, '[', ']');
    EXPECT_EQ(Parts.Table, "a");
    EXPECT_EQ(Parts.Field, "[b.c]");
    EXPECT_EQ(Parts.Field.data(), Name.data() + 2);
}

TEST(ZvUtils, QuotedNameWithADotOnlyInsideHasNoQualifier) {
    EXPECT_EQ(ExtractTableName("\"a.b\"", '"', '"'), "");
    EXPECT_EQ(ExtractFieldName("\"a.b\"", '"', '"'), "\"a.b\"");
    EXPECT_EQ(ExtractTableName("[a.b]", '[', ']'), "");
}

TEST(ZvUtils, QualifierDotIsWhereTableAndFieldNamesSplit) {
    EXPECT_EQ(QualifierDot("s.t.f", '"', '"'), 3u);
    EXPECT_EQ(QualifierDot(R"("x.y"."z")", '"', '"'), 5u);
    EXPECT_EQ(QualifierDot("\"a.b\"", '"', '"'), std::string_view::npos);
    EXPECT_EQ(QualifierDot("", '"', '"'), std::string_view::npos);
    // A dot in front splits off an empty qualifier, which leaves the field name whole.
    EXPECT_EQ(QualifierDot(".f", '"', '"'), 0u);
    EXPECT_EQ(ExtractTableName(".f", '"', '"'), "");
    EXPECT_EQ(ExtractFieldName(".f", '"', '"'), ".f");
}

TEST(ZvUtils, NameWithoutADotIsAllField) {
    EXPECT_EQ(ExtractTableName("f", '"', '"'), "");
    EXPECT_EQ(ExtractFieldName("f", '"', '"'), "f");
    EXPECT_EQ(ExtractTableName("", '"', '"'), "");
    EXPECT_EQ(ExtractFieldName("", '"', '"'), "");
}

TEST(ZvUtils, QuotedSchemaHoldingADotSplitsAtTheDotBetweenTheQuotedParts) {
    EXPECT_EQ(ExtractTableName(R"("x.y"."z")", '"', '"'), R"("x.y")");
    EXPECT_EQ(ExtractFieldName(R"("x.y"."z")", '"', '"'), R"("z")");
}

TEST(ZvUtils, BracketedNamesSplitAtTheDotBetweenTheBrackets) {
    EXPECT_EQ(ExtractTableName("[a.b].[c]", '[', ']'), "[a.b]");
    EXPECT_EQ(ExtractFieldName("[a.b].[c]", '[', ']'), "[c]");
    EXPECT_EQ(ExtractTableName("[s].[t.u].[f.g]", '[', ']'), "[s].[t.u]");
    EXPECT_EQ(ExtractTableName("[s].t", '[', ']'), "[s]");
}

TEST(ZvUtils, DoubledQuotesInsideAQuotedNameDoNotEndIt) {
    // Were the doubled quote taken as the name's opening quote, the dot inside would split it.
    EXPECT_EQ(ExtractTableName(R"(s."a.b""c")", '"', '"'), "s");
    EXPECT_EQ(ExtractFieldName(R"(s."a.b""c")", '"', '"'), R"("a.b""c")");
    EXPECT_EQ(ExtractTableName(R"("s.""x"."f")", '"', '"'), R"("s.""x")");
}

TEST(ZvUtils, FieldNameOfATextStartingWithItsOnlyDotIsTheWholeText) {
    EXPECT_EQ(ExtractTableName(".f", '"', '"'), "");
    EXPECT_EQ(ExtractFieldName(".f", '"', '"'), ".f");
}

TEST(ZvUtils, DottedNamesKeepUtf8Bytes) {
    const std::string Name = "sch\xC3\xA9ma.t\xC3\xA4"
                             "bel";
    EXPECT_EQ(ExtractTableName(Name, '"', '"'), "sch\xC3\xA9ma");
    EXPECT_EQ(ExtractFieldName(Name, '"', '"'), "t\xC3\xA4"
                                                "bel");
}

// ---- ZvPos ----------------------------------------------------------------------------------

TEST(ZvUtils, PosFindsTheFirstOccurrenceCountingFromOne) {
    EXPECT_EQ(ZvPos("a", "banana", true), 2);
    EXPECT_EQ(ZvPos("na", "banana", true), 3);
    EXPECT_EQ(ZvPos("banana", "banana", true), 1);
}

TEST(ZvUtils, PosReturnsZeroWhenAbsent) {
    EXPECT_EQ(ZvPos("x", "banana", true), 0);
    EXPECT_EQ(ZvPos("x", "banana", false), 0);
    EXPECT_EQ(ZvPos("bananas", "banana", false), 0);
    EXPECT_EQ(ZvPos("a", "", false), 0);
    EXPECT_EQ(ZvPos("", "banana", true), 0);
}

TEST(ZvUtils, PosRespectsCaseWhenAsked) {
    EXPECT_EQ(ZvPos("SELECT", "x select y", true), 0);
    EXPECT_EQ(ZvPos("select", "x Select select", true), 10);
}

TEST(ZvUtils, PosIgnoresAsciiCaseWhenAsked) {
    EXPECT_EQ(ZvPos("SELECT", "x select y", false), 3);
    EXPECT_EQ(ZvPos("sElEcT", "x SeLeCt", false), 3);
}

TEST(ZvUtils, PosCountsUtf8BytesAndDoesNotFoldThem) {
    EXPECT_EQ(ZvPos("\xC3\xA9", "caf\xC3\xA9", true), 4);
    EXPECT_EQ(ZvPos("X", "\xC3\xA9x", false), 3);
    EXPECT_EQ(ZvPos("CAF\xC3\x89", "caf\xC3\xA9", false), 0);
}

// ---- IsExpression ---------------------------------------------------------------------------

TEST(ZvUtils, ArithmeticAndFunctionCallsWithOperatorCharactersAreExpressions) {
    EXPECT_TRUE(IsExpression("a-b"));
    EXPECT_TRUE(IsExpression("count(*)"));
    for (const char* S : {"a*b", "a+b", "f(a,b)", "a-b", "a/b", "a||b", "first-name", " + "})
        EXPECT_TRUE(IsExpression(S)) << S;
}

TEST(ZvUtils, ParenthesesBlanksAndQuotesAloneAreNoExpression) {
    EXPECT_FALSE(IsExpression("(a)"));
    EXPECT_FALSE(IsExpression("t.a"));
    EXPECT_FALSE(IsExpression("\"a b\""));
    EXPECT_FALSE(IsExpression("a b"));
}

TEST(ZvUtils, BlankOrEmptyTextIsNoExpression) {
    EXPECT_FALSE(IsExpression(""));
    EXPECT_FALSE(IsExpression("   "));
    EXPECT_FALSE(IsExpression("\t\r\n "));
}

// ---- UpperCaseItems -------------------------------------------------------------------------

TEST(ZvUtils, UpperCaseItemsDoesNothingForANullList) {
    EXPECT_NO_THROW(UpperCaseItems(nullptr));
}

TEST(ZvUtils, UpperCaseItemsUpperCasesEachItemInPlace) {
    std::vector<std::string> Items = {"select", "From", "", "a_b1", Utf8Mixed};
    UpperCaseItems(&Items);
    const std::vector<std::string> Expected = {"SELECT", "FROM", "", "A_B1", "CAF\xC3\xA9 \xC3\xBF"};
    EXPECT_EQ(Items, Expected);
}

TEST(ZvUtils, UpperCaseItemsLeavesAnEmptyListEmpty) {
    std::vector<std::string> Items;
    UpperCaseItems(&Items);
    EXPECT_TRUE(Items.empty());
}

// ---- IsPointNearLine ------------------------------------------------------------------------

TEST(ZvUtils, PolylineOfFewerThanTwoPointsIsNeverNear) {
    EXPECT_EQ(IsPointNearLine({{3, 4}}, {3, 4}, 10), -1);
    EXPECT_EQ(IsPointNearLine({}, {0, 0}, 10), -1);
}

TEST(ZvUtils, PointExactlyTheDistanceFromAHorizontalSegmentWithinItsSpanIsNear) {
    const std::vector<TZvPoint> Line = {{0, 0}, {10, 0}};
    EXPECT_EQ(IsPointNearLine(Line, {5, 3}, 3), 0);
    EXPECT_EQ(IsPointNearLine(Line, {5, -3}, 3), 0);
    EXPECT_EQ(IsPointNearLine(Line, {10, 3}, 3), 0);
    EXPECT_EQ(IsPointNearLine(Line, {0, 0}, 0), 0);
}

TEST(ZvUtils, PointJustBeyondTheDistanceFromAHorizontalSegmentIsNotNear) {
    const std::vector<TZvPoint> Line = {{0, 0}, {10, 0}};
    EXPECT_EQ(IsPointNearLine(Line, {5, 4}, 3), -1);
    EXPECT_EQ(IsPointNearLine(Line, {5, 3}, 2.99), -1);
}

TEST(ZvUtils, PointOutsideTheSpanOfAStraightSegmentIsNotNear) {
    EXPECT_EQ(IsPointNearLine({{0, 0}, {10, 0}}, {11, 0}, 5), -1);
    EXPECT_EQ(IsPointNearLine({{0, 0}, {10, 0}}, {-1, 0}, 5), -1);
    EXPECT_EQ(IsPointNearLine({{4, 0}, {4, 10}}, {4, 11}, 5), -1);
}

TEST(ZvUtils, PointNearAVerticalSegment) {
    const std::vector<TZvPoint> Line = {{4, 0}, {4, 10}};
    EXPECT_EQ(IsPointNearLine(Line, {6, 10}, 2), 0);
    EXPECT_EQ(IsPointNearLine(Line, {2, 0}, 2), 0);
    EXPECT_EQ(IsPointNearLine(Line, {7, 5}, 2), -1);
}

TEST(ZvUtils, StraightSegmentsAreNearTheSameWayInEitherDirection) {
    EXPECT_EQ(IsPointNearLine({{10, 0}, {0, 0}}, {5, 3}, 3), 0);
    EXPECT_EQ(IsPointNearLine({{10, 0}, {0, 0}}, {5, 4}, 3), -1);
    EXPECT_EQ(IsPointNearLine({{4, 10}, {4, 0}}, {6, 0}, 2), 0);
    EXPECT_EQ(IsPointNearLine({{4, 10}, {4, 0}}, {4, -1}, 2), -1);
}

TEST(ZvUtils, SegmentOfOneRepeatedPointIsNearOnlyOnItsOwnRow) {
    const std::vector<TZvPoint> Line = {{3, 3}, {3, 3}};
    EXPECT_EQ(IsPointNearLine(Line, {3, 3}, 0), 0);
    EXPECT_EQ(IsPointNearLine(Line, {5, 3}, 2), 0);
    EXPECT_EQ(IsPointNearLine(Line, {3, 4}, 5), -1);
}

// From (0, 0) to (2, 10) the line's pixels are (round(y / 5), y); the point (3, 5) is two
// pixels from the nearest of them in city-block distance.
TEST(ZvUtils, PointNearASteepSegment) {
    const std::vector<TZvPoint> Line = {{0, 0}, {2, 10}};
    EXPECT_EQ(IsPointNearLine(Line, {3, 5}, 2), 0);
    EXPECT_EQ(IsPointNearLine(Line, {3, 5}, 1.9), -1);
    EXPECT_EQ(IsPointNearLine(Line, {2, 10}, 0), 0);
    EXPECT_EQ(IsPointNearLine(Line, {1, 5}, 0), 0);
    EXPECT_EQ(IsPointNearLine(Line, {0, 5}, 0), -1);
}

TEST(ZvUtils, PointNearAShallowSegment) {
    const std::vector<TZvPoint> Line = {{0, 0}, {10, 2}};
    EXPECT_EQ(IsPointNearLine(Line, {5, 3}, 2), 0);
    EXPECT_EQ(IsPointNearLine(Line, {5, 3}, 1), -1);
    EXPECT_EQ(IsPointNearLine(Line, {5, 1}, 0), 0);
    EXPECT_EQ(IsPointNearLine(Line, {9, 0}, 1), -1);
}

TEST(ZvUtils, SlopedSegmentsAreNearTheSameWayInEitherDirection) {
    EXPECT_EQ(IsPointNearLine({{2, 10}, {0, 0}}, {3, 5}, 2), 0);
    EXPECT_EQ(IsPointNearLine({{2, 10}, {0, 0}}, {3, 5}, 1.9), -1);
    EXPECT_EQ(IsPointNearLine({{10, 2}, {0, 0}}, {5, 3}, 2), 0);
    EXPECT_EQ(IsPointNearLine({{10, 2}, {0, 0}}, {5, 3}, 1), -1);
}

TEST(ZvUtils, PointNearADiagonalSegment) {
    const std::vector<TZvPoint> Line = {{0, 10}, {10, 0}};
    EXPECT_EQ(IsPointNearLine(Line, {4, 6}, 0), 0);
    EXPECT_EQ(IsPointNearLine(Line, {5, 7}, 2), 0);
    EXPECT_EQ(IsPointNearLine(Line, {5, 7}, 1), -1);
}

// From (0, 0) to (4, 2) the line passes y = 0.5 at x = 1 and y = 1.5 at x = 3; halves round to
// the even neighbour, so its pixels there are (1, 0) and (3, 2).
TEST(ZvUtils, LinePixelsRoundHalvesToEven) {
    const std::vector<TZvPoint> Line = {{0, 0}, {4, 2}};
    EXPECT_EQ(IsPointNearLine(Line, {1, 0}, 0), 0);
    EXPECT_EQ(IsPointNearLine(Line, {3, 2}, 0), 0);
    EXPECT_EQ(IsPointNearLine(Line, {1, 1}, 0), -1);
    EXPECT_EQ(IsPointNearLine(Line, {3, 1}, 0), -1);
}

// From (-23, 3) to (-24, -18) the pixels are x = -24 up to y = -8 and x = -23 from y = -7. The
// point (-29, -1) is 6 from (-23, -1), but the first probe meets a flat step (F(-8) == F(-7) ==
// 12), turns towards the lower end and finds no better than 12 there.
TEST(ZvUtils, SearchFollowsTheBisectionNotTheExactMinimum) {
    const std::vector<TZvPoint> Line = {{-23, 3}, {-24, -18}};
    EXPECT_EQ(IsPointNearLine(Line, {-29, -1}, 6), -1);
    EXPECT_EQ(IsPointNearLine(Line, {-29, -1}, 11), -1);
    EXPECT_EQ(IsPointNearLine(Line, {-29, -1}, 12), 0);
    EXPECT_EQ(IsPointNearLine(Line, {-23, -1}, 0), 0);
}

TEST(ZvUtils, NearTestReturnsTheIndexOfTheFirstNearSegment) {
    const std::vector<TZvPoint> Box = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};
    EXPECT_EQ(IsPointNearLine(Box, {10, 5}, 1), 1);
    EXPECT_EQ(IsPointNearLine(Box, {5, 9}, 1), 2);
    EXPECT_EQ(IsPointNearLine(Box, {1, 5}, 1), 3);
    EXPECT_EQ(IsPointNearLine(Box, {10, 0}, 0), 0);
    EXPECT_EQ(IsPointNearLine(Box, {0, 0}, 0), 0);
    EXPECT_EQ(IsPointNearLine(Box, {5, 5}, 4), -1);
}

TEST(ZvUtils, NegativeDistanceIsNeverNear) {
    EXPECT_EQ(IsPointNearLine({{0, 0}, {10, 0}}, {5, 0}, -1), -1);
    EXPECT_EQ(IsPointNearLine({{0, 0}, {10, 3}}, {0, 0}, -0.5), -1);
}

TEST(ZvUtils, ExtremeCoordinatesNeitherOverflowNorHang) {
    const TZvPoint Min{INT_MIN, INT_MIN};
    const TZvPoint Max{INT_MAX, INT_MAX};
    EXPECT_EQ(IsPointNearLine({{INT_MIN, 0}, {INT_MAX, 0}}, {0, 0}, 0), 0);
    EXPECT_EQ(IsPointNearLine({{0, INT_MIN}, {0, INT_MAX}}, {INT_MIN, 0}, 1e10), 0);
    EXPECT_EQ(IsPointNearLine({Min, Max}, {0, 0}, 0), 0);
    EXPECT_EQ(IsPointNearLine({Min, Max}, {0, 5}, 1), -1);
    EXPECT_EQ(IsPointNearLine({Max, {INT_MIN, INT_MAX - 1}}, {0, INT_MAX}, 1), 0);
}

// Independent oracle: the pixels of a sloped segment, walked along its longer axis.
std::vector<TZvPoint> WalkPixels(TZvPoint A, TZvPoint B) {
    const double DX = A.X - B.X;
    const double DY = A.Y - B.Y;
    std::vector<TZvPoint> Pixels;
    if (std::fabs(DX) < std::fabs(DY)) {
        for (int Y = std::min(A.Y, B.Y); Y <= std::max(A.Y, B.Y); ++Y)
            Pixels.push_back({static_cast<int>(std::nearbyint((Y - B.Y) * DX / DY + B.X)), Y});
    } else {
        for (int X = std::min(A.X, B.X); X <= std::max(A.X, B.X); ++X)
            Pixels.push_back({X, static_cast<int>(std::nearbyint((X - B.X) * DY / DX + B.Y))});
    }
    return Pixels;
}

TEST(ZvUtils, EveryPixelOfASlopedSegmentIsFoundAtDistanceZero) {
    std::mt19937 Random(20240611);
    std::uniform_int_distribution<int> Coordinate(-60, 60);
    for (int Round = 0; Round < 400; ++Round) {
        const TZvPoint A{Coordinate(Random), Coordinate(Random)};
        const TZvPoint B{Coordinate(Random), Coordinate(Random)};
        if (A.X == B.X || A.Y == B.Y)
            continue;
        for (const TZvPoint& Pixel : WalkPixels(A, B))
            ASSERT_EQ(IsPointNearLine({A, B}, Pixel, 0), 0) << "(" << A.X << "," << A.Y << ")-(" << B.X << ","
                                                            << B.Y << ") at " << Pixel.X << "," << Pixel.Y;
    }
}

TEST(ZvUtils, SlopedSegmentIsNearOnlyWhenSomePixelIsWithinTheDistance) {
    std::mt19937 Random(7);
    std::uniform_int_distribution<int> Coordinate(-40, 40);
    std::uniform_int_distribution<int> Distance(0, 12);
    int NearCount = 0;
    int FarCount = 0;
    for (int Round = 0; Round < 3000; ++Round) {
        const TZvPoint A{Coordinate(Random), Coordinate(Random)};
        const TZvPoint B{Coordinate(Random), Coordinate(Random)};
        const TZvPoint P{Coordinate(Random), Coordinate(Random)};
        const int D = Distance(Random);
        if (A.X == B.X || A.Y == B.Y)
            continue;
        int Closest = INT_MAX;
        for (const TZvPoint& Pixel : WalkPixels(A, B))
            Closest = std::min(Closest, std::abs(Pixel.X - P.X) + std::abs(Pixel.Y - P.Y));
        if (IsPointNearLine({A, B}, P, D) == 0) {
            ++NearCount;
            ASSERT_LE(Closest, D) << "(" << A.X << "," << A.Y << ")-(" << B.X << "," << B.Y << ") P " << P.X
                                  << "," << P.Y;
        } else {
            ++FarCount;
        }
    }
    EXPECT_GT(NearCount, 100);
    EXPECT_GT(FarCount, 100);
}

// ---- TransformCoordinates -------------------------------------------------------------------

TEST(ZvUtils, IdentityTransformLeavesPointsUnchanged) {
    std::vector<TZvPoint> Points = {{1, 2}, {-3, 4}, {0, 0}};
    const std::int16_t M[6] = {1, 0, 0, 1, 0, 0};
    TransformCoordinates(Points.data(), 3, M);
    EXPECT_EQ(Points, (std::vector<TZvPoint>{{1, 2}, {-3, 4}, {0, 0}}));
}

TEST(ZvUtils, TranslationAddsTheLastTwoCoefficients) {
    std::vector<TZvPoint> Points = {{1, 2}, {-3, 4}};
    const std::int16_t M[6] = {1, 0, 0, 1, 5, -7};
    TransformCoordinates(Points.data(), 2, M);
    EXPECT_EQ(Points, (std::vector<TZvPoint>{{6, -5}, {2, -3}}));
}

TEST(ZvUtils, ScaleMultipliesEachAxis) {
    std::vector<TZvPoint> Points = {{1, 2}, {-3, 4}};
    const std::int16_t M[6] = {2, 0, 0, -3, 0, 0};
    TransformCoordinates(Points.data(), 2, M);
    EXPECT_EQ(Points, (std::vector<TZvPoint>{{2, -6}, {-6, -12}}));
}

TEST(ZvUtils, TransformTakesXFromCoefficientsZeroTwoFourAndYFromOneThreeFive) {
    // x' = m0*x + m2*y + m4, y' = m1*x + m3*y + m5
    TZvPoint Points[1] = {{10, 100}};
    const std::int16_t M[6] = {1, 2, 3, 4, 5, 6};
    TransformCoordinates(Points, 1, M);
    EXPECT_EQ(Points[0], (TZvPoint{10 + 300 + 5, 20 + 400 + 6}));
}

TEST(ZvUtils, TransformChangesOnlyTheFirstCountPointsInPlace) {
    TZvPoint Points[3] = {{1, 5}, {2, 6}, {3, 7}};
    const std::int16_t Swap[6] = {0, 1, 1, 0, 0, 0};
    TransformCoordinates(Points, 2, Swap);
    EXPECT_EQ(Points[0], (TZvPoint{5, 1}));
    EXPECT_EQ(Points[1], (TZvPoint{6, 2}));
    EXPECT_EQ(Points[2], (TZvPoint{3, 7}));
}

TEST(ZvUtils, TransformOfNoPointsChangesNothing) {
    TZvPoint Points[1] = {{7, 8}};
    const std::int16_t M[6] = {2, 2, 2, 2, 2, 2};
    TransformCoordinates(Points, 0, M);
    EXPECT_EQ(Points[0], (TZvPoint{7, 8}));
    TransformCoordinates(nullptr, 0, M);
    TransformCoordinates(Points, -1, M);
    EXPECT_EQ(Points[0], (TZvPoint{7, 8}));
}

TEST(ZvUtils, TransformResultOutsideIntWrapsInsteadOfOverflowing) {
    TZvPoint Points[1] = {{INT_MAX, INT_MIN}};
    const std::int16_t M[6] = {2, 0, 0, INT16_MIN, 0, 1};
    TransformCoordinates(Points, 1, M);
    EXPECT_EQ(Points[0].X, -2); // 2^32 - 2 wrapped
    EXPECT_EQ(Points[0].Y, 1);  // 2^46 wrapped to 0, plus 1
}

TEST(ZvUtils, NormalizingInputKeepsCarriageReturnLineFeedsAndDropsOneFinalBreak) {
    EXPECT_EQ(NormalizeInputText("a\nb\r\nc\n"), "a\r\nb\r\nc");
    EXPECT_EQ(NormalizeInputText("a\r\n"), "a");
    EXPECT_EQ(NormalizeInputText("a\n\n"), "a\r\n");
    EXPECT_EQ(NormalizeInputText("\n"), "");
    EXPECT_EQ(NormalizeInputText(""), "");
    EXPECT_EQ(NormalizeInputText("a\rb"), "a\rb");
}

} // namespace
} // namespace zv
