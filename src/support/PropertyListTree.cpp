#include "support/PropertyListTree.h"

#include "support/Base64.h"
#include "support/DateText.h"
#include "support/PropertyListText.h"

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

namespace cindertop {
namespace {

/// Comments and CDATA are kept so that they are seen. The first text of an element is the element's own
/// value, which halves the nodes. Processing instructions are refused beforehand: an element is what has a
/// name.
constexpr unsigned parsing = pugi::parse_ws_pcdata_single | pugi::parse_embed_pcdata | pugi::parse_escapes |
                             pugi::parse_eol | pugi::parse_comments | pugi::parse_cdata;

constexpr std::uint32_t stillOpen = std::numeric_limits<std::uint32_t>::max();

/// What a value takes at least in a file of many, to make room for them at once.
constexpr std::size_t bytesAnItem = 32;

bool isBlank(const char* text) {
    return *text == '\0' || text[std::strspn(text, " \t\r\n")] == '\0';
}

/// Whether the zero-terminated name is this one; without a call, because it is asked for every element.
bool is(const char* name, std::string_view expected) {
    for (const char letter : expected) {
        if (*name++ != letter) {
            return false;
        }
    }
    return *name == '\0';
}

struct ElementName {
    std::string_view name;
    PropertyListKind kind;
};

// The frequent ones first.
constexpr std::array elementNames{
    ElementName{"false", PropertyListKind::boolean}, ElementName{"true", PropertyListKind::boolean},
    ElementName{"real", PropertyListKind::real},     ElementName{"integer", PropertyListKind::integer},
    ElementName{"string", PropertyListKind::string}, ElementName{"dict", PropertyListKind::dictionary},
    ElementName{"date", PropertyListKind::date},     ElementName{"array", PropertyListKind::array},
    ElementName{"data", PropertyListKind::data},
};

/// What an element of this name holds; none for names that no value has.
std::optional<PropertyListKind> kindOf(const char* name) {
    for (const ElementName& row : elementNames) {
        if (is(name, row.name)) {
            return row.kind;
        }
    }
    return std::nullopt;
}

/// Goes through the tree once and lines its values up.
class TreeReader {
public:
    explicit TreeReader(PropertyListTree& tree) : tree_(tree), items_(tree.items) {}

    void read(const pugi::xml_document& document) {
        const pugi::xml_node plist = document.first_child();
        if (!is(plist.name(), "plist") || !plist.next_sibling().empty()) {
            throw PropertyListError("the root", "is not a single property list");
        }
        checkVersion(plist);
        readOnlyValue(plist);
    }

private:
    static void checkVersion(const pugi::xml_node& plist) {
        for (const pugi::xml_attribute& attribute : plist.attributes()) {
            if (!is(attribute.name(), "version") || !is(attribute.value(), "1.0")) {
                throw PropertyListError("the root", "is of another version than 1.0");
            }
        }
    }

    void readOnlyValue(const pugi::xml_node& plist) {
        for (const pugi::xml_node& child : plist.children()) {
            if (isElement(child, 0) && items_.empty()) {
                readValue({}, child);
            } else if (isElement(child, 0)) {
                throw PropertyListError("the root", "holds more than one value");
            }
        }
        if (items_.empty() || !isBlank(plist.value())) {
            throw PropertyListError("the root", "does not hold one value");
        }
    }

    [[noreturn]] void refuse(std::size_t position, const std::string& problem) const {
        throw PropertyListError(propertyListPlace(tree_, position), problem);
    }

    /// Besides elements a container holds comments and blanks, and nothing else.
    bool isElement(const pugi::xml_node& node, std::size_t container) const {
        if (*node.name() != '\0') {
            return true;
        }
        if (node.type() != pugi::node_comment &&
            (node.type() != pugi::node_pcdata || !isBlank(node.value()))) {
            refuse(container, "holds something between its values");
        }
        return false;
    }

    void readValue(PropertyListSpan key, const pugi::xml_node& element) {
        const std::size_t position = items_.size();
        items_.push_back({.key = key, .text = {}, .end = stillOpen});
        if (!element.first_attribute().empty()) {
            refuse(position, "has an attribute");
        }
        const auto kind = kindOf(element.name());
        if (!kind) {
            refuse(position, std::string("is an unknown element <") + element.name() + ">");
        }
        items_[position].kind = *kind;
        if (*kind == PropertyListKind::dictionary || *kind == PropertyListKind::array) {
            readContainer(position, element);
        } else {
            readScalar(position, element);
        }
        items_[position].end = static_cast<std::uint32_t>(items_.size());
    }

    void readContainer(std::size_t position, const pugi::xml_node& element) {
        if (depth_ == propertyListDepthLimit) {
            refuse(position, "is nested too deep");
        }
        if (!isBlank(element.value())) {
            refuse(position, "holds text between its values");
        }
        ++depth_;
        if (items_[position].kind == PropertyListKind::dictionary) {
            readDictionary(position, element);
        } else {
            readArray(position, element);
        }
        --depth_;
    }

