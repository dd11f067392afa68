#pragma once

#include "context/DisplayContextProviding.h"
#include "platform/DisplayList.h"

namespace cindertop {

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
