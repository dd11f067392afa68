#pragma once

#include "platform/linux/DesktopEnvironment.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/SystemClock.h"

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// An installed application.
struct DesktopEntry {
    std::string identifier; ///< without ".desktop": "org.gnome.Maps"
    std::string path;       ///< of the entry's file
    std::string name;       ///< in the user's language; the identifier when the entry has none
    bool isTerminal{};      ///< an emulator of terminals, by its categories

    bool operator==(const DesktopEntry&) const = default;
};

/// The desktop entries of the user's machine. They are read at the first question, and again when one of
/// their folders has changed, which is looked at every half minute at most. Malformed entries are ignored.
/// Called from one thread at a time.
class DesktopEntries {
public:
    explicit DesktopEntries(DesktopEnvironment environment = DesktopEnvironment::ofUser(),
                            MonotonicClock clock = steadyClock());

    std::optional<DesktopEntry> withIdentifier(std::string_view identifier);

    /// The entry in this file, in whatever folder. Below one of the folders of entries the file stands for
    /// its identifier, so that an earlier folder may replace or delete it.
    std::optional<DesktopEntry> inFile(const std::string& path);

    /// The entry that starts the program in this file, with links followed. Of several the one that gives the
    /// program the fewest options; of these, one that menus show.
    std::optional<DesktopEntry> startingProgram(const std::string& path);

    /// How many there are.
    std::size_t count();

    /// Changes each time the entries are read again.
    std::uint64_t generation();

    std::vector<std::filesystem::path> folders() const { return environment_.applicationFolders(); }

private:
    using ModificationTime = std::optional<std::filesystem::file_time_type>; ///< none: no such folder

    struct IndexedEntry {
        std::string path;
        bool isTerminal{};
        bool isDeleted{};                ///< hides entries of the same identifier in later folders
        std::optional<std::string> name; ///< read on demand: all translations are a lot
    };

    /// How well an entry matches a program: the lowest is the best.
    struct Claim {
        std::size_t options{};
        bool isHiddenInMenus{};
        std::string identifier;

        auto operator<=>(const Claim&) const = default;
    };

    void refresh();
    void readAll();
    void readFolder(const std::filesystem::path& folder, const std::string& prefix, int depth);
    void readEntry(const std::filesystem::path& file, const std::string& identifier);
    void claimProgram(const std::string& exec, Claim claim);
    bool hasFolderChanged() const;
    /// The entry with this text; none for a malformed or deleted one.
    std::optional<DesktopEntry> describe(const std::string& identifier, const std::string& path,
                                         const std::expected<std::string, FileError>& text) const;
    /// What a file in one of the folders of entries is called, whether or not it counts.
    std::optional<std::string> identifierBelowFolders(const std::filesystem::path& file) const;

    DesktopEnvironment environment_;
    MonotonicClock clock_;
    std::optional<std::chrono::nanoseconds> lookedAt_;
    std::uint64_t generation_ = 0;
    std::map<std::filesystem::path, ModificationTime> seenFolders_;
    std::map<std::string, IndexedEntry, std::less<>> entries_;
    std::map<std::string, Claim> claimByProgram_;
};

} // namespace cindertop::linux_platform
