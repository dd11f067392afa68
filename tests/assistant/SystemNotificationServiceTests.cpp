#include "assistant/AssistantInputs.h"
#include "assistant/SystemNotificationService.h"
#include "fakes/FakeUserNotificationCenter.h"

#include <gtest/gtest.h>

#include <memory>

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

    State currentState() {
        service->currentState(true, noting());
        return states.back();
    }

    State prepare() {
        service->prepare(true, noting());
        return states.back();
    }

    State deliver() {
        service->deliver(alert, true, noting());
        return states.back();
    }

    fakes::FakeUserNotificationCenter center;
    std::unique_ptr<SystemNotificationService> service = std::make_unique<SystemNotificationService>(center);
    std::vector<State> states;
};

TEST_F(SystemNotificationServiceTest, ConsultsNobodyWhileSwitchedOff) {
    center.status = Status::notDetermined;
    service->currentState(false, noting());
    service->prepare(false, noting());
    service->deliver(alert, false, noting());
    EXPECT_EQ(states, std::vector(3, State::disabled));
    EXPECT_EQ(center.statusReads, 0);
    EXPECT_TRUE(center.prompts.empty());
}

TEST_F(SystemNotificationServiceTest, TellsWhatTheSystemAllows) {
    struct Case {
        Status status;
        State state;
        std::size_t posted;
    };

    for (const auto& [status, state, posted] : std::to_array<Case>({
             {Status::denied, State::denied, 0},
             {Status::authorized, State::authorized, 1},
             {Status::provisional, State::authorized, 1},
             {Status::ephemeral, State::authorized, 1},
             {Status::unknown, State::unavailable, 0},
         })) {
        center.status = status;
        center.posted.clear();
        EXPECT_EQ(currentState(), state);
        EXPECT_EQ(prepare(), state);
        EXPECT_EQ(deliver(), state);
        EXPECT_EQ(center.posted.size(), posted);
    }
    EXPECT_TRUE(center.prompts.empty());

    center.status = Status::notDetermined;
    EXPECT_EQ(currentState(), State::notDetermined);
    EXPECT_TRUE(center.prompts.empty());
}

TEST_F(SystemNotificationServiceTest, AsksForAlertsOnlyAndPostsWithinTheSameCall) {
    center.status = Status::notDetermined;
    EXPECT_EQ(deliver(), State::authorized);
    EXPECT_EQ(center.prompts, std::vector{NotificationAuthorizationOptions{.alert = true}});
    EXPECT_EQ(center.posted.size(), 1U);

    center.status = Status::notDetermined;
    center.answer = NotificationPermission::refused;
    EXPECT_EQ(deliver(), State::denied);
    EXPECT_EQ(prepare(), State::denied);
    EXPECT_EQ(center.prompts.size(), 2U); // once decided, nobody is asked again

    center.status = Status::notDetermined;
    center.answer = std::unexpected(NotificationError{"no reply"});
    EXPECT_EQ(prepare(), State::unavailable);
    EXPECT_EQ(deliver(), State::unavailable);
    EXPECT_EQ(center.posted.size(), 1U);
}

TEST_F(SystemNotificationServiceTest, PostsAQuietNotification) {
    EXPECT_EQ(deliver(), State::authorized);
    const UserNotificationRequest expected{
        .identifier = "cindertop.thermal.critical.1731760000",
        .content = {.title = "Title",
                    .body = "Body",
                    .threadIdentifier = "cindertop.thermal",
                    .categoryIdentifier = "critical",
                    .interruptionLevel = NotificationInterruptionLevel::active,
                    .sound = std::nullopt,
                    .badge = std::nullopt},
        .delay = std::nullopt};
    EXPECT_EQ(center.posted, std::vector{expected});

    center.delivery = std::unexpected(NotificationError{"no server"});
    EXPECT_EQ(deliver(), State::unavailable);
    EXPECT_EQ(center.posted.size(), 1U);
}

TEST_F(SystemNotificationServiceTest, ShowsNotificationsWhileInFront) {
    ASSERT_EQ(center.delegate, service.get());
    EXPECT_EQ(center.delegate->willPresent({}),
              (NotificationPresentationOptions{.banner = true, .list = true}));
    service.reset();
    EXPECT_EQ(center.delegate, nullptr);
}

TEST_F(SystemNotificationServiceTest, AnswersSeveralCallsAtOnceEachByItself) {
    center.holdsAnswers = true;
    service->currentState(true, noting());
    service->deliver(alert, true, noting());
    EXPECT_TRUE(states.empty());
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
    // At the status, at the prompt, at the delivery: the answer finds the service gone.
    for (const int answersBefore : {0, 1, 2}) {
        center.holdsAnswers = true;
        center.status = Status::notDetermined;
        center.posted.clear();
        const auto promptsBefore = center.prompts.size();
        service.reset();
        service = std::make_unique<SystemNotificationService>(center);
        service->deliver(alert, true, noting());
        for (int answer = 0; answer < answersBefore; ++answer) {
            ASSERT_TRUE(center.answerNext());
        }
        service.reset();
        EXPECT_TRUE(center.answerNext());
        EXPECT_FALSE(center.answerNext());
        EXPECT_TRUE(states.empty());
        EXPECT_EQ(center.prompts.size() - promptsBefore, answersBefore == 0 ? 0U : 1U);
    }
}

TEST_F(SystemNotificationServiceTest, MayBeDestroyedByACompletion) {
    service->deliver(alert, true, [this](State state) {
        service.reset();
        states.push_back(state);
    });
    EXPECT_EQ(states, std::vector{State::authorized});
}

} // namespace

} // namespace cindertop::testing
