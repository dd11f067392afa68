#pragma once

#include "platform/UserDefaults.h"

#include <QSize>
#include <optional>

namespace cindertop::ui {

/// The size that the user gave the settings window, in points; none before, or where it cannot be read.
std::optional<QSize> storedSettingsSize(const UserDefaults& defaults);
void storeSettingsSize(UserDefaults& defaults, const QSize& size);

} // namespace cindertop::ui
