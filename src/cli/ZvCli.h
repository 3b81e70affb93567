// The zevrin command-line tool: formats SELECT statements into the system's normalised layout
// ("format") or prints the parsed query model as JSON ("model"). The pieces are functions over
// streams so that tests drive them without a process.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// DialectNames (the names --dialect accepts) and NormalizeInputText (the input read as statement
// text) come with the tool's interface.
#include "ZvDialects.h"
#include "ZvUtils.h"

namespace zv {

class TZvSelectParser;

struct TZvCliOptions {
    std::string Command;  // "format" or "model"
    std::string Dialect = "generic";
    // InterBase/Firebird: the SQL dialect number (1 or 3) and the server kind
    // (dontcare, interbase, firebird).
    int IBDialect = 3;
    std::string IBServer = "dontcare";
    // Microsoft SQL Server: whether a double quote encloses a name (on) or a string (off).
    bool MSQuotedIdentifier = true;
    std::string Keywords = "asis";
    std::string Functions = "asis";
    bool AlwaysBracket = true;
    bool QuoteIdentifiers = true;
    bool Lines = false;
    bool Help = false;
    std::string File;  // empty: standard input
};

// Thrown for a command line that cannot be run; the message says what is wrong.
struct TZvUsageError {
    std::string Message;
};

// Reads the arguments after the program name. Raises TZvUsageError.
TZvCliOptions ParseCliArguments(const std::vector<std::string>& Arguments);
// The text printed by --help.
std::string CliUsage();
// A parser of the named dialect set up by the options; null for an unknown name.
std::unique_ptr<TZvSelectParser> CreateCliParser(const TZvCliOptions& Options);

// The model of a parsed statement as JSON text (two-space indentation, no final line break). A
// parser made for a dialect with settings of its own (the named one) also shows them, as "options".
std::string ModelToJson(TZvSelectParser& Parser, std::string_view Dialect = "generic");

// Runs the command on Input; writes to Out and Err; returns the exit code (0 success, 1 parse
// error, 2 usage error).
int RunCli(const TZvCliOptions& Options, const std::string& Input, std::ostream& Out, std::ostream& Err);

} // namespace zv
