#include "persistence/DiagnosticLogService.h"

#include "persistence/DiagnosticEventCodec.h"
#include "persistence/DiagnosticSanitizers.h"
#include "support/AtomicFile.h"
#include "support/UserFolders.h"

#include <chrono>
#include <optional>
#include <tuple>
#include <utility>

namespace cindertop {
namespace {

constexpr std::chrono::seconds longestAge(604'800); // seven days
constexpr std::size_t largestFile = 5'242'880;
constexpr std::string_view supportIdentifierKey = "cindertop.diagnostics.support-id";

UnifiedLogLevel unifiedLevel(DiagnosticLogLevel level) {
    switch (level) {
    case DiagnosticLogLevel::debug:
        return UnifiedLogLevel::debug;
    case DiagnosticLogLevel::info:
        return UnifiedLogLevel::info;
    case DiagnosticLogLevel::warning:
    case DiagnosticLogLevel::error:
        break;
    }
    return UnifiedLogLevel::error;
}

} // namespace

std::filesystem::path DiagnosticLogService::defaultFile() {
    return UserFolders::ofUser().programData() / "diagnostic-events.json";
}

DiagnosticLogService::DiagnosticLogService(std::filesystem::path file, Environment environment)
    : file_(std::move(file)), environment_(std::move(environment)) {}

void DiagnosticLogService::configure(bool isEnabled) {
    isEnabled_ = isEnabled;
    isConfigured_ = true;
    if (!isEnabled) {
        buffer_ = {};
        std::ignore = removeFile(environment_.files, file_);
        return;
    }
    load();
    persist();
    log(DiagnosticLogLevel::info, DiagnosticLogCategory::app, "Diagnostic logs enabled");
}

void DiagnosticLogService::load() {
    const auto text = wholeFile(environment_.files, file_, diagnosticFileSizeLimit);
    auto events = text ? decodeDiagnosticEvents(*text) : std::nullopt;
    buffer_ = events ? DiagnosticBuffer(*std::move(events)) : DiagnosticBuffer();
}

void DiagnosticLogService::log(DiagnosticLogLevel level, DiagnosticLogCategory category,
                               std::string_view message, const DiagnosticMetadata& metadata) {
    if (!isEnabled_) {
        return;
    }
    DiagnosticLogEvent event{.id = Uuid::random(),
                             .timestamp = environment_.clock.now(),
                             .level = level,
                             .category = category,
                             .message = truncatedMessage(message),
                             .metadata = sanitizedMetadata(metadata)};
    const std::string line =
        event.metadata.empty() ? event.message : event.message + ' ' + metadataText(event.metadata);
    writeUnifiedLog(level, category, line);
    if (observer_) {
        observer_(event);
    }
    buffer_.append(std::move(event));
    persist();
}

void DiagnosticLogService::persist() {
    buffer_.dropBefore(environment_.clock.now() - longestAge);
    buffer_.shrinkTo(largestFile);
    if (!writeBuffer()) {
        writeUnifiedLog(DiagnosticLogLevel::error, DiagnosticLogCategory::app,
                        "Diagnostic buffer persistence failed");
    }
}

bool DiagnosticLogService::writeBuffer() {
    // Not synced: events come while the user works, and each write would stop the main thread for the disk.
    return makeFolders(environment_.files, file_.parent_path()) &&
           replaceFile(environment_.files, file_, buffer_.fileText(), Durability::relaxed);
}

void DiagnosticLogService::writeUnifiedLog(DiagnosticLogLevel level, DiagnosticLogCategory category,
                                           std::string_view text) {
    environment_.unifiedLog.write(unifiedLevel(level), unifiedLogSubsystem, rawValue(category), text);
}

std::expected<void, std::error_code>
DiagnosticLogService::exportLogs(const DiagnosticExportContext& context,
                                 const std::filesystem::path& destination) {
    if (!isEnabled_) {
        return std::unexpected(make_error_code(DiagnosticLogExportError::disabled));
    }
    const auto text =
        DiagnosticLogExport{environment_.clock.now(), supportID(), context, buffer_.events()}.text();
    if (!text) {
        return std::unexpected(make_error_code(DiagnosticLogExportError::unavailable));
    }
    if (const auto written = replaceFile(environment_.files, destination, *text, Durability::synced);
        !written) {
        return std::unexpected(std::error_code(static_cast<int>(written.error()), std::system_category()));
    }
    log(DiagnosticLogLevel::info, DiagnosticLogCategory::settings, "Diagnostic logs exported");
    return {};
}

std::string DiagnosticLogService::exportFileName(Instant instant) const {
    return "cindertop-diagnostics-" + environment_.calendar.identifier(instant) + ".json";
}

std::string DiagnosticLogService::supportID() {
    const auto stored = environment_.defaults.value(supportIdentifierKey);
    const auto* const text = stored ? std::get_if<std::string>(&*stored) : nullptr;
    if (text != nullptr && Uuid::parse(*text)) {
        return *text;
    }
    std::string made = Uuid::random().text();
    environment_.defaults.set(supportIdentifierKey, made);
    return made;
}

std::string DiagnosticLogService::errorSummary(const std::error_code& error) {
    return error.category().name() + ('#' + std::to_string(error.value()));
}

void DiagnosticLogService::observe(std::function<void(const DiagnosticLogEvent&)> observer) {
    observer_ = std::move(observer);
}

} // namespace cindertop
