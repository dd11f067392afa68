#pragma once

#include "support/Instant.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

/// What /proc/PID/stat says about who a process is.
struct ProcessStat {
    static constexpr std::uint32_t kernelThreadFlag = 0x00200000;

    std::string name; ///< raw bytes; 15 at most for a program, up to 63 for a kernel worker
    char state;       ///< one letter: 'R', 'S', 'Z', ...
    std::int32_t parent;
    std::int32_t session;
    std::uint32_t flags;
    std::uint64_t startTicks; ///< clock ticks from the start of the machine
    std::uint64_t startStack; ///< another after each exec; 0 when the kernel does not tell this user

    bool isKernelThread() const { return (flags & kernelThreadFlag) != 0; }

    bool isZombie() const { return state == 'Z' || state == 'X'; }

    bool operator==(const ProcessStat&) const = default;
};

/// The kernel cuts a program's name to this many bytes, in the middle of a character if need be.
inline constexpr std::size_t shortNameLimit = 15;

/// The fields of /proc/PID/stat. The name may hold blanks, parentheses and line ends: the last ")" ends it.
/// None when a field is missing, no number or too large for its type.
std::optional<ProcessStat> parseProcessStat(std::string_view line);

/// A kernel worker tells what it does behind its name ("kworker/0:1-events", "kworker/u8:2+flush") and so
/// changes names all the time; this is the part that stays.
std::string_view steadyName(std::string_view kernelThreadName);

/// The name in full when the kernel cut it: the last path component of the first word of /proc/PID/cmdline,
/// when `shortName` fills its room and begins that component. Otherwise `shortName`. Programs that write
/// their own title ("/opt/x/chromium-browser --type=zygote") leave all arguments in the first word; they do
/// not count.
std::string_view uncutName(std::string_view shortName, std::string_view commandLine);

/// The kernel's clocks as the process table needs them. Tests script them. Called from one thread at a time.
class ProcessClocks {
public:
    virtual ~ProcessClocks() = default;
    /// CPU time of all threads of a process, ended ones too; none when no such process is left. A zombie's
    /// stands.
    virtual std::optional<std::chrono::nanoseconds> cpuTime(std::int32_t processIdentifier) = 0;
    /// Time since the machine started, sleep included.
    virtual std::chrono::nanoseconds sinceBoot() = 0;
    /// Wall-clock time.
    virtual Instant now() = 0;
};

std::unique_ptr<ProcessClocks> kernelClocks();

} // namespace cindertop::linux_platform
