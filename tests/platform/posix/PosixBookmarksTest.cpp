// SPDX-License-Identifier: MIT
#include "platform/posix/PosixBookmarks.h"
#include "tests/platform/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

class PosixBookmarksTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    PosixBookmarks bookmarks;
    const std::filesystem::path vault = folder / "Kasam.kdbx";

    PosixBookmarksTest() { writeFile(vault, "kasa"); }
};

TEST_F(PosixBookmarksTest, aTokenLeadsToItsFile) {
    const auto token = bookmarks.bookmark(vault);
    ASSERT_TRUE(token);
    EXPECT_EQ(bookmarks.resolve(*token), vault);
}

TEST_F(PosixBookmarksTest, aTokenOutlivesTheReplacementOfItsFile) {
    const auto token = bookmarks.bookmark(vault).value();
    writeFile(folder / "yeni", "yeni kasa");
    std::filesystem::rename(folder / "yeni", vault);
    EXPECT_EQ(bookmarks.resolve(token), vault);
}

TEST_F(PosixBookmarksTest, aRenamedFileIsFoundInItsFolder) {
    const auto token = bookmarks.bookmark(vault).value();
    writeFile(folder / "başka", "başka");
    std::filesystem::rename(vault, folder / "Yeni ad.kdbx");
    EXPECT_EQ(bookmarks.resolve(token), folder / "Yeni ad.kdbx");
}

TEST_F(PosixBookmarksTest, aDeletedFileIsNotMistakenForItsNeighbour) {
    const auto token = bookmarks.bookmark(vault).value();
    std::filesystem::remove(vault);
    for (int neighbour = 0; neighbour < 10; ++neighbour)
        writeFile(folder / std::to_string(neighbour), "komşu");  // one of them gets its inode
    EXPECT_EQ(bookmarks.resolve(token), vault);
    EXPECT_FALSE(std::filesystem::exists(vault));
}

TEST_F(PosixBookmarksTest, aFolderThatIsGoneLeavesThePathAsItWas) {
    std::filesystem::create_directory(folder / "alt");
    writeFile(folder / "alt/Kasam.kdbx", "kasa");
    const auto token = bookmarks.bookmark(folder / "alt/Kasam.kdbx").value();
    std::filesystem::remove_all(folder / "alt");
    EXPECT_EQ(bookmarks.resolve(token), folder / "alt/Kasam.kdbx");
}

TEST_F(PosixBookmarksTest, aFileThatIsNotThereHasNoToken) {
    EXPECT_FALSE(bookmarks.bookmark(folder / "yok"));
}

TEST_F(PosixBookmarksTest, aRelativePathIsKeptWhole) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    const auto token = bookmarks.bookmark("Kasam.kdbx").value();
    std::filesystem::current_path(before);
    EXPECT_EQ(bookmarks.resolve(token), vault);
}

TEST_F(PosixBookmarksTest, namesOfAnyBytesAreKept) {
    const auto odd = folder / "satır\nsonu \xFF";
    writeFile(odd, "");
    EXPECT_EQ(bookmarks.resolve(bookmarks.bookmark(odd).value()), odd);
}

TEST_F(PosixBookmarksTest, whatIsNoTokenResolvesToNothing) {
    const auto token = std::string(textOf(bookmarks.bookmark(vault).value()));
    for (const auto& text :
         {std::string(), std::string("x"), std::string("brenvik-bookmark-1"), std::string("brenvik-bookmark-1\n"),
          std::string("brenvik-bookmark-1\n\n"), std::string("brenvik-bookmark-1\n\nKasam.kdbx"),
          std::string("brenvik-bookmark-1\n\n/a\0b", 24), "x" + token})
        EXPECT_FALSE(bookmarks.resolve(bytesOf(text))) << text;
}

}  // namespace
