// Stateless text, identifier and geometry helpers: quoting of names and literals, dotted-name
// splitting, the one-line code encoding used by the settings file, searching, and the polyline
// hit test of the diagram. Every function works on bytes and leaves its arguments untouched.
#include "ZvUtils.h"

#include "ZvErrors.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdlib>

namespace zv {

namespace {

unsigned char Byte(char C) {
    return static_cast<unsigned char>(C);
}

bool IsBlank(char C) {
    return Byte(C) <= 32;
}

} // namespace

std::string UpperCase(std::string_view S) {
    std::string Result(S);
    for (char& C : Result)
        C = UpCase(C);
    return Result;
}

std::string LowerCase(std::string_view S) {
    std::string Result(S);
    for (char& C : Result)
        C = LoCase(C);
    return Result;
}

std::string Trim(std::string_view S) {
    std::size_t First = 0;
    std::size_t Last = S.size();
    while (First < Last && IsBlank(S[First]))
        ++First;
    while (Last > First && IsBlank(S[Last - 1]))
        --Last;
    return std::string(S.substr(First, Last - First));
}

bool IsBlankText(std::string_view S) {
    for (char C : S)
        if (!IsBlank(C))
            return false;
    return true;
}

std::string NormalizeInputText(std::string_view Text) {
    if (!Text.empty() && Text.back() == '\n')
        Text.remove_suffix(Text.size() >= 2 && Text[Text.size() - 2] == '\r' ? 2 : 1);
    std::string Result;
    Result.reserve(Text.size() + Text.size() / 16);
    for (std::size_t I = 0; I < Text.size(); ++I) {
        if (Text[I] == '\n' && (I == 0 || Text[I - 1] != '\r'))
            Result += '\r';
        Result += Text[I];
    }
    return Result;
}

// ---- Quoting --------------------------------------------------------------------------------

std::string QuoteString(std::string_view S, char L, char R) {
    std::string Result;
    Result.reserve(S.size() + 2);
    AppendQuotedString(Result, S, L, R);
    return Result;
}

void AppendQuotedString(std::string& Out, std::string_view S, char L, char R) {
    Out += L;
    if (L == R) {
        // Runs between quotes go in whole; each quote is written twice.
        for (std::size_t At = 0;;) {
            const std::size_t Quote = S.find(L, At);
            if (Quote == std::string_view::npos) {
                Out += S.substr(At);
                break;
            }
            Out += S.substr(At, Quote + 1 - At);
            Out += L;
            At = Quote + 1;
        }
    } else {
        // A bracketed name has no escape for its closing bracket: "a]b" stays "[a]b]".
        Out += S;
    }
    Out += R;
}

std::string QuoteStringIfNeed(std::string_view S, char L, char R) {
    // Only the two end characters decide, so a lone L (with L == R) counts as quoted: the
    // question is whether the caller already quoted the text, not whether it is well formed.
    if (!S.empty() && S.front() == L && S.back() == R)
        return std::string(S);
    return QuoteString(S, L, R);
}

// With L == R: the text up to the first single L after the opening one, doubled Ls undoubled;
// anything after the closing quote is dropped, and without one the text runs to the end.
// With L != R: S without its first and last characters, but only when the last one is R.
std::string ExtractQuotedString(std::string_view S, char L, char R) {
    if (S.size() < 2 || S.front() != L)
        return std::string(S);
    if (L != R) {
        if (S.back() != R)
            return std::string(S);
        return std::string(S.substr(1, S.size() - 2));
    }
    std::string Result;
    Result.reserve(S.size());
    for (std::size_t I = 1; I < S.size(); ++I) {
        if (S[I] == L) {
            if (I + 1 >= S.size() || S[I + 1] != L)
                break;
            ++I;
        }
        Result += S[I];
    }
    return Result;
}

// ---- One-line literal encoding --------------------------------------------------------------

std::string GetEncodedString(std::string_view S, char Q, char C) {
    const std::string Quoted = QuoteString(S, Q, Q);
    std::string Result;
    Result.reserve(Quoted.size() + 2);
    // 255 counts as printable, so a control character at the very start still opens with Q.
    unsigned char Previous = 255;
    for (char Ch : Quoted) {
        const unsigned char Code = Byte(Ch);
        if (Code >= 32) {
            if (Previous < 32)
                Result += Q;
            Result += Ch;
        } else {
            if (Previous >= 32)
                Result += Q;
            Result += C;
            Result += std::to_string(Code);
        }
        Previous = Code;
    }
    return Q + Result + Q;
}

namespace {

// One piece of a code list: an optional sign and decimal digits, nothing else, with a value in
// 0..255. Leading blanks, hex forms and out-of-range values are refused rather than wrapped,
// because the settings file is written only by GetEncodedString, which never produces them.
char DecodeCharCode(std::string_view Piece) {
    auto Fail = [&]() -> EZvConvertError {
        return EZvConvertError("'" + std::string(Piece) + "' is not a valid character code");
    };
    std::size_t I = 0;
    bool Negative = false;
    if (I < Piece.size() && (Piece[I] == '+' || Piece[I] == '-')) {
        Negative = Piece[I] == '-';
        ++I;
    }
    if (I == Piece.size())
        throw Fail();
    int Value = 0;
    for (; I < Piece.size(); ++I) {
        const unsigned char D = Byte(Piece[I]);
        if (D < '0' || D > '9')
            throw Fail();
        Value = Value * 10 + (D - '0');
        if (Value > 255)
            throw Fail();
    }
    if (Negative && Value != 0)
        throw Fail();
    return static_cast<char>(static_cast<unsigned char>(Value));
}

void AppendCodeList(std::string& Result, std::string_view Codes, char C) {
    std::size_t Start = 0;
    for (;;) {
        const std::size_t Stop = Codes.find(C, Start);
        if (Stop == std::string_view::npos) {
            Result += DecodeCharCode(Codes.substr(Start));
            return;
        }
        Result += DecodeCharCode(Codes.substr(Start, Stop - Start));
        Start = Stop + 1;
    }
}

} // namespace

// Two kinds of text do not survive the round trip: one holding Q immediately followed by C, and
// one starting with C (the opening quote and C form the same pair). The decoder takes any such
// pair as the start of a code list, so the text comes back cut short, changed, or refused. This
// is intended: the stored format stays readable by every reader of it, and SQL text rarely
// holds either outside a comment or a string literal.
std::string GetDecodedString(std::string_view Literal, char Q, char C) {
    const char Opener[2] = {Q, C};
    const std::string_view P(Opener, 2);
    std::string_view W = Literal;
    std::string Result;
    Result.reserve(W.size());
    for (std::size_t At = W.find(P); At != std::string_view::npos; At = W.find(P)) {
        Result += W.substr(0, At);
        W.remove_prefix(At + P.size());
        // An unterminated code list (the text ended) takes the rest of the text.
        const std::size_t End = std::min(W.find(Q), W.size());
        AppendCodeList(Result, W.substr(0, End), C);
        W.remove_prefix(std::min(End + 1, W.size()));
    }
    Result += W;
    return ExtractQuotedString(Result, Q, Q);
}

// ---- Identifiers ----------------------------------------------------------------------------

namespace {

std::string ReplaceChar(std::string_view S, char From, char To) {
    std::string Result(S);
    std::replace(Result.begin(), Result.end(), From, To);
    return Result;
}

} // namespace

std::string EncodeIdent(std::string_view S) {
    return ReplaceChar(S, '.', '\t');
}

std::string DecodeIdent(std::string_view S) {
    return ReplaceChar(S, '\t', '.');
}

// Scans backwards keeping a quotation depth; the first "." met at depth 0 ends the qualifier.
// A name that ends in R starts inside its quotes. With L == R a quote is told as opening or
// closing by its neighbour: a doubled quote inside a name raises the depth, and its partner
// lowers it again, so the pair cancels out.
std::size_t QualifierDot(std::string_view S, char L, char R) {
    if (S.empty())
        return std::string_view::npos;
    long Depth = 0;
    std::size_t I = S.size();
    if (S.back() == R) {
        Depth = 1;
        --I;
    }
    while (I > 0) {
        --I;
        const char Ch = S[I];
        if (L != R) {
            if (Ch == R)
                ++Depth;
            else if (Ch == L)
                --Depth;
        } else if (Ch == L && Depth >= 1) {
            if (I > 0 && S[I - 1] == L)
                ++Depth;
            else
                --Depth;
        }
        if (Ch == '.' && Depth == 0)
            return I;
    }
    return std::string_view::npos;
}

// A "." in front (an empty qualifier) counts as no qualifier: the name stays whole.
TZvNameParts SplitQualifiedName(std::string_view S, char L, char R) {
    const std::size_t Dot = QualifierDot(S, L, R);
    if (Dot == std::string_view::npos)
        return {std::string_view(), S};
    return {S.substr(0, Dot), Dot == 0 ? S : S.substr(Dot + 1)};
}

std::string_view TableNamePart(std::string_view S, char L, char R) {
    return SplitQualifiedName(S, L, R).Table;
}

std::string_view FieldNamePart(std::string_view S, char L, char R) {
    return SplitQualifiedName(S, L, R).Field;
}

std::string ExtractTableName(std::string_view S, char L, char R) {
    return std::string(TableNamePart(S, L, R));
}

std::string ExtractFieldName(std::string_view S, char L, char R) {
    return std::string(FieldNamePart(S, L, R));
}

// ---- Searching ------------------------------------------------------------------------------

int ZvPos(std::string_view T, std::string_view S, bool CaseSensitive) {
    if (T.empty())
        return 0;
    std::size_t At;
    if (CaseSensitive) {
        At = S.find(T);
    } else {
        // Folding on the fly instead of upper-casing copies: this runs in the parser's loops.
        const auto It = std::search(S.begin(), S.end(), T.begin(), T.end(),
                                    [](char X, char Y) { return UpCase(X) == UpCase(Y); });
        At = It == S.end() ? std::string_view::npos : static_cast<std::size_t>(It - S.begin());
    }
    return At == std::string_view::npos ? 0 : static_cast<int>(At + 1);
}

bool IsExpression(std::string_view S) {
    if (Trim(S).empty())
        return false;
    // Deliberately crude: a hyphen in a name makes an expression, parentheses alone do not.
    return S.find_first_of("*+,-/|") != std::string_view::npos;
}

void UpperCaseItems(std::vector<std::string>* List) {
    if (!List)
        return;
    for (std::string& Item : *List)
        for (char& C : Item)
            C = UpCase(C);
}

// ---- Diagram geometry -----------------------------------------------------------------------

namespace {

// Round half to even, done by hand so that a host that changed the floating-point rounding
// mode cannot move a link's hit area.
double RoundHalfEven(double V) {
    const double Floor = std::floor(V);
    const double Fraction = V - Floor;
    if (Fraction > 0.5)
        return Floor + 1;
    if (Fraction < 0.5)
        return Floor;
    return std::fmod(Floor, 2.0) == 0 ? Floor : Floor + 1;
}

double Distance(std::int64_t A, std::int64_t B) {
    return static_cast<double>(A > B ? A - B : B - A);
}

bool Within(std::int64_t V, std::int64_t A, std::int64_t B) {
    return V >= std::min(A, B) && V <= std::max(A, B);
}

// A sloped segment walked along its longer axis: T is the coordinate on that axis, and the line
// gives the other one. Coordinates are widened to 64 bits so no difference can overflow.
struct TSlopedWalk {
    std::int64_t FreeEnd;  // the segment's second point on the walked axis
    std::int64_t OtherEnd; // ... and on the other axis
    std::int64_t Along;    // the walked axis's difference, first point minus second
    std::int64_t Across;   // the other axis's difference
    std::int64_t PFree;    // P on the walked axis
    std::int64_t POther;   // P on the other axis

