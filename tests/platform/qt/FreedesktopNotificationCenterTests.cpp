#include "EventLoop.h"
#include "ScriptedNotificationServer.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/PrivateBus.h"
#include "platform/qt/FreedesktopNotificationCenter.h"
#include "scenario/machine/VirtualClock.h"

#include <gtest/gtest.h>

#include <memory>

namespace cindertop::desktop {

namespace {

using Behaviour = ScriptedNotificationServer::Behaviour;
using Status = NotificationAuthorizationStatus;
using Texts = std::vector<std::string>;

constexpr auto clientName = "client";
constexpr auto asked = "cindertop.notifications.asked";

UserNotificationRequest request(std::string body, std::string thread = "cindertop.thermal") {
    return {.identifier = "cindertop.thermal.critical.1",
            .content = {.title = "Q&A <title>",
                        .body = std::move(body),
                        .threadIdentifier = std::move(thread),
                        .categoryIdentifier = "critical",
                        .sound = std::nullopt,
                        .badge = std::nullopt},
            .delay = std::nullopt};
}

class FreedesktopNotificationCenterTest : public ::testing::Test {
protected:
    FreedesktopNotificationCenterTest() {
        application();
        daemon.start();
        openCenter();
    }

    void TearDown() override {
        center.reset();
        QDBusConnection::disconnectFromBus(clientName);
    }

    void openCenter() {
        QDBusConnection::disconnectFromBus(clientName);
        const auto bus = QDBusConnection::connectToBus(QString::fromStdString(daemon.address()), clientName);
        center =
            std::make_unique<FreedesktopNotificationCenter>(bus, clock, defaults, [this] { return isOff; });
    }

    void startServer(uint firstId = 100) {
        server = std::make_unique<ScriptedNotificationServer>(daemon.address(), firstId);
    }

    /// Notes "shown" or "failed".
    void add(UserNotificationRequest wanted) {
        const auto before = results.size();
        center->add(std::move(wanted),
                    [this](const auto& result) { results.emplace_back(result ? "shown" : "failed"); });
        EXPECT_EQ(results.size(), before) << "nothing is answered within the call";
    }

    void awaitResults(std::size_t count) {
        runUntil([&] {
            runDueTimers();
            return results.size() >= count;
        });
    }

    /// What becomes of one notification.
    std::string post(const UserNotificationRequest& wanted) {
        results.clear();
        add(wanted);
        awaitResults(1);
        return results.empty() ? "nothing" : results.front();
    }

    void runDueTimers() {
        while (clock.runNextDue()) {
        }
    }

    Status readStatus() {
        std::optional<Status> status;
        center->readAuthorizationStatus([&](Status read) { status = read; });
        EXPECT_FALSE(status) << "nothing is answered within the call";
        runUntil([&] {
            runDueTimers();
            return status.has_value();
        });
        return status.value_or(Status::ephemeral);
    }

    std::string askForPermission() {
        std::string answer;
        center->requestAuthorization({.alert = true}, [&](const auto& result) {
            answer = !result ? "error" : *result == NotificationPermission::granted ? "granted" : "refused";
        });
        EXPECT_TRUE(answer.empty()) << "nothing is answered within the call";
        runUntil([&] { return !answer.empty(); });
        return answer;
    }

    /// Runs the event loop until the centre has got whatever was sent to it so far.
    void settle() { readStatus(); }

