#include "FakeProgram.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

void expectIdle(const AppStateProperties& published) {
    EXPECT_EQ(*published.thermalSnapshot, ThermalSnapshot::idle());
    EXPECT_EQ(*published.systemContextSnapshot, SystemContextSnapshot::placeholder());
    EXPECT_EQ(*published.processOffenderSnapshot, ProcessOffenderSnapshot::empty());
    EXPECT_EQ(*published.recommendationSnapshot, CinderRecommendationSnapshot::empty());
}

/// A tick goes to the other thread twice: to read all that it needs and to record the history.
constexpr int readsOfATick = 2;

TEST(AppStateMonitoring, AStopEndsATickWhereverItIs) {
    for (int answered = 0; answered < readsOfATick; ++answered) {
        for (const bool isNextRead : {false, true}) {
            const std::string place =
                std::to_string(answered) + " answers" + (isNextRead ? ", one on its way" : "");
            FakeProgram program;
            program.machine.pressure->play({3}); // an alert would be due
            auto& state = program.startWith({.notificationsEnabled = true});
            program.executor.isHolding = true;
            program.pass(0s);
            for (int answer = 0; answer < answered; ++answer) {
                ASSERT_TRUE(program.executor.answerNext()) << place;
            }
            if (isNextRead) {
                ASSERT_TRUE(program.executor.workNext()) << place;
            }

            state.setPaused(true);
            program.executor.release();
            program.pass(10s);
            expectIdle(program.published());
            EXPECT_EQ(program.ticks, 0) << place;
            EXPECT_EQ(program.samples, 0) << place;
            EXPECT_TRUE(program.published().monitoringSnapshot->samples.empty()) << place;
            EXPECT_EQ(program.exists(FakeProgram::historyFile), answered == 1 && isNextRead) << place;
            EXPECT_TRUE(program.notificationCenter.posted.empty()) << place;
            EXPECT_EQ(program.countOf("Thermal level changed"), 0) << place;
        }
    }
}

TEST(AppStateMonitoring, AStopEndsADelivery) {
    for (const bool isHandedOver : {false, true}) {
        FakeProgram program;
        program.machine.pressure->play({3});
        auto& state = program.startWith({.notificationsEnabled = true});
        program.notificationCenter.holdsAnswers = true;
        program.pass(0s);
        if (isHandedOver) {
            ASSERT_TRUE(program.notificationCenter.answerNext()); // it may be delivered
        }
        state.setPaused(true);
        while (program.notificationCenter.answerNext()) {
        }
        EXPECT_EQ(program.notificationCenter.posted.size(), isHandedOver ? 1U : 0U);
        EXPECT_EQ(program.countOf("Thermal notification delivered"), 0);
        EXPECT_EQ(program.ticks, 0);
        expectIdle(program.published());
    }
}

TEST(AppStateMonitoring, ANewStartDoesNotReviveAStoppedTick) {
    FakeProgram program;
    auto& state = program.start();
    program.executor.isHolding = true;
    program.pass(0s);
    state.setPaused(true);
    state.setPaused(false);
    program.pass(0s);
    program.executor.release();
    EXPECT_EQ(program.ticks, 1);
    program.pass(2s);
    EXPECT_EQ(program.ticks, 2);
}

TEST(AppStateMonitoring, AnObserverMayStopTheTickThatItSees) {
    FakeProgram program;
    auto& state = program.start();
    const auto stopping =
        state.published().thermalSnapshot.bindable().addNotifier([&state] { state.setPaused(true); });
    program.pass(5s);
    expectIdle(program.published());
    EXPECT_EQ(program.ticks, 0);
    EXPECT_EQ(program.samples, 0);
}

TEST(AppStateMonitoring, NothingIsPublishedAfterTheEnd) {
    FakeProgram program;
    program.notificationCenter.holdsAnswers = true;
    auto& state = program.startWith({.notificationsEnabled = true});
    program.executor.isHolding = true;
    program.pass(0s);
    ASSERT_TRUE(program.executor.workNext());
    state.refreshProcessOffendersNow();
    state.startHardwareCheckIfNeeded();
    ASSERT_TRUE(state.exportDiagnosticLogs("/first.json"));
    state.exportDiagnosticLogs();
    const auto logged = program.events.size();

    program.state.reset();
    program.executor.release();
    program.desktop.answer("/second.json");
    while (program.notificationCenter.answerNext()) {
    }
    EXPECT_FALSE(program.exists("/second.json"));
    EXPECT_EQ(program.events.size(), logged);
    EXPECT_EQ(program.clock.nextDue(), std::nullopt);
}

