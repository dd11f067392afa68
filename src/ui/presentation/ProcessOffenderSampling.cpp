#include "ui/presentation/ProcessOffenderSampling.h"

#include <algorithm>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr std::chrono::seconds pinnedInterval{3};
constexpr std::chrono::seconds leastInterval{1}; ///< shares measured over less than this jump about

} // namespace

ProcessOffenderSampling::ProcessOffenderSampling(AppState& state, std::function<void()> didChange)
    : state_(state),
      didChange_(std::move(didChange)),
      observations_{
          state.published().isPaused.bindable().addNotifier([this] { update(); }),
          state.published().legalTermsAccepted.bindable().addNotifier([this] { update(); }),
      } {}

bool ProcessOffenderSampling::isActive() const {
    return isShown_ && state_.isMonitoringPermitted() && !*state_.published().isPaused;
}

void ProcessOffenderSampling::setShown(bool isShown) {
    if (std::exchange(isShown_, isShown) == isShown) {
        return;
    }
    update();
    if (isActive()) {
        sampleAfter(timeUntilMeaningful());
    }
}

void ProcessOffenderSampling::pin(std::optional<std::string> offenderID) {
    pinnedOffenderID_ = std::move(offenderID);
    update();
    if (isActive() && pinnedOffenderID_) {
        sampleAfter(timeUntilMeaningful());
    }
}

void ProcessOffenderSampling::update() {
    next_.reset();
    if (isActive() && pinnedOffenderID_) {
        sampleAfter(pinnedInterval);
    }
}

void ProcessOffenderSampling::sampleAfter(std::chrono::nanoseconds delay) {
    if (isSampling_) { // its end goes on from here
        return;
    }
    next_.reset();
    if (delay > std::chrono::nanoseconds::zero()) {
        next_ = state_.environment().timers.start(delay, [this] { sample(); });
    } else {
        sample();
    }
}

std::chrono::nanoseconds ProcessOffenderSampling::timeUntilMeaningful() const {
    const auto age =
        state_.environment().machine.clock.now() - state_.published().processOffenderSnapshot->measuredAt;
    return std::clamp<std::chrono::nanoseconds>(leastInterval - age, std::chrono::nanoseconds::zero(),
                                                leastInterval);
}

void ProcessOffenderSampling::sample() {
    isSampling_ = true;
    didChange_();
    state_.sampleProcessOffenders(pinnedOffenderID_, [this, life = std::weak_ptr(life_)] {
        if (!life.expired()) {
            finish();
        }
    });
}

void ProcessOffenderSampling::finish() {
    isSampling_ = false;
    didChange_();
    update();
}

} // namespace cindertop::ui
