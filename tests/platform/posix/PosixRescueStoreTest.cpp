// SPDX-License-Identifier: MIT
#include "platform/posix/PosixFileStore.h"
#include "platform/posix/PosixRescueStore.h"
#include "tests/platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class PosixRescueStoreTest : public ::testing::Test {
protected:
    TemporaryFolder disk;
    PosixFileSystemCalls calls;
    PosixFileStore files{calls};
    const fs::path folder = disk / "state" / "brenvik";
    const fs::path vault = disk / "Gizli klasör" / "Kasam.kdbx";
    PosixRescueStore store{files, folder};

    PosixRescueStoreTest() {
        fs::create_directory(vault.parent_path());
        writeFile(vault, "kasa");
    }

    std::string keep(const std::string& content, PosixRescueStore& by) const {
        const auto name = by.newName(vault);
        by.write(name, bytesOf(content));
        return name;
    }
    std::string leave(const std::string& content) {
        const auto name = keep(content, store);
        store.release(name);
        return name;
    }
    std::string content(const std::string& name) { return std::string(textOf(store.read(name))); }

    static mode_t modeOf(const fs::path& path) {
        struct stat status {};
        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        return status.st_mode & 0777U;
    }
};

TEST_F(PosixRescueStoreTest, whatASessionLeftIsFoundByTheNext) {
    const auto name = leave("kopya");

    const auto copies = store.copiesOf(vault);

    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(copies[0].name, name);
    EXPECT_NEAR(copies[0].kept.seconds, Timestamp::now().seconds, 60);
    EXPECT_EQ(content(name), "kopya");
}

TEST_F(PosixRescueStoreTest, theirUserAloneCanReadTheCopies) {
    const auto umaskBefore = ::umask(0);
    const auto name = leave("kopya");
    ::umask(umaskBefore);

    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(folder / name), 0600U);
}

TEST_F(PosixRescueStoreTest, aNameRevealsNeitherTheVaultNorItsFolder) {
    const auto name = leave("kopya");

    EXPECT_EQ(name.find("Kasam"), std::string::npos);
    EXPECT_EQ(name.find("Gizli"), std::string::npos);
    EXPECT_EQ(name.find_first_not_of("0123456789abcdef-.kdbx"), std::string::npos) << name;
}

TEST_F(PosixRescueStoreTest, aVaultHasItsOwnCopiesByWhateverLinkItIsReached) {
    const auto name = leave("kopya");
    fs::create_symlink(vault, disk / "bağ.kdbx");
    writeFile(disk / "Başka.kdbx", "başka");

    ASSERT_EQ(store.copiesOf(disk / "bağ.kdbx").size(), 1U);
    EXPECT_EQ(store.copiesOf(disk / "bağ.kdbx")[0].name, name);
    EXPECT_TRUE(store.copiesOf(disk / "Başka.kdbx").empty());
}

TEST_F(PosixRescueStoreTest, severalCopiesComeOldestFirst) {
    const auto newer = leave("yeni");
    const auto older = leave("eski");
    fs::last_write_time(folder / older, fs::last_write_time(folder / newer) - std::chrono::hours(1));

    const auto copies = store.copiesOf(vault);

    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(copies[0].name, older);
    EXPECT_EQ(copies[1].name, newer);
}

TEST_F(PosixRescueStoreTest, aSessionReplacesItsCopy) {
    const auto name = keep("eski", store);
    store.write(name, bytesOf("yeni"));
    store.release(name);

    EXPECT_EQ(store.copiesOf(vault).size(), 1U);
    EXPECT_EQ(content(name), "yeni");
}

TEST_F(PosixRescueStoreTest, aCopyThatASessionStillWritesIsNotOffered) {
    PosixRescueStore another(files, folder);
    const auto name = keep("eski", another);
    another.write(name, bytesOf("yeni"));

    EXPECT_TRUE(store.copiesOf(vault).empty());
    EXPECT_TRUE(another.copiesOf(vault).empty());

    another.release(name);
    EXPECT_EQ(store.copiesOf(vault).size(), 1U);
}

TEST_F(PosixRescueStoreTest, aCopyOfAProcessThatWasKilledIsOffered) {
    const auto child = ::fork();
    if (child == 0) {
        keep("kopya", store);
        ::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);

    EXPECT_EQ(store.copiesOf(vault).size(), 1U);
}

TEST_F(PosixRescueStoreTest, aRemovedCopyIsGoneAndRemovingItAgainIsNoFault) {
    const auto name = keep("kopya", store);

    store.remove(name);
    store.remove(name);

    EXPECT_FALSE(fs::exists(folder / name));
    EXPECT_TRUE(store.copiesOf(vault).empty());
}

TEST_F(PosixRescueStoreTest, whatAKilledWriteLeftIsRemoved) {
    leave("kopya");
    writeFile(folder / ".brenvik-0123456789abcdef-00112233445566778899aabbccddeeff", "yarım");

    EXPECT_EQ(store.copiesOf(vault).size(), 1U);

    EXPECT_FALSE(fs::exists(folder / ".brenvik-0123456789abcdef-00112233445566778899aabbccddeeff"));
}

TEST_F(PosixRescueStoreTest, aFolderThatCannotBeMadeIsAFailure) {
    writeFile(disk / "dosya", "");
    PosixRescueStore nowhere(files, disk / "dosya" / "brenvik");

    EXPECT_THROW(nowhere.write(nowhere.newName(vault), bytesOf("kopya")), FileError);
    EXPECT_TRUE(nowhere.copiesOf(vault).empty());
}

TEST(RescueFolderTest, liesInTheUsersStateFolder) {
    const std::string home = std::getenv("HOME") ? std::getenv("HOME") : "";
    ::setenv("HOME", "/ev/ada", 1);
    ::unsetenv("XDG_STATE_HOME");
    EXPECT_EQ(PosixRescueStore::usualFolder(), "/ev/ada/.local/state/brenvik");
    ::setenv("XDG_STATE_HOME", "göreli", 1);
    EXPECT_EQ(PosixRescueStore::usualFolder(), "/ev/ada/.local/state/brenvik");
    ::setenv("XDG_STATE_HOME", "/durum", 1);
    EXPECT_EQ(PosixRescueStore::usualFolder(), "/durum/brenvik");
    ::unsetenv("XDG_STATE_HOME");
    ::setenv("HOME", home.c_str(), 1);
}

}  // namespace
