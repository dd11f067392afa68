#pragma once

#include "app/MachineSampler.h"
#include "cli/AgentClient.h"
#include "report/MachineReport.h"

#include <functional>
#include <memory>
#include <string>

namespace cindertop::cli {

/// Where the pages get their facts.
class MachineSource {
public:
    virtual ~MachineSource() = default;

    /// The machine now; may measure for a moment.
    virtual MachineReport look() = 0;
    /// The machine at the next tick of a watch.
    virtual MachineReport next() = 0;
};

/// Measures by itself, without advice: that takes more than a look.
class SampledMachine final : public MachineSource {
public:
    /// When `next` counts the processes.
    enum class Census { whenDue, each };

    /// `sampler` must outlive this.
    SampledMachine(MachineSampler& sampler, std::function<void(Seconds)> sleep,
                   Census census = Census::whenDue);

    MachineReport look() override;
    MachineReport next() override;

private:
    MachineSampler& sampler_;
    std::function<void(Seconds)> sleep_;
    Census census_;
};

/// Asks the running agent, so that the machine is not measured twice. Measures by itself while the agent
/// measures nothing, and says why; and for good once the agent is gone.
class AgentMachine final : public MachineSource {
public:
    /// `agent` must outlive this; `measured` is made when it is needed.
    AgentMachine(AgentClient& agent, std::function<std::unique_ptr<MachineSource>()> measured);

    MachineReport look() override;
    MachineReport next() override;

private:
    std::optional<MachineReport> told();
    MachineSource& measured();

    AgentClient& agent_;
    std::function<std::unique_ptr<MachineSource>()> makeMeasured_;
    std::unique_ptr<MachineSource> measured_; ///< while the agent tells nothing
    std::string note_;                        ///< why it tells nothing, where that is the user's choice
    bool isAgentGone_ = false;                ///< asking it again would only wait
};

} // namespace cindertop::cli
