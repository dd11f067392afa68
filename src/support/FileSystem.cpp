#include "support/FileSystem.h"

#include <cerrno>
#include <cstdio>
#include <tuple>

#include <fcntl.h>
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

/// Files on a network, on a stick or behind FUSE may know no waiting for the disk.
bool isUnknownToFileSystem(int error) {
    return error == EOPNOTSUPP || error == ENOSYS || error == EINVAL;
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

/// Never opens what stands there: in a shared folder somebody may have put a file of their own there, or a
/// second name of a file that is not to change.
FileResult<FileHandle> PosixFileSystem::openForReplacing(const std::filesystem::path& file) {
    ::unlink(file.c_str());
    const int opened = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (opened < 0) {
        return lastError();
    }
    std::ignore = ::fchmod(opened, S_IRUSR | S_IWUSR); // the mask may have left us less; not all know modes
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
