// Helpers the dialect tests share: a statement's tokens, its formatted text or its error, and a
// run of the zevrin tool's code.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "ZvCli.h"
#include "ZvParser.h"

namespace zv::test {

struct TToken {
    std::string Text;
    TTokenKinds Kinds;
};

// Every token of Text up to the end, as the parser would see them.
inline std::vector<TToken> Tokens(TZvSQLScanner& Scanner, const std::string& Text) {
    std::vector<TToken> Result;
    Scanner.SetExpression(Text);
    while (!Scanner.TokenKinds.Contains(tkEnd)) {
        Result.push_back({Scanner.Token, Scanner.TokenKinds});
        Scanner.GetNextToken();
    }
    return Result;
}

// The error a statement raises, or one of type 0 when it parses.
inline EZvParserError ParseError(TZvSelectParser& Parser, const std::string& Text) {
    try {
        Parser.SetExpression(Text);
    } catch (const EZvParserError& E) {
        return E;
    }
    return EZvParserError(0, "", 0, 0);
}

// Parses Text and returns the generated statement.
inline std::string Format(TZvSelectParser& Parser, const std::string& Text) {
    Parser.SetExpression(Text);
    return Parser.GetExpression();
}

struct TRun {
    int Code;
    std::string Out, Err;
};

inline TRun RunTool(const std::vector<std::string>& Args, const std::string& Input) {
    std::ostringstream Out, Err;
    const int Code = RunCli(ParseCliArguments(Args), Input, Out, Err);
    return {Code, Out.str(), Err.str()};
}

inline std::string UsageErrorOf(const std::vector<std::string>& Args) {
    try {
        ParseCliArguments(Args);
    } catch (const TZvUsageError& E) {
        return E.Message;
    }
    return "no error";
}

} // namespace zv::test
