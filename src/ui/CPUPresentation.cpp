#include "ui/CPUPresentation.h"

#include <algorithm>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr double leastVisibleCPUPercent = 0.05; ///< less would read "0.0%"

SettingsConfirmation question(const ProcessOffender& offender, const char* verb, const char* message) {
    const auto name = QString::fromStdString(offender.displayName);
    return {.title = QString(verb) + ' ' + name + " App?",
            .message = message,
            .confirmTitle = QString(verb) + " App",
            .role = SettingsConfirmation::Role::destructive,
            .action = {}};
}

} // namespace

CPUPresentation::CPUPresentation(AppState& state, PresentConfirmation presentConfirmation)
    : state_(state),
      presentConfirmation_(std::move(presentConfirmation)),
      sampling_(state, [this] { updateList(); }),
      observations_{
          state.published().processOffenderSnapshot.bindable().addNotifier([this] { update(); }),
          state.published().isPaused.bindable().addNotifier([this] { updateList(); }),
          state.published().legalTermsAccepted.bindable().addNotifier([this] { updateList(); }),
          state.published().showProcessOffenders.bindable().addNotifier([this] { updateList(); }),
      } {
    update();
}

void CPUPresentation::update() {
    updateRows();
    updateList();
    updateSelection();
}

void CPUPresentation::updateRows() {
    std::vector<ProcessOffenderRow> rows;
    for (const auto& offender : state_.published().processOffenderSnapshot->offenders) {
        if (offender.cpuPercent >= leastVisibleCPUPercent) {
            rows.push_back(ProcessOffenderRow::of(offender));
        }
    }
    offenders_.update(std::move(rows));
}

void CPUPresentation::updateList() {
    auto list = offenders_.rows().empty() ? emptyList() : List{};
    if (state_.published().processOffenderSnapshot->isIndexingOrSetupLikely) {
        list.note = "Spotlight or setup work is active. This usually settles on its own.";
    }
    if (list_ != list) {
        list_ = std::move(list);
        Q_EMIT listChanged();
    }
}

CPUPresentation::List CPUPresentation::emptyList() const {
    const auto& snapshot = *state_.published().processOffenderSnapshot;
    const bool isMeasured = state_.isMonitoringPermitted() && !*state_.published().isPaused &&
                            *state_.published().showProcessOffenders;
    const bool isFirst = snapshot.state == ProcessOffenderSnapshotState::collecting ||
                         (isMeasured && snapshot.measuredAt == unixEpoch);
    if (isFirst) {
        return {.emptyText = "Collecting CPU data...", .isMeasuring = true, .note = {}};
    }
    if (sampling_.isSampling()) {
        return {.emptyText = "Refreshing CPU data...", .isMeasuring = true, .note = {}};
    }
    const bool isReady = snapshot.state == ProcessOffenderSnapshotState::ready;
    return {.emptyText = isReady ? "No meaningful CPU usage right now" : "CPU data unavailable",
            .isMeasuring = false,
            .note = {}};
}

void CPUPresentation::select(const QString& offenderID) {
    const auto& offenders = state_.published().processOffenderSnapshot->offenders;
    const auto found = std::ranges::find(offenders, offenderID.toStdString(), &ProcessOffender::id);
    if (found == offenders.end()) {
        return;
    }
    selectedOffenderID_ = found->id;
    retainedSelectedOffender_ = *found;
    isSelectionEnding_ = false;
    detail_.show(*found);
    Q_EMIT selectionChanged();
    sampling_.pin(selectedOffenderID_);
}

void CPUPresentation::back() {
    if (!selectedOffenderID_) {
        return;
    }
    selectedOffenderID_.reset();
    retainedSelectedOffender_.reset();
    sampling_.pin(std::nullopt);
    Q_EMIT selectionChanged();
}

void CPUPresentation::updateSelection() {
    const auto& snapshot = *state_.published().processOffenderSnapshot;
    if (!selectedOffenderID_ || snapshot.state != ProcessOffenderSnapshotState::ready) {
        return;
    }
    const auto found = std::ranges::find(snapshot.offenders, *selectedOffenderID_, &ProcessOffender::id);
    if (found != snapshot.offenders.end()) {
        retainedSelectedOffender_ = *found;
        detail_.show(*found);
    } else if (isSelectionEnding_) {
        back();
    } else {
        detail_.showResting();
    }
}

void CPUPresentation::quit() {
    if (!retainedSelectedOffender_) {
        return;
    }
    auto confirmation = question(*retainedSelectedOffender_, "Quit",
                                 "Cindertop will ask the whole app to quit normally, not only the selected "
                                 "process row. Save any work first if needed.");
    confirmation.action = [this, offender = *retainedSelectedOffender_] { end(offender, false); };
    presentConfirmation_(std::move(confirmation));
}

void CPUPresentation::forceQuit() {
    if (!retainedSelectedOffender_) {
        return;
    }
    auto confirmation = question(*retainedSelectedOffender_, "Force Quit",
                                 "macOS will force quit the whole app immediately, not only one helper "
                                 "process. Unsaved work can be lost.");
    confirmation.action = [this, offender = *retainedSelectedOffender_] { end(offender, true); };
    presentConfirmation_(std::move(confirmation));
}

void CPUPresentation::end(const ProcessOffender& offender, bool force) {
    if (state_.quitOffenderApplication(offender, force)) {
        isSelectionEnding_ = selectedOffenderID_ == offender.id;
    }
}

void CPUPresentation::setShown(bool isShown) {
    if (std::exchange(isShown_, isShown) != isShown) {
        sampling_.setShown(isShown);
        Q_EMIT shownChanged();
    }
}

} // namespace cindertop::ui
