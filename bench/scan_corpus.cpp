// Tokenizes the typical corpus with the generic scanner a fixed number of times and prints the token
// count: a run of known length for callgrind (bench/profile.sh SCANNER=1), where the Google Benchmark
// suite chooses its own iteration count.
#include <cstdlib>
#include <iostream>
#include <string>

#include "ZvCorpus.h"
#include "ZvParser.h"

namespace {

// Out of line so that callgrind can count it alone (--toggle-collect=*ScanText*).
[[gnu::noinline]] long ScanText(const std::string& Text) {
    zv::TZvSQLScanner Scanner;
    Scanner.SetExpression(Text);
    long Tokens = 1;
    while (Scanner.Position <= Scanner.Length) {
        Scanner.GetNextToken();
        ++Tokens;
    }
    return Tokens;
}

} // namespace

int main(int Argc, char** Argv) {
    const long Statements = Argc > 1 ? std::strtol(Argv[1], nullptr, 10) : 2000;
    const std::string Text = zv::JoinCorpus(
        zv::MakeCorpus(zv::TZvCorpusKind::Typical, static_cast<std::size_t>(Statements)), "\r\n");
    const long Tokens = ScanText(Text);
    std::cout << Text.size() << " bytes, " << Tokens << " tokens\n";
    return 0;
}
