#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cindertop {

/// The number of a release, such as 0.2.1. Zeros at the end count for nothing: 1.0 is 1.
class ReleaseVersion {
public:
    /// None unless the text is one to four numbers below 2^32, with a point between them.
    static std::optional<ReleaseVersion> parse(std::string_view text);

    auto operator<=>(const ReleaseVersion&) const = default;

private:
    std::vector<std::uint32_t> parts_; ///< ends in no 0
};

/// What the list of releases says of one of them.
struct Release {
    std::string version;
    ReleaseVersion number; ///< the same, to compare
    std::string page;      ///< an https address
    std::string summary;   ///< what is new, in one line; may be empty

    bool operator==(const Release&) const = default;
};

/// The key that releases are signed with: 32 bytes of Ed25519.
class ReleaseKey {
public:
    /// None unless the text is such a key in base64.
    static std::optional<ReleaseKey> parse(std::string_view base64);

    /// `signature` is in base64, too.
    bool hasSigned(std::string_view text, std::string_view signature) const;

private:
    explicit ReleaseKey(std::vector<std::byte> bytes) : bytes_(std::move(bytes)) {}

    std::vector<std::byte> bytes_;
};

/// What the signature of a release is made of.
std::string signedText(std::string_view version, std::string_view page, std::string_view summary);

/// The releases of a list that are sound and signed; the others might be anybody's. None when the text is no
/// list of releases.
std::optional<std::vector<Release>> signedReleases(std::string_view feed, const ReleaseKey& key);

} // namespace cindertop
