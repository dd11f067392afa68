#pragma once

#include "app/FakeProgram.h"
#include "ui/GuiApplication.h"
#include "ui/presentation/ProgramActions.h"
#include "ui/theme/Appearance.h"
#include "ui/windows/ViewsLibrary.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QQuickWindow>
#include <QStringList>
#include <QWindow>

namespace cindertop::ui {

/// Collects what QML complains of while it lives.
class Complaints {
public:
    Complaints() {
        list().clear();
        previous_ =
            qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
                if (type != QtDebugMsg && type != QtInfoMsg && text.contains(".qml")) {
                    list() += text;
                }
            });
    }

    ~Complaints() { qInstallMessageHandler(previous_); }

    Complaints(const Complaints&) = delete;
    Complaints& operator=(const Complaints&) = delete;

    static QStringList& list() {
        static QStringList complaints;
        return complaints;
    }

private:
    QtMessageHandler previous_;
};

/// A fake program with its windows, without a screen. What the windows ask for is written down.
class ShownProgram : public Windows {
public:
    FakeProgram program;
    Appearance appearance;
    QStringList asked;
    AppState* state;
    ViewsLibrary library;
    std::unique_ptr<Views> views;

    ShownProgram() : state(&startIn(program, *this)) {
        qputenv("QT_QUICK_BACKEND", "software");
        application();
        QAccessible::setActive(true);
        if (auto made = library.makeViews(appearance)) {
            views = *std::move(made);
        }
    }

    ProgramActions actions() {
        const auto asks = [this](const char* what) { return [this, what] { asked += what; }; };
        return {.openHelp = asks("help"),
                .openTerms = asks("terms"),
                .openPrivacyPolicy = asks("privacy"),
                .openWebsite = asks("website"),
                .closePopover = asks("close"),
                .quit = asks("quit")};
    }

    void showOnboarding() override { asked += "onboarding"; }

    void closeOnboarding() override {}

    void showSettings() override { asked += "settings"; }

private:
    static AppState& startIn(FakeProgram& program, Windows& windows) {
        program.windows = &windows;
        return program.start();
    }
};

inline void show(QWindow& window) {
    window.show();
    window.requestActivate();
    QCoreApplication::processEvents();
}

/// Lays a window out and draws it now.
inline void draw(QWindow& window) {
    dynamic_cast<QQuickWindow&>(window).grabWindow();
    QCoreApplication::processEvents();
}

inline void press(QWindow& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers);
        QCoreApplication::sendEvent(&window, &event);
    }
}

/// The name of what has the focus, as a screen reader tells it.
inline QString focusedIn(const QWindow& window) {
    const auto* const interface = QAccessible::queryAccessibleInterface(window.focusObject());
    return interface != nullptr ? interface->text(QAccessible::Name) : QString();
}

/// What assistive technology finds and sees in a window, from top to bottom.
inline std::vector<QAccessibleInterface*> accessibleIn(QWindow& window) {
    std::vector<QAccessibleInterface*> found{QAccessible::queryAccessibleInterface(&window)};
    for (std::size_t next = 0; next < found.size(); ++next) {
        for (int child = 0; child < found[next]->childCount(); ++child) {
            if (auto* const item = found[next]->child(child); !item->state().invisible) {
                found.push_back(item);
            }
        }
    }
    return found;
}

} // namespace cindertop::ui
