#include "cpu/SystemProcessCPUProvider.h"
#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeProcessTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using testing::ElementsAre;

constexpr Instant now{1'000'000s};
constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

class SystemProcessCPUProviderTest : public testing::Test {
protected:
    std::vector<std::int32_t> identifiers() {
        std::vector<std::int32_t> found;
        for (const ProcessCPUReading& reading : provider.readings(now)) {
            found.push_back(reading.processIdentifier);
        }
        return found;
    }

    fakes::FakeProcessTable table;
    fakes::FakeApplicationCatalog catalog;
    SystemProcessCPUProvider provider{table, catalog};
};

TEST_F(SystemProcessCPUProviderTest, FillsEveryField) {
    auto& process = table.add(40, "A long process name", "A long");
    process.accounting->parentProcessIdentifier = -7;
    process.accounting->realUserIdentifier = 4'000'000'000;
    process.accounting->startSeconds = 1'000;
    process.accounting->startMicroseconds = 250'000;
    process.accounting->totalUserTime = 30;
    process.accounting->totalSystemTime = 12;
    process.path = "/Applications/Foo.app/Contents/MacOS/Foo";
    catalog.bundles["/Applications/Foo.app"] = {.identifier = "org.example.Foo",
                                                .texts = {{"CFBundleDisplayName", "Foo!"}}};
    const ProcessCPUReading expected{.processIdentifier = 40,
                                     .parentProcessIdentifier = -7,
                                     .userIdentifier = 4'000'000'000,
                                     .name = "A long process name",
                                     .executablePath = "/Applications/Foo.app/Contents/MacOS/Foo",
                                     .appBundlePath = "/Applications/Foo.app",
                                     .appBundleIdentifier = "org.example.Foo",
                                     .appDisplayName = "Foo!",
                                     .isSystemProcess = false,
                                     .cumulativeCPUTimeNanoseconds = 42,
                                     .startedAt = Instant{1'000'250ms},
                                     .measuredAt = now};
    EXPECT_THAT(provider.readings(now), ElementsAre(expected));
}

TEST_F(SystemProcessCPUProviderTest, KeepsTheListingOrderAndSkipsWhatCannotBeRead) {
    for (const std::int32_t identifier : {30, 0, -1, 10, 20}) {
        table.add(identifier, "process");
    }
    table.processes[3].accounting.reset(); // ended since it was listed
    EXPECT_THAT(identifiers(), ElementsAre(30, 20));
}

TEST_F(SystemProcessCPUProviderTest, FindsNothingWhereTheListingFails) {
    table.add(1, "process");
    table.add(2, "process");

    struct Case {
        std::optional<int> count;
        std::optional<int> written;
        std::size_t readings;
    };

    for (const auto& [count, written, readings] : std::to_array<Case>({
             {0, std::nullopt, 0},
             {-1, std::nullopt, 0},
             {std::nullopt, 0, 0},
             {std::nullopt, -1, 0},
             {std::nullopt, 1, 1},
             {1, std::nullopt, 1},  // one more started meanwhile
             {10, std::nullopt, 2}, // some ended meanwhile
             {10, 4, 2},            // slots that were never filled
             {2, 1000, 2},          // more than there was room for
         })) {
        table.count = count;
        table.written = written;
        EXPECT_EQ(provider.readings(now).size(), readings) << count.value_or(2) << ' ' << written.value_or(2);
    }
}

