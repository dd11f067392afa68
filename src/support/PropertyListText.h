#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cindertop {

/// A file above this is refused unread: an hour of history at the densest takes 12 MB.
inline constexpr std::size_t propertyListSizeLimit = 32UZ * 1024 * 1024;

/// How many dictionaries and arrays may stand inside each other, read or written.
inline constexpr std::size_t propertyListDepthLimit = 64;

/// Refuses by a PropertyListError what the XML parser would let pass: a text beyond the limit, bytes that are
/// no UTF-8, control characters, references to anything but characters.
void checkPropertyListText(std::string_view text);

/// Appends text with the characters of markup escaped, without control characters other than tab and newline
/// and without what XML cannot hold; bytes that are no UTF-8 become U+FFFD.
void appendPropertyListText(std::string& output, std::string_view text);

/// What `appendPropertyListText` keeps of a text, unescaped.
std::string writablePropertyListText(std::string_view text);

} // namespace cindertop
