#include "platform/linux/AgentLock.h"

#include "support/AtomicFile.h"
#include "support/PosixFileSystem.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace cindertop::linux_platform {

std::expected<AgentLock, std::errc> AgentLock::tryAcquire(const std::filesystem::path& dataFolder) {
    PosixFileSystem files;
    if (const auto made = makeFolders(files, dataFolder); !made) {
        return std::unexpected(made.error());
    }
    FileDescriptor file(::open((dataFolder / "agent.lock").c_str(),
                               O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY,
                               S_IRUSR | S_IWUSR));
    if (!file.isOpen()) {
        return std::unexpected(static_cast<std::errc>(errno));
    }
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        return std::unexpected(errno == EWOULDBLOCK ? std::errc::device_or_resource_busy
                                                    : static_cast<std::errc>(errno));
    }
    return AgentLock(std::move(file));
}

} // namespace cindertop::linux_platform
