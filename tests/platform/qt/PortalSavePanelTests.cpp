#include "EventLoop.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/PrivateBus.h"
#include "platform/qt/PortalSavePanel.h"
#include "scenario/machine/VirtualClock.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <array>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace cindertop::desktop {

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";

/// A portal with its own connection to the bus, whose user answers when the test says so.
class ScriptedPortal final : public QDBusVirtualObject {
public:
    bool hasFileChooser = true;
    bool isOld = false; ///< chooses the names of requests itself
    std::vector<QVariantList> asked;
    QVariantMap options; ///< of the last
    int closed = 0;

    explicit ScriptedPortal(const std::string& busAddress)
        : connection_(QDBusConnection::connectToBus(QString::fromStdString(busAddress), "portal")) {
        connection_.registerVirtualObject("/", this, QDBusConnection::SubPath);
        connection_.registerService(service);
    }

    ~ScriptedPortal() override {
        if (connection_.isConnected()) {
            connection_.unregisterService(service);
        }
        QDBusConnection::disconnectFromBus("portal");
    }

    ScriptedPortal(const ScriptedPortal&) = delete;
    ScriptedPortal& operator=(const ScriptedPortal&) = delete;

    void answer(uint response, const QStringList& addresses) {
        auto signal = QDBusMessage::createSignal(handle_, "org.freedesktop.portal.Request", "Response");
        signal.setArguments({response, QVariantMap{{"uris", addresses}}});
        connection_.send(signal);
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        closed += message.member() == "Close" ? 1 : 0;
        if (message.member() != "SaveFile" || message.signature() != "ssa{sv}" || !hasFileChooser) {
            return false;
        }
        asked.push_back(message.arguments());
        options = qdbus_cast<QVariantMap>(message.arguments().at(2));
        auto sender = message.service();
        sender.remove(0, 1).replace('.', '_');
        handle_ = "/org/freedesktop/portal/desktop/request/" + sender + '/' +
                  (isOld ? QString("old") : options.value("handle_token").toString());
        connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(handle_))));
        return true;
    }

private:
    QDBusConnection connection_;
    QString handle_;
};

class PortalSavePanelTest : public ::testing::Test {
protected:
    PortalSavePanelTest() {
        application();
        daemon.start();
        panel = std::make_unique<PortalSavePanel>(
            QDBusConnection::connectToBus(QString::fromStdString(daemon.address()), "client"), clock,
            [](const SavePanel& shown, const Desktop::SaveCompletion& completion) {
                completion({.place = "/otherwise/" + shown.proposedFileName});
            });
    }

    void TearDown() override {
        panel.reset();
        QDBusConnection::disconnectFromBus("client");
    }

    void choose() {
        panel->choose({.title = "Export", .proposedFileName = "a.json", .fileNameExtension = "json"},
                      [this](const auto& choice) {
                          places.push_back(choice.place.value_or("nowhere").string() + choice.problem);
                      });
    }

    void await(std::size_t count) {
        runUntil([&] {
            while (clock.runNextDue()) {
            }
            return places.size() >= count;
        });
    }

    linux_platform::PrivateBus daemon;
    simulated::VirtualClock clock{Instant(std::chrono::hours(1))};
    std::unique_ptr<PortalSavePanel> panel;
    std::vector<std::string> places;
};

} // namespace

TEST_F(PortalSavePanelTest, GivesTheChosenPlace) {
    ScriptedPortal portal(daemon.address());
    const QStringList chosen{"file:///home/a%20b/x.json"};
    for (const auto& [isOld, response, addresses, expected] :
         std::to_array<std::tuple<bool, uint, QStringList, std::string>>({
             {false, 0, chosen, "/home/a b/x.json"},
             {true, 0, chosen, "/home/a b/x.json"},
             {false, 0, {"file:///home/x"}, "/home/x"}, // the panel has asked about no other file
             {false,
              0,
              {"sftp://elsewhere.test/x.json"},
              "nowhereOnly files of this machine can be written, and sftp://elsewhere.test/x.json is "
              "elsewhere."},
             {false, 0, {}, "nowhere"},
             {false, 1, chosen, "nowhere"},
         })) {
        portal.isOld = isOld;
        portal.asked.clear();
        places.clear();
        choose();
        runUntil([&] { return !portal.asked.empty(); });
        runUntil([&] { // again and again: nothing shows when the other side listens
            portal.answer(response, addresses);
            return !places.empty();
        });
        EXPECT_EQ(places, std::vector{expected});
    }
    EXPECT_EQ(portal.asked.front().at(1), "Export");
    EXPECT_EQ(portal.options.value("current_name"), "a.json");
    EXPECT_EQ(portal.options.value("filters").value<QDBusArgument>().currentSignature(), "a(sa(us))");
    EXPECT_EQ(portal.closed, 0);
}

TEST_F(PortalSavePanelTest, ChoosesOtherwiseWithoutAPanel) {
    choose();
    await(1);
    ScriptedPortal portal(daemon.address());
    portal.hasFileChooser = false;
    choose();
    await(2);
    EXPECT_EQ(places, (std::vector<std::string>{"/otherwise/a.json", "/otherwise/a.json"}));
}

TEST_F(PortalSavePanelTest, EndsWithThePortalAndClosesWhatNobodyWaitsFor) {
    auto portal = std::make_unique<ScriptedPortal>(daemon.address());
    choose();
    runUntil([&] { return portal->asked.size() == 1; });
    portal.reset();
    await(1);
    EXPECT_EQ(places, std::vector<std::string>{"nowhere"});

    portal = std::make_unique<ScriptedPortal>(daemon.address());
    choose();
    runUntil([&] { return portal->asked.size() == 1; });
    panel.reset();
    runUntil([&] { return portal->closed == 1; });
    EXPECT_EQ(places.size(), 1);
}

TEST(SavePlace, IsNeverAnotherFile) {
    const fakes::TemporaryFolder folder;
    for (const auto* const expected : {"log.json", "log 2.json", "log 3.json"}) {
        const auto place = freeSavePlace(folder.path(), "log.json");
        EXPECT_EQ(place.filename(), expected);
        std::ofstream(place) << "kept";
    }
}

TEST_F(PortalSavePanelTest, EndsItsPanelsWithTheBus) {
    const ScriptedPortal portal(daemon.address());
    choose();
    runUntil([&] { return portal.asked.size() == 1; });
    panel->useBus(QDBusConnection("no such connection"));
    EXPECT_EQ(places, std::vector<std::string>{"nowhere"});
    choose();
    await(2);
    EXPECT_EQ(places.back(), "/otherwise/a.json");
}

} // namespace cindertop::desktop
