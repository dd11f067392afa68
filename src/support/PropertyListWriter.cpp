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

void PropertyListWriter::startLine() {
    if (layout_ == PropertyListLayout::indented) {
        text_.append(depth_, '\t');
    }
}

void PropertyListWriter::endLine() {
    if (layout_ == PropertyListLayout::indented) {
        text_ += '\n';
    }
}

void PropertyListWriter::begin(std::string_view tag) {
    startLine();
    text_ += tag;
    endLine();
    ++depth_;
}

void PropertyListWriter::end(std::string_view tag) {
    --depth_;
    startLine();
    text_ += tag;
    endLine();
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
    startLine();
    text_ += "<key>";
    appendPropertyListText(text_, key);
    text_ += "</key>";
    endLine();
}

void PropertyListWriter::string(std::string_view text) {
    startLine();
    text_ += "<string>";
    appendPropertyListText(text_, text);
    text_ += "</string>";
    endLine();
}

void PropertyListWriter::integer(std::int64_t number) {
    startLine();
    text_ += "<integer>";
    appendNumber(text_, number);
    text_ += "</integer>";
    endLine();
}

void PropertyListWriter::real(double number) {
    if (!std::isfinite(number)) {
        throw PropertyListError("the value to write", "is no finite number");
    }
    startLine();
    text_ += "<real>";
    appendNumber(text_, number);
    text_ += "</real>";
    endLine();
}

void PropertyListWriter::boolean(bool value) {
    startLine();
    text_ += value ? "<true/>" : "<false/>";
    endLine();
}

void PropertyListWriter::date(Instant instant) {
    startLine();
    text_ += "<date>";
    appendUtcText(text_, instant);
    text_ += "</date>";
    endLine();
}

void PropertyListWriter::data(std::span<const std::byte> bytes) {
    startLine();
    text_ += "<data>";
    text_ += base64Text(bytes);
    text_ += "</data>";
    endLine();
}

std::string PropertyListWriter::finish() && {
    if (!text_.ends_with('\n')) {
        text_ += '\n';
    }
    text_ += "</plist>\n";
    return std::move(text_);
}

} // namespace cindertop
