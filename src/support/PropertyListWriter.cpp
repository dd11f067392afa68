#include "support/PropertyListWriter.h"

#include "support/Base64.h"
#include "support/DateText.h"
#include "support/PropertyListError.h"
#include "support/PropertyListText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace cindertop {
namespace {

constexpr std::string_view head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                  "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                  "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                  "<plist version=\"1.0\">\n";

[[noreturn]] void refuse(const std::string& problem) {
    throw PropertyListError("the value to write", problem);
}

template <typename Number>
void appendNumber(std::string& text, Number number) {
    std::array<char, 32> digits{}; // the longest double takes 24
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), result.ptr);
}

} // namespace

PropertyListWriter::PropertyListWriter(PropertyListLayout layout, std::size_t expectedSize)
    : layout_(layout) {
    text_.reserve(expectedSize);
    text_ += head;
}

template <typename Append>
void PropertyListWriter::line(const Append& append) {
    const bool isIndented = layout_ == PropertyListLayout::indented;
    text_.append(isIndented ? depth_ : 0, '\t');
    append();
    text_.append(isIndented ? 1 : 0, '\n');
}

void PropertyListWriter::begin(std::string_view tag) {
    line([&] { text_ += tag; });
    if (++depth_ > propertyListDepthLimit) {
        refuse("is nested too deep");
    }
}

void PropertyListWriter::end(std::string_view tag) {
    --depth_;
    line([&] { text_ += tag; });
}

template <typename Append>
void PropertyListWriter::element(std::string_view name, const Append& append) {
    line([&] {
        text_.append("<").append(name).append(">");
        append();
        text_.append("</").append(name).append(">");
    });
}

void PropertyListWriter::beginDictionary() {
    begin("<dict>");
}

void PropertyListWriter::endDictionary() {
    end("</dict>");
}

void PropertyListWriter::beginArray() {
    begin("<array>");
}

void PropertyListWriter::endArray() {
    end("</array>");
}

void PropertyListWriter::key(std::string_view key) {
    element("key", [&] { appendPropertyListText(text_, key); });
}

void PropertyListWriter::string(std::string_view text) {
    element("string", [&] { appendPropertyListText(text_, text); });
}

void PropertyListWriter::integer(std::int64_t number) {
    element("integer", [&] { appendNumber(text_, number); });
}

void PropertyListWriter::real(double number) {
    if (!std::isfinite(number)) {
        refuse("is no finite number");
    }
    element("real", [&] { appendNumber(text_, number); });
}

void PropertyListWriter::boolean(bool value) {
    line([&] { text_ += value ? "<true/>" : "<false/>"; });
}

void PropertyListWriter::date(Instant instant) {
    element("date", [&] { appendUtcText(text_, instant); });
}

void PropertyListWriter::data(std::span<const std::byte> bytes) {
    element("data", [&] { text_ += base64Text(bytes); });
}

std::string PropertyListWriter::finish() && {
    if (!text_.ends_with('\n')) {
        text_ += '\n';
    }
    text_ += "</plist>\n";
    return std::move(text_);
}

} // namespace cindertop
