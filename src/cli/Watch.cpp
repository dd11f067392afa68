#include "cli/Watch.h"

#include "app/SamplingSchedule.h"

namespace cindertop::cli {

Watch::End Watch::run() {
    for (;;) {
        const auto report = machine_.next();
        if (const auto shown = show(report); !shown) {
            return std::unexpected(shown.error());
        }
        events_.startTimer(interval_.value_or(tickDelay(report.snapshot.score.recommendedSamplingHz)));
        const auto wake = pause(report);
        if (!wake) {
            return std::unexpected(wake.error());
        }
        if (wake->kind == Wake::Kind::terminated) {
            return wake->signal;
        }
        if (wake->kind != Wake::Kind::tick) {
            return std::nullopt;
        }
    }
}

std::expected<Wake, WriteError> Watch::pause(const MachineReport& report) {
    for (;;) {
        const auto wake = events_.wait();
        if (wake.kind == Wake::Kind::resized) {
            printer_.resize();
        } else if (wake.kind == Wake::Kind::suspended) {
            printer_.suspend();
        } else {
            return wake;
        }
        if (const auto shown = show(report); !shown) {
            return std::unexpected(shown.error());
        }
    }
}

/// An interrupted write is no failure: the event that interrupted it comes next, and decides.
WriteResult Watch::show(const MachineReport& report) {
    auto shown = printer_.show(report);
    if (!shown && shown.error().isInterruption()) {
        return {};
    }
    return shown;
}

} // namespace cindertop::cli
