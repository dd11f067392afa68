#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/ApplicationGroups.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace cindertop::linux_platform {

/// Ends every process of a unit of the user's service manager at once. False when it did not, for whatever
/// reason; answers within 2 s.
using KillUnit = std::function<bool(const std::string& unit)>;

/// By way of the bus at this address; empty: the user's own.
KillUnit killByUserManager(std::string busAddress = {});

/// The applications of the user whom this program runs as. It reads /proc for itself, so that it may live on
/// another thread than the sampling; each call takes a census, about as long as one of the process table.
///
/// Parts of the desktop and of the session, kernel threads, other users' processes and this program are never
/// sent a signal; an application whose main process is one of them is refused as a whole.
class LinuxRunningApplications final : public RunningApplications {
public:
    explicit LinuxRunningApplications(
        std::unique_ptr<ApplicationGroups> groups = std::make_unique<ApplicationGroups>(),
        KillUnit killUnit = killByUserManager());

    std::optional<RunningApplication> findByBundleIdentifier(const std::string& identifier) const override;
    std::optional<RunningApplication> findByBundlePath(const std::string& path) const override;

    /// SIGTERM for the main process.
    bool terminate(const RunningApplication& application) override;
    /// Ends the units that hold the application and nothing else; SIGKILL for every process outside of them.
    /// Takes up to 2 s when the service manager hangs.
    bool forceTerminate(const RunningApplication& application) override;

private:
    std::optional<ApplicationGroup> groupToEnd(const RunningApplication& application) const;
    std::set<std::string> endUnits(const ApplicationGroup& group) const;
    bool send(const GroupMember& member, int signal) const;

    std::unique_ptr<ApplicationGroups> groups_;
    KillUnit killUnit_;
};

} // namespace cindertop::linux_platform
