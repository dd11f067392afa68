#pragma once

#include "platform/PropertyValue.h"
#include "scenario/format/JsonTree.h"

#include <charconv>
#include <chrono>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>
#include <vector>

namespace cindertop::simulated {

/// One value of a scenario's text, and where it stands. Its readers throw a ScenarioError that names the
/// place when the value is of another kind or out of range. Its parent must outlive it.
class ScenarioNode {
public:
    explicit ScenarioNode(const JsonValue& root) : value_(&root) {}

    ScenarioNode(const JsonValue& value, const ScenarioNode& parent, std::string_view key)
        : value_(&value), parent_(&parent), step_(key) {}

    ScenarioNode(const JsonValue& value, const ScenarioNode& parent, std::size_t index)
        : value_(&value), parent_(&parent), step_(index) {}

    /// "frames[3].processes[0].pid"; empty for the whole text.
    std::string path() const;
    /// `problem` goes on after the path: "must be a boolean".
    [[noreturn]] void fail(std::string_view problem) const;

    bool isNull() const { return std::holds_alternative<std::nullptr_t>(value_->value); }

    bool boolean() const;
    const std::string& text() const;
    std::optional<std::string> textOrNull() const;
    /// Finite, the nearest double.
    double number() const;
    /// Exact, with at most `digits` decimals (up to 9).
    std::chrono::nanoseconds seconds(int digits) const;
    std::chrono::nanoseconds secondsFromZero() const;

    template <std::integral Integer>
    Integer integer(Integer least = std::numeric_limits<Integer>::min(),
                    Integer most = std::numeric_limits<Integer>::max()) const {
        const std::string_view written = wholeNumber();
        Integer value{};
        const auto [end, error] = std::from_chars(written.data(), written.data() + written.size(), value);
        // An unsigned reader stops at the sign.
        if (error != std::errc{} || value < least || value > most) {
            fail("must be a whole number from " + std::to_string(least) + " to " + std::to_string(most));
        }
        return value;
    }

    /// Any whole number; one that 64 bits cannot hold is the nearest that they do.
    std::int64_t clampedInteger() const;
    /// A boolean, any whole number (as above) or text.
    PreferenceValue preferenceValue() const;

    const JsonValue::Object& members() const;
    /// The value of a key of an object, whatever its other keys are; none when it is missing.
    std::optional<ScenarioNode> findMember(std::string_view key) const;
    ScenarioNode member(std::string_view key) const;
    const JsonValue::List& elements() const;

    /// Each element of a list, read by `read(const ScenarioNode&)`.
    template <typename Read>
    auto list(const Read& read) const {
        std::vector<decltype(read(*this))> results;
        results.reserve(elements().size());
        for (std::size_t index = 0; index < elements().size(); ++index) {
            results.push_back(read(ScenarioNode(elements()[index], *this, index)));
        }
        return results;
    }

private:
    std::string_view wholeNumber() const;

    const JsonValue* value_;
    const ScenarioNode* parent_ = nullptr;
    std::variant<std::string_view, std::size_t> step_;
};

/// An object of a scenario's text, all of whose keys are known.
class ScenarioObject {
public:
    /// Throws when the value is no object or has a key that is not listed.
    ScenarioObject(const ScenarioNode& node, std::initializer_list<std::string_view> knownKeys);

    ScenarioObject(const ScenarioObject&) = delete;
    ScenarioObject& operator=(const ScenarioObject&) = delete;

    std::optional<ScenarioNode> find(std::string_view key) const { return node_.findMember(key); }

    /// Throws when the key is missing.
    ScenarioNode at(std::string_view key) const { return node_.member(key); }

    /// Leaves the target alone when the key is missing.
    template <typename Value, typename Read>
    void readInto(Value& target, std::string_view key, const Read& read) const {
        if (const auto node = find(key)) {
            target = std::invoke(read, *node);
        }
    }

private:
    ScenarioNode node_;
};

} // namespace cindertop::simulated
