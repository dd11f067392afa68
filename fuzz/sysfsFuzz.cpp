#include "Require.h"
#include "platform/linux/CpuCoolers.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/SensorNames.h"
#include "platform/linux/ThermalTrips.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace cindertop::linux_platform;

/// The part before the separator, which is taken off `text`.
std::string_view takeUntil(std::string_view& text, char separator) {
    const auto end = text.find(separator);
    const auto part = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return part;
}

/// An attribute's text, as each parser of one attribute may meet it: a counter, a type, a file name.
void tryAttribute(std::string_view text) {
    if (const auto number = parseInteger(text)) {
        require(parseInteger(std::to_string(*number)) == number);
    }
    if (const auto input = parseTemperatureInput(text)) {
        require(*input >= 0 && *input < 1000);
    }
    isCpuCooler(text);
    hasMachineTrips(text);
    isHwmonNameOf(text, text);
}

/// "critical 105000": a trip, or with "cur_state 3" a temperature and a cooler's state alike.
class Zone {
public:
    void add(std::string_view line) {
        const auto kind = parseTripKind(takeUntil(line, ' '));
        const auto value = parseInteger(line);
        if (kind && value) {
            trips_.push_back({.kind = *kind, .temperature = *value, .isBound = *value % 2 == 0});
        } else if (value) {
            const double loss = coolerLoss(*value, latest_);
            require(loss >= 0 && loss <= 1);
            latest_ = *value;
        }
    }

    void judge() const {
        for (const auto* const policy : {"step_wise", "power_allocator", "user_space"}) {
            const auto thresholds = HeatThresholds::of({.type = "acpitz", .policy = policy, .trips = trips_});
            const int state = thermalStateOf(thresholds, latest_);
            require(state >= 0 && state <= 3);
            require(!isAtLimit(thresholds, latest_) || state == 3);
            require(!thresholds.areEmpty() || state == 0);
        }
    }

private:
    std::vector<Trip> trips_;
    MilliCelsius latest_ = 0;
};

/// "zone|acpitz", "chip|nvme|Composite|nvme0".
SensorSource sourceOf(std::string_view line) {
    const auto origin = takeUntil(line, '|');
    SensorSource source;
    source.origin = origin == "zone"     ? SensorOrigin::zone
                    : origin == "supply" ? SensorOrigin::supply
                                         : SensorOrigin::chip;
    source.chip = takeUntil(line, '|');
    source.label = takeUntil(line, '|');
    source.device = line;
    return source;
}

void tryProducts(const std::vector<SensorSource>& sources) {
    std::size_t next = 0;
    for (const auto& product : namedSensors(sources)) {
        require(product.source >= next && product.source < sources.size());
        require(!product.name.empty());
        next = product.source + 1;
    }
}

} // namespace

/// Lines of text: each is an attribute of its own, a trip or temperature, and a sensor.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    std::string_view text = input;
    tryAttribute(text);
    Zone zone;
    std::vector<SensorSource> sources;
    while (!text.empty()) {
        const auto line = takeUntil(text, '\n');
        tryAttribute(line);
        zone.add(line);
        sources.push_back(sourceOf(line));
    }
    zone.judge();
    tryProducts(sources);
    return 0;
}
