#pragma once

#include "support/OperatingSystem.h"

#include <string>
#include <string_view>

namespace cindertop {

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
