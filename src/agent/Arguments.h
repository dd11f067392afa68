#pragma once

#include "cli/CommandLine.h"
#include "support/Enumeration.h"

#include <array>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cindertop::agent {

enum class Action { run, help, version };

/// Which window the program opens with.
enum class Opening { none, popover, settings, onboarding };

/// What the user asked for.
struct Arguments {
    Action action = Action::run;
    bool isHeadless = false;               ///< no windows even where there is a display
    bool isBackground = false;             ///< opens no window by itself
    bool acceptsTerms = false;             ///< for this run only
    std::optional<std::string> scenario{}; ///< file to play in place of the machine
    double speed = 1;                      ///< of the scenario, 0.001 to 10,000
    std::optional<double> pauseAt{};       ///< seconds of the scenario after which time stands still
    Opening opening = Opening::none;
    std::optional<bool> isDark{}; ///< absent: as the desktop

    bool operator==(const Arguments&) const = default;
};

/// Reads the words after the program's name. The error is one sentence without the program's name.
std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words);

/// What "cindertop" understands.
const cli::ProgramTable& programTable();

} // namespace cindertop::agent

namespace cindertop {

template <>
struct EnumerationTable<agent::Opening> {
    static constexpr std::array cases{EnumerationCase{agent::Opening::none, "none"},
                                      EnumerationCase{agent::Opening::popover, "popover"},
                                      EnumerationCase{agent::Opening::settings, "settings"},
                                      EnumerationCase{agent::Opening::onboarding, "onboarding"}};
};

} // namespace cindertop
