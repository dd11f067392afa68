#pragma once

#include "cpu/ProcessCPUReading.h"
#include "scenario/recorder/Anonymizer.h"
#include "support/Instant.h"
#include "support/WideInteger.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace cindertop {

/// Turns censuses into the process lists of a scenario. What identifies an owner stays out: a process of an
/// application gets the path "/ID.app/NAME", any other none, and users are 0 or 501.
class ProcessRecorder {
public:
    /// `start` is that of the scenario.
    ProcessRecorder(Instant start, Anonymizer anonymized);

    /// The list between two censuses as JSON, null for an empty first one. Its CPU use is what the second one
    /// adds; what rounding to thousandths of a processor leaves over, or takes too much, counts in the
    /// next list. `graphics` are the texts of "graphics" by process.
    std::string between(std::span<const ProcessCPUReading> from, std::span<const ProcessCPUReading> to,
                        const std::map<std::int32_t, std::string>& graphics,
                        std::chrono::nanoseconds elapsed);

    /// The applications of all lists so far, as JSON.
    std::string bundles() const;

private:
    /// A process of the latest list.
    struct Listed {
        std::optional<Instant> startedAt;
        WideUnsigned used{};    ///< CPU time since it was first listed, in thousandths of nanoseconds
        WideUnsigned written{}; ///< of that, what the lists so far add up to
    };

    struct Application {
        std::string identifier;
        std::optional<std::string> displayName;
    };

    /// `firstCPUTime` is 0 unless the process is listed for the first time.
    std::string processText(const ProcessCPUReading& reading, std::uint64_t firstCPUTime,
                            std::uint64_t millicores, std::string_view graphics);
    std::string pathWithin(const ProcessCPUReading& reading, const std::string& name);

    Instant start_;
    Anonymizer anonymized_;
    std::unordered_map<std::int32_t, Listed> listed_;
    std::map<std::string, Application> applications_; ///< by their folder
};

} // namespace cindertop
