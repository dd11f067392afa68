#include "Require.h"
#include "persistence/ThermalHistoryEnvelope.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// A history that was read is within its ranges, and what is written of it can be read as well.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cindertop;
    const auto envelope = decodeHistory(std::string(reinterpret_cast<const char*>(data), size));
    if (!envelope) {
        return 0;
    }
    for (const ThermalHistorySample& sample : envelope->samples) {
        require(sample.score >= 0 && sample.score <= 100);
    }
    const auto text = encodeHistory(*envelope);
    require(text && decodeHistory(*text));
    return 0;
}
