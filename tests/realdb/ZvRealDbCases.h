// The statements of the real-database suite: each is run as written and as our dialect generates
// it, on every server its mask names, and both must return the same rows. A second, small table
// holds the statements whose result the generator changes by design, with the change they show.
#pragma once

#include <string>
#include <vector>

namespace zv::test {

// The servers, as bits of a mask.
enum : unsigned {
    kSQLite = 1u << 0,
    kPostgreSQL = 1u << 1,
    kMariaDB = 1u << 2,
    kFirebird = 1u << 3,
    kAllServers = kSQLite | kPostgreSQL | kMariaDB | kFirebird,
};

// How the generator is set: the defaults, or keywords in first-upper case, function names in
// capitals and conditions without brackets.
enum class TZvLayout { Default, Restyled };

enum class TZvRowOrder {
    Any,   // compared as multisets
    Fixed, // the ORDER BY fixes the order of every row: compared in order
};

struct TZvRealDbCase {
    const char* Name; // the test's name: letters, digits and "_"
    const char* Sql;
    unsigned Servers = kAllServers;
    TZvRowOrder Order = TZvRowOrder::Any;
    // A statement meant to find no row says so; every other one must find rows, so that an
    // equality of two empty results proves nothing by accident.
    bool Empty = false;
    // Written without brackets, a NOT before a group of conditions reads as a NOT of the first
    // condition only; such statements are pinned among the changes instead.
    bool BareNotChangesMeaning = false;
};

// A statement whose generated text means something else, by design. The generated text (compared
// without regard to case, blanks and name quotes) must contain Present and must not contain
// Absent, and its rows must differ from the original's.
struct TZvRealDbChange {
    const char* Name;
    const char* Sql;
    const char* Present;
    const char* Absent;
    unsigned Servers = kAllServers;
    TZvLayout Layout = TZvLayout::Default;
};

const std::vector<TZvRealDbCase>& RealDbCases();
const std::vector<TZvRealDbChange>& RealDbChanges();

} // namespace zv::test
