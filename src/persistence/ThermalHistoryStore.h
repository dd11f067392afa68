#pragma once

#include "persistence/ThermalHistoryEnvelope.h"
#include "persistence/ThermalMonitoringSnapshot.h"
#include "support/CalendarDays.h"
#include "support/FileSystem.h"
#include "support/Instant.h"

#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// The rolling record of the thermal state and the summary of the current day, kept in one file. Nothing is
/// held between calls: each reads the file, and a file that is missing or broken counts as empty. Whatever
/// cannot be written is lost in silence. Any thread may call; calls run one at a time.
class ThermalHistoryStore {
public:
    /// `thermal-history.plist` in the user's data folder.
    static std::filesystem::path defaultFile();

    /// Without a file the default one. `historyDuration` is raised to 60 s, `maximumAttributionGap` to 10 s.
    ThermalHistoryStore(std::optional<std::filesystem::path> file, Seconds historyDuration,
                        Seconds maximumAttributionGap, CalendarDays calendar, FileSystem& files);

    /// Adds the sample to the file and returns what it then holds.
    ThermalMonitoringSnapshot record(const ThermalHistorySample& sample);

    /// What the file holds for `now`; writes nothing.
    ThermalMonitoringSnapshot snapshot(Instant now);

    /// Removes the file.
    void clear();

    const std::filesystem::path& file() const { return file_; }

    Seconds historyDuration() const { return historyDuration_; }

    Seconds maximumAttributionGap() const { return maximumAttributionGap_; }

private:
    ThermalHistoryEnvelope load();
    void save(const ThermalHistoryEnvelope& envelope);
    void normalize(ThermalHistoryEnvelope& envelope, Instant now) const;
    void prune(std::vector<ThermalHistorySample>& samples, Instant now) const;
    ThermalDailySummary updatedSummary(const std::optional<ThermalDailySummary>& existing,
                                       const ThermalHistorySample* previous,
                                       const ThermalHistorySample& sample) const;
    void countAgainst(ThermalDailySummary& summary, const ThermalHistorySample& previous,
                      const ThermalHistorySample& sample) const;
    ThermalMonitoringSnapshot makeSnapshot(ThermalHistoryEnvelope envelope, Instant now) const;
    ThermalDailySummary freshSummary(Instant instant) const;

    std::filesystem::path file_;
    Seconds historyDuration_;
    Seconds maximumAttributionGap_;
    CalendarDays calendar_;
    FileSystem& files_;
    std::mutex mutex_;
};

} // namespace cindertop
