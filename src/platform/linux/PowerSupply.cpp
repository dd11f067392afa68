#include "platform/linux/PowerSupply.h"

#include "platform/linux/FileDescriptor.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace cindertop::linux_platform {

namespace {

using Kind = PowerSupply::Kind;
using Status = PowerSupply::Status;

std::optional<Kind> kindOf(std::string_view type) {
    static constexpr auto kinds = std::to_array<std::pair<std::string_view, Kind>>({
        {"Mains", Kind::mains},
        {"Wireless", Kind::wireless},
        {"UPS", Kind::ups},
        {"Battery", Kind::battery},
        {"BrickID", Kind::usb}, // a charger on a USB port that names itself in its own way
    });
    if (const auto* const row = std::ranges::find(kinds, type, &std::pair<std::string_view, Kind>::first);
        row != kinds.end()) {
        return row->second;
    }
    // Older kernels tell the kinds of USB charger apart here: USB_DCP, USB_C, USB_PD, ...
    return type.starts_with("USB") ? Kind::usb : Kind::other;
}

std::optional<Status> statusOf(std::string_view text) {
    static constexpr auto states = std::to_array<std::pair<std::string_view, Status>>({
        {"Charging", Status::charging},
        {"Discharging", Status::discharging},
        {"Not charging", Status::notCharging},
        {"Full", Status::full},
    });
    const auto* const row = std::ranges::find(states, text, &std::pair<std::string_view, Status>::first);
    return row != states.end() ? std::optional(row->second) : std::nullopt;
}

/// Above any battery by far, and far enough from the edge of 64 bits that sums and percentages stay inside.
constexpr std::int64_t amountLimit = 1'000'000'000'000'000;

std::optional<std::int64_t> amountOf(std::string_view text) {
    return parseInteger(text).and_then([](std::int64_t number) {
        return number >= 0 && number <= amountLimit ? std::optional(number) : std::nullopt;
    });
}

/// A thousand amperes, volts or watts: above any battery, and a product of two fits 64 bits.
constexpr std::int64_t rateLimit = 1'000'000'000;

std::optional<std::int64_t> rateOf(std::string_view text) {
    return parseInteger(text).and_then([](std::int64_t number) {
        return number >= -rateLimit && number <= rateLimit ? std::optional(number) : std::nullopt;
    });
}

std::optional<std::int64_t> voltageOf(std::string_view text) {
    return rateOf(text).and_then(
        [](std::int64_t number) { return number >= 0 ? std::optional(number) : std::nullopt; });
}

std::optional<std::int64_t> temperatureOf(std::string_view text) {
    return parseInteger(text).and_then([](std::int64_t number) {
        return std::in_range<std::int32_t>(number) ? std::optional(number) : std::nullopt;
    });
}

constexpr std::string_view deviceScope = "Device";

/// 0 is off, 1 is on and 2 is on with an adjustable voltage.
std::optional<bool> switchOf(std::string_view text) {
    return amountOf(text).transform([](std::int64_t number) { return number > 0; });
}

/// An attribute's name and what its text says about the supply.
using Meaning = std::pair<std::string_view, void (*)(PowerSupply& supply, std::string_view text)>;

constexpr auto meanings = std::to_array<Meaning>({
    {"type", [](PowerSupply& supply, std::string_view text) { supply.kind = kindOf(text); }},
    {"scope",
     [](PowerSupply& supply, std::string_view text) { supply.belongsToDevice = text == deviceScope; }},
    {"present", [](PowerSupply& supply, std::string_view text) { supply.isPresent = switchOf(text); }},
    {"online", [](PowerSupply& supply, std::string_view text) { supply.isOnline = switchOf(text); }},
    {"status", [](PowerSupply& supply, std::string_view text) { supply.status = statusOf(text); }},
    {"capacity", [](PowerSupply& supply, std::string_view text) { supply.capacity = amountOf(text); }},
    {"charge_now", [](PowerSupply& supply, std::string_view text) { supply.chargeNow = amountOf(text); }},
    {"charge_full", [](PowerSupply& supply, std::string_view text) { supply.chargeFull = amountOf(text); }},
    {"energy_now", [](PowerSupply& supply, std::string_view text) { supply.energyNow = amountOf(text); }},
    {"energy_full", [](PowerSupply& supply, std::string_view text) { supply.energyFull = amountOf(text); }},
    {"power_now", [](PowerSupply& supply, std::string_view text) { supply.powerNow = rateOf(text); }},
    {"current_now", [](PowerSupply& supply, std::string_view text) { supply.currentNow = rateOf(text); }},
    {"voltage_now", [](PowerSupply& supply, std::string_view text) { supply.voltageNow = voltageOf(text); }},
    {"temp", [](PowerSupply& supply, std::string_view text) { supply.temperature = temperatureOf(text); }},
});

std::string smallLetters(std::string_view name) {
    std::string small(name);
    std::ranges::transform(small, small.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return small;
}

bool holds(const std::vector<SupplyAttribute>& attributes, std::string_view name) {
    return std::ranges::find(attributes, name, &SupplyAttribute::name) != attributes.end();
}

/// None for a supply that has gone since the folder was listed.
std::optional<PowerSupply> readSupply(const std::filesystem::path& folder) {
    if (readAttribute(folder / "scope") == deviceScope) {
        return makePowerSupply({{"scope", std::string(deviceScope)}});
    }
    const auto uevent = readTextFile(folder / "uevent");
    auto attributes = uevent ? parseSupplyUevent(*uevent) : std::vector<SupplyAttribute>{};
    if (!holds(attributes, "type")) {
        for (const auto& meaning : meanings) {
            const auto name = meaning.first;
            if (holds(attributes, name)) {
                continue;
            }
            if (auto text = readAttribute(folder / name)) {
                attributes.push_back({std::string(name), std::move(*text)});
            }
        }
    }
    const bool isGone = attributes.empty() && !uevent && uevent.error() == FileError::missing;
    return isGone ? std::nullopt : std::optional(makePowerSupply(attributes));
}

} // namespace

bool PowerSupply::isSystemBattery() const {
    return kind == Kind::battery && !belongsToDevice && isPresent.value_or(true);
}

bool PowerSupply::isExternal() const {
    return kind == Kind::mains || kind == Kind::usb || kind == Kind::wireless;
}

std::vector<SupplyAttribute> parseSupplyUevent(std::string_view text) {
    static constexpr std::string_view prefix = "POWER_SUPPLY_";
    std::vector<SupplyAttribute> attributes;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const auto equals = line.find('=');
        if (line.starts_with(prefix) && equals != std::string_view::npos) {
            attributes.push_back({smallLetters(line.substr(prefix.size(), equals - prefix.size())),
                                  std::string(trimmingWhitespace(line.substr(equals + 1)))});
        }
    }
    return attributes;
}

