#include "ui/presentation/ProcessOffenderDetail.h"

#include "ui/presentation/ContextTexts.h"

#include <algorithm>
#include <vector>

namespace cindertop::ui {

void ProcessOffenderDetail::show(const ProcessOffender& offender, OperatingSystem system) {
    row_ = ProcessOffenderRow::of(offender, system);
    history_ = ProcessLoadHistory::of(offender.history);
    canQuit_ = offender.canTerminateApplication;
    isSystemOwned_ = isSystemOwned(offender.category);
    std::vector<ProcessChildRow> children;
    std::ranges::transform(offender.children, std::back_inserter(children), &ProcessChildRow::of);
    children_.update(std::move(children));
    Q_EMIT changed();
}

void ProcessOffenderDetail::showResting() {
    row_.percentText = "–";
    row_.graphicsText.clear();
    Q_EMIT changed();
}

QString ProcessOffenderDetail::systemOwnedNote() const {
    return isSystemOwned_ ? "System-owned load is shown for diagnosis only." : QString();
}

QString ProcessOffenderDetail::historyStartText() const {
    return formattedDuration(history_.span().count()) + " ago";
}

QString ProcessOffenderDetail::historySummary() const {
    if (!hasChart()) {
        return {};
    }
    const auto& points = history_.points;
    const auto highest = std::ranges::max(points, {}, &NormalizedProcessLoadPoint::cpuPercent).cpuPercent;
    return "Now " + shareText(points.back().cpuPercent) + ". Highest " + shareText(highest) + " in " +
           formattedDuration(history_.span().count()) + ".";
}

} // namespace cindertop::ui
