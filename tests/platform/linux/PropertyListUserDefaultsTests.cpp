#include "fakes/FaultyFileSystem.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/PropertyListUserDefaults.h"
#include "support/FileSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <system_error>
#include <vector>

namespace cindertop::linux_platform {
namespace {

using fakes::FaultyFileSystem;
using Call = FaultyFileSystem::Call;
using std::string_literals::operator""s;

class PropertyListUserDefaultsTest : public testing::Test {
protected:
    fakes::TemporaryFolder folder;
    std::filesystem::path file = folder / "Cindertop/preferences.plist";
    PosixFileSystem posix;
    FaultyFileSystem files{posix};

    void place(const std::filesystem::path& fixture) {
        std::filesystem::create_directories(file.parent_path());
        std::filesystem::copy_file(std::filesystem::path(CINDERTOP_FIXTURES) / "persistence/preferences" /
                                       fixture,
                                   file, std::filesystem::copy_options::overwrite_existing);
    }

    std::vector<std::filesystem::path> filesAside() const {
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::directory_iterator(file.parent_path())) {
            if (entry.path().filename().string().contains(".broken-20")) {
                found.push_back(entry.path());
            }
        }
        return found;
    }

    PropertyListValue::Dictionary stored() {
        return std::get<PropertyListValue::Dictionary>(parsePropertyList(fakes::textOf(file)).value().value);
    }
};

TEST_F(PropertyListUserDefaultsTest, KeepsTypedValues) {
    const std::map<std::string, PropertyValue> values{
        {"boolean", true}, {"integer", std::int64_t{-7}}, {"real", 1.5}, {"text", "a & b\n"s}};
    PropertyListUserDefaults first(file, files);
    EXPECT_EQ(first.value("boolean"), std::nullopt);
    for (const auto& [key, value] : values) {
        first.set(key, value);
    }
    first.set("gone", true);
    first.remove("gone");
    first.remove("never there");
    const PropertyListUserDefaults second(file, files);
    for (const auto& [key, value] : values) {
        EXPECT_EQ(first.value(key), value);
        EXPECT_EQ(second.value(key), value);
    }
    EXPECT_EQ(second.value("gone"), std::nullopt);
    EXPECT_EQ(stored().size(), 4U);
}

TEST_F(PropertyListUserDefaultsTest, RegistersWithoutStoring) {
    place("good/current.plist");
    PropertyListUserDefaults defaults(file, files);
    defaults.registerDefaults(
        {{"cindertop.app.show-dock-icon", false}, {"other", std::int64_t{1}}, {"somebody.else", 1.0}});
    EXPECT_EQ(defaults.value("cindertop.app.show-dock-icon"), PropertyValue(true));
    EXPECT_EQ(defaults.value("other"), PropertyValue(std::int64_t{1}));
    EXPECT_EQ(defaults.value("somebody.else"), std::nullopt) << "a dictionary is stored there";
    defaults.set("new", true);
    EXPECT_FALSE(stored().contains("other"));
    defaults.remove("cindertop.app.show-dock-icon");
    EXPECT_EQ(defaults.value("cindertop.app.show-dock-icon"), PropertyValue(false));
}

TEST_F(PropertyListUserDefaultsTest, KeepsForeignKeys) {
    place("good/current.plist");
    const auto before = stored();
    PropertyListUserDefaults defaults(file, files);
    PropertyListUserDefaults other(file, files);
    other.set("added.meanwhile", std::int64_t{5});
    defaults.set("cindertop.app.show-dock-icon", false);
    auto expected = before;
    expected["cindertop.app.show-dock-icon"] = {false};
    expected["added.meanwhile"] = {std::int64_t{5}};
    EXPECT_EQ(stored(), expected);
    EXPECT_EQ(defaults.value("added.meanwhile"), PropertyValue(std::int64_t{5}));
}

TEST_F(PropertyListUserDefaultsTest, WritesOnceSyncedAndOnlyWhenSomethingChanged) {
    PropertyListUserDefaults defaults(file, files);
    const std::vector<UserDefaultsChange> changes{
        {"a", true}, {"b", "x"s}, {"a", false}, {"c", std::nullopt}};
    defaults.apply(changes);
    EXPECT_EQ(defaults.value("a"), PropertyValue(false));
    EXPECT_EQ(std::ranges::count(files.calls, Call::rename), 1);
    EXPECT_EQ(std::ranges::count(files.calls, Call::sync), 1);
    defaults.apply(changes);
    EXPECT_EQ(std::ranges::count(files.calls, Call::rename), 1);
}

TEST_F(PropertyListUserDefaultsTest, PutsABrokenFileAside) {
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(CINDERTOP_FIXTURES) /
                                                                 "persistence/preferences/broken")) {
        place("broken" / entry.path().filename());
        PropertyListUserDefaults defaults(file, files);
        EXPECT_TRUE(defaults.takeProblem().value_or("").contains(file.string())) << entry.path();
        defaults.set("a", true);
        EXPECT_EQ(stored().at("a"), PropertyListValue{true}) << entry.path();
        const auto asides = filesAside();
        ASSERT_EQ(asides.size(), 1U) << entry.path();
        EXPECT_EQ(fakes::textOf(asides[0]), fakes::textOf(entry.path()));
        EXPECT_TRUE(defaults.takeProblem().value_or("").contains(asides[0].string())) << entry.path();
        EXPECT_EQ(defaults.takeProblem(), std::nullopt);
        std::filesystem::remove(asides[0]);
    }
}

