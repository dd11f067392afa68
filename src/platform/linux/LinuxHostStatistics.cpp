#include "platform/linux/LinuxHostStatistics.h"

#include "platform/linux/FileReading.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <system_error>

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t lineRoom = 512; ///< the name and ten columns of 20 digits need 230

std::optional<std::uint64_t> sum(std::uint64_t left, std::uint64_t right) {
    std::uint64_t result = 0;
    return __builtin_add_overflow(left, right, &result) ? std::nullopt : std::optional(result);
}

/// Takes the next number off the front; none when what follows the blanks is no number or does not fit.
std::optional<std::uint64_t> takeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::uint64_t number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{}) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    return number;
}

} // namespace

std::optional<HostCpuLoad> parseCpuLine(std::string_view text) {
    static constexpr std::string_view name = "cpu ";
    const auto end = text.find('\n');
    if (end == std::string_view::npos || !text.starts_with(name)) {
        return std::nullopt;
    }
    auto columns = text.substr(name.size(), end - name.size());

    enum Column : std::size_t { user, nice, system, idle, ioWait, interrupt, softInterrupt, count };

    std::array<std::uint64_t, count> ticks{};
    for (std::size_t column = 0; column < count; ++column) {
        if (column > idle && columns.find_first_not_of(' ') == std::string_view::npos) {
            break; // very old kernels and emulations have fewer columns
        }
        const auto number = takeNumber(columns);
        if (!number) {
            return std::nullopt;
        }
        ticks.at(column) = *number;
    }
    const auto systemTime = sum(ticks[system], ticks[interrupt]).and_then([&](std::uint64_t part) {
        return sum(part, ticks[softInterrupt]);
    });
    const auto idleTime = sum(ticks[idle], ticks[ioWait]);
    if (!systemTime || !idleTime) {
        return std::nullopt;
    }
    return HostCpuLoad{.user = ticks[user], .system = *systemTime, .idle = *idleTime, .nice = ticks[nice]};
}

LinuxHostStatistics::LinuxHostStatistics(const Roots& roots) : file_(roots.proc / "stat") {}

std::optional<HostCpuLoad> LinuxHostStatistics::cpuLoad() const {
    const auto load =
        readFilePrefix(file_, lineRoom).and_then([](const std::string& text) { return parseCpuLine(text); });
    didAnswer_ = load.has_value();
    return load;
}

SourceStatus LinuxHostStatistics::status() const {
    const bool isAvailable = didAnswer_ ? *didAnswer_ : cpuLoad().has_value();
    return {.name = "CPU time",
            .isAvailable = isAvailable,
            .reason = file_.string() + (isAvailable ? "" : " has no line of processor times")};
}

} // namespace cindertop::linux_platform
