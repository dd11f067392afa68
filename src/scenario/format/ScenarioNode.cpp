#include "scenario/format/ScenarioNode.h"

#include "scenario/format/JsonTree.h"

#include <algorithm>

namespace cindertop::simulated {

namespace {

constexpr int nanosecondDigits = 9;

/// Whether no double is large enough. Too small a number is 0.
bool isBeyondDoubles(std::string_view number) {
    const auto scaled = scaledDecimal(number, 0);
    return !scaled && scaled.error() == DecimalError::tooLarge;
}

} // namespace

std::string ScenarioNode::path() const {
    if (parent_ == nullptr) {
        return {};
    }
    const auto* const key = std::get_if<std::string_view>(&step_);
    const std::string step = key != nullptr ? pathOfKey(*key) : pathOfIndex(std::get<std::size_t>(step_));
    const std::string path = parent_->path() + step;
    return path.starts_with('.') ? path.substr(1) : path;
}

void ScenarioNode::fail(std::string_view problem) const {
    const auto place = path();
    throw ScenarioError{(place.empty() ? "A scenario" : place) + " " + std::string(problem) + "."};
}

bool ScenarioNode::boolean() const {
    const auto* const boolean = std::get_if<bool>(&value_->value);
    if (boolean == nullptr) {
        fail("must be true or false");
    }
    return *boolean;
}

const std::string& ScenarioNode::text() const {
    const auto* const text = std::get_if<std::string>(&value_->value);
    if (text == nullptr) {
        fail("must be text");
    }
    return *text;
}

std::optional<std::string> ScenarioNode::textOrNull() const {
    if (isNull()) {
        return std::nullopt;
    }
    const auto* const text = std::get_if<std::string>(&value_->value);
    if (text == nullptr) {
        fail("must be text or null");
    }
    return *text;
}

double ScenarioNode::number() const {
    const auto* const number = std::get_if<JsonNumber>(&value_->value);
    if (number == nullptr) {
        fail("must be a number");
    }
    const std::string_view written = number->text;
    double value = 0;
    const auto [end, error] = std::from_chars(written.data(), written.data() + written.size(), value);
    if (error == std::errc{}) {
        return value;
    }
    if (isBeyondDoubles(written)) {
        fail("is too large a number");
    }
    return 0;
}

std::chrono::nanoseconds ScenarioNode::seconds(int digits) const {
    const auto* const number = std::get_if<JsonNumber>(&value_->value);
    if (number == nullptr) {
        fail("must be a number of seconds");
    }
    if (const auto exact = scaledDecimal(number->text, digits);
        !exact && exact.error() == DecimalError::tooPrecise) {
        fail("has more than " + std::to_string(digits) + " decimals");
    }
    const auto nanoseconds = scaledDecimal(number->text, nanosecondDigits);
    if (!nanoseconds) {
        fail("is too far from 0");
    }
    return std::chrono::nanoseconds(*nanoseconds);
}

std::chrono::nanoseconds ScenarioNode::secondsFromZero() const {
    const auto time = seconds(nanosecondDigits);
    if (time < std::chrono::nanoseconds::zero()) {
        fail("must not be negative");
    }
    return time;
}

std::string_view ScenarioNode::wholeNumber() const {
    const auto* const number = std::get_if<JsonNumber>(&value_->value);
    if (number == nullptr || number->text.find_first_of(".eE") != std::string::npos) {
        fail("must be a whole number");
    }
    return number->text;
}

std::int64_t ScenarioNode::clampedInteger() const {
    const std::string_view written = wholeNumber();
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(written.data(), written.data() + written.size(), value);
    if (error == std::errc{}) {
        return value;
    }
    using Limits = std::numeric_limits<std::int64_t>;
    return written.starts_with('-') ? Limits::min() : Limits::max();
}

PreferenceValue ScenarioNode::preferenceValue() const {
    if (const auto* const boolean = std::get_if<bool>(&value_->value)) {
        return *boolean;
    }
    if (const auto* const text = std::get_if<std::string>(&value_->value)) {
        return *text;
    }
    if (std::holds_alternative<JsonNumber>(value_->value)) {
        return clampedInteger();
    }
    fail("must be true, false, a whole number or text");
}

const JsonValue::Object& ScenarioNode::members() const {
    const auto* const object = std::get_if<JsonValue::Object>(&value_->value);
    if (object == nullptr) {
        fail("must be an object");
    }
    return *object;
}

const JsonValue::List& ScenarioNode::elements() const {
    const auto* const list = std::get_if<JsonValue::List>(&value_->value);
    if (list == nullptr) {
        fail("must be a list");
    }
    return *list;
}

std::optional<ScenarioNode> ScenarioNode::findMember(std::string_view key) const {
    const auto found = std::ranges::find(members(), key, &JsonMember::key);
    if (found == members().end()) {
        return std::nullopt;
    }
    return ScenarioNode(found->value, *this, found->key);
}

ScenarioNode ScenarioNode::member(std::string_view key) const {
    auto node = findMember(key);
    if (!node) {
        static const JsonValue nothing;
        ScenarioNode(nothing, *this, key).fail("is missing");
    }
    return *node;
}

ScenarioObject::ScenarioObject(const ScenarioNode& node, std::initializer_list<std::string_view> knownKeys)
    : node_(node) {
    for (const JsonMember& member : node.members()) {
        if (std::ranges::find(knownKeys, member.key) == knownKeys.end()) {
            ScenarioNode(member.value, node, member.key).fail("is not a known key");
        }
    }
}

} // namespace cindertop::simulated
