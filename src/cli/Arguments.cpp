#include "cli/Arguments.h"

#include "cli/DisplayText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <utility>

namespace cindertop::cli {

namespace {

constexpr double longestSeconds = 100'000'000; ///< three years

/// What may follow a command.
struct CommandSyntax {
    std::string_view name;
    Command command;
    bool takesJson = false;
    std::size_t mostOperands = 0;
    std::string_view needs{};         ///< what the first operand is, if there has to be one
    std::string_view secondsOption{}; ///< the option with a number of seconds
    bool takesStateDirectory = false;
};

constexpr std::array commands{
    CommandSyntax{.name = "status", .command = Command::status, .takesJson = true},
    CommandSyntax{.name = "watch", .command = Command::watch, .takesJson = true},
    CommandSyntax{.name = "offenders", .command = Command::offenders, .takesJson = true},
    CommandSyntax{.name = "history", .command = Command::history, .takesJson = true},
    CommandSyntax{.name = "settings", .command = Command::settings, .takesJson = true, .mostOperands = 2},
    CommandSyntax{.name = "pause", .command = Command::pause},
    CommandSyntax{.name = "resume", .command = Command::resume},
    CommandSyntax{.name = "quit", .command = Command::quit},
    CommandSyntax{.name = "accept-terms", .command = Command::acceptTerms},
    CommandSyntax{.name = "export",
                  .command = Command::exportDiagnostics,
                  .mostOperands = 1,
                  .needs = "a file to write"},
    CommandSyntax{.name = "replay",
                  .command = Command::replay,
                  .mostOperands = 1,
                  .needs = "a scenario to play",
                  .secondsOption = "--until",
                  .takesStateDirectory = true},
    CommandSyntax{.name = "record",
                  .command = Command::record,
                  .mostOperands = 1,
                  .needs = "a file to write",
                  .secondsOption = "--seconds"},
};

constexpr std::array informationOptions{
    std::pair{std::string_view("--help"), Command::help},
    std::pair{std::string_view("-h"), Command::help},
    std::pair{std::string_view("--version"), Command::version},
    std::pair{std::string_view("-V"), Command::version},
};

std::optional<Command> information(std::string_view word) {
    for (const auto& [name, command] : informationOptions) {
        if (name == word) {
            return command;
        }
    }
    return std::nullopt;
}

const CommandSyntax* syntaxOf(std::string_view word) {
    for (const auto& syntax : commands) {
        if (syntax.name == word) {
            return &syntax;
        }
    }
    return nullptr;
}

/// The user's own word comes back on a terminal, so it is shown harmlessly.
std::string quoted(std::string_view word) {
    return "\"" + shown(word, Charset::unicode) + "\"";
}

std::optional<double> positiveSeconds(std::string_view word) {
    double seconds = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), seconds);
    const bool isNumber = error == std::errc() && end == word.data() + word.size();
    return isNumber && seconds > 0 && seconds <= longestSeconds ? std::optional(seconds) : std::nullopt;
}

bool isNegativeNumber(std::string_view word) {
    return word.size() > 1 && word[0] == '-' && word[1] >= '0' && word[1] <= '9';
}

/// Takes the words one by one.
class ArgumentReader {
public:
    explicit ArgumentReader(std::span<const std::string_view> words) : words_(words) {}

    std::expected<Arguments, std::string> read() {
        while (!words_.empty()) {
            const auto word = next();
            if (word == "--" && !areOptionsOver_) {
                areOptionsOver_ = true;
                continue;
            }
            if (const auto asked = information(word); asked && !areOptionsOver_) {
                return Arguments{.command = *asked};
            }
            if (auto taken = areOptionsOver_ ? takeWord(word) : take(word); !taken) {
                return std::unexpected(std::move(taken).error());
            }
        }
        return result();
    }

private:
    using Taken = std::expected<void, std::string>;

    std::string_view next() {
        const auto word = words_.front();
        words_ = words_.subspan(1);
        return word;
    }

    Taken take(std::string_view word) {
        if (word == "--json") {
            arguments_.format = Format::json;
            return {};
        }
        if (word == "--until" || word == "--seconds" || word == "--state-dir") {
            return takeOption(word);
        }
        if (word.starts_with("-") && word != "-" && !isNegativeNumber(word)) {
            return std::unexpected("unknown option " + quoted(word));
        }
        return takeWord(word);
    }

    Taken takeWord(std::string_view word) {
        return syntax_ == nullptr ? takeCommand(word) : takeOperand(word);
    }

    Taken takeOption(std::string_view option) {
        if (words_.empty()) {
            return std::unexpected(quoted(option) + " needs a value");
        }
        const auto value = next();
        options_.push_back(option);
        if (option == "--state-dir") {
            arguments_.stateDirectory = value;
            return {};
        }
        arguments_.seconds = positiveSeconds(value);
        return arguments_.seconds
                   ? Taken()
                   : std::unexpected(quoted(option) + " needs a number of seconds above 0, not " +
                                     quoted(value));
    }

    Taken takeCommand(std::string_view word) {
        syntax_ = syntaxOf(word);
        return syntax_ != nullptr ? Taken() : std::unexpected("unknown command " + quoted(word));
    }

    Taken takeOperand(std::string_view word) {
        if (arguments_.operands.size() == syntax_->mostOperands) {
            return std::unexpected("unexpected argument " + quoted(word));
        }
        if (word.empty() && !syntax_->needs.empty()) {
            return std::unexpected(missingOperand());
        }
        arguments_.operands.emplace_back(word);
        return {};
    }

    bool takesOption(std::string_view option) const {
        return option == syntax_->secondsOption || (option == "--state-dir" && syntax_->takesStateDirectory);
    }

    std::string missingOperand() const {
        return quoted(syntax_->name) + " needs " + std::string(syntax_->needs);
    }

    std::expected<Arguments, std::string> result() {
        if (syntax_ == nullptr) {
            return std::unexpected("no command given");
        }
        if (arguments_.operands.empty() && !syntax_->needs.empty()) {
            return std::unexpected(missingOperand());
        }
        for (const auto option : options_) {
            if (!takesOption(option)) {
                return std::unexpected(quoted(syntax_->name) + " takes no " + std::string(option));
            }
        }
        if (arguments_.format == Format::json && !syntax_->takesJson) {
            return std::unexpected(quoted(syntax_->name) + " takes no --json");
        }
        arguments_.command = syntax_->command;
        return std::move(arguments_);
    }

    std::span<const std::string_view> words_;
    bool areOptionsOver_ = false;
    const CommandSyntax* syntax_ = nullptr;
    std::vector<std::string_view> options_;
    Arguments arguments_;
};

} // namespace

std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words) {
    return ArgumentReader(words).read();
}

} // namespace cindertop::cli
