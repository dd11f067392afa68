#include "Require.h"
#include "platform/linux/LidSwitch.h"
#include "platform/linux/LinuxDisplayList.h"
#include "platform/linux/LinuxHostStatistics.h"
#include "platform/linux/LinuxSystemValues.h"
#include "platform/linux/PowerOverview.h"
#include "platform/linux/PowerSupply.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

using namespace cindertop::linux_platform;

namespace {

/// Zero bytes separate supplies, so that one input can be a machine with several batteries.
void trySupplies(std::string_view text) {
    std::vector<PowerSupply> supplies;
    while (!text.empty()) {
        const auto end = std::min(text.find('\0'), text.size());
        supplies.push_back(makePowerSupply(parseSupplyUevent(text.substr(0, end))));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const auto pack = combineBatteries(supplies);
    if (pack) {
        require(pack->currentCapacity.has_value() == pack->maxCapacity.has_value());
        require(pack->maxCapacity.value_or(1) > 0);
        require(!(pack->isCharging.value_or(false) && pack->isFullyCharged.value_or(false)));
    }
    require(pack || providingSource(supplies) != "Battery Power");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    trySupplies(text);
    parseCpuLine(text);
    parseProcessorModel(text);
    parseLidState(text);
    parseConnectorName(text);
    const auto compatible = parseCompatible(text);
    appleModelIdentifier(compatible);
    appleChipBrand(compatible);
    for (const auto& name : compatible) {
        require(!name.empty() && name.find('\0') == std::string::npos);
    }
    return 0;
}
