#include "ui/OnboardingPresentation.h"

#include "ui/ContextTexts.h"

#include <utility>

namespace cindertop::ui {

OnboardingPresentation::OnboardingPresentation(AppState& state, ProgramActions actions)
    : state_(state),
      actions_(std::move(actions)),
      observations_{
          state.published().onboardingState.bindable().addNotifier([this] { Q_EMIT changed(); }),
          state.published().hardwareProfile.bindable().addNotifier([this] { Q_EMIT changed(); }),
          state.published().systemContextSnapshot.bindable().addNotifier([this] { Q_EMIT changed(); }),
      } {}

OnboardingPresentation::Marker OnboardingPresentation::checkMarker() const {
    if (onboarding().step == OnboardingStep::welcome) {
        return Marker::number;
    }
    switch (onboarding().hardwareStatus.kind()) {
    case HardwareCheckStatus::Kind::supported:
        return Marker::complete;
    case HardwareCheckStatus::Kind::unsupported:
        return Marker::failed;
    case HardwareCheckStatus::Kind::checking:
        break;
    }
    return Marker::checking;
}

QString OnboardingPresentation::statusTitle() const {
    return QString::fromStdString(onboarding().hardwareStatus.title());
}

QString OnboardingPresentation::statusDetail() const {
    return QString::fromStdString(onboarding().hardwareStatus.detail());
}

bool OnboardingPresentation::showsDetails() const {
    return onboarding().showsHardwareDetails;
}

void OnboardingPresentation::setShowsDetails(bool shows) {
    state_.showHardwareDetails(shows);
}

QString OnboardingPresentation::model() const {
    return QString::fromStdString(state_.published().hardwareProfile->modelIdentifier);
}

QString OnboardingPresentation::chip() const {
    return QString::fromStdString(state_.published().hardwareProfile->cpuBrand.value_or("unknown"));
}

QString OnboardingPresentation::architecture() const {
    return QString::fromStdString(state_.published().hardwareProfile->architecture);
}

QString OnboardingPresentation::power() const {
    return powerText(state_.published().systemContextSnapshot->power);
}

void OnboardingPresentation::setAcceptedLegal(bool accepted) {
    if (std::exchange(acceptedLegal_, accepted) != accepted) {
        Q_EMIT changed();
    }
}

bool OnboardingPresentation::canStart() const {
    return acceptedLegal_ && onboarding().hardwareStatus.kind() != HardwareCheckStatus::Kind::checking;
}

void OnboardingPresentation::start() {
    if (canStart()) {
        state_.acceptLegalTerms();
    }
}

void OnboardingPresentation::openTerms() const {
    actions_.openTerms();
}

void OnboardingPresentation::openPrivacyPolicy() const {
    actions_.openPrivacyPolicy();
}

} // namespace cindertop::ui
