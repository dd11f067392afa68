#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace cindertop::fakes {

/// A pipe whose reading end never waits.
class Pipe {
public:
    Pipe() {
        if (::pipe2(ends_.data(), O_CLOEXEC) != 0 || ::fcntl(reader(), F_SETFL, O_NONBLOCK) != 0) {
            throw std::runtime_error("no pipe");
        }
    }

    ~Pipe() {
        closeReader();
        closeWriter();
    }

    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int reader() const { return ends_[0]; }

    int writer() const { return ends_[1]; }

    void write(std::string_view text) const {
        if (::write(writer(), text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
            throw std::runtime_error("cannot write");
        }
    }

    /// What has been written and not been taken.
    std::string taken() const {
        std::array<char, 4096> buffer{};
        std::string text;
        for (auto count = ::read(reader(), buffer.data(), buffer.size()); count > 0;
             count = ::read(reader(), buffer.data(), buffer.size())) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
        return text;
    }

    void closeReader() { close(ends_[0]); }

    void closeWriter() { close(ends_[1]); }

private:
    static void close(int& end) {
        if (end >= 0) {
            ::close(std::exchange(end, -1));
        }
    }

    std::array<int, 2> ends_{-1, -1};
};

} // namespace cindertop::fakes
