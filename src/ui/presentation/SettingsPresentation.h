#pragma once

#include "ui/presentation/CPUPresentation.h"
#include "ui/presentation/InfoPresentation.h"
#include "ui/presentation/MonitoringPresentation.h"
#include "ui/presentation/ProgramActions.h"
#include "ui/presentation/SettingsConfirmation.h"
#include "ui/presentation/SystemPresentation.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

namespace cindertop::ui {

/// The tabs of the settings window, in their order from the left.
enum class SettingsTab { thermal, monitoring, cpu, system };

struct SettingsTabDisplay {
    const char* title;
    const char* symbolName;
};

/// By the tab's raw value.
inline constexpr std::array settingsTabs{
    SettingsTabDisplay{"Info", "info.circle"},
    SettingsTabDisplay{"Monitoring", "chart.xyaxis.line"},
    SettingsTabDisplay{"CPU", "cpu"},
    SettingsTabDisplay{"System", "gearshape"},
};

/// What the settings window shows: its tabs, and what lies over them. Main thread.
class SettingsPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(cindertop::ui::InfoPresentation* info READ info CONSTANT)
    Q_PROPERTY(cindertop::ui::MonitoringPresentation* monitoring READ monitoring CONSTANT)
    Q_PROPERTY(cindertop::ui::CPUPresentation* cpu READ cpu CONSTANT)
    Q_PROPERTY(cindertop::ui::SystemPresentation* system READ system CONSTANT)

    Q_PROPERTY(QStringList tabTitles READ tabTitles CONSTANT)
    Q_PROPERTY(QStringList tabSymbolNames READ tabSymbolNames CONSTANT)
    Q_PROPERTY(int selectedTab READ selectedTab WRITE selectTab NOTIFY selectedTabChanged)

    Q_PROPERTY(bool hasConfirmation READ hasConfirmation NOTIFY confirmationChanged)
    Q_PROPERTY(QString confirmationTitle READ confirmationTitle NOTIFY confirmationChanged)
    Q_PROPERTY(QString confirmationMessage READ confirmationMessage NOTIFY confirmationChanged)
    Q_PROPERTY(QString confirmTitle READ confirmTitle NOTIFY confirmationChanged)
    Q_PROPERTY(QString cancelTitle READ cancelTitle NOTIFY confirmationChanged)
    Q_PROPERTY(bool isDestructive READ isDestructive NOTIFY confirmationChanged)
    Q_PROPERTY(QString aboutText READ aboutText CONSTANT)
    Q_PROPERTY(QString versionText READ versionText CONSTANT)
    Q_PROPERTY(bool isAboutPresented READ isAboutPresented NOTIFY aboutChanged)

public:
    /// `state` must outlive this.
    SettingsPresentation(AppState& state, ProgramActions actions);

    InfoPresentation* info() { return &info_; }

    MonitoringPresentation* monitoring() { return &monitoring_; }

    CPUPresentation* cpu() { return &cpu_; }

    SystemPresentation* system() { return &system_; }

    static QStringList tabTitles();
    static QStringList tabSymbolNames();

    /// A raw SettingsTab.
    int selectedTab() const { return static_cast<int>(selectedTab_); }

    /// Goes round at both ends.
    void selectTab(int tab);

    const std::optional<SettingsConfirmation>& confirmation() const { return confirmation_; }

    bool hasConfirmation() const { return confirmation_.has_value(); }

    // Empty without a confirmation.
    QString confirmationTitle() const { return confirmation_ ? confirmation_->title : QString(); }

    QString confirmationMessage() const { return confirmation_ ? confirmation_->message : QString(); }

    QString confirmTitle() const { return confirmation_ ? confirmation_->confirmTitle : QString(); }

    QString cancelTitle() const { return confirmation_ ? confirmation_->cancelTitle : QString(); }

    bool isDestructive() const {
        return confirmation_ && confirmation_->role == SettingsConfirmation::Role::destructive;
    }

    QString aboutText() const;
    /// "Version 1.2.3"; empty where it is not told.
    QString versionText() const;

    bool isAboutPresented() const { return isAboutPresented_; }

    void present(SettingsConfirmation confirmation);
    /// Runs the action of the question that is open, and closes it.
    Q_INVOKABLE void confirm();
    /// Closes the question without its action.
    Q_INVOKABLE void cancel();

    Q_INVOKABLE void presentAbout();
    Q_INVOKABLE void closeAbout();
    Q_INVOKABLE void openWebsite() const;

Q_SIGNALS:
    void selectedTabChanged();
    void confirmationChanged();
    void aboutChanged();

private:
    std::optional<SettingsConfirmation> takeConfirmation();
    void setAboutPresented(bool isPresented);

    OperatingSystem operatingSystem_;
    ProgramActions actions_;
    InfoPresentation info_;
    MonitoringPresentation monitoring_;
    CPUPresentation cpu_;
    SystemPresentation system_;
    SettingsTab selectedTab_ = SettingsTab::thermal;
    std::optional<SettingsConfirmation> confirmation_;
    bool isAboutPresented_ = false;
};

} // namespace cindertop::ui
