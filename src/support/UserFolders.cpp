#include "support/UserFolders.h"

#include <array>
#include <cstdlib>
#include <system_error>

#include <pwd.h>
#include <unistd.h>

namespace cindertop {
namespace {

std::optional<std::filesystem::path> absolutePath(const std::optional<std::string>& text) {
    if (!text || !std::filesystem::path(*text).is_absolute()) {
        return std::nullopt;
    }
    return std::filesystem::path(*text);
}

std::optional<std::string> homeOfAccount() {
    passwd account{};
    passwd* found = nullptr;
    std::array<char, 4096> texts{};
    if (::getpwuid_r(::getuid(), &account, texts.data(), texts.size(), &found) != 0 || found == nullptr) {
        return std::nullopt;
    }
    return std::string(account.pw_dir);
}

std::filesystem::path homeFolder(const UserFolders::Environment& environment) {
    if (const auto home = absolutePath(environment("HOME"))) {
        return *home;
    }
    if (const auto home = absolutePath(homeOfAccount())) {
        return *home;
    }
    std::error_code error;
    const auto temporary = std::filesystem::temp_directory_path(error);
    return error ? std::filesystem::path("/tmp") : temporary;
}

std::filesystem::path folder(const UserFolders::Environment& environment, std::string_view variable,
                             std::string_view belowHome) {
    if (const auto path = absolutePath(environment(variable))) {
        return *path;
    }
    return homeFolder(environment) / belowHome;
}

} // namespace

UserFolders::UserFolders(const Environment& environment)
    : data(folder(environment, "XDG_DATA_HOME", ".local/share")),
      config(folder(environment, "XDG_CONFIG_HOME", ".config")) {}

UserFolders UserFolders::ofUser() {
    return UserFolders([](std::string_view name) -> std::optional<std::string> {
        const char* const value = std::getenv(std::string(name).c_str());
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    });
}

std::filesystem::path ownProgram() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored);
}

} // namespace cindertop
