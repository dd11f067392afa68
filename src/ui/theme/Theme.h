#pragma once

#include "app/ThermalAssistantPresentation.h"

#include <QColor>
#include <QFont>
#include <QString>
#include <array>
#include <chrono>

/// The one place with the interface's colours, type, measures, times and symbol names. Lengths are in points,
/// which Qt scales to the screen's pixels.
namespace cindertop::Theme {

namespace Colors {

// sRGB, opaque. Each hexadecimal text names the same colour, where one must be written down.
inline const QColor accent = QColor::fromRgbF(1.0F, 0.35F, 0.12F);
inline const QColor ember = QColor::fromRgbF(1.0F, 0.7F, 0.22F);
inline const QColor success = QColor::fromRgbF(0.69F, 0.84F, 0.15F);
inline constexpr QColor normal{73, 229, 126};
inline constexpr QColor fair{255, 187, 79};
inline constexpr QColor serious{254, 99, 97};
inline constexpr QColor critical{254, 94, 124};
inline const QColor graphite = QColor::fromRgbF(0.15F, 0.15F, 0.15F);
inline const QColor graphiteRaised = QColor::fromRgbF(0.2F, 0.2F, 0.2F);
inline const QColor switchTrackOff = QColor::fromRgbF(0.36F, 0.36F, 0.36F);
inline constexpr QColor switchTrackOffOnLight{185, 182, 177};
inline const QColor switchKnobOn = QColor::fromRgbF(0.94F, 0.94F, 0.92F);
inline constexpr QColor switchKnobOff{255, 255, 255};
inline constexpr QColor warm{255, 214, 10};
inline constexpr QColor hot{254, 99, 97};
inline constexpr QColor danger{196, 43, 41}; ///< the face of a button that loses something, under white text
inline const QColor backdrop = QColor::fromRgbF(0, 0, 0, 0.45F); ///< over a window that waits for an answer
inline const QColor paused = QColor::fromRgbF(0.48F, 0.48F, 0.48F);

inline constexpr auto accentHex = "#FF5A1F";
inline constexpr auto emberHex = "#FFB238";
inline constexpr auto successHex = "#B0D527";
inline constexpr auto normalHex = "#49E57E";
inline constexpr auto fairHex = "#FFBB4F";
inline constexpr auto seriousHex = "#FE6361";
inline constexpr auto criticalHex = "#FE5E7C";

} // namespace Colors

namespace Fonts {

inline constexpr auto family = "Inter";
inline constexpr auto regular = "Inter-Regular";
inline constexpr auto medium = "Inter-Medium";
inline constexpr auto semibold = "Inter-SemiBold";
inline constexpr auto bold = "Inter-Bold";

} // namespace Fonts

namespace Typography {

/// A type style; the cut is picked by weight.
struct Style {
    const char* face;
    QFont::Weight weight;
    int size; ///< points at the usual text size
};

inline constexpr Style title{Fonts::bold, QFont::Bold, 15};
inline constexpr Style body{Fonts::regular, QFont::Normal, 13};
inline constexpr Style section{Fonts::semibold, QFont::DemiBold, 12};
inline constexpr Style caption{Fonts::medium, QFont::Medium, 11};
// Shown by Readout.qml, which gives all digits one width.
inline constexpr Style readout{Fonts::regular, QFont::Normal, 24};
inline constexpr Style smallReadout{Fonts::medium, QFont::Medium, 12};

/// `textScale` is the user's text size against the usual one.
QFont font(const Style& style, double textScale = 1);

} // namespace Typography

namespace Spacing {

inline constexpr int xxs = 2;
inline constexpr int xs = 4;
inline constexpr int sm = 8;
inline constexpr int md = 12;
inline constexpr int lg = 16;
inline constexpr int xl = 24;

} // namespace Spacing

namespace Radius {

inline constexpr int control = 6;
inline constexpr int surface = 8;
inline constexpr int window = 12;
inline constexpr int pill = 999; ///< rounds both ends of any control

} // namespace Radius

namespace Controls {

inline constexpr int onboardingMarker = 30;
inline constexpr int onboardingButton = 30;
inline constexpr int onboardingPrimaryButton = 40;
inline constexpr int row = 36;
inline constexpr int listRow = 44;
inline constexpr int tabWidth = 84;
inline constexpr int statusItem = 20; ///< the length of the status item without a label

} // namespace Controls

/// The surfaces and what stands on them, by brightness. The software renderer has no blur: materials are
/// opaque.
struct Materials {
    QColor popover; ///< a window
    QColor raised;  ///< a card on it
    QColor subdued; ///< a well in it
    QColor text;
    QColor secondaryText;
    QColor divider;
    QColor control; ///< the face of a button
    QColor link;
    QColor destructive; ///< text that warns of a loss
    QColor shadow;
    std::array<QColor, 4>
        levelText; ///< of the bands, where a level's colour is text: 4.5:1 on either surface

    static const Materials& dark();
    static const Materials& light();
};

namespace Motion {

// All ease in and out.
inline constexpr std::chrono::milliseconds quick{160};
inline constexpr std::chrono::milliseconds standard{240};
inline constexpr std::chrono::milliseconds slow{360};

} // namespace Motion

namespace Symbols {

inline constexpr auto normal = "checkmark.circle";
inline constexpr auto fair = "flame";
inline constexpr auto serious = "speedometer";
inline constexpr auto critical = "exclamationmark.octagon";
inline constexpr auto menuBar = "flame";
inline constexpr auto temperature = "thermometer.medium";
inline constexpr auto settings = "slider.horizontal.3";
inline constexpr auto updates = "arrow.triangle.2.circlepath";
inline constexpr auto dock = "dock.rectangle";

} // namespace Symbols

} // namespace cindertop::Theme

namespace cindertop {

inline constexpr std::array allLevels{
    ThermalAssistantPresentation::Status::normal, ThermalAssistantPresentation::Status::fair,
    ThermalAssistantPresentation::Status::serious, ThermalAssistantPresentation::Status::critical};

/// "Normal", "Fair", "Serious", "Critical", "Paused".
QString label(ThermalAssistantPresentation::Status status);
QString symbolName(ThermalAssistantPresentation::Status status);
QColor color(ThermalAssistantPresentation::Status status);

} // namespace cindertop
