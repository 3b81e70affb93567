// The SQL scanner in two layers: TZvScanner, a character cursor that knows quotes and parenthesis
// depth, and TZvSQLScanner, which cuts statement text into typed tokens, tracks lines and columns
// and answers the dialect's questions about names (keyword? function? needs quotes? how quoted?).
// A dialect derives from TZvSQLScanner and overrides virtual operations; nothing here knows which
// dialect is in use.
#pragma once

#include <array>
#include <cstdint>
#include <type_traits>
#include <typeinfo>
#include <string>
#include <string_view>

#include "ZvWordList.h"

namespace zv {

enum TTokenKind : std::uint8_t {
    tkKeyword,
    tkFunction,
    tkDelim,
    tkInteger,
    tkFloat,
    tkString,
    tkQuote,
    tkSpace,
    tkEol,
    tkEnd,
    tkIdent,
    tkOperation,
    tkComparison,
    tkBoolean,
    tkSpecial,
};

// A set of token kinds, one bit per kind at its ordinal: a token may be several things at once
// (a keyword that is also a function; an operation mark on top of a delimiter).
class TTokenKinds {
public:
    constexpr TTokenKinds() = default;
    // {tkSpace, tkEol}: a fold rather than a loop, so that a set written in place costs nothing.
    template <class... TKinds>
        requires(sizeof...(TKinds) > 0 && (std::is_same_v<TKinds, TTokenKind> && ...))
    constexpr TTokenKinds(TKinds... Kinds) : Bits(static_cast<std::uint16_t>((0u | ... | (1u << Kinds)))) {}
    constexpr bool Contains(TTokenKind K) const { return (Bits & Bit(K)) != 0; }
    constexpr void Include(TTokenKind K) { Bits = static_cast<std::uint16_t>(Bits | Bit(K)); }
    constexpr void Exclude(TTokenKind K) { Bits = static_cast<std::uint16_t>(Bits & ~Bit(K)); }
    constexpr bool Empty() const { return Bits == 0; }
    constexpr std::uint16_t GetBits() const { return Bits; }
    constexpr TTokenKinds operator&(TTokenKinds Other) const { return FromBits(Bits & Other.Bits); }
    constexpr TTokenKinds operator|(TTokenKinds Other) const { return FromBits(Bits | Other.Bits); }
    friend constexpr bool operator==(TTokenKinds, TTokenKinds) = default;

private:
    static constexpr std::uint16_t Bit(TTokenKind K) { return static_cast<std::uint16_t>(1u << K); }
    static constexpr TTokenKinds FromBits(unsigned B) {
        TTokenKinds R;
        R.Bits = static_cast<std::uint16_t>(B);
        return R;
    }
    std::uint16_t Bits = 0;
};

// True when the two sets share a member.
constexpr bool IsIntersected(TTokenKinds A, TTokenKinds B) {
    return !(A & B).Empty();
}

// Character cursor over a text: position, current token, parenthesis level and quote state.
// Positions are 1-based byte positions; Position == Length + 1 is the end of the text.
class TZvScanner {
public:
    TZvScanner() = default;
    virtual ~TZvScanner() = default;
    TZvScanner(const TZvScanner&) = delete;
    TZvScanner& operator=(const TZvScanner&) = delete;

    // Character classes, in the slot order dialects know them by.
    virtual bool IsAlpha(char C);
    virtual bool IsDelim(char C);
    virtual bool IsDigit(char C);
    virtual bool IsQuote(char C);
    virtual bool IsSpace(char C);
    // Reads the next token and puts everything back: the caller learns what follows.
    virtual void GetTokenPlus();
    virtual bool ShouldLevelUp(char C);
    virtual bool ShouldLevelDown(char C);
    // Cursor to the start of the text: empty token, level 0, no quote open.
    virtual void Init();
    virtual void GetFirstToken();
    // The base layer reads a plain word: a run of characters up to a blank or delimiter outside
    // quotes, or that one delimiter. The SQL layer replaces it with the full token reader.
    virtual void GetNextToken();
    // The closing quote for the opening quote Q.
    virtual char GetQuotePair(char Q);
    // Moves the cursor N characters (back for negative N), tracking quotes and level. Clears Token.
    virtual void MoveBy(std::int32_t N);

