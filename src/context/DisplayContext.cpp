#include "context/DisplayContext.h"

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
    // A display may come or go between the two calls: the second call's count is used.
    const auto count = std::min<std::size_t>(listed.count, listed.identifiers.size());
    const auto active = std::span(listed.identifiers).first(count);
    std::size_t builtIn = 0;
    std::size_t external = 0;
    for (const auto display : active) {
        const auto place = displays_.placeOf(display);
        builtIn += place == DisplayPlace::builtIn ? 1U : 0U;
        external += place == DisplayPlace::external ? 1U : 0U;
    }
    return {true, countOf(count), countOf(builtIn), countOf(external), displays_.canFold()};
}

} // namespace cindertop
