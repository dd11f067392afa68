#include "cli/WatchPrinters.h"

#include "cli/LocalTime.h"

#include <utility>

#include <signal.h> // NOLINT(modernize-deprecated-headers): SIGSTOP is POSIX

namespace cindertop::cli {

ScreenPrinter::ScreenPrinter(const Output& output, std::function<TerminalTraits()> traits,
                             TemperatureFormatter temperatures, OperatingSystem system)
    : readTraits_(std::move(traits)),
      traits_(readTraits_()),
      temperatures_(std::move(temperatures)),
      system_(system),
      screen_(output) {}

WriteResult ScreenPrinter::show(const MachineReport& report) {
    screen_.enter();
    const PageStyle style{.format = traits_.format, .temperatures = temperatures_, .system = system_};
    std::vector<std::string> lines;
    const auto time = localTimeOfDay(report.snapshot.measuredAt);
    for (const auto& line : watchPage(report.snapshot, style, traits_.rows, time, report.verdict)) {
        lines.push_back(encoded(line, traits_.format));
    }
    return screen_.draw(lines);
}

void ScreenPrinter::resize() {
    traits_ = readTraits_();
}

void ScreenPrinter::suspend() {
    screen_.leave();
    ::raise(SIGSTOP);
    resize(); // its signal went to a stopped process
}

LinePrinter::LinePrinter(const Output& output, Encoder encoder)
    : output_(output), encoder_(std::move(encoder)) {}

WriteResult LinePrinter::show(const MachineReport& report) {
    return output_.write(encoder_(report) + '\n');
}

} // namespace cindertop::cli
