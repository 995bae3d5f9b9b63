// SPDX-License-Identifier: MIT
#include "platform/posix/PosixFileStore.h"
#include "tests/platform/TemporaryFolder.h"
#include "tests/platform/posix/TroubledCalls.h"

#include <gmock/gmock.h>

#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class FileSavingTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    TroubledCalls calls;
    PosixFileStore store{calls};
    const std::filesystem::path vault = folder / "Kasam.kdbx";

    void save(const std::filesystem::path& file, const std::string& content) {
        store.writeAtomically(file, bytesOf(content));
    }

    std::string failureOf(const std::filesystem::path& file, int code) {
        try {
            save(file, "yeni");
        } catch (const FileError& error) {
            EXPECT_EQ(error.code(), code);
            return error.errorDescription();
        }
        return "saved";
    }

    static struct stat statusOf(const std::filesystem::path& file) {
        struct stat status;
        EXPECT_EQ(lstat(file.c_str(), &status), 0);
        return status;
    }
    static mode_t modeOf(const std::filesystem::path& file) { return statusOf(file).st_mode & 07777U; }

    std::filesystem::path leftoverOf(const std::string& file) {
        const auto before = folder.names();
        calls.trouble = [](const std::string& call, int) { return call == "rename" || call == "unlink" ? EIO : 0; };
        EXPECT_THROW(save(folder / file, "yarım"), FileError);
        calls.trouble = [](const auto&, int) { return 0; };
        for (const auto& name : folder.names())
            if (!before.contains(name))
                return folder / name;
        ADD_FAILURE() << "nothing was left";
        return {};
    }
};

TEST_F(FileSavingTest, replacesTheContentAndLeavesNothingElse) {
    writeFile(vault, "eski");
    save(vault, "yeni");
    EXPECT_EQ(contentOf(vault), "yeni");
    EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
}

TEST_F(FileSavingTest, goesThroughItsStepsInTheOneOrderThatIsSafe) {
    writeFile(vault, "eski");
    save(vault, "yeni");
    std::vector<std::string> steps;
    for (const auto& call : calls.record)
        if (call == "write" || call == "fsync" || call == "chown" || call == "chmod" || call == "rename")
            steps.push_back(call);
    EXPECT_THAT(steps, ElementsAre("write", "fsync", "chown", "chmod", "rename", "fsync"));
}

TEST_F(FileSavingTest, aNewFileIsItsOwnersAlone) {
    const auto oldMask = umask(0);
    save(vault, "yeni");
    umask(oldMask);
    EXPECT_EQ(contentOf(vault), "yeni");
    EXPECT_EQ(modeOf(vault), 0600U);
}

TEST_F(FileSavingTest, theContentIsNeverOpenToOthersMeanwhile) {
    writeFile(vault, "eski");
    std::filesystem::permissions(vault, std::filesystem::perms(0644));
    calls.trouble = [&](const std::string& call, int) {
        if (call == "write")
            for (const auto& name : folder.names())
                if (name != "Kasam.kdbx") {
                    EXPECT_EQ(modeOf(folder / name), 0600U);
                }
        return 0;
    };
    save(vault, "yeni");
    EXPECT_EQ(modeOf(vault), 0644U);
}

TEST_F(FileSavingTest, keepsTheModeOfTheFile) {
    for (const mode_t mode : {0600U, 0640U, 0644U, 0660U, 0200U, 0777U}) {
        writeFile(vault, "eski");
        ASSERT_EQ(chmod(vault.c_str(), mode), 0);
        save(vault, "yeni");
        EXPECT_EQ(modeOf(vault), mode) << std::oct << mode;
        std::filesystem::remove(vault);
    }
}

