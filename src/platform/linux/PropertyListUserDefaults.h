#pragma once

#include "platform/UserDefaults.h"
#include "support/FileSystem.h"
#include "support/PropertyListValue.h"

#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace cindertop::linux_platform {

/// The user's defaults in one property-list file, for people to read and edit. Keys that this program does
/// not know stay in the file, also those that another process adds meanwhile. A file that is missing, broken
/// or no dictionary counts as empty, and the next change replaces it.
class PropertyListUserDefaults final : public UserDefaults {
public:
    /// `preferences.plist` in the user's configuration folder.
    static std::filesystem::path defaultFile();

    /// Reads the file.
    PropertyListUserDefaults(std::filesystem::path file, FileSystem& files);
    /// Tries once more to write what could not be written.
    ~PropertyListUserDefaults() override;

    std::optional<PropertyValue> value(std::string_view key) const override;
    void registerDefaults(const Registration& defaults) override;
    /// Writes the file, synced to the disk, unless it says the same already. What no property list can hold
    /// is dropped: numbers that are not finite, keys with control characters, the control characters of
    /// texts.
    void apply(std::span<const UserDefaultsChange> changes) override;

private:
    using Dictionary = PropertyListValue::Dictionary;
    using Changes = std::map<std::string, std::optional<PropertyListValue>>;

    static bool canBeStored(const UserDefaultsChange& change);
    std::optional<Dictionary> storedDictionary() const;
    bool store(const Dictionary& dictionary);

    std::filesystem::path file_;
    FileSystem& files_;
    mutable std::mutex mutex_;
    Dictionary values_; ///< as they count for this process
    Changes unstored_;  ///< what could not be written so far
    Registration registered_;
};

} // namespace cindertop::linux_platform
