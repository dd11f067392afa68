#pragma once

#include "support/Wording.h"

#include <QObject>
#include <QString>

namespace cindertop::ui {

/// What the settings window's System tab says where systems differ.
struct SystemTexts {
    Q_GADGET
    Q_PROPERTY(QString infoTitle MEMBER infoTitle CONSTANT)
    Q_PROPERTY(QString infoHelp MEMBER infoHelp CONSTANT)
    Q_PROPERTY(QString loginTitle MEMBER loginTitle CONSTANT)
    Q_PROPERTY(QString dockTitle MEMBER dockTitle CONSTANT)
    Q_PROPERTY(QString dockHelp MEMBER dockHelp CONSTANT)
    Q_PROPERTY(QString notificationsHelp MEMBER notificationsHelp CONSTANT)
    Q_PROPERTY(QString chipTitle MEMBER chipTitle CONSTANT)
    Q_PROPERTY(QString chipHelp MEMBER chipHelp CONSTANT)
    Q_PROPERTY(QString resetHelp MEMBER resetHelp CONSTANT)

public:
    static SystemTexts in(OperatingSystem system);

    QString infoTitle;
    QString infoHelp;
    QString loginTitle;
    QString dockTitle;
    QString dockHelp;
    QString notificationsHelp;
    QString chipTitle;
    QString chipHelp;
    QString resetHelp;

    bool operator==(const SystemTexts&) const = default;
};

} // namespace cindertop::ui
