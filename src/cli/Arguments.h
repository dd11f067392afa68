#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::cli {

enum class Command : std::uint8_t {
    status,
    watch,
    offenders,
    history,
    settings,
    pause,
    resume,
    quit,
    acceptTerms,
    exportDiagnostics,
    replay,
    record,
    help,
    version,
};

enum class Format : std::uint8_t { text, json };

/// What the user asked for.
struct Arguments {
    Command command = Command::status;
    Format format = Format::text;
    std::vector<std::string> operands{};         ///< as many as the command takes
    std::optional<double> seconds{};             ///< of a record, or how far to play; above 0
    std::optional<std::string> stateDirectory{}; ///< where a replay keeps its files

    bool operator==(const Arguments&) const = default;
};

/// Reads the words after the program's name. The error is one sentence without the program's name.
/// "--help" and "--version" win wherever they stand, as long as what stands before them is known. "-" is a
/// file, "--" ends the options, and a negative number is none.
std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words);

} // namespace cindertop::cli
