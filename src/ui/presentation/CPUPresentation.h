#pragma once

#include "app/AppState.h"
#include "ui/presentation/ProcessOffenderDetail.h"
#include "ui/presentation/ProcessOffenderRow.h"
#include "ui/presentation/ProcessOffenderSampling.h"
#include "ui/presentation/SettingsConfirmation.h"

#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <array>
#include <optional>

namespace cindertop::ui {

/// What the settings window's CPU tab shows: the offenders, or one of them closely. Main thread.
class CPUPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* offenders READ offenders CONSTANT)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY listChanged)
    Q_PROPERTY(bool isMeasuring READ isMeasuring NOTIFY listChanged)
    Q_PROPERTY(QString note READ note NOTIFY listChanged)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
    Q_PROPERTY(cindertop::ui::ProcessOffenderDetail* detail READ detail CONSTANT)
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY shownChanged)

public:
    /// `state` must outlive this.
    CPUPresentation(AppState& state, PresentConfirmation presentConfirmation);

    /// Those whose share is worth a row.
    QAbstractItemModel* offenders() { return &offenders_; }

    /// Why there are no rows; empty with rows.
    QString emptyText() const { return list_.emptyText; }

    /// There are no rows because the first answer is still to come.
    bool isMeasuring() const { return list_.isMeasuring; }

    /// About the whole load; empty without.
    QString note() const { return list_.note; }

    const std::optional<std::string>& selectedOffenderID() const { return selectedOffenderID_; }

    /// The selected offender as it was last seen.
    const std::optional<ProcessOffender>& retainedSelectedOffender() const {
        return retainedSelectedOffender_;
    }

    bool hasSelection() const { return retainedSelectedOffender_.has_value(); }

    /// Of the selected offender; of the last one after its end, while it fades.
    ProcessOffenderDetail* detail() { return &detail_; }

    /// Looks closely at an offender of the list.
    Q_INVOKABLE void select(const QString& offenderID);
    Q_INVOKABLE void back();
    /// Asks, and then asks the selected application to end.
    Q_INVOKABLE void quit();
    Q_INVOKABLE void forceQuit();

    bool isShown() const { return isShown_; }

    /// Only what is shown is sampled.
    void setShown(bool isShown);

Q_SIGNALS:
    void listChanged();
    void selectionChanged();
    void shownChanged();

private:
    struct List {
        QString emptyText;
        bool isMeasuring = false;
        QString note;

        bool operator==(const List&) const = default;
    };

    void update();

    OperatingSystem system() const { return state_.environment().machine.operatingSystem; }

    void updateRows();
    void updateList();
    void updateSelection();
    List emptyList() const;
    void end(const ProcessOffender& offender, bool force);

    AppState& state_;
    PresentConfirmation presentConfirmation_;
    ProcessOffenderSampling sampling_;
    ProcessOffenderModel offenders_;
    ProcessOffenderDetail detail_;
    List list_;
    std::optional<std::string> selectedOffenderID_;
    std::optional<ProcessOffender> retainedSelectedOffender_;
    bool isSelectionEnding_ = false; ///< it was asked to end, and agreed
    bool isShown_ = false;
    std::array<QPropertyNotifier, 4> observations_;
};

} // namespace cindertop::ui
