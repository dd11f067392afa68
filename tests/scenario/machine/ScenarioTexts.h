#pragma once

#include "scenario/format/ScenarioParser.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace cindertop::simulated {

/// A scenario of ten seconds from 2025-03-05 18:30:00 with these frames, and with more keys of the whole,
/// each followed by a comma.
inline std::string scenarioText(std::string_view frames, std::string_view more = "") {
    return R"({"schemaVersion": 1, "start": "2025-03-05T18:30:00Z", "duration": 10, )" + std::string(more) +
           R"("frames": )" + std::string(frames) + "}";
}

inline std::shared_ptr<const Scenario> parsed(const std::string& text) {
    auto scenario = parseScenario(text);
    if (!scenario) {
        throw std::runtime_error(scenario.error().message);
    }
    return std::make_shared<const Scenario>(*std::move(scenario));
}

inline std::shared_ptr<const Scenario> scenarioOf(std::string_view frames, std::string_view more = "") {
    return parsed(scenarioText(frames, more));
}

} // namespace cindertop::simulated
