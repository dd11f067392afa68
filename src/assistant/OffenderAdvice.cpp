#include "assistant/OffenderAdvice.h"

#include "support/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace cindertop {

// Parts of names, in lower case, by which a kind of work is known whatever the category of its processes.

inline constexpr auto gameNameFragments = std::to_array<std::string_view>({
    "steam",
    "epic games",
    "battle.net",
    "roblox",
    "minecraft",
    "riot",
    "league of legends",
    "unity",
    "unreal",
});

inline constexpr auto localAINameFragments = std::to_array<std::string_view>({
    "ollama",
    "lm studio",
    "llama",
    "mlx",
});

namespace {

using enum CinderInsightKind;
using enum CinderInsightConfidence;
using enum ProcessOffenderCategory;

/// What an advice row looks at. The texts are in lower case; an absent one is empty and contains no fragment.
struct SearchedOffender {
    ProcessOffenderCategory category{};
    std::array<std::string, 3> texts;
};

using Test = bool (*)(const SearchedOffender&);

template <const auto& fragments>
bool isNamedLike(const SearchedOffender& offender) {
    return std::ranges::any_of(offender.texts, [](const std::string& text) {
        return std::ranges::any_of(fragments, [&](std::string_view name) { return text.contains(name); });
    });
}

template <ProcessOffenderCategory... categories>
bool isOfCategory(const SearchedOffender& offender) {
    return ((offender.category == categories) || ...);
}

bool isAnything(const SearchedOffender& /*offender*/) {
    return true;
}

struct OffenderAdviceRow {
    Test applies;
    CinderInsightKind kind;
    CinderInsightConfidence confidence;
    Wording title;
    Wording message; ///< may have a place for the offender's label
    int priority;    ///< at a serious or critical level
    int priorityAtLowLevel;
};

/// The first row that applies counts: a game installed as an ordinary application is still a game.
constexpr auto adviceRows = std::to_array<OffenderAdviceRow>({
    {.applies = isNamedLike<gameNameFragments>,
     .kind = gamingFpsCapRecommended,
     .confidence = medium,
     .title = Wording::same("Game workload"),
     .message = Wording::same("{name} is the main load. Cap FPS or lower resolution for steadier thermals."),
     .priority = 35,
     .priorityAtLowLevel = 35},
    {.applies = isNamedLike<localAINameFragments>,
     .kind = localAIWorkload,
     .confidence = medium,
     .title = Wording::same("Local AI workload"),
     .message = {"{name} is the main load. Pause the local model if you need the Mac to cool faster.",
                 "{name} is the main load. Pause the local model if you need the laptop to cool faster."},
     .priority = 35,
     .priorityAtLowLevel = 35},
    {.applies = isOfCategory<backgroundSystem, system>,
     .kind = backgroundIndexingLikely,
     .confidence = low,
     .title = Wording::same("System workload"),
     .message = Wording::same("A system workload is active. It usually settles without manual action."),
     .priority = 55,
     .priorityAtLowLevel = 55},
    {.applies = isOfCategory<indexingOrSetup>,
     .kind = backgroundIndexingLikely,
     .confidence = high,
     .title = backgroundIndexingTitle,
     .message = backgroundIndexingMessage,
     .priority = 35,
     .priorityAtLowLevel = 45},
    {.applies = isOfCategory<developerWorkload>,
     .kind = developerBuildWorkload,
     .confidence = high,
     .title = Wording::same("Developer workload"),
     .message =
         {"{name} is the main load. Let the build finish or use Low Power Mode for steadier thermals.",
          "{name} is the main load. Let the build finish or switch to Power Saver for steadier thermals."},
     .priority = 30,
     .priorityAtLowLevel = 40},
    {.applies = isOfCategory<browserWorkload>,
     .kind = browserTabLikely,
     .confidence = medium,
     .title = Wording::same("Browser workload"),
     .message = Wording::same("{name} is the main load. A busy tab or web app may be adding heat."),
     .priority = 30,
     .priorityAtLowLevel = 40},
    {.applies = isAnything,
     .kind = topCpuOffender,
     .confidence = medium,
     .title = Wording::same("Top CPU offender"),
     .message = {"{name} is the main load. Quit or pause it if you need the Mac to cool faster.",
                 "{name} is the main load. Quit or pause it if you need the laptop to cool faster."},
     .priority = 30,
     .priorityAtLowLevel = 42},
});

SearchedOffender searched(const ProcessOffender& offender) {
    return {.category = offender.category,
            .texts = {lowerCased(offender.displayName), lowerCased(offender.bundleIdentifier.value_or("")),
                      lowerCased(offender.appBundlePath.value_or(""))}};
}

/// The nearest whole number, halves up, for any share that a `double` can hold.
std::string wholeNumber(double share) {
    std::array<char, std::numeric_limits<double>::max_exponent10 + 2> digits; // NOLINT: filled by to_chars
    const auto written =
        std::to_chars(digits.begin(), digits.end(), std::round(share), std::chars_format::fixed);
    return {digits.begin(), written.ptr};
}

/// "Safari (42% CPU)"
std::string offenderLabel(const ProcessOffender& offender) {
    return offender.displayName + " (" + wholeNumber(offender.cpuPercent) + "% CPU)";
}

/// Before the advice about the busiest offender, and behind it.
constexpr int graphicsPriority = 29;
constexpr int graphicsPriorityAtLowLevel = 39;
constexpr int graphicsPriorityBehind = 36;
constexpr int graphicsPriorityBehindAtLowLevel = 43;

int priorityOfGraphics(bool isMainLoad, bool isLowLevel) {
    if (isMainLoad) {
        return isLowLevel ? graphicsPriorityAtLowLevel : graphicsPriority;
    }
    return isLowLevel ? graphicsPriorityBehindAtLowLevel : graphicsPriorityBehind;
}

} // namespace

RecommendationCandidate offenderAdvice(const ProcessOffender& offender, ThermalLevel level,
                                       OperatingSystem system) {
    const auto subject = searched(offender);
    const auto& row = *std::ranges::find_if(
        adviceRows, [&](Test applies) { return applies(subject); }, &OffenderAdviceRow::applies);
    return {.insight = {.kind = row.kind,
                        .confidence = row.confidence,
                        .title = std::string(row.title.in(system)),
                        .message = withName(row.message.in(system), offenderLabel(offender)),
                        .relatedOffenderID = offender.id},
            .priority = level < ThermalLevel::serious ? row.priorityAtLowLevel : row.priority};
}

RecommendationCandidate graphicsAdvice(const ProcessOffender& offender, double highestCPUPercent,
                                       ThermalLevel level) {
    const double share = offender.graphicsPercent.value_or(0);
    const auto name = offender.displayName + " (" + wholeNumber(share) + "% GPU)";
    return {.insight = {.kind = graphicsWorkload,
                        .confidence = medium,
                        .title = "Graphics workload",
                        .message = withName("{name} keeps the graphics busy. Pause video or animations, or "
                                            "lower the frame rate, for steadier thermals.",
                                            name),
                        .relatedOffenderID = offender.id},
            .priority = priorityOfGraphics(share > highestCPUPercent, level < ThermalLevel::serious)};
}

} // namespace cindertop
