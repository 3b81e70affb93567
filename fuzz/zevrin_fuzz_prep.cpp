// Prepares what the fuzz target runs on: a dictionary per dialect, made from that dialect's own word
// lists (keywords, functions, operations, operators, Boolean literals, comparison operator names)
// and its delimiter and quote characters, the union of them all, and a seed corpus made from the
// golden statements in the fuzz input layout.
//
// usage: zevrin_fuzz_prep OUT_DIR GOLDEN_DIR
//   OUT_DIR/dict/<dialect>.dict, OUT_DIR/all.dict, OUT_DIR/seed/<dialect>/<file>-<options>
// zevrin_fuzz_prep --dialects prints the dialects' names, one a line.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "ZvCli.h"
#include "ZvFuzzInput.h"
#include "ZvParser.h"

namespace fs = std::filesystem;

namespace {

// One entry in libFuzzer's dictionary syntax: quoted, with quotes, backslashes and bytes outside
// printable ASCII escaped.
std::string DictEntry(const std::string& Word) {
    std::string Line = "\"";
    for (const char C : Word) {
        const auto U = static_cast<unsigned char>(C);
        if (C == '"' || C == '\\') {
            Line += '\\';
            Line += C;
        } else if (U < 0x20 || U >= 0x7F) {
            char Hex[5];
            std::snprintf(Hex, sizeof Hex, "\\x%02X", U);
            Line += Hex;
        } else {
            Line += C;
        }
    }
    return Line + "\"";
}

std::set<std::string> DialectWords(const std::string& Dialect) {
    zv::TZvCliOptions Options;
    Options.Dialect = Dialect;
    std::unique_ptr<zv::TZvSelectParser> Parser = zv::CreateCliParser(Options);
    zv::TZvSQLScanner& S = Parser->GetScanner();
    std::set<std::string> Words;
    for (const zv::TZvWordList* List : {&S.GetKeywords(), &S.GetFunctions(), &S.GetOperations(),
                                        &S.GetComplexOperators(), &S.GetCompareOperators(),
                                        &S.GetJoinOperators(), &Parser->GetAggregates()}) {
        for (const std::string& Word : List->Items()) {
            if (!Word.empty())
                Words.insert(Word);
        }
    }
    Words.insert(S.GetBooleans(false));
    Words.insert(S.GetBooleans(true));
    // The operator names of conditions ("IS NOT NULL", "NOT BETWEEN") are several words that the
    // mutator would seldom put together itself.
    zv::TZvOperators& Operators = Parser->GetOperators();
    for (int I = 0; I < Operators.Count(); ++I) {
        for (const std::string* Part : {&Operators.Items(I)->GetName(), &Operators.Items(I)->GetPrefix(),
                                        &Operators.Items(I)->GetPostfix(), &Operators.Items(I)->GetRelate()}) {
            if (!Part->empty())
                Words.insert(*Part);
        }
    }
    for (int Code = 1; Code < 256; ++Code) {
        const char C = static_cast<char>(static_cast<unsigned char>(Code));
        if (S.IsDelim(C) || S.IsQuote(C) || S.IsIdentQuote(C))
            Words.insert(std::string(1, C));
    }
    Words.insert(std::string(1, S.GetIdentQuote()) + S.GetQuotePair(S.GetIdentQuote()));
    Words.insert("\r\n");
    // A dialect without Boolean literals has empty ones, and libFuzzer refuses an empty entry.
    Words.erase(std::string());
    return Words;
}

void WriteFile(const fs::path& Path, const std::string& Bytes) {
    std::ofstream Out(Path, std::ios::binary);
    Out << Bytes;
    if (!Out)
        throw std::runtime_error("cannot write " + Path.string());
}

std::string ReadFile(const fs::path& Path) {
    std::ifstream In(Path, std::ios::binary);
    std::ostringstream Text;
    Text << In.rdbuf();
    return Text.str();
}

} // namespace

int main(int Argc, char** Argv) {
    if (Argc == 2 && std::string(Argv[1]) == "--dialects") {
        for (const std::string& Dialect : zv::DialectNames())
            std::cout << Dialect << "\n";
        return 0;
    }
    if (Argc != 3) {
        std::cerr << "usage: zevrin_fuzz_prep OUT_DIR GOLDEN_DIR\n";
        return 2;
    }
    const fs::path Out(Argv[1]);
    const fs::path Golden(Argv[2]);
    const std::vector<std::string> Dialects = zv::DialectNames();
    fs::create_directories(Out / "dict");
    for (const std::string& Dialect : Dialects)
        fs::create_directories(Out / "seed" / Dialect);

    std::set<std::string> All;
    for (const std::string& Dialect : Dialects) {
        const std::set<std::string> Words = DialectWords(Dialect);
        std::string Dict = "# " + Dialect + ": word lists, operators and delimiters of the dialect\n";
        for (const std::string& Word : Words)
            Dict += DictEntry(Word) + "\n";
        WriteFile(Out / "dict" / (Dialect + ".dict"), Dict);
        All.insert(Words.begin(), Words.end());
    }
    std::string AllDict = "# every dialect's words (one fuzz run covers all dialects)\n";
    for (const std::string& Word : All)
        AllDict += DictEntry(Word) + "\n";
    WriteFile(Out / "all.dict", AllDict);

    // Each golden statement goes to its own dialect under a few option sets, as the tool hands it
    // over (line feeds made CR LF) and as raw bytes, and to every other dialect once.
    using namespace zv::fuzz;
    const std::uint8_t OwnOptions[] = {0, 1 | (1 << fbFunctionsShift), 3 | fbNoAlwaysBracket | fbErrorHandler,
                                       2 | (3 << fbFunctionsShift) | fbNoQuoteIdentifiers};
    int Seeds = 0;
    for (const auto& Entry : fs::recursive_directory_iterator(Golden)) {
        if (Entry.path().extension() != ".sql")
            continue;
        const std::string Home = Entry.path().parent_path().filename().string();
        const std::string Raw = ReadFile(Entry.path());
        const std::string Normal = zv::NormalizeInputText(Raw);
        for (std::size_t D = 0; D < Dialects.size(); ++D) {
            const fs::path Stem = Out / "seed" / Dialects[D] / (Home + "_" + Entry.path().stem().string());
            if (Dialects[D] != Home) {
                WriteFile(Stem.string() + "-0", EncodeFuzzInput(D, 0, Normal));
                ++Seeds;
                continue;
            }
            for (const std::uint8_t Bits : OwnOptions) {
                WriteFile(Stem.string() + "-" + std::to_string(Bits), EncodeFuzzInput(D, Bits, Normal));
                ++Seeds;
            }
            WriteFile(Stem.string() + "-raw", EncodeFuzzInput(D, 0, Raw));
            ++Seeds;
        }
    }
    std::cout << "zevrin_fuzz_prep: " << Dialects.size() << " dialect(s), " << All.size() << " words, "
              << Seeds << " seeds\n";
    return 0;
}