TEST_F(FileSavingTest, keepsTheExtendedAttributes) {
    writeFile(vault, "eski");
    const std::string value("iki\0parça", 10);
    ASSERT_EQ(setxattr(vault.c_str(), "user.etiket", value.data(), value.size(), 0), 0);
    ASSERT_EQ(setxattr(vault.c_str(), "user.bos", "", 0, 0), 0);

    save(vault, "yeni");

    std::string kept(100, ' ');
    const auto size = getxattr(vault.c_str(), "user.etiket", kept.data(), kept.size());
    ASSERT_EQ(size, static_cast<ssize_t>(value.size()));
    EXPECT_EQ(kept.substr(0, value.size()), value);
    EXPECT_EQ(getxattr(vault.c_str(), "user.bos", nullptr, 0), 0);
}

TEST_F(FileSavingTest, anAttributeThatMayNotBeSetDoesNotStopASave) {
    for (const int code : {EPERM, EACCES, ENOTSUP}) {
        writeFile(vault, "eski");
        ASSERT_EQ(setxattr(vault.c_str(), "user.etiket", "x", 1, 0), 0);
        calls.trouble = [code](const std::string& call, int) { return call == "setAttribute" ? code : 0; };
        save(vault, "yeni");
        EXPECT_EQ(contentOf(vault), "yeni");
    }
}

TEST_F(FileSavingTest, aDiskWithoutAttributesSavesAllTheSame) {
    writeFile(vault, "eski");
    calls.trouble = [](const std::string& call, int) { return call == "listAttributes" ? ENOTSUP : 0; };
    save(vault, "yeni");
    EXPECT_EQ(contentOf(vault), "yeni");
}

TEST_F(FileSavingTest, attributesThatGrowWhileTheyAreReadAreReadAgain) {
    writeFile(vault, "eski");
    ASSERT_EQ(setxattr(vault.c_str(), "user.etiket", "değer", 6, 0), 0);
    for (const std::string growing : {"listAttributes", "getAttribute"}) {
        calls.trouble = [growing, count = 0](const std::string& call, int) mutable {
            return call == growing && ++count == 2 ? ERANGE : 0;
        };
        save(vault, "yeni");
        EXPECT_EQ(getxattr(vault.c_str(), "user.etiket", nullptr, 0), 6) << growing;
    }
}

TEST_F(FileSavingTest, attributesThatCannotBeReadDoNotStopASave) {
    for (const std::string failing : {"listAttributes", "getAttribute"})
        for (const int code : {EIO, EACCES, EPERM, ENODATA, E2BIG, ESTALE, ERANGE}) {
            std::filesystem::remove(vault);
            writeFile(vault, "eski");
            ASSERT_EQ(chmod(vault.c_str(), 0660), 0);
            ASSERT_EQ(setxattr(vault.c_str(), "user.etiket", "x", 1, 0), 0);
            calls.trouble = [&](const std::string& call, int) { return call == failing ? code : 0; };
            save(vault, "yeni");
            EXPECT_EQ(contentOf(vault), "yeni");
            EXPECT_EQ(modeOf(vault), 0660U) << "no access list, so that the mode says all: " << failing << ", " << code;
        }
}

TEST_F(FileSavingTest, whereItIsNotKnownWhoMayReadAFileItsGroupMayNot) {
    writeFile(vault, "eski");
    ASSERT_EQ(chmod(vault.c_str(), 0664), 0);
    calls.trouble = [](const std::string& call, int) {
        return call == "listAttributes" || call == "getAttribute" ? EIO : 0;
    };
    save(vault, "yeni");
    EXPECT_EQ(contentOf(vault), "yeni");
    EXPECT_EQ(modeOf(vault), 0604U);
}

/// An access list of POSIX.1e as Linux keeps it: the owner and the user 1234 may write, the group may not read.
std::string accessList() {
    std::string list("\x02\0\0\0", 4);
    for (const auto& [tag, rights, id] : std::vector<std::tuple<int, int, std::uint32_t>>{
             {1, 6, UINT32_MAX}, {2, 6, 1234}, {4, 0, UINT32_MAX}, {16, 6, UINT32_MAX}, {32, 0, UINT32_MAX}}) {
        list += {static_cast<char>(tag), '\0', static_cast<char>(rights), '\0'};
        for (int byte = 0; byte < 4; ++byte)
            list += static_cast<char>(id >> 8 * byte);
    }
    return list;
}

