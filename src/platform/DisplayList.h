#pragma once

#include <cstdint>
#include <vector>

namespace cindertop {

using DisplayIdentifier = std::uint32_t;

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
    virtual bool isBuiltIn(DisplayIdentifier display) const = 0;
};

} // namespace cindertop
