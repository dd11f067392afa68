#include "agent/BusMethods.h"

#include "app/Version.h"
#include "persistence/Preferences.h"
#include "report/MachineReport.h"
#include "support/Enumeration.h"

#include <nlohmann/json.hpp>

#include <QDBusVariant>
#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

namespace cindertop::agent {

namespace {

constexpr const char* invalidValue = "app.cindertop.Error.InvalidValue";
constexpr const char* unknownPreference = "app.cindertop.Error.UnknownPreference";
constexpr const char* failed = "app.cindertop.Error.Failed";
constexpr const char* unknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";
constexpr const char* invalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";

/// Larger values are out of every range all the same.
constexpr std::uint64_t largestNumber = std::numeric_limits<std::int64_t>::max();

/// A property cannot be absent, and 0 is a score.
constexpr std::int64_t noScore = -1;

QString qText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QVariant qVariant(const PreferenceValue& value) {
    if (const auto* const flag = std::get_if<bool>(&value)) {
        return *flag;
    }
    if (const auto* const number = std::get_if<std::int64_t>(&value)) {
        return QVariant::fromValue<qlonglong>(*number);
    }
    return qText(std::get<std::string>(value));
}

/// Any whole number will do where the bus knows seven kinds of them.
std::optional<PreferenceValue> preferenceValueOf(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return std::int64_t{value.toLongLong()};
    case QMetaType::ULongLong:
        return static_cast<std::int64_t>(std::min<std::uint64_t>(value.toULongLong(), largestNumber));
    case QMetaType::QString:
        return value.toString().toStdString();
    default:
        return std::nullopt;
    }
}

BusAnswer refusal(const char* name, const QString& message) {
    return std::unexpected(BusError{.name = name, .message = message});
}

/// The methods without arguments and answers.
struct Command {
    const char* name;
    void (*carryOut)(AppState& state);
};

constexpr std::array commands{
    Command{"Pause", [](AppState& state) { state.setPaused(true); }},
    Command{"Resume", [](AppState& state) { state.setPaused(false); }},
    Command{"AcceptTerms", [](AppState& state) { state.acceptLegalTerms(); }},
    Command{"ResetSettings", [](AppState& state) { state.resetSettingsToDefaults(); }},
};

} // namespace

QString BusMethods::introspection() {
    QString methods;
    for (const auto& command : commands) {
        methods += QStringLiteral("    <method name=\"%1\"/>\n").arg(QLatin1String(command.name));
    }
    return QStringLiteral(R"(  <interface name="app.cindertop.Agent">
%1    <method name="Open"><arg name="isShown" type="b" direction="out"/></method>
    <method name="SaveHistory"/>
    <method name="OpenSettings"><arg name="isShown" type="b" direction="out"/></method>
    <method name="Quit"/>
    <method name="Settings"><arg name="settings" type="a{sv}" direction="out"/></method>
    <method name="Set"><arg name="name" type="s" direction="in"/><arg name="value" type="v" direction="in"/></method>
    <method name="ExportDiagnostics"><arg name="file" type="s" direction="in"/></method>
    <property name="Version" type="s" access="read">
      <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="const"/>
    </property>
    <property name="Snapshot" type="s" access="read">
      <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="invalidates"/>
    </property>
    <property name="Level" type="s" access="read"/>
    <property name="Score" type="x" access="read"/>
    <property name="TemperatureText" type="s" access="read"/>
    <property name="Trend" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="Advice" type="s" access="read"/>
    <property name="NotificationState" type="s" access="read"/>
    <property name="Paused" type="b" access="read"/>
    <property name="TermsAccepted" type="b" access="read"/>
  </interface>
)")
        .arg(methods);
}

QVariantMap BusMethods::properties() const {
    const auto& published = state_.published();
    const auto& snapshot = *published.thermalSnapshot;
    const auto presentation = state_.currentPresentation();
    const bool hasLevel = isLevel(presentation.status);
    return {{"Version", qText(version)},
            {"Level", hasLevel ? qText(caseName(snapshot.level)) : QString()},
            {"Score", QVariant::fromValue<qlonglong>(hasLevel ? snapshot.score : noScore)},
            {"TemperatureText", qText(snapshot.temperatureText)},
            {"Trend", qText(caseName(snapshot.trend))},
            {"Status", qText(caseName(presentation.status))},
            {"Advice", qText(presentation.actionMessage.value_or(""))},
            {"NotificationState", qText(caseName(*published.systemNotificationState))},
            {"Paused", *published.isPaused},
            {"TermsAccepted", *published.legalTermsAccepted}};
}

