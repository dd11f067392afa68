#pragma once

#include "ui/theme/Appearance.h"
#include "ui/windows/Views.h"

#include <memory>

namespace cindertop::ui {

/// The windows in Qt Quick. `appearance` must outlive the result.
std::unique_ptr<Views> makeQuickViews(const Appearance& appearance);

} // namespace cindertop::ui
