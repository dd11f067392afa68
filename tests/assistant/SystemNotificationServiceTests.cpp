#include "assistant/AssistantInputs.h"
#include "assistant/SystemNotificationService.h"
#include "fakes/FakeUserNotificationCenter.h"

#include <gtest/gtest.h>

#include <memory>
#include <ranges>

namespace cindertop::testing {

namespace {

using State = SystemNotificationState;
using Status = NotificationAuthorizationStatus;

const ThermalAlert alert{ThermalAlertKind::critical, "Title", "Body", at(0.9)};

class SystemNotificationServiceTest : public ::testing::Test {
protected:
    /// Notes the state with which an operation completes.
    SystemNotificationService::Completion noting() {
        return [this](State state) { states.push_back(state); };
    }

    /// The current state, that after preparing, and that after delivering.
    std::vector<State> operate(bool isEnabled = true) {
        states.clear();
        service->currentState(isEnabled, noting());
        service->prepare(isEnabled, noting());
        service->deliver(alert, isEnabled, noting());
        return states;
    }

    fakes::FakeUserNotificationCenter center;
    std::unique_ptr<SystemNotificationService> service = std::make_unique<SystemNotificationService>(center);
    std::vector<State> states;
};

TEST_F(SystemNotificationServiceTest, TellsWhatTheSystemAllows) {
    for (const auto& [status, state] : {std::pair{Status::denied, State::denied},
                                        {Status::authorized, State::authorized},
                                        {Status::provisional, State::authorized},
                                        {Status::ephemeral, State::authorized},
                                        {Status::unknown, State::unavailable}}) {
        center.status = status;
        center.posted.clear();
        EXPECT_EQ(operate(), std::vector(3, state));
        EXPECT_EQ(center.posted.size(), state == State::authorized ? 1U : 0U);
    }
    center.statusReads = 0;
    center.status = Status::notDetermined;
    center.posted.clear();
    EXPECT_EQ(operate(false), std::vector(3, State::disabled));
    EXPECT_EQ(center.statusReads, 0);
    EXPECT_TRUE(center.posted.empty());
    EXPECT_TRUE(center.prompts.empty());
}

TEST_F(SystemNotificationServiceTest, AsksOnceForAlertsOnly) {
    using enum SystemNotificationState;
    center.status = Status::notDetermined;
    EXPECT_EQ(operate(), (std::vector{notDetermined, authorized, authorized}));
    EXPECT_EQ(center.prompts, std::vector{NotificationAuthorizationOptions{.alert = true}});

    center.status = Status::notDetermined;
    center.answer = NotificationPermission::refused;
    EXPECT_EQ(operate(), (std::vector{notDetermined, denied, denied}));
    EXPECT_EQ(center.prompts.size(), 2U);

    center.status = Status::notDetermined;
    center.answer = std::unexpected(NotificationError{"no reply"});
    EXPECT_EQ(operate(), (std::vector{notDetermined, unavailable, unavailable}));
    EXPECT_EQ(center.posted.size(), 1U);
}

TEST_F(SystemNotificationServiceTest, PostsAQuietNotificationInTheCallThatAsks) {
    center.status = Status::notDetermined;
    service->deliver(alert, true, noting());
    EXPECT_EQ(states, std::vector{State::authorized});
    EXPECT_EQ(center.prompts.size(), 1U);
    const UserNotificationRequest expected{
        .identifier = "cindertop.thermal.critical.1731760000",
        .content = {.title = "Title",
                    .body = "Body",
                    .threadIdentifier = "cindertop.thermal",
                    .categoryIdentifier = "critical",
                    .interruptionLevel = NotificationInterruptionLevel::active,
                    .sound = {},
                    .badge = {}},
        .delay = {}};
    EXPECT_EQ(center.posted, std::vector{expected});

    center.delivery = std::unexpected(NotificationError{"no server"});
    EXPECT_EQ(operate(), (std::vector{State::authorized, State::authorized, State::unavailable}));
}

TEST_F(SystemNotificationServiceTest, AnswersSeveralCallsAtOnceEachByItself) {
    center.holdsAnswers = true;
    service->currentState(true, noting());
    service->deliver(alert, true, noting());
    center.status = Status::denied;
    EXPECT_TRUE(center.answerNext());
    center.status = Status::provisional;
    EXPECT_TRUE(center.answerNext());
    EXPECT_EQ(states, std::vector{State::denied});
    EXPECT_TRUE(center.answerNext());
    EXPECT_EQ(states, (std::vector{State::denied, State::authorized}));
    EXPECT_FALSE(center.answerNext());
}

TEST_F(SystemNotificationServiceTest, GoesNoFurtherOnceDestroyed) {
    center.holdsAnswers = true;
    for (const int answersBefore : {0, 1, 2}) { // of the status, the prompt, the delivery
        center.status = Status::notDetermined;
        service = nullptr;
        service = std::make_unique<SystemNotificationService>(center);
        service->deliver(alert, true, noting());
        for ([[maybe_unused]] const int answer : std::views::iota(0, answersBefore)) {
            ASSERT_TRUE(center.answerNext());
        }
        service = nullptr;
        EXPECT_TRUE(center.answerNext());
        EXPECT_FALSE(center.answerNext());
        EXPECT_TRUE(states.empty());
    }
    EXPECT_EQ(center.prompts.size(), 2U);
}

} // namespace

} // namespace cindertop::testing
