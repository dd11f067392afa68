#include "fakes/Pipe.h"
#include "terminal/Output.h"
#include "terminal/TerminalTraits.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include <fcntl.h>
#include <signal.h> // NOLINT(modernize-deprecated-headers): sighandler_t is GNU's
#include <unistd.h>

namespace cindertop::cli {
namespace {

TEST(TerminalTraits, DecideColourAndRedrawing) {
    struct Case {
        TerminalFacts facts;
        Palette palette;
        bool canRedraw;
    };

    for (const auto& [facts, palette, canRedraw] : std::to_array<Case>({
             {{.isTerminal = true, .term = "xterm"}, Palette::sixteen, true},
             {{.isTerminal = true, .term = "tmux-256color"}, Palette::twoHundredFiftySix, true},
             {{.isTerminal = true, .term = "xterm", .noColor = "1"}, Palette::none, true},
             {{.isTerminal = true, .term = "xterm", .noColor = ""}, Palette::sixteen, true},
             {{.isTerminal = true, .term = "dumb"}, Palette::none, false},
             {{.isTerminal = true, .term = ""}, Palette::none, false},
             {{.isTerminal = true}, Palette::none, false},
             {{.isTerminal = false, .term = "xterm"}, Palette::none, false},
         })) {
        EXPECT_EQ(traitsOf(facts).format.palette, palette) << facts.term.value_or("none");
        EXPECT_EQ(traitsOf(facts).canRedraw, canRedraw) << facts.term.value_or("none");
    }
}

TEST(TerminalTraits, DecideTheWidth) {
    struct Case {
        TerminalFacts facts;
        int columns;
    };

    for (const auto& [facts, columns] : std::to_array<Case>({
             {{.columns = 64, .columnsVariable = "100"}, 64},
             {{.columns = 300}, 110},
             {{.columnsVariable = "100"}, 100},
             {{.columnsVariable = "-3"}, 80},
             {{.columnsVariable = "12x"}, 80},
             {{}, 80},
         })) {
        EXPECT_EQ(traitsOf(facts).format.columns, columns);
    }
}

class OutputTest : public testing::Test {
public:
    ~OutputTest() override { ::signal(SIGPIPE, formerHandler_); }

    OutputTest(const OutputTest&) = delete;
    OutputTest& operator=(const OutputTest&) = delete;

protected:
    OutputTest() : formerHandler_(::signal(SIGPIPE, SIG_IGN)) {}

    fakes::Pipe pipe;

private:
    sighandler_t formerHandler_;
};

TEST_F(OutputTest, TellsAReaderThatIsGoneFromAFullDisk) {
    pipe.closeReader();
    const auto gone = Output(pipe.writer()).write("x");
    ASSERT_FALSE(gone);
    EXPECT_TRUE(gone.error().isReaderGone());

    const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    const auto refused = Output(full).write("x");
    ::close(full);
    ASSERT_FALSE(refused);
    EXPECT_FALSE(refused.error().isReaderGone());
    EXPECT_EQ(refused.error().code, ENOSPC);
}

TEST_F(OutputTest, DoesNotWaitForAStalledReaderWhenInterrupted) {
    Output output(pipe.writer());
    const fakes::Pipe interruption;
    interruption.write("!");
    output.interruptBy(interruption.reader());
    EXPECT_TRUE(output.write("there is room")); // so nothing waits
    const auto stalled = output.write(std::string(1'000'000, 'x'));
    ASSERT_FALSE(stalled);
    EXPECT_TRUE(stalled.error().isInterruption());
}

} // namespace
} // namespace cindertop::cli
