#include "scenario/machine/SimulatedProcesses.h"

#include <algorithm>
#include <chrono>
#include <iterator>

namespace cindertop::simulated {

std::optional<HostCpuLoad> SimulatedHostStatistics::cpuLoad() const {
    const auto elapsed = timeline_.elapsed();
    const auto frameIndex = timeline_.frameIndexAt(elapsed);
    if (!timeline_.scenario().frames[frameIndex].load) {
        return std::nullopt;
    }
    return history_.ticksAt(frameIndex, elapsed);
}

namespace {

void setStart(ProcessAccounting& accounting, const std::optional<Instant>& startedAt) {
    if (!startedAt || *startedAt < unixEpoch) {
        return;
    }
    const auto sinceEpoch = startedAt->time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
    const auto microseconds = std::chrono::floor<std::chrono::microseconds>(sinceEpoch - seconds);
    accounting.startSeconds = static_cast<std::uint64_t>(seconds.count());
    accounting.startMicroseconds = static_cast<std::uint64_t>(microseconds.count());
}

} // namespace

int SimulatedProcessTable::countProcesses() {
    const auto& list = timeline_.frame().processes;
    return list ? static_cast<int>(list->processes().size()) : -1;
}

int SimulatedProcessTable::listProcesses(std::span<std::int32_t> buffer) {
    const auto& list = timeline_.frame().processes;
    if (!list) {
        return -1;
    }
    const auto fitting = std::min(buffer.size(), list->processes().size());
    std::ranges::transform(std::span(list->processes()).first(fitting), buffer.begin(),
                           &ScenarioProcess::processIdentifier);
    return static_cast<int>(fitting);
}

std::optional<ProcessAccounting> SimulatedProcessTable::accounting(std::int32_t processIdentifier) {
    const auto process = history_.find(processIdentifier, timeline_.elapsed());
    if (!process) {
        return std::nullopt;
    }
    const ScenarioProcess& record = *process->record;
    ProcessAccounting accounting;
    accounting.flags = record.isSystemProcess ? ProcessAccounting::systemFlag : 0;
    accounting.parentProcessIdentifier = record.parent;
    accounting.realUserIdentifier = record.user;
    std::ranges::copy(record.shortName, accounting.shortName.begin());
    std::ranges::copy(record.longName, accounting.longName.begin());
    setStart(accounting, record.startedAt);
    accounting.totalUserTime = process->cpuTimeNanoseconds;
    accounting.identityStamp = process->identityStamp;
    return accounting;
}

std::optional<std::string> SimulatedProcessTable::executablePath(std::int32_t processIdentifier) {
    const auto process = history_.find(processIdentifier, timeline_.elapsed());
    return process ? process->record->path : std::nullopt;
}

std::vector<GraphicsClient> SimulatedGraphicsUsage::clients() {
    std::vector<GraphicsClient> clients;
    const auto& list = timeline_.frame().processes;
    if (!list) {
        return clients;
    }
    for (const ScenarioProcess& listed : list->processes()) {
        const auto process = listed.graphics.empty()
                                 ? std::nullopt
                                 : history_.find(listed.processIdentifier, timeline_.elapsed());
        if (!process) {
            continue;
        }
        auto& client = clients.emplace_back();
        client.processIdentifier = listed.processIdentifier;
        client.identifier = process->life;
        std::ranges::transform(listed.graphics, process->graphicsNanoseconds,
                               std::back_inserter(client.engines),
                               [](const ScenarioGraphics& engine, std::uint64_t busy) {
                                   return GraphicsEngineUsage{.engine = engine.engine, .busy = busy};
                               });
    }
    return clients;
}

namespace {

class SimulatedBundle final : public ApplicationBundle {
public:
    explicit SimulatedBundle(ScenarioBundle bundle) : bundle_(std::move(bundle)) {}

    std::optional<std::string> bundleIdentifier() const override { return bundle_.identifier; }

    std::optional<std::string> informationText(std::string_view key) const override {
        if (key == "CFBundleIdentifier") {
            return bundle_.identifier;
        }
        if (key == "CFBundleDisplayName") {
            return bundle_.displayName;
        }
        return key == "CFBundleName" ? bundle_.name : std::nullopt;
    }

private:
    ScenarioBundle bundle_;
};

} // namespace

std::unique_ptr<ApplicationBundle> SimulatedApplicationCatalog::openBundle(const std::string& folder) {
    const auto found = scenario_->bundles.find(folder);
    return found != scenario_->bundles.end() ? std::make_unique<SimulatedBundle>(found->second) : nullptr;
}

} // namespace cindertop::simulated