TEST_F(PropertyListUserDefaultsTest, LosesOnlyTheEntryWithTheWrongTag) {
    std::filesystem::create_directories(file.parent_path());
    fakes::writeText(file, R"(<plist version="1.0"><dict>
        <key>cindertop.legal.accepted</key><true/>
        <key>cindertop.history.duration-minutes</key><integer>90</integr>
        <!-- <key>cindertop.notifications.enabled</key><true/> -->
        <key>cindertop.diagnostics.support-id</key> <string>A &amp; B</string>
        <key>cindertop.app.show-dock-icon</key></true>
        <key>list</key><array><string>x</string></array>
        <key>cindertop.history.enabled</key><false/></dict>)");
    PropertyListUserDefaults defaults(file, files);
    const auto known = [](const UserDefaults& of) {
        return std::array{
            of.value("cindertop.legal.accepted"),        of.value("cindertop.history.duration-minutes"),
            of.value("cindertop.notifications.enabled"), of.value("cindertop.diagnostics.support-id"),
            of.value("cindertop.app.show-dock-icon"),    of.value("cindertop.history.enabled")};
    };
    const std::array<std::optional<PropertyValue>, 6> expected{true, {}, {}, "A & B"s, {}, false};
    EXPECT_EQ(known(defaults), expected);
    EXPECT_TRUE(filesAside().empty()) << "a look changes nothing";
    defaults.set("a", true);
    EXPECT_EQ(known(PropertyListUserDefaults(file, files)), expected);
    EXPECT_TRUE(stored().contains("list"));
    fakes::writeText(file, "broken meanwhile");
    defaults.set("b", true);
    EXPECT_EQ(known(PropertyListUserDefaults(file, files)), expected) << "it knew them";
    files.fail(Call::rename, std::errc::permission_denied);
    fakes::writeText(file, "broken again");
    defaults.set("c", true);
    EXPECT_EQ(fakes::textOf(file), "broken again") << "it cannot be put aside, so it stays";
    EXPECT_TRUE(defaults.takeProblem().value_or("").contains("cannot be put aside"));
    defaults.set("d", true);
    EXPECT_EQ(defaults.takeProblem(), std::nullopt) << "it was said";
    files.repair();
    defaults.set("e", true);
    EXPECT_TRUE(stored().contains("c"));
    EXPECT_EQ(filesAside().size(), 3U) << "within a second, too, none replaces another";
}

