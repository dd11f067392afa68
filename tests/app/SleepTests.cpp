#include "FakeProgram.h"
#include "persistence/ThermalHistoryEnvelope.h"
#include "support/AtomicFile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

/// Raw states of the thermal pressure.
enum Heat : std::uint8_t { cool = 0, serious = 2, critical = 3 };

/// How the program learns of a sleep.
enum class Word : std::uint8_t { announced, fromClocks, fromLateness };

constexpr std::array words{Word::announced, Word::fromClocks, Word::fromLateness};

/// Where a night of 8 h that begins soon after the start is over midnight, and where it is in the daytime.
constexpr std::array zones{"UTC", "Asia/Tokyo"};

/// A program that tells alerts, on a machine that can sleep.
struct Sleeper : FakeProgram {
    explicit Sleeper(Heat heat, const std::string& zone = "Asia/Tokyo", HistoryWriting writing = {}) {
        timeZone = zone;
        historyWriting = std::move(writing);
        setHeat(heat);
        startWith({.notificationsEnabled = true});
    }

    void setHeat(Heat heat) { machine.pressure->play({heat}); }

    void sleepUntil(Heat after, std::chrono::nanoseconds time, Word word = Word::fromClocks) {
        if (word == Word::announced) {
            announcements.announceSleep();
        }
        if (word == Word::fromLateness) {
            halt(time);
        } else {
            sleep(time);
        }
        setHeat(after);
        if (word == Word::announced) {
            announcements.announceWake();
        }
    }

    /// The first letters of "Sustained …", "Critical …", "Thermal Pressure Eased".
    std::string alerts() const {
        std::string letters;
        for (const auto& request : notificationCenter.posted) {
            letters += request.content.title.front();
        }
        return letters;
    }

    const ThermalDailySummary& today() const { return published().monitoringSnapshot->todaySummary; }

    double hotSeconds() const { return today().levelDurations.serious + today().levelDurations.critical; }

    double seconds() const { return today().levelDurations.totalDuration(); }
};

TEST(Sleep, ANightIsNoTimeUnderPressure) {
    struct Case {
        Heat before, after;
        const char* evening; ///< its alerts
        const char* wake;    ///< all alerts within two seconds of it
        const char* morning; ///< all alerts within three minutes
    };

    for (const auto& [before, after, evening, wake, morning] : std::to_array<Case>({
             {serious, cool, "S", "S", "S"},
             {serious, serious, "S", "S", "S"},
             {cool, serious, "", "", "S"},
             {critical, cool, "C", "C", "C"},
             {critical, critical, "C", "C", "C"},
             {cool, critical, "", "C", "C"},
         })) {
        for (const auto word : words) {
            for (const auto* const zone : zones) {
                SCOPED_TRACE(std::to_string(before) + " then " + std::to_string(after) + ", word " +
                             std::to_string(static_cast<int>(word)) + ", " + zone);
                Sleeper program(before, zone);
                program.pass(3min);
                EXPECT_EQ(program.alerts(), evening);
                const auto day = program.today().dayIdentifier;

                program.sleepUntil(after, 8h, word);
                program.pass(2s);
                EXPECT_EQ(program.alerts(), wake);
                const bool isSameDay = program.today().dayIdentifier == day;
                const double counted = isSameDay ? 180 : 0;
                EXPECT_EQ(isSameDay, zone == zones[1]);
                EXPECT_NEAR(program.seconds(), counted, 5);
                EXPECT_LE(program.published().systemContextSnapshot->sustainedPressure.activeDuration, 2s);
                EXPECT_EQ(program.published().thermalSnapshot->trend, ThermalTrend::stable);
                EXPECT_EQ(program.countOf("Monitoring continues after sleep"), 1);

                program.pass(3min - 2s);
                EXPECT_EQ(program.alerts(), morning);
                EXPECT_NEAR(program.seconds(), counted + 180, 10);
                EXPECT_NEAR(program.hotSeconds(), (before == cool ? 0 : counted) + (after == cool ? 0 : 180),
                            10);
                const bool isHot = after != cool || (isSameDay && before != cool);
                const bool isCritical = after == critical || (isSameDay && before == critical);
                EXPECT_EQ(program.today().throttlingEpisodeCount, isHot ? 1 : 0);
                EXPECT_EQ(program.today().criticalEpisodeCount, isCritical ? 1 : 0);
            }
        }
    }
}

TEST(Sleep, NewHeatAfterItIsToldAsAnyOther) {
    Sleeper program(critical);
    program.pass(10min);
    program.sleepUntil(cool, 8h);
    program.pass(1min);
    program.setHeat(serious);
    program.pass(8min);
    program.setHeat(cool);
    program.pass(1min);
    program.setHeat(critical);
    program.pass(1min);
    EXPECT_EQ(program.alerts(), "CSTC")
        << "the end of the evening's heat is not told, that of the morning's is";
    EXPECT_EQ(program.today().throttlingEpisodeCount, 2);
    EXPECT_EQ(program.today().criticalEpisodeCount, 2);
}

