// The scanner: character cursor, token reader, word lists and name quoting.
#include "ZvScanner.h"

#include <bit>
#include <cstring>
#include <typeinfo>

#include "ZvErrors.h"
#include "ZvUtils.h"

namespace zv {

namespace {

constexpr std::string_view kDelimiters = ".,/\\;:(){}[]*+-<=>!~\r";

// The generic lists. "FROM" stands twice in the keyword list; the list is kept as it always was.
constexpr std::string_view kGenericKeywords =
    "SELECT,DISTINCT,INTO,FROM,WHERE,GROUP,BY,HAVING,ORDER,ASC,DESC,AS,LEFT,RIGHT,FULL,INNER,OUTER,"
    "JOIN,ON,AND,OR,NOT,LIKE,BETWEEN,IN,IS,NULL,DATE,SIZE,ALL,ALTER,ANY,ASCENDING,AT,BLOB,CHAR,"
    "CHARACTER,COLLATE,COLLATION,COLUMN,COMMIT,COMPUTED,CONNECT,CONSTRAINT,CONTINUE,CREATE,DAY,"
    "DEFAULT,DELETE,DESCENDING,DOUBLE,DROP,EXECUTE,FILTER,FIRST,FLOAT,FOR,FOREIGN,FROM,FUNCTION,"
    "INDEX,INT,INTEGER,LENGTH,MONTH,NUMERIC,TIME,TIMESTAMP,TRIM,UNIQUE,VARCHAR";
constexpr std::string_view kGenericFunctions = "SUM,MIN,MAX,AVG,COUNT";
constexpr std::string_view kGenericOperations = "+,-,*,/,||";
constexpr std::string_view kGenericComparisons = "=,<>,<,<=,>,>=";

// "*" with nothing but blanks and control characters (codes up to 32) around it.
bool IsPaddedStar(std::string_view S) {
    const std::size_t Star = S.find('*');
    return Star != std::string_view::npos && IsBlankText(S.substr(0, Star)) && IsBlankText(S.substr(Star + 1));
}

// Target = the Size bytes at Text. Most tokens are a few bytes long: a copy of a known length is
// a few moves where one of any length is a call.
void AssignShort(std::string& Target, const char* Text, std::size_t Size) {
    Target.clear();
    switch (Size) {
    case 1: Target.append(Text, 1); break;
    case 2: Target.append(Text, 2); break;
    case 3: Target.append(Text, 3); break;
    case 4: Target.append(Text, 4); break;
    case 5: Target.append(Text, 5); break;
    case 6: Target.append(Text, 6); break;
    case 7: Target.append(Text, 7); break;
    case 8: Target.append(Text, 8); break;
    default: Target.append(Text, Size); break;
    }
}

} // namespace

// ---------------------------------------------------------------------------------------------
// TZvScanner

bool TZvScanner::IsAlpha(char C) {
    return (C >= 'A' && C <= 'Z') || (C >= 'a' && C <= 'z');
}

bool TZvScanner::IsDelim(char C) {
    return C != 0 && kDelimiters.find(C) != std::string_view::npos;
}

bool TZvScanner::IsDigit(char C) {
    return C >= '0' && C <= '9';
}

bool TZvScanner::IsQuote(char C) {
    return C == '"' || C == '\'';
}

bool TZvScanner::IsSpace(char C) {
    return C == ' ' || C == '\t';
}

void TZvScanner::GetTokenPlus() {
    TCursorState Saved = SaveCursor();
    GetNextToken();
    RestoreCursor(Saved);
}

void TZvScanner::RestoreCursor(TCursorState& State) {
    Position = State.Position;
    Token.swap(State.Token);
    Level = State.Level;
    InQuote = State.InQuote;
    QuoteChar = State.QuoteChar;
}

bool TZvScanner::ShouldLevelUp(char C) {
    return C == '(';
}

bool TZvScanner::ShouldLevelDown(char C) {
    return C == ')';
}

void TZvScanner::Init() {
    Token.clear();
    Position = 1;
    Level = 0;
    InQuote = false;
    QuoteChar = 0;
}

void TZvScanner::GetFirstToken() {
    Init();
    GetNextToken();
}

void TZvScanner::GetNextToken() {
    Token.clear();
    while (Position <= Length) {
        const char C = CharAt(Position);
        if (!InQuote && (IsSpace(C) || IsDelim(C))) {
            if (Token.empty()) {
                Token += C;
                StepForward();
            }
            return;
        }
        Token += C;
        StepForward();
    }
}

char TZvScanner::GetQuotePair(char Q) {
    return Q;
}

void TZvScanner::MoveBy(std::int32_t N) {
    Token.clear();
    for (; N > 0 && Position <= Length; --N)
        StepForward();
    for (; N < 0 && Position >= 2; ++N)
        StepBack();
}

void TZvScanner::SetExpression(std::string_view Text) {
    Expression.assign(Text);
    Length = static_cast<std::int32_t>(Expression.size());
    GetFirstToken();
}

bool TZvScanner::IsForwardQuote(char C) {
    return IsQuote(C);
}

bool TZvScanner::IsBackwardQuote(char C) {
    return IsQuote(C);
}

void TZvScanner::StepForward() {
    const char C = CharAt(Position);
    if (IsForwardQuote(C)) {
        if (!InQuote)
            QuoteChar = C;
        else if (C == GetQuotePair(QuoteChar))
            QuoteChar = 0;
        InQuote = QuoteChar != 0;
    }
    if (ShouldLevelUp(C))
        ++Level;
    if (ShouldLevelDown(C))
        --Level;
    ++Position;
}

// Going back, a quote closes on the very character that opened it, not on its pair: the two
// directions are deliberately not mirror images.
void TZvScanner::StepBack() {
    --Position;
    const char C = CharAt(Position);
    if (IsBackwardQuote(C)) {
        if (!InQuote)
            QuoteChar = C;
        else if (C == QuoteChar)
            QuoteChar = 0;
        InQuote = QuoteChar != 0;
    }
    if (ShouldLevelUp(C))
        --Level;
    if (ShouldLevelDown(C))
        ++Level;
}

// ---------------------------------------------------------------------------------------------
// TZvSQLScanner: construction, lists, character classes

TZvSQLScanner::TZvSQLScanner() = default;

void TZvSQLScanner::DefineLists() {
    if (Defining)
        return;
    // Defining guards against a dialect's Define operation asking for a list while it is filled.
    Defining = true;
    DefineKeywords();
    DefineFunctions();
    DefineOperations();
    DefineComplexOperators();
    DefineCompareOperators();
    DefineJoinOperators();
    DefineBooleans();
    Defining = false;
    Defined = true;
}

void TZvSQLScanner::FillList(TZvWordList& List, const std::string& CommaText) {
    List.SetCommaText(CommaText);
    CharClassesValid = false;
}

void TZvSQLScanner::DefineKeywords() {
    FillList(Keywords, GetCommaKeywords());
}

void TZvSQLScanner::DefineFunctions() {
    FillList(Functions, GetCommaFunctions());
}

void TZvSQLScanner::DefineOperations() {
    FillList(Operations, GetCommaOperations());
}

void TZvSQLScanner::DefineComplexOperators() {
    FillList(ComplexOperators, GetCommaComplexOperators());
}

void TZvSQLScanner::DefineCompareOperators() {
    FillList(CompareOperators, GetCommaCompareOperators());
}

void TZvSQLScanner::DefineJoinOperators() {
    FillList(JoinOperators, GetCommaJoinOperators());
}

void TZvSQLScanner::DefineBooleans() {
    Booleans[0] = "False";
    Booleans[1] = "True";
}

std::string TZvSQLScanner::GetCommaKeywords() {
    return std::string(kGenericKeywords);
}

std::string TZvSQLScanner::GetCommaFunctions() {
    return std::string(kGenericFunctions);
}

std::string TZvSQLScanner::GetCommaOperations() {
    return std::string(kGenericOperations);
}

std::string TZvSQLScanner::GetCommaComplexOperators() {
    return std::string();
}

std::string TZvSQLScanner::GetCommaCompareOperators() {
    return std::string(kGenericComparisons);
}

std::string TZvSQLScanner::GetCommaJoinOperators() {
    return std::string(kGenericComparisons);
}

const TZvWordList& TZvSQLScanner::GetKeywords() {
    EnsureDefined();
    return Keywords;
}
const TZvWordList& TZvSQLScanner::GetFunctions() {
    EnsureDefined();
    return Functions;
}
const TZvWordList& TZvSQLScanner::GetOperations() {
    EnsureDefined();
    return Operations;
}
const TZvWordList& TZvSQLScanner::GetComplexOperators() {
    EnsureDefined();
    return ComplexOperators;
}
const TZvWordList& TZvSQLScanner::GetCompareOperators() {
    EnsureDefined();
    return CompareOperators;
}
const TZvWordList& TZvSQLScanner::GetJoinOperators() {
    EnsureDefined();
    return JoinOperators;
}

void TZvSQLScanner::SetKeywords(const TZvWordList& Value) {
    EnsureDefined();
    Keywords.Assign(Value);
    CharClassesValid = false;
}
void TZvSQLScanner::SetFunctions(const TZvWordList& Value) {
    EnsureDefined();
    Functions.Assign(Value);
    CharClassesValid = false;
}
void TZvSQLScanner::SetOperations(const TZvWordList& Value) {
    EnsureDefined();
    Operations.Assign(Value);
    CharClassesValid = false;
}
void TZvSQLScanner::SetComplexOperators(const TZvWordList& Value) {
    EnsureDefined();
    ComplexOperators.Assign(Value);
    CharClassesValid = false;
}
void TZvSQLScanner::SetCompareOperators(const TZvWordList& Value) {
    EnsureDefined();
    CompareOperators.Assign(Value);
    CharClassesValid = false;
}
void TZvSQLScanner::SetJoinOperators(const TZvWordList& Value) {
    EnsureDefined();
    JoinOperators.Assign(Value);
    CharClassesValid = false;
}

const std::string& TZvSQLScanner::GetBooleans(bool Flag) {
    EnsureDefined();
    return Booleans[Flag ? 1 : 0];
}

void TZvSQLScanner::SetBooleans(bool Flag, std::string_view Text) {
    EnsureDefined();
    Booleans[Flag ? 1 : 0] = std::string(Text);
    CharClassesValid = false;
}

void TZvSQLScanner::AddOperatorParts(const TZvWordList& List, std::uint8_t PrefixFlag, std::uint8_t EntryFlag) {
    for (const std::string& Entry : List.Items()) {
        if (Entry.empty())
            continue;
        CharClass[static_cast<unsigned char>(UpCase(Entry[0]))] |= ccOperatorStart;
        CharClass[static_cast<unsigned char>(LoCase(Entry[0]))] |= ccOperatorStart;
        for (std::size_t Size = 1; Size < Entry.size(); ++Size)
            OperatorParts.Add(std::string_view(Entry).substr(0, Size), PrefixFlag);
        OperatorParts.Add(Entry, static_cast<std::uint8_t>(PrefixFlag | EntryFlag));
    }
}

// Marks the characters of the words (both cases of their letters), for ReadCommonToken's test.
template <class TWords>
void TZvSQLScanner::MarkListed(const TWords& Words) {
    for (const std::string& Word : Words) {
        for (const char C : Word) {
            CharClass[static_cast<unsigned char>(UpCase(C))] |= ccListed;
            CharClass[static_cast<unsigned char>(LoCase(C))] |= ccListed;
        }
    }
}

// The token reader asks about every character; the answers come from the (virtual, per dialect)
// tests once, into a table, so that the hot loop makes no virtual call per character.
void TZvSQLScanner::BuildClassTables() {
    EnsureDefined();
    NameDecisions.fill({});
    for (int Code = 0; Code < 256; ++Code) {
        const char C = static_cast<char>(static_cast<unsigned char>(Code));
        std::uint16_t Bits = 0;
        if (IsAlpha(C))
            Bits |= ccAlpha;
        if (IsDelim(C))
            Bits |= ccDelim;
        if (IsDigit(C))
            Bits |= ccDigit;
        if (IsQuote(C))
            Bits |= ccQuote;
        if (IsIdentQuote(C))
            Bits |= ccIdentQuote;
        if (IsSpace(C))
            Bits |= ccSpace;
        if (IsLegalSymbol(C))
            Bits |= ccLegal;
        if (ShouldLevelUp(C))
            Bits |= ccLevelUp;
        if (ShouldLevelDown(C))
            Bits |= ccLevelDown;
        if (C == '.')
            Bits |= ccDot;
        if (static_cast<unsigned char>(C) > ' ' && C != '*' && C != '.' && !(Bits & ccIdentQuote))
            Bits |= ccNameSafe;
        CharClass[static_cast<std::size_t>(Code)] = Bits;
        LevelDelta[static_cast<std::size_t>(Code)] =
            static_cast<std::int8_t>(((Bits & ccLevelUp) ? 1 : 0) - ((Bits & ccLevelDown) ? 1 : 0));
    }
    OperatorParts.Clear();
    AddOperatorParts(CompareOperators, opComparePrefix, opCompare);
    AddOperatorParts(ComplexOperators, opComplexPrefix, opComplex);
    WordClasses.Clear();
    for (const std::string& Word : Keywords.Items())
        WordClasses.Add(Word, wfKeyword);
    for (const std::string& Word : Functions.Items())
        WordClasses.Add(Word, wfFunction);
    for (const std::string& Word : Operations.Items())
        WordClasses.Add(Word, wfOperation);
    for (const std::string& Word : Booleans)
        WordClasses.Add(Word, wfBoolean);
    for (const TZvWordList* List : {&Keywords, &Functions, &Operations})
        MarkListed(List->Items());
    MarkListed(Booleans);
    for (int Code = 0; Code < 256; ++Code) {
        const char C = static_cast<char>(static_cast<unsigned char>(Code));
        CharWordClass[static_cast<std::size_t>(Code)] = WordClasses.Find(std::string_view(&C, 1));
        CharOperatorParts[static_cast<std::size_t>(Code)] = OperatorParts.Find(std::string_view(&C, 1));
        constexpr std::uint16_t NotPlain = ccOperatorStart | ccDelim | ccQuote | ccIdentQuote;
        std::uint16_t& Bits = CharClass[static_cast<std::size_t>(Code)];
        if ((Bits & ccSpace) && !(Bits & NotPlain) && CharWordClass[static_cast<std::size_t>(Code)] == 0)
            Bits |= ccPlainBlank;
        if ((Bits & ccDelim) && !(Bits & (ccOperatorStart | ccQuote | ccIdentQuote)) && C != '\r')
            Bits |= ccLoneDelim;
        if ((Bits & ccPlainBlank) || C == '\r')
            Bits |= ccBlankStart;
    }
    PlainLineEnd = !(CharClass['\r'] & ccOperatorStart);
    // The word tests, ProcessIdent and GetFormatTokenIdent are the ones of this class unless a
    // dialect derives from it: then words are classified from the class table alone. So are they
    // where the dialect declares its own word tests to be these, up to case folding.
    BaseWordRules = typeid(*this) == typeid(TZvSQLScanner);
    if (BaseWordRules)
        WordRules = TZvWordRules::Base;
    else
        WordRules = RulesOwner && typeid(*this) == *RulesOwner ? DeclaredRules : TZvWordRules::Virtual;
    CharClassesValid = true;
    if (WordRules == TZvWordRules::FoldUpper || WordRules == TZvWordRules::FoldLower)
        BuildFoldedTables();
    // A "." begins a fraction rather than standing alone where the empty text counts as an integer.
    if (IsInteger({}))
        CharClass['.'] = static_cast<std::uint16_t>(CharClass['.'] & ~ccLoneDelim);
}

char TZvSQLScanner::FoldChar(char C) const {
    return WordRules == TZvWordRules::FoldLower ? LoCase(C) : UpCase(C);
}

// The classes of each character's folded case, and which characters begin a name: the dialect's
// own IsIdentifier on that one folded character, asked once the class table stands (the generic
// test reads it).
void TZvSQLScanner::BuildFoldedTables() {
    for (int Code = 0; Code < 256; ++Code) {
        const char Folded = FoldChar(static_cast<char>(static_cast<unsigned char>(Code)));
        FoldedClass[static_cast<std::size_t>(Code)] = CharClass[static_cast<unsigned char>(Folded)];
        FoldedNameStart[static_cast<std::size_t>(Code)] = IsIdentifier(std::string_view(&Folded, 1));
    }
}

// ---------------------------------------------------------------------------------------------
// TZvSQLScanner: cursor

void TZvSQLScanner::GetTokenPlus() {
    TCursorState Saved = SaveCursor();
    const TTokenKinds SavedKinds = TokenKinds;
    const std::int32_t SavedLine = Line;
    const std::int32_t SavedColumn = Column;
    const std::int32_t SavedTokenPos = TokenPos;
    GetNextToken();
    TokenPlus = Token;
    TokenKindsPlus = TokenKinds;
    RestoreCursor(Saved);
    TokenKinds = SavedKinds;
    Line = SavedLine;
    Column = SavedColumn;
    TokenPos = SavedTokenPos;
}

TTokenKinds TZvSQLScanner::GetTokenKindPlus() {
    GetTokenPlus();
    return TokenKindsPlus;
}

// A scan restarted after a line-end token counts from line 2, otherwise from line 1; this
// asymmetry is intended and callers rely on it.
void TZvSQLScanner::Init() {
    TZvScanner::Init();
    EndClosedQuote = false;
    if (TokenKinds.Contains(tkEol)) {
        Line = 2;
        Column = 1;
    } else {
        Line = 1;
        Column = static_cast<std::int32_t>(Token.size()) + 1;
    }
}

void TZvSQLScanner::MoveBy(std::int32_t N) {
    TZvScanner::MoveBy(N);
    if (Position == Length)
        TokenKinds = TTokenKinds{tkEnd};
    else if (Token.empty())
        TokenKinds = TTokenKinds{};
}

// Forward, a character is a quote only when both tests hold; back, when either does.
bool TZvSQLScanner::IsForwardQuote(char C) {
    return IsQuote(C) && IsIdentQuote(C);
}

bool TZvSQLScanner::IsBackwardQuote(char C) {
    return IsQuote(C) || IsIdentQuote(C);
}

// ---------------------------------------------------------------------------------------------
// TZvSQLScanner: the token reader

// Most calls take the first branch, which is a jump: the token reader returns straight to the caller.
void TZvSQLScanner::GetNextToken() {
    if (CharClassesValid && !InQuote) [[likely]]
        return ReadCommonToken();
    ReadFirstOrAfterQuote();
}

// The first token of a scan (the tables are built first) and a token after one read inside quotes.
void TZvSQLScanner::ReadFirstOrAfterQuote() {
    // Valid tables imply defined lists (BuildClassTables defines them first).
    if (!CharClassesValid)
        BuildClassTables();
    if (!InQuote || PassClosingQuote())
        return ReadCommonToken();
    ReadAnyToken();
}

// The general token loop: every token, also those ReadCommonToken leaves alone.
void TZvSQLScanner::ReadAnyToken() {
    for (;;) {
        if (!IsIntersected(TokenKinds, {tkSpace, tkEol}))
            SpaceCount = 0;
        if (!InQuote)
            SkipBlanks();
        TokenKinds = TTokenKinds{};
        Token.clear();
        TokenPos = Position;
        ReadToken();

        const std::uint8_t WordFlags = Token.empty() ? 0 : WordFlagsOfToken();
        if (TokenKinds.Empty())
            ClassifyWord(WordFlags);
        else if (Token == ";")
            TokenKinds = TTokenKinds{tkEnd};
        if (WordFlags & wfOperation)
            TokenKinds.Include(tkOperation);
        if (!TokenKinds.Contains(tkEol))
            Column += static_cast<std::int32_t>(Token.size());

        // Blanks, line ends and bare quote characters are never handed out.
        if (IsIntersected(TokenKinds, {tkQuote, tkSpace, tkEol})) {
            if (IsIntersected(TokenKinds, {tkSpace, tkEol}))
                ++SpaceCount;
            continue;
        }
        AdjustLevelAfterToken();
        break;
    }

    if (IsIntersected(TokenKinds, {tkString, tkIdent})) {
        const std::size_t FirstDot = Token.find('.');
        const bool DotAndBlank = FirstDot != std::string::npos && Token.find(' ') != std::string::npos;
        if (DotAndBlank || (FirstDot != std::string::npos && FirstDot + 1 == Token.size()))
            TokenKinds.Exclude(tkIdent);
    }
    if (TokenKinds.Contains(tkIdent))
        Token = GetFormatTokenIdent(Token, InQuote);
}

// Only characters that would be read as a lone blank token, or a plain CR LF, qualify: not one
// that also starts an operator, is a delimiter or quote, or is a listed word of its own.
void TZvSQLScanner::SkipBlanks() {
    // The cursor lives in locals here: stores to members could alias the text's characters.
    const char* Data = Expression.data();
    std::int32_t P = Position;
    std::int32_t Col = Column;
    std::int32_t Lines = Line;
    std::int32_t Skipped = 0;
    while (P <= Length) {
        const char C = Data[P - 1];
        if (CharClass[static_cast<unsigned char>(C)] & ccPlainBlank) {
            ++P;
            ++Col;
        } else if (C == '\r' && PlainLineEnd && P < Length && Data[P] == '\n') {
            P += 2;
            ++Lines;
            Col = 1;
        } else {
            break;
        }
        ++Skipped;
    }
    if (Skipped == 0)
        return;
    Position = P;
    Column = Col;
    Line = Lines;
    SpaceCount += Skipped;
    TokenKinds = TTokenKinds{tkSpace};
}

// An operator outside quotes ("<=", "<>"), read as the general loop reads one. False, with nothing
// changed that the general loop does not set again, when the characters make no operator.
bool TZvSQLScanner::ReadCommonOperator() {
    const TTokenKinds Before = TokenKinds;
    TokenKinds = TTokenKinds{};
    TokenPos = Position;
    if (!ReadOperator(opComparePrefix, opCompare, tkComparison) && !ReadOperator(opComplexPrefix, opComplex, tkSpecial)) {
        TokenKinds = Before;
        return false;
    }
    const std::uint8_t WordFlags = WordFlagsOfToken();
    if (Token == ";")
        TokenKinds = TTokenKinds{tkEnd};
    if (WordFlags & wfOperation)
        TokenKinds.Include(tkOperation);
    Column += static_cast<std::int32_t>(Token.size());
    Level += LevelDelta[static_cast<unsigned char>(Token.back())];
    return true;
}

// The kinds of a word read outside quotes, from its word flags and the classes of its first
// character and of all the others (the base scanner's word tests, without calling them).
inline TTokenKinds TZvSQLScanner::WordKinds(std::uint8_t WordFlags, std::uint16_t First, std::uint16_t Rest) {
    TTokenKinds Kinds;
    if (WordFlags & (wfFunction | wfKeyword)) {
        if (WordFlags & wfFunction)
            Kinds.Include(tkFunction);
        if (WordFlags & wfKeyword)
            Kinds.Include(tkKeyword);
    } else if (First & Rest & ccDigit) {
        Kinds = TTokenKinds{tkInteger};
    } else if (WordFlags & wfBoolean) {
        Kinds = TTokenKinds{tkBoolean};
    } else if ((First & ccAlpha) && (Rest & ccLegal)) {
        // Without quotes in it, the word is what ProcessIdent makes of it.
        Kinds = TTokenKinds{tkIdent};
    }
    return Kinds;
}

// The common tokens outside quotes, read, classified and counted in one pass over the class table:
// a word that ends at a blank, a delimiter, a quote or the end of the text, and a lone delimiter
// that starts no operator, line end or quoted text. The outcome is exactly that of the general
// loop of GetNextToken. Anything else (a "." that may begin a fraction or continue the word, an
// operator, a line end, a quote, the end of the text) goes to the general loop once the blanks
// before it are passed over, which that loop would do the same way and repeats as a no-op.
//
// Every way out of here and of the readers it hands over to is a jump: the common token costs no
// saving and restoring of registers for calls it does not make.
void TZvSQLScanner::ReadCommonToken() {
    if (!IsIntersected(TokenKinds, {tkSpace, tkEol}))
        SpaceCount = 0;
    // The cursor lives in locals: stores to members could alias the text's characters.
    const char* Data = Expression.data();
    const std::int32_t Size = Length;
    std::int32_t P = Position;
    if (P > Size)
        return ReadAnyToken();
    std::uint16_t First = ClassAt(Data, P);
    if (First & ccBlankStart) {
        // Mostly one blank between two tokens: passed over here, as SkipBlanks would.
        if (!(First & ccPlainBlank) || P >= Size || (ClassAt(Data, P + 1) & ccBlankStart))
            return ReadCommonAfterBlanks();
        Position = ++P;
        ++Column;
        ++SpaceCount;
        TokenKinds = TTokenKinds{tkSpace};
        First = ClassAt(Data, P);
    }
    if (First & kWordStop)
        return ReadCommonDelimiter(First);
    ReadCommonWord(First);
}

// A run of blanks and line ends, then the token after it.
void TZvSQLScanner::ReadCommonAfterBlanks() {
    SkipBlanks();
    if (Position > Length)
        return ReadAnyToken();
    const std::uint16_t First = ClassAt(Expression.data(), Position);
    if (First & kWordStop)
        return ReadCommonDelimiter(First);
    ReadCommonWord(First);
}

// At a character that stops a word (First its classes): a lone delimiter is read here; a quote,
// an operator or a "." that may begin a fraction goes on to its reader.
void TZvSQLScanner::ReadCommonDelimiter(std::uint16_t First) {
    const std::int32_t P = Position;
    const char C = CharAt(P);
    if ((First & (ccLoneDelim | ccSpace)) != ccLoneDelim) {
        if (First & (ccQuote | ccIdentQuote)) {
            if (!EmptyQuote)
                PassOpeningQuote();
            return ReadAnyToken();
        }
        // A "." may begin a fraction, which the general loop tries first.
        if ((First & ccOperatorStart) && (First & (ccDelim | ccSpace)) && C != '.' && ReadCommonOperator())
            return;
        return ReadAnyToken();
    }
    // Only a listed one-character word has word flags, and its character is listed.
    const std::uint8_t WordFlags = CharWordClass[static_cast<unsigned char>(C)];
    TokenPos = P;
    Position = P + 1;
    ++Column;
    Level += LevelDelta[static_cast<unsigned char>(C)];
    AssignShort(Token, &C, 1);
    TokenKinds = C == ';' ? TTokenKinds{tkEnd} : TTokenKinds{tkDelim};
    if (WordFlags & wfOperation)
        TokenKinds.Include(tkOperation);
}

// A word from the cursor (First the classes of its first character), when it ends at a blank, a
// delimiter, a quote or the end of the text.
void TZvSQLScanner::ReadCommonWord(std::uint16_t First) {
    const char* Data = Expression.data();
    const std::int32_t Size = Length;
    const std::int32_t P = Position;
    // The run of word characters, and the classes that all of them after the first share.
    std::uint16_t Rest = 0xFFFF;
    std::int32_t End = P + 1;
    for (; End <= Size; ++End) {
        const std::uint16_t Bits = ClassAt(Data, End);
        if (Bits & kWordStop)
            break;
        Rest &= Bits;
    }
    if (End <= Size) {
        const std::uint16_t After = ClassAt(Data, End);
        if (After & (ccQuote | ccIdentQuote))
            EmptyQuote = false;  // as ReadQuote leaves it after a word
        else if ((After & ccDot) && (!(After & (ccDelim | ccSpace)) ||
                                     IsIntegerWord(std::string_view(Data + (P - 1), static_cast<std::size_t>(End - P)), First, Rest)))
            return ReadAnyToken();
    }
    const auto WordSize = static_cast<std::size_t>(End - P);
    // A word with a character that no listed word has is none of them.
    std::uint8_t WordFlags = 0;
    if (First & Rest & ccListed)
        WordFlags = WordSize == 1 ? CharWordClass[static_cast<unsigned char>(Data[P - 1])]
                                  : WordClasses.FindInText(Data + (P - 1), WordSize, Expression.size() + 2 - static_cast<std::size_t>(P));
    TokenPos = P;
    Position = End;
    Column += static_cast<std::int32_t>(WordSize);
    Level += LevelDelta[static_cast<unsigned char>(Data[End - 2])];
    AssignShort(Token, Data + (P - 1), WordSize);

    if (WordRules == TZvWordRules::Virtual)
        return ClassifyDialectWord(WordFlags);
    if (WordRules != TZvWordRules::Base)
        return ClassifyFoldedWord(WordFlags, First, Rest);
    TokenKinds = WordKinds(WordFlags, First, Rest);
    if (WordFlags & wfOperation)
        TokenKinds.Include(tkOperation);
}

// The same through the dialect's own word tests; an identifier is written as the dialect formats
// one read outside quotes (a word holds no ".", so it keeps its kind).
void TZvSQLScanner::ClassifyDialectWord(std::uint8_t WordFlags) {
    TokenKinds = TTokenKinds{};
    ClassifyWord(WordFlags);
    if (TokenKinds.Contains(tkIdent))
        Token = GetFormatTokenIdent(Token, false);
    if (WordFlags & wfOperation)
        TokenKinds.Include(tkOperation);
}

// The same for a dialect that folds words to one case: its tests on the folded word. An identifier
// by the unfolded word has only letters of the folded case (its IsAlpha accepts no others), so it
// is one by the folded word too; and an identifier is written folded. The characters that begin a
// name are those its IsIdentifier takes alone.
void TZvSQLScanner::ClassifyFoldedWord(std::uint8_t WordFlags, std::uint16_t First, std::uint16_t Rest) {
    TokenKinds = WordKinds(WordFlags, First, Rest);
    if (TokenKinds.Empty()) {
        bool Identifier = FoldedNameStart[static_cast<unsigned char>(Token[0])];
        for (std::size_t I = 1; Identifier && I < Token.size(); ++I)
            Identifier = (FoldedClass[static_cast<unsigned char>(Token[I])] & ccLegal) != 0;
        if (Identifier)
            TokenKinds = TTokenKinds{tkIdent};
    }
    if (TokenKinds.Contains(tkIdent)) {
        for (char& C : Token)
            C = FoldChar(C);
    }
    if (WordFlags & wfOperation)
        TokenKinds.Include(tkOperation);
}

// The opening quote, passed over as the general loop would (a bare quote is never handed out);
// the general loop then reads the quoted text.
void TZvSQLScanner::PassOpeningQuote() {
    const char C = CharAt(Position);
    const char Next = Position < Length ? CharAt(Position + 1) : '\0';
    const char AfterNext = Position + 1 < Length ? CharAt(Position + 2) : '\0';
    InQuote = true;
    QuoteChar = C;
    // An empty pair names nothing; "[]" is one as much as "" is, but only a quote that closes
    // itself can be doubled, so only then does a third quote make "" content.
    const char Pair = GetQuotePair(C);
    EmptyQuote = Next == Pair && (Pair != C || Position + 1 == Length || AfterNext != C);
    TokenPos = Position;
    ++Position;
    ++Column;
    TokenKinds = TTokenKinds{tkQuote};
}

// The quote that closes the quoted token just handed out, passed over as the general loop would,
// so that the token after it takes the common path. At the last character the general loop
// decides (a quote may close there only because nothing follows it).
bool TZvSQLScanner::PassClosingQuote() {
    if (EmptyQuote || Position >= Length)
        return false;
    const char C = CharAt(Position);
    if (!(Classes(C) & (ccQuote | ccIdentQuote)) || GetQuotePair(QuoteChar) != C ||
        !IsTerminator(C, {}, CharAt(Position + 1), QuoteChar))
        return false;
    InQuote = false;
    QuoteChar = 0;
    SpaceCount = 0;
    ++Position;
    ++Column;
    TokenKinds = TTokenKinds{tkQuote};
    return true;
}

// IsInteger of a word whose first character is of the classes First and the others share Rest.
bool TZvSQLScanner::IsIntegerWord(std::string_view Word, std::uint16_t First, std::uint16_t Rest) {
    return WordRules != TZvWordRules::Virtual ? (First & Rest & ccDigit) != 0 : IsInteger(Word);
}

void TZvSQLScanner::AdjustLevelAfterToken() {
    if (!InQuote && Position > 1)
        Level += LevelDelta[static_cast<unsigned char>(CharAt(Position - 1))];
}

void TZvSQLScanner::ReadToken() {
    if (!CharClassesValid)
        BuildClassTables();
    const char* Data = Expression.data();
    for (;;) {
        // Take the run of plain characters in one go; only the character that stops it needs
        // a closer look. Inside quotes only a quote character stops the run.
        const std::uint16_t Stop = InQuote ? (ccQuote | ccIdentQuote) : kWordStop;
        std::int32_t End = Position;
        while (End <= Length && !(CharClass[static_cast<unsigned char>(Data[End - 1])] & Stop))
            ++End;
        Token.append(Data + (Position - 1), static_cast<std::size_t>(End - Position));
        Position = End;
        if (Position > Length)
            break;

        const char C = Data[Position - 1];
        const std::uint16_t Bits = CharClass[static_cast<unsigned char>(C)];
        if (Bits & (ccQuote | ccIdentQuote)) {
            if (ReadQuote(C))
                return;
        } else {
            if (C == '.' && ReadFloat())
                return;
            if (Bits & (ccDelim | ccSpace)) {
                if (Token.empty())
                    ReadDelimiterOrBlank(C);
                return;
            }
        }
        Token += C;
        ++Position;
    }
    // Whatever the unfinished quoted text looks like, an open quote at the end is an error,
    // reported where the unfinished token began.
    if (InQuote)
        RaiseUnterminated();
}

void TZvSQLScanner::RaiseUnterminated() {
    throw EZvParserError(zvpeUnterminatedString, Token, Column, Line);
}

// Returns true when the quote C ends the scan of this token (a closing quote, or any quote while
// none is open); false when it is content of the open quoted text.
bool TZvSQLScanner::ReadQuote(char C) {
    const char Next = Position < Length ? CharAt(Position + 1) : '\0';
    const bool Closing = InQuote && GetQuotePair(QuoteChar) == C &&
                         (Position == Length || IsTerminator(C, Token, Next, QuoteChar));
    if (InQuote && !Closing)
        return false;
    // The end of the text closes a quoted text even where the quote would be the first of a
    // doubled pair; the reader then completes the pair when it writes the text out again.
    if (Closing && Position == Length && !IsTerminator(C, Token, Next, QuoteChar))
        EndClosedQuote = true;

    if (Token.empty() && !EmptyQuote) {
        if (InQuote) {
            InQuote = false;
            QuoteChar = 0;
        } else {
            InQuote = true;
            QuoteChar = C;
            const char AfterNext = Position + 1 < Length ? CharAt(Position + 2) : '\0';
            // An empty pair names nothing; "[]" is one as much as "" is, but only a quote that
            // closes itself can be doubled, so only then does a third quote make "" content.
            const char Pair = GetQuotePair(C);
            EmptyQuote = Next == Pair && (Pair != C || Position + 1 == Length || AfterNext != C);
        }
        Token.assign(1, C);
        TokenKinds.Include(tkQuote);
        ++Position;
        return true;
    }

    if (InQuote) {
        if (IsIdentQuote(C)) {
            TokenKinds.Include(tkIdent);
            if (IsQuote(C))
                TokenKinds.Include(tkString);
        } else {
            TokenKinds.Include(tkString);
        }
    }
    EmptyQuote = false;
    return true;
}

// At a "." after an integer: the digits after the dot make a float unless something other than a
// blank or delimiter, or a second ".", follows them ("1.5a" is the integer 1 and more tokens).
bool TZvSQLScanner::ReadFloat() {
    if (!IsInteger(Token))
        return false;
    std::int32_t End = Position + 1;
    while (End <= Length && (Classes(CharAt(End)) & ccDigit))
        ++End;
    if (End <= Length) {
        const char After = CharAt(End);
        if (After == '.' || !(Classes(After) & (ccSpace | ccDelim)))
            return false;
    }
    Token.append(Expression, static_cast<std::size_t>(Position - 1), static_cast<std::size_t>(End - Position));
    Position = End;
    TokenKinds.Include(tkFloat);
    return true;
}

void TZvSQLScanner::ReadDelimiterOrBlank(char C) {
    if (Classes(C) & ccOperatorStart) {
        if (ReadOperator(opComparePrefix, opCompare, tkComparison) ||
            ReadOperator(opComplexPrefix, opComplex, tkSpecial))
            return;
    }
    if (C == '\r' && Position < Length && CharAt(Position + 1) == '\n') {
        Token = "\r\n";
        Position += 2;
        TokenKinds = TTokenKinds{tkEol};
        ++Line;
        Column = 1;
        return;
    }
    Token.assign(1, C);
    ++Position;
    const std::uint16_t Bits = Classes(C);
    if (Bits & ccDelim)
        TokenKinds.Include(tkDelim);
    if (Bits & ccSpace)
        TokenKinds.Include(tkSpace);
}

// Reads the longest run from the cursor that begins some entry of List; it is a token of Kind
// only when that run is an entry itself.
bool TZvSQLScanner::ReadOperator(std::uint8_t PrefixFlag, std::uint8_t EntryFlag, TTokenKind Kind) {
    const std::string_view Rest = std::string_view(Expression).substr(static_cast<std::size_t>(Position - 1));
    std::size_t Run = 0;
    while (Run < Rest.size() && (OperatorPartFlags(Rest.substr(0, Run + 1)) & PrefixFlag))
        ++Run;
    if (Run == 0 || !(OperatorPartFlags(Rest.substr(0, Run)) & EntryFlag))
        return false;
    Token.assign(Rest.substr(0, Run));
    Position += static_cast<std::int32_t>(Run);
    TokenKinds.Include(Kind);
    return true;
}

void TZvSQLScanner::ClassifyWord(std::uint8_t WordFlags) {
    if (Token.empty()) {
        TokenKinds = TTokenKinds{tkEnd};
        return;
    }
    if (WordFlags & wfFunction)
        TokenKinds.Include(tkFunction);
    if (WordFlags & wfKeyword)
        TokenKinds.Include(tkKeyword);
    if (!TokenKinds.Empty())
        return;
    if (IsInteger(Token))
        TokenKinds = TTokenKinds{tkInteger};
    else if (WordFlags & wfBoolean)
        TokenKinds = TTokenKinds{tkBoolean};
    else if (IsIdentifier(Token) || IsIdentifier(ProcessIdent(Token)))
        TokenKinds = TTokenKinds{tkIdent};
}

bool TZvSQLScanner::IsTerminator(char C, std::string_view Text, char Next, char Quote) {
    if (C != GetQuotePair(Quote))
        return false;
    if (C != Quote)
        return true;
    if (Next == Quote)
        return false;
    std::size_t Trailing = 0;
    while (Trailing < Text.size() && Text[Text.size() - 1 - Trailing] == Quote)
        ++Trailing;
    return Trailing % 2 == 0;
}

// ---------------------------------------------------------------------------------------------
// TZvSQLScanner: word tests

bool TZvSQLScanner::IsOperation(std::string_view S) {
    EnsureDefined();
    return Operations.Contains(S);
}

bool TZvSQLScanner::IsComplexOperator(std::string_view S) {
    EnsureDefined();
    return ComplexOperators.Contains(S);
}

bool TZvSQLScanner::IsCompareOperator(std::string_view S) {
    EnsureDefined();
    return CompareOperators.Contains(S);
}

bool TZvSQLScanner::IsJoinOperator(std::string_view S) {
    EnsureDefined();
    return JoinOperators.Contains(S);
}

bool TZvSQLScanner::IsKeyword(std::string_view S) {
    EnsureDefined();
    return Keywords.Contains(S);
}

bool TZvSQLScanner::IsFunction(std::string_view S) {
    EnsureDefined();
    return Functions.Contains(S);
}

bool TZvSQLScanner::IsLegalSymbol(char C) {
    return IsAlpha(C) || IsDigit(C) || C == '_';
}

bool TZvSQLScanner::IsIdentifier(std::string_view S) {
    if (S.empty() || !(Classes(S[0]) & ccAlpha))
        return false;
    return AllHave(S.substr(1), ccLegal);
}

bool TZvSQLScanner::IsInteger(std::string_view S) {
    return !S.empty() && AllHave(S, ccDigit);
}

bool TZvSQLScanner::AllHave(std::string_view S, std::uint16_t Mask) {
    if (!CharClassesValid)
        BuildClassTables();
    for (char C : S) {
        if (!(CharClass[static_cast<unsigned char>(C)] & Mask))
            return false;
    }
    return true;
}

bool TZvSQLScanner::IsBoolean(std::string_view S) {
    EnsureDefined();
    return SameText(S, Booleans[0]) || SameText(S, Booleans[1]);
}

char TZvSQLScanner::GetIdentQuote() {
    return '"';
}

bool TZvSQLScanner::IsIdentQuote(char C) {
    return C == '"';
}

char TZvSQLScanner::GetStringQuote() {
    return '\'';
}

bool TZvSQLScanner::GetProcessAliases() {
    return ProcessAliases;
}

bool TZvSQLScanner::GetQuoteIdentifiers() {
    return QuoteIdentifiers;
}

// ---------------------------------------------------------------------------------------------
// TZvSQLScanner: names

std::string TZvSQLScanner::ProcessIdent(std::string_view S) {
    if (S.size() > 1 && IsIdentQuote(S.front()) && IsIdentQuote(S.back()) && S.back() == GetQuotePair(S.front()))
        return ExtractQuotedString(S, S.front(), S.back());
    return std::string(S);
}

std::string TZvSQLScanner::QuotedContent() {
    const auto Start = static_cast<std::size_t>(TokenPos - 1);
    const auto End = std::max(Start, std::min(static_cast<std::size_t>(Position - 1), Expression.size()));
    const std::string_view Written = std::string_view(Expression).substr(Start, End - Start);
    const bool Doubles = GetQuotePair(QuoteChar) == QuoteChar;
    std::string Content;
    Content.reserve(Written.size());
    for (std::size_t I = 0; I < Written.size(); ++I) {
        Content += Written[I];
        if (Doubles && Written[I] == QuoteChar && I + 1 < Written.size() && Written[I + 1] == QuoteChar)
            ++I;
    }
    return Content;
}

std::string TZvSQLScanner::QuoteStr(std::string_view S) {
    const char Q = GetStringQuote();
    if (S.size() >= 2 && S.front() == Q && S.back() == Q)
        return std::string(S);
    return QuoteString(S, Q, Q);
}

// A plain word (a letter, then legal symbols, none of them a blank, "*", "." or identifier quote)
// passes every test below but the last: the common case costs one pass and the word look-ups.
bool TZvSQLScanner::NeedQuotes(std::string_view S) {
    if (const std::uint16_t Shared = PlainWordClasses(S))
        return IsReservedWord(S, Shared);
    if (S.empty() || IsPaddedStar(S))
        return false;
    const char Open = GetIdentQuote();
    const char Close = GetQuotePair(Open);
    const char DotOpen[] = {'.', Open};
    const char CloseDot[] = {Close, '.'};
    if (S.find(std::string_view(DotOpen, 2)) != std::string_view::npos ||
        S.find(std::string_view(CloseDot, 2)) != std::string_view::npos)
        return false;
    if (S.size() > 1 && IsIdentQuote(S.front()) && IsIdentQuote(S.back()))
        return false;
    if (Has(S.front(), ccAlpha)) {
        bool AllLegal = true;
        for (char C : S)
            AllLegal = AllLegal && Has(C, ccLegal);
        if (AllLegal && !IsFunction(S) && !IsKeyword(S))
            return false;
    }
    return true;
}

bool TZvSQLScanner::NeedQuotesReserved(std::string_view S) {
    if (S.size() > 1 && IsIdentQuote(S.front()) && IsIdentQuote(S.back()))
        return false;
    if (IsKeyword(S) || IsFunction(S))
        return true;
    return TZvSQLScanner::NeedQuotes(S) && !IsIdentifier(S);
}

std::string TZvSQLScanner::QuoteStrInAnyQuote(std::string_view S) {
    if (S.size() >= 2 && S.front() == S.back() && IsQuote(S.front()))
        return std::string(S);
    return TZvSQLScanner::QuoteStr(S);
}

std::string TZvSQLScanner::QuoteName(std::string_view S) {
    std::string Name(S);
    if (S.size() > 2 && IsIdentQuote(S.front()) && S.back() == GetQuotePair(S.front()))
        Name = ExtractQuotedString(S, S.front(), S.back());
    if (GetQuoteIdentifiers() && NeedQuotes(Name)) {
        const char Open = GetIdentQuote();
        return QuoteString(Name, Open, GetQuotePair(Open));
    }
    return Name;
}

std::uint16_t TZvSQLScanner::PlainWordClasses(std::string_view S) {
    if (S.empty() || !(Classes(S[0]) & ccAlpha))
        return 0;
    std::uint16_t Shared = 0xFFFF;
    for (const char C : S)
        Shared &= CharClass[static_cast<unsigned char>(C)];
    return IsPlainWord(CharClass[static_cast<unsigned char>(S[0])], Shared) ? Shared : 0;
}

// The base scanner's keyword and function tests are its lists, which the word index holds: one
// look-up, none at all for a word with a character that no listed word has.
bool TZvSQLScanner::IsReservedWord(std::string_view S, std::uint16_t Shared) {
    if (WordRules == TZvWordRules::Virtual)
        return IsFunction(S) || IsKeyword(S);
    return (Shared & ccListed) && (WordClasses.Find(S) & (wfKeyword | wfFunction));
}

// Without identifier quotes a name splits at every "."; QuoteName leaves a part that needs no
// quotes as it stands, so when no part needs them the name comes back unchanged. One pass over
// the characters collects the classes each part's characters share, which settle a plain part.
bool TZvSQLScanner::PartsNeedNoQuotes(std::string_view S) {
    if (!CharClassesValid)
        BuildClassTables();
    // Most names are one plain word (no "." and no quote in it): the classes all its characters
    // share settle it without looking for parts.
    std::uint16_t Shared = 0xFFFF;
    for (const char C : S)
        Shared &= CharClass[static_cast<unsigned char>(C)];
    if (!S.empty() && IsPlainWord(CharClass[static_cast<unsigned char>(S[0])], Shared))
        return BaseWordRules ? !IsReservedWord(S, Shared) : !NeedQuotes(S);
    Shared = 0xFFFF;
    for (std::size_t Start = 0, I = 0;; ++I) {
        if (I < S.size() && S[I] != '.') {
            Shared &= CharClass[static_cast<unsigned char>(S[I])];
            if (CharClass[static_cast<unsigned char>(S[I])] & ccIdentQuote)
                return false;
            continue;
        }
        const std::string_view Part = S.substr(Start, I - Start);
        const bool PlainPart = !Part.empty() && IsPlainWord(CharClass[static_cast<unsigned char>(Part[0])], Shared);
        if (PlainPart && BaseWordRules ? IsReservedWord(Part, Shared) : NeedQuotes(Part))
            return false;
        if (I == S.size())
            return true;
        Start = I + 1;
        Shared = 0xFFFF;
    }
}

namespace {

// The quoting of ProcessName once it is known that some part needs quotes: each part between the
// dots that stand outside identifier quotes loses the quotes it had and goes through QuoteName.
std::string QuoteEachPart(TZvSQLScanner& Scanner, std::string_view S) {
    std::string Result;
    char Open = 0;
    std::size_t OpenCount = 0;
    std::size_t PartStart = 0;
    auto AppendPart = [&](std::size_t End) {
        std::string_view Part = S.substr(PartStart, End - PartStart);
        std::string Unquoted(Part);
        if (!Part.empty() && Scanner.IsIdentQuote(Part.front()))
            Unquoted = ExtractQuotedString(Part, Part.front(), Scanner.GetQuotePair(Part.front()));
        if (!Result.empty() || PartStart > 0)
            Result += '.';
        Result += Scanner.QuoteName(Unquoted);
    };
    // Without a dot the name is one part, wherever its quotes stand.
    if (S.find('.') == std::string_view::npos) {
        AppendPart(S.size());
        return Result;
    }
    for (std::size_t I = 0; I < S.size(); ++I) {
        const char C = S[I];
        if (Open == 0) {
            if (C == '.') {
                AppendPart(I);
                PartStart = I + 1;
            } else if (Scanner.IsIdentQuote(C)) {
                Open = C;
                OpenCount = 1;
            }
        } else if (Scanner.GetQuotePair(Open) == Open) {
            // Symmetric quotes: a doubled quote inside the name keeps the stretch open, so the
            // stretch is closed whenever an even number of quotes has been seen.
            if (C == Open && ++OpenCount % 2 == 0)
                Open = 0;
        } else if (C == Scanner.GetQuotePair(Open)) {
            Open = 0;
        }
    }
    AppendPart(S.size());
    return Result;
}

} // namespace

// Inline: it is the first step of every name written, and called from this file only.
inline bool TZvSQLScanner::NameStaysAsItIs(std::string_view S) {
    return !GetQuoteIdentifiers() || PartsNeedNoQuotes(S) || !NeedQuotes(S);
}

namespace {

constexpr std::size_t RememberedNameSize = 16;

template <class T>
std::uint64_t LoadAt(const char* P) {
    T Value;
    std::memcpy(&Value, P, sizeof Value);
    return Value;
}

// Two integers that hold every byte of a name of one to sixteen bytes, as they stand (no case
// folding: the decision for a name may differ from that of its other case): loads from both ends,
// which overlap where the name is short. Together with the size they tell names apart exactly.
void NameKey(std::string_view S, std::uint64_t& Head, std::uint64_t& Tail) {
    const char* const P = S.data();
    const std::size_t N = S.size();
    if (N >= 8) {
        Head = LoadAt<std::uint64_t>(P);
        Tail = LoadAt<std::uint64_t>(P + N - 8);
    } else if (N >= 4) {
        Head = LoadAt<std::uint32_t>(P);
        Tail = LoadAt<std::uint32_t>(P + N - 4);
    } else {
        Head = LoadAt<std::uint8_t>(P) | LoadAt<std::uint8_t>(P + N / 2) << 8 | LoadAt<std::uint8_t>(P + N - 1) << 16;
        Tail = 0;
    }
}

} // namespace

// Identifier quoting is asked every time: it is a plain setting that may change between names.
inline bool TZvSQLScanner::NameStaysRemembered(std::string_view S) {
    if (!GetQuoteIdentifiers())
        return true;
    if (S.empty() || S.size() > RememberedNameSize)
        return NameStaysAsItIs(S);
    std::uint64_t Head;
    std::uint64_t Tail;
    NameKey(S, Head, Tail);
    constexpr int SlotBits = std::countr_zero(std::tuple_size_v<decltype(NameDecisions)>);
    TNameDecision& Slot = NameDecisions[((Head ^ (Tail >> 7) ^ Tail) * 0x9E3779B97F4A7C15ULL) >> (64 - SlotBits)];
    if (Slot.Size != S.size() || Slot.Head != Head || Slot.Tail != Tail)
        Slot = {Head, Tail, static_cast<std::uint8_t>(S.size()), NameStaysAsItIs(S)};
    return Slot.Stays;
}

std::string TZvSQLScanner::ProcessName(std::string_view S) {
    if (NameStaysAsItIs(S))
        return std::string(S);
    return QuoteEachPart(*this, S);
}

inline bool TZvSQLScanner::QuotesNamesAsBase() {
    if (!CharClassesValid)
        BuildClassTables();
    return BaseWordRules || (WordRules != TZvWordRules::Virtual && !DeclaredOwnNameQuoting);
}

// Where ProcessName is this class's, its work is done here once: the tests, then the quoting
// straight from them; a dialect's own ProcessName is asked as it stands. A name that must be
// quoted and is one part that does not open with a quote (a column with a blank in it, a keyword)
// is quoted into Out directly: the tests that failed above already said that QuoteName quotes it.
void TZvSQLScanner::AppendName(std::string& Out, std::string_view S) {
    if (!QuotesNamesAsBase())
        Out += ProcessName(S);
    else if (NameStaysRemembered(S))
        Out += S;
    else if (!S.empty() && S.find('.') == std::string_view::npos && !IsIdentQuote(S.front()))
        AppendQuotedString(Out, S, GetIdentQuote(), GetQuotePair(GetIdentQuote()));
    else
        Out += QuoteEachPart(*this, S);
}

// Where the quoting is this class's, a part without a "." that does not open with an identifier
// quote is one that QuoteName neither unquotes nor splits, and the tests that decide whether
// ProcessName quotes it are then the very ones QuoteName applies: AppendName writes it, from its
// remembered decision, as QuoteName would.
void TZvSQLScanner::AppendQuotedName(std::string& Out, std::string_view S) {
    if (!S.empty() && QuotesNamesAsBase() && S.find('.') == std::string_view::npos && !IsIdentQuote(S.front()))
        AppendName(Out, S);
    else
        Out += QuoteName(S);
}

std::string TZvSQLScanner::GetFormatTokenIdent(std::string_view S, bool Quoted) {
    if (!GetQuoteIdentifiers() || !Quoted || S.size() <= 1 || S.find('.') == std::string_view::npos)
        return std::string(S);
    const char Open = GetIdentQuote();
    const char Close = GetQuotePair(Open);
    if (S.front() == Open && S.back() == Close)
        return std::string(S);
    return QuoteString(S, Open, Close);
}

} // namespace zv
