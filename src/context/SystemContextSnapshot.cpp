#include "context/SystemContextSnapshot.h"

namespace cindertop {

const SystemContextSnapshot& SystemContextSnapshot::placeholder() {
    static const SystemContextSnapshot snapshot{.displays = DisplayContextSnapshot::unavailable(),
                                                .power = PowerContextSnapshot::unavailable(),
                                                .sustainedPressure =
                                                    SustainedThermalPressureSnapshot::inactive(),
                                                .measuredAt = unixEpoch};
    return snapshot;
}

} // namespace cindertop
