#include "ScriptedProcesses.h"
#include "platform/linux/ProcessStat.h"

#include <gtest/gtest.h>

#include <array>

namespace cindertop::linux_platform {
namespace {

TEST(ProcessStat, TakesTheFieldsBehindAnyName) {
    for (const std::string name :
         {"bash", "a b", "a) S 1 (b", ")", "((", "", "line\nend", "\xff\xfe", "kworker/u8:2-flush"}) {
        EXPECT_EQ(parseProcessStat(statLine({.identifier = 42,
                                             .name = name,
                                             .parent = 7,
                                             .session = 9,
                                             .startTicks = 18446744073709551615ULL,
                                             .startStack = 140724117406912,
                                             .state = 'R',
                                             .flags = 0x00200040})),
                  (ProcessStat{.name = name,
                               .state = 'R',
                               .parent = 7,
                               .session = 9,
                               .flags = 0x00200040,
                               .startTicks = 18446744073709551615ULL,
                               .startStack = 140724117406912}))
            << name;
    }
}

TEST(ProcessStat, RefusesWhatIsNoLine) {
    const auto line = statLine({.identifier = 42, .name = "x"});
    for (const auto& broken : {
             std::string(),
             std::string(")("),
             std::string("42 (x)"),
             std::string("42 (x) "),
             line.substr(0, line.find(" 2998272")), // ends behind the start time
             statLine({.identifier = 42, .name = "x", .state = ' '}),
             std::string("42 (x) S one 7 1 0 -1 0 1 2 3 4 5 6 7 8 20 0 1 0 5 2 3 4 1 1 0 "),
             std::string("42 (x) S 99999999999 7 1 0 -1 0 1 2 3 4 5 6 7 8 20 0 1 0 5 2 3 4 1 1 0 "),
             std::string("42 (x) S 1 7 1 0 -1 -4 1 2 3 4 5 6 7 8 20 0 1 0 5 2 3 4 1 1 0 "),
             std::string("42 (x) S 1 7 1 0 -1 0 1 2 3 4 5 6 7 8 20 0 1 0 -5 2 3 4 1 1 0 "),
             std::string("42 (x) S 1 7 1 0 -1 0 1 2 3 4 5 6 7 8 20 0 1 0 18446744073709551616 2 3 4 1 1 0 "),
         }) {
        EXPECT_FALSE(parseProcessStat(broken)) << broken;
    }
}

TEST(ProcessStat, CompletesNamesThatTheKernelCut) {
    struct Case {
        std::string_view shortName;
        std::string_view commandLine;
        std::string_view name;
    };

    using namespace std::string_view_literals;
    for (const auto& [shortName, commandLine, name] : std::to_array<Case>({
             {"gnome-terminal-", "/usr/libexec/gnome-terminal-server\0--x"sv, "gnome-terminal-server"},
             {"localsearch-ext", "localsearch-extractor-3\0"sv, "localsearch-extractor-3"},
             {"Isolated Web Co", "/usr/lib/firefox/firefox\0-contentproc"sv, "Isolated Web Co"},
             {"gnome-terminal-", "", "gnome-terminal-"},
             {"bash", "/bin/bash-static\0"sv, "bash"}, // not cut
             {"chromium-browse", "/usr/lib/c/chromium-browser --type=zygote --dir=/a/b"sv,
              "chromium-browser"},
             {"electron-applic", "/opt/e/electron-application /opt/e/app.asar"sv, "electron-application"},
             {"Sheets - Office", "/opt/s/Sheets - Office Suite\0/home/a"sv, "Sheets - Office Suite"},
             {"fifteen-bytes-x", "/bin/fifteen-bytes-x/\0"sv, "fifteen-bytes-x"},
         })) {
        EXPECT_EQ(uncutName(shortName, commandLine), name);
    }
}

TEST(ProcessStat, LeavesOutWhatAKernelWorkerDoesNow) {
    for (const auto& [name, steady] : std::to_array<std::array<std::string_view, 2>>({
             {"kworker/0:1-events", "kworker/0:1"},
             {"kworker/u8:2+flush-259:0", "kworker/u8:2"},
             {"kworker/1:0H", "kworker/1:0H"},
             {"kworker/R-rcu_gp", "kworker/R-rcu_gp"},
             {"irq/24-pciehp", "irq/24-pciehp"},
         })) {
        EXPECT_EQ(steadyName(name), steady);
    }
}

} // namespace
} // namespace cindertop::linux_platform
