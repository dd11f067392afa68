#pragma once

#include <cerrno>
#include <cstddef>
#include <system_error>
#include <vector>

#include <signal.h> // NOLINT(modernize-deprecated-headers): kill is POSIX
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cindertop {

/// Child processes that sleep. They end with this object, and at the latest with this program.
class SleepingProcesses {
public:
    explicit SleepingProcesses(int count) {
        children_.reserve(static_cast<std::size_t>(count));
        while (static_cast<int>(children_.size()) < count) {
            const pid_t child = ::fork();
            if (child == 0) {
                sleepForever();
            }
            if (child < 0) {
                const int error = errno;
                end(); // the destructor does not run
                throw std::system_error(error, std::generic_category(), "fork");
            }
            children_.push_back(child);
        }
    }

    ~SleepingProcesses() { end(); }

    SleepingProcesses(const SleepingProcesses&) = delete;
    SleepingProcesses& operator=(const SleepingProcesses&) = delete;

    const std::vector<pid_t>& identifiers() const { return children_; }

private:
    [[noreturn]] static void sleepForever() {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (;;) {
            ::pause();
        }
    }

    void end() const {
        for (const auto child : children_) {
            ::kill(child, SIGKILL);
        }
        for (const auto child : children_) {
            ::waitpid(child, nullptr, 0);
        }
    }

    std::vector<pid_t> children_;
};

} // namespace cindertop
