#include "platform/linux/DeviceFolder.h"

#include "platform/linux/FileDescriptor.h"

#include <string_view>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
    constexpr std::uint64_t fnvPrime = 0x100000001b3;
    return (hash ^ value) * fnvPrime;
}

/// A number made of the names and inode numbers; the time stamps of sysfs folders do not move. 0: not
/// readable.
std::uint64_t fingerprintOf(const std::filesystem::path& folder) {
    std::uint64_t hash = 0xcbf29ce484222325;
    const int error = forEachEntry(folder, [&](const dirent& entry) {
        hash = mixed(hash, entry.d_ino);
        for (const char character : std::string_view(entry.d_name)) {
            hash = mixed(hash, static_cast<unsigned char>(character));
        }
    });
    return error == 0 ? hash : 0;
}

} // namespace

DeviceFolder::DeviceFolder(const Roots& roots, const std::filesystem::path& folder, MonotonicClock clock)
    : folder_(roots.sys / folder),
      eventCounter_(roots.sys / "kernel/uevent_seqnum"),
      clock_(std::move(clock)) {}

bool DeviceFolder::isOutdated() {
    const auto now = clock_();
    const bool hasOther = hasOtherDevices();
    if (!hasOther && learntAt_ && now - *learntAt_ < longestTrust) {
        return false;
    }
    learntAt_ = now;
    return true;
}

bool DeviceFolder::hasOtherDevices() {
    // Every device that comes or goes counts here, and reading one number is cheaper than a listing. The
    // count is taken first, so that whatever happens during the listing shows the next time.
    const auto eventCount = eventCounter_.integer();
    if (eventCount && eventCount == eventCount_) {
        return false;
    }
    eventCount_ = eventCount;
    const auto before = std::exchange(fingerprint_, fingerprintOf(folder_));
    return before != fingerprint_;
}

} // namespace cindertop::linux_platform
