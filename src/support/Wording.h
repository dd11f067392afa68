#pragma once

#include "support/Enumeration.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace cindertop {

/// The kind of system that a machine runs: it decides the wording of texts, what names of processes mean, and
/// the default preferences, and nothing else. The raw value is what scenario files carry. (`linux` alone is a
/// macro to Qt's meta-object compiler.)
enum class OperatingSystem : std::uint8_t { mac, gnuLinux };

template <>
struct EnumerationTable<OperatingSystem> {
    static constexpr std::array cases{
        EnumerationCase{OperatingSystem::mac, "mac", std::string_view("mac")},
        EnumerationCase{OperatingSystem::gnuLinux, "gnuLinux", std::string_view("linux")},
    };
};

/// One text as people at each kind of machine read it. A text that may differ has both, side by side:
///
///     constexpr Wording title{"Checking this Mac...", "Checking this laptop..."};
///     title.in(machine.operatingSystem)
class Wording {
public:
    constexpr Wording(std::string_view onMac, std::string_view onLinux) : onMac_(onMac), onLinux_(onLinux) {}

    /// A text that is the same everywhere.
    static constexpr Wording same(std::string_view text) { return {text, text}; }

    constexpr std::string_view in(OperatingSystem system) const {
        return system == OperatingSystem::gnuLinux ? onLinux_ : onMac_;
    }

private:
    std::string_view onMac_;
    std::string_view onLinux_;
};

/// Where a sentence has a place for a name.
inline constexpr std::string_view placeForName = "{name}";

/// The sentence with the name in its place, for example "Quit {name}?"; one without a place stays as it is.
/// The name may hold the mark itself.
std::string withName(std::string_view sentence, std::string_view name);

} // namespace cindertop
