#include "support/PropertyListSalvage.h"

#include <algorithm>
#include <string>
#include <utility>
#include <variant>

namespace cindertop {
namespace {

std::string withoutComments(std::string_view text) {
    constexpr std::string_view begin = "<!--";
    constexpr std::string_view end = "-->";
    std::string result;
    for (;;) {
        const auto comment = text.find(begin);
        result += text.substr(0, comment);
        const auto last =
            comment == std::string_view::npos ? comment : text.find(end, comment + begin.size());
        if (last == std::string_view::npos) { // also of a comment without an end nothing counts
            return result;
        }
        text.remove_prefix(last + end.size());
    }
}

} // namespace

PropertyListValue::Dictionary salvagedPropertyListEntries(std::string_view text) {
    constexpr std::string_view key = "<key>";
    PropertyListValue::Dictionary entries;
    const std::string readable = withoutComments(text);
    for (auto at = readable.find(key); at != std::string::npos;) {
        const auto next = readable.find(key, at + key.size());
        const auto end = std::min(next, readable.find("</dict>", at));
        auto entry = parsePropertyList("<plist version=\"1.0\"><dict>" + readable.substr(at, end - at) +
                                       "</dict></plist>");
        if (auto* const read = entry ? std::get_if<PropertyListValue::Dictionary>(&entry->value) : nullptr) {
            entries.merge(*read);
        }
        at = next;
    }
    return entries;
}

} // namespace cindertop
