#pragma once

#include "app/AppState.h"
#include "ui/presentation/HeatPresentation.h"

#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <QStringList>
#include <array>

namespace cindertop::ui {

/// What the settings window's Info tab shows. Main thread.
class InfoPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(cindertop::ui::HeatPresentation* heat READ heat CONSTANT)
    Q_PROPERTY(QString batteryHelp READ batteryHelp CONSTANT)
    Q_PROPERTY(QString powerText READ powerText NOTIFY changed)
    Q_PROPERTY(QStringList batterySegments READ batterySegments NOTIFY changed)
    Q_PROPERTY(int batteryLevel READ batteryLevel NOTIFY changed)
    Q_PROPERTY(QString processorText READ processorText NOTIFY changed)
    Q_PROPERTY(QString displaysText READ displaysText NOTIFY changed)
    Q_PROPERTY(QString clamshellText READ clamshellText NOTIFY changed)

public:
    /// `state` must outlive this.
    explicit InfoPresentation(AppState& state);

    HeatPresentation* heat() { return &heat_; }

    QString batteryHelp() const;

    QString powerText() const { return contents_.powerText; }

    QStringList batterySegments() const { return contents_.batterySegments; }

    /// The rating in the last segment as a level, 0 normal to 2 serious; -1: it is no rating.
    int batteryLevel() const { return contents_.batteryLevel; }

    QString processorText() const { return contents_.processorText; }

    QString displaysText() const { return contents_.displaysText; }

    QString clamshellText() const { return contents_.clamshellText; }

Q_SIGNALS:
    void changed();

private:
    struct Contents {
        QString powerText;
        QStringList batterySegments;
        int batteryLevel = -1;
        QString processorText;
        QString displaysText;
        QString clamshellText;

        static Contents of(const AppState& state);
        bool operator==(const Contents&) const = default;
    };

    void update();

    AppState& state_;
    Contents contents_;
    HeatPresentation heat_;
    std::array<QPropertyNotifier, 2> observations_;
};

} // namespace cindertop::ui
