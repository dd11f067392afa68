#pragma once

#include "platform/ApplicationCatalog.h"
#include "platform/linux/ControlGroups.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/LinuxApplicationCatalog.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/ProcessFolders.h"
#include "platform/linux/ProcessStat.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cindertop::linux_platform {

/// A live process of an application.
struct GroupMember {
    std::int32_t processIdentifier{};
    std::int32_t parent{};
    std::uint64_t startTicks{}; ///< with the identifier it names the process for good
    /// Part of the desktop or of the session, or this program itself: it must not be ended.
    bool isProtected{};
    /// The unit of the user's service manager that holds members of this application and nothing else; empty:
    /// there is none.
    std::string unit;

    bool operator==(const GroupMember&) const = default;
};

/// The user's processes of one application. Never without a member.
struct ApplicationGroup {
    ProcessApplication application;
    std::vector<GroupMember> members; ///< oldest first

    /// The oldest of those whose parent is no member: the one that the user started.
    const GroupMember& main() const;
};

/// Finds the processes of an application among those of the user whom this program runs as. Called from one
/// thread at a time; asks nothing of what other threads read.
class ApplicationGroups {
public:
    explicit ApplicationGroups(const Roots& roots = {}, DesktopEntries entries = DesktopEntries(),
                               std::unique_ptr<ProcessClocks> clocks = kernelClocks());

    /// None when the application does not run. Names as the catalog tells them, repaired to UTF-8.
    std::optional<ApplicationGroup> withIdentifier(const std::string& identifier);
    std::optional<ApplicationGroup> withPath(const std::string& path);

    /// Whether the member still is the process that it was when the group was found.
    bool isStillThere(const GroupMember& member);

private:
    using Question = std::function<bool(const ProcessApplication&)>;

    std::optional<ApplicationGroup> find(const Question& isWanted);
    std::vector<std::int32_t> allProcesses();
    bool isOwn(std::int32_t processIdentifier);
    std::optional<ProcessStat> stat(std::int32_t processIdentifier);
    std::optional<GroupMember> member(std::int32_t processIdentifier);
    std::optional<ControlGroupUnit> unitOf(std::int32_t processIdentifier);
    bool isProtected(const ProcessStat& process, std::int32_t processIdentifier);
    void keepKillableUnits(std::vector<GroupMember>& members, const std::vector<std::int32_t>& all);

    ProcessFolders folders_;
    LinuxProcessTable processes_;
    LinuxApplicationCatalog applications_;
};

} // namespace cindertop::linux_platform
