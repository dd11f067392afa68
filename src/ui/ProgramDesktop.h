#pragma once

#include "platform/Desktop.h"
#include "ui/ProgramWindows.h"

#include <functional>

namespace cindertop::ui {

/// The user's desktop as this program's windows use it. Main thread.
class ProgramDesktop final : public Desktop {
public:
    using SaveChooser = std::function<void(const SavePanel& panel, SaveCompletion completion)>;

    /// `windows` must outlive this.
    ProgramDesktop(ProgramWindows& windows, SaveChooser chooser);

    void setActivationPolicy(ActivationPolicy policy) override;
    void activate() override;
    void chooseSaveLocation(const SavePanel& panel, SaveCompletion completion) override;
    void openPage(const std::string& address) override;

private:
    ProgramWindows& windows_;
    SaveChooser chooser_;
};

} // namespace cindertop::ui
