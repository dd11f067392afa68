#pragma once

#include "persistence/DiagnosticLogEvent.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// A buffer file above this is not read; the program's own stay below 5 MiB.
inline constexpr std::size_t diagnosticFileSizeLimit = 8UZ * 1024 * 1024;

/// The text of one event as it stands in the buffer file: indented by one step, without a comma. The
/// timestamp loses its fraction. Texts have to be UTF-8.
std::string encodeDiagnosticEvent(const DiagnosticLogEvent& event);

nlohmann::json diagnosticEventJson(const DiagnosticLogEvent& event);

/// The events of a buffer file, all or none: every key has to be there with its type. Unknown keys are
/// ignored.
std::optional<std::deque<DiagnosticLogEvent>> decodeDiagnosticEvents(std::string_view text);

} // namespace cindertop
