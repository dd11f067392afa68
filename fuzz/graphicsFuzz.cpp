#include "Require.h"
// What graphics drivers say about an open device.

#include "platform/linux/GraphicsClientText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto client = cindertop::linux_platform::parseGraphicsClient(text);
    if (!client) {
        return 0;
    }
    require(text.contains(client->device) && client->processIdentifier == 0 && !client->engines.empty());
    for (const auto& usage : client->engines) {
        require(!usage.engine.empty() && text.contains(usage.engine) && usage.capacity > 0);
        require(std::ranges::count(client->engines, usage.engine, &cindertop::GraphicsEngineUsage::engine) ==
                1);
    }
    return 0;
}
