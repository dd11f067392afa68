#include "scenario/format/JsonTree.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace cindertop::simulated {

namespace {

/// Beyond any length that a text can have, and far from the limits of its type.
constexpr std::int64_t hugeExponent = 1'000'000'000'000'000;

std::int64_t exponentOf(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    std::int64_t exponent = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), exponent);
    if (error == std::errc::result_out_of_range) {
        return text.starts_with('-') ? -hugeExponent : hugeExponent;
    }
    return std::clamp(exponent, -hugeExponent, hugeExponent);
}

} // namespace

std::expected<std::int64_t, DecimalError> scaledDecimal(std::string_view number, int digits) {
    const auto mantissaLength = std::min(number.find_first_of("eE"), number.size());
    const auto mantissa = number.substr(0, mantissaLength);
    std::int64_t exponent = digits;
    if (mantissaLength < number.size()) {
        exponent += exponentOf(number.substr(mantissaLength + 1));
    }
    if (const auto point = mantissa.find('.'); point != std::string_view::npos) {
        exponent -= static_cast<std::int64_t>(mantissa.size() - point - 1);
    }

    std::string significant(mantissa);
    std::erase_if(significant, [](char letter) { return letter < '0' || letter > '9'; });
    significant.erase(0, significant.find_first_not_of('0'));
    if (significant.empty()) {
        return 0;
    }
    const auto significantLength = significant.find_last_not_of('0') + 1;
    exponent += static_cast<std::int64_t>(significant.size() - significantLength);
    significant.resize(significantLength);
    if (exponent < 0) {
        return std::unexpected(DecimalError::tooPrecise);
    }
    constexpr std::int64_t mostDigits = 19; // of a 64-bit integer
    if (static_cast<std::int64_t>(significant.size()) + exponent > mostDigits) {
        return std::unexpected(DecimalError::tooLarge);
    }
    significant.append(static_cast<std::size_t>(exponent), '0');
    if (mantissa.starts_with('-')) {
        significant.insert(0, 1, '-');
    }
    std::int64_t value = 0;
    const auto [end, error] =
        std::from_chars(significant.data(), significant.data() + significant.size(), value);
    if (error != std::errc{}) {
        return std::unexpected(DecimalError::tooLarge);
    }
    return value;
}

namespace {

using Json = nlohmann::json;

constexpr std::size_t deepestNesting = 16;

bool isPlainWord(std::string_view key) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
    return !key.empty() && key.find_first_not_of(plain) == std::string_view::npos;
}

/// "Line 3, column 7": columns count characters.
std::string placeOf(std::string_view text, std::size_t bytesRead) {
    const auto before = text.substr(0, bytesRead == 0 ? 0 : bytesRead - 1);
    const auto line = std::ranges::count(before, '\n') + 1;
    const auto lineStart = before.rfind('\n') + 1; // npos + 1 is 0
    const auto column = std::ranges::count_if(before.substr(lineStart), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    });
    return "Line " + std::to_string(line) + ", column " + std::to_string(column + 1);
}

/// Builds the tree from the parser's events. A container that is still open is the last element of its
/// parent, so the pointers to open ones stay valid.
class TreeBuilder final : public nlohmann::json_sax<Json> {
public:
    explicit TreeBuilder(std::string_view text) : text_(text) {}

    std::expected<JsonValue, ScenarioError> result(bool isComplete) && {
        if (!isComplete) {
            return std::unexpected(error_);
        }
        return std::move(root_);
    }

    bool null() override { return add({nullptr}); }

    bool boolean(bool value) override { return add({value}); }

    bool number_integer(number_integer_t value) override { return add({JsonNumber{std::to_string(value)}}); }

    bool number_unsigned(number_unsigned_t value) override {
        return add({JsonNumber{std::to_string(value)}});
    }

    /// The text has the decimal separator of the C locale in force, whatever that is.
    bool number_float(number_float_t /*rounded*/, const string_t& written) override {
        constexpr std::string_view digits = "+-0123456789eE";
        std::string text = written;
        std::ranges::replace_if(
            text, [&](char letter) { return digits.find(letter) == std::string_view::npos; }, '.');
        return add({JsonNumber{std::move(text)}});
    }

    bool string(string_t& value) override { return add({std::move(value)}); }

    bool binary(binary_t& /*value*/) override { return false; } // JSON has none

    bool start_object(std::size_t /*count*/) override { return open({JsonValue::Object{}}); }

    bool start_array(std::size_t /*count*/) override { return open({JsonValue::List{}}); }

    bool key(string_t& value) override {
        std::get<JsonValue::Object>(open_.back()->value).emplace_back(std::move(value), JsonValue{});
        return true;
    }

    bool end_object() override {
        const auto& object = std::get<JsonValue::Object>(open_.back()->value);
        if (const auto key = keyGivenTwice(object)) {
            return fail(pathOfOpen() + pathOfKey(*key) + " is given twice.");
        }
        open_.pop_back();
        return true;
    }

    bool end_array() override {
        open_.pop_back();
        return true;
    }

    bool parse_error(std::size_t bytesRead, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return fail(placeOf(text_, bytesRead) + ": the text is not JSON in UTF-8 from here on.");
    }

private:
    static std::optional<std::string> keyGivenTwice(const JsonValue::Object& object) {
        std::vector<std::string_view> keys(object.size());
        std::ranges::transform(object, keys.begin(), &JsonMember::key);
        std::ranges::sort(keys);
        const auto twice = std::ranges::adjacent_find(keys);
        return twice != keys.end() ? std::optional(std::string(*twice)) : std::nullopt;
    }

    JsonValue& place(JsonValue value) {
        if (open_.empty()) {
            root_ = std::move(value);
            return root_;
        }
        if (auto* const list = std::get_if<JsonValue::List>(&open_.back()->value)) {
            return list->emplace_back(std::move(value));
        }
        auto& member = std::get<JsonValue::Object>(open_.back()->value).back();
        member.value = std::move(value);
        return member.value;
    }

    bool add(JsonValue value) {
        place(std::move(value));
        return true;
    }

    bool open(JsonValue value) {
        open_.push_back(&place(std::move(value)));
        return open_.size() <= deepestNesting || fail(pathOfOpen() + " is nested too deeply.");
    }

    bool fail(std::string message) {
        error_.message = message.starts_with('.') ? message.substr(1) : std::move(message);
        return false;
    }

    /// Of the innermost open container: each outer one is at its last element.
    std::string pathOfOpen() const {
        std::string path;
        for (std::size_t depth = 0; depth + 1 < open_.size(); ++depth) {
            if (const auto* const list = std::get_if<JsonValue::List>(&open_[depth]->value)) {
                path += pathOfIndex(list->size() - 1);
            } else {
                path += pathOfKey(std::get<JsonValue::Object>(open_[depth]->value).back().key);
            }
        }
        return path;
    }

    std::string_view text_;
    JsonValue root_;
    std::vector<JsonValue*> open_;
    ScenarioError error_;
};

} // namespace

std::expected<JsonValue, ScenarioError> parseJson(std::string_view text) {
    TreeBuilder builder(text);
    const bool isComplete = Json::sax_parse(text, &builder);
    return std::move(builder).result(isComplete);
}

std::string pathOfKey(std::string_view key) {
    if (isPlainWord(key)) {
        return "." + std::string(key);
    }
    return "[" + Json(key).dump() + "]";
}

std::string pathOfIndex(std::size_t index) {
    return "[" + std::to_string(index) + "]";
}

} // namespace cindertop::simulated
