#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// What a client has used of one engine of a graphics device since it began. Drivers may take a counter back
/// for a while.
struct GraphicsEngineUsage {
    std::string engine;                         ///< the driver's name for it, for example "render"
    std::uint64_t busy{};                       ///< nanoseconds; where `totalCycles` is known, cycles
    std::optional<std::uint64_t> totalCycles{}; ///< that have passed, busy or not
    std::uint32_t capacity{1};                  ///< how many equal engines share the name; at least 1

    bool operator==(const GraphicsEngineUsage&) const = default;
};

/// A program's connection to a graphics device, by which its work is counted. Processes can share one.
struct GraphicsClient {
    std::int32_t processIdentifier{};
    std::string device;         ///< its place on the bus, or the driver's name where there is one device only
    std::uint64_t identifier{}; ///< unique within the device
    std::vector<GraphicsEngineUsage> engines; ///< never empty

    bool operator==(const GraphicsClient&) const = default;
};

/// Who uses the graphics processor. Called from one thread at a time.
class GraphicsUsage {
public:
    virtual ~GraphicsUsage() = default;

    /// The clients as they are now, for the processes that the process table last listed, in its order. One
    /// that several processes share is listed for each. Processes that may not be looked at have none.
    virtual std::vector<GraphicsClient> clients() = 0;
};

} // namespace cindertop
