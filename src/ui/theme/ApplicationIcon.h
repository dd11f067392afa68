#pragma once

#include "cpu/ProcessOffender.h"

#include <QString>

namespace cindertop::ui {

/// The address "image://application/IDENTIFIER/NAME" of an application's icon, each part percent-encoded. An
/// identifier is a desktop entry's, without ".desktop"; it may be empty. `name` gives the letter and colour
/// where there is no icon.
QString applicationIconSource(const QString& identifier, const QString& name);
QString applicationIconSource(const ProcessOffender& offender);

} // namespace cindertop::ui
