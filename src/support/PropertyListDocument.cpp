#include "support/PropertyListDocument.h"

#include "support/Base64.h"
#include "support/DateText.h"
#include "support/PropertyListText.h"
#include "support/PropertyListTree.h"

#include <array>

namespace cindertop {
namespace {

constexpr std::array<std::string_view, 8> kindTexts{"dictionary", "array",   "string", "integer",
                                                    "real",       "boolean", "date",   "data"};

} // namespace

PropertyListKind PropertyListNode::kind() const {
    return tree_->items[position_].kind;
}

std::string PropertyListNode::place() const {
    return propertyListPlace(*tree_, position_);
}

const PropertyListItem& PropertyListNode::require(PropertyListKind wanted) const {
    const PropertyListItem& item = tree_->items[position_];
    if (item.kind != wanted) {
        throw PropertyListError(place(),
                                "is no " + std::string(kindTexts.at(static_cast<std::size_t>(wanted))));
    }
    return item;
}

// The texts of all numbers, dates and data were tried when the document was read.

std::string_view PropertyListNode::textOf(PropertyListKind wanted) const {
    return tree_->at(require(wanted).text);
}

std::string_view PropertyListNode::string() const {
    return textOf(PropertyListKind::string);
}

std::int64_t PropertyListNode::integer() const {
    return *parsePropertyListInteger(textOf(PropertyListKind::integer));
}

double PropertyListNode::real() const {
    return *parsePropertyListReal(textOf(PropertyListKind::real));
}

bool PropertyListNode::boolean() const {
    return require(PropertyListKind::boolean).isTrue;
}

Instant PropertyListNode::date() const {
    return *parseUtcText(textOf(PropertyListKind::date));
}

std::vector<std::byte> PropertyListNode::data() const {
    return *parseBase64(textOf(PropertyListKind::data));
}

std::vector<PropertyListNode> PropertyListNode::array() const {
    const PropertyListItem& array = require(PropertyListKind::array);
    std::vector<PropertyListNode> values;
    for (std::size_t child = position_ + 1; child < array.end; child = tree_->items[child].end) {
        values.emplace_back(*tree_, child);
    }
    return values;
}

PropertyListDictionary PropertyListNode::dictionary() const {
    require(PropertyListKind::dictionary);
    return {*tree_, position_};
}

PropertyListDictionary::PropertyListDictionary(const PropertyListTree& tree, std::size_t position)
    : tree_(&tree), position_(position), end_(tree.items[position].end), next_(position + 1) {}

PropertyListNode PropertyListDictionary::operator[](std::string_view key) const {
    const auto value = find(key);
    if (!value) {
        throw PropertyListError(propertyListPlace(*tree_, position_),
                                "lacks the key \"" + std::string(key) + '"');
    }
    return *value;
}

std::optional<PropertyListNode> PropertyListDictionary::find(std::string_view key) const {
    const auto searched = [&](std::size_t from, std::size_t to) -> std::optional<PropertyListNode> {
        for (std::size_t child = from; child < to; child = tree_->items[child].end) {
            if (tree_->at(tree_->items[child].key) == key) {
                next_ = tree_->items[child].end;
                return PropertyListNode(*tree_, child);
            }
        }
        return std::nullopt;
    };
    const std::size_t start = next_;
    const auto found = searched(start, end_);
    return found ? found : searched(position_ + 1, start);
}

std::vector<PropertyListDictionary::Entry> PropertyListDictionary::entries() const {
    std::vector<Entry> entries;
    for (std::size_t child = position_ + 1; child < end_; child = tree_->items[child].end) {
        entries.push_back({tree_->at(tree_->items[child].key), PropertyListNode(*tree_, child)});
    }
    return entries;
}

PropertyListDocument::PropertyListDocument(std::string text)
    : tree_(std::make_unique<const PropertyListTree>(readPropertyListTree(std::move(text)))) {}

PropertyListDocument::~PropertyListDocument() = default;

PropertyListNode PropertyListDocument::root() const {
    return {*tree_, 0};
}

} // namespace cindertop
