#include "support/PropertyListDocument.h"

#include "support/Base64.h"
#include "support/DateText.h"
#include "support/PropertyListText.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <system_error>
#include <tuple>

namespace cindertop {
namespace {

/// All that stands in the text becomes a node, but blanks between elements, so that what does not belong
/// there is seen. The first text of an element is the element's own value, which halves the nodes.
constexpr unsigned parsing = pugi::parse_fragment | pugi::parse_declaration | pugi::parse_doctype |
                             pugi::parse_pi | pugi::parse_comments | pugi::parse_cdata | pugi::parse_escapes |
                             pugi::parse_eol | pugi::parse_ws_pcdata_single | pugi::parse_embed_pcdata;

struct KindRow {
    std::string_view element;
    PropertyListKind kind;
    std::string_view name;
};

// The frequent ones first.
constexpr std::array kinds{
    KindRow{"false", PropertyListKind::boolean, "boolean"},
    KindRow{"true", PropertyListKind::boolean, "boolean"},
    KindRow{"real", PropertyListKind::real, "real"},
    KindRow{"integer", PropertyListKind::integer, "integer"},
    KindRow{"string", PropertyListKind::string, "string"},
    KindRow{"dict", PropertyListKind::dictionary, "dictionary"},
    KindRow{"date", PropertyListKind::date, "date"},
    KindRow{"array", PropertyListKind::array, "array"},
    KindRow{"data", PropertyListKind::data, "data"},
};

bool isBlank(std::string_view text) {
    return trimmingWhitespace(text).empty();
}

bool isElement(const pugi::xml_node& node) {
    return node.type() == pugi::node_element;
}

/// "samples[3].level"; empty for the outermost value.
std::string pathOf(const pugi::xml_node& element) {
    const pugi::xml_node container = element.parent();
    const std::string_view kind = container.name();
    std::vector<pugi::xml_node> before; // the nearest first
    for (auto node = element.previous_sibling(); !node.empty(); node = node.previous_sibling()) {
        if (isElement(node)) {
            before.push_back(node);
        }
    }
    if (kind == "array") {
        return pathOf(container) + '[' + std::to_string(before.size()) + ']';
    }
    if (kind != "dict" || before.empty()) {
        return {};
    }
    std::string path = pathOf(container);
    return path.append(path.empty() ? "" : ".").append(before.front().value());
}

std::string placeOf(const pugi::xml_node& element) {
    const std::string path = pathOf(element);
    return path.empty() ? "the root" : path;
}

[[noreturn]] void refuse(const pugi::xml_node& element, const std::string& problem) {
    throw PropertyListError(placeOf(element), problem);
}

/// Besides elements a container holds comments and blanks, and nothing else.
std::vector<pugi::xml_node> elementsOf(const pugi::xml_node& container) {
    std::vector<pugi::xml_node> elements;
    bool isSound = isBlank(container.value());
    for (const pugi::xml_node& child : container.children()) {
        if (isElement(child)) {
            elements.push_back(child);
        } else if (child.type() != pugi::node_comment) {
            isSound = isSound && child.type() == pugi::node_pcdata && isBlank(child.value());
        }
    }
    if (!isSound) {
        refuse(container, "holds something between its values");
    }
    return elements;
}

bool isKey(const pugi::xml_node& element) {
    return std::string_view(element.name()) == "key";
}

bool hasTextAlone(const pugi::xml_node& element) {
    return element.first_child().empty() && element.first_attribute().empty();
}

template <typename Number>
std::optional<Number> parsed(std::string_view text) {
    Number value{};
    const char* const end = std::to_address(text.end());
    const auto [rest, error] = std::from_chars(std::to_address(text.begin()), end, value);
    return error == std::errc{} && rest == end ? std::optional(value) : std::nullopt;
}

bool isStandardDoctype(std::string_view text) {
    return text == "plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                   "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\"" ||
           text == "plist PUBLIC \"-//Apple Computer//DTD PLIST 1.0//EN\" "
                   "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\"";
}

/// Before the property list stand a declaration, the standard doctype and comments, and nothing else.
void checkProlog(const pugi::xml_document& document) {
    for (auto node = document.first_child(); !node.next_sibling().empty(); node = node.next_sibling()) {
        if (node.type() == pugi::node_declaration) {
            if (lowerCased(node.attribute("encoding").as_string("utf-8")) != "utf-8") {
                refuse(node, "is in another encoding than UTF-8");
            }
        } else if (node.type() == pugi::node_doctype) {
            if (!isStandardDoctype(node.value())) {
                refuse(node, "is of another doctype than that of property lists");
            }
        } else if (node.type() != pugi::node_comment) {
            refuse(node, "is not a single property list");
        }
    }
}

/// The outermost value.
pugi::xml_node rootOf(const pugi::xml_document& document) {
    checkProlog(document);
    const pugi::xml_node plist = document.last_child();
    if (!isElement(plist) || std::string_view(plist.name()) != "plist") {
        refuse(plist, "is no property list");
    }
    for (const pugi::xml_attribute& attribute : plist.attributes()) {
        if (std::string_view(attribute.name()) != "version" || std::string_view(attribute.value()) != "1.0") {
            refuse(plist, "is of another version than 1.0");
        }
    }
    const auto values = elementsOf(plist);
    if (values.size() != 1) {
        refuse(plist, "does not hold one value");
    }
    return values.front();
}

void check(const PropertyListNode& node, std::size_t depth);

void checkEntries(const PropertyListNode& node, std::size_t depth) {
    const auto entries = node.dictionary().entries();
    std::vector<std::string_view> keys;
    keys.reserve(entries.size());
    for (const auto& [key, value] : entries) {
        check(value, depth);
        keys.push_back(key);
    }
    std::ranges::sort(keys);
    if (const auto twice = std::ranges::adjacent_find(keys); twice != keys.end()) {
        throw PropertyListError(node.place(), "has the key \"" + std::string(*twice) + "\" twice");
    }
}

/// Asks each value once for what it is.
void check(const PropertyListNode& node, std::size_t depth) {
    const PropertyListKind kind = node.kind();
    const bool isContainer = kind == PropertyListKind::dictionary || kind == PropertyListKind::array;
    if (isContainer && depth == propertyListDepthLimit) {
        throw PropertyListError(node.place(), "is nested too deep");
    }
    switch (kind) {
    case PropertyListKind::dictionary:
        checkEntries(node, depth + 1);
        break;
    case PropertyListKind::array:
        for (const PropertyListNode& value : node.array()) {
            check(value, depth + 1);
        }
        break;
    case PropertyListKind::string:
        std::ignore = node.string();
        break;
    case PropertyListKind::integer:
        std::ignore = node.integer();
        break;
    case PropertyListKind::real:
        std::ignore = node.real();
        break;
    case PropertyListKind::boolean:
        std::ignore = node.boolean();
        break;
    case PropertyListKind::date:
        std::ignore = node.date();
        break;
    case PropertyListKind::data:
        std::ignore = node.data();
        break;
    }
}

} // namespace

PropertyListKind PropertyListNode::kind() const {
    const auto row = std::ranges::find(kinds, std::string_view(element_.name()), &KindRow::element);
    if (row == kinds.end()) {
        refuse(element_, std::string("is an unknown element <") + element_.name() + ">");
    }
    if (!element_.first_attribute().empty()) {
        refuse(element_, "has an attribute");
    }
    return row->kind;
}

std::string PropertyListNode::place() const {
    return placeOf(element_);
}

void PropertyListNode::require(PropertyListKind wanted) const {
    if (kind() != wanted) {
        refuse(element_, "is no " + std::string(std::ranges::find(kinds, wanted, &KindRow::kind)->name));
    }
}

/// Text alone: beside a comment the parser drops blanks, which may have been meant.
std::string_view PropertyListNode::textOf(PropertyListKind wanted) const {
    require(wanted);
    if (!hasTextAlone(element_)) {
        refuse(element_, "holds more than text");
    }
    return element_.value();
}

template <typename Value>
Value PropertyListNode::sound(std::optional<Value> value, const char* problem) const {
    if (!value) {
        refuse(element_, problem);
    }
    return *std::move(value);
}

std::string_view PropertyListNode::string() const {
    return textOf(PropertyListKind::string);
}

std::int64_t PropertyListNode::integer() const {
    return sound(parsed<std::int64_t>(textOf(PropertyListKind::integer)), "is no integer of 64 bits");
}

double PropertyListNode::real() const {
    const auto number = parsed<double>(textOf(PropertyListKind::real));
    return sound(number && std::isfinite(*number) ? number : std::nullopt, "is no finite number");
}

bool PropertyListNode::boolean() const {
    if (!textOf(PropertyListKind::boolean).empty()) {
        refuse(element_, "is a boolean with text");
    }
    return *element_.name() == 't';
}

Instant PropertyListNode::date() const {
    return sound(parseUtcText(textOf(PropertyListKind::date)), "is no date");
}

std::vector<std::byte> PropertyListNode::data() const {
    return sound(parseBase64(textOf(PropertyListKind::data)), "is no base64 data");
}

std::vector<PropertyListNode> PropertyListNode::array() const {
    require(PropertyListKind::array);
    const auto elements = elementsOf(element_);
    return {elements.begin(), elements.end()};
}

PropertyListDictionary PropertyListNode::dictionary() const {
    require(PropertyListKind::dictionary);
    const auto elements = elementsOf(element_);
    std::vector<PropertyListDictionary::Entry> entries;
    entries.reserve(elements.size() / 2);
    for (auto key = elements.begin(); key != elements.end(); key += 2) {
        if (!isKey(*key)) {
            refuse(element_, "has a value without a key");
        }
        if (key + 1 == elements.end() || isKey(*(key + 1))) {
            refuse(element_, "has a key without a value");
        }
        if (!hasTextAlone(*key)) {
            refuse(element_, "has a key that is more than text");
        }
        entries.push_back({.key = key->value(), .value = PropertyListNode(*(key + 1))});
    }
    return {*this, std::move(entries)};
}

PropertyListNode PropertyListDictionary::operator[](std::string_view key) const {
    if (const auto value = find(key)) {
        return *value;
    }
    throw PropertyListError(node_.place(), "lacks the key \"" + std::string(key) + '"');
}

std::optional<PropertyListNode> PropertyListDictionary::find(std::string_view key) const {
    const auto found = std::ranges::find(entries_, key, &Entry::key);
    return found == entries_.end() ? std::nullopt : std::optional(found->value);
}

PropertyListDocument::PropertyListDocument(std::string text) : text_(std::move(text)) {
    checkPropertyListText(text_);
    const pugi::xml_parse_result result =
        document_.load_buffer_inplace(text_.data(), text_.size(), parsing, pugi::encoding_utf8);
    if (!result) {
        throw PropertyListError("byte " + std::to_string(std::max<std::ptrdiff_t>(result.offset, 0)),
                                result.description());
    }
    root_ = PropertyListNode(rootOf(document_));
    check(root_, 0);
}

} // namespace cindertop
