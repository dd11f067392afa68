#include "persistence/ThermalDailySummary.h"

#include <algorithm>
#include <utility>

namespace cindertop {
namespace {

double nonNegative(double seconds) {
    return seconds > 0 ? seconds : 0; // NaN is above nothing
}

} // namespace

ThermalLevelDurations::ThermalLevelDurations(double normal, double fair, double serious, double critical)
    : normal(nonNegative(normal)),
      fair(nonNegative(fair)),
      serious(nonNegative(serious)),
      critical(nonNegative(critical)) {}

ThermalLevelDurations ThermalLevelDurations::adding(double seconds, ThermalLevel level) const {
    const auto share = [&](ThermalLevel of) { return of == level ? seconds : 0.0; };
    return ThermalLevelDurations(normal + share(ThermalLevel::normal), fair + share(ThermalLevel::fair),
                                 serious + share(ThermalLevel::serious),
                                 critical + share(ThermalLevel::critical));
}

ThermalDailySummary::ThermalDailySummary(std::string dayIdentifier,
                                         const ThermalLevelDurations& levelDurations,
                                         std::int64_t throttlingEpisodeCount,
                                         std::int64_t criticalEpisodeCount, OffenderCounts topOffenderCounts,
                                         std::optional<OffenderIdentifiers> topOffenderBundleIdentifiers,
                                         Instant updatedAt)
    : dayIdentifier(std::move(dayIdentifier)),
      levelDurations(levelDurations),
      throttlingEpisodeCount(std::max<std::int64_t>(throttlingEpisodeCount, 0)),
      criticalEpisodeCount(std::max<std::int64_t>(criticalEpisodeCount, 0)),
      topOffenderCounts(std::move(topOffenderCounts)),
      topOffenderBundleIdentifiers(std::move(topOffenderBundleIdentifiers)),
      updatedAt(updatedAt) {}

ThermalDailySummary ThermalDailySummary::fresh(std::string dayIdentifier, Instant updatedAt) {
    return {std::move(dayIdentifier), ThermalLevelDurations(), 0, 0, {}, OffenderIdentifiers{}, updatedAt};
}

std::optional<std::string>
ThermalDailySummary::leadingOffenderLabel(const LocalizedComparison& comparison) const {
    if (topOffenderCounts.empty()) {
        return std::nullopt;
    }
    const auto comesFirst = [&](const auto& left, const auto& right) {
        return left.second != right.second ? left.second > right.second
                                           : comparison.compare(left.first, right.first) < 0;
    };
    return std::ranges::min_element(topOffenderCounts, comesFirst)->first;
}

std::optional<std::string>
ThermalDailySummary::leadingOffenderBundleIdentifier(const LocalizedComparison& comparison) const {
    const auto label = leadingOffenderLabel(comparison);
    if (!label || !topOffenderBundleIdentifiers) {
        return std::nullopt;
    }
    const auto found = topOffenderBundleIdentifiers->find(*label);
    return found == topOffenderBundleIdentifiers->end() ? std::nullopt : std::optional(found->second);
}

} // namespace cindertop
