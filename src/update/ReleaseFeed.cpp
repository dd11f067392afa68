#include "update/ReleaseFeed.h"

#include "support/Base64.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <utility>

#include <sodium.h>

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

namespace {

using nlohmann::json;

constexpr std::size_t longestText = 2'000;
constexpr std::string_view secureScheme = "https://";

/// A line by itself: a line break would let one field of the signed text pass for two.
bool isLine(std::string_view text) {
    return text.size() <= longestText && std::ranges::none_of(text, [](unsigned char c) { return c < ' '; });
}

std::optional<std::string> line(const json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string()) {
        return std::nullopt;
    }
    auto text = found->get<std::string>();
    return isLine(text) ? std::optional(std::move(text)) : std::nullopt;
}

std::optional<Release> signedRelease(const json& object, const ReleaseKey& key) {
    if (!object.is_object()) {
        return std::nullopt;
    }
    const auto version = line(object, "version");
    const auto page = line(object, "page");
    const auto summary = line(object, "summary");
    const auto signature = line(object, "signature");
    if (!version || !page || !summary || !signature ||
        !key.hasSigned(signedText(*version, *page, *summary), *signature)) {
        return std::nullopt;
    }
    const auto number = ReleaseVersion::parse(*version);
    if (!number || !page->starts_with(secureScheme)) {
        return std::nullopt;
    }
    return Release{.version = *version, .number = *number, .page = *page, .summary = *summary};
}

template <typename Bytes>
const unsigned char* start(const Bytes& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

} // namespace

std::optional<ReleaseKey> ReleaseKey::parse(std::string_view base64) {
    auto bytes = parseBase64(base64);
    if (!bytes || bytes->size() != crypto_sign_PUBLICKEYBYTES) {
        return std::nullopt;
    }
    return ReleaseKey(*std::move(bytes));
}

bool ReleaseKey::hasSigned(std::string_view text, std::string_view signature) const {
    const auto bytes = parseBase64(signature);
    return bytes && bytes->size() == crypto_sign_BYTES && ::sodium_init() >= 0 &&
           ::crypto_sign_verify_detached(start(*bytes), start(text), text.size(), start(bytes_)) == 0;
}

std::string signedText(std::string_view version, std::string_view page, std::string_view summary) {
    std::string text = "cindertop release 1"; // of this form, so that no other signed text passes for one
    for (const auto field : {version, page, summary}) {
        text += '\n';
        text += field;
    }
    return text;
}

std::optional<std::vector<Release>> signedReleases(std::string_view feed, const ReleaseKey& key) {
    const auto document = json::parse(feed, nullptr, false);
    if (!document.is_object() || !document.contains("releases") || !document["releases"].is_array()) {
        return std::nullopt;
    }
    std::vector<Release> releases;
    for (const auto& entry : document["releases"]) {
        if (auto release = signedRelease(entry, key)) {
            releases.push_back(*std::move(release));
        }
    }
    return releases;
}

} // namespace cindertop
