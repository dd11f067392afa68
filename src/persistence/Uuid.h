#pragma once

#include "platform/UserDefaults.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// A universally unique identifier.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A random one, different from every other.
    static Uuid random();
    /// Reads the usual 36 characters, letters in either case.
    static std::optional<Uuid> parse(std::string_view text);

    /// "6C2C8D5E-0F0B-4C55-9B0A-1D8C1B1E7A42"
    std::string text() const;

    bool operator==(const Uuid&) const = default;
};

/// The identifier by which a user may be recognised in requests for support: created and stored at the first
/// call, constant from then on.
std::string supportIdentifier(UserDefaults& defaults);

} // namespace cindertop
