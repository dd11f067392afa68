#include "platform/linux/AgentLock.h"

#include "platform/linux/FileReading.h"
#include "support/AtomicFile.h"
#include "support/FileSystem.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace cindertop::linux_platform {

namespace {

constexpr auto lockFileName = "agent.lock";

} // namespace

std::expected<AgentLock, std::errc> AgentLock::tryAcquire(const std::filesystem::path& dataFolder,
                                                          std::string_view note) {
    PosixFileSystem files;
    if (const auto made = makeFolders(files, dataFolder); !made) {
        return std::unexpected(made.error());
    }
    FileDescriptor file(::open((dataFolder / lockFileName).c_str(),
                               O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY,
                               S_IRUSR | S_IWUSR));
    if (!file.isOpen()) {
        return std::unexpected(static_cast<std::errc>(errno));
    }
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        return std::unexpected(errno == EWOULDBLOCK ? std::errc::device_or_resource_busy
                                                    : static_cast<std::errc>(errno));
    }
    // Where the note cannot be written, on a full disk, the lock holds all the same.
    [[maybe_unused]] const bool isNoted =
        ::ftruncate(file.number(), 0) == 0 && ::pwrite(file.number(), note.data(), note.size(), 0) > 0;
    return AgentLock(std::move(file));
}

bool AgentLock::isHeld(const std::filesystem::path& dataFolder) {
    const FileDescriptor file(::open((dataFolder / lockFileName).c_str(),
                                     O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    return file.isOpen() && ::flock(file.number(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

std::string AgentLock::note(const std::filesystem::path& dataFolder) {
    constexpr std::size_t longestNote = 256;
    return readFilePrefix(dataFolder / lockFileName, longestNote).value_or("");
}

} // namespace cindertop::linux_platform
