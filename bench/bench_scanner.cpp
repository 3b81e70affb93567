// Tokenizing throughput of each dialect's scanner over the typical corpus, read as one text:
// the scanner's own cost, without the parser that normally drives it.
#include "ZvBenchSupport.h"

namespace zv {
namespace {

void Tokenize(benchmark::State& State, const TZvBenchDialect* Dialect) {
    const std::vector<std::string>& Corpus = TypicalCorpus(Dialect->Name);
    const std::string Text = JoinCorpus(Corpus, "\r\n");
    const std::unique_ptr<TZvSelectParser> Parser = Dialect->Create();
    // The dialect's own scanner, as the parser makes it.
    TZvSQLScanner& Scanner = Parser->GetScanner();
    std::int64_t Tokens = 0;
    for (auto _ : State) {
        Scanner.Expression = Text;
        Scanner.Length = static_cast<std::int32_t>(Text.size());
        Scanner.TokenKinds = {};
        Scanner.GetFirstToken();
        // The scanner stops at nothing inside the text; the loop reads to its end.
        while (Scanner.Position <= Scanner.Length) {
            Scanner.GetNextToken();
            ++Tokens;
        }
        benchmark::DoNotOptimize(Scanner.Token.data());
    }
    SetThroughput(State, Text.size(), Corpus.size());
    State.counters["tokens"] = benchmark::Counter(static_cast<double>(Tokens), benchmark::Counter::kIsRate);
}

const bool Registered = [] {
    RegisterPerDialect("Scanner/typical", Tokenize, [](benchmark::internal::Benchmark* B) {
        B->Unit(benchmark::kMillisecond)->MinTime(1.0);
    });
    return true;
}();

} // namespace
} // namespace zv
