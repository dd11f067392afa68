#include "FakeProgram.h"
#include "app/HardwareCheckStatus.h"

#include <gtest/gtest.h>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

TEST(HardwareCheck, NamesTheMachineOrWhatIsRequired) {
    struct Case {
        std::optional<std::string> model;
        std::optional<std::string> brand;
        std::string_view architecture;
        std::string_view title;
        std::string_view detail;
    };

    constexpr std::string_view needsSilicon = "Cindertop needs an Apple Silicon MacBook Air.";
    constexpr std::string_view needsAir = "Cindertop is built for Apple Silicon MacBook Air.";
    for (const auto& [model, brand, architecture, title, detail] : {
             Case{"MacBookAir10,1", "Apple M1", "arm64", "M1 MacBook Air detected",
                  "MacBook Air (M1, 2020) matches Cindertop's fanless target."},
             Case{"Mac14,2", std::nullopt, "x86_64", "M2 MacBook Air detected",
                  "MacBook Air (M2, 2022) matches Cindertop's fanless target."},
             Case{"Mac14,15", "Apple M2", "arm64", "M2 MacBook Air detected",
                  "MacBook Air (15-inch, M2, 2023) matches Cindertop's fanless target."},
             Case{"Mac15,12", "Apple M3", "arm64", "M3 MacBook Air detected",
                  "MacBook Air (13-inch, M3, 2024) matches Cindertop's fanless target."},
             Case{"Mac15,13", "Apple M3", "arm64", "M3 MacBook Air detected",
                  "MacBook Air (15-inch, M3, 2024) matches Cindertop's fanless target."},
             Case{"Mac16,12", "Apple M4", "arm64", "M4 MacBook Air detected",
                  "MacBook Air (13-inch, M4, 2025) matches Cindertop's fanless target."},
             Case{"Mac16,13", "Apple M4", "arm64", "M4 MacBook Air detected",
                  "MacBook Air (15-inch, M4, 2025) matches Cindertop's fanless target."},
             Case{"Mac17,3", "Apple M5", "arm64", "M5 MacBook Air detected",
                  "MacBook Air (13-inch, M5, 2026) matches Cindertop's fanless target."},
             Case{"Mac17,4", "Apple M5", "arm64", "M5 MacBook Air detected",
                  "MacBook Air (15-inch, M5, 2026) matches Cindertop's fanless target."},
             Case{"Mac15,3", "Apple M3", "arm64", "MacBook Air required", needsAir},
             Case{"mac14,2", "Apple M2", "arm64", "MacBook Air required", needsAir},
             Case{std::nullopt, std::nullopt, "arm64", "MacBook Air required", needsAir},
             Case{"Laptop 9", "Some processor", "x86_64", "Apple Silicon required", needsSilicon},
             Case{"Laptop 9", std::nullopt, "x86_64", "Apple Silicon required", needsSilicon},
             Case{"Laptop 9", "Apple M1 Pro", "x86_64", "MacBook Air required", needsAir},
         }) {
        fakes::FakeSystemValues values;
        values.texts.clear();
        if (model) {
            values.texts["hw.model"] = *model;
        }
        if (brand) {
            values.texts["machdep.cpu.brand_string"] = *brand;
        }
        const auto status = performHardwareCheck(readHardwareProfile(values, architecture), std::nullopt);
        EXPECT_EQ(status.title(OperatingSystem::mac), title);
        EXPECT_EQ(status.detail(), detail);
        ASSERT_TRUE(status.profile());
        EXPECT_EQ(*status.profile(),
                  (MacHardwareProfile{model.value_or("unknown"), std::string(architecture), brand}));
    }
}

TEST(HardwareCheck, SupportsAMachineThatIsInNoTableWhenToldSo) {
    const auto status = [](std::optional<std::string> brand) {
        return HardwareCheckStatus::supported({"Mac99,1", "arm64", std::move(brand)});
    };
    EXPECT_EQ(status("Apple M4 Max").title(OperatingSystem::mac), "M4 MacBook Air detected");
    EXPECT_EQ(status(std::nullopt).title(OperatingSystem::mac), "Unknown MacBook Air detected");
    EXPECT_EQ(status("Apple M4").detail(), "This MacBook Air matches Cindertop's fanless target.");
    EXPECT_EQ(HardwareCheckStatus::checking().title(OperatingSystem::mac), "Checking this Mac...");
    EXPECT_EQ(HardwareCheckStatus::checking().detail(), "Checking model, chip and thermal support.");
}

