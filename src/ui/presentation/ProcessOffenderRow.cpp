#include "ui/presentation/ProcessOffenderRow.h"

#include "ui/presentation/QtText.h"
#include "ui/theme/ApplicationIcon.h"

#include <algorithm>
#include <limits>

namespace cindertop::ui {

namespace {

enum OffenderRole {
    offenderIDRole = Qt::UserRole,
    displayNameRole,
    categoryRole,
    shareRole,
    iconRole,
    countRole,
    graphicsRole
};

enum ChildRole { processIdentifierRole = Qt::UserRole, processNameRole, childShareRole };

} // namespace

QString shareText(double percent) {
    return QString::number(percent, 'f', 1) + '%';
}

QString graphicsText(const std::optional<double>& graphicsPercent) {
    return graphicsPercent >= leastVisiblePercent ? "GPU " + shareText(*graphicsPercent) : QString();
}

ProcessOffenderRow ProcessOffenderRow::of(const ProcessOffender& offender, OperatingSystem system) {
    return {.offenderID = qtText(offender.id),
            .displayName = qtText(offender.displayName),
            .categoryLabel = qtText(label(offender.category).in(system)),
            .percentText = shareText(offender.cpuPercent),
            .iconSource = applicationIconSource(offender),
            .processCount = static_cast<int>(
                std::min<std::int64_t>(offender.processCount, std::numeric_limits<int>::max())),
            .graphicsText = ui::graphicsText(offender.graphicsPercent)};
}

QVariant ProcessOffenderRow::value(int role) const {
    switch (role) {
    case offenderIDRole:
        return offenderID;
    case Qt::DisplayRole:
    case displayNameRole:
        return displayName;
    case categoryRole:
        return categoryLabel;
    case shareRole:
        return percentText;
    case iconRole:
        return iconSource;
    case countRole:
        return processCount;
    case graphicsRole:
        return graphicsText;
    default:
        return {};
    }
}

QHash<int, QByteArray> ProcessOffenderRow::roleNames() {
    return {{offenderIDRole, "offenderID"}, {displayNameRole, "displayName"}, {categoryRole, "categoryLabel"},
            {shareRole, "percentText"},     {iconRole, "iconSource"},         {countRole, "processCount"},
            {graphicsRole, "graphicsText"}};
}

ProcessChildRow ProcessChildRow::of(const ProcessOffenderChild& child) {
    return {.processIdentifier = child.processIdentifier,
            .processName = qtText(child.name),
            .percentText = shareText(child.cpuPercent)};
}

QVariant ProcessChildRow::value(int role) const {
    switch (role) {
    case processIdentifierRole:
        return processIdentifier;
    case Qt::DisplayRole:
    case processNameRole:
        return processName;
    case childShareRole:
        return percentText;
    default:
        return {};
    }
}

QHash<int, QByteArray> ProcessChildRow::roleNames() {
    return {{processIdentifierRole, "processIdentifier"},
            {processNameRole, "processName"},
            {childShareRole, "percentText"}};
}

} // namespace cindertop::ui
