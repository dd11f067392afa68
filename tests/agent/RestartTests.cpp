#include "agent/Restart.h"

#include <gtest/gtest.h>

namespace cindertop::agent {
namespace {

using WordList = std::vector<std::string>;

TEST(Restart, HelpsAfterAnUpgradeOfTheProgramAndOnce) {
    EXPECT_TRUE(Restart::isOfUse({.libraryBuild = "new", .isProgramReplaced = true, .triedFor = ""}));
    EXPECT_TRUE(Restart::isOfUse({.libraryBuild = "new", .isProgramReplaced = true, .triedFor = "old"}));
    EXPECT_FALSE(Restart::isOfUse({.libraryBuild = "new", .isProgramReplaced = true, .triedFor = "new"}));
    EXPECT_FALSE(Restart::isOfUse({.libraryBuild = "new", .isProgramReplaced = false, .triedFor = ""}))
        << "the same program would meet the same library";
}

TEST(Restart, KeepsTheWordsButThoseAboutWindows) {
    EXPECT_EQ(wordsToOpen(Opening::popover, WordList{}), (WordList{"--open", "popover"}));
    EXPECT_EQ(wordsToOpen(Opening::onboarding, WordList{"--background", "--accept-terms"}),
              (WordList{"--accept-terms", "--open", "onboarding"}));
    EXPECT_EQ(wordsToOpen(Opening::settings, WordList{"--open", "popover", "--appearance", "dark"}),
              (WordList{"--appearance", "dark", "--open", "settings"}));
}

TEST(Restart, IsNotPreparedWhileTheFileIsTheOneThatRuns) {
    Restart restart({});
    EXPECT_FALSE(restart.prepare(Opening::settings, "another build"));
    EXPECT_FALSE(restart.isPrepared());
}

} // namespace
} // namespace cindertop::agent
