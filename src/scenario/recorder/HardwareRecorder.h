#pragma once

#include "platform/HardwareMeters.h"
#include "platform/ProcessorClocks.h"
#include "scenario/recorder/Anonymizer.h"

#include <string>

namespace cindertop {

/// The frame's "meters".
std::string metersText(const MeterReadings& meters, const Anonymizer& anonymized);

/// The frame's "clocks".
std::string clocksText(const ProcessorClockReading& reading);

} // namespace cindertop