    // Assigns the text and reads its first token.
    void SetExpression(std::string_view Text);
    const std::string& GetExpression() const { return Expression; }

    std::string Expression;
    std::int32_t Position = 1;
    std::int32_t Length = 0;
    std::string Token;
    std::int32_t Level = 0;
    bool InQuote = false;
    char QuoteChar = 0;

protected:
    // What the look-ahead saves and puts back.
    struct TCursorState {
        std::int32_t Position;
        std::string Token;
        std::int32_t Level;
        bool InQuote;
        char QuoteChar;
    };
    TCursorState SaveCursor() const { return {Position, Token, Level, InQuote, QuoteChar}; }
    void RestoreCursor(TCursorState& State);

    // The character at 1-based position P (P within 1..Length).
    char CharAt(std::int32_t P) const { return Expression[static_cast<std::size_t>(P - 1)]; }
    // Passes over the character at the cursor, tracking quote state and level.
    void StepForward();
    void StepBack();
    // The quote test used when moving forward, and when moving back (they differ on purpose in
    // the SQL layer: forward needs both tests, back either).
    virtual bool IsForwardQuote(char C);
    virtual bool IsBackwardQuote(char C);
};

// The SQL layer: typed tokens, word lists, lines and columns, and name quoting rules.
//
// Word lists and the character-class table are filled on first use rather than in the
// constructor: they come from virtual operations that a dialect overrides, and a C++ base
// constructor cannot reach those overrides. A dialect that changes a setting on which its
// character tests depend calls InvalidateCharClasses().
class TZvSQLScanner : public TZvScanner {
public:
    TZvSQLScanner();

    // Also saves and restores the token kinds, line and column; leaves TokenKindsPlus and
    // TokenPlus describing the next token.
    void GetTokenPlus() override;
    // Also sets Line and Column: line 2 when the previous token was a line end, else line 1.
    void Init() override;
    // Reads one token; blanks, line ends and bare quote characters are passed over (counted in
    // SpaceCount). Raises EZvParserError (type 3) when the text ends inside a quote.
    void GetNextToken() override;
    // After moving, TokenKinds is {tkEnd} when Position equals Length, else empty.
    void MoveBy(std::int32_t N) override;
    virtual bool IsOperation(std::string_view S);
    virtual bool IsComplexOperator(std::string_view S);
    virtual bool IsCompareOperator(std::string_view S);
    virtual bool IsLegalSymbol(char C);
    virtual bool IsIdentifier(std::string_view S);
    virtual bool IsInteger(std::string_view S);
    virtual bool IsBoolean(std::string_view S);
    virtual bool IsKeyword(std::string_view S);
    virtual bool IsFunction(std::string_view S);
    // Does C close the quoted text opened by Quote? Text is the token read so far, Next the
    // character after C (0 at the end of the text).
    virtual bool IsTerminator(char C, std::string_view Text, char Next, char Quote);
    virtual char GetIdentQuote();
    virtual bool GetProcessAliases();
    virtual bool GetQuoteIdentifiers();
    virtual char GetStringQuote();
    virtual std::string GetCommaKeywords();
    virtual std::string GetCommaFunctions();
    virtual std::string GetCommaOperations();
    virtual std::string GetCommaComplexOperators();
    virtual std::string GetCommaCompareOperators();
    virtual std::string GetCommaJoinOperators();
    // Strips identifier quotes from a quoted name.
    virtual std::string ProcessIdent(std::string_view S);
    virtual void DefineKeywords();
    virtual void DefineFunctions();
    virtual void DefineOperations();
    virtual void DefineComplexOperators();
    virtual void DefineCompareOperators();
    virtual void DefineJoinOperators();
    virtual void DefineBooleans();
    // Quotes a name read inside quotes that holds a dot, so that it is never split later.
    virtual std::string GetFormatTokenIdent(std::string_view S, bool Quoted);
    virtual bool NeedQuotes(std::string_view S);
    // Quotes a possibly dotted name part by part, where the parts need it.
    virtual std::string ProcessName(std::string_view S);
    // Appends ProcessName(S) to Out: the name itself, with no string in between, when it is
    // certain that ProcessName would leave it unchanged.
    void AppendName(std::string& Out, std::string_view S);
    // Quotes one name part when it needs it (after stripping the quotes it had).
    virtual std::string QuoteName(std::string_view S);
    // Appends QuoteName(S) to Out: the part itself, with no string in between, when it is certain
    // that QuoteName would leave it unchanged.
    void AppendQuotedName(std::string& Out, std::string_view S);
    // A string literal: S as it stands when already quoted, else quoted with inner quotes doubled.
    virtual std::string QuoteStr(std::string_view S);
    virtual bool IsIdentQuote(char C);
    virtual bool IsJoinOperator(std::string_view S);

