#include "ReplayDigest.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <utility>

namespace cindertop::replay {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view offendersKey = ",\"offenders\":";
constexpr std::string_view recommendationKey = ",\"recommendation\":";

std::string quotedOrNone(const Json& value) {
    return value.is_null() ? "-" : value.dump();
}

std::string text(const Json& value) {
    return value.is_string() ? value.get<std::string>() : quotedOrNone(value);
}

/// A tick's parts. Its list of offenders makes most of its length, so only the first one's name is looked up
/// there.
struct TickParts {
    Json frame; ///< without the offenders
    std::string topOffender;
};

TickParts partsOf(std::string_view line) {
    const auto offenders = line.find(offendersKey);
    const auto recommendation = line.rfind(recommendationKey);
    const auto listed = line.substr(offenders, recommendation - offenders);
    constexpr std::string_view nameKey = "\"displayName\":\"";
    const auto name = listed.find(nameKey);
    std::string top = "-";
    if (name != std::string_view::npos) {
        const auto begin = name + nameKey.size();
        top = listed.substr(begin, listed.find('"', begin) - begin);
    }
    return {.frame = Json::parse(std::string(line.substr(0, offenders)) +
                                 std::string(line.substr(recommendation))),
            .topOffender = std::move(top)};
}

std::string adviceOf(const Json& recommendation) {
    const auto& primary = recommendation.at("primaryInsight");
    std::string advice = primary.is_null() ? "-" : text(primary.at("kind"));
    for (const auto& insight : recommendation.at("secondaryInsights")) {
        advice += '+' + text(insight.at("kind"));
    }
    return advice;
}

std::string lookOf(const TickParts& tick) {
    const auto& score = tick.frame.at("score");
    const auto& pressure = tick.frame.at("context").at("sustainedPressure");
    return text(score.at("level")) + ' ' + score.at("score").dump() + ' ' + text(score.at("trend")) + ' ' +
           text(tick.frame.at("presentation").at("menuBarTemperatureText")) +
           (pressure.at("isSustained").get<bool>() ? " sustained" : "") + " | " + tick.topOffender + " | " +
           adviceOf(tick.frame.at("recommendation")) + " | " + text(tick.frame.at("notificationState"));
}

std::string hexadecimal(std::uint64_t value) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), value, 16).ptr;
    return {digits.begin(), end};
}

} // namespace

void ReplayDigest::add(std::string_view line) {
    ++added_;
    addToChecksum(line);
    addToChecksum("\n");
    if (line.contains(R"("event":"tick")")) {
        addTick(line);
        return;
    }
    if (line.contains(R"("event":"history")")) {
        addHistory(line);
        return;
    }
    endTicks();
    lines_.emplace_back(line);
}

std::vector<std::string> ReplayDigest::lines() && {
    endTicks();
    lines_.push_back("all " + std::to_string(added_) + " lines, " + std::to_string(bytes_) +
                     " bytes, FNV-1a " + hexadecimal(checksum_));
    return std::move(lines_);
}

void ReplayDigest::addTick(std::string_view line) {
    const auto tick = partsOf(line);
    auto look = lookOf(tick);
    auto instant = tick.frame.at("t").dump();
    if (look != ticks_.look) {
        endTicks();
        ticks_ = {.look = std::move(look), .first = instant, .last = {}};
    }
    ticks_.last = std::move(instant);
    ++ticks_.count;
}

void ReplayDigest::endTicks() {
    if (ticks_.count > 0) {
        lines_.push_back("tick " + ticks_.first +
                         (ticks_.count > 1 ? ".." + ticks_.last + " x" + std::to_string(ticks_.count) : "") +
                         ' ' + ticks_.look);
    }
    ticks_ = {};
}

void ReplayDigest::addHistory(std::string_view line) {
    const auto json = Json::parse(line);
    const auto& sample = json.at("sample");
    std::string flags;
    for (const auto& [name, isSet] : sample.at("contextFlags").items()) {
        if (isSet.get<bool>()) {
            flags += ' ' + name;
        }
    }
    lines_.push_back("history " + json.at("t").dump() + ' ' + text(sample.at("level")) + ' ' +
                     sample.at("score").dump() + ' ' + quotedOrNone(sample.at("globalCPUPercent")) + ' ' +
                     quotedOrNone(sample.at("temperatureCelsius")) + ' ' +
                     quotedOrNone(sample.at("topOffenderLabel")) + flags + " #" +
                     json.at("sampleCount").dump());
}

void ReplayDigest::addToChecksum(std::string_view text) {
    bytes_ += text.size();
    for (const char byte : text) {
        checksum_ = (checksum_ ^ static_cast<unsigned char>(byte)) * 0x100'0000'01B3;
    }
}

} // namespace cindertop::replay
