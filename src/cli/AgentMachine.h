#pragma once

#include "cli/AgentClient.h"
#include "cli/MachineSource.h"

#include <functional>
#include <memory>

namespace cindertop::cli {

/// Asks the running agent, so that the machine is not measured twice. Measures by itself from the moment on
/// in which the agent is gone or measures nothing.
class AgentMachine final : public MachineSource {
public:
    /// `agent` must outlive this; `measured` is made when it is needed.
    AgentMachine(AgentClient& agent, std::function<std::unique_ptr<MachineSource>()> measured);

    MachineReport look() override;
    MachineReport next() override;

private:
    std::optional<MachineReport> told();

    AgentClient& agent_;
    std::function<std::unique_ptr<MachineSource>()> makeMeasured_;
    std::unique_ptr<MachineSource> measured_;
};

} // namespace cindertop::cli
