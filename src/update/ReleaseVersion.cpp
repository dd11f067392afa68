#include "update/ReleaseVersion.h"

#include <charconv>

namespace cindertop {

namespace {

constexpr std::size_t mostParts = 4;

std::optional<std::uint32_t> wholeNumber(std::string_view text) {
    std::uint32_t number = 0;
    const auto* const end = text.data() + text.size();
    // NOLINTNEXTLINE(bugprone-suspicious-stringview-data-usage): the end goes with it
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

} // namespace

std::optional<ReleaseVersion> ReleaseVersion::parse(std::string_view text) {
    ReleaseVersion version;
    for (bool isLast = false; !isLast;) {
        const auto point = text.find('.');
        isLast = point == std::string_view::npos;
        const auto number = wholeNumber(text.substr(0, point));
        if (!number || version.parts_.size() == mostParts) {
            return std::nullopt;
        }
        version.parts_.push_back(*number);
        text.remove_prefix(isLast ? text.size() : point + 1);
    }
    while (!version.parts_.empty() && version.parts_.back() == 0) {
        version.parts_.pop_back();
    }
    return version;
}

} // namespace cindertop
