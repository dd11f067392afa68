#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace cindertop {

/// What is wrong with a property list and where. The codecs throw it among themselves; their public functions
/// hand it over as a value.
class PropertyListError : public std::runtime_error {
public:
    /// `place` is a path as people write it, "samples[3].level", or says which byte of the text.
    PropertyListError(std::string place, const std::string& problem)
        : std::runtime_error(place + ": " + problem), place_(std::move(place)) {}

    const std::string& place() const { return place_; }

private:
    std::string place_;
};

} // namespace cindertop
