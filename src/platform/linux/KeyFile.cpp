#include "platform/linux/KeyFile.h"

namespace cindertop::linux_platform {

namespace {

/// Takes over a text that GLib allocated, or null.
std::optional<std::string> taken(char* text) {
    const std::unique_ptr<char, decltype(&g_free)> owned(text, &g_free);
    return owned ? std::optional<std::string>(owned.get()) : std::nullopt;
}

} // namespace

std::optional<KeyFile> KeyFile::parse(std::string_view text, Translations translations) {
    KeyFile file(g_key_file_new());
    const auto flags = translations == Translations::all ? G_KEY_FILE_KEEP_TRANSLATIONS : G_KEY_FILE_NONE;
    if (g_key_file_load_from_data(file.file_.get(), text.data(), text.size(), flags, nullptr) == FALSE) {
        return std::nullopt;
    }
    return file;
}

std::optional<std::string> KeyFile::text(const char* group, const char* key) const {
    return taken(g_key_file_get_string(file_.get(), group, key, nullptr));
}

std::optional<std::string> KeyFile::localizedText(const char* group, const char* key,
                                                  std::span<const std::string> languages) const {
    for (const auto& language : languages) {
        if (taken(g_key_file_get_locale_for_key(file_.get(), group, key, language.c_str()))) {
            return taken(g_key_file_get_locale_string(file_.get(), group, key, language.c_str(), nullptr));
        }
    }
    return text(group, key);
}

bool KeyFile::boolean(const char* group, const char* key) const {
    return g_key_file_get_boolean(file_.get(), group, key, nullptr) != FALSE;
}

} // namespace cindertop::linux_platform
