#pragma once

#include "terminal/Output.h"

#include <filesystem>
#include <string_view>

namespace cindertop::cli {

/// A file for another user's program to read: mode 0644, and whole whenever it is opened. One process writes
/// it.
class MetricsFile {
public:
    explicit MetricsFile(std::filesystem::path file) : file_(std::move(file)) {}

    /// Removes the file, if it has written it: what nobody keeps up to date misleads.
    ~MetricsFile();

    MetricsFile(const MetricsFile&) = delete;
    MetricsFile& operator=(const MetricsFile&) = delete;

    /// Replaces the contents in one step. On an error the former ones stand.
    WriteResult replace(std::string_view text);

private:
    std::filesystem::path file_;
    bool isWritten_ = false;
};

} // namespace cindertop::cli
