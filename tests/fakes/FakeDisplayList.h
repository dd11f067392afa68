#pragma once

#include "platform/DisplayList.h"

#include <algorithm>

namespace cindertop::fakes {

struct FakeDisplay {
    DisplayIdentifier identifier;
    DisplayPlace place;
};

class FakeDisplayList final : public DisplayList {
public:
    std::int32_t countStatus = 0;
    std::uint32_t count = 0; ///< what the first question answers
    std::int32_t listStatus = 0;
    std::vector<FakeDisplay> displays; ///< what the second one lists
    mutable std::vector<std::uint32_t> capacities;
    bool isLaptop = true;
    mutable std::vector<DisplayIdentifier> askedForPlace;

    FakeDisplayList() = default;

    /// Both questions find the same displays.
    explicit FakeDisplayList(const std::vector<FakeDisplay>& displays)
        : count(static_cast<std::uint32_t>(displays.size())), displays(displays) {}

    Answer countActiveDisplays() const override {
        return {.status = countStatus, .count = count, .identifiers = {}};
    }

    Answer activeDisplays(std::uint32_t capacity) const override {
        capacities.push_back(capacity);
        const auto listed = std::min<std::size_t>(displays.size(), capacity);
        Answer answer{.status = listStatus, .count = static_cast<std::uint32_t>(listed), .identifiers = {}};
        answer.identifiers.resize(capacity);
        std::ranges::transform(displays.begin(), displays.begin() + static_cast<std::ptrdiff_t>(listed),
                               answer.identifiers.begin(), &FakeDisplay::identifier);
        return answer;
    }

    bool canFold() const override { return isLaptop; }

    DisplayPlace placeOf(DisplayIdentifier display) const override {
        askedForPlace.push_back(display);
        const auto found = std::ranges::find(displays, display, &FakeDisplay::identifier);
        return found != displays.end() ? found->place : DisplayPlace::external;
    }
};

} // namespace cindertop::fakes
