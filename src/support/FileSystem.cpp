#include "support/FileSystem.h"

#include <cerrno>
#include <cstdio>
#include <tuple>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cindertop {

namespace {

std::unexpected<std::errc> lastError() {
    return std::unexpected(static_cast<std::errc>(errno));
}

FileResult<void> resultOf(int status) {
    if (status != 0) {
        return lastError();
    }
    return {};
}

int descriptor(FileHandle file) {
    return static_cast<int>(file);
}

/// Files on a network, on a stick or behind FUSE may know no locks, no modes and no waiting for the disk.
bool isUnknownToFileSystem(int error) {
    return error == EOPNOTSUPP || error == ENOSYS || error == ENOLCK || error == EINVAL;
}

/// Whether the open file still is what stands at the path: a former holder may have renamed or removed it
/// between our opening and our locking it.
bool standsAt(const struct stat& opened, const std::filesystem::path& path) {
    struct stat named{};
    return ::lstat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

/// Nobody else's: in a shared folder somebody may have put a file of their own there, or a second name of a
/// file that is not to change.
bool isOurs(const struct stat& opened) {
    return opened.st_nlink == 1 && opened.st_uid == ::geteuid() && S_ISREG(opened.st_mode);
}

/// A file that we have just made is ours, whatever its file system says of owner and mode.
FileResult<void> claimNew(int file, const std::filesystem::path& path) {
    std::ignore = ::fchmod(file, S_IRUSR | S_IWUSR); // the mask may have left us less
    if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        // Whatever else a file system without locks answers, nobody holds the file.
        return errno == EWOULDBLOCK ? FileResult<void>(std::unexpected(std::errc::device_or_resource_busy))
                                    : FileResult<void>();
    }
    struct stat opened{};
    if (::fstat(file, &opened) != 0 || !standsAt(opened, path)) {
        return std::unexpected(std::errc::device_or_resource_busy);
    }
    return {};
}

/// What a killed process left.
FileResult<void> claimAbandoned(int file, const std::filesystem::path& path) {
    struct stat opened{};
    if (::flock(file, LOCK_EX | LOCK_NB) != 0 || ::fstat(file, &opened) != 0 || !standsAt(opened, path) ||
        !isOurs(opened)) {
        return std::unexpected(std::errc::device_or_resource_busy);
    }
    if (::fchmod(file, S_IRUSR | S_IWUSR) != 0) { // it may have another mode
        return lastError();
    }
    return resultOf(::ftruncate(file, 0));
}

} // namespace

FileResult<FileHandle> PosixFileSystem::openForReading(const std::filesystem::path& file) {
    const int opened = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (opened < 0) {
        return lastError();
    }
    struct stat status{};
    if (::fstat(opened, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(opened);
        return std::unexpected(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                       : std::errc::not_supported);
    }
    return FileHandle{opened};
}

FileResult<FileHandle> PosixFileSystem::openForReplacing(const std::filesystem::path& file) {
    constexpr int flags = O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;
    int opened = ::open(file.c_str(), flags | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    const bool isNew = opened >= 0;
    const bool isThere = !isNew && errno == EEXIST;
    if (isThere) {
        opened = ::open(file.c_str(), flags);
    }
    if (opened < 0) {
        return isThere && errno == ENOENT ? std::unexpected(std::errc::device_or_resource_busy) // it has gone
                                          : lastError();
    }
    if (const auto claimed = isNew ? claimNew(opened, file) : claimAbandoned(opened, file); !claimed) {
        ::close(opened);
        return std::unexpected(claimed.error());
    }
    return FileHandle{opened};
}

FileResult<std::size_t> PosixFileSystem::read(FileHandle file, std::span<char> buffer) {
    const ssize_t count = ::read(descriptor(file), buffer.data(), buffer.size());
    if (count < 0) {
        return lastError();
    }
    return static_cast<std::size_t>(count);
}

FileResult<std::size_t> PosixFileSystem::write(FileHandle file, std::string_view bytes) {
    const ssize_t count = ::write(descriptor(file), bytes.data(), bytes.size());
    if (count < 0) {
        return lastError();
    }
    return static_cast<std::size_t>(count);
}

FileResult<void> PosixFileSystem::sync(FileHandle file) {
    const bool isSynced = ::fsync(descriptor(file)) == 0 || isUnknownToFileSystem(errno);
    return isSynced ? FileResult<void>() : lastError();
}

void PosixFileSystem::close(FileHandle file) {
    ::close(descriptor(file));
}

FileResult<void> PosixFileSystem::rename(const std::filesystem::path& from, const std::filesystem::path& to) {
    return resultOf(::rename(from.c_str(), to.c_str()));
}

FileResult<void> PosixFileSystem::remove(const std::filesystem::path& file) {
    return resultOf(::unlink(file.c_str()));
}

FileResult<void> PosixFileSystem::makeFolder(const std::filesystem::path& folder) {
    return resultOf(::mkdir(folder.c_str(), S_IRWXU));
}

FileResult<void> PosixFileSystem::syncFolder(const std::filesystem::path& folder) {
    const int opened = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0) {
        return lastError();
    }
    const auto synced = resultOf(::fsync(opened));
    ::close(opened);
    return synced;
}

} // namespace cindertop
