#include "Fixtures.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeUnifiedLog.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FaultyFileSystem.h"
#include "persistence/DiagnosticEventCodec.h"
#include "persistence/DiagnosticLogService.h"
#include "support/DateText.h"
#include "support/FileSystem.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <vector>

namespace cindertop {
namespace {

using fakes::FaultyFileSystem;
using Line = fakes::FakeUnifiedLog::Line;
using enum DiagnosticLogLevel;
using enum DiagnosticLogCategory;
using std::chrono::days;
using std::chrono::seconds;

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    while (times-- > 0) {
        result += text;
    }
    return result;
}

class DiagnosticLogServiceTest : public testing::Test {
protected:
    DiagnosticLogServiceTest() { clock.time = *parseUtcText("2025-03-05T18:30:00Z"); }

    fakes::TemporaryFolder folder;
    std::filesystem::path file = folder / "Cindertop/diagnostic-events.json";
    PosixFileSystem posix;
    FaultyFileSystem files{posix};
    fakes::FakeUserDefaults defaults;
    fakes::FakeUnifiedLog unifiedLog;
    fakes::FakeClock clock;
    DiagnosticLogService service = made("Asia/Kolkata");

    DiagnosticLogService made(const char* zone) {
        return {file, {defaults, files, unifiedLog, clock, CalendarDays(zone)}};
    }

    void place(std::string_view text) {
        std::filesystem::create_directories(file.parent_path());
        fakes::writeText(file, text);
    }

    std::vector<std::string> messages() const {
        std::vector<std::string> texts;
        std::ranges::transform(service.events(), std::back_inserter(texts), &DiagnosticLogEvent::message);
        return texts;
    }

