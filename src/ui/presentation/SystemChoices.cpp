#include "app/Preferences.h"
#include "support/Enumeration.h"
#include "ui/presentation/SystemPresentation.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr std::array<std::int64_t, 4> usualHistoryLengths{15, 30, 45, 60}; ///< minutes

/// The case at a place of the enumeration's table; none beyond it.
template <typename Enumeration>
std::optional<Enumeration> caseAt(int index) {
    const auto& cases = casesOf<Enumeration>();
    return index >= 0 && std::cmp_less(index, cases.size())
               ? std::optional(cases.at(static_cast<std::size_t>(index)).value)
               : std::nullopt;
}

template <typename Enumeration>
int placeOf(Enumeration value) {
    const auto& cases = casesOf<Enumeration>();
    const auto found = std::ranges::find_if(cases, [value](const auto& row) { return row.value == value; });
    return static_cast<int>(found - cases.begin());
}

} // namespace

QStringList SystemPresentation::alertLevelLabels() {
    return {"Serious", "Critical"};
}

int SystemPresentation::alertLevelIndex() const {
    return placeOf(*state_.published().notificationMinimumLevel);
}

void SystemPresentation::setAlertLevelIndex(int index) {
    if (const auto level = caseAt<NotificationMinimumLevel>(index)) {
        state_.setNotificationMinimumLevel(*level);
    }
}

QStringList SystemPresentation::verbosityLabels() {
    return {"Concise", "Detailed"};
}

int SystemPresentation::verbosityIndex() const {
    return placeOf(*state_.published().recommendationVerbosity);
}

void SystemPresentation::setVerbosityIndex(int index) {
    if (const auto verbosity = caseAt<RecommendationVerbosity>(index)) {
        state_.setRecommendationVerbosity(*verbosity);
    }
}

bool SystemPresentation::showsContextInsights() const {
    return *state_.published().showContextInsights;
}

void SystemPresentation::setShowsContextInsights(bool shows) {
    state_.setShowContextInsights(shows);
}

bool SystemPresentation::ranksApplications() const {
    return *state_.published().showProcessOffenders;
}

void SystemPresentation::setRanksApplications(bool ranks) {
    const auto& preference = *findPreference("showProcessOffenders");
    const bool isOffered = checkIsOffered(preference, ranks, state_.currentFields()).has_value();
    ranksApplicationsDetail_ = isOffered ? "" : "Always on: advice and alerts are made from it.";
    if (isOffered) {
        state_.setShowProcessOffenders(ranks);
    }
    Q_EMIT changed();
}

bool SystemPresentation::recordsHistory() const {
    return *state_.published().historyEnabled;
}

void SystemPresentation::setRecordsHistory(bool records) {
    state_.setHistoryEnabled(records);
}

std::vector<std::int64_t> SystemPresentation::historyLengths() const {
    std::vector lengths(usualHistoryLengths.begin(), usualHistoryLengths.end());
    const auto chosen = *state_.published().historyDurationMinutes;
    if (std::ranges::find(lengths, chosen) == lengths.end()) {
        lengths.push_back(chosen);
    }
    return lengths;
}

QStringList SystemPresentation::historyLengthLabels() const {
    QStringList labels;
    for (const auto minutes : historyLengths()) {
        labels += QString("%1 min").arg(minutes);
    }
    return labels;
}

int SystemPresentation::historyLengthIndex() const {
    const auto lengths = historyLengths();
    const auto chosen = std::ranges::find(lengths, *state_.published().historyDurationMinutes);
    return static_cast<int>(chosen - lengths.begin());
}

void SystemPresentation::setHistoryLengthIndex(int index) {
    const auto lengths = historyLengths();
    if (index >= 0 && std::cmp_less(index, lengths.size())) {
        state_.setHistoryDurationMinutes(lengths[static_cast<std::size_t>(index)]);
    }
}

bool SystemPresentation::offersTemperatureUnit() const {
    return state_.environment().machine.operatingSystem == OperatingSystem::gnuLinux;
}

QStringList SystemPresentation::temperatureUnitLabels() {
    return {"By region", "°C", "°F"};
}

int SystemPresentation::temperatureUnitIndex() const {
    return placeOf(*state_.published().temperatureUnit);
}

void SystemPresentation::setTemperatureUnitIndex(int index) {
    if (const auto unit = caseAt<TemperatureUnit>(index)) {
        state_.setTemperatureUnit(*unit);
    }
}

} // namespace cindertop::ui
