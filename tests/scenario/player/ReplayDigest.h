#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::replay {

/// Retells a replay in the few lines that a person wants to read, and sums up the rest: ticks that look alike
/// share a line, a history sample among them is one short line before it, every other line stays as it is,
/// and the last line is a checksum of all that was printed, to the byte.
class ReplayDigest {
public:
    void add(std::string_view line);

    /// Call it once, after the last line.
    std::vector<std::string> lines() &&;

private:
    void addTick(std::string_view line);
    void addHistory(std::string_view line);
    void addToChecksum(std::string_view text);
    void endTicks();

    /// Ticks in a row that look alike.
    struct Ticks {
        std::string look;
        std::string first;
        std::string last;
        int count = 0;
    };

    std::vector<std::string> lines_;
    Ticks ticks_;
    std::size_t added_ = 0;
    std::size_t bytes_ = 0;
    std::uint64_t checksum_ = 0xCBF2'9CE4'8422'2325; // FNV-1a, 64 bits
};

} // namespace cindertop::replay
