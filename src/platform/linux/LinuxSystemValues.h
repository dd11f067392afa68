#pragma once

#include "platform/SourceStatus.h"
#include "platform/SystemValues.h"
#include "platform/linux/FileReading.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// The names in a device tree's `compatible`, most special first: each ends at a zero byte.
std::vector<std::string> parseCompatible(std::string_view bytes);

/// The model identifier of an Apple-Silicon laptop by its board, for example "Mac14,2" for apple,j413.
std::optional<std::string> appleModelIdentifier(const std::vector<std::string>& compatible);

/// The brand of an Apple chip, for example "Apple M2" for apple,t8112.
std::optional<std::string> appleChipBrand(const std::vector<std::string>& compatible);

/// The system on the chip that a device tree names behind the board, for example "BCM2712" for brcm,bcm2712.
std::optional<std::string> socOfCompatible(const std::vector<std::string>& compatible);

/// The first "model name" of /proc/cpuinfo. ARM processors have none, or only the name of the instruction
/// set, which counts as none.
std::optional<std::string> parseProcessorModel(std::string_view cpuinfo);

/// Whether firmware says this instead of a name: "Default string", "To Be Filled By O.E.M.", dots, ...
bool isPlaceholderName(std::string_view name);

/// "hw.model" and "machdep.cpu.brand_string". Neither changes while the machine runs: both are read once, in
/// the constructor. Any thread may ask.
class LinuxSystemValues final : public SystemValues {
public:
    explicit LinuxSystemValues(const Roots& roots = {});

    std::optional<std::string> text(std::string_view name) const override;

    /// "machine identity": available when the model is known.
    SourceStatus status() const;

private:
    std::optional<std::string> model_;
    std::optional<std::string> brand_;
    std::string source_ = "device tree"; ///< where the model came from
};

} // namespace cindertop::linux_platform
