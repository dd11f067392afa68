#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace cindertop {

/// What the system accounts for one process. Texts end at their first zero byte or fill their room.
struct ProcessAccounting {
    static constexpr std::uint32_t systemFlag = 1;

    std::uint32_t flags{}; ///< `systemFlag` marks a process of the system itself
    std::int32_t parentProcessIdentifier{};
    std::uint32_t realUserIdentifier{};
    std::array<char, 16> shortName{};
    std::array<char, 32> longName{};
    std::uint64_t startSeconds{}; ///< since the Unix epoch; 0: not known
    std::uint64_t startMicroseconds{};
    std::uint64_t totalUserTime{}; ///< in clock units, see `clockUnit`
    std::uint64_t totalSystemTime{};

    /// As long as one process identifier comes with the same stamp, everything about it but the two times is
    /// unchanged: names, owner, parent, start, path and application. 0 promises nothing.
    std::uint64_t identityStamp{};
};

/// Nanoseconds = clock units × numerator ÷ denominator.
struct ClockUnit {
    std::uint32_t numerator;
    std::uint32_t denominator;
};

/// The live processes. Called from one thread at a time.
class ProcessTable {
public:
    virtual ~ProcessTable() = default;
    /// How many processes there are, by which a list is sized; below 1 when they cannot be listed.
    virtual int countProcesses() = 0;
    /// Fills the buffer from its start, in the system's order; returns how many it wrote, below 1 on failure.
    virtual int listProcesses(std::span<std::int32_t> buffer) = 0;
    /// None when the process is gone or may not be looked at.
    virtual std::optional<ProcessAccounting> accounting(std::int32_t processIdentifier) = 0;
    /// Path of the executable, as raw bytes; none when it cannot be had.
    virtual std::optional<std::string> executablePath(std::int32_t processIdentifier) = 0;
    virtual ClockUnit clockUnit() const = 0;
};

} // namespace cindertop
