#include "platform/linux/PropertyListUserDefaults.h"

#include "support/AtomicFile.h"
#include "support/PropertyListText.h"
#include "support/UserFolders.h"

#include <cmath>
#include <type_traits>
#include <utility>

namespace cindertop::linux_platform {
namespace {

PropertyListValue treeOf(const PropertyValue& value) {
    if (const auto* const text = std::get_if<std::string>(&value)) {
        return {writablePropertyListText(*text)};
    }
    return std::visit([](const auto& held) { return PropertyListValue{held}; }, value);
}

std::optional<PropertyValue> propertyOf(const PropertyListValue& tree) {
    return std::visit(
        [](const auto& held) -> std::optional<PropertyValue> {
            using Held = std::remove_cvref_t<decltype(held)>;
            if constexpr (std::is_constructible_v<PropertyValue, std::in_place_type_t<Held>, Held>) {
                return PropertyValue(std::in_place_type<Held>, held);
            } else {
                return std::nullopt;
            }
        },
        tree.value);
}

} // namespace

std::filesystem::path PropertyListUserDefaults::defaultFile() {
    return UserFolders::ofUser().programConfig() / "preferences.plist";
}

PropertyListUserDefaults::PropertyListUserDefaults(std::filesystem::path file, FileSystem& files)
    : file_(std::move(file)), files_(files), values_(storedDictionary().value_or(Dictionary{})) {}

PropertyListUserDefaults::~PropertyListUserDefaults() {
    if (!unstored_.empty()) {
        apply({});
    }
}

std::optional<PropertyValue> PropertyListUserDefaults::value(std::string_view key) const {
    const std::scoped_lock lock(mutex_);
    if (const auto stored = values_.find(key); stored != values_.end()) {
        return propertyOf(stored->second);
    }
    const auto registered = registered_.find(key);
    return registered == registered_.end() ? std::nullopt : std::optional(registered->second);
}

void PropertyListUserDefaults::registerDefaults(const Registration& defaults) {
    const std::scoped_lock lock(mutex_);
    for (const auto& [key, value] : defaults) {
        registered_.insert_or_assign(key, value);
    }
}

bool PropertyListUserDefaults::canBeStored(const UserDefaultsChange& change) {
    const auto* const number = change.value ? std::get_if<double>(&*change.value) : nullptr;
    return (number == nullptr || std::isfinite(*number)) &&
           writablePropertyListText(change.key) == change.key;
}

void PropertyListUserDefaults::apply(std::span<const UserDefaultsChange> changes) {
    const std::scoped_lock lock(mutex_);
    for (const UserDefaultsChange& change : changes) {
        if (canBeStored(change)) {
            unstored_.insert_or_assign(change.key, change.value.transform(treeOf));
        }
    }
    const auto stored = storedDictionary();
    Dictionary changed = stored.value_or(values_); // a broken file is replaced by what is known
    for (const auto& [key, value] : unstored_) {
        if (value) {
            changed.insert_or_assign(key, *value);
        } else {
            changed.erase(key);
        }
    }
    values_ = std::move(changed);
    if (stored.value_or(Dictionary{}) == values_ || store(values_)) {
        unstored_.clear();
    }
}

std::optional<PropertyListUserDefaults::Dictionary> PropertyListUserDefaults::storedDictionary() const {
    auto text = wholeFile(files_, file_, propertyListSizeLimit);
    if (!text) {
        return std::nullopt;
    }
    auto tree = parsePropertyList(*std::move(text));
    auto* const dictionary = tree ? std::get_if<Dictionary>(&tree->value) : nullptr;
    return dictionary == nullptr ? std::nullopt : std::optional(std::move(*dictionary));
}

bool PropertyListUserDefaults::store(const Dictionary& dictionary) {
    const auto text = propertyListText({dictionary}, PropertyListLayout::indented);
    return text && makeFolders(files_, file_.parent_path()) &&
           replaceFile(files_, file_, *text, Durability::synced);
}

} // namespace cindertop::linux_platform
