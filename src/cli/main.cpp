// Entry point of the zevrin command-line tool.
#include <fstream>
#include <iostream>
#include <string>

#include "ZvCli.h"

namespace {

// The whole of In, read in large blocks straight into the text: a file of many statements is
// copied once, not once into a string stream and once more out of it.
std::string ReadAll(std::istream& In) {
    constexpr std::size_t Block = 1 << 16;
    std::string Text;
    // A file (or standard input redirected from one) tells its size: the text is made that large
    // at once. A pipe cannot seek and grows the text as it comes.
    std::streambuf& Buffer = *In.rdbuf();
    const std::streamoff Here = Buffer.pubseekoff(0, std::ios::cur, std::ios::in);
    const std::streamoff End = Here < 0 ? Here : std::streamoff(Buffer.pubseekoff(0, std::ios::end, std::ios::in));
    if (Here >= 0 && End >= Here) {
        Buffer.pubseekpos(Here, std::ios::in);
        Text.reserve(static_cast<std::size_t>(End - Here) + Block);
    }
    std::size_t Size = 0;
    do {
        Text.resize(Size + Block);
        In.read(Text.data() + Size, static_cast<std::streamsize>(Block));
        Size += static_cast<std::size_t>(In.gcount());
    } while (In);
    Text.resize(Size);
    return Text;
}

} // namespace

int main(int Argc, char** Argv) {
    std::ios::sync_with_stdio(false);
    zv::TZvCliOptions Options;
    try {
        Options = zv::ParseCliArguments(std::vector<std::string>(Argv + 1, Argv + Argc));
    } catch (const zv::TZvUsageError& E) {
        std::cerr << "zevrin: " << E.Message << "\n" << "Try 'zevrin --help'.\n";
        return 2;
    }
    if (Options.Help) {
        std::cout << zv::CliUsage();
        return 0;
    }
    std::string Input;
    if (Options.File.empty() || Options.File == "-") {
        Input = ReadAll(std::cin);
    } else {
        std::ifstream File(Options.File, std::ios::binary);
        if (!File) {
            std::cerr << "zevrin: cannot read '" << Options.File << "'\n";
            return 2;
        }
        Input = ReadAll(File);
    }
    // Binary output: the generated "\r\n" line breaks go out as they are.
    return zv::RunCli(Options, Input, std::cout, std::cerr);
}
