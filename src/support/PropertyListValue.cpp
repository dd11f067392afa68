#include "support/PropertyListValue.h"

#include "support/PropertyListText.h"

#include <algorithm>
#include <set>
#include <utility>

namespace cindertop {
namespace {

void checkKeys(const PropertyListValue::Dictionary& dictionary) {
    std::set<std::string> written;
    for (const auto& [key, value] : dictionary) {
        if (!written.insert(writablePropertyListText(key)).second) {
            throw PropertyListError("the value to write", "has two keys that would become one");
        }
    }
}

struct ValueWriter {
    PropertyListWriter writer;

    void operator()(const PropertyListValue& value) { std::visit(*this, value.value); }

    void operator()(bool value) { writer.boolean(value); }

    void operator()(std::int64_t number) { writer.integer(number); }

    void operator()(double number) { writer.real(number); }

    void operator()(const std::string& text) { writer.string(text); }

    void operator()(Instant instant) { writer.date(instant); }

    void operator()(const PropertyListValue::Data& bytes) { writer.data(bytes); }

    void operator()(const PropertyListValue::Array& array) {
        writer.beginArray();
        for (const PropertyListValue& value : array) {
            (*this)(value);
        }
        writer.endArray();
    }

    void operator()(const PropertyListValue::Dictionary& dictionary) {
        checkKeys(dictionary);
        writer.beginDictionary();
        for (const auto& [key, value] : dictionary) {
            writer.key(key);
            (*this)(value);
        }
        writer.endDictionary();
    }
};

PropertyListValue arrayOf(const PropertyListNode& node) {
    PropertyListValue::Array array;
    std::ranges::transform(node.array(), std::back_inserter(array), propertyListValue);
    return {std::move(array)};
}

PropertyListValue dictionaryOf(const PropertyListNode& node) {
    PropertyListValue::Dictionary dictionary;
    for (const auto& [key, value] : node.dictionary().entries()) {
        dictionary.emplace(key, propertyListValue(value));
    }
    return {std::move(dictionary)};
}

std::string withoutComments(std::string_view text) {
    constexpr std::string_view begin = "<!--";
    constexpr std::string_view end = "-->";
    std::string result;
    for (;;) {
        const auto comment = text.find(begin);
        result += text.substr(0, comment);
        const auto last =
            comment == std::string_view::npos ? comment : text.find(end, comment + begin.size());
        if (last == std::string_view::npos) { // an unterminated comment is skipped to the end
            return result;
        }
        text.remove_prefix(last + end.size());
    }
}

} // namespace

PropertyListValue propertyListValue(const PropertyListNode& node) {
    switch (node.kind()) {
    case PropertyListKind::dictionary:
        return dictionaryOf(node);
    case PropertyListKind::array:
        return arrayOf(node);
    case PropertyListKind::string:
        return {std::string(node.string())};
    case PropertyListKind::integer:
        return {node.integer()};
    case PropertyListKind::real:
        return {node.real()};
    case PropertyListKind::boolean:
        return {node.boolean()};
    case PropertyListKind::date:
        return {node.date()};
    case PropertyListKind::data:
        return {node.data()};
    }
    return {};
}

std::expected<PropertyListValue, PropertyListError> parsePropertyList(std::string text) {
    return decodedPropertyList(std::move(text), propertyListValue);
}

std::expected<std::string, PropertyListError> propertyListText(const PropertyListValue& value,
                                                               PropertyListLayout layout) {
    try {
        ValueWriter write{PropertyListWriter(layout)};
        write(value);
        return std::move(write.writer).finish();
    } catch (const PropertyListError& error) {
        return std::unexpected(error);
    }
}

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
