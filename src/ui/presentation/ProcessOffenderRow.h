#pragma once

#include "cpu/ProcessOffender.h"
#include "ui/presentation/KeyedListModel.h"

#include <QString>

namespace cindertop::ui {

/// "61.8%".
QString shareText(double cpuPercent);

/// An offender in the list.
struct ProcessOffenderRow {
    QString offenderID;
    QString displayName;
    QString categoryLabel;
    QString percentText;
    QString iconSource;
    int processCount{};

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
