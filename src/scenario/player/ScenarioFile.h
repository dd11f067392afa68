#pragma once

#include "scenario/format/Scenario.h"
#include "support/FileSystem.h"

#include <expected>
#include <filesystem>
#include <memory>
#include <string>

namespace cindertop::replay {

/// Reads and checks a scenario file. The error is one sentence that names the file and the place in it.
std::expected<std::shared_ptr<const simulated::Scenario>, std::string>
loadScenario(FileSystem& files, const std::filesystem::path& file);

} // namespace cindertop::replay
