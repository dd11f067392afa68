#include "platform/linux/LinuxApplicationCatalog.h"

#include "platform/linux/ApplicationHints.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/LaunchCommand.h"
#include "support/Text.h"

#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t environmentSizeLimit = std::size_t{4} << 20U;
constexpr std::size_t flatpakInfoSizeLimit = std::size_t{64} << 10U;
constexpr int ancestorLimit = 64;

ProcessApplication toApplication(DesktopEntry entry) {
    return {.bundlePath = std::move(entry.path),
            .bundleIdentifier = std::move(entry.identifier),
            .displayName = std::move(entry.name)};
}

std::string_view nameOf(const KnownProcess& process) {
    const auto& name = process.accounting.shortName;
    return untilZeroByte({name.data(), name.size()});
}

bool leadsSession(const KnownProcess& process) {
    return process.session == process.processIdentifier;
}

bool startsOwnGroup(const KnownProcess& process) {
    const auto name = nameOf(process);
    return leadsSession(process) || isShell(name) || isMultiplexer(name) || name == "systemd";
}

bool isSystemService(const KnownProcess& process, const ControlGroupUnit& unit) {
    return unit.isBelowSystemSlice && process.accounting.realUserIdentifier == 0;
}

bool isService(std::string_view unit) {
    return unit.ends_with(".service");
}

/// "org.gnome.Maps" is "Maps", "firefox_firefox" is "firefox".
std::string_view readableName(const UnitApplication& unit, std::string_view identifier) {
    const auto name = unit.snapId ? identifier.substr(0, identifier.find('_'))
                                  : identifier.substr(identifier.rfind('.') + 1);
    return name.empty() ? identifier : name;
}

} // namespace

LinuxApplicationCatalog::LinuxApplicationCatalog(const Roots& roots, LinuxProcessTable& processes,
                                                 DesktopEntries entries)
    : proc_(roots.proc), processes_(processes), entries_(std::move(entries)) {
    processes_.beforeEachCensus([this] { askAgainAfterInstallation(); });
}

LinuxApplicationCatalog::~LinuxApplicationCatalog() {
    processes_.beforeEachCensus({});
}

void LinuxApplicationCatalog::askAgainAfterInstallation() {
    const auto current = entries_.generation();
    if (std::exchange(generation_, current) == current) {
        return;
    }
    for (const auto& [identifier, answer] : answers_) {
        if (!answer.application) {
            processes_.readAgain(identifier);
        }
    }
}

std::unique_ptr<ApplicationBundle> LinuxApplicationCatalog::openBundle(const std::string& /*folder*/) {
    return nullptr;
}

std::optional<ProcessApplication>
LinuxApplicationCatalog::applicationOfProcess(std::int32_t processIdentifier) {
    const auto* const found = processes_.known(processIdentifier);
    if (found == nullptr || found->isKernelThread()) {
        return std::nullopt;
    }
    dropGoneProcesses();
    const auto process = *found;
    auto application = ownAnswer(process).application;
    if (!application) {
        application = inheritedApplication(process);
    }
    return application ? std::optional(*application) : std::nullopt;
}

std::shared_ptr<const ProcessApplication>
LinuxApplicationCatalog::inheritedApplication(const KnownProcess& process) {
    auto child = process;
    auto answer = ownAnswer(child);
    for (int distance = 0; distance < ancestorLimit; ++distance) {
        const auto parent = parentOf(child);
        const auto parentAnswer = parent ? ownAnswer(*parent) : OwnAnswer{};
        if (answer.terminalUnit && !parentAnswer.isInUnitOf(answer)) {
            return isTerminalItself(child) ? answer.terminalUnit->terminal : nullptr;
        }
        const bool leavesTerminal = answer.isTerminalChild && !parentAnswer.isTerminalChild;
        if (!parent || answer.standsForItself || leavesTerminal) {
            return nullptr;
        }
        if (parentAnswer.application) {
            return parentAnswer.isForChildren ? parentAnswer.application : nullptr;
        }
        child = *parent;
        answer = parentAnswer;
    }
    return nullptr;
}

