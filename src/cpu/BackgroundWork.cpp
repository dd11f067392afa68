#include "cpu/BackgroundWork.h"

#include "cpu/LinuxProcessNames.h"
#include "cpu/ProcessNames.h"

#include <ranges>
#include <unordered_map>

namespace cindertop {

namespace {

using WorkByName = std::unordered_map<std::string_view, BackgroundWork>;

void add(WorkByName& table, const auto& names, BackgroundWork work) {
    for (const std::string_view name : names) {
        table.emplace(name, work);
    }
}

void addWithCuts(WorkByName& table, const auto& names, BackgroundWork work) {
    add(table, names, work);
    add(table, names | std::views::transform(cutByLinux), work);
}

WorkByName workOnMac() {
    WorkByName table;
    add(table, spotlightProcessNames, BackgroundWork::indexing);
    add(table, softwareUpdateProcessNames, BackgroundWork::softwareUpdate);
    add(table, securityProcessNames, BackgroundWork::securityCheck);
    return table;
}

WorkByName workOnLinux() {
    WorkByName table = workOnMac();
    addWithCuts(table, linuxIndexingProcessNames, BackgroundWork::indexing);
    addWithCuts(table, linuxSoftwareUpdateProcessNames, BackgroundWork::softwareUpdate);
    addWithCuts(table, linuxSecurityProcessNames, BackgroundWork::securityCheck);
    return table;
}

} // namespace

std::optional<BackgroundWork> backgroundWork(std::string_view lowerCasedName, OperatingSystem system) {
    static const WorkByName onMac = workOnMac();
    static const WorkByName onLinux = workOnLinux();
    const WorkByName& table = system == OperatingSystem::gnuLinux ? onLinux : onMac;
    const auto entry = table.find(lowerCasedName);
    return entry == table.end() ? std::nullopt : std::optional(entry->second);
}

} // namespace cindertop
