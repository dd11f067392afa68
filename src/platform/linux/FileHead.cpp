#include "platform/linux/FileHead.h"

#include "platform/linux/FileDescriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

/// How many bytes arrived before the buffer was full or the file ended; below 0 on failure.
ssize_t readUpTo(int descriptor, char* buffer, std::size_t size) {
    std::size_t length = 0;
    while (length < size) {
        const auto count = ::read(descriptor, buffer + length, size - length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return -1;
        }
        if (count == 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(length);
}

} // namespace

std::optional<std::string> readFileHead(const std::filesystem::path& file, std::size_t size) {
    const FileDescriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!descriptor.isOpen()) {
        return std::nullopt;
    }
    std::string text(size, '\0');
    const auto length = readUpTo(descriptor.number(), text.data(), size);
    if (length < 0) {
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(length));
    return text;
}

} // namespace cindertop::linux_platform
