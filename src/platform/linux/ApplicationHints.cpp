#include "platform/linux/ApplicationHints.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/KeyFile.h"

namespace cindertop::linux_platform {

namespace {

/// The first of that name, as a process itself would read it.
std::optional<std::string_view> variable(std::string_view environment, std::string_view name) {
    while (!environment.empty()) {
        const auto end = environment.find('\0');
        const auto line = environment.substr(0, end);
        if (line.size() > name.size() && line.starts_with(name) && line[name.size()] == '=') {
            return line.substr(name.size() + 1);
        }
        environment = end == std::string_view::npos ? std::string_view{} : environment.substr(end + 1);
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> flatpakApplication(std::string_view flatpakInfo) {
    const auto file = KeyFile::parse(flatpakInfo);
    const auto name = file ? file->text("Application", "name") : std::nullopt;
    return name && !name->empty() ? name : std::nullopt;
}

std::optional<std::string> launchedDesktopFile(std::string_view environment, std::int32_t processIdentifier) {
    const auto owner = variable(environment, "GIO_LAUNCHED_DESKTOP_FILE_PID");
    if (!owner || parseInteger(*owner) != processIdentifier) {
        return std::nullopt;
    }
    const auto file = variable(environment, "GIO_LAUNCHED_DESKTOP_FILE");
    return file && file->starts_with('/') ? std::optional<std::string>(*file) : std::nullopt;
}

std::optional<std::string> appImageFile(std::string_view environment, std::string_view executable) {
    const auto folder = variable(environment, "APPDIR");
    const auto file = variable(environment, "APPIMAGE");
    const bool isInside = folder && !folder->empty() && executable.starts_with(*folder) &&
                          executable.substr(folder->size()).starts_with('/');
    return isInside && file && file->starts_with('/') ? std::optional<std::string>(*file) : std::nullopt;
}

} // namespace cindertop::linux_platform
