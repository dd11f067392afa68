#include "documents/CompletionWords.h"
#include "documents/Completions.h"

namespace cindertop::documents {

namespace {

using cli::OptionRow;
using cli::ValueKind;
using cli::ValueRow;

/// What answers for a value. Nothing to offer ends the completion all the same.
std::string replyFor(const ValueRow& value) {
    switch (value.kind) {
    case ValueKind::file:
        return "compopt -o default";
    case ValueKind::folder:
        return "compopt -o dirnames";
    case ValueKind::choice:
        return "words=" + inSingleQuotes(joined(value.choices));
    case ValueKind::preference:
        return "words=" + inSingleQuotes(joined(preferenceNames()));
    default:
        return ":";
    }
}

std::string optionNames(std::span<const OptionRow> options) {
    std::vector<std::string_view> names;
    names.reserve(options.size());
    for (const auto& option : options) {
        names.push_back(option.name);
    }
    return joined(names);
}

/// The cases of options with a value, with what to do at each.
std::string valueOptions(const std::vector<OptionRow>& options, auto action) {
    std::string cases;
    for (const auto& option : options) {
        if (!option.value.name.empty()) {
            cases += "        " + std::string(option.name) + ") " + action(option.value) + " ;;\n";
        }
    }
    return cases;
}

/// The value of a preference depends on its name, which is the word before.
std::string operandCases(const cli::CommandRow& command) {
    std::string cases;
    const bool namesPreference =
        !command.operands.empty() && command.operands[0].kind == ValueKind::preference;
    for (std::size_t index = 0; index < command.operands.size(); ++index) {
        const auto place = "        " + std::string(command.name) + ":" + std::to_string(index);
        if (index == 1 && namesPreference) {
            for (const auto& preference : preferences()) {
                const auto values = joined(valuesOf(preference));
                cases += values.empty() ? ""
                                        : place + ':' + std::string(preference.name) +
                                              ") words=" + inSingleQuotes(values) + " ;;\n";
            }
        } else {
            cases += place + ":*) " + replyFor(command.operands[index]) + " ;;\n";
        }
    }
    return cases;
}

std::string commandNames(const cli::ProgramTable& program) {
    std::vector<std::string_view> names;
    names.reserve(program.commands.size());
    for (const auto& command : program.commands) {
        names.push_back(command.name);
    }
    return joined(names);
}

} // namespace

std::string bashCompletions(const cli::ProgramTable& program) {
    const auto function = '_' + std::string(program.name);
    const auto options = optionsOf(program);
    std::string text = "# Completions of " + std::string(program.name) + " for bash.\n" + function + R"(() {
    local current=${COMP_WORDS[COMP_CWORD]} command='' previous='' words='' position=0 index
    COMPREPLY=()
    for ((index = 1; index < COMP_CWORD; ++index)); do
        case ${COMP_WORDS[index]} in
)" + valueOptions(options, [](const ValueRow&) { return std::string("((++index))"); }) +
                       R"(        -*) ;;
        *)
            [[ -z $command ]] || ((++position))
            [[ -n $command ]] || command=${COMP_WORDS[index]} position=0
            previous=${COMP_WORDS[index]}
            ;;
        esac
    done
    if ((index > COMP_CWORD)); then
        case ${COMP_WORDS[COMP_CWORD - 1]} in
)" + valueOptions(options, replyFor) +
                       R"(        esac
    elif [[ $current == -* ]]; then
        words=')" + optionNames(program.options) +
                       R"('
        case $command in
)";
    for (const auto& command : program.commands) {
        text += command.options.empty() ? ""
                                        : "        " + std::string(command.name) + ") words+=' " +
                                              optionNames(command.options) + "' ;;\n";
    }
    text += "        esac\n    else\n";
    if (program.commands.empty()) {
        text += "        words='" + optionNames(program.options) + "'\n";
    } else {
        text += "        case $command:$position:$previous in\n        ::* | :0:*) words='" +
                commandNames(program) + "' ;;\n";
        for (const auto& command : program.commands) {
            text += operandCases(command);
        }
        text += "        esac\n";
    }
    return text + R"(    fi
    [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F )" +
           function + ' ' + std::string(program.name) + '\n';
}

} // namespace cindertop::documents
