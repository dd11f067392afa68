#pragma once

#include <QString>
#include <string_view>

namespace cindertop::ui {

/// The text that draws a symbol in the icon font; an unknown name is empty.
QString symbolText(std::string_view symbolName);

} // namespace cindertop::ui
