#pragma once

#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/MonotonicClock.h"
#include "platform/linux/Roots.h"

#include <filesystem>
#include <vector>

namespace cindertop::linux_platform {

/// How far the processors' highest frequencies are held down, by whomever: a user and a power manager set the
/// same caps as a cooling device does, so a cap alone tells nothing about heat. Not thread-safe.
class FrequencyCaps {
public:
    FrequencyCaps(const Roots& roots, const MonotonicClock& clock);

    /// The largest share of its hardware's top frequency, 0 to 1, that a frequency policy is denied.
    double largestLoss();

private:
    struct Policy {
        AttributeFile allowed;
        AttributeFile possible;
    };

    void learnIfOutdated();
    std::vector<std::filesystem::path> policyFolders() const;

    std::filesystem::path processors_;
    DeviceFolder folder_;
    std::vector<Policy> policies_;
};

} // namespace cindertop::linux_platform
