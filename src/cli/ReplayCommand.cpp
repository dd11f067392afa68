#include "cli/ReplayCommand.h"

#include "persistence/DiagnosticLogService.h"
#include "persistence/ThermalHistoryStore.h"
#include "scenario/machine/MemoryFileSystem.h"
#include "scenario/player/Replay.h"
#include "scenario/player/ScenarioFile.h"
#include "support/FileSystem.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

namespace cindertop::cli {

namespace {

constexpr std::size_t bytesAtOnce = std::size_t{64} * 1024;

/// Gathers lines, since a replay has many. After the first failure the rest is dropped.
class LineWriter {
public:
    explicit LineWriter(const Output& output) : output_(output) {}

    void add(const std::string& line) {
        gathered_ += line;
        gathered_ += '\n';
        if (gathered_.size() >= bytesAtOnce) {
            flush();
        }
    }

    void flush() {
        if (result_) {
            result_ = output_.write(gathered_);
        }
        gathered_.clear();
    }

    const WriteResult& result() const { return result_; }

private:
    const Output& output_;
    std::string gathered_;
    WriteResult result_;
};

std::chrono::nanoseconds lengthOf(const simulated::Scenario& scenario, const Arguments& arguments) {
    return arguments.seconds ? std::chrono::round<std::chrono::nanoseconds>(Seconds{*arguments.seconds})
                             : scenario.duration;
}

/// A replay starts without files; those of somebody else must not be lost for it.
bool holdsFiles(const std::filesystem::path& folder) {
    std::error_code ignored;
    return std::filesystem::exists(folder / ThermalHistoryStore::defaultFile().filename(), ignored) ||
           std::filesystem::exists(folder / DiagnosticLogService::defaultFile().filename(), ignored);
}

} // namespace

ExitStatus replayScenario(const Arguments& arguments, const Output& output) {
    PosixFileSystem realFiles;
    const auto scenario = replay::loadScenario(realFiles, arguments.operands.front());
    if (!scenario) {
        reportError(scenario.error());
        return usageError;
    }
    if (arguments.stateDirectory && holdsFiles(*arguments.stateDirectory)) {
        reportError(*arguments.stateDirectory + " holds a history already; name a folder without one");
        return failure;
    }
    simulated::MemoryFileSystem memory;
    FileSystem& files = arguments.stateDirectory ? static_cast<FileSystem&>(realFiles) : memory;
    LineWriter writer(output);
    replay::replay(*scenario, lengthOf(**scenario, arguments),
                   {.files = files, .folder = arguments.stateDirectory.value_or("/Cindertop")},
                   [&writer](const std::string& line) { writer.add(line); });
    writer.flush();
    return exitStatus(writer.result());
}

} // namespace cindertop::cli
