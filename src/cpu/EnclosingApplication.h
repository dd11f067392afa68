#pragma once

#include "platform/ApplicationCatalog.h"

#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// What a bundle says about itself.
struct EnclosingApplication {
    std::string bundlePath;
    std::optional<std::string> bundleIdentifier;
    std::string displayName;

    bool operator==(const EnclosingApplication&) const = default;
};

/// The outermost folder of the path whose name ends in ".app", in any case: a helper inside a browser belongs
/// to the browser. Empty, "." and ".." components are dropped and nothing else is resolved.
std::optional<std::string> outermostApplicationFolder(std::string_view executablePath);

/// The application around an executable; none when no folder of its path is one or it cannot be opened.
std::optional<EnclosingApplication> enclosingApplication(std::string_view executablePath,
                                                         ApplicationCatalog& catalog);

} // namespace cindertop
