#include "platform/linux/PropertyListUserDefaults.h"

#include "support/AtomicFile.h"
#include "support/DateText.h"
#include "support/PropertyListText.h"
#include "support/UserFolders.h"

#include <chrono>
#include <cmath>
#include <system_error>
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
    : file_(std::move(file)), files_(files) {
    auto stored = storedDictionary();
    if (stored) {
        values_ = std::move(*stored);
        return;
    }
    const auto& lack = stored.error();
    values_ = lack.salvaged;
    isBlind_ = lack.absence == Absence::unreadable;
    if (isBlind_) {
        problem_ =
            "the preferences cannot be read, so the defaults count and no change is kept: " + file_.string() +
            ": " + lack.reason;
    } else if (lack.absence == Absence::broken) {
        problem_ = "the preferences cannot all be read, and what can be read counts: " + file_.string() +
                   ": " + lack.reason;
    }
}

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
    values_ = changed(stored && !isBlind_ ? *stored : values_); // a missing or broken file gets what is known
    if (isBlind_) {
        return;
    }
    const bool saysSo = stored.value_or(Dictionary{}) == values_ && !isBroken(stored);
    if (saysSo || (canReplace(stored) && store(values_))) {
        unstored_.clear();
        reported_.clear();
    }
}

bool PropertyListUserDefaults::isStored() const {
    const std::scoped_lock lock(mutex_);
    return unstored_.empty();
}

std::optional<std::string> PropertyListUserDefaults::takeProblem() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(problem_, std::nullopt);
}

PropertyListUserDefaults::Dictionary PropertyListUserDefaults::changed(Dictionary values) const {
    for (const auto& [key, value] : unstored_) {
        if (value) {
            values.insert_or_assign(key, *value);
        } else {
            values.erase(key);
        }
    }
    return values;
}

std::expected<PropertyListUserDefaults::Dictionary, PropertyListUserDefaults::Lack>
PropertyListUserDefaults::storedDictionary() const {
    const auto text = wholeFile(files_, file_, propertyListSizeLimit);
    if (!text) {
        const bool isMissing = text.error() == std::errc::no_such_file_or_directory ||
                               text.error() == std::errc::not_a_directory;
        const bool isTooLarge = text.error() == std::errc::file_too_large;
        return std::unexpected(Lack{.absence = isMissing    ? Absence::missing
                                               : isTooLarge ? Absence::broken
                                                            : Absence::unreadable,
                                    .reason = std::make_error_code(text.error()).message()});
    }
    auto tree = parsePropertyList(*text);
    if (auto* const dictionary = tree ? std::get_if<Dictionary>(&tree->value) : nullptr) {
        return std::move(*dictionary);
    }
    return std::unexpected(Lack{.absence = Absence::broken,
                                .reason = tree ? "it is no dictionary" : tree.error().what(),
                                .salvaged = salvagedPropertyListEntries(*text)});
}

bool PropertyListUserDefaults::isBroken(const std::expected<Dictionary, Lack>& stored) {
    return !stored && stored.error().absence == Absence::broken;
}

/// Keeps what a broken file held; what cannot be read now may be whole.
bool PropertyListUserDefaults::canReplace(const std::expected<Dictionary, Lack>& stored) {
    if (stored || stored.error().absence == Absence::missing) {
        return true;
    }
    const auto& reason = stored.error().reason;
    if (!isBroken(stored)) {
        report("the preferences cannot be read, so the change is not kept yet: " + file_.string() + ": " +
               reason);
        return false;
    }
    if (const auto kept = keepAside(); !kept) {
        report("the preferences cannot all be read and cannot be put aside, so the change is not kept yet: " +
               file_.string() + ": " + std::make_error_code(kept.error()).message());
        return false;
    }
    report("the preferences could not all be read (" + reason +
           "); what could be read counts, and the file as it was is kept: " + aside_.string());
    return true;
}

/// Copies the file, so that one stands in its place at every moment. A change that could not be written then
/// finds the copy when it is tried again.
FileResult<void> PropertyListUserDefaults::keepAside() {
    const auto text = wholeFile(files_, file_, propertyListSizeLimit);
    if (text && !aside_.empty() && wholeFile(files_, aside_, propertyListSizeLimit) == text) {
        return {};
    }
    const auto place = freePlaceAside();
    if (!place) {
        return std::unexpected(std::errc::file_exists);
    }
    auto kept = text ? replaceFile(files_, *place, *text, Durability::synced)
                     : files_.rename(file_, *place); // it is too large to be ours
    if (kept) {
        aside_ = *place;
    }
    return kept;
}

/// Another file may have been put aside within the same second.
std::optional<std::filesystem::path> PropertyListUserDefaults::freePlaceAside() const {
    constexpr int mostInASecond = 100;
    auto date = utcText(std::chrono::system_clock::now());
    std::erase(date, ':'); // not every file system has it in names
    for (int number = 1; number <= mostInASecond; ++number) {
        auto place = file_;
        place += ".broken-" + date + (number > 1 ? '-' + std::to_string(number) : std::string());
        const auto there = files_.openForReading(place);
        if (there) {
            files_.close(*there);
        } else if (there.error() == std::errc::no_such_file_or_directory) {
            return place;
        }
    }
    return std::nullopt;
}

/// Every further change would say it again.
void PropertyListUserDefaults::report(std::string problem) {
    if (problem != reported_) {
        reported_ = problem;
        problem_ = std::move(problem);
    }
}

bool PropertyListUserDefaults::store(const Dictionary& dictionary) {
    const auto text = propertyListText({dictionary}, PropertyListLayout::indented);
    return text && makeFolders(files_, file_.parent_path()) &&
           replaceFile(files_, file_, *text, Durability::synced);
}

} // namespace cindertop::linux_platform
