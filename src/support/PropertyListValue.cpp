#include "support/PropertyListValue.h"

#include "support/PropertyListText.h"

#include <set>

namespace cindertop {
namespace {

class TreeWriter {
public:
    explicit TreeWriter(PropertyListLayout layout) : writer_(layout) {}

    void write(const PropertyListValue& value) {
        std::visit([this](const auto& held) { put(held); }, value.value);
    }

    std::string finish() && { return std::move(writer_).finish(); }

private:
    void put(bool value) { writer_.boolean(value); }

    void put(std::int64_t number) { writer_.integer(number); }

    void put(double number) { writer_.real(number); }

    void put(const std::string& text) { writer_.string(text); }

    void put(Instant instant) { writer_.date(instant); }

    void put(const PropertyListValue::Data& bytes) { writer_.data(bytes); }

    void put(const PropertyListValue::Array& array) {
        enter();
        writer_.beginArray();
        for (const PropertyListValue& value : array) {
            write(value);
        }
        writer_.endArray();
        --depth_;
    }

    void put(const PropertyListValue::Dictionary& dictionary) {
        enter();
        checkKeys(dictionary);
        writer_.beginDictionary();
        for (const auto& [key, value] : dictionary) {
            writer_.key(key);
            write(value);
        }
        writer_.endDictionary();
        --depth_;
    }

    void enter() {
        if (++depth_ > propertyListDepthLimit) {
            throw PropertyListError("the value to write", "is nested too deep");
        }
    }

    static void checkKeys(const PropertyListValue::Dictionary& dictionary) {
        std::set<std::string> written;
        for (const auto& [key, value] : dictionary) {
            if (!written.insert(writablePropertyListText(key)).second) {
                throw PropertyListError("the value to write", "has two keys that would become one");
            }
        }
    }

    PropertyListWriter writer_;
    int depth_ = 0;
};

PropertyListValue treeOfArray(const PropertyListNode& node) {
    PropertyListValue::Array array;
    for (const PropertyListNode& value : node.array()) {
        array.push_back(propertyListValue(value));
    }
    return {std::move(array)};
}

PropertyListValue treeOfDictionary(const PropertyListNode& node) {
    PropertyListValue::Dictionary dictionary;
    for (const auto& [key, value] : node.dictionary().entries()) {
        dictionary.emplace(key, propertyListValue(value));
    }
    return {std::move(dictionary)};
}

} // namespace

PropertyListValue propertyListValue(const PropertyListNode& node) {
    switch (node.kind()) {
    case PropertyListKind::dictionary:
        return treeOfDictionary(node);
    case PropertyListKind::array:
        return treeOfArray(node);
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
        TreeWriter writer(layout);
        writer.write(value);
        return std::move(writer).finish();
    } catch (const PropertyListError& error) {
        return std::unexpected(error);
    }
}

} // namespace cindertop
