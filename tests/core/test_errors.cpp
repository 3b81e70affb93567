// Parse-error messages: each error type picks its text and fills in token, position and line.
#include <gtest/gtest.h>

#include "ZvErrors.h"

using namespace zv;

TEST(EZvParserError, InvalidTokenNamesTokenPositionAndLine) {
    EZvParserError E(1, "FRM", 12, 3);
    EXPECT_STREQ(E.what(), "Invalid token 'FRM' at position 12 of line 3.");
    EXPECT_EQ(E.GetErrorType(), 1);
    EXPECT_EQ(E.GetToken(), "FRM");
    EXPECT_EQ(E.GetPosition(), 12);
    EXPECT_EQ(E.GetLine(), 3);
}

TEST(EZvParserError, EachKnownTypeHasItsOwnMessage) {
    EXPECT_EQ(GetErrorMessage(2, "x", 1, 1), "Unexpected end of statement.");
    EXPECT_EQ(GetErrorMessage(3, "x", 1, 1), "Unterminated string.");
    EXPECT_EQ(GetErrorMessage(4, "NAME", 1, 1), "Field 'NAME' not found.");
    EXPECT_EQ(GetErrorMessage(5, "x", 1, 1), "Inadmissible JOIN expression.");
}

TEST(EZvParserError, UnknownTypesReportTheirNumber) {
    EXPECT_EQ(GetErrorMessage(0, "x", 1, 1), "Unknown error (#0).");
    EXPECT_EQ(GetErrorMessage(6, "x", 1, 1), "Unknown error (#6).");
    EXPECT_EQ(GetErrorMessage(-7, "x", 1, 1), "Unknown error (#-7).");
}

TEST(EZvParserError, IsAStandardRuntimeError) {
    try {
        throw EZvParserError(2, "", 5, 1);
    } catch (const std::runtime_error& E) {
        EXPECT_STREQ(E.what(), "Unexpected end of statement.");
        return;
    }
    FAIL() << "not caught as std::runtime_error";
}
