// Tokenizing throughput of the generic scanner over a few MB of generated SELECT text.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "ZvScanner.h"

namespace {

// Deterministic statements of the usual shape: qualified columns, aggregates, literals,
// joins, conditions, grouping and sorting, with "\r\n" line ends.
std::string MakeStatements(std::size_t TargetBytes) {
    std::mt19937 Random(42);
    auto Pick = [&](int N) { return static_cast<int>(Random() % static_cast<unsigned>(N)); };
    std::string Text;
    while (Text.size() < TargetBytes) {
        const int Tables = 1 + Pick(4);
        Text += "SELECT ";
        for (int F = 0, Fields = 2 + Pick(8); F < Fields; ++F) {
            if (F)
                Text += ", ";
            const std::string T = "t" + std::to_string(Pick(Tables));
            switch (Pick(5)) {
            case 0: Text += "SUM(" + T + ".amount_" + std::to_string(F) + ") AS total_" + std::to_string(F); break;
            case 1: Text += T + ".\"Order Date\""; break;
            case 2: Text += T + ".price * 1.25"; break;
            default: Text += T + ".column_" + std::to_string(Pick(50)); break;
            }
        }
        Text += "\r\nFROM customers t0";
        for (int T = 1; T < Tables; ++T)
            Text += "\r\n  LEFT OUTER JOIN orders t" + std::to_string(T) + " ON (t0.id = t" + std::to_string(T) +
                    ".customer_id)";
        Text += "\r\nWHERE (t0.name LIKE 'Sm''ith%') AND (t0.balance >= 1000) OR t0.code <> 'X'";
        Text += "\r\nGROUP BY t0.region, t0.name\r\nORDER BY t0.name DESC;\r\n";
    }
    return Text;
}

void BM_GenericScannerTokenize(benchmark::State& State) {
    const std::string Text = MakeStatements(4 << 20);
    zv::TZvSQLScanner Scanner;
    std::size_t Tokens = 0;
    for (auto _ : State) {
        Scanner.Expression = Text;
        Scanner.Length = static_cast<std::int32_t>(Text.size());
        Scanner.TokenKinds = {};
        Scanner.GetFirstToken();
        // ";" ends a statement; keep reading past it to cover the whole text.
        while (Scanner.Position <= Scanner.Length) {
            Scanner.GetNextToken();
            ++Tokens;
        }
        benchmark::DoNotOptimize(Scanner.Token.data());
    }
    State.SetBytesProcessed(static_cast<int64_t>(State.iterations()) * static_cast<int64_t>(Text.size()));
    State.counters["tokens"] = benchmark::Counter(static_cast<double>(Tokens), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_GenericScannerTokenize)->Unit(benchmark::kMillisecond)->MinTime(2.0);

} // namespace
