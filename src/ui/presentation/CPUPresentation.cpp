#include "ui/presentation/CPUPresentation.h"

#include "support/Wording.h"
#include "ui/presentation/QtText.h"

#include <algorithm>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr Wording indexingNote{"Spotlight or setup work is active. This usually settles on its own.",
                               "File indexing or setup work is active. This usually settles on its own."};

struct QuitQuestion {
    Wording title;
    Wording message;
    Wording confirmTitle;
};

constexpr QuitQuestion quitQuestion{
    .title = {"Quit {name} App?", "Quit {name}?"},
    .message =
        Wording::same("Cindertop will ask the whole app to quit normally, not only the selected process "
                      "row. Save any work first if needed."),
    .confirmTitle = {"Quit App", "Quit"}};
constexpr QuitQuestion forceQuitQuestion{
    .title = {"Force Quit {name} App?", "Force Quit {name}?"},
    .message = {"macOS will force quit the whole app immediately, not only one helper process. Unsaved work "
                "can be lost.",
                "The whole app will be force quit immediately, not only one helper process. Unsaved work can "
                "be lost."},
    .confirmTitle = {"Force Quit App", "Force Quit"}};

SettingsConfirmation questionAbout(const ProcessOffender& offender, const QuitQuestion& question,
                                   OperatingSystem system) {
    return {.title = QString::fromStdString(withName(question.title.in(system), offender.displayName)),
            .message = qtText(question.message.in(system)),
            .confirmTitle = qtText(question.confirmTitle.in(system)),
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
          state.published().settings.bindable().addNotifier([this] { updateList(); }),
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
        if (offender.cpuPercent >= leastVisiblePercent || offender.graphicsPercent >= leastVisiblePercent) {
            rows.push_back(ProcessOffenderRow::of(offender, system()));
        }
    }
    offenders_.update(std::move(rows));
}

void CPUPresentation::updateList() {
    auto list = offenders_.rows().empty() ? emptyList() : List{};
    if (state_.published().processOffenderSnapshot->isIndexingOrSetupLikely) {
        list.note = qtText(indexingNote.in(system()));
    }
    if (list_ != list) {
        list_ = std::move(list);
        Q_EMIT listChanged();
    }
}

CPUPresentation::List CPUPresentation::emptyList() const {
    const auto& snapshot = *state_.published().processOffenderSnapshot;
    const bool isMeasured = state_.isMonitoringPermitted() && !*state_.published().isPaused &&
                            state_.published().settings->showProcessOffenders;
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
    detail_.show(*found, system());
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
        detail_.show(*found, system());
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
    auto confirmation = questionAbout(*retainedSelectedOffender_, quitQuestion, system());
    confirmation.action = [this, offender = *retainedSelectedOffender_] { end(offender, false); };
    presentConfirmation_(std::move(confirmation));
}

void CPUPresentation::forceQuit() {
    if (!retainedSelectedOffender_) {
        return;
    }
    auto confirmation = questionAbout(*retainedSelectedOffender_, forceQuitQuestion, system());
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
