#include "app/AppState.h"
#include "app/LegalTerms.h"

#include <chrono>

namespace cindertop {

namespace {

using namespace std::chrono_literals;

/// A check is over at once; so long people can see that there is one.
constexpr auto checkingIsShownFor = 900ms;

} // namespace

void AppState::startHardwareCheckIfNeeded() {
    if (didStartHardwareCheck_ || published_.onboardingState->hasCompletedHardwareCheck) {
        return;
    }
    didStartHardwareCheck_ = true;
    auto state = *published_.onboardingState;
    state.step = OnboardingStep::hardwareCheck;
    state.hardwareStatus = HardwareCheckStatus::checking();
    published_.onboardingState.set(state);
    hardwareCheckTask_ = environment_.timers.start(checkingIsShownFor, [this] { finishHardwareCheck(); });
}

void AppState::finishHardwareCheck() {
    auto state = *published_.onboardingState;
    state.hardwareStatus = performHardwareCheck(environment_.systemValues, environment_.architecture);
    state.hasCompletedHardwareCheck = true;
    const bool isSupported = state.hardwareStatus.kind() == HardwareCheckStatus::Kind::supported;
    if (state.step == OnboardingStep::hardwareCheck && isSupported) {
        state.step = OnboardingStep::termsAndStart;
    }
    published_.onboardingState.set(state);
    hardwareCheckTask_.reset();
}

void AppState::showHardwareDetails(bool isShown) {
    auto state = *published_.onboardingState;
    state.showsHardwareDetails = isShown;
    published_.onboardingState.set(state);
}

void AppState::acceptLegalTerms() {
    published_.legalTermsAccepted.set(true);
    storeTermsAccepted(environment_.defaults);
    published_.route.set(AppRoute::settings);
    if (environment_.windows != nullptr) {
        environment_.windows->closeOnboarding();
    }
    updateMonitoringState();
}

void AppState::showOnboardingWindow() {
    if (environment_.windows != nullptr) {
        environment_.windows->showOnboarding();
        startHardwareCheckIfNeeded();
    }
}

void AppState::showSettingsWindow() const {
    if (environment_.windows != nullptr) {
        environment_.windows->showSettings();
    }
}

void AppState::showMainWindow() {
    if (isMonitoringPermitted()) {
        showSettingsWindow();
    } else {
        showOnboardingWindow();
    }
}

} // namespace cindertop
