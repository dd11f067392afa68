#pragma once

#include "support/PropertyListValue.h"

#include <string_view>

namespace cindertop {

/// What can still be read of the text of a dictionary that is no valid property list, for example because a
/// person has mistyped a tag: every entry that is well-formed by itself, and the first of two with one key.
/// Nothing of what stands in comments. Entries within an entry count as the dictionary's own.
PropertyListValue::Dictionary salvagedPropertyListEntries(std::string_view text);

} // namespace cindertop
