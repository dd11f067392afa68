#include "fakes/TemporaryFolder.h"
#include "platform/qt/NotificationSwitch.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <stdlib.h> // NOLINT(modernize-deprecated-headers): setenv is POSIX

namespace cindertop::desktop {

namespace {

TEST(NotificationSwitch, IsReadFromThePlasmaSettings) {
    const std::string group = "[Applications][cindertop]\n";
    for (const auto& [text, isOff] : std::vector<std::pair<std::string, bool>>{
             {"", false},
             {group, false},
             {group + "ShowPopups=false\n", true},
             {group + "ShowPopups=false", true},
             {group + " ShowPopups = Off \r\n", true},
             {group + "Seen=true\nShowPopups=0\n\n[Badges]\nInTaskManager=false\n", true},
             {"[Applications][cindertop][$i]\nShowPopups[$i]=no\n", true},
             {group + "ShowPopups=true\n", false},
             {group + "ShowPopups=false\nShowPopups=true\n", false},
             {group + "ShowPopups=never\n", false},
             {group + "#ShowPopups=false\nShowPopups\nShowPopupsInDndMode=false\n", false},
             {"[Applications][other]\nShowPopups=false\n", false},
             {"[Applications][cindertop][more]\nShowPopups=false\n", false},
             {"ShowPopups=false\n" + group, false},
         }) {
        EXPECT_EQ(plasmaSwitchesNotificationsOff(text), isOff) << text;
    }
}

/// The switch in GNOME's settings as long as this lives; they stay in this process.
class GnomeSwitchedOff {
public:
    GnomeSwitchedOff()
        : settings_(g_settings_new_with_path("org.gnome.desktop.notifications.application",
                                             "/org/gnome/desktop/notifications/application/cindertop/")) {
        g_settings_set_boolean(settings_, "enable", FALSE);
    }

    ~GnomeSwitchedOff() {
        g_settings_reset(settings_, "enable");
        g_object_unref(settings_);
    }

    GnomeSwitchedOff(const GnomeSwitchedOff&) = delete;
    GnomeSwitchedOff& operator=(const GnomeSwitchedOff&) = delete;

private:
    GSettings* settings_;
};

TEST(NotificationSwitch, IsThatOfTheDesktopInUse) {
    struct Case {
        std::string desktop;
        bool isOffWithPlasmaFile;
        bool isOffWithGnomeSwitch;
    };

    ::setenv("GSETTINGS_BACKEND", "memory", 1);
    const fakes::TemporaryFolder without;
    const fakes::TemporaryFolder with;
    fakes::writeText(with / "plasmanotifyrc", "[Applications][cindertop]\nShowPopups=false\n");
    for (const auto& [desktop, isOffWithPlasmaFile, isOffWithGnomeSwitch] : std::vector<Case>{
             {"GNOME", false, true},
             {"ubuntu:GNOME", false, true},
             {"KDE", true, false},
             {"", false, false},
             {"XFCE", false, false},
             {"GNOME-Flashback", false, false},
         }) {
        EXPECT_EQ(notificationSwitch(desktop, with.path())(), isOffWithPlasmaFile) << desktop;
        const auto isOff = notificationSwitch(desktop, without.path());
        EXPECT_FALSE(isOff()) << desktop;
        const GnomeSwitchedOff gnome;
        EXPECT_EQ(isOff(), isOffWithGnomeSwitch) << desktop;
    }
}

} // namespace

} // namespace cindertop::desktop