    // City-block distance from P to the line's pixel at T. The product comes before the
    // division so that, for any coordinates a diagram uses, it is exact and a true half stays
    // a half for the rounding.
    double F(std::int64_t T) const {
        const double Other =
            static_cast<double>(T - FreeEnd) * static_cast<double>(Across) / static_cast<double>(Along) +
            static_cast<double>(OtherEnd);
        return Distance(T, PFree) + std::fabs(RoundHalfEven(Other) - static_cast<double>(POther));
    }
};

// Bisection for the minimum of F over [Lo, Hi]: a tie F(Mid + 1) == F(Mid) goes left. F falls
// and then rises, but the rounded line makes it flat in places, so the search can settle beside
// the true minimum and call a point far that is D away in city-block terms. That is accepted:
// a point on the line's pixels is always found (F is strictly falling and rising around it),
// and a point is never called near unless some pixel is within D.
// Each pass with Hi - Lo >= 2 puts Mid strictly inside and narrows the range; once Hi - Lo <= 1,
// Mid == Lo and that pass is the last, so the loop ends for every input.
bool IsSlopedNear(const TSlopedWalk& Walk, std::int64_t Lo, std::int64_t Hi, double D) {
    for (;;) {
        const std::int64_t Mid = Lo + (Hi - Lo) / 2;
        const double FMid = Walk.F(Mid);
        if (FMid <= D)
            return true;
        const double FNext = Walk.F(Mid + 1);
        const bool LastPass = Lo == Mid;
        if (FNext >= FMid)
            Hi = Mid;
        else
            Lo = Mid;
        if (LastPass)
            return FNext <= D;
    }
}

bool IsSegmentNear(TZvPoint A, TZvPoint B, TZvPoint P, double D) {
    const std::int64_t X1 = A.X, Y1 = A.Y, X2 = B.X, Y2 = B.Y, PX = P.X, PY = P.Y;
    if (X1 == X2)
        return Within(PY, Y1, Y2) && Distance(X1, PX) <= D;
    if (Y1 == Y2)
        return Within(PX, X1, X2) && Distance(Y1, PY) <= D;
    const std::int64_t DX = X1 - X2;
    const std::int64_t DY = Y1 - Y2;
    // |dx/dy| < |dy/dx| is |dx| < |dy|, compared exactly on integers; equal slopes walk along x.
    if (std::abs(DX) < std::abs(DY))
        return IsSlopedNear({Y2, X2, DY, DX, PY, PX}, std::min(Y1, Y2), std::max(Y1, Y2), D);
    return IsSlopedNear({X2, Y2, DX, DY, PX, PY}, std::min(X1, X2), std::max(X1, X2), D);
}

} // namespace

int IsPointNearLine(const std::vector<TZvPoint>& Points, TZvPoint P, double D) {
    for (std::size_t I = 0; I + 1 < Points.size(); ++I)
        if (IsSegmentNear(Points[I], Points[I + 1], P, D))
            return static_cast<int>(I);
    return -1;
}

// Computed in 64 bits, where the products of 16-bit coefficients and int coordinates cannot
// overflow, then narrowed: a result outside int wraps modulo 2^32 (defined since C++20) rather
// than being undefined behaviour.
void TransformCoordinates(TZvPoint* Points, int Count, const std::int16_t M[6]) {
    assert((Points || Count <= 0) && "points missing for a non-empty transform");
    for (int I = 0; I < Count; ++I) {
        TZvPoint& Pt = Points[I];
        const std::int64_t X = Pt.X, Y = Pt.Y;
        Pt.X = static_cast<int>(M[0] * X + M[2] * Y + M[4]);
        Pt.Y = static_cast<int>(M[1] * X + M[3] * Y + M[5]);
    }
}

} // namespace zv
