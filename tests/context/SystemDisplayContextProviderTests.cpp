#include "context/DisplayContext.h"
#include "fakes/FakeDisplayList.h"

#include <gtest/gtest.h>

#include <vector>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

using fakes::FakeDisplayList;

constexpr fakes::FakeDisplay panel{1, DisplayPlace::builtIn};
constexpr fakes::FakeDisplay monitor{2, DisplayPlace::external};
constexpr fakes::FakeDisplay somewhere{3, DisplayPlace::unknown};

DisplayContextSnapshot contextOf(const FakeDisplayList& list) {
    return SystemDisplayContextProvider(list).readDisplayContext();
}

TEST(SystemDisplayContextProvider, CountsActiveBuiltInAndExternalDisplays) {
    EXPECT_EQ(contextOf(FakeDisplayList({panel, monitor})), DisplayContextSnapshot(true, 2, 1, 1));
    EXPECT_EQ(contextOf(FakeDisplayList({monitor})), DisplayContextSnapshot(true, 1, 0, 1));
    EXPECT_EQ(contextOf(FakeDisplayList({panel})), DisplayContextSnapshot(true, 1, 1, 0));
    EXPECT_EQ(contextOf(FakeDisplayList({somewhere, monitor})), DisplayContextSnapshot(true, 2, 0, 1));
    FakeDisplayList desktop({monitor});
    desktop.isLaptop = false;
    EXPECT_EQ(contextOf(desktop), DisplayContextSnapshot(true, 1, 0, 1, false));
}

TEST(SystemDisplayContextProvider, AListThatCannotBeReadOrIsEmptyIsUnavailable) {
    FakeDisplayList uncounted({panel});
    uncounted.countStatus = 1000;
    EXPECT_EQ(contextOf(uncounted), DisplayContextSnapshot::unavailable());
    EXPECT_TRUE(uncounted.capacities.empty());

    const FakeDisplayList empty;
    EXPECT_EQ(contextOf(empty), DisplayContextSnapshot::unavailable());
    EXPECT_TRUE(empty.capacities.empty());

    FakeDisplayList unlisted({panel});
    unlisted.listStatus = -1;
    EXPECT_EQ(contextOf(unlisted), DisplayContextSnapshot::unavailable());
}

TEST(SystemDisplayContextProvider, TheSecondAnswerHolds) {
    struct Case {
        std::uint32_t counted;
        std::vector<fakes::FakeDisplay> listed;
        DisplayContextSnapshot expected;
        std::vector<DisplayIdentifier> asked;
    };

    for (const auto& [counted, listed, expected, asked] : std::vector<Case>{
             {3, {panel, monitor}, {true, 2, 1, 1}, {1, 2}}, // one has gone
             {1, {monitor, panel}, {true, 1, 0, 1}, {2}},    // one has come: no room for it
             {2, {}, {true, 0, 0, 0}, {}},
         }) {
        FakeDisplayList list(listed);
        list.count = counted;
        EXPECT_EQ(contextOf(list), expected);
        EXPECT_EQ(list.capacities, std::vector{counted});
        EXPECT_EQ(list.askedForPlace, asked);
    }
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
