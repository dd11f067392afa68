#include "cli/HelpText.h"

#include "terminal/StyledText.h"

#include <algorithm>
#include <cstddef>

namespace cindertop::cli {

namespace {

constexpr int helpColumns = 79;
constexpr std::string_view usageIndent = "       ";
constexpr std::size_t longestTerm = 18; ///< the text of a longer one starts on the next line

std::string paragraph(std::string_view text, std::size_t indent = 0) {
    std::string lines;
    for (const auto& line : wrapped(text, helpColumns - static_cast<int>(indent))) {
        lines += std::string(indent, ' ') + line + '\n';
    }
    return lines;
}

/// Terms to the left, their texts in one column.
template <typename Rows, typename Term>
std::string definitionList(std::string_view heading, const Rows& rows, Term term) {
    std::size_t column = 0;
    for (const auto& row : rows) {
        const auto width = term(row).size();
        column = std::max(column, width > longestTerm ? 0 : width + 4);
    }
    std::string list(heading.empty() ? "\n" : "\n" + std::string(heading) + ":\n");
    for (const auto& row : rows) {
        const auto name = "  " + term(row);
        const bool isLong = name.size() + 2 > column;
        list += isLong ? name + '\n' : name;
        list += paragraph(row.text, column).substr(isLong ? 0 : name.size());
    }
    return list;
}

/// Everything that may follow a command.
std::string tailOf(const CommandRow& command) {
    std::string tail;
    std::string ends;
    for (const auto& operand : command.operands) {
        const bool isOptional = operand.needs.empty();
        tail += (isOptional ? " [" : " ") + std::string(operand.name);
        ends += isOptional ? "]" : "";
    }
    tail += ends;
    for (const auto& option : command.options) {
        tail += " [" + termOf(option) + ']';
    }
    return tail;
}

/// A usage line; what is too long goes on below its options.
std::string brokenUsage(std::string line) {
    const auto room = static_cast<std::size_t>(helpColumns) - usageIndent.size();
    if (line.size() > room) {
        const auto end = line.rfind(" [", room);
        const auto indent = line.find(" [");
        line = line.substr(0, end) + '\n' + std::string(usageIndent.size() + indent, ' ') + line.substr(end);
    }
    return line + '\n';
}

} // namespace

std::string termOf(const CommandRow& command) {
    std::string term(command.name);
    for (const auto& operand : command.operands) {
        term += operand.needs.empty() ? "" : ' ' + std::string(operand.name);
    }
    return term;
}

std::string termOf(const OptionRow& option) {
    std::string term = option.letter != 0 ? std::string{'-', option.letter, ',', ' '} : "";
    term += option.name;
    return option.value.name.empty() ? term : term + ' ' + std::string(option.value.name);
}

std::vector<std::string> usageOf(const ProgramTable& program) {
    std::vector<std::string> lines(program.usage.begin(), program.usage.end());
    std::string former = "none";
    for (const auto& command : program.commands) {
        const std::string name(command.name);
        const auto tail = tailOf(command);
        if (tail == former) { // commands that take the same share a line
            lines.back().insert(lines.back().size() - tail.size(), " | " + name);
        } else {
            lines.emplace_back(program.name);
            lines.back().append(1, ' ').append(name).append(tail);
        }
        former = tail;
    }
    return lines;
}

std::string helpText(const ProgramTable& program) {
    std::string text = paragraph(std::string(program.name) + ' ' + std::string(program.summary));
    std::string_view before = "\nusage: ";
    for (const auto& line : usageOf(program)) {
        text += before;
        text += brokenUsage(line);
        before = usageIndent;
    }
    text += program.introduction.empty() ? "" : '\n' + paragraph(program.introduction);
    const auto name = [](const auto& row) { return termOf(row); };
    if (!program.commands.empty()) {
        text += definitionList("Commands", program.commands, name);
    }
    text += definitionList("Options", optionsOf(program), name);
    for (const auto& section : program.sections) {
        text += definitionList(section.heading, section.rows,
                               [](const auto& row) { return std::string(row.term); });
        text += paragraph(section.text);
    }
    return text;
}

} // namespace cindertop::cli
