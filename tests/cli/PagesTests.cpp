#include "cli/Pages.h"
#include "cli/WaybarText.h"
#include "report/Snapshots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace cindertop::cli {
namespace {

using testing::HasSubstr;

PageStyle style(int columns, Charset charset, Palette palette = Palette::none) {
    return {.format = {.columns = columns, .charset = charset, .palette = palette},
            .temperatures = TemperatureFormatter("en_GB", TemperatureFormatter::Unit::celsius),
            .system = OperatingSystem::gnuLinux};
}

std::string text(const std::vector<Line>& page, const PageStyle& pageStyle) {
    return encoded(page, pageStyle.format);
}

MachineSnapshot hostileMachine() {
    auto machine = hotLaptop();
    auto& browser = machine.offenders.offenders[0];
    browser.displayName = "\x1b]0;owned\x07" + std::string(200, 'x');
    browser.children[0].name =
        "日本語日本語日本語日本語日本語日本語日本語日本語日本語日本語日本語日本語日本語";
    machine.temperatures[0].label = std::string(120, 'y') + "\n";
    machine.sources[1].reason = "a\u202Eb " + std::string(150, 'z');
    return machine;
}

TEST(StatusPage, TellsWattsFansAndWhatHoldsTheProcessorBack) {
    auto machine = hotLaptop();
    auto& hardware = machine.context.hardware;
    hardware.meters = {.machineWatts = 12.4,
                       .chips = {{.name = "Graphics chip", .watts = 3.52}},
                       .fans = {{.name = "CPU\x1b Fan", .revolutionsPerMinute = 2450}, {.name = "Fan"}}};
    hardware.processor = {.clock = ClockLimit{.allowedHertz = 1'200'000'000, .possibleHertz = 3'400'000'000},
                          .heldBy = HoldReason::heat};
    const auto wide = style(80, Charset::ascii);
    const auto page = text(statusPage({machine, {}}, wide), wide);
    EXPECT_THAT(page, HasSubstr("Speed         Processor held to 1.2 of 3.4 GHz by heat\n"
                                "Watts         Drawing 12.4 W, Graphics chip 3.5 W\n"
                                "Fans          CPU^[ Fan 2450 rpm, Fan stopped\n"));
}

TEST(StatusPage, ShowsEveryFact) {
    const auto wide = style(80, Charset::unicode);
    EXPECT_EQ(text(statusPage({hotLaptop(), {}}, wide), wide),
              R"(78 of 100  Serious, rising
██████████████████████████████████████████████▊░░░░░░░░░░░░░

Why           Pressure heavy: 75. Rising: +3
Thermal       state serious, pressure heavy
Pressure      Serious or worse for 2 min 5 s
Temperature   97°C
              CPU Package 0 97°C   GPU           61°C
Power         battery power, battery 57 %, not charging, 36°C (warm), Power
              Saver on
Displays      1 active: 0 built in, 1 external (lid probably closed)
Processor     41.0 %

Applications                                                                 CPU
Browser                                                  6 processes      33.2 %
  browser                                                pid 4711         30.5 %
  tab                                                    pid 4712          2.8 %
  and 4 more
System                                                   pid 77           <0.1 %

Where the facts come from
  thermal zones  available: 2 zones
  lid            not available: no lid switch
)");
}

TEST(StatusPage, ShowsWhoDrawsWhereThatIsKnown) {
    const auto wide = style(80, Charset::unicode);
    auto machine = hotLaptop();
    machine.offenders.offenders[0].graphicsPercent = 48.25;
    machine.offenders.offenders[0].children[1].graphicsPercent = 0;
    EXPECT_THAT(text(statusPage({machine, {}}, wide), wide), HasSubstr(R"(
Applications                                                         CPU     GPU
Browser                                          6 processes      33.2 %  48.2 %
  browser                                        pid 4711         30.5 %
  tab                                            pid 4712          2.8 %   0.0 %
  and 4 more
System                                           pid 77           <0.1 %
)"));
}

TEST(StatusPage, SaysWhatIsMissingAndNeverZero) {
    const auto plain = style(80, Charset::ascii);
    EXPECT_EQ(text(statusPage({unknownMachine(), {}}, plain), plain),
              R"(No heat readings

Thermal       state not available, pressure not available
Temperature   not available: no sensor answers
Power         source not available, no battery found
Displays      not available
Processor     not available

Applications                                                                 CPU
not available: the processes cannot be listed

Where the facts come from
)");
}

TEST(StatusPage, TellsWhenASensorWasReadThatIsReadSeldom) {
    const auto wide = style(80, Charset::unicode);
    auto machine = hotLaptop();
    machine.temperatures.push_back(
        {"SSD Composite (nvme0)", "SSD Composite (nvme0)", 38.85, ThermalSensorKind::storage, Seconds{12.4}});
    EXPECT_THAT(text(statusPage({machine, {}}, wide), wide),
                HasSubstr("              CPU Package 0                   97°C\n"
                          "              GPU                             61°C\n"
                          "              SSD Composite (nvme0), 12 s ago 39°C\n"));
}

TEST(StatusPage, TellsLimitsAndWhatASensorHasBeen) {
    auto machine = hotLaptop();
    machine.temperatures[1].limits = {.slowsFrom = 85, .switchesOffAt = 105};
    machine.temperatures[1].range = TemperatureRange{.lowest = 41, .highest = 98.6};
    const auto wide = style(80, Charset::unicode);
    EXPECT_THAT(text(statusPage({machine, {}}, wide), wide),
                HasSubstr("Temperature   97°C · slows from 85°C · switches off at 105°C\n"
                          "              CPU Package 0 97°C (41°C to 99°C)\n"
                          "              GPU                          61°C\n"));
    const auto plain = style(80, Charset::ascii);
    EXPECT_THAT(text(statusPage({machine, {}}, plain), plain),
                HasSubstr("Temperature   97C, slows from 85C, switches off at 105C\n"));
}

TEST(StatusPage, TellsWhyThereIsNoTemperature) {
    auto machine = unknownMachine();
    const auto wide = style(80, Charset::ascii);
    machine.sources = {{std::string(temperatureSensorsSource), false, "switched off"}};
    EXPECT_THAT(text(statusPage({machine, {}}, wide), wide),
                HasSubstr("Temperature   not available: switched off\n"));
    machine.temperatures = {{"Battery", "Battery", 30, ThermalSensorKind::battery}};
    const auto plain = style(80, Charset::ascii);
    EXPECT_THAT(text(statusPage({machine, {}}, plain), plain),
                HasSubstr("Temperature   not available: no sensor of the processor answers\n"
                          "              Battery 30C\n"));
}

TEST(StatusPage, LeadsWithTheNoteAndAddsWhatTheUserWants) {
    using enum CinderInsightConfidence;
    MachineReport report{.snapshot = hotLaptop(), .advice = MachineAdvice{}, .note = "Monitoring is paused."};
    report.advice->recommendation = {
        .primaryInsight =
            CinderInsight{CinderInsightKind::probableClamshellHeat, high, "Clamshell heat", "Open it.", {}},
        .secondaryInsights = {{CinderInsightKind::chargingAddsHeat, medium, "Charging heat", "Unplug.", {}}}};
    auto wide = style(80, Charset::unicode);
    const std::string others = "\nCharging heat\nUnplug.\n";
    const auto concise = text(statusPage(report, wide), wide);
    EXPECT_TRUE(concise.starts_with("Monitoring is paused.\n\n78 of 100"));
    EXPECT_THAT(concise, HasSubstr("\nClamshell heat\nOpen it.\n"));
    EXPECT_EQ(concise.find(others), std::string::npos);
    wide.verbosity = RecommendationVerbosity::detailed;
    EXPECT_THAT(text(statusPage(report, wide), wide), HasSubstr("Open it.\n" + others));
    EXPECT_THAT(text(watchPage(report, wide, {.rows = 40}, "23:02:11"), wide), HasSubstr(others));
}

TEST(Pages, FitEveryWidth) {
    const auto machine = hostileMachine();
    for (const auto charset : {Charset::unicode, Charset::ascii}) {
        for (int columns = 1; columns <= 130; ++columns) {
            const auto narrow = style(columns, charset);
            for (const auto& page : {statusPage({machine, {}}, narrow), offendersPage(machine, narrow),
                                     watchPage({machine, {}}, narrow, {.rows = 24}, "23:02:11")}) {
                for (const auto& line : page) {
                    const auto shownLine = encoded(line, narrow.format);
                    EXPECT_LE(columnsOf(shownLine), columns) << shownLine;
                    EXPECT_EQ(shownLine.find_first_of("\x1b\n\r\x07"), std::string::npos) << shownLine;
                }
            }
        }
    }
}

TEST(Pages, AlignSharesUnderWideCharacters) {
    auto machine = hotLaptop();
    machine.offenders.offenders[0].displayName = "日本語";
    const auto wide = style(60, Charset::unicode);
    for (const auto& line : offendersPage(machine, wide)) {
        const auto shownLine = encoded(line, wide.format);
        if (shownLine.ends_with('%')) {
            EXPECT_EQ(columnsOf(shownLine), 60) << shownLine;
        }
    }
}

TEST(Pages, ColourTheLevelButSayItToo) {
    const auto coloured = style(80, Charset::unicode, Palette::sixteen);
    EXPECT_THAT(text(statusPage({hotLaptop(), {}}, coloured), coloured), HasSubstr("\x1b[91mSerious\x1b[0m"));
}

TEST(WatchPage, FillsEveryHeightAndKeepsWhatMattersMost) {
    const auto screen = style(80, Charset::unicode);
    for (int rows = 1; rows <= 60; ++rows) {
        const auto page = watchPage({hotLaptop(), {}}, screen, {.rows = rows}, "23:02:11");
        ASSERT_EQ(page.size(), static_cast<std::size_t>(rows));
        const auto content = text(page, screen);
        EXPECT_THAT(content, HasSubstr("Cindertop"));
        EXPECT_EQ(content.find("78 of 100") != std::string::npos, rows >= 2) << rows;
        EXPECT_EQ(content.find("Browser") != std::string::npos, rows >= 8) << rows;
        EXPECT_EQ(content.find("Processor") != std::string::npos, rows >= 18) << rows;
    }
}

/// Applications a to h, busiest first, each with `processes` processes that are all known.
MachineSnapshot busyMachine(int processes) {
    auto machine = hotLaptop();
    auto& offenders = machine.offenders.offenders;
    offenders.clear();
    for (const char name : std::string("hgfedcba")) {
        ProcessOffender::Fields fields{
            .id = {name}, .displayName = {name}, .processCount = processes, .cpuPercent = name - 90.0};
        for (int pid = 0; pid < processes; ++pid) {
            fields.children.emplace_back(pid + 1, 0, "child", 1, false, std::nullopt);
        }
        offenders.emplace_back(fields);
    }
    return machine;
}

TEST(WatchPage, FillsTheHeightWithProcessesEvenly) {
    const auto screen = style(80, Charset::unicode);
    const auto count = [&](int rows, std::string_view word) {
        const auto content = text(watchPage({busyMachine(12), {}}, screen, {.rows = rows}, "now"), screen);
        int found = 0;
        for (auto at = content.find(word); at != std::string::npos; at = content.find(word, at + 1)) {
            ++found;
        }
        return found;
    };
    EXPECT_EQ(count(160, "  child "), 96); // all
    EXPECT_EQ(count(160, " more"), 0);
    EXPECT_EQ(count(60, " more"), 8);
    for (const int rows :
         {40, 50, 60, 80}) { // the title, 12 rows of facts, two headings, a blank, the footer
        const auto page = watchPage({busyMachine(12), {}}, screen, {.rows = rows}, "now");
        EXPECT_LE(std::ranges::count(page, Line()), 3) << rows; // between the parts, and what is left over
    }
}

TEST(WatchPage, OrdersTheBusiestThatHaveRoom) {
    const auto screen = style(80, Charset::unicode);
    auto machine = busyMachine(1);
    machine.offenders.offenders[2].graphicsPercent = 20; // "f"
    machine.offenders.offenders[5].graphicsPercent = 50; // "c"
    const auto names = [&](int rows, OffenderOrder order) {
        std::string found;
        for (const auto& line : watchPage({machine, {}}, screen, {.rows = rows, .order = order}, "now")) {
            if (line.size() > 1 && line[0].tone == Tone::strong && line[0].text.substr(1, 2) == "  ") {
                found += line[0].text[0];
            }
        }
        return found;
    };
    EXPECT_EQ(names(40, OffenderOrder::cpu), "hgfedcba");
    EXPECT_EQ(names(40, OffenderOrder::name), "abcdefgh");
    EXPECT_EQ(names(10, OffenderOrder::cpu), "hgfe");
    EXPECT_EQ(names(10, OffenderOrder::name), "efgh");
    EXPECT_EQ(names(40, OffenderOrder::graphics), "cfhgedba");
}

TEST(WatchPage, ShowsTheHistoryWhereThereIsRoom) {
    for (const auto charset : {Charset::unicode, Charset::ascii}) {
        const auto wide = style(110, charset);
        EXPECT_EQ(text(watchPage({hotLaptop(), {}}, wide, {.rows = 24}, "23:02:11"), wide).find("▃█") !=
                      std::string::npos,
                  charset == Charset::unicode);
    }
}

TEST(WatchLine, IsOneLineWithEverythingThatMatters) {
    const auto plain = style(80, Charset::unicode);
    EXPECT_EQ(watchLine(hotLaptop(), plain, "2026-11-22 23:02:11"),
              "2026-11-22 23:02:11  78 Serious, rising  temperature 97°C  CPU 41.0 %  Browser 33.2 %");
    EXPECT_EQ(watchLine(unknownMachine(), plain, "2026-11-22 23:02:11"),
              "2026-11-22 23:02:11  no heat readings  temperature not available  CPU not available  "
              "applications: not available");
    EXPECT_EQ(watchLine(hostileMachine(), plain, "now").find_first_of("\x1b\n"), std::string::npos);
}

TEST(WaybarText, IsOneObjectWhoseTextsAreMarkup) {
    MachineReport report{.snapshot = hotLaptop(), .advice = MachineAdvice{}};
    report.advice->presentation.actionMessage = "Wait.";
    report.snapshot.offenders.offenders[0].displayName = "<A & B>\n";
    const auto wide = style(80, Charset::unicode);
    const auto text = waybarText(report, wide);
    EXPECT_THAT(
        text,
        testing::StartsWith(
            R"({"text":"97°C","class":"serious","tooltip":"Serious, 78 of 100\nWait.\n&lt;A &amp; B&gt;)"));
    EXPECT_THAT(text, testing::EndsWith(R"(\nSystem  &lt;0.1 %","percentage":78})"));
    EXPECT_EQ(waybarText({unknownMachine(), {}}, wide),
              R"({"text":"No heat readings","class":"unknown","tooltip":"No heat readings"})");
}

} // namespace
} // namespace cindertop::cli
