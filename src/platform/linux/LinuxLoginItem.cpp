#include "platform/linux/LinuxLoginItem.h"

#include "platform/linux/KeyFile.h"
#include "support/AtomicFile.h"
#include "support/Text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr auto* mainGroup = "Desktop Entry";
constexpr auto* gnomeSwitch = "X-GNOME-Autostart-enabled";
constexpr std::size_t entrySizeLimit = std::size_t{64} << 10U;

bool isControl(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
}

/// The argument in quotes, as the Exec key wants it; then every backslash twice, as all texts of the file do.
std::string inQuotes(std::string_view argument) {
    std::string text = "\"";
    for (const char character : argument) {
        if (character == '\\') {
            text += R"(\\\\)";
        } else if (character == '"' || character == '`' || character == '$') {
            text += R"(\\)" + std::string(1, character);
        } else {
            text += character == '%' ? "%%" : std::string(1, character);
        }
    }
    return text + '"';
}

} // namespace

std::optional<std::string> execLine(const std::filesystem::path& program) {
    const auto& path = program.native();
    if (!program.is_absolute() || std::ranges::any_of(path, isControl) || repairedUtf8(path) != path) {
        return std::nullopt;
    }
    return "Exec=" + inQuotes(path) + " --background";
}

LinuxLoginItem::LinuxLoginItem(const std::filesystem::path& folder, std::filesystem::path program,
                               FileSystem& files)
    : file_(folder.is_absolute() ? folder / "cindertop.desktop" : std::filesystem::path()),
      program_(std::move(program)),
      files_(files) {}

LoginItemStatus LinuxLoginItem::status() const {
    if (file_.empty()) {
        return LoginItemStatus::notFound;
    }
    const auto text = wholeFile(files_, file_, entrySizeLimit);
    if (!text) {
        switch (text.error()) {
        case std::errc::no_such_file_or_directory:
            return LoginItemStatus::notRegistered;
        case std::errc::not_a_directory:
            return LoginItemStatus::notFound;
        default:
            return LoginItemStatus::unknown;
        }
    }
    const auto entry = KeyFile::parse(*text);
    if (!entry || !entry->text(mainGroup, "Exec")) {
        return LoginItemStatus::notRegistered; // desktops pass over it
    }
    const bool isSwitchedOff =
        entry->boolean(mainGroup, "Hidden") ||
        (entry->text(mainGroup, gnomeSwitch) && !entry->boolean(mainGroup, gnomeSwitch));
    return isSwitchedOff ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled;
}

std::expected<void, LoginItemError> LinuxLoginItem::registerItem() {
    constexpr std::string_view action = "cannot be set to start at login";
    const auto exec = execLine(program_);
    if (file_.empty() || !exec) {
        return failure(action,
                       file_.empty() ? std::errc::no_such_file_or_directory : std::errc::invalid_argument);
    }
    const auto text = "[Desktop Entry]\nType=Application\nName=Cindertop\nIcon=cindertop\n" + *exec +
                      "\nTerminal=false\n" + gnomeSwitch + "=true\n";
    auto written = makeFolders(files_, file_.parent_path());
    if (written) {
        written = replaceFile(files_, file_, text, Durability::synced);
    }
    if (!written) {
        return failure(action, written.error());
    }
    return {};
}

std::expected<void, LoginItemError> LinuxLoginItem::unregisterItem() {
    if (file_.empty()) {
        return {};
    }
    const auto removed = removeFile(files_, file_);
    const bool isGone = removed || removed.error() == std::errc::no_such_file_or_directory ||
                        removed.error() == std::errc::not_a_directory;
    if (!isGone) {
        return failure("will still start at login", removed.error());
    }
    return {};
}

std::unexpected<LoginItemError> LinuxLoginItem::failure(std::string_view action, std::errc reason) const {
    const auto code = std::make_error_code(reason);
    auto message = "Cindertop " + std::string(action) + ": ";
    if (file_.empty()) {
        message += "there is no folder for the user's settings.";
    } else if (reason == std::errc::invalid_argument) {
        message += "a desktop entry cannot hold the path of the program.";
    } else {
        message += repairedUtf8(file_.native()) + ": " + code.message() + ".";
    }
    return std::unexpected(LoginItemError{.code = code, .message = std::move(message)});
}

} // namespace cindertop::linux_platform
