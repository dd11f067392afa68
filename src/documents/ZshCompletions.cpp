#include "documents/CompletionWords.h"
#include "documents/Completions.h"

namespace cindertop::documents {

namespace {

using cli::OptionRow;
using cli::ValueKind;
using cli::ValueRow;

/// A text within a specification, where colons and brackets mean something.
std::string escapedText(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        if (character == ':' || character == '[' || character == ']' || character == '\\') {
            escaped += '\\';
        }
        escaped += character;
    }
    return escaped;
}

std::string actionFor(const ValueRow& value) {
    switch (value.kind) {
    case ValueKind::file:
        return "_files";
    case ValueKind::folder:
        return "_files -/";
    case ValueKind::choice:
        return '(' + joined(value.choices) + ')';
    case ValueKind::preference:
        return '(' + joined(preferenceNames()) + ')';
    default:
        return " ";
    }
}

std::string valueSpecification(const ValueRow& value) {
    return ':' + escapedText(value.name) + ':' + actionFor(value);
}

/// The lines of _arguments for these options.
std::string optionLines(std::span<const OptionRow> options) {
    std::string lines;
    for (const auto& option : options) {
        const auto help = '[' + escapedText(summaryOf(option.text)) + ']' +
                          (option.value.name.empty() ? "" : valueSpecification(option.value));
        lines += " \\\n        ";
        if (option.letter != 0) { // these end the line
            lines += "'(- *)'{-" + std::string(1, option.letter) + ',' + std::string(option.name) + '}' +
                     inSingleQuotes(help);
        } else {
            lines += inSingleQuotes(std::string(option.name) + help);
        }
    }
    return lines;
}

std::string operandLines(const cli::CommandRow& command) {
    std::string lines;
    for (std::size_t index = 0; index < command.operands.size(); ++index) {
        const auto& operand = command.operands[index];
        const bool isPreferenceValue = index == 1 && command.operands[0].kind == ValueKind::preference;
        const auto number = std::to_string(index + 1) + (operand.needs.empty() ? ":" : "");
        lines += " \\\n        " + inSingleQuotes(number + (isPreferenceValue ? ":VALUE:->preference"
                                                                              : valueSpecification(operand)));
    }
    return lines;
}

std::string preferenceCases() {
    std::string text = "        [[ $state == preference ]] || return\n        case $words[2] in\n";
    for (const auto& preference : preferences()) {
        const auto values = joined(valuesOf(preference));
        text +=
            values.empty() ? "" : "        " + std::string(preference.name) + ") compadd " + values + " ;;\n";
    }
    return text + "        esac\n";
}

std::string commandCase(const cli::CommandRow& command) {
    auto text = "    " + std::string(command.name) + ")\n        _arguments" + optionLines(command.options) +
                operandLines(command) + '\n';
    if (!command.operands.empty() && command.operands[0].kind == ValueKind::preference) {
        text += preferenceCases();
    }
    return text + "        ;;\n";
}

} // namespace

std::string zshCompletions(const cli::ProgramTable& program) {
    const std::string name(program.name);
    std::string text = "#compdef " + name + "\n# Completions of " + name + " for zsh.\n";
    if (program.commands.empty()) {
        return text + "_arguments" + optionLines(program.options) + '\n';
    }
    text += "local curcontext=$curcontext state line\nlocal -a commands=(\n";
    for (const auto& command : program.commands) {
        text += "    " + inSingleQuotes(std::string(command.name) + ':' + summaryOf(command.text)) + '\n';
    }
    text += ")\n_arguments -C" + optionLines(program.options) +
            " \\\n        '1:command:->command' \\\n        '*::argument:->argument'\n"
            "if [[ $state == command ]]; then\n    _describe command commands\n    return\nfi\n"
            "[[ $state == argument ]] || return\ncase $words[1] in\n";
    for (const auto& command : program.commands) {
        text += command.options.empty() && command.operands.empty() ? "" : commandCase(command);
    }
    return text + "esac\n";
}

} // namespace cindertop::documents
