#include "platform/linux/DesktopEnvironment.h"

#include <glib.h>

#include <cstdlib>
#include <ranges>
#include <string_view>
#include <system_error>

#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : std::string{};
}

std::vector<std::filesystem::path> absolutePaths(std::string_view list) {
    std::vector<std::filesystem::path> paths;
    for (const auto part : std::views::split(list, ':')) {
        if (const std::filesystem::path path(part.begin(), part.end()); path.is_absolute()) {
            paths.push_back(path);
        }
    }
    return paths;
}

bool isProgram(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::is_regular_file(file, error) && ::access(file.c_str(), X_OK) == 0;
}

} // namespace

DesktopEnvironment DesktopEnvironment::ofUser() {
    DesktopEnvironment environment{.home = variable("HOME"),
                                   .dataHome = variable("XDG_DATA_HOME"),
                                   .dataDirectories = variable("XDG_DATA_DIRS"),
                                   .searchPath = variable("PATH"),
                                   .languages = {}};
    for (const char* const* language = g_get_language_names(); *language != nullptr; ++language) {
        environment.languages.emplace_back(*language);
    }
    return environment;
}

std::vector<std::filesystem::path> DesktopEnvironment::applicationFolders() const {
    std::filesystem::path own(dataHome);
    if (!own.is_absolute()) {
        own = std::filesystem::path(home) / ".local/share";
    }
    std::vector<std::filesystem::path> folders;
    if (own.is_absolute()) {
        folders.push_back(own / "applications");
    }
    const auto shared = dataDirectories.empty() ? "/usr/local/share:/usr/share" : dataDirectories;
    for (const auto& folder : absolutePaths(shared)) {
        folders.push_back(folder / "applications");
    }
    return folders;
}

std::optional<std::filesystem::path> DesktopEnvironment::resolvedProgram(const std::string& command) const {
    std::error_code error;
    if (command.starts_with('/')) {
        const auto file = std::filesystem::canonical(command, error);
        return error ? std::nullopt : std::optional(file);
    }
    if (command.contains('/')) {
        return std::nullopt;
    }
    for (const auto& folder : absolutePaths(searchPath)) {
        if (isProgram(folder / command)) {
            const auto file = std::filesystem::canonical(folder / command, error);
            return error ? std::nullopt : std::optional(file);
        }
    }
    return std::nullopt;
}

} // namespace cindertop::linux_platform
