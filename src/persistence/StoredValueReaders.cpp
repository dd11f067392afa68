#include "persistence/StoredValueReaders.h"

#include "support/Text.h"

#include <array>
#include <charconv>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace cindertop {
namespace {

struct BooleanWord {
    std::string_view word;
    bool value;
};

constexpr std::array booleanWords{
    BooleanWord{"true", true},   BooleanWord{"yes", true}, BooleanWord{"1", true},
    BooleanWord{"false", false}, BooleanWord{"no", false}, BooleanWord{"0", false},
};

std::optional<bool> booleanOfText(std::string_view text) {
    const std::string word = lowerCased(trimmingUnicodeWhitespace(text));
    for (const auto& [known, value] : booleanWords) {
        if (word == known) {
            return value;
        }
    }
    return std::nullopt;
}

std::optional<std::int64_t> integerOfText(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return std::nullopt;
        }
    }
    std::int64_t number = 0;
    const char* const end = std::to_address(text.end());
    const auto [rest, error] = std::from_chars(std::to_address(text.begin()), end, number);
    return error == std::errc{} && rest == end ? std::optional(number) : std::nullopt;
}

std::int64_t integerOfNumber(double number) {
    constexpr double limit = 0x1p63;
    if (number >= limit) {
        return std::numeric_limits<std::int64_t>::max();
    }
    if (number < -limit) {
        return std::numeric_limits<std::int64_t>::min();
    }
    return number == number ? static_cast<std::int64_t>(number) : 0; // NaN is no number
}

struct BooleanReader {
    std::optional<bool> operator()(bool value) const { return value; }

    std::optional<bool> operator()(std::int64_t number) const { return number != 0; }

    std::optional<bool> operator()(double number) const { return number != 0; }

    std::optional<bool> operator()(const std::string& text) const { return booleanOfText(text); }
};

struct IntegerReader {
    std::optional<std::int64_t> operator()(bool /*value*/) const { return std::nullopt; }

    std::optional<std::int64_t> operator()(std::int64_t number) const { return number; }

    std::optional<std::int64_t> operator()(double number) const { return integerOfNumber(number); }

    std::optional<std::int64_t> operator()(const std::string& text) const { return integerOfText(text); }
};

} // namespace

std::optional<bool> storedBoolean(const std::optional<PropertyValue>& stored) {
    return stored ? std::visit(BooleanReader{}, *stored) : std::nullopt;
}

std::optional<std::int64_t> storedInteger(const std::optional<PropertyValue>& stored) {
    return stored ? std::visit(IntegerReader{}, *stored) : std::nullopt;
}

} // namespace cindertop
