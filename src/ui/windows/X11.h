#pragma once

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace cindertop::ui {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); } // NOLINT(cppcoreguidelines-no-malloc): xcb's
};

/// What xcb answers; none after an error.
template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, FreeReply>;

/// The connection of the QGuiApplication; none on other displays than X11.
xcb_connection_t* x11();

/// XCB_ATOM_NONE when the display does not answer.
xcb_atom_t atom(xcb_connection_t* connection, const char* name);

/// Whether the desktop composes its windows now, so that one may be translucent: always but on an X11 display
/// without a compositing manager. Needs a QGuiApplication.
bool hasCompositor();

/// Whether this is an X11 display with a window manager. Needs a QGuiApplication.
bool hasWindowManager();

} // namespace cindertop::ui
