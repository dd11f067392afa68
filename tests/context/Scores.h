#pragma once

#include "thermal/ThermalScore.h"

namespace cindertop {

inline ThermalScore scoreAt(ThermalLevel level) {
    return {50,
            level,
            0,
            false,
            1,
            std::nullopt,
            ThermalDataSource::official,
            SystemThermalState::nominal,
            ThermalPressureLevel::nominal,
            ThermalTrend::stable,
            unixEpoch};
}

} // namespace cindertop
