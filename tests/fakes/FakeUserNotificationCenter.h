#pragma once

#include "platform/UserNotificationCenter.h"

#include <deque>
#include <expected>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace cindertop::fakes {

/// Answers from a script and notes what it was asked: at once, or when the test says so.
class FakeUserNotificationCenter final : public UserNotificationCenter {
public:
    NotificationAuthorizationStatus status{NotificationAuthorizationStatus::authorized};
    /// The user's answer, which the status then follows; an error leaves it.
    std::expected<NotificationPermission, NotificationError> answer{NotificationPermission::granted};
    /// What becomes of a request; only an accepted one is `posted`.
    std::expected<void, NotificationError> delivery{};
    bool holdsAnswers{false};

    int statusReads{0};
    std::vector<NotificationAuthorizationOptions> prompts;
    std::vector<UserNotificationRequest> posted;
    const UserNotificationCenterDelegate* delegate{nullptr};

    void setDelegate(const UserNotificationCenterDelegate* newDelegate) override {
        if (delegate != nullptr && newDelegate != nullptr) {
            throw std::logic_error("the former delegate has not taken itself away");
        }
        delegate = newDelegate;
    }

    void readAuthorizationStatus(StatusCompletion completion) override {
        ++statusReads;
        answerWith([this, completion = std::move(completion)] { completion(status); });
    }

    void requestAuthorization(NotificationAuthorizationOptions options,
                              PermissionCompletion completion) override {
        prompts.push_back(options);
        answerWith([this, completion = std::move(completion)] {
            if (answer) {
                status = *answer == NotificationPermission::granted
                             ? NotificationAuthorizationStatus::authorized
                             : NotificationAuthorizationStatus::denied;
            }
            completion(answer);
        });
    }

    void add(UserNotificationRequest request, AddCompletion completion) override {
        answerWith([this, request = std::move(request), completion = std::move(completion)] {
            if (delivery) {
                posted.push_back(request);
            }
            completion(delivery);
        });
    }

    /// Gives the oldest answer held back; false when there is none.
    bool answerNext() {
        if (held_.empty()) {
            return false;
        }
        const auto next = std::move(held_.front());
        held_.pop_front();
        next();
        return true;
    }

private:
    void answerWith(std::function<void()> reply) {
        if (holdsAnswers) {
            held_.push_back(std::move(reply));
        } else {
            reply();
        }
    }

    std::deque<std::function<void()>> held_;
};

} // namespace cindertop::fakes
