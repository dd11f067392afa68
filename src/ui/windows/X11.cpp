#include "ui/windows/X11.h"

#include <QGuiApplication>
#include <array>
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

namespace {

/// What a window that is not shown yet starts with.
void setInitialState(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t state, bool isSet) {
    const auto value = isSet ? state : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(connection, "_NET_WM_STATE"),
                        XCB_ATOM_ATOM, 32, isSet ? 1 : 0, &value);
}

/// The window manager changes the state of a window that is shown.
void requestState(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t state, bool isSet) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(connection, "_NET_WM_STATE");
    event.data.data32[0] = isSet ? 1 : 0; // add, remove
    event.data.data32[1] = state;
    event.data.data32[3] = 1; // a program asks
    std::array<char, 32> bytes{};
    static_assert(sizeof event == bytes.size());
    std::memcpy(bytes.data(), &event, sizeof event);
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, 0, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, bytes.data());
}

} // namespace

void setTaskBarEntry(QWindow& window, bool isShown) {
    auto* const connection = x11();
    if (connection == nullptr) {
        return;
    }
    const auto skip = atom(connection, "_NET_WM_STATE_SKIP_TASKBAR");
    const auto identifier = static_cast<xcb_window_t>(window.winId());
    if (window.isVisible()) {
        requestState(connection, identifier, skip, !isShown);
    } else {
        setInitialState(connection, identifier, skip, !isShown);
    }
    xcb_flush(connection);
}

} // namespace cindertop::ui
