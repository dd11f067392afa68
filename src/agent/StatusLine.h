#pragma once

#include "app/AppState.h"
#include "terminal/Output.h"
#include "terminal/StyledText.h"
#include "terminal/TerminalTraits.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace cindertop::agent {

/// The state after a tick in one line: time, level, score, temperature, trend, the busiest application, and
/// the advice as far as it fits. `time` is the time of day as it is to be shown.
cli::Line statusLine(const AppState& state, const std::string& time, const cli::PageFormat& format);

/// Writes what the program does to a terminal, a line at a time. What cannot be written at once is
/// dropped: the program goes on without its terminal.
class StatusLines {
public:
    using SteadyTime = std::chrono::steady_clock::time_point;

    /// At most one line of a tick in `pause` of real time, unless the level or the advice has changed.
    /// `output` must outlive this.
    StatusLines(const cli::Output& output, std::chrono::milliseconds pause);

    void tick(const AppState& state, const std::string& time, SteadyTime now);
    /// One line of text.
    void note(const std::string& text);

private:
    /// What makes a line worth showing at once.
    struct Headline {
        ThermalLevel level;
        std::optional<CinderInsightKind> advice;

        bool operator==(const Headline&) const = default;
    };

    void write(const cli::Line& line);

    const cli::Output& output_;
    std::chrono::milliseconds pause_;
    std::optional<Headline> lastHeadline_;
    std::optional<SteadyTime> lastLine_;
};

} // namespace cindertop::agent