TEST_F(FileSavingTest, anAccessListIsKeptOrItsGroupMayNotReadAtAll) {
    const auto* const name = "system.posix_acl_access";
    const auto list = accessList();
    writeFile(vault, "eski");
    if (setxattr(vault.c_str(), name, list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "a disk without access lists";
    ASSERT_EQ(modeOf(vault), 0660U) << "the bits of the list's mask";

    save(vault, "yeni");
    EXPECT_EQ(getxattr(vault.c_str(), name, nullptr, 0), static_cast<ssize_t>(list.size()));
    EXPECT_EQ(modeOf(vault), 0660U);

    calls.trouble = [](const std::string& call, int) { return call == "getAttribute" ? EIO : 0; };
    save(vault, "en yeni");
    EXPECT_EQ(contentOf(vault), "en yeni");
    EXPECT_EQ(modeOf(vault), 0600U);
}

TEST_F(FileSavingTest, keepsOwnerAndGroupWhereThatIsAllowed) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may give a file away";
    writeFile(vault, "eski");
    ASSERT_EQ(chown(vault.c_str(), 1234, 5678), 0);
    ASSERT_EQ(chmod(vault.c_str(), 02660), 0);
    save(vault, "yeni");
    EXPECT_EQ(statusOf(vault).st_uid, 1234U);
    EXPECT_EQ(statusOf(vault).st_gid, 5678U);
    EXPECT_EQ(modeOf(vault), 02660U);
}

TEST_F(FileSavingTest, anOwnerThatCannotBeKeptDoesNotLoseTheSave) {
    writeFile(vault, "eski");
    ASSERT_EQ(chmod(vault.c_str(), 04664), 0);
    calls.trouble = [refusals = 1](const std::string& call, int) mutable {
        return call == "chown" && refusals-- > 0 ? EPERM : 0;
    };
    save(vault, "yeni");
    EXPECT_EQ(contentOf(vault), "yeni");
    EXPECT_EQ(modeOf(vault), 0664U) << "the group was kept, and nothing runs as another owner";
}

TEST_F(FileSavingTest, aGroupThatCannotBeKeptGivesNothingToAnother) {
    writeFile(vault, "eski");
    ASSERT_EQ(chmod(vault.c_str(), 0664), 0);
    calls.trouble = [](const std::string& call, int) { return call == "chown" ? EPERM : 0; };
    save(vault, "yeni");
    EXPECT_EQ(contentOf(vault), "yeni");
    EXPECT_EQ(modeOf(vault), 0604U);
}

TEST_F(FileSavingTest, followsSymbolicLinksToTheirTarget) {
    std::filesystem::create_directory(folder / "gercek");
    writeFile(folder / "gercek/hedef", "eski");
    std::filesystem::create_symlink("gercek/hedef", folder / "ara");
    std::filesystem::create_symlink((folder / "ara").native(), vault);

    save(vault, "yeni");

    EXPECT_TRUE(std::filesystem::is_symlink(vault));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "ara"));
    EXPECT_EQ(contentOf(folder / "gercek/hedef"), "yeni");
    EXPECT_THAT(folder.names(), UnorderedElementsAre("Kasam.kdbx", "ara", "gercek"));
}

TEST_F(FileSavingTest, aDanglingLinkIsFilledAtItsTarget) {
    std::filesystem::create_symlink("henuz-yok", vault);
    save(vault, "yeni");
    EXPECT_TRUE(std::filesystem::is_symlink(vault));
    EXPECT_EQ(contentOf(folder / "henuz-yok"), "yeni");
}

TEST_F(FileSavingTest, linksInACircleAreRefused) {
    std::filesystem::create_symlink("b", folder / "a");
    std::filesystem::create_symlink("a", folder / "b");
    EXPECT_EQ(failureOf(folder / "a", ELOOP), "“a” kaydedilemedi: sembolik bağlar döngü oluşturuyor.");
}

TEST_F(FileSavingTest, savesByARelativePath) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    save("Kasam.kdbx", "yeni");
    std::filesystem::current_path(before);
    EXPECT_EQ(contentOf(vault), "yeni");
}

