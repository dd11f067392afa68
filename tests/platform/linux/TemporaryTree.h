#pragma once

#include "platform/linux/FileReading.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include <stdlib.h> // NOLINT(modernize-deprecated-headers): mkdtemp is POSIX
#include <sys/stat.h>

namespace cindertop::linux_platform {

/// A folder of its own in the system's temporary folder, gone with the object: for machine trees that change
/// while a test runs, or that version control cannot hold. Every path is relative to the folder
/// ("sys/class/thermal/..."). Whatever cannot be made throws.
class TemporaryTree {
public:
    TemporaryTree() {
        std::string name = (std::filesystem::temp_directory_path() / "cindertop-tree-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }

    ~TemporaryTree() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    TemporaryTree(const TemporaryTree&) = delete;
    TemporaryTree& operator=(const TemporaryTree&) = delete;

    const std::filesystem::path& path() const { return path_; }

    /// `proc` and `sys` below the folder.
    Roots roots() const { return {.proc = path_ / "proc", .sys = path_ / "sys"}; }

    /// Writes a file with exactly these bytes, in place of what stands there, and makes its folders.
    const TemporaryTree& write(const std::filesystem::path& file, std::string_view bytes) const {
        makeParent(file);
        std::ofstream stream(path_ / file, std::ios::binary | std::ios::trunc);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        stream.close();
        if (!stream) {
            throw std::runtime_error("cannot write " + file.string());
        }
        return *this;
    }

    /// Writes a file as sysfs shows an attribute: the text and a line end.
    const TemporaryTree& attribute(const std::filesystem::path& file, std::string_view text) const {
        return write(file, std::string(text) + "\n");
    }

    const TemporaryTree& folder(const std::filesystem::path& folder) const {
        std::filesystem::create_directories(path_ / folder);
        return *this;
    }

    /// A symbolic link at `link`; `target` is kept as it stands, so a relative one counts from the link's
    /// folder.
    const TemporaryTree& link(const std::filesystem::path& link, const std::filesystem::path& target) const {
        makeParent(link);
        std::filesystem::create_symlink(target, path_ / link);
        return *this;
    }

    /// A pipe without a writer.
    const TemporaryTree& fifo(const std::filesystem::path& file) const {
        makeParent(file);
        if (::mkfifo((path_ / file).c_str(), S_IRUSR | S_IWUSR) != 0) {
            throw std::runtime_error("cannot make the pipe " + file.string());
        }
        return *this;
    }

    /// Removes a file or a folder with all it holds.
    const TemporaryTree& remove(const std::filesystem::path& entry) const {
        std::filesystem::remove_all(path_ / entry);
        return *this;
    }

    /// Copies a fixture machine, for example "thinkpad", into the folder.
    const TemporaryTree& copyMachine(std::string_view machine) const {
        std::filesystem::copy(std::filesystem::path(CINDERTOP_FIXTURES) / machine, path_,
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::copy_symlinks |
                                  std::filesystem::copy_options::overwrite_existing);
        return *this;
    }

private:
    void makeParent(const std::filesystem::path& entry) const {
        std::filesystem::create_directories((path_ / entry).parent_path());
    }

    std::filesystem::path path_;
};

} // namespace cindertop::linux_platform
