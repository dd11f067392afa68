#include "HistoryCrash.h"
#include "fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace cindertop {
namespace {

TEST(HistoryCrash, LeavesTheOldOrTheNewFile) {
    const fakes::TemporaryFolder folder;
    const auto report = tests::killRecorders(folder / "thermal-history.plist", 25, 1);
    EXPECT_EQ(report.problem, "");
    EXPECT_EQ(report.kills, 25);
    EXPECT_LE(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2)
        << "leftovers do not pile up";
}

} // namespace
} // namespace cindertop