    // Runs the look-ahead and returns the kinds of the next token.
    TTokenKinds GetTokenKindPlus();
    const std::string& GetBooleans(bool Flag);
    void SetBooleans(bool Flag, std::string_view Text);

    // The word lists. Each setter copies the other list's entries in (nothing when handed its own).
    const TZvWordList& GetKeywords();
    const TZvWordList& GetFunctions();
    const TZvWordList& GetOperations();
    const TZvWordList& GetComplexOperators();
    const TZvWordList& GetCompareOperators();
    const TZvWordList& GetJoinOperators();
    void SetKeywords(const TZvWordList& Value);
    void SetFunctions(const TZvWordList& Value);
    void SetOperations(const TZvWordList& Value);
    void SetComplexOperators(const TZvWordList& Value);
    void SetCompareOperators(const TZvWordList& Value);
    void SetJoinOperators(const TZvWordList& Value);

    // Forget the character-class table (and the word index built with it); both are rebuilt
    // from the virtual tests and the lists on next use.
    void InvalidateCharClasses() { CharClassesValid = false; }

    TTokenKinds TokenKinds;
    TTokenKinds TokenKindsPlus;
    // The text of the token the look-ahead saw (callers need to know that "BY" follows "GROUP").
    std::string TokenPlus;
    // 1-based position at which the current token's text begins. For a token read inside quotes
    // (InQuote still set when it is handed out) the opening quote stands just before it and the
    // closing quote at Position, so its source text spans TokenPos - 1 .. Position.
    std::int32_t TokenPos = 1;
    // For the token read inside quotes that the scanner stands on: the text between its quotes,
    // a doubled quote made one where the quote closes itself (a bracket is never doubled).
    std::string QuotedContent();
    std::int32_t Line = 1;
    std::int32_t Column = 1;
    std::int32_t SpaceCount = 0;
    bool EmptyQuote = false;
    // The text ended on a quote that closed the last quoted text only because nothing followed
    // it: read on, it would have been the first of a doubled pair ('it'' at the very end).
    bool EndClosedQuote = false;
    bool QuoteIdentifiers = true;
    bool ProcessAliases = false;

protected:
    // What the word tests (IsInteger, IsIdentifier, IsKeyword, IsFunction, ProcessIdent and
    // GetFormatTokenIdent) make of a word read outside quotes.
    enum class TZvWordRules : std::uint8_t {
        Virtual,     // only the tests themselves can tell
        Base,        // those of this class: the class table and the word index answer them
        FoldUpper,   // those of this class on the word upper-cased, an identifier written so
        FoldLower,   // the same, lower-cased
    };
    // A dialect whose word tests follow Rules says so for its own class Owner. A scanner derived
    // from it further may override them, and has its tests called again. The declaration also
    // says that Owner quotes names through ProcessName of this class, unless OwnNameQuoting says
    // it has a ProcessName of its own (see AppendName).
    void DeclareWordRules(const std::type_info& Owner, TZvWordRules Rules, bool OwnNameQuoting = false) {
        RulesOwner = &Owner;
        DeclaredRules = Rules;
        DeclaredOwnNameQuoting = OwnNameQuoting;
        CharClassesValid = false;
    }

    bool IsForwardQuote(char C) override;
    bool IsBackwardQuote(char C) override;
    // NeedQuotes of the dialects whose reserved words can never stand as bare names: a name
    // enclosed in identifier quotes needs none; a keyword or function name always does; anything
    // else only when the generic rule asks for them and it is not an identifier.
    bool NeedQuotesReserved(std::string_view S);
    // QuoteStr of the dialects with more than one string quote: a literal already enclosed in one
    // of them (IsQuote) stays as written, since wrapping it in the other would change its text.
    std::string QuoteStrInAnyQuote(std::string_view S);