TEST(AppStateMonitoring, ABrokenReadIsLoggedOnceARunAndTheLoopGoesOn) {
    struct Case {
        std::string_view step;
        void (*breakIt)(FakeProgram& program);
        void (*mendIt)(FakeProgram& program);
        int ticksWhileBroken;
    };

    for (const auto& [step, breakIt, mendIt, ticksWhileBroken] : {
             // A script without states throws when it is asked for one.
             Case{"thermal state", [](auto& program) { program.machine.pressure->play({}); },
                  [](auto& program) { program.machine.pressure->play({1}); }, 0},
             Case{"processes", [](auto& program) { program.censusThrows = true; },
                  [](auto& program) {
                      program.censusThrows = false;
                      program.machine.pressure->play({1});
                  },
                  3},
         }) {
        FakeProgram program;
        breakIt(program);
        auto& state = program.start();
        program.pass(5s);
        ASSERT_EQ(program.countOf("Reading failed"), 1) << step;
        const auto failure =
            std::ranges::find(program.events, "Reading failed", &DiagnosticLogEvent::message);
        EXPECT_EQ(failure->level, DiagnosticLogLevel::error);
        EXPECT_EQ(failure->metadata, (DiagnosticMetadata{{"step", std::string(step)}}));
        EXPECT_EQ(program.ticks, ticksWhileBroken) << step;
        EXPECT_EQ(*program.published().processOffenderSnapshot, ProcessOffenderSnapshot::empty()) << step;

        state.setPaused(true);
        state.setPaused(false);
        program.pass(0s);
        EXPECT_EQ(program.countOf("Reading failed"), 2) << step;

        mendIt(program);
        program.pass(2s);
        EXPECT_GT(program.ticks, ticksWhileBroken) << step;
        EXPECT_EQ(program.published().thermalSnapshot->level, ThermalLevel::fair) << step;
        EXPECT_EQ(program.published().processOffenderSnapshot->state,
                  ProcessOffenderSnapshotState::collecting)
            << step;
    }
}

TEST(AppStateMonitoring, TheLaterOffenderSampleWins) {
    FakeProgram program;
    auto& state = program.start();
    program.pass(0s);
    program.executor.isHolding = true;
    std::vector<int> completed;
    state.sampleProcessOffenders(std::nullopt, [&completed] { completed.push_back(1); });
    program.pass(1s);
    const auto later = program.clock.now();
    state.sampleProcessOffenders("process:busy", [&completed] { completed.push_back(2); });
    program.executor.release();
    EXPECT_EQ(completed, (std::vector{1, 2}));
    EXPECT_EQ(program.published().processOffenderSnapshot->measuredAt, later);
}

TEST(AppStateMonitoring, ACensusThatEndsAfterTheyWereHiddenShowsNoOffenders) {
    FakeProgram program;
    auto& state = program.start();
    program.pass(0s);
    program.executor.isHolding = true;
    bool isCompleted = false;
    state.sampleProcessOffenders(std::nullopt, [&isCompleted] { isCompleted = true; });
    state.set(&AppSettingsFields::showProcessOffenders, false);
    program.executor.release();
    EXPECT_TRUE(isCompleted);
    EXPECT_EQ(*program.published().processOffenderSnapshot, ProcessOffenderSnapshot::empty());
}

TEST(AppStateMonitoring, ACensusThatEndsAfterAStopShowsNoOffenders) {
    FakeProgram program;
    auto& state = program.start();
    program.pass(0s);
    program.executor.isHolding = true;
    int completed = 0;
    state.sampleProcessOffenders(std::nullopt, [&completed] { ++completed; });
    ASSERT_TRUE(program.executor.workNext());
    state.setPaused(true);
    program.executor.release();
    EXPECT_EQ(completed, 1);
    expectIdle(program.published());
    state.sampleProcessOffenders(std::nullopt, [&completed] { ++completed; });
    EXPECT_EQ(completed, 2);
    EXPECT_NE(*program.published().processOffenderSnapshot, ProcessOffenderSnapshot::empty())
        << "a window may ask while nothing is monitored";
}

TEST(AppStateMonitoring, AStopAndTheEndSaveTheHistory) {
    FakeProgram program;
    std::chrono::nanoseconds time{0};
    program.historyWriting = {.clock = [&time] { return time; }};
    const auto saved = [&] {
        ThermalHistoryStore file(FakeProgram::historyFile, 1h, 5min, CalendarDays("UTC"), program.files);
        return file.snapshot(program.clock.now()).samples.size();
    };
    auto& state = program.start();
    program.pass(20s);
    EXPECT_EQ(program.samples, 4);
    EXPECT_EQ(saved(), 1U) << "the rest is held";
    state.setPaused(true);
    program.executor.runTasks();
    EXPECT_EQ(saved(), 4U);
    state.setPaused(false);
    program.pass(1s);
    program.state.reset();
    EXPECT_EQ(saved(), 5U);
    program.executor = {};
    program.start().set(&AppSettingsFields::historyEnabled, false);
    program.state.reset();
    EXPECT_FALSE(program.exists(FakeProgram::historyFile)) << "switched off just before the end";
}

