#pragma once

#include "fakes/TemporaryFolder.h"
#include "platform/linux/FileReading.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace cindertop::linux_platform {

/// A folder of its own in the system's temporary folder, gone with the object: for machine trees that change
/// while a test runs, or that version control cannot hold. Every path is relative to the folder
/// ("sys/class/thermal/..."). Whatever cannot be made throws.
class TemporaryTree {
public:
    const std::filesystem::path& path() const { return folder_.path(); }

    /// `proc` and `sys` below the folder.
    Roots roots() const { return {.proc = path() / "proc", .sys = path() / "sys"}; }

    /// Writes a file with exactly these bytes, in place of what stands there, and makes its folders.
    const TemporaryTree& write(const std::filesystem::path& file, std::string_view bytes) const {
        makeParent(file);
        fakes::writeText(path() / file, bytes);
        return *this;
    }

    /// Writes a file as sysfs shows an attribute: the text and a line end.
    const TemporaryTree& attribute(const std::filesystem::path& file, std::string_view text) const {
        return write(file, std::string(text) + "\n");
    }

    const TemporaryTree& folder(const std::filesystem::path& folder) const {
        std::filesystem::create_directories(path() / folder);
        return *this;
    }

    /// A symbolic link at `link`; `target` is kept as it stands, so a relative one counts from the link's
    /// folder.
    const TemporaryTree& link(const std::filesystem::path& link, const std::filesystem::path& target) const {
        makeParent(link);
        std::filesystem::create_symlink(target, path() / link);
        return *this;
    }

    /// A pipe without a writer.
    const TemporaryTree& fifo(const std::filesystem::path& file) const {
        makeParent(file);
        if (::mkfifo((path() / file).c_str(), S_IRUSR | S_IWUSR) != 0) {
            throw std::runtime_error("cannot make the pipe " + file.string());
        }
        return *this;
    }

    /// Removes a file or a folder with all it holds.
    const TemporaryTree& remove(const std::filesystem::path& entry) const {
        std::filesystem::remove_all(path() / entry);
        return *this;
    }

private:
    void makeParent(const std::filesystem::path& entry) const {
        std::filesystem::create_directories((path() / entry).parent_path());
    }

    fakes::TemporaryFolder folder_;
};

} // namespace cindertop::linux_platform
