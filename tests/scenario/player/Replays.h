#pragma once

#include "scenario/format/ScenarioParser.h"
#include "scenario/machine/MemoryFileSystem.h"
#include "scenario/player/Replay.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cindertop::replay {

/// The lines of a whole scenario.
inline std::vector<std::string> linesOf(const std::shared_ptr<const simulated::Scenario>& scenario) {
    simulated::MemoryFileSystem files;
    std::vector<std::string> lines;
    replay(scenario, scenario->duration, {.files = files, .folder = "/replay"},
           [&lines](std::string line) { lines.push_back(std::move(line)); });
    return lines;
}

/// Likewise, from a scenario's text; none and a failure when it is not one.
inline std::vector<std::string> linesOf(std::string_view text) {
    auto scenario = simulated::parseScenario(text);
    if (!scenario) {
        ADD_FAILURE() << scenario.error().message;
        return {};
    }
    return linesOf(std::make_shared<const simulated::Scenario>(*std::move(scenario)));
}

} // namespace cindertop::replay
