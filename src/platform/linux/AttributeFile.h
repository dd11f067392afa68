#pragma once

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FileReading.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace cindertop::linux_platform {

/// An attribute that is asked at every tick. On sysfs it stays open: a read at its start asks the driver
/// again and a removed attribute says so, at a tenth of the cost of opening it each time. Elsewhere it is
/// opened for each read, since an ordinary file that was replaced would go on answering through an old
/// descriptor. Not thread-safe.
class AttributeFile {
public:
    explicit AttributeFile(std::filesystem::path path) : path_(std::move(path)) {}

    const std::filesystem::path& path() const { return path_; }

    /// The number that it says now; none on any failure.
    std::optional<std::int64_t> integer();

    /// What it says now, up to 63 bytes, without white space around it.
    std::expected<std::string, FileError> word();

private:
    /// Bytes put into the room, or why there are none.
    std::expected<std::size_t, FileError> read(std::span<char> room);

    std::filesystem::path path_;
    FileDescriptor kept_;
};

} // namespace cindertop::linux_platform
