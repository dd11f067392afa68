#include "platform/linux/LinuxRunningApplications.h"

#include "platform/linux/BusHandles.h"
#include "platform/linux/ProcessHandle.h"
#include "support/Text.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <utility>

namespace cindertop::linux_platform {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::microseconds patience = 2s;

/// What is left until then; never negative.
std::uint64_t microsecondsUntil(std::chrono::steady_clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::microseconds>(deadline - std::chrono::steady_clock::now());
    return static_cast<std::uint64_t>(std::max(left, 0us).count());
}

/// A call by itself would wait much longer for a bus that takes the connection and then says nothing.
bool isReadyBefore(sd_bus* bus, std::chrono::steady_clock::time_point deadline) {
    while (sd_bus_is_ready(bus) == 0) {
        const auto left = microsecondsUntil(deadline);
        if (left == 0 || sd_bus_process(bus, nullptr) < 0) {
            return false;
        }
        if (sd_bus_is_ready(bus) == 0 && sd_bus_wait(bus, left) < 0) {
            return false;
        }
    }
    return sd_bus_is_ready(bus) > 0;
}

bool killUnit(const std::string& address, const std::string& unit) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    const auto bus = openBus(address, sd_bus_open_user);
    if (!bus || !isReadyBefore(bus.get(), deadline)) {
        return false;
    }
    const auto request =
        newCall(bus.get(),
                {"org.freedesktop.systemd1", "/org/freedesktop/systemd1", "org.freedesktop.systemd1.Manager"},
                "KillUnit");
    const auto left = std::max<std::uint64_t>(microsecondsUntil(deadline), 1); // 0 is "as long as it likes"
    return request && sd_bus_message_append(request.get(), "ssi", unit.c_str(), "all", SIGKILL) >= 0 &&
           sd_bus_call(bus.get(), request.get(), left, nullptr, nullptr) >= 0;
}

} // namespace

KillUnit killByUserManager(std::string busAddress) {
    return [address = std::move(busAddress)](const std::string& unit) { return killUnit(address, unit); };
}

namespace {

std::optional<std::string> nonEmpty(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional(repairedUtf8(text));
}

RunningApplication toRunningApplication(const ApplicationGroup& group) {
    return {.processIdentifier = group.main().processIdentifier,
            .bundleIdentifier = nonEmpty(group.application.bundleIdentifier),
            .bundlePath = nonEmpty(group.application.bundlePath)};
}

} // namespace

LinuxRunningApplications::LinuxRunningApplications(std::unique_ptr<ApplicationGroups> groups,
                                                   KillUnit killUnit)
    : groups_(std::move(groups)), killUnit_(std::move(killUnit)) {}

std::optional<RunningApplication>
LinuxRunningApplications::findByBundleIdentifier(const std::string& identifier) const {
    return groups_->withIdentifier(identifier).transform(toRunningApplication);
}

std::optional<RunningApplication> LinuxRunningApplications::findByBundlePath(const std::string& path) const {
    return groups_->withPath(path).transform(toRunningApplication);
}

bool LinuxRunningApplications::terminate(const RunningApplication& application) {
    const auto group = groupToEnd(application);
    return group && send(group->main(), SIGTERM);
}

bool LinuxRunningApplications::forceTerminate(const RunningApplication& application) {
    const auto group = groupToEnd(application);
    if (!group) {
        return false;
    }
    const auto ended = endUnits(*group);
    bool hasEndedAny = !ended.empty();
    for (const auto& member : group->members) {
        if (!ended.contains(member.unit) && send(member, SIGKILL)) {
            hasEndedAny = true;
        }
    }
    return hasEndedAny;
}

/// A manager that refuses once may hang: it is not asked again, for it would keep the caller waiting.
std::set<std::string> LinuxRunningApplications::endUnits(const ApplicationGroup& group) const {
    std::set<std::string> ended;
    for (const auto& member : group.members) {
        if (member.unit.empty() || ended.contains(member.unit)) {
            continue;
        }
        if (!killUnit_(member.unit)) {
            break;
        }
        ended.insert(member.unit);
    }
    return ended;
}

/// None when another process is the main one by now, or when it must not be ended.
std::optional<ApplicationGroup>
LinuxRunningApplications::groupToEnd(const RunningApplication& application) const {
    auto group = application.bundleIdentifier ? groups_->withIdentifier(*application.bundleIdentifier)
                                              : groups_->withPath(application.bundlePath.value_or(""));
    const bool isTheSame = group && group->main().processIdentifier == application.processIdentifier;
    return isTheSame && !group->main().isProtected ? std::move(group) : std::nullopt;
}

bool LinuxRunningApplications::send(const GroupMember& member, int signal) const {
    if (member.isProtected) {
        return false;
    }
    // The handle first: once it is open, what is looked at is what the signal reaches.
    const auto handle = ProcessHandle::open(member.processIdentifier);
    return handle && groups_->isStillThere(member) && handle->send(signal);
}

} // namespace cindertop::linux_platform
