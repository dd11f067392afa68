#pragma once

#include "support/Instant.h"
#include "support/PropertyListError.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace cindertop {

/// How many dictionaries and arrays may stand inside each other.
inline constexpr int propertyListDepthLimit = 64;

enum class PropertyListKind : std::uint8_t { dictionary, array, string, integer, real, boolean, date, data };

struct PropertyListItem;
struct PropertyListTree;
class PropertyListDictionary;

/// One value of a PropertyListDocument: a handle, valid as long as the document lives. Asked for another kind
/// than it is, it throws a PropertyListError that names its place.
class PropertyListNode {
public:
    PropertyListNode(const PropertyListTree& tree, std::size_t position)
        : tree_(&tree), position_(position) {}

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
    const PropertyListItem& require(PropertyListKind wanted) const;
    std::string_view textOf(PropertyListKind wanted) const;

    const PropertyListTree* tree_;
    std::size_t position_;
};

/// The entries of a dictionary, no two with the same key; valid as long as the document lives.
class PropertyListDictionary {
public:
    struct Entry {
        std::string_view key;
        PropertyListNode value;
    };

    /// The value under a key that has to be there; a PropertyListError when it is not. Asking in the order of
    /// the file is fastest.
    PropertyListNode operator[](std::string_view key) const;
    std::optional<PropertyListNode> find(std::string_view key) const;

    /// In the order of the file.
    std::vector<Entry> entries() const;

private:
    friend class PropertyListNode;
    PropertyListDictionary(const PropertyListTree& tree, std::size_t position);

    const PropertyListTree* tree_;
    std::size_t position_;
    std::size_t end_;
    mutable std::size_t next_; ///< where the next search begins
};

/// The text of an XML property list, taken apart and checked to the last value: what it hands out is sound.
class PropertyListDocument {
public:
    /// Throws a PropertyListError for a text that is no property list.
    explicit PropertyListDocument(std::string text);
    ~PropertyListDocument();
    PropertyListDocument(const PropertyListDocument&) = delete;
    PropertyListDocument& operator=(const PropertyListDocument&) = delete;

    PropertyListNode root() const;

private:
    std::unique_ptr<const PropertyListTree> tree_;
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
