// SPDX-License-Identifier: MIT
#include "platform/posix/PosixFileStore.h"
#include "tests/platform/TemporaryFolder.h"
#include "tests/platform/posix/TroubledCalls.h"

#include <gmock/gmock.h>

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>

namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;

const std::string oldContent(10'000, 'e');
const std::string newContent(20'000, 'y');
constexpr std::size_t pieceSize = 6'000;  // so that a save writes in several steps

/// Runs `work` in a process of its own and gives its exit status. It must not return to the test's own code.
int inAChild(const std::function<void()>& work) {
    const auto child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status);
}

class FileSavingFaultsTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    const std::filesystem::path vault = folder / "Kasam.kdbx";

    void putOldVault() {
        std::filesystem::remove(vault);
        writeFile(vault, oldContent);
        ASSERT_EQ(setxattr(vault.c_str(), "user.etiket", "x", 1, 0), 0);
    }

    static void save(FileSystemCalls& calls, const std::filesystem::path& file) {
        PosixFileStore(calls).writeAtomically(file, bytesOf(newContent));
    }

    /// The calls of a save in which nothing goes wrong.
    std::vector<std::string> callsOfASave() {
        putOldVault();
        TroubledCalls calls;
        calls.mostWritten = pieceSize;
        save(calls, vault);
        EXPECT_GE(calls.record.size(), 20U);
        return calls.record;
    }
};

TEST_F(FileSavingFaultsTest, whicheverCallFailsTheOldVaultOrTheNewOneIsThereAndNothingElse) {
    const auto steps = callsOfASave();
    for (const int code : {ENOSPC, EIO, EACCES, EROFS, EDQUOT})
        for (std::size_t failing = 0; failing < steps.size(); ++failing) {
            SCOPED_TRACE(steps[failing] + " at " + std::to_string(failing) + ", " + std::to_string(code));
            putOldVault();
            TroubledCalls calls;
            calls.mostWritten = pieceSize;
            calls.trouble = [&](const std::string&, int number) {
                return static_cast<std::size_t>(number) == failing ? code : 0;
            };
            bool isTold = false;
            try {
                save(calls, vault);
            } catch (const FileError& error) {
                isTold = true;
                EXPECT_THAT(error.code(), AnyOf(code, EACCES));
            }
            const bool isLastStep = failing + 1 == steps.size();  // the folder's sync, behind the rename
            EXPECT_EQ(contentOf(vault), isTold && !isLastStep ? oldContent : newContent);
            EXPECT_TRUE(isTold || !isLastStep);
            EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
        }
}

TEST_F(FileSavingFaultsTest, whicheverCallFailsANewVaultIsThereWholeOrNotAtAll) {
    const auto steps = callsOfASave();
    for (std::size_t failing = 0; failing < steps.size(); ++failing) {
        SCOPED_TRACE(failing);
        std::filesystem::remove(vault);
        TroubledCalls calls;
        calls.mostWritten = pieceSize;
        calls.trouble = [&](const std::string&, int number) {
            return static_cast<std::size_t>(number) == failing ? ENOSPC : 0;
        };
        try {
            save(calls, vault);
        } catch (const FileError&) {
        }
        if (std::filesystem::exists(vault)) {
            EXPECT_EQ(contentOf(vault), newContent);
        }
        std::filesystem::remove(vault);
        EXPECT_TRUE(folder.names().empty());
    }
}

TEST_F(FileSavingFaultsTest, killedBeforeAnyCallTheOldVaultOrTheNewOneIsThereAndTheNextSaveCleansUp) {
    const auto steps = callsOfASave();
    for (std::size_t last = 0; last < steps.size(); ++last) {
        SCOPED_TRACE(steps[last] + " at " + std::to_string(last));
        putOldVault();
        const auto status = inAChild([&] {
            TroubledCalls calls;
            calls.mostWritten = pieceSize;
            calls.trouble = [&](const std::string&, int number) {
                if (static_cast<std::size_t>(number) == last)
                    _exit(42);
                return 0;
            };
            save(calls, vault);
        });
        ASSERT_EQ(status, 42);
        const bool isRenamed = last + 1 == steps.size();
        EXPECT_EQ(contentOf(vault), isRenamed ? newContent : oldContent);

        PosixFileSystemCalls calls;
        save(calls, vault);
        EXPECT_EQ(contentOf(vault), newContent);
        EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
    }
}

TEST_F(FileSavingFaultsTest, aLimitOnTheSizeOfFilesLeavesTheOldVault) {
    putOldVault();
    const auto status = inAChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{15'000, 15'000};
        setrlimit(RLIMIT_FSIZE, &limit);
        PosixFileSystemCalls calls;
        try {
            save(calls, vault);
        } catch (const FileError& error) {
            _exit(error.code() == EFBIG ? 7 : 8);
        }
    });
    EXPECT_EQ(status, 7);
    EXPECT_EQ(contentOf(vault), oldContent);
    EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
}

TEST_F(FileSavingFaultsTest, aDiskThatIsReallyFullLeavesTheOldVault) {
    constexpr int cannotMount = 99;
    const auto status = inAChild([&] {
        // A small disk that this process alone sees.
        if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", folder.path().c_str(), "tmpfs", 0, "size=28k") != 0)
            _exit(cannotMount);
        writeFile(vault, oldContent);
        PosixFileSystemCalls calls;
        try {
            save(calls, vault);
            _exit(1);
        } catch (const FileError& error) {
            const bool isTold = error.errorDescription() == "“Kasam.kdbx” kaydedilemedi: diskte yer kalmadı.";
            const bool isWhole = contentOf(vault) == oldContent;
            const bool isAlone = folder.names() == std::set<std::string>{"Kasam.kdbx"};
            _exit(isTold && isWhole && isAlone ? 7 : 2);
        }
    });
    if (status == cannotMount)
        GTEST_SKIP() << "no right to mount a small disk";
    EXPECT_EQ(status, 7);
}

TEST_F(FileSavingFaultsTest, aFolderThatMayNotBeWrittenLeavesTheOldVault) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs to become another user";
    putOldVault();
    ASSERT_EQ(chmod(vault.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const auto status = inAChild([&] {
        if (setgid(12345) != 0 || setuid(12345) != 0)
            _exit(1);
        PosixFileSystemCalls calls;
        try {
            save(calls, vault);
        } catch (const FileError& error) {
            _exit(error.errorDescription() == "“Kasam.kdbx” kaydedilemedi: erişim izni yok." ? 7 : 8);
        }
    });
    EXPECT_EQ(status, 7);
    EXPECT_EQ(contentOf(vault), oldContent);
}

TEST_F(FileSavingFaultsTest, aMemberOfTheGroupSavesAFileThatIsNotHis) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs to become another user";
    putOldVault();
    ASSERT_EQ(chown(vault.c_str(), 1111, 2222), 0);
    ASSERT_EQ(chmod(vault.c_str(), 0660), 0);
    ASSERT_EQ(chown(folder.path().c_str(), 1111, 2222), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0770), 0);
    const auto status = inAChild([&] {
        if (setgid(2222) != 0 || setuid(3333) != 0)
            _exit(1);
        PosixFileSystemCalls calls;
        save(calls, vault);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentOf(vault), newContent);
    struct stat file;
    ASSERT_EQ(stat(vault.c_str(), &file), 0);
    EXPECT_EQ(file.st_uid, 3333U);
    EXPECT_EQ(file.st_gid, 2222U);
    EXPECT_EQ(file.st_mode & 0777U, 0660U);
}

}  // namespace
