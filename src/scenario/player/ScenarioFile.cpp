#include "scenario/player/ScenarioFile.h"

#include "scenario/format/ScenarioParser.h"
#include "scenario/player/PlayedProgram.h"
#include "support/AtomicFile.h"

#include <cstddef>
#include <system_error>
#include <utility>

namespace cindertop::replay {

namespace {

/// A recorded day of a busy machine fits many times.
constexpr std::size_t largestFile = std::size_t{512} * 1024 * 1024;

} // namespace

std::expected<std::shared_ptr<const simulated::Scenario>, std::string>
loadScenario(FileSystem& files, const std::filesystem::path& file) {
    const auto text = wholeFile(files, file, largestFile);
    if (!text) {
        return std::unexpected(file.string() + ": " + std::make_error_code(text.error()).message());
    }
    auto scenario = simulated::parseScenario(*text);
    if (!scenario) {
        return std::unexpected(file.string() + ": " + scenario.error().message);
    }
    if (const auto result = checkPreferences(*scenario); !result) {
        return std::unexpected(file.string() + ": " + result.error().message);
    }
    return std::make_shared<const simulated::Scenario>(*std::move(scenario));
}

} // namespace cindertop::replay
