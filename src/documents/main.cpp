// Prints what is installed beside a program about its command line.
// usage: command-documents cindertop|cindertopctl man|bash|zsh|fish

#include "agent/Arguments.h"
#include "cli/Arguments.h"
#include "documents/Completions.h"
#include "documents/ManualPage.h"

#include <iostream>
#include <string>
#include <string_view>

namespace {

std::string documentOf(std::string_view program, std::string_view kind) {
    using namespace cindertop;
    const bool isAgent = program == "cindertop";
    const auto& table = isAgent ? agent::programTable() : cli::programTable();
    if (kind == "man") {
        return documents::manualPage(table, isAgent ? "cindertopctl" : "cindertop");
    }
    return kind == "bash"  ? documents::bashCompletions(table)
           : kind == "zsh" ? documents::zshCompletions(table)
                           : documents::fishCompletions(table);
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3) {
        return 2;
    }
    std::cout << documentOf(arguments[1], arguments[2]) << std::flush;
    return std::cout ? 0 : 1;
}
