#include "documents/ManualPage.h"

#include "app/Version.h"
#include "cli/HelpText.h"

#include <algorithm>

namespace cindertop::documents {

namespace {

std::string upperCased(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return upper;
}

/// A line that is text and no request, with hyphens that a reader can copy.
std::string roff(std::string_view text) {
    std::string line = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
    for (const char character : text) {
        if (character == '\\') {
            line += "\\e";
        } else if (character == '-') {
            line += "\\-";
        } else {
            line += character;
        }
    }
    return line;
}

std::string heading(std::string_view title) {
    return ".SH " + upperCased(title) + '\n';
}

std::string item(std::string_view term, std::string_view text) {
    return ".TP\n\\fB" + roff(term) + "\\fR\n" + roff(text) + '\n';
}

std::string synopsis(const cli::ProgramTable& program) {
    std::string text = heading("synopsis") + ".nf\n";
    for (const auto& line : cli::usageOf(program)) {
        const std::string_view rest = std::string_view(line).substr(program.name.size());
        text += "\\fB" + roff(program.name) + "\\fR" + roff(rest) + '\n';
    }
    return text + ".fi\n";
}

std::string section(const cli::HelpSection& part) {
    std::string text = heading(part.heading.empty() ? "notes" : part.heading);
    for (const auto& row : part.rows) {
        text += item(row.term, row.text);
    }
    if (!part.text.empty()) {
        text += part.rows.empty() ? "" : ".PP\n";
        text += roff(part.text) + '\n';
    }
    return text;
}

} // namespace

std::string manualPage(const cli::ProgramTable& program, std::string_view seeAlso) {
    std::string page = ".TH " + upperCased(program.name) + " 1 \"\" \"Cindertop " + std::string(version) +
                       "\" \"User Commands\"\n";
    const auto summary = program.summary.substr(0, program.summary.find_last_not_of('.') + 1);
    page += heading("name") + roff(program.name) + " \\- " + roff(summary) + '\n';
    page += synopsis(program);
    page += heading("description") + roff(program.introduction) + '\n';
    page += program.commands.empty() ? "" : heading("commands");
    for (const auto& command : program.commands) {
        page += item(cli::termOf(command), command.text);
    }
    page += heading("options");
    for (const auto& option : cli::optionsOf(program)) {
        page += item(cli::termOf(option), option.text);
    }
    for (const auto& part : program.sections) {
        page += section(part);
    }
    return page + heading("see also") + ".BR " + roff(seeAlso) + " (1)\n";
}

} // namespace cindertop::documents
