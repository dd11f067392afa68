#include "platform/linux/LinuxProcessInformation.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include <sched.h>
#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

struct ProcessorSetFree {
    void operator()(cpu_set_t* set) const { CPU_FREE(set); }
};

/// None when the kernel refuses, or knows more processors than there can be.
std::optional<int> allowedProcessorCount() {
    constexpr int mostProcessors = 1 << 16;
    for (int room = CPU_SETSIZE; room <= mostProcessors; room *= 2) {
        const std::unique_ptr<cpu_set_t, ProcessorSetFree> set(CPU_ALLOC(static_cast<std::size_t>(room)));
        const auto size = CPU_ALLOC_SIZE(static_cast<std::size_t>(room));
        if (set && ::sched_getaffinity(0, size, set.get()) == 0) {
            return CPU_COUNT_S(size, set.get());
        }
        if (errno != EINVAL) { // EINVAL: the kernel's set is larger than the room
            break;
        }
    }
    return std::nullopt;
}

} // namespace

LinuxProcessInformation::LinuxProcessInformation(std::function<int()> thermalState, PowerProfile& profile,
                                                 std::optional<std::string> bundleIdentifier)
    : thermalState_(std::move(thermalState)),
      profile_(profile),
      bundleIdentifier_(std::move(bundleIdentifier)) {}

int LinuxProcessInformation::thermalState() const {
    return thermalState_();
}

bool LinuxProcessInformation::isLowPowerModeEnabled() const {
    return profile_.isSavingPower();
}

int LinuxProcessInformation::activeProcessorCount() const {
    const int count = allowedProcessorCount().value_or(static_cast<int>(::sysconf(_SC_NPROCESSORS_ONLN)));
    return std::max(count, 1);
}

std::int32_t LinuxProcessInformation::processIdentifier() const {
    return ::getpid();
}

std::optional<std::string> LinuxProcessInformation::bundleIdentifier() const {
    return bundleIdentifier_;
}

} // namespace cindertop::linux_platform
