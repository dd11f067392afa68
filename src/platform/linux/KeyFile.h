#pragma once

#include <glib.h>

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

/// A file of "[Group]" and "key=value" lines, as desktop entries are, read by GLib.
class KeyFile {
public:
    /// Which of the translations "key[language]=value" to keep.
    enum class Translations { none, all };

    /// None when any line is broken.
    static std::optional<KeyFile> parse(std::string_view text,
                                        Translations translations = Translations::none);

    /// The value without its escapes; none when absent, wrongly escaped or no UTF-8.
    std::optional<std::string> text(const char* group, const char* key) const;

    /// The translation into the first of the languages that has one, else the value itself. Languages are
    /// written as in the LANGUAGE variable: "de_DE", "de". Needs all translations kept.
    std::optional<std::string> localizedText(const char* group, const char* key,
                                             std::span<const std::string> languages) const;

    /// False when absent.
    bool boolean(const char* group, const char* key) const;

private:
    explicit KeyFile(GKeyFile* file) : file_(file) {}

    struct Release {
        void operator()(GKeyFile* file) const { g_key_file_unref(file); }
    };

    std::unique_ptr<GKeyFile, Release> file_;
};

} // namespace cindertop::linux_platform
