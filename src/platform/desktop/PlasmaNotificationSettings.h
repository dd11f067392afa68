#pragma once

#include <string_view>

namespace cindertop::desktop {

/// Whether pop-ups of this program are off in Plasma's settings; `text` is that of the user's plasmanotifyrc.
bool plasmaSwitchesNotificationsOff(std::string_view text);

} // namespace cindertop::desktop
