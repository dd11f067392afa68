#include "Require.h"
#include "support/Base64.h"
#include "update/ReleaseFeed.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <sodium.h>

namespace {

using namespace cindertop;

/// The key that the releases of the corpus are signed with.
const ReleaseKey& makersKey() {
    static const ReleaseKey key = [] {
        std::array<unsigned char, crypto_sign_SEEDBYTES> seed{};
        std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> open{};
        std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secret{};
        seed.fill(1);
        ::crypto_sign_seed_keypair(open.data(), secret.data(), seed.data());
        return ReleaseKey::parse(base64Text(std::as_bytes(std::span(open)))).value();
    }();
    return key;
}

/// All that was ever signed with it.
constexpr std::array releasesOfTheMaker{
    std::array<std::string_view, 3>{"0.2.0", "https://releases.test/0.2.0", "Reads more sensors."},
    std::array<std::string_view, 3>{"0.10", "https://releases.test/0.10", ""},
};

bool isOfTheMaker(const Release& release) {
    return std::ranges::any_of(releasesOfTheMaker, [&](const auto& fields) {
        return release.version == fields[0] && release.page == fields[1] && release.summary == fields[2];
    });
}

} // namespace

/// Nobody can add a release to a list, nor change one. What is not a list may be a key or a version.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto releases = signedReleases(text, makersKey());
    require(!releases || std::ranges::all_of(*releases, isOfTheMaker));
    const auto bytes = parseBase64(text);
    require(!bytes || parseBase64(base64Text(*bytes)) == bytes);
    const auto version = ReleaseVersion::parse(text);
    require(!version || !(*version < *version));
    return 0;
}
