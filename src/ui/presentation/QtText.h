#pragma once

#include <QString>
#include <string_view>

namespace cindertop::ui {

/// From UTF-8.
inline QString qtText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace cindertop::ui
