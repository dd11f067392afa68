#include "platform/linux/LinuxGraphicsUsage.h"

#include "platform/linux/GraphicsClientText.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

constexpr std::string_view graphicsDevices = "/dev/dri/"; ///< also as seen from inside a sandbox

bool isSameClient(const GraphicsClient& left, const GraphicsClient& right) {
    return left.identifier == right.identifier && left.device == right.device;
}

/// Drivers that count cycles ask the hardware for them, which wakes it. The others keep books.
bool wakesItsDevice(const GraphicsClient& client) {
    return std::ranges::any_of(client.engines,
                               [](const auto& engine) { return engine.totalCycles.has_value(); });
}

} // namespace

LinuxGraphicsUsage::LinuxGraphicsUsage(const Roots& roots, const LinuxProcessTable& processes,
                                       MonotonicClock clock, uid_t user)
    : devices_(roots.sys / "bus/pci/devices"),
      folders_(roots.proc),
      processes_(&processes),
      clock_(std::move(clock)),
      user_(user) {}

uid_t LinuxGraphicsUsage::effectiveUser() {
    return ::geteuid();
}

std::vector<GraphicsClient> LinuxGraphicsUsage::clients() {
    now_ = clock_();
    asleep_.clear();
    adoptProcesses();
    std::vector<GraphicsClient> all;
    int looksLeft = mostLooksAgain;
    for (auto& watched : watched_) {
        const auto* const process = processes_->find(watched.processIdentifier);
        const bool isNew = watched.interval == std::chrono::nanoseconds::zero();
        if (process != nullptr && isNew) {
            lookThrough(watched, *process);
        } else if (process != nullptr && looksLeft > 0 && isDue(watched, *process)) {
            --looksLeft;
            lookThrough(watched, *process);
        } else {
            readAgain(watched);
        }
        std::ranges::transform(watched.descriptors, std::back_inserter(all), &Descriptor::latest);
    }
    hasRead_ = true;
    hasClients_ = !all.empty();
    return all;
}

/// Follows the process table: those that are gone or another process now are forgotten.
void LinuxGraphicsUsage::adoptProcesses() {
    std::vector<WatchedProcess> adopted;
    adopted.reserve(watched_.size());
    auto former = watched_.begin();
    for (const auto& process : processes_->processes()) {
        if (!mayBeRead(process)) {
            continue;
        }
        while (former != watched_.end() && former->processIdentifier < process.processIdentifier) {
            ++former;
        }
        const bool isSame = former != watched_.end() &&
                            former->processIdentifier == process.processIdentifier &&
                            former->startTicks == process.startTicks;
        adopted.push_back(isSame ? std::move(*former)
                                 : WatchedProcess{.processIdentifier = process.processIdentifier,
                                                  .startTicks = process.startTicks,
                                                  .descriptors = {}});
    }
    watched_ = std::move(adopted);
}

bool LinuxGraphicsUsage::mayBeRead(const KnownProcess& process) const {
    return process.isRead() && !process.isKernelThread() &&
           (user_ == 0 || process.accounting.realUserIdentifier == user_);
}

/// A process opens nothing without CPU time.
bool LinuxGraphicsUsage::isDue(const WatchedProcess& watched, const KnownProcess& process) const {
    return now_ >= watched.lookAgainAt && process.cpuTime != watched.cpuTime;
}

void LinuxGraphicsUsage::lookThrough(WatchedProcess& watched, const KnownProcess& process) {
    watched.cpuTime = process.cpuTime;
    watched.interval =
        std::clamp<std::chrono::nanoseconds>(watched.interval * 2, firstInterval, longestInterval);
    watched.lookAgainAt = now_ + watched.interval;
    const auto former = std::exchange(watched.descriptors, {});
    for (const auto number : folders_.descriptors(watched.processIdentifier, graphicsDevices)) {
        const auto known = std::ranges::find(former, number, &Descriptor::number);
        const bool isLeftAsleep =
            known != former.end() && wakesItsDevice(known->latest) && isAsleep(known->latest.device);
        auto client = isLeftAsleep ? known->latest : readClient(watched.processIdentifier, number);
        const auto isOfClient = [&client](const Descriptor& each) {
            return isSameClient(each.latest, *client);
        };
        if (client && std::ranges::none_of(watched.descriptors, isOfClient)) {
            watched.descriptors.push_back({.number = number, .latest = *std::move(client)});
        }
    }
}

/// A descriptor that was closed, or is of something else now, is dropped; another of its client may be left,
/// so the process is looked through the next time.
void LinuxGraphicsUsage::readAgain(WatchedProcess& watched) {
    const auto dropped = std::erase_if(watched.descriptors, [&](Descriptor& descriptor) {
        if (wakesItsDevice(descriptor.latest) && isAsleep(descriptor.latest.device)) {
            return false;
        }
        auto client = readClient(watched.processIdentifier, descriptor.number);
        if (!client || !isSameClient(*client, descriptor.latest)) {
            return true;
        }
        descriptor.latest = *std::move(client);
        return false;
    });
    if (dropped != 0) {
        watched.lookAgainAt = now_;
    }
}

std::optional<GraphicsClient> LinuxGraphicsUsage::readClient(std::int32_t processIdentifier,
                                                             std::int32_t descriptor) {
    const auto text = folders_.text(processIdentifier, "fdinfo/" + std::to_string(descriptor));
    auto client = text.and_then(parseGraphicsClient);
    if (client) {
        client->processIdentifier = processIdentifier;
    }
    return client;
}

/// Whether the power management has switched a device off; one that is not on the PCI bus says nothing.
bool LinuxGraphicsUsage::isAsleep(const std::string& device) {
    const auto [known, isNew] = asleep_.try_emplace(device, false);
    if (isNew && !device.contains('/')) {
        const auto status = readAttribute(devices_ / device / "power/runtime_status");
        known->second = status && *status != "active" && *status != "unsupported";
    }
    return known->second;
}

SourceStatus LinuxGraphicsUsage::status() const {
    const auto folder = folders_.path().string();
    const auto reason = hasClients_ ? ", this user's processes"
                        : !hasRead_ ? ": not read yet"
                                    : ": no process of this user shows what it uses";
    return {.name = "graphics usage", .isAvailable = hasClients_, .reason = folder + reason};
}

} // namespace cindertop::linux_platform
