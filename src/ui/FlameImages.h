#pragma once

#include "app/ThermalAssistantPresentation.h"
#include "ui/StatusItem.h"

#include <QPainterPath>
#include <array>

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

    /// The flame where it stands in a picture of `size` pixels. Needs a QGuiApplication.
    static QPainterPath outline(int size);

    const StatusImage& of(ThermalAssistantPresentation::Status status) const;
};

} // namespace cindertop::ui
