#include "platform/linux/ControlGroups.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <ranges>

namespace cindertop::linux_platform {

namespace {

// The names of units, after the desktops' and the makers' conventions:
//
//   flatpak   := "app-flatpak-" ID "-" RANDOM ".scope"
//   snap      := "snap." NAME "." APP [ ("-" | ".") UUID ] ( ".scope" | ".service" )
//   scope     := "app-" [ LAUNCHER "-" ] ID "-" RANDOM ".scope"
//   service   := "app-" [ LAUNCHER "-" ] ID [ "@" INSTANCE ] ".service"
//   terminal  := ("vte" | "ptyxis" | "tmux" | ...) "-spawn-" UUID ".scope"
//   RANDOM    := one or more digits or hexadecimal digits
//   UUID      := 8 "-" 4 "-" 4 "-" 4 "-" 12 hexadecimal digits
//
// Inside LAUNCHER, ID and NAME systemd writes "-" and other bytes as "\xHH", so a name is split first and
// unescaped then. Not every launcher escapes: "app-gnome-terminal-9.scope" may be gnome's "terminal" or
// "gnome-terminal".
//
// Below its unit a program may make groups of its own. Those of one terminal look like units:
//
//   konsole   := scope "/" ( "main.scope" | "tab(" PID ").scope" )

struct UnitName {
    std::string_view stem;
    bool isScope;
};

std::optional<UnitName> splitSuffix(std::string_view name) {
    constexpr std::string_view scope = ".scope";
    constexpr std::string_view service = ".service";
    if (name.size() > scope.size() && name.ends_with(scope)) {
        return UnitName{.stem = name.substr(0, name.size() - scope.size()), .isScope = true};
    }
    if (name.size() > service.size() && name.ends_with(service)) {
        return UnitName{.stem = name.substr(0, name.size() - service.size()), .isScope = false};
    }
    return std::nullopt;
}

bool isUserManager(std::string_view component) {
    return component.starts_with("user@") && component.ends_with(".service");
}

bool isTab(std::string_view component) {
    return component.starts_with("tab(") && component.ends_with(").scope");
}

/// A part of the unit that stands above it.
bool isPartOfUnit(std::string_view component, std::string_view above) {
    return (component == "main.scope" || isTab(component)) && above.starts_with("app-") &&
           splitSuffix(above).has_value();
}

/// "vte-spawn-UUID", but not "app-x-spawn-1".
bool isSpawnedByTerminal(const UnitName& unit) {
    const auto mark = unit.stem.find("-spawn-");
    return unit.isScope && mark != 0 && mark != std::string_view::npos && !unit.stem.starts_with("app-");
}

bool isHexadecimal(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

bool isRandom(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, isHexadecimal);
}

bool isUuid(std::string_view text) {
    constexpr std::string_view pattern = "hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh";
    return text.size() == pattern.size() &&
           std::ranges::equal(text, pattern, [](char character, char wanted) {
               return wanted == '-' ? character == '-' : isHexadecimal(character);
           });
}

/// None when an escape is broken, and with a zero byte or a "/", which no identifier holds.
std::optional<std::string> unescaped(std::string_view text) {
    constexpr std::string_view mark = "\\x";
    std::string result;
    while (!text.empty()) {
        if (text.front() != '\\') {
            result += text.front();
            text.remove_prefix(1);
            continue;
        }
        const auto digits = text.substr(std::min(mark.size(), text.size()), 2);
        std::uint8_t byte = 0;
        if (!text.starts_with(mark) || digits.size() != 2 || !isRandom(digits)) {
            return std::nullopt;
        }
        std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        result += static_cast<char>(byte);
        text.remove_prefix(mark.size() + digits.size());
    }
    constexpr std::string_view foreign("\0/", 2);
    return result.empty() || result.find_first_of(foreign) != std::string::npos ? std::nullopt
                                                                                : std::optional(result);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (const auto part : std::views::split(text, separator)) {
        parts.emplace_back(part.begin(), part.end());
    }
    return parts;
}

/// `stem` without the leading "app-" and the random suffix.
std::optional<std::string_view> launcherAndId(const UnitName& unit) {
    constexpr std::string_view mark = "app-";
    if (!unit.stem.starts_with(mark)) {
        return std::nullopt;
    }
    const auto rest = unit.stem.substr(mark.size());
    if (!unit.isScope) {
        return rest.substr(0, rest.find('@'));
    }
    const auto dash = rest.rfind('-');
    if (dash == std::string_view::npos || !isRandom(rest.substr(dash + 1))) {
        return std::nullopt;
    }
    return rest.substr(0, dash);
}

/// With a launcher in front, as is the convention, before the same name without one; then with more of the
/// name taken for the launcher.
std::vector<std::string> desktopIds(std::string_view launcherAndId) {
    std::vector<std::string> ids;
    const auto add = [&](std::string_view text) {
        if (auto id = unescaped(text)) {
            ids.push_back(std::move(*id));
        }
    };
    auto dash = launcherAndId.find('-');
    if (dash != std::string_view::npos) {
        add(launcherAndId.substr(dash + 1));
    }
    add(launcherAndId);
    while (dash != std::string_view::npos) {
        dash = launcherAndId.find('-', dash + 1);
        if (dash != std::string_view::npos) {
            add(launcherAndId.substr(dash + 1));
        }
    }
    return ids;
}

std::optional<std::string> snapId(std::string_view stem) {
    constexpr std::string_view mark = "snap.";
    constexpr std::size_t uuidLength = 36;
    if (!stem.starts_with(mark)) {
        return std::nullopt;
    }
    auto name = stem.substr(mark.size());
    if (name.size() > uuidLength && isUuid(name.substr(name.size() - uuidLength))) {
        name.remove_suffix(uuidLength + 1);
    }
    const auto parts = split(name, '.');
    const bool isHook = parts.size() > 2 && parts[1] == "hook";
    if (parts.size() < 2 || isHook) {
        return std::nullopt;
    }
    const auto snap = unescaped(parts[0]);
    const auto application = unescaped(parts[1]);
    return snap && application ? std::optional(*snap + "_" + *application) : std::nullopt;
}

} // namespace

std::optional<ControlGroupUnit> parseControlGroup(std::string_view text) {
    constexpr std::string_view mark = "0::";
    for (const auto line : split(text, '\n')) {
        if (!line.starts_with(mark)) {
            continue;
        }
        const auto components = split(line.substr(mark.size()), '/');
        const auto reversed = std::views::reverse(components);
        auto unit = std::ranges::find_if(reversed, [](auto name) { return splitSuffix(name).has_value(); });
        if (unit == reversed.end()) {
            return std::nullopt;
        }
        const auto above = std::next(unit);
        const bool isPart = above != reversed.end() && isPartOfUnit(*unit, *above);
        const bool isTerminalTab = isPart && isTab(*unit);
        if (isPart) {
            unit = above;
        }
        const auto manager = std::find_if(std::next(unit), reversed.end(), isUserManager);
        const bool isOfUser = manager != reversed.end();
        const auto isBelow = [&](std::string_view slice) {
            return std::find(unit, reversed.end(), slice) != reversed.end();
        };
        return ControlGroupUnit{.name = std::string(*unit),
                                .userManager = isOfUser ? std::string(*manager) : std::string(),
                                .isBelowAppSlice = isBelow("app.slice"),
                                .isBelowSessionSlice = isBelow("session.slice"),
                                .isBelowSystemSlice = !isOfUser && isBelow("system.slice"),
                                .isTerminalTab = isTerminalTab};
    }
    return std::nullopt;
}

UnitApplication parseUnit(const ControlGroupUnit& unit) {
    UnitApplication application;
    const auto name = splitSuffix(unit.name);
    if (!name) {
        return application;
    }
    application.isTerminalChild = unit.isTerminalTab || isSpawnedByTerminal(*name);
    if (application.isTerminalChild) {
        return application;
    }
    application.snapId = snapId(name->stem);
    const auto inner = launcherAndId(*name);
    if (!inner || unit.userManager.empty()) {
        return application;
    }
    constexpr std::string_view flatpak = "flatpak-";
    if (name->isScope && inner->starts_with(flatpak)) {
        application.flatpakId = unescaped(inner->substr(flatpak.size()));
        return application;
    }
    application.desktopIds = desktopIds(*inner);
    return application;
}

} // namespace cindertop::linux_platform