    // Fills the word lists and booleans once, through the (possibly overridden) Define operations.
    void EnsureDefined() {
        if (!Defined)
            DefineLists();
    }
    void DefineLists();
    // Reads the characters of one token, before it is classified.
    void ReadToken();
    // The common tokens, read in one pass; anything else goes on to ReadAnyToken.
    void ReadCommonToken();
    void ReadCommonAfterBlanks();
    void ReadCommonDelimiter(std::uint16_t First);
    void ReadCommonWord(std::uint16_t First);
    void ReadFirstOrAfterQuote();
    void ReadAnyToken();
    template <class TWords>
    void MarkListed(const TWords& Words);
    bool IsIntegerWord(std::string_view Word, std::uint16_t First, std::uint16_t Rest);
    static TTokenKinds WordKinds(std::uint8_t WordFlags, std::uint16_t First, std::uint16_t Rest);
    // The two classify a word read on the common path and mark an operation word as one.
    void ClassifyDialectWord(std::uint8_t WordFlags);
    void ClassifyFoldedWord(std::uint8_t WordFlags, std::uint16_t First, std::uint16_t Rest);
    void ClassifyWord(std::uint8_t WordFlags);
    bool ReadCommonOperator();
    void PassOpeningQuote();
    bool PassClosingQuote();
    // Passes over a run of plain blanks and line ends as the token reader would, one counted
    // token each, without building the tokens.
    void SkipBlanks();

private:
    enum : std::uint16_t {
        ccAlpha = 1 << 0,
        ccDelim = 1 << 1,
        ccDigit = 1 << 2,
        ccQuote = 1 << 3,
        ccIdentQuote = 1 << 4,
        ccSpace = 1 << 5,
        ccLegal = 1 << 6,
        ccLevelUp = 1 << 7,
        ccLevelDown = 1 << 8,
        ccOperatorStart = 1 << 9,
        ccDot = 1 << 10,  // "." may start a float's fraction whatever the dialect's delimiters
        ccPlainBlank = 1 << 11,  // read as a lone blank token: no delimiter, quote, operator or word
        ccLoneDelim = 1 << 12,   // a delimiter read as a token of its own: no quote, operator or line end
        ccListed = 1 << 13,      // occurs in a keyword, function, operation or boolean literal
        ccBlankStart = 1 << 14,  // may begin a run that SkipBlanks passes over
        ccNameSafe = 1 << 15,    // in a name, no blank, "*", "." or identifier quote
    };
    // The characters that end a word on the common path.
    static constexpr std::uint16_t kWordStop = ccQuote | ccIdentQuote | ccDelim | ccSpace | ccDot;
    enum : std::uint8_t { wfKeyword = 1, wfFunction = 2, wfOperation = 4, wfBoolean = 8 };
    std::uint16_t Classes(char C) {
        if (!CharClassesValid)
            BuildClassTables();
        return CharClass[static_cast<unsigned char>(C)];
    }
    bool Has(char C, std::uint16_t Mask) { return (Classes(C) & Mask) != 0; }
    // The classes of the character at 1-based position P of Data (the tables are built).
    std::uint16_t ClassAt(const char* Data, std::int32_t P) const {
        return CharClass[static_cast<unsigned char>(Data[P - 1])];
    }
    // True when every character of S is of a class in Mask (also for the empty S).
    bool AllHave(std::string_view S, std::uint16_t Mask);
    // For a plain word (a letter, then legal symbols, none of them a character that makes
    // NeedQuotes look closer: a blank, "*", "." or identifier quote), the classes that all its
    // characters share; 0 for any other text.
    std::uint16_t PlainWordClasses(std::string_view S);
    // A word whose first character has the classes First and all of whose characters share the
    // classes Shared is plain.
    static bool IsPlainWord(std::uint16_t First, std::uint16_t Shared) {
        constexpr std::uint16_t Plain = ccLegal | ccNameSafe;
        return (First & ccAlpha) && (Shared & Plain) == Plain;
    }
    // IsKeyword or IsFunction of a plain word whose characters share the classes Shared.
    bool IsReservedWord(std::string_view S, std::uint16_t Shared);
    bool PartsNeedNoQuotes(std::string_view S);
    // ProcessName is the one of this class: the scanner is this class, or a dialect that
    // declared its word rules for its own class and no name quoting of its own.
    bool QuotesNamesAsBase();
    // The tests of this class's ProcessName that leave S as it is.
    bool NameStaysAsItIs(std::string_view S);
    // NameStaysAsItIs where QuotesNamesAsBase holds and the class tables are built, remembered for
    // names of up to sixteen bytes: what it rests on then changes only with the tables.
    bool NameStaysRemembered(std::string_view S);
    void BuildClassTables();
    void BuildFoldedTables();
    // C in the case the dialect's declared word rules fold words to.
    char FoldChar(char C) const;
    void AddOperatorParts(const TZvWordList& List, std::uint8_t PrefixFlag, std::uint8_t EntryFlag);
    void FillList(TZvWordList& List, const std::string& CommaText);
    bool ReadQuote(char C);
    bool ReadFloat();
    void ReadDelimiterOrBlank(char C);
    bool ReadOperator(std::uint8_t PrefixFlag, std::uint8_t EntryFlag, TTokenKind Kind);
    void RaiseUnterminated();
    void AdjustLevelAfterToken();

