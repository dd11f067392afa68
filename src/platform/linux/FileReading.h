#pragma once

#include "platform/linux/FileDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// Where the kernel's file systems stand. Tests put fixture trees there.
struct Roots {
    std::filesystem::path proc = "/proc";
    std::filesystem::path sys = "/sys";
};

/// Why a file of /proc or /sys gave no text.
enum class FileError {
    missing,    ///< no such file, or the device or process went away
    denied,     ///< this user may not read it
    unreadable, ///< the driver had no answer (ENODATA, EAGAIN, EIO, ENXIO, ...), or it is no file
    oversized,  ///< longer than any answer that makes sense here
};

inline constexpr std::size_t attributeSizeLimit = 4096; ///< sysfs hands out one page at most

/// The error that an `errno` stands for.
FileError fileErrorOf(int number);

/// The whole text of a small file, in one open. Opens never block on a FIFO and follow no terminal.
std::expected<std::string, FileError> readTextFile(const std::filesystem::path& file,
                                                   std::size_t limit = attributeSizeLimit);

/// The rest of an open file.
std::expected<std::string, FileError> readText(const FileDescriptor& file, std::size_t limit);

/// A decimal number that fills the whole text but for white space around it; none when it is anything else or
/// does not fit 64 bits.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// The number in a file; none on any failure. Allocates nothing.
std::optional<std::int64_t> readInteger(const std::filesystem::path& file);

/// The text of an attribute without white space around it; none when unreadable or empty.
std::optional<std::string> readAttribute(const std::filesystem::path& file);

/// The folder that a link of sysfs leads to, without links in its path; empty when it leads nowhere. In the
/// read-out of a machine links can have become files that hold their text: those lead there, too.
std::filesystem::path linkedFolder(const std::filesystem::path& link);

/// The names in a folder as people order them: "zone2" before "zone10".
std::expected<std::vector<std::string>, FileError> listFolder(const std::filesystem::path& folder);

/// What to tell a person about an error: "not there", "not permitted", ...
std::string_view describe(FileError error);

/// The first `size` bytes of a file, or all of a shorter one, in one open. For files of /proc that grow with
/// the machine (`stat` and `cpuinfo` reach hundreds of kilobytes) when only their start is wanted. None when
/// unreadable.
std::optional<std::string> readFilePrefix(const std::filesystem::path& file, std::size_t size);

/// The whole text of a regular file that another process made or named. `file` counts from the folder `root`,
/// with or without a "/" in front, and nothing outside is reached: no link below `root` is followed and ".."
/// does not leave it. Pipes, devices and folders are unreadable and never waited for.
///
/// A path of several folders needs openat2 (Linux 5.6); without it, as in some containers, the file is
/// refused.
std::expected<std::string, FileError> readForeignFile(const std::filesystem::path& root,
                                                      const std::filesystem::path& file, std::size_t limit);

} // namespace cindertop::linux_platform
