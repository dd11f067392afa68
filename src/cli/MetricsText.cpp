#include "cli/MetricsText.h"

#include "app/Version.h"
#include "support/Enumeration.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace cindertop::cli {

namespace {

constexpr double percent = 100;

struct MetricLabel {
    std::string_view name;
    std::string value;
};

/// Within quotes a backslash, a quote and a line end are escaped; nothing else is.
std::string escapedLabel(std::string_view text) {
    std::string escaped;
    for (const char character : repairedUtf8(text)) {
        if (character == '\n') {
            escaped += R"(\n)";
            continue;
        }
        if (character == '\\' || character == '"') {
            escaped += '\\';
        }
        escaped += character;
    }
    return escaped;
}

/// The shortest text that reads back as the same number.
std::string sampleValue(double value) {
    std::array<char, 32> text{};
    return {text.begin(), std::to_chars(text.begin(), text.end(), value).ptr};
}

/// Writes metric after metric; the samples of one stand together.
class MetricsPage {
public:
    void begin(std::string_view name, std::string_view type, std::string_view help) {
        name_ = "cindertop_" + std::string(name);
        text_ += "# HELP " + name_ + ' ' + std::string(help) + "\n# TYPE " + name_ + ' ' + std::string(type) +
                 '\n';
    }

    void sample(double value, const std::vector<MetricLabel>& labels = {}) {
        text_ += name_;
        char lead = '{';
        for (const auto& [name, content] : labels) {
            text_ += lead + std::string(name) + "=\"" + escapedLabel(content) + '"';
            lead = ',';
        }
        text_ += labels.empty() ? " " : "} ";
        text_ += sampleValue(value) + '\n';
    }

    /// A metric of one series; none without a value.
    void gauge(std::string_view name, const std::optional<double>& value, std::string_view help) {
        if (value) {
            begin(name, "gauge", help);
            sample(*value);
        }
    }

    /// One series a case: 1 for the one that holds, 0 for the others.
    template <typename Case>
    void cases(std::string_view name, std::string_view label, Case current, std::string_view help) {
        begin(name, "gauge", help);
        for (const auto& row : casesOf<Case>()) {
            if (row.name != "unavailable") {
                sample(row.value == current ? 1 : 0, {{label, std::string(row.name)}});
            }
        }
    }

