#include "cli/CommandLine.h"

#include "terminal/DisplayText.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <ranges>

namespace cindertop::cli {

namespace {

/// The user's own word is echoed to a terminal, so control characters are made visible.
std::string quotedWord(std::string_view word) {
    return '"' + shown(word, Charset::unicode) + '"';
}

std::optional<double> numberIn(std::string_view word) {
    double number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size() ? std::optional(number) : std::nullopt;
}

bool isNegativeNumber(std::string_view word) {
    return word.size() > 1 && word[0] == '-' && word[1] >= '0' && word[1] <= '9';
}

bool fits(const ValueRow& row, std::string_view value) {
    if (row.kind == ValueKind::choice) {
        return std::ranges::find(row.choices, value) != row.choices.end();
    }
    if (row.kind == ValueKind::number) {
        const auto number = numberIn(value);
        return number && *number >= row.least && *number <= row.most;
    }
    return row.kind != ValueKind::folder || !value.empty();
}

bool hasOption(std::span<const OptionRow> options, std::string_view name) {
    return std::ranges::find(options, name, &OptionRow::name) != options.end();
}

bool isCalled(const OptionRow& option, std::string_view word) {
    return word == option.name || (option.letter != 0 && word == std::string{'-', option.letter});
}

class CommandLineReader {
public:
    CommandLineReader(const ProgramTable& program, std::span<const std::string_view> words)
        : program_(program), words_(words) {}

    std::expected<CommandLine, std::string> read() {
        const auto options = optionsOf(program_);
        while (!words_.empty()) {
            const auto word = next();
            if (word == "--" && !areOptionsOver_) {
                areOptionsOver_ = true;
                continue;
            }
            const auto option =
                areOptionsOver_
                    ? options.end()
                    : std::ranges::find_if(options, [word](const auto& row) { return isCalled(row, word); });
            if (option == options.end()) {
                takeWord(word);
            } else if (option->name == helpOption.name || option->name == versionOption.name) {
                return CommandLine{.options = {{option->name, {}}}};
            } else {
                takeOption(*option);
            }
            if (!error_.empty()) {
                return std::unexpected(std::move(error_));
            }
        }
        if (!program_.commands.empty()) {
            check();
        }
        return error_.empty() ? std::expected<CommandLine, std::string>(std::move(line_))
                              : std::unexpected(std::move(error_));
    }

private:
    std::string_view next() {
        const auto word = words_.front();
        words_ = words_.subspan(1);
        return word;
    }

    void takeOption(const OptionRow& option) {
        const std::string name(option.name);
        const bool takesValue = !option.value.name.empty();
        if (takesValue && words_.empty()) {
            error_ = name + " needs a value";
            return;
        }
        const auto value = takesValue ? next() : std::string_view();
        if (!fits(option.value, value)) {
            error_ = name + " needs " + std::string(option.value.needs) + ", not " + quotedWord(value);
        }
        line_.options.emplace_back(option.name, value);
    }

    void takeWord(std::string_view word) {
        if (program_.commands.empty()) {
            error_ = "unknown argument " + quotedWord(word);
        } else if (!areOptionsOver_ && word.starts_with("-") && word != "-" && !isNegativeNumber(word)) {
            error_ = "unknown option " + quotedWord(word);
        } else if (line_.command == nullptr) {
            takeCommand(word);
        } else if (line_.operands.size() == line_.command->operands.size()) {
            error_ = "unexpected argument " + quotedWord(word);
        } else if (word.empty()) {
            checkOperand();
            line_.operands.emplace_back();
        } else {
            line_.operands.emplace_back(word);
        }
    }

    void takeCommand(std::string_view word) {
        const auto command = std::ranges::find(program_.commands, word, &CommandRow::name);
        if (command == program_.commands.end()) {
            error_ = "unknown command " + quotedWord(word);
        } else {
            line_.command = &*command;
        }
    }

    /// The next operand is missing, or empty.
    void checkOperand() {
        const auto missing = line_.command->operands.subspan(line_.operands.size());
        if (!missing.empty() && !missing.front().needs.empty()) {
            error_ = quotedWord(line_.command->name) + " needs " + std::string(missing.front().needs);
        }
    }

    /// Options may stand before the command, so whether it takes them is known at the end.
    void check() {
        if (line_.command == nullptr) {
            error_ = "no command given";
            return;
        }
        checkOperand();
        for (const auto& [name, value] : line_.options) {
            if (error_.empty() && !hasOption(line_.command->options, name)) {
                error_ = quotedWord(line_.command->name) + " takes no " + std::string(name);
            }
        }
    }

    const ProgramTable& program_;
    std::span<const std::string_view> words_;
    bool areOptionsOver_ = false;
    CommandLine line_{};
    std::string error_{}; ///< empty: none yet
};

} // namespace

std::vector<OptionRow> optionsOf(const ProgramTable& program) {
    std::vector<OptionRow> options;
    for (const auto& command : program.commands) {
        std::ranges::copy_if(command.options, std::back_inserter(options),
                             [&options](const auto& option) { return !hasOption(options, option.name); });
    }
    options.insert(options.end(), program.options.begin(), program.options.end());
    return options;
}

std::optional<std::string> CommandLine::value(std::string_view option) const {
    for (const auto& [name, value] : std::views::reverse(options)) {
        if (name == option) {
            return value;
        }
    }
    return std::nullopt;
}

std::optional<double> CommandLine::number(std::string_view option) const {
    return value(option).and_then([](const std::string& word) { return numberIn(word); });
}

std::expected<CommandLine, std::string> readCommandLine(const ProgramTable& program,
                                                        std::span<const std::string_view> words) {
    return CommandLineReader(program, words).read();
}

} // namespace cindertop::cli
