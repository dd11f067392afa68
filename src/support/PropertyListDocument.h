#pragma once

#include "support/Instant.h"
#include "support/PropertyListError.h"

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace cindertop {

enum class PropertyListKind : std::uint8_t { dictionary, array, string, integer, real, boolean, date, data };

class PropertyListDictionary;

/// One value of a PropertyListDocument: a handle, valid as long as the document lives. Asked for another kind
/// than it is, it throws a PropertyListError that names its place.
class PropertyListNode {
public:
    explicit PropertyListNode(pugi::xml_node element = {}) : element_(element) {}

    PropertyListKind kind() const;
    std::string_view string() const;
    std::int64_t integer() const;
    double real() const;
    bool boolean() const;
    Instant date() const; ///< a whole second
    std::vector<std::byte> data() const;
    std::vector<PropertyListNode> array() const;
    PropertyListDictionary dictionary() const;

    /// Where the value stands: "samples[3].level"; "the root" for the outermost.
    std::string place() const;

private:
    void require(PropertyListKind wanted) const;
    std::string_view textOf(PropertyListKind wanted) const;
    template <typename Value>
    Value sound(std::optional<Value> value, const char* problem) const;

    pugi::xml_node element_;
};

/// The entries of a dictionary, no two with the same key; valid as long as the document lives.
class PropertyListDictionary {
public:
    struct Entry {
        std::string_view key;
        PropertyListNode value;
    };

    /// The value under a key that has to be there; a PropertyListError when it is not.
    PropertyListNode operator[](std::string_view key) const;
    std::optional<PropertyListNode> find(std::string_view key) const;

    /// In the order of the file.
    const std::vector<Entry>& entries() const& { return entries_; }

    std::vector<Entry> entries() && { return std::move(entries_); }

private:
    friend class PropertyListNode;

    PropertyListDictionary(const PropertyListNode& node, std::vector<Entry> entries)
        : node_(node), entries_(std::move(entries)) {}

    PropertyListNode node_;
    std::vector<Entry> entries_;
};

/// The text of an XML property list, checked to the last value: what it hands out is sound. Known errors are
/// refused, and with them all that an XML parser could be made to fetch or to expand.
class PropertyListDocument {
public:
    /// Throws a PropertyListError for a text that is no property list.
    explicit PropertyListDocument(std::string text);
    PropertyListDocument(const PropertyListDocument&) = delete;
    PropertyListDocument& operator=(const PropertyListDocument&) = delete;

    PropertyListNode root() const { return root_; }

private:
    std::string text_; ///< as the parser leaves it: the document looks into it
    pugi::xml_document document_;
    PropertyListNode root_;
};

/// What `decode` makes of the outermost value, or what is wrong: with the text, or as `decode` throws it.
template <typename Decode>
auto decodedPropertyList(std::string text, Decode&& decode)
    -> std::expected<std::invoke_result_t<Decode, PropertyListNode>, PropertyListError> {
    try {
        const PropertyListDocument document(std::move(text));
        return std::invoke(std::forward<Decode>(decode), document.root());
    } catch (const PropertyListError& error) {
        return std::unexpected(error);
    }
}

} // namespace cindertop
