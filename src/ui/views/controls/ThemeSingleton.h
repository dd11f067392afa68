#pragma once

#include "ui/theme/Appearance.h"

#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QObject>
#include <algorithm>

#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace cindertop::ui {

/// `Theme` in QML: the constants of ui/Theme.h in the present appearance. Lengths and times never change,
/// colours and fonts follow the desktop.
class ThemeSingleton : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Theme)
    QML_SINGLETON

    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY changed)
    Q_PROPERTY(bool isRightToLeft READ isRightToLeft NOTIFY changed)
    Q_PROPERTY(double textRoom READ textRoom NOTIFY changed)

    Q_PROPERTY(QColor accent READ accent CONSTANT)
    Q_PROPERTY(QColor ember READ ember CONSTANT)
    Q_PROPERTY(QColor success READ success CONSTANT)
    Q_PROPERTY(QColor onAccent READ onAccent CONSTANT)
    Q_PROPERTY(QColor danger READ danger CONSTANT)
    Q_PROPERTY(QColor backdrop READ backdrop CONSTANT)
    Q_PROPERTY(QColor switchTrackOff READ switchTrackOff NOTIFY changed)
    Q_PROPERTY(QColor switchKnobOn READ switchKnobOn CONSTANT)
    Q_PROPERTY(QColor switchKnobOff READ switchKnobOff CONSTANT)

    Q_PROPERTY(QColor window READ window NOTIFY changed)
    Q_PROPERTY(QColor card READ card NOTIFY changed)
    Q_PROPERTY(QColor subdued READ subdued NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor secondaryText READ secondaryText NOTIFY changed)
    Q_PROPERTY(QColor divider READ divider NOTIFY changed)
    Q_PROPERTY(QColor control READ control NOTIFY changed)
    Q_PROPERTY(QColor link READ link NOTIFY changed)
    Q_PROPERTY(QColor destructive READ destructive NOTIFY changed)
    Q_PROPERTY(QColor shadow READ shadow NOTIFY changed)

    Q_PROPERTY(QString iconFamily READ iconFamily CONSTANT)
    Q_PROPERTY(QFont title READ title NOTIFY changed)
    Q_PROPERTY(QFont body READ body NOTIFY changed)
    Q_PROPERTY(QFont bodyMedium READ bodyMedium NOTIFY changed)
    Q_PROPERTY(QFont bodyStrong READ bodyStrong NOTIFY changed)
    Q_PROPERTY(QFont section READ section NOTIFY changed)
    Q_PROPERTY(QFont caption READ caption NOTIFY changed)
    Q_PROPERTY(QFont readout READ readout NOTIFY changed)
    Q_PROPERTY(QFont smallReadout READ smallReadout NOTIFY changed)

    Q_PROPERTY(int xxs MEMBER xxs_ CONSTANT)
    Q_PROPERTY(int xs MEMBER xs_ CONSTANT)
    Q_PROPERTY(int sm MEMBER sm_ CONSTANT)
    Q_PROPERTY(int md MEMBER md_ CONSTANT)
    Q_PROPERTY(int lg MEMBER lg_ CONSTANT)
    Q_PROPERTY(int xl MEMBER xl_ CONSTANT)

    Q_PROPERTY(int radiusControl MEMBER radiusControl_ CONSTANT)
    Q_PROPERTY(int radiusSurface MEMBER radiusSurface_ CONSTANT)
    Q_PROPERTY(int radiusWindow MEMBER radiusWindow_ CONSTANT)
    Q_PROPERTY(int radiusPill MEMBER radiusPill_ CONSTANT)

    Q_PROPERTY(int row MEMBER row_ CONSTANT)
    Q_PROPERTY(int listRow MEMBER listRow_ CONSTANT)
    Q_PROPERTY(int tabWidth MEMBER tabWidth_ CONSTANT)
    Q_PROPERTY(int onboardingMarker MEMBER onboardingMarker_ CONSTANT)
    Q_PROPERTY(int onboardingButton MEMBER onboardingButton_ CONSTANT)
    Q_PROPERTY(int onboardingPrimaryButton MEMBER onboardingPrimaryButton_ CONSTANT)

    // Milliseconds; 0 where the user wants no motion.
    Q_PROPERTY(int quick READ quick NOTIFY changed)
    Q_PROPERTY(int standard READ standard NOTIFY changed)
    Q_PROPERTY(int slow READ slow NOTIFY changed)

