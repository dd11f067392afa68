#include "cpu/ProcessOffenderSnapshot.h"

namespace cindertop {

const ProcessOffenderSnapshot& ProcessOffenderSnapshot::empty() {
    static const ProcessOffenderSnapshot nothingYet{};
    return nothingYet;
}

} // namespace cindertop
