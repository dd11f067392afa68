#include "agent/TermsQuestion.h"
#include "app/LegalTerms.h"
#include "fakes/FakeUserDefaults.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace cindertop::agent {
namespace {

class AnswerPipe {
public:
    AnswerPipe() {
        if (::pipe(ends_.data()) != 0) {
            throw std::runtime_error("no pipe");
        }
    }

    ~AnswerPipe() {
        ::close(ends_[0]);
        end();
    }

    AnswerPipe(const AnswerPipe&) = delete;
    AnswerPipe& operator=(const AnswerPipe&) = delete;

    int reader() const { return ends_[0]; }

    int writer() const { return ends_[1]; }

    void write(std::string_view text) const {
        if (::write(ends_[1], text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
            throw std::runtime_error("cannot write");
        }
    }

    void end() {
        if (ends_[1] >= 0) {
            ::close(ends_[1]);
        }
        ends_[1] = -1;
    }

private:
    std::array<int, 2> ends_{};
};

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
        const AnswerPipe shown;
        const AnswerPipe interruption;
        AnswerPipe typing;
        typing.write(typed);
        typing.end();
        EXPECT_EQ(askForTerms(cli::Output(shown.writer()), typing.reader(), interruption.reader()), answer)
            << typed;
        std::array<char, 1024> text{};
        const auto count = ::read(shown.reader(), text.data(), text.size());
        EXPECT_TRUE(std::string_view(text.data(), static_cast<std::size_t>(count)).ends_with("[y/N] "));
    }
}

TEST(TermsQuestion, EndsWhenItIsInterrupted) {
    const AnswerPipe shown;
    const AnswerPipe interruption;
    const AnswerPipe typing;
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
