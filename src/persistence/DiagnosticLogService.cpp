#include "persistence/DiagnosticLogService.h"

#include "persistence/DiagnosticLogEvent.h"
#include "persistence/Uuid.h"
#include "support/AtomicFile.h"
#include "support/UserFolders.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace cindertop {

namespace {

constexpr double bytesASecond = 600;
constexpr double most = 1'000'000; ///< accumulated while idle

} // namespace

WriteAllowance::WriteAllowance(MonotonicClock clock) : clock_(std::move(clock)), bytes_(most) {
    if (clock_) {
        latest_ = clock_();
    }
}

bool WriteAllowance::permits() {
    if (!clock_) {
        return true;
    }
    const auto now = clock_();
    const std::chrono::duration<double> passed = now - std::exchange(latest_, now);
    bytes_ = std::min(bytes_ + passed.count() * bytesASecond, most);
    return bytes_ > 0;
}

void WriteAllowance::spend(std::size_t bytes) {
    bytes_ -= static_cast<double>(bytes);
}

namespace {

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
    : file_(std::move(file)), environment_(std::move(environment)), allowance_(environment_.writingClock) {}

void DiagnosticLogService::configure(bool isEnabled) {
    isEnabled_ = isEnabled;
    isConfigured_ = true;
    if (!isEnabled) {
        buffer_ = {};
        isWritten_ = true;
        std::ignore = removeFile(environment_.files, file_);
        return;
    }
    buffer_ = DiagnosticBuffer::read(environment_.files, file_);
    persist();
    log(DiagnosticLogLevel::info, DiagnosticLogCategory::app, "Diagnostic logs enabled");
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
    buffer_.keepRecent(environment_.clock.now());
    isWritten_ = false;
    saveWhenDue();
}

void DiagnosticLogService::saveWhenDue() {
    if (!isWritten_ && allowance_.permits()) {
        save();
    }
}

void DiagnosticLogService::save() {
    if (isWritten_) {
        return;
    }
    isWritten_ = writeBuffer();
    const bool couldWrite = std::exchange(canWrite_, isWritten_);
    if (couldWrite && !canWrite_) { // else every event would repeat it
        writeUnifiedLog(DiagnosticLogLevel::error, DiagnosticLogCategory::app,
                        "Diagnostic buffer persistence failed");
    }
}

bool DiagnosticLogService::writeBuffer() {
    const auto text = buffer_.fileText();
    for (const auto piece : text) {
        allowance_.spend(piece.size());
    }
    // Not synced: events come while the user works, and a sync would block the main thread on the disk.
    return makeFolders(environment_.files, file_.parent_path()) &&
           replaceFile(environment_.files, file_, text, Durability::relaxed);
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
    const DiagnosticLogExport document{environment_.clock.now(), supportID(), context, buffer_.events()};
    if (auto written = document.writeTo(environment_.files, destination); !written) {
        return written;
    }
    log(DiagnosticLogLevel::info, DiagnosticLogCategory::settings, "Diagnostic logs exported");
    return {};
}

std::string DiagnosticLogService::exportFileName(Instant instant) const {
    return "cindertop-diagnostics-" + environment_.calendar.identifier(instant) + ".json";
}

std::string DiagnosticLogService::supportID() {
    return supportIdentifier(environment_.defaults);
}

std::string DiagnosticLogService::errorSummary(const std::error_code& error) {
    return error.category().name() + ('#' + std::to_string(error.value()));
}

void DiagnosticLogService::observe(std::function<void(const DiagnosticLogEvent&)> observer) {
    observer_ = std::move(observer);
}

} // namespace cindertop
