#include "support/Instant.h"

#include <gtest/gtest.h>

namespace cindertop {

namespace {

using namespace std::chrono_literals;

TEST(Instant, DifferencesAreDividedOnceFromExactNanoseconds) {
    // Far from the epoch a difference of rounded seconds would err in the seventh digit.
    const Instant start{1'753'920'000s + 1ns};
    EXPECT_EQ(secondsBetween(start, start + 119'900ms).count(), 119.9);
    EXPECT_EQ(secondsBetween(start, start + 200ms).count(), 0.2);
    EXPECT_EQ(secondsBetween(start, start + 1ns).count(), 1e-9);
    EXPECT_EQ(secondsBetween(start + 1'500ms, start).count(), -1.5);
    EXPECT_EQ(secondsBetween(start, start).count(), 0);
}

} // namespace

} // namespace cindertop
