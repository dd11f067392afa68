#include "Require.h"
#include "platform/linux/OperatingSystemVersion.h"
#include "platform/qt/NotificationSwitch.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The desktop's and the distribution's own files of settings, which people edit.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    cindertop::desktop::plasmaSwitchesNotificationsOff(text);
    for (const auto* const key : {"PRETTY_NAME", "NAME", "VERSION_ID", ""}) {
        const auto value = cindertop::linux_platform::osReleaseValue(text, key);
        const auto longest = 3 * text.size(); // where no byte is UTF-8
        require(!value || (!value->empty() && value->size() <= longest));
    }
    return 0;
}
