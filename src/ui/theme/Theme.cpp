#include "ui/theme/Theme.h"

#include <cmath>
#include <optional>

namespace cindertop {

namespace {

struct BandDisplay {
    const char* label{};
    const char* symbolName{};
    QColor color;
};

constexpr std::array bandDisplays{
    BandDisplay{"Normal", Theme::Symbols::normal, Theme::Colors::normal},
    BandDisplay{"Fair", Theme::Symbols::fair, Theme::Colors::fair},
    BandDisplay{"Serious", Theme::Symbols::serious, Theme::Colors::serious},
    BandDisplay{"Critical", Theme::Symbols::critical, Theme::Colors::critical},
};

const BandDisplay& displayOf(ThermalBand band) {
    return bandDisplays.at(static_cast<std::size_t>(band));
}

std::optional<ThermalBand> bandOf(ThermalAssistantPresentation::Status status) {
    using Status = ThermalAssistantPresentation::Status;
    switch (status) {
    case Status::normal:
        return ThermalBand::normal;
    case Status::fair:
        return ThermalBand::fair;
    case Status::serious:
        return ThermalBand::serious;
    case Status::critical:
        return ThermalBand::critical;
    case Status::paused:
    case Status::notMonitoring:
    case Status::measuring:
    case Status::noHeatReadings:
        break;
    }
    return std::nullopt;
}

/// Of the states without a level, by raw value behind the levels.
struct StateDisplay {
    const char* label;
    const char* symbolName;
};

constexpr std::array stateDisplays{
    StateDisplay{.label = "Paused", .symbolName = "pause.fill"},
    StateDisplay{.label = "Not monitoring", .symbolName = "pause.fill"},
    StateDisplay{.label = "Measuring", .symbolName = "timer"},
    StateDisplay{.label = "No heat readings", .symbolName = "questionmark.circle"},
};
static_assert(bandDisplays.size() + stateDisplays.size() ==
              EnumerationTable<ThermalAssistantPresentation::Status>::cases.size());

const StateDisplay& displayOf(ThermalAssistantPresentation::Status status) {
    return stateDisplays.at(static_cast<std::size_t>(status) - bandDisplays.size());
}

QColor faded(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

} // namespace

QString label(ThermalBand band) {
    return displayOf(band).label;
}

QString symbolName(ThermalBand band) {
    return displayOf(band).symbolName;
}

QColor color(ThermalBand band) {
    return displayOf(band).color;
}

QString label(ThermalAssistantPresentation::Status status) {
    const auto band = bandOf(status);
    return band ? label(*band) : QString(displayOf(status).label);
}

QString symbolName(ThermalAssistantPresentation::Status status) {
    const auto band = bandOf(status);
    return band ? symbolName(*band) : QString(displayOf(status).symbolName);
}

QColor color(ThermalAssistantPresentation::Status status) {
    const auto band = bandOf(status);
    return band ? color(*band) : Theme::Colors::paused;
}

namespace Theme {

QFont Typography::font(const Style& style, double textScale) {
    QFont font(Fonts::family);
    font.setStyleHint(QFont::SansSerif);
    font.setWeight(style.weight);
    // Pixels of the interface, which are points here: they follow the screen's scale, not its stated size.
    font.setPixelSize(static_cast<int>(std::lround(style.size * textScale)));
    return font;
}

const Materials& Materials::dark() {
    static const Materials materials{
        .popover = QColor(0x262626),
        .raised = QColor(0x333333),
        .subdued = QColor(0x2D2D2D),
        .text = QColor(0xF5F5F4),
        .secondaryText = QColor(0xB4B2AE),
        .divider = faded(Qt::white, 0.10),
        .control = QColor(0x3F3F3F),
        .link = QColor(0xFF8A5C),
        .destructive = QColor(0xFF7B78),
        .shadow = faded(Qt::black, 0.45),
        .levelText = {Colors::normal, Colors::fair, QColor(0xFF7B78), QColor(0xFF7C95)},
    };
    return materials;
}

const Materials& Materials::light() {
    static const Materials materials{
        .popover = QColor(0xF7F6F4),
        .raised = QColor(0xFFFFFF),
        .subdued = QColor(0xFBFAF9),
        .text = QColor(0x1C1B1A),
        .secondaryText = QColor(0x6A6763),
        .divider = faded(Qt::black, 0.10),
        .control = QColor(0xECEAE6),
        .link = QColor(0xB63A0B),
        .destructive = QColor(0xC42B29),
        .shadow = faded(Qt::black, 0.26),
        .levelText = {QColor(0x15803D), QColor(0x9A5B00), QColor(0xC42B29), QColor(0xB3123F)},
    };
    return materials;
}

} // namespace Theme

} // namespace cindertop