    fakes::FakeUserDefaults defaults;
    bool isOff = false;
    Texts results;
    simulated::VirtualClock clock{Instant{}};
    fakes::TemporaryFolder services;
    linux_platform::PrivateBus daemon{"<servicedir>" + services.path().string() + "</servicedir>"};
    std::unique_ptr<ScriptedNotificationServer> server;
    std::unique_ptr<FreedesktopNotificationCenter> center;
};

TEST_F(FreedesktopNotificationCenterTest, AsksForAQuietNotification) {
    startServer();
    EXPECT_EQ(post(request("warm & <b>humid</b>")), "shown");
    ASSERT_EQ(server->notified.size(), 1U);
    const auto& [arguments, hints] = server->notified.front();
    const QVariantList expected{
        "Cindertop",   0U, "cindertop", "Q&A <title>", "warm &amp; &lt;b&gt;humid&lt;/b&gt;",
        QStringList{}, -1};
    EXPECT_EQ(arguments, expected);
    const QVariantMap expectedHints{{"desktop-entry", "cindertop"},
                                    {"urgency", QVariant::fromValue(uchar{1})},
                                    {"suppress-sound", true},
                                    {"category", "x-cindertop.critical"}};
    EXPECT_EQ(hints, expectedHints);
    EXPECT_EQ(hints["urgency"].metaType(), QMetaType::fromType<uchar>());

    auto loud = request("");
    loud.content.sound = "bell";
    loud.content.interruptionLevel = NotificationInterruptionLevel::critical;
    EXPECT_EQ(post(loud), "shown");
    EXPECT_EQ(server->notified.back().hints["sound-name"], "bell");
    EXPECT_EQ(server->notified.back().hints["suppress-sound"], false);
    EXPECT_EQ(server->notified.back().hints["urgency"], QVariant::fromValue(uchar{2}));

    auto later = request("");
    later.delay = Seconds{1};
    EXPECT_EQ(post(later), "failed");
    EXPECT_EQ(server->notified.size(), 2U);
}

TEST_F(FreedesktopNotificationCenterTest, ReplacesTheNotificationOfTheSameThread) {
    startServer();
    add(request("first")); // while it is under way, its number is not known yet
    add(request("second"));
    add(request("elsewhere", "other"));
    add(request("apart", ""));
    add(request("third"));
    awaitResults(5);
    EXPECT_EQ(results, Texts(5, "shown"));
    std::vector<std::pair<std::string, uint>> replaced;
    for (const auto& notified : server->notified) {
        replaced.emplace_back(notified.body().toStdString(), notified.replacedId());
    }
    EXPECT_EQ(replaced, (decltype(replaced){
                            {"first", 0}, {"second", 100}, {"elsewhere", 0}, {"apart", 0}, {"third", 100}}));
    EXPECT_EQ(server->capabilityReads, 1);
}

TEST_F(FreedesktopNotificationCenterTest, BeginsAnewWithAnotherServer) {
    EXPECT_EQ(post(request("too early")), "failed");
    startServer();
    EXPECT_EQ(post(request("a & b")), "shown");
    server->behaviour = Behaviour::hangs;
    results.clear();
    add(request("lost"));
    add(request("lost, too"));
    runUntil([&] { return server->notified.size() == 2; });
    server.reset(); // the bus tells at once that no answer will come
    awaitResults(2);
    EXPECT_EQ(results, Texts(2, "failed"));
    EXPECT_EQ(readStatus(), Status::unknown);

    startServer(500);
    server->capabilities = {"body"};
    EXPECT_EQ(post(request("a & b")), "shown");
    ASSERT_EQ(server->notified.size(), 1U);
    EXPECT_EQ(server->notified.front().replacedId(), 0U);
    EXPECT_EQ(server->notified.front().body(), "a & b");
    EXPECT_EQ(post(request("again")), "shown");
    EXPECT_EQ(server->notified.back().replacedId(), 500U);
}

TEST_F(FreedesktopNotificationCenterTest, KeepsNoNumberOfAServerThatHasBeenReplaced) {
    startServer(100);
    EXPECT_EQ(post(request("shown")), "shown");
    server->behaviour = Behaviour::hangs;
    results.clear();
    add(request("under way"));
    runUntil([&] { return server->notified.size() == 2; });
    const auto former = std::move(server);
    former->resign();
    startServer(500);
    settle();
    former->answerLate(100U);
    awaitResults(1);
    EXPECT_EQ(post(request("next")), "shown");
    EXPECT_EQ(server->notified.back().replacedId(), 0U);
}

TEST_F(FreedesktopNotificationCenterTest, TellsThatANotificationFailed) {
    startServer();
    for (const auto behaviour : {Behaviour::fails, Behaviour::answersNonsense}) {
        server->behaviour = behaviour;
        EXPECT_EQ(post(request("asked for capabilities")), "failed");
        EXPECT_TRUE(server->notified.empty());
    }
    server->behaviour = Behaviour::answers;
    EXPECT_EQ(post(request("fine")), "shown");
    for (const auto behaviour : {Behaviour::fails, Behaviour::answersNonsense}) {
        server->behaviour = behaviour;
        EXPECT_EQ(post(request("asked to show")), "failed");
    }
    server->behaviour = Behaviour::answers;
    EXPECT_EQ(post(request("fine")), "shown");
    EXPECT_EQ(server->notified.back().replacedId(), 100U);
}

TEST_F(FreedesktopNotificationCenterTest, WaitsForNoHungServer) {
    startServer();
    server->behaviour = Behaviour::hangs;
    add(request("hangs"));
    add(request("waits behind it"));
    runUntil([&] { return server->capabilityReads == 1; });
    server->behaviour = Behaviour::answers;
    EXPECT_EQ(clock.nextDue(), Instant{} + BusCalls::timeLimit);
    clock.advanceTo(Instant{} + BusCalls::timeLimit);
    runDueTimers();
    EXPECT_EQ(results, Texts{"failed"});
    awaitResults(2);
    EXPECT_EQ(results, (Texts{"failed", "shown"}));
    settle();
    EXPECT_EQ(results.size(), 2U);
}

TEST_F(FreedesktopNotificationCenterTest, TellsWhatIsAllowed) {
    EXPECT_EQ(readStatus(), Status::unknown);
    startServer();
    EXPECT_EQ(readStatus(), Status::notDetermined);
    isOff = true;
    EXPECT_EQ(readStatus(), Status::denied);
    EXPECT_TRUE(defaults.changes.empty());
    EXPECT_EQ(askForPermission(), "refused");
    EXPECT_EQ(defaults.stored.at(asked), PropertyValue{true});
    isOff = false;
    EXPECT_EQ(readStatus(), Status::authorized);
    EXPECT_EQ(askForPermission(), "granted");

    server.reset();
    EXPECT_EQ(askForPermission(), "error");
    EXPECT_EQ(readStatus(), Status::unknown);
}

TEST_F(FreedesktopNotificationCenterTest, CountsAServerThatTheBusCanStart) {
    fakes::writeText(services / "notifications.service",
                     "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=/bin/false\n");
    daemon.stop();
    EXPECT_EQ(readStatus(), Status::unknown);
    EXPECT_EQ(post(request("into the void")), "failed");
    daemon.start();
    openCenter();
    EXPECT_EQ(readStatus(), Status::notDetermined);
    EXPECT_EQ(askForPermission(), "granted");
    EXPECT_EQ(post(request("it does not start")), "failed");
}

TEST_F(FreedesktopNotificationCenterTest, AnswersWithoutABusAndAsManyTimesAsAsked) {
    center = std::make_unique<FreedesktopNotificationCenter>(QDBusConnection("none"), clock, defaults,
                                                             [] { return false; });
    EXPECT_EQ(readStatus(), Status::unknown);
    add(request("nowhere"));
    add(request("nowhere"));
    runDueTimers();
    EXPECT_EQ(results, Texts(2, "failed"));
}

TEST_F(FreedesktopNotificationCenterTest, AnswersNothingOnceDestroyed) {
    startServer();
    server->behaviour = Behaviour::hangs;
    add(request("under way"));
    add(request("behind it"));
    runUntil([&] { return server->capabilityReads == 1; });
    center->readAuthorizationStatus([this](Status) { results.emplace_back("status"); });
    center.reset();
    EXPECT_FALSE(clock.nextDue());

    openCenter();
    server->behaviour = Behaviour::answers;
    center->add(request("one's own end"), [this](const auto&) {
        center.reset();
        results.emplace_back("destroyed");
    });
    awaitResults(1);
    EXPECT_EQ(results, Texts{"destroyed"});
}

} // namespace

TEST_F(FreedesktopNotificationCenterTest, GoesOnWithTheServerOfAnotherBus) {
    startServer(100);
    EXPECT_EQ(post(request("before")), "shown");
    int changes = 0;
    center->observeServer([&] { ++changes; });
    center->useBus(QDBusConnection("no such connection"));
    EXPECT_EQ(post(request("without")), "failed");
    EXPECT_EQ(readStatus(), Status::unknown);
    EXPECT_EQ(changes, 1);

    server.reset();
    linux_platform::PrivateBus other;
    other.start();
    constexpr auto otherName = "another";
    center->useBus(QDBusConnection::connectToBus(QString::fromStdString(other.address()), otherName));
    EXPECT_EQ(changes, 2);
    {
        const ScriptedNotificationServer late(other.address(), 7);
        runUntil([&] { return changes == 3; });
        EXPECT_EQ(post(request("after")), "shown");
    }
    center.reset();
    QDBusConnection::disconnectFromBus(otherName);
}

} // namespace cindertop::desktop
