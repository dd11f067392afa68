#pragma once

#include "platform/LoginItem.h"

#include <optional>

namespace cindertop::fakes {

/// Does what it is asked, or fails with `error`.
class FakeLoginItem final : public LoginItem {
public:
    LoginItemStatus answer{LoginItemStatus::notRegistered};
    std::optional<LoginItemError> error;

    LoginItemStatus status() const override { return answer; }

    std::expected<void, LoginItemError> registerItem() override { return become(LoginItemStatus::enabled); }

    std::expected<void, LoginItemError> unregisterItem() override {
        return become(LoginItemStatus::notRegistered);
    }

private:
    std::expected<void, LoginItemError> become(LoginItemStatus status) {
        if (error) {
            return std::unexpected(*error);
        }
        answer = status;
        return {};
    }
};

} // namespace cindertop::fakes
