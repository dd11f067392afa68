#pragma once

#include "app/MachineSampler.h"
#include "cli/MachineSource.h"

#include <functional>

namespace cindertop::cli {

/// Measures by itself, without advice: that takes more than a look.
class SampledMachine final : public MachineSource {
public:
    /// `sampler` must outlive this.
    SampledMachine(MachineSampler& sampler, std::function<void(Seconds)> sleep);

    MachineReport look() override;
    MachineReport next() override;

private:
    MachineSampler& sampler_;
    std::function<void(Seconds)> sleep_;
};

} // namespace cindertop::cli
