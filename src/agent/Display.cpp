#include "agent/Display.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace cindertop::agent {

namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): no other thread runs yet
    return value != nullptr ? value : "";
}

bool answersX11() {
    if (variable("DISPLAY").empty()) {
        return false;
    }
    auto* const connection = ::xcb_connect(nullptr, nullptr);
    const bool isConnected = ::xcb_connection_has_error(connection) == 0;
    ::xcb_disconnect(connection);
    return isConnected;
}

bool answersSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::span<char> place(address.sun_path);
    if (path.size() >= place.size()) {
        return false;
    }
    std::ranges::copy(path, place.begin());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0) {
        return false;
    }
    const auto* const anyAddress = reinterpret_cast<const sockaddr*>(&address);
    const bool isConnected = ::connect(socket, anyAddress, sizeof address) == 0;
    ::close(socket);
    return isConnected;
}

bool answersWayland() {
    const auto name = variable("WAYLAND_DISPLAY");
    if (name.empty()) {
        return false;
    }
    return answersSocket(name.starts_with('/') ? name : variable("XDG_RUNTIME_DIR") + '/' + name);
}

} // namespace

bool hasDisplay() {
    const auto platform = variable("QT_QPA_PLATFORM");
    const bool isNamed = !platform.empty() && platform != "xcb" && !platform.starts_with("wayland");
    return isNamed || answersX11() || answersWayland();
}

} // namespace cindertop::agent
