#pragma once

#include "support/Instant.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace cindertop {

using Json = nlohmann::ordered_json;

/// A record that docs/json.md describes, for other programs: its fields in their order, absent ones null,
/// enumerations by the names of their cases, instants as seconds since `start`. Scores, contexts and
/// recommendations are written without their instant, which is the tick's.
template <typename Record>
Json encodeJson(const Record& value, Instant start = unixEpoch);

/// One line, the same in every locale. Text that is no valid UTF-8 is repaired, a number that is none is
/// null.
std::string compactText(const Json& json);

/// The same over several lines, for people.
std::string indentedText(const Json& json);

} // namespace cindertop
