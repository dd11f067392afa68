#include "BusClient.h"
#include "PlayedAgent.h"
#include "agent/AgentBus.h"
#include "platform/linux/PrivateBus.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace cindertop::agent {
namespace {

using namespace std::chrono_literals;
using desktop::Connection;
using linux_platform::PrivateBus;

constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

class AgentBusTest : public testing::Test {
protected:
    AgentBusTest() {
        desktop::application();
        daemon.start();
    }

    PrivateBus daemon;
};

/// The played program on the bus, and somebody who talks to it.
struct Conversation {
    PlayedAgent agent;
    Connection connection;
    AgentBus bus;
    BusClient client;

    explicit Conversation(const PrivateBus& daemon, std::string_view more = "")
        : agent(PlayedAgent::hotFrames, more),
          connection(daemon, "agent"),
          bus(connection.connection, agent.state, agent.actions()),
          client(daemon) {
        EXPECT_EQ(bus.claimName(), AgentBus::Claim::done);
    }

    void tick(std::chrono::nanoseconds sinceStart) {
        agent.passTo(sinceStart);
        bus.publishTick();
    }

    /// The next thing announced that nobody has looked at.
    Announcement heard() {
        desktop::runUntil([this] { return !client.announcements.empty(); });
        const auto first = client.announcements.front();
        client.announcements.erase(client.announcements.begin());
        return first;
    }

