#include "cli/WatchNews.h"
#include "report/Snapshots.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <functional>
#include <string>

namespace cindertop::cli {
namespace {

using namespace std::chrono_literals;

WatchNews watchNews() {
    return WatchNews(TemperatureFormatter("en_GB", TemperatureFormatter::Unit::celsius));
}

MachineReport reportAt(std::chrono::milliseconds time) {
    MachineReport report{.snapshot = hotLaptop()};
    report.snapshot.measuredAt = snapshotStart + time;
    return report;
}

TEST(WatchNews, TellsAnUnchangedMachineEveryTenSeconds) {
    auto news = watchNews();
    std::string told;
    for (int tick = 0; tick <= 110; ++tick) { // five a second, as while critical
        told += news.isNews(reportAt(tick * 200ms)) ? std::to_string(tick) + ' ' : "";
    }
    EXPECT_EQ(told, "0 50 100 ");
}

TEST(WatchNews, TellsWhatHasChangedWhenItMatters) {
    struct Case {
        const char* name;
        std::function<void(MachineReport&)> change;
        bool isToldAtOnce;
        bool isToldAfterASecond;
    };

    for (const auto& [name, change, isToldAtOnce, isToldAfterASecond] : std::to_array<Case>({
             {"level", [](auto& r) { r.snapshot.score.level = ThermalLevel::critical; }, true, true},
             {"heat no longer known", [](auto& r) { r.snapshot.score = unknownMachine().score; }, true, true},
             {"note", [](auto& r) { r.note = "Monitoring is paused."; }, true, true},
             {"score", [](auto& r) { r.snapshot.score.score = 79; }, false, true},
             {"trend", [](auto& r) { r.snapshot.score.trend = ThermalTrend::stable; }, false, true},
             {"a degree", [](auto& r) { r.snapshot.score.temperatureCelsius = 97.6; }, false, true},
             {"less than a degree", [](auto& r) { r.snapshot.score.temperatureCelsius = 96.9; }, false,
              false},
             {"another application", [](auto& r) { r.snapshot.offenders.offenders[0].id = "x"; }, false,
              true},
             {"much of a share", [](auto& r) { r.snapshot.cpuPercent = 46; }, false, true},
             {"no share any more", [](auto& r) { r.snapshot.cpuPercent.reset(); }, false, true},
             {"little of a share", [](auto& r) { r.snapshot.cpuPercent = 45.9; }, false, false},
             {"the application's share", [](auto& r) { r.snapshot.offenders.offenders[0].cpuPercent = 20; },
              false, true},
         })) {
        for (const auto& [after, expected] :
             {std::pair(200ms, isToldAtOnce), std::pair(1000ms, isToldAfterASecond)}) {
            auto news = watchNews();
            news.isNews(reportAt(0ms));
            auto report = reportAt(after);
            change(report);
            EXPECT_EQ(news.isNews(report), expected) << name << " after " << after.count() << " ms";
        }
    }
}

TEST(WatchNews, TellsAtOnceWhenTheClockWasSetBack) {
    auto news = watchNews();
    news.isNews(reportAt(60s));
    EXPECT_TRUE(news.isNews(reportAt(0s)));
}

} // namespace
} // namespace cindertop::cli
