#pragma once

#include "persistence/AppSettings.h"
#include "platform/PropertyValue.h"
#include "support/TemperatureText.h"
#include "thermal/ThermalLevel.h"

#include <cstdint>
#include <optional>

namespace cindertop {

/// Interprets a stored value, whatever its type. None when it has no meaning.

/// Numbers count by their truth value; of texts "true", "yes", "1", "false", "no", "0" in any case, blanks
/// around.
std::optional<bool> storedBoolean(const std::optional<PropertyValue>& stored);
/// A number without its fraction, held to 64 bits; a text of decimal digits with an optional sign.
std::optional<std::int64_t> storedInteger(const std::optional<PropertyValue>& stored);
/// The retired modes count as the thermal status.
std::optional<MenuBarInfoMode> storedMenuBarInfoMode(const std::optional<PropertyValue>& stored);
/// "throttling" is an older name of serious.
std::optional<NotificationMinimumLevel> storedMinimumLevel(const std::optional<PropertyValue>& stored);
std::optional<RecommendationVerbosity> storedVerbosity(const std::optional<PropertyValue>& stored);
std::optional<TemperatureUnit> storedTemperatureUnit(const std::optional<PropertyValue>& stored);

} // namespace cindertop
