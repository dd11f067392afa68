#include "app/MachineJson.h"

#include "app/AssistantJson.h"

#include <nlohmann/json.hpp>

namespace cindertop {

namespace {

const SnapshotJson& liveEncoder() {
    static const SnapshotJson encoder(unixEpoch);
    return encoder;
}

} // namespace

Json machineJson(const MachineSnapshot& snapshot, const std::optional<MachineVerdict>& verdict) {
    return {{"score", SnapshotJson::score(snapshot.score)},
            {"context", SnapshotJson::context(snapshot.context)},
            {"offenders", liveEncoder().offenders(snapshot.offenders)},
            {"recommendation", verdict ? recommendationJson(verdict->recommendation) : Json(nullptr)},
            {"presentation", verdict ? presentationJson(verdict->presentation) : Json(nullptr)},
            {"sources", SnapshotJson::sources(snapshot.sources)},
            {"measuredAt", liveEncoder().seconds(snapshot.measuredAt)},
            {"cpuPercent", snapshot.cpuPercent ? Json(*snapshot.cpuPercent) : Json(nullptr)},
            {"temperatures", SnapshotJson::temperatures(snapshot.temperatures)}};
}

Json offendersJson(const MachineSnapshot& snapshot) {
    return liveEncoder().offenders(snapshot.offenders);
}

} // namespace cindertop
