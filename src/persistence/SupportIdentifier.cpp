#include "persistence/SupportIdentifier.h"

#include "persistence/Uuid.h"

#include <string_view>
#include <variant>

namespace cindertop {

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
