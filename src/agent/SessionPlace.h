#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop::agent {

/// The graphical session in which a program runs. A user can have several of them at a time, but one agent.
struct SessionPlace {
    std::string display;  ///< "wayland-0", ":0"; empty without windows
    std::string terminal; ///< the virtual terminal, "2"; empty where that is not known

    /// `variable` tells an environment variable, empty when it is not set.
    static SessionPlace of(const std::function<std::string(const char*)>& variable, bool hasWindows);

    /// As text for other programs, and back; none for any other text.
    std::string note() const;
    static std::optional<SessionPlace> fromNote(std::string_view note);

    /// Both show windows, but not to the same person at the same screen.
    bool isApartFrom(const SessionPlace& other) const;

    /// "display :0 on tty2"
    std::string words() const;

    bool operator==(const SessionPlace&) const = default;
};

} // namespace cindertop::agent
