#pragma once

#include <initializer_list>
#include <optional>

#include <signal.h> // NOLINT(modernize-deprecated-headers): signal sets are POSIX

namespace cindertop::cli {

/// Receives signals through a descriptor: they are blocked, and it becomes readable. Made before any thread
/// starts. A signal that the parent set to be ignored (`nohup`, a job in the background) stays ignored.
class SignalDescriptor {
public:
    /// Throws std::system_error when the system refuses.
    explicit SignalDescriptor(std::initializer_list<int> signals);
    /// Pending signals that were not read take effect here.
    ~SignalDescriptor();

    SignalDescriptor(const SignalDescriptor&) = delete;
    SignalDescriptor& operator=(const SignalDescriptor&) = delete;

    /// Readable while a signal is pending.
    int descriptor() const { return descriptor_; }

    /// The next pending signal, if any.
    std::optional<int> next() const;

private:
    sigset_t formerMask_{};
    int descriptor_ = -1;
};

/// Ends the process by the signal's default action, so that the parent sees why. Nothing must block or handle
/// it.
[[noreturn]] void terminateBySignal(int signal);

} // namespace cindertop::cli
