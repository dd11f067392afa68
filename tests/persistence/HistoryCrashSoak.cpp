#include "HistoryCrash.h"
#include "fakes/TemporaryFolder.h"

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string_view>

/// Kills recorders, 300 of them unless the first argument says how many, and tells what became of their file.
int main(int argumentCount, char** arguments) {
    int times = 300;
    if (argumentCount > 1) {
        const std::string_view wanted = arguments[1];
        std::from_chars(wanted.data(), wanted.data() + wanted.size(), times);
    }
    const unsigned seed = std::random_device()();
    const cindertop::fakes::TemporaryFolder folder;
    const auto report = cindertop::tests::killRecorders(folder / "thermal-history.plist", times, seed);
    std::cout << report.kills << " recorders killed, " << report.killedAmidWriting
              << " of them while they wrote; seed " << seed << '\n';
    if (!report.problem.empty()) {
        std::cerr << "the file broke: " << report.problem << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
