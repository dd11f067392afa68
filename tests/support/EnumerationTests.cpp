#include "support/Enumeration.h"

#include <gtest/gtest.h>

namespace cindertop {

namespace {

enum class Speed : std::uint8_t { slow, fast };
enum class Colour : std::uint8_t { red, green };

} // namespace

template <>
struct EnumerationTable<Speed> {
    static constexpr std::array cases{
        EnumerationCase{Speed::slow, "slow", 10},
        EnumerationCase{Speed::fast, "fast", 20},
    };
};

template <>
struct EnumerationTable<Colour> {
    static constexpr std::array cases{
        EnumerationCase{Colour::red, "red"},
        EnumerationCase{Colour::green, "green"},
    };
};

namespace {

static_assert(rawValue(Speed::fast) == 20 && caseName(Speed::fast) == "fast");
static_assert(rawValue(Colour::green) == "green");

TEST(Enumeration, ReadsOnlyRawValuesOfTheTable) {
    EXPECT_EQ(fromRawValue<Speed>(10), Speed::slow);
    for (const std::int64_t foreign : {0L, -10L, 11L, 10L + (1L << 32)}) { // no wrap into 32 bits
        EXPECT_EQ(fromRawValue<Speed>(foreign), std::nullopt) << foreign;
    }
    EXPECT_EQ(fromRawValue<Colour>(std::string("green")), Colour::green);
    for (const auto* const foreign : {"", "Green", "green ", "1"}) {
        EXPECT_EQ(fromRawValue<Colour>(std::string_view(foreign)), std::nullopt) << foreign;
    }
}

} // namespace

} // namespace cindertop
