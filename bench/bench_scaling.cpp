// How parse and generate grow with the size of one statement: 10 to 10,000 fields over 10 joined
// tables, and 1 to 1,000 joined tables of two fields each. Google Benchmark fits the growth
// (the "BigO" rows) so that a quadratic path shows as such, not just as a slow figure.
#include "ZvBenchSupport.h"

namespace zv {
namespace {

constexpr int kTablesOfFieldScale = 10;
constexpr int kFieldsPerTableOfTableScale = 2;

// The statement of one benchmark point: Arg(0) fields, or Arg(0) tables.
std::string ScaleStatement(const benchmark::State& State, bool ScaleTables) {
    const int N = static_cast<int>(State.range(0));
    return ScaleTables ? MakeWideStatement(N * kFieldsPerTableOfTableScale, N)
                       : MakeWideStatement(N, kTablesOfFieldScale);
}

void Parse(benchmark::State& State, const TZvBenchDialect* Dialect, bool ScaleTables) {
    const std::string Text = ScaleStatement(State, ScaleTables);
    const std::unique_ptr<TZvSelectParser> Parser = Dialect->Create();
    if (!ParseOrSkip(State, *Parser, Text))
        return;
    for (auto _ : State) {
        Parser->SetExpression(Text);
        benchmark::ClobberMemory();
    }
    SetThroughput(State, Text.size(), 1);
    State.SetComplexityN(State.range(0));
}

void Generate(benchmark::State& State, const TZvBenchDialect* Dialect, bool ScaleTables) {
    const std::string Text = ScaleStatement(State, ScaleTables);
    const std::unique_ptr<TZvSelectParser> Parser = Dialect->Create();
    if (!ParseOrSkip(State, *Parser, Text))
        return;
    for (auto _ : State) {
        const std::string Out = Parser->GetExpression();
        benchmark::DoNotOptimize(Out.data());
    }
    SetThroughput(State, Text.size(), 1);
    State.SetComplexityN(State.range(0));
}

template <class TBody>
void RegisterScale(const std::string& Name, TBody Body, bool ScaleTables, std::int64_t First,
                   std::int64_t Last) {
    RegisterPerDialect(
        Name,
        [Body, ScaleTables](benchmark::State& State, const TZvBenchDialect* Dialect) {
            Body(State, Dialect, ScaleTables);
        },
        [First, Last](benchmark::internal::Benchmark* B) {
            B->Unit(benchmark::kMicrosecond)->RangeMultiplier(10)->Range(First, Last);
            B->Complexity(benchmark::oAuto);
        });
}

const bool Registered = [] {
    RegisterScale("ScaleFieldsParse", Parse, false, 10, 10000);
    RegisterScale("ScaleFieldsGenerate", Generate, false, 10, 10000);
    RegisterScale("ScaleTablesParse", Parse, true, 1, 1000);
    RegisterScale("ScaleTablesGenerate", Generate, true, 1, 1000);
    return true;
}();

} // namespace
} // namespace zv
