#pragma once

#include "support/Enumeration.h"
#include "support/Wording.h"

#include <array>

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

/// The wording for people, for example "Developer workload".
constexpr Wording label(ProcessOffenderCategory category) {
    switch (category) {
    case ProcessOffenderCategory::userApplication:
        return {"Top CPU offender", "Application"}; // also one that does next to nothing
    case ProcessOffenderCategory::browserWorkload:
        return Wording::same("Likely browser tab/app workload");
    case ProcessOffenderCategory::developerWorkload:
        return Wording::same("Developer workload");
    case ProcessOffenderCategory::indexingOrSetup:
        return Wording::same("Background indexing/setup");
    case ProcessOffenderCategory::backgroundSystem:
        return Wording::same("Background system process");
    case ProcessOffenderCategory::system:
        return Wording::same("System process");
    case ProcessOffenderCategory::unknown:
        break;
    }
    return Wording::same("Process load");
}

/// Whether the work belongs to the system, so that nobody is offered to quit it.
constexpr bool isSystemOwned(ProcessOffenderCategory category) {
    return category == ProcessOffenderCategory::indexingOrSetup ||
           category == ProcessOffenderCategory::backgroundSystem ||
           category == ProcessOffenderCategory::system;
}

} // namespace cindertop
