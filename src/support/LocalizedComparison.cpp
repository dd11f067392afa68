#include "support/LocalizedComparison.h"

#include "support/UserLocale.h"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <stdexcept>

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

LocalizedComparison::LocalizedComparison(const std::string& locale) : collator_(makeCollator(locale)) {}

const LocalizedComparison& LocalizedComparison::ofUser() {
    static const LocalizedComparison comparison(userLocaleName("LC_COLLATE"));
    return comparison;
}

LocalizedComparison::~LocalizedComparison() = default;

int LocalizedComparison::compare(std::string_view left, std::string_view right) const {
    auto status = U_ZERO_ERROR;
    return collator_->compareUTF8(pieceOf(left), pieceOf(right), status);
}

} // namespace cindertop
