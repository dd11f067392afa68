#include "platform/simulated/RegionalNames.h"

#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace cindertop::simulated {

namespace {

constexpr std::size_t longestPart = 8;

bool isAsciiLetter(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

bool isAsciiLetterOrDigit(char letter) {
    return isAsciiLetter(letter) || (letter >= '0' && letter <= '9');
}

} // namespace

bool isTimeZoneName(const std::string& name) {
    icu::UnicodeString canonical;
    UBool isOfSystem = 0; // false for offsets such as "GMT+5", which ICU takes too
    auto status = U_ZERO_ERROR;
    icu::TimeZone::getCanonicalID(icu::UnicodeString::fromUTF8(name), canonical, isOfSystem, status);
    return U_SUCCESS(status) != 0 && isOfSystem != 0;
}

bool isLocaleName(std::string_view name) {
    const auto language = name.substr(0, name.find_first_of("_-"));
    if (language.size() < 2 || !std::ranges::all_of(language, isAsciiLetter)) {
        return false;
    }
    for (auto rest = name;;) {
        const auto part = rest.substr(0, rest.find_first_of("_-"));
        if (part.empty() || part.size() > longestPart || !std::ranges::all_of(part, isAsciiLetterOrDigit)) {
            return false;
        }
        if (part.size() == rest.size()) {
            return true;
        }
        rest.remove_prefix(part.size() + 1);
    }
}

} // namespace cindertop::simulated
