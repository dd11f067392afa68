#include "cpu/GraphicsMeter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace cindertop {
namespace {

constexpr Seconds eightSeconds{8};
constexpr std::uint64_t second = 1'000'000'000;

GraphicsClient client(std::int32_t process, std::uint64_t identifier,
                      std::vector<GraphicsEngineUsage> engines, std::string device = "0000:00:02.0") {
    return {.processIdentifier = process,
            .device = std::move(device),
            .identifier = identifier,
            .engines = std::move(engines)};
}

TEST(GraphicsMeter, TellsHowBusyAnEngineWas) {
    struct Case {
        std::string what;
        GraphicsEngineUsage before;
        GraphicsEngineUsage after;
        std::vector<double> percent;
    };

    for (const auto& [what, before, after, percent] : std::vector<Case>{
             {"a quarter", {"render", 7 * second}, {"render", 9 * second}, {25}},
             {"rests", {"render", 5}, {"render", 5}, {0}},
             {"taken back", {"render", 5 * second}, {"render", 4 * second}, {0}},
             {"two equal engines", {"video", 0, {}, 2}, {"video", 8 * second, {}, 2}, {50}},
             {"more than there is", {"render", 0}, {"render", 80 * second}, {100}},
             {"cycles", {"rcs", 100, 1000}, {"rcs", 400, 2000}, {30}},
             {"cycles of four", {"ccs", 0, 0, 4}, {"ccs", 500, 1000, 4}, {12.5}},
             {"switched off", {"rcs", 100, 1000}, {"rcs", 100, 1000}, {0}},
             {"another unit", {"rcs", 100}, {"rcs", 400, 2000}, {}},
             {"another engine", {"rcs", 100}, {"vcs", 400}, {}},
         }) {
        GraphicsMeter meter;
        EXPECT_EQ(meter.sharesOf(std::vector{client(1, 5, {before})}, eightSeconds).size(), 0U);
        std::vector<double> found;
        for (const auto& share : meter.sharesOf(std::vector{client(1, 5, {after})}, eightSeconds)) {
            found.push_back(share.percent);
        }
        EXPECT_EQ(found, percent) << what;
    }
}

TEST(GraphicsMeter, StaysWithTheHigherCounterUntilItIsPassed) {
    GraphicsMeter meter;
    std::vector<double> percents;
    for (const std::uint64_t busy : {0U, 4U, 3U, 6U}) {
        for (const auto& share :
             meter.sharesOf(std::vector{client(1, 5, {{"render", busy * second}})}, eightSeconds)) {
            percents.push_back(share.percent);
        }
    }
    EXPECT_EQ(percents, (std::vector<double>{50, 0, 25}));
}

TEST(GraphicsMeter, CountsASharedClientOnceAndTellsDevicesApart) {
    GraphicsMeter meter;
    const auto read = [&](std::uint64_t busy) {
        return meter.sharesOf(std::vector{client(1, 5, {{"render", busy}}), client(2, 5, {{"render", busy}}),
                                          client(2, 6, {{"render", busy}}),
                                          client(2, 5, {{"render", busy}}, "0000:03:00.0")},
                              eightSeconds);
    };
    read(0);
    const auto shares = read(2 * second);
    ASSERT_EQ(shares.size(), 3U);
    EXPECT_EQ(shares[0], (GraphicsShare{1, shares[0].engine, 25}));
    EXPECT_EQ(shares[1], (GraphicsShare{2, shares[0].engine, 25}));
    EXPECT_EQ(meter.engineName(shares[0].engine), "render");
    EXPECT_EQ(meter.engineName(shares[2].engine), "render@2");
    EXPECT_EQ(busiestEngine(shares), 50);
    EXPECT_EQ(busiestEngine({}), std::nullopt);
    meter.reset();
    EXPECT_TRUE(read(3 * second).empty());
    EXPECT_TRUE(meter.sharesOf(std::vector{client(1, 5, {{"render", 9 * second}})}, Seconds{0}).empty());
}

} // namespace
} // namespace cindertop
