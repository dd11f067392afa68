#pragma once

#include "persistence/DiagnosticLogEvent.h"

#include <string>
#include <string_view>

namespace cindertop {

/// A message of more than 420 characters cut to those and "...". Bytes that are no UTF-8 become U+FFFD.
std::string truncatedMessage(std::string_view message);

/// Without the entries whose key speaks of a device, token, secret, password or key, however it is written;
/// values of more than 160 characters cut to those and "...".
DiagnosticMetadata sanitizedMetadata(const DiagnosticMetadata& metadata);

/// `["kind": "critical", "level": "3"]`, on one line.
std::string metadataText(const DiagnosticMetadata& metadata);

} // namespace cindertop
