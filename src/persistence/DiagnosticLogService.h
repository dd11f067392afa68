#pragma once

#include "persistence/DiagnosticBuffer.h"
#include "persistence/DiagnosticLogEvent.h"
#include "persistence/DiagnosticLogExport.h"
#include "platform/Clock.h"
#include "platform/UnifiedLog.h"
#include "platform/UserDefaults.h"
#include "support/DateText.h"
#include "support/FileSystem.h"

#include <chrono>
#include <cstddef>
#include <expected>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace cindertop {

/// Limits how much is written: occasional writes at once, continuous ones to 2 MB an hour. Without a clock
/// there is no limit.
class WriteAllowance {
public:
    explicit WriteAllowance(MonotonicClock clock);

    /// Whether the next write may begin. One write may overdraw the allowance, which then delays the next.
    bool permits();
    void spend(std::size_t bytes);

private:
    MonotonicClock clock_;
    std::chrono::nanoseconds latest_{0};
    double bytes_;
};

/// Records what the application does, with the user's consent: in a file of at most 5 MiB and seven days, and
/// in the system's log. Main thread only; files are read and written in the call. Events that come too fast
/// for a file that is written as a whole are held for a while.
class DiagnosticLogService {
public:
    /// What the service works with; all of it outlives the service.
    struct Environment {
        UserDefaults& defaults;
        FileSystem& files;
        UnifiedLog& unifiedLog;
        const Clock& clock;
        CalendarDays calendar;
        MonotonicClock writingClock{}; ///< none: each event is written as it is logged
    };

    /// `diagnostic-events.json` in the user's data folder.
    static std::filesystem::path defaultFile();

    /// Enabled, with an empty buffer; reads nothing.
    DiagnosticLogService(std::filesystem::path file, Environment environment);

    /// Switches the log on, with the events that the file holds, or off, which removes them and the file.
    /// Call it before anything is logged: an event logged earlier replaces the file.
    void configure(bool isEnabled);

    /// Records an event unless the log is off. Long texts are cut, sensitive metadata is dropped.
    void log(DiagnosticLogLevel level, DiagnosticLogCategory category, std::string_view message,
             const DiagnosticMetadata& metadata = {});

    /// Writes what is held, if it is due; at the end of the program at once.
    void saveWhenDue();
    void save();

    /// Writes everything that is recorded and the context into a file of the user's choice; a
    /// DiagnosticLogExportError or what the file system says.
    std::expected<void, std::error_code> exportLogs(const DiagnosticExportContext& context,
                                                    const std::filesystem::path& destination);

    /// "cindertop-diagnostics-2025-03-05.json", by the day in the user's time zone.
    std::string exportFileName(Instant instant) const;

    /// Created at the first call, constant from then on.
    std::string supportID();

    /// The kind of an error and its number, "system#13": nothing about the user.
    static std::string errorSummary(const std::error_code& error);

    /// Calls `observer` for each event that is recorded from now on.
    void observe(std::function<void(const DiagnosticLogEvent&)> observer);

    const DiagnosticBuffer::Events& events() const { return buffer_.events(); }

    bool isEnabled() const { return isEnabled_; }

    bool isConfigured() const { return isConfigured_; }

private:
    void persist();
    bool writeBuffer();
    void writeUnifiedLog(DiagnosticLogLevel level, DiagnosticLogCategory category, std::string_view text);

    std::filesystem::path file_;
    Environment environment_;
    DiagnosticBuffer buffer_;
    std::function<void(const DiagnosticLogEvent&)> observer_;
    bool isConfigured_ = false;
    bool isEnabled_ = true;
    bool isWritten_ = true;
    WriteAllowance allowance_;
    bool canWrite_ = true; ///< as far as the latest attempt tells
};

} // namespace cindertop
