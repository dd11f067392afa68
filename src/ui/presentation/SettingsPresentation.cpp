#include "ui/presentation/SettingsPresentation.h"

#include "app/Version.h"
#include "support/Wording.h"
#include "ui/presentation/QtText.h"

#include <utility>

namespace cindertop::ui {

namespace {

constexpr Wording aboutWording{"Made for fanless MacBook Airs.", "Made for fanless laptops."};
constexpr Wording versionWording{"", "Version {name}"};

} // namespace

SettingsPresentation::SettingsPresentation(AppState& state, ProgramActions actions)
    : operatingSystem_(state.environment().machine.operatingSystem),
      actions_(std::move(actions)),
      info_(state),
      monitoring_(state),
      cpu_(state, [this](SettingsConfirmation question) { present(std::move(question)); }),
      system_(
          state, [this](SettingsConfirmation question) { present(std::move(question)); },
          actions_.canEnterTaskBar) {}

QStringList SettingsPresentation::tabTitles() {
    QStringList titles;
    for (const auto& tab : settingsTabs) {
        titles += tab.title;
    }
    return titles;
}

QStringList SettingsPresentation::tabSymbolNames() {
    QStringList names;
    for (const auto& tab : settingsTabs) {
        names += tab.symbolName;
    }
    return names;
}

void SettingsPresentation::selectTab(int tab) {
    constexpr int count = settingsTabs.size();
    const auto selected = static_cast<SettingsTab>((tab % count + count) % count);
    if (std::exchange(selectedTab_, selected) != selected) {
        Q_EMIT selectedTabChanged();
    }
}

void SettingsPresentation::present(SettingsConfirmation confirmation) {
    confirmation_ = std::move(confirmation);
    Q_EMIT confirmationChanged();
}

void SettingsPresentation::confirm() {
    if (const auto confirmation = takeConfirmation()) {
        confirmation->action();
    }
}

void SettingsPresentation::cancel() {
    takeConfirmation();
}

std::optional<SettingsConfirmation> SettingsPresentation::takeConfirmation() {
    auto confirmation = std::exchange(confirmation_, std::nullopt);
    if (confirmation) {
        Q_EMIT confirmationChanged();
    }
    return confirmation;
}

void SettingsPresentation::presentAbout() {
    setAboutPresented(true);
}

QString SettingsPresentation::aboutText() const {
    return qtText(aboutWording.in(operatingSystem_));
}

QString SettingsPresentation::versionText() const {
    return QString::fromStdString(withName(versionWording.in(operatingSystem_), version));
}

void SettingsPresentation::closeAbout() {
    setAboutPresented(false);
}

void SettingsPresentation::setAboutPresented(bool isPresented) {
    if (std::exchange(isAboutPresented_, isPresented) != isPresented) {
        Q_EMIT aboutChanged();
    }
}

void SettingsPresentation::openWebsite() const {
    actions_.openWebsite();
}

} // namespace cindertop::ui
