#include "platform/linux/ProcessHandle.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace cindertop::linux_platform {

// The C library's header of these calls declares them for C only.

std::optional<ProcessHandle> ProcessHandle::open(std::int32_t processIdentifier) {
    FileDescriptor file(static_cast<int>(::syscall(SYS_pidfd_open, processIdentifier, 0)));
    return file.isOpen() ? std::optional(ProcessHandle(std::move(file))) : std::nullopt;
}

bool ProcessHandle::send(int signal) const {
    return ::syscall(SYS_pidfd_send_signal, file_.number(), signal, nullptr, 0) == 0;
}

bool ProcessHandle::waitForEnd(std::chrono::milliseconds longest) const {
    pollfd end{.fd = file_.number(), .events = POLLIN, .revents = 0};
    return ::poll(&end, 1, static_cast<int>(longest.count())) > 0;
}

} // namespace cindertop::linux_platform
