#pragma once

#include "app/AppState.h"
#include "ui/ProgramActions.h"

#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <array>

namespace cindertop::ui {

/// What the onboarding window shows. Main thread.
class OnboardingPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(int marker READ marker NOTIFY changed)
    Q_PROPERTY(QString statusTitle READ statusTitle NOTIFY changed)
    Q_PROPERTY(QString statusDetail READ statusDetail NOTIFY changed)
    Q_PROPERTY(bool isSupported READ isSupported NOTIFY changed)
    Q_PROPERTY(bool showsDetails READ showsDetails WRITE setShowsDetails NOTIFY changed)
    Q_PROPERTY(QString model READ model NOTIFY changed)
    Q_PROPERTY(QString chip READ chip NOTIFY changed)
    Q_PROPERTY(QString architecture READ architecture NOTIFY changed)
    Q_PROPERTY(QString power READ power NOTIFY changed)
    Q_PROPERTY(bool acceptedLegal READ acceptedLegal WRITE setAcceptedLegal NOTIFY changed)
    Q_PROPERTY(bool canStart READ canStart NOTIFY changed)

public:
    /// How far the hardware check is: not begun, running, passed, or not passed.
    enum class Marker { number, checking, complete, failed };

    /// `state` must outlive this.
    OnboardingPresentation(AppState& state, ProgramActions actions);

    /// A raw Marker.
    int marker() const { return static_cast<int>(checkMarker()); }

    QString statusTitle() const;
    QString statusDetail() const;

    bool isSupported() const { return checkMarker() == Marker::complete; }

    bool showsDetails() const;
    void setShowsDetails(bool shows);

    // The details; what the machine does not tell is "unknown".
    QString model() const;
    QString chip() const;
    QString architecture() const;
    QString power() const;

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

    AppState& state_;
    ProgramActions actions_;
    bool acceptedLegal_ = false;
    std::array<QPropertyNotifier, 3> observations_;
};

} // namespace cindertop::ui
