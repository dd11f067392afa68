#pragma once

#include "platform/linux/FileDescriptor.h"

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace cindertop::linux_platform {

/// The right to write the user's files, held by one process of the user at a time, whatever session it is in.
/// It ends with this object or with the process, whichever is first.
class AgentLock {
public:
    /// Takes the lock that `dataFolder` keeps in "agent.lock", and makes the folder where it is missing.
    /// Never waits. `std::errc::device_or_resource_busy` when another process holds it. `note` is what the
    /// holder says of itself to others.
    static std::expected<AgentLock, std::errc> tryAcquire(const std::filesystem::path& dataFolder,
                                                          std::string_view note = {});

    /// The note of the current holder, else of the last one: at most 256 bytes, unchecked.
    static std::string note(const std::filesystem::path& dataFolder);

    /// Whether a process holds it, without making anything. The check takes it for a moment, so a process
    /// that wants it at that moment has to retry.
    static bool isHeld(const std::filesystem::path& dataFolder);

private:
    explicit AgentLock(FileDescriptor file) : file_(std::move(file)) {}

    FileDescriptor file_;
};

} // namespace cindertop::linux_platform
