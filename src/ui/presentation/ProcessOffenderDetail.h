#pragma once

#include "ui/presentation/ProcessLoadHistory.h"
#include "ui/presentation/ProcessOffenderRow.h"

#include <QObject>
#include <QString>
#include <optional>

namespace cindertop::ui {

/// One offender, looked at closely. Main thread.
class ProcessOffenderDetail : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString displayName READ displayName NOTIFY changed)
    Q_PROPERTY(QString categoryLabel READ categoryLabel NOTIFY changed)
    Q_PROPERTY(QString percentText READ percentText NOTIFY changed)
    Q_PROPERTY(QString graphicsText READ graphicsText NOTIFY changed)
    Q_PROPERTY(QString iconSource READ iconSource NOTIFY changed)
    Q_PROPERTY(int processCount READ processCount NOTIFY changed)
    Q_PROPERTY(bool canQuit READ canQuit NOTIFY changed)
    Q_PROPERTY(QString systemOwnedNote READ systemOwnedNote NOTIFY changed)
    Q_PROPERTY(cindertop::ui::ProcessLoadHistory history READ history NOTIFY changed)
    Q_PROPERTY(bool hasChart READ hasChart NOTIFY changed)
    Q_PROPERTY(QString historyStartText READ historyStartText NOTIFY changed)
    Q_PROPERTY(QString historySummary READ historySummary NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* children READ childModel CONSTANT)

public:
    void show(const ProcessOffender& offender, OperatingSystem system);
    /// The last sample did not find it: it rests, or has ended.
    void showResting();

    QString displayName() const { return row_.displayName; }

    QString categoryLabel() const { return row_.categoryLabel; }

    QString percentText() const { return row_.percentText; }

    QString graphicsText() const { return row_.graphicsText; }

    QString iconSource() const { return row_.iconSource; }

    int processCount() const { return row_.processCount; }

    bool canQuit() const { return canQuit_; }

    /// Empty where the load is the user's own.
    QString systemOwnedNote() const;

    const ProcessLoadHistory& history() const { return history_; }

    /// A line needs two points.
    bool hasChart() const { return history_.points.size() >= 2; }

    QString historyStartText() const;
    /// The chart for those who do not see it.
    QString historySummary() const;

    QAbstractItemModel* childModel() { return &children_; }

Q_SIGNALS:
    void changed();

private:
    ProcessOffenderRow row_;
    ProcessLoadHistory history_;
    ProcessChildModel children_;
    bool canQuit_ = false;
    bool isSystemOwned_ = false;
};

} // namespace cindertop::ui
