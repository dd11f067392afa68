#include "terminal/Screen.h"

#include <poll.h>
#include <unistd.h>

namespace cindertop::cli {

namespace {

constexpr std::string_view enterSequence = "\x1b[?1049h" // alternate screen
                                           "\x1b[?25l"   // no cursor
                                           "\x1b[?7l"    // no wrapping
                                           "\x1b[2J";
constexpr std::string_view leaveSequence = "\x1b[?7h\x1b[?25h\x1b[?1049l";
constexpr std::string_view home = "\x1b[H";
constexpr std::string_view clearToLineEnd = "\x1b[K";
constexpr int patienceMilliseconds = 200;

/// Writes even while signals are pending, but never blocks on a stopped terminal.
void writeAnyway(int descriptor, std::string_view text) noexcept {
    pollfd waited{.fd = descriptor, .events = POLLOUT, .revents = 0};
    if (::poll(&waited, 1, patienceMilliseconds) > 0) {
        [[maybe_unused]] const auto ignored = ::write(descriptor, text.data(), text.size());
    }
}

/// The former settings; none when standard input is no terminal.
std::optional<termios> quietKeyboard() {
    termios former{};
    if (::tcgetattr(STDIN_FILENO, &former) != 0) {
        return std::nullopt;
    }
    termios quiet = former;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &quiet);
    return former;
}

} // namespace

Screen::Screen(const Output& output) : output_(output) {
    enter();
}

Screen::~Screen() {
    leave();
}

void Screen::enter() {
    if (isEntered_) {
        return;
    }
    isEntered_ = true;
    formerKeyboard_ = quietKeyboard();
    writeAnyway(output_.descriptor(), enterSequence);
}

void Screen::leave() noexcept {
    if (!isEntered_) {
        return;
    }
    isEntered_ = false;
    writeAnyway(output_.descriptor(), leaveSequence);
    if (formerKeyboard_) {
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &*formerKeyboard_);
    }
}

WriteResult Screen::draw(const std::vector<std::string>& lines) const {
    std::string frame(home);
    for (std::size_t row = 0; row < lines.size(); ++row) {
        frame += row == 0 ? "" : "\r\n";
        // Behind the text it would erase the last character of a line that fills the screen.
        frame += clearToLineEnd;
        frame += lines[row];
    }
    return output_.write(frame);
}

} // namespace cindertop::cli
