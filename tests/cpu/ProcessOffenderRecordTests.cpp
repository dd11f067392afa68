#include "cpu/ProcessOffender.h"
#include "cpu/ProcessOffenderConfiguration.h"
#include "fakes/FakeProcessInformation.h"

#include <gtest/gtest.h>

#include <limits>

namespace cindertop {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(ProcessOffenderRecords, RepairNegativeNumbers) {
    for (const double broken : {-0.5, notANumber, -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(ProcessOffenderChild(1, 0, "a", broken, false, {}).cpuPercent, 0);
        EXPECT_EQ(ProcessOffenderHistoryPoint(unixEpoch, broken).cpuPercent, 0);
        const ProcessOffender offender({.id = "system", .processCount = -1, .cpuPercent = broken});
        EXPECT_EQ(offender.cpuPercent, 0);
        EXPECT_EQ(offender.processCount, 0);
    }
    EXPECT_EQ(ProcessOffenderChild(1, 0, "a", 250, false, {}).cpuPercent, 250);
}

TEST(ProcessOffenderConfiguration, RaisesEachValueToItsBound) {
    const ProcessOffenderConfiguration lowest({.processorCount = 0,
                                               .minimumVisibleCPUPercent = -3,
                                               .preferredMinimumOffenderCount = -1,
                                               .maximumOffenderCount = 0,
                                               .maximumChildCount = std::numeric_limits<std::int64_t>::min(),
                                               .maximumHistoryCount = 1,
                                               .indexingCPUThresholdPercent = notANumber});
    EXPECT_EQ(lowest.processorCount, 1);
    EXPECT_EQ(lowest.minimumVisibleCPUPercent, 0);
    EXPECT_EQ(lowest.preferredMinimumOffenderCount, 1);
    EXPECT_EQ(lowest.maximumOffenderCount, 1);
    EXPECT_EQ(lowest.maximumChildCount, 1);
    EXPECT_EQ(lowest.maximumHistoryCount, 2);
    EXPECT_EQ(lowest.indexingCPUThresholdPercent, 0);
}

TEST(ProcessOffenderConfiguration, DescribesThisMachineAndProgramByDefault) {
    fakes::FakeProcessInformation information;
    information.processors = 6;
    information.identifier = 77;
    information.bundle = "app.example";
    EXPECT_EQ(ProcessOffenderConfiguration::defaultConfiguration(information),
              ProcessOffenderConfiguration({.processorCount = 6,
                                            .excludedProcessIdentifier = 77,
                                            .excludedBundleIdentifier = "app.example",
                                            .minimumVisibleCPUPercent = 0.05,
                                            .preferredMinimumOffenderCount = 5,
                                            .maximumOffenderCount = 8,
                                            .maximumChildCount = 12,
                                            .maximumHistoryCount = 48,
                                            .indexingCPUThresholdPercent = 1.0,
                                            .pinnedOffenderID = std::nullopt}));
}

TEST(ProcessOffenderCategory, HasItsWordingAndOwner) {
    struct Case {
        std::string_view rawValue;
        std::string_view label;
        bool isSystemOwned;
    };

    const auto expected = std::to_array<Case>({
        {"userApplication", "Top CPU offender", false},
        {"browserWorkload", "Likely browser tab/app workload", false},
        {"developerWorkload", "Developer workload", false},
        {"indexingOrSetup", "Background indexing/setup", true},
        {"backgroundSystem", "Background system process", true},
        {"system", "System process", true},
        {"unknown", "Process load", false},
    });
    ASSERT_EQ(casesOf<ProcessOffenderCategory>().size(), expected.size());
    for (const auto& row : expected) {
        const auto category = fromRawValue<ProcessOffenderCategory>(row.rawValue);
        ASSERT_TRUE(category) << row.rawValue;
        EXPECT_EQ(rawValue(*category), row.rawValue);
        EXPECT_EQ(label(*category).in(OperatingSystem::mac), row.label);
        EXPECT_EQ(isSystemOwned(*category), row.isSystemOwned);
    }
    for (const std::string_view state : {"unavailable", "collecting", "ready"}) {
        EXPECT_EQ(rawValue(fromRawValue<ProcessOffenderSnapshotState>(state).value()), state);
    }
}

} // namespace
} // namespace cindertop
