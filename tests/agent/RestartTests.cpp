#include "agent/Restart.h"

#include <gtest/gtest.h>

namespace cindertop::agent {
namespace {

using Words = std::vector<std::string>;

TEST(Restart, HelpsAfterAnUpgradeOfTheProgramAndOnce) {
    EXPECT_TRUE(Restart::isOfUse({.libraryBuild = "new", .isProgramReplaced = true, .triedFor = ""}));
    EXPECT_TRUE(Restart::isOfUse({.libraryBuild = "new", .isProgramReplaced = true, .triedFor = "old"}));
    EXPECT_FALSE(Restart::isOfUse({.libraryBuild = "new", .isProgramReplaced = true, .triedFor = "new"}));
    EXPECT_FALSE(Restart::isOfUse({.libraryBuild = "new", .isProgramReplaced = false, .triedFor = ""}))
        << "the same program would meet the same library";
}

TEST(Restart, KeepsTheWordsButThoseAboutWindows) {
    EXPECT_EQ(wordsToOpen(Opening::popover, Words{}), (Words{"--open", "popover"}));
    EXPECT_EQ(wordsToOpen(Opening::onboarding, Words{"--background", "--accept-terms"}),
              (Words{"--accept-terms", "--open", "onboarding"}));
    EXPECT_EQ(wordsToOpen(Opening::settings, Words{"--open", "popover", "--appearance", "dark"}),
              (Words{"--appearance", "dark", "--open", "settings"}));
}

TEST(Restart, IsNotPreparedWhileTheFileIsTheOneThatRuns) {
    Restart restart({});
    EXPECT_FALSE(restart.prepare(Opening::settings, "another build"));
    EXPECT_FALSE(restart.isPrepared());
}

} // namespace
} // namespace cindertop::agent
