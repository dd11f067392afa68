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

} // namespace
} // namespace cindertop
