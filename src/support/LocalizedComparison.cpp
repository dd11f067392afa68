#include "support/LocalizedComparison.h"

#include "support/AsciiRanks.h"
#include "support/UserLocale.h"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <vector>

namespace cindertop {

namespace {

icu::StringPiece pieceOf(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

/// ICU itself falls back to the root rules for a locale that it does not know.
std::unique_ptr<const icu::Collator> makeCollator(const std::string& locale) {
    auto status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(
        icu::Collator::createInstance(icu::Locale(icuLocaleName(locale).c_str()), status));
    if (U_SUCCESS(status) != 0) {
        collator->setAttribute(UCOL_STRENGTH, UCOL_SECONDARY, status);
        collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
    }
    if (U_FAILURE(status) != 0) {
        throw std::runtime_error(std::string("ICU has no collation data: ") + u_errorName(status));
    }
    return collator;
}

} // namespace

struct LocalizedComparison::Rules {
    std::unique_ptr<const icu::Collator> collator;
    std::optional<AsciiRanks> asciiRanks = AsciiRanks::of(*collator);
};

LocalizedComparison::LocalizedComparison(const std::string& locale)
    : rules_(std::make_unique<const Rules>(makeCollator(locale))) {}

const LocalizedComparison& LocalizedComparison::ofUser() {
    static const LocalizedComparison comparison(userLocaleName("LC_COLLATE"));
    return comparison;
}

LocalizedComparison::~LocalizedComparison() = default;

int LocalizedComparison::compare(std::string_view left, std::string_view right) const {
    const auto& ascii = rules_->asciiRanks;
    if (ascii && ascii->cover(left) && ascii->cover(right)) {
        return ascii->compare(left, right);
    }
    auto status = U_ZERO_ERROR;
    return rules_->collator->compareUTF8(pieceOf(left), pieceOf(right), status);
}

std::string LocalizedComparison::sortKey(std::string_view text) const {
    const auto wide = icu::UnicodeString::fromUTF8(pieceOf(text));
    std::vector<std::uint8_t> key(text.size() * 3 + 16); // enough for most texts: one call, not two
    auto size = rules_->collator->getSortKey(wide, key.data(), static_cast<std::int32_t>(key.size()));
    if (static_cast<std::size_t>(size) > key.size()) {
        key.resize(static_cast<std::size_t>(size));
        size = rules_->collator->getSortKey(wide, key.data(), size);
    }
    // The key's last byte is a zero that ends it.
    return {key.begin(), key.begin() + std::max(size - 1, 0)};
}

std::vector<std::string> LocalizedComparison::sortKeys(std::span<const std::string_view> texts) const {
    const auto& ascii = rules_->asciiRanks;
    const bool isAscii = ascii && std::ranges::all_of(texts, [&](auto text) { return ascii->cover(text); });
    std::vector<std::string> keys;
    keys.reserve(texts.size());
    for (const std::string_view text : texts) {
        keys.push_back(isAscii ? ascii->sortKey(text) : sortKey(text));
    }
    return keys;
}

} // namespace cindertop
