// Entry point of the zevrin command-line tool.
#include <fstream>
#include <iostream>
#include <sstream>

#include "ZvCli.h"

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
    std::ostringstream Input;
    if (Options.File.empty() || Options.File == "-") {
        Input << std::cin.rdbuf();
    } else {
        std::ifstream File(Options.File, std::ios::binary);
        if (!File) {
            std::cerr << "zevrin: cannot read '" << Options.File << "'\n";
            return 2;
        }
        Input << File.rdbuf();
    }
    // Binary output: the generated "\r\n" line breaks go out as they are.
    return zv::RunCli(Options, Input.str(), std::cout, std::cerr);
}
