#pragma once

#include <utility>

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

} // namespace cindertop::linux_platform
