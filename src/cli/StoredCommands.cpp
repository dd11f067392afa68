#include "cli/StoredCommands.h"

#include "cli/HistoryPage.h"
#include "persistence/AppSettingsStore.h"
#include "persistence/DiagnosticBuffer.h"
#include "persistence/DiagnosticLogExport.h"
#include "persistence/ThermalHistoryStore.h"
#include "persistence/UnstoredUserDefaults.h"
#include "persistence/Uuid.h"
#include "report/Json.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace cindertop::cli {

AppSettings storedSettings(const UserDefaults& defaults, const AppSettings& standard) {
    UnstoredUserDefaults copy(defaults);
    return AppSettingsStore(copy, standard).load();
}

namespace {

/// The file that stands for the output.
constexpr std::string_view output = "-";

/// The settings as the agent would have them; what it would repair stays as it is stored.
AppSettings settingsOf(const StoredEnvironment& environment) {
    return storedSettings(environment.defaults, defaultSettings(environment.circumstances.operatingSystem));
}

ThermalMonitoringSnapshot storedHistory(const StoredEnvironment& environment) {
    ThermalHistoryStore store(environment.historyFile, std::chrono::hours(1), std::chrono::minutes(5),
                              environment.calendar, environment.files);
    return store.snapshot(environment.now);
}

/// When the file was replaced; none without one.
std::optional<Instant> timeOfWriting(const std::filesystem::path& file) {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(file, error);
    return error ? std::nullopt
                 : std::optional(Instant(std::chrono::file_clock::to_sys(time).time_since_epoch()));
}

/// The user's own word is echoed to a terminal, so control characters are made visible.
std::string quoted(const std::string& file) {
    return "\"" + shown(file, Charset::unicode) + "\"";
}

/// What stands at a path and must not be replaced by a file.
ExportResult checkDestination(const std::string& file) {
    if (file == output) {
        return {};
    }
    std::error_code ignored;
    const auto status = std::filesystem::status(file, ignored);
    if (std::filesystem::is_directory(status)) {
        return std::unexpected(quoted(file) + " is a folder; name a file");
    }
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return std::unexpected(quoted(file) + " is no regular file; \"-\" writes to the output");
    }
    return {};
}

ExportResult writeToOutput(const StoredEnvironment& environment, const DiagnosticLogExport& document) {
    const auto text = document.text();
    if (!text) {
        return std::unexpected(make_error_code(DiagnosticLogExportError::unavailable).message());
    }
    const auto written = environment.output.write(*text);
    if (!written && !written.error().isReaderGone()) {
        return std::unexpected("cannot write the output: " + written.error().message());
    }
    return {};
}

ExportResult writeToFile(const StoredEnvironment& environment, const DiagnosticLogExport& document,
                         const std::string& file) {
    if (const auto written = document.writeTo(environment.files, file); !written) {
        return std::unexpected("cannot write " + quoted(file) + ": " + written.error().message());
    }
    const auto count = document.events.size();
    const auto charset = environment.terminal().format.charset;
    // Whether this line arrives changes nothing about the export.
    [[maybe_unused]] const auto ignored =
        environment.output.write("Exported " + std::to_string(count) + (count == 1 ? " event" : " events") +
                                 " and the settings to " + shown(file, charset) + "\n");
    return {};
}

} // namespace

WriteResult showHistory(const StoredEnvironment& environment, Format format, bool isJustSaved) {
    const auto snapshot = storedHistory(environment);
    const auto traits = environment.terminal();
    if (format == Format::json) {
        const auto json = encodeJson(snapshot);
        return environment.output.write((traits.isTerminal ? indentedText(json) : compactText(json)) + '\n');
    }
    const auto settings = settingsOf(environment);
    const HistoryPageContext context{.isHistoryEnabled = settings->historyEnabled,
                                     .window = shownHistory(settings->historyDurationMinutes),
                                     .comparison = environment.comparison,
                                     .writtenAt =
                                         isJustSaved ? std::nullopt : timeOfWriting(environment.historyFile)};
    const PageStyle style{.format = traits.format,
                          .temperatures = environment.temperatures.in(settings->temperatureUnit),
                          .system = environment.circumstances.operatingSystem};
    return environment.output.write(encoded(historyPage(snapshot, context, style), traits.format));
}

ExportResult exportDiagnostics(const StoredEnvironment& environment, const std::string& file) {
    const auto settings = settingsOf(environment);
    if (!settings->diagnosticLogsEnabled) {
        return std::unexpected("diagnostic logs are switched off in the settings, so nothing is recorded");
    }
    if (auto checked = checkDestination(file); !checked) {
        return checked;
    }
    auto buffer = DiagnosticBuffer::read(environment.files, environment.diagnosticFile);
    buffer.keepRecent(environment.now);
    const DeploymentFile deployment(environment.files, environment.deploymentFile);
    const auto context =
        diagnosticExportContext(*settings, environment.circumstances, environment.systemValues, deployment);
    const DiagnosticLogExport document{environment.now, supportIdentifier(environment.defaults), context,
                                       buffer.events()};
    return file == output ? writeToOutput(environment, document) : writeToFile(environment, document, file);
}

} // namespace cindertop::cli
