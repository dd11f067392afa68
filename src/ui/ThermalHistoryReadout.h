#pragma once

#include <QObject>
#include <QString>

namespace cindertop::ui {

/// What one sample of the history says, in words. An empty text is not known.
struct ThermalHistoryReadout {
    Q_GADGET
    Q_PROPERTY(bool isPresent MEMBER isPresent)
    Q_PROPERTY(double position MEMBER position)
    Q_PROPERTY(double height MEMBER height)
    Q_PROPERTY(int level MEMBER level)
    Q_PROPERTY(QString time MEMBER time)
    Q_PROPERTY(QString score MEMBER score)
    Q_PROPERTY(QString levelLabel MEMBER levelLabel)
    Q_PROPERTY(QString cpu MEMBER cpu)
    Q_PROPERTY(QString temperature MEMBER temperature)

public:
    bool isPresent{};
    double position{}; ///< 0 an hour ago to 1 now
    double height{};   ///< of the score, 0 to 1
    int level{};
    QString time;
    QString score;
    QString levelLabel;
    QString cpu;
    QString temperature;

    bool operator==(const ThermalHistoryReadout&) const = default;
};

} // namespace cindertop::ui
