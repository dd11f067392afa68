#pragma once

#include "persistence/Uuid.h"
#include "support/Enumeration.h"
#include "support/Instant.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace cindertop {

enum class DiagnosticLogLevel : std::uint8_t { debug, info, warning, error };

template <>
struct EnumerationTable<DiagnosticLogLevel> {
    static constexpr std::array cases{
        EnumerationCase{DiagnosticLogLevel::debug, "debug"},
        EnumerationCase{DiagnosticLogLevel::info, "info"},
        EnumerationCase{DiagnosticLogLevel::warning, "warning"},
        EnumerationCase{DiagnosticLogLevel::error, "error"},
    };
};

enum class DiagnosticLogCategory : std::uint8_t { app, thermal, settings, updates };

template <>
struct EnumerationTable<DiagnosticLogCategory> {
    static constexpr std::array cases{
        EnumerationCase{DiagnosticLogCategory::app, "app"},
        EnumerationCase{DiagnosticLogCategory::thermal, "thermal"},
        EnumerationCase{DiagnosticLogCategory::settings, "settings"},
        EnumerationCase{DiagnosticLogCategory::updates, "updates"},
    };
};

using DiagnosticMetadata = std::map<std::string, std::string>;

/// Something that the application did.
struct DiagnosticLogEvent {
    Uuid id;
    Instant timestamp;
    DiagnosticLogLevel level;
    DiagnosticLogCategory category;
    std::string message;         ///< at most 423 characters
    DiagnosticMetadata metadata; ///< without sensitive keys, values of at most 163 characters

    bool operator==(const DiagnosticLogEvent&) const = default;
};

/// A message of more than 420 characters cut to those and "...". Bytes that are no UTF-8 become U+FFFD.
std::string truncatedMessage(std::string_view message);

/// Without the entries whose key speaks of a device, token, secret, password or key, however it is written;
/// values of more than 160 characters cut to those and "...".
DiagnosticMetadata sanitizedMetadata(const DiagnosticMetadata& metadata);

/// `["kind": "critical", "level": "3"]`, on one line.
std::string metadataText(const DiagnosticMetadata& metadata);

} // namespace cindertop
