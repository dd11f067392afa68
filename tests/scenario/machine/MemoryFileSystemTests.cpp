#include "scenario/machine/MemoryFileSystem.h"
#include "support/AtomicFile.h"

#include <gtest/gtest.h>

#include <string>

namespace cindertop::simulated {
namespace {

TEST(MemoryFileSystem, CarriesAtomicReplacement) {
    MemoryFileSystem files;
    ASSERT_TRUE(makeFolders(files, "/data/Cindertop"));
    EXPECT_EQ(makeFolders(files, "/data/Cindertop/"), FileResult<void>{});
    const std::string large(3'000'000, 'x');
    for (const auto& text : {large, std::string("short"), std::string()}) {
        ASSERT_TRUE(replaceFile(files, "/data/Cindertop/history", text, Durability::synced));
        EXPECT_EQ(wholeFile(files, "/data/./Cindertop/history", large.size()), text);
    }
    EXPECT_TRUE(removeFile(files, "/data/Cindertop/history"));
    EXPECT_EQ(wholeFile(files, "/data/Cindertop/history", 1),
              std::unexpected(std::errc::no_such_file_or_directory));
}

TEST(MemoryFileSystem, RefusesWhatADiskRefuses) {
    MemoryFileSystem files;
    ASSERT_TRUE(files.makeFolder("/folder"));
    const auto writer = files.openForReplacing("/file");
    ASSERT_TRUE(writer);
    ASSERT_TRUE(files.write(*writer, "old"));

    EXPECT_EQ(files.openForReading("/folder"), std::unexpected(std::errc::is_a_directory));
    EXPECT_EQ(files.openForReplacing("/none/file"), std::unexpected(std::errc::no_such_file_or_directory));
    EXPECT_EQ(files.openForReplacing("/file/file"), std::unexpected(std::errc::not_a_directory));
    EXPECT_EQ(files.makeFolder("/file"), std::unexpected(std::errc::file_exists));
    EXPECT_EQ(files.makeFolder("/none/folder"), std::unexpected(std::errc::no_such_file_or_directory));
    EXPECT_EQ(files.remove("/folder"), std::unexpected(std::errc::is_a_directory));
    EXPECT_EQ(files.remove("/none"), std::unexpected(std::errc::no_such_file_or_directory));
    EXPECT_EQ(files.rename("/none", "/file"), std::unexpected(std::errc::no_such_file_or_directory));
    EXPECT_EQ(files.rename("/file", "/folder"), std::unexpected(std::errc::is_a_directory));
    EXPECT_EQ(files.syncFolder("/file"), std::unexpected(std::errc::not_a_directory));

    std::string buffer(8, ' ');
    EXPECT_EQ(files.read(*writer, buffer), std::unexpected(std::errc::bad_file_descriptor));
    const auto reader = files.openForReading("/file");
    ASSERT_TRUE(files.remove("/file"));
    EXPECT_EQ(files.read(*reader, buffer), 3U); // open files outlive their names
    EXPECT_EQ(files.read(*reader, buffer), 0U);
}

} // namespace
} // namespace cindertop::simulated
