#pragma once

#include "ui/Appearance.h"
#include "ui/Views.h"

#include <QString>
#include <expected>
#include <memory>

namespace cindertop::ui {

/// Loads the library with the windows, which then stays, and makes what it holds. `appearance` must outlive
/// the result. The error is one sentence.
std::expected<std::unique_ptr<Views>, QString> loadViews(Appearance& appearance);

} // namespace cindertop::ui
