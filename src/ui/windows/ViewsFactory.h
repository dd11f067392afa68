#pragma once

#include "ui/ViewsInterface.h"
#include "ui/theme/Appearance.h"
#include "ui/windows/Views.h"

#include <QtPlugin>
#include <memory>

namespace cindertop::ui {

/// What the library of the windows holds for the program. The interface's name carries the identity of the
/// build: classes, texts and symbols of both sides fit within one build only.
class ViewsFactory {
public:
    virtual ~ViewsFactory() = default;
    /// `appearance` must outlive the result.
    virtual std::unique_ptr<Views> makeViews(const Appearance& appearance) = 0;
};

} // namespace cindertop::ui

Q_DECLARE_INTERFACE(cindertop::ui::ViewsFactory, CINDERTOP_VIEWS_INTERFACE)
