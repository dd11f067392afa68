#pragma once

#include "platform/GraphicsUsage.h"
#include "support/Instant.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cindertop {

/// How busy a process kept one engine between two readings.
struct GraphicsShare {
    std::int32_t processIdentifier;
    std::uint32_t engine; ///< the meter's number for one engine of one device
    double percent;       ///< of that engine, all of its equal parts together; 0 to 100

    bool operator==(const GraphicsShare&) const = default;
};

/// Work on several engines at once is no more than the busiest of them does: the highest sum of one engine's
/// shares, 0 to 100. None without a share.
std::optional<double> busiestEngine(std::span<const GraphicsShare> shares);

/// Turns the counters of graphics clients into shares. A client that several processes share counts for the
/// first of them only. Deterministic: the same readings give the same shares.
class GraphicsMeter {
public:
    /// The shares since the reading before, `elapsed` awake time ago, in the order of the clients. A client
    /// or an engine that the reading before did not have has none yet.
    std::vector<GraphicsShare> sharesOf(std::span<const GraphicsClient> clients, Seconds elapsed);

    /// The name of a numbered engine: the driver's, for engines of the second device on with a number of the
    /// device, "render@2".
    std::string engineName(std::uint32_t engine) const;

    /// Forgets the reading before.
    void reset() { counters_.clear(); }

private:
    struct Counter {
        std::uint64_t busy{};
        std::optional<std::uint64_t> totalCycles;
    };

    using ClientKey = std::pair<std::string, std::uint64_t>; ///< device and identifier
    using Counters = std::map<std::string, Counter>;         ///< by engine

    struct Engine {
        std::size_t device;
        std::string name;

        bool operator==(const Engine&) const = default;
    };

    std::uint32_t numberOf(const std::string& device, const std::string& engine);
    /// The former counter, if it is of the same unit; null without one.
    static const Counter* comparable(const Counters& former, const GraphicsEngineUsage& usage);
    static std::optional<double> percentSince(const Counter& former, const GraphicsEngineUsage& usage,
                                              Seconds elapsed);

    std::map<ClientKey, Counters> counters_;
    std::vector<std::string> devices_; ///< in the order in which they were first seen
    std::vector<Engine> engines_;
};

} // namespace cindertop
