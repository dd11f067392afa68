#pragma once

#include "platform/UserDefaults.h"
#include "terminal/Output.h"

#include <optional>

namespace cindertop::agent {

/// Shows what the terms of use say and asks on the terminal whether the user accepts them. None when
/// `interruption` became readable before there was an answer.
std::optional<bool> askForTerms(const cli::Output& output, int input, int interruption);

/// The user's preferences with the terms of use accepted, which is not stored.
class TermsAcceptedForRun final : public UserDefaults {
public:
    /// `stored` must outlive this.
    explicit TermsAcceptedForRun(UserDefaults& stored) : stored_(stored) {}

    std::optional<PropertyValue> value(std::string_view key) const override;
    void registerDefaults(const Registration& defaults) override;
    void apply(std::span<const UserDefaultsChange> changes) override;

private:
    UserDefaults& stored_;
};

} // namespace cindertop::agent
