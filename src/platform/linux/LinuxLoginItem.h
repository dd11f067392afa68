#pragma once

#include "platform/LoginItem.h"
#include "support/FileSystem.h"

#include <filesystem>
#include <optional>
#include <string>

namespace cindertop::linux_platform {

/// A line "Exec=..." that starts the program in this file in the background, as desktops read it. None for a
/// path that no desktop entry can hold: a relative one, one with control characters or one that is no UTF-8.
std::optional<std::string> execLine(const std::filesystem::path& program);

/// The entry "cindertop.desktop" in the folder from which desktops start programs at login. An entry that
/// some settings panel has switched off ("Hidden", or GNOME's own key) requires approval.
class LinuxLoginItem final : public LoginItem {
public:
    /// `folder` is "autostart" in the user's configuration folder; empty: the user has none. `program` is the
    /// file to start. `files` must outlive the item.
    LinuxLoginItem(const std::filesystem::path& folder, std::filesystem::path program, FileSystem& files);

    LoginItemStatus status() const override;
    /// Also replaces an entry that was switched off.
    std::expected<void, LoginItemError> registerItem() override;
    std::expected<void, LoginItemError> unregisterItem() override;

private:
    std::unexpected<LoginItemError> failure(std::string_view action, std::errc reason) const;

    std::filesystem::path file_; ///< empty: there is no place for it
    std::filesystem::path program_;
    FileSystem& files_;
};

} // namespace cindertop::linux_platform
