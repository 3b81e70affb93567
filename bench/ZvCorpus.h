// A seeded generator of SELECT statements for the benchmarks and the peer comparison: typical
// designer statements, large ones, and the synthetic wide statements of the scaling benchmarks.
// The same seed gives the same bytes on every machine, so figures from different runs and tools
// are measured on the same text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

// Statements are written on one line with single blanks, so that a corpus can be stored one
// statement per line and fed to line-oriented tools unchanged.
class TZvCorpusGenerator {
public:
    explicit TZvCorpusGenerator(std::uint64_t Seed) : State(Seed) {}

    // 3 to 8 output fields over 1 to 4 tables with joins, usually a WHERE tree, sometimes
    // DISTINCT, GROUP BY with HAVING, and ORDER BY.
    std::string Typical();
    // 50 to 80 output fields over 10 to 14 joined tables with a deeper WHERE tree.
    std::string Large();

private:
    struct TTable {
        std::string Name;
        std::string Alias;
    };
    struct TShape {
        int MinFields, MaxFields;
        int MinTables, MaxTables;
        int WhereDepth;
    };

    std::string Statement(const TShape& Shape);
    std::string Column(const std::vector<TTable>& Tables);
    std::string FieldExpression(const std::vector<TTable>& Tables, bool Grouped, int Index,
                                std::vector<std::string>& GroupKeys, std::vector<std::string>& Labels);
    std::string FromClause(const std::vector<TTable>& Tables);
    std::string Condition(const std::vector<TTable>& Tables, int Depth);
    std::string Predicate(const std::vector<TTable>& Tables);
    std::string Literal();
    std::string Having(const std::vector<TTable>& Tables);
    std::string OrderBy(const std::vector<TTable>& Tables, const std::vector<std::string>& Labels,
                        int FieldCount);

    // splitmix64: tiny, fast and fully defined, unlike the standard distributions whose output
    // differs between library implementations.
    std::uint64_t Next();
    int Below(int N) { return static_cast<int>(Next() % static_cast<std::uint64_t>(N)); }
    int Between(int Low, int High) { return Low + Below(High - Low + 1); }
    bool Chance(int Percent) { return Below(100) < Percent; }
    template <class T>
    const T& Pick(const std::vector<T>& Items) {
        return Items[static_cast<std::size_t>(Below(static_cast<int>(Items.size())))];
    }
    template <std::size_t N>
    std::string Pick(const char* const (&Words)[N]) {
        return Words[Below(static_cast<int>(N))];
    }

    std::uint64_t State;
};

// What a corpus is made of.
enum class TZvCorpusKind : std::uint8_t {
    Typical, // typical statements only
    Large,   // large statements only
    Mixed,   // typical statements with every 20th one large
};

// Count statements of Kind from Seed, one string each, in the spelling of the dialect named
// Dialect (see ForDialect).
std::vector<std::string> MakeCorpus(TZvCorpusKind Kind, std::size_t Count, std::uint64_t Seed = 42,
                                    std::string_view Dialect = "generic");

// Statement, a statement of the generator, as the dialect named Dialect spells it, so that every
// dialect reads the same statements: MySQL quotes names with back quotes (a double quote opens a
// string there); Oracle writes "!=" for "<>", NVL for COALESCE, and a left outer join for a full
// one (a full join is refused unless the server is said to take it). Every other dialect, and an
// unknown name, reads the statement as it is. The generator's words contain none of the replaced
// texts, so the replacements touch nothing else.
std::string ForDialect(std::string Statement, std::string_view Dialect);

// One statement selecting Fields columns from Tables tables (tab0 t0, tab1 t1, ...), each table
// from the second on joined to the one before it. Field i selects column "c<i / Tables>" of
// table i % Tables, so every table holds columns with the same names, as real schemas do
// (id, name, ...), and the columns are spread evenly over the tables.
std::string MakeWideStatement(int Fields, int Tables);

// The byte count of the statements alone (no separators).
std::size_t CorpusBytes(const std::vector<std::string>& Statements);

// The statements joined with Separator between them.
std::string JoinCorpus(const std::vector<std::string>& Statements, const std::string& Separator);

} // namespace zv
