#pragma once

#include "platform/ApplicationCatalog.h"
#include "platform/SourceStatus.h"
#include "platform/linux/ControlGroups.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/LinuxProcessTable.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace cindertop::linux_platform {

/// Which installed application a process belongs to. The bundle identifier is the desktop entry's identifier
/// without ".desktop", the bundle path the entry's file, the display name its localised name. The first of
/// these decides:
///   1. the unit or the sandbox of a Flatpak application
///   2. the unit of a snap application
///   3. the unit that the desktop made for an installed application
///   4. the desktop entry that the process was started from
///   5. an installed application that starts the executable, the AppImage or the wrapper around it
///   6. the application of the nearest ancestor
/// Shells, systemd and leaders of a session stand for themselves: 6 does not reach beyond them, nor out of
/// what a terminal started; and what 5 says of them (a desktop shell is an application, too) does not pass to
/// children. Services of the system are no application.
///
/// Some terminals run everything that is started in them in their own unit, others in units beside it. For
/// both to be alike, the unit of a terminal emulator does not decide: 4 to 6 do, 6 no further than the unit
/// reaches, and only what no shell stands before is the terminal.
class LinuxApplicationCatalog final : public ApplicationCatalog {
public:
    /// `processes` must live as long as this. At each of its censuses the catalog looks whether other
    /// applications are installed than before; if so, processes without an application get a new identity
    /// stamp, since they may have one now.
    LinuxApplicationCatalog(const Roots& roots, LinuxProcessTable& processes,
                            DesktopEntries entries = DesktopEntries());
    ~LinuxApplicationCatalog() override;
    LinuxApplicationCatalog(const LinuxApplicationCatalog&) = delete;
    LinuxApplicationCatalog& operator=(const LinuxApplicationCatalog&) = delete;

    /// None: Linux has no bundles.
    std::unique_ptr<ApplicationBundle> openBundle(const std::string& folder) override;
    std::optional<ProcessApplication> applicationOfProcess(std::int32_t processIdentifier) override;

    /// "applications"; says so where no process yet was in a unit, and 4 to 6 are all there is.
    SourceStatus status();

private:
    struct TerminalUnit {
        std::string name;
        std::shared_ptr<const ProcessApplication> terminal;
    };

    /// What a process says by itself, without its ancestors.
    struct OwnAnswer {
        std::uint64_t identityStamp{};
        std::shared_ptr<const ProcessApplication> application;
        bool isForChildren = true; ///< the application holds for children without their own
        bool standsForItself{};    ///< asks no ancestor
        bool isTerminalChild{};
        std::shared_ptr<const TerminalUnit> terminalUnit; ///< which it runs in, if it does

        bool isInUnitOf(const OwnAnswer& other) const;
    };

    struct UnitOwner {
        ProcessApplication application;
        bool isTerminal = false;
    };

    const OwnAnswer& ownAnswer(const KnownProcess& process);
    OwnAnswer findOwnAnswer(const KnownProcess& process);
    std::shared_ptr<const ProcessApplication> inheritedApplication(const KnownProcess& process);
    std::optional<KnownProcess> parentOf(const KnownProcess& process);
    bool isTerminalItself(const KnownProcess& outermost);
    bool isMainOfService(const KnownProcess& process);
    std::optional<UnitOwner> ownerOfUnit(const UnitApplication& unit);
    std::optional<ProcessApplication> sandboxApplication(std::int32_t processIdentifier);
    std::optional<ProcessApplication> launchedApplication(std::int32_t processIdentifier);
    std::optional<ProcessApplication> executableApplication(std::int32_t processIdentifier);
    std::optional<std::string> appImageOf(std::int32_t processIdentifier,
                                          const std::string& executable) const;
    UnitOwner installedOr(const std::string& identifier, std::string_view name);
    std::filesystem::path file(std::int32_t processIdentifier, std::string_view name) const;
    void dropGoneProcesses();
    void askAgainAfterInstallation();

    std::filesystem::path proc_;
    LinuxProcessTable& processes_;
    DesktopEntries entries_;
    bool hasSeenUnit_ = false;
    std::uint64_t generation_ = 0; ///< of the entries, for which the answers hold
    std::unordered_map<std::int32_t, OwnAnswer> answers_;
};

} // namespace cindertop::linux_platform
