#pragma once

#include <cstdint>
#include <expected>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cindertop::cli {

/// What a value names; shells complete it accordingly.
enum class ValueKind : std::uint8_t { word, file, folder, number, choice, preference };

/// The value of an option, or an operand of a command.
struct ValueRow {
    std::string_view name; ///< its placeholder, "FILE"; empty where an option takes none
    ValueKind kind = ValueKind::word;
    std::string_view needs{}; ///< what it has to be, in words; an operand without that may be left out
    std::span<const std::string_view> choices{};
    double least = 0; ///< of a number, inclusive like `most`
    double most = std::numeric_limits<double>::max();
};

/// The first sentence of each text is enough for a list.
struct OptionRow {
    std::string_view name; ///< "--json"
    std::string_view text;
    ValueRow value{};
    char letter = 0; ///< 'h' where "-h" means the same
};

struct CommandRow {
    std::string_view name;
    std::span<const ValueRow> operands; ///< those that may be left out come last
    std::span<const OptionRow> options;
    std::string_view text;
};

/// An additional section of the help.
struct HelpSection {
    struct Row {
        std::string_view term;
        std::string_view text;
    };

    std::string_view heading; ///< may be empty
    std::span<const Row> rows;
    std::string_view text{}; ///< below the rows
};

/// All that a program understands: its parser, help, manual and completions read it.
struct ProgramTable {
    std::string_view name;
    std::string_view summary;                  ///< goes on from the name: "tells how ..."
    std::span<const std::string_view> usage{}; ///< of a program without commands, one line each
    std::string_view introduction{};
    std::span<const CommandRow> commands{};
    std::span<const OptionRow> options; ///< beside those of the commands
    std::span<const HelpSection> sections;
};

/// They are answered wherever they stand, as long as what stands before them is known.
inline constexpr OptionRow helpOption{"--help", "Show this help.", {}, 'h'};
inline constexpr OptionRow versionOption{"--version", "Show the version.", {}, 'V'};

/// Those of the commands, each once, and then those of the program.
std::vector<OptionRow> optionsOf(const ProgramTable& program);

/// The words after a program's name, told apart by its table.
struct CommandLine {
    const CommandRow* command = nullptr; ///< null without commands, and with "--help" and "--version"
    std::vector<std::string> operands{}; ///< as many as the command takes
    std::vector<std::pair<std::string_view, std::string>> options{}; ///< with their values

    bool has(std::string_view option) const { return value(option).has_value(); }

    /// The last one given.
    std::optional<std::string> value(std::string_view option) const;
    std::optional<double> number(std::string_view option) const;
};

/// The error is one sentence without the program's name. "-" is an operand, "--" ends the options, and a
/// negative number is no option.
std::expected<CommandLine, std::string> readCommandLine(const ProgramTable& program,
                                                        std::span<const std::string_view> words);

} // namespace cindertop::cli
