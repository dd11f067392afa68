#include "platform/linux/LidSwitch.h"

#include "platform/linux/FileReading.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <variant>

namespace cindertop::linux_platform {

std::optional<bool> doesSmbiosChassisFold(std::string_view chassisType) {
    constexpr std::int64_t unknown = 2; // and 1 is "other"
    constexpr std::array<std::int64_t, 5> withLid{8, 9, 10, 14, 31};
    const auto number = parseInteger(chassisType);
    if (!number || *number <= unknown) {
        return std::nullopt;
    }
    return std::ranges::find(withLid, *number) != withLid.end();
}

std::optional<bool> doesDeviceTreeChassisFold(std::string_view chassisType) {
    const auto word = untilZeroByte(chassisType);
    return word.empty() ? std::nullopt : std::optional(word == "laptop" || word == "convertible");
}

std::optional<bool> doesChassisFold(const Roots& roots) {
    return readAttribute(roots.sys / "class/dmi/id/chassis_type")
        .and_then(doesSmbiosChassisFold)
        .or_else([&] {
            return readAttribute(roots.proc / "device-tree/chassis-type").and_then(doesDeviceTreeChassisFold);
        });
}

namespace {

using namespace std::chrono_literals;

constexpr auto askAgainAfter = 2s;

} // namespace

std::optional<bool> parseLidState(std::string_view text) {
    const auto line = trimmingWhitespace(text);
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || line.substr(0, colon) != "state") {
        return std::nullopt;
    }
    const auto state = trimmingWhitespace(line.substr(colon + 1));
    if (state == "closed") {
        return true;
    }
    return state == "open" ? std::optional(false) : std::nullopt;
}

bool hasLidSwitch(std::string_view switches) {
    // The lid is the lowest bit.
    const auto word = trimmingWhitespace(switches);
    constexpr std::string_view odd = "13579bdfBDF";
    return !word.empty() && odd.find(word.back()) != std::string_view::npos;
}

LidSwitch::LidSwitch(SystemBus& bus, const Roots& roots)
    : logind_(bus,
              {.service = "org.freedesktop.login1",
               .path = "/org/freedesktop/login1",
               .interface = "org.freedesktop.login1.Manager",
               .member = "LidClosed"},
              askAgainAfter),
      folder_(roots.proc / "acpi/button/lid"),
      inputs_(roots, "class/input", [&bus] { return bus.now(); }) {}

std::optional<bool> LidSwitch::readAcpiLid() const {
    const auto names = listFolder(folder_);
    if (!names) {
        return std::nullopt;
    }
    for (const auto& name : *names) {
        const auto text = readTextFile(folder_ / name / "state");
        if (const auto state = text ? parseLidState(*text) : std::nullopt) {
            return state;
        }
    }
    return std::nullopt;
}

std::optional<bool> LidSwitch::isClosed() {
    const auto answer = logind_.value();
    const bool* const told = answer ? std::get_if<bool>(&*answer) : nullptr;
    const auto state = told != nullptr ? std::optional(*told) : readAcpiLid();
    isAvailable_ = state.has_value();
    if (told != nullptr) {
        reason_ = "org.freedesktop.login1";
    } else {
        reason_ = state ? folder_.string() : "neither logind nor " + folder_.string() + " tells";
    }
    return state;
}

bool LidSwitch::isFitted() {
    if (inputs_.isOutdated()) {
        const auto acpiLids = listFolder(folder_);
        isFitted_ = (acpiLids && !acpiLids->empty()) || isAmongInputs();
    }
    return isFitted_;
}

bool LidSwitch::isAmongInputs() const {
    const auto names = listFolder(inputs_.path());
    return names && std::ranges::any_of(*names, [&](const std::string& name) {
               const auto switches = readAttribute(inputs_.path() / name / "capabilities/sw");
               return switches && hasLidSwitch(*switches);
           });
}

SourceStatus LidSwitch::status() const {
    return {.name = "lid", .isAvailable = isAvailable_, .reason = reason_};
}

} // namespace cindertop::linux_platform
