// libFuzzer target: arbitrary bytes into the statement reader of any dialect, under any of the
// tool's options. A rejected text must end in EZvParserError with a known error type, a line of at
// least 1 and a position of at least 0, whichever way errors are reported; an accepted one must
// generate text that reads back in the same dialect and options and generates exactly the same
// text again. Anything else aborts, which libFuzzer reports with the input that caused it.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "ZvCli.h"
#include "ZvFuzzInput.h"
#include "ZvParser.h"

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    const zv::fuzz::TFuzzCase Case = zv::fuzz::DecodeFuzzInput(Data, Size);
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
        Fail("generated text does not read back", Text, Generated + "\n--- error\n" + E.what());
    }
    const std::string Again = Second->GetExpression();
    if (Again != Generated)
        Fail("generated text is not a fixpoint", Generated, Again);
    return 0;
}
