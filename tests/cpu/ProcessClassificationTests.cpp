#include "cpu/ProcessClassification.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

namespace cindertop {
namespace {

using enum ProcessOffenderCategory;

struct Case {
    std::string name;
    std::optional<std::string> bundle;
    std::optional<std::string> display;
    bool isSystem;
    ProcessOffenderCategory category;
};

void expectCategories(const auto& cases, OperatingSystem system = OperatingSystem::mac) {
    for (const auto& [name, bundle, display, isSystem, category] : cases) {
        ProcessCPUReading reading;
        reading.name = name;
        reading.appBundleIdentifier = bundle;
        reading.appDisplayName = display;
        reading.isSystemProcess = isSystem;
        EXPECT_EQ(caseName(classify(reading, system)), caseName(category))
            << name << " of " << bundle.value_or("no bundle") << (isSystem ? ", system" : "");
    }
}

constexpr auto none = std::nullopt;

TEST(Classification, KnowsDaemonsByTheirWholeNameBeforeAnythingElse) {
    expectCategories(std::to_array<Case>({
        {"mdworker_shared", none, none, false, indexingOrSetup},
        {"MDS", none, none, true, indexingOrSetup},
        {"mds", "com.google.Chrome", "Chrome", false, indexingOrSetup},
        {"mds_", none, none, true, system},
        {"XProtectRemediator", none, none, true, backgroundSystem},
        {"softwareupdated", none, none, false, backgroundSystem},
        {"trustd", "org.example.app", none, false, backgroundSystem},
    }));
}

TEST(Classification, KeepsTheSystemsProcessesApartFromApplications) {
    expectCategories(std::to_array<Case>({
        {"launchd", none, none, true, system},
        {"chrome", none, none, true, system},
        {"launchd", "org.example.app", none, true, userApplication},
        {"launchd", "", none, true, userApplication},
        {"vim", none, none, false, unknown},
        {"vim", none, "Vim", false, unknown},
    }));
}

TEST(Classification, FindsBrowsersAndDeveloperToolsByFragments) {
    expectCategories(std::to_array<Case>({
        {"Helper", "com.google.Chrome.helper", "Helper", false, browserWorkload},
        {"Helper", "org.example.com.brave.browser", none, false, browserWorkload},
        {"Helper", "org.example", "The EDGE of It", false, browserWorkload},
        {"knowledge", none, none, false, browserWorkload},             // "edge" inside a word counts
        {"opera", "com.apple.dt.Xcode", none, false, browserWorkload}, // browsers come first
        {"Helper", "com.apple.dt.Xcode", none, false, developerWorkload},
        {"Helper", "com.todesktop.230313mzl4w4u92", none, false, developerWorkload},
        {"node", none, none, false, developerWorkload},
        {"my-node-server", none, none, false, developerWorkload},
        {"Electron", "org.example", "Visual Studio Code", false, developerWorkload},
        {"chrome", "org.example", none, true, browserWorkload},
        {"chrom", "com.google.chrom", "Safar i", false, userApplication},
        {"nod", "com.apple.dt.xcod", "Visual Studio", false, userApplication},
    }));
}

TEST(Classification, KnowsDaemonsOfLinuxInFullAndCutByTheKernel) {
    expectCategories(std::to_array<Case>({
                         {"localsearch-extractor-3", none, none, true, indexingOrSetup},
                         {"localsearch-ext", none, none, true, indexingOrSetup},
                         {"localsearch-extr", none, none, true, system},
                         {"updatedb.plocat", none, none, true, indexingOrSetup},
                         {"unattended-upgrade", none, none, true, backgroundSystem},
                         {"unattended-upgr", none, none, true, backgroundSystem},
                         {"flatpak-system-", none, none, true, backgroundSystem},
                         {"dnf5", none, none, true, backgroundSystem},
                         {"clamd", none, none, false, backgroundSystem},
                         {"apt", "org.gnome.Terminal.desktop", "Terminal", false, backgroundSystem},
                         {"apt-cache", none, none, false, unknown},
                     }),
                     OperatingSystem::gnuLinux);
}

TEST(Classification, KnowsBrowsersAndDeveloperToolsOfLinux) {
    expectCategories(
        std::to_array<Case>({
            {"chromium-brows", none, none, false, browserWorkload},
            {"WebKitWebProces", "org.gnome.Epiphany.desktop", "GNOME Web (Epiphany)", false, browserWorkload},
            {"Helper", "org.gnome.Epiphany.desktop", "Web", false,
             userApplication}, // no fragment of identifiers
            {"vivaldi-bin", none, none, true, system},
            {"librewolf", "com.apple.dt.xcode", none, false, browserWorkload},
            {"cc1plus", none, none, false, developerWorkload},
            {"GO", none, none, false, developerWorkload},
            {"go", "org.example.app", "App", false, developerWorkload},
            {"gopher", "org.example.app", "go", false, userApplication},
            {"makeinfo", none, none, false, unknown},
            {"cargo", none, none, true, system},
        }),
        OperatingSystem::gnuLinux);
}

TEST(Classification, KnowsNoNamesOfLinuxElsewhere) {
    expectCategories(std::to_array<Case>({
        {"baloo_file", none, none, true, system},
        {"pacman", none, none, false, unknown},
        {"make", none, none, false, unknown},
        {"epiphany", "org.example.app", none, false, userApplication},
    }));
}

} // namespace
} // namespace cindertop
