// Stateless text, identifier and geometry helpers used throughout Zevrin: quoting and unquoting
// SQL names and literals, splitting dotted names, the one-line "#"-code encoding of texts for
// settings files, and point-to-polyline tests for the diagram.
//
// Texts are byte strings (UTF-8 passes through unchanged); positions are 1-based, 0 = absent.
// Case mapping and case-insensitive comparison touch ASCII letters only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

// ASCII-only case mapping: bytes outside 'a'..'z' / 'A'..'Z' pass unchanged.
inline char UpCase(char C) {
    return (C >= 'a' && C <= 'z') ? static_cast<char>(C - ('a' - 'A')) : C;
}
inline char LoCase(char C) {
    return (C >= 'A' && C <= 'Z') ? static_cast<char>(C + ('a' - 'A')) : C;
}
std::string UpperCase(std::string_view S);
std::string LowerCase(std::string_view S);
// Case-insensitive equality of two texts (ASCII letters folded). Inline, lengths first: keyword
// tests call it for nearly every token, and most compare texts of different lengths.
inline bool SameText(std::string_view A, std::string_view B) {
    if (A.size() != B.size())
        return false;
    for (std::size_t I = 0; I < A.size(); ++I) {
        if (A[I] != B[I] && UpCase(A[I]) != UpCase(B[I]))
            return false;
    }
    return true;
}
// S without leading and trailing blanks and control characters (codes up to 32).
std::string Trim(std::string_view S);
// True when S holds only blanks and control characters: Trim(S) would be empty.
bool IsBlankText(std::string_view S);
// Statement text as an editor or a file holds it, made ready for the scanner, whose line end is
// carriage return + line feed: lone line feeds become "\r\n" and one final line break is dropped.
std::string NormalizeInputText(std::string_view Text);

// L + S + R. With L == R every L inside S is doubled; with L != R nothing is escaped.
std::string QuoteString(std::string_view S, char L, char R);
// QuoteString(S, L, R) appended to Out; S must not lie in Out, which may move while it grows.
void AppendQuotedString(std::string& Out, std::string_view S, char L, char R);
// S unchanged when it is non-empty, starts with L and ends with R; otherwise QuoteString.
std::string QuoteStringIfNeed(std::string_view S, char L, char R);
// S without its quotes (see the rules in ZvUtils.cpp); S unchanged when it is not quoted.
std::string ExtractQuotedString(std::string_view S, char L, char R);

// One-line literal for settings files: control characters become C-codes outside quotes, and
// the whole is wrapped in Q once more (the settings store strips that outer pair on reading).
std::string GetEncodedString(std::string_view S, char Q, char C);
// The inverse, for a value without the outer pair. A malformed code list raises EZvConvertError.
std::string GetDecodedString(std::string_view Literal, char Q, char C);

// "." <-> tab, so that a dotted name passes as one item where "." separates items.
std::string EncodeIdent(std::string_view S);
std::string DecodeIdent(std::string_view S);

// Where S splits into qualifier and name: the position of the last "." that stands outside
// quotes L..R, npos when there is none.
std::size_t QualifierDot(std::string_view S, char L, char R);
// The qualifier before that "."; empty when there is none.
std::string ExtractTableName(std::string_view S, char L, char R);
// The part after that "."; S whole when there is no qualifier.
std::string ExtractFieldName(std::string_view S, char L, char R);
// The same two parts as views into S, for callers that only read them.
std::string_view TableNamePart(std::string_view S, char L, char R);
std::string_view FieldNamePart(std::string_view S, char L, char R);
// Both parts from one scan, for writers that need the two.
struct TZvNameParts {
    std::string_view Table;
    std::string_view Field;
};
TZvNameParts SplitQualifiedName(std::string_view S, char L, char R);

// 1-based position of T in S, 0 when absent; case-insensitive (ASCII) unless CaseSensitive.
int ZvPos(std::string_view T, std::string_view S, bool CaseSensitive);
// True when S holds any of "*+,-/|" (and is not blank): an expression rather than a bare name.
bool IsExpression(std::string_view S);
// Upper-cases every item in place; does nothing for a null list.
void UpperCaseItems(std::vector<std::string>* List);

struct TZvPoint {
    int X = 0;
    int Y = 0;
    friend bool operator==(const TZvPoint&, const TZvPoint&) = default;
};

// Index of the first segment (Points[i], Points[i+1]) within city-block distance D of P, or -1.
int IsPointNearLine(const std::vector<TZvPoint>& Points, TZvPoint P, double D);
// x' = m0*x + m2*y + m4, y' = m1*x + m3*y + m5 for each of the Count points, in place.
void TransformCoordinates(TZvPoint* Points, int Count, const std::int16_t M[6]);

} // namespace zv
