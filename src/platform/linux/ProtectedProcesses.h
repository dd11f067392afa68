#pragma once

#include <string_view>

namespace cindertop::linux_platform {

/// Whether a process of this name, as the kernel cuts it, is a part of the desktop whose end would take the
/// session with it or leave it without windows, panels or services: a compositor, a shell, a session manager,
/// the display server, the message bus, systemd.
bool isProtectedProcess(std::string_view shortName);

} // namespace cindertop::linux_platform