    /// What the file holds; timestamps are whole seconds there.
    DiagnosticBuffer::Events eventsInFile() const {
        const auto events = decodeDiagnosticEvents(fakes::textOf(file));
        EXPECT_TRUE(events);
        return events.value_or(DiagnosticBuffer::Events{});
    }
};

TEST_F(DiagnosticLogServiceTest, StartsEnabledAndSwitches) {
    EXPECT_TRUE(service.isEnabled());
    EXPECT_FALSE(service.isConfigured());
    service.configure(true);
    EXPECT_TRUE(service.isConfigured());
    EXPECT_EQ(messages(), std::vector<std::string>{"Diagnostic logs enabled"});
    EXPECT_EQ(unifiedLog.lines, (std::vector<Line>{{UnifiedLogLevel::info, "app.cindertop.Cindertop", "app",
                                                    "Diagnostic logs enabled"}}));
    service.configure(false);
    EXPECT_FALSE(std::filesystem::exists(file));
    files.calls.clear();
    service.log(error, app, "dropped");
    EXPECT_TRUE(service.events().empty());
    EXPECT_TRUE(files.calls.empty());
    EXPECT_EQ(unifiedLog.lines.size(), 1U);
    service.configure(false); // nothing to delete
    service.configure(true);
    EXPECT_EQ(messages(), std::vector<std::string>{"Diagnostic logs enabled"});
}

TEST_F(DiagnosticLogServiceTest, RecordsAnEventEverywhere) {
    service.configure(true);
    std::vector<std::string> observed;
    service.observe([&](const DiagnosticLogEvent& event) { observed.push_back(event.message); });
    clock.advance(std::chrono::milliseconds(1900));
    service.log(warning, thermal, "Level changed",
                {{"deviceName", "x"},
                 {"apiToken", "x"},
                 {"Password", "x"},
                 {"monkey", "x"},
                 {"CLIENT_SECRET", "x"},
                 {"kind", "a \"b\"\n\\\r"},
                 {"level", "3"}});
    const DiagnosticLogEvent& event = service.events().back();
    EXPECT_EQ(event.timestamp, clock.time);
    EXPECT_EQ(event.level, warning);
    EXPECT_EQ(event.category, thermal);
    EXPECT_EQ(event.metadata, (DiagnosticMetadata{{"kind", "a \"b\"\n\\\r"}, {"level", "3"}}));
    EXPECT_NE(event.id, service.events().front().id);
    EXPECT_EQ(observed, std::vector<std::string>{"Level changed"});
    EXPECT_EQ(unifiedLog.lines.back(),
              (Line{UnifiedLogLevel::error, "app.cindertop.Cindertop", "thermal",
                    "Level changed [\"kind\": \"a \\\"b\\\"\\n\\\\\\r\", \"level\": \"3\"]"}));
    auto expected = event;
    expected.timestamp = *parseUtcText("2025-03-05T18:30:01Z");
    EXPECT_EQ(eventsInFile().back(), expected);
    const std::array levels{std::pair{debug, UnifiedLogLevel::debug}, std::pair{info, UnifiedLogLevel::info},
                            std::pair{error, UnifiedLogLevel::error}};
    for (const auto& [level, unified] : levels) {
        service.log(level, updates, "x");
        EXPECT_EQ(unifiedLog.lines.back().level, unified);
    }
}

TEST_F(DiagnosticLogServiceTest, CutsLongTexts) {
    struct Case {
        std::string given, message, value;
    };

    for (const auto& [given, message, value] : {
             Case{repeated("x", 160), repeated("x", 160), repeated("x", 160)},
             {repeated("x", 161), repeated("x", 161), repeated("x", 160) + "..."},
             {repeated("é", 420), repeated("é", 420), repeated("é", 160) + "..."},
             {repeated("e\u0301", 421), repeated("e\u0301", 420) + "...", repeated("e\u0301", 160) + "..."},
             {"\xFF!", "\uFFFD!", "\uFFFD!"},
         }) {
        service.log(info, settings, given, {{"value", given}});
        EXPECT_EQ(service.events().back().message, message);
        EXPECT_EQ(service.events().back().metadata.at("value"), value);
        EXPECT_TRUE(unifiedLog.lines.back().text.starts_with(message + " ["));
    }
    EXPECT_EQ(eventsInFile().size(), 5U);
}

TEST_F(DiagnosticLogServiceTest, KeepsSevenDays) {
    place(tests::fixture("diagnostics/good/two-events.json")); // 10:00:00 and 10:00:05
    clock.time = *parseUtcText("2025-03-12T10:00:00Z");
    service.configure(true);
    EXPECT_EQ(service.events().size(), 3U);
    clock.advance(std::chrono::nanoseconds(1));
    service.log(info, app, "later");
    EXPECT_EQ(messages().front(), "Monitoring stopped");
    clock.time -= days(30); // the clock goes back: events of the future stay, in their place
    service.log(info, app, "earlier");
    clock.time += days(30);
    service.log(info, app, "latest");
    EXPECT_EQ(eventsInFile().size(), 4U);
}

TEST_F(DiagnosticLogServiceTest, ReadsWhatItCanAndElseStartsEmpty) {
    for (const std::string& name : tests::fixturesIn("diagnostics/good")) {
        place(tests::fixture("diagnostics/good/" + name));
        service.configure(true);
        const auto count = eventsInFile().size();
        EXPECT_EQ(count, name == "two-events.json" ? 3U : name == "no-events.json" ? 1U : 2U) << name;
        EXPECT_EQ(service.events().size(), count);
    }
    for (const std::string& name : tests::fixturesIn("diagnostics/broken")) {
        place(tests::fixture("diagnostics/broken/" + name));
        service.configure(true);
        EXPECT_EQ(messages(), std::vector<std::string>{"Diagnostic logs enabled"}) << name;
        EXPECT_EQ(eventsInFile().size(), 1U) << name;
    }
    place(std::string(9UZ * 1024 * 1024, ' '));
    service.configure(true);
    EXPECT_EQ(eventsInFile().size(), 1U);
}

TEST_F(DiagnosticLogServiceTest, TellsTheSystemsLogWhenItCannotWrite) {
    service.configure(true);
    const std::string before = fakes::textOf(file);
    files.fail(FaultyFileSystem::Call::write, std::errc::no_space_on_device);
    service.log(info, thermal, "kept in memory");
    EXPECT_EQ(service.events().size(), 2U) << "and no event about it";
    EXPECT_EQ(unifiedLog.lines.back(), (Line{UnifiedLogLevel::error, "app.cindertop.Cindertop", "app",
                                             "Diagnostic buffer persistence failed"}));
    EXPECT_EQ(fakes::textOf(file), before);
    files.repair();
    service.log(info, thermal, "next");
    EXPECT_EQ(eventsInFile().size(), 3U);
    for (const int failures : {1, 2}) { // once each time it begins to fail, however many events there are
        files.fail(FaultyFileSystem::Call::write, std::errc::no_space_on_device);
        for (int event = 0; event < 5; ++event) {
            service.log(info, thermal, "more");
        }
        files.repair();
        service.log(info, thermal, "written");
        EXPECT_EQ(std::ranges::count(unifiedLog.lines, "Diagnostic buffer persistence failed", &Line::text),
                  1 + failures);
    }
}

TEST_F(DiagnosticLogServiceTest, HoldsEventsThatComeTooFastForTheFile) {
    std::chrono::nanoseconds time{0};
    DiagnosticLogService held(file, {.defaults = defaults,
                                     .files = files,
                                     .unifiedLog = unifiedLog,
                                     .clock = clock,
                                     .calendar = CalendarDays("UTC"),
                                     .writingClock = [&time] { return time; }});
    held.configure(true);
    held.log(info, thermal, "one");
    EXPECT_EQ(eventsInFile().size(), 2U) << "at once at rest";
    std::uintmax_t bytes = 0;
    const auto storm = std::chrono::minutes(20);
    const auto begin = time;
    for (auto lastSize = std::filesystem::file_size(file); time - begin < storm;
         time += std::chrono::milliseconds(200)) {
        files.calls.clear();
        held.log(info, thermal, "Thermal level changed");
        lastSize = std::filesystem::file_size(file);
        bytes +=
            static_cast<std::uintmax_t>(std::ranges::count(files.calls, FaultyFileSystem::Call::rename)) *
            lastSize;
    }
    EXPECT_LT(bytes, 1'000'000 + 720'000 + std::filesystem::file_size(file)) << "saved, earned, overdrawn";
    EXPECT_LT(eventsInFile().size(), held.events().size());
    time += storm;
    held.saveWhenDue();
    EXPECT_EQ(eventsInFile().size(), held.events().size());
    held.configure(false);
    held.save();
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(DiagnosticLogServiceTest, WritesSortedIndentedJson) {
    place(tests::fixture("diagnostics/good/two-events.json"));
    service.configure(true);
    const auto json = nlohmann::json::parse(fakes::textOf(file));
    EXPECT_EQ(fakes::textOf(file), json.dump(2) + "\n");
    EXPECT_EQ(json.at(0), nlohmann::json::parse(tests::fixture("diagnostics/good/two-events.json")).at(0));
    EXPECT_EQ(json.at(2).at("timestamp"), "2025-03-05T18:30:00Z");
}

TEST_F(DiagnosticLogServiceTest, ExportsEverythingItKnows) {
    service.configure(true);
    const auto destination = folder / "export.json";
    const DiagnosticExportContext context{
        .appVersion = "1.2", .appBuild = "34", .settings = {.showDockIcon = true}};
    ASSERT_TRUE(service.exportLogs(context, destination));
    const auto text = fakes::textOf(destination);
    const auto json = nlohmann::json::parse(text);
    EXPECT_EQ(text, json.dump(2) + "\n");
    EXPECT_EQ(json["schemaVersion"], 1);
    EXPECT_EQ(json["exportedAt"], "2025-03-05T18:30:00Z");
    EXPECT_EQ(json["supportID"], service.supportID());
    EXPECT_EQ(json["app"]["build"], "34");
    EXPECT_EQ(json["settings"]["showDockIcon"], true);
    EXPECT_EQ(json["events"].size(), 1U) << "the export is logged behind it";
    EXPECT_EQ(messages(), (std::vector<std::string>{"Diagnostic logs enabled", "Diagnostic logs exported"}));
    EXPECT_EQ(service.events().back().category, settings);
}

TEST_F(DiagnosticLogServiceTest, SaysWhyAnExportFailed) {
    service.configure(true);
    const auto destination = folder / "export.json";
    files.fail(FaultyFileSystem::Call::sync, std::errc::no_space_on_device);
    const auto noSpace = service.exportLogs({}, destination);
    ASSERT_FALSE(noSpace);
    EXPECT_EQ(noSpace.error(), std::errc::no_space_on_device);
    EXPECT_EQ(DiagnosticLogService::errorSummary(noSpace.error()), "system#28");
    EXPECT_FALSE(std::filesystem::exists(destination));
    EXPECT_EQ(messages(), std::vector<std::string>{"Diagnostic logs enabled"});
    files.repair();
    EXPECT_EQ(service.exportLogs({.model = "\xFF"}, destination).error(),
              DiagnosticLogExportError::unavailable);
    service.configure(false);
    const auto disabled = service.exportLogs({}, destination);
    EXPECT_EQ(disabled.error(), DiagnosticLogExportError::disabled);
    EXPECT_EQ(DiagnosticLogService::errorSummary(disabled.error()), "DiagnosticLogExportError#1");
    EXPECT_EQ(disabled.error().message(), "diagnostic logging is off");
}

TEST_F(DiagnosticLogServiceTest, NamesTheExportByTheUsersDay) {
    const Instant night = *parseUtcText("2025-03-05T18:30:00Z");
    EXPECT_EQ(made("UTC").exportFileName(night), "cindertop-diagnostics-2025-03-05.json");
    EXPECT_EQ(service.exportFileName(night), "cindertop-diagnostics-2025-03-06.json");
}

TEST_F(DiagnosticLogServiceTest, KeepsItsSupportIdentifier) {
    const std::string identifier = service.supportID();
    EXPECT_EQ(Uuid::parse(identifier)->text(), identifier);
    service.configure(true);
    service.configure(false);
    EXPECT_EQ(made("UTC").supportID(), identifier);
    for (const PropertyValue& foreign : {PropertyValue(true), PropertyValue(std::string("me"))}) {
        defaults.stored["cindertop.diagnostics.support-id"] = foreign;
        EXPECT_TRUE(Uuid::parse(service.supportID()));
        EXPECT_EQ(defaults.stored["cindertop.diagnostics.support-id"], PropertyValue(service.supportID()));
    }
}

std::size_t fileSizeOf(const DiagnosticBuffer& buffer) {
    std::size_t bytes = 0;
    for (const auto piece : buffer.fileText()) {
        bytes += piece.size();
    }
    return bytes;
}

TEST(DiagnosticBuffer, KeepsFiveMebibytes) {
    DiagnosticBuffer buffer;
    const auto append = [&buffer](std::size_t length) {
        buffer.append({Uuid::random(), unixEpoch, info, app, std::string(length, 'x'), {}});
    };
    append(0);
    const auto first = fileSizeOf(buffer);
    append(0);
    const auto bytesBesideText = fileSizeOf(buffer) - first;
    append(5UZ * 1024 * 1024 - fileSizeOf(buffer) - bytesBesideText);
    buffer.keepRecent(unixEpoch);
    EXPECT_EQ(buffer.events().size(), 3U) << fileSizeOf(buffer);
    append(1);
    buffer.keepRecent(unixEpoch);
    EXPECT_EQ(buffer.events().size(), 2U) << fileSizeOf(buffer); // the new one is longer than the oldest
}

TEST(DiagnosticBuffer, DropsTheOldestUntilItFits) {
    DiagnosticBuffer buffer;
    std::vector<std::size_t> sizes;
    const auto size = [&buffer] { return fileSizeOf(buffer); };
    for (int number = 0; number < 40; ++number) {
        buffer.append(
            {Uuid::random(), unixEpoch + seconds(number), info, app, std::to_string(number * number), {}});
        sizes.push_back(size());
    }
    buffer.shrinkTo(sizes.back());
    EXPECT_EQ(buffer.events().size(), 40U);
    buffer.shrinkTo(sizes.back() - 1);
    EXPECT_EQ(buffer.events().size(), 39U);
    for (std::size_t limit = size(); !buffer.events().empty(); limit -= std::min<std::size_t>(limit, 97)) {
        buffer.shrinkTo(limit);
        std::string text;
        for (const auto piece : buffer.fileText()) {
            text += piece;
        }
        ASSERT_TRUE(text.size() <= limit || buffer.events().empty());
        ASSERT_EQ(decodeDiagnosticEvents(text), buffer.events());
    }
    EXPECT_TRUE(buffer.events().empty());
}

} // namespace
} // namespace cindertop
