#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// Where a user's files belong (XDG base directories).
struct UserFolders {
    /// The value of an environment variable; none when it is not set.
    using Environment = std::function<std::optional<std::string>(std::string_view name)>;

    std::filesystem::path data;   ///< XDG_DATA_HOME, else .local/share in the home folder
    std::filesystem::path config; ///< XDG_CONFIG_HOME, else .config in the home folder

    /// Relative paths in the environment do not count. Without HOME the user's account says where home is,
    /// and an account without a home has the system's temporary folder.
    explicit UserFolders(const Environment& environment);
    /// As this process's environment says. Call it before other threads change that.
    static UserFolders ofUser();

    /// The folders of this program, which need not exist.
    std::filesystem::path programData() const { return data / "Cindertop"; }

    std::filesystem::path programConfig() const { return config / "Cindertop"; }
};

/// The file of the program that runs; empty without /proc.
std::filesystem::path ownProgram();

} // namespace cindertop
