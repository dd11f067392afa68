#pragma once

#include <QGuiApplication>
#include <array>

namespace cindertop::ui {

/// What fonts and pictures need; it is made at the first call, without a screen, and stays: at the program's
/// end its fonts go before it could.
inline QGuiApplication& application() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static std::array<char, 6> name{"tests"};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static int count = 1;
    static auto* const theApplication = new QGuiApplication(count, arguments.data());
    return *theApplication;
}

} // namespace cindertop::ui