TEST(HardwareCheck, RefusesNobodyWhereTheMachineIsSurveyed) {
    using Kind = HardwareCheckStatus::Kind;

    struct Case {
        std::string model;
        HeatSources sources;
        Kind kind;
        std::string_view title;
        std::string_view detail;
    };

    constexpr std::string_view withoutFan =
        "Its heat, and what causes it, can be read. It has no fan that tells its speed.";
    constexpr std::string_view withFan =
        "Its heat, and what causes it, can be read. It has a fan: alerts come later than on fanless laptops.";
    constexpr std::string_view nothing = "This machine tells nothing about its temperature or throttling. "
                                         "Cindertop can still show what uses the processor.";
    for (const auto& [model, sources, kind, title, detail] : {
             Case{"Laptop 9", {.thermalState = 0}, Kind::ready, "Laptop 9 is ready", withoutFan},
             Case{"Laptop 9", {.thermalState = 3, .hasFan = true}, Kind::ready, "Laptop 9 is ready", withFan},
             Case{"unknown", {.pressureSource = "counters"}, Kind::ready, "This laptop is ready", withoutFan},
             Case{"{name}",
                  {.sensors = {"Battery", "CPU Core 3"}},
                  Kind::ready,
                  "{name} is ready",
                  withoutFan},
             Case{"Board",
                  {.sensors = {"Battery", "GPU"}, .hasFan = true},
                  Kind::unreadable,
                  "No heat readings here",
                  nothing},
             Case{"unknown", {.thermalState = 4}, Kind::unreadable, "No heat readings here", nothing},
             Case{"Mac14,2",
                  {},
                  Kind::supported,
                  "M2 MacBook Air detected",
                  "MacBook Air (M2, 2022) matches Cindertop's fanless target."},
         }) {
        const auto status = performHardwareCheck({model, "x86_64", {}}, sources);
        EXPECT_EQ(status.kind(), kind) << model;
        EXPECT_EQ(status.title(OperatingSystem::gnuLinux), title);
        EXPECT_EQ(status.detail(), detail);
        EXPECT_EQ(status.heatSources(), sources);
    }
    EXPECT_EQ(HardwareCheckStatus::checking().title(OperatingSystem::gnuLinux), "Checking this laptop...");
}

/// Answers once it is asked, and counts.
class ScriptedSurvey final : public HeatSourceSurvey {
public:
    HeatSources found;
    int questions = 0;

    HeatSources findHeatSources() override {
        ++questions;
        return found;
    }
};

TEST(AppStateOnboarding, SurveysTheMachineAwayFromTheMainThreadAndGoesOn) {
    for (const auto& [state, kind] : {std::pair{0, HardwareCheckStatus::Kind::ready},
                                      std::pair{-1, HardwareCheckStatus::Kind::unreadable}}) {
        FakeProgram program;
        ScriptedSurvey survey;
        survey.found.thermalState = state;
        program.machine.survey = &survey;
        program.machine.systemValues.texts["hw.model"] = "Laptop 9";
        program.start().startHardwareCheckIfNeeded();
        program.pass(899ms);
        EXPECT_EQ(survey.questions, 0);
        program.pass(1ms);
        EXPECT_EQ(survey.questions, 1);
        EXPECT_EQ(program.published().onboardingState->power->source, PowerSourceKind::acPower);
        const auto& onboarding = program.published().onboardingState;
        EXPECT_EQ(onboarding->hardwareStatus.kind(), kind);
        EXPECT_EQ(onboarding->step, OnboardingStep::termsAndStart);
    }
}

TEST(AppStateOnboarding, ChecksTheMachineOnceAndVisibly) {
    for (const auto& [model, kind, step] :
         {std::tuple{"Mac14,2", HardwareCheckStatus::Kind::supported, OnboardingStep::termsAndStart},
          std::tuple{"Mac99,1", HardwareCheckStatus::Kind::unsupported, OnboardingStep::hardwareCheck}}) {
        FakeProgram program;
        program.machine.systemValues.texts["hw.model"] = model;
        auto& state = program.start();
        const auto& onboarding = program.published().onboardingState;
        state.startHardwareCheckIfNeeded();
        program.pass(500ms);
        state.startHardwareCheckIfNeeded();
        program.pass(399ms);
        EXPECT_EQ(onboarding->hardwareStatus.kind(), HardwareCheckStatus::Kind::checking);
        EXPECT_FALSE(onboarding->hasCompletedHardwareCheck);
        program.pass(1ms);
        EXPECT_EQ(onboarding->hardwareStatus.kind(), kind);
        EXPECT_TRUE(onboarding->hasCompletedHardwareCheck);
        EXPECT_EQ(onboarding->step, step);

        const auto finished = *onboarding;
        state.startHardwareCheckIfNeeded();
        program.pass(2s);
        EXPECT_EQ(*onboarding, finished);
    }
}

TEST(AppStateOnboarding, MonitorsOnceTheTermsAreAcceptedAndForEver) {
    FakeProgram program;
    program.defaults.stored.clear();
    auto& state = program.start();
    program.pass(5s);
    state.setPaused(true);
    EXPECT_FALSE(*program.published().isPaused);
    EXPECT_EQ(program.countOf("Monitoring paused by user"), 0);
    EXPECT_EQ(program.ticks, 0);

    state.acceptLegalTerms();
    program.pass(0s);
    EXPECT_EQ(program.ticks, 1);
    EXPECT_TRUE(*program.published().legalTermsAccepted);
    EXPECT_EQ(*program.published().route, AppRoute::settings);
    EXPECT_EQ(program.defaults.value("cindertop.legal.accepted"), PropertyValue(true));

    state.setPaused(true);
    state.acceptLegalTerms();
    program.pass(5s);
    EXPECT_EQ(program.ticks, 1); // the user's pause holds
}

} // namespace
} // namespace cindertop
