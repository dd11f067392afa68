#include "DesktopTree.h"
#include "platform/linux/LaunchCommand.h"

#include <gtest/gtest.h>

#include <array>

namespace cindertop::linux_platform {
namespace {

using Paths = std::vector<std::filesystem::path>;

std::optional<std::string> nameOf(const std::optional<DesktopEntry>& entry) {
    return entry ? std::optional(entry->name) : std::nullopt;
}

Paths foldersFor(const char* home, const char* dataHome, const char* dataDirectories) {
    DesktopEnvironment environment;
    environment.home = home;
    environment.dataHome = dataHome;
    environment.dataDirectories = dataDirectories;
    return environment.applicationFolders();
}

TEST(DesktopEnvironment, KnowsTheUsualFolders) {
    EXPECT_EQ(foldersFor("/home/a", "", ""),
              (Paths{"/home/a/.local/share/applications", "/usr/local/share/applications",
                     "/usr/share/applications"}));
    EXPECT_EQ(foldersFor("/home/a", "relative", "/x:relative::/z"),
              (Paths{"/home/a/.local/share/applications", "/x/applications", "/z/applications"}));
    EXPECT_EQ(foldersFor("", "/own", "/x"), (Paths{"/own/applications", "/x/applications"}));
    EXPECT_EQ(foldersFor("", "", "/x"), (Paths{"/x/applications"}));
}

TEST(DesktopEntries, TakesTheNameInTheUsersLanguage) {
    const DesktopTree desktop;
    desktop.entry("share", "austrian", "Name=Maps\nName[de]=Karten\nName[de_AT]=Landkarten\nName[fr]=Cartes")
        .entry("share", "german", "Name[fr]=Cartes\nName=Maps\nName[de]=Karten\nNoDisplay=true")
        .entry("share", "plain", R"(Name=Maps\sand more)")
        .entry("share", "nameless", "Exec=maps")
        .entry("share", "garbled", "Name=\xff\xfe\nName[fr]=Cartes")
        .entry("share", "empty", "Name=");
    auto entries = desktop.entries();
    for (const auto& [identifier, name] : std::to_array<std::array<std::string_view, 2>>({
             {"austrian", "Landkarten"},
             {"german", "Karten"},
             {"plain", "Maps and more"},
             {"nameless", "nameless"},
             {"garbled", "Cartes"},
             {"empty", "empty"},
         })) {
        EXPECT_EQ(nameOf(entries.withIdentifier(identifier)), name) << identifier;
    }
    EXPECT_EQ(entries.withIdentifier("german")->path, desktop.path("share/applications/german.desktop"));
    EXPECT_EQ(entries.count(), 6U);
}

TEST(DesktopEntries, TheFirstFolderWinsAndMayDelete) {
    const DesktopTree desktop;
    desktop.entry("share", "both", "Name=Theirs").entry("home", "both", "Name=Mine");
    desktop.entry("share", "deleted", "Name=Theirs").entry("home", "deleted", "Name=Theirs\nHidden=true");
    desktop.entry("share", "gone", "Name=Theirs");
    desktop.tree().write("home/applications/gone.desktop", "[Desktop Entry]\nHidden=true\n");
    desktop.entry("share", "kde/okular", "Name=Okular").entry("share", "a/b/c", "Name=Nested");
    auto entries = desktop.entries();
    EXPECT_EQ(nameOf(entries.withIdentifier("both")), "Mine");
    EXPECT_FALSE(entries.withIdentifier("deleted"));
    EXPECT_FALSE(entries.withIdentifier("gone"));
    EXPECT_EQ(nameOf(entries.withIdentifier("kde-okular")), "Okular");
    EXPECT_EQ(nameOf(entries.withIdentifier("a-b-c")), "Nested");
    EXPECT_FALSE(entries.withIdentifier("both.desktop"));
    EXPECT_EQ(entries.count(), 3U);
}

TEST(DesktopEntries, KnowsAFileByItsPlaceAmongTheFolders) {
    const DesktopTree desktop;
    desktop.entry("share", "kde/okular", "Name=Theirs").entry("home", "kde-okular", "Name=Mine");
    desktop.entry("share", "menu", "Name=Menu\nNoDisplay=true").entry("share", "gone", "Name=Theirs");
    desktop.entry("home", "gone", "Hidden=true").entry("elsewhere", "own", "Name=Own");
    desktop.entry("elsewhere", "hidden", "Name=Hidden\nHidden=true");
    desktop.tree().link("elsewhere/applications/link.desktop", "own.desktop").fifo("elsewhere/pipe.desktop");
    desktop.tree().link("elsewhere/folder", "applications");
    auto entries = desktop.entries();
    const auto inFile = [&](const char* file) { return nameOf(entries.inFile(desktop.path(file))); };
    EXPECT_EQ(inFile("share/applications/kde/okular.desktop"), "Mine");
    EXPECT_EQ(inFile("share/applications/menu.desktop"), "Menu");
    EXPECT_EQ(inFile("elsewhere/applications/own.desktop"), "Own");
    for (const auto* const file :
         {"share/applications/gone.desktop", "elsewhere/applications/hidden.desktop",
          "elsewhere/applications/link.desktop", "elsewhere/pipe.desktop", "elsewhere/folder/own.desktop"}) {
        EXPECT_EQ(inFile(file), std::nullopt) << file;
    }
    desktop.entry("share", "new/app", "Name=New"); // since the entries were read
    EXPECT_EQ(entries.inFile(desktop.path("share/applications/new/app.desktop"))->identifier, "new-app");
}

TEST(DesktopEntries, BrokenEntriesAreAsNone) {
    const DesktopTree desktop;
    desktop.tree().write("share/applications/noise.desktop", "\x01\x02\xff[[[");
    desktop.tree().write("share/applications/empty.desktop", "");
    desktop.tree().write("share/applications/link.desktop", "[Desktop Entry]\nType=Link\nName=Link\n");
    desktop.tree().write("share/applications/notes.txt", "[Desktop Entry]\nType=Application\nName=Text\n");
    desktop.tree().folder("share/applications/folder.desktop");
    desktop.tree().fifo("share/applications/pipe.desktop");
    desktop.tree().link("share/applications/circle", ".");
    desktop.tree().link("share/applications/dangling.desktop", "nowhere");
    desktop.entry("share", "broken", "Name=Good\nthis is no line\n");
    desktop.entry("home", "repaired", "Name=Bad\nthis is no line\n").entry("share", "repaired", "Name=Good");
    auto entries = desktop.entries();
    for (const auto* const identifier :
         {"noise", "empty", "link", "notes", "folder", "pipe", "dangling", "broken"}) {
        EXPECT_FALSE(entries.withIdentifier(identifier)) << identifier;
    }
    EXPECT_EQ(nameOf(entries.withIdentifier("repaired")), "Good");
}

TEST(DesktopEntries, NoticesNewEntriesOnlyNowAndThen) {
    const DesktopTree desktop;
    desktop.entry("share", "old", "Name=Old").entry("share", "sub/old", "Name=Old");
    auto entries = desktop.entries();
    EXPECT_EQ(entries.count(), 2U);
    desktop.entry("share", "sub/new", "Name=New");
    std::filesystem::last_write_time(desktop.path("share/applications/sub"), {}); // however coarse its clock
    desktop.now() += std::chrono::seconds(29);
    EXPECT_FALSE(entries.withIdentifier("sub-new"));
    desktop.now() += std::chrono::seconds(1);
    EXPECT_EQ(nameOf(entries.withIdentifier("sub-new")), "New");
    desktop.entry("home", "old", "Name=Mine"); // in a folder that was not there
    desktop.now() += std::chrono::seconds(30);
    EXPECT_EQ(nameOf(entries.withIdentifier("old")), "Mine");
}

TEST(DesktopEntries, FindsTheEntryThatStartsAProgram) {
    const DesktopTree desktop;
    const auto office = desktop.program("lib/office/office.bin");
    const auto interpreter = desktop.program("lib/python3.11");
    const auto maps = desktop.program("bin/maps");
    desktop.tree().link("bin/office", "../lib/office/office.bin").link("bin/tool", "../lib/python3.11");
    desktop.entry("home", "writer", "Name=Writer\nExec=office --writer %U")
        .entry("share", "office", "Name=Office\nExec=office %U\nNoDisplay=true")
        .entry("share", "office2", "Name=Office 2\nExec=\"" + office + "\" %F")
        .entry("share", "tool", "Name=Tool\nExec=tool")
        .entry("share", "place", "Name=Place\nExec=maps geo:1,2")
        .entry("share", "elsewhere", "Name=Elsewhere\nExec=bin/maps");
    auto entries = desktop.entries();
    EXPECT_EQ(nameOf(entries.startingProgram(office)), "Office 2");
    EXPECT_FALSE(entries.startingProgram(interpreter));
    EXPECT_FALSE(entries.startingProgram(maps));
    EXPECT_FALSE(entries.startingProgram(desktop.path("bin/office"))); // a link is no process's executable
}

TEST(LaunchCommand, TellsTheProgramFromWhatStartsIt) {
    struct Case {
        std::string_view exec;
        std::optional<LaunchCommand> command;
    };

    for (const auto& [exec, command] : std::to_array<Case>({
             {"maps", LaunchCommand{.program = "maps", .options = 0}},
             {"/usr/bin/maps --new-window -v %U %i %c",
              LaunchCommand{.program = "/usr/bin/maps", .options = 2}},
             {R"("/opt/My App/app" %f)", LaunchCommand{.program = "/opt/My App/app", .options = 0}},
             {"env LANG=C -u HOME maps %u", LaunchCommand{.program = "maps", .options = 0}},
             {"/usr/bin/env -i A=b /usr/bin/maps", LaunchCommand{.program = "/usr/bin/maps", .options = 0}},
             {"gimp-2.10 %U", LaunchCommand{.program = "gimp-2.10", .options = 0}},
             {"env", std::nullopt},
             {"env -u", std::nullopt},
             {"env A=b python3 /usr/bin/tool", std::nullopt},
             {"flatpak run org.gnome.Maps", std::nullopt},
             {"/bin/sh -c \"maps %u\"", std::nullopt},
             {"bash", std::nullopt},
             {"/usr/bin/python3.11", std::nullopt},
             {"perl5.36.0", std::nullopt},
             {"/usr/lib/jvm/bin/java -jar x.jar", std::nullopt},
             {"electron25", std::nullopt},
             {"steam steam://rungameid/440", std::nullopt},
             {"xterm -e htop", std::nullopt},
             {"\"unclosed", std::nullopt},
             {"\"\"", std::nullopt},
             {"", std::nullopt},
         })) {
        EXPECT_EQ(parseExec(exec), command) << exec;
    }
}

TEST(LaunchCommand, TellsAWrapperByTheNameOfWhatItWraps) {
    EXPECT_EQ(wrapperOf("/nix/store/1-maps/bin/.maps-wrapped"), "/nix/store/1-maps/bin/maps");
    EXPECT_EQ(wrapperOf("/gnu/store/1-maps/bin/.maps-real"), "/gnu/store/1-maps/bin/maps");
    for (const auto* const path : {"/bin/maps", "/bin/maps-wrapped", "/bin/.maps", "/bin/.-wrapped", ""}) {
        EXPECT_EQ(wrapperOf(path), std::nullopt) << path;
    }
}

} // namespace
} // namespace cindertop::linux_platform
