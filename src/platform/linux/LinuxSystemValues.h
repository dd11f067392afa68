#pragma once

#include "platform/SourceStatus.h"
#include "platform/SystemValues.h"
#include "platform/linux/Roots.h"

#include <optional>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

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
