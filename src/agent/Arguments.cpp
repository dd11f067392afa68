#include "agent/Arguments.h"

#include <array>
#include <utility>

namespace cindertop::agent {

namespace {

using cli::HelpSection;
using cli::OptionRow;
using cli::ValueKind;

constexpr std::array<std::string_view, 3> windows{"popover", "settings", "onboarding"};
constexpr std::array<std::string_view, 2> appearances{"dark", "light"};

constexpr std::array options{
    OptionRow{"--headless", "No windows; so it is by itself where there is no display."},
    OptionRow{"--background", "Open no window by itself; so it starts at login."},
    OptionRow{"--open",
              "Open popover, settings or onboarding at once.",
              {"WINDOW", ValueKind::choice, "popover, settings or onboarding", windows}},
    OptionRow{"--appearance",
              "Look dark or light, whatever the desktop prefers.",
              {"A", ValueKind::choice, "dark or light", appearances}},
    OptionRow{"--accept-terms",
              "Accept the terms of use for this run only. To accept them for good, answer the question that "
              "is asked on a terminal, or run \"cindertopctl accept-terms\"."},
    OptionRow{"--scenario",
              "Play a scenario instead of watching the machine. Nothing is kept, and nothing of the machine "
              "is touched.",
              {"FILE", ValueKind::file}},
    OptionRow{"--speed",
              "Play it N times as fast.",
              {"N", ValueKind::number, "a number from 0.001 to 10000", {}, 0.001, 10'000}},
    OptionRow{
        "--pause-at", "Let its time stand still after S seconds of it.", {"S", ValueKind::number, "seconds"}},
    cli::helpOption,
    cli::versionOption,
};

constexpr std::array<std::string_view, 3> usage{
    "cindertop [--open WINDOW] [--appearance dark|light] [--accept-terms]",
    "cindertop --headless [--accept-terms]",
    "cindertop --scenario FILE [--speed N] [--pause-at S] [--headless] ...",
};

constexpr std::array exitStatuses{
    HelpSection::Row{"0", "Done, or another one runs already."},
    HelpSection::Row{"1", "The system refused something needed."},
    HelpSection::Row{"2", "The command line or the scenario was not understood."},
};
constexpr std::array sections{HelpSection{"Exit status", exitStatuses}};

constexpr cli::ProgramTable table{
    .name = "cindertop",
    .summary = "watches how hot this machine runs, keeps a history, and advises.",
    .usage = usage,
    .introduction = "It runs until it is told to end (Ctrl-C, SIGTERM). On a terminal it prints a line for "
                    "each look at the machine; elsewhere it is quiet. \"cindertopctl\" talks to it. One runs "
                    "for each user: a second start brings the first to the front.",
    .options = options,
    .sections = sections,
};

std::optional<std::string> contradictionIn(const cli::CommandLine& line) {
    for (const std::string_view option : {"--speed", "--pause-at"}) {
        if (line.has(option) && !line.has("--scenario")) {
            return std::string(option) + " needs a --scenario";
        }
    }
    if (line.has("--background") && line.has("--open")) {
        return "--background opens no window, and --open does";
    }
    if (line.has("--headless") && line.has("--open")) {
        return "--open needs windows, and --headless has none";
    }
    return std::nullopt;
}

} // namespace

const cli::ProgramTable& programTable() {
    return table;
}

std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words) {
    const auto line = cli::readCommandLine(table, words);
    if (!line) {
        return std::unexpected(line.error());
    }
    if (line->has("--help") || line->has("--version")) {
        return Arguments{.action = line->has("--help") ? Action::help : Action::version};
    }
    if (auto contradiction = contradictionIn(*line)) {
        return std::unexpected(std::move(*contradiction));
    }
    return Arguments{
        .isHeadless = line->has("--headless"),
        .isBackground = line->has("--background"),
        .acceptsTerms = line->has("--accept-terms"),
        .scenario = line->value("--scenario"),
        .speed = line->number("--speed").value_or(1),
        .pauseAt = line->number("--pause-at"),
        .opening = fromRawValue<Opening>(line->value("--open").value_or("none")).value_or(Opening::none),
        .isDark = line->value("--appearance").transform([](const auto& word) { return word == "dark"; }),
    };
}

} // namespace cindertop::agent
