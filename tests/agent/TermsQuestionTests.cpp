#include "agent/TermsQuestion.h"
#include "app/LegalTerms.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/Pipe.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>
#include <vector>

namespace cindertop::agent {
namespace {

TEST(TermsQuestion, TakesAnAnswerOrNone) {
    struct Case {
        std::string_view typed;
        std::optional<bool> answer;
    };

    for (const auto& [typed, answer] : std::vector<Case>{
             {"y\n", true},
             {"YES\n", true},
             {"yes\nno\n", true},
             {"\n", false},
             {"n\n", false},
             {"yesterday\n", false},
             {"no way\n", false},
             {"", std::nullopt},
             {"yes", std::nullopt}, // the input ended before Enter
         }) {
        const fakes::Pipe shown;
        const fakes::Pipe interruption;
        fakes::Pipe typing;
        typing.write(typed);
        typing.closeWriter();
        EXPECT_EQ(askForTerms(cli::Output(shown.writer()), typing.reader(), interruption.reader()), answer)
            << typed;
        EXPECT_TRUE(shown.taken().ends_with("[y/N] "));
    }
}

TEST(TermsQuestion, EndsWhenItIsInterrupted) {
    const fakes::Pipe shown;
    const fakes::Pipe interruption;
    const fakes::Pipe typing;
    interruption.write("!");
    typing.write("ye");
    EXPECT_EQ(askForTerms(cli::Output(shown.writer()), typing.reader(), interruption.reader()), std::nullopt);
}

TEST(TermsAcceptedForRun, AcceptsWithoutStoring) {
    fakes::FakeUserDefaults stored;
    TermsAcceptedForRun defaults(stored);
    EXPECT_TRUE(areTermsAccepted(defaults));
    EXPECT_FALSE(areTermsAccepted(stored));

    defaults.set("cindertop.show-dock-icon", true);
    EXPECT_EQ(stored.value("cindertop.show-dock-icon"), PropertyValue(true));
    EXPECT_EQ(defaults.value("cindertop.show-dock-icon"), PropertyValue(true));
    EXPECT_EQ(defaults.value("nothing"), std::nullopt);
    storeTermsAccepted(defaults);
    EXPECT_TRUE(areTermsAccepted(stored)) << "accepted for good after all";
}

} // namespace
} // namespace cindertop::agent
