#include "support/AsciiRanks.h"

#include <unicode/uniset.h>
#include <unicode/unistr.h>
#include <unicode/usetiter.h>

#include <algorithm>
#include <memory>
#include <ranges>
#include <vector>

namespace cindertop {

namespace {

constexpr char16_t firstPrintable = u' ';
constexpr char16_t lastPrintable = u'~';

bool isAscii(const icu::UnicodeString& text) {
    for (std::int32_t index = 0; index < text.length(); ++index) {
        if (text[index] > lastPrintable) {
            return false;
        }
    }
    return true;
}

/// Whether the language orders some ASCII text otherwise than all languages do by default.
bool changesAscii(const icu::Collator& collator, UErrorCode& status) {
    const std::unique_ptr<const icu::UnicodeSet> changed(collator.getTailoredSet(status));
    if (U_FAILURE(status) != 0 || changed->containsSome(firstPrintable, lastPrintable) != 0) {
        return true;
    }
    for (icu::UnicodeSetIterator entry(*changed); entry.nextRange() != 0;) {
        if (entry.isString() != 0 && isAscii(entry.getString())) {
            return true;
        }
    }
    return false;
}

/// Whether digits count as numbers, punctuation is skipped, or case matters.
bool hasSpecialRules(const icu::Collator& collator, UErrorCode& status) {
    return collator.getAttribute(UCOL_NUMERIC_COLLATION, status) != UCOL_OFF ||
           collator.getAttribute(UCOL_ALTERNATE_HANDLING, status) != UCOL_NON_IGNORABLE ||
           collator.getAttribute(UCOL_CASE_LEVEL, status) != UCOL_OFF;
}

} // namespace

std::optional<AsciiRanks> AsciiRanks::of(const icu::Collator& collator) {
    auto status = U_ZERO_ERROR;
    if (hasSpecialRules(collator, status) || changesAscii(collator, status)) {
        return std::nullopt;
    }
    // Letters apart, accents alike: then no difference is weaker than any that follows in a text.
    const std::unique_ptr<icu::Collator> letters(collator.clone());
    letters->setAttribute(UCOL_STRENGTH, UCOL_PRIMARY, status);

    const auto printable = std::views::iota(firstPrintable, static_cast<char16_t>(lastPrintable + 1));
    std::vector<char16_t> sorted(printable.begin(), printable.end());
    const auto compared = [&](char16_t left, char16_t right) {
        return letters->compare(icu::UnicodeString(left), icu::UnicodeString(right), status);
    };
    std::ranges::stable_sort(sorted,
                             [&](char16_t left, char16_t right) { return compared(left, right) < 0; });

    AsciiRanks ranks;
    std::uint8_t rank = 1;
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        if (index > 0 && compared(sorted[index - 1], sorted[index]) != UCOL_EQUAL) {
            ++rank;
        } else if (index > 0 && collator.compare(icu::UnicodeString(sorted[index - 1]),
                                                 icu::UnicodeString(sorted[index]), status) != UCOL_EQUAL) {
            return std::nullopt;
        }
        ranks.ranks_[sorted[index]] = rank;
    }
    const bool skipsTheFirst =
        letters->compare(icu::UnicodeString(sorted.front()), icu::UnicodeString(), status) == UCOL_EQUAL;
    return U_FAILURE(status) != 0 || skipsTheFirst ? std::nullopt : std::optional(ranks);
}

bool AsciiRanks::cover(std::string_view text) const {
    return std::ranges::all_of(text, [this](char character) { return rankOf(character) != 0; });
}

int AsciiRanks::compare(std::string_view left, std::string_view right) const {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t index = 0; index < common; ++index) {
        if (const unsigned first = rankOf(left[index]), second = rankOf(right[index]); first != second) {
            return first < second ? -1 : 1;
        }
    }
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

std::string AsciiRanks::sortKey(std::string_view text) const {
    std::string key(text);
    std::ranges::transform(key, key.begin(),
                           [this](char character) { return static_cast<char>(rankOf(character)); });
    return key;
}

} // namespace cindertop
