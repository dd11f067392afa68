#pragma once

#include "support/PropertyListDocument.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {

/// A stretch of the text that the items were read from.
struct PropertyListSpan {
    std::uint32_t start = 0;
    std::uint32_t size = 0;
};

/// One value of a property list. All of them stand in one row, each dictionary and array before what it
/// holds: a long history has ten thousand, and the terminal reads them while one waits.
struct PropertyListItem {
    PropertyListSpan key;  ///< in a dictionary
    PropertyListSpan text; ///< of a number, string, date or data, without markup
    std::uint32_t end = 0; ///< the position behind this item and all that it holds
    PropertyListKind kind = PropertyListKind::boolean;
    bool isTrue = false;
};

/// A property list taken apart.
struct PropertyListTree {
    std::string text; ///< as the parser left it: read it through the items
    std::vector<PropertyListItem> items;

    std::string_view at(PropertyListSpan span) const {
        return std::string_view(text).substr(span.start, span.size);
    }
};

/// Takes the text apart; a PropertyListError for whatever is not sound.
PropertyListTree readPropertyListTree(std::string text);

/// Where the item at a position stands: "samples[3].level"; "the root" for the first. The items may be
/// incomplete behind it.
std::string propertyListPlace(const PropertyListTree& tree, std::size_t position);

} // namespace cindertop
