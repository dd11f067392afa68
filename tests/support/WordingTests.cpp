#include "support/Wording.h"

#include <gtest/gtest.h>

namespace cindertop {
namespace {

TEST(Wording, IsChosenByTheSystemAndTakesAName) {
    using enum OperatingSystem;
    constexpr Wording question{"Quit {name} App?", "Quit {name}?"};
    EXPECT_EQ(withName(question.in(mac), "Files"), "Quit Files App?");
    EXPECT_EQ(withName(question.in(gnuLinux), "{name}"), "Quit {name}?");
    constexpr auto common = Wording::same("Cooling down");
    EXPECT_EQ(withName(common.in(mac), "Files"), "Cooling down");
    EXPECT_EQ(common.in(gnuLinux), common.in(mac));
}

} // namespace
} // namespace cindertop
