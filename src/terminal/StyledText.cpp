#include "terminal/StyledText.h"

#include <algorithm>
#include <iterator>

namespace cindertop::cli {

namespace {

/// The SGR parameters of a tone; empty where the terminal's own colour serves.
std::string_view colourOf(Tone tone, Palette palette) {
    if (palette == Palette::none) {
        return {};
    }
    switch (tone) {
    case Tone::plain:
        return {};
    case Tone::faint:
        return "2";
    case Tone::strong:
        return "1";
    case Tone::normal:
        return "32";
    case Tone::fair:
        return "33";
    case Tone::serious:
        return palette == Palette::twoHundredFiftySix ? "38;5;208" : "91"; // no orange among the sixteen
    case Tone::critical:
        return "1;31";
    }
    return {};
}

std::string coloured(const std::string& text, Tone tone, Palette palette) {
    const auto colour = colourOf(tone, palette);
    if (colour.empty() || text.empty()) {
        return text;
    }
    return "\x1b[" + std::string(colour) + "m" + text + "\x1b[0m";
}

} // namespace

int columnsOf(const Line& line) {
    int columns = 0;
    for (const auto& span : line) {
        columns += columnsOf(span.text);
    }
    return columns;
}

void append(std::vector<Line>& lines, std::vector<Line> more) {
    lines.insert(lines.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

void append(Line& line, Line more) {
    line.insert(line.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

std::string encoded(const Line& line, const PageFormat& format) {
    std::string result;
    int room = format.columns;
    for (const auto& [text, tone] : line) {
        const auto visible = fitted(text, room, format.charset);
        result += coloured(visible, tone, format.palette);
        room -= columnsOf(visible);
    }
    // No blanks at the end of a line: they would be copied along.
    while (result.ends_with(' ')) {
        result.pop_back();
    }
    return result;
}

std::string encoded(const std::vector<Line>& lines, const PageFormat& format) {
    std::string result;
    for (const auto& line : lines) {
        result += encoded(line, format);
        result += '\n';
    }
    return result;
}

std::vector<std::string> wrapped(std::string_view text, int columns) {
    constexpr int narrowest = 2; // a wide character needs as much
    const int room = std::max(columns, narrowest);
    std::vector<std::string> lines;
    while (!text.empty()) {
        auto word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (!lines.empty() && columnsOf(lines.back()) + 1 + columnsOf(word) <= room) {
            lines.back() += ' ';
            lines.back() += word;
            continue;
        }
        while (columnsOf(word) > room) {
            lines.emplace_back(beginning(word, room));
            word.remove_prefix(lines.back().size());
        }
        lines.emplace_back(word);
    }
    return lines;
}

} // namespace cindertop::cli
