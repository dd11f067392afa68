#include "cli/MetricsCommand.h"

#include "cli/MachineCommands.h"
#include "cli/MetricsFile.h"
#include "cli/MetricsText.h"
#include "cli/Watch.h"
#include "cli/WatchEvents.h"
#include "persistence/ThermalHistoryStore.h"
#include "platform/linux/SystemClock.h"
#include "support/FileSystem.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

namespace cindertop::cli {

namespace {

/// As often as collectors look, at the most.
constexpr Seconds metricsPeriod{15};
constexpr int noOutput = -1;
constexpr Measuring everyApplication{.listsEverything = true};

MetricsDetail detailOf(const Arguments& arguments) {
    return arguments.showsNames ? MetricsDetail::applications : MetricsDetail::categories;
}

/// The day so far as the agent's file tells it. It is read again when it has changed, or the day has.
class RecordedDay {
public:
    ThermalMonitoringSnapshot now() {
        std::error_code error;
        const auto writtenAt = std::filesystem::last_write_time(store_.file(), error);
        const auto instant = clock_.now();
        auto day = calendar_.identifier(instant);
        if (error || writtenAt != writtenAt_ || day != day_) {
            snapshot_ = store_.snapshot(instant);
            writtenAt_ = writtenAt;
            day_ = std::move(day);
        }
        return snapshot_;
    }

private:
    PosixFileSystem files_;
    linux_platform::SystemClock clock_;
    CalendarDays calendar_ = CalendarDays::ofUser();
    ThermalHistoryStore store_{ThermalHistoryStore::defaultFile(), std::chrono::hours(1),
                               std::chrono::minutes(5), calendar_, files_};
    ThermalMonitoringSnapshot snapshot_ = ThermalMonitoringSnapshot::empty();
    std::filesystem::file_time_type writtenAt_{};
    std::string day_;
};

/// The agent wherever one is to be had, also one that starts later.
class AnyMachine final : public MachineSource {
public:
    MachineReport look() override { return next(); }

    MachineReport next() override {
        auto agent = AgentClient::find();
        const auto text = agent ? agent->snapshot() : std::unexpected(std::string());
        if (auto report = text ? machineReport(*text) : std::nullopt) {
            measured_.reset();
            return *std::move(report);
        }
        if (!measured_) {
            measured_ = measuredMachine(everyApplication);
        }
        return measured_->next();
    }

private:
    std::unique_ptr<MachineSource> measured_; ///< while no agent tells
};

class MetricsPrinter final : public WatchPrinter {
public:
    MetricsPrinter(const std::filesystem::path& file, MetricsDetail detail) : file_(file), detail_(detail) {}

    WriteResult show(const MachineReport& report) override {
        return file_.replace(metricsText(report, day_.now(), detail_));
    }

    void resize() override {}

    void suspend() override {}

private:
    MetricsFile file_;
    MetricsDetail detail_;
    RecordedDay day_;
};

Watch::End keepFile(const std::filesystem::path& file, MetricsDetail detail) {
    const SignalDescriptor signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};
    LiveWatchEvents events(signals, noOutput, LiveWatchEvents::Keyboard::ignored);
    AnyMachine machine;
    MetricsPrinter printer(file, detail);
    return Watch(machine, events, printer, metricsPeriod).run();
}

} // namespace

ExitStatus showMetrics(const Arguments& arguments, Output& output, std::optional<AgentClient>& agent) {
    const auto detail = detailOf(arguments);
    if (!arguments.textfileFolder) {
        const auto report = machineSource(everyApplication, agent)->look();
        return exitStatus(output.write(metricsText(report, RecordedDay().now(), detail)));
    }
    const auto file = std::filesystem::path(*arguments.textfileFolder) / "cindertop.prom";
    const auto end = keepFile(file, detail);
    if (!end) {
        reportError("cannot write " + file.string() + ": " + end.error().message());
        return failure;
    }
    return exitStatus(end);
}

} // namespace cindertop::cli
