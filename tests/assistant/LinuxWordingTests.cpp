#include "AssistantInputs.h"
#include "assistant/RecommendationCandidates.h"
#include "assistant/ThermalAlert.h"
#include "fakes/ForeignWords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace cindertop {
namespace {

using namespace testing;
using fakes::foreignWordsIn;
using ::testing::IsEmpty;

/// The titles and messages of everything that these circumstances may bring about.
std::set<std::string> everyAdvice(OperatingSystem system) {
    const std::vector<SystemContextSnapshot> contexts{
        contextWith(displays(0, 1), power(PowerSourceKind::acPower, true),
                    sustained(150, ThermalLevel::serious)),
        contextWith(displays(1, 1), power(PowerSourceKind::batteryPower, false))};
    std::vector<ProcessOffender> offenders{offender("steam", 30, ProcessOffenderCategory::userApplication),
                                           offender("ollama", 30, ProcessOffenderCategory::userApplication)};
    for (const auto& category : casesOf<ProcessOffenderCategory>()) {
        offenders.push_back(offender("worker", 30, category.value));
    }
    std::set<std::string> texts;
    for (const auto& level : casesOf<ThermalLevel>()) {
        for (const auto& trend : casesOf<ThermalTrend>()) {
            for (const auto& context : contexts) {
                for (const auto& busiest : offenders) {
                    for (const auto& candidate : recommendationCandidates(
                             scoreOf(level.value, trend.value), context, readyOffenders({busiest}, true),
                             RecommendationEngineConfiguration::defaultConfiguration(), system)) {
                        texts.insert(candidate.insight.title);
                        texts.insert(candidate.insight.message);
                    }
                }
            }
        }
    }
    return texts;
}

std::set<std::string> everyAlert(OperatingSystem system) {
    std::set<std::string> texts;
    for (const auto& kind : casesOf<ThermalAlertKind>()) {
        for (const auto& insight : casesOf<CinderInsightKind>()) {
            for (const auto& label : {std::optional<std::string>(), std::optional<std::string>("Painter")}) {
                texts.insert(thermalAlertBody(kind.value, adviceOf({insight.value}), label, system));
            }
        }
    }
    return texts;
}

TEST(LinuxWording, OfAdviceAndAlertsNamesNoOtherSystem) {
    using enum OperatingSystem;
    for (auto* const every : {&everyAdvice, &everyAlert}) {
        const auto onLinux = every(gnuLinux);
        for (const auto& text : onLinux) {
            EXPECT_THAT(foreignWordsIn(text), IsEmpty()) << text;
            EXPECT_EQ(text.find('{'), std::string::npos) << text;
        }
        // The same sentences, some of them worded otherwise.
        EXPECT_EQ(onLinux.size(), every(mac).size());
        EXPECT_NE(onLinux, every(mac));
    }
}

} // namespace
} // namespace cindertop
