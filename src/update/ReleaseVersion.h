#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace cindertop {

/// The number of a release, such as 0.2.1. Zeros at the end count for nothing: 1.0 is 1.
class ReleaseVersion {
public:
    /// None unless the text is one to four numbers below 2^32, with a point between them.
    static std::optional<ReleaseVersion> parse(std::string_view text);

    auto operator<=>(const ReleaseVersion&) const = default;

private:
    std::vector<std::uint32_t> parts_; ///< ends in no 0
};

} // namespace cindertop
