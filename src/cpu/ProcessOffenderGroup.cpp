#include "cpu/ProcessOffenderGroup.h"

#include "cpu/ProcessClassification.h"
#include "support/Text.h"
#include "support/Wording.h"

#include <optional>
#include <utility>

namespace cindertop {

namespace {

struct BackgroundGroup {
    std::string_view key;
    std::string_view displayName;
};

/// None for a daemon that forms a group of its own.
std::optional<BackgroundGroup> backgroundGroup(std::string_view lowerCasedName, OperatingSystem system) {
    const auto work = backgroundWork(lowerCasedName, system);
    if (work == BackgroundWork::softwareUpdate) {
        return BackgroundGroup{.key = "software-update", .displayName = "Software Update"};
    }
    if (work == BackgroundWork::securityCheck) {
        return BackgroundGroup{.key = "security", .displayName = "Security checks"};
    }
    return std::nullopt;
}

constexpr Wording indexingName{"Spotlight indexing", "File indexing"};

std::string_view displayNameFor(const ProcessDelta& delta, OperatingSystem system) {
    const ProcessCPUReading& reading = *delta.reading;
    if (delta.category == ProcessOffenderCategory::indexingOrSetup) {
        return indexingName.in(system);
    }
    if (delta.category == ProcessOffenderCategory::system) {
        return "System";
    }
    if (delta.category == ProcessOffenderCategory::backgroundSystem) {
        const auto group = backgroundGroup(lowerCased(reading.name), system);
        return group ? group->displayName : reading.name;
    }
    return reading.appBundleIdentifier && reading.appDisplayName ? *reading.appDisplayName : reading.name;
}

} // namespace

ProcessOffenderGroup::ProcessOffenderGroup(std::string id, const ProcessDelta& first, OperatingSystem system)
    : id(std::move(id)),
      displayName(displayNameFor(first, system)),
      application(!isSystemOwned(first.category) && first.reading->appBundleIdentifier ? first.reading
                                                                                       : nullptr),
      category(first.category) {}

std::string ProcessOffenderGroup::idFor(const ProcessDelta& delta, OperatingSystem system) {
    if (delta.category == ProcessOffenderCategory::indexingOrSetup) {
        return "background:spotlight-indexing";
    }
    if (delta.category == ProcessOffenderCategory::system) {
        return "system";
    }
    const ProcessCPUReading& reading = *delta.reading;
    if (delta.category == ProcessOffenderCategory::backgroundSystem) {
        const std::string lowerName = lowerCased(reading.name);
        const auto group = backgroundGroup(lowerName, system);
        return "background:" + (group ? std::string(group->key) : lowerName);
    }
    return reading.appBundleIdentifier ? "bundle:" + *reading.appBundleIdentifier
                                       : "process:" + lowerCased(reading.name);
}

} // namespace cindertop
