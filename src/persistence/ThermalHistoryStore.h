#pragma once

#include "persistence/ThermalDayCounter.h"
#include "persistence/ThermalHistory.h"
#include "persistence/ThermalHistoryEnvelope.h"
#include "platform/Clock.h"
#include "support/AtomicFile.h"
#include "support/DateText.h"
#include "support/FileSystem.h"
#include "support/Instant.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

namespace cindertop {

/// When recorded samples reach the file.
struct HistoryWriting {
    /// With a clock the store holds what it recorded and writes it now and then. Without one each call reads
    /// the file, and each sample is written as it is recorded.
    MonotonicClock clock;

    bool isBehind() const { return clock != nullptr; }

    /// How long to wait after a file of this many bytes was written: a second for 5.5 kB, which makes 20 MB
    /// an hour, but a minute at least, and so that a crash costs no more, 12 minutes at most.
    static std::chrono::nanoseconds pauseAfter(std::size_t bytes);
};

/// The rolling record of the thermal state and the summary of the current day, kept in one file. A file that
/// is missing or broken counts as empty. A store that writes behind reads the file once, holds what it would
/// read of what it recorded, and is the file's only writer. Any thread may call; calls run one at a time.
class ThermalHistoryStore {
public:
    /// `thermal-history.plist` in the user's data folder.
    static std::filesystem::path defaultFile();

    /// Without a file the default one. `historyDuration` is raised to 60 s, `maximumAttributionGap` to 10 s.
    ThermalHistoryStore(std::optional<std::filesystem::path> file, Seconds historyDuration,
                        Seconds maximumAttributionGap, CalendarDays calendar, FileSystem& files,
                        HistoryWriting writing = {});

    /// Adds the sample and returns what is recorded then. Writes the file when that is due. What cannot be
    /// written is tried again when the next write is due, or lost in silence where nothing is held. With
    /// `awake`, the moment of the sample on the clock that is never set, times between samples are what
    /// really passed; without it they are what the samples say.
    ThermalMonitoringSnapshot record(const ThermalHistorySample& sample,
                                     std::optional<AwakeTime> awake = std::nullopt);

    /// The machine has slept since the last sample. The time up to the next one counts nowhere, and pressure
    /// that goes on is no new episode.
    void noteSleep();

    /// What is recorded for `now`, without samples that are later; writes nothing.
    ThermalMonitoringSnapshot snapshot(Instant now);

    /// Writes what was recorded since the latest write, if anything, and returns once it is on the disk. On
    /// an error it stays held.
    FileResult<void> save();

    /// Forgets everything and removes the file.
    void clear();

    const std::filesystem::path& file() const { return file_; }

    Seconds historyDuration() const { return historyDuration_; }

    Seconds maximumAttributionGap() const { return maximumAttributionGap_; }

private:
    ThermalHistoryEnvelope current();
    ThermalHistoryEnvelope load();
    void hold(ThermalHistoryEnvelope& envelope);
    FileResult<void> write(const ThermalHistoryEnvelope& envelope, Durability durability);
    FileResult<void> writeHeld();
    void normalize(ThermalHistoryEnvelope& envelope, Instant now) const;
    void prune(SharedHistorySamples& samples, Instant now) const;
    ThermalMonitoringSnapshot makeSnapshot(ThermalHistoryEnvelope envelope, Instant now) const;
    ThermalDailySummary freshSummary(Instant instant) const;

    std::filesystem::path file_;
    Seconds historyDuration_;
    Seconds maximumAttributionGap_;
    CalendarDays calendar_;
    ThermalDayCounter counter_;
    FileSystem& files_;
    HistoryWriting writing_;
    std::mutex mutex_;
    std::optional<ThermalHistoryEnvelope> held_;          ///< as it would be read; none before the first call
    bool isWritten_ = true;                               ///< the file says what is held
    std::optional<std::chrono::nanoseconds> latestWrite_; ///< or the latest attempt
    std::chrono::nanoseconds pause_{0};                   ///< after the latest write
};

} // namespace cindertop
