#pragma once

#include "persistence/ThermalHistory.h"
#include "support/DateText.h"
#include "support/Instant.h"

#include <optional>
#include <span>

namespace cindertop {

/// Summarises a day, sample after sample, each against the one that was recorded before it. That is not
/// always the newest one: the wall clock may have been set back. For one thread.
class ThermalDayCounter {
public:
    /// A sample is compared with one that is at most `historyDuration` old; a longer gap than
    /// `maximumAttributionGap` between two counts as time at no level.
    ThermalDayCounter(CalendarDays calendar, Seconds historyDuration, Seconds maximumAttributionGap);

    /// The summary of the sample's day with the sample in it. `existing` may be of another day; `stored` are
    /// the earlier samples, oldest first: one of them serves as the previous one when none was counted yet.
    ThermalDailySummary counting(const std::optional<ThermalDailySummary>& existing,
                                 std::span<const ThermalHistorySample> stored,
                                 const ThermalHistorySample& sample, std::optional<AwakeTime> awake);

    /// The machine has slept since the last sample.
    void noteSleep() { hasSlept_ = true; }

    /// There is no previous sample any more.
    void forget();

private:
    struct Recorded {
        ThermalHistorySample sample;
        std::optional<AwakeTime> awake;
    };

    /// The previous sample.
    struct Previous {
        const ThermalHistorySample& sample;
        Seconds gap; ///< what counts of the time since then; 0: nothing
    };

    std::optional<Previous> previousOf(const ThermalHistorySample& sample, std::optional<AwakeTime> awake,
                                       std::span<const ThermalHistorySample> stored) const;
    /// None when `former` is too old or of another day. `measuredAt`: when it was, by the wall clock as it
    /// goes now.
    std::optional<Previous> comparable(const ThermalHistorySample& former, Instant measuredAt,
                                       const ThermalHistorySample& sample) const;
    void countTime(ThermalDailySummary& summary, const Previous& previous) const;
    void countEpisodes(ThermalDailySummary& summary, const std::optional<Previous>& previous,
                       const ThermalHistorySample& sample);

    CalendarDays calendar_;
    Seconds historyDuration_;
    Seconds maximumAttributionGap_;
    std::optional<Recorded> latest_;
    bool hasSlept_ = false;
    bool isEpisodeInterrupted_ = false; ///< by a sleep, and the pressure has lasted since then
};

} // namespace cindertop