TEST(Sleep, AnAlertThatItOvertakesIsToldOnlyIfItIsStillTrue) {
    for (const auto after : {cool, critical}) {
        Sleeper program(critical);
        program.notificationCenter.holdsAnswers = true;
        program.pass(1s); // the notification server is asked whether it may be posted
        program.sleepUntil(after, 8h);
        program.notificationCenter.holdsAnswers = false;
        while (program.notificationCenter.answerNext()) {
        }
        EXPECT_EQ(program.alerts(), "");
        EXPECT_EQ(program.countOf("Thermal notification delivered"), 0);
        program.pass(1min);
        EXPECT_EQ(program.alerts(), after == critical ? "C" : "");
    }
}

TEST(Sleep, WhatWasReadBeforeItIsNoNewsAfterIt) {
    Sleeper program(critical);
    program.executor.isHolding = true;
    program.pass(0s);
    ASSERT_TRUE(program.executor.workNext());
    program.sleepUntil(cool, 1h);
    program.executor.release();
    EXPECT_EQ(program.ticks, 1);
    program.pass(0s);
    EXPECT_EQ(program.ticks, 2) << "the next look is at once";
    program.pass(10s);
    EXPECT_EQ(program.alerts(), "");
}

TEST(Sleep, TheSystemsWordBringsALookAtOnceAndAWriteBefore) {
    Sleeper program(cool, "UTC", {.clock = [] { return 0ns; }}); // nothing is due again
    program.pass(7s);
    ASSERT_EQ(program.samples, 2);
    const auto sampleCount = [&program] {
        const auto text = wholeFile(program.files, FakeProgram::historyFile, 1'000'000).value();
        return decodeHistory(text).value().samples.size();
    };
    EXPECT_EQ(sampleCount(), 1U);
    program.executor.isHolding = true;
    program.announcements.announceSleep();
    EXPECT_EQ(program.announcements.readyCount, 0) << "work is waiting";
    program.executor.release();
    EXPECT_EQ(program.announcements.readyCount, 1);
    EXPECT_EQ(sampleCount(), 2U);
    program.ticks = 1;
    program.sleep(1h);
    program.announcements.announceWake();
    program.pass(0s);
    EXPECT_EQ(program.ticks, 2);
    EXPECT_EQ(program.published().processOffenderSnapshot->state, ProcessOffenderSnapshotState::collecting);
    program.pass(2s);
    EXPECT_EQ(program.ticks, 3) << "and the next one after the usual time";
    program.state.reset();
    EXPECT_FALSE(program.announcements.isObserved());
}

TEST(Sleep, WhilePausedItIsNoticedAtTheNextStart) {
    Sleeper program(critical);
    program.pass(10min);
    program.state->setPaused(true);
    program.announcements.announceSleep();
    program.sleep(8h);
    program.announcements.announceWake();
    program.pass(1min);
    program.state->setPaused(false);
    program.pass(1s);
    EXPECT_NEAR(program.seconds(), 600, 5);
}

TEST(ClockSet, CountsWhatAPersonWouldCount) {
    for (const auto heat : {serious, critical}) {
        for (const int minutes : {-26 * 60, -60, -1, 1, 4, 60, 180}) {
            const std::chrono::minutes step{minutes};
            Sleeper program(heat); // 07:13 in the morning
            program.pass(3min);
            const auto alerts = program.alerts();
            const auto day = program.today().dayIdentifier;
            const auto samples = program.published().monitoringSnapshot->samples.size();
            program.machine.clock.ahead += step;
            program.pass(1s);
            SCOPED_TRACE(std::to_string(minutes) + " min, heat " + std::to_string(heat));
            EXPECT_NEAR(program.published().systemContextSnapshot->sustainedPressure.activeDuration.count(),
                        181, 1);
            program.pass(3min);
            EXPECT_EQ(program.alerts(), alerts);
            if (program.today().dayIdentifier != day) { // it counts for itself
                EXPECT_EQ(program.today().throttlingEpisodeCount, 0);
                EXPECT_EQ(program.today().criticalEpisodeCount, 0);
                EXPECT_NEAR(program.seconds(), 180, 10);
                continue;
            }
            EXPECT_EQ(program.today().throttlingEpisodeCount, 1);
            EXPECT_EQ(program.today().criticalEpisodeCount, heat == critical ? 1 : 0);
            EXPECT_NEAR(program.hotSeconds(), 360, 10);
            const auto& now = program.published().monitoringSnapshot->samples;
            const bool isWithinHistory = minutes > 0 && minutes < 50;
            EXPECT_GE(now.size(), isWithinHistory ? samples + 35 : 35U);
            EXPECT_LE(now.back().measuredAt, program.machine.clock.now());
            EXPECT_TRUE(std::ranges::is_sorted(now, {}, &ThermalHistorySample::measuredAt));
            program.machine.clock.ahead = {};
            program.pass(1s);
            const auto& later = program.published().monitoringSnapshot->samples;
            EXPECT_GE(later.size(), std::abs(minutes) < 50 ? 70U : 35U) << "nothing was lost";
        }
    }
}

TEST(ClockSet, BackKeepsCooldownsFromLastingLonger) {
    Sleeper program(critical);
    program.pass(1min);
    program.machine.clock.ahead -= 12h;
    program.setHeat(cool);
    program.pass(1min);
    program.setHeat(critical);
    program.pass(1min);
    EXPECT_EQ(program.alerts(), "C") << "it was told two minutes ago";
    program.setHeat(cool);
    program.pass(15min);
    program.setHeat(critical);
    program.pass(1min);
    EXPECT_EQ(program.alerts(), "CC");
}

} // namespace
} // namespace cindertop
