// Writes a benchmark corpus to standard output, one statement per line, so that tools outside
// this build (the peer comparison script) measure the very bytes the benchmarks measure.
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "ZvCorpus.h"

namespace {

const char* const kUsage = "usage: make_corpus [--seed N] [--kind typical|large|mixed] [--dialect NAME] COUNT\n"
                           "       make_corpus --wide FIELDS TABLES\n";

int Usage() {
    std::cerr << kUsage;
    return 2;
}

bool ParsePositive(const std::string& Text, long& Value) {
    char* End = nullptr;
    Value = std::strtol(Text.c_str(), &End, 10);
    return !Text.empty() && *End == '\0' && Value > 0;
}

} // namespace

int main(int Argc, char** Argv) {
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> Args(Argv + 1, Argv + Argc);
    if (Args.size() == 3 && Args[0] == "--wide") {
        long Fields = 0, Tables = 0;
        if (!ParsePositive(Args[1], Fields) || !ParsePositive(Args[2], Tables))
            return Usage();
        std::cout << zv::MakeWideStatement(static_cast<int>(Fields), static_cast<int>(Tables)) << '\n';
        return 0;
    }
    long Seed = 42, Count = 0;
    zv::TZvCorpusKind Kind = zv::TZvCorpusKind::Typical;
    std::string Dialect = "generic";
    for (std::size_t I = 0; I < Args.size(); ++I) {
        if (Args[I] == "--seed" && I + 1 < Args.size()) {
            if (!ParsePositive(Args[++I], Seed))
                return Usage();
        } else if (Args[I] == "--kind" && I + 1 < Args.size()) {
            const std::string& Name = Args[++I];
            if (Name == "typical")
                Kind = zv::TZvCorpusKind::Typical;
            else if (Name == "large")
                Kind = zv::TZvCorpusKind::Large;
            else if (Name == "mixed")
                Kind = zv::TZvCorpusKind::Mixed;
            else
                return Usage();
        } else if (Args[I] == "--dialect" && I + 1 < Args.size()) {
            Dialect = Args[++I];
        } else if (Count == 0 && ParsePositive(Args[I], Count)) {
            continue;
        } else {
            return Usage();
        }
    }
    if (Count == 0)
        return Usage();
    for (const std::string& Statement :
         zv::MakeCorpus(Kind, static_cast<std::size_t>(Count), static_cast<std::uint64_t>(Seed), Dialect))
        std::cout << Statement << '\n';
    return 0;
}
