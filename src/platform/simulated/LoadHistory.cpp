#include "platform/simulated/LoadHistory.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace cindertop::simulated {

namespace {

constexpr std::uint32_t ticksEachSecond = 100; ///< of one processor
constexpr WideUnsigned divisor = WideUnsigned{ScenarioLoad::wholeMachine} * 1'000'000'000;

WideUnsigned nanosecondsOf(std::chrono::nanoseconds time) {
    return static_cast<std::uint64_t>(time.count());
}

} // namespace

void LoadHistory::Sums::add(const std::optional<ScenarioLoad>& load, std::chrono::nanoseconds time) {
    const auto shares = load.value_or(ScenarioLoad{}); // refused: the time is idle
    const auto elapsed = nanosecondsOf(time);
    user += shares.user * elapsed;
    system += shares.system * elapsed;
    nice += shares.nice * elapsed;
    idle += (ScenarioLoad::wholeMachine - shares.user - shares.system - shares.nice) * elapsed;
}

LoadHistory::LoadHistory(const Scenario& scenario) : scenario_(&scenario) {
    atFrameStart_.reserve(scenario.frames.size());
    Sums sums;
    const ScenarioFrame* former = nullptr;
    for (const ScenarioFrame& frame : scenario.frames) {
        if (former != nullptr) {
            sums.add(former->load, frame.at - former->at);
        }
        atFrameStart_.push_back(sums);
        former = &frame;
    }
}

HostCpuLoad LoadHistory::ticksAt(std::size_t frameIndex, std::chrono::nanoseconds elapsed) const {
    const ScenarioFrame& frame = scenario_->frames[frameIndex];
    Sums sums = atFrameStart_[frameIndex];
    sums.add(frame.load, elapsed - frame.at);
    const auto processors = static_cast<std::uint32_t>(scenario_->machine.processorCount);
    const auto ticks = [processors](WideUnsigned sum) {
        constexpr WideUnsigned largest = std::numeric_limits<std::uint64_t>::max();
        return static_cast<std::uint64_t>(std::min(sum * processors * ticksEachSecond / divisor, largest));
    };
    return {.user = ticks(sums.user),
            .system = ticks(sums.system),
            .idle = ticks(sums.idle),
            .nice = ticks(sums.nice)};
}

} // namespace cindertop::simulated
