#pragma once

#include "TemporaryTree.h"
#include "platform/linux/FileReading.h"

#include <array>
#include <csignal>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cindertop::linux_platform {

/// A message bus of the test's own, always at the same address, that can die and come back.
class PrivateBus {
public:
    /// `furtherConfiguration`: elements of its configuration file.
    explicit PrivateBus(const std::string& furtherConfiguration = {}) {
        tree_.write("bus.conf", "<busconfig><type>session</type><listen>" + address() +
                                    "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
                                    "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
                                    "<allow own=\"*\"/></policy>" +
                                    furtherConfiguration + "</busconfig>");
    }

    ~PrivateBus() { stop(); }

    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    std::string address() const { return "unix:path=" + (tree_.path() / "bus").string(); }

    /// Returns when the bus takes connections; throws when it does not come up.
    void start() {
        std::array<int, 2> announcement{};
        if (::pipe(announcement.data()) != 0) {
            throw std::runtime_error("no pipe");
        }
        const auto configuration = "--config-file=" + (tree_.path() / "bus.conf").string();
        const auto output = "--print-address=" + std::to_string(announcement[1]);
        const pid_t parent = ::getpid();
        process_ = ::fork();
        if (process_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGTERM); // a test that crashes leaves no daemon behind
            // It complains about limits that it may not raise; what matters is told when it does not come up.
            const int log = ::open((tree_.path() / "log").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            if (log >= 0 && ::dup2(log, STDERR_FILENO) >= 0 && ::getppid() == parent) {
                ::execlp("dbus-daemon", "dbus-daemon", "--nofork", "--nopidfile", configuration.c_str(),
                         output.c_str(), nullptr);
            }
            ::_exit(127);
        }
        ::close(announcement[1]);
        char first = 0;
        const auto count = ::read(announcement[0], &first, 1);
        ::close(announcement[0]);
        if (count != 1) {
            throw std::runtime_error("dbus-daemon does not start: " +
                                     readTextFile(tree_.path() / "log").value_or(""));
        }
    }

    void stop() {
        if (process_ > 0) {
            ::kill(process_, SIGTERM);
            ::waitpid(process_, nullptr, 0);
            process_ = -1;
        }
    }

private:
    TemporaryTree tree_;
    pid_t process_ = -1;
};

} // namespace cindertop::linux_platform
