#include "cli/Arguments.h"

#include "cli/DisplayText.h"

#include <array>
#include <optional>
#include <utility>

namespace cindertop::cli {

namespace {

using CommandName = std::pair<std::string_view, Command>;

constexpr std::array commands{
    CommandName{"status", Command::status},
    CommandName{"watch", Command::watch},
    CommandName{"offenders", Command::offenders},
};

constexpr std::array informationOptions{
    CommandName{"--help", Command::help},
    CommandName{"-h", Command::help},
    CommandName{"--version", Command::version},
    CommandName{"-V", Command::version},
};

std::optional<Command> lookUp(std::span<const CommandName> table, std::string_view word) {
    for (const auto& [name, command] : table) {
        if (name == word) {
            return command;
        }
    }
    return std::nullopt;
}

/// The user's own word comes back on a terminal, so it is shown harmlessly.
std::string quoted(std::string_view word) {
    return "\"" + shown(word, Charset::unicode) + "\"";
}

} // namespace

std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words) {
    std::optional<Command> command;
    Format format = Format::text;
    for (const auto word : words) {
        if (const auto information = lookUp(informationOptions, word)) {
            return Arguments{.command = *information};
        }
        if (word == "--json") {
            format = Format::json;
        } else if (word.starts_with("-")) {
            return std::unexpected("unknown option " + quoted(word));
        } else if (command) {
            return std::unexpected("unexpected argument " + quoted(word));
        } else {
            command = lookUp(commands, word);
            if (!command) {
                return std::unexpected("unknown command " + quoted(word));
            }
        }
    }
    if (!command) {
        return std::unexpected("no command given");
    }
    return Arguments{.command = *command, .format = format};
}

} // namespace cindertop::cli
