#include "cli/MachineSource.h"

#include <string>
#include <string_view>
#include <utility>

namespace cindertop::cli {

namespace {

/// Long enough for shares to mean something, short enough to wait for.
constexpr Seconds measuringTime{0.5};

} // namespace

SampledMachine::SampledMachine(MachineSampler& sampler, std::function<void(Seconds)> sleep, Census census)
    : sampler_(sampler), sleep_(std::move(sleep)), census_(census) {}

MachineReport SampledMachine::look() {
    sampler_.prime();
    sleep_(measuringTime);
    return {.snapshot = sampler_.sampleNow()};
}

MachineReport SampledMachine::next() {
    return {.snapshot = census_ == Census::each ? sampler_.sampleNow() : sampler_.sample()};
}

namespace {

/// Why the agent measures nothing, for the user.
std::string noteOn(std::string_view answer) {
    const auto condition = agentCondition(answer);
    if (condition && condition->isPaused) {
        return "Monitoring is paused. This is measured for this look alone; \"cindertopctl resume\" resumes "
               "it.";
    }
    if (condition && !condition->areTermsAccepted) {
        return "Not monitoring: the terms of use are not accepted. This is measured for this look alone.";
    }
    return {};
}

} // namespace

AgentMachine::AgentMachine(AgentClient& agent, std::function<std::unique_ptr<MachineSource>()> measured)
    : agent_(agent), makeMeasured_(std::move(measured)) {}

std::optional<MachineReport> AgentMachine::told() {
    if (isAgentGone_) {
        return std::nullopt;
    }
    const auto text = agent_.snapshot();
    isAgentGone_ = !text;
    auto report = text ? machineReport(*text) : std::nullopt;
    note_ = text && !report ? noteOn(*text) : std::string();
    if (report) {
        report->document = *text;
        measured_.reset();
    }
    return report;
}

MachineSource& AgentMachine::measured() {
    if (!measured_) {
        measured_ = makeMeasured_();
    }
    return *measured_;
}

MachineReport AgentMachine::look() {
    if (auto report = told()) {
        return *std::move(report);
    }
    auto report = measured().look();
    report.note = note_;
    return report;
}

MachineReport AgentMachine::next() {
    if (auto report = told()) {
        return *std::move(report);
    }
    auto report = measured().next();
    report.note = note_;
    return report;
}

} // namespace cindertop::cli
