#pragma once

#include "platform/HostStatistics.h"

#include <optional>

namespace cindertop::fakes {

/// Answers with whatever `load` holds; nothing means that the system refuses.
class FakeHostStatistics final : public HostStatistics {
public:
    std::optional<HostCpuLoad> load;

    std::optional<HostCpuLoad> cpuLoad() const override { return load; }
};

} // namespace cindertop::fakes