TEST_F(FileSavingTest, aFileNameAsLongAsTheDiskTakesIsSaved) {
    const std::string name(255, 'k');
    save(folder / name, "bir");
    save(folder / name, "iki");
    EXPECT_EQ(contentOf(folder / name), "iki");
}

TEST_F(FileSavingTest, anEmptyAndALargeContentAreSaved) {
    save(vault, "");
    EXPECT_EQ(contentOf(vault), "");
    const std::string large(5'000'000, 'x');
    save(vault, large);
    EXPECT_EQ(contentOf(vault), large);
}

TEST_F(FileSavingTest, takesShortWritesAsTheyCome) {
    writeFile(vault, "eski");
    calls.mostWritten = 3;
    save(vault, "yeni ve uzun bir içerik");
    EXPECT_EQ(contentOf(vault), "yeni ve uzun bir içerik");
}

TEST_F(FileSavingTest, anInterruptedCallIsMadeAgain) {
    writeFile(vault, "eski");
    calls.trouble = [interrupted = false](const std::string& call, int) mutable {
        const bool isRestartable =
            call == "open" || call == "write" || call == "fsync" || call == "chmod" || call == "rename";
        interrupted = !interrupted && isRestartable;
        return interrupted ? EINTR : 0;
    };
    save(vault, "yeni");
    EXPECT_EQ(contentOf(vault), "yeni");
}

TEST_F(FileSavingTest, aWriteProtectedFileIsRefused) {
    writeFile(vault, "eski");
    ASSERT_EQ(chmod(vault.c_str(), 0444), 0);
    EXPECT_EQ(failureOf(vault, EACCES), "“Kasam.kdbx” kaydedilemedi: dosya yazmaya karşı korunuyor.");
    EXPECT_EQ(contentOf(vault), "eski");
}

TEST_F(FileSavingTest, aFileThatThisUserMayNotWriteIsRefused) {
    writeFile(vault, "eski");
    calls.trouble = [](const std::string& call, int) { return call == "access" ? EACCES : 0; };
    EXPECT_EQ(failureOf(vault, EACCES), "“Kasam.kdbx” kaydedilemedi: dosya yazmaya karşı korunuyor.");
    EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
}

TEST_F(FileSavingTest, aFolderIsRefused) {
    std::filesystem::create_directory(vault);
    EXPECT_EQ(failureOf(vault, EISDIR), "“Kasam.kdbx” kaydedilemedi: bu bir klasör.");
    EXPECT_EQ(failureOf(vault / "", EISDIR), "“” kaydedilemedi: bu bir klasör.");
}

TEST_F(FileSavingTest, aPipeIsRefused) {
    ASSERT_EQ(mkfifo(vault.c_str(), 0600), 0);
    EXPECT_EQ(failureOf(vault, EINVAL), "“Kasam.kdbx” kaydedilemedi: bu sıradan bir dosya değil.");
    EXPECT_TRUE(std::filesystem::is_fifo(vault));
}

TEST_F(FileSavingTest, aFolderThatIsGoneIsReported) {
    EXPECT_EQ(failureOf(folder / "yok/Kasam.kdbx", ENOENT),
              "“Kasam.kdbx” kaydedilemedi: dosya ya da klasör bulunamadı.");
}

TEST_F(FileSavingTest, aFolderThatIsAFileIsReported) {
    writeFile(folder / "dosya", "");
    EXPECT_EQ(failureOf(folder / "dosya/Kasam.kdbx", ENOTDIR),
              "“Kasam.kdbx” kaydedilemedi: yoldaki bir öge klasör değil.");
}

TEST_F(FileSavingTest, aDiskThatCannotSyncFoldersSavesAllTheSame) {
    writeFile(vault, "eski");
    calls.trouble = [](const std::string& call, int) { return call == "fsync" ? EINVAL : 0; };
    save(vault, "yeni");
    EXPECT_EQ(contentOf(vault), "yeni");
}

