#include "Require.h"
#include "report/MachineReport.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

/// What is read from another program of ours reads the same once it is written again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto report = cindertop::machineReport({reinterpret_cast<const char*>(data), size});
    if (report) {
        const auto again = cindertop::machineReport(cindertop::machineJson(*report).dump());
        require(again && again == report);
    }
    return 0;
}
