#pragma once

#include "app/AppState.h"
#include "app/LegalTerms.h"
#include "fakes/FakeDesktop.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeMachine.h"
#include "fakes/FakeRunningApplications.h"
#include "fakes/FakeSleepAnnouncements.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeUserNotificationCenter.h"
#include "fakes/ManualExecutor.h"
#include "scenario/machine/MemoryFileSystem.h"
#include "scenario/machine/VirtualClock.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace cindertop {

/// A program on a machine of fakes, whose time passes when a test says so. The terms are accepted.
class FakeProgram {
public:
    inline static const std::filesystem::path historyFile = "/data/history.plist";

    fakes::FakeMachine machine;
    simulated::VirtualClock clock{machine.clock.time};
    fakes::ManualExecutor executor;
    fakes::FakeUserDefaults defaults;
    simulated::MemoryFileSystem files;
    fakes::FakeUnifiedLog unifiedLog;
    fakes::FakeUserNotificationCenter notificationCenter;
    fakes::FakeLoginItem loginItem;
    fakes::FakeRunningApplications runningApplications;
    fakes::FakeDesktop desktop;
    fakes::FakeSleepAnnouncements announcements;
    Windows* windows = nullptr;
    UpdateService* updates = nullptr;
    std::string architecture = "arm64";
    HistoryWriting historyWriting;
    std::string timeZone = "UTC";
    bool censusThrows = false;
    std::function<Machine()> services = [this] { return machine.services(); };

    std::vector<DiagnosticLogEvent> events;
    int ticks = 0;
    int samples = 0;
    std::unique_ptr<AppState> state;

    FakeProgram() {
        storeTermsAccepted(defaults);
        machine.processes.add(1, "busy");
    }

    AppState& start() {
        state = std::make_unique<AppState>(environment());
        state->observeTicks([this] { ++ticks; });
        state->observeHistory([this](const auto& /*sample*/, const auto& /*result*/) { ++samples; });
        executor.runTasks();
        return *state;
    }

    /// Starts with what the user has stored before.
    AppState& startWith(const AppSettingsFields& settings) {
        AppSettingsStore(defaults, defaultSettings(machine.operatingSystem)).save(AppSettings(settings));
        return start();
    }

    const AppStateProperties& published() const { return state->published(); }

    void pass(std::chrono::nanoseconds time) {
        const auto end = clock.now() + time;
        for (auto due = clock.nextDue(); due && *due <= end; due = clock.nextDue()) {
            moveTo(*due);
            clock.runNextDue();
            executor.runTasks();
        }
        moveTo(end);
    }

    /// The machine sleeps: its timers stand still.
    void sleep(std::chrono::nanoseconds time) {
        machine.clock.asleep += time;
        moveTo(clock.now());
    }

    /// Something stops the machine, and its clocks run on as if it were awake.
    void halt(std::chrono::nanoseconds time) { moveTo(clock.now() + time); }

    std::int64_t countOf(std::string_view message) const {
        return std::ranges::count(events, message, &DiagnosticLogEvent::message);
    }

    bool exists(const std::filesystem::path& file) { return files.openForReading(file).has_value(); }

private:
    void moveTo(Instant instant) {
        clock.advanceTo(instant);
        machine.clock.time = clock.now() + machine.clock.asleep;
    }

    AppStateEnvironment environment() {
        auto questioned = services();
        questioned.sources = [this] {
            if (censusThrows) {
                throw std::runtime_error("the census broke");
            }
            return machine.sources;
        };
        auto pressureReader = fakes::pressureReaderOf(questioned);
        return {.machine = std::move(questioned),
                .pressureReader = std::move(pressureReader),
                .timers = clock,
                .executor = executor,
                .systemValues = machine.systemValues,
                .defaults = defaults,
                .files = files,
                .unifiedLog = unifiedLog,
                .notificationCenter = notificationCenter,
                .loginItem = loginItem,
                .runningApplications = runningApplications,
                .calendar = CalendarDays(timeZone),
                .temperatures = TemperatureFormatter::plain("en_GB"),
                .historyFile = historyFile,
                .diagnosticFile = "/data/diagnostic.json",
                .deployment = DeploymentFile(files, "/data/Info.plist"),
                .architecture = architecture,
                .operatingSystemVersion = "Test",
                .releasesPage = "https://example.org/releases",
                .desktop = &desktop,
                .windows = windows,
                .updates = updates,
                .historyWriting = historyWriting,
                .sleep = &announcements,
                .diagnosticObserver = [this](const auto& event) { events.push_back(event); }};
    }
};

} // namespace cindertop