TEST_F(FileSavingTest, aTemporaryFileHasANameThatCannotBeGuessed) {
    const auto first = leftoverOf("Kasam.kdbx");
    const auto second = leftoverOf("Kasam.kdbx");
    const auto name = first.filename().native();
    EXPECT_TRUE(name.starts_with(".brenvik-"));
    EXPECT_EQ(name.size(), std::string(".brenvik-0123456789abcdef-").size() + 32);
    EXPECT_NE(first, second);
}

TEST_F(FileSavingTest, whatAKilledSaveLeftIsRemovedByTheNextOneOfThatFile) {
    const auto leftover = leftoverOf("Kasam.kdbx");
    const auto ofAnother = leftoverOf("Baska.kdbx");
    writeFile(folder / ".brenvik-notlarim", "kullanıcının kendi dosyası");
    ASSERT_TRUE(std::filesystem::exists(leftover));

    save(vault, "yeni");

    EXPECT_FALSE(std::filesystem::exists(leftover));
    EXPECT_TRUE(std::filesystem::exists(ofAnother));
    EXPECT_TRUE(std::filesystem::exists(folder / ".brenvik-notlarim"));
}

TEST_F(FileSavingTest, aSaveThatIsStillGoingOnIsNoLeftover) {
    const auto neighbour = leftoverOf("Kasam.kdbx");
    const int file = open(neighbour.c_str(), O_RDWR);
    ASSERT_EQ(flock(file, LOCK_EX), 0);

    save(vault, "yeni");
    EXPECT_TRUE(std::filesystem::exists(neighbour));

    close(file);
    save(vault, "daha yeni");
    EXPECT_FALSE(std::filesystem::exists(neighbour));
}

TEST_F(FileSavingTest, aTemporaryFileThatVanishesBeforeItIsLockedIsMadeAgain) {
    writeFile(vault, "eski");
    calls.trouble = [&, hasVanished = false](const std::string& call, int) mutable {
        if (call == "lock" && !std::exchange(hasVanished, true))
            for (const auto& name : folder.names())
                if (name != "Kasam.kdbx")
                    std::filesystem::remove(folder / name);
        return 0;
    };
    save(vault, "yeni");
    EXPECT_EQ(contentOf(vault), "yeni");
    EXPECT_THAT(folder.names(), ElementsAre("Kasam.kdbx"));
}

/// Another save of the same folder, between its last look at the file and the replacement.
class OtherSave {
public:
    explicit OtherSave(const std::filesystem::path& folder) : m_folder(open(folder.c_str(), O_RDONLY | O_DIRECTORY)) {}
    ~OtherSave() { end(); }
    OtherSave(const OtherSave&) = delete;
    OtherSave& operator=(const OtherSave&) = delete;

    bool begin() const { return flock(m_folder, LOCK_EX | LOCK_NB) == 0; }
    void end() {
        if (m_folder >= 0)
            close(std::exchange(m_folder, -1));
    }
    [[nodiscard]] bool hasEnded() const { return m_folder < 0; }

private:
    int m_folder;
};

TEST_F(FileSavingTest, betweenTheLastLookAndTheReplacementNoOtherSaveBegins) {
    writeFile(vault, "eski");
    OtherSave other(folder.path());
    bool hasLooked = false;
    store.writeAtomically(vault, bytesOf("yeni"), [&] {
        hasLooked = true;
        EXPECT_FALSE(other.begin());
    });
    EXPECT_TRUE(hasLooked);
    EXPECT_TRUE(other.begin());
}

TEST_F(FileSavingTest, theLastLookWaitsForAnotherSaveToEnd) {
    writeFile(vault, "eski");
    OtherSave other(folder.path());
    ASSERT_TRUE(other.begin());
    calls.trouble = [&, locks = 0](const std::string& call, int) mutable {
        if (call == "lock" && ++locks == 3)  // its temporary file's, the folder's, and the folder's again
            other.end();
        return 0;
    };
    store.writeAtomically(vault, bytesOf("yeni"), [&] { EXPECT_TRUE(other.hasEnded()); });
    EXPECT_EQ(contentOf(vault), "yeni");
}

}  // namespace
