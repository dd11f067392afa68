#include "scenario/machine/ProcessHistory.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <tuple>
#include <utility>

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

namespace {

constexpr std::uint32_t thousandths = 1000;

bool isSameProcess(const ScenarioProcess& one, const ScenarioProcess& other) {
    return one.processIdentifier == other.processIdentifier && one.startedAt == other.startedAt;
}

/// Everything that an identity stamp promises.
auto identityOf(const ScenarioProcess& process) {
    return std::tie(process.processIdentifier, process.startedAt, process.parent, process.user,
                    process.longName, process.shortName, process.path, process.isSystemProcess);
}

} // namespace

ProcessHistory::ProcessHistory(const Scenario& scenario) {
    for (const ScenarioFrame& frame : scenario.frames) {
        if (!sections_.empty() && frame.processes == sections_.back().list) {
            continue;
        }
        Section section{.from = frame.at, .list = frame.processes, .entries = {}};
        if (section.list) {
            static const Section nothing;
            const Section& former = sections_.empty() ? nothing : sections_.back();
            section.entries.reserve(section.list->processes().size());
            for (const ScenarioProcess& process : section.list->processes()) {
                section.entries.push_back(continued(former, process, frame.at));
            }
        }
        sections_.push_back(std::move(section));
    }
}

ProcessHistory::Entry ProcessHistory::continued(const Section& former, const ScenarioProcess& process,
                                                std::chrono::nanoseconds at) {
    const auto index = former.list ? former.list->find(process.processIdentifier) : std::nullopt;
    if (!index || !isSameProcess(former.list->processes()[*index], process)) {
        ++stamps_;
        return {.cpuTimeAtStart = WideUnsigned{process.cpuTimeNanoseconds} * thousandths,
                .identityStamp = stamps_,
                .life = stamps_,
                .graphicsAtStart = std::vector<WideUnsigned>(process.graphics.size())};
    }
    const bool isUnchanged = identityOf(former.list->processes()[*index]) == identityOf(process);
    return {.cpuTimeAtStart = cpuTime(former, *index, at),
            .identityStamp = isUnchanged ? former.entries[*index].identityStamp : ++stamps_,
            .life = former.entries[*index].life,
            .graphicsAtStart = continuedGraphics(former, *index, process, at)};
}

std::vector<WideUnsigned> ProcessHistory::continuedGraphics(const Section& former, std::size_t index,
                                                            const ScenarioProcess& process,
                                                            std::chrono::nanoseconds at) {
    const auto& before = former.list->processes()[index].graphics;
    std::vector<WideUnsigned> times(process.graphics.size());
    for (std::size_t engine = 0; engine < times.size(); ++engine) {
        const auto same =
            std::ranges::find(before, process.graphics[engine].engine, &ScenarioGraphics::engine);
        if (same != before.end()) {
            times[engine] = graphicsTime(former, index, static_cast<std::size_t>(same - before.begin()), at);
        }
    }
    return times;
}

WideUnsigned ProcessHistory::graphicsTime(const Section& section, std::size_t index, std::size_t engine,
                                          std::chrono::nanoseconds elapsed) {
    const auto time = static_cast<std::uint64_t>((elapsed - section.from).count());
    return section.entries[index].graphicsAtStart[engine] +
           WideUnsigned{time} * section.list->processes()[index].graphics[engine].thousandths;
}

WideUnsigned ProcessHistory::cpuTime(const Section& section, std::size_t index,
                                     std::chrono::nanoseconds elapsed) {
    const auto time = static_cast<std::uint64_t>((elapsed - section.from).count());
    return section.entries[index].cpuTimeAtStart +
           WideUnsigned{time} * section.list->processes()[index].millicores;
}

std::optional<ProcessHistory::Process> ProcessHistory::find(std::int32_t processIdentifier,
                                                            std::chrono::nanoseconds elapsed) const {
    const auto& section = *std::prev(std::ranges::upper_bound(sections_, elapsed, {}, &Section::from));
    const auto index = section.list ? section.list->find(processIdentifier) : std::nullopt;
    if (!index) {
        return std::nullopt;
    }
    const auto nanoseconds = [](WideUnsigned time) {
        constexpr WideUnsigned largest = std::numeric_limits<std::uint64_t>::max();
        return static_cast<std::uint64_t>(std::min(time / thousandths, largest));
    };
    Process process{.record = &section.list->processes()[*index],
                    .cpuTimeNanoseconds = nanoseconds(cpuTime(section, *index, elapsed)),
                    .identityStamp = section.entries[*index].identityStamp,
                    .life = section.entries[*index].life,
                    .graphicsNanoseconds = {}};
    for (std::size_t engine = 0; engine < process.record->graphics.size(); ++engine) {
        process.graphicsNanoseconds.push_back(nanoseconds(graphicsTime(section, *index, engine, elapsed)));
    }
    return process;
}

} // namespace cindertop::simulated
