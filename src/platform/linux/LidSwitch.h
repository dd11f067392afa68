#pragma once

#include "platform/SourceStatus.h"
#include "platform/linux/BusProperty.h"
#include "platform/linux/Roots.h"
#include "platform/linux/SystemBus.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

/// True for "state:      closed", false for "state:      open", else none.
std::optional<bool> parseLidState(std::string_view text);

/// Whether the laptop is shut: from logind, else from the ACPI lid. Belongs to the thread of its bus.
class LidSwitch {
public:
    /// logind announces the lid from version 256 on; before, it is asked again after 2 s.
    explicit LidSwitch(SystemBus& bus, const Roots& roots = {});

    /// None without a lid that anyone knows of.
    std::optional<bool> isClosed();

    /// "lid", as the latest read found it.
    SourceStatus status() const;

private:
    std::optional<bool> readAcpiLid() const;

    BusProperty logind_;
    std::filesystem::path folder_;
    std::string reason_ = "not asked: no built-in display is on";
    bool isAvailable_ = false;
};

} // namespace cindertop::linux_platform
