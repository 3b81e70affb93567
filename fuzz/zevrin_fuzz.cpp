// libFuzzer target: arbitrary bytes into the statement reader of any dialect, under any of the
// tool's options. A rejected text must end in EZvParserError with a known error type, a line of at
// least 1 and a position of at least 0, whichever way errors are reported; an accepted one must
// generate text that reads back in the same dialect and options, with no table lost on the way,
// and generates exactly the same text again. Anything else aborts, which libFuzzer reports with
// the input that caused it.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "ZvCli.h"
#include "ZvFuzzInput.h"
#include "ZvParser.h"
#include "ZvUtils.h"

namespace {

// Text for the report: control bytes escaped so that a lone line feed or carriage return shows,
// a CR LF pair also breaks the line.
std::string Visible(const std::string& Text) {
    std::string Out;
    for (std::size_t I = 0; I < Text.size(); ++I) {
        const auto C = static_cast<unsigned char>(Text[I]);
        if (C == '\r' && I + 1 < Text.size() && Text[I + 1] == '\n') {
            Out += "\\r\\n\n";
            ++I;
        } else if (C < 0x20 || C == 0x7F) {
            char Hex[5];
            std::snprintf(Hex, sizeof Hex, "\\x%02X", C);
            Out += Hex;
        } else {
            Out += static_cast<char>(C);
        }
    }
    return Out;
}

[[noreturn]] void Fail(const char* What, const std::string& First, const std::string& Second) {
    std::fprintf(stderr, "zevrin_fuzz: %s\n--- first\n%s\n--- second\n%s\n---\n", What, Visible(First).c_str(),
                 Visible(Second).c_str());
    std::abort();
}

void CheckError(std::int32_t Type, std::int32_t Line, std::int32_t Position, const std::string& Message) {
    // Type 4 belongs to the host component's field check, never to reading text.
    const bool KnownType = Type == zv::zvpeInvalidToken || Type == zv::zvpeUnexpectedEnd ||
                           Type == zv::zvpeUnterminatedString || Type == zv::zvpeInadmissibleJoin;
    if (!KnownType || Line < 1 || Position < 0)
        Fail("parse error out of range", Message,
             "type " + std::to_string(Type) + " line " + std::to_string(Line) + " position " +
                 std::to_string(Position));
}

// Reads Text; true when it was accepted. Errors are checked here, by either reporting path.
bool Read(zv::TZvSelectParser& Parser, bool ErrorHandler, const std::string& Text) {
    if (!ErrorHandler) {
        try {
            Parser.SetExpression(Text);
        } catch (const zv::EZvParserError& E) {
            CheckError(E.GetErrorType(), E.GetLine(), E.GetPosition(), E.what());
            if (Parser.GetValid())
                Fail("parser valid after raising an error", Text, E.what());
            return false;
        }
        return true;
    }
    int Calls = 0;
    Parser.OnParserError = [&](zv::TZvSelectParser&, const std::string& Message, std::int32_t Position,
                               std::int32_t Line, const std::string&) {
        ++Calls;
        // The handler is not told the type; the message names it, and a known message is all a
        // host can show.
        CheckError(zv::zvpeInvalidToken, Line, Position, Message);
        if (Message.rfind("Unknown error", 0) == 0)
            Fail("unknown error type reported to the handler", Text, Message);
    };
    Parser.SetExpression(Text);
    if (Calls != (Parser.GetValid() ? 0 : 1))
        Fail("error handler not called exactly once for an invalid parse", Text, std::to_string(Calls));
    return Parser.GetValid();
}

// True when a quoted text of the statement is one that the naming rules cannot always write so
// that it reads back as it was read. Each class is pinned in test_robustness:
// - it holds an identifier quote or a dot of its own. A name between identifier quotes of its
//   own is taken for one quoted already and loses them; a closing bracket inside a bracketed name
//   stays single and ends it; quoted with a dot and a blank, or with its first dot last, it is no
//   name to the scanner where the identifier quote is no string quote; and as part of a dotted
//   name it stays quoted, which makes the whole name count as quoted in parts, so that its other
//   parts are written as they stand even where they need quotes.
// - it is spelled like a Boolean literal: only keywords and functions are quoted, so the name is
//   written bare and reads back as the literal.
// - it is a star, blanks aside: a star is never quoted.
// Besides, in MS SQL a word beginning with "@" that the dialect lists as a function (@@IDLE) is
// written bare, as the server reads such names; named as a table, it does not read back.
bool HoldsUnwritableName(const zv::TZvCliOptions& Options, const std::string& Text) {
    std::unique_ptr<zv::TZvSelectParser> Parser = zv::CreateCliParser(Options);
    zv::TZvSQLScanner& S = Parser->GetScanner();
    const auto QuoteOrDot = [&S](char C) { return C == '.' || S.IsIdentQuote(C); };
    try {
        S.SetExpression(Text);
        for (; !S.TokenKinds.Contains(zv::tkEnd); S.GetNextToken()) {
            if (!S.InQuote) {
                if (S.Token.starts_with('@') && S.TokenKinds.Contains(zv::tkFunction))
                    return true;
                continue;
            }
            const std::string Content = S.QuotedContent();
            if (std::any_of(Content.begin(), Content.end(), QuoteOrDot) || S.IsBoolean(Content) ||
                zv::Trim(Content) == "*")
                return true;
        }
    } catch (const zv::EZvParserError&) {
        // Text after the end of the statement (";") is not read by the parser either.
    }
    return false;
}

// True when a computed field of the statement (a call or a parameter) has an output alias
// spelled exactly as its name (COUNT(*) AS COUNT, f() f, :P P). A field's alias is written only
// where it differs from its name, so the field is written bare and reads back with an alias made
// from "FIELD_": that class has no round trip (pinned in test_robustness).
bool HoldsComputedFieldAliasedByItsName(zv::TZvSelectParser& Parser) {
    const zv::TZvTableDefs& Tables = Parser.GetTableDefs();
    for (int I = 0; I < Tables.GetFieldCount(); ++I) {
        const zv::TZvFieldDef* Field = Tables.GetFieldDefs(I);
        if (Field && Field->GetKind() != zv::fkUnknown && Field->GetKind() != zv::fkIdentifier &&
            Field->GetAlias() == Field->GetName())
            return true;
    }
    return false;
}

// The tables of the FROM list that have a name: a table the generated text leaves out is lost
// from the statement even where the text it writes reads back as itself.
int NamedTables(zv::TZvSelectParser& Parser) {
    const zv::TZvTableDefs& Tables = Parser.GetTableDefs();
    int Count = 0;
    for (int I = 0; I < Tables.Count(); ++I)
        Count += Tables.Items(I)->IsEmptyName() ? 0 : 1;
    return Count;
}

// The dialect of a run pinned to one dialect (ZEVRIN_FUZZ_DIALECT), else -1.
int PinnedDialect = -1;

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    if (const char* Name = std::getenv("ZEVRIN_FUZZ_DIALECT"); Name != nullptr && *Name != '\0') {
        PinnedDialect = zv::fuzz::DialectIndex(Name);
        if (PinnedDialect < 0) {
            std::fprintf(stderr, "zevrin_fuzz: unknown dialect '%s' in ZEVRIN_FUZZ_DIALECT\n", Name);
            std::exit(2);
        }
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    const zv::fuzz::TFuzzCase Case = zv::fuzz::DecodeFuzzInput(Data, Size, PinnedDialect);
    const std::string Text(Case.Text);

    std::unique_ptr<zv::TZvSelectParser> First = zv::CreateCliParser(Case.Options);
    if (!First)
        Fail("no parser for a listed dialect", Case.Options.Dialect, "");
    if (!Read(*First, Case.ErrorHandler, Text))
        return 0;
    const std::string Generated = First->GetExpression();
    // A statement with neither fields nor tables (SELECT * alone) generates nothing, and nothing
    // is not a statement: that class has no round trip (pinned in test_robustness).
    if (Generated.empty())
        return 0;
    // Without a FROM list the SELECT list is the whole first part and ends without a line break,
    // so a clause that generation adds after it (GROUP BY regrouped from a mix of aggregates and
    // plain columns) is glued to the last field: that class has no round trip (pinned in
    // test_robustness).
    const std::string Tables = First->GetTableDefs().GetScript();
    if (!Tables.ends_with("\r\n") && !Generated.ends_with(Tables))
        return 0;
    // With quoting turned off the user asked for names as they are, so a name that needs quotes
    // (a keyword, a blank, a letter outside A-Z) is written bare and reads back differently or
    // not at all: that class is recognised by quoting making a difference when the same text is
    // read with quoting on, and has no round trip (pinned in test_robustness). Every other
    // statement must still round-trip without quotes.
    if (!Case.Options.QuoteIdentifiers) {
        zv::TZvCliOptions Quoting = Case.Options;
        Quoting.QuoteIdentifiers = true;
        std::unique_ptr<zv::TZvSelectParser> Quoted = zv::CreateCliParser(Quoting);
        try {
            Quoted->SetExpression(Text);
        } catch (const zv::EZvParserError&) {
            return 0;  // read differently with quotes: the name that needs them decides
        }
        if (Quoted->GetExpression() != Generated)
            return 0;
    }

    std::unique_ptr<zv::TZvSelectParser> Second = zv::CreateCliParser(Case.Options);
    try {
        Second->SetExpression(Generated);
    } catch (const zv::EZvParserError& E) {
        if (!HoldsUnwritableName(Case.Options, Text))
            Fail("generated text does not read back", Text, Generated + "\n--- error\n" + E.what());
        return 0;
    }
    if (NamedTables(*Second) != NamedTables(*First) && !HoldsUnwritableName(Case.Options, Text))
        Fail("a table of the statement is lost", Text, Generated);
    const std::string Again = Second->GetExpression();
    if (Again != Generated && !HoldsUnwritableName(Case.Options, Text) && !HoldsComputedFieldAliasedByItsName(*First))
        Fail("generated text is not a fixpoint", Generated, Again);
    return 0;
}
