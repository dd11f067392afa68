#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// A file above this is refused unread: an hour of history at the densest takes 12 MB.
inline constexpr std::size_t propertyListSizeLimit = 32UZ * 1024 * 1024;

/// Where the element `plist` begins in the text of an XML property list. Everything that the XML parser would
/// let pass is refused here by a PropertyListError: another doctype than the standard one and with it every
/// entity, text before and after the element, references to anything but characters, bytes that are no UTF-8,
/// control characters.
std::size_t checkedPropertyListStart(std::string_view text);

/// A number that fills the whole text: an optional minus, digits; none when it does not fit.
std::optional<std::int64_t> parsePropertyListInteger(std::string_view text);

/// Decimal, perhaps with an exponent; none for NaN, infinities and numbers beyond a double's range.
std::optional<double> parsePropertyListReal(std::string_view text);

/// Appends text with the characters of markup escaped, without control characters other than tab and newline
/// and without what XML cannot hold; bytes that are no UTF-8 become U+FFFD.
void appendPropertyListText(std::string& output, std::string_view text);

/// What `appendPropertyListText` keeps of a text, unescaped.
std::string writablePropertyListText(std::string_view text);

} // namespace cindertop
