#include "platform/simulated/SimulatedDisplayList.h"

#include <algorithm>

namespace cindertop::simulated {

namespace {

constexpr std::int32_t unreadable = 1;

} // namespace

DisplayList::Answer SimulatedDisplayList::countActiveDisplays() const {
    const auto& displays = timeline_.frame().displays;
    if (!displays) {
        return {.status = unreadable, .count = 0, .identifiers = {}};
    }
    return {.status = 0, .count = static_cast<std::uint32_t>(displays->size()), .identifiers = {}};
}

DisplayList::Answer SimulatedDisplayList::activeDisplays(std::uint32_t capacity) const {
    const auto& displays = timeline_.frame().displays;
    if (!displays) {
        return {.status = unreadable, .count = 0, .identifiers = {}};
    }
    Answer answer{.status = 0, .count = 0, .identifiers = std::vector<DisplayIdentifier>(capacity)};
    for (const ScenarioDisplay& display : *displays) {
        if (answer.count == capacity) {
            break;
        }
        answer.identifiers[answer.count++] = display.identifier;
    }
    return answer;
}

DisplayPlace SimulatedDisplayList::placeOf(DisplayIdentifier display) const {
    const auto& displays = timeline_.frame().displays;
    if (!displays) {
        return DisplayPlace::external;
    }
    const auto found = std::ranges::find(*displays, display, &ScenarioDisplay::identifier);
    return found != displays->end() && found->isBuiltIn ? DisplayPlace::builtIn : DisplayPlace::external;
}

} // namespace cindertop::simulated
