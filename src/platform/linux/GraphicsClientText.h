#pragma once

#include "platform/GraphicsUsage.h"

#include <optional>
#include <string_view>

namespace cindertop::linux_platform {

/// What a driver says in /proc/PID/fdinfo/N about one open graphics device, in the keys of the kernel's DRM
/// usage statistics: `drm-driver`, `drm-pdev`, `drm-client-id`, and for each engine `drm-engine-NAME` (ns) or
/// `drm-cycles-NAME` with `drm-total-cycles-NAME`, and `drm-engine-capacity-NAME`. The process identifier
/// stays 0.
///
/// Cycles go before nanoseconds where an engine has both and their total. None without a client identifier,
/// by which shared descriptors are told, or without an engine. Malformed entries and a last line without its
/// end are ignored.
std::optional<GraphicsClient> parseGraphicsClient(std::string_view text);

} // namespace cindertop::linux_platform