    TZvWordList Keywords;
    TZvWordList Functions;
    TZvWordList ComplexOperators;
    TZvWordList CompareOperators;
    TZvWordList JoinOperators;
    TZvWordList Operations;
    std::array<std::string, 2> Booleans;
    std::array<std::uint16_t, 256> CharClass{};
    // Keywords, functions, operations and the boolean literals in one index: a word is
    // classified with one look-up.
    TZvWordFlags WordClasses;
    std::array<std::uint8_t, 256> CharWordClass{};  // WordClasses of the one-character words
    std::array<std::int8_t, 256> LevelDelta{};      // +1 opens a level, -1 closes one
    // Every beginning of a comparison or complex operator (opPrefix flags) and the operators
    // themselves (opEntry flags), so that reading "<=" costs a few hash look-ups.
    enum : std::uint8_t { opComparePrefix = 1, opCompare = 2, opComplexPrefix = 4, opComplex = 8 };
    TZvWordFlags OperatorParts;
    std::array<std::uint8_t, 256> CharOperatorParts{};  // OperatorParts of the one-character texts
    std::uint8_t OperatorPartFlags(std::string_view Text) const {
        return Text.size() == 1 ? CharOperatorParts[static_cast<unsigned char>(Text[0])] : OperatorParts.Find(Text);
    }
    std::uint8_t WordFlagsOfToken() const {
        return Token.size() == 1 ? CharWordClass[static_cast<unsigned char>(Token[0])] : WordClasses.Find(Token);
    }
    bool CharClassesValid = false;
    bool BaseWordRules = false;  // no dialect overrides any test (see BuildClassTables)
    TZvWordRules WordRules = TZvWordRules::Virtual;
    const std::type_info* RulesOwner = nullptr;
    TZvWordRules DeclaredRules = TZvWordRules::Virtual;
    bool DeclaredOwnNameQuoting = false;
    std::array<std::uint16_t, 256> FoldedClass{};  // the classes of each character's folded case
    // The quoting decisions of recently written names of up to sixteen bytes, by their bytes: a
    // statement names the same columns and aliases again and again, and so do its successors.
    // Forgotten whenever the class tables are built.
    struct TNameDecision {
        std::uint64_t Head = 0;  // with Tail, every byte of the name (see NameKey)
        std::uint64_t Tail = 0;
        std::uint8_t Size = 0;  // 0 in an unused slot
        bool Stays = false;
    };
    std::array<TNameDecision, 512> NameDecisions{};
    std::array<bool, 256> FoldedNameStart{};  // the character's folded case begins a name
    bool PlainLineEnd = true;  // CR LF is a line end, not the start of an operator
    bool Defined = false;
    bool Defining = false;
};

} // namespace zv
