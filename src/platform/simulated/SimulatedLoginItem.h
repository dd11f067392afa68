#pragma once

#include "platform/LoginItem.h"

namespace cindertop::simulated {

/// Not registered at first; whatever is asked succeeds.
class SimulatedLoginItem final : public LoginItem {
public:
    LoginItemStatus status() const override { return status_; }

    std::expected<void, LoginItemError> registerItem() override {
        status_ = LoginItemStatus::enabled;
        return {};
    }

    std::expected<void, LoginItemError> unregisterItem() override {
        status_ = LoginItemStatus::notRegistered;
        return {};
    }

private:
    LoginItemStatus status_{LoginItemStatus::notRegistered};
};

} // namespace cindertop::simulated
