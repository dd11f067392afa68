#pragma once

#include "app/AppState.h"

#include <QPropertyNotifier>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cindertop::ui {

/// Samples the processes for a view that is looked at: once when it comes into sight, and every 3 s while it
/// looks at one offender. Never two samples at a time, and none while monitoring is paused. Main thread.
class ProcessOffenderSampling {
public:
    /// `didChange` is called after each change of `isSampling`. `state` must outlive this.
    ProcessOffenderSampling(AppState& state, std::function<void()> didChange);

    bool isSampling() const { return isSampling_; }

    void setShown(bool isShown);
    /// The offender that is looked at; none: all of them.
    void pin(std::optional<std::string> offenderID);

private:
    bool isActive() const;
    void update();
    void sample();
    void finish();
    void sampleAfter(std::chrono::nanoseconds delay);
    std::chrono::nanoseconds timeUntilMeaningful() const;

    AppState& state_;
    std::function<void()> didChange_;
    bool isShown_ = false;
    bool isSampling_ = false;
    std::optional<std::string> pinnedOffenderID_;
    std::unique_ptr<Timer> next_;
    std::array<QPropertyNotifier, 2> observations_;
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true); ///< samples may outlive this
};

} // namespace cindertop::ui
