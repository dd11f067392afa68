#pragma once

#include "platform/GraphicsUsage.h"
#include "platform/SourceStatus.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/ProcessFolders.h"
#include "platform/linux/SystemClock.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace cindertop::linux_platform {

/// The graphics clients of this user's processes, from /proc/PID/fdinfo. Other users' descriptors cannot be
/// read.
///
/// Finding out which descriptors of a process are of graphics takes a look at each of them. So a process is
/// looked through when it is first seen, and then again only after it used CPU time and in growing intervals;
/// a few processes at a time. In between, one descriptor of each client is read and nothing else.
class LinuxGraphicsUsage final : public GraphicsUsage {
public:
    static constexpr std::chrono::seconds firstInterval{8};
    static constexpr std::chrono::seconds longestInterval{256};
    static constexpr int mostLooksAgain = 4; ///< in one reading

    /// `processes` tells who is there and must outlive this.
    LinuxGraphicsUsage(const Roots& roots, const LinuxProcessTable& processes, MonotonicClock clock,
                       uid_t user = effectiveUser());

    std::vector<GraphicsClient> clients() override;

    /// "graphics usage", as the latest reading found it.
    SourceStatus status() const;

private:
    /// A descriptor that stands for its client in a process.
    struct Descriptor {
        std::int32_t number{};
        GraphicsClient latest;
    };

    struct WatchedProcess {
        std::int32_t processIdentifier{};
        std::uint64_t startTicks{};
        std::chrono::nanoseconds cpuTime{}; ///< when it was last looked through
        std::chrono::nanoseconds lookAgainAt{};
        std::chrono::nanoseconds interval{};
        std::vector<Descriptor> descriptors; ///< one for each client, by its first number
    };

    static uid_t effectiveUser();
    void adoptProcesses();
    bool mayBeRead(const KnownProcess& process) const;
    bool isDue(const WatchedProcess& watched, const KnownProcess& process) const;
    void lookThrough(WatchedProcess& watched, const KnownProcess& process);
    void readAgain(WatchedProcess& watched);
    std::optional<GraphicsClient> readClient(std::int32_t processIdentifier, std::int32_t descriptor);
    bool isAsleep(const std::string& device);

    std::filesystem::path devices_;
    ProcessFolders folders_;
    const LinuxProcessTable* processes_;
    MonotonicClock clock_;
    uid_t user_;
    std::chrono::nanoseconds now_{};      ///< of this reading
    std::vector<WatchedProcess> watched_; ///< ascending by identifier
    std::map<std::string, bool> asleep_;  ///< what this reading found of the devices
    bool hasRead_ = false;
    bool hasClients_ = false;
};

} // namespace cindertop::linux_platform
