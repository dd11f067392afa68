#pragma once

#include "app/AppState.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace cindertop::ui {

/// The texts, symbols and level of the popover at one moment. An empty text is not shown.
struct PopoverContents {
    Q_GADGET
    Q_PROPERTY(int level MEMBER level)
    Q_PROPERTY(QString statusText MEMBER statusText)
    Q_PROPERTY(QString symbolName MEMBER symbolName)
    Q_PROPERTY(QString tipMessage MEMBER tipMessage)
    Q_PROPERTY(QStringList secondaryInsightTitles MEMBER secondaryInsightTitles)
    Q_PROPERTY(QStringList secondaryInsightMessages MEMBER secondaryInsightMessages)
    Q_PROPERTY(QString offenderName MEMBER offenderName)
    Q_PROPERTY(QString offenderPercentText MEMBER offenderPercentText)
    Q_PROPERTY(QString offenderIconSource MEMBER offenderIconSource)
    Q_PROPERTY(QString toggleTitle MEMBER toggleTitle)
    Q_PROPERTY(QString toggleSymbolName MEMBER toggleSymbolName)
    Q_PROPERTY(bool savesPower MEMBER savesPower)

public:
    /// The program's first question is still open: nothing is measured.
    bool isWaitingForTerms{};
    int level{}; ///< a raw ThermalAssistantPresentation::Status
    QString statusText;
    QString symbolName;
    QString scoreText; ///< empty where nothing tells the heat, or nothing is measured
    QString temperatureText;
    QString trendLabel;
    QString tipMessage;
    QStringList
        secondaryInsightTitles; ///< beside the tip, the most urgent first, where the user wants details
    QStringList secondaryInsightMessages;
    QString offenderName; ///< empty without an offender
    QString offenderPercentText;
    QString offenderIconSource;
    QString toggleTitle;
    QString toggleSymbolName;
    bool savesPower{}; ///< the machine is to use little power: nothing moves by itself

    static PopoverContents of(const AppState& state);
    bool operator==(const PopoverContents&) const = default;
};

} // namespace cindertop::ui