public:
    explicit ThemeSingleton(const Appearance& appearance, QObject* parent = nullptr);
    static ThemeSingleton* create(QQmlEngine* engine, QJSEngine* scriptEngine);
    /// Of the engine that is made next; must outlive it.
    static void setAppearance(const Appearance& appearance);

    /// The text that draws a symbol in the icon font.
    Q_INVOKABLE QString symbolText(const QString& symbolName) const;
    /// Of a raw ThermalAssistantPresentation::Status, 0 normal to 3 critical (as ThermalBand), 4 paused: for
    /// dots, lines, bars and symbols.
    Q_INVOKABLE QColor levelColor(int status) const;
    /// The same where it is text.
    Q_INVOKABLE QColor levelText(int status) const;
    /// `color` with an opacity of 0 to 1.
    Q_INVOKABLE QColor faded(const QColor& color, double opacity) const;
    /// `color` as it looks pressed.
    Q_INVOKABLE QColor pressed(const QColor& color) const;

    bool isDark() const { return appearance_.isDark(); }

    bool reducesMotion() const { return appearance_.reducesMotion(); }

    bool isRightToLeft() const { return QGuiApplication::isRightToLeft(); }

    /// How much larger than usual what holds text has to be, at least 1.
    double textRoom() const { return std::max(appearance_.textScale(), 1.0); }

    QColor accent() const { return Theme::Colors::accent; }

    QColor ember() const { return Theme::Colors::ember; }

    QColor success() const { return Theme::Colors::success; }

    QColor onAccent() const { return Qt::white; }

    QColor danger() const { return Theme::Colors::danger; }

    QColor backdrop() const { return Theme::Colors::backdrop; }

    QColor switchTrackOff() const;

    QColor switchKnobOn() const { return Theme::Colors::switchKnobOn; }

    QColor switchKnobOff() const { return Theme::Colors::switchKnobOff; }

    QColor window() const { return appearance_.materials().popover; }

    QColor card() const { return appearance_.materials().raised; }

    QColor subdued() const { return appearance_.materials().subdued; }

    QColor text() const { return appearance_.materials().text; }

    QColor secondaryText() const { return appearance_.materials().secondaryText; }

    QColor divider() const { return appearance_.materials().divider; }

    QColor control() const { return appearance_.materials().control; }

    QColor link() const { return appearance_.materials().link; }

    QColor destructive() const { return appearance_.materials().destructive; }

    QColor shadow() const { return appearance_.materials().shadow; }

    QString iconFamily() const;

    QFont title() const { return font(Theme::Typography::title); }

    QFont body() const { return font(Theme::Typography::body); }

    QFont bodyMedium() const;
    QFont bodyStrong() const;

    QFont section() const { return font(Theme::Typography::section); }

    QFont caption() const { return font(Theme::Typography::caption); }

    QFont readout() const { return font(Theme::Typography::readout); }

    QFont smallReadout() const { return font(Theme::Typography::smallReadout); }

    int quick() const { return duration(Theme::Motion::quick); }

    int standard() const { return duration(Theme::Motion::standard); }

    int slow() const { return duration(Theme::Motion::slow); }

Q_SIGNALS:
    void changed();

private:
    QFont font(const Theme::Typography::Style& style) const;
    int duration(std::chrono::milliseconds usual) const;

    const Appearance& appearance_;

    int xxs_ = Theme::Spacing::xxs;
    int xs_ = Theme::Spacing::xs;
    int sm_ = Theme::Spacing::sm;
    int md_ = Theme::Spacing::md;
    int lg_ = Theme::Spacing::lg;
    int xl_ = Theme::Spacing::xl;
    int radiusControl_ = Theme::Radius::control;
    int radiusSurface_ = Theme::Radius::surface;
    int radiusWindow_ = Theme::Radius::window;
    int radiusPill_ = Theme::Radius::pill;
    int row_ = Theme::Controls::row;
    int listRow_ = Theme::Controls::listRow;
    int tabWidth_ = Theme::Controls::tabWidth;
    int onboardingMarker_ = Theme::Controls::onboardingMarker;
    int onboardingButton_ = Theme::Controls::onboardingButton;
    int onboardingPrimaryButton_ = Theme::Controls::onboardingPrimaryButton;
};

} // namespace cindertop::ui
