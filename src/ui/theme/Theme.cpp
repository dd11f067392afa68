#include "ui/theme/Theme.h"

#include <cmath>

namespace cindertop {

namespace {

/// What tells a status, by raw value.
struct StatusDisplay {
    const char* label{};
    const char* symbolName{};
    QColor color;
};

const StatusDisplay& displayOf(ThermalAssistantPresentation::Status status) {
    static const std::array displays{
        StatusDisplay{"Normal", Theme::Symbols::normal, Theme::Colors::normal},
        StatusDisplay{"Fair", Theme::Symbols::fair, Theme::Colors::fair},
        StatusDisplay{"Serious", Theme::Symbols::serious, Theme::Colors::serious},
        StatusDisplay{"Critical", Theme::Symbols::critical, Theme::Colors::critical},
        StatusDisplay{"Paused", "pause.fill", Theme::Colors::paused},
        StatusDisplay{"Not monitoring", "pause.fill", Theme::Colors::paused},
        StatusDisplay{"Measuring", "timer", Theme::Colors::paused},
        StatusDisplay{"No heat readings", "questionmark.circle", Theme::Colors::paused},
    };
    static_assert(displays.size() == EnumerationTable<ThermalAssistantPresentation::Status>::cases.size());
    return displays.at(static_cast<std::size_t>(status));
}

QColor faded(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

} // namespace

QString label(ThermalAssistantPresentation::Status status) {
    return displayOf(status).label;
}

QString symbolName(ThermalAssistantPresentation::Status status) {
    return displayOf(status).symbolName;
}

QColor color(ThermalAssistantPresentation::Status status) {
    return displayOf(status).color;
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
