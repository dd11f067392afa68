#include "FakeProgram.h"
#include "support/AtomicFile.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <tuple>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

TEST(AppStateCommands, TellsWhetherItStartsAtLogin) {
    using enum LoginItemStatus;
    for (const auto& [status, isEnabled, description] : {
             std::tuple{notRegistered, false, "Off"},
             std::tuple{enabled, true, "On"},
             std::tuple{requiresApproval, false, "Needs approval"},
             std::tuple{notFound, false, "Unavailable"},
             std::tuple{unknown, false, "Unknown"},
         }) {
        FakeProgram program;
        program.loginItem.answer = status;
        program.start();
        EXPECT_EQ(*program.published().launchAtLoginEnabled, isEnabled) << description;
        EXPECT_EQ(*program.published().launchAtLoginStatusDescription, description);
        EXPECT_EQ(*program.published().launchAtLoginFeedback, std::nullopt);
    }
}

TEST(AppStateCommands, StartsAtLoginOrSaysWhyNot) {
    FakeProgram program;
    auto& state = program.start();
    const auto& published = program.published();
    state.setLaunchAtLogin(true);
    EXPECT_TRUE(*published.launchAtLoginEnabled);
    EXPECT_EQ(*published.launchAtLoginFeedback, "Launch at Login enabled");
    EXPECT_EQ(program.events.back().message, "Launch at Login enabled");
    EXPECT_EQ(program.events.back().category, DiagnosticLogCategory::settings);

    program.loginItem.error = {.code = std::make_error_code(std::errc::permission_denied),
                               .message = "The folder is not yours."};
    state.setLaunchAtLogin(false);
    EXPECT_TRUE(*published.launchAtLoginEnabled);
    EXPECT_EQ(*published.launchAtLoginFeedback, "The folder is not yours.");
    EXPECT_EQ(program.events.back().message, "Launch at Login update failed");
    EXPECT_EQ(program.events.back().level, DiagnosticLogLevel::error);
    EXPECT_TRUE(program.events.back().metadata.contains("error"));

    program.loginItem.error.reset();
    state.setLaunchAtLogin(false);
    EXPECT_FALSE(*published.launchAtLoginEnabled);
    EXPECT_EQ(*published.launchAtLoginFeedback, "Launch at Login disabled");
}

ProcessOffender application(std::optional<std::string> identifier, std::optional<std::string> path) {
    return ProcessOffender({.id = "bundle:org.example.lumen",
                            .displayName = "Lumen",
                            .bundleIdentifier = std::move(identifier),
                            .appBundlePath = std::move(path),
                            .canTerminateApplication = true});
}

const RunningApplication lumen{.processIdentifier = 12,
                               .bundleIdentifier = "org.example.lumen",
                               .bundlePath = "/Applications/Lumen.app"};

TEST(AppStateCommands, RefusesToQuitWhatIsNotThere) {
    FakeProgram program;
    const RunningApplication self{.processIdentifier = program.machine.process.identifier,
                                  .bundleIdentifier = "org.example.self",
                                  .bundlePath = std::nullopt};
    program.runningApplications.running = {lumen, self};
    auto& state = program.start();
    const auto logged = program.events.size();
    auto protectedOne = application("org.example.lumen", std::nullopt);
    protectedOne.canTerminateApplication = false;
    for (const auto& offender : {protectedOne, application(std::nullopt, std::nullopt),
                                 application("org.example.gone", "/Applications/Gone.app"),
                                 application("org.example.self", std::nullopt)}) {
        EXPECT_FALSE(state.quitOffenderApplication(offender, false));
        EXPECT_FALSE(state.quitOffenderApplication(offender, true));
    }
    EXPECT_TRUE(program.runningApplications.requests.empty());
    EXPECT_EQ(program.events.size(), logged);
}

TEST(AppStateCommands, QuitsAnApplicationAndSaysSo) {
    struct Case {
        ProcessOffender offender;
        bool force;
        bool accepts;
        std::string_view request;
        std::string_view message;
        std::string_view bundle;
    };

    for (const auto& [offender, force, accepts, request, message, bundle] : {
             Case{application("org.example.lumen", std::nullopt), false, true, "terminate 12",
                  "Quit requested for offender app", "org.example.lumen"},
             Case{application("org.example.old", "/Applications/Lumen.app"), true, true, "force 12",
                  "Force quit requested for offender app", "org.example.old"},
             Case{application(std::nullopt, "/Applications/Lumen.app"), false, false, "terminate 12",
                  "Quit requested for offender app", "unknown"},
         }) {
        FakeProgram program;
        program.runningApplications.running = {lumen};
        program.runningApplications.accepts = accepts;
        auto& state = program.start();
        program.pass(3s); // the next census is 1.5 s after the one at 2 s, which collects
        EXPECT_EQ(state.quitOffenderApplication(offender, force), accepts);
        EXPECT_EQ(program.runningApplications.requests, (std::vector{std::string(request)}));
        const auto& event = program.events.back();
        EXPECT_EQ(event.message, message);
        EXPECT_EQ(event.level, accepts ? DiagnosticLogLevel::info : DiagnosticLogLevel::warning);
        EXPECT_EQ(event.category, DiagnosticLogCategory::thermal);
        EXPECT_EQ(event.metadata, (DiagnosticMetadata{{"name", "Lumen"},
                                                      {"bundle", std::string(bundle)},
                                                      {"success", accepts ? "true" : "false"}}));
        program.pass(1s);
        EXPECT_EQ(program.published().processOffenderSnapshot->measuredAt, program.clock.now());
    }
}

