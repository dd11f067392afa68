#pragma once

#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryFile>
#include <array>

namespace cindertop::ui {

/// What fonts and pictures need; it is made at the first call, without a real screen, and stays: at the
/// program's end its fonts go before it could. The middle one of its screens is that of a
/// small laptop at 200 %; Qt's versions differ in which end is the primary one.
inline QGuiApplication& application() {
    static auto* const theApplication = [] {
        static std::array<char, 6> name{"tests"};
        static std::array<char*, 2> arguments{name.data(), nullptr};
        static int count = 1;
        QTemporaryFile screens;
        if (screens.open()) {
            screens.write(R"({"screens": [
                {"name": "usual", "x": 0, "y": 0, "width": 1600, "height": 1200},
                {"name": "small", "x": 1600, "y": 0, "width": 512, "height": 300},
                {"name": "other", "x": 2112, "y": 0, "width": 1600, "height": 1200}]})");
            screens.flush();
        }
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toLocal8Bit());
        return new QGuiApplication(count, arguments.data());
    }();
    return *theApplication;
}

inline QScreen& smallScreen() {
    application();
    return *QGuiApplication::screens().at(1);
}

} // namespace cindertop::ui
