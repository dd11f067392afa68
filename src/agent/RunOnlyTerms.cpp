#include "agent/RunOnlyTerms.h"

#include "app/LegalTerms.h"

namespace cindertop::agent {

std::optional<PropertyValue> RunOnlyTerms::value(std::string_view key) const {
    return key == legalTermsAcceptedKey ? PropertyValue(true) : stored_.value(key);
}

void RunOnlyTerms::registerDefaults(const Registration& defaults) {
    stored_.registerDefaults(defaults);
}

void RunOnlyTerms::apply(std::span<const UserDefaultsChange> changes) {
    stored_.apply(changes);
}

} // namespace cindertop::agent
