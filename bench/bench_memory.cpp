// Heap held by the model of one statement of 10 to 10,000 fields over 10 joined tables, and the
// heap peaks of parsing and generating it. This binary replaces the global operator new and
// delete with counting versions, so the figures are exact heap bytes (as the allocator hands them
// out: malloc_usable_size, which includes its rounding), not a process-wide resident size.
#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "ZvBenchSupport.h"

namespace {

std::atomic<std::int64_t> LiveBytes{0};
std::atomic<std::int64_t> PeakBytes{0};
std::atomic<std::int64_t> Allocations{0};

void* Allocate(std::size_t Size, std::size_t Alignment) {
    if (Size == 0)
        Size = 1;
    void* P = Alignment > alignof(std::max_align_t)
                  ? std::aligned_alloc(Alignment, (Size + Alignment - 1) / Alignment * Alignment)
                  : std::malloc(Size);
    if (!P)
        return nullptr;
    const auto Bytes = static_cast<std::int64_t>(malloc_usable_size(P));
    const std::int64_t Live = LiveBytes.fetch_add(Bytes, std::memory_order_relaxed) + Bytes;
    std::int64_t Peak = PeakBytes.load(std::memory_order_relaxed);
    while (Live > Peak && !PeakBytes.compare_exchange_weak(Peak, Live, std::memory_order_relaxed)) {
    }
    Allocations.fetch_add(1, std::memory_order_relaxed);
    return P;
}

void* AllocateOrThrow(std::size_t Size, std::size_t Alignment) {
    void* P = Allocate(Size, Alignment);
    if (!P)
        throw std::bad_alloc();
    return P;
}

void Release(void* P) noexcept {
    if (!P)
        return;
    LiveBytes.fetch_sub(static_cast<std::int64_t>(malloc_usable_size(P)), std::memory_order_relaxed);
    std::free(P);
}

constexpr std::size_t kPlain = alignof(std::max_align_t);

} // namespace

// The replaceable allocation functions, every form routed through the counters.
void* operator new(std::size_t Size) {
    return AllocateOrThrow(Size, kPlain);
}
void* operator new[](std::size_t Size) {
    return AllocateOrThrow(Size, kPlain);
}
void* operator new(std::size_t Size, const std::nothrow_t&) noexcept {
    return Allocate(Size, kPlain);
}
void* operator new[](std::size_t Size, const std::nothrow_t&) noexcept {
    return Allocate(Size, kPlain);
}
void* operator new(std::size_t Size, std::align_val_t A) {
    return AllocateOrThrow(Size, static_cast<std::size_t>(A));
}
void* operator new[](std::size_t Size, std::align_val_t A) {
    return AllocateOrThrow(Size, static_cast<std::size_t>(A));
}
void* operator new(std::size_t Size, std::align_val_t A, const std::nothrow_t&) noexcept {
    return Allocate(Size, static_cast<std::size_t>(A));
}
void* operator new[](std::size_t Size, std::align_val_t A, const std::nothrow_t&) noexcept {
    return Allocate(Size, static_cast<std::size_t>(A));
}
void operator delete(void* P) noexcept {
    Release(P);
}
void operator delete[](void* P) noexcept {
    Release(P);
}
void operator delete(void* P, std::size_t) noexcept {
    Release(P);
}
void operator delete[](void* P, std::size_t) noexcept {
    Release(P);
}
void operator delete(void* P, const std::nothrow_t&) noexcept {
    Release(P);
}
void operator delete[](void* P, const std::nothrow_t&) noexcept {
    Release(P);
}
void operator delete(void* P, std::align_val_t) noexcept {
    Release(P);
}
void operator delete[](void* P, std::align_val_t) noexcept {
    Release(P);
}
void operator delete(void* P, std::size_t, std::align_val_t) noexcept {
    Release(P);
}
void operator delete[](void* P, std::size_t, std::align_val_t) noexcept {
    Release(P);
}
void operator delete(void* P, std::align_val_t, const std::nothrow_t&) noexcept {
    Release(P);
}
void operator delete[](void* P, std::align_val_t, const std::nothrow_t&) noexcept {
    Release(P);
}

namespace zv {
namespace {

constexpr int kTables = 10;

// Heap figures of one measured stretch: what it left allocated and how high it went above its
// starting point.
class THeapWindow {
public:
    THeapWindow() : Start(LiveBytes.load()), StartAllocations(Allocations.load()) { PeakBytes.store(Start); }
    std::int64_t Retained() const { return LiveBytes.load() - Start; }
    std::int64_t Peak() const { return PeakBytes.load() - Start; }
    std::int64_t Count() const { return Allocations.load() - StartAllocations; }

private:
    std::int64_t Start;
    std::int64_t StartAllocations;
};

// model_bytes: everything the parser holds after reading the statement (the model, the scanner
// with its copy of the text, the word lists); empty_parser_bytes: the same for a one-field
// statement, the fixed part; parse_peak_bytes and generate_peak_bytes: the highest heap above the
// start of each step.
void ModelMemory(benchmark::State& State, const TZvBenchDialect* Dialect) {
    const std::string Text = MakeWideStatement(static_cast<int>(State.range(0)), kTables);
    const std::string Small = MakeWideStatement(1, 1);
    std::int64_t Model = 0, Empty = 0, ParsePeak = 0, GeneratePeak = 0, ParseAllocations = 0;
    for (auto _ : State) {
        {
            THeapWindow Window;
            const std::unique_ptr<TZvSelectParser> Parser = Dialect->Create();
            if (!ParseOrSkip(State, *Parser, Small))
                return;
            Empty = Window.Retained();
        }
        THeapWindow ParseWindow;
        const std::unique_ptr<TZvSelectParser> Parser = Dialect->Create();
        if (!ParseOrSkip(State, *Parser, Text))
            return;
        Model = ParseWindow.Retained();
        ParsePeak = ParseWindow.Peak();
        ParseAllocations = ParseWindow.Count();
        THeapWindow GenerateWindow;
        const std::string Out = Parser->GetExpression();
        benchmark::DoNotOptimize(Out.data());
        GeneratePeak = GenerateWindow.Peak();
    }
    State.counters["model_bytes"] = static_cast<double>(Model);
    State.counters["empty_parser_bytes"] = static_cast<double>(Empty);
    State.counters["bytes_per_field"] =
        static_cast<double>(Model - Empty) / static_cast<double>(State.range(0));
    State.counters["parse_peak_bytes"] = static_cast<double>(ParsePeak);
    State.counters["parse_allocations"] = static_cast<double>(ParseAllocations);
    State.counters["generate_peak_bytes"] = static_cast<double>(GeneratePeak);
    State.counters["text_bytes"] = static_cast<double>(Text.size());
}

const bool Registered = [] {
    RegisterPerDialect("ModelMemory", ModelMemory, [](benchmark::internal::Benchmark* B) {
        B->Unit(benchmark::kMillisecond)->RangeMultiplier(10)->Range(10, 10000)->Iterations(3);
    });
    return true;
}();

} // namespace
} // namespace zv
