#pragma once

#include "assistant/ThermalAlert.h"
#include "platform/UserNotificationCenter.h"
#include "support/Enumeration.h"

#include <array>
#include <functional>
#include <memory>

namespace cindertop {

/// How far notifications can be delivered.
enum class SystemNotificationState {
    disabled,      ///< switched off in the application; the system has not been consulted
    notDetermined, ///< the user has not been asked yet
    authorized,
    denied,      ///< the user refused them in the system
    unavailable, ///< the system's answer is unknown, or asking or delivering failed
};

template <>
struct EnumerationTable<SystemNotificationState> {
    using enum SystemNotificationState;
    static constexpr std::array cases{
        EnumerationCase{disabled, "disabled"},       EnumerationCase{notDetermined, "notDetermined"},
        EnumerationCase{authorized, "authorized"},   EnumerationCase{denied, "denied"},
        EnumerationCase{unavailable, "unavailable"},
    };
};

/// Posts alerts as quiet system notifications and reports whether that is possible. It keeps no state of its
/// own: each operation asks the system anew, and several may be under way at once.
///
/// Main thread. Each completion runs there exactly once, at the earliest within the call itself; after the
/// service's destruction none runs any more, and an operation under way goes no further.
class SystemNotificationService final : public UserNotificationCenterDelegate {
public:
    using Completion = std::function<void(SystemNotificationState)>;

    /// Becomes the one delegate of `center`, which must outlive the service. A centre has one service at a
    /// time.
    explicit SystemNotificationService(UserNotificationCenter& center);
    ~SystemNotificationService() override;
    SystemNotificationService(const SystemNotificationService&) = delete;
    SystemNotificationService& operator=(const SystemNotificationService&) = delete;

    /// `isEnabled` is the user's preference: without it the answer is `disabled` and the system is not
    /// consulted. The same holds below. Never prompts.
    void currentState(bool isEnabled, Completion completion);

    /// As `currentState`, but asks the user for permission when that has not been decided yet.
    void prepare(bool isEnabled, Completion completion);

    /// Prepares, and posts the alert when that is authorized. An alert that cannot be posted is not tried
    /// again. `isStillTrue` is called just before posting; if false, nothing is posted and the result is that
    /// of `prepare`.
    void deliver(
        const ThermalAlert& alert, bool isEnabled, Completion completion,
        std::function<bool()> isStillTrue = [] { return true; });

    /// Shows as a banner and in the list, as if the application were not in front; no sound, no badge.
    NotificationPresentationOptions willPresent(const UserNotificationRequest& request) const override;

private:
    void askForPermission(Completion completion);
    void post(const ThermalAlert& alert, Completion completion);

    /// A handler for the centre: it does nothing once the service is gone.
    template <typename Answer>
    std::function<void(Answer)> whileAlive(std::function<void(const Answer&)> handler) const;

    struct Life {};

    UserNotificationCenter& center_;
    std::shared_ptr<const Life> life_;
};

} // namespace cindertop
