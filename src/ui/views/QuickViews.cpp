#include "ui/views/QuickViews.h"

#include "ui/presentation/OnboardingPresentation.h"
#include "ui/presentation/PopoverPresentation.h"
#include "ui/presentation/SettingsPresentation.h"
#include "ui/theme/Appearance.h"
#include "ui/views/WindowFit.h"
#include "ui/views/controls/ApplicationIconProvider.h"
#include "ui/views/controls/ThemeSingleton.h"
#include "ui/views/popover/ShadowImageProvider.h"

#include <QDebug>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr QSize smallestSettings{320, 280}; ///< points

/// A window shows one view, which learns what it presents before its bindings run.
class QuickViews final : public Views {
public:
    explicit QuickViews(const Appearance& appearance) : appearance_(appearance) {
        ThemeSingleton::setAppearance(appearance);
        drawInSoftware();
        engine_.addImportPath(":/qt/qml");
        engine_.addImageProvider("application", new ApplicationIconProvider);
        engine_.addImageProvider("shadow", new ShadowImageProvider);
    }

    std::unique_ptr<QWindow> makePopover(PopoverPresentation& presentation) override {
        const bool isPanel = !presentation.isWindow();
        WindowFit::Wishes wishes;
        if (isPanel) {
            wishes.overhang = [&presentation] { return presentation.shadowMargin(); };
        }
        auto window = makeWindow("Popover/RootPopoverView", presentation, std::move(wishes));
        if (window && isPanel) {
            window->setColor(Qt::transparent); // round corners and a shadow
        }
        return window;
    }

    std::unique_ptr<QWindow> makeSettings(SettingsPresentation& presentation) override {
        return makeWindow("Settings/SettingsWindowView", presentation,
                          {.smallest = smallestSettings, .overhang = nullptr});
    }

    std::unique_ptr<QWindow> makeOnboarding(OnboardingPresentation& presentation) override {
        return makeWindow("Onboarding/OnboardingView", presentation, {});
    }

private:
    /// It needs a fraction of the memory that the graphics drivers take. Qt listens before the first window.
    static void drawInSoftware() {
        static const bool isUsersChoice = qEnvironmentVariableIsSet("QT_QUICK_BACKEND");
        static bool isDone = false;
        if (!isUsersChoice && !std::exchange(isDone, true)) {
            QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        }
    }

    std::unique_ptr<QQuickWindow> makeWindow(const char* view, QObject& presentation,
                                             WindowFit::Wishes wishes) {
        QQmlComponent component(&engine_, QUrl(QString("qrc:/qt/qml/Cindertop/%1.qml").arg(view)));
        auto* const root = qobject_cast<QQuickItem*>(
            component.createWithInitialProperties({{"presentation", QVariant::fromValue(&presentation)}}));
        if (root == nullptr) {
            for (const auto& error : component.errors()) {
                qWarning().noquote() << error.toString();
            }
            return nullptr;
        }
        auto window = std::make_unique<QQuickWindow>();
        window->setColor(appearance_.materials().popover);
        root->setParent(window->contentItem()); // which deletes it
        root->setParentItem(window->contentItem());
        QObject::connect(&appearance_, &Appearance::changed, window.get(), [this, window = window.get()] {
            if (window->color().alpha() == 255) { // what the view does not cover yet while it grows
                window->setColor(appearance_.materials().popover);
            }
        });
        new WindowFit(*window, *root, std::move(wishes)); // the window deletes it
        return window;
    }

    const Appearance& appearance_;
    QQmlEngine engine_;
};

} // namespace

std::unique_ptr<Views> makeQuickViews(const Appearance& appearance) {
    return std::make_unique<QuickViews>(appearance);
}

} // namespace cindertop::ui
