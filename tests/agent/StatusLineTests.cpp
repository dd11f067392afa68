#include "PlayedAgent.h"
#include "agent/StatusLine.h"
#include "fakes/Pipe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace cindertop::agent {
namespace {

using namespace std::chrono_literals;
using cli::Charset;
using fakes::Pipe;

constexpr std::string_view silentFrames = R"([{"at": 0, "thermalState": 9, "pressure": null}])";
constexpr std::string_view warmFrames =
    R"([{"at": 0, "thermalState": 1, "pressure": 10, "sensors": [{"product": "SOC MTR Temp", "celsius": 71.6}],
         "processes": [{"pid": 7, "longName": "名前名前名前名前名前", "millicores": 2000}]},
        {"at": 3, "thermalState": 2, "pressure": 30}])";
constexpr std::string_view sensorsOn = R"("settings": {"experimentalTemperatureSensorsEnabled": true}, )";

std::string lineOf(const PlayedAgent& agent, int columns, Charset charset) {
    const cli::PageFormat format{.columns = columns, .charset = charset, .palette = cli::Palette::none};
    return encoded(statusLine(agent.state, "12:34:56", format), format);
}

TEST(StatusLine, FitsItsPlace) {
    PlayedAgent hot;
    PlayedAgent warm(warmFrames, sensorsOn);
    PlayedAgent silent(silentFrames);
    for (auto* const agent : {&hot, &warm, &silent}) {
        agent->passTo(6s);
    }

    struct Case {
        const PlayedAgent& agent;
        int columns;
        Charset charset;
        std::string line;
    };

    for (const auto& [agent, columns, charset, line] : std::vector<Case>{
             {hot, 110, Charset::unicode,
              "12:34:56  Serious   75     --    encoder               50.0 %  Top CPU offender"},
             {hot, 60, Charset::unicode, "12:34:56  Serious   75     --    encoder               50.0…"},
             {hot, 10, Charset::unicode, "12:34:56"},
             {hot, 1, Charset::ascii, "~"},
             {warm, 110, Charset::unicode,
              "12:34:56  Serious   75   72°C    名前名前名前名前名前  25.0 %  Top CPU offender"},
             {warm, 60, Charset::ascii, "12:34:56  Serious   75    72C    ??????????            25.0~"},
             {silent, 80, Charset::ascii,
              "12:34:56  No heat readings                                     Normal workload"},
         }) {
        EXPECT_EQ(lineOf(agent, columns, charset), line) << columns;
    }
}

std::ptrdiff_t lines(const std::string& text) {
    return std::ranges::count(text, '\n');
}

TEST(StatusLines, PausesUnlessThereIsNews) {
    ::unsetenv("COLUMNS");
    const Pipe pipe;
    const cli::Output output(pipe.writer());
    StatusLines status(output, 500ms);
    PlayedAgent agent(warmFrames, sensorsOn);
    const StatusLines::SteadyTime start{};
    agent.passTo(1s);

    struct Step {
        std::chrono::milliseconds at;
        std::ptrdiff_t lines;
    };

    for (const auto& [at, count] : {Step{0ms, 1}, Step{499ms, 0}, Step{500ms, 1}, Step{501ms, 0}}) {
        status.tick(agent.state, "12:34:56", start + at);
        EXPECT_EQ(lines(pipe.taken()), count) << at.count();
    }
    agent.passTo(5s);
    status.tick(agent.state, "12:34:56", start + 502ms);
    EXPECT_TRUE(pipe.taken().contains("Serious")) << "another level shows at once";
    status.tick(agent.state, "12:34:56", start + 503ms);
    EXPECT_EQ(pipe.taken(), "");
    status.note("A title: " + std::string(200, 'x') + "\x1b");
    EXPECT_EQ(lines(pipe.taken()), 4) << "a column too wide is broken";
}

TEST(StatusLines, NeverWaitsForItsReader) {
    const Pipe pipe;
    // As a terminal is: a write without room would wait.
    ASSERT_EQ(::fcntl(pipe.writer(), F_SETFL, O_NONBLOCK), 0);
    const std::string blanks(4096, ' ');
    while (::write(pipe.writer(), blanks.data(), blanks.size()) > 0) {
    }
    ASSERT_EQ(::fcntl(pipe.writer(), F_SETFL, 0), 0);
    const cli::Output output(pipe.writer());
    StatusLines status(output, 0ms);
    status.note("nobody reads this");
    EXPECT_FALSE(pipe.taken().contains("nobody"));
    status.note("but this");
    EXPECT_EQ(pipe.taken(), "but this\n");
}

} // namespace
} // namespace cindertop::agent
