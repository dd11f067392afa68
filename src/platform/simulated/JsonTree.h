#pragma once

#include "platform/simulated/ScenarioError.h"

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cindertop::simulated {

/// A number as it was written, with a decimal point, so that nothing is rounded before its reader knows what
/// it counts.
struct JsonNumber {
    std::string text;
};

struct JsonMember;

/// A JSON value whose objects keep their order and hold no key twice.
struct JsonValue {
    using List = std::vector<JsonValue>;
    using Object = std::vector<JsonMember>;

    std::variant<std::nullptr_t, bool, JsonNumber, std::string, List, Object> value;
};

struct JsonMember {
    std::string key;
    JsonValue value;
};

/// Reads one JSON text in UTF-8. A key given twice, a deeper nesting than any scenario has and trailing text
/// are errors.
std::expected<JsonValue, ScenarioError> parseJson(std::string_view text);

/// How a path goes on inside an object: ".key", or "["odd key"]" for a key that is no plain word.
std::string pathOfKey(std::string_view key);
/// How a path goes on inside a list: "[3]".
std::string pathOfIndex(std::size_t index);

} // namespace cindertop::simulated
