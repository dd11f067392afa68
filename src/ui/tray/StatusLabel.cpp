#include "ui/tray/StatusLabel.h"

#include "ui/theme/Theme.h"

namespace cindertop::ui {

namespace {

using Status = ThermalAssistantPresentation::Status;

std::optional<QString> textOf(const ThermalAssistantPresentation& presentation, MenuBarInfoMode mode) {
    const auto status = presentation.status;
    if (mode == MenuBarInfoMode::none) {
        return std::nullopt;
    }
    if (!isLevel(status) && status != Status::measuring) { // which lasts for a moment only
        return label(status);
    }
    switch (mode) {
    case MenuBarInfoMode::none:
        return std::nullopt;
    case MenuBarInfoMode::thermalStatus:
    case MenuBarInfoMode::thermalScore:
        return label(status);
    case MenuBarInfoMode::temperature:
        return presentation.menuBarTemperatureText.transform(&QString::fromStdString);
    case MenuBarInfoMode::compactAlertOnly:
        return status == Status::serious || status == Status::critical ? std::optional(label(status))
                                                                       : std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::optional<StatusLabel> StatusLabel::of(const ThermalAssistantPresentation& presentation,
                                           MenuBarInfoMode mode) {
    const auto status = presentation.status;
    return textOf(presentation, mode).transform([&](const QString& text) {
        return StatusLabel{.text = text,
                           .color = status == Status::normal ? std::nullopt
                                                             : std::optional(cindertop::color(status))};
    });
}

} // namespace cindertop::ui
