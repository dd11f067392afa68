#pragma once

#include "persistence/ThermalDailySummary.h"
#include "persistence/ThermalHistorySample.h"
#include "support/PropertyListError.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// The contents of the history file.
struct ThermalHistoryEnvelope {
    std::int64_t schemaVersion = 1; ///< kept as it was read
    std::vector<ThermalHistorySample> samples;
    std::optional<ThermalDailySummary> todaySummary;

    bool operator==(const ThermalHistoryEnvelope&) const = default;
};

/// Every key that is not optional has to be there with its type, or nothing is read; unknown keys do not
/// matter. The records repair what they repair.
std::expected<ThermalHistoryEnvelope, PropertyListError> decodeHistory(std::string text);

/// A property list without indentation: the file is written every few seconds. Dates lose their fraction.
/// Refused when a number is not finite.
std::expected<std::string, PropertyListError> encodeHistory(const ThermalHistoryEnvelope& envelope);

} // namespace cindertop
