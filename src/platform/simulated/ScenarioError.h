#pragma once

#include <string>

namespace cindertop::simulated {

/// Why a text is no scenario: one sentence that names the place, by its keys ("frames[3].processes[0].pid")
/// or, in a text that is no JSON, by line and column.
struct ScenarioError {
    std::string message;

    bool operator==(const ScenarioError&) const = default;
};

} // namespace cindertop::simulated
