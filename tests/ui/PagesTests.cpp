#include "fakes/TemporaryFolder.h"
#include "support/FileSystem.h"
#include "ui/windows/Pages.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace cindertop::ui {

TEST(Pages, LeadsToWhatIsNamedElseToWhatIsInstalledElseNowhere) {
    const fakes::TemporaryFolder folder;
    const auto root = folder.path() / "a b";
    const auto documents = root / "share/doc/cindertop";
    std::filesystem::create_directories(documents);
    for (const auto* const name : {"help.html", "terms.html", "privacy.html"}) {
        std::ofstream(documents / name) << "text";
    }
    std::ofstream(root / "Info.plist")
        << R"(<plist version="1.0"><dict><key>CindertopTermsPage</key><string>https://maker.test/terms</string>)"
           R"(<key>CindertopPrivacyPage</key><string>javascript:alert(1)</string></dict></plist>)";
    PosixFileSystem files;
    const Pages pages(DeploymentFile(files, root / "Info.plist"), root / "bin");

    const auto installed = "file://" + folder.path().string() + "/a%20b/share/doc/cindertop/";
    EXPECT_EQ(pages.address(Page::help), installed + "help.html");
    EXPECT_EQ(pages.address(Page::website), installed + "help.html");
    EXPECT_EQ(pages.address(Page::terms), "https://maker.test/terms");
    EXPECT_EQ(pages.address(Page::privacy), installed + "privacy.html");
    EXPECT_EQ(pages.address(Page::releases), std::nullopt);
}

} // namespace cindertop::ui
