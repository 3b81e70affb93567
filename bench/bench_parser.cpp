// Throughput of the parser, the generator and the whole round trip (text in, model, text out) per
// dialect, over the typical and the large corpus. Bytes are the statements' input bytes in every
// suite, so the three figures of one corpus compare directly.
#include "ZvBenchSupport.h"

namespace zv {
namespace {

bool CheckCorpus(benchmark::State& State, TZvSelectParser& Parser, const std::vector<std::string>& Corpus) {
    for (const std::string& Statement : Corpus) {
        if (!ParseOrSkip(State, Parser, Statement))
            return false;
    }
    return true;
}

void Parse(benchmark::State& State, const TZvBenchDialect* Dialect, const std::vector<std::string>* Corpus) {
    const std::unique_ptr<TZvSelectParser> Parser = Dialect->Create();
    if (!CheckCorpus(State, *Parser, *Corpus))
        return;
    for (auto _ : State) {
        for (const std::string& Statement : *Corpus)
            Parser->SetExpression(Statement);
        benchmark::ClobberMemory();
    }
    SetThroughput(State, CorpusBytes(*Corpus), Corpus->size());
}

// The models are made once; each iteration generates the text of every one of them.
void Generate(benchmark::State& State, const TZvBenchDialect* Dialect,
              const std::vector<std::string>* Corpus) {
    std::vector<std::unique_ptr<TZvSelectParser>> Models;
    for (const std::string& Statement : *Corpus) {
        Models.push_back(Dialect->Create());
        if (!ParseOrSkip(State, *Models.back(), Statement))
            return;
    }
    std::size_t OutputBytes = 0;
    for (auto _ : State) {
        OutputBytes = 0;
        for (const std::unique_ptr<TZvSelectParser>& Model : Models) {
            const std::string Text = Model->GetExpression();
            OutputBytes += Text.size();
            benchmark::DoNotOptimize(Text.data());
        }
    }
    SetThroughput(State, CorpusBytes(*Corpus), Corpus->size());
    State.counters["out_bytes"] = static_cast<double>(OutputBytes);
}

// What a formatter does per statement: one parser, parse then generate.
void RoundTrip(benchmark::State& State, const TZvBenchDialect* Dialect,
               const std::vector<std::string>* Corpus) {
    const std::unique_ptr<TZvSelectParser> Parser = Dialect->Create();
    if (!CheckCorpus(State, *Parser, *Corpus))
        return;
    for (auto _ : State) {
        for (const std::string& Statement : *Corpus) {
            Parser->SetExpression(Statement);
            const std::string Text = Parser->GetExpression();
            benchmark::DoNotOptimize(Text.data());
        }
    }
    SetThroughput(State, CorpusBytes(*Corpus), Corpus->size());
}

template <class TBody>
void RegisterOnCorpora(const std::string& Suite, TBody Body) {
    const auto Configure = [](benchmark::internal::Benchmark* B) {
        B->Unit(benchmark::kMillisecond)->MinTime(1.0);
    };
    // The corpora are made when a benchmark first runs, not at registration: a filtered run makes
    // only what it measures.
    for (const auto& [CorpusName, Corpus] :
         {std::pair{"typical", &TypicalCorpus}, std::pair{"large", &LargeCorpus}}) {
        RegisterPerDialect(
            Suite + "/" + CorpusName,
            [Body, Corpus](benchmark::State& State, const TZvBenchDialect* Dialect) {
                Body(State, Dialect, &Corpus(Dialect->Name));
            },
            Configure);
    }
}

const bool Registered = [] {
    RegisterOnCorpora("Parse", Parse);
    RegisterOnCorpora("Generate", Generate);
    RegisterOnCorpora("RoundTrip", RoundTrip);
    return true;
}();

} // namespace
} // namespace zv
