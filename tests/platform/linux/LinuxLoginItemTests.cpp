#include "TemporaryTree.h"
#include "fakes/FaultyFileSystem.h"
#include "platform/linux/KeyFile.h"
#include "platform/linux/LaunchCommand.h"
#include "platform/linux/LinuxLoginItem.h"
#include "support/FileSystem.h"

#include <gtest/gtest.h>

#include <array>

namespace cindertop::linux_platform {
namespace {

using enum LoginItemStatus;
using fakes::FaultyFileSystem;

class LinuxLoginItemTest : public testing::Test {
protected:
    TemporaryTree tree;
    PosixFileSystem posix;
    FaultyFileSystem files{posix};
    LinuxLoginItem item{tree.path() / "config/autostart", "/opt/My App/cindertop", files};
};

TEST_F(LinuxLoginItemTest, IsWhatTheEntrySays) {
    struct Case {
        std::string_view lines;
        LoginItemStatus status;
    };

    for (const auto& [lines, status] : std::to_array<Case>({
             {"[Desktop Entry]\nExec=a\n", enabled},
             {"[Desktop Entry]\nExec=a\nX-GNOME-Autostart-enabled=true\nHidden=false\n", enabled},
             {"[Desktop Entry]\nExec=a\nHidden=true\n", requiresApproval},
             {"[Desktop Entry]\nExec=a\nX-GNOME-Autostart-enabled=false\n", requiresApproval},
             {"[Desktop Entry]\n", notRegistered},
             {"noise", notRegistered},
         })) {
        tree.write("config/autostart/cindertop.desktop", lines);
        EXPECT_EQ(item.status(), status) << lines;
    }
    files.fail(FaultyFileSystem::Call::openForReading, std::errc::permission_denied, 1);
    EXPECT_EQ(item.status(), unknown);
    tree.remove("config").write("config", "");
    EXPECT_EQ(item.status(), notFound);
}

TEST_F(LinuxLoginItemTest, ComesAndGoes) {
    EXPECT_EQ(item.status(), notRegistered);
    EXPECT_TRUE(item.unregisterItem()) << "nothing to remove";
    tree.write("config/autostart/cindertop.desktop", "[Desktop Entry]\nExec=a\nHidden=true\n");
    EXPECT_TRUE(item.registerItem());
    EXPECT_EQ(item.status(), enabled);
    EXPECT_TRUE(item.unregisterItem());
    EXPECT_EQ(item.status(), notRegistered);
    tree.remove("config");
    EXPECT_TRUE(item.registerItem());
    EXPECT_EQ(std::filesystem::status(tree.path() / "config/autostart").permissions(),
              std::filesystem::perms::owner_all);
}

TEST_F(LinuxLoginItemTest, TellsWhyItCannotChange) {
    EXPECT_TRUE(item.registerItem());
    files.fail(FaultyFileSystem::Call::rename, std::errc::no_space_on_device, 1);
    files.fail(FaultyFileSystem::Call::remove, std::errc::permission_denied);
    const auto full = std::make_error_code(std::errc::no_space_on_device);
    const auto denied = std::make_error_code(std::errc::permission_denied);
    const auto file = (tree.path() / "config/autostart/cindertop.desktop").string();
    EXPECT_EQ(item.registerItem().error(),
              (LoginItemError{full, "Cindertop cannot be set to start at login: " + file + ": " +
                                        full.message() + "."}));
    EXPECT_EQ(item.unregisterItem().error().message,
              "Cindertop will still start at login: " + file + ": " + denied.message() + ".");

    LinuxLoginItem homeless({}, "/bin/a", files);
    EXPECT_EQ(homeless.status(), notFound);
    EXPECT_TRUE(homeless.unregisterItem());
    EXPECT_EQ(homeless.registerItem().error().message,
              "Cindertop cannot be set to start at login: there is no folder for the user's settings.");
    LinuxLoginItem relative(tree.path(), "cindertop", files);
    EXPECT_EQ(relative.registerItem().error().code, std::errc::invalid_argument);
}

TEST(ExecLine, StartsTheProgramWhateverItsName) {
    for (const std::string name : {"/usr/bin/cindertop", "/a b/$HOME/`x`", R"(/q"uo\te\\d)", "/50%f/ü"}) {
        const auto entry = KeyFile::parse("[Desktop Entry]\n" + execLine(name).value());
        const auto exec = entry->text("Desktop Entry", "Exec").value();
        auto program = parseExec(exec).value().program;
        if (const auto place = program.find("%%"); place != std::string::npos) {
            program.erase(place, 1); // as desktops do
        }
        EXPECT_EQ(program, name) << exec;
    }
    for (const auto* const name : {"", "bin/a", "/a\nb", "/\xff"}) {
        EXPECT_EQ(execLine(name), std::nullopt) << name;
    }
}

} // namespace
} // namespace cindertop::linux_platform
