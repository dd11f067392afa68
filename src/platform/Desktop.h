#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace cindertop {

enum class ActivationPolicy {
    regular,   ///< windows have an entry in the task bar
    accessory, ///< they have none
};

/// What a save panel offers.
struct SavePanel {
    std::string title;
    std::string proposedFileName;
    std::string fileNameExtension; ///< the only one allowed, without its dot

    bool operator==(const SavePanel&) const = default;
};

/// The outcome of a save panel.
struct SaveChoice {
    std::optional<std::filesystem::path> place; ///< none when the user chose no place, or one out of reach
    bool isChosenByUser = true;                 ///< else no panel could be shown, and the user must be told
    std::string problem{};                      ///< a sentence about a place out of reach

    bool operator==(const SaveChoice&) const = default;
};

/// The user's desktop. Main thread.
class Desktop {
public:
    using SaveCompletion = std::function<void(const SaveChoice&)>;

    virtual ~Desktop() = default;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Brings the program's windows to the front.
    virtual void activate() = 0;
    /// Asks the user where to save. Completes on the main thread, exactly once unless the desktop is
    /// destroyed first.
    virtual void chooseSaveLocation(const SavePanel& panel, SaveCompletion completion) = 0;
    /// Tells the user a sentence, outside of any window.
    virtual void tell(const std::string& title, const std::string& sentence) = 0;
    /// Opens a page in the user's browser.
    virtual void openPage(const std::string& address) = 0;
};

} // namespace cindertop
