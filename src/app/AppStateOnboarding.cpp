#include "app/AppState.h"
#include "app/LegalTerms.h"
#include "context/PowerContext.h"

#include <chrono>
#include <utility>

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
    hardwareCheckTask_ = environment_.timers.start(checkingIsShownFor, [this] { surveyHardware(); });
}

void AppState::surveyHardware() {
    auto* const survey = environment_.machine.heatSourceSurvey;
    if (survey == nullptr) {
        finishHardwareCheck(std::nullopt, std::nullopt);
        return;
    }

    struct Found {
        HeatSources heat;
        PowerContextSnapshot power;
    };

    const auto look = [this, survey] {
        const auto& machine = environment_.machine;
        return Found{
            .heat = survey->findHeatSources(),
            .power = SystemPowerContextProvider(machine.powerSources, machine.process).readPowerContext()};
    };
    evaluate(environment_.executor, look, [this](std::optional<Found> found) {
        finishHardwareCheck(found ? std::move(found->heat) : HeatSources{},
                            found ? std::optional(found->power) : std::nullopt);
    });
}

void AppState::finishHardwareCheck(std::optional<HeatSources> sources,
                                   std::optional<PowerContextSnapshot> power) {
    auto state = *published_.onboardingState;
    state.power = power;
    state.hardwareStatus = performHardwareCheck(
        readHardwareProfile(environment_.systemValues, environment_.architecture), std::move(sources));
    state.hasCompletedHardwareCheck = true;
    const bool isRefused = state.hardwareStatus.kind() == HardwareCheckStatus::Kind::unsupported;
    if (state.step == OnboardingStep::hardwareCheck && !isRefused) {
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
