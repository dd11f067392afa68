#pragma once

#include "platform/linux/FileDescriptor.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include <sys/inotify.h>
#include <unistd.h>

namespace cindertop::linux_platform {

/// Counts how often one file of an ordinary file system is opened.
class OpenCounter {
public:
    explicit OpenCounter(const std::filesystem::path& file)
        : events_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        if (::inotify_add_watch(events_.number(), file.c_str(), IN_OPEN | IN_CLOSE) < 0) {
            throw std::runtime_error("cannot watch " + file.string());
        }
    }

    /// Opens since the last call.
    int take() const {
        int count = 0;
        std::array<char, 4096> room{};
        ssize_t size = 0;
        while ((size = ::read(events_.number(), room.data(), room.size())) > 0) {
            count += countIn(room, static_cast<std::size_t>(size));
        }
        return count;
    }

private:
    /// The kernel folds equal events that follow each other; the closes between keep the opens apart.
    static int countIn(const std::array<char, 4096>& room, std::size_t size) {
        int count = 0;
        for (std::size_t offset = 0; offset < size;) {
            inotify_event event{};
            std::memcpy(&event, room.data() + offset, sizeof event);
            offset += sizeof event + event.len;
            count += (event.mask & IN_OPEN) != 0 ? 1 : 0;
        }
        return count;
    }

    FileDescriptor events_;
};

} // namespace cindertop::linux_platform
