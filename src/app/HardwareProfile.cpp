#include "app/HardwareProfile.h"

#include <algorithm>

namespace cindertop {

namespace {

using enum AppleSiliconGeneration;

constexpr std::array supportedModels{
    SupportedMacBookAirModel{"MacBookAir10,1", "MacBook Air (M1, 2020)", m1},
    SupportedMacBookAirModel{"Mac14,2", "MacBook Air (M2, 2022)", m2},
    SupportedMacBookAirModel{"Mac14,15", "MacBook Air (15-inch, M2, 2023)", m2},
    SupportedMacBookAirModel{"Mac15,12", "MacBook Air (13-inch, M3, 2024)", m3},
    SupportedMacBookAirModel{"Mac15,13", "MacBook Air (15-inch, M3, 2024)", m3},
    SupportedMacBookAirModel{"Mac16,12", "MacBook Air (13-inch, M4, 2025)", m4},
    SupportedMacBookAirModel{"Mac16,13", "MacBook Air (15-inch, M4, 2025)", m4},
    SupportedMacBookAirModel{"Mac17,3", "MacBook Air (13-inch, M5, 2026)", m5},
    SupportedMacBookAirModel{"Mac17,4", "MacBook Air (15-inch, M5, 2026)", m5},
};

} // namespace

std::string_view displayName(AppleSiliconGeneration generation) {
    switch (generation) {
    case m1:
        return "M1";
    case m2:
        return "M2";
    case m3:
        return "M3";
    case m4:
        return "M4";
    case m5:
        return "M5";
    }
    return {};
}

std::optional<SupportedMacBookAirModel> supportedModel(std::string_view modelIdentifier) {
    const auto* const found =
        std::ranges::find(supportedModels, modelIdentifier, &SupportedMacBookAirModel::modelIdentifier);
    return found == supportedModels.end() ? std::nullopt : std::optional(*found);
}

std::optional<AppleSiliconGeneration> chipGeneration(const std::optional<std::string>& cpuBrand) {
    if (!cpuBrand) {
        return std::nullopt;
    }
    for (const auto& row : casesOf<AppleSiliconGeneration>()) {
        if (cpuBrand->contains(displayName(row.value))) {
            return row.value;
        }
    }
    return std::nullopt;
}

std::string_view builtArchitecture() {
#if defined(__aarch64__)
    return "arm64";
#elif defined(__x86_64__)
    return "x86_64";
#elif defined(__riscv)
    return "riscv";
#elif defined(__i386__)
    return "i386";
#elif defined(__arm__)
    return "arm";
#else
    return "unknown";
#endif
}

MacHardwareProfile readHardwareProfile(const SystemValues& system, std::string_view architecture) {
    return {.modelIdentifier = system.text("hw.model").value_or(std::string(unknownModel)),
            .architecture = std::string(architecture),
            .cpuBrand = system.text("machdep.cpu.brand_string")};
}

} // namespace cindertop
