#include "terminal/Output.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <initializer_list>
#include <system_error>

#include <fcntl.h>
#include <limits.h> // NOLINT(modernize-deprecated-headers): PIPE_BUF is POSIX
#include <poll.h>
#include <unistd.h>

namespace cindertop::cli {

namespace {

/// What a pipe that reports room takes without blocking.
constexpr std::size_t pieceSize = PIPE_BUF;

} // namespace

bool WriteError::isReaderGone() const {
    return code == EPIPE;
}

bool WriteError::isInterruption() const {
    return code == EINTR;
}

std::string WriteError::message() const {
    return std::generic_category().message(code);
}

WriteResult Output::write(std::string_view text) const {
    while (!text.empty()) {
        if (const auto room = waitForRoom(); !room) {
            return room;
        }
        const auto written = ::write(descriptor_, text.data(), std::min(text.size(), pieceSize));
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR && errno != EAGAIN) {
            return std::unexpected(WriteError{errno});
        }
    }
    return {};
}

/// A blocking write would wait for a stalled reader and miss Ctrl-C while the signals are blocked.
WriteResult Output::waitForRoom() const {
    std::array<pollfd, 2> waited{pollfd{.fd = descriptor_, .events = POLLOUT, .revents = 0},
                                 pollfd{.fd = interruption_, .events = POLLIN, .revents = 0}};
    for (;;) {
        if (::poll(waited.data(), waited.size(), -1) < 0) {
            if (errno != EINTR) {
                return std::unexpected(WriteError{errno});
            }
            continue;
        }
        if (waited[0].revents != 0) {
            return {}; // also on an error, which the write will name
        }
        return std::unexpected(WriteError{EINTR});
    }
}

void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0) {
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

} // namespace cindertop::cli
