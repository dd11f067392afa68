#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace cindertop {

/// Text as a JSON string; what is no valid UTF-8 is repaired.
std::string jsonString(std::string_view text);

/// Seconds as an exact decimal: "-86400.000001". A JSON library would write the nearest double, which may
/// have more decimals than a scenario allows.
std::string secondsText(std::chrono::nanoseconds time);

/// Writes a JSON object member by member.
class JsonObjectText {
public:
    /// `value` is JSON already.
    void add(std::string_view key, std::string_view value);

    bool isEmpty() const { return members_.empty(); }

    std::string text() const { return "{" + members_ + "}"; }

private:
    std::string members_;
};

/// Writes a JSON list element by element.
class JsonListText {
public:
    /// `value` is JSON already.
    void add(std::string_view value);

    std::string text() const { return "[" + elements_ + "]"; }

private:
    std::string elements_;
};

} // namespace cindertop
