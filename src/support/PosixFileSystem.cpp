#include "support/PosixFileSystem.h"

#include <cerrno>
#include <cstdio>

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

/// Whether the open file still is what stands at the path, and nobody else's: a former holder may have
/// renamed or removed it between our opening and our locking it, and in a shared folder somebody may have put
/// a file of their own there, or a second name of a file that is not to change.
bool isOursToReplace(int openFile, const std::filesystem::path& path) {
    struct stat opened{};
    struct stat named{};
    return ::fstat(openFile, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino && opened.st_nlink == 1 &&
           opened.st_uid == ::geteuid() && S_ISREG(opened.st_mode);
}

FileResult<void> claim(int openFile, const std::filesystem::path& path) {
    if (::flock(openFile, LOCK_EX | LOCK_NB) != 0 || !isOursToReplace(openFile, path)) {
        return std::unexpected(std::errc::device_or_resource_busy);
    }
    if (::fchmod(openFile, S_IRUSR | S_IWUSR) != 0) { // what a killed process left may have another mode
        return lastError();
    }
    return resultOf(::ftruncate(openFile, 0));
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
    const int opened =
        ::open(file.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR);
    if (opened < 0) {
        return lastError();
    }
    if (const auto claimed = claim(opened, file); !claimed) {
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
    return resultOf(::fsync(descriptor(file)));
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
