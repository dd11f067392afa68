#include "ui/theme/DesktopAppearance.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QPalette>

namespace cindertop::ui {

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";

constexpr auto appearanceGroup = "org.freedesktop.appearance";
constexpr auto colorScheme = "color-scheme"; ///< 0 no preference, 1 dark, 2 light
constexpr uint prefersDark = 1;
constexpr uint prefersLight = 2;

constexpr auto interfaceGroup = "org.gnome.desktop.interface";
constexpr auto enableAnimations = "enable-animations";
constexpr auto textScale = "text-scaling-factor";

bool isPaletteDark() {
    const auto palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// What the portal answers is a variant in a variant.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>()) {
        value = qvariant_cast<QDBusVariant>(value).variant();
    }
    return value;
}

} // namespace

DesktopAppearance::DesktopAppearance(Appearance& appearance, const QDBusConnection& bus,
                                     std::optional<bool> isDark)
    : appearance_(appearance),
      bus_(bus),
      portal_(service, bus, QDBusServiceWatcher::WatchForRegistration),
      isFixed_(isDark.has_value()) {
    appearance_.setDark(isDark.value_or(isPaletteDark()));
    connect(&portal_, &QDBusServiceWatcher::serviceRegistered, this, &DesktopAppearance::readAll);
    useBus(bus);
}

void DesktopAppearance::useBus(const QDBusConnection& bus) {
    bus_ = bus;
    portal_.setConnection(bus_);
    if (!bus_.isConnected()) {
        return;
    }
    // Qt refuses a slot that takes the arguments: it does not know their types yet.
    bus_.connect(service, path, interface, "SettingChanged", this, SLOT(settingChanged(QDBusMessage)));
    readAll();
}

void DesktopAppearance::readAll() {
    read(appearanceGroup, colorScheme);
    read(interfaceGroup, enableAnimations);
    read(interfaceGroup, textScale);
}

void DesktopAppearance::settingChanged(const QDBusMessage& signal) {
    const auto arguments = signal.arguments();
    const auto group = arguments.value(0).toString();
    if (signal.signature() == "ssv" && (group == appearanceGroup || group == interfaceGroup)) {
        apply(arguments[1].toString(), unwrapped(arguments[2]));
    }
}

void DesktopAppearance::read(const QString& group, const QString& key) {
    auto question = QDBusMessage::createMethodCall(service, path, interface, "Read");
    question << group << key;
    auto* const watcher = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, key](QDBusPendingCallWatcher* finished) {
                const QDBusPendingReply<QVariant> answer = *finished;
                if (answer.isValid()) {
                    apply(key, unwrapped(answer.value()));
                }
                finished->deleteLater();
            });
}

void DesktopAppearance::apply(const QString& key, const QVariant& value) {
    if (key == colorScheme && !isFixed_) {
        const auto preference = value.toUInt();
        appearance_.setDark(preference == prefersDark || (preference != prefersLight && isPaletteDark()));
    } else if (key == enableAnimations && value.typeId() == QMetaType::Bool) {
        appearance_.setReducesMotion(!value.toBool());
    } else if (key == textScale && value.typeId() == QMetaType::Double) {
        appearance_.setTextScale(value.toDouble());
    }
}

} // namespace cindertop::ui
