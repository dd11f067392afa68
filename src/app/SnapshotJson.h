#pragma once

#include "context/SystemContext.h"
#include "cpu/ProcessOffender.h"
#include "platform/SourceStatus.h"
#include "support/Instant.h"
#include "thermal/ThermalReading.h"
#include "thermal/ThermalScore.h"

#include <nlohmann/json_fwd.hpp>

#include <span>
#include <string>

namespace cindertop {

using Json = nlohmann::ordered_json;

/// Snapshots as JSON for other programs: the fields of each record in their order, absent ones null,
/// enumerations by the names of their cases, instants as seconds since `start`. The shape is described in
/// docs/json.md; scripts depend on it.
class SnapshotJson {
public:
    explicit SnapshotJson(Instant start) : start_(start) {}

    /// Without its instant, which is the tick's.
    static Json score(const ThermalScore& score);
    /// Without its instant, which is the tick's.
    static Json context(const SystemContextSnapshot& context);
    static Json temperatures(std::span<const TemperatureReading> readings);
    static Json sources(std::span<const SourceStatus> sources);
    /// The instant of the empty snapshot is null: nothing was measured.
    Json offenders(const ProcessOffenderSnapshot& snapshot) const;

    /// Whole nanoseconds since the start, divided once.
    double seconds(Instant instant) const { return secondsBetween(start_, instant).count(); }

private:
    Json offender(const ProcessOffender& offender) const;
    Json child(const ProcessOffenderChild& child) const;
    Json optionalSeconds(const std::optional<Instant>& instant) const;

    Instant start_;
};

/// One line, the same in every locale. Text that is no valid UTF-8 is repaired, a number that is none is
/// null.
std::string compactText(const Json& json);

/// The same over several lines, for people.
std::string indentedText(const Json& json);

} // namespace cindertop
