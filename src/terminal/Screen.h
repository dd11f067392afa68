#pragma once

#include "terminal/Output.h"

#include <optional>
#include <string>
#include <vector>

#include <termios.h>

namespace cindertop::cli {

/// The terminal as a page that is redrawn: the alternate screen, no cursor, no wrapping, and keys unbuffered
/// and without echo. The former contents come back on destruction or `leave`.
class Screen {
public:
    /// Enters at once. `output` must outlive the screen and be a terminal.
    explicit Screen(const Output& output);
    ~Screen();

    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    void enter();
    void leave() noexcept;

    /// Draws the lines, as many as the terminal has rows, over what stands there.
    WriteResult draw(const std::vector<std::string>& lines) const;

private:
    const Output& output_;
    std::optional<termios> formerKeyboard_;
    bool isEntered_ = false;
};

} // namespace cindertop::cli
