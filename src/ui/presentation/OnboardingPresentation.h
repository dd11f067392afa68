#pragma once

#include "app/AppState.h"
#include "ui/presentation/ProgramActions.h"

#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <QStringList>
#include <array>

namespace cindertop::ui {

/// What the onboarding window shows. Main thread.
class OnboardingPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(int marker READ marker NOTIFY changed)
    Q_PROPERTY(QString statusTitle READ statusTitle NOTIFY changed)
    Q_PROPERTY(QString statusDetail READ statusDetail NOTIFY changed)
    Q_PROPERTY(bool hasPressure READ hasPressure NOTIFY changed)
    Q_PROPERTY(bool showsDetails READ showsDetails WRITE setShowsDetails NOTIFY changed)
    Q_PROPERTY(QStringList detailTitles READ detailTitles NOTIFY changed)
    Q_PROPERTY(QStringList detailValues READ detailValues NOTIFY changed)
    Q_PROPERTY(QString tagline READ tagline CONSTANT)
    Q_PROPERTY(QString placeText READ placeText CONSTANT)
    Q_PROPERTY(QString detailsName READ detailsName CONSTANT)
    Q_PROPERTY(bool acceptedLegal READ acceptedLegal WRITE setAcceptedLegal NOTIFY changed)
    Q_PROPERTY(bool canStart READ canStart NOTIFY changed)

public:
    /// How far the hardware check is: not begun, running, passed, not passed, or passed with less to see.
    enum class Marker { number, checking, complete, failed, caution };

    /// `state` must outlive this.
    OnboardingPresentation(AppState& state, ProgramActions actions);

    /// A raw Marker.
    int marker() const { return static_cast<int>(checkMarker()); }

    QString statusTitle() const;
    QString statusDetail() const;

    /// The check has found that thermal pressure can be followed.
    bool hasPressure() const;

    bool showsDetails() const;
    void setShowsDetails(bool shows);

    // What the machine is and has, each title with its value; what it does not tell is "unknown".
    QStringList detailTitles() const;
    QStringList detailValues() const;

    // What the window says besides.
    QString tagline() const;
    /// Where the program will be found.
    QString placeText() const;
    QString detailsName() const;

    bool acceptedLegal() const { return acceptedLegal_; }

    void setAcceptedLegal(bool accepted);

    /// The terms are ticked, and the check is over, whatever it found.
    bool canStart() const;

    /// Accepts the terms, which starts monitoring and closes the window. Does nothing while it cannot start.
    Q_INVOKABLE void start();
    Q_INVOKABLE void openTerms() const;
    Q_INVOKABLE void openPrivacyPolicy() const;

Q_SIGNALS:
    void changed();

private:
    Marker checkMarker() const;

    const OnboardingState& onboarding() const { return *state_.published().onboardingState; }

    OperatingSystem system() const { return state_.environment().machine.operatingSystem; }

    AppState& state_;
    ProgramActions actions_;
    bool acceptedLegal_ = false;
    std::array<QPropertyNotifier, 3> observations_;
};

} // namespace cindertop::ui
