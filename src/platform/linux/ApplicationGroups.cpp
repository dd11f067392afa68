#include "platform/linux/ApplicationGroups.h"

#include "platform/linux/ProtectedProcesses.h"
#include "support/Text.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

/// A unit that desktops and snapd make for one application, of the manager that this program can ask.
bool isOfOneApplication(const ControlGroupUnit& unit) {
    return unit.userManager == "user@" + std::to_string(::geteuid()) + ".service" &&
           (unit.name.starts_with("app-") || unit.name.starts_with("snap."));
}

} // namespace

const GroupMember& ApplicationGroup::main() const {
    const auto isOutermost = [&](const GroupMember& member) {
        return std::ranges::find(members, member.parent, &GroupMember::processIdentifier) == members.end();
    };
    const auto found = std::ranges::find_if(members, isOutermost);
    return found != members.end() ? *found : members.front();
}

ApplicationGroups::ApplicationGroups(const Roots& roots, DesktopEntries entries,
                                     std::unique_ptr<ProcessClocks> clocks)
    : folders_(roots.proc),
      processes_(roots, std::move(clocks)),
      applications_(roots, processes_, std::move(entries)) {}

std::optional<ApplicationGroup> ApplicationGroups::withIdentifier(const std::string& identifier) {
    return find([&](const ProcessApplication& application) {
        return !identifier.empty() && repairedUtf8(application.bundleIdentifier) == identifier;
    });
}

std::optional<ApplicationGroup> ApplicationGroups::withPath(const std::string& path) {
    return find([&](const ProcessApplication& application) {
        return !path.empty() && repairedUtf8(application.bundlePath) == path;
    });
}

bool ApplicationGroups::isStillThere(const GroupMember& member) {
    const auto now = stat(member.processIdentifier);
    return now && !now->isZombie() && now->startTicks == member.startTicks;
}

std::optional<ApplicationGroup> ApplicationGroups::find(const Question& isWanted) {
    ApplicationGroup group;
    const auto all = allProcesses();
    for (const auto identifier : all) {
        if (!isOwn(identifier)) {
            continue;
        }
        auto application = applications_.applicationOfProcess(identifier);
        if (!application || !isWanted(*application)) {
            continue;
        }
        if (auto found = member(identifier)) {
            group.members.push_back(*std::move(found));
            group.application = *std::move(application);
        }
    }
    if (group.members.empty()) {
        return std::nullopt;
    }
    std::ranges::sort(group.members, {}, [](const GroupMember& one) {
        return std::tuple(one.startTicks, one.processIdentifier);
    });
    keepKillableUnits(group.members, all);
    return group;
}

std::vector<std::int32_t> ApplicationGroups::allProcesses() {
    std::vector<std::int32_t> identifiers(static_cast<std::size_t>(std::max(processes_.countProcesses(), 0)));
    identifiers.resize(static_cast<std::size_t>(std::max(processes_.listProcesses(identifiers), 0)));
    return identifiers;
}

bool ApplicationGroups::isOwn(std::int32_t processIdentifier) {
    const auto process = processes_.accounting(processIdentifier);
    return process && process->realUserIdentifier == ::geteuid() &&
           (process->flags & ProcessAccounting::systemFlag) == 0;
}

std::optional<ProcessStat> ApplicationGroups::stat(std::int32_t processIdentifier) {
    return folders_.text(processIdentifier, "stat").and_then(parseProcessStat);
}

std::optional<GroupMember> ApplicationGroups::member(std::int32_t processIdentifier) {
    const auto process = stat(processIdentifier);
    if (!process || process->isZombie()) {
        return std::nullopt;
    }
    const auto unit = unitOf(processIdentifier);
    return GroupMember{.processIdentifier = processIdentifier,
                       .parent = process->parent,
                       .startTicks = process->startTicks,
                       .isProtected = isProtected(*process, processIdentifier),
                       .unit = unit && isOfOneApplication(*unit) ? unit->name : std::string()};
}

std::optional<ControlGroupUnit> ApplicationGroups::unitOf(std::int32_t processIdentifier) {
    return folders_.text(processIdentifier, "cgroup").and_then(parseControlGroup);
}

bool ApplicationGroups::isProtected(const ProcessStat& process, std::int32_t processIdentifier) {
    const auto unit = unitOf(processIdentifier);
    return processIdentifier == ::getpid() || isProtectedProcess(process.name) ||
           (unit && unit->isBelowSessionSlice);
}

/// A unit with anything else in it must not be ended as a whole: a compositor, another user's process, or
/// what a terminal's shells started.
void ApplicationGroups::keepKillableUnits(std::vector<GroupMember>& members,
                                          const std::vector<std::int32_t>& all) {
    if (std::ranges::all_of(members, &std::string::empty, &GroupMember::unit)) {
        return;
    }
    std::set<std::string> shared;
    for (const auto identifier : all) {
        const auto member = std::ranges::find(members, identifier, &GroupMember::processIdentifier);
        if (member != members.end() && !member->isProtected) {
            continue;
        }
        const auto process = stat(identifier);
        const auto unit = unitOf(identifier);
        if (process && !process->isZombie() && unit && isOfOneApplication(*unit)) {
            shared.insert(unit->name);
        }
    }
    for (auto& member : members) {
        if (shared.contains(member.unit)) {
            member.unit.clear();
        }
    }
}

} // namespace cindertop::linux_platform
