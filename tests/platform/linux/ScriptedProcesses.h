#pragma once

#include "TemporaryTree.h"
#include "platform/linux/ProcessStat.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace cindertop::linux_platform {

/// What the kernel's clocks say in a test. The machine started at 1,000,000 s and has been up for an hour.
struct ScriptedTimes {
    std::map<std::int32_t, std::chrono::nanoseconds> cpuTimes;
    std::chrono::nanoseconds sinceBoot = std::chrono::hours(1);
    Instant now{std::chrono::seconds(1'003'600)};
    int cpuTimeReads = 0;
};

class ScriptedProcessClocks final : public ProcessClocks {
public:
    explicit ScriptedProcessClocks(std::shared_ptr<ScriptedTimes> times) : times_(std::move(times)) {}

    std::optional<std::chrono::nanoseconds> cpuTime(std::int32_t processIdentifier) override {
        ++times_->cpuTimeReads;
        const auto found = times_->cpuTimes.find(processIdentifier);
        return found != times_->cpuTimes.end() ? std::optional(found->second) : std::nullopt;
    }

    std::chrono::nanoseconds sinceBoot() override { return times_->sinceBoot; }

    Instant now() override { return times_->now; }

private:
    std::shared_ptr<ScriptedTimes> times_;
};

struct ScriptedProcess {
    std::int32_t identifier;
    std::string name;
    std::int32_t parent = 1;
    std::int32_t session = 1;
    std::uint64_t startTicks = 12'345; ///< a hundred a second
    std::uint64_t startStack = 0;
    char state = 'S';
    std::uint32_t flags = 0x00400000;
};

inline std::string statLine(const ScriptedProcess& process) {
    return std::to_string(process.identifier) + " (" + process.name + ") " + process.state + " " +
           std::to_string(process.parent) + " 7 " + std::to_string(process.session) + " 0 -1 " +
           std::to_string(process.flags) + " 1 2 3 4 50 60 70 80 20 0 1 0 " +
           std::to_string(process.startTicks) + " 2998272 395 18446744073709551615 1 1 " +
           std::to_string(process.startStack) + " 0 0 0\n";
}

/// A /proc of scripted processes.
class ScriptedMachine {
public:
    ScriptedMachine() { tree_.folder("proc"); }

    const TemporaryTree& tree() const { return tree_; }

    ScriptedTimes& times() const { return *times_; }

    std::unique_ptr<ProcessClocks> clocks() const { return std::make_unique<ScriptedProcessClocks>(times_); }

    /// Starts a process or changes one: either takes a little CPU time.
    const ScriptedMachine& run(const ScriptedProcess& process) const {
        file(process.identifier, "stat", statLine(process));
        times_->cpuTimes[process.identifier] += std::chrono::milliseconds(1);
        return *this;
    }

    const ScriptedMachine& end(std::int32_t processIdentifier) const {
        tree_.remove(folder(processIdentifier));
        times_->cpuTimes.erase(processIdentifier);
        return *this;
    }

    const ScriptedMachine& file(std::int32_t processIdentifier, std::string_view name,
                                std::string_view text) const {
        tree_.write(folder(processIdentifier) / name, text);
        return *this;
    }

    const ScriptedMachine& executable(std::int32_t processIdentifier, std::string_view target) const {
        tree_.remove(folder(processIdentifier) / "exe");
        tree_.link(folder(processIdentifier) / "exe", target);
        return *this;
    }

    static std::filesystem::path folder(std::int32_t processIdentifier) {
        return std::filesystem::path("proc") / std::to_string(processIdentifier);
    }

private:
    TemporaryTree tree_;
    std::shared_ptr<ScriptedTimes> times_ = std::make_shared<ScriptedTimes>();
};

} // namespace cindertop::linux_platform
