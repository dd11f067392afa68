#include "support/UserLocale.h"

#include <cstdlib>

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

} // namespace cindertop
