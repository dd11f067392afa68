#pragma once

#include "ui/theme/Theme.h"

#include <QObject>

namespace cindertop::ui {

/// How the desktop wants windows to look. Main thread.
class Appearance : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY changed)
    Q_PROPERTY(double textScale READ textScale NOTIFY changed)

public:
    bool isDark() const { return isDark_; }

    /// No animation.
    bool reducesMotion() const { return reducesMotion_; }

    /// The user's text size against the usual one, 0.5 to 3.
    double textScale() const { return textScale_; }

    const Theme::Materials& materials() const {
        return isDark_ ? Theme::Materials::dark() : Theme::Materials::light();
    }

    void setDark(bool isDark);
    void setReducesMotion(bool reducesMotion);
    /// Brought into its range.
    void setTextScale(double textScale);

Q_SIGNALS:
    void changed();

private:
    bool isDark_ = false;
    bool reducesMotion_ = false;
    double textScale_ = 1;
};

} // namespace cindertop::ui
