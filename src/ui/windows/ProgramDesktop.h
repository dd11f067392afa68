#pragma once

#include "platform/Desktop.h"
#include "ui/windows/ProgramWindows.h"

#include <functional>
#include <string>

namespace cindertop::ui {

/// The user's desktop as this program's windows use it. Main thread.
class ProgramDesktop final : public Desktop {
public:
    using SaveChooser = std::function<void(const SavePanel& panel, SaveCompletion completion)>;

    using Speaker = std::function<void(const std::string& title, const std::string& sentence)>;

    /// `windows` must outlive this.
    ProgramDesktop(ProgramWindows& windows, SaveChooser chooser, Speaker speaker);

    void setActivationPolicy(ActivationPolicy policy) override;
    void activate() override;
    void chooseSaveLocation(const SavePanel& panel, SaveCompletion completion) override;
    void tell(const std::string& title, const std::string& sentence) override;
    void openPage(const std::string& address) override;

private:
    ProgramWindows& windows_;
    SaveChooser chooser_;
    Speaker speaker_;
};

} // namespace cindertop::ui
