#include "scenario/recorder/ScenarioRecorder.h"

#include "app/HardwareProfile.h"
#include "app/SamplingSchedule.h"
#include "context/PowerContext.h"
#include "report/Json.h"
#include "scenario/recorder/HardwareRecorder.h"
#include "scenario/recorder/ScenarioText.h"
#include "support/DateText.h"
#include "thermal/ThermalReading.h"
#include "thermal/ThermalScorer.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace cindertop {

namespace {

constexpr auto integerProperties = std::to_array<std::string_view>({
    "CurrentCapacity",
    "MaxCapacity",
    "Temperature",
    batteryRateProperty,
});
constexpr auto booleanProperties = std::to_array<std::string_view>({
    "BatteryInstalled",
    "IsCharging",
    "FullyCharged",
    "ExternalConnected",
});

std::string text(bool value) {
    return value ? "true" : "false";
}

template <typename Value>
std::string textOrNull(const std::optional<Value>& value) {
    return value ? std::to_string(*value) : "null";
}

std::string jsonStringOrNull(const std::optional<std::string>& value) {
    return value ? jsonString(*value) : "null";
}

/// The properties that matter. Others, such as a serial number, stay out.
std::string entryText(const PowerSourceEntry& entry) {
    JsonObjectText properties;
    for (const auto key : booleanProperties) {
        if (const auto value = booleanProperty(entry, key)) {
            properties.add(key, text(*value));
        }
    }
    // A scenario has whole numbers only, and nobody reads a fraction of these.
    for (const auto key : integerProperties) {
        if (const auto value = integerProperty(entry, key)) {
            properties.add(key, std::to_string(*value));
        }
    }
    return properties.text();
}

std::string powerText(const PowerSources& sources, const ProcessInformation& process) {
    std::string entries = "null";
    if (const auto walk = sources.matchingServices(powerSourceClass)) {
        JsonListText list;
        while (const auto entry = walk->next()) {
            list.add(entryText(*entry));
        }
        entries = list.text();
    }
    JsonObjectText power;
    power.add("providing", jsonStringOrNull(sources.providingPowerSourceType()));
    power.add("lowPowerMode", text(process.isLowPowerModeEnabled()));
    power.add("entries", entries);
    return power.text();
}

/// The displays are numbered: their identifiers may come from serial numbers. One whose place is unknown is
/// left out, since a scenario knows two places only.
std::string displaysText(const DisplayList& displays) {
    const auto expected = displays.countActiveDisplays();
    if (expected.status != 0) {
        return "null";
    }
    const auto listed = displays.activeDisplays(expected.count);
    if (listed.status != 0) {
        return "null";
    }
    JsonListText list;
    for (std::size_t index = 0; index < std::min<std::size_t>(listed.count, listed.identifiers.size());
         ++index) {
        const auto place = displays.placeOf(listed.identifiers[index]);
        if (place == DisplayPlace::unknown) {
            continue;
        }
        JsonObjectText display;
        display.add("id", std::to_string(index + 1));
        display.add("builtIn", text(place == DisplayPlace::builtIn));
        list.add(display.text());
    }
    return list.text();
}

std::string sensorsText(const std::vector<TemperatureReading>& temperatures, const Anonymizer& anonymized) {
    JsonListText list;
    for (const TemperatureReading& temperature : temperatures) {
        JsonObjectText sensor;
        sensor.add("product", jsonString(anonymized(temperature.label)));
        sensor.add("celsius", compactText(Json(temperature.celsius)));
        list.add(sensor.text());
    }
    return list.text();
}

/// With six decimals; the rest of the instant is dropped.
std::string startText(Instant start) {
    auto text = utcText(start);
    const auto fraction = secondsText(start - std::chrono::floor<std::chrono::seconds>(start));
    text.insert(text.size() - 1, fraction.substr(1)); // without its "0", before the "Z"
    return text;
}

} // namespace

ScenarioRecorder::ScenarioRecorder(Machine machine, std::vector<std::string> privateWords)
    : machine_(std::move(machine)),
      anonymized_(std::move(privateWords)),
      sensors_(machine_.temperatureEvents),
      census_(machine_.processes, machine_.applications) {
    machine_.temperatureEvents.setObserved(true);
    if (machine_.meters != nullptr) {
        machine_.meters->setObserved(true);
    }
    const auto registration = machine_.pressure->registerCheck(thermalPressureNotificationName);
    if (registration.status == 0) {
        pressureToken_ = registration.token;
    }
}

ScenarioRecorder::~ScenarioRecorder() {
    if (pressureToken_) {
        machine_.pressure->cancel(*pressureToken_);
    }
}

Seconds ScenarioRecorder::sample() {
    const auto awake = machine_.clock.uptime().awake;
    const Instant now = latest_ ? latest_->at + (awake - latest_->awake) : machine_.clock.now();
    const int thermalState = machine_.process.thermalState();
    const auto pressure = readPressure();
    const auto temperatures = sensors_.readTemperatures();
    const ThermalReading reading{.systemState = fromProcessState(thermalState),
                                 .pressureLevel = pressure ? fromDarwinState(*pressure)
                                                           : ThermalPressureLevel::unavailable,
                                 .temperatures = {},
                                 .dataSource = ThermalDataSource::official,
                                 .measuredAt = now};
    score_ = ThermalScorer().score(
        reading.merging(temperatures), score_,
        {.usesExperimentalSensors = true, .thresholds = ThermalTemperatureThresholds::defaults()});

    if (!latest_ || now > latest_->at) {
        Sample sample{.at = now,
                      .awake = awake,
                      .load = machine_.hostStatistics.cpuLoad(),
                      .processes = census_.readings(now),
                      .graphics = readGraphics(latest_ ? now - latest_->at : Seconds::zero()),
                      .members = frameMembers(thermalState, pressure, temperatures)};
        add(std::move(sample));
    }
    return tickDelay(score_->recommendedSamplingHz);
}