/// None for the first process, for one whose parent has gone, and for a child of the kernel.
std::optional<KnownProcess> LinuxApplicationCatalog::parentOf(const KnownProcess& process) {
    const auto identifier = process.accounting.parentProcessIdentifier;
    const auto* const parent = identifier > 1 ? processes_.known(identifier) : nullptr;
    return parent != nullptr && !parent->isKernelThread() ? std::optional(*parent) : std::nullopt;
}

bool LinuxApplicationCatalog::OwnAnswer::isInUnitOf(const OwnAnswer& other) const {
    return terminalUnit && other.terminalUnit && terminalUnit->name == other.terminalUnit->name;
}

/// Of the processes in a terminal's unit whose parent stands outside, whether this one is the terminal. It
/// was started by the desktop, in the desktop's session, or as the service that the unit is. The others are
/// what a shell left behind: they lead a session, or the one who led theirs is gone or in the unit, too.
bool LinuxApplicationCatalog::isTerminalItself(const KnownProcess& outermost) {
    if (leadsSession(outermost)) {
        return isMainOfService(outermost);
    }
    const auto name = nameOf(outermost);
    const auto* const found = processes_.known(outermost.session);
    if (found == nullptr || isShell(name) || isMultiplexer(name)) {
        return false;
    }
    const KnownProcess leader(*found);
    return !ownAnswer(leader).isInUnitOf(ownAnswer(outermost)) || isMainOfService(leader);
}

/// Whether this process in a terminal's unit is the one that the service manager started.
bool LinuxApplicationCatalog::isMainOfService(const KnownProcess& process) {
    const auto answer = ownAnswer(process);
    const auto name = nameOf(process);
    if (!leadsSession(process) || isShell(name) || isMultiplexer(name) ||
        !isService(answer.terminalUnit->name)) {
        return false;
    }
    const auto parent = parentOf(process);
    return !parent || !ownAnswer(*parent).isInUnitOf(answer);
}

const LinuxApplicationCatalog::OwnAnswer& LinuxApplicationCatalog::ownAnswer(const KnownProcess& process) {
    auto& answer = answers_[process.processIdentifier];
    if (answer.identityStamp != process.accounting.identityStamp) {
        answer = findOwnAnswer(process);
        answer.identityStamp = process.accounting.identityStamp;
    }
    return answer;
}

LinuxApplicationCatalog::OwnAnswer LinuxApplicationCatalog::findOwnAnswer(const KnownProcess& process) {
    const auto identifier = process.processIdentifier;
    const auto group = readTextFile(file(identifier, "cgroup"));
    const auto unit = group ? parseControlGroup(*group) : std::nullopt;
    const auto inUnit = unit ? parseUnit(*unit) : UnitApplication{};
    hasSeenUnit_ = hasSeenUnit_ || unit.has_value();
    OwnAnswer answer;
    answer.standsForItself = startsOwnGroup(process);
    answer.isTerminalChild = inUnit.isTerminalChild;
    if (unit && isSystemService(process, *unit)) {
        answer.standsForItself = true;
        return answer;
    }
    auto application = inUnit.flatpakId ? std::nullopt : sandboxApplication(identifier);
    if (auto owner = application ? std::nullopt : ownerOfUnit(inUnit)) {
        if (owner->isTerminal) {
            auto terminal = std::make_shared<const ProcessApplication>(std::move(owner->application));
            answer.terminalUnit = std::make_shared<const TerminalUnit>(unit->name, std::move(terminal));
        } else {
            application = std::move(owner->application);
        }
    }
    if (!application) {
        application = launchedApplication(identifier);
    }
    if (!application) {
        application = executableApplication(identifier);
        answer.isForChildren = !answer.standsForItself || (unit && unit->isBelowAppSlice);
    }
    if (application) {
        answer.application = std::make_shared<const ProcessApplication>(*std::move(application));
    }
    return answer;
}

