#pragma once

#include "app/HardwareCheckStatus.h"
#include "app/ThermalSnapshot.h"
#include "assistant/CinderInsight.h"
#include "assistant/SystemNotificationService.h"
#include "context/PowerContext.h"
#include "context/SystemContext.h"
#include "cpu/ProcessOffender.h"
#include "persistence/AppSettings.h"
#include "persistence/ThermalHistory.h"

#include <QProperty>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace cindertop {

/// A value that observers follow: they are told after each change, in the order in which values were set, and
/// not of an equal value. Main thread only.
template <typename Value>
class Published {
public:
    Published() = default;

    explicit Published(Value initial) : property_(std::move(initial)) {}

    decltype(auto) value() const { return property_.value(); }

    decltype(auto) operator*() const { return property_.value(); }

    const Value* operator->() const { return &property_.value(); }

    /// For bindings and observers; read only.
    QBindable<Value> bindable() const { return QBindable<Value>(&property_); }

    void set(Value value) { property_.setValue(std::move(value)); }

private:
    QProperty<Value> property_;
};

/// Which of the program's windows the user is meant to be in.
enum class AppRoute : std::uint8_t { onboarding, settings };

/// The steps of the first run; with `termsAndStart` the user accepts the terms and starts monitoring.
enum class OnboardingStep : std::uint8_t { welcome, hardwareCheck, termsAndStart };

/// How far the first run has come.
struct OnboardingState {
    OnboardingStep step = OnboardingStep::hardwareCheck;
    HardwareCheckStatus hardwareStatus = HardwareCheckStatus::checking();
    bool showsHardwareDetails = false;
    bool hasCompletedHardwareCheck = false;
    /// Read once by a check that surveys the machine: nothing is watched yet.
    std::optional<PowerContextSnapshot> power{};

    bool operator==(const OnboardingState&) const = default;
};

/// All that the program shows of its state; AppState alone changes it.
struct AppStateProperties {
    Published<AppRoute> route{AppRoute::settings};
    Published<bool> legalTermsAccepted{false};
    Published<OnboardingState> onboardingState{OnboardingState{}};
    Published<MacHardwareProfile> hardwareProfile{MacHardwareProfile{}};

    Published<ThermalSnapshot> thermalSnapshot{ThermalSnapshot::idle()};
    Published<SystemContextSnapshot> systemContextSnapshot{SystemContextSnapshot::placeholder()};
    Published<ProcessOffenderSnapshot> processOffenderSnapshot{ProcessOffenderSnapshot::empty()};
    Published<CinderRecommendationSnapshot> recommendationSnapshot{CinderRecommendationSnapshot::empty()};
    Published<ThermalMonitoringSnapshot> monitoringSnapshot{ThermalMonitoringSnapshot::empty()};
    Published<SystemNotificationState> systemNotificationState{SystemNotificationState::disabled};
    Published<bool> isPaused{false}; ///< never stored: a new start monitors again

    Published<bool> launchAtLoginEnabled{false};
    Published<std::string> launchAtLoginStatusDescription{"Off"};
    Published<std::optional<std::string>> launchAtLoginFeedback{std::nullopt}; ///< the last result, in words
    Published<bool> diagnosticExportSucceeded{false}; ///< for 2.5 s after each success
    Published<std::string> diagnosticExportPath{""};  ///< of the latest success

    Published<AppSettingsFields> settings{AppSettingsFields{}}; ///< as they are in force
};

} // namespace cindertop