TEST_F(PropertyListUserDefaultsTest, KeepsABrokenFileInItsPlaceUntilThereIsAnother) {
    std::filesystem::create_directories(file.parent_path());
    fakes::writeText(file, "broken");
    {
        PropertyListUserDefaults defaults(file, files);
        files.fail(Call::makeFolder, std::errc::no_space_on_device);
        defaults.set("a", true);
        EXPECT_EQ(fakes::textOf(file), "broken");
        defaults.set("b", true);
        EXPECT_EQ(filesAside().size(), 1U) << "one copy, however often it is tried";
        files.repair();
    }
    EXPECT_TRUE(stored().contains("a") && stored().contains("b"));
    EXPECT_EQ(filesAside().size(), 1U);
}

TEST_F(PropertyListUserDefaultsTest, NeverReplacesWhatItCannotRead) {
    using enum std::errc;
    for (const auto call : {Call::openForReading, Call::read}) {
        for (const auto error : {io_error, permission_denied, too_many_files_open}) {
            place("good/current.plist");
            const auto before = fakes::textOf(file);
            {
                files.fail(call, error);
                PropertyListUserDefaults defaults(file, files);
                EXPECT_EQ(defaults.value("cindertop.legal.accepted"), std::nullopt);
                EXPECT_TRUE(
                    defaults.takeProblem().value_or("").contains(std::make_error_code(error).message()));
                defaults.set("a", true);
                files.repair(); // what it read as empty it must not merge, either
                defaults.set("b", true);
                EXPECT_EQ(defaults.value("a"), PropertyValue(true)) << "for this run";
                EXPECT_FALSE(defaults.isStored());
            }
            EXPECT_EQ(fakes::textOf(file), before);
            PropertyListUserDefaults defaults(file, files);
            files.fail(call, error);
            defaults.set("c", true);
            EXPECT_EQ(fakes::textOf(file), before);
            EXPECT_TRUE(defaults.takeProblem().value_or("").contains(std::make_error_code(error).message()));
            files.repair();
            defaults.set("d", true);
            EXPECT_TRUE(defaults.isStored());
            EXPECT_TRUE(stored().contains("c") && stored().contains("cindertop.legal.accepted"));
        }
    }
}

TEST_F(PropertyListUserDefaultsTest, RemembersWhatItCannotWrite) {
    place("good/current.plist");
    const auto before = stored();
    PropertyListUserDefaults defaults(file, files);
    for (const Call call :
         {Call::makeFolder, Call::openForReplacing, Call::write, Call::sync, Call::rename}) {
        files.fail(call, std::errc::read_only_file_system);
        defaults.set("a", true);
        defaults.remove("cindertop.legal.accepted");
        EXPECT_EQ(defaults.value("a"), PropertyValue(true));
        EXPECT_EQ(defaults.value("cindertop.legal.accepted"), std::nullopt);
        EXPECT_EQ(stored(), before);
        files.repair();
    }
    defaults.set("b", true);
    EXPECT_TRUE(stored().contains("a"));
    EXPECT_FALSE(stored().contains("cindertop.legal.accepted"));
}

TEST_F(PropertyListUserDefaultsTest, TriesOnceMoreAtItsEnd) {
    {
        PropertyListUserDefaults defaults(file, files);
        files.fail(Call::write, std::errc::no_space_on_device);
        defaults.set("a", true);
        files.repair();
    }
    EXPECT_TRUE(stored().contains("a"));
}

TEST_F(PropertyListUserDefaultsTest, DropsWhatNoFileCanHold) {
    PropertyListUserDefaults defaults(file, files);
    defaults.set("number", std::numeric_limits<double>::infinity());
    defaults.set("key\x01", true);
    defaults.set("text", "a\x01\r\n"s);
    EXPECT_EQ(stored(), (PropertyListValue::Dictionary{{"text", {"a\n"s}}}));
}

} // namespace
} // namespace cindertop::linux_platform
