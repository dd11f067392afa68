#pragma once

#include "support/Enumeration.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace cindertop {

/// The kind of system that a machine runs: it decides the wording of texts, what names of processes mean, and
/// the default preferences, and nothing else. The raw value is what scenario files carry. (`linux` alone is a
/// macro to Qt's meta-object compiler.)
enum class OperatingSystem : std::uint8_t { mac, gnuLinux };

template <>
struct EnumerationTable<OperatingSystem> {
    static constexpr std::array cases{
        EnumerationCase{OperatingSystem::mac, "mac", std::string_view("mac")},
        EnumerationCase{OperatingSystem::gnuLinux, "gnuLinux", std::string_view("linux")},
    };
};

} // namespace cindertop
