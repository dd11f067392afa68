#include "cpu/ProcessClassification.h"

#include "cpu/ProcessNames.h"
#include "support/Text.h"

#include <algorithm>
#include <optional>
#include <ranges>
#include <span>
#include <string>
#include <string_view>
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

namespace {

bool containsAny(std::string_view text, std::span<const std::string_view> fragments) {
    return std::ranges::any_of(fragments,
                               [text](std::string_view fragment) { return text.contains(fragment); });
}

/// Names that mean something on one kind of system only.
struct FurtherNames {
    std::span<const std::string_view> browserFragments;
    std::span<const std::string_view> developerProcesses; ///< whole names
};

FurtherNames furtherNames(OperatingSystem system) {
    if (system == OperatingSystem::gnuLinux) {
        return {.browserFragments = linuxBrowserNameFragments,
                .developerProcesses = linuxDeveloperProcessNames};
    }
    return {};
}

bool isBrowser(std::string_view bundle, std::string_view display, std::string_view name,
               std::span<const std::string_view> furtherFragments) {
    return containsAny(bundle, browserBundleIdentifiers) || containsAny(display, browserNameFragments) ||
           containsAny(name, browserNameFragments) || containsAny(display, furtherFragments) ||
           containsAny(name, furtherFragments);
}

bool isDeveloperTool(std::string_view bundle, std::string_view display, std::string_view name) {
    return containsAny(bundle, developerBundleIdentifiers) || containsAny(display, developerNameFragments) ||
           containsAny(name, developerNameFragments);
}

ProcessOffenderCategory categoryOf(BackgroundWork work) {
    return work == BackgroundWork::indexing ? ProcessOffenderCategory::indexingOrSetup
                                            : ProcessOffenderCategory::backgroundSystem;
}

} // namespace

/// The first rule that applies decides: the daemons known by name run as root and would else be "system".
ProcessOffenderCategory classify(const ProcessCPUReading& reading, OperatingSystem system) {
    const std::string name = lowerCased(reading.name);
    if (const auto work = backgroundWork(name, system)) {
        return categoryOf(*work);
    }
    const bool hasBundle = reading.appBundleIdentifier.has_value();
    if (reading.isSystemProcess && !hasBundle) {
        return ProcessOffenderCategory::system;
    }

    const std::string bundle = lowerCased(reading.appBundleIdentifier.value_or(""));
    const std::string display = lowerCased(reading.appDisplayName.value_or(""));
    const auto further = furtherNames(system);
    if (isBrowser(bundle, display, name, further.browserFragments)) {
        return ProcessOffenderCategory::browserWorkload;
    }
    if (isDeveloperTool(bundle, display, name) ||
        std::ranges::find(further.developerProcesses, name) != further.developerProcesses.end()) {
        return ProcessOffenderCategory::developerWorkload;
    }
    return hasBundle ? ProcessOffenderCategory::userApplication : ProcessOffenderCategory::unknown;
}

} // namespace cindertop
