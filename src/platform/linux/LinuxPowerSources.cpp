#include "platform/linux/LinuxPowerSources.h"

#include "platform/linux/PowerOverview.h"

#include <chrono>
#include <utility>

namespace cindertop::linux_platform {

namespace {

using namespace std::chrono_literals;

constexpr auto readingLifetime = 100ms;

template <typename Value>
std::optional<PropertyValue> property(const std::optional<Value>& value) {
    return value.transform([](Value known) { return PropertyValue(known); });
}

class BatteryEntry final : public PowerSourceEntry {
public:
    BatteryEntry(const BatteryPack& pack, std::optional<bool> isExternallyPowered)
        : pack_(pack), isExternallyPowered_(isExternallyPowered) {}

    std::optional<PropertyValue> property(std::string_view key) const override {
        using linux_platform::property;
        if (key == "BatteryInstalled") {
            return PropertyValue(true);
        }
        if (key == "CurrentCapacity") {
            return property(pack_.currentCapacity);
        }
        if (key == "MaxCapacity") {
            return property(pack_.maxCapacity);
        }
        if (key == "IsCharging") {
            return property(pack_.isCharging);
        }
        if (key == "FullyCharged") {
            return property(pack_.isFullyCharged);
        }
        if (key == "ExternalConnected") {
            return property(isExternallyPowered_);
        }
        if (key == batteryRateProperty) {
            return property(pack_.milliwatts);
        }
        return key == "Temperature" ? property(pack_.deciKelvin) : std::nullopt;
    }

private:
    BatteryPack pack_;
    std::optional<bool> isExternallyPowered_;
};

class EntryIterator final : public PowerSourceIterator {
public:
    explicit EntryIterator(std::unique_ptr<PowerSourceEntry> only) : only_(std::move(only)) {}

    std::unique_ptr<PowerSourceEntry> next() override { return std::move(only_); }

private:
    std::unique_ptr<PowerSourceEntry> only_;
};

} // namespace

LinuxPowerSources::LinuxPowerSources(const Roots& roots, MonotonicClock clock)
    : folder_(roots.sys / "class/power_supply"), clock_(std::move(clock)) {}

const LinuxPowerSources::Supplies& LinuxPowerSources::supplies() const {
    if (!latest_ || clock_() - latest_->endedAt >= readingLifetime) {
        auto read = folder_.read();
        latest_ = Reading{.endedAt = clock_(), .supplies = std::move(read)};
    }
    return latest_->supplies;
}

std::optional<std::string> LinuxPowerSources::providingPowerSourceType() const {
    const auto& read = supplies();
    if (!read) {
        return std::nullopt;
    }
    return providingSource(*read).transform([](std::string_view source) { return std::string(source); });
}

std::unique_ptr<PowerSourceIterator> LinuxPowerSources::matchingServices(std::string_view className) const {
    if (className != powerSourceClass) {
        return std::make_unique<EntryIterator>(nullptr);
    }
    const auto& read = supplies();
    if (!read) {
        return nullptr;
    }
    const auto pack = combineBatteries(*read);
    return std::make_unique<EntryIterator>(
        pack ? std::make_unique<BatteryEntry>(*pack, isExternallyPowered(*read)) : nullptr);
}

SourceStatus LinuxPowerSources::status() const {
    const auto& read = latest_ ? latest_->supplies : supplies();
    SourceStatus status{.name = "power supplies", .isAvailable = false, .reason = {}};
    if (!read) {
        status.reason = folder_.path().string() + " is " + std::string(describe(read.error()));
    } else if (read->empty()) {
        status.reason = "no battery and no mains adapter listed";
    } else if (!providingSource(*read)) {
        status.reason = "no supply tells what the machine runs on";
    } else {
        status.isAvailable = true;
        status.reason = folder_.path().string();
    }
    return status;
}

} // namespace cindertop::linux_platform
