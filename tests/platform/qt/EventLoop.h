#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <array>
#include <chrono>

namespace cindertop::desktop {

/// The event loop of the test's thread; it is made at the first call and stays. As a static object it would
/// end within exit(), after what Qt's network (6.8) keeps for as long as the application: Qt would end that
/// twice.
inline QCoreApplication& application() {
    static std::array<char, 6> name{"tests"};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static int count = 1;
    static auto* const theApplication = new QCoreApplication(count, arguments.data());
    return *theApplication;
}

/// Runs the event loop until `isReached`; the test fails when that does not come about in a long time.
template <typename Condition>
void runUntil(Condition isReached) {
    constexpr std::chrono::seconds longTime{60};
    const QDeadlineTimer end(longTime);
    QTimer wake; // not everything that comes about is an event of this thread
    wake.start(std::chrono::milliseconds(10));
    while (!isReached()) {
        ASSERT_FALSE(end.hasExpired()) << "it did not come about";
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace cindertop::desktop
