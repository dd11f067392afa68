#include "TemporaryTree.h"
#include "platform/linux/AttributeFile.h"
#include "platform/linux/FileReading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace cindertop::linux_platform {
namespace {

TEST(FileReading, ReadsTheWholeTextUpToItsLimit) {
    const TemporaryTree tree;
    const std::string page(attributeSizeLimit, 'x');
    const std::string list(3 * attributeSizeLimit + 7, 'y');
    tree.write("page", page).write("list", list).write("empty", "").write("bytes", std::string("a\0b\n", 4));

    EXPECT_EQ(readTextFile(tree.path() / "page"), page);
    EXPECT_EQ(readTextFile(tree.path() / "list", list.size()), list);
    EXPECT_EQ(readTextFile(tree.path() / "list", list.size() - 1), std::unexpected(FileError::oversized));
    EXPECT_EQ(readTextFile(tree.path() / "list"), std::unexpected(FileError::oversized));
    EXPECT_EQ(readTextFile(tree.path() / "empty"), "");
    EXPECT_EQ(readTextFile(tree.path() / "bytes"), std::string("a\0b\n", 4));
}

TEST(FileReading, TellsWhyThereIsNoText) {
    const TemporaryTree tree;
    tree.write("file", "1").folder("folder").fifo("pipe").link("loop", "loop");

    EXPECT_EQ(readTextFile(tree.path() / "none"), std::unexpected(FileError::missing));
    EXPECT_EQ(readTextFile(tree.path() / "file/below"), std::unexpected(FileError::missing));
    EXPECT_EQ(readTextFile(tree.path() / "folder"), std::unexpected(FileError::unreadable));
    EXPECT_EQ(readTextFile(tree.path() / "loop"), std::unexpected(FileError::unreadable));
    EXPECT_EQ(readTextFile(tree.path() / "pipe"), ""); // and does not wait for a writer

    EXPECT_EQ(fileErrorOf(ENODEV), FileError::missing);
    EXPECT_EQ(fileErrorOf(EACCES), FileError::denied);
    for (const int number : {ENODATA, EAGAIN, EIO, ENXIO, EINVAL}) {
        EXPECT_EQ(fileErrorOf(number), FileError::unreadable) << number;
    }
}

TEST(FileReading, TakesWholeDecimalNumbersOnly) {
    struct Case {
        std::string_view text;
        std::optional<std::int64_t> number;
    };

    for (const auto& [text, number] : std::to_array<Case>({
             {"45000\n", 45000},
             {" -274000 ", -274000},
             {"0", 0},
             {"9223372036854775807", INT64_MAX},
             {"9223372036854775808", std::nullopt},
             {"-9223372036854775809", std::nullopt},
             {"", std::nullopt},
             {"\n", std::nullopt},
             {"-", std::nullopt},
             {"+5", std::nullopt},
             {"12a", std::nullopt},
             {"1 2", std::nullopt},
             {"45,5", std::nullopt},
             {"45.5", std::nullopt},
             {"0x10", std::nullopt},
             {std::string_view("7\0", 2), std::nullopt},
         })) {
        EXPECT_EQ(parseInteger(text), number) << text;
    }
}

TEST(FileReading, GivesNumbersAndWordsOfFiles) {
    const TemporaryTree tree;
    tree.attribute("number", "-1").attribute("word", "  intel_powerclamp ").write("blank", " \n");
    tree.write("endless", std::string(200, '1'))
        .write("padded", "5" + std::string(200, ' '))
        .folder("folder");

    EXPECT_EQ(readInteger(tree.path() / "number"), -1);
    for (const auto* const file : {"word", "blank", "endless", "padded", "folder", "none"}) {
        EXPECT_EQ(readInteger(tree.path() / file), std::nullopt) << file;
    }
    EXPECT_EQ(readAttribute(tree.path() / "word"), "intel_powerclamp");
    EXPECT_EQ(readAttribute(tree.path() / "blank"), std::nullopt);
}

TEST(FileReading, ListsNamesAsPeopleOrderThem) {
    const TemporaryTree tree;
    for (const auto* const name :
         {"zone10", "zone2", "zone", "cpu3", "zone2a", "temp10_input", "temp9_input", ".x"}) {
        tree.write(name, "");
    }
    EXPECT_THAT(listFolder(tree.path()).value(),
                testing::ElementsAre(".x", "cpu3", "temp9_input", "temp10_input", "zone", "zone2", "zone2a",
                                     "zone10"));
    EXPECT_EQ(listFolder(tree.path() / "none"), std::unexpected(FileError::missing));
    EXPECT_EQ(listFolder(tree.path() / "zone"), std::unexpected(FileError::missing));
}

TEST(AttributeFile, AnswersAnewEachTime) {
    const TemporaryTree tree;
    tree.attribute("temp", "45000");
    AttributeFile file(tree.path() / "temp");
    EXPECT_EQ(file.integer(), 45000);
    EXPECT_EQ(file.word(), "45000");
    tree.attribute("temp", "46000");
    EXPECT_EQ(file.integer(), 46000);
    tree.remove("temp");
    EXPECT_EQ(file.integer(), std::nullopt);
    EXPECT_EQ(file.word(), std::unexpected(FileError::missing));
    tree.attribute("temp", "47000"); // another device of the same name
    EXPECT_EQ(file.integer(), 47000);
    tree.write("temp", std::string(64, ' '));
    EXPECT_EQ(file.word(), std::unexpected(FileError::oversized));
}

TEST(AttributeFile, StaysOpenOnSysfsAndAsksTheKernelAgain) {
    const std::filesystem::path attribute = "/sys/kernel/uevent_seqnum";
    const auto opened = readInteger(attribute);
    if (!opened) {
        GTEST_SKIP() << "no sysfs here";
    }
    AttributeFile file(attribute);
    const auto first = file.integer();
    const auto second = file.integer();
    ASSERT_TRUE(first && second);
    EXPECT_GE(*first, *opened); // the counter only grows
    EXPECT_GE(*second, *first);
    EXPECT_LE(*second, readInteger(attribute).value_or(0));
}

} // namespace
} // namespace cindertop::linux_platform
