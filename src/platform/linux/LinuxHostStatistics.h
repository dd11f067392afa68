#pragma once

#include "platform/HostStatistics.h"
#include "platform/SourceStatus.h"
#include "platform/linux/FileReading.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace cindertop::linux_platform {

/// The totals of a "cpu  user nice system idle iowait irq softirq …" line that ends in a line end. Interrupts
/// count as system time and waiting for a disk as idle time. Guest time, further right, is inside user and
/// nice already, and stolen time is another machine's. Needs the four columns up to idle. None for another
/// line or a number too big.
std::optional<HostCpuLoad> parseCpuLine(std::string_view text);

/// The first line of /proc/stat. Called from one thread at a time.
class LinuxHostStatistics final : public HostStatistics {
public:
    explicit LinuxHostStatistics(const Roots& roots = {});

    std::optional<HostCpuLoad> cpuLoad() const override;

    /// "CPU time", as the latest read found it.
    SourceStatus status() const;

private:
    std::filesystem::path file_;
    mutable std::optional<bool> didAnswer_;
};

} // namespace cindertop::linux_platform