QString BusMethods::snapshot() const {
    state_.noteLook();
    const auto& published = state_.published();
    const auto presentation = state_.currentPresentation();
    auto json = unmeasuredMachineJson();
    if (auto machine = state_.machineSnapshot()) {
        json = machineJson({.snapshot = *std::move(machine),
                            .advice = MachineAdvice{.recommendation = state_.currentRecommendation(),
                                                    .presentation = presentation}});
    }
    json["presentation"] = encodeJson(presentation);
    json["notificationState"] = caseName(*published.systemNotificationState);
    json["isPaused"] = *published.isPaused;
    json["termsAccepted"] = *published.legalTermsAccepted;
    return qText(compactText(json));
}

BusAnswer BusMethods::call(const QString& method, const QString& signature, const QVariantList& arguments) {
    for (const auto& command : commands) {
        if (method == QLatin1String(command.name)) {
            if (!signature.isEmpty()) {
                return refusal(invalidArguments, method + " takes no arguments");
            }
            command.carryOut(state_);
            return QVariantList{};
        }
    }
    if (method == QLatin1String("Open") && signature.isEmpty()) {
        actions_.open();
        return hasWindows();
    }
    if (method == QLatin1String("Quit") && signature.isEmpty()) {
        actions_.quit();
        return QVariantList{};
    }
    if (method == QLatin1String("OpenSettings") && signature.isEmpty()) {
        state_.showSettingsWindow();
        return hasWindows();
    }
    if (method == QLatin1String("Settings") && signature.isEmpty()) {
        return settings();
    }
    if (method == QLatin1String("Set") && signature == QLatin1String("sv")) {
        return set(arguments.at(0).toString(), qvariant_cast<QDBusVariant>(arguments.at(1)).variant());
    }
    if (method == QLatin1String("ExportDiagnostics") && signature == QLatin1String("s")) {
        return exportDiagnostics(arguments.at(0).toString());
    }
    return refusal(unknownMethod,
                   "There is no method " + method + " with the arguments \"" + signature + '"');
}

bool BusMethods::startCall(const QString& method, const QString& signature,
                           std::function<void(const BusAnswer&)> answer) {
    if (method != QLatin1String("SaveHistory") || !signature.isEmpty()) {
        return false;
    }
    state_.saveHistory([answer = std::move(answer)](const FileResult<void>& saved) {
        answer(saved ? BusAnswer(QVariantList{})
                     : refusal(failed, qText(std::make_error_code(saved.error()).message())));
    });
    return true;
}

BusAnswer BusMethods::hasWindows() const {
    return QVariantList{state_.environment().windows != nullptr};
}

BusAnswer BusMethods::settings() const {
    QVariantMap map;
    const auto& fields = *state_.published().settings;
    for (const auto& preference : preferences()) {
        map.insert(qText(preference.name), qVariant(preference.read(fields)));
    }
    return QVariantList{map};
}

BusAnswer BusMethods::set(const QString& name, const QVariant& value) {
    const auto* const preference = findPreference(name.toStdString());
    if (preference == nullptr) {
        return refusal(unknownPreference, "There is no preference \"" + name + '"');
    }
    const auto given = preferenceValueOf(value);
    if (!given) {
        return refusal(invalidValue, name + " cannot be of that type");
    }
    auto result = checkIsOffered(*preference, *given, *state_.published().settings);
    if (result) {
        result = state_.set(*preference, *given);
    }
    if (!result) {
        return refusal(invalidValue, name + ' ' + qText(result.error()));
    }
    return QVariantList{};
}

BusAnswer BusMethods::exportDiagnostics(const QString& file) {
    const std::filesystem::path destination = file.toStdString();
    if (!destination.is_absolute()) {
        return refusal(invalidValue, "The file needs an absolute path");
    }
    if (const auto result = state_.exportDiagnosticLogs(destination); !result) {
        return refusal(failed, qText(result.error().message()));
    }
    return QVariantList{};
}

} // namespace cindertop::agent
