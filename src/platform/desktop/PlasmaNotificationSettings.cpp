#include "platform/desktop/PlasmaNotificationSettings.h"

#include <algorithm>
#include <cctype>
#include <ranges>
#include <string>

namespace cindertop::desktop {

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

} // namespace cindertop::desktop