void ScenarioRecorder::add(Sample sample) {
    if (latest_) {
        writeFrame(*latest_, sample);
    } else {
        first_ = sample.at;
        processLists_.emplace(std::chrono::floor<std::chrono::microseconds>(first_), anonymized_);
    }
    latest_ = std::move(sample);
}

std::optional<std::uint64_t> ScenarioRecorder::readPressure() {
    if (!pressureToken_) {
        return std::nullopt;
    }
    const auto state = machine_.pressure->state(*pressureToken_);
    return state.status == 0 ? std::optional(state.raw) : std::nullopt;
}

/// Thousandths of each engine that a process used; a process that used none has 0 of its first.
std::map<std::int32_t, std::string> ScenarioRecorder::readGraphics(Seconds elapsed) {
    constexpr double thousandthsInPercent = 10;
    if (machine_.graphics == nullptr) {
        return {};
    }
    std::map<std::int32_t, std::map<std::string, long>> engines;
    for (const auto& share : graphicsMeter_.sharesOf(machine_.graphics->clients(), elapsed)) {
        auto& used = engines[share.processIdentifier][graphicsMeter_.engineName(share.engine)];
        used = std::min(used + std::lround(share.percent * thousandthsInPercent), 1000L);
    }
    std::map<std::int32_t, std::string> texts;
    for (auto& [process, used] : engines) {
        const auto first = used.begin()->first;
        std::erase_if(used, [](const auto& engine) { return engine.second == 0; });
        if (used.empty()) {
            used.emplace(first, 0);
        }
        JsonObjectText text;
        for (const auto& [engine, thousandths] : used) {
            text.add(engine, std::to_string(thousandths));
        }
        texts.emplace(process, text.text());
    }
    return texts;
}

std::string ScenarioRecorder::frameMembers(int thermalState, const std::optional<std::uint64_t>& pressure,
                                           const std::vector<TemperatureReading>& temperatures) {
    std::string members;
    const auto add = [&](std::string_view key, std::string value) {
        auto& written = written_[std::string(key)];
        if (written != value) {
            members += ", " + jsonString(key) + ": " + value;
            written = std::move(value);
        }
    };
    add("thermalState", std::to_string(thermalState));
    add("pressure", textOrNull(pressure));
    add("sensors", sensorsText(temperatures, anonymized_));
    add("displays", displaysText(machine_.displays));
    add("power", powerText(machine_.powerSources, machine_.process));
    // A machine that never tells any of it gets no such key.
    const auto meters = machine_.meters != nullptr ? machine_.meters->read() : MeterReadings{};
    if (meters != MeterReadings{} || written_.contains("meters")) {
        add("meters", metersText(meters, anonymized_));
    }
    const auto clocks = machine_.clocks != nullptr ? machine_.clocks->read() : ProcessorClockReading{};
    if (clocks != ProcessorClockReading{} || written_.contains("clocks")) {
        add("clocks", clocksText(clocks));
    }
    return members;
}

void ScenarioRecorder::writeFrame(const Sample& sample, const Sample& next) {
    frames_ +=
        (frames_.empty() ? "" : ",\n    ") + std::string("{\"at\": ") + secondsText(sample.at - first_) +
        sample.members + ", \"load\": " + loads_.between(sample.load, next.load) + ", \"processes\": " +
        processLists_->between(sample.processes, next.processes, next.graphics, next.at - sample.at) + "}";
}

std::string ScenarioRecorder::machineText() const {
    const auto fact = [this](std::string_view name) {
        return machine_.systemValues.text(name).transform(anonymized_);
    };
    JsonObjectText machine;
    machine.add("modelIdentifier", jsonString(fact("hw.model").value_or(std::string(unknownModel))));
    machine.add("cpuBrand", jsonStringOrNull(fact("machdep.cpu.brand_string")));
    // It only says whether there are sensors to read.
    machine.add("architecture", jsonString(machine_.temperatureEvents.isSupported() ? "arm64" : "other"));
    machine.add("processorCount", std::to_string(machine_.process.activeProcessorCount()));
    return machine.text();
}

std::optional<std::string> ScenarioRecorder::scenario() const {
    if (frames_.empty()) {
        return std::nullopt;
    }
    std::string text = "{\n";
    const auto add = [&](std::string_view key, std::string_view value) {
        text += "  " + jsonString(key) + ": " + std::string(value) + ",\n";
    };
    add("schemaVersion", "1");
    add("name", jsonString("Recording"));
    add("start", jsonString(startText(std::chrono::floor<std::chrono::microseconds>(first_))));
    add("system", jsonString(rawValue(machine_.operatingSystem)));
    add("duration", secondsText(latest_->at - first_));
    add("machine", machineText());
    add("ownProcessIdentifier", std::to_string(machine_.process.processIdentifier()));
    add("ownBundleIdentifier", jsonStringOrNull(machine_.process.bundleIdentifier().transform(anonymized_)));
    add("settings", R"({"experimentalTemperatureSensorsEnabled": true})");
    add("bundles", processLists_->bundles());
    return text + "  \"frames\": [\n    " + frames_ + "\n  ]\n}\n";
}

} // namespace cindertop
