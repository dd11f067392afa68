#include "ui/windows/X11.h"

#include <QGuiApplication>
#include <cstdint>
#include <cstring>

namespace cindertop::ui {

xcb_connection_t* x11() {
    const auto* const application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return application != nullptr ? application->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
    const auto request = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const ReplyPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, request, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

/// A compositing manager owns a selection that is named after its screen; Qt's first screen is number 0 on
/// nearly every display.
bool hasCompositor() {
    auto* const connection = x11();
    if (connection == nullptr) {
        return true;
    }
    const auto request = xcb_get_selection_owner(connection, atom(connection, "_NET_WM_CM_S0"));
    const ReplyPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, request, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

/// A window manager names a window of its own at the root window.
bool hasWindowManager() {
    auto* const connection = x11();
    if (connection == nullptr) {
        return false;
    }
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto request = xcb_get_property(connection, 0, root, atom(connection, "_NET_SUPPORTING_WM_CHECK"),
                                          XCB_ATOM_WINDOW, 0, 1);
    const ReplyPointer<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, request, nullptr));
    return reply && xcb_get_property_value_length(reply.get()) > 0;
}

} // namespace cindertop::ui
