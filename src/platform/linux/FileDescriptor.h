#pragma once

#include <cerrno>
#include <filesystem>
#include <memory>
#include <string_view>
#include <utility>

#include <dirent.h>
#include <unistd.h>

namespace cindertop::linux_platform {

/// Owns an open file. A negative number is no file.
class FileDescriptor {
public:
    FileDescriptor() = default;

    explicit FileDescriptor(int number) : number_(number) {}

    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    ~FileDescriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }

    bool isOpen() const { return number_ >= 0; }

    int number() const { return number_; }

private:
    int number_ = -1;
};

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
