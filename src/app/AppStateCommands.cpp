#include "app/AppState.h"
#include "app/DiagnosticContext.h"
#include "support/Wording.h"

#include <chrono>
#include <string>

namespace cindertop {

namespace {

using namespace std::chrono_literals;

constexpr auto exportSuccessIsShownFor = 2500ms;
constexpr const char* exportTitle = "Export Diagnostic Logs";

constexpr Wording loginItemEnabled{"Launch at Login enabled", "Start at Login enabled"};
constexpr Wording loginItemDisabled{"Launch at Login disabled", "Start at Login disabled"};

struct LoginItemWords {
    bool isEnabled;
    std::string_view description;
};

LoginItemWords wordsFor(LoginItemStatus status) {
    switch (status) {
    case LoginItemStatus::notRegistered:
        return {.isEnabled = false, .description = "Off"};
    case LoginItemStatus::enabled:
        return {.isEnabled = true, .description = "On"};
    case LoginItemStatus::requiresApproval:
        return {.isEnabled = false, .description = "Needs approval"};
    case LoginItemStatus::notFound:
        return {.isEnabled = false, .description = "Unavailable"};
    case LoginItemStatus::unknown:
        break;
    }
    return {.isEnabled = false, .description = "Unknown"};
}

std::optional<RunningApplication> runningApplicationOf(const ProcessOffender& offender,
                                                       const RunningApplications& applications) {
    std::optional<RunningApplication> found;
    if (offender.bundleIdentifier) {
        found = applications.findByBundleIdentifier(*offender.bundleIdentifier);
    }
    if (!found && offender.appBundlePath) {
        found = applications.findByBundlePath(*offender.appBundlePath);
    }
    return found;
}

} // namespace

void AppState::refreshLaunchAtLoginStatus() {
    const auto words = wordsFor(environment_.loginItem.status());
    published_.launchAtLoginEnabled.set(words.isEnabled);
    published_.launchAtLoginStatusDescription.set(std::string(words.description));
}

void AppState::setLaunchAtLogin(bool enabled) {
    auto& item = environment_.loginItem;
    const auto result = enabled ? item.registerItem() : item.unregisterItem();
    if (result) {
        const Wording& feedback = enabled ? loginItemEnabled : loginItemDisabled;
        published_.launchAtLoginFeedback.set(std::string(feedback.in(environment_.machine.operatingSystem)));
        log(DiagnosticLogLevel::info, DiagnosticLogCategory::settings,
            enabled ? "Launch at Login enabled" : "Launch at Login disabled");
    } else {
        published_.launchAtLoginFeedback.set(result.error().message);
        log(DiagnosticLogLevel::error, DiagnosticLogCategory::settings, "Launch at Login update failed",
            {{"error", DiagnosticLogService::errorSummary(result.error().code)}});
    }
    refreshLaunchAtLoginStatus();
}

bool AppState::quitOffenderApplication(const ProcessOffender& offender, bool force) {
    if (!offender.canTerminateApplication) {
        return false;
    }
    auto& applications = environment_.runningApplications;
    const auto application = runningApplicationOf(offender, applications);
    if (!application || application->processIdentifier == ownProcessIdentifier_) {
        return false;
    }
    const bool isAccepted =
        force ? applications.forceTerminate(*application) : applications.terminate(*application);
    log(isAccepted ? DiagnosticLogLevel::info : DiagnosticLogLevel::warning, DiagnosticLogCategory::thermal,
        force ? "Force quit requested for offender app" : "Quit requested for offender app",
        {{"name", offender.displayName},
         {"bundle", offender.bundleIdentifier.value_or("unknown")},
         {"success", isAccepted ? "true" : "false"}});
    nextProcessOffenderSampleDate_ = {};
    return isAccepted;
}

void AppState::exportDiagnosticLogs() {
    if (!published_.settings->diagnosticLogsEnabled || environment_.desktop == nullptr) {
        return;
    }
    const SavePanel panel{.title = exportTitle,
                          .proposedFileName =
                              diagnosticLogService_.exportFileName(environment_.machine.clock.now()),
                          .fileNameExtension = "json"};
    environment_.desktop->chooseSaveLocation(panel,
                                             [this, life = std::weak_ptr(life_)](const SaveChoice& choice) {
                                                 if (!life.expired()) {
                                                     exportTo(choice);
                                                 }
                                             });
}

void AppState::exportTo(const SaveChoice& choice) {
    auto& desktop = *environment_.desktop;
    if (!choice.problem.empty()) {
        desktop.tell(exportTitle, choice.problem);
    }
    if (!choice.place) {
        return;
    }
    const auto place = choice.place->string();
    if (const auto result = exportDiagnosticLogs(*choice.place); !result) {
        desktop.tell(exportTitle, place + " cannot be written: " + result.error().message() + ".");
    } else if (!choice.isChosenByUser) {
        desktop.tell(exportTitle, "This desktop has no save panel. The file is " + place + ".");
    }
}

void AppState::reportPreferencesProblem(const std::string& sentence) {
    log(DiagnosticLogLevel::error, DiagnosticLogCategory::settings, "Stored preferences could not be read");
    if (environment_.desktop != nullptr) {
        environment_.desktop->tell("Preferences", sentence);
    }
}

std::expected<void, std::error_code>
AppState::exportDiagnosticLogs(const std::filesystem::path& destination) {
    const ProgramCircumstances circumstances{.launchAtLoginStatus =
                                                 *published_.launchAtLoginStatusDescription,
                                             .operatingSystem = environment_.machine.operatingSystem,
                                             .operatingSystemVersion = environment_.operatingSystemVersion,
                                             .architecture = environment_.architecture};
    const auto context = diagnosticExportContext(*published_.settings, circumstances,
                                                 environment_.systemValues, environment_.deployment);
    auto result = diagnosticLogService_.exportLogs(context, destination);
    if (result) {
        showExportSuccess(destination);
    } else {
        log(DiagnosticLogLevel::error, DiagnosticLogCategory::settings, "Diagnostic logs export failed",
            {{"error", DiagnosticLogService::errorSummary(result.error())}});
    }
    return result;
}

void AppState::showExportSuccess(const std::filesystem::path& destination) {
    published_.diagnosticExportPath.set(destination.string());
    published_.diagnosticExportSucceeded.set(true);
    diagnosticExportStatusTask_ = environment_.timers.start(exportSuccessIsShownFor, [this] {
        published_.diagnosticExportSucceeded.set(false);
        diagnosticExportStatusTask_.reset();
    });
}

bool AppState::offersUpdateCheck() const {
    const auto* const updates = environment_.updates;
    return environment_.machine.operatingSystem == OperatingSystem::mac ||
           (updates != nullptr && updates->isConfigured());
}

void AppState::checkForUpdates() {
    auto* const updates = environment_.updates;
    if (updates != nullptr && updates->isConfigured()) {
        log(DiagnosticLogLevel::info, DiagnosticLogCategory::updates, "Manual update check started");
        if (environment_.desktop != nullptr) {
            environment_.desktop->activate();
        }
        updates->checkForUpdates();
        return;
    }
    log(DiagnosticLogLevel::warning, DiagnosticLogCategory::updates,
        "Update check opened releases page because Sparkle is not configured");
    if (environment_.desktop != nullptr) {
        environment_.desktop->openPage(environment_.releasesPage);
    }
}

} // namespace cindertop
