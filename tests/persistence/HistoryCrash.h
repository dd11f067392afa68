#pragma once

#include <filesystem>
#include <string>

namespace cindertop::tests {

/// What a row of killed recorders left in their file.
struct CrashReport {
    int kills = 0;
    int killedAmidWriting = 0; ///< while a replacement stood beside the file
    std::string problem;       ///< empty when the file always read as its old or its new contents
};

/// Lets a child process record into `file` and kills it at a random moment, that many times.
CrashReport killRecorders(const std::filesystem::path& file, int times, unsigned seed);

} // namespace cindertop::tests
