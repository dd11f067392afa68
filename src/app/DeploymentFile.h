#pragma once

#include "support/FileSystem.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// What the installer of this copy of the program has set: a property list of texts by key. Read once;
/// without a valid file there are no keys.
class DeploymentFile {
public:
    /// Where it is installed together with the program that runs; without /proc, with the system's.
    static std::filesystem::path defaultFile();

    DeploymentFile(FileSystem& files, const std::filesystem::path& file);

    /// None when the key is missing or its value is no text.
    std::optional<std::string> text(std::string_view key) const;

private:
    std::map<std::string, std::string, std::less<>> texts_;
};

} // namespace cindertop
