#pragma once

#include "cpu/ProcessOffender.h"
#include "ui/presentation/KeyedListModel.h"

#include <QString>
#include <optional>

namespace cindertop::ui {

inline constexpr double leastVisiblePercent = 0.05; ///< less would read "0.0%"

/// "61.8%".
QString shareText(double percent);

/// "GPU 61.8%"; empty where it is not known or would read 0.0%.
QString graphicsText(const std::optional<double>& graphicsPercent);

/// An offender in the list.
struct ProcessOffenderRow {
    QString offenderID;
    QString displayName;
    QString categoryLabel;
    QString percentText;
    QString iconSource;
    int processCount{};
    QString graphicsText;

    static ProcessOffenderRow of(const ProcessOffender& offender, OperatingSystem system);

    const QString& key() const { return offenderID; }

    QVariant value(int role) const;
    static QHash<int, QByteArray> roleNames();
    bool operator==(const ProcessOffenderRow&) const = default;
};

/// A process of an offender.
struct ProcessChildRow {
    int processIdentifier{};
    QString processName;
    QString percentText;

    static ProcessChildRow of(const ProcessOffenderChild& child);

    int key() const { return processIdentifier; }

    QVariant value(int role) const;
    static QHash<int, QByteArray> roleNames();
    bool operator==(const ProcessChildRow&) const = default;
};

using ProcessOffenderModel = KeyedListModel<ProcessOffenderRow>;
using ProcessChildModel = KeyedListModel<ProcessChildRow>;

} // namespace cindertop::ui
