#include "cli/AgentMachine.h"

#include <utility>

namespace cindertop::cli {

AgentMachine::AgentMachine(AgentClient& agent, std::function<std::unique_ptr<MachineSource>()> measured)
    : agent_(agent), makeMeasured_(std::move(measured)) {}

std::optional<MachineReport> AgentMachine::told() {
    if (!measured_) {
        const auto text = agent_.snapshot();
        auto report = text ? machineReport(*text) : std::nullopt;
        if (report) {
            return report;
        }
        measured_ = makeMeasured_();
    }
    return std::nullopt;
}

MachineReport AgentMachine::look() {
    auto report = told();
    return report ? *std::move(report) : measured_->look();
}

MachineReport AgentMachine::next() {
    auto report = told();
    return report ? *std::move(report) : measured_->next();
}

} // namespace cindertop::cli
