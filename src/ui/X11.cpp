#include "ui/X11.h"

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

} // namespace cindertop::ui
