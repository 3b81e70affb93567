// The dialects by name: the one table from a dialect's name to its parser class, shared by the
// command-line tool and the designer application so that both offer the same dialects under the
// same names.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

class TZvSelectParser;

// The dialect names, generic first: generic, interbase, mysql, dbisam, mssql, postgresql, db2,
// oracle.
std::vector<std::string> DialectNames();
// A new parser of the named dialect with the dialect's default settings; null for an unknown name
// (names are compared exactly).
std::unique_ptr<TZvSelectParser> CreateDialectParser(std::string_view Name);

} // namespace zv
