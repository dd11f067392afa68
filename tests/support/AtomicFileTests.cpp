#include "fakes/FaultyFileSystem.h"
#include "fakes/TemporaryFolder.h"
#include "support/AtomicFile.h"
#include "support/FileSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <string>
#include <tuple>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cindertop {
namespace {

using fakes::FaultyFileSystem;
using fakes::TemporaryFolder;
using fakes::textOf;
using Call = FaultyFileSystem::Call;

mode_t modeOf(const std::filesystem::path& path) {
    struct stat status{};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 0777U;
}

std::size_t entriesOf(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

class AtomicFile : public testing::Test {
protected:
    TemporaryFolder folder;
    std::filesystem::path file = folder / "file";
    PosixFileSystem posix;
    FaultyFileSystem files{posix};

    FileResult<void> replace(std::string_view text, Durability durability = Durability::synced) {
        return replaceFile(files, file, text, durability);
    }
};

TEST_F(AtomicFile, ReplacesTheWholeFileForItsOwnerOnly) {
    const mode_t before = ::umask(0);
    ASSERT_TRUE(makeFolders(files, folder / "a/b/c"));
    file = folder / "a/b/c/file";
    ASSERT_TRUE(replace("a longer old text"));
    ASSERT_TRUE(replace("new"));
    ::umask(before);
    EXPECT_EQ(textOf(file), "new");
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(modeOf(folder / "a"), 0700U);
    EXPECT_EQ(modeOf(folder / "a/b/c"), 0700U);
    EXPECT_EQ(entriesOf(folder / "a/b/c"), 1U);
    EXPECT_TRUE(makeFolders(files, folder / "a/b/c"));
    EXPECT_EQ(wholeFile(files, file, 3), "new");
    EXPECT_EQ(wholeFile(files, file, 2), std::unexpected(std::errc::file_too_large));
}

TEST_F(AtomicFile, WaitsForTheDiskOnlyWhenAsked) {
    ASSERT_TRUE(replace("a", Durability::relaxed));
    EXPECT_EQ(files.calls, (std::vector{Call::openForReplacing, Call::write, Call::rename}));
    files.calls.clear();
    ASSERT_TRUE(replace("b", Durability::synced));
    EXPECT_EQ(files.calls,
              (std::vector{Call::openForReplacing, Call::write, Call::sync, Call::rename, Call::syncFolder}));
}

TEST_F(AtomicFile, KeepsTheOldFileWhenAnythingFails) {
    ASSERT_TRUE(replace("old"));
    for (const Call call : {Call::openForReplacing, Call::write, Call::sync, Call::rename}) {
        files.fail(call, std::errc::no_space_on_device);
        EXPECT_EQ(replace("new"), std::unexpected(std::errc::no_space_on_device));
        files.repair();
        EXPECT_EQ(textOf(file), "old");
        EXPECT_EQ(entriesOf(folder.path()), 1U) << "something is left behind";
    }
    files.fail(Call::syncFolder, std::errc::invalid_argument); // some file systems have no such call
    EXPECT_TRUE(replace("new"));
}

TEST_F(AtomicFile, GoesOnAfterInterruptionsAndShortTransfers) {
    files.limitTransfers(1);
    for (const Call call : {Call::openForReplacing, Call::write, Call::sync, Call::rename,
                            Call::openForReading, Call::read, Call::makeFolder, Call::remove}) {
        files.fail(call, std::errc::interrupted, 3);
    }
    ASSERT_TRUE(makeFolders(files, folder / "a/b"));
    ASSERT_TRUE(replace("byte by byte"));
    EXPECT_EQ(wholeFile(files, file, 100), "byte by byte");
    ASSERT_TRUE(removeFile(files, file));
    EXPECT_EQ(wholeFile(files, file, 100), std::unexpected(std::errc::no_such_file_or_directory));
}

TEST_F(AtomicFile, ShowsTheOldOrTheNewTextWhereverTheProcessEnds) {
    files.limitTransfers(2); // so that it can end in the middle of the text
    bool isNew = false;
    for (int calls = 0; !isNew; ++calls) {
        files.repair();
        ASSERT_TRUE(replace("old"));
        files.stopAfter(calls);
        std::ignore = replace("newer text");
        const std::string text = textOf(file);
        isNew = text == "newer text";
        ASSERT_TRUE(isNew || text == "old") << text;
    }
    files.repair();
    ASSERT_TRUE(replace("next"));
    EXPECT_EQ(textOf(file), "next");
    EXPECT_EQ(entriesOf(folder.path()), 1U) << "the next writer takes up what was left";
    files.stopAfter(3);
    std::ignore = replace("secret");
    files.repair();
    EXPECT_EQ(entriesOf(folder.path()), 2U);
    ASSERT_TRUE(removeFile(files, file));
    EXPECT_EQ(entriesOf(folder.path()), 0U);
}

TEST_F(AtomicFile, ReplacesALinkAndNotWhatItPointsAt) {
    fakes::writeText(folder / "target", "target");
    std::filesystem::create_symlink("target", file);
    EXPECT_EQ(wholeFile(files, file, 100), "target");
    ASSERT_TRUE(replace("new"));
    EXPECT_EQ(textOf(folder / "target"), "target");
    EXPECT_EQ(textOf(file), "new");
    EXPECT_FALSE(std::filesystem::is_symlink(file));
}

TEST_F(AtomicFile, TakesNothingButFiles) {
    std::filesystem::create_directory(file);
    EXPECT_FALSE(wholeFile(files, file, 100));
    EXPECT_FALSE(replace("new"));
    EXPECT_FALSE(removeFile(files, file));
    EXPECT_TRUE(std::filesystem::is_directory(file));
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(wholeFile(files, folder / "pipe", 100)) << "and does not wait for a writer";
    EXPECT_FALSE(wholeFile(files, "/dev/zero", 100));
    fakes::writeText(folder / "occupied", "");
    EXPECT_FALSE(makeFolders(files, folder / "occupied/below"));
}

TEST_F(AtomicFile, LeavesAnotherWritersWorkAlone) {
    const auto other = posix.openForReplacing(folder / ".file.new0");
    ASSERT_TRUE(other);
    ASSERT_TRUE(posix.write(*other, "half of a te"));
    ASSERT_TRUE(replace("new"));
    ASSERT_TRUE(posix.write(*other, "xt"));
    ASSERT_TRUE(posix.rename(folder / ".file.new0", file));
    posix.close(*other);
    EXPECT_EQ(textOf(file), "half of a text");
}

TEST_F(AtomicFile, LeavesForeignFilesAlone) {
    fakes::writeText(folder / "precious", "precious");
    std::filesystem::create_hard_link(folder / "precious", folder / ".file.new0");
    ASSERT_TRUE(replace("new"));
    EXPECT_EQ(textOf(folder / "precious"), "precious");
    fakes::writeText(folder / ".file.new1", "left by a killed process");
    ASSERT_EQ(::chmod((folder / ".file.new1").c_str(), 0666), 0);
    ASSERT_TRUE(replace("newer"));
    EXPECT_EQ(modeOf(file), 0600U);
    files.fail(Call::openForReplacing, std::errc::device_or_resource_busy);
    EXPECT_EQ(replace("newest"), std::unexpected(std::errc::device_or_resource_busy));
}

/// From now on this process's calls answer as on a file system that knows no locks, modes or waiting.
bool loseWhatNotEveryFileSystemKnows() {
    const auto refuse = [](unsigned call, unsigned error) {
        return std::array{sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1),
                          sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | error)};
    };
    const auto lock = refuse(SYS_flock, ENOLCK);
    const auto mode = refuse(SYS_fchmod, EPERM);
    const auto sync = refuse(SYS_fsync, EINVAL);
    std::array filters{sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                       lock[0],
                       lock[1],
                       mode[0],
                       mode[1],
                       sync[0],
                       sync[1],
                       sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    const sock_fprog program{.len = filters.size(), .filter = filters.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST_F(AtomicFile, WritesWhereTheFileSystemKnowsNoLocksOrModes) {
    ASSERT_TRUE(replace("old"));
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr int notFiltered = 2;
        if (!loseWhatNotEveryFileSystemKnows()) {
            ::_exit(notFiltered);
        }
        const bool isWritten = replace("new") && replace("newer");
        files.fail(Call::write, std::errc::no_space_on_device);
        ::_exit(isWritten && !replace("newest") ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(textOf(file), "newer");
    EXPECT_EQ(entriesOf(folder.path()), 1U) << "no litter";
}

/// Writes long texts of one letter over and over, as another process.
pid_t startWriter(const std::filesystem::path& file, char letter) {
    const pid_t child = ::fork();
    if (child == 0) {
        PosixFileSystem files;
        bool isWritten = true;
        for (std::size_t round = 1; round <= 200; ++round) {
            isWritten =
                replaceFile(files, file, std::string(round * 97, letter), Durability::relaxed) && isWritten;
        }
        ::_exit(isWritten ? 0 : 1);
    }
    return child;
}

TEST_F(AtomicFile, StaysWholeWhileProcessesCompete) {
    ASSERT_TRUE(replace("a"));
    const std::array writers{startWriter(file, 'a'), startWriter(file, 'b'), startWriter(file, 'c')};
    for (const pid_t writer : writers) {
        int status = 0;
        while (::waitpid(writer, &status, WNOHANG) == 0) {
            const auto text = wholeFile(posix, file, 100'000);
            ASSERT_TRUE(text) << "there is a file at every moment";
            ASSERT_EQ(std::ranges::count(*text, text->front()), std::ranges::ssize(*text));
            ASSERT_TRUE(text->size() % 97 == 0 || text->size() == 1);
        }
        EXPECT_EQ(status, 0) << "every write found its place";
    }
    EXPECT_EQ(entriesOf(folder.path()), 1U);
}

} // namespace
} // namespace cindertop
