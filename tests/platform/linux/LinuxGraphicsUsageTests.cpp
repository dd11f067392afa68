#include "ScriptedProcesses.h"
#include "SteppedClock.h"
#include "platform/linux/GraphicsClientText.h"
#include "platform/linux/LinuxGraphicsUsage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

namespace cindertop::linux_platform {
namespace {

using std::chrono::seconds;

std::string driverText(const std::string& driver) {
    return readTextFile(std::filesystem::path(CINDERTOP_FIXTURES) / "graphics" / (driver + ".fdinfo"))
        .value();
}

TEST(GraphicsClientText, ReadsEachDriver) {
    struct Case {
        std::string driver;
        std::string device;
        std::uint64_t identifier;
        std::vector<GraphicsEngineUsage> engines;
    };

    for (const auto& [driver, device, identifier, engines] : std::vector<Case>{
             {"i915",
              "0000:00:02.0",
              31,
              {{"render", 48'210'771'234},
               {"copy", 1'190'442},
               {"video", 7'700'120'034, {}, 2},
               {"video-enhance", 0}}},
             {"xe",
              "0000:03:00.0",
              9,
              {{"rcs", 31'002'200, 8'123'456'789}, {"vcs", 1'500, 8'123'456'789, 2}}},
             {"amdgpu", "0000:c4:00.0", 58, {{"gfx", 93'120'044'871}, {"dec", 20'114}}},
             {"msm", "msm", 12, {{"gpu", 5'021'170'311}}},
             {"panfrost", "panfrost", 4, {{"fragment", 902'117'720}, {"vertex-tiler", 61'000'221}}},
             {"broken", "i915", 7, {{"render", 40}, {"copy", 6}}},
         }) {
        const auto client = parseGraphicsClient(driverText(driver));
        ASSERT_TRUE(client) << driver;
        EXPECT_EQ(client->device, device);
        EXPECT_EQ(client->identifier, identifier) << driver;
        EXPECT_EQ(client->engines, engines) << driver;
    }
}

TEST(GraphicsClientText, IsNoClientWithoutIdentifierOrEngine) {
    for (const auto* const text : {"", "\n", "drm-driver:\tvirtio_gpu\ndrm-client-id:\t4\n",
                                   "drm-driver:\ti915\ndrm-engine-render:\t5 ns\n",
                                   "drm-client-id: 1\ndrm-engine-render: 5 ns", "pos:\t0\nflags:\t02\n"}) {
        EXPECT_FALSE(parseGraphicsClient(text)) << text;
    }
}

class LinuxGraphicsUsageTest : public testing::Test {
protected:
    /// A process that holds the named descriptors of a graphics device.
    void draw(std::int32_t processIdentifier,
              const std::vector<std::pair<int, std::string>>& clients = {}) const {
        machine.run({.identifier = processIdentifier, .name = "app"});
        for (const auto& [number, text] : clients) {
            open(processIdentifier, number, "/dev/dri/renderD128", text);
        }
    }

    void open(std::int32_t processIdentifier, int number, const std::string& target,
              const std::string& text) const {
        const auto folder = ScriptedMachine::folder(processIdentifier);
        machine.tree().remove(folder / "fd" / std::to_string(number));
        machine.tree().link(folder / "fd" / std::to_string(number), target);
        machine.file(processIdentifier, "fdinfo/" + std::to_string(number), text);
    }

    static std::string client(int identifier, std::uint64_t busy) {
        return "drm-driver:\ti915\ndrm-pdev:\t0000:00:02.0\ndrm-client-id:\t" + std::to_string(identifier) +
               "\ndrm-engine-render:\t" + std::to_string(busy) + " ns\n";
    }

    /// "PID:client=busy" of the first engine of each client, after a census.
    std::vector<std::string> read() {
        std::vector<std::int32_t> identifiers(static_cast<std::size_t>(table.countProcesses()));
        table.listProcesses(identifiers);
        for (const auto identifier : identifiers) {
            table.accounting(identifier);
        }
        std::vector<std::string> texts;
        for (const auto& found : graphics.clients()) {
            texts.push_back(std::to_string(found.processIdentifier) + ":" + std::to_string(found.identifier) +
                            "=" + std::to_string(found.engines.front().busy));
        }
        return texts;
    }

    using Texts = std::vector<std::string>;

    ScriptedMachine machine;
    SteppedClock clock;
    LinuxProcessTable table{machine.tree().roots(), machine.clocks()};
    LinuxGraphicsUsage graphics{machine.tree().roots(), table, clock.clock(), ::geteuid()};
};

TEST_F(LinuxGraphicsUsageTest, ReadsOneDescriptorOfEachClientOfAProcess) {
    EXPECT_FALSE(graphics.status().isAvailable);
    draw(20, {{0, client(5, 50)}, {7, client(5, 51)}, {9, client(6, 60)}});
    draw(30);
    open(30, 3, "/home/me/dri/renderD128", client(8, 1));
    draw(40, {{4, client(5, 50)}});
    EXPECT_EQ(read(), (Texts{"20:5=50", "20:6=60", "40:5=50"}));
    EXPECT_TRUE(graphics.status().isAvailable);
    machine.file(20, "fdinfo/0", client(5, 70)).file(20, "fdinfo/9", client(6, 65));
    machine.end(40);
    EXPECT_EQ(read(), (Texts{"20:5=70", "20:6=65"}));
}

TEST_F(LinuxGraphicsUsageTest, LooksThroughAProcessAgainOnlyWhenItRanAndTimePassed) {
    draw(20);
    EXPECT_EQ(read(), Texts{});
    draw(20, {{4, client(1, 10)}});
    EXPECT_EQ(read(), Texts{}); // it ran, but just now it had none
    clock.advance(LinuxGraphicsUsage::firstInterval);
    EXPECT_EQ(read(), Texts{"20:1=10"});
    open(20, 5, "/dev/dri/card0", client(2, 20));
    clock.advance(LinuxGraphicsUsage::longestInterval);
    EXPECT_EQ(read(), Texts{"20:1=10"}); // it did not run
    draw(20);
    EXPECT_EQ(read(), (Texts{"20:1=10", "20:2=20"}));
}

TEST_F(LinuxGraphicsUsageTest, LooksAgainAtAFewProcessesATime) {
    constexpr int many = 10;
    for (int identifier = 20; identifier < 20 + many; ++identifier) {
        draw(identifier);
    }
    EXPECT_EQ(read(), Texts{});
    for (int identifier = 20; identifier < 20 + many; ++identifier) {
        draw(identifier, {{3, client(identifier, 1)}});
    }
    clock.advance(LinuxGraphicsUsage::firstInterval);
    EXPECT_EQ(read().size(), 4);
    EXPECT_EQ(read().size(), 8);
    EXPECT_EQ(read().size(), 10);
}

TEST_F(LinuxGraphicsUsageTest, DropsWhatWasClosedAndFindsTheOtherDescriptorOfTheClient) {
    draw(20, {{3, client(5, 50)}, {8, client(5, 50)}});
    EXPECT_EQ(read(), Texts{"20:5=50"});
    machine.file(20, "fdinfo/3", "pos:\t0\n");
    machine.tree().remove(ScriptedMachine::folder(20) / "fd/3");
    EXPECT_EQ(read(), Texts{});
    draw(20);
    EXPECT_EQ(read(), Texts{"20:5=50"});
}

TEST_F(LinuxGraphicsUsageTest, ForgetsAProcessWhoseIdentifierAnotherHasNow) {
    draw(20, {{3, client(5, 50)}});
    EXPECT_EQ(read(), Texts{"20:5=50"});
    machine.end(20);
    machine.run({.identifier = 20, .name = "other", .startTicks = 99'999});
    EXPECT_EQ(read(), Texts{});
}

TEST_F(LinuxGraphicsUsageTest, LeavesOthersProcessesAlone) {
    LinuxGraphicsUsage foreign{machine.tree().roots(), table, clock.clock(), ::geteuid() + 1};
    draw(20, {{3, client(5, 50)}});
    EXPECT_EQ(read(), Texts{"20:5=50"});
    EXPECT_EQ(foreign.clients().size(), 0U);
}

TEST_F(LinuxGraphicsUsageTest, WakesNoSleepingDevice) {
    const auto xe = [](int cycles) {
        return "drm-driver:\txe\ndrm-pdev:\t0000:03:00.0\ndrm-client-id:\t4\ndrm-cycles-rcs:\t" +
               std::to_string(cycles) + "\ndrm-total-cycles-rcs:\t900\n";
    };
    draw(20, {{3, xe(1)}});
    EXPECT_EQ(read(), Texts{"20:4=1"});
    machine.file(20, "fdinfo/3", xe(2));
    for (const auto& [status, shown] : {std::pair{"suspended", "20:4=1"}, std::pair{"active", "20:4=2"}}) {
        machine.tree().attribute("sys/bus/pci/devices/0000:03:00.0/power/runtime_status", status);
        clock.advance(seconds(300));
        draw(20);
        EXPECT_EQ(read(), Texts{shown}) << status;
    }
}

} // namespace
} // namespace cindertop::linux_platform
