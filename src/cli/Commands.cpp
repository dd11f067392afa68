#include "cli/Commands.h"

#include "cli/Pages.h"
#include "cli/Watch.h"
#include "cli/WatchEvents.h"
#include "cli/WatchPrinters.h"
#include "cli/WaybarText.h"
#include "report/MachineReport.h"
#include "terminal/ValueText.h"

#include <nlohmann/json.hpp>

#include <memory>
#include <string>
#include <utility>

namespace cindertop::cli {

namespace {

/// Several lines where a person reads, one where a program does.
WriteResult writeJson(const CommandEnvironment& environment, std::string document) {
    if (environment.terminal().isTerminal) {
        document = indentedText(Json::parse(document));
    }
    return environment.output.write(document + '\n');
}

/// What the agent wrote is passed on as it is.
std::string documentOf(const MachineReport& report) {
    return report.document.empty() ? compactText(machineJson(report)) : report.document;
}

PageStyle styleOf(const CommandEnvironment& environment) {
    return {.format = environment.terminal().format,
            .temperatures = environment.temperatures,
            .system = environment.system,
            .verbosity = environment.verbosity};
}

WriteResult writePage(const CommandEnvironment& environment, const std::vector<Line>& page) {
    return environment.output.write(encoded(page, environment.terminal().format));
}

std::unique_ptr<WatchPrinter> linePrinter(const CommandEnvironment& environment, Format format) {
    if (format == Format::json) {
        return std::make_unique<LinePrinter>(environment.output,
                                             [](const MachineReport& report) { return documentOf(report); });
    }
    if (format == Format::waybar) {
        return std::make_unique<LinePrinter>(environment.output,
                                             [style = styleOf(environment)](const MachineReport& report) {
                                                 return waybarText(report, style);
                                             });
    }
    return std::make_unique<LinePrinter>(
        environment.output,
        [style = styleOf(environment), told = std::string()](const MachineReport& report) mutable {
            const auto line = watchLine(report.snapshot, style, localDateAndTime(report.snapshot.measuredAt));
            const bool isNews = std::exchange(told, report.note) != report.note && !report.note.empty();
            return isNews ? report.note + '\n' + line : line;
        });
}

Watch::End runWatch(CommandEnvironment& environment, const SignalDescriptor& signals,
                    LiveWatchEvents::Keyboard keyboard, WatchPrinter& printer) {
    environment.output.interruptBy(signals.descriptor());
    LiveWatchEvents events(signals, environment.output.descriptor(), keyboard);
    auto end = Watch(environment.machine, events, printer).run();
    environment.output.interruptByNothing();
    return end;
}

Watch::End watchOnScreen(CommandEnvironment& environment) {
    const SignalDescriptor signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGWINCH, SIGTSTP};
    ScreenPrinter printer(environment.output, [&environment] {
        return ScreenPrinter::Place{.style = styleOf(environment), .rows = environment.terminal().rows};
    });
    return runWatch(environment, signals, LiveWatchEvents::Keyboard::listened, printer);
}

/// Without a screen to restore, Ctrl-Z and a new size need no care.
Watch::End watchByLine(CommandEnvironment& environment, Format format) {
    const SignalDescriptor signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};
    const auto printer = linePrinter(environment, format);
    return runWatch(environment, signals, LiveWatchEvents::Keyboard::ignored, *printer);
}

} // namespace

WriteResult showStatus(CommandEnvironment& environment, Format format) {
    const auto report = environment.machine.look();
    return format == Format::json ? writeJson(environment, documentOf(report))
                                  : writePage(environment, statusPage(report, styleOf(environment)));
}

WriteResult showOffenders(CommandEnvironment& environment, Format format) {
    const auto report = environment.machine.look();
    return format == Format::json
               ? writeJson(environment, compactText(Json::parse(documentOf(report)).at("offenders")))
               : writePage(environment, offendersPage(report.snapshot, styleOf(environment)));
}

std::expected<std::optional<int>, WriteError> watch(CommandEnvironment& environment, Format format) {
    if (format == Format::text && environment.terminal().canRedraw) {
        return watchOnScreen(environment);
    }
    return watchByLine(environment, format);
}

} // namespace cindertop::cli
