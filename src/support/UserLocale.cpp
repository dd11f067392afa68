#include "support/UserLocale.h"

#include "support/AtomicFile.h"
#include "support/FileSystem.h"

#include <cstdlib>
#include <system_error>
#include <utility>

namespace cindertop {

std::string userLocaleName(const char* category) {
    for (const char* const variable : {"LC_ALL", category, "LANG"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return "C";
}

std::string icuLocaleName(std::string_view name) {
    const auto codeset = name.find('.');
    const auto modifier = name.find('@');
    auto plain = std::string(name.substr(0, codeset < modifier ? codeset : modifier));
    if (plain == "C" || plain == "POSIX") {
        return {};
    }
    // "de@collation=phonebook" is ICU's; "de_DE@euro" and its like say nothing about language or region.
    if (modifier != std::string_view::npos && name.substr(modifier).contains('=')) {
        plain += name.substr(modifier);
    }
    return plain;
}

namespace {

/// Without the quotes of a shell, which may stand around it.
std::string_view unquoted(std::string_view value) {
    const bool isQuoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

template <typename Settings>
std::string settingOf(const Settings& settings, std::string_view variable) {
    const auto found = settings.find(variable);
    return found == settings.end() ? std::string() : found->second;
}

} // namespace

std::filesystem::path FollowedLocale::systemFile() {
    std::error_code ignored;
    const std::filesystem::path file = "/etc/locale.conf";
    return std::filesystem::exists(file, ignored) ? file : "/etc/default/locale";
}

FollowedLocale::FollowedLocale(std::filesystem::path file) : file_(std::move(file)), atStart_(present()) {}

FollowedLocale::Settings FollowedLocale::parse(std::string_view text) {
    Settings settings;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        const auto sign = line.find('=');
        if (sign != std::string_view::npos && !line.starts_with('#')) {
            settings.insert_or_assign(std::string(line.substr(0, sign)),
                                      std::string(unquoted(line.substr(sign + 1))));
        }
    }
    return settings;
}

const FollowedLocale::Settings& FollowedLocale::present() {
    constexpr std::size_t longest = 65'536; // bytes
    std::error_code error;
    const auto changedAt = std::filesystem::last_write_time(file_, error);
    if (error || changedAt == readAt_) { // values from a file that is gone stay in effect
        return settings_;
    }
    PosixFileSystem files;
    if (const auto text = wholeFile(files, file_, longest)) {
        readAt_ = changedAt;
        settings_ = parse(*text);
    }
    return settings_;
}

std::string FollowedLocale::name(const char* category) {
    const auto& settings = present();
    for (const char* const variable : {"LC_ALL", category, "LANG"}) {
        const char* const given = std::getenv(variable);
        const std::string own = given != nullptr ? given : "";
        const auto value = own == settingOf(atStart_, variable) ? settingOf(settings, variable) : own;
        if (!value.empty()) {
            return value;
        }
    }
    return "C";
}

} // namespace cindertop
