#include "TemporaryTree.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/JournalUnifiedLog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <fcntl.h>

namespace cindertop::linux_platform {
namespace {

TEST(JournalUnifiedLog, GivesTheJournalItsFields) {
    EXPECT_EQ(journalFields(UnifiedLogLevel::error, "app.example", "thermal", "hot = 1"),
              (std::vector<std::string>{"MESSAGE=hot = 1", "PRIORITY=3", "SYSLOG_IDENTIFIER=cindertop",
                                        "SUBSYSTEM=app.example", "CATEGORY=thermal"}));
    EXPECT_EQ(journalFields(UnifiedLogLevel::debug, "", "", "").at(1), "PRIORITY=7");
    EXPECT_EQ(journalFields(UnifiedLogLevel::info, "", "", "").at(1), "PRIORITY=6");
    EXPECT_EQ(journalFields(UnifiedLogLevel::warning, "", "", "").at(1), "PRIORITY=4");
    EXPECT_EQ(journalFields(UnifiedLogLevel::info, "", "", "a\nPRIORITY=0").front(), "MESSAGE=a PRIORITY=0");
}

TEST(JournalUnifiedLog, WritesOneHarmlessLine) {
    EXPECT_EQ(terminalLine("thermal", "36°C · ok"), "cindertop: [thermal] 36°C · ok\n");
    EXPECT_EQ(terminalLine("app", "a\r\ncindertop: [app] b"), "cindertop: [app] a  cindertop: [app] b\n");
    EXPECT_EQ(terminalLine("app", "\x1b[2J\x7f\t"), "cindertop: [app]  [2J  \n");
    EXPECT_EQ(terminalLine("app", "\xC2\x9B"
                                  "31m\xC2\xA0"),
              "cindertop: [app]  31m\xC2\xA0\n");
    EXPECT_EQ(terminalLine("app", "\xC2"), "cindertop: [app] \xEF\xBF\xBD\n");
    EXPECT_EQ(terminalLine("a\nb", ""), "cindertop: [a b] \n");
}

TEST(JournalUnifiedLog, TurnsToTheTerminalWithoutAJournal) {
    const TemporaryTree tree;
    const auto file = tree.path() / "terminal";
    const FileDescriptor terminal(::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    ASSERT_TRUE(terminal.isOpen());
    bool isJournalThere = true;
    std::vector<std::string> taken;
    JournalUnifiedLog log(
        UnifiedLogLevel::warning,
        [&](const std::vector<std::string>& fields) {
            if (isJournalThere) {
                taken.push_back(fields.front());
            }
            return isJournalThere;
        },
        terminal.number());

    log.write(UnifiedLogLevel::debug, "s", "app", "one");
    log.write(UnifiedLogLevel::error, "s", "app", "two");
    isJournalThere = false;
    log.write(UnifiedLogLevel::info, "s", "app", "three");
    log.write(UnifiedLogLevel::warning, "s", "app", "four");
    log.write(UnifiedLogLevel::error, "s", "app", "five");
    EXPECT_EQ(taken, (std::vector<std::string>{"MESSAGE=one", "MESSAGE=two"}));
    EXPECT_EQ(readTextFile(file), "cindertop: [app] four\ncindertop: [app] five\n");
}

} // namespace
} // namespace cindertop::linux_platform
