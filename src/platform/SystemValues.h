#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// Facts about the machine by name: "hw.model", "machdep.cpu.brand_string". Any thread may ask.
class SystemValues {
public:
    virtual ~SystemValues() = default;
    /// None when the system does not know the name.
    virtual std::optional<std::string> text(std::string_view name) const = 0;
};

} // namespace cindertop
