#pragma once

#include "cpu/ProcessCPUReading.h"
#include "platform/ApplicationCatalog.h"
#include "platform/ProcessTable.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace cindertop {

/// What a bundle says about itself.
struct EnclosingApplication {
    std::string bundlePath;
    std::optional<std::string> bundleIdentifier;
    std::string displayName;

    bool operator==(const EnclosingApplication&) const = default;
};

/// The outermost folder of the path whose name ends in ".app", in any case: a helper inside a browser belongs
/// to the browser. Empty, "." and ".." components are dropped and nothing else is resolved.
std::optional<std::string> outermostApplicationFolder(std::string_view executablePath);

/// The application around an executable; none when no folder of its path is one or it cannot be opened.
std::optional<EnclosingApplication> enclosingApplication(std::string_view executablePath,
                                                         ApplicationCatalog& catalog);

/// Takes the census from the process table and the application catalog, which must outlive it. Safe to call
/// from several threads: the calls take turns.
///
/// Most processes are idle and hardly any changes its name, so a reading is kept under the process's identity
/// stamp: as long as the stamp is the same, only the CPU time and the instant are new. A process without a
/// stamp is read afresh each time, and one that is gone is forgotten by the first census that misses it.
class SystemProcessCPUProvider final : public ProcessCPUReadingProviding {
public:
    SystemProcessCPUProvider(ProcessTable& processes, ApplicationCatalog& applications);

    std::vector<ProcessCPUReading> readings(Instant at) override;

private:
    struct KeptReading {
        std::uint64_t identityStamp{};
        std::uint64_t census{}; ///< the last one that found the process
        ProcessCPUReading reading;
    };

    std::span<const std::int32_t> listProcesses();
    /// The reading without its instant; null when the process cannot be read. Valid until the next call.
    ProcessCPUReading* read(std::int32_t processIdentifier);
    std::optional<ProcessCPUReading> identify(std::int32_t processIdentifier,
                                              const ProcessAccounting& accounting);
    void attachApplication(ProcessCPUReading& reading);
    std::uint64_t cpuTimeNanoseconds(const ProcessAccounting& accounting);
    void forgetVanished();

    std::mutex calls_;
    ProcessTable* processes_;
    ApplicationCatalog* applications_;
    std::optional<ClockUnit> clockUnit_; ///< a constant of the machine, asked once
    std::vector<std::int32_t> identifiers_;
    std::unordered_map<std::int32_t, KeptReading> kept_;
    std::uint64_t census_{};
    std::size_t foundInCensus_{}; ///< kept readings that this census has found
};

} // namespace cindertop
