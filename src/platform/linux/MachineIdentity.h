#pragma once

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

/// The first "model name" of /proc/cpuinfo; ARM processors have none.
std::optional<std::string> parseProcessorModel(std::string_view cpuinfo);

} // namespace cindertop::linux_platform
