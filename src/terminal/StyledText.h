#pragma once

#include "terminal/DisplayText.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cindertop::cli {

/// How a piece of text is meant; the terminal decides the colour. The levels stand in their order.
enum class Tone { plain, faint, strong, normal, fair, serious, critical };

/// A piece of one line. The text holds no control characters.
struct Span {
    std::string text;
    Tone tone;

    Span(std::string text, Tone tone = Tone::plain) : text(std::move(text)), tone(tone) {}

    bool operator==(const Span&) const = default;
};

using Line = std::vector<Span>;

enum class Palette { none, sixteen, twoHundredFiftySix };

/// What the place of output can show, and how much room it has.
struct PageFormat {
    int columns = 80; ///< the width that a page is laid out for, at least 1
    Charset charset = Charset::ascii;
    Palette palette = Palette::none;

    bool operator==(const PageFormat&) const = default;
};

int columnsOf(const Line& line);

void append(std::vector<Line>& lines, std::vector<Line> more);
void append(Line& line, Line more);

/// The line as a terminal takes it, cut to the columns of the format, without a line end.
std::string encoded(const Line& line, const PageFormat& format);

/// The lines one below the other, each with its line end.
std::string encoded(const std::vector<Line>& lines, const PageFormat& format);

/// The words of a text spread over lines of at most that many columns; longer words are broken.
std::vector<std::string> wrapped(std::string_view text, int columns);

} // namespace cindertop::cli
