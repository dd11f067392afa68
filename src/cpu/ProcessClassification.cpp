#include "cpu/ProcessClassification.h"

#include "cpu/BackgroundWork.h"
#include "cpu/LinuxProcessNames.h"
#include "cpu/LowerCasedText.h"
#include "cpu/NameFragment.h"
#include "cpu/ProcessNames.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cindertop {

namespace {

LowerCasedText lowerCasedOrEmpty(const std::optional<std::string>& text) {
    return LowerCasedText(text ? std::string_view(*text) : std::string_view());
}

bool containsAny(const SearchedText& text, const auto& fragments) {
    return std::ranges::any_of(fragments, [&](const NameFragment& fragment) { return fragment.isIn(text); });
}

/// Names that mean something on one kind of system only.
struct FurtherNames {
    std::span<const NameFragment> browserFragments;
    std::span<const std::string_view> developerProcesses; ///< whole names
};

FurtherNames furtherNames(OperatingSystem system) {
    if (system == OperatingSystem::gnuLinux) {
        return {.browserFragments = linuxBrowserNameFragments,
                .developerProcesses = linuxDeveloperProcessNames};
    }
    return {};
}

bool isBrowser(const SearchedText& bundle, const SearchedText& display, const SearchedText& name,
               std::span<const NameFragment> furtherFragments) {
    return containsAny(bundle, browserBundleIdentifiers) || containsAny(display, browserNameFragments) ||
           containsAny(name, browserNameFragments) || containsAny(display, furtherFragments) ||
           containsAny(name, furtherFragments);
}

bool isDeveloperTool(const SearchedText& bundle, const SearchedText& display, const SearchedText& name) {
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
    const LowerCasedText lowerName(reading.name);
    if (const auto work = backgroundWork(lowerName.view(), system)) {
        return categoryOf(*work);
    }
    const bool hasBundle = reading.appBundleIdentifier.has_value();
    if (reading.isSystemProcess && !hasBundle) {
        return ProcessOffenderCategory::system;
    }

    const LowerCasedText lowerBundle = lowerCasedOrEmpty(reading.appBundleIdentifier);
    const LowerCasedText lowerDisplay = lowerCasedOrEmpty(reading.appDisplayName);
    const SearchedText name(lowerName.view());
    const SearchedText bundle(lowerBundle.view());
    const SearchedText display(lowerDisplay.view());
    const auto further = furtherNames(system);
    if (isBrowser(bundle, display, name, further.browserFragments)) {
        return ProcessOffenderCategory::browserWorkload;
    }
    if (isDeveloperTool(bundle, display, name) ||
        std::ranges::find(further.developerProcesses, lowerName.view()) != further.developerProcesses.end()) {
        return ProcessOffenderCategory::developerWorkload;
    }
    return hasBundle ? ProcessOffenderCategory::userApplication : ProcessOffenderCategory::unknown;
}

} // namespace cindertop
