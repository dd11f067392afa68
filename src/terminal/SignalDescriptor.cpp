#include "terminal/SignalDescriptor.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <sys/signalfd.h>
#include <unistd.h>

namespace cindertop::cli {

namespace {

constexpr int killedBySignal = 128; ///< what a shell adds to the number of a signal

bool isIgnored(int signal) {
    struct sigaction action{};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

[[noreturn]] void refuse(int code, const char* what) {
    throw std::system_error(code, std::generic_category(), what);
}

} // namespace

SignalDescriptor::SignalDescriptor(std::initializer_list<int> signals) {
    sigset_t wanted;
    ::sigemptyset(&wanted);
    for (const int signal : signals) {
        // A blocked signal reaches the descriptor even when it is ignored.
        if (!isIgnored(signal)) {
            ::sigaddset(&wanted, signal);
        }
    }
    if (const int code = ::pthread_sigmask(SIG_BLOCK, &wanted, &formerMask_); code != 0) {
        refuse(code, "cannot block signals");
    }
    descriptor_ = ::signalfd(-1, &wanted, SFD_NONBLOCK | SFD_CLOEXEC);
    if (descriptor_ < 0) {
        const int code = errno;
        ::pthread_sigmask(SIG_SETMASK, &formerMask_, nullptr);
        refuse(code, "cannot wait for signals");
    }
}

SignalDescriptor::~SignalDescriptor() {
    ::close(descriptor_);
    ::pthread_sigmask(SIG_SETMASK, &formerMask_, nullptr);
}

std::optional<int> SignalDescriptor::next() const {
    signalfd_siginfo information{};
    const auto count = ::read(descriptor_, &information, sizeof information);
    if (count != static_cast<ssize_t>(sizeof information)) {
        return std::nullopt;
    }
    return static_cast<int>(information.ssi_signo);
}

void terminateBySignal(int signal) {
    ::signal(signal, SIG_DFL);
    ::raise(signal);
    std::_Exit(killedBySignal + signal); // the signal was blocked from outside
}

} // namespace cindertop::cli