PowerSupply makePowerSupply(const std::vector<SupplyAttribute>& attributes) {
    PowerSupply supply;
    for (const auto& [name, text] : attributes) {
        if (const auto* const meaning = std::ranges::find(meanings, name, &Meaning::first);
            meaning != meanings.end()) {
            meaning->second(supply, text);
        }
    }
    return supply;
}

std::expected<std::vector<PowerSupply>, FileError> PowerSupplyFolder::read() {
    // Listed to the end before a supply is asked: some take seconds to answer.
    std::vector<Identity> listed;
    const int error = forEachEntry(
        folder_, [&](const dirent& entry) { listed.emplace_back(entry.d_name, std::uint64_t{entry.d_ino}); });
    if (error != 0) {
        return std::unexpected(fileErrorOf(error));
    }
    std::vector<PowerSupply> supplies;
    std::set<Identity> devices;
    for (auto& identity : listed) {
        if (devices_.contains(identity)) {
            devices.insert(std::move(identity));
            continue;
        }
        const auto supply = readSupply(folder_ / identity.first);
        if (supply && supply->belongsToDevice) {
            devices.insert(std::move(identity));
        } else if (supply) {
            supplies.push_back(*supply);
        }
    }
    devices_ = std::move(devices);
    return supplies;
}

} // namespace cindertop::linux_platform
