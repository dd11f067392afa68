#include "platform/linux/LinuxRunningApplications.h"

#include "platform/linux/ProcessHandle.h"
#include "support/Text.h"

#include <csignal>
#include <utility>

namespace cindertop::linux_platform {

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
    return isTheSame && !group->main().isUntouchable ? std::move(group) : std::nullopt;
}

bool LinuxRunningApplications::send(const GroupMember& member, int signal) const {
    if (member.isUntouchable) {
        return false;
    }
    // The handle first: once it is open, what is looked at is what the signal reaches.
    const auto handle = ProcessHandle::open(member.processIdentifier);
    return handle && groups_->isStillThere(member) && handle->send(signal);
}

} // namespace cindertop::linux_platform
