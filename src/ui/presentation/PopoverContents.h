#pragma once

#include "app/AppState.h"

#include <QString>
#include <QStringList>

namespace cindertop::ui {

/// The texts, symbols and level of the popover at one moment. An empty text is not shown.
struct PopoverContents {
    /// The program's first question is still open: nothing is measured.
    bool isWaitingForTerms{};
    int level{}; ///< a raw ThermalAssistantPresentation::Status
    QString statusText;
    QString symbolName;
    QString scoreText; ///< empty where nothing tells the heat, or nothing is measured
    QString temperatureText;
    QString trendLabel;
    QString tipMessage;
    QStringList secondaryInsightTitles; ///< beside the main advice, where the user wants details
    QStringList secondaryInsightMessages;
    QString offenderName; ///< empty without an offender
    QString offenderPercentText;
    QString offenderIconSource;
    QString toggleTitle;
    QString toggleSymbolName;
    bool savesPower{};

    static PopoverContents of(const AppState& state);
    bool operator==(const PopoverContents&) const = default;
};

} // namespace cindertop::ui
