#include "TemporaryTree.h"
#include "platform/linux/OperatingSystemVersion.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {
namespace {

TEST(OperatingSystemVersion, IsReadAsAShellWould) {
    struct Case {
        std::string_view text;
        std::optional<std::string> name;
    };

    for (const auto& [text, name] : std::to_array<Case>({
             {"NAME=a\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n", "Debian GNU/Linux 12 (bookworm)"},
             {"PRETTY_NAME='a \"b\" \\c'", "a \"b\" \\c"},
             {"  PRETTY_NAME=\"a \\\"b\\\" \\$c\"\r\n", "a \"b\" $c"},
             {"PRETTY_NAME=Arch\\ Linux\n", "Arch Linux"},
             {"#PRETTY_NAME=a\nXPRETTY_NAME=a\nPRETTY_NAME", std::nullopt},
             {"PRETTY_NAME=\"\"\n", std::nullopt},
             {"PRETTY_NAME=a\xFF\n", "a\uFFFD"},
         })) {
        EXPECT_EQ(osReleaseValue(text, "PRETTY_NAME"), name) << text;
    }
}

TEST(OperatingSystemVersion, NamesWhatItCan) {
    const TemporaryTree tree;
    const auto version = [&] {
        return operatingSystemVersion(tree.roots(), tree.path() / "etc", tree.path() / "usr");
    };
    EXPECT_EQ(version(), "Linux");
    tree.attribute("proc/sys/kernel/osrelease", "6.1.0-37-amd64");
    EXPECT_EQ(version(), "Linux 6.1.0-37-amd64");
    tree.write("usr", "PRETTY_NAME=Fallback\n");
    EXPECT_EQ(version(), "Fallback, Linux 6.1.0-37-amd64");
    tree.write("etc", "PRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n");
    EXPECT_EQ(version(), "Debian GNU/Linux 12 (bookworm), Linux 6.1.0-37-amd64");
}

} // namespace
} // namespace cindertop::linux_platform
