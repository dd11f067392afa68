#pragma once

#include "app/ThermalAssistantPresentation.h"
#include "persistence/AppSettings.h"

#include <QColor>
#include <QString>
#include <optional>

namespace cindertop::ui {

/// What stands beside the flame.
struct StatusLabel {
    QString text;
    std::optional<QColor> color; ///< absent: that of the desktop's own labels

    /// Absent where the mode shows nothing for the presentation.
    static std::optional<StatusLabel> of(const ThermalAssistantPresentation& presentation,
                                         MenuBarInfoMode mode);

    bool operator==(const StatusLabel&) const = default;
};

} // namespace cindertop::ui
