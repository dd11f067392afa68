#pragma once

#include "app/AppState.h"
#include "ui/presentation/KeyedListModel.h"

#include <QList>
#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <array>

namespace cindertop::ui {

/// A fact with its name.
struct HeatFactRow {
    QString title;
    QString text;
    QString symbolName;

    const QString& key() const { return title; }

    QVariant value(int role) const;
    static QHash<int, QByteArray> roleNames();
    bool operator==(const HeatFactRow&) const = default;
};

/// A temperature sensor.
struct SensorRow {
    QString id;
    QString label;
    QString temperatureText;
    QString rangeText; ///< "41°C to 99°C"; empty where it is not known
    QList<double>
        heights; ///< of the last minutes, 0 to 1 from the lowest to the highest; negative: no answer

    const QString& key() const { return id; }

    QVariant value(int role) const;
    static QHash<int, QByteArray> roleNames();
    bool operator==(const SensorRow&) const = default;
};

/// What the Info tab shows of the heat: how much, why, what limits it, and every sensor. Nothing changes
/// while it is not shown. Main thread.
class HeatPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(int level READ level NOTIFY changed)
    Q_PROPERTY(QString levelText READ levelText NOTIFY changed)
    Q_PROPERTY(QString scoreText READ scoreText NOTIFY changed)
    Q_PROPERTY(double share READ share NOTIFY changed)
    Q_PROPERTY(QString trendText READ trendText NOTIFY changed)
    Q_PROPERTY(QString reasonText READ reasonText NOTIFY changed)
    Q_PROPERTY(QString sensorCountText READ sensorCountText NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* facts READ facts CONSTANT)
    Q_PROPERTY(QAbstractItemModel* sensors READ sensors CONSTANT)
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY shownChanged)
    Q_PROPERTY(bool areSensorsShown READ areSensorsShown WRITE showSensors NOTIFY shownChanged)

public:
    /// `state` must outlive this.
    explicit HeatPresentation(AppState& state);

    /// A level, 0 normal to 3 critical; -1: there is none.
    int level() const { return contents_.level; }

    /// The level, or why there is none.
    QString levelText() const { return contents_.levelText; }

    /// "78 of 100"; empty without a level.
    QString scoreText() const { return contents_.scoreText; }

    /// The score as a part of the highest one.
    double share() const { return contents_.share; }

    /// "Rising"; empty without a level.
    QString trendText() const { return contents_.trendText; }

    /// How the score came about; empty without a level.
    QString reasonText() const { return contents_.reasonText; }

    /// "12 sensors"; empty without any.
    QString sensorCountText() const { return contents_.sensorCountText; }

    /// The hottest sensor with its limits, what holds the processor back, watts and fans: what is known of
    /// them.
    QAbstractItemModel* facts() { return &facts_; }

    /// Those that answer, while they are shown.
    QAbstractItemModel* sensors() { return &sensors_; }

    bool isShown() const { return isShown_; }

    void setShown(bool isShown);

    /// Whether the list of sensors is unfolded. Only then are sensors read that nothing else needs.
    bool areSensorsShown() const { return areSensorsShown_; }

    void showSensors(bool areShown);

Q_SIGNALS:
    void changed();
    void shownChanged();

private:
    struct Contents {
        int level = -1;
        QString levelText;
        QString scoreText;
        double share = 0;
        QString trendText;
        QString reasonText;
        QString sensorCountText;

        bool operator==(const Contents&) const = default;
    };

    void update();
    Contents contents(const std::vector<TemperatureReading>& temperatures) const;
    std::vector<HeatFactRow> factRows(const std::vector<TemperatureReading>& temperatures) const;
    std::vector<SensorRow> sensorRows(const std::vector<TemperatureReading>& temperatures) const;

    AppState& state_;
    Contents contents_;
    KeyedListModel<HeatFactRow> facts_;
    KeyedListModel<SensorRow> sensors_;
    bool isShown_ = false;
    bool areSensorsShown_ = false;
    std::array<QPropertyNotifier, 4> observations_;
};

} // namespace cindertop::ui
