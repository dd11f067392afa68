#pragma once

#include "platform/SystemValues.h"
#include "support/Enumeration.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// Raw value and case name are the same; `displayName` is what people read.
enum class AppleSiliconGeneration : std::uint8_t { m1, m2, m3, m4, m5 };

template <>
struct EnumerationTable<AppleSiliconGeneration> {
    static constexpr std::array cases{
        EnumerationCase{AppleSiliconGeneration::m1, "m1"}, EnumerationCase{AppleSiliconGeneration::m2, "m2"},
        EnumerationCase{AppleSiliconGeneration::m3, "m3"}, EnumerationCase{AppleSiliconGeneration::m4, "m4"},
        EnumerationCase{AppleSiliconGeneration::m5, "m5"},
    };
};

std::string_view displayName(AppleSiliconGeneration generation);

/// A machine that the program is made for.
struct SupportedMacBookAirModel {
    std::string_view modelIdentifier;
    std::string_view displayName;
    AppleSiliconGeneration chipGeneration;

    bool operator==(const SupportedMacBookAirModel&) const = default;
};

/// The machine with exactly this identifier; none when it is not in the table.
std::optional<SupportedMacBookAirModel> supportedModel(std::string_view modelIdentifier);

/// The first generation whose name occurs anywhere in the processor's brand text.
std::optional<AppleSiliconGeneration> chipGeneration(const std::optional<std::string>& cpuBrand);

/// Stands for the model of a machine that does not tell it.
inline constexpr std::string_view unknownModel = "unknown";

/// What the machine is.
struct MacHardwareProfile {
    std::string modelIdentifier;         ///< "unknown" when the system does not tell
    std::string architecture;            ///< "arm64" or "x86_64": what this program was built for
    std::optional<std::string> cpuBrand; ///< absent when the system does not tell

    bool isModelKnown() const { return modelIdentifier != unknownModel; }

    bool operator==(const MacHardwareProfile&) const = default;
};

/// "arm64" or "x86_64", after the processor that this program was built for; another processor has the name
/// that its compiler gives it.
std::string_view builtArchitecture();

/// Asks the system; `architecture` is what the program reports as its own.
MacHardwareProfile readHardwareProfile(const SystemValues& system, std::string_view architecture);

} // namespace cindertop