    void readArray(std::size_t position, const pugi::xml_node& array) {
        for (pugi::xml_node child = array.first_child(); !child.empty(); child = child.next_sibling()) {
            if (isElement(child, position)) {
                readValue({}, child);
            }
        }
    }

    void readDictionary(std::size_t position, const pugi::xml_node& dictionary) {
        std::optional<PropertyListSpan> key;
        for (pugi::xml_node child = dictionary.first_child(); !child.empty(); child = child.next_sibling()) {
            if (!isElement(child, position)) {
                continue;
            }
            const bool isKey = is(child.name(), "key");
            if (isKey == key.has_value()) {
                refuse(position, isKey ? "has a key without a value" : "has a value without a key");
            }
            if (isKey) {
                key = readKey(position, child);
            } else {
                readValue(*std::exchange(key, std::nullopt), child);
            }
        }
        if (key) {
            refuse(position, "has a key without a value");
        }
        checkKeysDiffer(position);
    }

    PropertyListSpan readKey(std::size_t dictionary, const pugi::xml_node& element) const {
        if (!element.first_child().empty() || !element.first_attribute().empty()) {
            refuse(dictionary, "has a key that is more than text");
        }
        return spanOf(element.value());
    }

    void checkKeysDiffer(std::size_t dictionary) {
        keys_.clear();
        for (std::size_t child = dictionary + 1; child < items_.size(); child = items_[child].end) {
            keys_.push_back(tree_.at(items_[child].key));
        }
        constexpr std::size_t few = 16; // where comparing each with each is quicker than sorting
        if (keys_.size() > few) {
            std::ranges::sort(keys_);
        }
        for (auto key = keys_.begin(); key != keys_.end(); ++key) {
            const auto end = keys_.size() > few ? std::min(key + 2, keys_.end()) : keys_.end();
            if (std::find(key + 1, end, *key) != end) {
                refuse(dictionary, "has the key \"" + std::string(*key) + "\" twice");
            }
        }
    }

    /// Text alone: beside a comment the parser drops blanks, which may have been meant.
    void readScalar(std::size_t position, const pugi::xml_node& element) {
        if (!element.first_child().empty()) {
            refuse(position, "holds more than text");
        }
        PropertyListItem& item = items_[position];
        item.isTrue = *element.name() == 't';
        const char* const text = element.value();
        item.text = spanOf(text);
        if (const char* const problem = problemOf(item.kind, tree_.at(item.text))) {
            refuse(position, problem);
        }
    }

    /// The parser left the texts of all elements where they stood; only its empty text is its own.
    PropertyListSpan spanOf(const char* text) const {
        const std::size_t size = std::strlen(text);
        if (size == 0) {
            return {};
        }
        return {static_cast<std::uint32_t>(text - tree_.text.data()), static_cast<std::uint32_t>(size)};
    }

    /// Null when the text is what the kind wants.
    static const char* problemOf(PropertyListKind kind, std::string_view text) {
        switch (kind) {
        case PropertyListKind::integer:
            return parsePropertyListInteger(text) ? nullptr : "is no integer of 64 bits";
        case PropertyListKind::real:
            return parsePropertyListReal(text) ? nullptr : "is no finite number";
        case PropertyListKind::boolean:
            return text.empty() ? nullptr : "is a boolean with text";
        case PropertyListKind::date:
            return parseUtcText(text) ? nullptr : "is no date";
        case PropertyListKind::data:
            return parseBase64(text) ? nullptr : "is no base64 data";
        default:
            return nullptr;
        }
    }

    PropertyListTree& tree_;
    std::vector<PropertyListItem>& items_;
    std::vector<std::string_view> keys_; ///< of the dictionary that is being checked
    int depth_ = 0;
};

} // namespace

PropertyListTree readPropertyListTree(std::string text) {
    const std::size_t start = checkedPropertyListStart(text);
    PropertyListTree tree{.text = std::move(text), .items = {}};
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer_inplace(
        tree.text.data() + start, tree.text.size() - start, parsing, pugi::encoding_utf8);
    if (!result) {
        const auto byte = start + static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
        throw PropertyListError("byte " + std::to_string(byte), result.description());
    }
    tree.items.reserve(tree.text.size() / bytesAnItem);
    TreeReader(tree).read(document);
    return tree;
}

std::string propertyListPlace(const PropertyListTree& tree, std::size_t position) {
    std::string place;
    for (std::size_t container = 0; container != position;) {
        std::size_t child = container + 1;
        std::size_t index = 0;
        for (; tree.items[child].end <= position; child = tree.items[child].end) {
            ++index;
        }
        if (tree.items[container].kind == PropertyListKind::dictionary) {
            place += place.empty() ? "" : ".";
            place += tree.at(tree.items[child].key);
        } else {
            place += "[" + std::to_string(index) + "]";
        }
        container = child;
    }
    return place.empty() ? "the root" : place;
}

} // namespace cindertop
