// SPDX-License-Identifier: MIT
#include "platform/posix/PosixFileStore.h"
#include "tests/platform/TemporaryFolder.h"
#include "tests/platform/posix/TroubledCalls.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

constexpr const char* copyName = "Kasam (eski).kdbx";
constexpr std::size_t pieceSize = 6'000;  // so that a file is written in several steps
const std::string oldContent(10'000, 'e');
const std::string newContent(20'000, 'y');

/// Of a new file that is put beside the vault, alone and as the step of a save.
class FileKeepingTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    TroubledCalls calls;
    PosixFileStore store{calls};
    const std::filesystem::path vault = folder / "Kasam.kdbx";
    const std::filesystem::path copy = folder / copyName;

    FileKeepingTest() { putOldVault(); }

    void putOldVault() {
        std::filesystem::remove(vault);
        std::filesystem::remove(copy);
        writeFile(vault, oldContent);
    }

    std::optional<std::filesystem::path> keep(const std::string& content = oldContent) {
        return store.keepBeside(vault, copyName, bytesOf(content));
    }

    /// A save that keeps what it finds before it replaces it.
    static void keepAndSave(FileSystemCalls& calls, const std::filesystem::path& file) {
        PosixFileStore store(calls);
        store.writeAtomically(file, bytesOf(newContent), [&] {
            const auto found = store.read(file);
            EXPECT_TRUE(store.keepBeside(file, copyName, found));
        });
    }

    std::vector<std::string> callsOfAKeepingSave() {
        putOldVault();
        TroubledCalls recorded;
        recorded.mostWritten = pieceSize;
        keepAndSave(recorded, vault);
        EXPECT_THAT(recorded.record, Contains("renameToFreeName"));
        EXPECT_THAT(folder.names(), UnorderedElementsAre("Kasam.kdbx", copyName));
        return recorded.record;
    }

    static mode_t modeOf(const std::filesystem::path& file) {
        struct stat status;
        EXPECT_EQ(lstat(file.c_str(), &status), 0);
        return status.st_mode & 07777U;
    }
};

TEST_F(FileKeepingTest, aNewFileBesideTheVaultHasItsMode) {
    ASSERT_EQ(chmod(vault.c_str(), 0640), 0);
    EXPECT_EQ(keep("başka"), copy);
    EXPECT_EQ(contentOf(copy), "başka");
    EXPECT_EQ(modeOf(copy), 0640U);
    EXPECT_EQ(contentOf(vault), oldContent);
    EXPECT_THAT(folder.names(), UnorderedElementsAre("Kasam.kdbx", copyName));
}

TEST_F(FileKeepingTest, aTakenNameIsLeftToWhatHasIt) {
    writeFile(copy, "kullanıcının");
    EXPECT_EQ(keep(), std::nullopt);
    EXPECT_EQ(contentOf(copy), "kullanıcının");

    std::filesystem::remove(copy);
    std::filesystem::create_symlink("yok", copy);
    EXPECT_EQ(keep(), std::nullopt) << "a link is taken too, wherever it leads";
    EXPECT_THAT(folder.names(), UnorderedElementsAre("Kasam.kdbx", copyName));
}

TEST_F(FileKeepingTest, aDiskThatCannotRenameToAFreeNameKeepsAllTheSame) {
    for (const int code : {EINVAL, ENOSYS, ENOTSUP}) {
        putOldVault();
        calls.trouble = [code](const std::string& call, int) { return call == "renameToFreeName" ? code : 0; };
        EXPECT_EQ(keep(), copy);
        EXPECT_EQ(contentOf(copy), oldContent);
        EXPECT_EQ(keep("başka"), std::nullopt);
        EXPECT_EQ(contentOf(copy), oldContent) << "not replaced";
        EXPECT_THAT(folder.names(), UnorderedElementsAre("Kasam.kdbx", copyName));
    }
}

TEST_F(FileKeepingTest, aNameThatCouldOnlyBeTakenIsGivenBack) {
    calls.trouble = [](const std::string& call, int) {
        return call == "renameToFreeName" ? EINVAL : call == "rename" ? EIO : 0;
    };
    EXPECT_THROW((void)keep(), FileError);
    EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
}

TEST_F(FileKeepingTest, theFailureNamesTheFileThatCouldNotBeKept) {
    calls.trouble = [](const std::string& call, int) { return call == "write" ? ENOSPC : 0; };
    try {
        (void)keep();
        FAIL() << "kept";
    } catch (const FileError& error) {
        EXPECT_EQ(error.code(), ENOSPC);
        EXPECT_EQ(error.errorDescription(), "“Kasam (eski).kdbx” kaydedilemedi: diskte yer kalmadı.");
    }
    EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
}

TEST_F(FileKeepingTest, behindALinkItLiesWhereTheVaultItselfIs) {
    std::filesystem::create_directory(folder / "gercek");
    std::filesystem::rename(vault, folder / "gercek/hedef");
    std::filesystem::create_symlink("gercek/hedef", vault);
    EXPECT_EQ(keep(), folder / "gercek" / copyName);
    EXPECT_EQ(contentOf(folder / "gercek" / copyName), oldContent);
    EXPECT_FALSE(std::filesystem::exists(copy));
}

TEST_F(FileKeepingTest, theNewContentIsOnTheDiskBeforeAnythingIsAsked) {
    std::vector<std::string> before;
    store.writeAtomically(vault, bytesOf(newContent), [&] { before = calls.record; });
    EXPECT_THAT(before, ::testing::IsSupersetOf({"fsync", "chmod"}));
    EXPECT_EQ(before.back(), "lock");  // no other save comes in between from here on
    EXPECT_THAT(before, ::testing::Not(Contains("rename")));
    EXPECT_EQ(contentOf(vault), newContent);
}

TEST_F(FileKeepingTest, anObjectionEndsTheSaveAndLeavesTheOldContent) {
    EXPECT_THROW(store.writeAtomically(vault, bytesOf(newContent), [] { throw FileError(EIO, "hayır"); }), FileError);
    EXPECT_EQ(contentOf(vault), oldContent);
    EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
}

TEST_F(FileKeepingTest, theCopyIsOnTheDiskBeforeTheVaultIsReplaced) {
    std::vector<std::string> steps;
    for (const auto& call : callsOfAKeepingSave())
        if (call == "fsync" || call == "renameToFreeName" || call == "rename")
            steps.push_back(call);
    EXPECT_THAT(steps, ElementsAre("fsync", "fsync", "renameToFreeName", "fsync", "rename", "fsync"));
}

TEST_F(FileKeepingTest, whicheverCallFailsNeitherVersionIsLost) {
    const auto steps = callsOfAKeepingSave();
    for (const int code : {ENOSPC, EIO, EACCES, EROFS, EINVAL})
        for (std::size_t failing = 0; failing < steps.size(); ++failing) {
            SCOPED_TRACE(steps[failing] + " at " + std::to_string(failing) + ", " + std::to_string(code));
            putOldVault();
            TroubledCalls troubled;
            troubled.mostWritten = pieceSize;
            troubled.trouble = [&](const std::string&, int number) {
                return static_cast<std::size_t>(number) == failing ? code : 0;
            };
            try {
                keepAndSave(troubled, vault);
            } catch (const FileError&) {
            }
            const bool isReplaced = contentOf(vault) == newContent;
            if (!isReplaced) {
                EXPECT_EQ(contentOf(vault), oldContent);
            }
            if (isReplaced || std::filesystem::exists(copy)) {
                EXPECT_EQ(contentOf(copy), oldContent);
            }
            std::filesystem::remove(copy);
            EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
        }
}

TEST_F(FileKeepingTest, killedBeforeAnyCallNeitherVersionIsLostAndTheNextSaveCleansUp) {
    const auto steps = callsOfAKeepingSave();
    for (std::size_t last = 0; last < steps.size(); ++last) {
        SCOPED_TRACE(steps[last] + " at " + std::to_string(last));
        putOldVault();
        const auto child = fork();
        if (child == 0) {
            TroubledCalls troubled;
            troubled.mostWritten = pieceSize;
            troubled.trouble = [&](const std::string&, int number) {
                if (static_cast<std::size_t>(number) == last)
                    _exit(42);
                return 0;
            };
            keepAndSave(troubled, vault);
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_EQ(WEXITSTATUS(status), 42);
        EXPECT_THAT(contentOf(vault), AnyOf(oldContent, newContent));
        if (contentOf(vault) == newContent || std::filesystem::exists(copy)) {
            EXPECT_EQ(contentOf(copy), oldContent);
        }

        PosixFileSystemCalls good;
        PosixFileStore(good).writeAtomically(vault, bytesOf(newContent));
        std::filesystem::remove(copy);
        EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
    }
}

TEST_F(FileKeepingTest, theStatusOfAFileReportsWhatWasWrittenToIt) {
    const auto before = store.status(vault);
    ASSERT_TRUE(before);
    EXPECT_EQ(before->size, oldContent.size());
    EXPECT_EQ(store.status(vault), before);
    store.writeAtomically(vault, bytesOf(oldContent));
    EXPECT_NE(store.status(vault), before) << "another file has the name";
}

TEST_F(FileKeepingTest, whatIsNoRegularFileHasNoStatus) {
    EXPECT_EQ(store.status(folder.path()), std::nullopt);
    EXPECT_EQ(store.status(folder / "yok"), std::nullopt);
    EXPECT_EQ(store.status("/dev/zero"), std::nullopt);
    std::filesystem::create_symlink("Kasam.kdbx", folder / "bağ");
    EXPECT_EQ(store.status(folder / "bağ"), store.status(vault)) << "a link is followed";
}

}  // namespace
