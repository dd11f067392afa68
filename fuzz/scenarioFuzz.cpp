#include "Require.h"
#include "scenario/format/ScenarioParser.h"
#include "scenario/machine/SimulatedMachine.h"
#include "scenario/machine/VirtualClock.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace {

using namespace cindertop;

bool isNoLess(const HostCpuLoad& later, const HostCpuLoad& earlier) {
    return later.user >= earlier.user && later.system >= earlier.system && later.idle >= earlier.idle &&
           later.nice >= earlier.nice;
}

/// Whoever is listed has an accounting.
void takeCensus(ProcessTable& table) {
    const int count = table.countProcesses();
    if (count < 1) {
        return;
    }
    std::vector<std::int32_t> identifiers(static_cast<std::size_t>(count));
    require(table.listProcesses(identifiers) == count);
    for (const auto identifier : identifiers) {
        const auto accounting = table.accounting(identifier);
        require(accounting && accounting->identityStamp != 0 && accounting->startMicroseconds < 1'000'000);
    }
}

} // namespace

/// A scenario that is read plays from its first frame to its last, and its counters never run backwards.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto parsed = simulated::parseScenario(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!parsed) {
        require(parsed.error().message.ends_with('.'));
        return 0;
    }
    const auto scenario = std::make_shared<const simulated::Scenario>(*std::move(parsed));
    require(!scenario->frames.empty());
    simulated::VirtualClock clock(scenario->start);
    simulated::SimulatedMachine machine(scenario, clock);
    const auto services = machine.services();
    HostCpuLoad former{};
    for (const auto& frame : scenario->frames) {
        clock.advanceTo(scenario->start + frame.at);
        takeCensus(services.processes);
        if (const auto load = services.hostStatistics.cpuLoad()) {
            require(isNoLess(*load, former));
            former = *load;
        }
    }
    return 0;
}