TEST(AppStateMonitoring, RefreshesOffendersOnRequestOnlyWhileItMonitors) {
    FakeProgram program;
    auto& state = program.start();
    program.pass(100ms);
    state.refreshProcessOffendersNow();
    program.executor.runTasks();
    EXPECT_EQ(program.published().processOffenderSnapshot->measuredAt, program.clock.now());

    state.setPaused(true);
    state.refreshProcessOffendersNow();
    program.executor.runTasks();
    EXPECT_EQ(*program.published().processOffenderSnapshot, ProcessOffenderSnapshot::empty());

    state.setPaused(false);
    state.refreshProcessOffendersNow();
    state.setPaused(true);
    program.executor.runTasks();
    EXPECT_EQ(*program.published().processOffenderSnapshot, ProcessOffenderSnapshot::empty())
        << "paused before the census began";
}

TEST(AppStateMonitoring, ListsEveryOffenderButItself) {
    FakeProgram program;
    program.machine.process.identifier = 500;
    program.machine.processes.processes.clear();
    for (int process = 400; process <= 520; ++process) {
        program.machine.processes.add(process, "p" + std::to_string(process));
    }
    program.start();
    program.pass(0s);
    for (auto& process : program.machine.processes.processes) {
        process.accounting->totalUserTime += 1'000'000;
    }
    program.pass(2s);
    const auto& offenders = program.published().processOffenderSnapshot->offenders;
    EXPECT_EQ(offenders.size(), 120U);
    EXPECT_EQ(std::ranges::count(offenders, "p500", &ProcessOffender::displayName), 0);
}

TEST(AppStateMonitoring, TheFormerRunsHistoryIsThereBeforeTheFirstTick) {
    FakeProgram program;
    program.start();
    program.pass(20s);
    const auto recorded = program.published().monitoringSnapshot->samples.size();
    EXPECT_GT(recorded, 1U);
    program.state.reset();
    program.executor = {};
    program.start();
    EXPECT_EQ(program.published().monitoringSnapshot->samples.size(), recorded);
}

TEST(AppStateMonitoring, PresentsASnapshot) {
    struct Case {
        std::string_view what;
        ThermalTrend trend;
        std::optional<double> celsius;
        bool sensors;
        MenuBarInfoMode mode;
        ThermalAssistantPresentation expected;
    };

    using enum ThermalAssistantPresentation::Status;
    using enum MenuBarInfoMode;
    for (const auto& [what, trend, celsius, sensors, mode, expected] : {
             Case{"rising",
                  ThermalTrend::rising,
                  std::nullopt,
                  false,
                  none,
                  {serious, "Rising", std::nullopt, std::nullopt, std::nullopt}},
             Case{"cooling, sensors on",
                  ThermalTrend::cooling,
                  47.5,
                  true,
                  none,
                  {serious, "Cooling", "48°C", "SoC 48°C", std::nullopt}},
             Case{"a mode other than the temperature",
                  ThermalTrend::stable,
                  47.4,
                  false,
                  thermalScore,
                  {serious, std::nullopt, "47°C", std::nullopt, std::nullopt}},
             Case{"the temperature's mode",
                  ThermalTrend::stable,
                  47.4,
                  true,
                  temperature,
                  {serious, std::nullopt, "47°C", "SoC 47°C", std::nullopt}},
             Case{"the temperature's mode without sensors",
                  ThermalTrend::stable,
                  47.4,
                  false,
                  temperature,
                  {serious, std::nullopt, "47°C", "SoC 47°C", std::nullopt}},
             Case{"no temperature",
                  ThermalTrend::stable,
                  std::nullopt,
                  true,
                  temperature,
                  {serious, std::nullopt, std::nullopt, std::nullopt, std::nullopt}},
         }) {
        FakeProgram program;
        auto& state = program.start(); // before the first tick there is no advice
        state.set(&AppSettingsFields::experimentalTemperatureSensorsEnabled, sensors);
        state.set(&AppSettingsFields::menuBarInfoMode, mode);
        auto snapshot = ThermalSnapshot::idle();
        snapshot.band = ThermalBand::serious;
        snapshot.trend = trend;
        snapshot.temperatureCelsius = celsius;
        EXPECT_EQ(state.makePresentation(snapshot), expected) << what;

        program.pass(0s);
        const auto advised = state.makePresentation(snapshot);
        EXPECT_EQ(advised.actionMessage, "This looks normal for the current workload. No action needed.")
            << what;
        EXPECT_EQ(advised.trendLabel, std::nullopt) << what;

        state.setPaused(true);
        EXPECT_EQ(state.makePresentation(snapshot),
                  (ThermalAssistantPresentation{paused, std::nullopt, std::nullopt, std::nullopt,
                                                "Monitoring paused."}))
            << what;
    }
}

} // namespace
} // namespace cindertop
