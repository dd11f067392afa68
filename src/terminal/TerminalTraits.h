#pragma once

#include "terminal/StyledText.h"

#include <optional>
#include <string>

namespace cindertop::cli {

/// What the environment says about the place of output.
struct TerminalFacts {
    bool isTerminal = false;
    std::optional<int> columns{}; ///< of the window; absent when it does not tell
    std::optional<int> rows{};
    bool isUtf8 = false; ///< the character set of the locale
    std::optional<std::string> term{};
    std::optional<std::string> noColor{};
    std::optional<std::string> columnsVariable{};
};

/// What to make of it.
struct TerminalTraits {
    PageFormat format;
    int rows = 24;
    bool isTerminal = false;
    bool canRedraw = false; ///< a terminal that moves its cursor

    bool operator==(const TerminalTraits&) const = default;
};

/// Colour on a terminal only, and not under NO_COLOR (unless empty) or on a dumb one. A page is never wider
/// than people like to read.
TerminalTraits traitsOf(const TerminalFacts& facts);

/// Asks the terminal and the environment. The locale must be set.
TerminalFacts readTerminalFacts(int descriptor);

} // namespace cindertop::cli
