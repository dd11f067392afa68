#pragma once

#include "persistence/ThermalHistory.h"
#include "support/PropertyListError.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>

namespace cindertop {

/// The contents of the history file.
struct ThermalHistoryEnvelope {
    std::int64_t schemaVersion = 1; ///< kept as it was read
    SharedHistorySamples samples;
    std::optional<ThermalDailySummary> todaySummary;

    bool operator==(const ThermalHistoryEnvelope&) const = default;
};

/// Every key that is not optional has to be there with its type, or nothing is read; unknown keys are
/// ignored. The records repair values out of range.
std::expected<ThermalHistoryEnvelope, PropertyListError> decodeHistory(std::string text);

/// A property list without indentation, which nobody edits. Dates lose their fraction.
/// Refused when a number is not finite.
std::expected<std::string, PropertyListError> encodeHistory(const ThermalHistoryEnvelope& envelope);

/// What is read of a sample that was written: its second, and texts without what a file cannot hold. None for
/// a number that no file can hold.
std::optional<ThermalHistorySample> asStored(const ThermalHistorySample& sample);
ThermalDailySummary asStored(const ThermalDailySummary& summary);

} // namespace cindertop
