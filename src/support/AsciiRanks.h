#pragma once

#include <unicode/coll.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// The places of the printable ASCII characters in a language's order. Where such a character always sorts by
/// itself, and upper and lower case alike, a table of bytes sorts texts just as the language's rules do, ten
/// times as fast.
class AsciiRanks {
public:
    /// None for rules that treat some ASCII text otherwise: the Czech "ch", the Danish "aa", the Swedish "w".
    static std::optional<AsciiRanks> of(const icu::Collator& collator);

    /// Whether the text is made of printable ASCII only.
    bool cover(std::string_view text) const;
    /// Below 0, 0 or above 0, for covered texts.
    int compare(std::string_view left, std::string_view right) const;
    /// A covered text's bytes as their places: compared as unsigned bytes, they sort the texts.
    std::string sortKey(std::string_view text) const;

private:
    AsciiRanks() = default;

    unsigned rankOf(char character) const { return ranks_[static_cast<unsigned char>(character)]; }

    std::array<std::uint8_t, 256> ranks_{}; ///< from 1; 0 where a character is not covered
};

} // namespace cindertop
