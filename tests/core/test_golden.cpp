// Golden files: tests/data/<dialect>/<name>.sql is formatted by the zevrin tool's code and must give
// exactly <name>.out (bytes, "\r\n" kept), or fail with exactly the message in <name>.err. An
// optional <name>.args holds further tool options, one per line. Every expected output must also
// format to itself. Setting ZEVRIN_WRITE_GOLDEN=1 writes the expected file of a case that has none,
// for review before it is committed.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "ZvCli.h"

namespace fs = std::filesystem;

namespace {

struct TGoldenCase {
    fs::path Sql;
    std::string Dialect;
    std::string Name() const {
        std::string N = Dialect + "_" + Sql.stem().string();
        for (char& C : N) {
            if (!std::isalnum(static_cast<unsigned char>(C)))
                C = '_';
        }
        return N;
    }
};

void PrintTo(const TGoldenCase& Case, std::ostream* Out) {
    *Out << Case.Sql.string();
}

std::string ReadFile(const fs::path& Path) {
    std::ifstream In(Path, std::ios::binary);
    std::ostringstream Text;
    Text << In.rdbuf();
    return Text.str();
}

std::vector<TGoldenCase> FindCases() {
    std::vector<TGoldenCase> Cases;
    const fs::path Root(ZEVRIN_GOLDEN_DIR);
    for (const auto& Entry : fs::recursive_directory_iterator(Root)) {
        if (Entry.path().extension() == ".sql")
            Cases.push_back({Entry.path(), Entry.path().parent_path().filename().string()});
    }
    std::sort(Cases.begin(), Cases.end(), [](const auto& A, const auto& B) { return A.Sql < B.Sql; });
    return Cases;
}

zv::TZvCliOptions OptionsFor(const TGoldenCase& Case) {
    std::vector<std::string> Args{"format", "--dialect", Case.Dialect};
    fs::path ArgsFile = Case.Sql;
    ArgsFile.replace_extension(".args");
    if (fs::exists(ArgsFile)) {
        std::istringstream Lines(ReadFile(ArgsFile));
        for (std::string Line; std::getline(Lines, Line);) {
            if (!Line.empty() && Line.back() == '\r')
                Line.pop_back();
            if (!Line.empty())
                Args.push_back(Line);
        }
    }
    return zv::ParseCliArguments(Args);
}

struct TRun {
    int Code;
    std::string Out;
    std::string Err;
};

TRun Format(const zv::TZvCliOptions& Options, const std::string& Input) {
    std::ostringstream Out, Err;
    const int Code = zv::RunCli(Options, Input, Out, Err);
    return {Code, Out.str(), Err.str()};
}

class Golden : public testing::TestWithParam<TGoldenCase> {};

TEST_P(Golden, FormatsExactlyAndIsAFixpoint) {
    const TGoldenCase& Case = GetParam();
    const zv::TZvCliOptions Options = OptionsFor(Case);
    const TRun Run = Format(Options, ReadFile(Case.Sql));
    fs::path OutFile = Case.Sql, ErrFile = Case.Sql;
    OutFile.replace_extension(".out");
    ErrFile.replace_extension(".err");
    const bool Write = std::getenv("ZEVRIN_WRITE_GOLDEN") != nullptr;
    if (!fs::exists(OutFile) && !fs::exists(ErrFile)) {
        ASSERT_TRUE(Write) << "no " << OutFile << " or " << ErrFile;
        std::ofstream(Run.Code == 0 ? OutFile : ErrFile, std::ios::binary) << (Run.Code == 0 ? Run.Out : Run.Err);
        return;
    }
    if (fs::exists(ErrFile)) {
        EXPECT_EQ(Run.Code, 1) << Run.Out;
        EXPECT_EQ(Run.Err, ReadFile(ErrFile));
        EXPECT_EQ(Run.Out, "");
        return;
    }
    const std::string Expected = ReadFile(OutFile);
    ASSERT_EQ(Run.Code, 0) << Run.Err;
    EXPECT_EQ(Run.Out, Expected);
    const TRun Again = Format(Options, Expected);
    ASSERT_EQ(Again.Code, 0) << "the expected output does not parse: " << Again.Err;
    EXPECT_EQ(Again.Out, Expected) << "formatting the output again changes it";
}

INSTANTIATE_TEST_SUITE_P(Data, Golden, testing::ValuesIn(FindCases()),
                         [](const testing::TestParamInfo<TGoldenCase>& Info) { return Info.param.Name(); });

} // namespace