    std::string text() && { return std::move(text_); }

private:
    std::string text_;
    std::string name_;
};

std::optional<double> ratioOf(const auto& percentage) {
    return percentage ? std::optional(static_cast<double>(*percentage) / percent) : std::nullopt;
}

std::optional<double> flagOf(std::optional<bool> flag) {
    return flag ? std::optional<double>(*flag ? 1 : 0) : std::nullopt;
}

void addHeat(MetricsPage& page, const MachineReport& report) {
    const auto& score = report.snapshot.score;
    if (!isHeatKnown(score)) {
        return;
    }
    page.gauge("score", score.score, "Heat from 0 (cool) to 100.");
    page.cases("level", "level", score.level, "1 for the level of the score, 0 for the others.");
    if (score.systemState != SystemThermalState::unavailable) {
        page.cases("thermal_state", "state", score.systemState,
                   "1 for the nearness of the thermal zones to their trip points, 0 for the others.");
    }
    if (score.pressureLevel != ThermalPressureLevel::unavailable) {
        page.cases("pressure", "pressure", score.pressureLevel,
                   "1 for how far the processor is slowed down because of heat, 0 for the others.");
    }
    // Who has only begun to measure does not know how long a serious level has lasted.
    const bool isSustained = report.snapshot.context.sustainedPressure.isSustained;
    if (report.advice || isSustained || score.level < ThermalLevel::serious) {
        page.gauge("pressure_sustained", flagOf(isSustained),
                   "Whether the level has been serious or critical for a while.");
    }
}

/// Two sensors may share a name; two series may not.
std::string uniqueName(const std::string& name, std::set<std::string>& taken) {
    auto unique = name;
    for (int number = 2; !taken.insert(unique).second; ++number) {
        unique = name + ' ' + std::to_string(number);
    }
    return unique;
}

void addTemperatures(MetricsPage& page, const MachineSnapshot& snapshot) {
    if (snapshot.temperatures.empty()) {
        return;
    }
    page.begin("temperature_celsius", "gauge", "Every sensor that answered.");
    std::set<std::string> taken;
    for (const auto& reading : snapshot.temperatures) {
        page.sample(reading.celsius, {{"sensor", uniqueName(reading.label, taken)},
                                      {"kind", std::string(caseName(reading.kind))}});
    }
}

bool isAvailable(std::string_view source, const std::vector<SourceStatus>& sources) {
    const auto found = std::ranges::find(sources, source, &SourceStatus::name);
    return found != sources.end() && found->isAvailable;
}

void addPower(MetricsPage& page, const MachineSnapshot& snapshot) {
    const auto& power = snapshot.context.power;
    if (power.source != PowerSourceKind::unknown) {
        page.gauge("external_power", flagOf(power.isExternalPowerConnected()), "Whether it is plugged in.");
    }
    if (power.isLowPowerModeEnabled || isAvailable(powerProfileSource, snapshot.sources)) {
        page.gauge("power_saver", flagOf(power.isLowPowerModeEnabled),
                   "Whether the power profile saves power.");
    }
    page.gauge("battery_charge_ratio", ratioOf(power.batteryLevelPercent), "Charge of the battery.");
    page.gauge("battery_charging", flagOf(power.isCharging), "Whether the battery is being charged.");
    page.gauge("battery_temperature_celsius", power.batteryTemperatureCelsius, "Temperature of the battery.");
    page.gauge("battery_power_watts", power.batteryWatts, "Power into the battery, below 0 out of it.");
}

void addMeters(MetricsPage& page, const MeterReadings& meters) {
    page.gauge("machine_power_watts", meters.machineWatts, "Power that the whole machine uses.");
    if (!meters.chips.empty()) {
        page.begin("chip_power_watts", "gauge", "Power that a chip uses by its own account.");
        for (const auto& chip : meters.chips) {
            page.sample(chip.watts, {{"chip", chip.name}});
        }
    }
    if (!meters.fans.empty()) {
        page.begin("fan_rpm", "gauge", "Revolutions a minute of a fan; 0 when it stands still.");
        for (const auto& fan : meters.fans) {
            page.sample(static_cast<double>(fan.revolutionsPerMinute), {{"fan", fan.name}});
        }
    }
}

void addSpeed(MetricsPage& page, const SpeedLimits& limits) {
    if (limits.clock && !limits.isOfSomeCores) {
        page.gauge("processor_allowed_hertz", static_cast<double>(limits.clock->allowedHertz),
                   "The highest clock that the processor may reach now.");
        page.gauge("processor_possible_hertz", static_cast<double>(limits.clock->possibleHertz),
                   "The highest clock that the processor could reach.");
    }
    if (limits.clock || limits.heldBy) {
        page.begin("processor_held_back", "gauge", "1 for what holds the processor back, 0 for the others.");
        for (const auto& row : casesOf<HoldReason>()) {
            page.sample(limits.heldBy == row.value ? 1 : 0, {{"reason", std::string(row.name)}});
        }
    }
}

void addCategories(MetricsPage& page, const std::vector<ProcessOffender>& offenders) {
    std::map<ProcessOffenderCategory, double> shares;
    for (const auto& offender : offenders) {
        shares[offender.category] += offender.cpuPercent;
    }
    page.begin("category_cpu_ratio", "gauge",
               "Share of the whole processor that the applications of each kind use.");
    for (const auto& row : casesOf<ProcessOffenderCategory>()) {
        page.sample(shares[row.value] / percent, {{"category", std::string(row.name)}});
    }
}

void addApplications(MetricsPage& page, const std::vector<ProcessOffender>& offenders) {
    std::map<std::string, double> shares;
    for (const auto& offender : offenders) {
        shares[offender.displayName] += offender.cpuPercent;
    }
    if (shares.empty()) {
        return;
    }
    page.begin("application_cpu_ratio", "gauge", "Share of the whole processor that an application uses.");
    for (const auto& [name, share] : shares) {
        page.sample(share / percent, {{"application", name}});
    }
}

void addGraphics(MetricsPage& page, const std::vector<ProcessOffender>& offenders) {
    std::map<std::string, double> shares;
    for (const auto& offender : offenders) {
        if (offender.graphicsPercent) {
            auto& share = shares[offender.displayName];
            share = std::max(share, *offender.graphicsPercent);
        }
    }
    if (shares.empty()) {
        return;
    }
    page.begin("application_gpu_ratio", "gauge",
               "Share of the graphics engine that an application keeps busiest.");
    for (const auto& [name, share] : shares) {
        page.sample(share / percent, {{"application", name}});
    }
}

void addProcessor(MetricsPage& page, const MachineSnapshot& snapshot, MetricsDetail detail) {
    page.gauge("cpu_ratio", ratioOf(snapshot.cpuPercent), "Share of the whole processor that is busy.");
    if (snapshot.offenders.state != ProcessOffenderSnapshotState::ready) {
        return;
    }
    addCategories(page, snapshot.offenders.offenders);
    if (detail == MetricsDetail::applications) {
        addApplications(page, snapshot.offenders.offenders);
        addGraphics(page, snapshot.offenders.offenders);
    }
}

void addDay(MetricsPage& page, const ThermalMonitoringSnapshot& history) {
    const auto& day = history.todaySummary;
    const auto& durations = day.levelDurations;
    const bool mayBeUnmeasured = history.samples.empty() && durations.totalDuration() == durations.normal;
    if (durations.totalDuration() == 0 || mayBeUnmeasured || !areLevelsMeasured(history)) {
        return;
    }
    page.begin("level_seconds_total", "counter", "Time at each level since midnight.");
    page.sample(durations.normal, {{"level", "normal"}});
    page.sample(durations.fair, {{"level", "fair"}});
    page.sample(durations.serious, {{"level", "serious"}});
    page.sample(durations.critical, {{"level", "critical"}});
    page.begin("throttling_episodes_total", "counter", "How often pressure became sustained since midnight.");
    page.sample(static_cast<double>(day.throttlingEpisodeCount));
    page.begin("critical_episodes_total", "counter", "How often the level became critical since midnight.");
    page.sample(static_cast<double>(day.criticalEpisodeCount));
}

} // namespace

std::string metricsText(const MachineReport& report, const ThermalMonitoringSnapshot& history,
                        MetricsDetail detail) {
    MetricsPage page;
    page.begin("build_info", "gauge", "The version that wrote these metrics.");
    page.sample(1, {{"version", std::string(version)}});
    addHeat(page, report);
    addTemperatures(page, report.snapshot);
    addPower(page, report.snapshot);
    addMeters(page, report.snapshot.context.hardware.meters);
    addSpeed(page, report.snapshot.context.hardware.processor);
    addProcessor(page, report.snapshot, detail);
    addDay(page, history);
    return std::move(page).text();
}

} // namespace cindertop::cli
