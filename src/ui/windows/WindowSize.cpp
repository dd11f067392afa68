#include "ui/windows/WindowSize.h"

#include <charconv>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>

namespace cindertop::ui {

namespace {

constexpr auto settingsSizeKey = "cindertop.settings.window-size"; ///< "460x640"
constexpr int longestEdge = 32'767;                                ///< of X11

std::optional<int> edge(std::string_view digits) {
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole && value > 0 && value <= longestEdge ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<QSize> storedSettingsSize(const UserDefaults& defaults) {
    const auto stored = defaults.value(settingsSizeKey);
    const auto* const text = stored ? std::get_if<std::string>(&*stored) : nullptr;
    if (text == nullptr) {
        return std::nullopt;
    }
    const auto cross = text->find('x');
    if (cross == std::string::npos) {
        return std::nullopt;
    }
    const auto width = edge(std::string_view(*text).substr(0, cross));
    const auto height = edge(std::string_view(*text).substr(cross + 1));
    return width && height ? std::optional(QSize(*width, *height)) : std::nullopt;
}

void storeSettingsSize(UserDefaults& defaults, const QSize& size) {
    auto text = std::to_string(size.width());
    text += 'x';
    text += std::to_string(size.height());
    defaults.set(settingsSizeKey, text);
}

} // namespace cindertop::ui
