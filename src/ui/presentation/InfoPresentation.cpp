#include "ui/presentation/InfoPresentation.h"

#include "support/Wording.h"
#include "ui/presentation/ContextTexts.h"
#include "ui/presentation/QtText.h"

#include <utility>

namespace cindertop::ui {

namespace {

constexpr Wording batteryHelpWording{"Internal battery sensor. Cindertop uses conservative guidance: 35°C+ "
                                     "is warm, 40°C+ is hot. Apple does not "
                                     "publish MacBook internal battery critical thresholds.",
                                     "Internal battery sensor. Cindertop uses conservative guidance: 35°C+ "
                                     "is warm, 40°C+ is hot. Makers rarely "
                                     "publish critical thresholds."};

} // namespace

InfoPresentation::Contents InfoPresentation::Contents::of(const AppState& state) {
    const auto& published = state.published();
    const auto& context = *published.systemContextSnapshot;
    const auto& power = context.power;
    const auto temperature = state.temperatureText(power.batteryTemperatureCelsius);
    return {.powerText = ui::powerText(power, state.environment().machine.operatingSystem),
            .batterySegments =
                ui::batterySegments(power, temperature ? QString::fromStdString(*temperature) : QString()),
            .batteryLevel =
                power.batteryTemperatureLevel ? static_cast<int>(*power.batteryTemperatureLevel) : -1,
            .processorText = QString::fromStdString(published.hardwareProfile->architecture),
            .displaysText = ui::displaysText(context.displays),
            .clamshellText = context.displays.isProbableClamshell() ? "Likely" : "Not detected"};
}

InfoPresentation::InfoPresentation(AppState& state)
    : state_(state),
      contents_(Contents::of(state)),
      heat_(state),
      observations_{
          state.published().systemContextSnapshot.bindable().addNotifier([this] { update(); }),
          state.published().hardwareProfile.bindable().addNotifier([this] { update(); }),
      } {}

QString InfoPresentation::batteryHelp() const {
    return qtText(batteryHelpWording.in(state_.environment().machine.operatingSystem));
}

void InfoPresentation::update() {
    auto contents = Contents::of(state_);
    if (contents_ != contents) {
        contents_ = std::move(contents);
        Q_EMIT changed();
    }
}

} // namespace cindertop::ui
