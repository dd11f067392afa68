#pragma once

#include "platform/PropertyValue.h"
#include "support/Enumeration.h"
#include "thermal/ThermalLevel.h"

#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>

namespace cindertop {

/// Interprets a stored value, whatever its type. None when it has no meaning.

/// Numbers count by their truth value; of texts "true", "yes", "1", "false", "no", "0" in any case, blanks
/// around.
std::optional<bool> storedBoolean(const std::optional<PropertyValue>& stored);
/// A number without its fraction, held to 64 bits; a text of decimal digits with an optional sign.
std::optional<std::int64_t> storedInteger(const std::optional<PropertyValue>& stored);

/// The case that a text names.
template <typename Enumeration>
std::optional<Enumeration> storedCase(const std::optional<PropertyValue>& stored) {
    const auto* const text = stored ? std::get_if<std::string>(&*stored) : nullptr;
    if (text == nullptr) {
        return std::nullopt;
    }
    if constexpr (std::is_same_v<Enumeration, NotificationMinimumLevel>) {
        if (*text == "throttling") { // an older name
            return NotificationMinimumLevel::serious;
        }
    }
    return fromRawValue<Enumeration>(*text);
}

} // namespace cindertop
