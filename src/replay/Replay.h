#pragma once

#include "replay/PlayedProgram.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace cindertop::replay {

/// Plays a scenario to the program in virtual time, as fast as it goes, and tells what it does line by line.
/// Stops after `duration` of virtual time, or at the scenario's end if that comes first. The same scenario
/// always gives the same lines.
void replay(const std::shared_ptr<const simulated::Scenario>& scenario, std::chrono::nanoseconds duration,
            const PlayedFiles& files, const std::function<void(std::string)>& writeLine);

} // namespace cindertop::replay
