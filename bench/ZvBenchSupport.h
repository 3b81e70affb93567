// What the benchmark suites share: the dialects they run over, the cached corpora, and the
// throughput counters. Every suite registers its benchmarks once per entry of BenchDialects, so a
// new dialect joins all of them with one line there.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <utility>
#include <memory>
#include <string>
#include <vector>

#include "ZvCorpus.h"
#include "ZvDialects.h"
#include "ZvParser.h"

namespace zv {

struct TZvBenchDialect {
    const char* Name;
    // A parser of the dialect, from the core's table of dialects.
    std::unique_ptr<TZvSelectParser> Create() const { return CreateDialectParser(Name); }
};

inline const std::vector<TZvBenchDialect>& BenchDialects() {
    static const std::vector<TZvBenchDialect> Dialects = {
        {"generic"}, {"interbase"}, {"postgresql"}, {"db2"}, {"oracle"}, {"mysql"}, {"dbisam"}, {"mssql"},
    };
    return Dialects;
}

// Registers Body(State, Dialect) as "<Base>/<dialect>" for every dialect and lets Configure set
// units, arguments and repetitions on each.
template <class TBody, class TConfigure>
void RegisterPerDialect(const std::string& Base, TBody Body, TConfigure Configure) {
    for (const TZvBenchDialect& Dialect : BenchDialects()) {
        const std::string Name = Base + "/" + Dialect.Name;
        Configure(benchmark::RegisterBenchmark(Name.c_str(), Body, &Dialect));
    }
}

// The corpora of the throughput suites: 2,000 typical statements (about 0.67 MB) and 200 large
// ones, from the fixed seed, in the spelling of the dialect named Dialect; made once per process
// and dialect.
inline const std::vector<std::string>& CachedCorpus(TZvCorpusKind Kind, std::size_t Count, const char* Dialect) {
    static std::map<std::pair<TZvCorpusKind, std::string>, std::vector<std::string>> Corpora;
    const auto Key = std::make_pair(Kind, std::string(Dialect));
    auto Found = Corpora.find(Key);
    if (Found == Corpora.end())
        Found = Corpora.emplace(Key, MakeCorpus(Kind, Count, 42, Dialect)).first;
    return Found->second;
}

inline const std::vector<std::string>& TypicalCorpus(const char* Dialect = "generic") {
    return CachedCorpus(TZvCorpusKind::Typical, 2000, Dialect);
}

inline const std::vector<std::string>& LargeCorpus(const char* Dialect = "generic") {
    return CachedCorpus(TZvCorpusKind::Large, 200, Dialect);
}

// Parses Text outside the timing; a statement the dialect rejects stops the benchmark with the
// parser's message instead of measuring a shorter path. The model of Text stays in Parser.
inline bool ParseOrSkip(benchmark::State& State, TZvSelectParser& Parser, const std::string& Text) {
    try {
        Parser.SetExpression(Text);
        return true;
    } catch (const EZvParserError& E) {
        State.SkipWithError((std::string("statement rejected: ") + E.what()).c_str());
        return false;
    }
}

// Bytes (shown as MiB/s: Google Benchmark counts in binary units) and statements (items/s) per
// second, from the work of one iteration.
inline void SetThroughput(benchmark::State& State, std::size_t BytesPerIteration,
                          std::size_t StatementsPerIteration) {
    const auto Iterations = static_cast<std::int64_t>(State.iterations());
    State.SetBytesProcessed(Iterations * static_cast<std::int64_t>(BytesPerIteration));
    State.SetItemsProcessed(Iterations * static_cast<std::int64_t>(StatementsPerIteration));
}

} // namespace zv
