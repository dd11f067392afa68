#pragma once

#include <initializer_list>
#include <optional>

#include <signal.h> // NOLINT(modernize-deprecated-headers): signal sets are POSIX

namespace cindertop::cli {

/// Takes signals as data instead of by surprise: they are blocked, and a descriptor becomes readable. Made
/// before any thread starts. A signal that the parent set to be ignored (`nohup`, a job in the background)
/// stays ignored.
class SignalDescriptor {
public:
    /// Throws std::system_error when the system refuses.
    explicit SignalDescriptor(std::initializer_list<int> signals);
    /// Signals that came and were not asked for take their effect here.
    ~SignalDescriptor();

    SignalDescriptor(const SignalDescriptor&) = delete;
    SignalDescriptor& operator=(const SignalDescriptor&) = delete;

    /// Readable while a signal waits.
    int descriptor() const { return descriptor_; }

    /// The next signal that waits; none when there is none.
    std::optional<int> next() const;

private:
    sigset_t formerMask_{};
    int descriptor_ = -1;
};

/// Ends the process as the signal does by itself, so that the parent sees why. Nothing must block or handle
/// it.
[[noreturn]] void dieBy(int signal);

} // namespace cindertop::cli
