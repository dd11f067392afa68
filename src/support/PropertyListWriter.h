#pragma once

#include "support/Instant.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace cindertop {

/// Whether people are to read the file, or it is to be small.
enum class PropertyListLayout : std::uint8_t { indented, compact };

/// Writes the text of an XML property list value by value. Control characters other than tab and newline are
/// left out of keys and texts, so two keys must not differ in them alone. What no reader would take, a number
/// that is not finite or too deep a nesting, throws a PropertyListError.
class PropertyListWriter {
public:
    /// `expectedSize` bytes of text find room without a move.
    explicit PropertyListWriter(PropertyListLayout layout, std::size_t expectedSize = 0);

    void beginDictionary();
    void endDictionary();
    void beginArray();
    void endArray();
    /// Inside a dictionary, before each value.
    void key(std::string_view key);

    void string(std::string_view text);
    void integer(std::int64_t number);
    /// The shortest text that reads back as the same number.
    void real(double number);
    void boolean(bool value);
    void date(Instant instant); ///< its second; the fraction is dropped
    void data(std::span<const std::byte> bytes);

    /// The whole text, once the outermost value is written.
    std::string finish() &&;

private:
    void begin(std::string_view tag);
    void end(std::string_view tag);
    template <typename Append>
    void line(const Append& append);
    template <typename Append>
    void element(std::string_view name, const Append& append);

    std::string text_;
    PropertyListLayout layout_;
    std::size_t depth_ = 0;
};

} // namespace cindertop
