#include "cli/WatchPrinters.h"

#include "terminal/ValueText.h"

#include <utility>

#include <signal.h> // NOLINT(modernize-deprecated-headers): SIGSTOP is POSIX

namespace cindertop::cli {

ScreenPrinter::ScreenPrinter(const Output& output, std::function<Place()> readPlace)
    : readPlace_(std::move(readPlace)), place_(readPlace_()), screen_(output) {}

WriteResult ScreenPrinter::show(const MachineReport& report) {
    screen_.enter();
    std::vector<std::string> lines;
    const auto time = localTimeOfDay(report.snapshot.measuredAt);
    for (const auto& line :
         watchPage(report, place_.style, {.rows = place_.rows, .order = place_.order}, time)) {
        lines.push_back(encoded(line, place_.style.format));
    }
    return screen_.draw(lines);
}

void ScreenPrinter::resize() {
    place_ = readPlace_();
}

void ScreenPrinter::suspend() {
    screen_.leave();
    ::raise(SIGSTOP);
    resize(); // its signal went to a stopped process
}

LinePrinter::LinePrinter(const Output& output, Encoder encoder)
    : output_(output), encoder_(std::move(encoder)) {}

WriteResult LinePrinter::show(const MachineReport& report) {
    const auto line = encoder_(report);
    return line ? output_.write(*line + '\n') : WriteResult();
}

} // namespace cindertop::cli
