#include "replay/ReplayLines.h"

#include "app/AssistantJson.h"
#include "support/Enumeration.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace cindertop::replay {

namespace {

Json metadataJson(const DiagnosticMetadata& metadata) {
    auto object = Json::object();
    for (const auto& [key, value] : metadata) {
        object[key] = value;
    }
    return object;
}

} // namespace

ReplayLines::ReplayLines(const Clock& clock, Instant start, std::function<void(std::string)> write)
    : clock_(clock), snapshots_(start), histories_(start), write_(std::move(write)) {}

Json ReplayLines::line(const char* event) const {
    return {{"t", snapshots_.seconds(clock_.now())}, {"event", event}};
}

void ReplayLines::tick(const AppState& state) {
    const auto& published = state.published();
    auto json = line("tick");
    json["score"] = SnapshotJson::score(*state.latestThermalScore());
    json["context"] = SnapshotJson::context(*published.systemContextSnapshot);
    json["offenders"] = snapshots_.offenders(*published.processOffenderSnapshot);
    json["recommendation"] = recommendationJson(*published.recommendationSnapshot);
    json["presentation"] = presentationJson(state.makePresentation(*published.thermalSnapshot));
    json["notificationState"] = caseName(*published.systemNotificationState);
    ++ticks_;
    write_(compactText(json));
}

void ReplayLines::history(const ThermalHistorySample& sample, const ThermalMonitoringSnapshot& result) {
    auto json = line("history");
    json["sample"] = histories_.sample(sample);
    json["todaySummary"] = histories_.summary(result.todaySummary);
    json["sampleCount"] = result.samples.size();
    ++samples_;
    write_(compactText(json));
}

void ReplayLines::notification(const UserNotificationRequest& request) {
    auto json = line("notification");
    json["identifier"] = request.identifier;
    json["title"] = request.content.title;
    json["body"] = request.content.body;
    json["category"] = request.content.categoryIdentifier;
    json["thread"] = request.content.threadIdentifier;
    ++notifications_;
    write_(compactText(json));
}

void ReplayLines::log(const DiagnosticLogEvent& event) {
    auto json = line("log");
    json["level"] = caseName(event.level);
    json["category"] = caseName(event.category);
    json["message"] = event.message;
    json["metadata"] = metadataJson(event.metadata);
    write_(compactText(json));
}

void ReplayLines::unifiedLog(const simulated::UnifiedLogLine& logged) {
    auto json = line("unifiedLog");
    json["level"] = logged.level == UnifiedLogLevel::error ? "error" : "info";
    json["message"] = logged.text;
    write_(compactText(json));
}

void ReplayLines::end() {
    auto json = line("end");
    json["ticks"] = ticks_;
    json["historySamples"] = samples_;
    json["notifications"] = notifications_;
    write_(compactText(json));
}

} // namespace cindertop::replay
