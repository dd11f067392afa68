#include "PlayedAgent.h"
#include "agent/BusMethods.h"
#include "report/MachineReport.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <QDBusVariant>
#include <limits>
#include <vector>

namespace cindertop::agent {
namespace {

using namespace std::chrono_literals;

QVariantList assignment(const char* name, const QVariant& value) {
    return {QString(name), QVariant::fromValue(QDBusVariant(value))};
}

QVariant setting(BusMethods& methods, const char* name) {
    return methods.call("Settings", "", {})->at(0).toMap().value(name);
}

TEST(BusMethods, RefusesWhatItDoesNotUnderstand) {
    struct Case {
        const char* method;
        const char* signature;
        QVariantList arguments;
        QString error; ///< the last word of its name
    };

    PlayedAgent agent;
    BusMethods methods(agent.state, agent.actions());
    const auto before = *methods.call("Settings", "", {});
    for (const auto& [method, signature, arguments, error] : std::vector<Case>{
             {"", "", {}, "UnknownMethod"},
             {"pause", "", {}, "UnknownMethod"},
             {"Pause", "s", {"now"}, "InvalidArgs"},
             {"Quit", "i", {1}, "UnknownMethod"},
             {"quit", "", {}, "UnknownMethod"},
             {"AcceptTerms", "b", {true}, "InvalidArgs"},
             {"Settings", "s", {"x"}, "UnknownMethod"},
             {"SaveHistory", "s", {"x"}, "UnknownMethod"},
             {"Set", "", {}, "UnknownMethod"},
             {"Set", "ss", {"showDockIcon", "true"}, "UnknownMethod"},
             {"ExportDiagnostics", "", {}, "UnknownMethod"},
             {"ExportDiagnostics", "s", {""}, "InvalidValue"},
             {"ExportDiagnostics", "s", {"report.json"}, "InvalidValue"},
             {"ExportDiagnostics", "s", {"/no/such/folder/report.json"}, "Failed"},
             {"Set", "sv", assignment("", true), "UnknownPreference"},
             {"Set", "sv", assignment("ShowDockIcon", true), "UnknownPreference"},
             {"Set", "sv", assignment("showDockIcon", "true"), "InvalidValue"},
             {"Set", "sv", assignment("showDockIcon", 1), "InvalidValue"},
             {"Set", "sv", assignment("showDockIcon", QStringList{"a"}), "InvalidValue"},
             {"Set", "sv", assignment("menuBarInfoMode", "Temperature"), "InvalidValue"},
             {"Set", "sv", assignment("menuBarInfoMode", 1), "InvalidValue"},
             {"Set", "sv", assignment("menuBarInfoMode", "thermalScore"), "InvalidValue"},
             {"Set", "sv", assignment("menuBarInfoMode", "temperature"), "InvalidValue"}, // sensors are off
             {"Set", "sv", assignment("historyDurationMinutes", 60.0), "InvalidValue"},
             {"Set", "sv", assignment("historyDurationMinutes", "60"), "InvalidValue"},
             {"Set", "sv", assignment("historyDurationMinutes", true), "InvalidValue"},
         }) {
        const auto answer = methods.call(method, signature, arguments);
        ASSERT_FALSE(answer) << method;
        EXPECT_EQ(answer.error().name.section('.', -1), error) << method;
        EXPECT_FALSE(answer.error().message.isEmpty()) << method;
    }
    EXPECT_EQ(*methods.call("Settings", "", {}), before) << "a refused call changed something";
}

TEST(BusMethods, SetsEveryPreference) {
    struct Case {
        const char* name;
        QVariant value;
        QVariant stored;
    };

    PlayedAgent agent;
    BusMethods methods(agent.state, agent.actions());
    const std::vector<Case> cases{
        {"experimentalTemperatureSensorsEnabled", true, true},
        {"menuBarInfoMode", "temperature", "temperature"},
        {"showDockIcon", true, true},
        {"diagnosticLogsEnabled", false, false},
        {"notificationsEnabled", true, true},
        {"notificationMinimumLevel", "critical", "critical"},
        {"recommendationVerbosity", "concise", "concise"},
        {"showProcessOffenders", true, true},
        {"showContextInsights", false, false},
        {"historyEnabled", false, false},
        {"historyDurationMinutes", QVariant::fromValue<quint64>(90), 90},
        {"temperatureUnit", "fahrenheit", "fahrenheit"},
    };
    EXPECT_EQ(methods.call("Settings", "", {})->at(0).toMap().size(), static_cast<qsizetype>(cases.size()));
    for (const auto& [name, value, stored] : cases) {
        EXPECT_TRUE(methods.call("Set", "sv", assignment(name, value))) << name;
        EXPECT_EQ(setting(methods, name), stored) << name;
    }

    for (const auto& [minutes, stored] : std::vector<std::pair<QVariant, int>>{
             {QVariant::fromValue<uchar>(20), 20},
             {QVariant::fromValue<short>(-1), 15},
             {QVariant::fromValue<qlonglong>(std::numeric_limits<qlonglong>::min()), 15},
             {QVariant::fromValue<quint64>(std::numeric_limits<quint64>::max()), 180},
         }) {
        EXPECT_TRUE(methods.call("Set", "sv", assignment("historyDurationMinutes", minutes)));
        EXPECT_EQ(setting(methods, "historyDurationMinutes"), stored);
    }

    EXPECT_TRUE(methods.call("ResetSettings", "", {}));
    EXPECT_EQ(setting(methods, "historyDurationMinutes"), 60);
    EXPECT_EQ(setting(methods, "temperatureUnit"), "region");
}

TEST(BusMethods, CarriesOutCommands) {
    PlayedAgent agent(PlayedAgent::hotFrames, R"("termsAccepted": false, )");
    BusMethods methods(agent.state, agent.actions());
    agent.passTo(1s);
    EXPECT_TRUE(methods.call("Pause", "", {}));
    EXPECT_EQ(methods.properties().value("Paused"), false)
        << "nothing to pause before the terms are accepted";

    EXPECT_TRUE(methods.call("AcceptTerms", "", {}));
    agent.passTo(2s);
    EXPECT_EQ(methods.properties().value("TermsAccepted"), true);
    EXPECT_EQ(methods.properties().value("Level"), "serious");
    EXPECT_EQ(methods.properties().value("Status"), "serious");

    EXPECT_TRUE(methods.call("Pause", "", {}));
    EXPECT_EQ(methods.properties().value("Paused"), true);
    EXPECT_EQ(methods.properties().value("Status"), "paused");
    EXPECT_EQ(methods.properties().value("Level"), "");
    EXPECT_EQ(methods.properties().value("Score"), -1);
    EXPECT_TRUE(methods.call("Resume", "", {}));
    EXPECT_EQ(methods.properties().value("Paused"), false);

    EXPECT_EQ(*methods.call("Open", "", {}), QVariantList{false}) << "there are no windows";
    EXPECT_EQ(*methods.call("OpenSettings", "", {}), QVariantList{false});
    EXPECT_EQ(*methods.call("Quit", "", {}), QVariantList{});
    EXPECT_EQ(agent.asked, "open quit ");
}

TEST(BusMethods, TellsEverythingInTheSnapshot) {
    PlayedAgent agent;
    const BusMethods methods(agent.state, agent.actions());
    const auto before = Json::parse(methods.snapshot().toStdString());
    EXPECT_TRUE(before.at("score").is_null());
    EXPECT_EQ(before.at("presentation").at("status"), "normal");
    EXPECT_FALSE(machineReport(methods.snapshot().toStdString()));

    agent.passTo(4s);
    const auto text = methods.snapshot().toStdString();
    const auto after = Json::parse(text);
    EXPECT_EQ(after.at("score").at("level"), "serious");
    EXPECT_EQ(after.at("offenders").at("offenders").at(0).at("displayName"), "encoder");
    EXPECT_EQ(after.at("isPaused"), false);
    EXPECT_EQ(after.at("termsAccepted"), true);
    EXPECT_EQ(after.size(), before.size());
    const auto report = machineReport(text);
    ASSERT_TRUE(report && report->advice);
    EXPECT_EQ(compactText(machineJson(*report)), text.substr(0, text.find(",\"notificationState\"")) + "}");
}

} // namespace
} // namespace cindertop::agent
