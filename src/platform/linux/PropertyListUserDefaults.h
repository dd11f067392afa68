#pragma once

#include "platform/UserDefaults.h"
#include "support/FileSystem.h"
#include "support/PropertyListValue.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace cindertop::linux_platform {

/// The user's defaults in one property-list file, for people to read and edit. Keys that this program does
/// not know stay in the file, also those that another process adds meanwhile. A file that is missing is new.
/// One that is broken or no dictionary is kept aside at the next change, under a name with the date; what can
/// be read of its entries counts. One that cannot be read is never replaced.
class PropertyListUserDefaults final : public UserDefaults {
public:
    /// `preferences.plist` in the user's configuration folder.
    static std::filesystem::path defaultFile();

    /// Reads the file. One that cannot be read then counts as empty for as long as this object lives, and its
    /// changes are not stored: they could replace contents that were never read.
    PropertyListUserDefaults(std::filesystem::path file, FileSystem& files);
    /// Tries once more to write what could not be written.
    ~PropertyListUserDefaults() override;

    std::optional<PropertyValue> value(std::string_view key) const override;
    void registerDefaults(const Registration& defaults) override;
    /// Writes the file, synced to the disk, unless it says the same already. What no property list can hold
    /// is dropped: numbers that are not finite, keys with control characters, the control characters of
    /// texts.
    void apply(std::span<const UserDefaultsChange> changes) override;

    /// Every change so far is in the file.
    bool isStored() const;

    /// The latest problem with the file, unreadable or set aside, in one sentence; told once.
    std::optional<std::string> takeProblem();

private:
    using Dictionary = PropertyListValue::Dictionary;
    using Changes = std::map<std::string, std::optional<PropertyListValue>>;

    /// Why there is no dictionary.
    enum class Absence : std::uint8_t { missing, unreadable, broken };

    struct Lack {
        Absence absence;
        std::string reason;
        Dictionary salvaged{}; ///< of a broken one
    };

    static bool canBeStored(const UserDefaultsChange& change);
    std::expected<Dictionary, Lack> storedDictionary() const;
    static bool isBroken(const std::expected<Dictionary, Lack>& stored);
    bool canReplace(const std::expected<Dictionary, Lack>& stored);
    FileResult<void> keepAside();
    std::optional<std::filesystem::path> freePlaceAside() const;
    void report(std::string problem);
    Dictionary changed(Dictionary values) const;
    bool store(const Dictionary& dictionary);

    std::filesystem::path file_;
    FileSystem& files_;
    mutable std::mutex mutex_;
    Dictionary values_;    ///< as they count for this process
    Changes unstored_;     ///< what could not be written so far
    bool isBlind_ = false; ///< the file could not be read at the start
    std::optional<std::string> problem_;
    std::string reported_;        ///< the latest problem since a change was stored
    std::filesystem::path aside_; ///< the latest copy of a broken file
    Registration registered_;
};

} // namespace cindertop::linux_platform
