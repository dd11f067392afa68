#include "ui/presentation/OnboardingPresentation.h"

#include "support/Wording.h"
#include "ui/presentation/ContextTexts.h"
#include "ui/presentation/QtText.h"

#include <utility>

namespace cindertop::ui {

namespace {

constexpr Wording taglineWording{"A tiny thermal assistant for fanless MacBook Airs.",
                                 "A tiny thermal assistant for fanless laptops."};
constexpr Wording placeWording{"Cindertop stays in your menu bar and keeps thermal context local.",
                               "Cindertop stays in your panel and keeps thermal context local."};
constexpr Wording detailsWording{"Nerd details", "Details"};

/// One line of the details. A system on which its title is empty has no such line.
struct DetailRow {
    Wording title;
    QString (*value)(const MacHardwareProfile& profile, const HardwareCheckStatus& status,
                     const PowerContextSnapshot& power, OperatingSystem system) = nullptr;
};

QString targetText(const MacHardwareProfile& /*profile*/, const HardwareCheckStatus& /*status*/,
                   const PowerContextSnapshot& /*power*/, OperatingSystem /*system*/) {
    return "MacBook Air M-series";
}

QString modelText(const MacHardwareProfile& profile, const HardwareCheckStatus& /*status*/,
                  const PowerContextSnapshot& /*power*/, OperatingSystem /*system*/) {
    return QString::fromStdString(profile.modelIdentifier);
}

/// By the name that people know it by.
QString machineText(const MacHardwareProfile& profile, const HardwareCheckStatus& /*status*/,
                    const PowerContextSnapshot& /*power*/, OperatingSystem /*system*/) {
    const auto model = supportedModel(profile.modelIdentifier);
    return model ? qtText(model->displayName) : QString::fromStdString(profile.modelIdentifier);
}

QString processorText(const MacHardwareProfile& profile, const HardwareCheckStatus& /*status*/,
                      const PowerContextSnapshot& /*power*/, OperatingSystem /*system*/) {
    return QString::fromStdString(profile.cpuBrand.value_or("unknown"));
}

QString architectureText(const MacHardwareProfile& profile, const HardwareCheckStatus& /*status*/,
                         const PowerContextSnapshot& /*power*/, OperatingSystem /*system*/) {
    return QString::fromStdString(profile.architecture);
}

QString pressureText(const MacHardwareProfile& /*profile*/, const HardwareCheckStatus& status,
                     const PowerContextSnapshot& /*power*/, OperatingSystem /*system*/) {
    const auto& sources = status.heatSources();
    return sources ? QString::fromStdString(sources->pressureSource.value_or("not available"))
                   : QString("checking");
}

QString sensorsText(const MacHardwareProfile& /*profile*/, const HardwareCheckStatus& status,
                    const PowerContextSnapshot& /*power*/, OperatingSystem /*system*/) {
    const auto& sources = status.heatSources();
    return sources ? QString::number(sources->sensors.size()) : QString("checking");
}

QString powerRowText(const MacHardwareProfile& /*profile*/, const HardwareCheckStatus& /*status*/,
                     const PowerContextSnapshot& power, OperatingSystem system) {
    return powerText(power, system);
}

constexpr std::array detailRows{
    DetailRow{{"Target", ""}, targetText},
    DetailRow{{"Model", ""}, modelText},
    DetailRow{{"", "Machine"}, machineText},
    DetailRow{{"Chip", "Processor"}, processorText},
    DetailRow{{"Arch", "Architecture"}, architectureText},
    DetailRow{{"", "Thermal pressure"}, pressureText},
    DetailRow{{"", "Sensors"}, sensorsText},
    DetailRow{Wording::same("Power"), powerRowText},
};

} // namespace

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
    case HardwareCheckStatus::Kind::ready:
        return Marker::complete;
    case HardwareCheckStatus::Kind::unreadable:
        return Marker::caution;
    case HardwareCheckStatus::Kind::unsupported:
        return Marker::failed;
    case HardwareCheckStatus::Kind::checking:
        break;
    }
    return Marker::checking;
}

QString OnboardingPresentation::statusTitle() const {
    return QString::fromStdString(onboarding().hardwareStatus.title(system()));
}

QString OnboardingPresentation::statusDetail() const {
    return QString::fromStdString(onboarding().hardwareStatus.detail());
}

bool OnboardingPresentation::hasPressure() const {
    const auto& status = onboarding().hardwareStatus;
    const auto& sources = status.heatSources();
    return sources ? sources->pressureSource.has_value()
                   : status.kind() == HardwareCheckStatus::Kind::supported;
}

bool OnboardingPresentation::showsDetails() const {
    return onboarding().showsHardwareDetails;
}

void OnboardingPresentation::setShowsDetails(bool shows) {
    state_.showHardwareDetails(shows);
}

QStringList OnboardingPresentation::detailTitles() const {
    QStringList titles;
    for (const auto& row : detailRows) {
        if (const auto title = row.title.in(system()); !title.empty()) {
            titles += qtText(title);
        }
    }
    return titles;
}

QStringList OnboardingPresentation::detailValues() const {
    const auto& watched = state_.published().systemContextSnapshot->power;
    const auto power = state_.isMonitoring() ? watched : onboarding().power.value_or(watched);
    QStringList values;
    for (const auto& row : detailRows) {
        if (!row.title.in(system()).empty()) {
            values +=
                row.value(*state_.published().hardwareProfile, onboarding().hardwareStatus, power, system());
        }
    }
    return values;
}

QString OnboardingPresentation::tagline() const {
    return qtText(taglineWording.in(system()));
}

QString OnboardingPresentation::placeText() const {
    return qtText(placeWording.in(system()));
}

QString OnboardingPresentation::detailsName() const {
    return qtText(detailsWording.in(system()));
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
