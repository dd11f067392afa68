#pragma once

#include "context/PowerContextProviding.h"
#include "platform/PowerSources.h"
#include "platform/ProcessInformation.h"

namespace cindertop {

/// Reads the power source, the battery and Low Power Mode from the system.
class SystemPowerContextProvider final : public PowerContextProviding {
public:
    /// Both services must outlive the provider.
    SystemPowerContextProvider(const PowerSources& powerSources, const ProcessInformation& process);

    PowerContextSnapshot readPowerContext() const override;

private:
    const PowerSources& powerSources_;
    const ProcessInformation& process_;
};

} // namespace cindertop
