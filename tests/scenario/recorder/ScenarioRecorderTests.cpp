#include "app/HardwareProfile.h"
#include "cpu/ProcessOffenderConfiguration.h"
#include "cpu/ProcessOffenderEngine.h"
#include "fakes/FakeMachine.h"
#include "scenario/format/ScenarioParser.h"
#include "scenario/machine/SimulatedMachine.h"
#include "scenario/machine/VirtualClock.h"
#include "scenario/recorder/ScenarioRecorder.h"
#include "scenario/recorder/ScenarioText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

/// A machine of user alice on host penguin, whose processes use their shares of it.
struct LiveMachine {
    fakes::FakeMachine fakes;
    ProcessOffenderConfiguration configuration =
        ProcessOffenderConfiguration::defaultConfiguration(fakes.process);
    ProcessOffenderEngine engine{
        std::make_unique<SystemProcessCPUProvider>(fakes.processes, fakes.applications), fakes.comparison,
        OperatingSystem::gnuLinux, &fakes.graphics};
    std::vector<ProcessOffenderSnapshot> snapshots;

    LiveMachine() {
        fakes.operatingSystem = OperatingSystem::gnuLinux;
        fakes.systemValues.texts = {{"hw.model", "Lap 14"}};
        fakes.clock.time += 123'456'789ns;
        fakes.processes.processes.clear();
        add(10, "browser", 1000, 812'345'678);
        add(11, "Web Content", 1000, 999'999);
        add(20, "kworker/0:1", 0, 33'333'333);
        add(30, "make", 1000, 1'700'000'001);
        add(40, "sshd: alice@pts", 1000, 1'499'999);
        add(50, "penguin-agent /home/alice/agent", 1000, 4'000'000);
        fakes.processes.processes[3].path = "/home/alice/bin/make";
        for (const std::int32_t identifier : {10, 11}) {
            fakes.applications.applications.emplace(
                identifier, ProcessApplication{.bundlePath = "/home/alice/applications/browser.desktop",
                                               .bundleIdentifier = "org.example.Browser",
                                               .displayName = "Example Browser"});
        }
        fakes.hostStatistics.load = HostCpuLoad{.user = 1000, .system = 500, .idle = 100'000, .nice = 0};
        fakes.temperatureEvents.sensors = {{.product = "CPU", .celsius = 71.25},
                                           {.product = "x", .celsius = 999}};
        fakes.powerSources.entries =
            std::vector<fakes::FakePowerEntry>{{{"BatteryInstalled", true},
                                                {"CurrentCapacity", std::int64_t{50}},
                                                {"MaxCapacity", 100.0},
                                                {"SerialNumber", "S3CR3T"}}};
        fakes.pressure->play({2});
        fakes.graphics.current = {
            {.processIdentifier = 10,
             .device = "a",
             .identifier = 1,
             .engines = {{"render", 7}, {"copy", 0}}},
            {.processIdentifier = 11, .device = "b", .identifier = 1, .engines = {{"render", 0}}},
            {.processIdentifier = 30, .device = "a", .identifier = 2, .engines = {{"copy", 0}, {"x", 0}}}};
    }

    void add(std::int32_t identifier, std::string_view name, std::uint32_t user,
             std::uint64_t nanosecondsEach) {
        auto& process = fakes.processes.add(identifier, name);
        process.accounting->realUserIdentifier = user;
        process.accounting->totalUserTime = nanosecondsEach * 3;
        process.accounting->startSeconds = 1'699'000'000;
        process.accounting->startMicroseconds = 123'457;
        each.push_back(nanosecondsEach);
    }

    void pass() {
        fakes.clock.advance(1s + 137ns);
        for (std::size_t index = 0; index < each.size(); ++index) {
            fakes.processes.processes[index].accounting->totalUserTime += each[index];
        }
        fakes.graphics.current[0].engines[0].busy += 431'987'654;
        fakes.graphics.current[1].engines[0].busy += 20'000'000;
        fakes.hostStatistics.load->user += 261;
        fakes.hostStatistics.load->system += 2;
        fakes.hostStatistics.load->idle += 536;
    }

    std::vector<std::uint64_t> each; ///< nanoseconds of CPU time a step
};

std::string recording(LiveMachine& machine, int samples) {
    ScenarioRecorder recorder(machine.fakes.services(), {"alice", "penguin"});
    for (int sample = 0; sample < samples; ++sample) {
        if (sample > 0) {
            machine.pass();
        }
        recorder.sample();
        machine.snapshots.push_back(machine.engine.snapshot(machine.configuration, machine.fakes.clock.time,
                                                            machine.fakes.clock.uptime().awake));
    }
    return recorder.scenario().value_or("");
}

std::shared_ptr<const simulated::Scenario> parsed(const std::string& text) {
    auto scenario = simulated::parseScenario(text);
    EXPECT_TRUE(scenario) << scenario.error().message << "\n" << text;
    return scenario ? std::make_shared<const simulated::Scenario>(*std::move(scenario)) : nullptr;
}

TEST(ScenarioRecorder, PlaysTheSameOffenders) {
    LiveMachine live;
    const auto scenario = parsed(recording(live, 4));
    ASSERT_TRUE(scenario);
    EXPECT_EQ(scenario->operatingSystem, OperatingSystem::gnuLinux);
    ASSERT_EQ(scenario->frames.size(), 3U); // the fourth sample ends it
    EXPECT_EQ(scenario->duration, 3 * (1s + 137ns));
    EXPECT_TRUE(recording(live, 2).contains(R"("graphics": {"render": 432})"));
    EXPECT_TRUE(recording(live, 2).contains(R"("graphics": {"render@2": 20})"));
    EXPECT_TRUE(recording(live, 2).contains(R"("graphics": {"copy": 0})"));
    live.snapshots.resize(4);

    simulated::VirtualClock clock(scenario->start);
    simulated::SimulatedMachine machine(scenario, clock);
    ProcessOffenderEngine engine(std::make_unique<SystemProcessCPUProvider>(machine.services().processes,
                                                                            machine.services().applications),
                                 live.fakes.comparison, OperatingSystem::gnuLinux,
                                 machine.services().graphics);
    const auto configuration = ProcessOffenderConfiguration::defaultConfiguration(machine.services().process);
    for (std::size_t index = 0; index < live.snapshots.size(); ++index) {
        clock.advanceTo(scenario->start + static_cast<std::int64_t>(index) * (1s + 137ns));
        const auto played = engine.snapshot(configuration, clock.now(), clock.uptime().awake);
        const auto& real = live.snapshots[index];
        EXPECT_EQ(played.state, real.state);
        ASSERT_EQ(played.offenders.size(), real.offenders.size()) << index;
        for (std::size_t place = 0; place < real.offenders.size(); ++place) {
            const auto& one = played.offenders[place];
            const auto& other = real.offenders[place];
            const bool isRenamed = other.displayName.contains("alice");
            EXPECT_TRUE(isRenamed || one.id == other.id) << one.id << " " << other.id;
            EXPECT_TRUE(isRenamed || one.displayName == other.displayName);
            EXPECT_EQ(one.category, other.category);
            EXPECT_EQ(one.canTerminateApplication, other.canTerminateApplication);
            EXPECT_EQ(one.processCount, other.processCount);
            EXPECT_EQ(one.children[0].processIdentifier, other.children[0].processIdentifier);
            EXPECT_EQ(one.children[0].isSystemProcess, other.children[0].isSystemProcess);
            EXPECT_NEAR(one.cpuPercent, other.cpuPercent, 0.05);
            EXPECT_EQ(one.graphicsPercent.has_value(), other.graphicsPercent.has_value()) << one.id;
            EXPECT_NEAR(one.graphicsPercent.value_or(0), other.graphicsPercent.value_or(0), 0.05);
            EXPECT_LT(std::chrono::abs(*one.startedAt - *other.startedAt), 1us);
        }
    }
}

TEST(ScenarioRecorder, TellsTheMachineButNotItsOwner) {
    LiveMachine live;
    const auto text = recording(live, 3);
    for (const auto* const secret : {"alice", "penguin", "/home", "desktop", "S3CR3T", "\"user\": 1000"}) {
        EXPECT_FALSE(text.contains(secret)) << secret << "\n" << text;
    }
    const auto scenario = parsed(text);
    ASSERT_TRUE(scenario);
    EXPECT_EQ(scenario->start, live.snapshots[0].measuredAt - 789ns);
    EXPECT_EQ(scenario->machine.modelIdentifier, "Lap 14");
    EXPECT_EQ(scenario->machine.cpuBrand, std::nullopt);
    EXPECT_EQ(scenario->machine.architecture, "arm64");
    EXPECT_EQ(scenario->machine.processorCount, 8);
    EXPECT_EQ(scenario->ownProcessIdentifier, 99'999);
    const auto& frame = scenario->frames.back();
    EXPECT_EQ(frame.pressure, 2U);
    EXPECT_EQ(frame.sensors, scenario->frames.front().sensors);
    ASSERT_EQ(frame.sensors->size(), 1U);
    EXPECT_EQ(frame.sensors->at(0).celsius, 71.25);
    EXPECT_EQ(frame.power->entries->at(0).size(), 3U);
    EXPECT_EQ(frame.processes->processes()[0].path, "/org.example.Browser.app/browser");
    EXPECT_EQ(frame.processes->processes()[2].user, 0U);
    EXPECT_EQ(frame.processes->processes()[3].path, std::nullopt);
    EXPECT_EQ(frame.processes->processes()[3].user, 501U);
}

TEST(ScenarioRecorder, KeepsWattsClocksAndFansOfAMachineThatTellsThem) {
    const auto source =
        parsed(R"({"schemaVersion": 1, "start": "2026-07-14T12:30:00Z", "duration": 9, "frames": [
        {"at": 0}, {"at": 1,
         "power": {"providing": "Battery Power", "lowPowerMode": false,
                   "entries": [{"BatteryInstalled": true, "ChargeRateMilliwatts": -11340}]},
         "meters": {"machineWatts": 12.4, "chips": [{"name": "Graphics chip", "watts": 3.5}],
                    "fans": [{"name": "alice's Fan", "revolutionsPerMinute": 0}]},
         "clocks": {"fastest": {"allowedHertz": 1200000000, "possibleHertz": 3400000000}, "slowedByHeat": true}},
        {"at": 2, "meters": {}, "clocks": {"heldByFirmware": true,
         "mostHeld": {"allowedHertz": 1, "possibleHertz": 2}}}, {"at": 3}]})");
    ASSERT_TRUE(source);
    simulated::VirtualClock clock(source->start);
    simulated::SimulatedMachine machine(source, clock);
    ScenarioRecorder recorder(machine.services(), {"alice"});
    for (int second = 0; second < 4; ++second) {
        clock.advanceTo(source->start + std::chrono::seconds(second));
        recorder.sample();
    }
    const auto text = recorder.scenario().value();
    const auto copy = parsed(text);
    ASSERT_EQ(copy->frames.size(), 3U) << text;
    EXPECT_FALSE(copy->frames[0].meters || copy->frames[0].clocks); // not told, not written
    auto expected = *source->frames[1].meters;
    expected.fans[0].name = "private's Fan";
    EXPECT_EQ(*copy->frames[1].meters, expected);
    EXPECT_EQ(*copy->frames[2].meters, MeterReadings{});
    EXPECT_EQ(copy->frames[1].clocks, source->frames[1].clocks);
    EXPECT_EQ(copy->frames[2].clocks, source->frames[2].clocks);
    EXPECT_EQ(copy->frames[1].power->entries, source->frames[1].power->entries);
}

TEST(ScenarioRecorder, KeepsRefusalsAndNewProcesses) {
    LiveMachine live;
    live.fakes.pressure->registrationStatus = 1;
    live.fakes.systemValues.texts.clear();
    ScenarioRecorder recorder(live.fakes.services(), {});
    recorder.sample();
    EXPECT_EQ(recorder.scenario(), std::nullopt);
    live.pass();
    recorder.sample();
    live.fakes.clock.advance(-5s); // dropped: a scenario's time never goes back
    recorder.sample();
    live.fakes.clock.advance(5s);
    live.pass();
    const auto load = std::exchange(live.fakes.hostStatistics.load, std::nullopt);
    live.fakes.processes.processes[0].accounting->startSeconds +=
        9; // the identifier is another process's now
    live.fakes.processes.processes[0].accounting->totalUserTime = 5;
    recorder.sample();
    live.fakes.processes.processes.clear();
    live.fakes.clock.advance(1s);
    live.fakes.hostStatistics.load = load;
    recorder.sample();
    live.fakes.clock.advance(1s);
    recorder.sample();
    const auto scenario = parsed(*recorder.scenario());
    ASSERT_TRUE(scenario);
    ASSERT_EQ(scenario->frames.size(), 4U);
    EXPECT_EQ(scenario->machine.modelIdentifier, unknownModel); // an empty one would pass for a name
    EXPECT_FALSE(scenario->frames[0].pressure);
    EXPECT_TRUE(scenario->frames[1].load);
    EXPECT_FALSE(scenario->frames[2].load);
    EXPECT_EQ(scenario->frames[1].processes->processes()[0].cpuTimeNanoseconds, 0U); // goes on from before
    EXPECT_EQ(scenario->frames[2].processes->processes()[0].cpuTimeNanoseconds, 5U);
    EXPECT_EQ(scenario->frames[2].processes->processes()[0].millicores, 0U);
    EXPECT_FALSE(scenario->frames[3].processes);
}

TEST(Anonymizer, HidesWordsAndFolders) {
    const Anonymizer anonymized({"al", "box", ""});
    for (const auto& [text, kept] : std::to_array<std::pair<std::string_view, std::string_view>>({
             {"sshd: al@pts/0", "sshd: private@pts/0"},
             {"al", "private"},
             {"alacritty --title=al al", "alacritty --title=private private"},
             {"boxes", "boxes"},
             {"nginx: master /usr/sbin/nginx -g", "nginx: master nginx -g"},
             {"kworker/0:1", "kworker/0:1"},
             {"/", "private"},
         })) {
        EXPECT_EQ(anonymized(text), kept);
    }
}

} // namespace
} // namespace cindertop
