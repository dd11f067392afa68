#include "app/FakeProgram.h"
#include "ui/presentation/OnboardingPresentation.h"

#include <gtest/gtest.h>

namespace cindertop::ui {
namespace {

using namespace std::chrono_literals;
using Marker = OnboardingPresentation::Marker;

class OnboardingPresentationTest : public testing::Test {
protected:
    FakeProgram program;

    void check(Marker marker, const char* title) {
        program.defaults = {};
        auto& state = program.start();
        OnboardingPresentation onboarding(state, {});
        onboarding.setAcceptedLegal(true);
        state.startHardwareCheckIfNeeded();
        EXPECT_EQ(onboarding.marker(), static_cast<int>(Marker::checking));
        EXPECT_EQ(onboarding.statusTitle(), "Checking this Mac...");
        onboarding.start();
        EXPECT_FALSE(state.isMonitoringPermitted());

        program.pass(900ms);
        EXPECT_EQ(onboarding.marker(), static_cast<int>(marker));
        EXPECT_EQ(onboarding.statusTitle(), title);
        EXPECT_EQ(onboarding.hasPressure(), marker == Marker::complete);
        onboarding.setAcceptedLegal(false);
        onboarding.start();
        EXPECT_FALSE(state.isMonitoringPermitted());

        onboarding.setAcceptedLegal(true);
        onboarding.start();
        EXPECT_TRUE(state.isMonitoringPermitted());
    }
};

TEST_F(OnboardingPresentationTest, StartsWhenTheCheckIsOverAndTheTermsAreTicked) {
    check(Marker::complete, "M2 MacBook Air detected");
}

TEST_F(OnboardingPresentationTest, TellsAnotherMachineSoAndStartsToo) {
    program.machine.systemValues.texts = {{"hw.model", "20XW"}};
    program.architecture = "x86_64";
    check(Marker::failed, "Apple Silicon required");
    OnboardingPresentation onboarding(*program.state, {});
    EXPECT_EQ(onboarding.detailTitles(), (QStringList{"Target", "Model", "Chip", "Arch", "Power"}));
    EXPECT_EQ(onboarding.detailValues(),
              (QStringList{"MacBook Air M-series", "20XW", "unknown", "x86_64", "Power source unavailable"}));
    onboarding.setShowsDetails(true);
    EXPECT_TRUE(onboarding.showsDetails());
}

} // namespace
} // namespace cindertop::ui