    /// An answer comes after everything that was announced before it.
    bool isSilent() const {
        client.property("Version");
        return client.announcements.empty();
    }
};

TEST_F(AgentBusTest, ClaimsTheNameOnce) {
    PlayedAgent agent;
    const Connection second(daemon, "second");
    AgentBus late(second.connection, agent.state, agent.actions());
    {
        const Connection first(daemon, "first");
        AgentBus bus(first.connection, agent.state, agent.actions());
        EXPECT_EQ(bus.claimName(), AgentBus::Claim::done);
        EXPECT_EQ(late.claimName(), AgentBus::Claim::taken);
    }
    const AgentBus next(second.connection, agent.state, agent.actions());
    AgentBus none(QDBusConnection("no such connection"), agent.state, agent.actions());
    EXPECT_EQ(none.claimName(), AgentBus::Claim::refused);
}

TEST_F(AgentBusTest, MovesToAnotherConnection) {
    PlayedAgent agent;
    const Connection first(daemon, "first");
    AgentBus bus(first.connection, agent.state, agent.actions());
    EXPECT_EQ(bus.claimName(), AgentBus::Claim::done);
    EXPECT_EQ(bus.useBus(QDBusConnection("no such connection")), AgentBus::Claim::refused);
    bus.publishTick();
    const Connection second(daemon, "second");
    EXPECT_EQ(bus.useBus(second.connection), AgentBus::Claim::done);
    BusClient client(daemon);
    EXPECT_EQ(client.property("Level"), "normal");
    agent.state.setPaused(true);
    desktop::runUntil([&] { return !client.announcements.empty(); });
    EXPECT_EQ(client.announcements.front().changed.at("Paused"), "true");
}

TEST_F(AgentBusTest, Answers) {
    const Conversation talk(daemon);

    struct Case {
        const char* interface;
        const char* member;
        QStringList texts;
        std::string error; ///< the last word of its name
    };

    for (const auto& [interface, member, texts, error] : std::vector<Case>{
             {"app.cindertop.Agent", "Settings", {}, ""},
             {"app.cindertop.Agent", "SaveHistory", {}, ""},
             {"app.cindertop.Agent", "Nonsense", {}, "UnknownMethod"},
             {"app.cindertop.Agent", "Pause", {"now"}, "InvalidArgs"},
             {"app.cindertop.Other", "Pause", {}, "UnknownInterface"},
             {propertiesInterface, "Get", {"app.cindertop.Agent", "Paused"}, ""},
             {propertiesInterface, "Get", {"app.cindertop.Agent", "Nonsense"}, "UnknownProperty"},
             {propertiesInterface, "Get", {"app.cindertop.Other", "Paused"}, "UnknownInterface"},
             {propertiesInterface, "Get", {"app.cindertop.Agent"}, "UnknownMethod"},
             {propertiesInterface, "GetAll", {"app.cindertop.Other"}, "UnknownInterface"},
             {propertiesInterface, "Set", {"app.cindertop.Agent", "Paused", "true"}, "PropertyReadOnly"},
             {propertiesInterface, "Nonsense", {}, "UnknownMethod"},
             {"org.freedesktop.DBus.Peer", "Ping", {}, ""},
         }) {
        const auto name = talk.client.errorOf(interface, member, texts);
        EXPECT_EQ(name.substr(name.rfind('.') + 1), error) << interface << ' ' << member;
    }
    // Every property that is told is announced in the description, and the other way round.
    const auto description = talk.client.introspection();
    const auto properties = talk.client.allProperties("app.cindertop.Agent");
    std::size_t described = 0;
    for (auto at = description.find("<property "); at != std::string::npos;
         at = description.find("<property ", at + 1)) {
        ++described;
    }
    EXPECT_EQ(described, properties.size());
    for (const auto& [name, value] : properties) {
        EXPECT_TRUE(description.contains("<property name=\"" + name + '"')) << name;
    }
}

TEST_F(AgentBusTest, AnnouncesWhatChanges) {
    Conversation talk(daemon, R"("termsAccepted": false, )");
    EXPECT_EQ(talk.client.property("TermsAccepted"), "false");
    talk.client.tell("AcceptTerms");
    auto heard = talk.heard();
    EXPECT_EQ(heard.changed, (Texts{{"TermsAccepted", "true"}}));
    EXPECT_TRUE(heard.invalidated.isEmpty()) << "nobody has read the snapshot";

    talk.tick(0s);
    heard = talk.heard();
    EXPECT_EQ(heard.changed.at("Level"), "serious");
    EXPECT_EQ(heard.changed.at("Status"), "serious");
    EXPECT_FALSE(heard.changed.contains("Paused"));
    EXPECT_FALSE(heard.changed.contains("Snapshot")) << "too long to send unasked";

    talk.bus.publishTick();
    EXPECT_TRUE(talk.isSilent());
    EXPECT_TRUE(talk.client.property("Snapshot").starts_with("{\"score\":{"));
    talk.bus.publishTick();
    heard = talk.heard();
    EXPECT_TRUE(heard.changed.empty());
    EXPECT_EQ(heard.invalidated, QStringList("Snapshot"));
    talk.bus.publishTick();
    EXPECT_TRUE(talk.isSilent()) << "told already";

    // Whoever changes it: no call and no tick comes here.
    talk.client.property("Snapshot");
    talk.agent.state.setPaused(true);
    heard = talk.heard();
    EXPECT_EQ(heard.changed.at("Paused"), "true");
    EXPECT_EQ(heard.changed.at("Status"), "paused");
    EXPECT_EQ(heard.changed.at("Level"), "");
    EXPECT_EQ(heard.invalidated, QStringList("Snapshot"));

    talk.agent.state.set(&AppSettingsFields::notificationsEnabled, true);
    talk.agent.runTasks();
    EXPECT_EQ(talk.heard().changed, (Texts{{"NotificationState", "authorized"}}));
}

TEST_F(AgentBusTest, LivesOnWithoutItsBus) {
    Conversation talk(daemon);
    daemon.stop();
    desktop::runUntil([&] { return !talk.connection.connection.isConnected(); });
    talk.tick(4s);
    talk.agent.state.setPaused(true);
    talk.bus.publishChanges();
    EXPECT_EQ(talk.bus.claimName(), AgentBus::Claim::refused);
    EXPECT_TRUE(*talk.agent.state.published().isPaused);
}

} // namespace
} // namespace cindertop::agent
