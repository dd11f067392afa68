#pragma once

#include "support/Enumeration.h"
#include "support/TemperatureText.h"
#include "support/Wording.h"
#include "thermal/ThermalLevel.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <string_view>

namespace cindertop {

/// What is shown beside the status item's icon. The last two are retired: no settings record holds them.
enum class MenuBarInfoMode : std::uint8_t {
    none,
    thermalStatus,
    temperature,
    thermalScore,
    compactAlertOnly
};

template <>
struct EnumerationTable<MenuBarInfoMode> {
    static constexpr std::array cases{
        EnumerationCase{MenuBarInfoMode::none, "none"},
        EnumerationCase{MenuBarInfoMode::thermalStatus, "thermalStatus"},
        EnumerationCase{MenuBarInfoMode::temperature, "temperature"},
        EnumerationCase{MenuBarInfoMode::thermalScore, "thermalScore"},
        EnumerationCase{MenuBarInfoMode::compactAlertOnly, "compactAlertOnly"},
    };
};

/// What people read, for example "Icon Only".
constexpr std::string_view label(MenuBarInfoMode mode) {
    switch (mode) {
    case MenuBarInfoMode::none:
        return "Icon Only";
    case MenuBarInfoMode::thermalStatus:
        return "Thermal Status";
    case MenuBarInfoMode::temperature:
        return "Temperature";
    case MenuBarInfoMode::thermalScore:
        return "Thermal Score";
    case MenuBarInfoMode::compactAlertOnly:
        return "Alerts Only";
    }
    return {};
}

/// How much text the assistant shows.
enum class RecommendationVerbosity : std::uint8_t { concise, detailed };

template <>
struct EnumerationTable<RecommendationVerbosity> {
    static constexpr std::array cases{
        EnumerationCase{RecommendationVerbosity::concise, "concise"},
        EnumerationCase{RecommendationVerbosity::detailed, "detailed"},
    };
};

/// What people read, for example "Concise".
constexpr std::string_view label(RecommendationVerbosity verbosity) {
    return verbosity == RecommendationVerbosity::detailed ? "Detailed" : "Concise";
}

inline constexpr std::int64_t appSettingsSchemaVersion = 12;

/// What a number may be; one outside is brought to the nearer end.
struct NumberBounds {
    std::int64_t least;
    std::int64_t most;
    std::int64_t standard;
};

inline constexpr NumberBounds historyMinutesBounds{.least = 15, .most = 180, .standard = 60};

/// How much of the recorded history is shown: no more than is recorded.
constexpr std::chrono::minutes shownHistory(std::int64_t durationMinutes) {
    constexpr std::int64_t recordedMinutes = 60;
    return std::chrono::minutes(std::min(durationMinutes, recordedMinutes));
}

/// The user's preferences as anybody may fill them in. What is left out is the Mac's default.
struct AppSettingsFields {
    std::int64_t schemaVersion = appSettingsSchemaVersion;
    bool experimentalTemperatureSensorsEnabled = false;
    MenuBarInfoMode menuBarInfoMode = MenuBarInfoMode::none;
    bool showDockIcon = false;
    bool diagnosticLogsEnabled = true;
    bool notificationsEnabled = false;
    NotificationMinimumLevel notificationMinimumLevel = NotificationMinimumLevel::serious;
    RecommendationVerbosity recommendationVerbosity = RecommendationVerbosity::concise;
    bool showProcessOffenders = true;
    bool showContextInsights = true;
    bool historyEnabled = true;
    std::int64_t historyDurationMinutes = historyMinutesBounds.standard;
    TemperatureUnit temperatureUnit = TemperatureUnit::region; ///< the user's own on Linux alone

    bool operator==(const AppSettingsFields&) const = default;
};

/// The user's preferences, repaired: the schema version is 12, process offenders are shown, the duration lies
/// in its range, no retired mode is left, and the temperature is a mode only while the experimental sensors
/// are on.
class AppSettings {
public:
    explicit AppSettings(const AppSettingsFields& fields = {});

    const AppSettingsFields& operator*() const { return fields_; }

    const AppSettingsFields* operator->() const { return &fields_; }

    bool operator==(const AppSettings&) const = default;

private:
    AppSettingsFields fields_;
};

/// The defaults of a user who never chose anything. On Linux temperatures are shown and alerts are on: the
/// sensors' interface is documented and cheap, and notifications need no permission.
AppSettings defaultSettings(OperatingSystem system);

} // namespace cindertop
