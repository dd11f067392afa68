#include "agent/StatusLines.h"

#include "agent/StatusLine.h"
#include "cli/DisplayText.h"

#include <poll.h>

namespace cindertop::agent {

namespace {

/// Whether a line can be written at once. A terminal that was stopped (Ctrl-S) or a pipe that nobody reads
/// must not stop the program, too.
bool hasRoom(int descriptor) {
    pollfd place{.fd = descriptor, .events = POLLOUT, .revents = 0};
    return ::poll(&place, 1, 0) > 0;
}

} // namespace

StatusLines::StatusLines(const cli::Output& output, std::chrono::milliseconds pause)
    : output_(output), pause_(pause) {}

void StatusLines::tick(const AppState& state, const std::string& time, SteadyTime now) {
    const auto& published = state.published();
    const auto& advice = published.recommendationSnapshot->primaryInsight;
    const Headline headline{.level = published.thermalSnapshot->level,
                            .advice = advice ? std::optional(advice->kind) : std::nullopt};
    if (headline == lastHeadline_ && lastLine_ && now - *lastLine_ < pause_) {
        return;
    }
    lastHeadline_ = headline;
    lastLine_ = now;
    write(statusLine(state, time, cli::traitsOf(cli::readTerminalFacts(output_.descriptor())).format));
}

void StatusLines::note(const std::string& text) {
    const auto format = cli::traitsOf(cli::readTerminalFacts(output_.descriptor())).format;
    for (const auto& line : cli::wrapped(cli::shown(text, format.charset), format.columns)) {
        write({cli::Span(line, cli::Tone::strong)});
    }
}

void StatusLines::write(const cli::Line& line) {
    if (!hasRoom(output_.descriptor())) {
        return;
    }
    const auto format = cli::traitsOf(cli::readTerminalFacts(output_.descriptor())).format;
    [[maybe_unused]] const auto result = output_.write(encoded(line, format) + '\n');
}

} // namespace cindertop::agent
