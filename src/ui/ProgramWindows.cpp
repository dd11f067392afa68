#include "ui/ProgramWindows.h"

#include "ui/Compositor.h"
#include "ui/IdleMemory.h"
#include "ui/ViewsLibrary.h"

#include <utility>

namespace cindertop::ui {

ProgramWindows::ProgramWindows(Appearance& appearance, Problem problem)
    : appearance_(appearance), problem_(std::move(problem)) {}

ProgramWindows::~ProgramWindows() = default;

void ProgramWindows::present(AppState& state, ProgramActions actions, std::function<void()> popoverDidClose) {
    state_ = &state;
    actions_ = std::move(actions);
    popover_ = std::make_unique<PopoverWindow>(PopoverWindow::Parts{
        .views = [this] { return views(); },
        .presentation =
            [this] {
                auto presentation = std::make_unique<PopoverPresentation>(*state_, actions_);
                presentation->setHasCompositor(hasCompositor());
                return presentation;
            },
        .didCloseByItself = std::move(popoverDidClose)});
}

void ProgramWindows::closeAll() {
    popover_.reset();
    onboarding_.reset();
    settings_.reset();
}

/// One engine for all windows that are open.
std::shared_ptr<Views> ProgramWindows::views() {
    if (auto shared = views_.lock()) {
        return shared;
    }
    auto made = loadViews(appearance_);
    if (!made) {
        problem_(made.error());
        return nullptr;
    }
    std::shared_ptr<Views> shared(made->release(), [](const Views* views) {
        delete views; // NOLINT(cppcoreguidelines-owning-memory): a shared pointer's own deleter
        returnIdleMemory();
    });
    views_ = shared;
    return shared;
}

template <typename Controller, typename Make>
void ProgramWindows::show(std::unique_ptr<Controller>& controller, const QString& title, Make make) {
    if (state_ == nullptr) {
        return;
    }
    if (!controller) {
        auto library = views();
        if (!library) {
            return;
        }
        controller = std::make_unique<Controller>(*state_, actions_);
        auto window = make(*library, controller->presentation);
        if (!window) {
            controller.reset();
            problem_("The window \"" + title + "\" cannot be shown.");
            return;
        }
        controller->window = std::make_unique<WindowController>(std::move(library), std::move(window), title,
                                                                [&controller] { controller.reset(); });
    }
    controller->window->setTaskBarEntry(hasTaskBarEntry_);
    controller->window->show();
}

void ProgramWindows::showOnboarding() {
    show(onboarding_, "Cindertop",
         [](Views& views, auto& presentation) { return views.makeOnboarding(presentation); });
}

void ProgramWindows::closeOnboarding() {
    if (onboarding_) {
        onboarding_->window->close();
    }
}

void ProgramWindows::showSettings() {
    show(settings_, "Settings",
         [](Views& views, auto& presentation) { return views.makeSettings(presentation); });
}

void ProgramWindows::setTaskBarEntry(bool isShown) {
    hasTaskBarEntry_ = isShown;
    if (onboarding_) {
        onboarding_->window->setTaskBarEntry(isShown);
    }
    if (settings_) {
        settings_->window->setTaskBarEntry(isShown);
    }
}

void ProgramWindows::activate() {
    if (onboarding_) {
        onboarding_->window->activate();
    }
    if (settings_) {
        settings_->window->activate();
    }
}

} // namespace cindertop::ui
