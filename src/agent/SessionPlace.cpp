#include "agent/SessionPlace.h"

namespace cindertop::agent {

SessionPlace SessionPlace::of(const std::function<std::string(const char*)>& variable, bool hasWindows) {
    if (!hasWindows) {
        return {};
    }
    const auto wayland = variable("WAYLAND_DISPLAY");
    return {.display = wayland.empty() ? variable("DISPLAY") : wayland, .terminal = variable("XDG_VTNR")};
}

std::string SessionPlace::note() const {
    return "display " + display + "\nterminal " + terminal + '\n';
}

std::optional<SessionPlace> SessionPlace::fromNote(std::string_view note) {
    constexpr std::string_view displayKey = "display ";
    constexpr std::string_view terminalKey = "\nterminal ";
    const auto middle = note.find(terminalKey);
    if (!note.starts_with(displayKey) || middle == std::string_view::npos || !note.ends_with('\n')) {
        return std::nullopt;
    }
    const auto terminal = note.substr(middle + terminalKey.size());
    return SessionPlace{.display = std::string(note.substr(displayKey.size(), middle - displayKey.size())),
                        .terminal = std::string(terminal.substr(0, terminal.find('\n')))};
}

bool SessionPlace::isApartFrom(const SessionPlace& other) const {
    return !display.empty() && !other.display.empty() && display != other.display;
}

std::string SessionPlace::words() const {
    return "display " + display + (terminal.empty() ? "" : " on tty" + terminal);
}

} // namespace cindertop::agent
