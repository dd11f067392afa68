#include "terminal/TerminalTraits.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace cindertop::cli {

namespace {

constexpr int usualColumns = 80;
constexpr int usualRows = 24;
constexpr int widestPage = 110; ///< farther apart, the eye loses the row

std::optional<int> positiveNumber(const std::optional<std::string>& text) {
    int number = 0;
    if (!text) {
        return std::nullopt;
    }
    const auto* const end = text->data() + text->size();
    const auto [stop, error] = std::from_chars(text->data(), end, number);
    const bool isNumber = error == std::errc{} && stop == end && number > 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

Palette paletteOf(const TerminalFacts& facts, bool canRedraw) {
    const bool isUnwanted = facts.noColor && !facts.noColor->empty();
    if (!canRedraw || isUnwanted) {
        return Palette::none;
    }
    const bool hasMany = facts.term->find("256color") != std::string::npos || *facts.term == "xterm-kitty" ||
                         *facts.term == "alacritty" || *facts.term == "foot";
    return hasMany ? Palette::twoHundredFiftySix : Palette::sixteen;
}

std::optional<std::string> variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

} // namespace

TerminalTraits traitsOf(const TerminalFacts& facts) {
    const bool isClever = facts.term && !facts.term->empty() && *facts.term != "dumb";
    const bool canRedraw = facts.isTerminal && isClever;
    const auto variableColumns = positiveNumber(facts.columnsVariable);
    const int columns = facts.columns.value_or(variableColumns.value_or(usualColumns));
    return {.format = {.columns = std::min(columns, widestPage),
                       .charset = facts.isUtf8 ? Charset::unicode : Charset::ascii,
                       .palette = paletteOf(facts, canRedraw)},
            .rows = facts.rows.value_or(usualRows),
            .isTerminal = facts.isTerminal,
            .canRedraw = canRedraw};
}

TerminalFacts readTerminalFacts(int descriptor) {
    TerminalFacts facts{.isTerminal = ::isatty(descriptor) == 1,
                        .isUtf8 = std::string_view(::nl_langinfo(CODESET)) == "UTF-8",
                        .term = variable("TERM"),
                        .noColor = variable("NO_COLOR"),
                        .columnsVariable = variable("COLUMNS")};
    winsize size{};
    if (::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0) {
        facts.columns = size.ws_col;
        facts.rows = size.ws_row;
    }
    return facts;
}

} // namespace cindertop::cli
