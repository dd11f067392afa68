#include "persistence/Uuid.h"

#include <string_view>
#include <variant>

#include <uuid/uuid.h>

namespace cindertop {

Uuid Uuid::random() {
    Uuid made;
    uuid_generate_random(made.bytes.data());
    return made;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    Uuid parsed;
    if (text.size() != UUID_STR_LEN - 1 || uuid_parse(std::string(text).c_str(), parsed.bytes.data()) != 0) {
        return std::nullopt;
    }
    return parsed;
}

std::string Uuid::text() const {
    std::array<char, UUID_STR_LEN> characters{};
    uuid_unparse_upper(bytes.data(), characters.data());
    return {characters.data(), UUID_STR_LEN - 1};
}

std::string supportIdentifier(UserDefaults& defaults) {
    constexpr std::string_view key = "cindertop.diagnostics.support-id";
    const auto stored = defaults.value(key);
    const auto* const text = stored ? std::get_if<std::string>(&*stored) : nullptr;
    if (text != nullptr && Uuid::parse(*text)) {
        return *text;
    }
    std::string made = Uuid::random().text();
    defaults.set(key, made);
    return made;
}

} // namespace cindertop
