#pragma once

#include "cli/CommandLine.h"
#include "cli/OffenderOrder.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::cli {

/// Those of the table in its order, and what the program says about itself.
enum class Command : std::uint8_t {
    status,
    watch,
    offenders,
    history,
    metrics,
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

enum class Format : std::uint8_t {
    text,
    json,
    waybar, ///< of a watch alone
};

/// What the user asked for.
struct Arguments {
    Command command = Command::status;
    Format format = Format::text;
    std::vector<std::string> operands{};         ///< as many as the command takes
    std::optional<double> seconds{};             ///< of a record, or how far to play; above 0
    std::optional<std::string> stateDirectory{}; ///< where a replay keeps its files
    bool showsNames = false;                     ///< of applications, in metrics
    std::optional<std::string> textfileFolder{}; ///< where metrics are kept up to date
    std::optional<double> interval{};            ///< seconds between the looks of a watch
    OffenderOrder order{};                       ///< of the applications on its screen

    bool operator==(const Arguments&) const = default;
};

/// What "cindertopctl" understands.
const ProgramTable& programTable();

/// Reads the words after the program's name. The error is one sentence without the program's name.
std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words);

} // namespace cindertop::cli
