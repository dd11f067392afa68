#pragma once

#include "platform/DisplayList.h"
#include "platform/simulated/Timeline.h"

#include <utility>

namespace cindertop::simulated {

class SimulatedDisplayList final : public DisplayList {
public:
    explicit SimulatedDisplayList(Timeline timeline) : timeline_(std::move(timeline)) {}

    Answer countActiveDisplays() const override;
    Answer activeDisplays(std::uint32_t capacity) const override;
    DisplayPlace placeOf(DisplayIdentifier display) const override;

    bool canFold() const override { return true; }

private:
    Timeline timeline_;
};

} // namespace cindertop::simulated
