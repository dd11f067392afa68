#include "documents/CompletionWords.h"
#include "documents/Completions.h"

namespace cindertop::documents {

namespace {

using cli::OptionRow;
using cli::ValueKind;
using cli::ValueRow;

std::string escaped(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'' || character == '\\') {
            quoted += '\\';
        }
        quoted += character;
    }
    return quoted + '\'';
}

std::string seen(std::string_view word) {
    return "__fish_seen_subcommand_from " + std::string(word);
}

/// One line; an empty condition holds everywhere.
std::string lineOf(const cli::ProgramTable& program, const std::string& condition, const std::string& rest) {
    const auto start = "complete -c " + std::string(program.name);
    return start + (condition.empty() ? "" : " -n " + escaped(condition)) + rest + '\n';
}

/// What may stand there instead of a file's name, which is off by itself.
std::string valueArguments(const ValueRow& value) {
    switch (value.kind) {
    case ValueKind::file:
        return " -F";
    case ValueKind::folder:
        return " -a '(__fish_complete_directories)'";
    case ValueKind::choice:
        return " -a " + escaped(joined(value.choices));
    case ValueKind::preference:
        return " -a " + escaped(joined(preferenceNames()));
    default:
        return {};
    }
}

std::string optionLine(const cli::ProgramTable& program, const std::string& condition,
                       const OptionRow& option) {
    auto rest = " -l " + std::string(option.name.substr(2));
    rest += option.letter != 0 ? " -s " + std::string(1, option.letter) : "";
    rest += option.value.name.empty() ? "" : " -r" + valueArguments(option.value);
    return lineOf(program, condition, rest + " -d " + escaped(summaryOf(option.text)));
}

std::string preferenceLines(const cli::ProgramTable& program, std::string_view command) {
    const std::string names = joined(preferenceNames());
    auto text = lineOf(program, seen(command) + "; and not " + seen(names), " -a " + escaped(names));
    for (const auto& preference : preferences()) {
        const auto values = joined(valuesOf(preference));
        text += values.empty() ? ""
                               : lineOf(program, seen(command) + "; and " + seen(preference.name),
                                        " -a " + escaped(values));
    }
    return text;
}

std::string commandLines(const cli::ProgramTable& program, const cli::CommandRow& command) {
    const std::string name(command.name);
    auto text =
        lineOf(program, "__fish_use_subcommand", " -a " + name + " -d " + escaped(summaryOf(command.text)));
    for (const auto& option : command.options) {
        text += optionLine(program, seen(name), option);
    }
    if (command.operands.empty()) {
        return text;
    }
    const auto& first = command.operands.front();
    return text + (first.kind == ValueKind::preference ? preferenceLines(program, name)
                                                       : lineOf(program, seen(name), valueArguments(first)));
}

} // namespace

std::string fishCompletions(const cli::ProgramTable& program) {
    auto text = "# Completions of " + std::string(program.name) + " for fish.\n" + lineOf(program, "", " -f");
    for (const auto& option : program.options) {
        text += optionLine(program, "", option);
    }
    for (const auto& command : program.commands) {
        text += commandLines(program, command);
    }
    return text;
}

} // namespace cindertop::documents
