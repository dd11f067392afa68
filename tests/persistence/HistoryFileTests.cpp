#include "Fixtures.h"
#include "persistence/ThermalHistoryEnvelope.h"
#include "support/DateText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

namespace cindertop {
namespace {

using tests::fixture;
using tests::fixturesIn;

const ThermalHistoryContextFlags flags{
    .hasExternalDisplay = true, .isExternalPowerConnected = true, .isSustainedPressure = true};

ThermalHistoryEnvelope full() {
    return {1,
            {{*parseUtcText("2025-03-05T10:00:00Z"), ThermalLevel::serious, 71, 41.25, 96.5, "Image & Video",
              "org.example.image-video", flags},
             {*parseUtcText("2025-03-05T10:00:05Z"), ThermalLevel::critical, 92, {}, {}, {}, {}, flags}},
            ThermalDailySummary("2025-03-05", ThermalLevelDurations(0, 0.5, 5, 0), 1, 2,
                                {{"Image & Video", 1}}, {{{"Image & Video", "org.example.image-video"}}},
                                *parseUtcText("2025-03-05T10:00:05Z"))};
}

ThermalHistoryEnvelope decoded(const std::string& name) {
    const auto envelope = decodeHistory(fixture("history/good/" + name));
    EXPECT_TRUE(envelope) << name << ": " << envelope.error().what();
    return envelope.value_or(ThermalHistoryEnvelope{});
}

TEST(HistoryFile, IsReadWhateverElseItHolds) {
    EXPECT_EQ(decoded("full.plist"), full());
    EXPECT_EQ(decoded("unknown-keys.plist"), full());
    auto expected = full();
    expected.schemaVersion = 7;
    EXPECT_EQ(decoded("other-version.plist"), expected);
    expected = full();
    expected.todaySummary.reset();
    EXPECT_EQ(decoded("no-summary.plist"), expected);
    expected = full();
    expected.todaySummary->topOffenderBundleIdentifiers.reset();
    EXPECT_EQ(decoded("summary-without-identifiers.plist"), expected);
    expected = full();
    expected.samples = {full().samples[1], full().samples[0]};
    EXPECT_EQ(decoded("other-order.plist"), expected);
    EXPECT_EQ(decoded("no-samples.plist"), ThermalHistoryEnvelope{});
}

TEST(HistoryFile, IsRepairedAsRecordsAre) {
    const auto envelope = decoded("out-of-range.plist");
    ASSERT_EQ(envelope.samples.size(), 1U);
    const auto& sample = envelope.samples.front();
    EXPECT_EQ(sample.score, 100);
    EXPECT_EQ(sample.globalCPUPercent, 100);
    EXPECT_EQ(sample.topOffenderLabel, "Image & Video");
    EXPECT_EQ(sample.topOffenderBundleIdentifier, std::nullopt);
    EXPECT_EQ(envelope.todaySummary->throttlingEpisodeCount, 0);
    EXPECT_EQ(envelope.todaySummary->levelDurations, ThermalLevelDurations(0, 0, 5, 0));
}

TEST(HistoryFile, IsRefusedAsAWholeWithThePlace) {
    const std::map<std::string, std::string> places{
        {"binary.plist", "byte 8"}, // the first byte that no XML has
        {"count-is-text.plist", "todaySummary.topOffenderCounts.Image & Video"},
        {"date-does-not-exist.plist", "samples[0].measuredAt"},
        {"date-is-text.plist", "samples[0].measuredAt"},
        {"empty.plist", "the root"},
        {"flag-is-integer.plist", "samples[0].contextFlags.hasExternalDisplay"},
        {"key-twice.plist", "samples[0]"},
        {"level-4.plist", "samples[1].level"},
        {"level-negative.plist", "samples[0].level"},
        {"level-wraps.plist", "samples[0].level"},
        {"missing-day.plist", "todaySummary"},
        {"missing-flag.plist", "samples[0].contextFlags"},
        {"missing-samples.plist", "the root"},
        {"missing-score.plist", "samples[1]"},
        {"missing-version.plist", "the root"},
        {"no-dictionary.plist", "the root"},
        {"own-doctype.plist", "the root"},
        {"percent-is-integer.plist", "samples[0].globalCPUPercent"},
        {"percent-is-nan.plist", "samples[0].globalCPUPercent"},
        {"score-is-text.plist", "samples[0].score"},
        {"trailing-text.plist", "the root"},
        {"truncated.plist", "byte 899"},
    };
    const auto names = fixturesIn("history/broken");
    EXPECT_EQ(names.size(), places.size());
    for (const std::string& name : names) {
        const auto envelope = decodeHistory(fixture("history/broken/" + name));
        ASSERT_FALSE(envelope) << name;
        ASSERT_TRUE(places.contains(name)) << name << ": " << envelope.error().what();
        EXPECT_EQ(envelope.error().place(), places.at(name)) << name << ": " << envelope.error().what();
    }
}

TEST(HistoryFile, IsWrittenKeyByKey) {
    const auto text = encodeHistory(full());
    ASSERT_TRUE(text);
    const std::string expected = fixture("history/good/full.plist");
    const std::size_t body = expected.find("<dict>");
    std::string values = expected.substr(body, expected.find("</plist>") - body);
    std::erase(values, '\n');
    EXPECT_EQ(*text, expected.substr(0, body) + values + "\n</plist>\n");
}

TEST(HistoryFile, ReadsBackWithWholeSeconds) {
    auto envelope = full();
    std::vector<ThermalHistorySample> samples(envelope.samples.begin(), envelope.samples.end());
    for (auto& sample : samples) {
        sample.measuredAt += std::chrono::milliseconds(999);
    }
    envelope.samples = std::move(samples);
    envelope.todaySummary->updatedAt += std::chrono::nanoseconds(1);
    EXPECT_EQ(decodeHistory(*encodeHistory(envelope)), full());
}

TEST(HistoryFile, JoinsLabelsThatCannotBeToldApart) {
    auto envelope = full();
    envelope.todaySummary->topOffenderCounts = {{"a", 1}, {"a\x01", 2}, {"b", 4}};
    envelope.todaySummary->topOffenderBundleIdentifiers = {{{"a", "x"}, {"a\x01", "y"}}};
    const auto read = decodeHistory(*encodeHistory(envelope));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->todaySummary->topOffenderCounts,
              (ThermalDailySummary::OffenderCounts{{"a", 3}, {"b", 4}}));
    EXPECT_EQ(read->todaySummary->topOffenderBundleIdentifiers,
              (ThermalDailySummary::OffenderIdentifiers{{"a", "y"}}));
}

} // namespace
} // namespace cindertop
