#pragma once

#include "platform/linux/FileDescriptor.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <utility>

namespace cindertop::linux_platform {

/// Refers to one process: its identifier may be reused, the handle never is.
class ProcessHandle {
public:
    /// None when no such process is left, or before Linux 5.3.
    static std::optional<ProcessHandle> open(std::int32_t processIdentifier);

    /// False when the process is gone or may not be sent signals.
    bool send(int signal) const;

    /// Waits until the process has ended; false when it has not within that time.
    bool waitForEnd(std::chrono::milliseconds longest) const;

private:
    explicit ProcessHandle(FileDescriptor file) : file_(std::move(file)) {}

    FileDescriptor file_;
};

} // namespace cindertop::linux_platform
