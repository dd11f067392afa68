#include "agent/MemoryReturn.h"
#include "agent/Restart.h"
#include "agent/SessionPlace.h"
#include "scenario/machine/VirtualClock.h"

#include <gtest/gtest.h>

#include <map>

namespace cindertop::agent {
namespace {

using namespace std::chrono_literals;

TEST(MemoryReturn, ComesAfterTheStartAndThenNowAndAgain) {
    const Instant start{1000h};
    simulated::VirtualClock time(start);
    int returns = 0;
    const MemoryReturn memory(time, [&] { ++returns; });
    const auto returnsUntil = [&](std::chrono::seconds at) {
        time.advanceTo(start + at);
        while (time.runNextDue()) {
        }
        return returns;
    };
    EXPECT_EQ(returnsUntil(9s), 0);
    EXPECT_EQ(returnsUntil(10s), 1);
    EXPECT_EQ(returnsUntil(609s), 1);
    EXPECT_EQ(returnsUntil(610s), 2);
    EXPECT_EQ(returnsUntil(1210s), 3);
}

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

using Environment = std::map<std::string, std::string>;

SessionPlace placeIn(const Environment& environment, bool hasWindows = true) {
    return SessionPlace::of(
        [&environment](const char* name) {
            const auto found = environment.find(name);
            return found == environment.end() ? std::string() : found->second;
        },
        hasWindows);
}

TEST(SessionPlace, TellsOneScreenFromAnother) {
    const auto first = placeIn({{"DISPLAY", ":0"}, {"XDG_VTNR", "2"}});

    struct Case {
        SessionPlace second;
        bool isApart = false;
    };

    for (const auto& [second, isApart] : {
             Case{placeIn({{"DISPLAY", ":1"}, {"XDG_VTNR", "3"}}), true},
             Case{placeIn({{"WAYLAND_DISPLAY", "wayland-1"}, {"DISPLAY", ":0"}}), true},
             Case{placeIn({{"DISPLAY", ":0"}}),
                  false}, // started by a service manager, which knows no terminal
             Case{placeIn({{"DISPLAY", ":1"}}, false), false},
             Case{placeIn({}), false},
         }) {
        EXPECT_EQ(second.isApartFrom(first), isApart) << second.words();
        EXPECT_EQ(first.isApartFrom(second), isApart) << second.words();
    }
    EXPECT_EQ(first.words(), "display :0 on tty2");
    EXPECT_EQ(placeIn({{"WAYLAND_DISPLAY", "wayland-1"}, {"DISPLAY", ":0"}}).words(), "display wayland-1");
}

TEST(SessionPlace, ComesBackFromItsNoteAndFromNoOtherText) {
    for (const auto& place :
         {placeIn({{"DISPLAY", ":0"}, {"XDG_VTNR", "2"}}), placeIn({{"DISPLAY", ":0"}}), placeIn({})}) {
        EXPECT_EQ(SessionPlace::fromNote(place.note()), place);
        EXPECT_EQ(SessionPlace::fromNote(place.note().substr(1)), std::nullopt);
        EXPECT_EQ(SessionPlace::fromNote(place.note().substr(0, place.note().size() - 1)), std::nullopt);
    }
    EXPECT_EQ(SessionPlace::fromNote(""), std::nullopt) << "it has not been written yet";
}

} // namespace
} // namespace cindertop::agent
