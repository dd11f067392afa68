#include "cli/HistoryPage.h"
#include "support/EnvironmentVariables.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include <time.h> // NOLINT(modernize-deprecated-headers): tzset is POSIX

namespace cindertop::cli {
namespace {

using namespace std::chrono_literals;

constexpr Instant now{1'741'176'000s}; // 2025-03-05 12:00 UTC
const LocalizedComparison comparison("en_GB");

PageStyle style(int columns, Charset charset) {
    return {.format = {.columns = columns, .charset = charset},
            .temperatures = TemperatureFormatter("en_GB", TemperatureFormatter::Unit::celsius),
            .system = OperatingSystem::gnuLinux};
}

ThermalHistorySample sampleAt(Instant instant, ThermalLevel level, std::int64_t score,
                              std::optional<double> percent, std::optional<double> celsius) {
    return {instant, level, score, percent, celsius, {}, {}, {}};
}

/// Cool for 20 minutes, then away for 10, then hotter and hotter.
ThermalMonitoringSnapshot warmHour() {
    using enum ThermalLevel;
    return {{sampleAt(now - 60min, normal, 5, 0, 40), sampleAt(now - 50min, normal, 8, 10, {}),
             sampleAt(now - 40min, normal, 9, {}, 41), sampleAt(now - 20min, fair, 40, 50, 60),
             sampleAt(now - 19min, normal, 20, 60, 55), sampleAt(now - 10min, serious, 70, 90, 75.5),
             sampleAt(now - 5s, ThermalLevel::critical, 95, 100, 90)},
            ThermalDailySummary("2025-03-05", ThermalLevelDurations(3000, 900, 95, 5), 2, 1,
                                {{"Browser", 5}, {"apple", 1}, {"Zebra", 1}, {"Bird", 1}}, {}, now),
            now};
}

std::string text(const ThermalMonitoringSnapshot& snapshot, const PageStyle& pageStyle,
                 bool isHistoryEnabled = true, std::chrono::minutes window = 60min) {
    return encoded(
        historyPage(snapshot,
                    {.isHistoryEnabled = isHistoryEnabled, .window = window, .comparison = comparison},
                    pageStyle),
        pageStyle.format);
}

class HistoryPageTest : public testing::Test {
public:
    HistoryPageTest() { ::tzset(); }

private:
    EnvironmentVariables zone_{{{"TZ", "Asia/Kolkata"}}}; // half an hour beside the full one
};

TEST_F(HistoryPageTest, DrawsTheHourAndTellsTheDay) {
    EXPECT_EQ(text(warmHour(), style(50, Charset::unicode)),
              R"(The last hour                  2025-03-05 17:30:00

Critical                                         █
Serious                                     █    █
Fair                                  █     █    █
Normal        █     █     █           █     █    █
Temperature   ▁           ▁           ▄     ▆    █
Processor     ▁     ▂                 ▅     ▇    █
              ┬────────┬────────┬────────┬────────
              16:30    16:45    17:00    17:15

Recorded      7 samples, the latest 5 s ago: 95 of
              100, Critical
Score         5 to 95
Temperature   40°C to 90°C
Processor     0.0 % to 100.0 %, on average 51.7 %

Today, 2025-03-05: 1 h 6 min recorded
Normal        50 min 0 s       75.0 %  ████████▎░░
Fair          15 min 0 s       22.5 %  ██▌░░░░░░░░
Serious       1 min 35 s        2.4 %  ▎░░░░░░░░░░
Critical      5 s               0.1 %  ▏░░░░░░░░░░
Episodes      2 of sustained pressure, 1 critical
Busiest       Browser (5 samples), apple (1), Bird
              (1)
)");
}

TEST_F(HistoryPageTest, FitsEveryWidth) {
    auto hostile = warmHour();
    hostile.todaySummary.topOffenderCounts = {{"\x1b[2J日本" + std::string(90, 'x'), 7}};
    for (const auto charset : {Charset::unicode, Charset::ascii}) {
        for (int columns = 1; columns <= 130; ++columns) {
            const auto narrow = style(columns, charset);
            const HistoryPageContext context{
                .isHistoryEnabled = true, .window = 60min, .comparison = comparison};
            for (const auto& line : historyPage(hostile, context, narrow)) {
                EXPECT_LE(columnsOf(encoded(line, narrow.format)), columns);
                EXPECT_EQ(encoded(line, narrow.format).find('\x1b'), std::string::npos);
            }
        }
    }
}

TEST_F(HistoryPageTest, LeavesOutWhatWasNotMeasured) {
    const ThermalMonitoringSnapshot bare{
        {sampleAt(now, ThermalLevel::normal, 8, {}, {})}, ThermalDailySummary::fresh("2025-03-05", now), now};
    EXPECT_EQ(text(bare, style(60, Charset::ascii)),
              R"(The last hour                            2025-03-05 17:30:00

Critical
Serious
Fair
Normal                                                     #
              +----------+-----------+----------+-----------
              16:30      16:45       17:00      17:15

Recorded      1 sample, the latest 0 s ago: 8 of 100, Normal
Score         8 to 8
Temperature   not available
Processor     not available
)");
}

TEST_F(HistoryPageTest, SaysWhenItWasWrittenWhereNoAgentAnswers) {
    const auto pageStyle = style(50, Charset::ascii);
    const auto page = historyPage(
        warmHour(),
        {.isHistoryEnabled = true, .window = 60min, .comparison = comparison, .writtenAt = now - 5min},
        pageStyle);
    EXPECT_TRUE(encoded(page, pageStyle.format)
                    .starts_with("The last hour                  2025-03-05 17:30:00\n"
                                 "As written at 2025-03-05 17:25:00; no agent\nanswers.\n\n"));
}

TEST_F(HistoryPageTest, SaysWhatMakesAHistory) {
    const ThermalMonitoringSnapshot none{{}, ThermalDailySummary::fresh("2025-03-05", now), now};
    const auto plain = style(110, Charset::ascii);
    EXPECT_EQ(text(none, plain),
              "No history is stored: the Cindertop agent records while it runs with monitoring and "
              "history switched on.\n");
    EXPECT_EQ(text(none, plain, false), "No history is stored: history is switched off in the settings.\n");
    auto morning = warmHour();
    morning.samples = {};
    EXPECT_TRUE(
        text(morning, plain).starts_with("Nothing was recorded in the last hour: the Cindertop agent"));
    EXPECT_NE(text(morning, plain).find("Today, 2025-03-05: 1 h 6 min recorded"), std::string::npos);
}

TEST_F(HistoryPageTest, LooksBackAsFarAsTheUserWants) {
    const auto page = text(warmHour(), style(60, Charset::ascii), true, 15min);
    EXPECT_TRUE(page.starts_with("The last 15 minutes "));
    EXPECT_NE(page.find("2 samples"), std::string::npos);
    EXPECT_NE(page.find("Score         70 to 95"), std::string::npos);
    auto old = warmHour();
    old.samples = {warmHour().samples.front()};
    EXPECT_TRUE(text(old, style(120, Charset::ascii), true, 30min)
                    .starts_with("Nothing was recorded in the last 30 minutes: "));
}

TEST_F(HistoryPageTest, NamesNoLevelWhereNothingToldTheHeat) {
    auto silent = warmHour();
    silent.samples = {sampleAt(now - 10s, ThermalLevel::normal, 0, 50, {}),
                      sampleAt(now - 5s, ThermalLevel::normal, 0, 60, {})};
    silent.todaySummary =
        ThermalDailySummary("2025-03-05", ThermalLevelDurations(3000, 0, 0, 0), 0, 0, {}, {}, now);
    const auto page = text(silent, style(60, Charset::ascii));
    EXPECT_EQ(page.find("Normal"), std::string::npos);
    EXPECT_EQ(page.find("Score"), std::string::npos);
    EXPECT_NE(page.find("No heat readings"), std::string::npos);
    EXPECT_NE(page.find("recorded\nNo heat readings\n"), std::string::npos);
    silent.todaySummary = warmHour().todaySummary; // it was hot before the source fell silent
    EXPECT_NE(text(silent, style(60, Charset::ascii)).find("Serious"), std::string::npos);
}

} // namespace
} // namespace cindertop::cli
