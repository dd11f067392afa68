#pragma once

#include "support/Instant.h"
#include "support/PropertyListDocument.h"
#include "support/PropertyListWriter.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cindertop {

/// A property list as a tree of values, for files whose keys nobody knows beforehand.
struct PropertyListValue {
    using Array = std::vector<PropertyListValue>;
    using Dictionary = std::map<std::string, PropertyListValue, std::less<>>;
    using Data = std::vector<std::byte>;

    std::variant<bool, std::int64_t, double, std::string, Instant, Data, Array, Dictionary> value;

    bool operator==(const PropertyListValue&) const = default;
};

PropertyListValue propertyListValue(const PropertyListNode& node);
std::expected<PropertyListValue, PropertyListError> parsePropertyList(std::string text);

/// Dictionaries are written in the order of their keys. Refused: numbers that are not finite, keys of one
/// dictionary that differ only in characters that cannot be written, and nesting that could not be read back.
std::expected<std::string, PropertyListError> propertyListText(const PropertyListValue& value,
                                                               PropertyListLayout layout);

/// What can still be read of the text of a dictionary that is no valid property list, for example because a
/// person has mistyped a tag: every entry that is well-formed by itself, and the first of two with one key.
/// Comments are skipped. Entries within an entry count as the dictionary's own.
PropertyListValue::Dictionary salvagedPropertyListEntries(std::string_view text);

} // namespace cindertop
