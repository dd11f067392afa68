#pragma once

#include "TemporaryTree.h"
#include "platform/linux/DesktopEntries.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

/// Folders with desktop entries and programs: "home" before "share", "bin" in the search path.
class DesktopTree {
public:
    /// Writes "FOLDER/applications/ID.desktop" with these lines behind its type.
    const DesktopTree& entry(std::string_view folder, const std::string& identifier,
                             std::string_view lines) const {
        tree_.write(std::filesystem::path(folder) / "applications" / (identifier + ".desktop"),
                    "[Desktop Entry]\nType=Application\n" + std::string(lines) + "\n");
        return *this;
    }

    /// Makes an executable file and returns its path.
    std::string program(const std::filesystem::path& file) const {
        tree_.write(file, "#!/bin/true\n");
        std::filesystem::permissions(tree_.path() / file, std::filesystem::perms::owner_all);
        return path(file);
    }

    /// With links followed, as the temporary folder may itself be one.
    std::string path(const std::filesystem::path& file) const {
        return std::filesystem::canonical(tree_.path()) / file;
    }

    const TemporaryTree& tree() const { return tree_; }

    std::chrono::nanoseconds& now() const { return *now_; }

    DesktopEntries entries() const {
        return DesktopEntries({.home = "/nonexistent",
                               .dataHome = path("home"),
                               .dataDirectories = "relative:" + path("missing") + "::" + path("share"),
                               .searchPath = path("missing") + ":" + path("bin"),
                               .languages = {"de_AT", "de", "fr"}},
                              [now = now_] { return *now; });
    }

private:
    TemporaryTree tree_;
    std::shared_ptr<std::chrono::nanoseconds> now_ = std::make_shared<std::chrono::nanoseconds>(0);
};

} // namespace cindertop::linux_platform
