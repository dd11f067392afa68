#include "cli/StoredCommands.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/TemporaryFolder.h"
#include "persistence/ThermalHistoryStore.h"
#include "support/DateText.h"
#include "support/FileSystem.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cindertop::cli {
namespace {

using nlohmann::json;

const Instant now = *parseUtcText("2025-03-05T10:00:10Z");

class Machine final : public SystemValues {
public:
    std::optional<std::string> text(std::string_view name) const override {
        return name == "hw.model" ? std::optional<std::string>("Mac14,2") : std::nullopt;
    }
};

class StoredCommandsTest : public testing::Test {
protected:
    fakes::TemporaryFolder folder;
    PosixFileSystem files;
    fakes::FakeUserDefaults defaults;
    Machine machine;
    int descriptor = ::open((folder / "output").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    Output output{descriptor};
    LocalizedComparison comparison{"en_GB"};
    StoredEnvironment environment{.files = files,
                                  .defaults = defaults,
                                  .systemValues = machine,
                                  .output = output,
                                  .terminal = [] { return TerminalTraits(); },
                                  .temperatures =
                                      TemperatureFormatter("en_GB", TemperatureFormatter::Unit::celsius),
                                  .comparison = comparison,
                                  .calendar = CalendarDays("UTC"),
                                  .now = now,
                                  .historyFile = folder / "history",
                                  .diagnosticFile = folder / "events",
                                  .deploymentFile = folder / "Info.plist",
                                  .circumstances = {"On", OperatingSystem::gnuLinux, "Debian 12", "x86_64"}};

    void TearDown() override { ::close(descriptor); } // NOLINT(readability-identifier-naming)

    void placeEvents() {
        std::filesystem::copy_file(std::filesystem::path(CINDERTOP_FIXTURES) /
                                       "persistence/diagnostics/good/two-events.json",
                                   folder / "events");
    }

    std::string printed() const { return fakes::textOf(folder / "output"); }
};

TEST_F(StoredCommandsTest, ShowTheHistoryAndLeaveTheFilesAlone) {
    ThermalHistoryStore store(environment.historyFile, Seconds(3600), Seconds(300), CalendarDays("UTC"),
                              files);
    store.record({now - std::chrono::seconds(5), ThermalLevel::fair, 30, {}, 51.5, "Browser", {}, {}});
    const auto before = fakes::textOf(folder / "history");
    defaults.stored["cindertop.history.duration-minutes"] = std::int64_t{5}; // loading would repair it
    ASSERT_TRUE(showHistory(environment, Format::text, true));
    EXPECT_TRUE(printed().starts_with("The last 15 minutes"));
    ASSERT_EQ(::ftruncate(descriptor, ::lseek(descriptor, 0, SEEK_SET)), 0);
    ASSERT_TRUE(showHistory(environment, Format::json, true));
    const auto history = json::parse(printed());
    EXPECT_EQ(history["samples"][0]["temperatureCelsius"], 51.5);
    EXPECT_EQ(history["todaySummary"]["topOffenderCounts"]["Browser"], 1);
    EXPECT_EQ(fakes::textOf(folder / "history"), before);
    EXPECT_TRUE(defaults.changes.empty());
}

TEST_F(StoredCommandsTest, ExportWhatTheAgentWouldExport) {
    placeEvents();
    fakes::writeText(folder / "Info.plist",
                     "<plist><dict><key>CFBundleShortVersionString</key><string>1.2</string>"
                     "<key>CFBundleVersion</key><integer>34</integer></dict></plist>");
    defaults.stored = {{"cindertop.settings.schema-version", std::int64_t{12}},
                       {"cindertop.menu-bar.info-mode", std::string("thermalStatus")},
                       {"cindertop.notifications.minimum-level", std::string("critical")},
                       {"cindertop.history.duration-minutes", std::int64_t{500}}};
    const auto before = fakes::textOf(folder / "events");
    ASSERT_TRUE(exportDiagnostics(environment, (folder / "export").string()));
    EXPECT_EQ(printed(), "Exported 2 events and the settings to " + (folder / "export").string() + "\n");
    const auto document = json::parse(fakes::textOf(folder / "export"));
    EXPECT_EQ(document["app"], json({{"version", "1.2"}, {"build", "dev"}})) << "a number is no text";
    EXPECT_EQ(document["system"],
              json({{"linux", "Debian 12"}, {"architecture", "x86_64"}, {"model", "Mac14,2"}}));
    EXPECT_EQ(document["settings"], json({{"menuBarInfoMode", "thermalStatus"},
                                          {"launchAtLoginStatus", "On"},
                                          {"showDockIcon", false},
                                          {"experimentalSensorsEnabled", true},
                                          {"notificationsEnabled", true},
                                          {"notificationMinimumLevel", "critical"},
                                          {"recommendationVerbosity", "concise"},
                                          {"showProcessOffenders", true},
                                          {"showContextInsights", true},
                                          {"historyEnabled", true},
                                          {"historyDurationMinutes", 180},
                                          {"diagnosticLogsEnabled", true}}));
    EXPECT_EQ(document["events"], json::parse(before));
    EXPECT_EQ(fakes::textOf(folder / "events"), before);
    ASSERT_EQ(defaults.changes.size(), 1U) << "the identifier and nothing else";
    EXPECT_EQ(defaults.stored.at("cindertop.diagnostics.support-id"),
              PropertyValue(document["supportID"].get<std::string>()));
}

TEST_F(StoredCommandsTest, ExportToTheOutputWithoutOldEvents) {
    placeEvents();
    environment.now = *parseUtcText("2025-03-12T10:00:02Z"); // between the two and seven days
    ASSERT_TRUE(exportDiagnostics(environment, "-"));
    const auto document = json::parse(printed());
    EXPECT_EQ(document["events"].size(), 1U);
    EXPECT_EQ(document["app"], json({{"version", "0.1.0"}, {"build", "dev"}}));
}

TEST_F(StoredCommandsTest, RefuseAnExportWithTheReason) {
    const auto refusal = [&](const std::filesystem::path& file) {
        const auto result = exportDiagnostics(environment, file.string());
        return result ? "" : result.error().substr(0, result.error().find(" \""));
    };
    const auto path = folder.path().string();
    EXPECT_EQ(refusal(folder.path()), '"' + path + "\" is a folder; name a file");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(refusal(folder / "pipe"), '"' + path + "/pipe\" is no regular file;");
    EXPECT_EQ(refusal(folder / "missing/file"), "cannot write");
    defaults.stored["cindertop.diagnostics.enabled"] = false;
    EXPECT_EQ(refusal(folder / "file"),
              "diagnostic logs are switched off in the settings, so nothing is recorded");
    EXPECT_FALSE(std::filesystem::exists(folder / "file"));
}

} // namespace
} // namespace cindertop::cli
