#pragma once

#include "platform/qt/BusPeer.h"

#include <QDBusArgument>
#include <map>
#include <string>
#include <vector>

namespace cindertop::agent {

/// The values of a dictionary as texts: "true", "42", "normal".
using Texts = std::map<std::string, std::string>;

inline Texts textsOf(const QVariant& dictionary) {
    Texts texts;
    for (const auto& [key, value] : qdbus_cast<QVariantMap>(dictionary).asKeyValueRange()) {
        texts[key.toStdString()] = value.toString().toStdString();
    }
    return texts;
}

/// One PropertiesChanged signal.
struct Announcement {
    Texts changed;
    QStringList invalidated;
};

/// Another program on the bus, which talks to the agent.
class BusClient final : public desktop::BusPeer {
public:
    std::vector<Announcement> announcements;

    explicit BusClient(const linux_platform::PrivateBus& bus) : BusPeer(bus, "client") { hear(properties); }

    /// The name of the error, or nothing, of a call with texts as arguments.
    std::string errorOf(const char* interface, const char* member, const QStringList& texts = {}) const {
        return call(question(interface, member, texts)).errorName().toStdString();
    }

    Texts allProperties(const char* ofInterface) const {
        return textsOf(answerTo(question(properties, "GetAll", {ofInterface})));
    }

    std::string property(const char* name) const {
        const auto value = answerTo(question(properties, "Get", {agentName, name}));
        return value.value<QDBusVariant>().variant().toString().toStdString();
    }

    std::string introspection() const {
        return answerTo(question("org.freedesktop.DBus.Introspectable", "Introspect", {}))
            .toString()
            .toStdString();
    }

    /// Calls without wanting an answer.
    void tell(const char* member) const { send(question(agentName, member, {})); }

private:
    static constexpr const char* agentName = "app.cindertop.Agent";

    static QDBusMessage question(const char* interface, const char* member, const QStringList& texts) {
        auto message = QDBusMessage::createMethodCall(agentName, "/app/cindertop/Agent", interface, member);
        message.setArguments({texts.begin(), texts.end()});
        return message;
    }

    QVariant answerTo(const QDBusMessage& question) const { return call(question).arguments().value(0); }

    void take(const QDBusMessage& signal) override {
        announcements.push_back({.changed = textsOf(signal.arguments().value(1)),
                                 .invalidated = signal.arguments().value(2).toStringList()});
    }
};

} // namespace cindertop::agent
