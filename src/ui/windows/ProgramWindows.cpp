#include "ui/windows/ProgramWindows.h"

#include "ui/windows/IdleMemory.h"
#include "ui/windows/WindowSize.h"
#include "ui/windows/X11.h"

#include <QTimer>
#include <utility>

namespace cindertop::ui {

namespace {

/// What it opens does not take its place: it is the way back.
ProgramActions staying(ProgramActions actions) {
    actions.closePopover = [] {};
    return actions;
}

} // namespace

OverviewWindowController::OverviewWindowController(AppState& state, ProgramActions actions)
    : presentation(state, staying(std::move(actions))) {
    presentation.setIsWindow(true);
}

ProgramWindows::ProgramWindows(Appearance& appearance, Problems problems)
    : appearance_(appearance), problems_(std::move(problems)) {}

ProgramWindows::~ProgramWindows() = default;

void ProgramWindows::present(AppState& state, ProgramActions actions, std::function<void()> popoverDidClose) {
    state_ = &state;
    updateTaskBarEntry();
    actions_ = std::move(actions);
    popover_ = std::make_unique<PopoverWindow>(PopoverWindow::Parts{
        .views = [this] { return views(WindowKind::popover); },
        .presentation =
            [this] {
                auto presentation = std::make_unique<PopoverPresentation>(*state_, actions_);
                presentation->setHasCompositor(hasCompositor());
                return presentation;
            },
        .didCloseByItself = std::move(popoverDidClose)});
}

void ProgramWindows::closeAll() {
    rememberSizes();
    taskBarEntry_.reset();
    popover_.reset();
    onboarding_.reset();
    settings_.reset();
    overview_.reset();
}

/// One engine for all windows that are open.
std::shared_ptr<Views> ProgramWindows::views(WindowKind asked) {
    if (auto shared = views_.lock()) {
        return shared;
    }
    auto made = library_.makeViews(appearance_);
    if (!made) {
        const auto& [sentence, otherBuild] = made.error();
        if (!otherBuild || !problems_.startAnew(asked, *otherBuild)) {
            problems_.say(sentence);
        }
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
void ProgramWindows::show(std::unique_ptr<Controller>& controller, const Description& description,
                          Make make) {
    if (state_ == nullptr) {
        return;
    }
    if (!controller) {
        auto library = views(description.kind);
        if (!library) {
            return;
        }
        controller = std::make_unique<Controller>(*state_, actions_);
        auto window = make(*library, controller->presentation);
        if (!window) {
            controller.reset();
            problems_.say("The window \"" + description.title + "\" cannot be shown.");
            return;
        }
        controller->window = std::make_unique<WindowController>(std::move(library), std::move(window),
                                                                description.title, [this, &controller] {
                                                                    rememberSizes();
                                                                    controller.reset();
                                                                    updateTaskBarEntry();
                                                                });
    }
    controller->window->show();
    updateTaskBarEntry();
}

void ProgramWindows::showOnboarding() {
    show(onboarding_, {.kind = WindowKind::onboarding, .title = "Cindertop – Welcome"},
         [](Views& views, auto& presentation) { return views.makeOnboarding(presentation); });
}

void ProgramWindows::closeOnboarding() {
    if (onboarding_) {
        onboarding_->window->close();
    }
}

void ProgramWindows::showSettings() {
    show(settings_, {.kind = WindowKind::settings, .title = "Cindertop – Settings"},
         [this](Views& views, auto& presentation) {
             auto window = views.makeSettings(presentation);
             const auto size = storedSettingsSize(state_->environment().defaults);
             if (window && size) {
                 window->resize(*size);
             }
             return window;
         });
}

void ProgramWindows::rememberSizes() {
    const auto size = settings_ ? settings_->window->chosenSize() : std::nullopt;
    if (size) {
        storeSettingsSize(state_->environment().defaults, *size);
    }
}

void ProgramWindows::showOverview() {
    show(overview_, {.kind = WindowKind::overview, .title = "Cindertop"},
         [this](Views& views, auto& presentation) {
             presentation.setHasStatusItem(hasStatusItem_);
             return views.makePopover(presentation);
         });
}

void ProgramWindows::setHasStatusItem(bool hasItem) {
    hasStatusItem_ = hasItem;
    if (overview_) {
        overview_->presentation.setHasStatusItem(hasItem);
    }
}

void ProgramWindows::setTaskBarEntry(bool isShown) {
    wantsTaskBarEntry_ = isShown;
    updateTaskBarEntry();
}

/// The entry may be what asks for the window in whose favour it goes, so it goes a moment later.
void ProgramWindows::updateTaskBarEntry() {
    QTimer::singleShot(0, this, [this] {
        const bool isAlone = state_ != nullptr && !onboarding_ && !settings_ && !overview_;
        if (!wantsTaskBarEntry_ || !isAlone) {
            taskBarEntry_.reset();
        } else if (!taskBarEntry_ && TaskBarEntry::isPossible()) {
            taskBarEntry_ = std::make_unique<TaskBarEntry>([this] { showOverview(); });
        }
    });
}

void ProgramWindows::activate() {
    if (onboarding_) {
        onboarding_->window->activate();
    }
    if (overview_) {
        overview_->window->activate();
    }
    if (settings_) {
        settings_->window->activate();
    }
}

} // namespace cindertop::ui
