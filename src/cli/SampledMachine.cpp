#include "cli/SampledMachine.h"

#include <utility>

namespace cindertop::cli {

namespace {

/// Long enough for shares to mean something, short enough to wait for.
constexpr Seconds measuringTime{0.5};

} // namespace

SampledMachine::SampledMachine(MachineSampler& sampler, std::function<void(Seconds)> sleep)
    : sampler_(sampler), sleep_(std::move(sleep)) {}

MachineReport SampledMachine::look() {
    sampler_.prime();
    sleep_(measuringTime);
    return {.snapshot = sampler_.sampleNow(), .verdict = std::nullopt};
}

MachineReport SampledMachine::next() {
    return {.snapshot = sampler_.sample(), .verdict = std::nullopt};
}

} // namespace cindertop::cli
