#pragma once

#include "platform/DisplayList.h"

#include <algorithm>

namespace cindertop {

/// Which displays show a picture.
struct DisplayContextSnapshot {
    bool isAvailable; ///< false when the list could not be read
    int activeDisplayCount;
    int builtInDisplayCount;
    int externalDisplayCount; ///< with `builtInDisplayCount` less than all where one's place is unknown
    bool canFold;             ///< the machine can be shut over its built-in display

    /// A negative count becomes 0.
    constexpr DisplayContextSnapshot(bool isAvailable, int activeDisplayCount, int builtInDisplayCount,
                                     int externalDisplayCount, bool canFold = true)
        : isAvailable(isAvailable),
          activeDisplayCount(std::max(activeDisplayCount, 0)),
          builtInDisplayCount(std::max(builtInDisplayCount, 0)),
          externalDisplayCount(std::max(externalDisplayCount, 0)),
          canFold(canFold) {}

    static constexpr DisplayContextSnapshot unavailable() { return {false, 0, 0, 0}; }

    constexpr bool hasExternalDisplay() const { return externalDisplayCount > 0; }

    /// An external display of a laptop is lit and the built-in one is not: the lid is closed.
    constexpr bool isProbableClamshell() const {
        return isAvailable && canFold && hasExternalDisplay() && !isBuiltInDisplayActive();
    }

    constexpr bool isBuiltInDisplayActive() const { return builtInDisplayCount > 0; }

    constexpr bool hasMultipleDisplays() const { return activeDisplayCount >= 2; }

    bool operator==(const DisplayContextSnapshot&) const = default;
};

/// Answers which displays are lit. Called from the engine thread.
class DisplayContextProviding {
public:
    virtual ~DisplayContextProviding() = default;
    /// Never fails: a list that cannot be read is `DisplayContextSnapshot::unavailable()`.
    virtual DisplayContextSnapshot readDisplayContext() const = 0;
};

/// Counts the displays of the system's list.
class SystemDisplayContextProvider final : public DisplayContextProviding {
public:
    /// `displays` must outlive the provider.
    explicit SystemDisplayContextProvider(const DisplayList& displays);

    /// A list without a display counts as one that cannot be read.
    DisplayContextSnapshot readDisplayContext() const override;

private:
    const DisplayList& displays_;
};

} // namespace cindertop
