#pragma once

#include "support/Enumeration.h"

#include <array>
#include <string_view>

namespace cindertop {

/// What kind of work a process does: it decides grouping, advice and whether quitting may be offered.
enum class ProcessOffenderCategory {
    userApplication,
    browserWorkload,
    developerWorkload,
    indexingOrSetup,
    backgroundSystem,
    system,
    unknown,
};

template <>
struct EnumerationTable<ProcessOffenderCategory> {
    using enum ProcessOffenderCategory;
    static constexpr std::array cases{
        EnumerationCase{userApplication, "userApplication"},
        EnumerationCase{browserWorkload, "browserWorkload"},
        EnumerationCase{developerWorkload, "developerWorkload"},
        EnumerationCase{indexingOrSetup, "indexingOrSetup"},
        EnumerationCase{backgroundSystem, "backgroundSystem"},
        EnumerationCase{system, "system"},
        EnumerationCase{unknown, "unknown"},
    };
};

/// The wording for people, for example "Top CPU offender".
constexpr std::string_view label(ProcessOffenderCategory category) {
    switch (category) {
    case ProcessOffenderCategory::userApplication:
        return "Top CPU offender";
    case ProcessOffenderCategory::browserWorkload:
        return "Likely browser tab/app workload";
    case ProcessOffenderCategory::developerWorkload:
        return "Developer workload";
    case ProcessOffenderCategory::indexingOrSetup:
        return "Background indexing/setup";
    case ProcessOffenderCategory::backgroundSystem:
        return "Background system process";
    case ProcessOffenderCategory::system:
        return "System process";
    case ProcessOffenderCategory::unknown:
        break;
    }
    return "Process load";
}

/// Whether the work belongs to the system, so that nobody is offered to quit it.
constexpr bool isSystemOwned(ProcessOffenderCategory category) {
    return category == ProcessOffenderCategory::indexingOrSetup ||
           category == ProcessOffenderCategory::backgroundSystem ||
           category == ProcessOffenderCategory::system;
}

} // namespace cindertop
