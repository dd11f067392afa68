#include "cpu/BackgroundWork.h"

#include "cpu/LinuxProcessNames.h"
#include "cpu/ProcessNames.h"

#include <ranges>
#include <unordered_map>

namespace cindertop {

namespace {

using WorkByName = std::unordered_map<std::string_view, BackgroundWork>;

WorkByName workByName() {
    WorkByName table;
    const auto add = [&table](const auto& names, BackgroundWork work) {
        for (const std::string_view name : names) {
            table.emplace(name, work);
        }
    };
    add(spotlightProcessNames, BackgroundWork::indexing);
    add(softwareUpdateProcessNames, BackgroundWork::softwareUpdate);
    add(securityProcessNames, BackgroundWork::securityCheck);

    const auto addWithCuts = [&add](const auto& names, BackgroundWork work) {
        add(names, work);
        add(names | std::views::transform(cutByLinux), work);
    };
    addWithCuts(linuxIndexingProcessNames, BackgroundWork::indexing);
    addWithCuts(linuxSoftwareUpdateProcessNames, BackgroundWork::softwareUpdate);
    addWithCuts(linuxSecurityProcessNames, BackgroundWork::securityCheck);
    return table;
}

} // namespace

std::optional<BackgroundWork> backgroundWork(std::string_view lowerCasedName) {
    static const WorkByName table = workByName();
    const auto entry = table.find(lowerCasedName);
    return entry == table.end() ? std::nullopt : std::optional(entry->second);
}

} // namespace cindertop
