// The dialect table: every name makes a parser of its own dialect's class, and only those names do.
#include "ZvDialects.h"
#include "ZvErrors.h"
#include "ZvParser.h"
#include "dialects/ZvDb2Dialect.h"
#include "dialects/ZvDbiDialect.h"
#include "dialects/ZvIBDialect.h"
#include "dialects/ZvMSDialect.h"
#include "dialects/ZvMyDialect.h"
#include "dialects/ZvOracleDialect.h"
#include "dialects/ZvPgDialect.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

namespace zv {
namespace {

TEST(ZvDialects, NamesComeInTableOrderGenericFirst) {
    EXPECT_EQ(DialectNames(), (std::vector<std::string>{"generic", "interbase", "mysql", "dbisam", "mssql",
                                                        "postgresql", "db2", "oracle"}));
}

TEST(ZvDialects, EachNameMakesAParserOfItsDialectsClass) {
    const struct {
        const char* Name;
        const std::type_info& Class;
    } Rows[] = {
        {"generic", typeid(TZvSelectParser)}, {"interbase", typeid(TZvIBSelectParser)},
        {"mysql", typeid(TZvMySelectParser)}, {"dbisam", typeid(TZvDbiSelectParser)},
        {"mssql", typeid(TZvMSSelectParser)}, {"postgresql", typeid(TZvPgSelectParser)},
        {"db2", typeid(TZvDb2SelectParser)},  {"oracle", typeid(TZvOracleSelectParser)},
    };
    for (const auto& Row : Rows) {
        std::unique_ptr<TZvSelectParser> Parser = CreateDialectParser(Row.Name);
        ASSERT_NE(Parser, nullptr) << Row.Name;
        const TZvSelectParser& Object = *Parser;
        EXPECT_EQ(typeid(Object), Row.Class) << Row.Name;
    }
}

TEST(ZvDialects, EveryParserMadeIsFreshAndWorks) {
    for (const std::string& Name : DialectNames()) {
        std::unique_ptr<TZvSelectParser> First = CreateDialectParser(Name);
        std::unique_ptr<TZvSelectParser> Second = CreateDialectParser(Name);
        ASSERT_NE(First.get(), Second.get()) << Name;
        First->SetExpression("SELECT a.x, b.y FROM a, b");
        EXPECT_EQ(First->GetTableDefs().Count(), 2) << Name;
        EXPECT_EQ(Second->GetTableDefs().Count(), 0) << Name;
    }
}

TEST(ZvDialects, UnknownNamesMakeNoParser) {
    for (const char* Name : {"", "Generic", "GENERIC", "sqlite", "postgres", " mysql", "oracle "})
        EXPECT_EQ(CreateDialectParser(Name), nullptr) << "'" << Name << "'";
}

// A scanner that declares its word tests to be the generic ones classifies words from tables. One
// class further down it no longer may (the derived class could override a test), and every word
// goes through the tests themselves: both ways must read every text alike.
template <class TScanner>
class TUndeclared : public TScanner {};

// Words of letters in both cases, digits, the characters some dialects take into names, a
// non-ASCII byte, and the dialects' keywords and functions, each alone and between operators.
std::vector<std::string> WordRuleTexts() {
    std::vector<std::string> Texts = {
        "select Sum(qty) as Total from Orders o where o.id = 1 and o.name like 'a%'",
        "SELECT max(a), MIN(b), count(*) FROM t GROUP BY c HAVING Count(*) > 2 ORDER BY 1 DESC",
        "x$y #tmp @var @@VERSION _under a_1 1a 12 1.5 .5 1e3 Abc aBC ABC abc",
        "\"Quoted Name\".col [br ack].x `back`.y 'str''s' first rows fetch next only",
        "caf\xC3\xA9 \xC3\xA9t\xC3\xA9 a\xC3\xA9" "b rownum sysdate current_date Current_Time user Null TRUE false",
    };
    // Pseudo-random words from a fixed seed: the same list on every run.
    const std::string Alphabet = "aAzZqQ_$#@09.\xC3\xA9";
    std::uint32_t State = 12345;
    for (int Text = 0; Text < 40; ++Text) {
        std::string Line;
        for (int Word = 0; Word < 12; ++Word) {
            State = State * 1103515245u + 12345u;
            const int Length = 1 + static_cast<int>((State >> 16) % 5);
            for (int I = 0; I < Length; ++I) {
                State = State * 1103515245u + 12345u;
                Line += Alphabet[(State >> 16) % Alphabet.size()];
            }
            Line += Word % 3 == 2 ? ", " : " ";
        }
        Texts.push_back(Line);
    }
    return Texts;
}

struct TReadToken {
    std::string Text;
    TTokenKinds Kinds;
    bool InQuote;
    bool operator==(const TReadToken&) const = default;
};

std::vector<TReadToken> ReadAll(TZvSQLScanner& S, const std::string& Text) {
    std::vector<TReadToken> Tokens;
    S.SetExpression(Text);
    for (std::size_t Guard = 0; !S.TokenKinds.Contains(tkEnd) && Guard <= Text.size() * 2 + 2; ++Guard) {
        Tokens.push_back({S.Token, S.TokenKinds, S.InQuote});
        S.GetNextToken();
    }
    return Tokens;
}

// Names that must be quoted whole: blanks, quote characters and brackets inside, keywords, a
// leading digit or sign. Appended straight into a statement, each must read as ProcessName of a
// scanner that answers every test itself writes it, with a quote inside written twice; appended
// twice, as the first time (the scanner remembers its decisions for names).
const char* const QuotedNameCases[] = {
    "Order Date", "a\"b c", "a\"\"b", "x\"", "a]b c", "[a b", "a[b]", "a`b c", "select", "FROM", "sum",
    "1abc", "-x", "a b c", " lead", "trail ", "a\tb", "caf\xC3\xA9 au lait", "a'b c", "*x", "a*",
};

// One name part appended as QuoteName of a scanner that answers every test itself writes it, the
// second time too (after its decision was remembered by AppendName or by the first append).
template <class TScanner>
void ExpectQuotedPartAsQuoteName(TScanner& Declared, TUndeclared<TScanner>& Undeclared, std::string_view Word,
                                 const char* Name) {
    for (int Round = 0; Round < 2; ++Round) {
        std::string Text = "x.";
        Declared.AppendQuotedName(Text, Word);
        EXPECT_EQ(Text, "x." + Undeclared.QuoteName(Word)) << Name << ": '" << Word << "'";
        std::string Slow = "x.";
        Undeclared.AppendQuotedName(Slow, Word);
        EXPECT_EQ(Slow, Text) << Name << ": '" << Word << "'";
    }
}

template <class TScanner>
void ExpectQuotedNamesAsTheTests(TScanner& Declared, TUndeclared<TScanner>& Undeclared, const char* Name) {
    for (const char* Word : QuotedNameCases) {
        for (int Round = 0; Round < 2; ++Round) {
            std::string DeclaredText = "x.";
            Declared.AppendName(DeclaredText, Word);
            EXPECT_EQ(DeclaredText, "x." + Undeclared.ProcessName(Word)) << Name << ": '" << Word << "'";
        }
        EXPECT_EQ(Declared.ProcessName(Word), Undeclared.ProcessName(Word)) << Name << ": '" << Word << "'";
        ExpectQuotedPartAsQuoteName(Declared, Undeclared, Word, Name);
    }
}

template <class TScanner>
void ExpectWordRulesAsTheTests(TScanner& Declared, TUndeclared<TScanner>& Undeclared, const char* Name) {
    for (const std::string& Text : WordRuleTexts()) {
        const std::vector<TReadToken> Fast = ReadAll(Declared, Text);
        const std::vector<TReadToken> Slow = ReadAll(Undeclared, Text);
        ASSERT_EQ(Fast.size(), Slow.size()) << Name << ": " << Text;
        for (std::size_t I = 0; I < Fast.size(); ++I) {
            EXPECT_EQ(Fast[I].Text, Slow[I].Text) << Name << ": token " << I << " of " << Text;
            EXPECT_TRUE(Fast[I] == Slow[I]) << Name << ": token '" << Slow[I].Text << "' of " << Text;
        }
        std::size_t Start = 0;
        for (std::size_t End = 0; End <= Text.size(); ++End) {
            if (End < Text.size() && Text[End] != ' ' && Text[End] != ',')
                continue;
            const std::string Word = Text.substr(Start, End - Start);
            EXPECT_EQ(Declared.NeedQuotes(Word), Undeclared.NeedQuotes(Word)) << Name << ": '" << Word << "'";
            EXPECT_EQ(Declared.ProcessName(Word), Undeclared.ProcessName(Word)) << Name << ": '" << Word << "'";
            // Appending skips the string of ProcessName only where it would return the name as is.
            std::string DeclaredText = "x.";
            std::string UndeclaredText = "x.";
            Declared.AppendName(DeclaredText, Word);
            Undeclared.AppendName(UndeclaredText, Word);
            EXPECT_EQ(DeclaredText, "x." + Undeclared.ProcessName(Word)) << Name << ": '" << Word << "'";
            EXPECT_EQ(UndeclaredText, DeclaredText) << Name << ": '" << Word << "'";
            ExpectQuotedPartAsQuoteName(Declared, Undeclared, Word, Name);
            Start = End + 1;
        }
    }
    ExpectQuotedNamesAsTheTests(Declared, Undeclared, Name);
}

template <class TScanner>
void ExpectWordRulesAsTheTests(const char* Name) {
    TScanner Declared;
    TUndeclared<TScanner> Undeclared;
    ExpectWordRulesAsTheTests(Declared, Undeclared, Name);
}

TEST(ZvDialectScanners, DeclaredWordRulesReadEveryTextAsTheWordTests) {
    ExpectWordRulesAsTheTests<TZvSQLScanner>("generic");
    ExpectWordRulesAsTheTests<TZvMySQLScanner>("mysql");
    ExpectWordRulesAsTheTests<TZvDbiSQLScanner>("dbisam");
    ExpectWordRulesAsTheTests<TZvOracleSQLScanner>("oracle");
    ExpectWordRulesAsTheTests<TZvDb2SQLScanner>("db2");
    ExpectWordRulesAsTheTests<TZvPgSQLScanner>("postgresql");
    for (const bool Quoted : {true, false}) {
        TZvMSSQLScanner Declared;
        TUndeclared<TZvMSSQLScanner> Undeclared;
        Declared.SetQuotedIdentifier(Quoted);
        Undeclared.SetQuotedIdentifier(Quoted);
        ExpectWordRulesAsTheTests(Declared, Undeclared, Quoted ? "mssql" : "mssql, quotes for strings");
    }
    for (const TZvSQLDialect Dialect : {qibDialect1, qibDialect3}) {
        TZvIBScanner Declared;
        TUndeclared<TZvIBScanner> Undeclared;
        Declared.SetSQLDialect(Dialect);
        Undeclared.SetSQLDialect(Dialect);
        ExpectWordRulesAsTheTests(Declared, Undeclared, Dialect == qibDialect1 ? "interbase 1" : "interbase 3");
    }
}

TEST(ZvDialectScanners, AppendedNamesDoubleTheQuotesInside) {
    TZvSQLScanner Generic;
    std::string Text;
    Generic.AppendName(Text, "Order Date");
    EXPECT_EQ(Text, "\"Order Date\"");
    Text.clear();
    Generic.AppendName(Text, "a\"b c");
    EXPECT_EQ(Text, "\"a\"\"b c\"");
    Text.clear();
    Generic.AppendName(Text, "select");
    EXPECT_EQ(Text, "\"select\"");
    // Without identifier quoting every name stays as written.
    Generic.QuoteIdentifiers = false;
    Text.clear();
    Generic.AppendName(Text, "Order Date");
    EXPECT_EQ(Text, "Order Date");
}

TEST(ZvDialectScanners, AnAppendedPartIsQuotedWholeWhereItNeedsIt) {
    TZvSQLScanner Generic;
    const struct {
        const char* Part;
        const char* Text;
    } Rows[] = {
        {"code", "code"},
        {"Order Date", "\"Order Date\""},
        {"\"Order Date\"", "\"Order Date\""},
        {"select", "\"select\""},
        // One part: a dot inside is no qualifier here, unlike in AppendName.
        {"a.b", "\"a.b\""},
    };
    for (int Round = 0; Round < 2; ++Round) {
        for (const auto& Row : Rows) {
            std::string Text = "t.";
            Generic.AppendQuotedName(Text, Row.Part);
            EXPECT_EQ(Text, std::string("t.") + Row.Text) << Row.Part;
        }
    }
    std::string Name;
    Generic.AppendName(Name, "a.b");
    EXPECT_EQ(Name, "a.b");
    Generic.QuoteIdentifiers = false;
    std::string Text;
    Generic.AppendQuotedName(Text, "Order Date");
    EXPECT_EQ(Text, "Order Date");
}

// Appending remembers what it decided for short names; whatever rebuilds the scanner's tables (a
// new keyword list, the meaning of the double quote) must make it decide again.
TEST(ZvDialectScanners, AppendedNamesFollowAChangedKeywordList) {
    // Short, middling and long names, and names alike but for one byte in the middle.
    const char* const Words[] = {"zorro", "zorro_the_second", "zorro_the_secondz", "zorro_tha_second", "zorro_x"};
    TZvSQLScanner Generic;
    for (const char* Word : Words) {
        std::string Text;
        Generic.AppendName(Text, Word);
        EXPECT_EQ(Text, Word);
    }
    TZvWordList Keywords = Generic.GetKeywords();
    Keywords.Add("ZORRO");
    Keywords.Add("ZORRO_THE_SECOND");
    Keywords.Add("ZORRO_THE_SECONDZ");
    Generic.SetKeywords(Keywords);
    for (const char* Word : Words) {
        std::string Text;
        Generic.AppendName(Text, Word);
        const bool Listed = std::string_view(Word) != "zorro_tha_second" && std::string_view(Word) != "zorro_x";
        EXPECT_EQ(Text, Listed ? "\"" + std::string(Word) + "\"" : std::string(Word)) << Word;
    }
}

TEST(ZvDialectScanners, AppendedNamesFollowTheMeaningOfTheDoubleQuote) {
    TZvMSSQLScanner Scanner;
    TZvMSSQLScanner Fresh;
    for (const bool Quoted : {true, false, true}) {
        Scanner.SetQuotedIdentifier(Quoted);
        Fresh.SetQuotedIdentifier(Quoted);
        for (const char* Word : {"\"a b\"", "a\"b", "Order", "x y"}) {
            std::string Text;
            Scanner.AppendName(Text, Word);
            EXPECT_EQ(Text, Fresh.ProcessName(Word)) << Word << (Quoted ? " quoted" : "");
        }
    }
}

} // namespace
} // namespace zv
