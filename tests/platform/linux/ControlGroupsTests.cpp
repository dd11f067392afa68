#include "platform/linux/ControlGroups.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace cindertop::linux_platform {
namespace {

UnitApplication flatpak(std::string id) {
    UnitApplication application;
    application.flatpakId = std::move(id);
    return application;
}

UnitApplication snap(std::string id) {
    UnitApplication application;
    application.snapId = std::move(id);
    return application;
}

UnitApplication installed(std::vector<std::string> ids) {
    UnitApplication application;
    application.desktopIds = std::move(ids);
    return application;
}

UnitApplication terminalChild() {
    UnitApplication application;
    application.isTerminalChild = true;
    return application;
}

UnitApplication ofUser(std::string_view unit) {
    return parseUnit(
        {.name = std::string(unit), .userManager = "user@1000.service", .isBelowAppSlice = true});
}

TEST(ControlGroups, FindsTheInnermostUnit) {
    struct Case {
        std::string_view text;
        std::optional<ControlGroupUnit> unit;
    };

    for (const auto& [text, unit] : std::to_array<Case>({
             {"0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-a-1.scope\n",
              ControlGroupUnit{
                  .name = "app-a-1.scope", .userManager = "user@1000.service", .isBelowAppSlice = true}},
             {"12:pids:/x.service\n0::/user.slice/user-1000.slice/user@1000.service/session.slice/b.service/"
              "sub\n",
              ControlGroupUnit{
                  .name = "b.service", .userManager = "user@1000.service", .isBelowSessionSlice = true}},
             {"0::/system.slice/cron.service",
              ControlGroupUnit{.name = "cron.service", .userManager = {}, .isBelowSystemSlice = true}},
             {"0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-a-1.scope/user.slice/"
              "pod-5.scope\n",
              ControlGroupUnit{
                  .name = "pod-5.scope", .userManager = "user@1000.service", .isBelowAppSlice = true}},
             // What Konsole makes below its own unit.
             {"0::/user@1000.service/app.slice/app-org.kde.konsole-7.scope/main.scope\n",
              ControlGroupUnit{.name = "app-org.kde.konsole-7.scope",
                               .userManager = "user@1000.service",
                               .isBelowAppSlice = true}},
             {"0::/user@1000.service/app.slice/app-org.kde.konsole-7.scope/tab(8).scope\n",
              ControlGroupUnit{.name = "app-org.kde.konsole-7.scope",
                               .userManager = "user@1000.service",
                               .isBelowAppSlice = true,
                               .isTerminalTab = true}},
             {"0::/user@1000.service/app.slice/main.scope\n",
              ControlGroupUnit{
                  .name = "main.scope", .userManager = "user@1000.service", .isBelowAppSlice = true}},
             {"0::/user@1000.service/system.slice/a.service\n",
              ControlGroupUnit{.name = "a.service", .userManager = "user@1000.service"}},
             {"0::/system.slice/system-getty.slice/getty@tty1.service\n",
              ControlGroupUnit{.name = "getty@tty1.service", .userManager = {}, .isBelowSystemSlice = true}},
             {"0::/user.slice/user-1000.slice/user@1000.service/init.scope\n",
              ControlGroupUnit{
                  .name = "init.scope", .userManager = "user@1000.service", .isBelowAppSlice = false}},
             {"0::/\n", std::nullopt},
             {"0::/.scope/.service\n", std::nullopt},
             {"1:name=systemd:/system.slice/cron.service\n", std::nullopt},
             {"", std::nullopt},
         })) {
        EXPECT_EQ(parseControlGroup(text), unit) << text;
    }
}

TEST(ControlGroups, ReadsTheApplicationFromTheUnit) {
    struct Case {
        std::string_view unit;
        UnitApplication application;
    };

    for (const auto& [unit, application] : std::to_array<Case>({
             {"app-flatpak-org.gnome.Maps-12345.scope", flatpak("org.gnome.Maps")},
             {R"(app-flatpak-org.a.b\x2dc-12345.scope)", flatpak("org.a.b-c")},
             {"snap.firefox.firefox-4706fe54-7802-4808-aa7e-ae8b567239e0.scope", snap("firefox_firefox")},
             {"snap.code.code.4706fe54-7802-4808-aa7e-ae8b567239e0.scope", snap("code_code")},
             {"snap.hello-world.env-x-4706fe54-7802-4808-aa7e-ae8b567239e0.scope", snap("hello-world_env-x")},
             {"snap.lxd.daemon.service", snap("lxd_daemon")},
             {"snap.lxd.hook.configure-4706fe54-7802-4808-aa7e-ae8b567239e0.scope", {}},
             {"snap.lxd.service", {}},
             {"vte-spawn-4706fe54-7802-4808-aa7e-ae8b567239e0.scope", terminalChild()},
             {"ptyxis-spawn-4706fe54-7802-4808-aa7e-ae8b567239e0.scope", terminalChild()},
             {"tmux-spawn-4706fe54-7802-4808-aa7e-ae8b567239e0.scope", terminalChild()},
             {"vte-spawn-1.service", {}},
             {"-spawn-1.scope", {}},
             {"app-vte-spawn-1.scope", installed({"spawn", "vte-spawn"})},
             {"app-org.kde.konsole-a1b2c3.scope", installed({"org.kde.konsole"})},
             {R"(app-gnome-firefox\x2desr-1234.scope)", installed({"firefox-esr", "gnome-firefox-esr"})},
             {"app-gnome-terminal-1234.scope", installed({"terminal", "gnome-terminal"})},
             {"app-Hyprland-google-chrome-8f3a2b1c.scope",
              installed({"google-chrome", "Hyprland-google-chrome", "chrome"})},
             {"app-firefox@0123456789abcdef.service", installed({"firefox"})},
             {R"(app-gnome\x2dkeyring@autostart.service)", installed({"gnome-keyring"})},
             {"app-KDE-okular.service", installed({"okular", "KDE-okular"})},
             {"app-gnome-maps-xyz.scope", {}}, // nothing random behind
             {"app-maps-.scope", {}},          //
             {"app-1234.scope", {}},           // nothing in front
             {R"(app-a\x2-1.scope)", {}},      // broken escapes
             {R"(app-a\y20b-1.scope)", {}},    //
             {R"(app-a\x00b-1.scope)", {}},    //
             {R"(app-a\x2fb-1.scope)", {}},    //
             {"app.slice", {}},
             {"dbus.service", {}},
         })) {
        EXPECT_EQ(ofUser(unit), application) << unit;
    }
}

TEST(ControlGroups, OnlyTheUserManagerStartsApplications) {
    EXPECT_EQ(parseUnit({.name = "app-org.kde.konsole-a1b2c3.scope", .userManager = {}}), UnitApplication{});
    EXPECT_EQ(parseUnit({.name = "app-flatpak-org.gnome.Maps-1.scope", .userManager = {}}),
              UnitApplication{});
    EXPECT_EQ(parseUnit({.name = "app-a-1.scope", .userManager = "user@1.service", .isTerminalTab = true}),
              terminalChild());
}

} // namespace
} // namespace cindertop::linux_platform
