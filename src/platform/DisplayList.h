#pragma once

#include <cstdint>
#include <vector>

namespace cindertop {

using DisplayIdentifier = std::uint32_t;

/// Where a display is; `unknown` when the system cannot tell.
enum class DisplayPlace { builtIn, external, unknown };

/// The displays that show a picture now.
class DisplayList {
public:
    struct Answer {
        std::int32_t status; ///< 0 is success
        std::uint32_t count; ///< displays found; no more than the capacity when one was given
        std::vector<DisplayIdentifier>
            identifiers; ///< `capacity` of them, zero beyond `count`; empty without one
    };

    virtual ~DisplayList() = default;
    /// How many displays are active.
    virtual Answer countActiveDisplays() const = 0;
    /// The active displays, as many as `capacity` has room for.
    virtual Answer activeDisplays(std::uint32_t capacity) const = 0;
    /// Of an active display; another one's place is `external`.
    virtual DisplayPlace placeOf(DisplayIdentifier display) const = 0;
    /// Whether the machine can be shut over a display of its own, as a laptop can and a desktop cannot.
    virtual bool canFold() const = 0;
};

} // namespace cindertop
