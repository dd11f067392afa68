#include "cli/Arguments.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace cindertop::cli {

namespace {

constexpr double longestSeconds = 100'000'000; ///< three years
constexpr double aboveZero = std::numeric_limits<double>::denorm_min();

constexpr ValueRow secondsValue{"SECONDS", ValueKind::number, "a number of seconds above 0",
                                {},        aboveZero,         longestSeconds};

constexpr OptionRow json{"--json", "JSON instead of text. \"watch\" writes one object a line."};
constexpr std::array readOptions{json};
constexpr std::array<std::string_view, 1> lineFormats{"waybar"};
constexpr auto orders = [] {
    std::array<std::string_view, casesOf<OffenderOrder>().size()> names;
    std::ranges::transform(casesOf<OffenderOrder>(), names.begin(), [](const auto& row) { return row.name; });
    return names;
}();
constexpr double shortestInterval = 0.2;
constexpr std::array watchOptions{
    json,
    OptionRow{"--format",
              "Write lines for a status bar. \"waybar\" is what a custom module of Waybar reads.",
              {"FORMAT", ValueKind::choice, "waybar", lineFormats}},
    OptionRow{"--interval",
              "Look every so many seconds, at least 0.2. A running agent measures at its own pace all the "
              "same.",
              {"SECONDS",
               ValueKind::number,
               "a number of seconds, at least 0.2",
               {},
               shortestInterval,
               longestSeconds}},
    OptionRow{
        "--sort",
        "Order the applications on the screen by their share of the processor or of the graphics, or by "
        "name. Where the screen has not room for all, it is the busiest that are shown.",
        {"ORDER", ValueKind::choice, "cpu, graphics or name", orders}}};
constexpr std::array metricsOptions{
    OptionRow{"--names", "Name the applications in the metrics. Without it, only kinds of work are told."},
    OptionRow{"--textfile",
              "Keep the file cindertop.prom in FOLDER up to date until you end it. It is for the textfile "
              "collector of Prometheus' node exporter, changes every 15 s, and goes when the command ends.",
              {"FOLDER", ValueKind::folder, "a folder"}}};
constexpr std::array replayOptions{OptionRow{"--until", "Play so much of the scenario.", secondsValue},
                                   OptionRow{"--state-dir",
                                             "Keep the files of the replay in FOLDER.",
                                             {"FOLDER", ValueKind::folder, "a folder"}}};
constexpr std::array recordOptions{
    OptionRow{"--seconds", "Record for so long, instead of 60 or until Ctrl-C.", secondsValue}};
constexpr std::array generalOptions{helpOption, versionOption};

constexpr std::array preference{ValueRow{"NAME", ValueKind::preference}, ValueRow{"VALUE"}};
constexpr std::array fileToWrite{ValueRow{"FILE", ValueKind::file, "a file to write"}};
constexpr std::array scenarioToPlay{ValueRow{"FILE", ValueKind::file, "a scenario to play"}};

/// In the order of `Command`.
constexpr std::array commands{
    CommandRow{"status",
               {},
               readOptions,
               "Show how hot the machine is, and why. The thermal score, the agent's advice, temperatures, "
               "power, displays, the busiest applications, and which sources of facts this machine has."},
    CommandRow{
        "watch",
        {},
        watchOptions,
        "Show it again and again until you press q or Ctrl-C. On a terminal on one screen, elsewhere "
        "a line when something has changed, or after ten seconds. It looks every 2 s while the machine "
        "is cool, and up to five times a second when it is hot."},
    CommandRow{"offenders", {}, readOptions, "Show every application with its processes, the busiest first."},
    CommandRow{"history",
               {},
               readOptions,
               "Show the last hour and today, as the agent recorded them. It need not run for that. The "
               "preference historyDurationMinutes may say less than an hour."},
    CommandRow{"metrics",
               {},
               metricsOptions,
               "Print what is known of the machine for Prometheus. Nothing listens, and no name of an "
               "application is told unless you ask for it."},
    CommandRow{"settings", preference, readOptions,
               "Show all preferences, or the one named; with a VALUE, change it."},
    CommandRow{"pause", {}, {}, "Pause the monitoring."},
    CommandRow{"resume", {}, {}, "Resume the monitoring."},
    CommandRow{"quit", {}, {}, "End the agent, and wait until it has ended."},
    CommandRow{"accept-terms",
               {},
               {},
               "Show the terms of use and accept them. Before, nothing is watched in the background and "
               "nothing is kept. A look that you ask for (status, watch, offenders, metrics, record) needs "
               "no acceptance and "
               "keeps nothing."},
    CommandRow{"export",
               fileToWrite,
               {},
               "Write a file to send along with a question. It holds the recorded diagnostic events, the "
               "settings and what kind of system this is. An existing file is replaced; \"-\" writes to the "
               "output."},
    CommandRow{"replay", scenarioToPlay, replayOptions,
               "Play a scenario to the program in virtual time. It prints what the program does, one JSON "
               "object a line."},
    CommandRow{"record", fileToWrite, recordOptions,
               "Write what this machine does as a scenario. Paths and names of persons or the host are left "
               "out."},
};
static_assert(commands.size() == static_cast<std::size_t>(Command::help));

constexpr std::array environment{
    HelpSection::Row{"NO_COLOR", "Not empty: no colours. There are none outside a terminal anyway."},
    HelpSection::Row{"COLUMNS", "Width of the text where it does not go to a terminal (80)."},
    HelpSection::Row{"LC_ALL, LC_MEASUREMENT, LANG",
                     "Choose between Celsius and Fahrenheit, unless the preference temperatureUnit does."},
};
constexpr std::array exitStatuses{
    HelpSection::Row{"0", "Done. Also when you ended \"watch\", or whoever read it had seen enough."},
    HelpSection::Row{"1", "The output or a file could not be written, no agent runs where one is needed, or "
                          "it or the system refused."},
    HelpSection::Row{"2", "The command line or the scenario was not understood."},
};
constexpr std::array sections{
    HelpSection{"",
                {},
                "Shares are of the whole machine: 100 % means that every processor is busy. What cannot be "
                "measured is \"not available\" in text and null in JSON, never 0."},
    HelpSection{"Environment", environment},
    HelpSection{"Exit status", exitStatuses,
                "Ended by SIGTERM, SIGHUP or SIGQUIT, \"watch\" restores the terminal and then dies by that "
                "signal."},
};

constexpr ProgramTable table{
    .name = "cindertopctl",
    .summary = "shows how hot this machine runs, and why.",
    .introduction = "What status, watch and offenders show is the machine as the running agent sees it, or "
                    "as measured here without one.",
    .commands = commands,
    .options = generalOptions,
    .sections = sections,
};

Format formatIn(const CommandLine& line) {
    if (line.has("--format")) {
        return Format::waybar;
    }
    return line.has("--json") ? Format::json : Format::text;
}

OffenderOrder orderIn(const CommandLine& line) {
    return fromRawValue<OffenderOrder>(line.value("--sort").value_or("")).value_or(OffenderOrder::cpu);
}

/// An order is one of the screen, and there is one format.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> exclusions{
    {{"--json", "--format"}, {"--json", "--sort"}, {"--format", "--sort"}}};

Command commandIn(const CommandLine& line) {
    if (line.command == nullptr) {
        return line.has(helpOption.name) ? Command::help : Command::version;
    }
    return static_cast<Command>(line.command - commands.data());
}

} // namespace

const ProgramTable& programTable() {
    return table;
}

std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words) {
    auto line = readCommandLine(table, words);
    if (!line) {
        return std::unexpected(std::move(line).error());
    }
    for (const auto& [one, other] : exclusions) {
        if (line->has(one) && line->has(other)) {
            return std::unexpected(std::string(one).append(" and ").append(other) + " exclude each other");
        }
    }
    const auto until = line->number("--until");
    return Arguments{.command = commandIn(*line),
                     .format = formatIn(*line),
                     .operands = std::move(line->operands),
                     .seconds = until ? until : line->number("--seconds"),
                     .stateDirectory = line->value("--state-dir"),
                     .showsNames = line->has("--names"),
                     .textfileFolder = line->value("--textfile"),
                     .interval = line->number("--interval"),
                     .order = orderIn(*line)};
}

} // namespace cindertop::cli
