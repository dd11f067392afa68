#include "context/SystemDisplayContextProvider.h"

#include <algorithm>
#include <limits>
#include <span>

namespace cindertop {

namespace {

int countOf(std::size_t number) {
    return static_cast<int>(std::min<std::size_t>(number, std::numeric_limits<int>::max()));
}

} // namespace

SystemDisplayContextProvider::SystemDisplayContextProvider(const DisplayList& displays)
    : displays_(displays) {}

DisplayContextSnapshot SystemDisplayContextProvider::readDisplayContext() const {
    const auto expected = displays_.countActiveDisplays();
    if (expected.status != 0 || expected.count == 0) {
        return DisplayContextSnapshot::unavailable();
    }
    const auto listed = displays_.activeDisplays(expected.count);
    if (listed.status != 0) {
        return DisplayContextSnapshot::unavailable();
    }
    // A display may come or go between the two questions: the second answer's count holds.
    const auto count = std::min<std::size_t>(listed.count, listed.identifiers.size());
    const auto active = std::span(listed.identifiers).first(count);
    const auto builtIn = std::ranges::count_if(
        active, [this](DisplayIdentifier display) { return displays_.isBuiltIn(display); });
    return {true, countOf(count), countOf(static_cast<std::size_t>(builtIn)),
            countOf(count - static_cast<std::size_t>(builtIn))};
}

} // namespace cindertop