std::optional<LinuxApplicationCatalog::UnitOwner>
LinuxApplicationCatalog::ownerOfUnit(const UnitApplication& unit) {
    if (const auto& identifier = unit.flatpakId ? unit.flatpakId : unit.snapId) {
        return installedOr(*identifier, readableName(unit, *identifier));
    }
    for (const auto& identifier : unit.desktopIds) {
        if (auto entry = entries_.withIdentifier(identifier)) {
            const bool isTerminal = entry->isTerminal;
            return UnitOwner{.application = toApplication(*std::move(entry)), .isTerminal = isTerminal};
        }
    }
    return std::nullopt;
}

std::optional<ProcessApplication>
LinuxApplicationCatalog::sandboxApplication(std::int32_t processIdentifier) {
    const auto text = readForeignFile(file(processIdentifier, "root"), ".flatpak-info", flatpakInfoSizeLimit);
    const auto identifier = text ? flatpakApplication(*text) : std::nullopt;
    if (!identifier) {
        return std::nullopt;
    }
    return installedOr(*identifier, readableName({}, *identifier)).application;
}

LinuxApplicationCatalog::UnitOwner LinuxApplicationCatalog::installedOr(const std::string& identifier,
                                                                        std::string_view name) {
    if (auto entry = entries_.withIdentifier(identifier)) {
        const bool isTerminal = entry->isTerminal;
        return {.application = toApplication(*std::move(entry)), .isTerminal = isTerminal};
    }
    return {
        .application = {.bundlePath = {}, .bundleIdentifier = identifier, .displayName = std::string(name)},
        .isTerminal = false};
}

std::optional<ProcessApplication>
LinuxApplicationCatalog::launchedApplication(std::int32_t processIdentifier) {
    const auto environment = readTextFile(file(processIdentifier, "environ"), environmentSizeLimit);
    const auto path = environment ? launchedDesktopFile(*environment, processIdentifier) : std::nullopt;
    return path.and_then([&](const auto& entry) { return entries_.inFile(entry); }).transform(toApplication);
}

std::optional<ProcessApplication>
LinuxApplicationCatalog::executableApplication(std::int32_t processIdentifier) {
    const auto path = processes_.executablePath(processIdentifier);
    if (!path) {
        return std::nullopt;
    }
    const auto started = [&](const std::string& program) { return entries_.startingProgram(program); };
    return started(*path)
        .or_else([&] { return wrapperOf(*path).and_then(started); })
        .or_else([&] { return appImageOf(processIdentifier, *path).and_then(started); })
        .transform(toApplication);
}

std::optional<std::string> LinuxApplicationCatalog::appImageOf(std::int32_t processIdentifier,
                                                               const std::string& executable) const {
    if (!executable.contains("/.mount_")) { // where AppImages mount themselves: spares reading the rest
        return std::nullopt;
    }
    const auto environment = readTextFile(file(processIdentifier, "environ"), environmentSizeLimit);
    return environment ? appImageFile(*environment, executable) : std::nullopt;
}

std::filesystem::path LinuxApplicationCatalog::file(std::int32_t processIdentifier,
                                                    std::string_view name) const {
    return proc_ / std::to_string(processIdentifier) / name;
}

void LinuxApplicationCatalog::dropGoneProcesses() {
    constexpr std::size_t spare = 64;
    if (answers_.size() <= 2 * processes_.knownCount() + spare) {
        return;
    }
    std::erase_if(answers_, [&](const auto& answer) {
        const auto* const process = processes_.find(answer.first);
        return process == nullptr || process->accounting.identityStamp != answer.second.identityStamp;
    });
}

SourceStatus LinuxApplicationCatalog::status() {
    const auto* const withoutUnits = answers_.empty() || hasSeenUnit_ ? "" : ", no units of systemd";
    if (const auto count = entries_.count(); count > 0) {
        return {.name = "applications",
                .isAvailable = true,
                .reason = std::to_string(count) + " desktop entries" + withoutUnits};
    }
    std::string folders;
    for (const auto& folder : entries_.folders()) {
        folders += (folders.empty() ? "" : ", ") + folder.string();
    }
    return {.name = "applications", .isAvailable = false, .reason = "no desktop entries in " + folders};
}

} // namespace cindertop::linux_platform
