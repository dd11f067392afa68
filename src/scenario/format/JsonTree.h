#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cindertop::simulated {

/// Why a text is no scenario: one sentence that names the place, by its keys ("frames[3].processes[0].pid")
/// or, in a text that is no JSON, by line and column.
struct ScenarioError {
    std::string message;

    bool operator==(const ScenarioError&) const = default;
};

enum class DecimalError { tooPrecise, tooLarge };

/// A JSON number × 10^`digits`, exactly: "-1.5e-3" with 6 digits is -1500. Trailing zeros are no precision.
std::expected<std::int64_t, DecimalError> scaledDecimal(std::string_view number, int digits);

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
