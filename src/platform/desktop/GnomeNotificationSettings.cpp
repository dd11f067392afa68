#include "platform/desktop/GnomeNotificationSettings.h"

#include <gio/gio.h>

#include <memory>

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

} // namespace cindertop::desktop
