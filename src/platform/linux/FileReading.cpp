#include "platform/linux/FileReading.h"

#include "platform/linux/FileDescriptor.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <span>
#include <system_error>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t chunkSize = attributeSizeLimit + 1; // one byte more tells "full" from "too long"

FileDescriptor openForReading(const std::filesystem::path& file) {
    return FileDescriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

/// Bytes read, 0 at the end, below 0 with `errno` set.
ssize_t readChunk(const FileDescriptor& descriptor, std::span<char> room) {
    ssize_t count = 0;
    do {
        count = ::read(descriptor.number(), room.data(), room.size());
    } while (count < 0 && errno == EINTR);
    return count;
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

std::string_view leadingDigits(std::string_view text) {
    const auto* const end = std::ranges::find_if_not(text, isDigit);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// Numbers by value, the rest by bytes.
bool naturalLess(std::string_view left, std::string_view right) {
    while (!left.empty() && !right.empty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            const auto leftDigits = leadingDigits(left);
            const auto rightDigits = leadingDigits(right);
            if (leftDigits != rightDigits) {
                return leftDigits.size() != rightDigits.size() ? leftDigits.size() < rightDigits.size()
                                                               : leftDigits < rightDigits;
            }
            left.remove_prefix(leftDigits.size());
            right.remove_prefix(rightDigits.size());
        } else if (left.front() != right.front()) {
            return left.front() < right.front();
        } else {
            left.remove_prefix(1);
            right.remove_prefix(1);
        }
    }
    return left.size() < right.size();
}

} // namespace

FileError fileErrorOf(int number) {
    switch (number) {
    case ENOENT:
    case ENOTDIR:
    case ENODEV:
    case ESRCH:
        return FileError::missing;
    case EACCES:
    case EPERM:
        return FileError::denied;
    default:
        return FileError::unreadable;
    }
}

std::expected<std::string, FileError> readTextFile(const std::filesystem::path& file, std::size_t limit) {
    const auto descriptor = openForReading(file);
    return descriptor.isOpen() ? readText(descriptor, limit) : std::unexpected(fileErrorOf(errno));
}

std::expected<std::string, FileError> readText(const FileDescriptor& file, std::size_t limit) {
    std::string text;
    std::array<char, chunkSize> chunk; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    for (;;) {
        const auto count = readChunk(file, chunk);
        if (count < 0) {
            return std::unexpected(fileErrorOf(errno));
        }
        if (count == 0) {
            return text;
        }
        if (text.size() + static_cast<std::size_t>(count) > limit) {
            return std::unexpected(FileError::oversized);
        }
        text.append(chunk.data(), static_cast<std::size_t>(count));
    }
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
    const auto digits = trimmingWhitespace(text);
    std::int64_t number = 0;
    const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc{} || stop != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return number;
}

std::optional<std::int64_t> readInteger(const std::filesystem::path& file) {
    const auto descriptor = openForReading(file);
    if (!descriptor.isOpen()) {
        return std::nullopt;
    }
    // A number is short and arrives in one read: what fills the buffer is none.
    std::array<char, 64> room; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    const auto count = readChunk(descriptor, room);
    if (count < 0 || static_cast<std::size_t>(count) == room.size()) {
        return std::nullopt;
    }
    return parseInteger({room.data(), static_cast<std::size_t>(count)});
}

std::optional<std::string> readAttribute(const std::filesystem::path& file) {
    const auto text = readTextFile(file);
    if (!text) {
        return std::nullopt;
    }
    const auto trimmed = trimmingWhitespace(*text);
    return trimmed.empty() ? std::nullopt : std::optional<std::string>(trimmed);
}

std::filesystem::path linkedFolder(const std::filesystem::path& link) {
    std::error_code error;
    auto folder = std::filesystem::canonical(link, error);
    if (!error && !std::filesystem::is_directory(folder, error)) {
        const auto text = readAttribute(link);
        folder =
            text ? std::filesystem::canonical(link.parent_path() / *text, error) : std::filesystem::path();
    }
    return error ? std::filesystem::path() : folder;
}

std::expected<std::vector<std::string>, FileError> listFolder(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    if (const int error =
            forEachEntry(folder, [&](const dirent& entry) { names.emplace_back(entry.d_name); });
        error != 0) {
        return std::unexpected(fileErrorOf(error));
    }
    std::ranges::sort(names, naturalLess);
    return names;
}

std::string_view describe(FileError error) {
    switch (error) {
    case FileError::missing:
        return "not there";
    case FileError::denied:
        return "not permitted";
    case FileError::unreadable:
        return "not readable";
    case FileError::oversized:
        return "too long";
    }
    return "not readable";
}

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

std::optional<std::string> readFilePrefix(const std::filesystem::path& file, std::size_t size) {
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

namespace {

constexpr int readingFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW;

FileDescriptor openBelow(const FileDescriptor& root, const std::filesystem::path& file) {
    const auto relative = file.relative_path();
    if (!relative.has_parent_path()) {
        return FileDescriptor(::openat(root.number(), relative.c_str(), readingFlags));
    }
    open_how how{};
    how.flags = readingFlags;
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_SYMLINKS;
    return FileDescriptor(
        static_cast<int>(::syscall(SYS_openat2, root.number(), relative.c_str(), &how, sizeof how)));
}

bool isRegular(const FileDescriptor& descriptor) {
    struct stat status{};
    return ::fstat(descriptor.number(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

std::expected<std::string, FileError> readForeignFile(const std::filesystem::path& root,
                                                      const std::filesystem::path& file, std::size_t limit) {
    // The root itself may be a link: /proc/PID/root is one.
    const FileDescriptor folder(::open(root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen()) {
        return std::unexpected(fileErrorOf(errno));
    }
    const auto opened = openBelow(folder, file);
    if (!opened.isOpen()) {
        return std::unexpected(fileErrorOf(errno));
    }
    return isRegular(opened) ? readText(opened, limit) : std::unexpected(FileError::unreadable);
}

} // namespace cindertop::linux_platform
