#pragma once

#include "report/Json.h"
#include "support/Enumeration.h"
#include "support/Instant.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <ranges>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

/// Records as JSON, each described once for writing and reading. Enumerations stand as the names of their
/// cases, what is absent as null. Readers throw a `Json::exception` or a `std::logic_error` for what no
/// writer wrote.
namespace cindertop {

/// Specialise with a `std::tuple` of fields in the order of the keys. A record that cannot be made without
/// its values is read by a constructor that takes them in that order.
template <typename Record>
inline constexpr std::nullptr_t jsonFields = nullptr;

/// Instants are seconds since the Unix epoch.
template <typename Value>
Value decodeJson(const Json& json);

/// A member under a key.
template <typename Record, typename Value>
struct JsonField {
    const char* key;
    Value Record::* member;

    void write(const Record& record, Json& object, Instant start) const {
        object[key] = encodeJson(record.*member, start);
    }

    Value read(const Json& object) const { return decodeJson<Value>(object.at(key)); }
};

/// A member that is left out where it has its usual value.
template <typename Record, typename Value>
struct UnusualJsonField {
    const char* key;
    Value Record::* member;
    Value usual;

    void write(const Record& record, Json& object, Instant start) const {
        if (record.*member != usual) {
            object[key] = encodeJson(record.*member, start);
        }
    }

    Value read(const Json& object) const {
        const auto found = object.find(key);
        return found == object.end() ? usual : decodeJson<Value>(*found);
    }
};

/// A member that is left out where it is as it was made.
template <typename Record, typename Value>
struct OptionalJsonField {
    const char* key;
    Value Record::* member;

    void write(const Record& record, Json& object, Instant start) const {
        if (record.*member != Value{}) {
            object[key] = encodeJson(record.*member, start);
        }
    }

    Value read(const Json& object) const {
        const auto found = object.find(key);
        return found == object.end() ? Value{} : decodeJson<Value>(*found);
    }
};

/// A member that is null as long as the whole record has only its default values.
template <typename Record, typename Value>
struct MeasuredJsonField {
    const char* key;
    Value Record::* member;

    void write(const Record& record, Json& object, Instant start) const {
        object[key] = record == Record{} ? Json(nullptr) : encodeJson(record.*member, start);
    }

    Value read(const Json& object) const {
        return decodeJson<std::optional<Value>>(object.at(key)).value_or(Record{}.*member);
    }
};

namespace detail {

constexpr double latestSecond = 9'000'000'000; ///< an Instant ends soon after

template <typename Value>
inline constexpr bool isOptional = false;
template <typename Value>
inline constexpr bool isOptional<std::optional<Value>> = true;

template <typename Record>
concept JsonRecord = !std::same_as<decltype(jsonFields<Record>), const std::nullptr_t>;

template <typename Value>
concept PlainJson =
    std::same_as<Value, bool> || std::same_as<Value, double> || std::same_as<Value, std::string>;

/// The library would cut off what does not fit.
template <std::integral Whole>
Whole wholeNumber(const Json& json) {
    const bool fits = json.is_number_unsigned()  ? std::in_range<Whole>(json.get<std::uint64_t>())
                      : json.is_number_integer() ? std::in_range<Whole>(json.get<std::int64_t>())
                                                 : false;
    if (!fits) {
        throw std::out_of_range("no such whole number");
    }
    return json.get<Whole>();
}

template <typename Enumeration>
Enumeration caseNamed(const std::string& name) {
    for (const auto& row : casesOf<Enumeration>()) {
        if (row.name == name) {
            return row.value;
        }
    }
    throw std::invalid_argument("no such case: " + name);
}

inline Instant instantAt(double seconds) {
    if (!(std::abs(seconds) < latestSecond)) {
        throw std::out_of_range("no instant");
    }
    return Instant(std::chrono::round<std::chrono::nanoseconds>(Seconds{seconds}));
}

template <typename List>
List decodeList(const Json& json) {
    if (!json.is_array()) {
        throw std::invalid_argument("no list");
    }
    List list;
    list.reserve(json.size());
    for (const auto& element : json) {
        list.push_back(decodeJson<typename List::value_type>(element));
    }
    return list;
}

template <typename Range>
Json encodeRange(const Range& range, Instant start) {
    constexpr bool isMap = requires { typename Range::mapped_type; };
    auto json = isMap ? Json::object() : Json::array();
    for (const auto& element : range) {
        if constexpr (isMap) {
            json[element.first] = encodeJson(element.second, start);
        } else {
            json.push_back(encodeJson(element, start));
        }
    }
    return json;
}

} // namespace detail

/// `rest` are the constructor's arguments behind those that stand in the JSON.
template <detail::JsonRecord Record, typename... Rest>
Record decodeRecord(const Json& object, const Rest&... rest) {
    return std::apply(
        [&](const auto&... field) {
            if constexpr (std::default_initializable<Record>) {
                Record record{};
                ((record.*field.member = field.read(object)), ...);
                return record;
            } else if constexpr (requires { typename Record::Fields; }) {
                return Record(typename Record::Fields{field.read(object)...});
            } else {
                return Record{field.read(object)..., rest...};
            }
        },
        jsonFields<Record>);
}

template <typename Value>
Json encodeJson(const Value& value, Instant start) {
    if constexpr (detail::PlainJson<Value> || std::integral<Value>) {
        return Json(value);
    } else if constexpr (std::is_enum_v<Value>) {
        return Json(caseName(value));
    } else if constexpr (std::same_as<Value, Seconds>) {
        return Json(value.count());
    } else if constexpr (std::same_as<Value, Instant>) {
        return Json(secondsBetween(start, value).count());
    } else if constexpr (detail::isOptional<Value>) {
        return value ? encodeJson(*value, start) : Json(nullptr);
    } else if constexpr (std::ranges::range<Value>) {
        return detail::encodeRange(value, start);
    } else {
        auto object = Json::object();
        std::apply([&](const auto&... field) { (field.write(value, object, start), ...); },
                   jsonFields<Value>);
        return object;
    }
}

template <typename Value>
Value decodeJson(const Json& json) {
    if constexpr (detail::PlainJson<Value>) {
        return json.get<Value>();
    } else if constexpr (std::integral<Value>) {
        return detail::wholeNumber<Value>(json);
    } else if constexpr (std::is_enum_v<Value>) {
        return detail::caseNamed<Value>(json.get<std::string>());
    } else if constexpr (std::same_as<Value, Seconds>) {
        return Seconds{json.get<double>()};
    } else if constexpr (std::same_as<Value, Instant>) {
        return detail::instantAt(json.get<double>());
    } else if constexpr (detail::isOptional<Value>) {
        return json.is_null() ? std::nullopt : Value(decodeJson<typename Value::value_type>(json));
    } else if constexpr (std::ranges::range<Value>) {
        return detail::decodeList<Value>(json);
    } else {
        return decodeRecord<Value>(json);
    }
}

} // namespace cindertop
