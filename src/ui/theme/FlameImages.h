#pragma once

#include "app/ThermalAssistantPresentation.h"
#include "ui/tray/StatusItem.h"

#include <QColor>
#include <QPainterPath>
#include <QString>
#include <array>
#include <optional>

namespace cindertop::ui {

/// The five looks of the status item's flame.
struct FlameImages {
    static constexpr std::array sizes{16, 22, 24, 32, 48}; ///< pixels

    StatusImage active; ///< a template: its colour is the desktop's affair
    StatusImage fair;
    StatusImage serious;
    StatusImage critical;
    StatusImage paused;

    /// Needs a QGuiApplication.
    static FlameImages draw();

    /// The colour of a look that has one of its own.
    static std::optional<QColor> color(ThermalAssistantPresentation::Status status);
    /// What an icon theme may call the picture.
    static QString iconName(ThermalAssistantPresentation::Status status);

    /// The flame where it stands in a picture of `size` pixels. Needs a QGuiApplication.
    static QPainterPath outline(int size);

    const StatusImage& of(ThermalAssistantPresentation::Status status) const;
};

} // namespace cindertop::ui
