#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace cindertop::linux_platform {

/// What the user's environment says about where applications are and how they are called.
struct DesktopEnvironment {
    std::string home;                   ///< HOME
    std::string dataHome;               ///< XDG_DATA_HOME; empty: below `home`
    std::string dataDirectories;        ///< XDG_DATA_DIRS, parted by ":"; empty: the usual two
    std::string searchPath;             ///< PATH
    std::vector<std::string> languages; ///< best first: "de_DE", "de"

    static DesktopEnvironment ofUser();

    /// The folders of desktop entries, the user's own first. Relative ones do not count.
    std::vector<std::filesystem::path> applicationFolders() const;

    /// The file that a command stands for, with all links followed; none when there is no such program.
    std::optional<std::filesystem::path> resolvedProgram(const std::string& command) const;
};

} // namespace cindertop::linux_platform
