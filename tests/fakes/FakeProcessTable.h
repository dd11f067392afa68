#pragma once

#include "platform/ProcessTable.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::fakes {

/// A process table that a test fills in; it counts what it is asked.
class FakeProcessTable final : public ProcessTable {
public:
    struct Process {
        std::int32_t processIdentifier{};
        std::optional<ProcessAccounting> accounting; ///< none: it ended after it was listed
        std::optional<std::string> path;
    };

    std::vector<Process> processes; ///< in listing order
    std::optional<int> count;       ///< instead of the number of processes
    std::optional<int> written;     ///< instead of the number that fits
    ClockUnit unit{.numerator = 1, .denominator = 1};
    int pathQuestions = 0;
    mutable int unitQuestions = 0;

    /// A process with these names, to be refined by the test.
    Process& add(std::int32_t processIdentifier, std::string_view longName, std::string_view shortName = {}) {
        ProcessAccounting accounting;
        accounting.parentProcessIdentifier = 1;
        accounting.realUserIdentifier = 501;
        std::ranges::copy(longName.substr(0, accounting.longName.size()), accounting.longName.begin());
        std::ranges::copy(shortName.substr(0, accounting.shortName.size()), accounting.shortName.begin());
        return processes.emplace_back(processIdentifier, accounting, std::nullopt);
    }

    int countProcesses() override { return count.value_or(static_cast<int>(processes.size())); }

    int listProcesses(std::span<std::int32_t> buffer) override {
        const std::size_t fitting = std::min(buffer.size(), processes.size());
        for (std::size_t index = 0; index < fitting; ++index) {
            buffer[index] = processes[index].processIdentifier;
        }
        return written.value_or(static_cast<int>(fitting));
    }

    std::optional<ProcessAccounting> accounting(std::int32_t processIdentifier) override {
        const Process* const process = find(processIdentifier);
        return process != nullptr ? process->accounting : std::nullopt;
    }

    std::optional<std::string> executablePath(std::int32_t processIdentifier) override {
        ++pathQuestions;
        const Process* const process = find(processIdentifier);
        return process != nullptr ? process->path : std::nullopt;
    }

    ClockUnit clockUnit() const override {
        ++unitQuestions;
        return unit;
    }

private:
    const Process* find(std::int32_t processIdentifier) const {
        const auto found = std::ranges::find(processes, processIdentifier, &Process::processIdentifier);
        return found != processes.end() ? &*found : nullptr;
    }
};

} // namespace cindertop::fakes
