#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// The user's locale while it changes. A program's environment stays that of its start; but what the session
/// took from the system's file of locale settings, and what neither says, follows the file. For one thread.
class FollowedLocale {
public:
    /// `/etc/locale.conf`, or where there is none `/etc/default/locale`.
    static std::filesystem::path systemFile();

    explicit FollowedLocale(std::filesystem::path file = systemFile());

    /// As `userLocaleName`, of now.
    std::string name(const char* category);

private:
    using Settings = std::map<std::string, std::string, std::less<>>;

    static Settings parse(std::string_view text);
    const Settings& present();

    std::filesystem::path file_;
    std::optional<std::filesystem::file_time_type> readAt_; ///< the file's time then; none before
    Settings settings_;
    Settings atStart_;
};

} // namespace cindertop