TEST_F(SystemProcessCPUProviderTest, DecodesNames) {
    struct Case {
        std::string longName;
        std::string shortName;
        std::string_view name; ///< empty: the process is left out
    };

    for (const auto& [longName, shortName, name] : std::to_array<Case>({
             {"long", "short", "long"},
             {"", "short", "short"},
             {"\x01\x7f\n", "short", "short"},
             {"", "", ""},
             {"\t", "\x1b", ""},
             {"\ninner\tcontrol\r", "", "inner\tcontrol"},
             {"before\0after"s, "", "before"},
             {"\0hidden"s, "short", "short"},
             {"\u200bzero width\u200b", "", "zero width"}, // a format character
             {" blank ", "", " blank "},
             {std::string(32, 'x'), "", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"},
             {"", std::string(16, 'y'), "yyyyyyyyyyyyyyyy"},
             {"bad\xff\xfename", "", "bad\ufffd\ufffdname"},
             {std::string(31, 'x') + "\u00e9", "", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\ufffd"}, // cut inside é
             {"M\u00fcller", "", "M\u00fcller"},
         })) {
        table.processes.clear();
        table.add(7, longName, shortName);
        const auto readings = provider.readings(now);
        EXPECT_EQ(readings.empty() ? "" : readings.front().name, name) << longName;
    }
}

TEST_F(SystemProcessCPUProviderTest, TellsSystemProcessesAndStarts) {
    struct Case {
        std::uint32_t flags;
        std::uint32_t user;
        bool isSystem;
    };

    for (const auto& [flags, user, isSystem] : std::to_array<Case>(
             {{0, 501, false}, {1, 501, true}, {0, 0, true}, {2, 501, false}, {3, 501, true}})) {
        table.processes.clear();
        auto& accounting = *table.add(7, "process").accounting;
        accounting.flags = flags;
        accounting.realUserIdentifier = user;
        EXPECT_EQ(provider.readings(now).front().isSystemProcess, isSystem) << flags << ' ' << user;
    }
    for (const auto& [seconds, microseconds, start] :
         {std::tuple{0UL, 5UL, std::optional<Instant>{}}, std::tuple{1UL, 0UL, std::optional(Instant{1s})},
          std::tuple{largest, largest, std::optional<Instant>{}},
          std::tuple{9'223'372'036UL, 854'775UL, std::optional(Instant{9'223'372'036'854'775us})}}) {
        table.processes.front().accounting->startSeconds = seconds;
        table.processes.front().accounting->startMicroseconds = microseconds;
        EXPECT_EQ(provider.readings(now).front().startedAt, start) << seconds;
    }
}

TEST_F(SystemProcessCPUProviderTest, ConvertsClockUnitsWithoutWrapping) {
    struct Case {
        std::uint64_t user;
        std::uint64_t system;
        ClockUnit unit;
        std::uint64_t nanoseconds;
    };

    for (const auto& [user, system, unit, nanoseconds] : std::to_array<Case>({
             {24, 24, {125, 3}, 2000},
             {1, 1, {1, 3}, 0}, // multiplied first, then divided, downwards
             {5, 5, {1, 3}, 3},
             {6, 4, {7, 0}, 10},                           // no denominator: as they are
             {largest, 1, {1, 2}, std::uint64_t{1} << 63}, // the sum alone needs 65 bits
             {largest / 2, 0, {4'000'000'000, 4'000'000'000}, largest / 2},
             {largest, largest, {1, 1}, largest},
             {largest, 0, {125, 3}, largest},
             {largest, largest, {1, 0}, largest},
         })) {
        table.processes.clear();
        auto& accounting = *table.add(7, "process").accounting;
        accounting.totalUserTime = user;
        accounting.totalSystemTime = system;
        table.unit = unit;
        SystemProcessCPUProvider fresh(table, catalog);
        EXPECT_EQ(fresh.readings(now).front().cumulativeCPUTimeNanoseconds, nanoseconds)
            << user << ' ' << system;
    }
}

TEST_F(SystemProcessCPUProviderTest, AsksForTheClockUnitOnce) {
    table.add(1, "one");
    table.add(2, "two");
    provider.readings(now);
    provider.readings(now);
    EXPECT_EQ(table.unitQuestions, 1);
}

TEST_F(SystemProcessCPUProviderTest, DecodesPaths) {
    struct Case {
        std::optional<std::string> path;
        std::optional<std::string> expected;
    };

    for (const auto& [path, expected] : std::to_array<Case>({
             {std::nullopt, std::nullopt},
             {"", ""},
             {"\0/bin/sh"s, ""},
             {"/bin/sh\0 (deleted)"s, "/bin/sh"},
             {"/opt/\xff/x", "/opt/\ufffd/x"},
         })) {
        table.processes.clear();
        table.add(7, "process").path = path;
        EXPECT_EQ(provider.readings(now).front().executablePath, expected);
    }
}

TEST_F(SystemProcessCPUProviderTest, AsksTheSystemForTheApplicationWhereThePathTellsNone) {
    const ProcessApplication editor{"/usr/share/applications/editor.desktop", "editor.desktop", "Editor"};
    for (const auto& path : {std::optional<std::string>(), std::optional("/usr/bin/editor"s),
                             std::optional("/opt/Unlisted.app/bin/editor"s)}) {
        table.processes.clear();
        table.add(7, "editor").path = path;
        EXPECT_EQ(provider.readings(now).front().appBundlePath, std::nullopt);
        catalog.applications[7] = editor;
        const ProcessCPUReading reading = provider.readings(now).front();
        EXPECT_EQ(reading.appBundlePath, editor.bundlePath);
        EXPECT_EQ(reading.appBundleIdentifier, editor.bundleIdentifier);
        EXPECT_EQ(reading.appDisplayName, editor.displayName);
        catalog.applications.clear();
    }
    table.processes.front().path = "/opt/Listed.app/bin/editor";
    catalog.bundles["/opt/Listed.app"] = {};
    catalog.applications[7] = editor;
    const ProcessCPUReading reading = provider.readings(now).front();
    EXPECT_EQ(reading.appBundlePath, "/opt/Listed.app"); // the bundle wins, also without an identifier
    EXPECT_EQ(reading.appBundleIdentifier, std::nullopt);
}

TEST_F(SystemProcessCPUProviderTest, ReadsAgainOnlyWhatMayHaveChanged) {
    auto& process = table.add(7, "before");
    process.accounting->identityStamp = 5;
    process.accounting->totalUserTime = 100;
    const ProcessCPUReading first = provider.readings(now).front();
    EXPECT_EQ(table.pathQuestions, 1);

    table.processes.front().accounting->totalUserTime = 150;
    ProcessCPUReading expected = first;
    expected.cumulativeCPUTimeNanoseconds = 150;
    expected.measuredAt = now + 1s;
    EXPECT_THAT(provider.readings(now + 1s), ElementsAre(expected));
    EXPECT_EQ(table.pathQuestions, 1);

    table.processes.clear();
    table.add(7, "after").accounting->identityStamp = 6; // an exec
    EXPECT_EQ(provider.readings(now).front().name, "after");
    EXPECT_EQ(table.pathQuestions, 2);

    for (const std::string_view name : {"one", "two"}) { // no stamp, nothing to rely on
        table.processes.clear();
        table.add(7, name);
        EXPECT_EQ(provider.readings(now).front().name, name);
    }
}

TEST_F(SystemProcessCPUProviderTest, ForgetsProcessesThatAreGone) {
    table.add(7, "before").accounting->identityStamp = 5;
    table.add(8, "other").accounting->identityStamp = 5;
    provider.readings(now);
    const auto first = table.processes.front();
    table.processes.erase(table.processes.begin());
    EXPECT_THAT(identifiers(), ElementsAre(8));
    table.processes.push_back(first);
    table.pathQuestions = 0;
    EXPECT_THAT(identifiers(), ElementsAre(8, 7));
    EXPECT_EQ(table.pathQuestions, 1);

    table.count = 0;
    provider.readings(now);
    table.count.reset();
    provider.readings(now);
    EXPECT_EQ(table.pathQuestions, 3);
}

TEST_F(SystemProcessCPUProviderTest, ANamelessProcessIsLookedAtAgain) {
    table.add(7, "").accounting->identityStamp = 5;
    EXPECT_THAT(identifiers(), ElementsAre());
    EXPECT_THAT(identifiers(), ElementsAre());
    table.processes.clear();
    table.add(7, "named").accounting->identityStamp = 5;
    EXPECT_THAT(identifiers(), ElementsAre(7));
}

TEST(EnclosingApplication, IsTheOutermostApplicationFolder) {
    struct Case {
        std::string_view path;
        std::optional<std::string> folder;
    };

    for (const auto& [path, folder] : std::to_array<Case>({
             {"/Applications/Foo.app/Contents/Frameworks/Foo Helper.app/Contents/MacOS/Foo Helper",
              "/Applications/Foo.app"},
             {"/Applications/Foo.APP/x", "/Applications/Foo.APP"},
             {"//Applications/./../Foo.app//x", "/Applications/Foo.app"},
             {"Foo.app", "Foo.app"},
             {"./a/Foo.app/", "a/Foo.app"},
             {"/.app/x", "/.app"},
             {"/", std::nullopt},
             {"", std::nullopt},
             {"/usr/bin/application", std::nullopt},
             {"/opt/Foo.apple/x", std::nullopt},
             {"/opt/app/x", std::nullopt},
         })) {
        EXPECT_EQ(outermostApplicationFolder(path), folder) << path;
    }
}

TEST(EnclosingApplication, TakesItsNameFromTheFirstTextThatThereIs) {
    struct Case {
        std::string_view folder;
        std::map<std::string, std::string, std::less<>> texts;
        std::string_view name;
    };

    for (const auto& [folder, texts, name] : std::to_array<Case>({
             {"/a/Bar.app", {{"CFBundleDisplayName", "Display"}, {"CFBundleName", "Name"}}, "Display"},
             {"/a/Bar.app", {{"CFBundleDisplayName", ""}, {"CFBundleName", "Name"}}, ""},
             {"/a/Bar.app", {{"CFBundleName", "Name"}}, "Name"},
             {"/a/Bar.app", {}, "Bar"},
             {"/a/Bar 2.0.APP", {}, "Bar 2.0"},
             {"/a/.app", {}, ".app"},
             {"Bar.app", {}, "Bar"},
         })) {
        fakes::FakeApplicationCatalog catalog;
        catalog.bundles[std::string(folder)] = {.identifier = std::nullopt, .texts = texts};
        const auto application = enclosingApplication(std::string(folder) + "/x", catalog);
        ASSERT_TRUE(application) << folder;
        EXPECT_EQ(application->displayName, name);
        EXPECT_EQ(application->bundlePath, folder);
    }
}

} // namespace
} // namespace cindertop
