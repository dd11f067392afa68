#include "ui/Compositor.h"

#include "ui/X11.h"

namespace cindertop::ui {

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

} // namespace cindertop::ui
