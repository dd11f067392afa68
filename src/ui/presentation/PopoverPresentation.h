#pragma once

#include "app/AppState.h"
#include "ui/presentation/PopoverContents.h"
#include "ui/presentation/ProgramActions.h"

#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <QStringList>
#include <vector>

namespace cindertop::ui {

/// What the popover shows, and what its buttons do. Main thread.
class PopoverPresentation : public QObject {
    Q_OBJECT

    Q_PROPERTY(cindertop::ui::PopoverContents contents READ contents NOTIFY changed)
    Q_PROPERTY(QString detailText READ detailText NOTIFY changed)
    Q_PROPERTY(bool offersUpdateCheck READ offersUpdateCheck CONSTANT)
    Q_PROPERTY(QString settingsTitle READ settingsTitle CONSTANT)
    Q_PROPERTY(bool hasCompositor READ hasCompositor WRITE setHasCompositor NOTIFY hasCompositorChanged)
    Q_PROPERTY(bool isWindow READ isWindow NOTIFY surroundingsChanged)
    Q_PROPERTY(QString note READ note NOTIFY surroundingsChanged)
    Q_PROPERTY(int shadowMargin READ shadowMargin NOTIFY hasCompositorChanged)

public:
    /// `state` must outlive this.
    PopoverPresentation(AppState& state, ProgramActions actions);

    const PopoverContents& contents() const { return contents_; }

    /// What follows the status word: "Chip 96°C · Rising", in an ordinary window after "Score 83"; may be
    /// empty.
    QString detailText() const;

    bool offersUpdateCheck() const { return state_.offersUpdateCheck(); }

    /// What leads to the settings window.
    QString settingsTitle() const;

    /// Whether a window may be translucent, and so have round corners and a shadow. Where nothing composes
    /// the screen its transparent parts would be black. False at first.
    bool hasCompositor() const { return hasCompositor_; }

    void setHasCompositor(bool hasCompositor);

    /// Whether the contents stand in an ordinary window, with a frame of the desktop's. False at first.
    bool isWindow() const { return isWindow_; }

    void setIsWindow(bool isWindow);

    /// How to get back to a window on a desktop whose panel has no place for the program; else empty.
    QString note() const;

    /// True at first.
    void setHasStatusItem(bool hasItem);

    /// How far the window reaches beyond the panel on each side, for its shadow.
    int shadowMargin() const { return hasCompositor_ ? 24 : 0; }

    /// Pauses or resumes; before the terms are accepted it asks for them.
    Q_INVOKABLE void toggleMonitoring();
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void openHelp() const;
    Q_INVOKABLE void openPreferences();
    Q_INVOKABLE void quit() const;
    Q_INVOKABLE void close() const;

Q_SIGNALS:
    void changed();
    void hasCompositorChanged();
    void surroundingsChanged();

private:
    void observe();
    void update();

    AppState& state_;
    ProgramActions actions_;
    PopoverContents contents_;
    bool hasCompositor_ = false;
    bool isWindow_ = false;
    bool hasStatusItem_ = true;
    std::vector<QPropertyNotifier> observations_;
};

} // namespace cindertop::ui
