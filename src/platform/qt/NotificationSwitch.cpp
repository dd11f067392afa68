#include "platform/qt/NotificationSwitch.h"

#include "support/AtomicFile.h"
#include "support/FileSystem.h"

#include <gio/gio.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <memory>
#include <ranges>
#include <string>
#include <string_view>
#include <utility>

namespace cindertop::desktop {

namespace {

constexpr auto schemaName = "org.gnome.desktop.notifications.application";
/// The last part is the name of the desktop entry.
constexpr auto settingsPath = "/org/gnome/desktop/notifications/application/cindertop/";
constexpr auto enableKey = "enable";

struct Release {
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }

    void operator()(GSettings* settings) const { g_object_unref(settings); }
};

/// Null when not installed. GLib ends the program that asks it for the settings of a missing schema, or for a
/// key that the schema lacks.
std::unique_ptr<GSettingsSchema, Release> installedSchema() {
    GSettingsSchemaSource* const source = g_settings_schema_source_get_default();
    if (source == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<GSettingsSchema, Release>(
        g_settings_schema_source_lookup(source, schemaName, TRUE));
}

} // namespace

bool gnomeSwitchesNotificationsOff() {
    const auto schema = installedSchema();
    if (!schema || g_settings_schema_has_key(schema.get(), enableKey) == FALSE) {
        return false;
    }
    const std::unique_ptr<GSettings, Release> settings(
        g_settings_new_full(schema.get(), nullptr, settingsPath));
    return g_settings_get_boolean(settings.get(), enableKey) == FALSE;
}

namespace {

constexpr std::string_view group = "[Applications][cindertop]"; // the name of the desktop entry
constexpr std::string_view key = "ShowPopups";
constexpr std::string_view lockMark = "[$i]"; // behind a group or a key that the user may not change

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = std::min(text.find_first_not_of(blanks), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string_view withoutLock(std::string_view name) {
    return name.ends_with(lockMark) ? name.substr(0, name.size() - lockMark.size()) : name;
}

/// KConfig takes every other word for true.
bool isFalse(std::string_view value) {
    std::string word(value);
    std::ranges::transform(word, word.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return word == "false" || word == "no" || word == "off" || word == "0";
}

} // namespace

bool plasmaSwitchesNotificationsOff(std::string_view text) {
    bool isInGroup = false;
    bool isOff = false;
    for (const auto part : std::views::split(text, '\n')) {
        const auto line = trimmed(std::string_view(part.begin(), part.end()));
        if (line.starts_with('[')) {
            isInGroup = withoutLock(line) == group;
            continue;
        }
        const auto equals = line.find('=');
        if (isInGroup && equals != std::string_view::npos &&
            withoutLock(trimmed(line.substr(0, equals))) == key) {
            isOff = isFalse(trimmed(line.substr(equals + 1)));
        }
    }
    return isOff;
}

namespace {

/// Of the desktop's settings, far more than they ever have.
constexpr std::size_t fileLimit = 1'000'000;

/// `list` is parted by ":".
bool names(std::string_view list, std::string_view name) {
    return (":" + std::string(list) + ":").contains(":" + std::string(name) + ":");
}

bool isSwitchedOffInPlasma(const std::filesystem::path& configFolder) {
    PosixFileSystem files;
    const auto text = wholeFile(files, configFolder / "plasmanotifyrc", fileLimit);
    return text && plasmaSwitchesNotificationsOff(*text);
}

} // namespace

NotificationSwitch notificationSwitch(const std::string& currentDesktop, std::filesystem::path configFolder) {
    if (names(currentDesktop, "GNOME")) {
        return gnomeSwitchesNotificationsOff;
    }
    if (names(currentDesktop, "KDE")) {
        return [configFolder = std::move(configFolder)] { return isSwitchedOffInPlasma(configFolder); };
    }
    return [] { return false; };
}

} // namespace cindertop::desktop
