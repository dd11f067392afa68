#include "cli/Commands.h"

#include "cli/Pages.h"
#include "cli/Watch.h"
#include "cli/WatchEvents.h"
#include "cli/WatchNews.h"
#include "cli/WatchPrinters.h"
#include "cli/WaybarText.h"
#include "report/MachineReport.h"
#include "terminal/ValueText.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <optional>
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

/// Equal lines after one another say nothing.
LinePrinter::Encoder withoutRepetition(std::function<std::string(const MachineReport&)> encode) {
    return [encode = std::move(encode), told = std::string(),
            at = Instant()](const MachineReport& report) mutable -> std::optional<std::string> {
        auto line = encode(report);
        const auto now = report.snapshot.measuredAt;
        if (line == told && now >= at && now - at < longestSilence) {
            return std::nullopt;
        }
        told = line;
        at = now;
        return line;
    };
}

LinePrinter::Encoder logEncoder(const PageStyle& style) {
    return [style, news = WatchNews(style.temperatures),
            told = std::string()](const MachineReport& report) mutable -> std::optional<std::string> {
        if (!news.isNews(report)) {
            return std::nullopt;
        }
        auto line = watchLine(report.snapshot, style, localDateAndTime(report.snapshot.measuredAt));
        const bool isNewNote = std::exchange(told, report.note) != report.note && !report.note.empty();
        return isNewNote ? report.note + '\n' + line : line;
    };
}

LinePrinter::Encoder encoderOf(const CommandEnvironment& environment, Format format) {
    switch (format) {
    case Format::json:
        return withoutRepetition(documentOf);
    case Format::waybar:
        return withoutRepetition([style = styleOf(environment)](const MachineReport& report) {
            return waybarText(report, style);
        });
    case Format::text:
        break;
    }
    return logEncoder(styleOf(environment));
}

Watch::End runWatch(CommandEnvironment& environment, const SignalDescriptor& signals,
                    LiveWatchEvents::Keyboard keyboard, WatchPrinter& printer,
                    std::optional<Seconds> interval) {
    environment.output.interruptBy(signals.descriptor());
    LiveWatchEvents events(signals, environment.output.descriptor(), keyboard);
    auto end = Watch(environment.machine, events, printer, interval).run();
    environment.output.interruptByNothing();
    return end;
}

Watch::End watchOnScreen(CommandEnvironment& environment, const WatchWishes& wishes) {
    const SignalDescriptor signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGWINCH, SIGTSTP};
    ScreenPrinter printer(environment.output, [&environment, order = wishes.order] {
        return ScreenPrinter::Place{
            .style = styleOf(environment), .rows = environment.terminal().rows, .order = order};
    });
    return runWatch(environment, signals, LiveWatchEvents::Keyboard::listened, printer, wishes.interval);
}

/// Without a screen to restore, Ctrl-Z and a new size need no care.
Watch::End watchByLine(CommandEnvironment& environment, const WatchWishes& wishes) {
    const SignalDescriptor signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};
    LinePrinter printer(environment.output, encoderOf(environment, wishes.format));
    return runWatch(environment, signals, LiveWatchEvents::Keyboard::ignored, printer, wishes.interval);
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

bool isShownOnScreen(Format format, const TerminalTraits& terminal) {
    return format == Format::text && terminal.canRedraw;
}

std::expected<std::optional<int>, WriteError> watch(CommandEnvironment& environment,
                                                    const WatchWishes& wishes) {
    return isShownOnScreen(wishes.format, environment.terminal()) ? watchOnScreen(environment, wishes)
                                                                  : watchByLine(environment, wishes);
}

} // namespace cindertop::cli