TEST(AppStateCommands, MarksAnExportForAWhile) {
    FakeProgram program;
    auto& state = program.start();
    const auto& succeeded = program.published().diagnosticExportSucceeded;
    state.exportDiagnosticLogs();
    ASSERT_EQ(program.desktop.panels.size(), 1U);
    EXPECT_EQ(program.desktop.panels[0],
              (SavePanel{.title = "Export Diagnostic Logs",
                         .proposedFileName = "cindertop-diagnostics-2023-11-14.json",
                         .fileNameExtension = "json"}));
    program.desktop.answer(std::nullopt);
    EXPECT_FALSE(*succeeded);

    // The settings in force: a stored record would hold neither of these.
    state.set(&AppSettingsFields::menuBarInfoMode, MenuBarInfoMode::thermalScore);
    state.set(&AppSettingsFields::showProcessOffenders, false);
    state.exportDiagnosticLogs();
    program.desktop.answer("/export.json");
    const auto settings =
        nlohmann::json::parse(wholeFile(program.files, "/export.json", 1'000'000).value())["settings"];
    EXPECT_EQ(settings["menuBarInfoMode"], "thermalScore");
    EXPECT_EQ(settings["showProcessOffenders"], false);
    EXPECT_TRUE(*succeeded);
    program.pass(2s);
    ASSERT_TRUE(state.exportDiagnosticLogs("/export.json")); // from now on anew
    program.pass(2499ms);
    EXPECT_TRUE(*succeeded);
    program.pass(1ms);
    EXPECT_FALSE(*succeeded);

    ASSERT_TRUE(state.exportDiagnosticLogs("/export.json"));
    state.set(&AppSettingsFields::diagnosticLogsEnabled, false);
    EXPECT_FALSE(*succeeded);
    state.exportDiagnosticLogs();
    EXPECT_EQ(program.desktop.panels.size(), 2U); // nothing to export
}

TEST(AppStateCommands, LogsAnExportThatFails) {
    FakeProgram program;
    auto& state = program.start();
    EXPECT_FALSE(state.exportDiagnosticLogs("/no/such/folder/export.json"));
    EXPECT_FALSE(*program.published().diagnosticExportSucceeded);
    EXPECT_EQ(program.events.back().message, "Diagnostic logs export failed");
    EXPECT_EQ(program.events.back().level, DiagnosticLogLevel::error);
    EXPECT_TRUE(program.events.back().metadata.contains("error"));
}

TEST(AppStateCommands, TellsWhereAnExportIsOnceItIs) {
    struct Case {
        SaveChoice choice;
        std::string sentence; ///< how it begins
        bool isSaved;
    };

    for (const auto& [choice, sentence, isSaved] : std::vector<Case>{
             {{.place = "/asked.json"}, "", true},
             {{.place = "/free.json", .isChosenByUser = false},
              "This desktop has no save panel. The file is /free.json.",
              true},
             {{.place = "/no/such.json", .isChosenByUser = false},
              "/no/such.json cannot be written: ",
              false},
             {{.place = "/no/such.json"}, "/no/such.json cannot be written: ", false},
             {{.place = {}, .problem = "It is elsewhere."}, "It is elsewhere.", false},
             {{}, "", false},
         }) {
        FakeProgram program;
        program.start().exportDiagnosticLogs();
        program.desktop.answerWith(choice);
        EXPECT_EQ(*program.published().diagnosticExportSucceeded, isSaved) << sentence;
        EXPECT_EQ(program.desktop.sentences.size(), sentence.empty() ? 0U : 1U);
        EXPECT_TRUE(sentence.empty() || program.desktop.sentences.at(0).starts_with(sentence));
    }
}

class FakeUpdateService final : public UpdateService {
public:
    bool configured = true;
    int checks = 0;

    bool isConfigured() const override { return configured; }

    void checkForUpdates() override { ++checks; }
};

TEST(AppStateCommands, LooksForUpdatesWhereverTheyAre) {
    for (const bool isConfigured : {true, false}) {
        FakeProgram program;
        FakeUpdateService updates;
        updates.configured = isConfigured;
        program.updates = &updates;
        program.start().checkForUpdates();
        EXPECT_EQ(updates.checks, isConfigured ? 1 : 0);
        EXPECT_EQ(program.desktop.activations, isConfigured ? 1 : 0);
        EXPECT_EQ(program.desktop.pages, isConfigured
                                             ? std::vector<std::string>{}
                                             : std::vector<std::string>{"https://example.org/releases"});
        EXPECT_EQ(program.events.back().message,
                  isConfigured ? "Manual update check started"
                               : "Update check opened releases page because Sparkle is not configured");
    }
}

} // namespace
} // namespace cindertop
