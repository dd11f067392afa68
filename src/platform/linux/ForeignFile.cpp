#include "platform/linux/ForeignFile.h"

#include "platform/linux/FileDescriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace cindertop::linux_platform {

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
