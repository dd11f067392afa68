#include "platform/linux/AttributeFile.h"

#include "support/Text.h"

#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t roomSize = 64;

/// Programs may open 1024 files unless told otherwise, and a server has hundreds of processors: beyond this
/// number attributes are opened for each read.
constexpr int highestKeptDescriptor = 512;

bool isOnSysfs(const FileDescriptor& descriptor) {
    struct statfs system{};
    return ::fstatfs(descriptor.number(), &system) == 0 && system.f_type == SYSFS_MAGIC;
}

std::expected<std::size_t, FileError> readStart(const FileDescriptor& descriptor, std::span<char> room) {
    ssize_t count = 0;
    do {
        count = ::pread(descriptor.number(), room.data(), room.size(), 0);
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        return std::unexpected(fileErrorOf(errno));
    }
    if (static_cast<std::size_t>(count) == room.size()) {
        return std::unexpected(FileError::oversized);
    }
    return static_cast<std::size_t>(count);
}

} // namespace

std::optional<std::int64_t> AttributeFile::integer() {
    std::array<char, roomSize> room; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    const auto size = read(room);
    return size ? parseInteger({room.data(), *size}) : std::nullopt;
}

std::expected<std::string, FileError> AttributeFile::word() {
    std::array<char, roomSize> room; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    const auto size = read(room);
    if (!size) {
        return std::unexpected(size.error());
    }
    return std::string(trimmingWhitespace({room.data(), *size}));
}

std::expected<std::size_t, FileError> AttributeFile::read(std::span<char> room) {
    if (kept_.isOpen()) {
        const auto size = readStart(kept_, room);
        if (size || size.error() != FileError::missing) {
            return size;
        }
        kept_ = FileDescriptor(); // the device went away; one of the same name may stand there by now
    }
    FileDescriptor opened(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!opened.isOpen()) {
        return std::unexpected(fileErrorOf(errno));
    }
    const auto size = readStart(opened, room);
    if (opened.number() <= highestKeptDescriptor && isOnSysfs(opened)) {
        kept_ = std::move(opened);
    }
    return size;
}

} // namespace cindertop::linux_platform
