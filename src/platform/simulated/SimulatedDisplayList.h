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
    bool isBuiltIn(DisplayIdentifier display) const override;

private:
    Timeline timeline_;
};

} // namespace cindertop::simulated
