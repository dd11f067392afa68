#include "platform/linux/ProcessClocks.h"

#include <time.h> // NOLINT(modernize-deprecated-headers): clock_gettime and clockid_t are POSIX

namespace cindertop::linux_platform {

namespace {

/// What clock_getcpuclockid gives, without the system call by which it looks whether the process exists: the
/// complement of the identifier in the upper bits, "scheduler's account" in the lower three.
///
/// An identifier above the kernel's limit would lose its upper bits, and 0 stands for the caller itself.
clockid_t cpuClockOf(std::int32_t processIdentifier) {
    constexpr std::uint32_t schedulerAccount = 2;
    return static_cast<clockid_t>((~static_cast<std::uint32_t>(processIdentifier) << 3U) | schedulerAccount);
}

std::optional<std::chrono::nanoseconds> read(clockid_t clock) {
    constexpr auto longest =
        std::chrono::floor<std::chrono::seconds>(std::chrono::nanoseconds::max()).count();
    timespec time{};
    if (::clock_gettime(clock, &time) != 0 || time.tv_sec < 0 || time.tv_sec >= longest) {
        return std::nullopt;
    }
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

class KernelClocks final : public ProcessClocks {
public:
    std::optional<std::chrono::nanoseconds> cpuTime(std::int32_t processIdentifier) override {
        constexpr std::int32_t largestIdentifier = 1 << 22;
        if (processIdentifier < 1 || processIdentifier > largestIdentifier) {
            return std::nullopt;
        }
        return read(cpuClockOf(processIdentifier));
    }

    std::chrono::nanoseconds sinceBoot() override {
        return read(CLOCK_BOOTTIME).value_or(std::chrono::nanoseconds::zero());
    }

    Instant now() override { return Instant(std::chrono::system_clock::now().time_since_epoch()); }
};

} // namespace

std::unique_ptr<ProcessClocks> kernelClocks() {
    return std::make_unique<KernelClocks>();
}

} // namespace cindertop::linux_platform
