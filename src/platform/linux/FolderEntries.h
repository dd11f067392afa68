#pragma once

#include <cerrno>
#include <filesystem>
#include <memory>
#include <string_view>

#include <dirent.h>

namespace cindertop::linux_platform {

/// Calls `use` with each entry of a folder but "." and "..", in the system's order. 0, or the `errno` of what
/// failed.
template <typename Use>
int forEachEntry(const std::filesystem::path& folder, Use use) {
    struct Closer {
        void operator()(DIR* stream) const { ::closedir(stream); }
    };

    const std::unique_ptr<DIR, Closer> stream(::opendir(folder.c_str()));
    if (!stream) {
        return errno;
    }
    for (;;) {
        errno = 0;
        const dirent* const entry = ::readdir(stream.get()); // NOLINT(concurrency-mt-unsafe): own stream
        if (entry == nullptr) {
            return errno;
        }
        const std::string_view name(entry->d_name);
        if (name != "." && name != "..") {
            use(*entry);
        }
    }
}

} // namespace cindertop::linux_platform
