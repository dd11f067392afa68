#include "platform/linux/LinuxApplicationCatalog.h"

#include "platform/linux/ApplicationMarks.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/ForeignFile.h"
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

bool isLeaderOfItsOwn(const KnownProcess& process) {
    const auto name = nameOf(process);
    return process.session == process.processIdentifier || isShell(name) || name == "systemd";
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
    auto child = ownAnswer(process);
    auto parent = process.accounting.parentProcessIdentifier;
    for (int distance = 0; distance < ancestorLimit && parent > 1 && !child.standsForItself; ++distance) {
        const auto* const ancestor = processes_.known(parent);
        if (ancestor == nullptr || ancestor->isKernelThread()) {
            return nullptr;
        }
        parent = ancestor->accounting.parentProcessIdentifier;
        const auto& answer = ownAnswer(KnownProcess(*ancestor));
        if (child.isTerminalChild && !answer.isTerminalChild) {
            return nullptr;
        }
        if (answer.application) {
            return answer.isForChildren ? answer.application : nullptr;
        }
        child = answer;
    }
    return nullptr;
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
    OwnAnswer answer;
    answer.standsForItself = isLeaderOfItsOwn(process);
    answer.isTerminalChild = inUnit.isTerminalChild;
    auto application = (inUnit.flatpakId ? std::nullopt : sandboxApplication(identifier))
                           .or_else([&] { return applicationOfUnit(inUnit); })
                           .or_else([&] { return launchedApplication(identifier); });
    if (!application) {
        application = executableApplication(identifier);
        answer.isForChildren = !answer.standsForItself || (unit && unit->isBelowAppSlice);
    }
    if (application) {
        answer.application = std::make_shared<const ProcessApplication>(*std::move(application));
    }
    return answer;
}

std::optional<ProcessApplication> LinuxApplicationCatalog::applicationOfUnit(const UnitApplication& unit) {
    if (const auto& identifier = unit.flatpakId ? unit.flatpakId : unit.snapId) {
        return installedOr(*identifier, readableName(unit, *identifier));
    }
    for (const auto& identifier : unit.desktopIds) {
        if (auto entry = entries_.withIdentifier(identifier)) {
            return toApplication(*std::move(entry));
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
    return installedOr(*identifier, readableName({}, *identifier));
}

ProcessApplication LinuxApplicationCatalog::installedOr(const std::string& identifier,
                                                        std::string_view name) {
    auto entry = entries_.withIdentifier(identifier);
    return entry ? toApplication(*std::move(entry))
                 : ProcessApplication{
                       .bundlePath = {}, .bundleIdentifier = identifier, .displayName = std::string(name)};
}

std::optional<ProcessApplication>
LinuxApplicationCatalog::launchedApplication(std::int32_t processIdentifier) {
    const auto environment = readTextFile(file(processIdentifier, "environ"), environmentSizeLimit);
    const auto path = environment ? launchedDesktopFile(*environment, processIdentifier) : std::nullopt;
    return path.and_then([&](const auto& entry) { return entries_.inFile(entry); }).transform(toApplication);
}

std::optional<ProcessApplication>
LinuxApplicationCatalog::executableApplication(std::int32_t processIdentifier) {
    return processes_.executablePath(processIdentifier)
        .and_then([&](const auto& path) { return entries_.startingProgram(path); })
        .transform(toApplication);
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
    if (const auto count = entries_.count(); count > 0) {
        return {.name = "applications",
                .isAvailable = true,
                .reason = std::to_string(count) + " desktop entries"};
    }
    std::string folders;
    for (const auto& folder : entries_.folders()) {
        folders += (folders.empty() ? "" : ", ") + folder.string();
    }
    return {.name = "applications", .isAvailable = false, .reason = "no desktop entries in " + folders};
}

} // namespace cindertop::linux_platform
