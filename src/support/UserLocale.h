#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// What the environment says about a category of the locale, for example "LC_COLLATE": the first of LC_ALL,
/// the category and LANG that is set and not empty; "C" without any. Changes of the environment are seen.
std::string userLocaleName(const char* category);

/// A POSIX locale name as ICU takes it: "de_DE.UTF-8" is "de_DE". C and POSIX are the root locale, "",
/// because ICU reads them as American English. ICU's own names stay as they are.
std::string icuLocaleName(std::string_view name);

/// Follows the user's locale as it changes. A program's environment is fixed at its start; values that the
/// session took from the system's locale file, and those that neither sets, follow that file. Not
/// thread-safe.
class FollowedLocale {
public:
    /// `/etc/locale.conf`, or where there is none `/etc/default/locale`.
    static std::filesystem::path systemFile();

    explicit FollowedLocale(std::filesystem::path file = systemFile());

    /// As `userLocaleName`, at this moment.
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
