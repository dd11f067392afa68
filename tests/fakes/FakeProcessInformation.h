#pragma once

#include "platform/ProcessInformation.h"

namespace cindertop::fakes {

class FakeProcessInformation final : public ProcessInformation {
public:
    int state = 0;
    bool lowPowerMode = false;
    int processors = 8;
    std::int32_t identifier = 99'999;
    std::optional<std::string> bundle;

    int thermalState() const override { return state; }

    bool isLowPowerModeEnabled() const override { return lowPowerMode; }

    int activeProcessorCount() const override { return processors; }

    std::int32_t processIdentifier() const override { return identifier; }

    std::optional<std::string> bundleIdentifier() const override { return bundle; }
};

} // namespace cindertop::fakes
