#pragma once

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FileReading.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// The folders /proc/PID, read by way of one open /proc and into buffers that stay. Called from one thread at
/// a time.
class ProcessFolders {
public:
    explicit ProcessFolders(std::filesystem::path proc);

    /// The identifiers of all visible processes, ascending, or why /proc cannot be listed. Valid until the
    /// next call.
    std::expected<std::span<const std::int32_t>, FileError> list();

    /// The start of a file, 4096 bytes at most, in one read; none when the process is gone or the file
    /// refused. Valid until the next call.
    std::optional<std::string_view> text(std::int32_t processIdentifier, std::string_view file);

    /// The user whose rights the process has now.
    std::optional<std::uint32_t> owner(std::int32_t processIdentifier);

    /// Where exe points to, without the kernel's mark for a file that was deleted or replaced since.
    std::optional<std::string> executable(std::int32_t processIdentifier);

    /// The numbers of the open files of a process whose paths begin so, ascending; none when the process is
    /// gone or may not be looked at. Valid until the next call.
    std::span<const std::int32_t> descriptors(std::int32_t processIdentifier, std::string_view pathPrefix);

    const std::filesystem::path& path() const { return proc_; }

private:
    bool open();
    /// Puts the names that are numbers above 0, or 0 itself where `hasZero`, into `numbers`. False: `errno`
    /// says why.
    bool readNumbers(const FileDescriptor& folder, std::vector<std::int32_t>& numbers, bool hasZero);

    std::filesystem::path proc_;
    FileDescriptor folder_;
    std::vector<std::int32_t> identifiers_;
    std::vector<std::int32_t> descriptors_;
    std::array<char, 4096> text_{};
    std::vector<std::byte> listing_;
};

} // namespace cindertop::linux_platform
