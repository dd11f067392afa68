#include "platform/linux/LinuxDisplayList.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/LidSwitch.h"

#include <algorithm>
#include <array>
#include <string>
#include <system_error>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr std::int32_t unreadable = 1;

/// Every other type is that of a socket, or of a cable into a virtual one.
constexpr auto connectorTypes = std::to_array<std::pair<std::string_view, ConnectorKind>>({
    {"eDP", ConnectorKind::laptopPanel},
    {"LVDS", ConnectorKind::laptopPanel},
    {"DSI", ConnectorKind::panel},
    {"Unknown", ConnectorKind::unknown},
    {"Writeback", ConnectorKind::writeback},
});

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// FNV-1a: short names of one machine do not collide.
DisplayIdentifier identifierOf(std::string_view connector) {
    std::uint32_t hash = 2166136261U;
    for (const char character : connector) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    }
    return hash == 0 ? 1 : hash;
}

/// None when the attribute cannot be read.
std::optional<bool> says(const std::filesystem::path& attribute, std::string_view word) {
    return readAttribute(attribute).transform([&](const std::string& text) { return text == word; });
}

bool isGone(const std::filesystem::path& connector) {
    std::error_code error;
    return !std::filesystem::exists(connector, error) && !error;
}

/// None when it cannot be told. A connector that was unplugged from its hub since the listing is dark.
std::optional<bool> isLit(const std::filesystem::path& connector) {
    for (const auto& [attribute, word] : std::to_array<std::pair<std::string_view, std::string_view>>(
             {{"status", "connected"}, {"enabled", "enabled"}, {"dpms", "On"}})) {
        const auto holds = says(connector / attribute, word);
        if (!holds && !isGone(connector)) {
            return std::nullopt;
        }
        if (!holds.value_or(false)) {
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<ConnectorKind> parseConnectorName(std::string_view name) {
    static constexpr std::string_view card = "card";
    const auto dash = name.find('-');
    const auto lastDash = name.rfind('-');
    if (!name.starts_with(card) || dash == lastDash ||
        !isNumber(name.substr(card.size(), dash - card.size())) || !isNumber(name.substr(lastDash + 1))) {
        return std::nullopt;
    }
    const auto type = name.substr(dash + 1, lastDash - dash - 1);
    if (type.empty()) {
        return std::nullopt;
    }
    const auto* const row =
        std::ranges::find(connectorTypes, type, &std::pair<std::string_view, ConnectorKind>::first);
    return row != connectorTypes.end() ? row->second : ConnectorKind::external;
}

DisplayPlace placeOf(ConnectorKind kind) {
    switch (kind) {
    case ConnectorKind::laptopPanel:
    case ConnectorKind::panel:
        return DisplayPlace::builtIn;
    case ConnectorKind::external:
        return DisplayPlace::external;
    case ConnectorKind::unknown:
    case ConnectorKind::writeback:
        break;
    }
    return DisplayPlace::unknown;
}

LinuxDisplayList::LinuxDisplayList(LidSwitch& lid, const Roots& roots)
    : lid_(lid), folder_(roots.sys / "class/drm"), doesChassisFold_(doesChassisFold(roots)) {}

LinuxDisplayList::Look LinuxDisplayList::Look::failed(std::string silentConnector) {
    Look look;
    look.status = unreadable;
    look.silentConnector = std::move(silentConnector);
    return look;
}

LinuxDisplayList::Look LinuxDisplayList::look() const {
    const auto names = listFolder(folder_);
    if (!names) {
        return Look::failed({});
    }
    Look found;
    for (const auto& name : *names) {
        const auto kind = parseConnectorName(name);
        if (!kind || kind == ConnectorKind::writeback) {
            continue;
        }
        ++found.connectorCount;
        found.hasLaptopPanel = found.hasLaptopPanel || kind == ConnectorKind::laptopPanel;
        found.hasBuiltIn = found.hasBuiltIn || linux_platform::placeOf(*kind) == DisplayPlace::builtIn;
        const auto lit = isLit(folder_ / name);
        if (!lit) {
            return Look::failed(name);
        }
        if (*lit) {
            found.active.push_back(
                {.identifier = identifierOf(name), .place = linux_platform::placeOf(*kind)});
        }
    }
    const auto isBuiltIn = [](const Display& display) { return display.place == DisplayPlace::builtIn; };
    if (std::ranges::any_of(found.active, isBuiltIn) && lid_.isClosed().value_or(false)) {
        std::erase_if(found.active, isBuiltIn);
    }
    return found;
}

const LinuxDisplayList::Look& LinuxDisplayList::latest() const {
    if (!latest_) {
        latest_ = look();
    }
    return *latest_;
}

LinuxDisplayList::Answer LinuxDisplayList::countActiveDisplays() const {
    latest_ = look();
    return {.status = latest_->status,
            .count = static_cast<std::uint32_t>(latest_->active.size()),
            .identifiers = {}};
}

LinuxDisplayList::Answer LinuxDisplayList::activeDisplays(std::uint32_t capacity) const {
    const auto& found = latest();
    const auto count = std::min<std::size_t>(capacity, found.active.size());
    Answer answer{.status = found.status,
                  .count = static_cast<std::uint32_t>(count),
                  .identifiers = std::vector<DisplayIdentifier>(capacity)};
    std::ranges::transform(found.active.begin(), found.active.begin() + static_cast<std::ptrdiff_t>(count),
                           answer.identifiers.begin(), &Display::identifier);
    return answer;
}

DisplayPlace LinuxDisplayList::placeOf(DisplayIdentifier display) const {
    const auto& active = latest().active;
    const auto found = std::ranges::find(active, display, &Display::identifier);
    return found != active.end() ? found->place : DisplayPlace::external;
}

bool LinuxDisplayList::canFold() const {
    const auto& found = latest();
    return found.hasBuiltIn && (lid_.isFitted() || doesChassisFold_.value_or(found.hasLaptopPanel));
}

SourceStatus LinuxDisplayList::status() const {
    const auto& found = latest();
    SourceStatus status{.name = "displays", .isAvailable = false, .reason = {}};
    if (found.status != 0) {
        status.reason = found.silentConnector.empty() ? folder_.string() + " cannot be listed"
                                                      : found.silentConnector + " does not tell its state";
    } else if (found.connectorCount == 0) {
        status.reason = "no graphics connectors";
    } else {
        status.isAvailable = true;
        status.reason = folder_.string();
    }
    return status;
}

} // namespace cindertop::linux_platform
