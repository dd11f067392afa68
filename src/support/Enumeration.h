#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>

namespace cindertop {

/// One row of an enumeration's table: the case, its name and the raw value that files and buses carry.
template <typename Enumeration, typename Raw>
struct EnumerationCase {
    Enumeration value;
    std::string_view name;
    Raw rawValue;

    constexpr EnumerationCase(Enumeration value, std::string_view name, Raw rawValue)
        : value(value), name(name), rawValue(rawValue) {}

    /// The raw value of most enumerations is the case's name.
    constexpr EnumerationCase(Enumeration value, std::string_view name)
        requires std::same_as<Raw, std::string_view>
        : value(value), name(name), rawValue(name) {}
};

template <typename Enumeration>
EnumerationCase(Enumeration, const char*) -> EnumerationCase<Enumeration, std::string_view>;

/// Specialise with `static constexpr std::array cases{EnumerationCase{...}, ...}` in declaration order.
template <typename Enumeration>
struct EnumerationTable;

/// Every case with its name and raw value, in declaration order.
template <typename Enumeration>
constexpr const auto& casesOf() {
    return EnumerationTable<Enumeration>::cases;
}

namespace detail {

template <typename Enumeration>
constexpr const auto& rowOf(Enumeration value) {
    for (const auto& row : casesOf<Enumeration>()) {
        if (row.value == value) {
            return row;
        }
    }
    return casesOf<Enumeration>().front(); // not reached: a table lists every case
}

} // namespace detail

template <typename Enumeration>
constexpr auto rawValue(Enumeration value) {
    return detail::rowOf(value).rawValue;
}

/// The case's name as it stands in the code, for example "serious".
template <typename Enumeration>
constexpr std::string_view caseName(Enumeration value) {
    return detail::rowOf(value).name;
}

/// The case with this raw value; none when the table has no such row.
template <typename Enumeration, typename Raw>
constexpr std::optional<Enumeration> fromRawValue(const Raw& raw) {
    for (const auto& row : casesOf<Enumeration>()) {
        if (row.rawValue == raw) {
            return row.value;
        }
    }
    return std::nullopt;
}

} // namespace cindertop
